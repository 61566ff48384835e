#include "JsonOutput.h"

#include "PlainText.h"

#include "domain/FlowNode.h"
#include "domain/FlowProgress.h"
#include "domain/LocalCalendar.h"
#include "domain/TaskFlow.h"

namespace fenrow::JsonOutput {

namespace {

QJsonValue number(const std::optional<qint64> &value)
{
    return value ? QJsonValue(*value) : QJsonValue(QJsonValue::Null);
}

QJsonValue text(const std::optional<QString> &value)
{
    return value ? QJsonValue(*value) : QJsonValue(QJsonValue::Null);
}

} // namespace

QJsonValue dateTime(const std::optional<QDateTime> &moment, const LocalCalendar &calendar)
{
    if (!moment || !moment->isValid())
        return QJsonValue::Null;
    return moment->toTimeZone(calendar.zone()).toString(Qt::ISODate);
}

QJsonObject flow(const TaskFlow &flow, qsizetype position, const LocalCalendar &calendar)
{
    const FlowProgress progress = FlowProgress::of(flow.items());
    return {
        {QStringLiteral("id"), PlainText::id(flow.id)},
        {QStringLiteral("name"), flow.name},
        {QStringLiteral("position"), qint64(position)},
        {QStringLiteral("order"), flow.order},
        {QStringLiteral("createdAt"), dateTime(flow.createdAt, calendar)},
        {QStringLiteral("progress"),
         QJsonObject{
             {QStringLiteral("doneCount"), progress.doneCount},
             {QStringLiteral("inProgressCount"), progress.inProgressCount},
             {QStringLiteral("totalCount"), progress.totalCount},
         }},
    };
}

QJsonObject readyTask(const FlowNode &node, const QDateTime &now, const LocalCalendar &calendar)
{
    const TaskFlow *flow = node.flow();
    return {
        {QStringLiteral("id"), PlainText::id(node.id)},
        {QStringLiteral("title"), node.title},
        {QStringLiteral("flowID"), flow ? QJsonValue(PlainText::id(flow->id)) : QJsonValue()},
        {QStringLiteral("flowName"), flow ? QJsonValue(flow->name) : QJsonValue()},
        {QStringLiteral("dueDate"), dateTime(node.dueDate, calendar)},
        {QStringLiteral("isOverdue"), node.isOverdue(now, calendar)},
        {QStringLiteral("priorityRaw"), node.priorityRaw},
        {QStringLiteral("estimateMinutes"), number(node.estimateMinutes)},
        {QStringLiteral("dayPlanRank"), number(node.dayPlanRank)},
    };
}

QJsonObject task(const FlowNode &node, const QDateTime &now, const LocalCalendar &calendar)
{
    QJsonObject object = readyTask(node, now, calendar);
    object.insert(QStringLiteral("notes"), node.notes);
    object.insert(QStringLiteral("status"), rawString(node.status()));
    object.insert(QStringLiteral("isDone"), node.isDone);
    object.insert(QStringLiteral("colorRaw"), node.colorRaw);
    object.insert(QStringLiteral("startDate"), dateTime(node.startDate, calendar));
    object.insert(QStringLiteral("isDeferred"), node.isDeferred(now, calendar));
    object.insert(QStringLiteral("recurrenceRaw"), text(node.recurrenceRaw));
    object.insert(QStringLiteral("repeatCount"), node.repeatCount);
    object.insert(QStringLiteral("completedAt"), dateTime(node.completedAt, calendar));
    object.insert(QStringLiteral("createdAt"), dateTime(node.createdAt, calendar));
    return object;
}

} // namespace fenrow::JsonOutput
