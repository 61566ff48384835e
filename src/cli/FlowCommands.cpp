#include "FlowCommands.h"

#include "CommandContext.h"
#include "CommandRegistry.h"
#include "CommandSupport.h"
#include "ExitStatus.h"
#include "JsonOutput.h"
#include "PlainText.h"
#include "TextTable.h"

#include "domain/FenrowStore.h"
#include "domain/FlowProgress.h"
#include "shell/FlowProgressText.h"

#include <QJsonArray>

namespace fenrow::FlowCommands {

namespace {

qsizetype positionOf(const FenrowStore &store, const TaskFlow &flow)
{
    return store.flows().indexOf(&flow) + 1;
}

QString taskCount(const TaskFlow &flow)
{
    return PlainText::counted(qint64(flow.items().size()), QStringLiteral("task"), QStringLiteral("tasks"));
}

int listFlows(CommandContext &context)
{
    const QList<const TaskFlow *> &flows = context.store().flows();
    if (context.json()) {
        QJsonArray list;
        for (qsizetype i = 0; i < flows.size(); ++i)
            list.append(JsonOutput::flow(*flows[i], i + 1, context.store().calendar()));
        context.printJson(list);
        return exitSuccess;
    }
    if (flows.isEmpty()) {
        context.out() << "No flows yet. Add one with: fenrow flow add NAME\n";
        return exitSuccess;
    }
    TextTable table({TextTable::Alignment::right});
    for (qsizetype i = 0; i < flows.size(); ++i)
        table.addRow({QString::number(i + 1), flows[i]->name, flowProgressText(FlowProgress::of(flows[i]->items()))});
    table.print(context.out());
    return exitSuccess;
}

int addFlow(CommandContext &context)
{
    FenrowStore &store = context.store();
    const TaskFlow *flow = store.addFlow(context.argument(0));
    const qsizetype position = positionOf(store, *flow);
    if (context.json())
        context.printJson(JsonOutput::flow(*flow, position, store.calendar()));
    else
        context.out() << "Added flow " << PlainText::quoted(flow->name) << " (" << PlainText::id(flow->id)
                      << ") at position " << position << ".\n";
    return exitSuccess;
}

int renameFlow(CommandContext &context)
{
    const TaskFlow *flow = CommandSupport::flowArgument(context, 0);
    if (!flow)
        return exitFailure;
    const QString oldName = flow->name;
    FenrowStore &store = context.store();
    store.renameFlow(*flow, context.argument(1));
    if (context.json())
        context.printJson(JsonOutput::flow(*flow, positionOf(store, *flow), store.calendar()));
    else
        context.out() << "Renamed flow " << PlainText::quoted(oldName) << " to " << PlainText::quoted(flow->name)
                      << ".\n";
    return exitSuccess;
}

int deleteFlow(CommandContext &context)
{
    const TaskFlow *flow = CommandSupport::flowArgument(context, 0);
    if (!flow)
        return exitFailure;
    const QString name = PlainText::quoted(flow->name);
    if (!CommandSupport::confirmed(context, QStringLiteral("Delete flow %1 with %2?").arg(name, taskCount(*flow)),
                                   QStringLiteral("flow %1 was not deleted").arg(name)))
        return exitFailure;

    FenrowStore &store = context.store();
    // The record goes with the deletion: describe it first.
    const QJsonObject described = JsonOutput::flow(*flow, positionOf(store, *flow), store.calendar());
    const QString tasks = taskCount(*flow);
    store.deleteFlow(*flow);
    if (context.json())
        context.printJson(described);
    else
        context.out() << "Deleted flow " << name << " with " << tasks << ".\n";
    return exitSuccess;
}

int moveFlow(CommandContext &context)
{
    bool isNumber = false;
    const qint64 wanted = context.argument(1).trimmed().toLongLong(&isNumber);
    if (!isNumber)
        return context.usageError(QStringLiteral("POSITION is a whole number, not %1")
                                      .arg(PlainText::quoted(context.argument(1))));
    const TaskFlow *flow = CommandSupport::flowArgument(context, 0);
    if (!flow)
        return exitFailure;

    FenrowStore &store = context.store();
    QList<const TaskFlow *> ordered = store.flows();
    const qsizetype position = std::clamp<qint64>(wanted, 1, ordered.size());
    ordered.removeOne(flow);
    ordered.insert(position - 1, flow);
    store.reorderFlows(ordered);

    if (context.json())
        context.printJson(JsonOutput::flow(*flow, positionOf(store, *flow), store.calendar()));
    else
        context.out() << "Moved flow " << PlainText::quoted(flow->name) << " to position "
                      << positionOf(store, *flow) << " of " << store.flows().size() << ".\n";
    return exitSuccess;
}

} // namespace

void registerIn(CommandRegistry &registry)
{
    registry.addOption({SharedOption::yes, QLatin1Char('y'), {}, QStringLiteral("Go ahead without asking")});

    registry.addCommand({
        .name = QStringLiteral("flows"),
        .summary = QStringLiteral("List the flows in sidebar order, with their progress"),
        .description = QStringLiteral("With --json, each flow has its id, name, position, order, createdAt\n"
                                      "and progress counters (doneCount, inProgressCount, totalCount)."),
        .run = listFlows,
    });
    registry.addCommand({
        .name = QStringLiteral("flow add"),
        .argumentsSyntax = QStringLiteral("NAME"),
        .summary = QStringLiteral("Add a flow at the end of the list"),
        .description = QStringLiteral("A blank NAME gives \"Untitled flow\". Prints the new flow."),
        .minArguments = 1,
        .maxArguments = 1,
        .run = addFlow,
    });
    registry.addCommand({
        .name = QStringLiteral("flow rename"),
        .argumentsSyntax = QStringLiteral("FLOW NAME"),
        .summary = QStringLiteral("Rename a flow"),
        .description = CommandSupport::flowArgumentHelp + QStringLiteral("\nA blank NAME gives \"Untitled flow\"."),
        .minArguments = 2,
        .maxArguments = 2,
        .run = renameFlow,
    });
    registry.addCommand({
        .name = QStringLiteral("flow delete"),
        .argumentsSyntax = QStringLiteral("FLOW"),
        .summary = QStringLiteral("Delete a flow with all its tasks"),
        .description = CommandSupport::flowArgumentHelp
            + QStringLiteral("\nAsks first on the terminal. Without a terminal to ask on, nothing is\n"
                             "deleted unless --yes is given."),
        .options = {SharedOption::yes},
        .minArguments = 1,
        .maxArguments = 1,
        .run = deleteFlow,
    });
    registry.addCommand({
        .name = QStringLiteral("flow move"),
        .argumentsSyntax = QStringLiteral("FLOW POSITION"),
        .summary = QStringLiteral("Move a flow to a position in the sidebar"),
        .description = CommandSupport::flowArgumentHelp
            + QStringLiteral("\nPOSITION counts from 1 at the top; a number beyond either end moves the\n"
                             "flow to that end."),
        .minArguments = 2,
        .maxArguments = 2,
        .run = moveFlow,
    });
}

} // namespace fenrow::FlowCommands
