#pragma once

#include "domain/Scheduler.h"

#include <QDate>
#include <QDateTime>
#include <QObject>
#include <QString>

#include <chrono>
#include <optional>

namespace fenrow {

class AppPreferences;
class FenrowStore;

// The housekeeping nobody asks for each time: done tasks older than
// "autoArchiveDays" go to the archive, and once a week the whole store is
// written into the folder of "autoBackupBookmark" as "Fenrow Auto Backup
// <day>.fenrowbackup", of which the five newest stay.
//
// Once started it works at start, at each turn of the local day and 300 ms
// after either setting changed; the backup is also looked at hourly, for a
// machine that stays up for weeks. Time comes from the store's clock and
// calendar, waiting from the scheduler, so tests move both by hand. UI
// thread only; the encoding of a large store blocks it for as long as it
// takes, which a weekly backup can afford.
class MaintenanceScheduler : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::seconds backupInterval{604800};
    static constexpr std::chrono::seconds backupCheckInterval{3600};
    static constexpr std::chrono::milliseconds settingsDebounce{300};
    static constexpr int keptBackups = 5;

    MaintenanceScheduler(FenrowStore &store, AppPreferences &preferences, Scheduler &scheduler,
                         QObject *parent = nullptr);
    ~MaintenanceScheduler() override;

    // Runs the maintenance now, then arms the hourly check, the day change
    // and the settings' debounce. A second start changes nothing.
    void start();
    // Cancels everything `start` armed; a later start begins again.
    void stop();
    bool isRunning() const { return m_running; }

    // Archives (when a number of days is set), then `autoBackupIfDue`.
    void runMaintenance(const QDateTime &now);
    // A backup when a folder is chosen and the last one is a week old or
    // there is none.
    void autoBackupIfDue(const QDateTime &now);
    // Writes a backup into the chosen folder now (also Settings' "Back up
    // now"). False, logged under "fenrow.autoBackup", when the folder
    // cannot be found or the file not written; "lastAutoBackup" then stays,
    // so the next check tries again.
    bool autoBackupNow(const QDateTime &now);

    // The latest backup tried failed; a later success, or another folder,
    // clears it.
    bool lastBackupFailed() const { return m_lastBackupFailed; }

signals:
    void backupStatusChanged();

private:
    QDateTime now() const;
    void setBackupFailed(bool failed);
    void armBackupCheck();
    void armDayChange();
    void dayTimerFired();
    void settingChanged(const QString &key);
    // Deletes the automatic backups in `folder` past the five newest.
    static void rotate(const QString &folder);

    FenrowStore &m_store;
    AppPreferences &m_preferences;
    Scheduler &m_scheduler;
    bool m_running = false;
    bool m_lastBackupFailed = false;
    // The local day the day-change timer last saw.
    QDate m_day;
    Scheduler::Ticket m_backupCheck = 0;
    Scheduler::Ticket m_dayChange = 0;
    Scheduler::Ticket m_debounce = 0;
};

} // namespace fenrow
