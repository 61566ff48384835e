#pragma once

#include "shell/ForwardedCommand.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>
#include <QDBusVirtualObject>
#include <QList>
#include <QSet>

#include <atomic>
#include <memory>
#include <optional>

namespace fenrow {

class FenrowBusHandler;

// The running Fenrow on the session bus: it owns the name
// "studio.tarnwick.Fenrow" and answers the interface of
// studio.tarnwick.Fenrow.xml on "/studio/tarnwick/Fenrow". Each call's
// arguments are checked before anything happens; a call it cannot take
// gets an error with a sentence that says why, never a crash. Commands run
// one at a time, in the order they came.
class FenrowBusService : public QDBusVirtualObject {
    Q_OBJECT

public:
    FenrowBusService(FenrowBusHandler &handler, QObject *parent = nullptr);
    ~FenrowBusService() override;

    // Takes the name and the object on `connection`. False, with the reason,
    // when the bus is not there or another process has the name.
    bool start(const QDBusConnection &connection, QString *problem);
    bool isServing() const { return m_serving; }

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

    // The interface, as in studio.tarnwick.Fenrow.xml.
    static QString interfaceXml();

private:
    struct PendingCommand {
        QDBusMessage message;
        QDBusConnection connection;
        ForwardedCommand::Request request;
        // For RunCommandToFile: where the output goes.
        std::optional<QDBusUnixFileDescriptor> outputFile;
        // Set once the caller has left the bus (its process ended, as on
        // Ctrl+C): its command is then not run, or stops waiting.
        std::shared_ptr<std::atomic_bool> callerGone;
    };

    void answer(const QDBusMessage &message, const QDBusConnection &connection);
    void queueCommand(const QDBusMessage &message, const QDBusConnection &connection);
    void runNextCommand();
    // The bus says which names come and go, callers' among them; one
    // subscription per connection costs nothing per command.
    void watchCallers(const QDBusConnection &connection);
    Q_SLOT void nameOwnerChanged(const QString &name, const QString &oldOwner, const QString &newOwner);

    FenrowBusHandler &m_handler;
    QDBusConnection m_connection;
    bool m_serving = false;
    QList<PendingCommand> m_commands;
    bool m_runningCommand = false;
    // The caller of the command running now, and what tells it it left.
    QString m_runningCaller;
    std::shared_ptr<std::atomic_bool> m_runningCallerGone;
    QSet<QString> m_watchedConnections;
};

} // namespace fenrow
