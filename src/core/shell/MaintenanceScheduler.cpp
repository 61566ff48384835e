#include "MaintenanceScheduler.h"

#include "AppPreferences.h"
#include "domain/Clock.h"
#include "domain/FenrowStore.h"
#include "formats/FenrowBackup.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QSaveFile>

#include <algorithm>
#include <limits>

Q_LOGGING_CATEGORY(fenrowAutoBackupLog, "fenrow.autoBackup")

namespace fenrow {

namespace {

// The day-change timer never waits longer than this, so that a wake from
// suspend (the timers' clock stands still meanwhile) or a clock set
// forward is noticed within the hour.
constexpr std::chrono::milliseconds dayChangeLookout = std::chrono::hours(1);

// The chosen folder, as the absolute path its bookmark holds; none when it
// is gone or no longer a folder. A path cannot follow a folder that moved,
// so a bookmark that resolves is never stale and needs no renewal.
std::optional<QString> resolvedFolder(const std::optional<QByteArray> &bookmark)
{
    if (!bookmark)
        return std::nullopt;
    const QString path = QString::fromUtf8(*bookmark);
    const QFileInfo folder(path);
    if (path.isEmpty() || !folder.isAbsolute() || !folder.isDir())
        return std::nullopt;
    return QDir::cleanPath(path);
}

} // namespace

MaintenanceScheduler::MaintenanceScheduler(FenrowStore &store, AppPreferences &preferences, Scheduler &scheduler,
                                           QObject *parent)
    : QObject(parent), m_store(store), m_preferences(preferences), m_scheduler(scheduler)
{
    connect(&m_preferences, &AppPreferences::changed, this, &MaintenanceScheduler::settingChanged);
}

MaintenanceScheduler::~MaintenanceScheduler()
{
    stop();
}

QDateTime MaintenanceScheduler::now() const
{
    return m_store.clock().now();
}

void MaintenanceScheduler::start()
{
    if (m_running)
        return;
    m_running = true;
    const QDateTime moment = now();
    m_day = m_store.calendar().dayOf(moment);
    runMaintenance(moment);
    armBackupCheck();
    armDayChange();
}

void MaintenanceScheduler::stop()
{
    m_running = false;
    for (Scheduler::Ticket *ticket : {&m_backupCheck, &m_dayChange, &m_debounce}) {
        m_scheduler.cancel(*ticket);
        *ticket = 0;
    }
}

void MaintenanceScheduler::runMaintenance(const QDateTime &now)
{
    if (const int days = m_preferences.autoArchiveDays(); days >= 1)
        m_store.autoArchive(days, now);
    autoBackupIfDue(now);
}

void MaintenanceScheduler::autoBackupIfDue(const QDateTime &now)
{
    if (!m_preferences.autoBackupBookmark())
        return;
    const std::optional<QDateTime> last = m_preferences.lastAutoBackup();
    if (last && now < last->addSecs(backupInterval.count()))
        return;
    autoBackupNow(now);
}

bool MaintenanceScheduler::autoBackupNow(const QDateTime &now)
{
    const std::optional<QString> folder = resolvedFolder(m_preferences.autoBackupBookmark());
    if (!folder) {
        qCWarning(fenrowAutoBackupLog, "Automatic backup folder could not be resolved");
        setBackupFailed(true);
        return false;
    }

    QString problem;
    const std::optional<QByteArray> bytes = m_store.makeBackup(now).encoded(&problem);
    if (bytes) {
        const QString path =
            QDir(*folder).filePath(FenrowBackup::fileName(FenrowBackup::automaticPrefix, now, m_store.calendar()));
        QSaveFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(*bytes) != bytes->size() || !file.commit())
            problem = QStringLiteral("\"%1\": %2").arg(QDir::toNativeSeparators(path), file.errorString());
    } else if (problem.isEmpty()) {
        problem = QStringLiteral("the store cannot be written as a backup");
    }
    if (!problem.isEmpty()) {
        qCWarning(fenrowAutoBackupLog, "Automatic backup failed: %s", qUtf8Printable(problem));
        setBackupFailed(true);
        return false;
    }

    m_preferences.setLastAutoBackup(now);
    rotate(*folder);
    setBackupFailed(false);
    return true;
}

void MaintenanceScheduler::setBackupFailed(bool failed)
{
    if (m_lastBackupFailed == failed)
        return;
    m_lastBackupFailed = failed;
    emit backupStatusChanged();
}

void MaintenanceScheduler::armBackupCheck()
{
    m_backupCheck = m_scheduler.schedule(backupCheckInterval, [this] {
        m_backupCheck = 0;
        autoBackupIfDue(now());
        armBackupCheck();
    });
}

void MaintenanceScheduler::armDayChange()
{
    const QDateTime moment = now();
    const auto untilNextDay = std::chrono::milliseconds(moment.msecsTo(m_store.calendar().startOfNextDay(moment)));
    const auto wait = std::clamp(untilNextDay, std::chrono::milliseconds(1), dayChangeLookout);
    m_dayChange = m_scheduler.schedule(wait, [this] {
        m_dayChange = 0;
        dayTimerFired();
    });
}

void MaintenanceScheduler::dayTimerFired()
{
    const QDateTime moment = now();
    const QDate today = m_store.calendar().dayOf(moment);
    // A timer that woke early, or the hourly look that found the same day,
    // only waits again.
    if (today != m_day) {
        m_day = today;
        // Date-dependent views redraw even when both features are off.
        m_store.announceDayChange();
        runMaintenance(moment);
    }
    if (m_running)
        armDayChange();
}

void MaintenanceScheduler::settingChanged(const QString &key)
{
    const bool folder = key == QLatin1StringView(PreferenceKey::autoBackupBookmark);
    if (!folder && key != QLatin1StringView(PreferenceKey::autoArchiveDays))
        return;
    // A failure in the folder left behind is no news about the new one.
    if (folder)
        setBackupFailed(false);
    if (!m_running)
        return;
    m_scheduler.cancel(m_debounce);
    m_debounce = m_scheduler.schedule(settingsDebounce, [this] {
        m_debounce = 0;
        runMaintenance(now());
    });
}

void MaintenanceScheduler::rotate(const QString &folder)
{
    // Only what this scheduler names; a backup saved by hand under another
    // name is never touched. A listing that fails leaves nothing to do.
    QFileInfoList backups;
    for (const QFileInfo &entry : QDir(folder).entryInfoList(QDir::Files, QDir::NoSort)) {
        if (entry.fileName().startsWith(FenrowBackup::automaticPrefix) && entry.suffix() == FenrowBackup::fileExtension)
            backups.append(entry);
    }
    if (backups.size() <= keptBackups)
        return;
    // Newest first; a date that cannot be read counts as the distant past,
    // and the name (which holds the day) settles a tie.
    const auto modified = [](const QFileInfo &entry) {
        const QDateTime date = entry.lastModified();
        return date.isValid() ? date.toMSecsSinceEpoch() : std::numeric_limits<qint64>::min();
    };
    std::sort(backups.begin(), backups.end(), [&](const QFileInfo &a, const QFileInfo &b) {
        const qint64 left = modified(a), right = modified(b);
        return left != right ? left > right : a.fileName() > b.fileName();
    });
    // A deletion that fails leaves that file; the others still go.
    for (qsizetype i = keptBackups; i < backups.size(); ++i)
        QFile::remove(backups[i].filePath());
}

} // namespace fenrow
