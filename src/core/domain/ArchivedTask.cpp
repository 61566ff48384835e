#include "ArchivedTask.h"

#include "FlowNode.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QStringList>

namespace fenrow {

namespace {

// 2001-01-01T00:00:00Z, the reference of the stored dates.
constexpr qint64 referenceMSecs = 978307200000;

double secondsSinceReference(const QDateTime &date)
{
    return double(date.toMSecsSinceEpoch() - referenceMSecs) / 1000.0;
}

QDateTime dateFromReference(double seconds)
{
    return QDateTime::fromMSecsSinceEpoch(referenceMSecs + qint64(std::llround(seconds * 1000.0)), Qt::UTC);
}

// One "key":value member in JSON text.
QString member(const char *key, const QJsonValue &value)
{
    const QJsonDocument wrapper(QJsonObject{{QString::fromLatin1(key), value}});
    const QString object = QString::fromUtf8(wrapper.toJson(QJsonDocument::Compact));
    return object.mid(1, object.size() - 2);
}

} // namespace

ArchivedTask ArchivedTask::of(const FlowNode &node)
{
    return {node.title,         node.notes,        node.statusRaw,   node.priorityRaw, node.colorRaw,
            node.startDate,     node.dueDate,      node.estimateMinutes, node.manualWidth, node.manualHeight,
            node.posX,          node.posY,         node.checklistData, node.recurrenceRaw, node.repeatCount,
            node.createdAt};
}

QByteArray ArchivedTask::encode() const
{
    // QJsonObject sorts its keys; the payload keeps the field order instead.
    QStringList members;
    members << member("title", title) << member("notes", notes) << member("statusRaw", statusRaw)
            << member("priorityRaw", priorityRaw) << member("colorRaw", colorRaw);
    if (startDate)
        members << member("startDate", secondsSinceReference(*startDate));
    if (dueDate)
        members << member("dueDate", secondsSinceReference(*dueDate));
    if (estimateMinutes)
        members << member("estimateMinutes", *estimateMinutes);
    if (manualWidth)
        members << member("manualWidth", *manualWidth);
    if (manualHeight)
        members << member("manualHeight", *manualHeight);
    members << member("posX", posX) << member("posY", posY) << member("checklistData", checklistData);
    if (recurrenceRaw)
        members << member("recurrenceRaw", *recurrenceRaw);
    if (repeatCount)
        members << member("repeatCount", *repeatCount);
    members << member("createdAt", secondsSinceReference(createdAt));
    return (QLatin1Char('{') + members.join(QLatin1Char(',')) + QLatin1Char('}')).toUtf8();
}

std::optional<ArchivedTask> ArchivedTask::decode(const QByteArray &json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return std::nullopt;
    const QJsonObject object = document.object();

    ArchivedTask task;
    bool ok = true;
    auto text = [&](const char *key, QString &field) {
        const QJsonValue value = object.value(QLatin1StringView(key));
        ok &= value.isString();
        field = value.toString();
    };
    auto number = [&](const char *key, double &field) {
        const QJsonValue value = object.value(QLatin1StringView(key));
        ok &= value.isDouble();
        field = value.toDouble();
    };
    auto optional = [&](const char *key, auto &field, auto convert) {
        const QJsonValue value = object.value(QLatin1StringView(key));
        if (value.isUndefined() || value.isNull())
            return;
        constexpr bool isText = std::is_same_v<std::decay_t<decltype(*field)>, QString>;
        ok &= isText ? value.isString() : value.isDouble();
        field = convert(value);
    };
    text("title", task.title);
    text("notes", task.notes);
    text("statusRaw", task.statusRaw);
    text("priorityRaw", task.priorityRaw);
    text("colorRaw", task.colorRaw);
    text("checklistData", task.checklistData);
    number("posX", task.posX);
    number("posY", task.posY);
    double created = 0;
    number("createdAt", created);
    task.createdAt = dateFromReference(created);
    auto toDate = [](const QJsonValue &value) { return dateFromReference(value.toDouble()); };
    auto toInteger = [](const QJsonValue &value) { return qint64(value.toDouble()); };
    auto toReal = [](const QJsonValue &value) { return value.toDouble(); };
    auto toText = [](const QJsonValue &value) { return value.toString(); };
    optional("startDate", task.startDate, toDate);
    optional("dueDate", task.dueDate, toDate);
    optional("estimateMinutes", task.estimateMinutes, toInteger);
    optional("manualWidth", task.manualWidth, toReal);
    optional("manualHeight", task.manualHeight, toReal);
    optional("recurrenceRaw", task.recurrenceRaw, toText);
    optional("repeatCount", task.repeatCount, toInteger);
    if (!ok)
        return std::nullopt;
    return task;
}

} // namespace fenrow
