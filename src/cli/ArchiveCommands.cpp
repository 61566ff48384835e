#include "ArchiveCommands.h"

#include "CommandContext.h"
#include "CommandRegistry.h"
#include "CommandSupport.h"
#include "ExitStatus.h"
#include "JsonOutput.h"
#include "PlainText.h"
#include "TaskText.h"
#include "TextTable.h"

#include "domain/ArchiveDays.h"
#include "domain/Clock.h"
#include "domain/FenrowStore.h"

#include <QJsonArray>
#include <QLocale>

#include <algorithm>

namespace fenrow::ArchiveCommands {

namespace {

// Short ids are never shorter than this, so that one stays valid while
// the archive grows a little.
constexpr qsizetype minimumIdDigits = 8;

QString hexDigits(const QUuid &id)
{
    return id.toString(QUuid::Id128).toUpper();
}

// The fewest digits, at least the minimum, that tell every record apart.
qsizetype shortIdDigits(const OwnedList<CompletionRecord> &records)
{
    QStringList ids;
    for (const CompletionRecord *record : records)
        ids.append(hexDigits(record->id));
    ids.sort();
    qsizetype digits = minimumIdDigits;
    for (qsizetype i = 1; i < ids.size(); ++i) {
        qsizetype common = 0;
        while (common < ids[i].size() && ids[i][common] == ids[i - 1][common])
            ++common;
        digits = std::max(digits, common + 1);
    }
    return digits;
}

// The start of the id as PlainText::id spells it, holding `digits` digits.
QString shortId(const QUuid &id, qsizetype digits)
{
    const QString full = PlainText::id(id);
    qsizetype length = 0;
    for (qsizetype seen = 0; length < full.size() && seen < digits; ++length) {
        if (full[length] != QLatin1Char('-'))
            ++seen;
    }
    return full.left(length);
}

enum class Restorability { restorable, repeatRound, otherKind, flowGone, damaged };

// Why a record cannot come back, in the order the store checks.
Restorability restorability(const FenrowStore &store, const CompletionRecord &record)
{
    if (store.canRestore(record))
        return Restorability::restorable;
    if (record.kindRaw == CompletionRecord::repeatKind)
        return Restorability::repeatRound;
    if (record.kindRaw != CompletionRecord::archivedKind)
        return Restorability::otherKind;
    if (!store.flow(record.flowID))
        return Restorability::flowGone;
    return Restorability::damaged;
}

// Finds the record whose id is or begins with the RECORD argument; reports
// why none is found and returns null.
const CompletionRecord *recordArgument(CommandContext &context, int *status)
{
    const QString text = context.argument(0).trimmed();
    QString digits = text;
    digits.remove(QLatin1Char('{')).remove(QLatin1Char('}')).remove(QLatin1Char('-'));
    digits = digits.toUpper();
    const bool isHex = std::all_of(digits.cbegin(), digits.cend(), [](QChar c) {
        return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || (c >= QLatin1Char('A') && c <= QLatin1Char('F'));
    });
    if (!isHex || digits.size() < minimumIdDigits || digits.size() > 32) {
        *status = context.usageError(QStringLiteral("RECORD is a record's id, or its first %1 digits or more, as "
                                                    "\"fenrow archived\" shows them; not %2")
                                         .arg(minimumIdDigits)
                                         .arg(PlainText::quoted(text)));
        return nullptr;
    }

    QList<const CompletionRecord *> matches;
    for (const CompletionRecord *record : context.store().completionRecords()) {
        if (hexDigits(record->id).startsWith(digits))
            matches.append(record);
    }
    if (matches.size() == 1)
        return matches.first();
    *status = context.fail(
        matches.isEmpty()
            ? QStringLiteral("no record in the archive has the id %1; \"fenrow archived\" lists them")
                  .arg(PlainText::quoted(text))
            : QStringLiteral("%1 begins the ids of %2; give more of the id")
                  .arg(PlainText::quoted(text),
                       PlainText::counted(matches.size(), QStringLiteral("record"), QStringLiteral("records"))));
    return nullptr;
}

QJsonObject recordJson(const FenrowStore &store, const CompletionRecord &record)
{
    return {
        {QStringLiteral("id"), PlainText::id(record.id)},
        {QStringLiteral("kind"), record.kindRaw},
        {QStringLiteral("title"), record.title},
        {QStringLiteral("flowID"), PlainText::id(record.flowID)},
        {QStringLiteral("flowName"), record.flowName},
        {QStringLiteral("completedAt"), JsonOutput::dateTime(record.completedAt, store.calendar())},
        {QStringLiteral("cycle"), record.cycle},
        {QStringLiteral("canRestore"), store.canRestore(record)},
    };
}

// What a row says besides its time, title, flow and id.
QString rowNote(const FenrowStore &store, const CompletionRecord &record)
{
    switch (restorability(store, record)) {
    case Restorability::restorable:
        return {};
    case Restorability::repeatRound:
        return QStringLiteral("repeated (round %1)").arg(record.cycle);
    case Restorability::otherKind:
        return record.kindRaw;
    case Restorability::flowGone:
        return QStringLiteral("flow deleted");
    case Restorability::damaged:
        return QStringLiteral("damaged");
    }
    return {};
}

int archiveFlow(CommandContext &context)
{
    const TaskFlow *flow = CommandSupport::flowArgument(context, 0);
    if (!flow)
        return exitFailure;
    const qint64 done = std::count_if(flow->items().begin(), flow->items().end(),
                                      [](const FlowNode *node) { return node->isDone; });
    const QString name = PlainText::quoted(flow->name);
    const QString tasks = PlainText::counted(done, QStringLiteral("done task"), QStringLiteral("done tasks"));
    if (done > 0
        && !CommandSupport::confirmed(context, QStringLiteral("Archive %1 of %2?").arg(tasks, name),
                                      QStringLiteral("the done tasks of %1 were not archived").arg(name)))
        return exitFailure;

    const QJsonObject described{
        {QStringLiteral("flowID"), PlainText::id(flow->id)},
        {QStringLiteral("flowName"), flow->name},
        {QStringLiteral("archivedCount"), done},
    };
    if (done > 0)
        context.store().archiveDone(*flow);

    if (context.json())
        context.printJson(described);
    else if (done == 0)
        context.out() << "Flow " << name << " has no done tasks to archive.\n";
    else
        context.out() << "Archived " << tasks << " of " << name << ".\n";
    return exitSuccess;
}

int listArchive(CommandContext &context)
{
    const FenrowStore &store = context.store();
    const QString query = context.argument(0);
    const QList<const CompletionRecord *> records = ArchiveDays::filter(store.archiveRecords(), query);

    if (context.json()) {
        QJsonArray list;
        for (const CompletionRecord *record : records)
            list.append(recordJson(store, *record));
        context.printJson(list);
        return exitSuccess;
    }
    if (records.isEmpty()) {
        if (query.trimmed().isEmpty())
            context.out() << "The archive is empty. Archive a flow's done tasks with: fenrow archive FLOW\n";
        else
            context.out() << "Nothing in the archive matches " << PlainText::quoted(query.trimmed()) << ".\n";
        return exitSuccess;
    }

    const LocalCalendar &calendar = store.calendar();
    // Digits enough to tell apart every record restore-task may be given.
    const qsizetype digits = shortIdDigits(store.completionRecords());
    TextTable table({}, QStringLiteral("  "));
    for (const ArchiveDay &day : ArchiveDays::group(records, context.clock().now(), calendar)) {
        table.addHeading(day.title);
        for (const CompletionRecord *record : day.records) {
            table.addRow({record->completedAt.toTimeZone(calendar.zone()).toString(QStringLiteral("HH:mm")),
                          record->title, record->flowName, shortId(record->id, digits), rowNote(store, *record)});
        }
    }
    table.print(context.out());
    return exitSuccess;
}

int restoreTask(CommandContext &context)
{
    int status = exitFailure;
    const CompletionRecord *record = recordArgument(context, &status);
    if (!record)
        return status;

    FenrowStore &store = context.store();
    const QString title = PlainText::quoted(record->title);
    switch (restorability(store, *record)) {
    case Restorability::restorable:
        break;
    case Restorability::repeatRound:
        return context.fail(QStringLiteral("%1 is a finished round of the repeating task %2, which stays on its "
                                           "canvas; only archived tasks can be restored")
                                .arg(PlainText::id(record->id), title));
    case Restorability::otherKind:
        return context.fail(QStringLiteral("%1 is not an archived task and cannot be restored")
                                .arg(PlainText::id(record->id)));
    case Restorability::flowGone:
        return context.fail(QStringLiteral("%1 cannot be restored: its flow %2 no longer exists")
                                .arg(title, PlainText::quoted(record->flowName)));
    case Restorability::damaged:
        return context.fail(QStringLiteral("%1 cannot be restored: its archived copy is damaged").arg(title));
    }

    // The record is gone once the task is back.
    const FlowNode *node = store.restoreRecord(*record);
    const QDateTime now = context.clock().now();
    if (context.json()) {
        context.printJson(JsonOutput::task(*node, now, store.calendar()));
        return exitSuccess;
    }
    context.out() << "Restored to flow " << PlainText::quoted(node->flow()->name) << ":\n";
    TaskText::printDetails(*node, now, store.calendar(), context.out());
    return exitSuccess;
}

int deleteArchiveRecord(CommandContext &context)
{
    int status = exitFailure;
    const CompletionRecord *record = recordArgument(context, &status);
    if (!record)
        return status;

    FenrowStore &store = context.store();
    const QString described = record->kindRaw == CompletionRecord::repeatKind
        ? QStringLiteral("round %1 of %2").arg(record->cycle).arg(PlainText::quoted(record->title))
        : PlainText::quoted(record->title);
    const QString day = QLocale::c().toString(record->completedAt.toTimeZone(store.calendar().zone()).date(),
                                              QStringLiteral("yyyy-MM-dd"));
    const QString question = QStringLiteral("Delete the archive record of %1 (flow %2, %3)?%4")
                                 .arg(described, PlainText::quoted(record->flowName), day,
                                      store.canRestore(*record)
                                          ? QStringLiteral(" The task can then no longer be restored.")
                                          : QString());
    if (!CommandSupport::confirmed(context, question,
                                   QStringLiteral("the archive record of %1 was not deleted").arg(described)))
        return exitFailure;

    // The record goes with the deletion: describe it first.
    const QJsonObject json = recordJson(store, *record);
    store.deleteRecord(*record);
    if (context.json())
        context.printJson(json);
    else
        context.out() << "Deleted the archive record of " << described << ".\n";
    return exitSuccess;
}

} // namespace

void registerIn(CommandRegistry &registry)
{
    registry.addCommand({
        .name = QStringLiteral("archive"),
        .argumentsSyntax = QStringLiteral("FLOW"),
        .summary = QStringLiteral("Move a flow's done tasks into the archive"),
        .description = CommandSupport::flowArgumentHelp
            + QStringLiteral(
                "\nThe tasks leave the canvas with their connections; tasks that waited\n"
                "for them wait no longer. Asks first on the terminal; without a terminal\n"
                "to ask on, nothing is archived unless --yes is given. Archiving clears\n"
                "the flow's undo history in the window."),
        .options = {SharedOption::yes},
        .minArguments = 1,
        .maxArguments = 1,
        .run = archiveFlow,
    });
    registry.addCommand({
        .name = QStringLiteral("archived"),
        .argumentsSyntax = QStringLiteral("[QUERY]"),
        .summary = QStringLiteral("List archived tasks and finished rounds, newest first, by day"),
        .description = QStringLiteral(
            "QUERY keeps the records whose title or flow name contains it, ignoring\n"
            "case and accents. Each row shows the start of the record's id, which\n"
            "restore-task and archived delete take. With --json, an array of\n"
            "records: id, kind (\"archived\" or \"repeat\"), title, flowID, flowName,\n"
            "completedAt, cycle and canRestore."),
        .maxArguments = 1,
        .run = listArchive,
    });
    registry.addCommand({
        .name = QStringLiteral("restore-task"),
        .argumentsSyntax = QStringLiteral("RECORD"),
        .summary = QStringLiteral("Bring an archived task back to its flow"),
        .description = QStringLiteral(
            "RECORD is the id of an archived task, or its first 8 digits or more, as\n"
            "\"fenrow archived\" shows it. The task comes back done, without its\n"
            "connections, at the end of its flow. Finished rounds of repeating tasks,\n"
            "and tasks whose flow was deleted, cannot be restored."),
        .minArguments = 1,
        .maxArguments = 1,
        .run = restoreTask,
    });
    registry.addCommand({
        .name = QStringLiteral("archived delete"),
        .argumentsSyntax = QStringLiteral("RECORD"),
        .summary = QStringLiteral("Delete a record from the archive"),
        .description = QStringLiteral(
            "RECORD is named as for restore-task. An archived task's record holds the\n"
            "only copy of the task: once deleted, it cannot be restored. Asks first\n"
            "on the terminal; without a terminal to ask on, nothing is deleted unless\n"
            "--yes is given. Undo does not reach the archive. With --json, the\n"
            "record as \"fenrow archived --json\" lists it."),
        .options = {SharedOption::yes},
        .minArguments = 1,
        .maxArguments = 1,
        .run = deleteArchiveRecord,
    });
}

} // namespace fenrow::ArchiveCommands
