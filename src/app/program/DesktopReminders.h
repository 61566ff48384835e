#pragma once

#include <QObject>

#include <functional>
#include <memory>

namespace fenrow {

class AppPreferences;
class FenrowStore;
class FreedesktopNotifications;
class NotificationService;
class RouteRequest;
class Scheduler;

// Due reminders and the morning digest on this desktop, for as long as the
// program's interface is installed: the notification service, armed at
// once, over the desktop's notification server. Opening a reminder brings
// the window forward and routes to the task. Destroying it stops the
// timers; what is on screen stays.
class DesktopReminders : public QObject {
    Q_OBJECT

public:
    // The notification server of the session bus.
    DesktopReminders(FenrowStore &store, AppPreferences &preferences, Scheduler &scheduler,
                     std::function<void()> showMainWindow, RouteRequest *routes, QObject *parent = nullptr);
    ~DesktopReminders() override;

    NotificationService &service() const { return *m_service; }
    FreedesktopNotifications &presenter() const { return *m_presenter; }

private:
    std::unique_ptr<FreedesktopNotifications> m_presenter;
    std::unique_ptr<NotificationService> m_service;
};

} // namespace fenrow
