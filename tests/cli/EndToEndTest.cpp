// The real `fenrow` executable, run as a user would: separate processes on
// one data folder, no display, nothing but the environment to go on.
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "QtPrinters.h"

#include <gtest/gtest.h>

namespace {

struct ProcessRun {
    int status = -1;
    QString out;
    QString err;
};

class EndToEndTest : public ::testing::Test {
protected:
    ProcessRun fenrow(const QStringList &arguments, const QByteArray &input = {})
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "LANGUAGE", "LANG"})
            environment.remove(QString::fromLatin1(name));
        environment.insert(QStringLiteral("XDG_DATA_HOME"), home.filePath(QStringLiteral("data")));
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home.filePath(QStringLiteral("config")));
        environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
        environment.insert(QStringLiteral("TZ"), QStringLiteral("Europe/Berlin"));

        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(FENROW_EXECUTABLE), arguments);
        ProcessRun run;
        if (!process.waitForStarted()) {
            ADD_FAILURE() << "cannot start " << FENROW_EXECUTABLE;
            return run;
        }
        process.write(input);
        process.closeWriteChannel();
        if (!process.waitForFinished(60000)) {
            ADD_FAILURE() << "fenrow did not finish: " << arguments.join(QLatin1Char(' ')).toStdString();
            process.kill();
            process.waitForFinished();
        }
        run.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        run.out = QString::fromUtf8(process.readAllStandardOutput());
        run.err = QString::fromUtf8(process.readAllStandardError());
        return run;
    }

    QString storePath() const { return home.filePath(QStringLiteral("data/fenrow/default.store")); }

    QTemporaryDir home;
};

QJsonValue parsed(const ProcessRun &run)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(run.out.toUtf8(), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << run.out.toStdString();
    return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
}

TEST_F(EndToEndTest, FlowsPersistAcrossRunsWithoutADisplay)
{
    const ProcessRun added = fenrow({QStringLiteral("flow"), QStringLiteral("add"), QStringLiteral("Launch site"),
                              QStringLiteral("--json"), QStringLiteral("--now"), QStringLiteral("2026-06-10T09:00:00")});
    ASSERT_EQ(added.status, 0) << added.err.toStdString();
    EXPECT_EQ(added.err, QString());
    const QJsonObject flow = parsed(added).toObject();
    const QString id = flow[QStringLiteral("id")].toString();
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$")).match(id).hasMatch())
        << id.toStdString();
    EXPECT_EQ(flow[QStringLiteral("createdAt")].toString(), QStringLiteral("2026-06-10T09:00:00+02:00"));
    EXPECT_TRUE(QFile::exists(storePath()));

    ASSERT_EQ(fenrow({QStringLiteral("flow"), QStringLiteral("add"), QStringLiteral("Garden")}).status, 0);
    ASSERT_EQ(fenrow({QStringLiteral("flow"), QStringLiteral("move"), QStringLiteral("garden"), QStringLiteral("1")})
                  .status,
              0);
    ASSERT_EQ(fenrow({QStringLiteral("flow"), QStringLiteral("rename"), id.toLower(), QStringLiteral("Website")})
                  .status,
              0);

    const ProcessRun listed = fenrow({QStringLiteral("flows"), QStringLiteral("--json")});
    ASSERT_EQ(listed.status, 0) << listed.err.toStdString();
    const QJsonArray flows = parsed(listed).toArray();
    ASSERT_EQ(flows.size(), 2);
    EXPECT_EQ(flows[0].toObject()[QStringLiteral("name")].toString(), QStringLiteral("Garden"));
    EXPECT_EQ(flows[1].toObject()[QStringLiteral("name")].toString(), QStringLiteral("Website"));
    EXPECT_EQ(flows[1].toObject()[QStringLiteral("id")].toString(), id);
    EXPECT_EQ(flows[1].toObject()[QStringLiteral("progress")].toObject()[QStringLiteral("totalCount")].toInt(), 0);

    EXPECT_EQ(fenrow({QStringLiteral("flows")}).out,
              QStringLiteral("1  Garden   No tasks yet\n2  Website  No tasks yet\n"));
}

TEST_F(EndToEndTest, DeletingNeedsATerminalOrYes)
{
    ASSERT_EQ(fenrow({QStringLiteral("flow"), QStringLiteral("add"), QStringLiteral("Tax")}).status, 0);

    // Piped input is no terminal: a "y" on it must not delete.
    const ProcessRun refused = fenrow({QStringLiteral("flow"), QStringLiteral("delete"), QStringLiteral("Tax")}, "y\n");
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(refused.err.startsWith(QStringLiteral("fenrow: "))) << refused.err.toStdString();
    EXPECT_EQ(refused.out, QString());
    EXPECT_TRUE(fenrow({QStringLiteral("flows")}).out.contains(QStringLiteral("Tax")));

    const ProcessRun deleted =
        fenrow({QStringLiteral("flow"), QStringLiteral("delete"), QStringLiteral("Tax"), QStringLiteral("--yes")});
    EXPECT_EQ(deleted.status, 0) << deleted.err.toStdString();
    EXPECT_EQ(parsed(fenrow({QStringLiteral("flows"), QStringLiteral("--json")})).toArray().size(), 0);
}

TEST_F(EndToEndTest, ExitStatusesTellMistakesFromFailures)
{
    const ProcessRun usage = fenrow({QStringLiteral("flow"), QStringLiteral("rename"), QStringLiteral("X")});
    EXPECT_EQ(usage.status, 2);
    EXPECT_TRUE(usage.err.contains(QStringLiteral("fenrow help flow rename"))) << usage.err.toStdString();

    const ProcessRun unknown = fenrow({QStringLiteral("flow"), QStringLiteral("rename"), QStringLiteral("X"),
                                QStringLiteral("Y")});
    EXPECT_EQ(unknown.status, 1);

    const ProcessRun version = fenrow({QStringLiteral("--version")});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out, QStringLiteral("fenrow " FENROW_VERSION_TEXT "\n"));

    const ProcessRun help = fenrow({QStringLiteral("--help")});
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(help.out.startsWith(QStringLiteral("Usage: fenrow"))) << help.out.toStdString();
}

TEST_F(EndToEndTest, AStoreThatCannotOpenIsLeftUntouched)
{
    ASSERT_TRUE(QDir().mkpath(QFileInfo(storePath()).absolutePath()));
    const QByteArray garbage("This is not a database, and it is the user's file.\n");
    {
        QFile file(storePath());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(garbage);
    }

    const ProcessRun run = fenrow({QStringLiteral("flow"), QStringLiteral("add"), QStringLiteral("Garden")});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.err.startsWith(QStringLiteral("Failed to create the Fenrow ModelContainer: ")))
        << run.err.toStdString();
    EXPECT_EQ(run.out, QString());

    QFile file(storePath());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), garbage);

    EXPECT_EQ(fenrow({QStringLiteral("help")}).status, 0);
}

TEST_F(EndToEndTest, ProgressFollowsTheInterfaceLanguage)
{
    ASSERT_EQ(fenrow({QStringLiteral("flow"), QStringLiteral("add"), QStringLiteral("Garten")}).status, 0);
    ASSERT_TRUE(QDir().mkpath(home.filePath(QStringLiteral("config/fenrow"))));
    QFile settings(home.filePath(QStringLiteral("config/fenrow/fenrow.conf")));
    ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
    settings.write("[General]\npreferences.uiLanguage=de\n");
    settings.close();

    const ProcessRun listed = fenrow({QStringLiteral("flows")});
    EXPECT_EQ(listed.out, QStringLiteral("1  Garten  Noch keine Aufgaben\n"));
    // The command's own words stay English.
    EXPECT_TRUE(fenrow({QStringLiteral("help")}).out.contains(QStringLiteral("Commands:")));
}

} // namespace
