#include "BackupCommands.h"

#include "CommandContext.h"
#include "CommandRegistry.h"
#include "CommandSupport.h"
#include "DocumentFile.h"
#include "ExitStatus.h"
#include "PlainText.h"

#include "domain/Clock.h"
#include "domain/FenrowStore.h"
#include "formats/DocumentInput.h"
#include "formats/FenrowBackup.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

namespace fenrow::BackupCommands {

namespace {

const QString mergeOption = QStringLiteral("merge");
const QString replaceOption = QStringLiteral("replace");

QString counted(qsizetype count, const char *singular, const char *plural)
{
    return PlainText::counted(qint64(count), QString::fromLatin1(singular), QString::fromLatin1(plural));
}

// What a document holds, for messages: "3 flows, 1 template and 40 archive
// records".
QString contents(const FenrowBackup &backup)
{
    return QStringLiteral("%1, %2 and %3")
        .arg(counted(backup.flows.size(), "flow", "flows"), counted(backup.templates.size(), "template", "templates"),
             counted(backup.records.size(), "archive record", "archive records"));
}

int backUp(CommandContext &context)
{
    FenrowStore &store = context.store();
    const QDateTime now = context.clock().now();
    // A folder, or nothing (the current folder), takes the name of the day.
    const QString given = context.argument(0);
    const QString name = FenrowBackup::fileName(FenrowBackup::manualPrefix, now, store.calendar());
    QString path = context.filePath(given);
    if (given.isEmpty())
        path = QDir(context.workingDirectory()).filePath(name);
    else if (QFileInfo(path).isDir())
        path = QDir(path).filePath(name);

    QStringList adjusted;
    const FenrowBackup backup = store.makeBackup(now, &adjusted);
    QString unwritable;
    const std::optional<QByteArray> bytes = backup.encoded(&unwritable);
    if (!bytes)
        return context.fail(QStringLiteral("Backup failed: %1; nothing was written").arg(unwritable));
    QString problem;
    if (!DocumentFile::write(path, *bytes, &problem)) {
        return context.fail(QStringLiteral("Backup failed: %1; check that the folder exists and that you may write "
                                           "to it")
                                .arg(problem));
    }
    const QString shown = DocumentFile::shown(path);
    if (context.json()) {
        context.printJson(QJsonObject{
            {QStringLiteral("path"), shown},
            {QStringLiteral("flows"), qint64(backup.flows.size())},
            {QStringLiteral("templates"), qint64(backup.templates.size())},
            {QStringLiteral("records"), qint64(backup.records.size())},
            {QStringLiteral("bytes"), qint64(bytes->size())},
            {QStringLiteral("adjusted"), QJsonArray::fromStringList(adjusted)},
        });
    } else {
        context.out() << "Backed up " << contents(backup) << " to " << PlainText::quoted(shown) << ".\n";
    }
    // Values the document could not carry as they were: said, not hidden.
    for (const QString &note : std::as_const(adjusted))
        context.console().err() << "fenrow: in the backup, " << note << '\n';
    context.console().err().flush();
    return exitSuccess;
}

int restore(CommandContext &context)
{
    const bool merging = context.hasOption(mergeOption);
    if (merging == context.hasOption(replaceOption))
        return context.usageError(QStringLiteral("say how to restore: --merge or --replace"));

    const QString path = context.argument(0);
    QString problem;
    const std::optional<QByteArray> bytes = DocumentFile::read(context.userPath(path), DocumentInput::backupLimit, &problem);
    if (!bytes)
        return context.fail(QStringLiteral("cannot restore: %1; nothing was changed").arg(problem));
    const auto decoded = FenrowBackup::decoded(*bytes);
    if (const BackupProblem *refused = std::get_if<BackupProblem>(&decoded)) {
        const QString reason = refused->kind == BackupError::newerVersion
            ? QStringLiteral("it was made by a newer version of Fenrow (%1); update Fenrow to restore it")
            : QStringLiteral("it is not a Fenrow backup, or it is damaged: %1");
        return context.fail(QStringLiteral("cannot restore %1: %2; nothing was changed")
                                .arg(PlainText::quoted(path), reason.arg(refused->detail)));
    }
    const FenrowBackup &backup = std::get<FenrowBackup>(decoded);

    if (!merging
        && !CommandSupport::confirmed(
            context,
            QStringLiteral("Replace all flows, templates and archive records with the backup's %1?")
                .arg(contents(backup)),
            QStringLiteral("nothing was restored"))) {
        return exitFailure;
    }
    FenrowStore &store = context.store();
    const FenrowStore::RestoreOutcome outcome =
        store.restore(backup, merging ? RestoreMode::merge : RestoreMode::replace, context.filePath(path));
    if (!outcome.restored) {
        return context.fail(
            QStringLiteral("cannot restore %1: %2; nothing was changed").arg(PlainText::quoted(path), outcome.problem));
    }
    const int added = outcome.flowsAdded;
    const QString safety = outcome.safetyBackup.isEmpty() ? QString() : DocumentFile::shown(outcome.safetyBackup);
    if (context.json()) {
        QJsonObject result{
            {QStringLiteral("mode"), merging ? mergeOption : replaceOption},
            {QStringLiteral("flowsAdded"), added},
            {QStringLiteral("flows"), qint64(store.flows().size())},
            {QStringLiteral("edgesLeftOut"), outcome.edgesLeftOut},
        };
        if (!safety.isEmpty())
            result.insert(QStringLiteral("safetyBackup"), safety);
        context.printJson(result);
        return exitSuccess;
    }
    if (merging && added == 0) {
        context.out() << "Every flow in the backup is already here; nothing was added.\n";
        return exitSuccess;
    }
    context.out() << (merging ? "Merged " : "Restored ") << counted(added, "flow", "flows") << " from "
                  << PlainText::quoted(path) << "; the store now has "
                  << counted(store.flows().size(), "flow", "flows") << ".\n";
    if (outcome.edgesLeftOut > 0) {
        context.out() << "Left out " << counted(outcome.edgesLeftOut, "connection", "connections")
                      << " that would have led a task back to itself or repeated another.\n";
    }
    if (!safety.isEmpty()) {
        context.out() << "What the store held before is in " << PlainText::quoted(safety)
                      << "; restore it with --replace to undo this.\n";
    }
    return exitSuccess;
}

} // namespace

void registerIn(CommandRegistry &registry)
{
    registry.addOption({mergeOption, {}, {}, QStringLiteral("Add only the flows the store does not have")});
    registry.addOption({replaceOption, {}, {}, QStringLiteral("Delete everything first, then restore")});
    registry.addCommand({
        .name = QStringLiteral("backup"),
        .argumentsSyntax = QStringLiteral("[FILE|FOLDER]"),
        .summary = QStringLiteral("Write everything to one backup file"),
        .description = QStringLiteral(
            "All flows with their tasks, connections and attached files, all templates\n"
            "and the archive, in one JSON document. Without a FILE it goes into the\n"
            "current folder (or the FOLDER given) as \"Fenrow Backup YYYY-MM-DD.fenrowbackup\";\n"
            "a second backup on the same day replaces the first. The file is written\n"
            "whole or not at all. A value the file cannot hold as it is (a date beyond\n"
            "the year 9999) is left out or held to its limit, and named on the error\n"
            "stream. With --json: path, flows, templates, records, bytes, adjusted."),
        .minArguments = 0,
        .maxArguments = 1,
        .run = backUp,
    });
    registry.addCommand({
        .name = QStringLiteral("restore"),
        .argumentsSyntax = QStringLiteral("FILE"),
        .summary = QStringLiteral("Bring back a backup, merged into the store or replacing it"),
        .description = QStringLiteral(
            "Give --merge or --replace. The whole file is checked before anything\n"
            "changes. --merge adds the flows the store does not have yet (with their\n"
            "archive records) and the missing templates, after the existing flows; a flow\n"
            "that is here already is left as it is. --replace deletes all flows, templates\n"
            "and archive records first; it asks on the terminal, and without one does\n"
            "nothing unless --yes is given. Before it replaces anything it writes what the\n"
            "store holds to \"Fenrow Safety Backup DATE TIME.fenrowbackup\" beside the store\n"
            "and names it; restoring that file undoes the replace. Either way the restore\n"
            "is saved whole or not at all. Connections that would lead a task back to\n"
            "itself are left out. No undo history survives a restore.\n"
            "With --json: mode, flowsAdded, flows, edgesLeftOut, safetyBackup."),
        .options = {mergeOption, replaceOption, SharedOption::yes},
        .minArguments = 1,
        .maxArguments = 1,
        .run = restore,
    });
}

} // namespace fenrow::BackupCommands
