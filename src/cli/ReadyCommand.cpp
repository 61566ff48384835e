#include "ReadyCommand.h"

#include "CommandContext.h"
#include "CommandRegistry.h"
#include "ExitStatus.h"
#include "JsonOutput.h"
#include "OptionChoice.h"
#include "PlainText.h"
#include "TaskText.h"
#include "TextTable.h"

#include "domain/Clock.h"
#include "domain/FenrowStore.h"
#include "domain/RawEnum.h"
#include "domain/Readiness.h"
#include "shell/AppPreferences.h"

#include <QHash>

namespace fenrow::ReadyCommand {

namespace {

const QString sortOption = QStringLiteral("sort");


QString emptyReason(ReadyEmptyReason reason)
{
    switch (reason) {
    case ReadyEmptyReason::noTasks:
        return QStringLiteral("Nothing is ready: there are no tasks yet. Add one with: fenrow add TITLE");
    case ReadyEmptyReason::allDone:
        return QStringLiteral("Nothing is ready: every task is done. Well done!");
    case ReadyEmptyReason::allBlocked:
        return QStringLiteral("Nothing is ready: every open task is waiting for another task to be done first.");
    case ReadyEmptyReason::allDeferred:
        return QStringLiteral("Nothing is ready today: the open tasks start on a later day.");
    }
    return {};
}

// Cells that many rows share (flows' names, due days, priorities,
// estimates), made once for the list instead of once a row: a long list
// repeats a few of them. A cell given out stays valid until that kind of
// cell is asked for again.
class SharedCells
{
public:
    SharedCells(const QDateTime &now, const LocalCalendar &calendar) : m_now(now), m_calendar(calendar) {}

    const TextTable::Cell &flow(const TaskFlow &flow)
    {
        auto found = m_flows.constFind(&flow);
        if (found == m_flows.constEnd())
            found = m_flows.insert(&flow, TextTable::Cell(flow.name));
        return *found;
    }
    // The due cell of a task that is not done: whether it is overdue then
    // depends on the day alone.
    const TextTable::Cell &due(const FlowNode &node)
    {
        if (!node.dueDate)
            return m_empty;
        const qint64 key = node.dueDate->toMSecsSinceEpoch();
        auto found = m_dueDays.constFind(key);
        if (found == m_dueDays.constEnd()) {
            QString text = QStringLiteral("due ") + TaskText::day(*node.dueDate, m_calendar);
            if (node.isOverdue(m_now, m_calendar))
                text += QStringLiteral(" (overdue)");
            found = m_dueDays.insert(key, TextTable::Cell(text));
        }
        return *found;
    }
    const TextTable::Cell &priority(NodePriority priority)
    {
        auto found = m_priorities.constFind(priority);
        if (found == m_priorities.constEnd())
            found =
                m_priorities.insert(priority, priority == NodePriority::none
                                                  ? TextTable::Cell()
                                                  : TextTable::Cell(rawString(priority) + QStringLiteral(" priority")));
        return *found;
    }
    const TextTable::Cell &estimate(const FlowNode &node)
    {
        if (!node.estimateMinutes)
            return m_empty;
        auto found = m_estimates.constFind(*node.estimateMinutes);
        if (found == m_estimates.constEnd())
            found =
                m_estimates.insert(*node.estimateMinutes, TextTable::Cell(TaskText::estimate(*node.estimateMinutes)));
        return *found;
    }

private:
    const QDateTime &m_now;
    const LocalCalendar &m_calendar;
    const TextTable::Cell m_empty;
    QHash<const TaskFlow *, TextTable::Cell> m_flows;
    QHash<qint64, TextTable::Cell> m_dueDays;
    QHash<NodePriority, TextTable::Cell> m_priorities;
    QHash<qint64, TextTable::Cell> m_estimates;
};

// A ready task's row: title, flow (when `withFlow`), due day, priority and
// estimate.
void addRow(TextTable &table, const ReadyTask &task, bool withFlow, const QDateTime &now, const LocalCalendar &calendar,
            SharedCells &cells)
{
    const FlowNode &node = *task.node;
    table.beginRow();
    // A paused or started task is still ready, but its row says so. Being
    // ready, it waits for nothing.
    if (node.status() != NodeStatus::pending)
        table.addCell(node.title + QStringLiteral(" [%1]").arg(TaskText::state(node, 0, now, calendar)));
    else
        table.addCell(node.title);
    if (withFlow)
        table.addCell(cells.flow(*task.flow));
    table.addCell(cells.due(node));
    table.addCell(cells.priority(node.priority()));
    table.addCell(cells.estimate(node));
}

// Adds the rows of `tasks`. Their nodes and titles lie scattered over the
// heap: each is asked for some rows ahead, so a long list does not wait on
// them one at a time.
template <typename AddRow>
void addRows(const QList<ReadyTask> &tasks, AddRow addRow)
{
    constexpr qsizetype nodesAhead = 16;
    constexpr qsizetype titlesAhead = 8;
    const qsizetype count = tasks.size();
    for (qsizetype i = 0; i < count; ++i) {
        if (i + nodesAhead < count) {
            // The row reads the title's, the priority's and the due day's
            // places, which lie in different cache lines.
            const FlowNode *ahead = tasks[i + nodesAhead].node;
            __builtin_prefetch(&ahead->title);
            __builtin_prefetch(&ahead->priorityRaw);
            __builtin_prefetch(&ahead->dueDate);
        }
        if (i + titlesAhead < count)
            __builtin_prefetch(tasks[i + titlesAhead].node->title.constData());
        addRow(tasks[i]);
    }
}

int showReady(CommandContext &context)
{
    // The list's own sort setting, shared with the window.
    ReadySort sort = context.preferences().readySort();
    if (context.hasOption(sortOption)) {
        const std::optional<ReadySort> chosen = OptionChoice::parse<ReadySort>(context.optionValue(sortOption));
        if (!chosen)
            return context.usageError(QStringLiteral("--sort takes %1, not %2")
                                          .arg(OptionChoice::list<ReadySort>(), PlainText::quoted(context.optionValue(sortOption))));
        sort = *chosen;
    }

    const FenrowStore &store = context.store();
    const QDateTime now = context.clock().now();
    const LocalCalendar &calendar = store.calendar();
    // As the window's list: the tasks started today first, in the order of
    // today's plan, then the rest.
    const TodayGroups groups =
        Readiness::todayGroups(Readiness::sortedReady(store.readyTasks(now), sort), now, calendar);

    if (context.json()) {
        JsonOutput::writeReadyList(groups.today + groups.rest, groups.today.size(), now, calendar,
                                   [&context](std::string_view piece) {
                                       context.out() << QString::fromUtf8(piece.data(), qsizetype(piece.size()));
                                   });
        return exitSuccess;
    }
    if (groups.today.isEmpty() && groups.rest.isEmpty()) {
        context.out() << emptyReason(Readiness::readyEmptyReason(store.flows(), now, calendar)) << '\n';
        return exitSuccess;
    }

    // By flow, the flow names head their groups; otherwise each row names
    // it, as do the rows of Today, which mixes flows. Without a flow column
    // the rest is a table of its own, so columns line up within each.
    const bool grouped = sort == ReadySort::flow;
    const QString indent = grouped || !groups.today.isEmpty() ? QStringLiteral("  ") : QString();
    TextTable table({}, indent);
    TextTable byFlow({}, indent);
    (grouped ? byFlow : table).reserve(groups.rest.size(), grouped ? 4 : 5);
    table.reserve(groups.today.size(), 5);
    SharedCells cells(now, calendar);
    if (!groups.today.isEmpty()) {
        table.addHeading(groups.hasRanks ? QStringLiteral("Today (in your order)") : QStringLiteral("Today"));
        addRows(groups.today, [&](const ReadyTask &task) { addRow(table, task, true, now, calendar, cells); });
        if (!grouped && !groups.rest.isEmpty())
            table.addHeading(QStringLiteral("Other tasks"));
    }
    TextTable &rest = grouped ? byFlow : table;
    const TaskFlow *group = nullptr;
    addRows(groups.rest, [&](const ReadyTask &task) {
        if (grouped && task.flow != group) {
            group = task.flow;
            rest.addHeading(group->name);
        }
        addRow(rest, task, !grouped, now, calendar, cells);
    });
    table.print(context.out());
    byFlow.print(context.out());
    return exitSuccess;
}

} // namespace

void registerIn(CommandRegistry &registry)
{
    registry.addOption({.name = sortOption,
                        .valueName = QStringLiteral("SORT"),
                        .help = QStringLiteral("Order of the list: flow, dueDate, priority or estimate"),
                        .choices = OptionChoice::names<ReadySort>()});

    registry.addCommand({
        .name = QStringLiteral("ready"),
        .summary = QStringLiteral("List the tasks that can be worked on now, from every flow"),
        .description = QStringLiteral(
            "A task is ready when it is not done, everything it waits for and all its\n"
            "subtasks are done, and its start day has come. By flow (the default),\n"
            "tasks are grouped under their flow in sidebar order; by dueDate,\n"
            "priority or estimate, tasks without one come last. The default follows\n"
            "the setting preferences.readySort in ~/.config/fenrow/fenrow.conf.\n"
            "Tasks that start today (or whose start day has passed) come first, as\n"
            "the Today group, in the order of today's plan once one is committed\n"
            "(fenrow plan --commit).\n"
            "With --json, an array of tasks: id, title, flowID, flowName, dueDate,\n"
            "isOverdue, priorityRaw, estimateMinutes, dayPlanRank and inToday."),
        .options = {sortOption},
        .run = showReady,
    });
}

} // namespace fenrow::ReadyCommand
