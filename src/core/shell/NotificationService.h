#pragma once

#include "NotificationRequest.h"
#include "domain/Scheduler.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QUuid>

#include <chrono>
#include <functional>
#include <memory>

namespace fenrow {

class AppPreferences;
class FenrowStore;
class NotificationCenter;
class NotificationPresenter;
class RouteRequest;

// Keeps the pending notifications in step with the store: one reminder for
// each open task with a coming due date ("due." and the task's id in upper
// case, at `dueReminderHour` on its due day) and the morning digest
// ("digest.daily": the first three titles of the Ready list, every day at
// that hour). Each re-arming throws the whole list away and lays it out
// anew, so a completed task loses its reminder because the next re-arming
// no longer finds it; there is no diffing.
//
// Re-arms a moment after each change of the store and of the reminder
// preferences, and at once when the notification centre saw the wall clock
// jump. Opening a reminder brings the main window forward and routes to the
// task; opening the digest brings the window only. UI thread only.
class NotificationService : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds rearmDelay{400};
    // How long an orderly quit waits for the desktop to take Fenrow's
    // notifications away.
    static constexpr std::chrono::milliseconds withdrawLimit{2000};
    static constexpr qsizetype digestTitleCount = 3;
    static inline const QString reminderPrefix = QStringLiteral("due.");
    static inline const QString digestIdentifier = QStringLiteral("digest.daily");

    // What opening a notification reaches; either may be empty.
    struct Opening {
        std::function<void()> showMainWindow;
        QPointer<RouteRequest> routes;
    };

    // Time from the store's clock and calendar, waiting on `scheduler`.
    NotificationService(FenrowStore &store, AppPreferences &preferences, Scheduler &scheduler,
                        NotificationPresenter &presenter, Opening opening, QObject *parent = nullptr);
    ~NotificationService() override;

    // Once: takes the presenter's openings, follows the store and the
    // preferences, and re-arms. Later calls do nothing.
    void arm();
    bool isArmed() const { return m_armed; }
    // Lays out the pending list anew; nothing before `arm` or after
    // `withdrawAll`. On-screen reminders of tasks now done or deleted are
    // taken away.
    void rearm();
    // For an orderly quit: empties the pending list for good and takes
    // Fenrow's notifications off the screen. `done` runs once, when the
    // desktop answered or after `withdrawLimit`, whichever comes first.
    void withdrawAll(std::function<void()> done);
    // What opening the notification `identifier` does.
    void open(const QString &identifier);

    NotificationCenter &center() const { return *m_center; }

    static QString reminderIdentifier(const QUuid &nodeID);
    // The requests a re-arming at `now` lays out, reminders first.
    static QList<NotificationRequest> requests(const FenrowStore &store, const AppPreferences &preferences,
                                               const QDateTime &now);

signals:
    // A re-arming laid the list out.
    void rearmed();

private:
    void scheduleRearm();
    void closeStaleReminders();

    FenrowStore &m_store;
    AppPreferences &m_preferences;
    Scheduler &m_scheduler;
    Opening m_opening;
    std::unique_ptr<NotificationCenter> m_center;
    bool m_armed = false;
    bool m_withdrawn = false;
    Scheduler::Ticket m_rearm = 0;
};

} // namespace fenrow
