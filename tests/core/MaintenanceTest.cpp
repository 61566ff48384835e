#include "TestStore.h"

#include "domain/NodeStatus.h"
#include "domain/Scheduler.h"
#include "formats/FenrowBackup.h"
#include "shell/AppPreferences.h"
#include "shell/MaintenanceScheduler.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QSignalSpy>

#include <unistd.h>

namespace fenrow {
namespace {

using namespace std::chrono_literals;
using testing::berlinTime;
using testing::describe;
using testing::TestStore;

// A store in a real file, settings of its own, a folder to back up into,
// and time that moves only when the test moves it: the clock for "now",
// the scheduler for the timers.
class Maintenance : public ::testing::Test {
protected:
    Maintenance()
        : preferences(std::make_unique<QSettings>(settingsFolder.filePath(QStringLiteral("fenrow.conf")),
                                                  QSettings::IniFormat)),
          maintenance(*store, preferences, scheduler)
    {
        flow = store->addFlow(QStringLiteral("Home"));
    }

    // A task of the flow finished at `when`.
    const FlowNode &doneAt(const QString &title, const QDateTime &when)
    {
        const QDateTime now = store.clock.now();
        store.clock.set(when);
        const FlowNode *node = store->addNode(title, *flow);
        store->setStatus(NodeStatus::done, *node);
        store.clock.set(now);
        return *node;
    }

    QStringList taskTitles() const
    {
        QStringList titles;
        for (const FlowNode *node : flow->orderedItems())
            titles << node->title;
        return titles;
    }

    void chooseFolder(const QString &path) { preferences.setAutoBackupBookmark(path.toUtf8()); }

    // Hours pass on the wall clock and for the timers alike.
    void passHours(int hours)
    {
        for (int hour = 0; hour < hours; ++hour) {
            store.clock.advanceSeconds(3600);
            scheduler.advance(1h);
        }
    }

    static void setModified(const QString &path, const QDateTime &when)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::Append));
        ASSERT_TRUE(file.setFileTime(when, QFileDevice::FileModificationTime));
    }

    QStringList autoBackups() const
    {
        return QDir(backups.path())
            .entryList({FenrowBackup::automaticPrefix + QStringLiteral("*.fenrowbackup")},
                       QDir::Files | QDir::CaseSensitive, QDir::Name);
    }
    QStringList filesIn(const QString &folder) const { return QDir(folder).entryList(QDir::Files, QDir::Name); }

    static FenrowBackup readBackup(const QString &path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        auto decoded = FenrowBackup::decoded(file.readAll());
        EXPECT_TRUE(std::holds_alternative<FenrowBackup>(decoded));
        return std::holds_alternative<FenrowBackup>(decoded) ? std::get<FenrowBackup>(decoded) : FenrowBackup();
    }

    TestStore store;
    QTemporaryDir settingsFolder;
    QTemporaryDir backups;
    AppPreferences preferences;
    ManualScheduler scheduler;
    MaintenanceScheduler maintenance;
    const TaskFlow *flow = nullptr;
    testing::LogCapture log{"fenrow.autoBackup"};
    QStringList &autoBackupMessages = testing::LogCapture::lines();
};

TEST_F(Maintenance, AutoArchiveMovesExactlyTheTasksDoneMoreThanTheDaysAgo)
{
    const QDateTime now = store.clock.now();
    doneAt("eight days", now.addDays(-8));
    doneAt("a week to the second", now.addDays(-7));
    doneAt("six days", now.addDays(-6));
    store->addNode(QStringLiteral("open"), *flow);
    // Done without a time, as older data can be: never archived by age.
    const_cast<FlowNode &>(*store->addNode(QStringLiteral("undated"), *flow)).isDone = true;
    preferences.setAutoArchiveDays(7);

    maintenance.start();
    EXPECT_EQ(taskTitles(), (QStringList{"a week to the second", "six days", "open", "undated"}))
        << "at start: only what was done more than seven days ago";
    ASSERT_EQ(store->archiveRecords().size(), 1);
    EXPECT_EQ(store->archiveRecords()[0]->title, QStringLiteral("eight days"));

    // A new number takes effect 300 ms after it was chosen.
    preferences.setAutoArchiveDays(5);
    scheduler.advance(299ms);
    EXPECT_EQ(taskTitles().size(), 4);
    scheduler.advance(1ms);
    EXPECT_EQ(taskTitles(), (QStringList{"open", "undated"}));

    // Off: nothing more goes, however old.
    preferences.setAutoArchiveDays(0);
    doneAt("a year", now.addYears(-1));
    passHours(48);
    EXPECT_EQ(taskTitles(), (QStringList{"open", "undated", "a year"}));
    maintenance.stop();
    store.reopen();
    EXPECT_EQ(store->archiveRecords().size(), 3) << "the archive reached the file";
}

TEST_F(Maintenance, TheDayChangeRedrawsDateViewsThenArchives)
{
    maintenance.start();
    QSignalSpy changes(&*store, &FenrowStore::changed);
    // 9:00 in Berlin: the first look is within the hour, and the day is
    // the same.
    scheduler.advance(1h);
    EXPECT_EQ(changes.count(), 0);

    // The day turns at midnight, Berlin time, with both features off.
    store.clock.set(berlinTime(2026, 6, 11, 0, 0));
    scheduler.advance(15h);
    EXPECT_EQ(changes.count(), 1) << "date-dependent views hear of the new day";

    // With archiving on, the next midnight redraws first and then archives.
    doneAt("done on the 4th", berlinTime(2026, 6, 4, 23, 30));
    preferences.setAutoArchiveDays(7);
    scheduler.advance(300ms);
    EXPECT_EQ(taskTitles(), (QStringList{"done on the 4th"})) << "six days and a half, not yet";
    changes.clear();
    store.clock.set(berlinTime(2026, 6, 12, 0, 1));
    scheduler.advance(24h);
    EXPECT_EQ(changes.count(), 2) << "the day's redraw, then the archiving";
    EXPECT_TRUE(taskTitles().isEmpty());
}

TEST_F(Maintenance, NoFolderNoBackupAndNothingSaid)
{
    maintenance.start();
    passHours(24 * 8);
    EXPECT_EQ(preferences.lastAutoBackup(), std::nullopt);
    EXPECT_TRUE(autoBackupMessages.isEmpty()) << autoBackupMessages.join('\n').toStdString();
    EXPECT_FALSE(maintenance.lastBackupFailed());
    EXPECT_TRUE(filesIn(backups.path()).isEmpty());
    EXPECT_TRUE(QDir(store.folder.path()).entryList({"*.fenrowbackup"}).isEmpty());
}

TEST_F(Maintenance, WeeklyBackupsIntoTheChosenFolderKeepTheFiveNewest)
{
    // What the user keeps there by hand stays, however old.
    const QStringList ownFiles{"Fenrow Backup 2026-11-15.fenrowbackup", "Fenrow Auto Backup notes.txt",
                               "fenrow auto backup 2020-01-01.fenrowbackup"};
    for (const QString &name : ownFiles) {
        QFile file(backups.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("mine");
        file.close();
        setModified(file.fileName(), berlinTime(2020, 1, 1));
    }
    store->addNode(QStringLiteral("Water the plants"), *flow);
    maintenance.start();

    // Choosing a folder backs up within 300 ms, as none was ever made.
    chooseFolder(backups.path());
    scheduler.advance(299ms);
    EXPECT_TRUE(autoBackups().isEmpty());
    scheduler.advance(1ms);
    ASSERT_EQ(autoBackups(), QStringList{"Fenrow Auto Backup 2026-06-10.fenrowbackup"});
    EXPECT_EQ(preferences.lastAutoBackup(), store.clock.now());
    const FenrowBackup written = readBackup(backups.filePath(autoBackups()[0]));
    ASSERT_EQ(written.flows.size(), 1);
    EXPECT_EQ(written.flows[0].items.size(), 1);
    EXPECT_EQ(written.createdAt, store.clock.now().toUTC());

    // A week later, to the hour, the second.
    passHours(24 * 7 - 1);
    EXPECT_EQ(autoBackups().size(), 1);
    passHours(1);
    EXPECT_EQ(autoBackups(), (QStringList{"Fenrow Auto Backup 2026-06-10.fenrowbackup",
                                          "Fenrow Auto Backup 2026-06-17.fenrowbackup"}));

    // The sixth puts the oldest out (written first, it has the oldest
    // modification date); the user's own files stay.
    passHours(24 * 7 * 3);
    EXPECT_EQ(autoBackups().size(), 5);
    passHours(24 * 7);
    EXPECT_EQ(autoBackups(), (QStringList{"Fenrow Auto Backup 2026-06-17.fenrowbackup",
                                          "Fenrow Auto Backup 2026-06-24.fenrowbackup",
                                          "Fenrow Auto Backup 2026-07-01.fenrowbackup",
                                          "Fenrow Auto Backup 2026-07-08.fenrowbackup",
                                          "Fenrow Auto Backup 2026-07-15.fenrowbackup"}));
    for (const QString &name : ownFiles)
        EXPECT_TRUE(QFileInfo::exists(backups.filePath(name))) << name.toStdString();
    EXPECT_TRUE(autoBackupMessages.isEmpty()) << autoBackupMessages.join('\n').toStdString();

    // "Back up now" twice in a day: the name holds the day, the later
    // replaces the earlier.
    ASSERT_TRUE(maintenance.autoBackupNow(store.clock.now()));
    store.clock.advanceSeconds(60);
    ASSERT_TRUE(maintenance.autoBackupNow(store.clock.now()));
    EXPECT_EQ(autoBackups().size(), 5);
    EXPECT_EQ(preferences.lastAutoBackup(), store.clock.now());
}

// A folder no one may write into: a folder of ours made read-only, or for
// root, whom the mode does not stop, /proc, where the kernel makes no
// files for anyone.
QString unwritableFolder(const QTemporaryDir &scratch)
{
    if (geteuid() == 0)
        return QStringLiteral("/proc");
    const QString path = scratch.filePath(QStringLiteral("read-only"));
    QDir().mkpath(path);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner);
    return path;
}

TEST_F(Maintenance, AFolderThatCannotBeWrittenFailsLoudlyAndChangesNothing)
{
    doneAt("paid", store.clock.now().addDays(-1));
    const QDateTime earlier = store.clock.now().addDays(-8);
    preferences.setLastAutoBackup(earlier);
    const QStringList before = describe(*store);
    QSignalSpy status(&maintenance, &MaintenanceScheduler::backupStatusChanged);

    QTemporaryDir scratch;
    chooseFolder(unwritableFolder(scratch));
    EXPECT_FALSE(maintenance.autoBackupNow(store.clock.now()));
    ASSERT_EQ(autoBackupMessages.size(), 1);
    EXPECT_TRUE(autoBackupMessages[0].startsWith("Automatic backup failed: \"")) << autoBackupMessages[0].toStdString();
    EXPECT_EQ(preferences.lastAutoBackup(), earlier) << "so the next check tries again";
    EXPECT_TRUE(maintenance.lastBackupFailed());
    EXPECT_EQ(status.count(), 1);
    EXPECT_EQ(describe(*store), before);

    // A folder that vanished: found missing before anything is written.
    autoBackupMessages.clear();
    const QString gone = scratch.filePath(QStringLiteral("gone"));
    ASSERT_TRUE(QDir().mkpath(gone));
    chooseFolder(gone);
    EXPECT_FALSE(maintenance.lastBackupFailed()) << "another folder, no news yet";
    ASSERT_TRUE(QDir(gone).removeRecursively());
    EXPECT_FALSE(maintenance.autoBackupNow(store.clock.now()));
    EXPECT_EQ(autoBackupMessages, QStringList{"Automatic backup folder could not be resolved"});
    EXPECT_TRUE(maintenance.lastBackupFailed());
    EXPECT_EQ(preferences.lastAutoBackup(), earlier);
    EXPECT_EQ(describe(*store), before);

    // Each hourly check tries again, and once the folder is back, succeeds.
    maintenance.start();
    EXPECT_EQ(autoBackupMessages.size(), 2) << "at start";
    passHours(1);
    EXPECT_EQ(autoBackupMessages.size(), 3) << "an hour later";
    ASSERT_TRUE(QDir().mkpath(gone));
    passHours(1);
    EXPECT_EQ(autoBackupMessages.size(), 3);
    EXPECT_EQ(filesIn(gone), QStringList{"Fenrow Auto Backup 2026-06-10.fenrowbackup"});
    EXPECT_EQ(preferences.lastAutoBackup(), store.clock.now());
    EXPECT_FALSE(maintenance.lastBackupFailed());

    // Nothing of it reached the file either. (Last: the scheduler keeps
    // the store it was made with, as the program's lives as long as it.)
    maintenance.stop();
    store.reopen();
    EXPECT_EQ(describe(*store), before);
}

TEST_F(Maintenance, StoppedItWaitsForNothing)
{
    maintenance.start();
    maintenance.start();
    EXPECT_EQ(scheduler.pendingCount(), 2) << "the hourly check and the day change, once";
    maintenance.stop();
    EXPECT_EQ(scheduler.pendingCount(), 0);
    chooseFolder(backups.path());
    preferences.setAutoArchiveDays(3);
    EXPECT_EQ(scheduler.pendingCount(), 0) << "a setting changed while stopped arms nothing";
    passHours(24 * 8);
    EXPECT_TRUE(autoBackups().isEmpty());

    // Started again, it begins with the maintenance.
    maintenance.start();
    EXPECT_EQ(autoBackups().size(), 1);
}

} // namespace
} // namespace fenrow
