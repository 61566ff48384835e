#include "DesktopBusHandler.h"

#include "AppShell.h"
#include "window/MainWindow.h"
#include "cli/CommandCatalog.h"
#include "cli/CommandForwarding.h"
#include "shell/AppURLRouter.h"

#include <QUrl>

namespace fenrow {

DesktopBusHandler::DesktopBusHandler(const CommandWorkspace &workspace, AppShell &shell, AppURLRouter &router,
                                     RouteRequest *routes, QString storePath)
    : m_workspace(workspace), m_shell(shell), m_router(router), m_storePath(std::move(storePath)),
      m_intents{*workspace.store, *workspace.history, *workspace.preferences, *workspace.environment,
                [&shell] { shell.showMainWindow(); }, routes}
{
    CommandCatalog::registerAll(m_registry);
}

void DesktopBusHandler::activate()
{
    m_shell.showMainWindow();
}

void DesktopBusHandler::toggleCapture()
{
    m_shell.toggleQuickCapture();
}

void DesktopBusHandler::openURL(const QString &url)
{
    m_router.route(QUrl(url));
}

ForwardedCommand::Reply DesktopBusHandler::runCommand(const ForwardedCommand::Request &request)
{
    return CommandForwarding::runInOwner(m_registry, m_workspace, request);
}

} // namespace fenrow
