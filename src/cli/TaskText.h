#pragma once

#include <QDateTime>
#include <QList>
#include <QStringList>
#include <QString>
#include <QTextStream>

namespace fenrow {

class FlowNode;
class LocalCalendar;
struct NodeRecurrence;

// How tasks and their fields read in plain output.
namespace TaskText {

// A start or due date as its day in the calendar: "2026-06-12".
QString day(const QDateTime &date, const LocalCalendar &calendar);
// "45 min", "2 h", "1 h 30 min".
QString estimate(qint64 minutes);
// "daily", "on weekdays", "monthly on day 31", "3 days after each completion".
QString recurrence(const NodeRecurrence &recurrence);
// What the task's card says: "ready", "waiting for 2 tasks", "starts
// 2026-06-20", "in progress", "paused", "done".
QString state(const FlowNode &node, const QDateTime &now, const LocalCalendar &calendar);
// The same, for a node whose open blockers are already counted (none, for a
// ready task), which saves walking its edges again.
QString state(const FlowNode &node, int openBlockerCount, const QDateTime &now, const LocalCalendar &calendar);
// "Write copy" (Launch site).
QString titleInFlow(const FlowNode &node);

// The task's title, then one indented line per field that has a value,
// and `moreRows` (label, value) in the same columns.
void printDetails(const FlowNode &node, const QDateTime &now, const LocalCalendar &calendar, QTextStream &out,
                  const QList<QStringList> &moreRows = {});

} // namespace TaskText

} // namespace fenrow
