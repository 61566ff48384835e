#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QJsonObject>
#include <QJsonValue>
#include <QList>

#include <functional>
#include <optional>
#include <string_view>

namespace fenrow {

class FlowNode;
class LocalCalendar;
class TaskFlow;
struct ReadyTask;

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
// The rows of the Ready list as the indented JSON document that
// `fenrow ready --json` prints, an array of `readyTask` objects, handed to
// `write` in pieces of UTF-8; `readyList` gives it whole. The first
// `todayCount` rows are the Today group: each row's "inToday" says so.
void writeReadyList(const QList<ReadyTask> &tasks, qsizetype todayCount, const QDateTime &now,
                    const LocalCalendar &calendar, const std::function<void(std::string_view)> &write);
QByteArray readyList(const QList<ReadyTask> &tasks, qsizetype todayCount, const QDateTime &now,
                     const LocalCalendar &calendar);
// A task with every field a command can change, and its state at `now`.
QJsonObject task(const FlowNode &node, const QDateTime &now, const LocalCalendar &calendar);

} // namespace JsonOutput

} // namespace fenrow
