#include "NewFlowCommand.h"

#include "CommandContext.h"
#include "CommandRegistry.h"
#include "DocumentFile.h"
#include "EngineSupport.h"
#include "ExitStatus.h"
#include "JsonOutput.h"
#include "PlainText.h"
#include "TaskText.h"
#include "TextTable.h"

#include "capture/GeneratedFlows.h"
#include "domain/Clock.h"
#include "domain/FenrowStore.h"
#include "shell/AppEnvironment.h"
#include "formats/DocumentInput.h"

#include <QJsonArray>

#include <memory>

namespace fenrow::NewFlowCommand {

namespace {

const QString fromTextOption = QStringLiteral("from-text");
const QString nameOption = QStringLiteral("name");

// The prose of --from-text: a file, or the standard input for "-".
std::optional<QString> readProse(CommandContext &context, QString *problem)
{
    const QString path = context.optionValue(fromTextOption);
    if (path == QLatin1String("-"))
        return context.console().readAll();
    const std::optional<QByteArray> bytes = DocumentFile::read(context.userPath(path), DocumentInput::proseLimit, problem);
    if (!bytes)
        return std::nullopt;
    return QString::fromUtf8(*bytes);
}

QStringList edgeLines(const TaskFlow &flow)
{
    QStringList lines;
    for (const DependencyEdge *edge : flow.edges()) {
        if (edge->fromItem() && edge->toItem())
            lines.append(QStringLiteral("%1 before %2")
                             .arg(PlainText::quoted(PlainText::singleLine(edge->fromItem()->title)),
                                  PlainText::quoted(PlainText::singleLine(edge->toItem()->title))));
    }
    return lines;
}

int newFlow(CommandContext &context)
{
    if (!context.hasOption(fromTextOption))
        return context.usageError(QStringLiteral("new-flow needs --from-text FILE (or - for the standard input); "
                                                 "fenrow flow add NAME makes an empty flow"));
    FenrowStore &store = context.store();
    // The running program's engine when it runs the command, else this run's.
    AppEnvironment *environment = &context.environment();
    // Without an engine the window would make an empty flow; here that is
    // "flow add", so say why and leave the store alone.
    if (!environment->hasEngine())
        return context.fail(EngineSupport::whyNoEngine(*environment)
                            + QStringLiteral(" No flow was made; fenrow flow add NAME makes an empty one."));

    QString problem;
    const std::optional<QString> prose = readProse(context, &problem);
    if (!prose)
        return context.fail(problem);
    if (prose->trimmed().isEmpty())
        return context.fail(QStringLiteral("the text is empty, so there is nothing to make tasks of"));

    NewFlowFromTextModel sheet(store, *environment);
    if (prose->size() > NewFlowFromTextModel::proseLimit)
        context.console().err() << "fenrow: the text is longer than 12,000 characters; the engine reads the first part"
                                << Qt::endl;
    sheet.name = context.optionValue(nameOption);
    sheet.text = *prose;
    // Shared with the engine's turns: the connecting goes on after the flow
    // is made, even when nobody waits for it any more.
    struct Outcome {
        QUuid createdID;
        std::optional<bool> relinked;
    };
    const auto outcome = std::make_shared<Outcome>();
    sheet.onCreated = [outcome](const TaskFlow &flow) { outcome->createdID = flow.id; };
    sheet.onRelinked = [outcome](bool ok) { outcome->relinked = ok; };
    sheet.generate();
    // Done when the flow is made and connected, or when the sheet would
    // show a notice instead.
    const bool waited = EngineSupport::waitUntil(context, [&] {
        return outcome->relinked.has_value() || (outcome->createdID.isNull() && !sheet.isProcessing());
    });
    const QUuid createdID = outcome->createdID;
    const std::optional<bool> relinked = outcome->relinked;
    if (!waited) {
        // A flow not made yet is not made; one made stays, as in the window.
        sheet.stop();
        return context.fail(createdID.isNull()
                                ? QStringLiteral("the command's caller went away; no flow was made")
                                : QStringLiteral("the command's caller went away; the flow was made, and the "
                                                 "engine connects its tasks on its own"));
    }

    const TaskFlow *flow = store.flow(createdID);
    if (!flow) {
        if (sheet.notice() == NewFlowFromTextNotice::noTasksFound)
            return context.fail(QStringLiteral("the inference engine found no tasks in the text; no flow was made"));
        return context.fail(QStringLiteral("the inference engine could not read the text; no flow was made"));
    }

    const QDateTime now = context.clock().now();
    if (context.json()) {
        QJsonObject result = JsonOutput::flow(*flow, store.flows().indexOf(flow) + 1, store.calendar());
        QJsonArray tasks;
        for (const FlowNode *node : flow->orderedItems())
            tasks.append(JsonOutput::task(*node, now, store.calendar()));
        result.insert(QStringLiteral("tasks"), tasks);
        result.insert(QStringLiteral("connected"), relinked.value_or(false));
        context.printJson(result);
        return exitSuccess;
    }
    QTextStream &out = context.out();
    out << "Made the flow " << PlainText::quoted(flow->name) << " with " << flow->items().size()
        << (flow->items().size() == 1 ? " task" : " tasks") << ":\n";
    TextTable table({}, QStringLiteral("  "));
    for (const FlowNode *node : flow->orderedItems())
        table.addRow({PlainText::singleLine(node->title),
                      node->estimateMinutes ? TaskText::estimate(*node->estimateMinutes) : QString()});
    table.print(out);
    if (relinked.value_or(false)) {
        const QStringList edges = edgeLines(*flow);
        if (!edges.isEmpty())
            out << "The engine put them in order:\n  " << edges.join(QStringLiteral("\n  ")) << '\n';
    } else {
        out << "The engine could not connect the tasks; they stand unconnected.\n";
    }
    out << EngineSupport::engineLine(*environment) << '\n';
    return exitSuccess;
}

} // namespace

void registerIn(CommandRegistry &registry)
{
    registry.addOption({fromTextOption, {}, QStringLiteral("FILE"),
                        QStringLiteral("The text to draft the flow from; - reads the standard input")});
    registry.addOption({nameOption, {}, QStringLiteral("NAME"), QStringLiteral("Name of the new flow")});

    registry.addCommand({
        .name = QStringLiteral("new-flow"),
        .summary = QStringLiteral("Make a flow of tasks from prose, with the inference engine"),
        .description = QStringLiteral(
            "Reads the text (a plan, notes, an e-mail) and lets the inference engine\n"
            "draft a flow from it: a name, task titles in working order, an estimate\n"
            "for each, and then the dependencies between the tasks. The flow takes\n"
            "--name when given, else the engine's name for it. Of a text longer than\n"
            "12,000 characters the engine reads only the first part.\n\n"
            "Without an engine nothing is made and the command says why; \"fenrow flow\n"
            "add NAME\" makes an empty flow by hand. With --json, the flow with its\n"
            "tasks and whether they were connected."),
        .options = {fromTextOption, nameOption},
        .run = newFlow,
    });
}

} // namespace fenrow::NewFlowCommand
