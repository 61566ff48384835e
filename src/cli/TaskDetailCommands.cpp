#include "TaskDetailCommands.h"

#include "CommandContext.h"
#include "CommandRegistry.h"
#include "CommandSupport.h"
#include "ExitStatus.h"
#include "JsonOutput.h"
#include "PlainText.h"
#include "TaskText.h"
#include "TextTable.h"

#include "domain/Clock.h"
#include "domain/FenrowStore.h"
#include "domain/FlowGraph.h"

#include <QJsonArray>

namespace fenrow::TaskDetailCommands {

namespace {

const QStringList checklistActions{QStringLiteral("add"), QStringLiteral("tick"), QStringLiteral("untick"),
                                   QStringLiteral("remove"), QStringLiteral("move")};

QString quotedTitle(const FlowNode &node)
{
    return PlainText::quoted(PlainText::singleLine(node.title));
}

QString moment(const QDateTime &time, const LocalCalendar &calendar)
{
    return time.toTimeZone(calendar.zone()).toString(QStringLiteral("yyyy-MM-dd HH:mm"));
}

QString coordinate(double value)
{
    return QString::number(value, 'f', 0);
}

// The parents a task is a part of, in edge order.
QList<const FlowNode *> parentsOf(const FlowNode &node)
{
    QList<const FlowNode *> parents;
    for (const DependencyEdge *edge : node.flow()->edges()) {
        if (edge->isSubtask() && edge->toItem() == &node && edge->fromItem())
            parents.append(edge->fromItem());
    }
    return parents;
}

QJsonArray briefTasks(const QList<const FlowNode *> &nodes)
{
    QJsonArray list;
    for (const FlowNode *node : nodes)
        list.append(QJsonObject{
            {QStringLiteral("id"), PlainText::id(node->id)},
            {QStringLiteral("title"), node->title},
            {QStringLiteral("isDone"), node->isDone},
        });
    return list;
}

QJsonArray checklistJson(const Checklist &entries)
{
    QJsonArray list;
    for (qsizetype i = 0; i < entries.size(); ++i)
        list.append(QJsonObject{
            {QStringLiteral("number"), i + 1},
            {QStringLiteral("id"), PlainText::id(entries[i].id)},
            {QStringLiteral("title"), entries[i].title},
            {QStringLiteral("isDone"), entries[i].isDone},
        });
    return list;
}

// "Checklist:" and its numbered steps, the numbers the checklist command takes.
void printChecklist(const Checklist &entries, QTextStream &out)
{
    if (entries.isEmpty()) {
        out << "Checklist: none\n";
        return;
    }
    out << "Checklist:\n";
    TextTable table({TextTable::Alignment::right}, QStringLiteral("  "));
    for (qsizetype i = 0; i < entries.size(); ++i)
        table.addRow({QStringLiteral("%1.").arg(i + 1),
                      (entries[i].isDone ? QStringLiteral("[x] ") : QStringLiteral("[ ] ")) + entries[i].title});
    table.print(out);
}

void printRelated(CommandContext &context, const QString &heading, const QList<const FlowNode *> &nodes)
{
    QTextStream &out = context.out();
    if (nodes.isEmpty()) {
        out << heading << ": none\n";
        return;
    }
    out << heading << ":\n";
    TextTable table({}, QStringLiteral("  "));
    for (const FlowNode *node : nodes)
        table.addRow({quotedTitle(*node), TaskText::state(*node, context.clock().now(), context.store().calendar())});
    table.print(out);
}

int showTask(CommandContext &context)
{
    const FlowNode *node = CommandSupport::taskArgument(context, 0);
    if (!node)
        return exitFailure;
    const LocalCalendar &calendar = context.store().calendar();
    const QDateTime now = context.clock().now();
    const BlockerMaps maps = FlowGraph::blockerMaps(*node->flow());
    const QList<const FlowNode *> prerequisites = maps.prerequisites.value(node->id);
    const QList<const FlowNode *> holdsUp = FlowGraph::dependentsOf(*node);
    const QList<const FlowNode *> subtasks = maps.subtasks.value(node->id);
    const QList<const FlowNode *> parents = parentsOf(*node);
    const Checklist checklist = node->checklist();

    if (context.json()) {
        QJsonObject object = JsonOutput::task(*node, now, calendar);
        object.insert(QStringLiteral("order"), node->order);
        object.insert(QStringLiteral("posX"), node->posX);
        object.insert(QStringLiteral("posY"), node->posY);
        object.insert(QStringLiteral("manualWidth"), node->manualWidth ? QJsonValue(*node->manualWidth) : QJsonValue());
        object.insert(QStringLiteral("manualHeight"),
                      node->manualHeight ? QJsonValue(*node->manualHeight) : QJsonValue());
        object.insert(QStringLiteral("isCollapsed"), node->isCollapsed);
        object.insert(QStringLiteral("prerequisites"), briefTasks(prerequisites));
        object.insert(QStringLiteral("holdsUp"), briefTasks(holdsUp));
        object.insert(QStringLiteral("subtasks"), briefTasks(subtasks));
        object.insert(QStringLiteral("parents"), briefTasks(parents));
        object.insert(QStringLiteral("checklist"), checklistJson(checklist));
        context.printJson(object);
        return exitSuccess;
    }

    QList<QStringList> rows{{QStringLiteral("status"), rawString(node->status())}};
    if (node->dayPlanRank)
        rows.append({QStringLiteral("today's plan"), QStringLiteral("place %1").arg(*node->dayPlanRank)});
    if (node->repeatCount > 0)
        rows.append({QStringLiteral("rounds done"), QString::number(node->repeatCount)});
    if (node->completedAt)
        rows.append({QStringLiteral("completed"), moment(*node->completedAt, calendar)});
    rows.append({QStringLiteral("created"), moment(node->createdAt, calendar)});
    if (node->manualWidth && node->manualHeight)
        rows.append({QStringLiteral("card size"),
                     QStringLiteral("%1 × %2").arg(coordinate(*node->manualWidth), coordinate(*node->manualHeight))});
    rows.append({QStringLiteral("place"), QStringLiteral("%1, %2%3")
                                              .arg(coordinate(node->posX), coordinate(node->posY),
                                                   node->isCollapsed ? QStringLiteral(" (folded)") : QString())});
    rows.append({QStringLiteral("order"), QString::number(node->order)});
    TaskText::printDetails(*node, now, calendar, context.out(), rows);

    printRelated(context, QStringLiteral("Prerequisites"), prerequisites);
    printRelated(context, QStringLiteral("Holds up"), holdsUp);
    printRelated(context, QStringLiteral("Subtasks"), subtasks);
    printRelated(context, QStringLiteral("Subtask of"), parents);
    printChecklist(checklist, context.out());
    return exitSuccess;
}

// The step number N at `index`, 1-based as show prints them; none, with
// the reason reported, when it is not one.
std::optional<qsizetype> stepNumber(CommandContext &context, qsizetype index, const FlowNode &node,
                                    qsizetype count)
{
    const QString text = context.argument(index);
    bool isNumber = false;
    const qint64 number = text.trimmed().toLongLong(&isNumber);
    if (isNumber && number >= 1 && number <= count)
        return qsizetype(number - 1);
    if (count == 0)
        context.refuse(
            QStringLiteral("%1 has no checklist steps; nothing was changed").arg(TaskText::titleInFlow(node)));
    else
        context.refuse(QStringLiteral("%1 is not a step of %2: its steps are numbered 1 to %3, as \"fenrow show\" "
                                      "lists them; nothing was changed")
                           .arg(PlainText::quoted(text), TaskText::titleInFlow(node))
                           .arg(count));
    return std::nullopt;
}

int editChecklist(CommandContext &context)
{
    const QString action = context.argument(1).trimmed().toLower();
    const qsizetype wanted = action == QLatin1StringView("move") ? 4 : 3;
    if (!checklistActions.contains(action))
        return context.usageError(QStringLiteral("the checklist can add, tick, untick, remove or move a step, not %1")
                                      .arg(PlainText::quoted(context.argument(1))));
    if (context.arguments().size() != wanted)
        return context.usageError(action == QLatin1StringView("add")    ? QStringLiteral("add takes one TEXT")
                                  : action == QLatin1StringView("move") ? QStringLiteral("move takes two step numbers")
                                                                         : QStringLiteral("%1 takes one step number")
                                                                               .arg(action));
    if (action == QLatin1StringView("add") && context.argument(2).trimmed().isEmpty())
        return context.usageError(QStringLiteral("a step needs some text"));

    const FlowNode *node = CommandSupport::taskArgument(context, 0);
    if (!node)
        return exitFailure;
    FenrowStore &store = context.store();
    const TaskFlow &flow = *node->flow();
    Checklist entries = node->checklist();
    QString note;

    if (action == QLatin1StringView("add")) {
        const QString text = context.argument(2);
        context.recordAction(QStringLiteral("Add step"), flow, [&] { store.addChecklistEntry(text, *node); });
    } else {
        const std::optional<qsizetype> step = stepNumber(context, 2, *node, entries.size());
        if (!step)
            return exitUsage;
        const ChecklistEntry &entry = entries[*step];
        if (action == QLatin1StringView("tick") || action == QLatin1StringView("untick")) {
            const bool tick = action == QLatin1StringView("tick");
            if (entry.isDone == tick)
                note = QStringLiteral("Step %1 was %2 already.\n").arg(*step + 1).arg(tick ? "ticked" : "not ticked");
            else
                context.recordAction(QStringLiteral("Edit step"), flow,
                                     [&] { store.toggleChecklistEntry(entry.id, *node); });
        } else if (action == QLatin1StringView("remove")) {
            context.recordAction(QStringLiteral("Delete step"), flow,
                                 [&] { store.removeChecklistEntry(entry.id, *node); });
        } else {
            const std::optional<qsizetype> place = stepNumber(context, 3, *node, entries.size());
            if (!place)
                return exitUsage;
            entries.move(*step, *place);
            context.recordAction(QStringLiteral("Reorder steps"), flow, [&] { store.setChecklist(entries, *node); });
        }
    }

    const Checklist now = node->checklist();
    if (context.json()) {
        context.printJson(QJsonObject{
            {QStringLiteral("task"), JsonOutput::task(*node, context.clock().now(), store.calendar())},
            {QStringLiteral("checklist"), checklistJson(now)},
        });
        return exitSuccess;
    }
    context.out() << note << TaskText::titleInFlow(*node) << '\n';
    printChecklist(now, context.out());
    return exitSuccess;
}

} // namespace

void registerIn(CommandRegistry &registry)
{
    registry.addCommand({
        .name = QStringLiteral("show"),
        .argumentsSyntax = QStringLiteral("TASK"),
        .summary = QStringLiteral("Show everything about a task"),
        .description = CommandSupport::taskArgumentHelp
            + QStringLiteral(
                "\n\nPrints every field, then the tasks around it: its prerequisites, what it\n"
                "holds up (the tasks waiting for it, and the tasks it is a part of), its\n"
                "subtasks and parents, and its numbered checklist. With --json, an object\n"
                "with the task's fields and \"prerequisites\", \"holdsUp\", \"subtasks\",\n"
                "\"parents\" and \"checklist\"."),
        .options = {SharedOption::flow},
        .minArguments = 1,
        .maxArguments = 1,
        .run = showTask,
    });
    registry.addCommand({
        .name = QStringLiteral("checklist"),
        .argumentsSyntax = QStringLiteral("TASK ACTION ..."),
        .argumentKinds = {QStringLiteral("TASK"), checklistActions.join(QLatin1Char('|'))},
        .summary = QStringLiteral("Add, tick, untick, remove or reorder a task's checklist steps"),
        .description = CommandSupport::taskArgumentHelp
            + QStringLiteral(
                "\n\nACTION is one of:\n"
                "  add TEXT    add a step at the end\n"
                "  tick N      tick step N off\n"
                "  untick N    mark step N as not done\n"
                "  remove N    remove step N\n"
                "  move N M    put step N at place M\n\n"
                "N and M are step numbers as \"fenrow show\" prints them, from 1. A number\n"
                "that is not a step changes nothing (exit status 2). Prints the\n"
                "checklist; with --json, the task and its \"checklist\"."),
        .options = {SharedOption::flow},
        .minArguments = 3,
        .maxArguments = 4,
        .run = editChecklist,
    });
}

} // namespace fenrow::TaskDetailCommands
