#include "ExchangeCommands.h"

#include "CommandContext.h"
#include "CommandRegistry.h"
#include "CommandSupport.h"
#include "DocumentFile.h"
#include "ExitStatus.h"
#include "JsonOutput.h"
#include "PlainText.h"

#include "domain/FenrowStore.h"
#include "formats/DocumentInput.h"
#include "formats/OPMLCodec.h"

#include <QFileInfo>

namespace fenrow::ExchangeCommands {

namespace {

const QString outputOption = QStringLiteral("output");

const QString notWrittenHelp =
    QStringLiteral("check that the folder exists and that you may write to it; nothing was written");

// The document on standard output, or in the file of --output.
int deliver(CommandContext &context, const TaskFlow &flow, const QString &text, const QString &format)
{
    if (!context.hasOption(outputOption)) {
        context.out() << text;
        return exitSuccess;
    }
    const QString path = context.filePath(context.optionValue(outputOption));
    QString problem;
    if (!DocumentFile::write(path, text.toUtf8(), &problem))
        return context.fail(QStringLiteral("%1 export failed: %2; %3").arg(format, problem, notWrittenHelp));
    const QString shown = DocumentFile::shown(path);
    if (context.json()) {
        context.printJson(QJsonObject{
            {QStringLiteral("flowID"), PlainText::id(flow.id)},
            {QStringLiteral("flowName"), flow.name},
            {QStringLiteral("format"), format.toLower()},
            {QStringLiteral("path"), shown},
        });
    } else {
        context.out() << "Wrote flow " << PlainText::quoted(flow.name) << " as " << format << " to "
                      << PlainText::quoted(shown) << ".\n";
    }
    return exitSuccess;
}

int exportMarkdown(CommandContext &context)
{
    const TaskFlow *flow = CommandSupport::flowArgument(context, 0);
    if (!flow)
        return exitFailure;
    return deliver(context, *flow, context.store().markdown(*flow), QStringLiteral("Markdown"));
}

int exportOPML(CommandContext &context)
{
    const TaskFlow *flow = CommandSupport::flowArgument(context, 0);
    if (!flow)
        return exitFailure;
    return deliver(context, *flow, context.store().exportOPML(*flow), QStringLiteral("OPML"));
}

int importOPML(CommandContext &context)
{
    const QString path = context.argument(0);
    QString problem;
    const std::optional<QByteArray> bytes = DocumentFile::read(context.userPath(path), DocumentInput::outlineLimit, &problem);
    if (!bytes)
        return context.fail(QStringLiteral("cannot import: %1").arg(problem));
    FenrowStore &store = context.store();
    const OPMLCodec::Reading reading = OPMLCodec::read(*bytes, store.calendar());
    if (const auto *refusal = std::get_if<OPMLCodec::Refusal>(&reading)) {
        return context.fail(QStringLiteral("cannot import %1: %2; nothing was added")
                                .arg(PlainText::quoted(path), refusal->text()));
    }
    const OPMLCodec::Document &document = std::get<OPMLCodec::Document>(reading);

    const FenrowStore::ImportedFlow imported =
        store.importOPML(document.title, document.roots, QFileInfo(path).completeBaseName());
    const TaskFlow &flow = *imported.flow;
    const qsizetype position = store.flows().indexOf(&flow) + 1;
    if (context.json()) {
        QJsonObject described = JsonOutput::flow(flow, position, store.calendar());
        described.insert(QStringLiteral("hasDependencies"), imported.hasDependencies);
        described.insert(QStringLiteral("entriesLeftOut"), document.entriesLeftOut);
        described.insert(QStringLiteral("datesLeftOut"), document.datesLeftOut);
        context.printJson(described);
        return exitSuccess;
    }
    context.out() << "Imported flow " << PlainText::quoted(flow.name) << " (" << PlainText::id(flow.id)
                  << ") at position " << position << ", with "
                  << PlainText::counted(qint64(flow.items().size()), QStringLiteral("task"), QStringLiteral("tasks"))
                  << ".\n";
    if (const qsizetype count = document.entriesLeftOut; count > 0) {
        context.out() << PlainText::counted(count, QStringLiteral("entry"), QStringLiteral("entries"))
                      << (count == 1 ? " without text was" : " without text were") << " left out.\n";
    }
    if (const qsizetype count = document.datesLeftOut; count > 0) {
        context.out() << PlainText::counted(count, QStringLiteral("date"), QStringLiteral("dates"))
                      << (count == 1 ? " was left out: it is" : " were left out: they are")
                      << " no day in the years 1 to 9999.\n";
    }
    if (imported.hasDependencies)
        context.out() << "The file brought its own dependencies between tasks; they are in place.\n";
    return exitSuccess;
}

} // namespace

void registerIn(CommandRegistry &registry)
{
    registry.addOption({outputOption, QLatin1Char('o'), QStringLiteral("FILE"),
                        QStringLiteral("Write to FILE instead of the standard output")});
    const QString outputHelp = QStringLiteral(
        "\nWith --output the file is written whole or not at all, and replaced if it\n"
        "exists; otherwise the text goes to the standard output.");
    registry.addCommand({
        .name = QStringLiteral("export markdown"),
        .argumentsSyntax = QStringLiteral("FLOW"),
        .summary = QStringLiteral("Print a flow as a Markdown task list"),
        .description = CommandSupport::flowArgumentHelp
            + QStringLiteral(
                "\nA heading, the progress, then the tasks as checkboxes nested by their\n"
                "subtasks, each with its prerequisites, notes and checklist. Words are in the\n"
                "interface language.")
            + outputHelp,
        .options = {outputOption},
        .minArguments = 1,
        .maxArguments = 1,
        .run = exportMarkdown,
    });
    registry.addCommand({
        .name = QStringLiteral("export opml"),
        .argumentsSyntax = QStringLiteral("FLOW"),
        .summary = QStringLiteral("Print a flow as an OPML outline"),
        .description = CommandSupport::flowArgumentHelp
            + QStringLiteral(
                "\nTasks nest by their subtasks; notes, ticks, dates, checklists and\n"
                "dependencies travel along, so \"fenrow import\" brings the flow back.\n"
                "Other outliners show the titles, notes and ticks.")
            + outputHelp,
        .options = {outputOption},
        .minArguments = 1,
        .maxArguments = 1,
        .run = exportOPML,
    });
    registry.addCommand({
        .name = QStringLiteral("import"),
        .argumentsSyntax = QStringLiteral("FILE.opml"),
        .summary = QStringLiteral("Add a flow made from an OPML outline"),
        .description = QStringLiteral(
            "Every outline becomes a task, nested outlines become subtasks, and an\n"
            "outline's note becomes the task's notes. The flow is named after the\n"
            "outline's title, or after the file. Prints the new flow, and says when the\n"
            "file brought dependencies of its own (files written by \"fenrow export\n"
            "opml\" do), and how many entries without text and dates that are no day\n"
            "in the years 1 to 9999 were left out. With --json, the flow,\n"
            "hasDependencies, entriesLeftOut and datesLeftOut.\n"
            "An outline deeper than 1,000 levels, with more than 200,000 entries, more\n"
            "than 64 attributes to an element or a value longer than 1,048,576\n"
            "characters is refused, naming the line; nothing is added."),
        .minArguments = 1,
        .maxArguments = 1,
        .run = importOPML,
    });
}

} // namespace fenrow::ExchangeCommands
