#include "GraphCommands.h"

#include "CommandContext.h"
#include "CommandRegistry.h"
#include "CommandSupport.h"
#include "ExitStatus.h"
#include "JsonOutput.h"
#include "PlainText.h"
#include "TaskText.h"
#include "TextTable.h"

#include "canvas/NodeSizeResolver.h"
#include "domain/Clock.h"
#include "domain/FenrowStore.h"
#include "domain/FlowGraph.h"
#include "shell/AppPreferences.h"

#include <QJsonArray>

namespace fenrow::GraphCommands {

namespace {

const QString subtaskOption = QStringLiteral("subtask");

QString quotedTitle(const FlowNode &node)
{
    return PlainText::quoted(PlainText::singleLine(node.title));
}

NodeSizeResolver cardSizes(CommandContext &context)
{
    return NodeSizeResolver(context.preferences().sizeByEstimate());
}

// "A" comes before "B" / "B" is a subtask of "A".
QString connectionText(const DependencyEdge &edge)
{
    const QString from = quotedTitle(*edge.fromItem());
    const QString to = quotedTitle(*edge.toItem());
    return edge.isSubtask() ? QStringLiteral("%1 is a subtask of %2").arg(to, from)
                            : QStringLiteral("%1 comes before %2").arg(from, to);
}

QJsonObject connectionJson(CommandContext &context, const DependencyEdge &edge)
{
    const QDateTime now = context.clock().now();
    const LocalCalendar &calendar = context.store().calendar();
    return {
        {QStringLiteral("id"), PlainText::id(edge.id)},
        {QStringLiteral("kind"), rawString(edge.effectiveKind())},
        {QStringLiteral("from"), JsonOutput::task(*edge.fromItem(), now, calendar)},
        {QStringLiteral("to"), JsonOutput::task(*edge.toItem(), now, calendar)},
    };
}

// Why the store refused to connect `from` to `to`.
QString refusal(const GraphMutationError &error, const FlowNode &from, const FlowNode &to)
{
    switch (error.kind()) {
    case GraphMutationError::Kind::selfLoop:
        return QStringLiteral("a task cannot be connected to itself (%1)").arg(quotedTitle(from));
    case GraphMutationError::Kind::invalidItems:
        return QStringLiteral("%1 is in flow %2 and %3 in flow %4: a connection cannot join two flows")
            .arg(quotedTitle(from), PlainText::quoted(from.flow()->name), quotedTitle(to),
                 PlainText::quoted(to.flow()->name));
    case GraphMutationError::Kind::cycleRejected:
        return QStringLiteral("connecting %1 to %2 would close a loop: %2 already leads to %1")
            .arg(quotedTitle(from), quotedTitle(to));
    }
    return QString::fromUtf8(error.what());
}

int connectTasks(CommandContext &context)
{
    const FlowNode *from = CommandSupport::taskArgument(context, 0);
    if (!from)
        return exitFailure;
    const FlowNode *to = CommandSupport::taskArgument(context, 1);
    if (!to)
        return exitFailure;
    const EdgeKind kind = context.hasOption(subtaskOption) ? EdgeKind::subtask : EdgeKind::dependency;
    FenrowStore &store = context.store();
    const TaskFlow &flow = *from->flow();

    const std::size_t edgesBefore = flow.edges().size();
    const DependencyEdge *edge = nullptr;
    try {
        edge = context.recordAction(QStringLiteral("Connect"), flow,
                                    [&] { return &store.addEdge(*from, *to, EdgeSource::manual, kind); });
    } catch (const GraphMutationError &error) {
        return context.refuse(refusal(error, *from, *to));
    }
    // The store hands back the pair's edge when there is one already.
    if (flow.edges().size() == edgesBefore)
        return context.refuse(QStringLiteral("they are connected already: %1").arg(connectionText(*edge)));

    if (context.json())
        context.printJson(connectionJson(context, *edge));
    else
        context.out() << "Connected in flow " << PlainText::quoted(flow.name) << ": " << connectionText(*edge)
                      << ".\n";
    return exitSuccess;
}

int disconnectTasks(CommandContext &context)
{
    const FlowNode *first = CommandSupport::taskArgument(context, 0);
    if (!first)
        return exitFailure;
    const FlowNode *second = CommandSupport::taskArgument(context, 1);
    if (!second)
        return exitFailure;
    const TaskFlow &flow = *first->flow();
    const DependencyEdge *edge = nullptr;
    if (second->flow() == &flow) {
        edge = FlowGraph::findEdge(*first, *second, flow);
        if (!edge)
            edge = FlowGraph::findEdge(*second, *first, flow);
    }
    if (!edge)
        return context.refuse(QStringLiteral("%1 and %2 are not connected; nothing was changed")
                                  .arg(TaskText::titleInFlow(*first), TaskText::titleInFlow(*second)));

    // The edge goes with the change: describe it first.
    const QString described = connectionText(*edge);
    const QJsonObject json = connectionJson(context, *edge);
    FenrowStore &store = context.store();
    context.recordAction(QStringLiteral("Delete connection"), flow, [&] { store.removeEdge(*edge); });
    if (context.json())
        context.printJson(json);
    else
        context.out() << "Disconnected in flow " << PlainText::quoted(flow.name) << ": " << described
                      << " no more.\n";
    return exitSuccess;
}

int addSubtask(CommandContext &context)
{
    const FlowNode *parent = CommandSupport::taskArgument(context, 0);
    if (!parent)
        return exitFailure;
    FenrowStore &store = context.store();
    const NodeSizeResolver sizes = cardSizes(context);
    const FlowNode *child = context.recordAction(QStringLiteral("Add subtask"), *parent->flow(), [&] {
        return store.addChildNode(*parent, context.argument(1), sizes);
    });
    if (context.json()) {
        context.printJson(JsonOutput::task(*child, context.clock().now(), store.calendar()));
        return exitSuccess;
    }
    context.out() << "Added a subtask to " << TaskText::titleInFlow(*parent) << ":\n";
    TaskText::printDetails(*child, context.clock().now(), store.calendar(), context.out());
    return exitSuccess;
}

// The tasks named for deletion, by flow in sidebar order, each named once.
struct Deletion {
    const TaskFlow *flow = nullptr;
    QList<const FlowNode *> named;
    // What goes, in the flow's task order: the named tasks and whatever
    // goes along with them.
    QList<const FlowNode *> doomed;
};

int deleteTasks(CommandContext &context)
{
    FenrowStore &store = context.store();
    QList<Deletion> deletions;
    for (qsizetype i = 0; i < context.arguments().size(); ++i) {
        const FlowNode *node = CommandSupport::taskArgument(context, i);
        if (!node)
            return exitFailure;
        auto found = std::find_if(deletions.begin(), deletions.end(),
                                  [&](const Deletion &deletion) { return deletion.flow == node->flow(); });
        if (found == deletions.end()) {
            deletions.append({node->flow(), {}, {}});
            found = deletions.end() - 1;
        }
        if (!found->named.contains(node))
            found->named.append(node);
    }
    std::ranges::sort(deletions, [&](const Deletion &a, const Deletion &b) {
        return store.flows().indexOf(a.flow) < store.flows().indexOf(b.flow);
    });

    qsizetype total = 0;
    TextTable listing({}, QStringLiteral("  "));
    for (Deletion &deletion : deletions) {
        const QSet<QUuid> ids = FlowGraph::deletionClosure(deletion.named, *deletion.flow);
        for (const FlowNode *node : deletion.flow->orderedItems()) {
            if (!ids.contains(node->id))
                continue;
            deletion.doomed.append(node);
            listing.addRow({TaskText::titleInFlow(*node),
                            deletion.named.contains(node) ? QString() : QStringLiteral("goes with them")});
        }
        total += deletion.doomed.size();
    }
    const QString tasks = PlainText::counted(total, QStringLiteral("task"), QStringLiteral("tasks"));
    QString question;
    QTextStream questionText(&question);
    questionText << "These tasks go, with their connections:\n";
    listing.print(questionText);
    questionText << "Delete " << tasks << "?";
    questionText.flush();
    if (!CommandSupport::confirmed(context, question, QStringLiteral("%1 were not deleted").arg(tasks)))
        return exitFailure;

    // The records go with the deletion: describe them first.
    const QDateTime now = context.clock().now();
    QJsonArray described;
    QStringList lines;
    for (const Deletion &deletion : std::as_const(deletions)) {
        for (const FlowNode *node : deletion.doomed) {
            described.append(JsonOutput::task(*node, now, store.calendar()));
            lines.append(TaskText::titleInFlow(*node));
        }
    }
    for (const Deletion &deletion : std::as_const(deletions)) {
        QList<QUuid> named;
        for (const FlowNode *node : deletion.named)
            named.append(node->id);
        context.recordAction(QStringLiteral("Delete tasks"), *deletion.flow, [&] {
            // Deleting one task can take another named one with it: look
            // each up anew.
            for (const QUuid &id : std::as_const(named)) {
                if (const FlowNode *node = store.node(id))
                    store.deleteNode(*node);
            }
        });
    }

    if (context.json()) {
        context.printJson(described);
        return exitSuccess;
    }
    context.out() << "Deleted " << tasks << ":\n";
    for (const QString &line : std::as_const(lines))
        context.out() << "  " << line << '\n';
    return exitSuccess;
}

// Why a task cannot leave its flow: what ties it there.
QString tiesOf(const FlowNode &node)
{
    const TaskFlow &flow = *node.flow();
    QStringList ties;
    for (const DependencyEdge *edge : flow.edges()) {
        if (edge->fromItem() == &node && edge->toItem())
            ties.append(quotedTitle(*edge->toItem()));
        else if (edge->toItem() == &node && edge->fromItem())
            ties.append(quotedTitle(*edge->fromItem()));
    }
    QStringList files;
    for (const FileLink *link : flow.fileLinks()) {
        if (link->node() == &node && link->file())
            files.append(PlainText::quoted(PlainText::singleLine(link->file()->filename)));
    }
    QString text;
    if (!ties.isEmpty())
        text = QStringLiteral("it is connected to %1").arg(ties.join(QStringLiteral(", ")));
    if (!files.isEmpty())
        text += (text.isEmpty() ? QStringLiteral("it") : QStringLiteral(" and it"))
            + QStringLiteral(" is linked to the file %1").arg(files.join(QStringLiteral(", ")));
    return text;
}

int moveTask(CommandContext &context)
{
    const FlowNode *node = CommandSupport::taskArgument(context, 0);
    if (!node)
        return exitFailure;
    const TaskFlow *target = CommandSupport::flowArgument(context, 1);
    if (!target)
        return exitFailure;
    const TaskFlow *source = node->flow();
    if (source == target)
        return context.refuse(QStringLiteral("%1 is in flow %2 already")
                                  .arg(quotedTitle(*node), PlainText::quoted(target->name)));

    FenrowStore &store = context.store();
    const QString sourceName = source->name;
    try {
        store.moveNodeToFlow(*node, *target, cardSizes(context));
    } catch (const GraphMutationError &) {
        return context.refuse(QStringLiteral("%1 cannot leave flow %2: %3, and a connection or a file link cannot "
                                             "join two flows. Remove them first (fenrow disconnect).")
                                  .arg(quotedTitle(*node), PlainText::quoted(sourceName), tiesOf(*node)));
    }
    if (context.json()) {
        context.printJson(JsonOutput::task(*node, context.clock().now(), store.calendar()));
        return exitSuccess;
    }
    context.out() << "Moved " << quotedTitle(*node) << " from flow " << PlainText::quoted(sourceName)
                  << " to flow " << PlainText::quoted(target->name) << ".\n";
    return exitSuccess;
}

} // namespace

void registerIn(CommandRegistry &registry)
{
    registry.addOption({subtaskOption, {}, {}, QStringLiteral("Make the second task a subtask of the first")});

    registry.addCommand({
        .name = QStringLiteral("connect"),
        .argumentsSyntax = QStringLiteral("A B"),
        .summary = QStringLiteral("Make task A a prerequisite of task B"),
        .description = QStringLiteral(
            "B then waits until A is done. With --subtask, B becomes a part of A\n"
            "instead, and A waits until B is done.\n\n"
            "A and B are named as TASK is elsewhere: by id, or by the exact title or\n"
            "the start of one task's title, ignoring case; --flow FLOW looks in that\n"
            "flow only. Both must be in the same flow. A connection that would make a\n"
            "loop, that joins a task to itself or that exists already is refused\n"
            "with exit status 2, and nothing changes. With --json, the connection\n"
            "with its \"kind\" and the tasks \"from\" and \"to\"."),
        .options = {subtaskOption, SharedOption::flow},
        .minArguments = 2,
        .maxArguments = 2,
        .run = connectTasks,
    });
    registry.addCommand({
        .name = QStringLiteral("disconnect"),
        .argumentsSyntax = QStringLiteral("A B"),
        .summary = QStringLiteral("Remove the connection between two tasks"),
        .description = QStringLiteral(
            "Removes the connection between A and B, whichever way it runs and\n"
            "whether it is a prerequisite or a subtask. When there is none, says so\n"
            "with exit status 2. With --json, the connection that was removed."),
        .options = {SharedOption::flow},
        .minArguments = 2,
        .maxArguments = 2,
        .run = disconnectTasks,
    });
    registry.addCommand({
        .name = QStringLiteral("subtask"),
        .argumentsSyntax = QStringLiteral("PARENT TITLE"),
        .summary = QStringLiteral("Add a new task as a subtask of PARENT"),
        .description = QStringLiteral(
            "PARENT is named as TASK is elsewhere. The new task stands in a column\n"
            "right of its parent with its siblings, as on the canvas; PARENT is not\n"
            "ready until all its subtasks are done. A blank TITLE gives \"New task\".\n"
            "Prints the new task."),
        .options = {SharedOption::flow},
        .minArguments = 2,
        .maxArguments = 2,
        .run = addSubtask,
    });
    registry.addCommand({
        .name = QStringLiteral("delete"),
        .argumentsSyntax = QStringLiteral("TASK..."),
        .summary = QStringLiteral("Delete tasks, with the subtasks and followers only they hold"),
        .description = CommandSupport::taskArgumentHelp
            + QStringLiteral(
                "\n\nWhat follows a deleted task (its subtasks, the tasks after it) goes\n"
                "too, unless it still has another task before it that stays. Lists what\n"
                "goes and asks first on the terminal; without a terminal to ask on,\n"
                "nothing is deleted unless --yes is given. Archive records stay. With\n"
                "--json, the deleted tasks."),
        .options = {SharedOption::yes, SharedOption::flow},
        .minArguments = 1,
        .maxArguments = -1,
        .run = deleteTasks,
    });
    registry.addCommand({
        .name = QStringLiteral("move"),
        .argumentsSyntax = QStringLiteral("TASK FLOW"),
        .summary = QStringLiteral("Move a task that stands alone to another flow"),
        .description = CommandSupport::taskArgumentHelp + QStringLiteral("\n")
            + CommandSupport::flowArgumentHelp
            + QStringLiteral(
                "\n\nThe task goes to the end of FLOW, at a free place on its canvas. A task\n"
                "with connections or linked files is refused with exit status 2: they\n"
                "cannot join two flows. As with archiving, Edit ▸ Undo in a running\n"
                "Fenrow then starts afresh on both flows. Prints where it went."),
        .options = {SharedOption::flow},
        .minArguments = 2,
        .maxArguments = 2,
        .run = moveTask,
    });
}

} // namespace fenrow::GraphCommands
