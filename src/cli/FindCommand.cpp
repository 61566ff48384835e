#include "FindCommand.h"

#include "CommandContext.h"
#include "CommandRegistry.h"
#include "CommandSupport.h"
#include "ExitStatus.h"
#include "NamedReference.h"
#include "PlainText.h"
#include "TextTable.h"

#include "domain/FenrowStore.h"
#include "domain/FlowSearch.h"

#include <QJsonArray>
#include <QJsonObject>

namespace fenrow::FindCommand {

namespace {

// The row's status symbol, in letters a terminal always has.
QString statusMark(NodeStatus status)
{
    switch (status) {
    case NodeStatus::pending:
        return QStringLiteral("[ ]");
    case NodeStatus::inProgress:
        return QStringLiteral("[~]");
    case NodeStatus::done:
        return QStringLiteral("[x]");
    case NodeStatus::paused:
        return QStringLiteral("[=]");
    }
    return {};
}

QJsonObject groupJson(const FlowSearchGroup &group)
{
    QJsonArray matches;
    for (const FlowSearchMatch &match : group.matches) {
        matches.append(QJsonObject{
            {QStringLiteral("id"), PlainText::id(match.id)},
            {QStringLiteral("title"), match.title},
            {QStringLiteral("status"), rawString(match.status)},
            {QStringLiteral("notesSnippet"),
             match.notesSnippet ? QJsonValue(*match.notesSnippet) : QJsonValue(QJsonValue::Null)},
        });
    }
    return {
        {QStringLiteral("flowID"), PlainText::id(group.flowID)},
        {QStringLiteral("flowName"), group.flowName},
        {QStringLiteral("matches"), matches},
    };
}

int find(CommandContext &context)
{
    const QString query = context.argument(0).trimmed();
    if (query.isEmpty())
        return context.usageError(QStringLiteral("find needs some text to look for"));
    const FenrowStore &store = context.store();
    const TaskFlow *first = nullptr;
    if (context.hasOption(SharedOption::flow)) {
        const FlowReference reference = FlowReference::resolve(store.flows(), context.optionValue(SharedOption::flow));
        if (!reference.found())
            return context.fail(reference.problem());
        first = reference.found();
    }
    const QList<FlowSearchGroup> groups = FlowSearch::searchGroups(query, first, store.flows());

    if (context.json()) {
        QJsonArray list;
        for (const FlowSearchGroup &group : groups)
            list.append(groupJson(group));
        context.printJson(list);
        return exitSuccess;
    }
    if (groups.isEmpty()) {
        context.out() << "No task matches " << PlainText::quoted(query) << ".\n";
        return exitSuccess;
    }
    TextTable table({}, QStringLiteral("  "));
    for (const FlowSearchGroup &group : groups) {
        table.addHeading(group.flowName);
        for (const FlowSearchMatch &match : group.matches) {
            table.addRow({statusMark(match.status), match.title});
            // The line of the notes that matched, under the title it belongs to.
            if (match.notesSnippet)
                table.addRow({QString(), QStringLiteral("  ") + *match.notesSnippet});
        }
    }
    table.print(context.out());
    return exitSuccess;
}

} // namespace

void registerIn(CommandRegistry &registry)
{
    registry.addCommand({
        .name = QStringLiteral("find"),
        .argumentsSyntax = QStringLiteral("QUERY"),
        .summary = QStringLiteral("Find tasks whose title or notes contain a text"),
        .description = QStringLiteral(
            "Case and accents are ignored: \"resume\" finds \"Résumé\". Matches are grouped\n"
            "by flow in sidebar order, the flow --flow names first. A task found by its\n"
            "notes shows the line that matched. Marks: [ ] pending, [~] in progress,\n"
            "[x] done, [=] paused. With --json, an array of groups (flowID, flowName,\n"
            "matches), each match with id, title, status and notesSnippet."),
        .options = {SharedOption::flow},
        .minArguments = 1,
        .maxArguments = 1,
        .run = find,
    });
}

} // namespace fenrow::FindCommand
