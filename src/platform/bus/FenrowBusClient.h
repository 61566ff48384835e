#pragma once

#include "shell/ForwardedCommand.h"

#include <QDBusConnection>
#include <QString>

#include <optional>

namespace fenrow {

// A second process's way to the running Fenrow on the session bus: to hand
// over a start (raise the window, toggle capture, open a URL) or a command.
// It never starts a Fenrow on the bus; it only reaches one that runs.
class FenrowBusClient {
public:
    // Uses the session bus of the environment, connected on first use.
    FenrowBusClient();
    explicit FenrowBusClient(const QDBusConnection &connection);

    // Whether a Fenrow answers on the bus and owns the store at `storePath`.
    bool servesStore(const QString &storePath);

    // False, with the reason, when the call did not go through.
    bool activate(QString *problem);
    bool toggleCapture(QString *problem);
    bool openURL(const QString &url, QString *problem);

    // Runs the command line in the running Fenrow and waits for it however
    // long it takes; none, with the reason, when it could not.
    std::optional<ForwardedCommand::Reply> runCommand(const ForwardedCommand::Request &request, QString *problem);

private:
    QDBusConnection &connection();
    bool callWithoutAnswer(const QString &method, const QVariantList &arguments, QString *problem);

    std::optional<QDBusConnection> m_connection;
};

} // namespace fenrow
