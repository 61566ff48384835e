#include "FenrowBusService.h"

#include "BusTypes.h"
#include "CommandOutputFile.h"
#include "FenrowBusHandler.h"
#include "FenrowBusNames.h"

#include "domain/FenrowStore.h"
#include "shell/SystemIntents.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMetaType>
#include <QDir>
#include <QFile>
#include <QLoggingCategory>

#include <exception>

Q_LOGGING_CATEGORY(fenrowBusLog, "fenrow.bus")

namespace fenrow {

namespace {

// Each method with the signature of its arguments and how they read.
struct MethodShape {
    QString signature;
    QString arguments;
};

const QHash<QString, MethodShape> &methodShapes()
{
    static const QHash<QString, MethodShape> shapes{
        {QStringLiteral("Activate"), {QString(), QString()}},
        {QStringLiteral("ToggleCapture"), {QString(), QString()}},
        {QStringLiteral("OpenURL"), {QStringLiteral("s"), QStringLiteral("url s")}},
        {QStringLiteral("AddTask"), {QStringLiteral("sss"), QStringLiteral("title s, flow s, due s")}},
        {QStringLiteral("ReadyTasks"), {QString(), QString()}},
        {QStringLiteral("CompleteTask"), {QStringLiteral("s"), QStringLiteral("task s")}},
        {QStringLiteral("OpenFlow"), {QStringLiteral("s"), QStringLiteral("flow s")}},
        {QStringLiteral("StorePath"), {QString(), QString()}},
        {QStringLiteral("RunCommand"),
         {QStringLiteral("assa{sv}"), QStringLiteral("arguments as, working_directory s, options a{sv}")}},
        {QStringLiteral("RunCommandToFile"),
         {QStringLiteral("assa{sv}"), QStringLiteral("arguments as, working_directory s, options a{sv}")}},
    };
    return shapes;
}

QString idText(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

// An id argument, or none when the text is not one.
std::optional<QUuid> readID(const QString &text)
{
    const QString trimmed = text.trimmed();
    QUuid id = QUuid::fromString(trimmed);
    if (id.isNull() && !trimmed.startsWith(QLatin1Char('{')))
        id = QUuid::fromString(QLatin1Char('{') + trimmed + QLatin1Char('}'));
    return id.isNull() ? std::nullopt : std::optional<QUuid>(id);
}

} // namespace

FenrowBusService::FenrowBusService(FenrowBusHandler &handler, QObject *parent)
    : QDBusVirtualObject(parent), m_handler(handler), m_connection(QString())
{
    BusTypes::registerAll();
}

FenrowBusService::~FenrowBusService()
{
    if (!m_serving)
        return;
    m_connection.unregisterService(FenrowBusNames::service);
    m_connection.unregisterObject(FenrowBusNames::path);
}

bool FenrowBusService::start(const QDBusConnection &connection, QString *problem)
{
    if (!connection.isConnected()) {
        *problem = QStringLiteral("there is no session bus (%1)").arg(connection.lastError().message());
        return false;
    }
    QDBusConnection bus = connection;
    // The object first: whoever sees the name finds it answering.
    if (!bus.registerVirtualObject(FenrowBusNames::path, this, QDBusConnection::SingleNode)) {
        *problem = QStringLiteral("the object %1 is taken on the bus").arg(FenrowBusNames::path);
        return false;
    }
    if (!bus.registerService(FenrowBusNames::service)) {
        bus.unregisterObject(FenrowBusNames::path);
        *problem = QStringLiteral("another program has the name %1 on the bus").arg(FenrowBusNames::service);
        return false;
    }
    m_connection = bus;
    m_serving = true;
    watchCallers(bus);
    return true;
}

QString FenrowBusService::interfaceXml()
{
    QFile file(QStringLiteral(":/fenrow/bus/studio.tarnwick.Fenrow.xml"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QString document = QString::fromUtf8(file.readAll());
    const qsizetype begin = document.indexOf(QLatin1String("<interface"));
    const QLatin1String closing("</interface>");
    const qsizetype end = document.lastIndexOf(closing);
    if (begin < 0 || end < begin)
        return {};
    return document.mid(begin, end + closing.size() - begin) + QLatin1Char('\n');
}

QString FenrowBusService::introspect(const QString &path) const
{
    return path == FenrowBusNames::path ? interfaceXml() : QString();
}

bool FenrowBusService::handleMessage(const QDBusMessage &message, const QDBusConnection &connection)
{
    if (message.type() != QDBusMessage::MethodCallMessage)
        return false;
    if (!message.interface().isEmpty() && message.interface() != FenrowBusNames::interface)
        return false;
    // Nothing a caller sends may take the program down with it.
    try {
        answer(message, connection);
    } catch (const std::exception &failure) {
        qCCritical(fenrowBusLog, "%s failed: %s", qUtf8Printable(message.member()), failure.what());
        connection.send(message.createErrorReply(
            QDBusError::Failed, QStringLiteral("%1 failed inside Fenrow: %2").arg(message.member(), failure.what())));
    }
    return true;
}

void FenrowBusService::answer(const QDBusMessage &message, const QDBusConnection &connection)
{
    const QString member = message.member();
    const auto reply = [&](const QVariantList &values = {}) { connection.send(message.createReply(values)); };
    const auto refuse = [&](QDBusError::ErrorType type, const QString &why) {
        connection.send(message.createErrorReply(type, why));
    };
    const auto notFound = [&](FenrowIntentError error) {
        connection.send(message.createErrorReply(FenrowBusNames::notFoundError, describe(error)));
    };

    const auto shape = methodShapes().constFind(member);
    if (shape == methodShapes().constEnd())
        return refuse(QDBusError::UnknownMethod,
                      QStringLiteral("%1 has no method %2").arg(FenrowBusNames::interface, member));
    if (message.signature() != shape->signature)
        return refuse(QDBusError::InvalidArgs, QStringLiteral("%1 takes (%2), not (%3)")
                                                   .arg(member, shape->arguments, message.signature()));
    const QVariantList arguments = message.arguments();
    const auto text = [&](int index) { return arguments.value(index).toString(); };

    if (member == QLatin1String("Activate")) {
        m_handler.activate();
        return reply();
    }
    if (member == QLatin1String("ToggleCapture")) {
        m_handler.toggleCapture();
        return reply();
    }
    if (member == QLatin1String("OpenURL")) {
        m_handler.openURL(text(0));
        return reply();
    }
    if (member == QLatin1String("StorePath"))
        return reply({m_handler.storePath()});
    if (member == QLatin1String("RunCommand") || member == QLatin1String("RunCommandToFile"))
        return queueCommand(message, connection);

    IntentServices &services = m_handler.intentServices();
    if (member == QLatin1String("AddTask")) {
        AddTaskIntent intent;
        intent.taskTitle = text(0);
        if (intent.taskTitle.trimmed().isEmpty())
            return refuse(QDBusError::InvalidArgs, QStringLiteral("the title is empty"));
        if (!text(1).trimmed().isEmpty()) {
            intent.flow = readID(text(1));
            if (!intent.flow)
                return refuse(QDBusError::InvalidArgs,
                              QStringLiteral("flow must be a flow's id or empty, not \"%1\"").arg(text(1)));
        }
        if (!text(2).trimmed().isEmpty()) {
            intent.dueDate = services.store.calendar().readDate(text(2));
            if (!intent.dueDate)
                return refuse(QDBusError::InvalidArgs,
                              QStringLiteral("due must be a date such as 2026-06-10, an ISO 8601 time or empty, "
                                             "not \"%1\"")
                                  .arg(text(2)));
        }
        const auto result = intent.perform(services);
        if (const auto *error = std::get_if<FenrowIntentError>(&result))
            return notFound(*error);
        const auto &added = std::get<AddTaskIntent::Result>(result);
        return reply({idText(added.task.id), added.task.title, added.task.flowName, added.dialog});
    }
    if (member == QLatin1String("ReadyTasks")) {
        const GetReadyTasksIntent::Result result = GetReadyTasksIntent().perform(services);
        QList<BusTask> tasks;
        for (const TaskEntity &task : result.tasks)
            tasks.append({idText(task.id), task.title, task.flowName});
        return reply({QVariant::fromValue(tasks), result.dialog});
    }
    if (member == QLatin1String("CompleteTask")) {
        const std::optional<QUuid> id = readID(text(0));
        if (!id)
            return refuse(QDBusError::InvalidArgs, QStringLiteral("task must be a task's id, not \"%1\"").arg(text(0)));
        const auto result = CompleteTaskIntent{*id}.perform(services);
        if (const auto *error = std::get_if<FenrowIntentError>(&result))
            return notFound(*error);
        return reply({std::get<QString>(result)});
    }
    // OpenFlow, the one left.
    const std::optional<QUuid> id = readID(text(0));
    if (!id)
        return refuse(QDBusError::InvalidArgs, QStringLiteral("flow must be a flow's id, not \"%1\"").arg(text(0)));
    if (const std::optional<FenrowIntentError> error = OpenFlowIntent{*id}.perform(services))
        return notFound(*error);
    reply();
}

void FenrowBusService::queueCommand(const QDBusMessage &message, const QDBusConnection &connection)
{
    const QVariantList arguments = message.arguments();
    ForwardedCommand::Request request;
    request.arguments = arguments.value(0).toStringList();
    request.workingDirectory = arguments.value(1).toString();
    const QVariant options = arguments.value(2);
    BusTypes::readRequestOptions(options.canConvert<QDBusArgument>() ? qdbus_cast<QVariantMap>(options)
                                                                     : options.toMap(),
                                 request);
    if (!QDir::isAbsolutePath(request.workingDirectory)) {
        connection.send(message.createErrorReply(
            QDBusError::InvalidArgs,
            QStringLiteral("working_directory must be an absolute path, not \"%1\"").arg(request.workingDirectory)));
        return;
    }
    const QString owned = m_handler.storePath();
    if (!BusTypes::isSameStore(request.storePath, owned)) {
        connection.send(message.createErrorReply(
            FenrowBusNames::otherStoreError,
            QStringLiteral("this Fenrow owns the store %1, not \"%2\"").arg(owned, request.storePath)));
        return;
    }
    // The file is made before the command runs: a command that changes
    // the store is not carried out when its output could not go back.
    std::optional<QDBusUnixFileDescriptor> outputFile;
    if (message.member() == QLatin1String("RunCommandToFile")) {
        QString problem;
        if (!(connection.connectionCapabilities() & QDBusConnection::UnixFileDescriptorPassing))
            problem = QStringLiteral("this bus does not pass files; call RunCommand");
        else
            outputFile = CommandOutputFile::make(&problem);
        if (!outputFile) {
            connection.send(message.createErrorReply(QDBusError::NotSupported, problem));
            return;
        }
    }
    message.setDelayedReply(true);
    watchCallers(connection);
    const auto callerGone = std::make_shared<std::atomic_bool>(false);
    request.callerGone = callerGone;
    m_commands.append({message, connection, request, outputFile, callerGone});
    if (!m_runningCommand)
        QMetaObject::invokeMethod(this, &FenrowBusService::runNextCommand, Qt::QueuedConnection);
}

void FenrowBusService::runNextCommand()
{
    if (m_runningCommand || m_commands.isEmpty())
        return;
    const PendingCommand command = m_commands.takeFirst();
    if (command.callerGone->load()) {
        // Nobody waits for it, and whoever pressed Ctrl+C did not want it done.
        qCInfo(fenrowBusLog, "A forwarded command's caller left before it ran; it was not run");
        if (!m_commands.isEmpty())
            QMetaObject::invokeMethod(this, &FenrowBusService::runNextCommand, Qt::QueuedConnection);
        return;
    }
    m_runningCommand = true;
    m_runningCaller = command.message.service();
    m_runningCallerGone = command.callerGone;
    QDBusMessage answer;
    try {
        const ForwardedCommand::Reply reply = m_handler.runCommand(command.request);
        const QString need = ForwardedCommand::needName(reply.need);
        if (!command.outputFile) {
            answer = command.message.createReply(
                {reply.status, QVariant::fromValue(BusTypes::busOutput(reply.output)), need, reply.question});
        } else {
            QString problem;
            const std::optional<QList<BusOutputLength>> lengths =
                CommandOutputFile::write(*command.outputFile, reply.output, &problem);
            answer = lengths
                         ? command.message.createReply({reply.status, QVariant::fromValue(*lengths), need,
                                                        reply.question, QVariant::fromValue(*command.outputFile)})
                         : command.message.createErrorReply(
                               QDBusError::Failed,
                               QStringLiteral("the command ran, but its output did not come back: %1").arg(problem));
        }
    } catch (const std::exception &failure) {
        qCCritical(fenrowBusLog, "A forwarded command failed: %s", failure.what());
        answer = command.message.createErrorReply(
            QDBusError::Failed, QStringLiteral("the command failed inside Fenrow: %1").arg(failure.what()));
    }
    QDBusConnection(command.connection).send(answer);
    m_runningCommand = false;
    m_runningCaller.clear();
    m_runningCallerGone.reset();
    if (!m_commands.isEmpty())
        QMetaObject::invokeMethod(this, &FenrowBusService::runNextCommand, Qt::QueuedConnection);
}

void FenrowBusService::watchCallers(const QDBusConnection &connection)
{
    if (m_watchedConnections.contains(connection.name()))
        return;
    QDBusConnection bus = connection;
    if (bus.connect(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                    QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameOwnerChanged"), this,
                    SLOT(nameOwnerChanged(QString, QString, QString))))
        m_watchedConnections.insert(connection.name());
}

void FenrowBusService::nameOwnerChanged(const QString &name, const QString &, const QString &newOwner)
{
    // Only a caller's own unique name going away says it ended.
    if (!newOwner.isEmpty() || !name.startsWith(QLatin1Char(':')))
        return;
    for (const PendingCommand &command : std::as_const(m_commands))
        if (command.message.service() == name)
            command.callerGone->store(true);
    if (m_runningCallerGone && m_runningCaller == name)
        m_runningCallerGone->store(true);
}

} // namespace fenrow
