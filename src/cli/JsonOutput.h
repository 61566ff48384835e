#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QJsonValue>

#include <optional>

namespace fenrow {

class FlowNode;
class LocalCalendar;
class TaskFlow;

// How records look in --json output. Field names follow the records; ids
// read as in plain text (PlainText::id), times ISO 8601 in the calendar's
// zone with its offset.
namespace JsonOutput {

QJsonValue dateTime(const std::optional<QDateTime> &moment, const LocalCalendar &calendar);

// A flow with its 1-based place in the sidebar and its progress counters.
QJsonObject flow(const TaskFlow &flow, qsizetype position, const LocalCalendar &calendar);

// A row of the Ready list: id, title, flowID, flowName, dueDate, isOverdue
// (at `now`), priorityRaw, estimateMinutes, dayPlanRank; absent values null.
QJsonObject readyTask(const FlowNode &node, const QDateTime &now, const LocalCalendar &calendar);
// A task with every field a command can change, and its state at `now`.
QJsonObject task(const FlowNode &node, const QDateTime &now, const LocalCalendar &calendar);

} // namespace JsonOutput

} // namespace fenrow
