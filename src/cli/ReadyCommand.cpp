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

// Texts that many rows share (due days, priorities, estimates), made once
// for the list instead of once a row: a long list repeats a few of them.
// A text given out stays valid until that kind of text is asked for again.
class SharedCellTexts
{
public:
    SharedCellTexts(const QDateTime &now, const LocalCalendar &calendar) : m_now(now), m_calendar(calendar) {}

    // The due cell of a task that is not done: whether it is overdue then
    // depends on the day alone.
    const QString &due(const FlowNode &node)
    {
        const qint64 key = node.dueDate->toMSecsSinceEpoch();
        auto found = m_dueDays.constFind(key);
        if (found == m_dueDays.constEnd()) {
            QString text = QStringLiteral("due ") + TaskText::day(*node.dueDate, m_calendar);
            if (node.isOverdue(m_now, m_calendar))
                text += QStringLiteral(" (overdue)");
            found = m_dueDays.insert(key, text);
        }
        return *found;
    }
    const QString &priority(NodePriority priority)
    {
        auto found = m_priorities.constFind(priority);
        if (found == m_priorities.constEnd())
            found = m_priorities.insert(priority, priority == NodePriority::none
                                                      ? QString()
                                                      : rawString(priority) + QStringLiteral(" priority"));
        return *found;
    }
    const QString &estimate(qint64 minutes)
    {
        auto found = m_estimates.constFind(minutes);
        if (found == m_estimates.constEnd())
            found = m_estimates.insert(minutes, TaskText::estimate(minutes));
        return *found;
    }

private:
    const QDateTime &m_now;
    const LocalCalendar &m_calendar;
    QHash<qint64, QString> m_dueDays;
    QHash<NodePriority, QString> m_priorities;
    QHash<qint64, QString> m_estimates;
};

// A ready task's row: title, flow (when `withFlow`), due day, priority and
// estimate, added to `table` without a list made for it.
void addRow(TextTable &table, const ReadyTask &task, bool withFlow, const QDateTime &now, const LocalCalendar &calendar,
            SharedCellTexts &texts)
{
    const FlowNode &node = *task.node;
    QStringView title = node.title;
    // A paused or started task is still ready, but its row says so. Being
    // ready, it waits for nothing.
    QString titleWithState;
    if (node.status() != NodeStatus::pending) {
        titleWithState = node.title + QStringLiteral(" [%1]").arg(TaskText::state(node, 0, now, calendar));
        title = titleWithState;
    }
    const QStringView due = node.dueDate ? QStringView(texts.due(node)) : QStringView();
    const QStringView priority = texts.priority(node.priority());
    const QStringView estimate =
        node.estimateMinutes ? QStringView(texts.estimate(*node.estimateMinutes)) : QStringView();
    if (withFlow)
        table.addRow({title, task.flow->name, due, priority, estimate});
    else
        table.addRow({title, due, priority, estimate});
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
            // The row reads the title's and the priority's places, which
            // lie in different cache lines.
            __builtin_prefetch(&tasks[i + nodesAhead].node->title);
            __builtin_prefetch(&tasks[i + nodesAhead].node->priorityRaw);
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
    SharedCellTexts texts(now, calendar);
    if (!groups.today.isEmpty()) {
        table.addHeading(groups.hasRanks ? QStringLiteral("Today (in your order)") : QStringLiteral("Today"));
        addRows(groups.today, [&](const ReadyTask &task) { addRow(table, task, true, now, calendar, texts); });
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
        addRow(rest, task, !grouped, now, calendar, texts);
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
