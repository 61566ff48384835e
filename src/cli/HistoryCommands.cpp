#include "HistoryCommands.h"

#include "CommandContext.h"
#include "CommandRegistry.h"
#include "CommandSupport.h"
#include "ExitStatus.h"
#include "PlainText.h"

#include "domain/FenrowHistory.h"
#include "domain/FenrowStore.h"

#include <QJsonObject>

#include <optional>

namespace fenrow::HistoryCommands {

namespace {

QList<FenrowHistory::Entry> pendingSteps(const FenrowHistory &history, const QUuid &flowID, bool undoing)
{
    return undoing ? history.undoStack(flowID) : history.redoStack(flowID);
}

// The flow Edit ▸ Undo (Redo) would take: the one on the canvas, else the
// one of the latest step made away from it.
std::optional<QUuid> menuFlow(const FenrowHistory &history, bool undoing)
{
    if (history.activeFlowID())
        return history.activeFlowID();
    const QList<QUuid> &borrowed = undoing ? history.borrowedUndo() : history.borrowedRedo();
    if (borrowed.isEmpty())
        return std::nullopt;
    return borrowed.last();
}

void menuStep(FenrowHistory &history, bool undoing)
{
    if (undoing)
        history.undo();
    else
        history.redo();
}

int step(CommandContext &context, bool undoing)
{
    const QString verb = undoing ? QStringLiteral("undo") : QStringLiteral("redo");
    const TaskFlow *named = nullptr;
    if (!context.arguments().isEmpty()) {
        named = CommandSupport::flowArgument(context, 0);
        if (!named)
            return exitFailure;
    }
    FenrowHistory *history = context.runningHistory();
    if (!history)
        return context.refuse(QStringLiteral("nothing to %1: no Fenrow window is running. Undo steps live in the "
                                             "running program only, so a command run alone has none to take back")
                                  .arg(verb));

    const FenrowStore &store = context.store();
    QUuid flowID;
    if (named) {
        flowID = named->id;
    } else {
        // Edit ▸ Undo drops a step made elsewhere whose flow is gone or has
        // nothing left, at the cost of one press; here the command looks on.
        std::optional<QUuid> target = menuFlow(*history, undoing);
        while (target && !history->activeFlowID()
               && (!store.flow(*target) || pendingSteps(*history, *target, undoing).isEmpty())) {
            menuStep(*history, undoing);
            target = menuFlow(*history, undoing);
        }
        if (!target)
            return context.refuse(
                QStringLiteral("nothing to %1: no flow has a step to %1 in the running Fenrow").arg(verb));
        flowID = *target;
    }

    const TaskFlow *flow = store.flow(flowID);
    const QList<FenrowHistory::Entry> steps = pendingSteps(*history, flowID, undoing);
    if (!flow)
        return context.refuse(QStringLiteral("nothing to %1: the flow on the window's canvas is gone").arg(verb));
    if (steps.isEmpty())
        return context.refuse(QStringLiteral("nothing to %1 in flow %2%3")
                                  .arg(verb, PlainText::quoted(flow->name),
                                       named ? QString() : QStringLiteral(", the flow on the window's canvas")));

    const QString name = steps.last().name;
    // Through the menu's own step when it would take this flow, so that its
    // list of steps made away from the canvas moves along.
    if (menuFlow(*history, undoing) == flowID)
        menuStep(*history, undoing);
    else if (undoing)
        history->undoFlow(flowID);
    else
        history->redoFlow(flowID);

    if (context.json())
        context.printJson(QJsonObject{
            {QStringLiteral("name"), name},
            {QStringLiteral("flowID"), PlainText::id(flow->id)},
            {QStringLiteral("flowName"), flow->name},
        });
    else
        context.out() << (undoing ? "Undid " : "Redid ") << PlainText::quoted(name) << " in flow "
                      << PlainText::quoted(flow->name) << ".\n";
    return exitSuccess;
}

} // namespace

void registerIn(CommandRegistry &registry)
{
    registry.addCommand({
        .name = QStringLiteral("undo"),
        .argumentsSyntax = QStringLiteral("[FLOW]"),
        .summary = QStringLiteral("Take back the latest change of a flow in the running Fenrow"),
        .description = CommandSupport::flowArgumentHelp
            + QStringLiteral(
                "\n\nTakes back FLOW's latest step as Edit ▸ Undo does on its canvas, and\n"
                "prints the step's name (\"Connect\", \"Delete tasks\"). Without FLOW, the\n"
                "step Edit ▸ Undo would take: in the flow on the window's canvas, else the\n"
                "latest one made away from it (by a command, the Ready list, quick\n"
                "capture). Steps live in the running program only: with no Fenrow window\n"
                "running, or no step left, the command says so with exit status 2. With\n"
                "--json, the step's name, flowID and flowName."),
        .maxArguments = 1,
        .run = [](CommandContext &context) { return step(context, true); },
    });
    registry.addCommand({
        .name = QStringLiteral("redo"),
        .argumentsSyntax = QStringLiteral("[FLOW]"),
        .summary = QStringLiteral("Make again the change undo took back last"),
        .description = QStringLiteral(
            "The mirror of undo: FLOW's step taken back last, or the one Edit ▸ Redo\n"
            "would take. A new change to a flow clears what it could redo. Exit\n"
            "status 2 when there is nothing to redo or no Fenrow window is running."),
        .maxArguments = 1,
        .run = [](CommandContext &context) { return step(context, false); },
    });
}

} // namespace fenrow::HistoryCommands
