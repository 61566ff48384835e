#include "TaskText.h"

#include "PlainText.h"
#include "TextTable.h"

#include "domain/FlowNode.h"
#include "domain/LocalCalendar.h"
#include "domain/NodeRecurrence.h"
#include "domain/Readiness.h"
#include "domain/TaskFlow.h"

#include <QStringList>

namespace fenrow::TaskText {

QString day(const QDateTime &date, const LocalCalendar &calendar)
{
    return calendar.dayOf(date).toString(Qt::ISODate);
}

QString estimate(qint64 minutes)
{
    const qint64 hours = minutes / 60;
    const qint64 rest = minutes % 60;
    if (hours == 0)
        return QStringLiteral("%1 min").arg(rest);
    if (rest == 0)
        return QStringLiteral("%1 h").arg(hours);
    return QStringLiteral("%1 h %2 min").arg(hours).arg(rest);
}

QString recurrence(const NodeRecurrence &recurrence)
{
    switch (recurrence.rule) {
    case RecurrenceRule::never:
        return QStringLiteral("never");
    case RecurrenceRule::daily:
        return QStringLiteral("daily");
    case RecurrenceRule::weekdays:
        return QStringLiteral("on weekdays");
    case RecurrenceRule::weekly:
        return QStringLiteral("weekly");
    case RecurrenceRule::monthly:
        return recurrence.monthDay ? QStringLiteral("monthly on day %1").arg(*recurrence.monthDay)
                                   : QStringLiteral("monthly");
    case RecurrenceRule::afterDone:
        return QStringLiteral("%1 after each completion")
            .arg(PlainText::counted(recurrence.interval, QStringLiteral("day"), QStringLiteral("days")));
    }
    return {};
}

QString state(const FlowNode &node, const QDateTime &now, const LocalCalendar &calendar)
{
    return state(node, int(Readiness::openBlockers(node).size()), now, calendar);
}

QString state(const FlowNode &node, int openBlockerCount, const QDateTime &now, const LocalCalendar &calendar)
{
    const NodeCardState card = Readiness::cardState(node, openBlockerCount, now, calendar);
    switch (card.kind) {
    case NodeCardState::Kind::status:
        switch (card.status) {
        case NodeStatus::pending:
            return QStringLiteral("pending");
        case NodeStatus::inProgress:
            return QStringLiteral("in progress");
        case NodeStatus::done:
            return QStringLiteral("done");
        case NodeStatus::paused:
            return QStringLiteral("paused");
        }
        break;
    case NodeCardState::Kind::deferred:
        return QStringLiteral("starts %1").arg(day(card.until, calendar));
    case NodeCardState::Kind::waiting:
        return QStringLiteral("waiting for %1")
            .arg(PlainText::counted(card.blockers, QStringLiteral("task"), QStringLiteral("tasks")));
    case NodeCardState::Kind::ready:
        return QStringLiteral("ready");
    }
    return {};
}

QString titleInFlow(const FlowNode &node)
{
    const QString flow = node.flow() ? node.flow()->name : QString();
    return QStringLiteral("%1 (%2)").arg(PlainText::quoted(node.title), PlainText::singleLine(flow));
}

void printDetails(const FlowNode &node, const QDateTime &now, const LocalCalendar &calendar, QTextStream &out,
                  const QList<QStringList> &moreRows)
{
    out << PlainText::singleLine(node.title) << '\n';
    TextTable table({}, QStringLiteral("  "));
    table.addRow({QStringLiteral("id"), PlainText::id(node.id)});
    if (node.flow())
        table.addRow({QStringLiteral("flow"), node.flow()->name});
    table.addRow({QStringLiteral("state"), state(node, now, calendar)});
    if (node.priority() != NodePriority::none)
        table.addRow({QStringLiteral("priority"), rawString(node.priority())});
    if (node.color() != NodeColor::none)
        table.addRow({QStringLiteral("color"), rawString(node.color())});
    if (node.estimateMinutes)
        table.addRow({QStringLiteral("estimate"), estimate(*node.estimateMinutes)});
    if (node.startDate)
        table.addRow({QStringLiteral("start"), day(*node.startDate, calendar)});
    if (node.dueDate) {
        const QString due = day(*node.dueDate, calendar);
        table.addRow({QStringLiteral("due"),
                      node.isOverdue(now, calendar) ? QStringLiteral("%1 (overdue)").arg(due) : due});
    }
    if (const std::optional<NodeRecurrence> repeat = NodeRecurrence::decode(node.recurrenceRaw))
        table.addRow({QStringLiteral("repeats"), recurrence(*repeat)});
    if (node.hasNotes()) {
        // Notes keep their lines, each indented under the first.
        const QStringList lines = node.notes.trimmed().split(QLatin1Char('\n'));
        table.addRow({QStringLiteral("notes"), lines.first()});
        for (const QString &line : lines.mid(1))
            table.addRow({QString(), line});
    }
    for (const QStringList &row : moreRows)
        table.addRow(row);
    table.print(out);
}

} // namespace fenrow::TaskText
