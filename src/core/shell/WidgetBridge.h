#pragma once

#include "ReadySnapshot.h"
#include "domain/Scheduler.h"

#include <QObject>
#include <QSet>
#include <QString>
#include <QUuid>

#include <chrono>
#include <optional>

class QFileSystemWatcher;

namespace fenrow {

class AppPreferences;
class FenrowHistory;
class FenrowStore;

// The program's side of the tray widget, which runs in a process of its
// own and never opens the store. The two meet in the shared folder: the
// bridge keeps "ready-snapshot.json" equal to the Ready list (400 ms after
// the store, the sort or the accent changed, and at each midnight), and
// applies each tick the widget parks in "pending-completions" as a
// "Complete task" the user can undo. A tick parked while the program was
// not running is applied when the bridge starts.
//
// UI thread only; time comes from the store's clock, waiting from the
// scheduler.
class WidgetBridge : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds debounce{400};

    WidgetBridge(FenrowStore &store, FenrowHistory &history, AppPreferences &preferences, Scheduler &scheduler,
                 QString sharedFolder, QObject *parent = nullptr);
    ~WidgetBridge() override;

    // Follows the store and the two settings, watches the ticks' folder,
    // applies what is parked and publishes. A second start changes nothing.
    void start();
    bool isStarted() const { return m_started; }

    // Writes the snapshot for `now` unless it equals the last one written,
    // and re-arms the day timer for its `validUntil`.
    void publish(const QDateTime &now);
    // Applies and removes the parked ticks, oldest first, each at most
    // once in this run.
    void applyPending();

    const QString &sharedFolder() const { return m_sharedFolder; }
    const std::optional<ReadySnapshot> &lastPublished() const { return m_lastPublished; }

signals:
    // A new snapshot is in the file; the widget sees the file change.
    void snapshotWritten();

private:
    void schedulePublish();
    void watchPending();
    void armDayTimer(const QDateTime &now, const QDateTime &validUntil);

    FenrowStore &m_store;
    FenrowHistory &m_history;
    AppPreferences &m_preferences;
    Scheduler &m_scheduler;
    QString m_sharedFolder;
    bool m_started = false;
    QFileSystemWatcher *m_watch = nullptr;
    Scheduler::Ticket m_debounce = 0;
    Scheduler::Ticket m_dayTimer = 0;
    std::optional<ReadySnapshot> m_lastPublished;
    QSet<QUuid> m_applied;
};

} // namespace fenrow
