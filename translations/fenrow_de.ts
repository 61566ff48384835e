<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name></name>
    <message id="mainWindow.title">
        <source>Fenrow</source>
        <translation>Fenrow</translation>
    </message>
    <message id="detail.empty.title">
        <source>No flow selected</source>
        <translation>Kein Flow ausgewählt</translation>
    </message>
    <message id="detail.empty.message">
        <source>Choose a flow in the sidebar, or create a new one with the + button.</source>
        <translation>Wähle links einen Flow aus oder lege mit der Schaltfläche + einen neuen an.</translation>
    </message>
    <message id="sidebar.brandHeader">
        <source>Fenrow</source>
        <translation>Fenrow</translation>
    </message>
    <message id="sidebar.section.flows">
        <source>Flows</source>
        <translation>Flows</translation>
    </message>
    <message id="sidebar.action.newFlow">
        <source>New flow</source>
        <translation>Neuer Flow</translation>
    </message>
    <message id="sidebar.action.quit">
        <source>Quit Fenrow</source>
        <translation>Fenrow beenden</translation>
    </message>
    <message id="sidebar.flow.progress %lld %lld %lld">
        <source>%1 of %3 done · %2 in progress</source>
        <translation>%1 von %3 erledigt · %2 in Arbeit</translation>
    </message>
    <message id="sidebar.flow.progress.complete %lld">
        <source>All %1 done</source>
        <translation>Alle %1 erledigt</translation>
    </message>
    <message id="sidebar.flow.progress.empty">
        <source>No tasks yet</source>
        <translation>Noch keine Aufgaben</translation>
    </message>
    <message id="sidebar.flow.rename.placeholder">
        <source>Flow name</source>
        <translation>Name des Flows</translation>
    </message>
    <message id="sidebar.row.action.rename">
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message id="sidebar.row.action.delete">
        <source>Delete…</source>
        <translation>Löschen …</translation>
    </message>
    <message id="sidebar.row.delete.confirm.title %@">
        <source>Delete “%1”?</source>
        <translation>„%1“ löschen?</translation>
    </message>
    <message id="sidebar.row.delete.confirm.message">
        <source>The flow and all of its tasks, connections and files will be deleted. Its entries in the archive go too. This cannot be undone.</source>
        <translation>Der Flow wird mit allen Aufgaben, Verbindungen und Dateien gelöscht, ebenso seine Einträge im Archiv. Das lässt sich nicht rückgängig machen.</translation>
    </message>
    <message id="sidebar.row.delete">
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message id="sidebar.row.delete.confirm.cancel">
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message id="store.failed.title">
        <source>Fenrow cannot open its data</source>
        <translation>Fenrow kann seine Daten nicht öffnen</translation>
    </message>
    <message id="sample.flow.name">
        <source>Sample: Launch a landing page</source>
        <translation>Beispiel: Eine Landingpage starten</translation>
    </message>
    <message id="sample.flow.item.offer">
        <source>Define the offer</source>
        <translation>Angebot festlegen</translation>
    </message>
    <message id="sample.flow.item.copy">
        <source>Write the copy</source>
        <translation>Texte schreiben</translation>
    </message>
    <message id="sample.flow.item.layout">
        <source>Design the layout</source>
        <translation>Layout gestalten</translation>
    </message>
    <message id="sample.flow.item.build">
        <source>Build the page</source>
        <translation>Seite bauen</translation>
    </message>
    <message id="sample.flow.item.publish">
        <source>Publish and announce</source>
        <translation>Veröffentlichen und ankündigen</translation>
    </message>
    <message id="sidebar.flow.untitled">
        <source>Untitled flow</source>
        <translation>Unbenannter Flow</translation>
    </message>
    <message id="sidebar.route.ready">
        <source>Ready</source>
        <translation>Bereit</translation>
    </message>
    <message id="ready.title">
        <source>Ready</source>
        <translation>Bereit</translation>
    </message>
    <message id="ready.sort.flow">
        <source>Flow</source>
        <translation>Flow</translation>
    </message>
    <message id="ready.sort.dueDate">
        <source>Due date</source>
        <translation>Fälligkeit</translation>
    </message>
    <message id="ready.sort.priority">
        <source>Priority</source>
        <translation>Priorität</translation>
    </message>
    <message id="ready.sort.estimate">
        <source>Estimate</source>
        <translation>Aufwand</translation>
    </message>
    <message id="ready.group.today">
        <source>Today</source>
        <translation>Heute</translation>
    </message>
    <message id="ready.group.other">
        <source>Other tasks</source>
        <translation>Weitere Aufgaben</translation>
    </message>
    <message id="ready.row.complete">
        <source>Mark as done</source>
        <translation>Als erledigt markieren</translation>
    </message>
    <message id="ready.row.hasNotes">
        <source>Notes</source>
        <translation>Notizen</translation>
    </message>
    <message id="ready.row.priority.high">
        <source>High</source>
        <translation>Hoch</translation>
    </message>
    <message id="ready.row.priority.medium">
        <source>Medium</source>
        <translation>Mittel</translation>
    </message>
    <message id="ready.row.priority.low">
        <source>Low</source>
        <translation>Niedrig</translation>
    </message>
    <message id="ready.row.due.today">
        <source>Due today</source>
        <translation>Heute fällig</translation>
    </message>
    <message id="ready.row.due.tomorrow">
        <source>Due tomorrow</source>
        <translation>Morgen fällig</translation>
    </message>
    <message id="ready.row.overdue %@">
        <source>Overdue · %1</source>
        <translation>Überfällig · %1</translation>
    </message>
    <message id="ready.row.dateFormat">
        <source>MMM d</source>
        <translation>d. MMM</translation>
    </message>
    <message id="ready.row.dateFormat.withYear">
        <source>MMM d, yyyy</source>
        <translation>d. MMM yyyy</translation>
    </message>
    <message id="ready.row.estimate.minutes %lld">
        <source>%1 min</source>
        <translation>%1 Min.</translation>
    </message>
    <message id="ready.row.estimate.hours %lld">
        <source>%1 h</source>
        <translation>%1 Std.</translation>
    </message>
    <message id="ready.row.estimate.hoursMinutes %lld %lld">
        <source>%1 h %2 min</source>
        <translation>%1 Std. %2 Min.</translation>
    </message>
    <message id="ready.empty.noTasks.title">
        <source>No tasks yet</source>
        <translation>Noch keine Aufgaben</translation>
    </message>
    <message id="ready.empty.noTasks.message">
        <source>The tasks you can start right away gather here, from all of your flows. Add a few tasks to a flow to begin.</source>
        <translation>Hier sammeln sich aus all deinen Flows die Aufgaben, mit denen du sofort anfangen kannst. Lege in einem Flow ein paar Aufgaben an, um loszulegen.</translation>
    </message>
    <message id="ready.empty.allDone.title">
        <source>All done</source>
        <translation>Alles erledigt</translation>
    </message>
    <message id="ready.empty.allDone.message">
        <source>Every task in every flow is finished. Enjoy the quiet, or plan what comes next.</source>
        <translation>Alle Aufgaben in allen Flows sind erledigt. Genieße die Ruhe oder plane, was als Nächstes kommt.</translation>
    </message>
    <message id="ready.empty.allBlocked.title">
        <source>Everything is waiting</source>
        <translation>Alles wartet</translation>
    </message>
    <message id="ready.empty.allBlocked.message">
        <source>Each open task waits for another one to finish first. Look over the connections in your flows.</source>
        <translation>Jede offene Aufgabe wartet darauf, dass zuerst eine andere fertig wird. Sieh dir die Verbindungen in deinen Flows an.</translation>
    </message>
    <message id="ready.empty.allDeferred.title">
        <source>Nothing starts today</source>
        <translation>Heute beginnt nichts</translation>
    </message>
    <message id="ready.empty.allDeferred.message">
        <source>Your next tasks have a later start date. They appear here on the day they start.</source>
        <translation>Deine nächsten Aufgaben beginnen erst später. Sie erscheinen hier an dem Tag, an dem sie beginnen.</translation>
    </message>
    <message id="sidebar.flow.copyName ">
        <source>%1 copy</source>
        <translation>%1 (Kopie)</translation>
    </message>
    <message id="archive.day.today">
        <source>Today</source>
        <translation>Heute</translation>
    </message>
    <message id="archive.day.yesterday">
        <source>Yesterday</source>
        <translation>Gestern</translation>
    </message>
    <message id="sidebar.route.archive">
        <source>Archive</source>
        <translation>Archiv</translation>
    </message>
    <message id="archive.title">
        <source>Archive</source>
        <translation>Archiv</translation>
    </message>
    <message id="archive.search.placeholder">
        <source>Search the archive</source>
        <translation>Archiv durchsuchen</translation>
    </message>
    <message id="archive.row.repeated">
        <source>Repeated · round %1</source>
        <translation>Wiederholt · Runde %1</translation>
    </message>
    <message id="archive.row.restore">
        <source>Restore</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message id="archive.row.restore.help">
        <source>Put the task back into its flow, marked as done</source>
        <translation>Die Aufgabe als erledigt in ihren Flow zurücklegen</translation>
    </message>
    <message id="archive.row.delete">
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message id="archive.count.label">
        <source>Entries: %1</source>
        <translation>Einträge: %1</translation>
    </message>
    <message id="archive.empty.title">
        <source>Nothing archived yet</source>
        <translation>Noch nichts archiviert</translation>
    </message>
    <message id="archive.empty.message">
        <source>Done tasks you archive from a flow, and each finished round of a repeating task, are kept here by day.</source>
        <translation>Erledigte Aufgaben, die du aus einem Flow archivierst, und jede abgeschlossene Runde einer wiederkehrenden Aufgabe werden hier nach Tagen aufbewahrt.</translation>
    </message>
    <message id="archive.empty.search.title">
        <source>No matches</source>
        <translation>Keine Treffer</translation>
    </message>
    <message id="archive.empty.search.message">
        <source>No archived task has this text in its title or in the name of its flow.</source>
        <translation>Keine archivierte Aufgabe enthält diesen Text im Titel oder im Namen ihres Flows.</translation>
    </message>
    <message id="sidebar.template.menu.title">
        <source>New from Template</source>
        <translation>Neu aus Vorlage</translation>
    </message>
    <message id="sidebar.template.menu.help">
        <source>Make a new flow from a saved template</source>
        <translation>Einen neuen Flow aus einer gespeicherten Vorlage anlegen</translation>
    </message>
    <message id="sidebar.context.duplicate">
        <source>Duplicate</source>
        <translation>Duplizieren</translation>
    </message>
    <message id="sidebar.context.saveTemplate">
        <source>Save as Template</source>
        <translation>Als Vorlage sichern</translation>
    </message>
    <message id="sidebar.row.archiveDone">
        <source>Archive Done Tasks…</source>
        <translation>Erledigte Aufgaben archivieren …</translation>
    </message>
    <message id="archive.confirm.title ">
        <source>Archive the done tasks of “%1”?</source>
        <translation>Erledigte Aufgaben von „%1“ archivieren?</translation>
    </message>
    <message id="archive.confirm.message">
        <source>They leave the canvas along with their connections. Each one can be restored from the Archive; it comes back done, without connections.</source>
        <translation>Sie verlassen die Arbeitsfläche samt ihren Verbindungen. Jede lässt sich im Archiv wiederherstellen; sie kehrt erledigt und ohne Verbindungen zurück.</translation>
    </message>
    <message id="archive.confirm.action">
        <source>Archive</source>
        <translation>Archivieren</translation>
    </message>
    <message id="archive.confirm.cancel">
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message id="menu.file">
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message id="menu.edit">
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message id="menu.quit">
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message id="menu.undo">
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message id="menu.redo">
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message id="shortcut.key.unknown">
        <source>Unknown key</source>
        <translation>Unbekannte Taste</translation>
    </message>
    <message id="export.markdown.progress %lld %lld">
        <source>%1 of %2 done</source>
        <translation>%1 von %2 erledigt</translation>
    </message>
    <message id="export.markdown.status.inProgress">
        <source>in progress</source>
        <translation>in Arbeit</translation>
    </message>
    <message id="export.markdown.status.paused">
        <source>paused</source>
        <translation>pausiert</translation>
    </message>
    <message id="export.markdown.after %@">
        <source>after %1</source>
        <translation>nach %1</translation>
    </message>
    <message id="export.markdown.panel.title">
        <source>Export as Markdown</source>
        <translation>Als Markdown exportieren</translation>
    </message>
    <message id="export.markdown.panel.button">
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message id="export.markdown.failed.title">
        <source>Export failed</source>
        <translation>Export fehlgeschlagen</translation>
    </message>
    <message id="export.markdown.failed.message">
        <source>The file could not be written. Check that the folder exists and that you may write to it.</source>
        <translation>Die Datei konnte nicht geschrieben werden. Prüfen Sie, ob der Ordner existiert und Sie darin schreiben dürfen.</translation>
    </message>
    <message id="export.opml.panel.title">
        <source>Export as OPML</source>
        <translation>Als OPML exportieren</translation>
    </message>
    <message id="import.opml.panel.message">
        <source>Choose an OPML outline to import as a new flow</source>
        <translation>Wählen Sie eine OPML-Gliederung, die als neuer Flow importiert wird</translation>
    </message>
    <message id="import.opml.panel.button">
        <source>Import</source>
        <translation>Importieren</translation>
    </message>
    <message id="import.opml.failed.title">
        <source>This file can’t be imported</source>
        <translation>Diese Datei lässt sich nicht importieren</translation>
    </message>
    <message id="import.opml.failed.message">
        <source>It is not an OPML outline with at least one entry, or it is damaged. Nothing was added.</source>
        <translation>Sie ist keine OPML-Gliederung mit mindestens einem Eintrag, oder sie ist beschädigt. Nichts wurde hinzugefügt.</translation>
    </message>
    <message id="sidebar.row.action.exportMarkdown">
        <source>Export as Markdown…</source>
        <translation>Als Markdown exportieren…</translation>
    </message>
    <message id="sidebar.row.action.copyMarkdown">
        <source>Copy as Markdown</source>
        <translation>Als Markdown kopieren</translation>
    </message>
    <message id="sidebar.context.exportOPML">
        <source>Export as OPML…</source>
        <translation>Als OPML exportieren…</translation>
    </message>
    <message id="menu.exportMarkdown">
        <source>Export as &amp;Markdown…</source>
        <translation>Als &amp;Markdown exportieren…</translation>
    </message>
    <message id="menu.copyMarkdown">
        <source>&amp;Copy as Markdown</source>
        <translation>Als Markdown &amp;kopieren</translation>
    </message>
    <message id="menu.exportOPML">
        <source>Export as &amp;OPML…</source>
        <translation>Als &amp;OPML exportieren…</translation>
    </message>
    <message id="menu.importOPML">
        <source>&amp;Import OPML…</source>
        <translation>OPML &amp;importieren…</translation>
    </message>
    <message id="menu.backUp">
        <source>&amp;Back Up…</source>
        <translation>&amp;Sichern…</translation>
    </message>
    <message id="menu.restoreBackup">
        <source>&amp;Restore from Backup…</source>
        <translation>Aus Sicherung &amp;wiederherstellen…</translation>
    </message>
    <message id="backup.save.panel.message">
        <source>Choose where to save a backup of all your flows, templates and archive</source>
        <translation>Wählen Sie, wo die Sicherung aller Flows, Vorlagen und des Archivs gespeichert wird</translation>
    </message>
    <message id="backup.save.panel.button">
        <source>Back Up</source>
        <translation>Sichern</translation>
    </message>
    <message id="backup.failed.title">
        <source>Backup failed</source>
        <translation>Sicherung fehlgeschlagen</translation>
    </message>
    <message id="backup.failed.message">
        <source>The backup could not be written. Check that the folder exists and that you may write to it.</source>
        <translation>Die Sicherung konnte nicht geschrieben werden. Prüfen Sie, ob der Ordner existiert und Sie darin schreiben dürfen.</translation>
    </message>
    <message id="backup.open.panel.message">
        <source>Choose a Fenrow backup to restore</source>
        <translation>Wählen Sie eine Fenrow-Sicherung zum Wiederherstellen</translation>
    </message>
    <message id="backup.open.panel.button">
        <source>Restore</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message id="backup.restore.unreadable.title">
        <source>This backup can’t be restored</source>
        <translation>Diese Sicherung lässt sich nicht wiederherstellen</translation>
    </message>
    <message id="backup.restore.unreadable.message">
        <source>The file is not a Fenrow backup, or it is damaged. Nothing was changed.</source>
        <translation>Die Datei ist keine Fenrow-Sicherung oder ist beschädigt. Nichts wurde geändert.</translation>
    </message>
    <message id="backup.restore.newer.message">
        <source>The backup was made by a newer version of Fenrow. Update Fenrow to restore it. Nothing was changed.</source>
        <translation>Die Sicherung stammt von einer neueren Fenrow-Version. Aktualisieren Sie Fenrow, um sie wiederherzustellen. Nichts wurde geändert.</translation>
    </message>
    <message id="backup.restore.mode.title">
        <source>Restore backup</source>
        <translation>Sicherung wiederherstellen</translation>
    </message>
    <message id="backup.restore.mode.message %lld">
        <source>Flows in the backup: %1. Merge adds the flows you don’t have yet and keeps everything else. Replace first deletes all your flows, templates and archive entries.</source>
        <translation>Flows in der Sicherung: %1. Zusammenführen fügt die Flows hinzu, die Sie noch nicht haben, und behält alles andere. Ersetzen löscht zuerst alle Ihre Flows, Vorlagen und Archiveinträge.</translation>
    </message>
    <message id="backup.restore.mode.merge">
        <source>Merge</source>
        <translation>Zusammenführen</translation>
    </message>
    <message id="backup.restore.mode.replace">
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message id="backup.restore.replace.confirm.title">
        <source>Replace all your data?</source>
        <translation>Alle Daten ersetzen?</translation>
    </message>
    <message id="backup.restore.replace.confirm.message">
        <source>All flows, templates and archive entries in Fenrow are deleted and replaced by those of the backup. This can’t be undone.</source>
        <translation>Alle Flows, Vorlagen und Archiveinträge in Fenrow werden gelöscht und durch die der Sicherung ersetzt. Das lässt sich nicht rückgängig machen.</translation>
    </message>
    <message id="backup.restore.done.title">
        <source>Backup restored</source>
        <translation>Sicherung wiederhergestellt</translation>
    </message>
    <message id="backup.restore.done.message %lld">
        <source>Flows restored: %1.</source>
        <translation>Wiederhergestellte Flows: %1.</translation>
    </message>
    <message id="backup.restore.done.nothing">
        <source>Every flow in the backup is already here. Nothing was added.</source>
        <translation>Jeder Flow der Sicherung ist schon vorhanden. Nichts wurde hinzugefügt.</translation>
    </message>
    <message id="inspector.flow">
        <source>Flow</source>
        <translation>Flow</translation>
    </message>
    <message id="inspector.status.label">
        <source>Status</source>
        <translation>Status</translation>
    </message>
    <message id="inspector.status.pending">
        <source>Not started</source>
        <translation>Nicht begonnen</translation>
    </message>
    <message id="inspector.status.inProgress">
        <source>In progress</source>
        <translation>In Arbeit</translation>
    </message>
    <message id="inspector.status.paused">
        <source>Paused</source>
        <translation>Pausiert</translation>
    </message>
    <message id="inspector.status.done">
        <source>Done</source>
        <translation>Erledigt</translation>
    </message>
    <message id="inspector.priority.label">
        <source>Priority</source>
        <translation>Priorität</translation>
    </message>
    <message id="inspector.priority.none">
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message id="inspector.priority.low">
        <source>Low</source>
        <translation>Niedrig</translation>
    </message>
    <message id="inspector.priority.medium">
        <source>Medium</source>
        <translation>Mittel</translation>
    </message>
    <message id="inspector.priority.high">
        <source>High</source>
        <translation>Hoch</translation>
    </message>
    <message id="inspector.color.label">
        <source>Colour</source>
        <translation>Farbe</translation>
    </message>
    <message id="inspector.estimate.label">
        <source>Estimate</source>
        <translation>Schätzung</translation>
    </message>
    <message id="inspector.estimate.placeholder">
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message id="inspector.estimate.unit">
        <source>min</source>
        <translation>Min.</translation>
    </message>
    <message id="inspector.startDate.label">
        <source>Start</source>
        <translation>Beginn</translation>
    </message>
    <message id="inspector.dueDate.label">
        <source>Due</source>
        <translation>Fällig</translation>
    </message>
    <message id="inspector.date.add">
        <source>Add date</source>
        <translation>Datum hinzufügen</translation>
    </message>
    <message id="inspector.date.pick">
        <source>Choose a date</source>
        <translation>Datum wählen</translation>
    </message>
    <message id="inspector.date.clear">
        <source>Remove date</source>
        <translation>Datum entfernen</translation>
    </message>
    <message id="inspector.deferred.note %@">
        <source>Not ready before %1.</source>
        <translation>Nicht vor %1 bereit.</translation>
    </message>
    <message id="inspector.recurrence.label">
        <source>Repeat</source>
        <translation>Wiederholen</translation>
    </message>
    <message id="inspector.recurrence.never">
        <source>Never</source>
        <translation>Nie</translation>
    </message>
    <message id="inspector.recurrence.daily">
        <source>Every day</source>
        <translation>Täglich</translation>
    </message>
    <message id="inspector.recurrence.weekdays">
        <source>Every weekday</source>
        <translation>Werktags</translation>
    </message>
    <message id="inspector.recurrence.weekly">
        <source>Every week</source>
        <translation>Wöchentlich</translation>
    </message>
    <message id="inspector.recurrence.monthly">
        <source>Every month</source>
        <translation>Monatlich</translation>
    </message>
    <message id="inspector.recurrence.afterDone">
        <source>Some days after done</source>
        <translation>Einige Tage nach Erledigung</translation>
    </message>
    <message id="inspector.recurrence.interval.label">
        <source>Every</source>
        <translation>Alle</translation>
    </message>
    <message id="inspector.recurrence.interval.unit">
        <source>days</source>
        <translation>Tage</translation>
    </message>
    <message id="inspector.notes.label">
        <source>Notes</source>
        <translation>Notizen</translation>
    </message>
    <message id="inspector.notes.placeholder">
        <source>Add notes</source>
        <translation>Notizen hinzufügen</translation>
    </message>
    <message id="inspector.notes.resize">
        <source>Notes height</source>
        <translation>Höhe der Notizen</translation>
    </message>
    <message id="inspector.checklist.label">
        <source>Checklist</source>
        <translation>Checkliste</translation>
    </message>
    <message id="inspector.checklist.count %lld %lld">
        <source>%1 of %2 done</source>
        <translation>%1 von %2 erledigt</translation>
    </message>
    <message id="inspector.checklist.add.placeholder">
        <source>Add a step</source>
        <translation>Schritt hinzufügen</translation>
    </message>
    <message id="inspector.checklist.toggle">
        <source>Tick step</source>
        <translation>Schritt abhaken</translation>
    </message>
    <message id="inspector.checklist.open">
        <source>Open step</source>
        <translation>Offener Schritt</translation>
    </message>
    <message id="inspector.checklist.done">
        <source>Done step</source>
        <translation>Erledigter Schritt</translation>
    </message>
    <message id="inspector.checklist.delete">
        <source>Delete step</source>
        <translation>Schritt löschen</translation>
    </message>
    <message id="inspector.blockedBy.label">
        <source>Waits for</source>
        <translation>Wartet auf</translation>
    </message>
    <message id="inspector.blockedBy.empty">
        <source>Nothing: free to start</source>
        <translation>Nichts: kann beginnen</translation>
    </message>
    <message id="inspector.blocks.label">
        <source>Holds up</source>
        <translation>Hält auf</translation>
    </message>
    <message id="inspector.blocks.empty">
        <source>No other task</source>
        <translation>Keine andere Aufgabe</translation>
    </message>
    <message id="inspector.empty.title">
        <source>No task selected</source>
        <translation>Keine Aufgabe ausgewählt</translation>
    </message>
    <message id="inspector.empty.message">
        <source>Select one task on the canvas to see and edit its details.</source>
        <translation>Wähle eine Aufgabe auf der Fläche, um ihre Details zu sehen und zu bearbeiten.</translation>
    </message>
    <message id="inspector.file.label">
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message id="inspector.calendar.today">
        <source>Today</source>
        <translation>Heute</translation>
    </message>
    <message id="inspector.calendar.tomorrow">
        <source>Tomorrow</source>
        <translation>Morgen</translation>
    </message>
    <message id="inspector.calendar.nextWeek">
        <source>Next week</source>
        <translation>Nächste Woche</translation>
    </message>
    <message id="canvas.node.new">
        <source>New task</source>
        <translation>Neue Aufgabe</translation>
    </message>
    <message id="engine.availability.available">
        <source>The on-device language model is ready.</source>
        <translation>Das Sprachmodell auf diesem Gerät ist bereit.</translation>
    </message>
    <message id="engine.availability.deviceNotEligible">
        <source>This computer cannot run the language model. Everything still works by hand.</source>
        <translation>Dieser Computer kann das Sprachmodell nicht ausführen. Alles geht weiterhin von Hand.</translation>
    </message>
    <message id="engine.availability.appleIntelligenceNotEnabled">
        <source>The language model is switched off in the system settings. Everything still works by hand.</source>
        <translation>Das Sprachmodell ist in den Systemeinstellungen ausgeschaltet. Alles geht weiterhin von Hand.</translation>
    </message>
    <message id="engine.availability.modelNotReady">
        <source>The language model is not ready yet. Everything still works by hand.</source>
        <translation>Das Sprachmodell ist noch nicht bereit. Alles geht weiterhin von Hand.</translation>
    </message>
    <message id="engine.availability.frameworkUnavailable">
        <source>No on-device language model is available. Everything still works by hand.</source>
        <translation>Auf diesem Gerät ist kein Sprachmodell verfügbar. Alles geht weiterhin von Hand.</translation>
    </message>
    <message id="engine.availability.modelUnusable">
        <source>The chosen language model cannot be used. Everything still works by hand.</source>
        <translation>Das gewählte Sprachmodell lässt sich nicht verwenden. Alles geht weiterhin von Hand.</translation>
    </message>
    <message id="banner.engineUnavailable.dismiss">
        <source>Dismiss</source>
        <translation>Ausblenden</translation>
    </message>
    <message id="planDay.plan">
        <source>Plan my day</source>
        <translation>Meinen Tag planen</translation>
    </message>
    <message id="planDay.planManual">
        <source>Fit into my time</source>
        <translation>In meine Zeit einpassen</translation>
    </message>
    <message id="planDay.subtitle">
        <source>The language model orders your ready tasks, then they are fitted into the time you have.</source>
        <translation>Das Sprachmodell ordnet deine bereiten Aufgaben, dann werden sie in deine verfügbare Zeit eingepasst.</translation>
    </message>
    <message id="planDay.subtitle.manual">
        <source>Your ready tasks, in the order of the Ready list, are fitted into the time you have.</source>
        <translation>Deine bereiten Aufgaben werden in der Reihenfolge der Liste „Bereit“ in deine verfügbare Zeit eingepasst.</translation>
    </message>
    <message id="planDay.order.ai">
        <source>Order by the language model</source>
        <translation>Reihenfolge des Sprachmodells</translation>
    </message>
    <message id="planDay.order.custom">
        <source>Your order</source>
        <translation>Deine Reihenfolge</translation>
    </message>
    <message id="planDay.budget.unit.minutes">
        <source>minutes</source>
        <translation>Minuten</translation>
    </message>
    <message id="planDay.budget.unit.hours">
        <source>hours</source>
        <translation>Stunden</translation>
    </message>
    <message id="planDay.summary">
        <source>%1 of %2 planned</source>
        <translation>%1 von %2 verplant</translation>
    </message>
    <message id="planDay.summary.overflow %lld">
        <source>%1 more do not fit.</source>
        <translation>%1 weitere passen nicht hinein.</translation>
    </message>
    <message id="newFlowFromText.create">
        <source>Create flow</source>
        <translation>Flow erstellen</translation>
    </message>
    <message id="newFlowFromText.createBlank">
        <source>Create empty flow</source>
        <translation>Leeren Flow erstellen</translation>
    </message>
    <message id="newFlowFromText.noTasksFound.title">
        <source>No tasks found</source>
        <translation>Keine Aufgaben gefunden</translation>
    </message>
    <message id="newFlowFromText.noTasksFound.message">
        <source>The text holds no steps to turn into tasks. Add some detail, or create an empty flow.</source>
        <translation>Der Text enthält keine Schritte, aus denen Aufgaben werden könnten. Ergänze Einzelheiten oder erstelle einen leeren Flow.</translation>
    </message>
    <message id="newFlowFromText.failed.title">
        <source>Could not create the flow</source>
        <translation>Flow konnte nicht erstellt werden</translation>
    </message>
    <message id="newFlowFromText.failed.message">
        <source>The language model could not read the text. Try again, or create an empty flow.</source>
        <translation>Das Sprachmodell konnte den Text nicht lesen. Versuche es erneut oder erstelle einen leeren Flow.</translation>
    </message>
    <message id="quickCapture.picker.newFlow">
        <source>New flow</source>
        <translation>Neuer Flow</translation>
    </message>
    <message id="canvas.node.status.pending">
        <source>Not started</source>
        <translation>Nicht begonnen</translation>
    </message>
    <message id="canvas.node.status.inProgress">
        <source>In progress</source>
        <translation>In Arbeit</translation>
    </message>
    <message id="canvas.node.status.done">
        <source>Done</source>
        <translation>Erledigt</translation>
    </message>
    <message id="canvas.node.status.paused">
        <source>Paused</source>
        <translation>Pausiert</translation>
    </message>
    <message id="canvas.node.starts ">
        <source>Starts %1</source>
        <translation>Ab %1</translation>
    </message>
    <message id="canvas.node.waiting ">
        <source>Waiting on %1</source>
        <translation>Wartet auf %1</translation>
    </message>
    <message id="canvas.node.ready">
        <source>Ready</source>
        <translation>Bereit</translation>
    </message>
    <message id="canvas.node.status.label">
        <source>Status</source>
        <translation>Status</translation>
    </message>
    <message id="canvas.node.deferred.help">
        <source>Not before this day</source>
        <translation>Nicht vor diesem Tag</translation>
    </message>
    <message id="canvas.node.due.label">
        <source>Due date</source>
        <translation>Fällig am</translation>
    </message>
    <message id="canvas.node.repeat.label">
        <source>Repeats</source>
        <translation>Wiederholt sich</translation>
    </message>
    <message id="canvas.node.checklist.help">
        <source>Steps done</source>
        <translation>Erledigte Schritte</translation>
    </message>
    <message id="canvas.node.priority.label">
        <source>Priority</source>
        <translation>Priorität</translation>
    </message>
    <message id="canvas.cycleRejection">
        <source>That connection would make a loop</source>
        <translation>Diese Verbindung ergäbe einen Kreis</translation>
    </message>
    <message id="canvas.file.drop.tooLarge ">
        <source>%1 is too large to attach (%2)</source>
        <translation>%1 ist zu groß zum Anhängen (%2)</translation>
    </message>
    <message id="canvas.file.drop.failed ">
        <source>%1 could not be read</source>
        <translation>%1 konnte nicht gelesen werden</translation>
    </message>
    <message id="canvas.port.label">
        <source>Connect</source>
        <translation>Verbinden</translation>
    </message>
    <message id="canvas.port.help.collapse">
        <source>Drag to connect; click to fold or unfold the subtasks</source>
        <translation>Ziehen zum Verbinden, klicken zum Ein- oder Ausklappen der Teilaufgaben</translation>
    </message>
    <message id="canvas.port.action.collapse">
        <source>Fold subtasks</source>
        <translation>Teilaufgaben einklappen</translation>
    </message>
    <message id="canvas.port.action.expand">
        <source>Unfold subtasks</source>
        <translation>Teilaufgaben ausklappen</translation>
    </message>
    <message id="canvas.edge.delete">
        <source>Delete connection</source>
        <translation>Verbindung löschen</translation>
    </message>
    <message id="canvas.fileLink.delete">
        <source>Unlink file</source>
        <translation>Datei lösen</translation>
    </message>
    <message id="canvas.node.addChild">
        <source>Add subtask</source>
        <translation>Teilaufgabe hinzufügen</translation>
    </message>
    <message id="canvas.node.rename">
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message id="canvas.node.setColor">
        <source>Color</source>
        <translation>Farbe</translation>
    </message>
    <message id="canvas.node.color.none">
        <source>No color</source>
        <translation>Keine Farbe</translation>
    </message>
    <message id="canvas.node.color.red">
        <source>Red</source>
        <translation>Rot</translation>
    </message>
    <message id="canvas.node.color.orange">
        <source>Orange</source>
        <translation>Orange</translation>
    </message>
    <message id="canvas.node.color.yellow">
        <source>Yellow</source>
        <translation>Gelb</translation>
    </message>
    <message id="canvas.node.color.green">
        <source>Green</source>
        <translation>Grün</translation>
    </message>
    <message id="canvas.node.color.blue">
        <source>Blue</source>
        <translation>Blau</translation>
    </message>
    <message id="canvas.node.color.purple">
        <source>Purple</source>
        <translation>Lila</translation>
    </message>
    <message id="canvas.node.color.pink">
        <source>Pink</source>
        <translation>Rosa</translation>
    </message>
    <message id="canvas.node.color.grey">
        <source>Grey</source>
        <translation>Grau</translation>
    </message>
    <message id="canvas.node.resize.reset">
        <source>Reset size</source>
        <translation>Größe zurücksetzen</translation>
    </message>
    <message id="canvas.node.delete">
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message id="canvas.file.open">
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message id="canvas.file.exportCopy">
        <source>Save a copy…</source>
        <translation>Kopie sichern …</translation>
    </message>
    <message id="canvas.file.missing">
        <source>The file's contents are missing</source>
        <translation>Der Inhalt der Datei fehlt</translation>
    </message>
    <message id="canvas.file.unlinkAll">
        <source>Unlink from all tasks</source>
        <translation>Von allen Aufgaben lösen</translation>
    </message>
    <message id="canvas.file.delete">
        <source>Delete file</source>
        <translation>Datei löschen</translation>
    </message>
    <message id="canvas.file.add">
        <source>Attach file…</source>
        <translation>Datei anhängen …</translation>
    </message>
    <message id="canvas.file.add.prompt">
        <source>Choose files to attach</source>
        <translation>Dateien zum Anhängen wählen</translation>
    </message>
    <message id="toolbar.addTask">
        <source>Add task</source>
        <translation>Aufgabe hinzufügen</translation>
    </message>
    <message id="toolbar.addItem">
        <source>Add</source>
        <translation>Neu</translation>
    </message>
    <message id="toolbar.attachFile">
        <source>Attach file</source>
        <translation>Datei anhängen</translation>
    </message>
    <message id="toolbar.filter">
        <source>Filter by color</source>
        <translation>Nach Farbe filtern</translation>
    </message>
    <message id="toolbar.grid">
        <source>Snap to grid</source>
        <translation>Am Raster ausrichten</translation>
    </message>
    <message id="toolbar.arrange">
        <source>Arrange as tree</source>
        <translation>Als Baum anordnen</translation>
    </message>
    <message id="toolbar.archiveDone">
        <source>Archive done tasks</source>
        <translation>Erledigte archivieren</translation>
    </message>
    <message id="archive.action.archiveDone">
        <source>Archive done</source>
        <translation>Erledigte archivieren</translation>
    </message>
    <message id="toolbar.filter.off">
        <source>No filter</source>
        <translation>Kein Filter</translation>
    </message>
    <message id="toolbar.filter.clear">
        <source>Clear filter</source>
        <translation>Filter aufheben</translation>
    </message>
    <message id="toolbar.filter.mode.label">
        <source>Other tasks</source>
        <translation>Andere Aufgaben</translation>
    </message>
    <message id="toolbar.filter.mode.dim">
        <source>Dim</source>
        <translation>Abblenden</translation>
    </message>
    <message id="toolbar.filter.mode.hide">
        <source>Hide</source>
        <translation>Ausblenden</translation>
    </message>
    <message id="toolbar.zoomOut">
        <source>Zoom out</source>
        <translation>Verkleinern</translation>
    </message>
    <message id="toolbar.zoomIn">
        <source>Zoom in</source>
        <translation>Vergrößern</translation>
    </message>
    <message id="toolbar.zoomToFit">
        <source>Zoom to fit</source>
        <translation>Alles zeigen</translation>
    </message>
    <message id="toolbar.zoomLevel">
        <source>%1%</source>
        <translation>%1 %</translation>
    </message>
    <message id="toolbar.progress">
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message id="toolbar.progress %lld %lld">
        <source>%1 of %2 done</source>
        <translation>%1 von %2 erledigt</translation>
    </message>
    <message id="toolbar.progress.short %lld %lld">
        <source>%1/%2</source>
        <translation>%1/%2</translation>
    </message>
    <message id="toolbar.progress.ready %lld %lld %lld">
        <source>%1 of %2 done · %3 ready</source>
        <translation>%1 von %2 erledigt · %3 bereit</translation>
    </message>
    <message id="canvas.empty.title">
        <source>An empty flow</source>
        <translation>Ein leerer Ablauf</translation>
    </message>
    <message id="canvas.empty.message">
        <source>Add a first task, then draw from its port to the next one.</source>
        <translation>Füge eine erste Aufgabe hinzu und zieh dann von ihrem Anschluss zur nächsten.</translation>
    </message>
    <message id="canvas.empty.addButton">
        <source>Add first task</source>
        <translation>Erste Aufgabe hinzufügen</translation>
    </message>
    <message id="import.opml.relink.title">
        <source>Connect the imported tasks?</source>
        <translation>Importierte Aufgaben verbinden?</translation>
    </message>
    <message id="import.opml.relink.message">
        <source>The outline brought no dependencies. Fenrow can suggest which tasks have to come first; you can change or delete every connection afterwards.</source>
        <translation>Die Gliederung enthält keine Abhängigkeiten. Fenrow kann vorschlagen, welche Aufgaben zuerst kommen; jede Verbindung lässt sich danach ändern oder löschen.</translation>
    </message>
    <message id="import.opml.relink.connect">
        <source>Connect</source>
        <translation>Verbinden</translation>
    </message>
    <message id="import.opml.relink.keep">
        <source>Keep as Is</source>
        <translation>So lassen</translation>
    </message>
    <message id="quickCapture.window.title">
        <source>Quick Capture</source>
        <translation>Schnell erfassen</translation>
    </message>
    <message id="quickCapture.field.placeholder">
        <source>What needs doing? Try “call the bank tomorrow”</source>
        <translation>Was steht an? Etwa „morgen die Bank anrufen“</translation>
    </message>
    <message id="quickCapture.picker.label">
        <source>Flow</source>
        <translation>Flow</translation>
    </message>
    <message id="quickCapture.date.due %@">
        <source>Due %1</source>
        <translation>Fällig: %1</translation>
    </message>
    <message id="quickCapture.date.help %@">
        <source>Read from your text: due %1. Remove it to keep those words in the title.</source>
        <translation>Aus deinem Text gelesen: fällig %1. Entfernst du es, bleiben die Wörter im Titel.</translation>
    </message>
    <message id="quickCapture.date.dismiss">
        <source>Remove date</source>
        <translation>Datum entfernen</translation>
    </message>
    <message id="quickCapture.action.save">
        <source>Add task</source>
        <translation>Aufgabe hinzufügen</translation>
    </message>
    <message id="quickCapture.action.cancel">
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message id="quickCapture.hint">
        <source>Return adds · Esc closes</source>
        <translation>Eingabe fügt hinzu · Esc schließt</translation>
    </message>
    <message id="quickCapture.date.format">
        <source>ddd, MMM d</source>
        <translation>ddd, d. MMM</translation>
    </message>
    <message id="sidebar.action.settings">
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message id="menu.settings">
        <source>Settings…</source>
        <translation>Einstellungen…</translation>
    </message>
    <message id="settings.title">
        <source>Fenrow Settings</source>
        <translation>Fenrow-Einstellungen</translation>
    </message>
    <message id="settings.page.general">
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message id="settings.page.shortcuts">
        <source>Shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message id="settings.page.appearance">
        <source>Appearance</source>
        <translation>Darstellung</translation>
    </message>
    <message id="settings.page.language">
        <source>Language</source>
        <translation>Sprache</translation>
    </message>
    <message id="settings.page.data">
        <source>Data</source>
        <translation>Daten</translation>
    </message>
    <message id="settings.page.model">
        <source>Language model</source>
        <translation>Sprachmodell</translation>
    </message>
    <message id="settings.model.privacy">
        <source>The model runs on this computer; nothing you write leaves it.</source>
        <translation>Das Modell läuft auf diesem Computer; nichts, was du schreibst, verlässt ihn.</translation>
    </message>
    <message id="settings.model.chosen.title">
        <source>Chosen model</source>
        <translation>Gewähltes Modell</translation>
    </message>
    <message id="settings.model.details">
        <source>%1 · %2</source>
        <translation>%1 · %2</translation>
    </message>
    <message id="settings.model.state.none">
        <source>No model is chosen. Until one is, everything is done by hand.</source>
        <translation>Kein Modell gewählt. Bis dahin erledigst du alles von Hand.</translation>
    </message>
    <message id="settings.model.state.idle">
        <source>Not loaded yet; it loads when a feature first needs it.</source>
        <translation>Noch nicht geladen; es wird geladen, sobald eine Funktion es braucht.</translation>
    </message>
    <message id="settings.model.state.loading">
        <source>Loading the model…</source>
        <translation>Modell wird geladen…</translation>
    </message>
    <message id="settings.model.state.ready">
        <source>Loaded: %1, with a context of %2 tokens.</source>
        <translation>Geladen: %1, mit einem Kontext von %2 Tokens.</translation>
    </message>
    <message id="settings.model.state.failed">
        <source>This file cannot be used: %1</source>
        <translation>Diese Datei kann nicht verwendet werden: %1</translation>
    </message>
    <message id="settings.model.state.unavailable">
        <source>The model cannot run here: %1</source>
        <translation>Das Modell kann hier nicht laufen: %1</translation>
    </message>
    <message id="settings.model.choose">
        <source>Choose File…</source>
        <translation>Datei wählen…</translation>
    </message>
    <message id="settings.model.choose.dialog">
        <source>Choose a Language Model</source>
        <translation>Sprachmodell wählen</translation>
    </message>
    <message id="settings.model.choose.filter">
        <source>GGUF models (*.gguf)</source>
        <translation>GGUF-Modelle (*.gguf)</translation>
    </message>
    <message id="settings.model.remove">
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message id="settings.model.refused.notFound">
        <source>%1 was not found.</source>
        <translation>%1 wurde nicht gefunden.</translation>
    </message>
    <message id="settings.model.refused.unreadable">
        <source>%1 cannot be read.</source>
        <translation>%1 kann nicht gelesen werden.</translation>
    </message>
    <message id="settings.model.refused.notModel">
        <source>%1 is not a GGUF model file.</source>
        <translation>%1 ist keine GGUF-Modelldatei.</translation>
    </message>
    <message id="settings.model.refused.kept">
        <source>The chosen model stays as it was.</source>
        <translation>Das gewählte Modell bleibt, wie es war.</translation>
    </message>
    <message id="settings.model.try.title">
        <source>Try it</source>
        <translation>Ausprobieren</translation>
    </message>
    <message id="settings.model.try.caption">
        <source>Runs one short request and measures how fast the model answers.</source>
        <translation>Führt eine kurze Anfrage aus und misst, wie schnell das Modell antwortet.</translation>
    </message>
    <message id="settings.model.try">
        <source>Try It</source>
        <translation>Ausprobieren</translation>
    </message>
    <message id="settings.model.trial.running">
        <source>Running a short request…</source>
        <translation>Kurze Anfrage läuft…</translation>
    </message>
    <message id="settings.model.trial.result">
        <source>%1 tokens in %2 s (%3 tokens per second)</source>
        <translation>%1 Tokens in %2 s (%3 Tokens pro Sekunde)</translation>
    </message>
    <message id="settings.model.trial.failed">
        <source>The trial failed: %1</source>
        <translation>Der Versuch ist fehlgeschlagen: %1</translation>
    </message>
    <message id="settings.model.found.title">
        <source>On this computer</source>
        <translation>Auf diesem Computer</translation>
    </message>
    <message id="settings.model.found.caption">
        <source>Models already downloaded with llama.cpp, LM Studio, GPT4All or Ollama, from Hugging Face, or into Downloads.</source>
        <translation>Modelle, die du schon mit llama.cpp, LM Studio, GPT4All oder Ollama, von Hugging Face oder in den Download-Ordner geladen hast.</translation>
    </message>
    <message id="settings.model.found.looking">
        <source>Looking…</source>
        <translation>Wird gesucht…</translation>
    </message>
    <message id="settings.model.found.none">
        <source>No models found in those folders.</source>
        <translation>In diesen Ordnern wurden keine Modelle gefunden.</translation>
    </message>
    <message id="settings.model.found.item">
        <source>%1 — %2 · %3</source>
        <translation>%1 — %2 · %3</translation>
    </message>
    <message id="settings.model.use">
        <source>Use</source>
        <translation>Verwenden</translation>
    </message>
    <message id="banner.engineUnavailable.chooseModel">
        <source>Choose a model…</source>
        <translation>Modell wählen…</translation>
    </message>
    <message id="settings.page.about">
        <source>About</source>
        <translation>Über Fenrow</translation>
    </message>
    <message id="settings.general.startup.title">
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message id="settings.general.launchAtLogin">
        <source>Open Fenrow when I log in</source>
        <translation>Fenrow beim Anmelden öffnen</translation>
    </message>
    <message id="settings.general.widgetAtLogin">
        <source>Show the Ready list in the tray when I log in</source>
        <translation>Beim Anmelden die Bereit-Liste im Systembereich zeigen</translation>
    </message>
    <message id="settings.general.launchAtLogin.failed">
        <source>Fenrow could not change its autostart entry. Check that you may write to %1.</source>
        <translation>Fenrow konnte seinen Autostart-Eintrag nicht ändern. Prüfen Sie, ob Sie in %1 schreiben dürfen.</translation>
    </message>
    <message id="settings.general.reminders.title">
        <source>Reminders</source>
        <translation>Erinnerungen</translation>
    </message>
    <message id="settings.general.dueReminders">
        <source>Remind me of tasks on their due day</source>
        <translation>An Aufgaben am Fälligkeitstag erinnern</translation>
    </message>
    <message id="settings.general.dueReminderHour">
        <source>Time of the reminder</source>
        <translation>Uhrzeit der Erinnerung</translation>
    </message>
    <message id="settings.general.morningDigest">
        <source>Send a morning summary of the day's tasks</source>
        <translation>Morgens eine Übersicht der Aufgaben des Tages senden</translation>
    </message>
    <message id="notification.due.body">
        <source>Due today</source>
        <translation>Heute fällig</translation>
    </message>
    <message id="notification.digest.title">
        <source>Ready to work on today</source>
        <translation>Heute bereit zum Anfangen</translation>
    </message>
    <message id="notification.open">
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message id="settings.general.planDay.title">
        <source>Plan Day</source>
        <translation>Tag planen</translation>
    </message>
    <message id="settings.general.dayPlanBudget">
        <source>Time available per day</source>
        <translation>Verfügbare Zeit pro Tag</translation>
    </message>
    <message id="settings.general.dayPlanBudget.minutes">
        <source>minutes</source>
        <translation>Minuten</translation>
    </message>
    <message id="settings.general.dayPlanBudget.hours">
        <source>hours</source>
        <translation>Stunden</translation>
    </message>
    <message id="settings.general.filter.title">
        <source>Filters</source>
        <translation>Filter</translation>
    </message>
    <message id="settings.general.filterMode">
        <source>Tasks a filter leaves out</source>
        <translation>Vom Filter ausgeschlossene Aufgaben</translation>
    </message>
    <message id="settings.general.filterMode.dim">
        <source>Dim them</source>
        <translation>Abblenden</translation>
    </message>
    <message id="settings.general.filterMode.hide">
        <source>Hide them</source>
        <translation>Ausblenden</translation>
    </message>
    <message id="settings.general.quickCapture.title">
        <source>Quick capture</source>
        <translation>Schnellerfassung</translation>
    </message>
    <message id="settings.general.quickCapture.subtitle">
        <source>Opens the capture panel from any application while Fenrow is running.</source>
        <translation>Öffnet das Erfassungsfeld aus jeder Anwendung, solange Fenrow läuft.</translation>
    </message>
    <message id="shortcut.recorder.recording">
        <source>Press keys…</source>
        <translation>Tasten drücken…</translation>
    </message>
    <message id="settings.shortcuts.needsModifier">
        <source>A shortcut needs Ctrl, Alt, Shift or Meta. Try again, or press Esc to keep the old one.</source>
        <translation>Ein Tastenkürzel braucht Strg, Alt, Umschalt oder Meta. Erneut versuchen oder mit Esc das alte behalten.</translation>
    </message>
    <message id="settings.shortcuts.unsupportedKey">
        <source>This key can't be part of a shortcut. Try a letter, a digit or a punctuation key, or press Esc.</source>
        <translation>Diese Taste kann nicht Teil eines Kürzels sein. Einen Buchstaben, eine Ziffer oder ein Satzzeichen versuchen oder Esc drücken.</translation>
    </message>
    <message id="settings.shortcuts.conflict">
        <source>Also used by: %1</source>
        <translation>Auch belegt durch: %1</translation>
    </message>
    <message id="settings.shortcuts.globalUnavailable">
        <source>This shortcut works only inside Fenrow: the desktop did not let Fenrow claim it. To open the capture panel from any application, assign a shortcut to this command in your desktop's keyboard settings:</source>
        <translation>Dieses Tastenkürzel wirkt nur in Fenrow: Die Arbeitsumgebung hat es Fenrow nicht überlassen. Um das Erfassungsfeld aus jeder Anwendung zu öffnen, in den Tastatureinstellungen der Arbeitsumgebung ein Tastenkürzel für diesen Befehl anlegen:</translation>
    </message>
    <message id="settings.shortcuts.action.undo">
        <source>Undo</source>
        <translation>Widerrufen</translation>
    </message>
    <message id="settings.shortcuts.action.redo">
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message id="settings.shortcuts.action.newFlowFromText">
        <source>New flow from text</source>
        <translation>Neuer Flow aus Text</translation>
    </message>
    <message id="settings.shortcuts.action.findInFlow">
        <source>Find in flow</source>
        <translation>Im Flow suchen</translation>
    </message>
    <message id="settings.shortcuts.action.exportMarkdown">
        <source>Export as Markdown</source>
        <translation>Als Markdown exportieren</translation>
    </message>
    <message id="settings.shortcuts.action.copyMarkdown">
        <source>Copy as Markdown</source>
        <translation>Als Markdown kopieren</translation>
    </message>
    <message id="settings.shortcuts.action.zoomIn">
        <source>Zoom in</source>
        <translation>Vergrößern</translation>
    </message>
    <message id="settings.shortcuts.action.zoomOut">
        <source>Zoom out</source>
        <translation>Verkleinern</translation>
    </message>
    <message id="settings.shortcuts.action.zoomToFit">
        <source>Zoom to fit</source>
        <translation>An Fenster anpassen</translation>
    </message>
    <message id="settings.shortcuts.reset">
        <source>Restore default shortcuts</source>
        <translation>Standardkürzel wiederherstellen</translation>
    </message>
    <message id="settings.shortcuts.reference.title">
        <source>On the canvas</source>
        <translation>Auf der Arbeitsfläche</translation>
    </message>
    <message id="settings.shortcuts.reference.rename">
        <source>Rename the selected task</source>
        <translation>Ausgewählte Aufgabe umbenennen</translation>
    </message>
    <message id="settings.shortcuts.reference.toggleDone">
        <source>Mark done or not done</source>
        <translation>Als erledigt markieren oder zurücksetzen</translation>
    </message>
    <message id="settings.shortcuts.reference.addAfter">
        <source>Add the next task</source>
        <translation>Nächste Aufgabe hinzufügen</translation>
    </message>
    <message id="settings.shortcuts.reference.addBefore">
        <source>Add a task before</source>
        <translation>Aufgabe davor hinzufügen</translation>
    </message>
    <message id="settings.shortcuts.reference.delete">
        <source>Delete the selection</source>
        <translation>Auswahl löschen</translation>
    </message>
    <message id="settings.shortcuts.reference.delete.keys">
        <source>Delete or Backspace</source>
        <translation>Entf oder Rücktaste</translation>
    </message>
    <message id="settings.shortcuts.reference.deselect">
        <source>Clear the selection</source>
        <translation>Auswahl aufheben</translation>
    </message>
    <message id="settings.shortcuts.reference.move">
        <source>Select the nearest task in that direction</source>
        <translation>Nächste Aufgabe in dieser Richtung auswählen</translation>
    </message>
    <message id="settings.shortcuts.reference.follow">
        <source>Follow a connection</source>
        <translation>Einer Verbindung folgen</translation>
    </message>
    <message id="settings.shortcuts.reference.multiSelect">
        <source>Add to the selection</source>
        <translation>Zur Auswahl hinzufügen</translation>
    </message>
    <message id="settings.shortcuts.reference.multiSelect.keys">
        <source>Shift+click</source>
        <translation>Umschalt+Klick</translation>
    </message>
    <message id="settings.shortcuts.reference.pan">
        <source>Move the canvas</source>
        <translation>Arbeitsfläche verschieben</translation>
    </message>
    <message id="settings.shortcuts.reference.pan.keys">
        <source>Space+drag</source>
        <translation>Leertaste+Ziehen</translation>
    </message>
    <message id="settings.shortcuts.reference.caption">
        <source>These keys work while the canvas has the focus and can't be changed.</source>
        <translation>Diese Tasten wirken, solange die Arbeitsfläche den Fokus hat, und lassen sich nicht ändern.</translation>
    </message>
    <message id="settings.appearance.theme.title">
        <source>Theme</source>
        <translation>Erscheinungsbild</translation>
    </message>
    <message id="settings.appearance.theme.auto">
        <source>Same as the system</source>
        <translation>Wie das System</translation>
    </message>
    <message id="settings.appearance.theme.light">
        <source>Light</source>
        <translation>Hell</translation>
    </message>
    <message id="settings.appearance.theme.dark">
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
    <message id="settings.appearance.theme.caption">
        <source>“Same as the system” follows the dark or light choice of your desktop.</source>
        <translation>„Wie das System“ folgt der hellen oder dunklen Einstellung Ihres Desktops.</translation>
    </message>
    <message id="settings.appearance.palette.title">
        <source>Accent colour</source>
        <translation>Akzentfarbe</translation>
    </message>
    <message id="settings.appearance.palette.violet">
        <source>Violet</source>
        <translation>Violett</translation>
    </message>
    <message id="settings.appearance.palette.blue">
        <source>Blue</source>
        <translation>Blau</translation>
    </message>
    <message id="settings.appearance.palette.green">
        <source>Green</source>
        <translation>Grün</translation>
    </message>
    <message id="settings.appearance.palette.orange">
        <source>Orange</source>
        <translation>Orange</translation>
    </message>
    <message id="settings.appearance.palette.pink">
        <source>Pink</source>
        <translation>Rosa</translation>
    </message>
    <message id="settings.appearance.palette.graphite">
        <source>Graphite</source>
        <translation>Graphit</translation>
    </message>
    <message id="settings.appearance.canvas.title">
        <source>Canvas</source>
        <translation>Arbeitsfläche</translation>
    </message>
    <message id="settings.appearance.grid">
        <source>Show the dot grid</source>
        <translation>Punktraster anzeigen</translation>
    </message>
    <message id="settings.appearance.sizeByEstimate">
        <source>Size cards by their estimate</source>
        <translation>Kartengröße nach Schätzung</translation>
    </message>
    <message id="settings.language.caption">
        <source>Fenrow switches language at once, without a restart.</source>
        <translation>Fenrow wechselt die Sprache sofort, ohne Neustart.</translation>
    </message>
    <message id="settings.language.system">
        <source>Same as the system</source>
        <translation>Wie das System</translation>
    </message>
    <message id="settings.about.version">
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message id="settings.about.tagline">
        <source>Plan projects as flows of tasks and work from what is ready.</source>
        <translation>Projekte als Flows von Aufgaben planen und mit dem arbeiten, was bereit ist.</translation>
    </message>
    <message id="settings.about.files.title">
        <source>Your files</source>
        <translation>Ihre Dateien</translation>
    </message>
    <message id="settings.about.dataFolder">
        <source>Open the data folder</source>
        <translation>Datenordner öffnen</translation>
    </message>
    <message id="settings.about.settingsFile">
        <source>Open the settings file</source>
        <translation>Einstellungsdatei öffnen</translation>
    </message>
    <message id="settings.data.autoArchive.title">
        <source>Archive</source>
        <translation>Archiv</translation>
    </message>
    <message id="settings.data.autoArchive.label">
        <source>Move done tasks to the archive</source>
        <translation>Erledigte Aufgaben ins Archiv verschieben</translation>
    </message>
    <message id="settings.data.autoArchive.caption">
        <source>Tasks done longer ago than this leave their flow and wait in the archive.</source>
        <translation>Aufgaben, die länger als das erledigt sind, verlassen ihren Flow und liegen im Archiv.</translation>
    </message>
    <message id="settings.data.autoArchive.off">
        <source>Never</source>
        <translation>Nie</translation>
    </message>
    <message id="settings.data.autoArchive.oneDay">
        <source>After 1 day</source>
        <translation>Nach 1 Tag</translation>
    </message>
    <message id="settings.data.autoArchive.days">
        <source>After %1 days</source>
        <translation>Nach %1 Tagen</translation>
    </message>
    <message id="settings.data.autoBackup.title">
        <source>Automatic backup</source>
        <translation>Automatische Sicherung</translation>
    </message>
    <message id="settings.data.autoBackup.choose">
        <source>Choose Folder…</source>
        <translation>Ordner wählen…</translation>
    </message>
    <message id="settings.data.autoBackup.now">
        <source>Back Up Now</source>
        <translation>Jetzt sichern</translation>
    </message>
    <message id="settings.data.autoBackup.off">
        <source>Turn Off</source>
        <translation>Ausschalten</translation>
    </message>
    <message id="settings.data.autoBackup.caption">
        <source>Once a week Fenrow writes a backup into this folder and keeps the five newest.</source>
        <translation>Einmal pro Woche schreibt Fenrow eine Sicherung in diesen Ordner und behält die fünf neuesten.</translation>
    </message>
    <message id="settings.data.autoBackup.none">
        <source>No folder chosen: automatic backups are off.</source>
        <translation>Kein Ordner gewählt: automatische Sicherungen sind aus.</translation>
    </message>
    <message id="settings.data.autoBackup.last">
        <source>Last backup: %1</source>
        <translation>Letzte Sicherung: %1</translation>
    </message>
    <message id="settings.data.autoBackup.never">
        <source>No backup written yet.</source>
        <translation>Noch keine Sicherung geschrieben.</translation>
    </message>
    <message id="settings.data.autoBackup.failed">
        <source>The last backup could not be written. Check that the folder still exists and that you may write to it.</source>
        <translation>Die letzte Sicherung konnte nicht geschrieben werden. Prüfen Sie, ob der Ordner noch existiert und Sie darin schreiben dürfen.</translation>
    </message>
    <message id="settings.data.templates.title">
        <source>Templates</source>
        <translation>Vorlagen</translation>
    </message>
    <message id="settings.data.templates.empty">
        <source>No templates yet. Save a flow as a template from its menu in the sidebar.</source>
        <translation>Noch keine Vorlagen. Einen Flow über sein Menü in der Seitenleiste als Vorlage sichern.</translation>
    </message>
    <message id="settings.data.templates.delete">
        <source>Delete template</source>
        <translation>Vorlage löschen</translation>
    </message>
    <message id="menu.quickCapture">
        <source>&amp;Quick Capture…</source>
        <translation>&amp;Schnell erfassen…</translation>
    </message>
    <message id="menu.helpMenu">
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message id="menu.help">
        <source>Fenrow &amp;Help</source>
        <translation>Fenrow-&amp;Hilfe</translation>
    </message>
    <message id="menu.about">
        <source>&amp;About Fenrow</source>
        <translation>&amp;Über Fenrow</translation>
    </message>
    <message id="menu.restartOnboarding">
        <source>Show the &amp;Welcome Again</source>
        <translation>&amp;Willkommen erneut zeigen</translation>
    </message>
    <message id="onboarding.welcome.title">
        <source>Welcome to Fenrow</source>
        <translation>Willkommen bei Fenrow</translation>
    </message>
    <message id="onboarding.welcome.message">
        <source>Plan each project as a flow of tasks, and always know what you can do next.</source>
        <translation>Plane jedes Projekt als Flow aus Aufgaben und wisse immer, was du als Nächstes tun kannst.</translation>
    </message>
    <message id="onboarding.flows.title">
        <source>A project is a flow</source>
        <translation>Ein Projekt ist ein Flow</translation>
    </message>
    <message id="onboarding.flows.message">
        <source>Tasks are cards on a canvas. Connect them to say what comes first: a task waits until the ones before it are done.</source>
        <translation>Aufgaben sind Karten auf einer Leinwand. Verbinde sie, um zu zeigen, was zuerst kommt: Eine Aufgabe wartet, bis die vorherigen erledigt sind.</translation>
    </message>
    <message id="onboarding.ready.title">
        <source>Work from the Ready list</source>
        <translation>Arbeite mit der Bereit-Liste</translation>
    </message>
    <message id="onboarding.ready.message">
        <source>Everything you can start now, from all your flows, in one list. Tick a task off and whatever it held up moves in.</source>
        <translation>Alles, was du jetzt beginnen kannst, aus all deinen Flows in einer Liste. Hake eine Aufgabe ab, und was auf sie gewartet hat, rückt nach.</translation>
    </message>
    <message id="onboarding.capture.title">
        <source>Capture in a moment</source>
        <translation>Im Nu erfassen</translation>
    </message>
    <message id="onboarding.capture.message %@">
        <source>Press %1 to note a task without leaving what you are doing. Words like “tomorrow” or “next friday” set its due date.</source>
        <translation>Drücke %1, um eine Aufgabe zu notieren, ohne deine Arbeit zu verlassen. Wörter wie „morgen“ oder „nächsten Freitag“ setzen das Fälligkeitsdatum.</translation>
    </message>
    <message id="onboarding.capture.messageInsideOnly %@ %@">
        <source>Press %1 to note a task while Fenrow is in front. To do it from any application, assign a shortcut to “%2” in your desktop's keyboard settings. Words like “tomorrow” or “next friday” set its due date.</source>
        <translation>Drücke %1, um eine Aufgabe zu notieren, während Fenrow im Vordergrund ist. Um das aus jeder Anwendung zu tun, lege in den Tastatureinstellungen deiner Arbeitsumgebung ein Tastenkürzel für „%2“ an. Wörter wie „morgen“ oder „nächsten Freitag“ setzen das Fälligkeitsdatum.</translation>
    </message>
    <message id="onboarding.action.next">
        <source>Continue</source>
        <translation>Weiter</translation>
    </message>
    <message id="onboarding.action.back">
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message id="onboarding.action.finish">
        <source>Get started</source>
        <translation>Los geht’s</translation>
    </message>
    <message id="sidebar.route.search">
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message id="sidebar.action.collapse">
        <source>Hide sidebar</source>
        <translation>Seitenleiste ausblenden</translation>
    </message>
    <message id="sidebar.action.expand">
        <source>Show sidebar</source>
        <translation>Seitenleiste einblenden</translation>
    </message>
    <message id="flowSearch.field.placeholder">
        <source>Find tasks by title or notes</source>
        <translation>Aufgaben nach Titel oder Notizen finden</translation>
    </message>
    <message id="flowSearch.close">
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message id="flowSearch.group.current">
        <source>This flow</source>
        <translation>Dieser Ablauf</translation>
    </message>
    <message id="flowSearch.empty.title">
        <source>No matches</source>
        <translation>Keine Treffer</translation>
    </message>
    <message id="flowSearch.empty.message">
        <source>No task title or note contains these words.</source>
        <translation>Kein Aufgabentitel und keine Notiz enthält diese Wörter.</translation>
    </message>
    <message id="flowSearch.count %lld">
        <source>%1 found</source>
        <translation>%1 gefunden</translation>
    </message>
    <message id="flowSearch.footer.hint">
        <source>↑↓ to move · ↩ to open · esc to close</source>
        <translation>↑↓ wählen · ↩ öffnen · Esc schließen</translation>
    </message>
    <message id="menu.view">
        <source>View</source>
        <translation>Darstellung</translation>
    </message>
    <message id="menu.zoomIn">
        <source>Zoom In</source>
        <translation>Vergrößern</translation>
    </message>
    <message id="menu.zoomOut">
        <source>Zoom Out</source>
        <translation>Verkleinern</translation>
    </message>
    <message id="menu.actualSize">
        <source>Actual Size</source>
        <translation>Originalgröße</translation>
    </message>
    <message id="menu.zoomToFit">
        <source>Zoom to Fit</source>
        <translation>Alles zeigen</translation>
    </message>
    <message id="menu.toggleSidebar">
        <source>Show or Hide Sidebar</source>
        <translation>Seitenleiste ein- oder ausblenden</translation>
    </message>
    <message id="menu.flow">
        <source>Flow</source>
        <translation>Ablauf</translation>
    </message>
    <message id="menu.addTask">
        <source>Add Task</source>
        <translation>Aufgabe hinzufügen</translation>
    </message>
    <message id="menu.addNextTask">
        <source>Add Next Task</source>
        <translation>Nächste Aufgabe hinzufügen</translation>
    </message>
    <message id="menu.addTaskBefore">
        <source>Add Task Before</source>
        <translation>Aufgabe davor hinzufügen</translation>
    </message>
    <message id="menu.addSubtask">
        <source>Add Subtask</source>
        <translation>Unteraufgabe hinzufügen</translation>
    </message>
    <message id="menu.connect">
        <source>Connect Selected Tasks</source>
        <translation>Ausgewählte Aufgaben verbinden</translation>
    </message>
    <message id="menu.rename">
        <source>Rename Task</source>
        <translation>Aufgabe umbenennen</translation>
    </message>
    <message id="menu.toggleDone">
        <source>Mark Done or Not Done</source>
        <translation>Als erledigt oder offen markieren</translation>
    </message>
    <message id="menu.delete">
        <source>Delete Selection</source>
        <translation>Auswahl löschen</translation>
    </message>
    <message id="menu.arrange">
        <source>Arrange as Tree</source>
        <translation>Als Baum anordnen</translation>
    </message>
    <message id="menu.archiveDone">
        <source>Archive Done Tasks…</source>
        <translation>Erledigte Aufgaben archivieren…</translation>
    </message>
    <message id="menu.find">
        <source>Find in Flows…</source>
        <translation>In Abläufen suchen…</translation>
    </message>
    <message id="ready.row.references">
        <source>Linked files: %1</source>
        <translation>Verknüpfte Dateien: %1</translation>
    </message>
    <message id="ready.row.reorder.help">
        <source>Drag to set today's order</source>
        <translation>Ziehen, um die heutige Reihenfolge festzulegen</translation>
    </message>
    <message id="menu.newFlowFromText">
        <source>New Flow from Text…</source>
        <translation>Neuer Flow aus Text…</translation>
    </message>
    <message id="menu.planDay">
        <source>Plan Today…</source>
        <translation>Heute planen…</translation>
    </message>
    <message id="ready.action.planDay">
        <source>Plan Day</source>
        <translation>Tag planen</translation>
    </message>
    <message id="newFlowFromText.title">
        <source>New flow</source>
        <translation>Neuer Flow</translation>
    </message>
    <message id="newFlowFromText.subtitle">
        <source>Describe the project in your own words and the language model turns it into tasks. Or leave the text empty to start with a blank flow.</source>
        <translation>Beschreibe das Projekt in eigenen Worten, und das Sprachmodell macht Aufgaben daraus. Oder lass den Text leer und beginne mit einem leeren Flow.</translation>
    </message>
    <message id="newFlowFromText.name.label">
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message id="newFlowFromText.name.placeholder">
        <source>Taken from the text when left empty</source>
        <translation>Leer gelassen, kommt er aus dem Text</translation>
    </message>
    <message id="newFlowFromText.editor.label">
        <source>What is the project about?</source>
        <translation>Worum geht es im Projekt?</translation>
    </message>
    <message id="newFlowFromText.editor.placeholder">
        <source>Paste notes, an e-mail or a plan, or write a few sentences about what has to happen.</source>
        <translation>Füge Notizen, eine E-Mail oder einen Plan ein, oder schreibe in ein paar Sätzen, was zu tun ist.</translation>
    </message>
    <message id="newFlowFromText.processing">
        <source>Reading the text and making tasks…</source>
        <translation>Der Text wird gelesen, Aufgaben entstehen…</translation>
    </message>
    <message id="newFlowFromText.cancel">
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message id="newFlowFromText.overBudget.title">
        <source>Only the first part will be read</source>
        <translation>Nur der erste Teil wird gelesen</translation>
    </message>
    <message id="newFlowFromText.overBudget.message">
        <source>The text is longer than the language model can take at once. You can still create the flow; tasks come from the beginning of the text.</source>
        <translation>Der Text ist länger, als das Sprachmodell auf einmal lesen kann. Du kannst den Flow trotzdem erstellen; die Aufgaben kommen aus dem Anfang des Textes.</translation>
    </message>
    <message id="generateSubtasks.title">
        <source>Generate subtasks</source>
        <translation>Unteraufgaben erzeugen</translation>
    </message>
    <message id="generateSubtasks.subtitle">
        <source>The language model breaks this task into smaller steps.</source>
        <translation>Das Sprachmodell zerlegt diese Aufgabe in kleinere Schritte.</translation>
    </message>
    <message id="generateSubtasks.subtitle.named %@">
        <source>The language model breaks “%1” into smaller steps.</source>
        <translation>Das Sprachmodell zerlegt „%1“ in kleinere Schritte.</translation>
    </message>
    <message id="generateSubtasks.details.label">
        <source>Details (optional)</source>
        <translation>Details (freiwillig)</translation>
    </message>
    <message id="generateSubtasks.details.placeholder">
        <source>What does the task involve?</source>
        <translation>Was gehört zu der Aufgabe?</translation>
    </message>
    <message id="generateSubtasks.processing">
        <source>Breaking the task down…</source>
        <translation>Die Aufgabe wird zerlegt…</translation>
    </message>
    <message id="generateSubtasks.cancel">
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message id="generateSubtasks.generate">
        <source>Generate</source>
        <translation>Erzeugen</translation>
    </message>
    <message id="canvas.node.generateSubtasks">
        <source>Generate Subtasks…</source>
        <translation>Unteraufgaben erzeugen…</translation>
    </message>
    <message id="canvas.node.expand.failed.title">
        <source>Subtasks could not be generated</source>
        <translation>Unteraufgaben konnten nicht erzeugt werden</translation>
    </message>
    <message id="canvas.node.expand.failed.message">
        <source>The language model gave no usable answer. Try again, or add the subtasks by hand.</source>
        <translation>Das Sprachmodell gab keine brauchbare Antwort. Versuche es noch einmal, oder lege die Unteraufgaben selbst an.</translation>
    </message>
    <message id="planDay.title">
        <source>Plan today</source>
        <translation>Heute planen</translation>
    </message>
    <message id="planDay.cancel">
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message id="planDay.running">
        <source>Ordering your tasks…</source>
        <translation>Deine Aufgaben werden geordnet…</translation>
    </message>
    <message id="planDay.failed.title">
        <source>The day could not be planned</source>
        <translation>Der Tag konnte nicht geplant werden</translation>
    </message>
    <message id="planDay.failed.message">
        <source>The language model gave no usable order. Go back and try again; nothing was changed.</source>
        <translation>Das Sprachmodell lieferte keine brauchbare Reihenfolge. Geh zurück und versuche es noch einmal; nichts wurde geändert.</translation>
    </message>
    <message id="planDay.back">
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message id="planDay.commit">
        <source>Use this plan</source>
        <translation>Plan übernehmen</translation>
    </message>
    <message id="planDay.cut.label">
        <source>Does not fit today</source>
        <translation>Passt heute nicht mehr</translation>
    </message>
    <message id="planDay.timeline.label %@ %@">
        <source>%1 of %2 planned, in working order</source>
        <translation>%1 von %2 verplant, in Arbeitsreihenfolge</translation>
    </message>
    <message id="planDay.nothingFits.title">
        <source>Nothing fits</source>
        <translation>Nichts passt hinein</translation>
    </message>
    <message id="planDay.nothingFits.message">
        <source>Every ready task takes longer than the time you have. Go back and give the day more time.</source>
        <translation>Jede bereite Aufgabe dauert länger als die Zeit, die du hast. Geh zurück und gib dem Tag mehr Zeit.</translation>
    </message>
    <message id="planDay.budget.custom.label">
        <source>Time you have today</source>
        <translation>Zeit, die du heute hast</translation>
    </message>
    <message id="planDay.budget.unit.label">
        <source>Unit</source>
        <translation>Einheit</translation>
    </message>
    <message id="planDay.budget.presets">
        <source>Presets</source>
        <translation>Vorgaben</translation>
    </message>
    <message id="planDay.taskCount %lld">
        <source>Ready tasks to fit: %1</source>
        <translation>Bereite Aufgaben zum Einplanen: %1</translation>
    </message>
    <message id="ready.order.today">
        <source>In your order</source>
        <translation>In deiner Reihenfolge</translation>
    </message>
    <message id="intents.add.done %@ %@">
        <source>Added “%1” to %2.</source>
        <translation>„%1“ zu %2 hinzugefügt.</translation>
    </message>
    <message id="intents.ready.some %lld %@">
        <source>Ready now (%1): %2</source>
        <translation>Jetzt bereit (%1): %2</translation>
    </message>
    <message id="intents.ready.none">
        <source>Nothing is ready right now.</source>
        <translation>Gerade ist nichts bereit.</translation>
    </message>
    <message id="intents.complete.done %@">
        <source>Done: %1.</source>
        <translation>Erledigt: %1.</translation>
    </message>
    <message id="intents.error.notFound">
        <source>That task or flow does not exist any more.</source>
        <translation>Diese Aufgabe oder dieser Flow existiert nicht mehr.</translation>
    </message>
    <message id="backup.restore.done.edgesLeftOut %lld">
        <source>Connections left out because they would have led a task back to itself or repeated another: %1.</source>
        <translation>Weggelassene Verbindungen, weil sie eine Aufgabe zu sich selbst zurückgeführt oder eine andere wiederholt hätten: %1.</translation>
    </message>
    <message id="backup.restore.done.safety %@">
        <source>What Fenrow held before is kept in “%1”. Restore that file with Replace to undo this.</source>
        <translation>Der vorherige Stand von Fenrow liegt in „%1“. Stellen Sie diese Datei mit Ersetzen wieder her, um das rückgängig zu machen.</translation>
    </message>
    <message id="backup.restore.failed.title">
        <source>The backup could not be restored</source>
        <translation>Die Sicherung konnte nicht wiederhergestellt werden</translation>
    </message>
    <message id="backup.restore.failed.message">
        <source>Nothing was changed.</source>
        <translation>Nichts wurde geändert.</translation>
    </message>
    <message id="backup.adjusted.title">
        <source>Backup written with changes</source>
        <translation>Sicherung mit Änderungen geschrieben</translation>
    </message>
    <message id="backup.adjusted.message">
        <source>Some values could not be written as they are; they were left out or held to their limits:</source>
        <translation>Einige Werte ließen sich nicht unverändert schreiben; sie wurden weggelassen oder auf ihre Grenzen gesetzt:</translation>
    </message>
    <message id="import.opml.leftOut.title">
        <source>Part of the outline stayed out</source>
        <translation>Ein Teil der Gliederung wurde ausgelassen</translation>
    </message>
    <message id="import.opml.leftOut %1 %2">
        <source>Entries without text left out: %1. Dates outside the calendar left out: %2. Everything else was imported.</source>
        <translation>Ausgelassene Einträge ohne Text: %1. Ausgelassene Daten außerhalb des Kalenders: %2. Alles andere wurde importiert.</translation>
    </message>
    <message id="widget.count.one">
        <source>1 task ready</source>
        <translation>1 Aufgabe bereit</translation>
    </message>
    <message id="widget.count %1">
        <source>%1 tasks ready</source>
        <translation>%1 Aufgaben bereit</translation>
    </message>
    <message id="widget.empty.noTasks">
        <source>Nothing ready: no tasks yet</source>
        <translation>Nichts bereit: noch keine Aufgaben</translation>
    </message>
    <message id="widget.empty.allDone">
        <source>Nothing ready: all done</source>
        <translation>Nichts bereit: alles erledigt</translation>
    </message>
    <message id="widget.empty.allBlocked">
        <source>Nothing ready: everything waits on other tasks</source>
        <translation>Nichts bereit: alles wartet auf andere Aufgaben</translation>
    </message>
    <message id="widget.empty.allDeferred">
        <source>Nothing ready: everything waits for its day</source>
        <translation>Nichts bereit: alles wartet auf seinen Tag</translation>
    </message>
    <message id="widget.empty.allTicked">
        <source>All ticked: Fenrow marks them done when it runs</source>
        <translation>Alle abgehakt: Fenrow erledigt sie, sobald es läuft</translation>
    </message>
    <message id="widget.notWritten">
        <source>Fenrow has not written the Ready list yet. Open Fenrow to make it.</source>
        <translation>Fenrow hat die Liste „Bereit“ noch nicht geschrieben. Fenrow öffnen, um sie anzulegen.</translation>
    </message>
    <message id="widget.outOfDate">
        <source>Open Fenrow to bring this list up to date</source>
        <translation>Fenrow öffnen, um diese Liste zu aktualisieren</translation>
    </message>
    <message id="widget.popup.title">
        <source>Ready</source>
        <translation>Bereit</translation>
    </message>
    <message id="widget.more %1">
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
    <message id="widget.open">
        <source>Open Fenrow</source>
        <translation>Fenrow öffnen</translation>
    </message>
    <message id="widget.capture">
        <source>Quick capture</source>
        <translation>Schnellerfassung</translation>
    </message>
    <message id="widget.quit">
        <source>Quit widget</source>
        <translation>Widget beenden</translation>
    </message>
    <message id="widget.tick.failed">
        <source>The tick could not be saved. Try again, or tick the task in Fenrow.</source>
        <translation>Das Häkchen konnte nicht gespeichert werden. Noch einmal versuchen oder die Aufgabe in Fenrow abhaken.</translation>
    </message>
    <message id="widget.open.failed">
        <source>Fenrow could not be started.</source>
        <translation>Fenrow konnte nicht gestartet werden.</translation>
    </message>
    <message id="widget.tooltip %1">
        <source>Fenrow · %1</source>
        <translation>Fenrow · %1</translation>
    </message>
    <message id="engine.stop">
        <source>Stop</source>
        <translation>Anhalten</translation>
    </message>
    <message id="import.opml.relink.progress">
        <source>Connecting the imported tasks…</source>
        <translation>Die importierten Aufgaben werden verbunden …</translation>
    </message>
    <message id="settings.model.stopLoading">
        <source>Stop Loading</source>
        <translation>Laden abbrechen</translation>
    </message>
    <message id="quickCapture.date.format.withYear">
        <source>ddd, MMM d, yyyy</source>
        <translation>ddd, d. MMM yyyy</translation>
    </message>
    <message id="canvas.access.file">
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message id="canvas.access.after %1">
        <source>After: %1</source>
        <translation>Nach: %1</translation>
    </message>
    <message id="canvas.access.before %1">
        <source>Before: %1</source>
        <translation>Vor: %1</translation>
    </message>
    <message id="canvas.access.subtaskOf %1">
        <source>Subtask of: %1</source>
        <translation>Teilaufgabe von: %1</translation>
    </message>
    <message id="canvas.access.subtasks %1">
        <source>Subtasks: %1</source>
        <translation>Teilaufgaben: %1</translation>
    </message>
    <message id="canvas.access.action.select">
        <source>Select</source>
        <translation>Auswählen</translation>
    </message>
    <message id="canvas.access.action.open">
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message id="canvas.access.action.done">
        <source>Mark done</source>
        <translation>Als erledigt markieren</translation>
    </message>
    <message id="canvas.access.action.undone">
        <source>Mark not done</source>
        <translation>Als nicht erledigt markieren</translation>
    </message>
    <message id="canvas.access.name %1">
        <source>Canvas of %1</source>
        <translation>Arbeitsfläche von %1</translation>
    </message>
    <message id="access.countedTasks %1 %2">
        <source>%1, tasks: %2</source>
        <translation>%1, Aufgaben: %2</translation>
    </message>
</context>
</TS>
