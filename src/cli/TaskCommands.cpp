#include "TaskCommands.h"

#include "CommandContext.h"
#include "CommandRegistry.h"
#include "CommandSupport.h"
#include "EngineSupport.h"
#include "ExitStatus.h"
#include "NamedReference.h"
#include "OptionChoice.h"
#include "JsonOutput.h"
#include "PlainText.h"
#include "TaskEdits.h"
#include "TaskText.h"
#include "TextTable.h"

#include "capture/CaptureDateParser.h"
#include "capture/QuickCaptureModel.h"
#include "domain/Clock.h"
#include "domain/FenrowStore.h"
#include "domain/TextRules.h"

#include <QJsonArray>
#include <QUuid>

#include <memory>

namespace fenrow::TaskCommands {

namespace {

const QString dueOption = QStringLiteral("due");

using CommandSupport::taskArgumentHelp;

const FlowNode *taskArgument(CommandContext &context)
{
    return CommandSupport::taskArgument(context, 0);
}

void printTask(CommandContext &context, const FlowNode &node)
{
    const FenrowStore &store = context.store();
    TaskText::printDetails(node, context.clock().now(), store.calendar(), context.out());
}

// What the engine's auto-link connected the new task to, if anything.
void printAutoLink(CommandContext &context, const FlowNode &node, QuickCaptureModel::AutoLink outcome)
{
    if (outcome == QuickCaptureModel::AutoLink::failed) {
        context.out() << "The inference engine could not link it to the other tasks.\n";
        return;
    }
    QStringList links;
    for (const DependencyEdge *edge : node.flow()->edges()) {
        if (edge->source != EdgeSource::ai || !edge->fromItem() || !edge->toItem())
            continue;
        if (edge->toItem() == &node)
            links.append(QStringLiteral("after ") + PlainText::quoted(PlainText::singleLine(edge->fromItem()->title)));
        else if (edge->fromItem() == &node)
            links.append(QStringLiteral("before ") + PlainText::quoted(PlainText::singleLine(edge->toItem()->title)));
    }
    if (!links.isEmpty())
        context.out() << "The inference engine linked it: " << links.join(QStringLiteral(", ")) << ".\n";
    if (outcome == QuickCaptureModel::AutoLink::applied)
        context.out() << EngineSupport::engineLine(context.environment()) << '\n';
}

// Goes the way of the quick-capture panel: the date phrase of the title,
// the flow of the last capture, and the engine's auto-link.
int addTask(CommandContext &context)
{
    FenrowStore &store = context.store();
    QuickCaptureModel capture(store, context.environment(), context.preferences(), &context.history());
    // The panel ignores blank text; a command that was asked to add adds.
    capture.text = TextRules::trimmed(context.argument(0)).isEmpty() ? TextRules::newTaskTitle : context.argument(0);

    // The title may name its due date ("Pay rent by june 5th"), read as
    // quick capture reads it. --due gives the date itself and keeps the
    // title as typed; "--due none" keeps it without a date.
    if (context.hasOption(dueOption)) {
        const QString due = context.optionValue(dueOption);
        if (due.trimmed().compare(QLatin1StringView("none"), Qt::CaseInsensitive) != 0) {
            capture.givenDueDate = store.calendar().readDate(due);
            if (!capture.givenDueDate)
                return context.usageError(QStringLiteral("--due takes a date such as 2026-06-10 (or none), not %1")
                                              .arg(PlainText::quoted(due)));
        }
        capture.dismissDate();
    }
    const std::optional<CaptureDateParser::Match> datePhrase = capture.datePreview();

    bool flowIsNew = false;
    if (context.hasOption(SharedOption::flow)) {
        const QString name = context.optionValue(SharedOption::flow);
        if (name.trimmed().isEmpty())
            return context.usageError(QStringLiteral("--flow needs the name or id of a flow"));
        const FlowReference reference = FlowReference::resolve(store.flows(), name);
        // An id that matches no flow is a mistake, not a name for a new one.
        if (reference.isAmbiguous() || (!reference.found() && !QUuid::fromString(name.trimmed()).isNull()))
            return context.fail(reference.problem());
        const TaskFlow *flow = reference.found();
        if (!flow) {
            flow = store.addFlow(name);
            flowIsNew = true;
        }
        capture.selectedFlowID = flow->id;
    } else {
        flowIsNew = capture.targetFlow() == nullptr;
    }

    // Shared with the link, which lands in the store even when nobody waits for it.
    const auto linked = std::make_shared<std::optional<QuickCaptureModel::AutoLink>>();
    const FlowNode *node = capture.save([linked](QuickCaptureModel::AutoLink outcome) { *linked = outcome; });
    if (!node)
        return context.fail(QStringLiteral("the task could not be added"));
    const QUuid nodeID = node->id;
    if (!EngineSupport::waitUntil(context, [&] { return linked->has_value(); }))
        return context.fail(QStringLiteral("the command's caller went away; the task was added, and the engine "
                                           "connects it on its own"));
    // Looked up again: the store is the truth after the engine's turn.
    node = store.node(nodeID);
    if (!node)
        return context.fail(QStringLiteral("the task went away while it was being linked"));

    if (context.json()) {
        context.printJson(JsonOutput::task(*node, context.clock().now(), store.calendar()));
        return exitSuccess;
    }
    context.out() << "Added a task to " << (flowIsNew ? "the new flow " : "flow ")
                  << PlainText::quoted(node->flow()->name) << ":\n";
    printTask(context, *node);
    if (datePhrase)
        context.out() << "The due date comes from " << PlainText::quoted(PlainText::singleLine(datePhrase->phrase))
                      << "; --due none keeps the title as typed.\n";
    printAutoLink(context, *node, **linked);
    return exitSuccess;
}

int editTask(CommandContext &context)
{
    FenrowStore &store = context.store();
    QString problem;
    const std::optional<TaskEdits> edits = TaskEdits::read(context, store.calendar(), &problem);
    if (!edits)
        return context.usageError(problem);
    if (edits->isEmpty())
        return context.usageError(QStringLiteral("edit needs something to change, such as --title or --due"));
    const FlowNode *node = taskArgument(context);
    if (!node)
        return exitFailure;

    context.recordAction(edits->actionName(), *node->flow(), [&] { edits->applyTo(store, *node); });
    if (context.json())
        context.printJson(JsonOutput::task(*node, context.clock().now(), store.calendar()));
    else
        printTask(context, *node);
    return exitSuccess;
}

int completeTask(CommandContext &context)
{
    const FlowNode *node = taskArgument(context);
    if (!node)
        return exitFailure;
    FenrowStore &store = context.store();
    const QDateTime now = context.clock().now();
    const LocalCalendar &calendar = store.calendar();

    const bool wasDone = node->isDone;
    const qint64 roundsBefore = node->repeatCount;
    const QList<const FlowNode *> released = context.recordAction(
        QStringLiteral("Complete task"), *node->flow(), [&] { return store.setStatus(NodeStatus::done, *node); });
    // A recurring task is never seen done: it counts one more round instead.
    const bool repeated = node->repeatCount != roundsBefore;

    if (context.json()) {
        QJsonArray releasedTasks;
        for (const FlowNode *other : released)
            releasedTasks.append(JsonOutput::task(*other, now, calendar));
        context.printJson(QJsonObject{
            {QStringLiteral("task"), JsonOutput::task(*node, now, calendar)},
            {QStringLiteral("repeated"), repeated},
            {QStringLiteral("released"), releasedTasks},
        });
        return exitSuccess;
    }

    QTextStream &out = context.out();
    const QString task = TaskText::titleInFlow(*node);
    if (wasDone) {
        out << task << " was already done.\n";
        return exitSuccess;
    }
    out << "Done: " << task << ".\n";
    if (repeated) {
        QStringList dates;
        if (node->startDate)
            dates.append(QStringLiteral("starts %1").arg(TaskText::day(*node->startDate, calendar)));
        if (node->dueDate)
            dates.append(QStringLiteral("due %1").arg(TaskText::day(*node->dueDate, calendar)));
        const std::optional<NodeRecurrence> recurrence = NodeRecurrence::decode(node->recurrenceRaw);
        out << "It repeats " << TaskText::recurrence(*recurrence) << "; the next round "
            << (dates.isEmpty() ? QStringLiteral("has no date") : dates.join(QStringLiteral(", "))) << ".\n";
    }
    if (!released.isEmpty()) {
        out << "Released " << PlainText::counted(released.size(), QStringLiteral("task"), QStringLiteral("tasks"))
            << ":\n";
        TextTable table({}, QStringLiteral("  "));
        for (const FlowNode *other : released)
            table.addRow({TaskText::titleInFlow(*other), TaskText::state(*other, now, calendar)});
        table.print(out);
    }
    return exitSuccess;
}

} // namespace

void registerIn(CommandRegistry &registry)
{
    registry.addOption({SharedOption::flow, {}, QStringLiteral("FLOW"),
                        QStringLiteral("The flow: where add puts the task, where the other task commands look for "
                                       "it, what find lists first")});
    registry.addOption({QStringLiteral("title"), {}, QStringLiteral("TEXT"), QStringLiteral("New title")});
    registry.addOption({QStringLiteral("notes"), {}, QStringLiteral("TEXT"),
                        QStringLiteral("New notes (\"\" clears them)")});
    registry.addOption({.name = QStringLiteral("status"),
                        .valueName = QStringLiteral("STATUS"),
                        .help = QStringLiteral("pending, inProgress, done or paused"),
                        .choices = OptionChoice::names<NodeStatus>()});
    registry.addOption({.name = QStringLiteral("priority"),
                        .valueName = QStringLiteral("PRIORITY"),
                        .help = QStringLiteral("none, low, medium or high"),
                        .choices = OptionChoice::names<NodePriority>()});
    registry.addOption({.name = QStringLiteral("color"),
                        .valueName = QStringLiteral("COLOR"),
                        .help = QStringLiteral("none, red, orange, yellow, green, blue, purple, pink or grey"),
                        .choices = OptionChoice::names<NodeColor>()});
    registry.addOption({QStringLiteral("estimate"), {}, QStringLiteral("MINUTES"),
                        QStringLiteral("Estimated minutes, or none")});
    registry.addOption({QStringLiteral("start"), {}, QStringLiteral("DATE"),
                        QStringLiteral("Start day (YYYY-MM-DD), or none")});
    registry.addOption({QStringLiteral("due"), {}, QStringLiteral("DATE"),
                        QStringLiteral("Due day (YYYY-MM-DD), or none")});
    // monthly:DAY and after:DAYS need a number, so completion stops at the colon.
    registry.addOption({.name = QStringLiteral("repeat"),
                        .valueName = QStringLiteral("RULE"),
                        .help = QStringLiteral("never, daily, weekdays, weekly, monthly, monthly:DAY or after:DAYS"),
                        .choices = {QStringLiteral("never"), QStringLiteral("daily"), QStringLiteral("weekdays"),
                                    QStringLiteral("weekly"), QStringLiteral("monthly"), QStringLiteral("monthly:"),
                                    QStringLiteral("after:")}});

    registry.addCommand({
        .name = QStringLiteral("add"),
        .argumentsSyntax = QStringLiteral("TITLE"),
        .summary = QStringLiteral("Add a task to a flow"),
        .description = QStringLiteral(
            "The task goes to the flow --flow names (by id, name or the start of a\n"
            "name), or to a new flow of that name when none has it. Without --flow it\n"
            "goes where quick capture last put a task, else to the first flow in the\n"
            "sidebar, or to a new \"Untitled flow\" when there is none. A blank TITLE\n"
            "gives \"New task\".\n\n"
            "A date phrase in TITLE becomes the due date and leaves the title:\n"
            "\"Pay rent by june 5th\" adds \"Pay rent\", due on the next 5 June. Phrases\n"
            "of the interface language count, English ones always; see parse-date.\n"
            "--due DATE (YYYY-MM-DD) sets the due date instead and keeps TITLE as\n"
            "typed; --due none keeps it as typed without a date.\n\n"
            "With an inference engine, the new task is then linked to the flow's other\n"
            "tasks as the engine proposes. Prints the new task."),
        .options = {SharedOption::flow, dueOption},
        .minArguments = 1,
        .maxArguments = 1,
        .run = addTask,
    });
    QStringList editOptions = TaskEdits::optionNames();
    editOptions.append(SharedOption::flow);
    registry.addCommand({
        .name = QStringLiteral("edit"),
        .argumentsSyntax = QStringLiteral("TASK"),
        .summary = QStringLiteral("Change a task's title, notes, status, dates and more"),
        .description = taskArgumentHelp
            + QStringLiteral(
                "\n\nEvery option is checked before anything changes. DATE is a day\n"
                "(2026-06-10) or an ISO 8601 time, taken as its local day; \"none\" clears\n"
                "a date, the estimate or the repeat. A monthly repeat keeps to the day of\n"
                "the start (else due) date, and follows it when the date moves; monthly:DAY\n"
                "fixes the day. after:DAYS comes back DAYS after each completion. Setting\n"
                "--status done completes the task as \"fenrow done\" does. Prints the task."),
        .options = editOptions,
        .minArguments = 1,
        .maxArguments = 1,
        .run = editTask,
    });
    registry.addCommand({
        .name = QStringLiteral("done"),
        .argumentsSyntax = QStringLiteral("TASK"),
        .summary = QStringLiteral("Complete a task and show what it released"),
        .description = taskArgumentHelp
            + QStringLiteral(
                "\n\nA repeating task is not left done: it comes back with its dates moved to\n"
                "its next round. Prints the tasks that were waiting only for this one.\n"
                "With --json, an object with the task, \"repeated\" and the \"released\" tasks."),
        .options = {SharedOption::flow},
        .minArguments = 1,
        .maxArguments = 1,
        .run = completeTask,
    });
}

} // namespace fenrow::TaskCommands
