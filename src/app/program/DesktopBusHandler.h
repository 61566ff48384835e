#pragma once

#include "FenrowBusHandler.h"
#include "cli/CommandRegistry.h"
#include "cli/CommandWorkspace.h"
#include "shell/SystemIntents.h"

namespace fenrow {

class AppShell;
class AppURLRouter;

// What the desktop program does for callers on the session bus: a second
// start raises the window, toggles the capture panel or routes its URL;
// intents and command lines run on the program's own store and history, so
// the window shows their changes at once and Undo takes them back.
class DesktopBusHandler : public FenrowBusHandler {
public:
    DesktopBusHandler(const CommandWorkspace &workspace, AppShell &shell, AppURLRouter &router,
                      RouteRequest *routes, QString storePath);

    QString storePath() const override { return m_storePath; }
    void activate() override;
    void toggleCapture() override;
    void openURL(const QString &url) override;
    IntentServices &intentServices() override { return m_intents; }
    ForwardedCommand::Reply runCommand(const ForwardedCommand::Request &request) override;

private:
    CommandWorkspace m_workspace;
    AppShell &m_shell;
    AppURLRouter &m_router;
    QString m_storePath;
    CommandRegistry m_registry;
    IntentServices m_intents;
};

} // namespace fenrow
