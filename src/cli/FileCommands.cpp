#include "FileCommands.h"

#include "CommandContext.h"
#include "CommandRegistry.h"
#include "CommandSupport.h"
#include "ExitStatus.h"
#include "JsonOutput.h"
#include "NamedReference.h"
#include "PlainText.h"
#include "TaskText.h"
#include "TextTable.h"

#include "domain/Clock.h"
#include "domain/FenrowStore.h"

#include <QJsonArray>
#include <QJsonObject>

#include <optional>

namespace fenrow::FileCommands {

namespace {

// Long lists help nobody pick; the rest are counted.
constexpr qsizetype listedCandidates = 10;

QString quotedName(const FlowFile &file)
{
    return PlainText::quoted(PlainText::singleLine(file.filename));
}

QString nameInFlow(const FlowFile &file)
{
    return QStringLiteral("%1 (%2)").arg(quotedName(file), PlainText::singleLine(file.flow()->name));
}

QJsonObject fileJson(const FlowFile &file)
{
    return {
        {QStringLiteral("id"), PlainText::id(file.id)},
        {QStringLiteral("filename"), file.filename},
        {QStringLiteral("contentType"), file.contentTypeRaw},
        {QStringLiteral("byteCount"), file.byteCount},
        {QStringLiteral("flowID"), PlainText::id(file.flow()->id)},
        {QStringLiteral("flowName"), file.flow()->name},
    };
}

// The flows to look in: --flow's, else all; none when --flow names none.
std::optional<QList<const TaskFlow *>> scope(CommandContext &context, QString &note)
{
    if (!context.hasOption(SharedOption::flow))
        return context.store().flows();
    const FlowReference flow = FlowReference::resolve(context.store().flows(), context.optionValue(SharedOption::flow));
    if (!flow.found()) {
        context.fail(flow.problem());
        return std::nullopt;
    }
    note = QStringLiteral("\nOnly flow %1 was searched.").arg(PlainText::quoted(flow.found()->name));
    return QList<const TaskFlow *>{flow.found()};
}

// The file card FILE names, as TASK names a task: by id, else by the exact
// name or the start of one name, ignoring case. Files in the trash are off
// the canvas and named by nothing.
const FlowFile *fileArgument(CommandContext &context, qsizetype index)
{
    QString scopeNote;
    const std::optional<QList<const TaskFlow *>> flows = scope(context, scopeNote);
    if (!flows)
        return nullptr;
    QList<const FlowFile *> all;
    for (const TaskFlow *flow : *flows)
        all += FenrowStore::liveFiles(*flow);

    const QString text = context.argument(index);
    const FileReference reference = FileReference::resolve(all, text);
    if (reference.found())
        return reference.found();
    const QList<const FlowFile *> &candidates = reference.candidates();
    const bool matched = reference.isAmbiguous();

    QString message;
    if (all.isEmpty())
        message = QStringLiteral("no file matches %1; there are no attached files (fenrow attach adds one)")
                      .arg(PlainText::quoted(text));
    else if (!matched)
        message = QStringLiteral("no file matches %1; the files are:\n").arg(PlainText::quoted(text));
    else
        message = QStringLiteral("%1 matches more than one file:\n").arg(PlainText::quoted(text));
    if (!all.isEmpty()) {
        TextTable table({}, QStringLiteral("  "));
        for (const FlowFile *file : candidates.first(std::min(candidates.size(), listedCandidates)))
            table.addRow({nameInFlow(*file), PlainText::id(file->id)});
        QTextStream stream(&message);
        table.print(stream);
        if (candidates.size() > listedCandidates)
            stream << "  … and " << candidates.size() - listedCandidates << " more\n";
        stream << "Name a file by its id, its name, or the start of its name"
               << (matched ? "; --flow narrows the search." : ".");
    }
    context.fail(message + scopeNote);
    return nullptr;
}

const FileLink *linkBetween(const FlowFile &file, const FlowNode &node)
{
    for (const FileLink *link : file.links()) {
        if (link->node() == &node)
            return link;
    }
    return nullptr;
}

// FILE and TASK of link and unlink, in one flow; otherwise reports why not
// and returns false, with `status` the exit status.
bool fileAndTask(CommandContext &context, const FlowFile *&file, const FlowNode *&node, int &status)
{
    status = exitFailure;
    file = fileArgument(context, 0);
    if (!file)
        return false;
    node = CommandSupport::taskArgument(context, 1);
    if (!node)
        return false;
    if (node->flow() == file->flow())
        return true;
    status = context.refuse(QStringLiteral("%1 is in flow %2 and %3 in flow %4: a file links only to tasks of its "
                                           "own flow")
                                .arg(quotedName(*file), PlainText::quoted(file->flow()->name),
                                     PlainText::quoted(PlainText::singleLine(node->title)),
                                     PlainText::quoted(node->flow()->name)));
    return false;
}

int printLink(CommandContext &context, const FlowFile &file, const FlowNode &node, const char *done,
              const char *preposition)
{
    if (context.json()) {
        context.printJson(QJsonObject{
            {QStringLiteral("file"), fileJson(file)},
            {QStringLiteral("task"), JsonOutput::task(node, context.clock().now(), context.store().calendar())},
        });
        return exitSuccess;
    }
    context.out() << done << ' ' << quotedName(file) << ' ' << preposition << ' '
                  << PlainText::quoted(PlainText::singleLine(node.title)) << " in flow "
                  << PlainText::quoted(file.flow()->name) << ".\n";
    return exitSuccess;
}

int link(CommandContext &context)
{
    const FlowFile *file = nullptr;
    const FlowNode *node = nullptr;
    int status = exitFailure;
    if (!fileAndTask(context, file, node, status))
        return status;
    if (linkBetween(*file, *node))
        return context.refuse(
            QStringLiteral("%1 is linked to %2 already").arg(quotedName(*file), TaskText::titleInFlow(*node)));
    FenrowStore &store = context.store();
    context.recordAction(QStringLiteral("Link file"), *file->flow(), [&] { store.linkFile(*file, *node); });
    return printLink(context, *file, *node, "Linked", "to");
}

int unlink(CommandContext &context)
{
    const FlowFile *file = nullptr;
    const FlowNode *node = nullptr;
    int status = exitFailure;
    if (!fileAndTask(context, file, node, status))
        return status;
    if (!linkBetween(*file, *node))
        return context.refuse(QStringLiteral("%1 is not linked to %2; nothing was changed")
                                  .arg(quotedName(*file), TaskText::titleInFlow(*node)));
    FenrowStore &store = context.store();
    context.recordAction(QStringLiteral("Unlink file"), *file->flow(), [&] { store.unlinkFile(*file, *node); });
    return printLink(context, *file, *node, "Unlinked", "from");
}

int trash(CommandContext &context)
{
    const FlowFile *file = fileArgument(context, 0);
    if (!file)
        return exitFailure;
    FenrowStore &store = context.store();
    const TaskFlow &flow = *file->flow();
    // Trashed, not removed: undo in the running program brings it back.
    context.recordAction(QStringLiteral("Delete file"), flow, [&] { store.setFileTrashed(*file, true); });

    if (context.json()) {
        context.printJson(fileJson(*file));
        return exitSuccess;
    }
    context.out() << "Put " << quotedName(*file) << " of flow " << PlainText::quoted(flow.name) << " in the trash.\n";
    if (context.runningHistory())
        context.out() << "fenrow undo " << PlainText::quoted(flow.name)
                      << " takes this step back while this Fenrow runs.\n";
    else
        // The canvas empties the trash of a flow it has no undo steps for.
        context.out() << "No Fenrow window is running to undo this: the file goes for good when its flow is next "
                         "opened, or with fenrow file purge.\n";
    return exitSuccess;
}

int purge(CommandContext &context)
{
    FenrowStore &store = context.store();
    QList<const FlowFile *> trashed;
    TextTable listing({}, QStringLiteral("  "));
    for (const TaskFlow *flow : store.flows()) {
        for (const FlowFile *file : flow->files()) {
            if (!file->isTrashed)
                continue;
            trashed.append(file);
            listing.addRow({nameInFlow(*file), PlainText::counted(file->links().size(), QStringLiteral("link"),
                                                                  QStringLiteral("links"))});
        }
    }
    if (trashed.isEmpty()) {
        if (context.json())
            context.printJson(QJsonArray());
        else
            context.out() << "The trash holds no files.\n";
        return exitSuccess;
    }

    const QString files = PlainText::counted(trashed.size(), QStringLiteral("trashed file"),
                                             QStringLiteral("trashed files"));
    QString question;
    QTextStream questionText(&question);
    questionText << "These files go for good, with their contents and their links to tasks; undo cannot bring "
                    "them back:\n";
    listing.print(questionText);
    questionText << "Purge " << files << "?";
    questionText.flush();
    if (!CommandSupport::confirmed(context, question, QStringLiteral("the %1 were not purged").arg(files)))
        return exitFailure;

    // The records go with the purge: describe them first.
    QJsonArray described;
    QStringList lines;
    for (const FlowFile *file : std::as_const(trashed)) {
        described.append(fileJson(*file));
        lines.append(nameInFlow(*file));
    }
    // Every flow in one save: the trash is emptied whole or not at all.
    store.purgeTrashedFiles(store.flows());

    if (context.json()) {
        context.printJson(described);
        return exitSuccess;
    }
    context.out() << "Purged " << files << ":\n";
    for (const QString &line : std::as_const(lines))
        context.out() << "  " << line << '\n';
    return exitSuccess;
}

} // namespace

void registerIn(CommandRegistry &registry)
{
    const QString fileHelp = QStringLiteral(
        "FILE is an attached file's id (as attach --json gives it) or its name: the\n"
        "exact name or the start of one file's name, either ignoring case. Files in\n"
        "the trash are not named.");
    registry.addCommand({
        .name = QStringLiteral("link"),
        .argumentsSyntax = QStringLiteral("FILE TASK"),
        .argumentKinds = {QStringLiteral("ATTACHMENT"), QStringLiteral("TASK")},
        .summary = QStringLiteral("Link an attached file to a task of its flow"),
        .description = fileHelp + QStringLiteral("\n") + CommandSupport::taskArgumentHelp
            + QStringLiteral(
                " --flow FLOW looks for the file there too.\n\n"
                "The canvas draws a line from the file's card to the task. A task of\n"
                "another flow, or a pair linked already, is refused with exit status 2.\n"
                "With --json, the \"file\" and the \"task\"."),
        .options = {SharedOption::flow},
        .minArguments = 2,
        .maxArguments = 2,
        .run = link,
    });
    registry.addCommand({
        .name = QStringLiteral("unlink"),
        .argumentsSyntax = QStringLiteral("FILE TASK"),
        .argumentKinds = {QStringLiteral("ATTACHMENT"), QStringLiteral("TASK")},
        .summary = QStringLiteral("Remove the link between an attached file and a task"),
        .description = QStringLiteral(
            "FILE and TASK are named as for link. When they are not linked, says so\n"
            "with exit status 2. With --json, the \"file\" and the \"task\"."),
        .options = {SharedOption::flow},
        .minArguments = 2,
        .maxArguments = 2,
        .run = unlink,
    });
    registry.addCommand({
        .name = QStringLiteral("file trash"),
        .argumentsSyntax = QStringLiteral("FILE"),
        .argumentKinds = {QStringLiteral("ATTACHMENT")},
        .summary = QStringLiteral("Take an attached file off its canvas, into the trash"),
        .description = fileHelp
            + QStringLiteral(
                " --flow FLOW looks in that flow only.\n\n"
                "As Delete on the canvas: the file keeps its contents and links until the\n"
                "trash is purged, so undo in the running Fenrow brings it back. A flow's\n"
                "trash is purged when the window opens the flow with no undo step left,\n"
                "so a file trashed with no window running goes for good then. With\n"
                "--json, the file."),
        .options = {SharedOption::flow},
        .minArguments = 1,
        .maxArguments = 1,
        .run = trash,
    });
    registry.addCommand({
        .name = QStringLiteral("file purge"),
        .summary = QStringLiteral("Remove the trashed files of every flow for good"),
        .description = QStringLiteral(
            "Removes every trashed file with its contents and its links to tasks, in\n"
            "one change: all of them or, when that fails, none. Undo cannot bring them\n"
            "back. Lists them and asks first on the terminal; without a terminal to\n"
            "ask on, nothing is purged unless --yes is given. With --json, the purged\n"
            "files."),
        .options = {SharedOption::yes},
        .run = purge,
    });
}

} // namespace fenrow::FileCommands
