#include "TemplateCommands.h"

#include "CommandContext.h"
#include "CommandRegistry.h"
#include "CommandSupport.h"
#include "ExitStatus.h"
#include "JsonOutput.h"
#include "NamedReference.h"
#include "PlainText.h"
#include "TextTable.h"

#include "domain/FenrowStore.h"

#include <QJsonArray>

namespace fenrow::TemplateCommands {

namespace {

const QString templateArgumentHelp = QStringLiteral(
    "TEMPLATE is the template's id, or its name: the exact name or the start of\n"
    "one template's name, either ignoring case.");

QJsonObject templateJson(const FlowTemplate &flowTemplate, const LocalCalendar &calendar)
{
    return {
        {QStringLiteral("id"), PlainText::id(flowTemplate.id)},
        {QStringLiteral("name"), flowTemplate.name},
        {QStringLiteral("createdAt"), JsonOutput::dateTime(flowTemplate.createdAt, calendar)},
    };
}

QString createdText(const QDateTime &createdAt, const LocalCalendar &calendar)
{
    return createdAt.toTimeZone(calendar.zone()).toString(QStringLiteral("yyyy-MM-dd HH:mm"));
}

const FlowTemplate *templateArgument(CommandContext &context)
{
    const TemplateReference reference =
        TemplateReference::resolve(context.store().templateList(), context.argument(0));
    if (!reference.found())
        context.fail(reference.problem());
    return reference.found();
}

// A flow just made from a shape: where it stands and what it holds.
int printNewFlow(CommandContext &context, const TaskFlow &flow, const QString &origin)
{
    const FenrowStore &store = context.store();
    const qsizetype position = store.flows().indexOf(&flow) + 1;
    if (context.json()) {
        context.printJson(JsonOutput::flow(flow, position, store.calendar()));
        return exitSuccess;
    }
    context.out() << "Added flow " << PlainText::quoted(flow.name) << " (" << PlainText::id(flow.id) << ") from "
                  << origin << " at position " << position << ", with "
                  << PlainText::counted(qint64(flow.items().size()), QStringLiteral("task"), QStringLiteral("tasks"))
                  << (flow.items().empty() ? "" : ", all pending") << ".\n";
    return exitSuccess;
}

int duplicateFlow(CommandContext &context)
{
    const TaskFlow *source = CommandSupport::flowArgument(context, 0);
    if (!source)
        return exitFailure;
    const TaskFlow *copy = context.store().duplicateFlow(*source);
    return printNewFlow(context, *copy, QStringLiteral("flow ") + PlainText::quoted(source->name));
}

int listTemplates(CommandContext &context)
{
    const FenrowStore &store = context.store();
    const QList<const FlowTemplate *> templates = store.templateList();
    if (context.json()) {
        QJsonArray list;
        for (const FlowTemplate *flowTemplate : templates)
            list.append(templateJson(*flowTemplate, store.calendar()));
        context.printJson(list);
        return exitSuccess;
    }
    if (templates.isEmpty()) {
        context.out() << "No templates yet. Save a flow as one with: fenrow template save FLOW\n";
        return exitSuccess;
    }
    TextTable table;
    for (const FlowTemplate *flowTemplate : templates)
        table.addRow({flowTemplate->name, createdText(flowTemplate->createdAt, store.calendar()),
                      PlainText::id(flowTemplate->id)});
    table.print(context.out());
    return exitSuccess;
}

int saveTemplate(CommandContext &context)
{
    const TaskFlow *flow = CommandSupport::flowArgument(context, 0);
    if (!flow)
        return exitFailure;
    FenrowStore &store = context.store();
    const FlowTemplate *saved = store.saveAsTemplate(*flow);
    if (!saved)
        return context.fail(QStringLiteral("flow %1 could not be saved as a template: a size or position in it is "
                                           "not a finite number")
                                .arg(PlainText::quoted(flow->name)));
    if (context.json())
        context.printJson(templateJson(*saved, store.calendar()));
    else
        context.out() << "Saved flow " << PlainText::quoted(flow->name) << " as template "
                      << PlainText::quoted(saved->name) << " (" << PlainText::id(saved->id) << ").\n";
    return exitSuccess;
}

int newFlowFromTemplate(CommandContext &context)
{
    const FlowTemplate *flowTemplate = templateArgument(context);
    if (!flowTemplate)
        return exitFailure;
    const QString name = PlainText::quoted(flowTemplate->name);
    const TaskFlow *flow = context.store().createFlow(*flowTemplate);
    if (!flow)
        return context.fail(QStringLiteral("template %1 is damaged and makes no flow; delete it with: fenrow "
                                           "template delete %2")
                                .arg(name, PlainText::id(flowTemplate->id)));
    return printNewFlow(context, *flow, QStringLiteral("template ") + name);
}

int deleteTemplate(CommandContext &context)
{
    const FlowTemplate *flowTemplate = templateArgument(context);
    if (!flowTemplate)
        return exitFailure;
    const QString name = PlainText::quoted(flowTemplate->name);
    if (!CommandSupport::confirmed(context, QStringLiteral("Delete template %1?").arg(name),
                                   QStringLiteral("template %1 was not deleted").arg(name)))
        return exitFailure;
    FenrowStore &store = context.store();
    // The record goes with the deletion: describe it first.
    const QJsonObject described = templateJson(*flowTemplate, store.calendar());
    store.deleteTemplate(*flowTemplate);
    if (context.json())
        context.printJson(described);
    else
        context.out() << "Deleted template " << name << ".\n";
    return exitSuccess;
}

} // namespace

void registerIn(CommandRegistry &registry)
{
    registry.addCommand({
        .name = QStringLiteral("duplicate"),
        .argumentsSyntax = QStringLiteral("FLOW"),
        .summary = QStringLiteral("Add a fresh copy of a flow: its tasks and connections, all pending"),
        .description = CommandSupport::flowArgumentHelp
            + QStringLiteral(
                "\nThe copy keeps titles, notes, checklists (unticked), priorities, colours,\n"
                "estimates, repeats and places; not dates, progress or attached files.\n"
                "Prints the new flow."),
        .minArguments = 1,
        .maxArguments = 1,
        .run = duplicateFlow,
    });
    registry.addCommand({
        .name = QStringLiteral("templates"),
        .summary = QStringLiteral("List the saved templates, oldest first"),
        .description = QStringLiteral("With --json, each template has its id, name and createdAt."),
        .run = listTemplates,
    });
    registry.addCommand({
        .name = QStringLiteral("template save"),
        .argumentsSyntax = QStringLiteral("FLOW"),
        .summary = QStringLiteral("Save a flow's shape as a template named after it"),
        .description = CommandSupport::flowArgumentHelp
            + QStringLiteral("\nThe template keeps what \"fenrow duplicate\" copies. Prints the template."),
        .minArguments = 1,
        .maxArguments = 1,
        .run = saveTemplate,
    });
    registry.addCommand({
        .name = QStringLiteral("template new"),
        .argumentsSyntax = QStringLiteral("TEMPLATE"),
        .summary = QStringLiteral("Add a flow made from a template"),
        .description = templateArgumentHelp + QStringLiteral("\nPrints the new flow."),
        .minArguments = 1,
        .maxArguments = 1,
        .run = newFlowFromTemplate,
    });
    registry.addCommand({
        .name = QStringLiteral("template delete"),
        .argumentsSyntax = QStringLiteral("TEMPLATE"),
        .summary = QStringLiteral("Delete a template"),
        .description = templateArgumentHelp
            + QStringLiteral("\nFlows made from it stay as they are. Asks first on the terminal; without a\n"
                             "terminal to ask on, nothing is deleted unless --yes is given."),
        .options = {SharedOption::yes},
        .minArguments = 1,
        .maxArguments = 1,
        .run = deleteTemplate,
    });
}

} // namespace fenrow::TemplateCommands
