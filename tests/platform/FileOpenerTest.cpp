#include "FileOpener.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/time.h>

namespace fenrow {
namespace {

QStringList logged;

void keepMessage(QtMsgType, const QMessageLogContext &context, const QString &message)
{
    logged << QString::fromLatin1(context.category) + QStringLiteral(": ") + message;
}

FlowFile fileWith(const QString &name, std::optional<QByteArray> bytes)
{
    FlowFile file;
    file.filename = name;
    file.data.set(std::move(bytes));
    return file;
}

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Staging goes below the temporary location, moved here into a folder of
// the test's own; log lines are collected instead of printed.
class FileOpening : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_previousTemp = qgetenv("TMPDIR");
        qputenv("TMPDIR", temp.path().toUtf8());
        logged.clear();
        m_previousHandler = qInstallMessageHandler(keepMessage);
    }
    void TearDown() override
    {
        qInstallMessageHandler(m_previousHandler);
        qputenv("TMPDIR", m_previousTemp);
    }

    QString staged(const QString &name, const QByteArray &bytes = "contents")
    {
        const std::optional<QString> path = FileOpener::stage(fileWith(name, bytes));
        EXPECT_TRUE(path.has_value()) << name.toStdString();
        return path.value_or(QString());
    }
    // The staging folder holding `path`, relative to the temporary location.
    QString folderOf(const QString &path) const
    {
        return QDir(temp.path()).relativeFilePath(QFileInfo(path).absolutePath());
    }
    void age(const QString &name, int days)
    {
        const QString path = temp.filePath(name);
        ASSERT_TRUE(QDir().mkpath(path));
        timeval times[2] = {};
        times[0].tv_sec = times[1].tv_sec = QDateTime::currentSecsSinceEpoch() - days * 86400;
        ASSERT_EQ(::utimes(QFile::encodeName(path).constData(), times), 0);
    }

    QTemporaryDir temp;

private:
    QByteArray m_previousTemp;
    QtMessageHandler m_previousHandler = nullptr;
};

TEST_F(FileOpening, StagesEachOpenInAFreshFolderUnderItsName)
{
    const QString first = staged(QStringLiteral("Report 2026.pdf"), "%PDF");
    EXPECT_EQ(QFileInfo(first).fileName(), QStringLiteral("Report 2026.pdf"));
    EXPECT_EQ(contentsOf(first), QByteArray("%PDF"));
    EXPECT_NE(folderOf(first), folderOf(staged(QStringLiteral("Report 2026.pdf"), "%PDF")));
    EXPECT_EQ(contentsOf(staged(QStringLiteral("empty.txt"), {})), QByteArray());
    EXPECT_TRUE(folderOf(first).startsWith(QStringLiteral("fenrow-open-"))) << folderOf(first).toStdString();

    // Names come from the data and must not lead out of the folder.
    for (const QString &name : {QStringLiteral("../../escape"), QStringLiteral(".."), QStringLiteral("/x")}) {
        const QString folder = folderOf(staged(name));
        EXPECT_TRUE(folder.startsWith(QStringLiteral("fenrow-open-")) && !folder.contains(QLatin1Char('/')))
            << folder.toStdString();
    }
    EXPECT_FALSE(QFileInfo::exists(temp.filePath(QStringLiteral("escape"))));
}

TEST_F(FileOpening, StagingClearsOnlyItsOwnOldFolders)
{
    age(QStringLiteral("fenrow-open-old"), 2);
    age(QStringLiteral("fenrow-open-recent"), 0);
    age(QStringLiteral("someone-else"), 2);
    staged(QStringLiteral("a.txt"));
    EXPECT_FALSE(QFileInfo::exists(temp.filePath(QStringLiteral("fenrow-open-old"))));
    EXPECT_TRUE(QFileInfo::exists(temp.filePath(QStringLiteral("fenrow-open-recent"))));
    EXPECT_TRUE(QFileInfo::exists(temp.filePath(QStringLiteral("someone-else"))));
}

TEST_F(FileOpening, ExportCopyWritesTheBytesOrLogsWhy)
{
    const QString target = temp.filePath(QStringLiteral("copy.bin"));
    EXPECT_TRUE(FileOpener::exportCopy(fileWith(QStringLiteral("a.bin"), QByteArray("\x00\x01", 2)), target));
    EXPECT_EQ(contentsOf(target), QByteArray("\x00\x01", 2));
    EXPECT_TRUE(logged.isEmpty());

    EXPECT_FALSE(FileOpener::exportCopy(fileWith(QStringLiteral("a.bin"), QByteArray("x")),
                                        temp.filePath(QStringLiteral("missing/copy.bin"))));
    ASSERT_EQ(logged.size(), 1);
    EXPECT_TRUE(logged[0].startsWith(QStringLiteral("fenrow.files: Export copy failed: ")));

    // A file whose bytes are gone can be neither exported nor opened.
    logged.clear();
    const FlowFile hollow = fileWith(QStringLiteral("gone.pdf"), std::nullopt);
    EXPECT_FALSE(FileOpener::exportCopy(hollow, target));
    EXPECT_FALSE(FileOpener::open(hollow));
    ASSERT_EQ(logged.size(), 2);
    EXPECT_TRUE(logged[0].startsWith(QStringLiteral("fenrow.files: Export copy failed: ")));
    EXPECT_TRUE(logged[1].startsWith(QStringLiteral("fenrow.files: Could not stage a file for opening: ")));
    EXPECT_EQ(contentsOf(target), QByteArray("\x00\x01", 2));
}

} // namespace
} // namespace fenrow
