#include "BusTypes.h"

#include <QDBusMetaType>
#include <QDir>
#include <QFileInfo>

namespace fenrow {

namespace {

const QString storeKey = QStringLiteral("store");
const QString interactiveKey = QStringLiteral("interactive");
const QString answersKey = QStringLiteral("answers");
const QString inputKey = QStringLiteral("input");

} // namespace

QDBusArgument &operator<<(QDBusArgument &argument, const BusTask &task)
{
    argument.beginStructure();
    argument << task.id << task.title << task.flowName;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, BusTask &task)
{
    argument.beginStructure();
    argument >> task.id >> task.title >> task.flowName;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const BusOutput &output)
{
    argument.beginStructure();
    argument << output.stream << output.utf8;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, BusOutput &output)
{
    argument.beginStructure();
    argument >> output.stream >> output.utf8;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const BusOutputLength &length)
{
    argument.beginStructure();
    argument << length.stream << length.length;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, BusOutputLength &length)
{
    argument.beginStructure();
    argument >> length.stream >> length.length;
    argument.endStructure();
    return argument;
}

namespace BusTypes {

void registerAll()
{
    static const bool registered = [] {
        qDBusRegisterMetaType<BusTask>();
        qDBusRegisterMetaType<QList<BusTask>>();
        qDBusRegisterMetaType<BusOutput>();
        qDBusRegisterMetaType<QList<BusOutput>>();
        qDBusRegisterMetaType<BusOutputLength>();
        qDBusRegisterMetaType<QList<BusOutputLength>>();
        return true;
    }();
    Q_UNUSED(registered);
}

QVariantMap requestOptions(const ForwardedCommand::Request &request)
{
    QVariantMap options{
        {storeKey, request.storePath},
        {interactiveKey, request.interactive},
        {answersKey, request.answers},
    };
    if (request.input)
        options.insert(inputKey, *request.input);
    return options;
}

void readRequestOptions(const QVariantMap &options, ForwardedCommand::Request &request)
{
    request.storePath = options.value(storeKey).toString();
    request.interactive = options.value(interactiveKey).toBool();
    const QVariant answers = options.value(answersKey);
    request.answers = answers.canConvert<QDBusArgument>() ? qdbus_cast<QStringList>(answers) : answers.toStringList();
    if (options.contains(inputKey))
        request.input = options.value(inputKey).toString();
}

bool isSameStore(const QString &path, const QString &other)
{
    const auto resolved = [](const QString &given) {
        const QString canonical = QFileInfo(given).canonicalFilePath();
        return canonical.isEmpty() ? QDir::cleanPath(QFileInfo(given).absoluteFilePath()) : canonical;
    };
    return !path.isEmpty() && resolved(path) == resolved(other);
}

ForwardedCommand::Stream stream(uint raw)
{
    return raw == uint(ForwardedCommand::Stream::err) ? ForwardedCommand::Stream::err : ForwardedCommand::Stream::out;
}

QList<BusOutput> busOutput(const QList<ForwardedCommand::Output> &output)
{
    QList<BusOutput> parts;
    for (const ForwardedCommand::Output &part : output)
        parts.append({uint(part.stream), part.utf8});
    return parts;
}

QList<ForwardedCommand::Output> commandOutput(const QList<BusOutput> &output)
{
    QList<ForwardedCommand::Output> parts;
    for (const BusOutput &part : output)
        parts.append({stream(part.stream), part.utf8});
    return parts;
}

} // namespace BusTypes

} // namespace fenrow
