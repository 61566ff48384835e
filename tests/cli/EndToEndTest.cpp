// The real `fenrow` executable, run as a user would: separate processes on
// one data folder, no display, nothing but the environment to go on.
#include "QtPrinters.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

struct ProcessRun {
    int status = -1;
    QString out;
    QString err;

    QJsonDocument json() const { return QJsonDocument::fromJson(out.toUtf8()); }
};

class EndToEndTest : public ::testing::Test {
protected:
    ProcessRun fenrow(const QStringList &arguments, const QByteArray &input = {})
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "LANGUAGE", "LANG"})
            environment.remove(name);
        environment.insert("XDG_DATA_HOME", home.filePath("data"));
        environment.insert("XDG_CONFIG_HOME", home.filePath("config"));
        environment.insert("LC_ALL", "C.UTF-8");
        environment.insert("TZ", "Europe/Berlin");

        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(FENROW_EXECUTABLE, arguments);
        ProcessRun run;
        if (!process.waitForStarted()) {
            ADD_FAILURE() << "cannot start " << FENROW_EXECUTABLE;
            return run;
        }
        process.write(input);
        process.closeWriteChannel();
        if (!process.waitForFinished(60000)) {
            ADD_FAILURE() << "fenrow did not finish: " << arguments.join(' ').toStdString();
            process.kill();
            process.waitForFinished();
        }
        run.status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        run.out = QString::fromUtf8(process.readAllStandardOutput());
        run.err = QString::fromUtf8(process.readAllStandardError());
        return run;
    }

    void writeFile(const QString &relativePath, const QByteArray &bytes)
    {
        const QString path = home.filePath(relativePath);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).absolutePath()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QTemporaryDir home;
};

TEST_F(EndToEndTest, FlowsPersistAcrossRunsWithoutADisplay)
{
    const ProcessRun added = fenrow({"flow", "add", "Launch site", "--json", "--now", "2026-06-10T09:00:00"});
    ASSERT_EQ(added.status, 0) << added.err.toStdString();
    EXPECT_EQ(added.err, QString());
    const QString id = added.json().object()["id"].toString();
    EXPECT_EQ(added.json().object()["createdAt"].toString(), "2026-06-10T09:00:00+02:00");
    EXPECT_TRUE(QFile::exists(home.filePath("data/fenrow/default.store")));

    ASSERT_EQ(fenrow({"flow", "add", "Garden"}).status, 0);
    ASSERT_EQ(fenrow({"flow", "rename", id.toLower(), "Website"}).status, 0);

    const QJsonArray flows = fenrow({"flows", "--json"}).json().array();
    ASSERT_EQ(flows.size(), 2);
    EXPECT_EQ(flows[0].toObject()["id"].toString(), id);
    EXPECT_EQ(fenrow({"flows"}).out, "1  Website  No tasks yet\n2  Garden   No tasks yet\n");
}

TEST_F(EndToEndTest, ExitStatusesAndConfirmation)
{
    ASSERT_EQ(fenrow({"flow", "add", "Tax"}).status, 0);

    const ProcessRun usage = fenrow({"flow", "rename", "Tax"});
    EXPECT_EQ(usage.status, 2);
    EXPECT_TRUE(usage.err.contains("fenrow help flow rename")) << usage.err.toStdString();
    EXPECT_EQ(fenrow({"flow", "rename", "Nothing", "Y"}).status, 1);

    // Piped input is no terminal: a "y" on it must not delete.
    const ProcessRun refused = fenrow({"flow", "delete", "Tax"}, "y\n");
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(refused.err.startsWith("fenrow: ")) << refused.err.toStdString();
    EXPECT_EQ(fenrow({"flows", "--json"}).json().array().size(), 1);
    EXPECT_EQ(fenrow({"flow", "delete", "Tax", "--yes"}).status, 0);
    EXPECT_EQ(fenrow({"flows", "--json"}).json().array().size(), 0);

    EXPECT_EQ(fenrow({"--version"}).out, "fenrow " FENROW_VERSION_TEXT "\n");
}

TEST_F(EndToEndTest, AStoreThatCannotOpenIsLeftUntouched)
{
    const QByteArray garbage("This is not a database, and it is the user's file.\n");
    writeFile("data/fenrow/default.store", garbage);

    const ProcessRun run = fenrow({"flow", "add", "Garden"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.err.startsWith("Failed to create the Fenrow ModelContainer: ")) << run.err.toStdString();
    EXPECT_EQ(run.out, QString());
    QFile file(home.filePath("data/fenrow/default.store"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), garbage);

    EXPECT_EQ(fenrow({"help"}).status, 0);
}

TEST_F(EndToEndTest, ProgressAndDatePhrasesFollowTheInterfaceLanguage)
{
    const QStringList today{"--json", "--now", "2026-06-10T09:00:00"};
    EXPECT_EQ(fenrow(QStringList{"parse-date", "morgen Team anrufen"} + today).out.trimmed(), "null");
    ASSERT_EQ(fenrow({"flow", "add", "Garten"}).status, 0);
    writeFile("config/fenrow/fenrow.conf", "[General]\npreferences.uiLanguage=de\n");
    EXPECT_EQ(fenrow({"flows"}).out, "1  Garten  Noch keine Aufgaben\n");
    // The command's own words stay English.
    EXPECT_TRUE(fenrow({"help"}).out.contains("Commands:"));
    EXPECT_EQ(fenrow(QStringList{"parse-date", "morgen Team anrufen"} + today).json().object()["date"], "2026-06-11");

    const ProcessRun added = fenrow(QStringList{"add", "Bericht am 3. März"} + today);
    ASSERT_EQ(added.status, 0) << added.err.toStdString();
    EXPECT_EQ(added.json().object()["title"], "Bericht");
    EXPECT_EQ(added.json().object()["dueDate"], "2027-03-03T00:00:00+01:00");
}

TEST_F(EndToEndTest, AddedTasksShowInTheReadyListInTheSavedSort)
{
    const ProcessRun added = fenrow({"add", "Sweep", "--json"});
    ASSERT_EQ(added.status, 0) << added.err.toStdString();
    ASSERT_EQ(fenrow({"add", "Pay rent", "--flow", "Home"}).status, 0);
    ASSERT_EQ(fenrow({"edit", "pay", "--priority", "high", "--due", "2026-06-01"}).status, 0);
    writeFile("config/fenrow/fenrow.conf", "[General]\npreferences.readySort=priority\n");

    const ProcessRun ready = fenrow({"ready", "--json", "--now", "2026-06-10T09:00:00"});
    ASSERT_EQ(ready.status, 0) << ready.err.toStdString();
    const QJsonArray tasks = ready.json().array();
    ASSERT_EQ(tasks.size(), 2) << ready.out.toStdString();
    EXPECT_EQ(tasks[0].toObject()["title"].toString(), "Pay rent");
    EXPECT_EQ(tasks[0].toObject()["flowName"].toString(), "Home");
    EXPECT_EQ(tasks[0].toObject()["dueDate"].toString(), "2026-06-01T00:00:00+02:00");
    EXPECT_EQ(tasks[0].toObject()["isOverdue"], true);
    EXPECT_EQ(tasks[1].toObject()["id"], added.json().object()["id"]);
    EXPECT_EQ(tasks[1].toObject()["flowName"].toString(), "Untitled flow");
}

TEST_F(EndToEndTest, RunsAtTheSameTimeTakeTurnsAndLoseNothing)
{
    ASSERT_EQ(fenrow({"flow", "add", "Errands"}).status, 0);
    // Two loops of a hundred separate runs each, side by side: each run
    // waits for the store while the other has it.
    QList<QProcess *> loops;
    for (const char *side : {"left", "right"}) {
        auto *loop = new QProcess;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_DATA_HOME", home.filePath("data"));
        environment.insert("XDG_CONFIG_HOME", home.filePath("config"));
        environment.insert("FENROW", FENROW_EXECUTABLE);
        environment.insert("SIDE", side);
        loop->setProcessEnvironment(environment);
        loop->start("bash", {"-c", "for i in $(seq 100); do \"$FENROW\" add \"$SIDE $i\" --flow Errands "
                                   ">/dev/null || exit 1; done"});
        loops << loop;
    }
    for (QProcess *loop : loops) {
        EXPECT_TRUE(loop->waitForFinished(240000));
        EXPECT_EQ(loop->exitCode(), 0) << loop->readAllStandardError().toStdString();
        delete loop;
    }
    const QJsonArray flows = fenrow({"flows", "--json"}).json().array();
    ASSERT_EQ(flows.size(), 1);
    EXPECT_EQ(flows[0].toObject()["progress"].toObject()["totalCount"].toInt(), 200);
}

TEST_F(EndToEndTest, CommandsLeaveTheImageLibrariesToTheProgramThatDrawsPreviews)
{
    QProcess ldd;
    ldd.start("ldd", {FENROW_EXECUTABLE});
    ASSERT_TRUE(ldd.waitForFinished(30000));
    const QString libraries = QString::fromUtf8(ldd.readAllStandardOutput());
    ASSERT_TRUE(libraries.contains("libQt6Core")) << libraries.toStdString();
    for (const char *heavy : {"libQt6Gui", "libQt6Widgets", "libpoppler", "libpng", "libX11"})
        EXPECT_FALSE(libraries.contains(heavy)) << heavy;

    // "attach" is handed to the desktop program, which draws the preview.
    ASSERT_EQ(fenrow({"flow", "add", "Home"}).status, 0);
    writeFile("dot.png", QByteArray::fromBase64("iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mP8z8DwHwAFBQ"
                                                "IAX8jx0gAAAABJRU5ErkJggg=="));
    const ProcessRun attached = fenrow({"attach", "Home", home.filePath("dot.png")});
    EXPECT_EQ(attached.status, 0) << attached.err.toStdString();
    EXPECT_TRUE(attached.out.contains("with a preview")) << attached.out.toStdString();
}

} // namespace
