#include "JsonOutput.h"

#include "PlainText.h"

#include "domain/FlowProgress.h"
#include "domain/LocalCalendar.h"
#include "domain/TaskFlow.h"

namespace fenrow::JsonOutput {

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

} // namespace fenrow::JsonOutput
