#include "FenrowBusClient.h"

#include "BusTypes.h"
#include "CommandOutputFile.h"
#include "FenrowBusNames.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMessage>

#include <climits>

namespace fenrow {

namespace {

// A running Fenrow answers these at once; a hung one must not hang its
// caller for long.
constexpr int quickTimeout = 3000;
// A command may take as long as its work does (a large restore, a model
// drafting a flow); it ends when the program answers or goes.
constexpr int commandTimeout = INT_MAX;

QDBusMessage methodCall(const QString &method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(FenrowBusNames::service, FenrowBusNames::path,
                                                          FenrowBusNames::interface, method);
    message.setArguments(arguments);
    // Only a Fenrow that runs answers; the bus must not start one.
    message.setAutoStartService(false);
    return message;
}

} // namespace

FenrowBusClient::FenrowBusClient() = default;

FenrowBusClient::FenrowBusClient(const QDBusConnection &connection) : m_connection(connection) {}

QDBusConnection &FenrowBusClient::connection()
{
    if (!m_connection) {
        BusTypes::registerAll();
        m_connection = QDBusConnection::sessionBus();
    }
    return *m_connection;
}

bool FenrowBusClient::servesStore(const QString &storePath)
{
    if (!connection().isConnected())
        return false;
    const QDBusMessage reply = connection().call(methodCall(QStringLiteral("StorePath"), {}), QDBus::Block,
                                                 quickTimeout);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return false;
    return BusTypes::isSameStore(reply.arguments().constFirst().toString(), storePath);
}

bool FenrowBusClient::callWithoutAnswer(const QString &method, const QVariantList &arguments, QString *problem)
{
    if (!connection().isConnected()) {
        *problem = QStringLiteral("there is no session bus");
        return false;
    }
    const QDBusMessage reply = connection().call(methodCall(method, arguments), QDBus::Block, quickTimeout);
    if (reply.type() == QDBusMessage::ReplyMessage)
        return true;
    *problem = reply.errorMessage();
    return false;
}

bool FenrowBusClient::activate(QString *problem)
{
    return callWithoutAnswer(QStringLiteral("Activate"), {}, problem);
}

bool FenrowBusClient::toggleCapture(QString *problem)
{
    return callWithoutAnswer(QStringLiteral("ToggleCapture"), {}, problem);
}

bool FenrowBusClient::openURL(const QString &url, QString *problem)
{
    return callWithoutAnswer(QStringLiteral("OpenURL"), {url}, problem);
}

std::optional<ForwardedCommand::Reply> FenrowBusClient::runCommand(const ForwardedCommand::Request &request,
                                                                   QString *problem)
{
    if (!connection().isConnected()) {
        *problem = QStringLiteral("there is no session bus");
        return std::nullopt;
    }
    // Long output comes back faster as a file where the bus passes files.
    bool toFile = connection().connectionCapabilities() & QDBusConnection::UnixFileDescriptorPassing;
    const auto send = [&] {
        return connection().call(
            methodCall(toFile ? QStringLiteral("RunCommandToFile") : QStringLiteral("RunCommand"),
                       {request.arguments, request.workingDirectory, BusTypes::requestOptions(request)}),
            QDBus::Block, commandTimeout);
    };
    QDBusMessage reply = send();
    // A program that can make no file refuses before the command runs, so
    // sending it again the plain way carries it out once.
    if (toFile && reply.type() == QDBusMessage::ErrorMessage &&
        reply.errorName() == QDBusError::errorString(QDBusError::NotSupported)) {
        toFile = false;
        reply = send();
    }
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().size() != (toFile ? 5 : 4)) {
        *problem = QStringLiteral("the running Fenrow did not carry out the command: %1")
                       .arg(reply.errorMessage().isEmpty() ? QStringLiteral("no answer") : reply.errorMessage());
        return std::nullopt;
    }
    const QVariantList values = reply.arguments();
    ForwardedCommand::Reply answer;
    answer.status = values[0].toInt();
    if (toFile) {
        QString unread;
        if (!CommandOutputFile::read(values[4].value<QDBusUnixFileDescriptor>(),
                                     qdbus_cast<QList<BusOutputLength>>(values[1]), answer, &unread)) {
            *problem = QStringLiteral("the running Fenrow carried out the command, but %1").arg(unread);
            return std::nullopt;
        }
    } else {
        answer.output = BusTypes::commandOutput(qdbus_cast<QList<BusOutput>>(values[1]));
    }
    answer.need = ForwardedCommand::needNamed(values[2].toString());
    answer.question = values[3].toString();
    return answer;
}

} // namespace fenrow
