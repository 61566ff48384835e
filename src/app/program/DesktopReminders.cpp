#include "DesktopReminders.h"

#include "FreedesktopNotifications.h"
#include "shell/NotificationService.h"
#include "shell/RouteRequest.h"

namespace fenrow {

DesktopReminders::DesktopReminders(FenrowStore &store, AppPreferences &preferences, Scheduler &scheduler,
                                   std::function<void()> showMainWindow, RouteRequest *routes, QObject *parent)
    : QObject(parent), m_presenter(std::make_unique<FreedesktopNotifications>())
{
    m_service = std::make_unique<NotificationService>(
        store, preferences, scheduler, *m_presenter,
        NotificationService::Opening{std::move(showMainWindow), routes});
    m_service->arm();
}

// The service before the presenter it shows through.
DesktopReminders::~DesktopReminders()
{
    m_service.reset();
}

} // namespace fenrow
