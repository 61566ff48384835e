<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name></name>
    <message id="mainWindow.title">
        <source>Fenrow</source>
        <translation>Fenrow</translation>
    </message>
    <message id="detail.empty.title">
        <source>No flow selected</source>
        <translation>No flow selected</translation>
    </message>
    <message id="detail.empty.message">
        <source>Choose a flow in the sidebar, or create a new one with the + button.</source>
        <translation>Choose a flow in the sidebar, or create a new one with the + button.</translation>
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
        <translation>New flow</translation>
    </message>
    <message id="sidebar.action.quit">
        <source>Quit Fenrow</source>
        <translation>Quit Fenrow</translation>
    </message>
    <message id="sidebar.flow.progress %lld %lld %lld">
        <source>%1 of %3 done · %2 in progress</source>
        <translation>%1 of %3 done · %2 in progress</translation>
    </message>
    <message id="sidebar.flow.progress.complete %lld">
        <source>All %1 done</source>
        <translation>All %1 done</translation>
    </message>
    <message id="sidebar.flow.progress.empty">
        <source>No tasks yet</source>
        <translation>No tasks yet</translation>
    </message>
    <message id="sidebar.flow.rename.placeholder">
        <source>Flow name</source>
        <translation>Flow name</translation>
    </message>
    <message id="sidebar.row.action.rename">
        <source>Rename</source>
        <translation>Rename</translation>
    </message>
    <message id="sidebar.row.action.delete">
        <source>Delete…</source>
        <translation>Delete…</translation>
    </message>
    <message id="sidebar.row.delete.confirm.title %@">
        <source>Delete “%1”?</source>
        <translation>Delete “%1”?</translation>
    </message>
    <message id="sidebar.row.delete.confirm.message">
        <source>The flow and all of its tasks, connections and files will be deleted. Its entries in the archive go too. This cannot be undone.</source>
        <translation>The flow and all of its tasks, connections and files will be deleted. Its entries in the archive go too. This cannot be undone.</translation>
    </message>
    <message id="sidebar.row.delete">
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message id="sidebar.row.delete.confirm.cancel">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="store.failed.title">
        <source>Fenrow cannot open its data</source>
        <translation>Fenrow cannot open its data</translation>
    </message>
    <message id="sample.flow.name">
        <source>Sample: Launch a landing page</source>
        <translation>Sample: Launch a landing page</translation>
    </message>
    <message id="sample.flow.item.offer">
        <source>Define the offer</source>
        <translation>Define the offer</translation>
    </message>
    <message id="sample.flow.item.copy">
        <source>Write the copy</source>
        <translation>Write the copy</translation>
    </message>
    <message id="sample.flow.item.layout">
        <source>Design the layout</source>
        <translation>Design the layout</translation>
    </message>
    <message id="sample.flow.item.build">
        <source>Build the page</source>
        <translation>Build the page</translation>
    </message>
    <message id="sample.flow.item.publish">
        <source>Publish and announce</source>
        <translation>Publish and announce</translation>
    </message>
    <message id="sidebar.flow.untitled">
        <source>Untitled flow</source>
        <translation>Untitled flow</translation>
    </message>
    <message id="sidebar.route.ready">
        <source>Ready</source>
        <translation>Ready</translation>
    </message>
    <message id="ready.title">
        <source>Ready</source>
        <translation>Ready</translation>
    </message>
    <message id="ready.sort.flow">
        <source>Flow</source>
        <translation>Flow</translation>
    </message>
    <message id="ready.sort.dueDate">
        <source>Due date</source>
        <translation>Due date</translation>
    </message>
    <message id="ready.sort.priority">
        <source>Priority</source>
        <translation>Priority</translation>
    </message>
    <message id="ready.sort.estimate">
        <source>Estimate</source>
        <translation>Estimate</translation>
    </message>
    <message id="ready.group.today">
        <source>Today</source>
        <translation>Today</translation>
    </message>
    <message id="ready.group.other">
        <source>Other tasks</source>
        <translation>Other tasks</translation>
    </message>
    <message id="ready.row.complete">
        <source>Mark as done</source>
        <translation>Mark as done</translation>
    </message>
    <message id="ready.row.hasNotes">
        <source>Notes</source>
        <translation>Notes</translation>
    </message>
    <message id="ready.row.priority.high">
        <source>High</source>
        <translation>High</translation>
    </message>
    <message id="ready.row.priority.medium">
        <source>Medium</source>
        <translation>Medium</translation>
    </message>
    <message id="ready.row.priority.low">
        <source>Low</source>
        <translation>Low</translation>
    </message>
    <message id="ready.row.due.today">
        <source>Due today</source>
        <translation>Due today</translation>
    </message>
    <message id="ready.row.due.tomorrow">
        <source>Due tomorrow</source>
        <translation>Due tomorrow</translation>
    </message>
    <message id="ready.row.overdue %@">
        <source>Overdue · %1</source>
        <translation>Overdue · %1</translation>
    </message>
    <message id="ready.row.dateFormat">
        <source>MMM d</source>
        <translation>MMM d</translation>
    </message>
    <message id="ready.row.dateFormat.withYear">
        <source>MMM d, yyyy</source>
        <translation>MMM d, yyyy</translation>
    </message>
    <message id="ready.row.estimate.minutes %lld">
        <source>%1 min</source>
        <translation>%1 min</translation>
    </message>
    <message id="ready.row.estimate.hours %lld">
        <source>%1 h</source>
        <translation>%1 h</translation>
    </message>
    <message id="ready.row.estimate.hoursMinutes %lld %lld">
        <source>%1 h %2 min</source>
        <translation>%1 h %2 min</translation>
    </message>
    <message id="ready.empty.noTasks.title">
        <source>No tasks yet</source>
        <translation>No tasks yet</translation>
    </message>
    <message id="ready.empty.noTasks.message">
        <source>The tasks you can start right away gather here, from all of your flows. Add a few tasks to a flow to begin.</source>
        <translation>The tasks you can start right away gather here, from all of your flows. Add a few tasks to a flow to begin.</translation>
    </message>
    <message id="ready.empty.allDone.title">
        <source>All done</source>
        <translation>All done</translation>
    </message>
    <message id="ready.empty.allDone.message">
        <source>Every task in every flow is finished. Enjoy the quiet, or plan what comes next.</source>
        <translation>Every task in every flow is finished. Enjoy the quiet, or plan what comes next.</translation>
    </message>
    <message id="ready.empty.allBlocked.title">
        <source>Everything is waiting</source>
        <translation>Everything is waiting</translation>
    </message>
    <message id="ready.empty.allBlocked.message">
        <source>Each open task waits for another one to finish first. Look over the connections in your flows.</source>
        <translation>Each open task waits for another one to finish first. Look over the connections in your flows.</translation>
    </message>
    <message id="ready.empty.allDeferred.title">
        <source>Nothing starts today</source>
        <translation>Nothing starts today</translation>
    </message>
    <message id="ready.empty.allDeferred.message">
        <source>Your next tasks have a later start date. They appear here on the day they start.</source>
        <translation>Your next tasks have a later start date. They appear here on the day they start.</translation>
    </message>
    <message id="sidebar.flow.copyName ">
        <source>%1 copy</source>
        <translation>%1 copy</translation>
    </message>
    <message id="archive.day.today">
        <source>Today</source>
        <translation>Today</translation>
    </message>
    <message id="archive.day.yesterday">
        <source>Yesterday</source>
        <translation>Yesterday</translation>
    </message>
    <message id="sidebar.route.archive">
        <source>Archive</source>
        <translation>Archive</translation>
    </message>
    <message id="archive.title">
        <source>Archive</source>
        <translation>Archive</translation>
    </message>
    <message id="archive.search.placeholder">
        <source>Search the archive</source>
        <translation>Search the archive</translation>
    </message>
    <message id="archive.row.repeated">
        <source>Repeated · round %1</source>
        <translation>Repeated · round %1</translation>
    </message>
    <message id="archive.row.restore">
        <source>Restore</source>
        <translation>Restore</translation>
    </message>
    <message id="archive.row.restore.help">
        <source>Put the task back into its flow, marked as done</source>
        <translation>Put the task back into its flow, marked as done</translation>
    </message>
    <message id="archive.row.delete">
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message id="archive.count.label">
        <source>Entries: %1</source>
        <translation>Entries: %1</translation>
    </message>
    <message id="archive.empty.title">
        <source>Nothing archived yet</source>
        <translation>Nothing archived yet</translation>
    </message>
    <message id="archive.empty.message">
        <source>Done tasks you archive from a flow, and each finished round of a repeating task, are kept here by day.</source>
        <translation>Done tasks you archive from a flow, and each finished round of a repeating task, are kept here by day.</translation>
    </message>
    <message id="archive.empty.search.title">
        <source>No matches</source>
        <translation>No matches</translation>
    </message>
    <message id="archive.empty.search.message">
        <source>No archived task has this text in its title or in the name of its flow.</source>
        <translation>No archived task has this text in its title or in the name of its flow.</translation>
    </message>
    <message id="sidebar.template.menu.title">
        <source>New from Template</source>
        <translation>New from Template</translation>
    </message>
    <message id="sidebar.template.menu.help">
        <source>Make a new flow from a saved template</source>
        <translation>Make a new flow from a saved template</translation>
    </message>
    <message id="sidebar.context.duplicate">
        <source>Duplicate</source>
        <translation>Duplicate</translation>
    </message>
    <message id="sidebar.context.saveTemplate">
        <source>Save as Template</source>
        <translation>Save as Template</translation>
    </message>
    <message id="sidebar.row.archiveDone">
        <source>Archive Done Tasks…</source>
        <translation>Archive Done Tasks…</translation>
    </message>
    <message id="archive.confirm.title ">
        <source>Archive the done tasks of “%1”?</source>
        <translation>Archive the done tasks of “%1”?</translation>
    </message>
    <message id="archive.confirm.message">
        <source>They leave the canvas along with their connections. Each one can be restored from the Archive; it comes back done, without connections.</source>
        <translation>They leave the canvas along with their connections. Each one can be restored from the Archive; it comes back done, without connections.</translation>
    </message>
    <message id="archive.confirm.action">
        <source>Archive</source>
        <translation>Archive</translation>
    </message>
    <message id="archive.confirm.cancel">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="menu.file">
        <source>&amp;File</source>
        <translation>&amp;File</translation>
    </message>
    <message id="menu.edit">
        <source>&amp;Edit</source>
        <translation>&amp;Edit</translation>
    </message>
    <message id="menu.quit">
        <source>Quit</source>
        <translation>Quit</translation>
    </message>
    <message id="menu.undo">
        <source>Undo</source>
        <translation>Undo</translation>
    </message>
    <message id="menu.redo">
        <source>Redo</source>
        <translation>Redo</translation>
    </message>
    <message id="shortcut.key.unknown">
        <source>Unknown key</source>
        <translation>Unknown key</translation>
    </message>
    <message id="export.markdown.progress %lld %lld">
        <source>%1 of %2 done</source>
        <translation>%1 of %2 done</translation>
    </message>
    <message id="export.markdown.status.inProgress">
        <source>in progress</source>
        <translation>in progress</translation>
    </message>
    <message id="export.markdown.status.paused">
        <source>paused</source>
        <translation>paused</translation>
    </message>
    <message id="export.markdown.after %@">
        <source>after %1</source>
        <translation>after %1</translation>
    </message>
    <message id="export.markdown.panel.title">
        <source>Export as Markdown</source>
        <translation>Export as Markdown</translation>
    </message>
    <message id="export.markdown.panel.button">
        <source>Export</source>
        <translation>Export</translation>
    </message>
    <message id="export.markdown.failed.title">
        <source>Export failed</source>
        <translation>Export failed</translation>
    </message>
    <message id="export.markdown.failed.message">
        <source>The file could not be written. Check that the folder exists and that you may write to it.</source>
        <translation>The file could not be written. Check that the folder exists and that you may write to it.</translation>
    </message>
    <message id="export.opml.panel.title">
        <source>Export as OPML</source>
        <translation>Export as OPML</translation>
    </message>
    <message id="import.opml.panel.message">
        <source>Choose an OPML outline to import as a new flow</source>
        <translation>Choose an OPML outline to import as a new flow</translation>
    </message>
    <message id="import.opml.panel.button">
        <source>Import</source>
        <translation>Import</translation>
    </message>
    <message id="import.opml.failed.title">
        <source>This file can’t be imported</source>
        <translation>This file can’t be imported</translation>
    </message>
    <message id="import.opml.failed.message">
        <source>It is not an OPML outline with at least one entry, or it is damaged. Nothing was added.</source>
        <translation>It is not an OPML outline with at least one entry, or it is damaged. Nothing was added.</translation>
    </message>
    <message id="sidebar.row.action.exportMarkdown">
        <source>Export as Markdown…</source>
        <translation>Export as Markdown…</translation>
    </message>
    <message id="sidebar.row.action.copyMarkdown">
        <source>Copy as Markdown</source>
        <translation>Copy as Markdown</translation>
    </message>
    <message id="sidebar.context.exportOPML">
        <source>Export as OPML…</source>
        <translation>Export as OPML…</translation>
    </message>
    <message id="menu.exportMarkdown">
        <source>Export as &amp;Markdown…</source>
        <translation>Export as &amp;Markdown…</translation>
    </message>
    <message id="menu.copyMarkdown">
        <source>&amp;Copy as Markdown</source>
        <translation>&amp;Copy as Markdown</translation>
    </message>
    <message id="menu.exportOPML">
        <source>Export as &amp;OPML…</source>
        <translation>Export as &amp;OPML…</translation>
    </message>
    <message id="menu.importOPML">
        <source>&amp;Import OPML…</source>
        <translation>&amp;Import OPML…</translation>
    </message>
    <message id="menu.backUp">
        <source>&amp;Back Up…</source>
        <translation>&amp;Back Up…</translation>
    </message>
    <message id="menu.restoreBackup">
        <source>&amp;Restore from Backup…</source>
        <translation>&amp;Restore from Backup…</translation>
    </message>
    <message id="backup.save.panel.message">
        <source>Choose where to save a backup of all your flows, templates and archive</source>
        <translation>Choose where to save a backup of all your flows, templates and archive</translation>
    </message>
    <message id="backup.save.panel.button">
        <source>Back Up</source>
        <translation>Back Up</translation>
    </message>
    <message id="backup.failed.title">
        <source>Backup failed</source>
        <translation>Backup failed</translation>
    </message>
    <message id="backup.failed.message">
        <source>The backup could not be written. Check that the folder exists and that you may write to it.</source>
        <translation>The backup could not be written. Check that the folder exists and that you may write to it.</translation>
    </message>
    <message id="backup.open.panel.message">
        <source>Choose a Fenrow backup to restore</source>
        <translation>Choose a Fenrow backup to restore</translation>
    </message>
    <message id="backup.open.panel.button">
        <source>Restore</source>
        <translation>Restore</translation>
    </message>
    <message id="backup.restore.unreadable.title">
        <source>This backup can’t be restored</source>
        <translation>This backup can’t be restored</translation>
    </message>
    <message id="backup.restore.unreadable.message">
        <source>The file is not a Fenrow backup, or it is damaged. Nothing was changed.</source>
        <translation>The file is not a Fenrow backup, or it is damaged. Nothing was changed.</translation>
    </message>
    <message id="backup.restore.newer.message">
        <source>The backup was made by a newer version of Fenrow. Update Fenrow to restore it. Nothing was changed.</source>
        <translation>The backup was made by a newer version of Fenrow. Update Fenrow to restore it. Nothing was changed.</translation>
    </message>
    <message id="backup.restore.mode.title">
        <source>Restore backup</source>
        <translation>Restore backup</translation>
    </message>
    <message id="backup.restore.mode.message %lld">
        <source>Flows in the backup: %1. Merge adds the flows you don’t have yet and keeps everything else. Replace first deletes all your flows, templates and archive entries.</source>
        <translation>Flows in the backup: %1. Merge adds the flows you don’t have yet and keeps everything else. Replace first deletes all your flows, templates and archive entries.</translation>
    </message>
    <message id="backup.restore.mode.merge">
        <source>Merge</source>
        <translation>Merge</translation>
    </message>
    <message id="backup.restore.mode.replace">
        <source>Replace</source>
        <translation>Replace</translation>
    </message>
    <message id="backup.restore.replace.confirm.title">
        <source>Replace all your data?</source>
        <translation>Replace all your data?</translation>
    </message>
    <message id="backup.restore.replace.confirm.message">
        <source>All flows, templates and archive entries in Fenrow are deleted and replaced by those of the backup. This can’t be undone.</source>
        <translation>All flows, templates and archive entries in Fenrow are deleted and replaced by those of the backup. This can’t be undone.</translation>
    </message>
    <message id="backup.restore.done.title">
        <source>Backup restored</source>
        <translation>Backup restored</translation>
    </message>
    <message id="backup.restore.done.message %lld">
        <source>Flows restored: %1.</source>
        <translation>Flows restored: %1.</translation>
    </message>
    <message id="backup.restore.done.nothing">
        <source>Every flow in the backup is already here. Nothing was added.</source>
        <translation>Every flow in the backup is already here. Nothing was added.</translation>
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
        <translation>Not started</translation>
    </message>
    <message id="inspector.status.inProgress">
        <source>In progress</source>
        <translation>In progress</translation>
    </message>
    <message id="inspector.status.paused">
        <source>Paused</source>
        <translation>Paused</translation>
    </message>
    <message id="inspector.status.done">
        <source>Done</source>
        <translation>Done</translation>
    </message>
    <message id="inspector.priority.label">
        <source>Priority</source>
        <translation>Priority</translation>
    </message>
    <message id="inspector.priority.none">
        <source>None</source>
        <translation>None</translation>
    </message>
    <message id="inspector.priority.low">
        <source>Low</source>
        <translation>Low</translation>
    </message>
    <message id="inspector.priority.medium">
        <source>Medium</source>
        <translation>Medium</translation>
    </message>
    <message id="inspector.priority.high">
        <source>High</source>
        <translation>High</translation>
    </message>
    <message id="inspector.color.label">
        <source>Colour</source>
        <translation>Colour</translation>
    </message>
    <message id="inspector.estimate.label">
        <source>Estimate</source>
        <translation>Estimate</translation>
    </message>
    <message id="inspector.estimate.placeholder">
        <source>None</source>
        <translation>None</translation>
    </message>
    <message id="inspector.estimate.unit">
        <source>min</source>
        <translation>min</translation>
    </message>
    <message id="inspector.startDate.label">
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message id="inspector.dueDate.label">
        <source>Due</source>
        <translation>Due</translation>
    </message>
    <message id="inspector.date.add">
        <source>Add date</source>
        <translation>Add date</translation>
    </message>
    <message id="inspector.date.pick">
        <source>Choose a date</source>
        <translation>Choose a date</translation>
    </message>
    <message id="inspector.date.clear">
        <source>Remove date</source>
        <translation>Remove date</translation>
    </message>
    <message id="inspector.deferred.note %@">
        <source>Not ready before %1.</source>
        <translation>Not ready before %1.</translation>
    </message>
    <message id="inspector.recurrence.label">
        <source>Repeat</source>
        <translation>Repeat</translation>
    </message>
    <message id="inspector.recurrence.never">
        <source>Never</source>
        <translation>Never</translation>
    </message>
    <message id="inspector.recurrence.daily">
        <source>Every day</source>
        <translation>Every day</translation>
    </message>
    <message id="inspector.recurrence.weekdays">
        <source>Every weekday</source>
        <translation>Every weekday</translation>
    </message>
    <message id="inspector.recurrence.weekly">
        <source>Every week</source>
        <translation>Every week</translation>
    </message>
    <message id="inspector.recurrence.monthly">
        <source>Every month</source>
        <translation>Every month</translation>
    </message>
    <message id="inspector.recurrence.afterDone">
        <source>Some days after done</source>
        <translation>Some days after done</translation>
    </message>
    <message id="inspector.recurrence.interval.label">
        <source>Every</source>
        <translation>Every</translation>
    </message>
    <message id="inspector.recurrence.interval.unit">
        <source>days</source>
        <translation>days</translation>
    </message>
    <message id="inspector.notes.label">
        <source>Notes</source>
        <translation>Notes</translation>
    </message>
    <message id="inspector.notes.placeholder">
        <source>Add notes</source>
        <translation>Add notes</translation>
    </message>
    <message id="inspector.notes.resize">
        <source>Notes height</source>
        <translation>Notes height</translation>
    </message>
    <message id="inspector.checklist.label">
        <source>Checklist</source>
        <translation>Checklist</translation>
    </message>
    <message id="inspector.checklist.count %lld %lld">
        <source>%1 of %2 done</source>
        <translation>%1 of %2 done</translation>
    </message>
    <message id="inspector.checklist.add.placeholder">
        <source>Add a step</source>
        <translation>Add a step</translation>
    </message>
    <message id="inspector.checklist.toggle">
        <source>Tick step</source>
        <translation>Tick step</translation>
    </message>
    <message id="inspector.checklist.open">
        <source>Open step</source>
        <translation>Open step</translation>
    </message>
    <message id="inspector.checklist.done">
        <source>Done step</source>
        <translation>Done step</translation>
    </message>
    <message id="inspector.checklist.delete">
        <source>Delete step</source>
        <translation>Delete step</translation>
    </message>
    <message id="inspector.blockedBy.label">
        <source>Waits for</source>
        <translation>Waits for</translation>
    </message>
    <message id="inspector.blockedBy.empty">
        <source>Nothing: free to start</source>
        <translation>Nothing: free to start</translation>
    </message>
    <message id="inspector.blocks.label">
        <source>Holds up</source>
        <translation>Holds up</translation>
    </message>
    <message id="inspector.blocks.empty">
        <source>No other task</source>
        <translation>No other task</translation>
    </message>
    <message id="inspector.empty.title">
        <source>No task selected</source>
        <translation>No task selected</translation>
    </message>
    <message id="inspector.empty.message">
        <source>Select one task on the canvas to see and edit its details.</source>
        <translation>Select one task on the canvas to see and edit its details.</translation>
    </message>
    <message id="inspector.file.label">
        <source>File</source>
        <translation>File</translation>
    </message>
    <message id="inspector.calendar.today">
        <source>Today</source>
        <translation>Today</translation>
    </message>
    <message id="inspector.calendar.tomorrow">
        <source>Tomorrow</source>
        <translation>Tomorrow</translation>
    </message>
    <message id="inspector.calendar.nextWeek">
        <source>Next week</source>
        <translation>Next week</translation>
    </message>
    <message id="canvas.node.new">
        <source>New task</source>
        <translation>New task</translation>
    </message>
    <message id="engine.availability.available">
        <source>The on-device language model is ready.</source>
        <translation>The on-device language model is ready.</translation>
    </message>
    <message id="engine.availability.deviceNotEligible">
        <source>This computer cannot run the language model. Everything still works by hand.</source>
        <translation>This computer cannot run the language model. Everything still works by hand.</translation>
    </message>
    <message id="engine.availability.appleIntelligenceNotEnabled">
        <source>The language model is switched off in the system settings. Everything still works by hand.</source>
        <translation>The language model is switched off in the system settings. Everything still works by hand.</translation>
    </message>
    <message id="engine.availability.modelNotReady">
        <source>The language model is not ready yet. Everything still works by hand.</source>
        <translation>The language model is not ready yet. Everything still works by hand.</translation>
    </message>
    <message id="engine.availability.frameworkUnavailable">
        <source>No on-device language model is available. Everything still works by hand.</source>
        <translation>No on-device language model is available. Everything still works by hand.</translation>
    </message>
    <message id="engine.availability.modelUnusable">
        <source>The chosen language model cannot be used. Everything still works by hand.</source>
        <translation>The chosen language model cannot be used. Everything still works by hand.</translation>
    </message>
    <message id="banner.engineUnavailable.dismiss">
        <source>Dismiss</source>
        <translation>Dismiss</translation>
    </message>
    <message id="planDay.plan">
        <source>Plan my day</source>
        <translation>Plan my day</translation>
    </message>
    <message id="planDay.planManual">
        <source>Fit into my time</source>
        <translation>Fit into my time</translation>
    </message>
    <message id="planDay.subtitle">
        <source>The language model orders your ready tasks, then they are fitted into the time you have.</source>
        <translation>The language model orders your ready tasks, then they are fitted into the time you have.</translation>
    </message>
    <message id="planDay.subtitle.manual">
        <source>Your ready tasks, in the order of the Ready list, are fitted into the time you have.</source>
        <translation>Your ready tasks, in the order of the Ready list, are fitted into the time you have.</translation>
    </message>
    <message id="planDay.order.ai">
        <source>Order by the language model</source>
        <translation>Order by the language model</translation>
    </message>
    <message id="planDay.order.custom">
        <source>Your order</source>
        <translation>Your order</translation>
    </message>
    <message id="planDay.budget.unit.minutes">
        <source>minutes</source>
        <translation>minutes</translation>
    </message>
    <message id="planDay.budget.unit.hours">
        <source>hours</source>
        <translation>hours</translation>
    </message>
    <message id="planDay.summary">
        <source>%1 of %2 planned</source>
        <translation>%1 of %2 planned</translation>
    </message>
    <message id="planDay.summary.overflow %lld">
        <source>%1 more do not fit.</source>
        <translation>%1 more do not fit.</translation>
    </message>
    <message id="newFlowFromText.create">
        <source>Create flow</source>
        <translation>Create flow</translation>
    </message>
    <message id="newFlowFromText.createBlank">
        <source>Create empty flow</source>
        <translation>Create empty flow</translation>
    </message>
    <message id="newFlowFromText.noTasksFound.title">
        <source>No tasks found</source>
        <translation>No tasks found</translation>
    </message>
    <message id="newFlowFromText.noTasksFound.message">
        <source>The text holds no steps to turn into tasks. Add some detail, or create an empty flow.</source>
        <translation>The text holds no steps to turn into tasks. Add some detail, or create an empty flow.</translation>
    </message>
    <message id="newFlowFromText.failed.title">
        <source>Could not create the flow</source>
        <translation>Could not create the flow</translation>
    </message>
    <message id="newFlowFromText.failed.message">
        <source>The language model could not read the text. Try again, or create an empty flow.</source>
        <translation>The language model could not read the text. Try again, or create an empty flow.</translation>
    </message>
    <message id="quickCapture.picker.newFlow">
        <source>New flow</source>
        <translation>New flow</translation>
    </message>
    <message id="canvas.node.status.pending">
        <source>Not started</source>
        <translation>Not started</translation>
    </message>
    <message id="canvas.node.status.inProgress">
        <source>In progress</source>
        <translation>In progress</translation>
    </message>
    <message id="canvas.node.status.done">
        <source>Done</source>
        <translation>Done</translation>
    </message>
    <message id="canvas.node.status.paused">
        <source>Paused</source>
        <translation>Paused</translation>
    </message>
    <message id="canvas.node.starts ">
        <source>Starts %1</source>
        <translation>Starts %1</translation>
    </message>
    <message id="canvas.node.waiting ">
        <source>Waiting on %1</source>
        <translation>Waiting on %1</translation>
    </message>
    <message id="canvas.node.ready">
        <source>Ready</source>
        <translation>Ready</translation>
    </message>
    <message id="canvas.node.status.label">
        <source>Status</source>
        <translation>Status</translation>
    </message>
    <message id="canvas.node.deferred.help">
        <source>Not before this day</source>
        <translation>Not before this day</translation>
    </message>
    <message id="canvas.node.due.label">
        <source>Due date</source>
        <translation>Due date</translation>
    </message>
    <message id="canvas.node.repeat.label">
        <source>Repeats</source>
        <translation>Repeats</translation>
    </message>
    <message id="canvas.node.checklist.help">
        <source>Steps done</source>
        <translation>Steps done</translation>
    </message>
    <message id="canvas.node.priority.label">
        <source>Priority</source>
        <translation>Priority</translation>
    </message>
    <message id="canvas.cycleRejection">
        <source>That connection would make a loop</source>
        <translation>That connection would make a loop</translation>
    </message>
    <message id="canvas.file.drop.tooLarge ">
        <source>%1 is too large to attach (%2)</source>
        <translation>%1 is too large to attach (%2)</translation>
    </message>
    <message id="canvas.file.drop.failed ">
        <source>%1 could not be read</source>
        <translation>%1 could not be read</translation>
    </message>
    <message id="canvas.port.label">
        <source>Connect</source>
        <translation>Connect</translation>
    </message>
    <message id="canvas.port.help.collapse">
        <source>Drag to connect; click to fold or unfold the subtasks</source>
        <translation>Drag to connect; click to fold or unfold the subtasks</translation>
    </message>
    <message id="canvas.port.action.collapse">
        <source>Fold subtasks</source>
        <translation>Fold subtasks</translation>
    </message>
    <message id="canvas.port.action.expand">
        <source>Unfold subtasks</source>
        <translation>Unfold subtasks</translation>
    </message>
    <message id="canvas.edge.delete">
        <source>Delete connection</source>
        <translation>Delete connection</translation>
    </message>
    <message id="canvas.fileLink.delete">
        <source>Unlink file</source>
        <translation>Unlink file</translation>
    </message>
    <message id="canvas.node.addChild">
        <source>Add subtask</source>
        <translation>Add subtask</translation>
    </message>
    <message id="canvas.node.rename">
        <source>Rename</source>
        <translation>Rename</translation>
    </message>
    <message id="canvas.node.setColor">
        <source>Color</source>
        <translation>Color</translation>
    </message>
    <message id="canvas.node.color.none">
        <source>No color</source>
        <translation>No color</translation>
    </message>
    <message id="canvas.node.color.red">
        <source>Red</source>
        <translation>Red</translation>
    </message>
    <message id="canvas.node.color.orange">
        <source>Orange</source>
        <translation>Orange</translation>
    </message>
    <message id="canvas.node.color.yellow">
        <source>Yellow</source>
        <translation>Yellow</translation>
    </message>
    <message id="canvas.node.color.green">
        <source>Green</source>
        <translation>Green</translation>
    </message>
    <message id="canvas.node.color.blue">
        <source>Blue</source>
        <translation>Blue</translation>
    </message>
    <message id="canvas.node.color.purple">
        <source>Purple</source>
        <translation>Purple</translation>
    </message>
    <message id="canvas.node.color.pink">
        <source>Pink</source>
        <translation>Pink</translation>
    </message>
    <message id="canvas.node.color.grey">
        <source>Grey</source>
        <translation>Grey</translation>
    </message>
    <message id="canvas.node.resize.reset">
        <source>Reset size</source>
        <translation>Reset size</translation>
    </message>
    <message id="canvas.node.delete">
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message id="canvas.file.open">
        <source>Open</source>
        <translation>Open</translation>
    </message>
    <message id="canvas.file.exportCopy">
        <source>Save a copy…</source>
        <translation>Save a copy…</translation>
    </message>
    <message id="canvas.file.missing">
        <source>The file's contents are missing</source>
        <translation>The file's contents are missing</translation>
    </message>
    <message id="canvas.file.unlinkAll">
        <source>Unlink from all tasks</source>
        <translation>Unlink from all tasks</translation>
    </message>
    <message id="canvas.file.delete">
        <source>Delete file</source>
        <translation>Delete file</translation>
    </message>
    <message id="canvas.file.add">
        <source>Attach file…</source>
        <translation>Attach file…</translation>
    </message>
    <message id="canvas.file.add.prompt">
        <source>Choose files to attach</source>
        <translation>Choose files to attach</translation>
    </message>
    <message id="toolbar.addTask">
        <source>Add task</source>
        <translation>Add task</translation>
    </message>
    <message id="toolbar.addItem">
        <source>Add</source>
        <translation>Add</translation>
    </message>
    <message id="toolbar.attachFile">
        <source>Attach file</source>
        <translation>Attach file</translation>
    </message>
    <message id="toolbar.filter">
        <source>Filter by color</source>
        <translation>Filter by color</translation>
    </message>
    <message id="toolbar.grid">
        <source>Snap to grid</source>
        <translation>Snap to grid</translation>
    </message>
    <message id="toolbar.arrange">
        <source>Arrange as tree</source>
        <translation>Arrange as tree</translation>
    </message>
    <message id="toolbar.archiveDone">
        <source>Archive done tasks</source>
        <translation>Archive done tasks</translation>
    </message>
    <message id="archive.action.archiveDone">
        <source>Archive done</source>
        <translation>Archive done</translation>
    </message>
    <message id="toolbar.filter.off">
        <source>No filter</source>
        <translation>No filter</translation>
    </message>
    <message id="toolbar.filter.clear">
        <source>Clear filter</source>
        <translation>Clear filter</translation>
    </message>
    <message id="toolbar.filter.mode.label">
        <source>Other tasks</source>
        <translation>Other tasks</translation>
    </message>
    <message id="toolbar.filter.mode.dim">
        <source>Dim</source>
        <translation>Dim</translation>
    </message>
    <message id="toolbar.filter.mode.hide">
        <source>Hide</source>
        <translation>Hide</translation>
    </message>
    <message id="toolbar.zoomOut">
        <source>Zoom out</source>
        <translation>Zoom out</translation>
    </message>
    <message id="toolbar.zoomIn">
        <source>Zoom in</source>
        <translation>Zoom in</translation>
    </message>
    <message id="toolbar.zoomToFit">
        <source>Zoom to fit</source>
        <translation>Zoom to fit</translation>
    </message>
    <message id="toolbar.zoomLevel">
        <source>%1%</source>
        <translation>%1%</translation>
    </message>
    <message id="toolbar.progress">
        <source>Progress</source>
        <translation>Progress</translation>
    </message>
    <message id="toolbar.progress %lld %lld">
        <source>%1 of %2 done</source>
        <translation>%1 of %2 done</translation>
    </message>
    <message id="toolbar.progress.short %lld %lld">
        <source>%1/%2</source>
        <translation>%1/%2</translation>
    </message>
    <message id="toolbar.progress.ready %lld %lld %lld">
        <source>%1 of %2 done · %3 ready</source>
        <translation>%1 of %2 done · %3 ready</translation>
    </message>
    <message id="canvas.empty.title">
        <source>An empty flow</source>
        <translation>An empty flow</translation>
    </message>
    <message id="canvas.empty.message">
        <source>Add a first task, then draw from its port to the next one.</source>
        <translation>Add a first task, then draw from its port to the next one.</translation>
    </message>
    <message id="canvas.empty.addButton">
        <source>Add first task</source>
        <translation>Add first task</translation>
    </message>
    <message id="import.opml.relink.title">
        <source>Connect the imported tasks?</source>
        <translation>Connect the imported tasks?</translation>
    </message>
    <message id="import.opml.relink.message">
        <source>The outline brought no dependencies. Fenrow can suggest which tasks have to come first; you can change or delete every connection afterwards.</source>
        <translation>The outline brought no dependencies. Fenrow can suggest which tasks have to come first; you can change or delete every connection afterwards.</translation>
    </message>
    <message id="import.opml.relink.connect">
        <source>Connect</source>
        <translation>Connect</translation>
    </message>
    <message id="import.opml.relink.keep">
        <source>Keep as Is</source>
        <translation>Keep as Is</translation>
    </message>
    <message id="quickCapture.window.title">
        <source>Quick Capture</source>
        <translation>Quick Capture</translation>
    </message>
    <message id="quickCapture.field.placeholder">
        <source>What needs doing? Try “call the bank tomorrow”</source>
        <translation>What needs doing? Try “call the bank tomorrow”</translation>
    </message>
    <message id="quickCapture.picker.label">
        <source>Flow</source>
        <translation>Flow</translation>
    </message>
    <message id="quickCapture.date.due %@">
        <source>Due %1</source>
        <translation>Due %1</translation>
    </message>
    <message id="quickCapture.date.help %@">
        <source>Read from your text: due %1. Remove it to keep those words in the title.</source>
        <translation>Read from your text: due %1. Remove it to keep those words in the title.</translation>
    </message>
    <message id="quickCapture.date.dismiss">
        <source>Remove date</source>
        <translation>Remove date</translation>
    </message>
    <message id="quickCapture.action.save">
        <source>Add task</source>
        <translation>Add task</translation>
    </message>
    <message id="quickCapture.action.cancel">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="quickCapture.hint">
        <source>Return adds · Esc closes</source>
        <translation>Return adds · Esc closes</translation>
    </message>
    <message id="quickCapture.date.format">
        <source>ddd, MMM d</source>
        <translation>ddd, MMM d</translation>
    </message>
    <message id="sidebar.action.settings">
        <source>Settings</source>
        <translation>Settings</translation>
    </message>
    <message id="menu.settings">
        <source>Settings…</source>
        <translation>Settings…</translation>
    </message>
    <message id="settings.title">
        <source>Fenrow Settings</source>
        <translation>Fenrow Settings</translation>
    </message>
    <message id="settings.page.general">
        <source>General</source>
        <translation>General</translation>
    </message>
    <message id="settings.page.shortcuts">
        <source>Shortcuts</source>
        <translation>Shortcuts</translation>
    </message>
    <message id="settings.page.appearance">
        <source>Appearance</source>
        <translation>Appearance</translation>
    </message>
    <message id="settings.page.language">
        <source>Language</source>
        <translation>Language</translation>
    </message>
    <message id="settings.page.data">
        <source>Data</source>
        <translation>Data</translation>
    </message>
    <message id="settings.page.model">
        <source>Language model</source>
        <translation>Language model</translation>
    </message>
    <message id="settings.model.privacy">
        <source>The model runs on this computer; nothing you write leaves it.</source>
        <translation>The model runs on this computer; nothing you write leaves it.</translation>
    </message>
    <message id="settings.model.chosen.title">
        <source>Chosen model</source>
        <translation>Chosen model</translation>
    </message>
    <message id="settings.model.details">
        <source>%1 · %2</source>
        <translation>%1 · %2</translation>
    </message>
    <message id="settings.model.state.none">
        <source>No model is chosen. Until one is, everything is done by hand.</source>
        <translation>No model is chosen. Until one is, everything is done by hand.</translation>
    </message>
    <message id="settings.model.state.idle">
        <source>Not loaded yet; it loads when a feature first needs it.</source>
        <translation>Not loaded yet; it loads when a feature first needs it.</translation>
    </message>
    <message id="settings.model.state.loading">
        <source>Loading the model…</source>
        <translation>Loading the model…</translation>
    </message>
    <message id="settings.model.state.ready">
        <source>Loaded: %1, with a context of %2 tokens.</source>
        <translation>Loaded: %1, with a context of %2 tokens.</translation>
    </message>
    <message id="settings.model.state.failed">
        <source>This file cannot be used: %1</source>
        <translation>This file cannot be used: %1</translation>
    </message>
    <message id="settings.model.state.unavailable">
        <source>The model cannot run here: %1</source>
        <translation>The model cannot run here: %1</translation>
    </message>
    <message id="settings.model.choose">
        <source>Choose File…</source>
        <translation>Choose File…</translation>
    </message>
    <message id="settings.model.choose.dialog">
        <source>Choose a Language Model</source>
        <translation>Choose a Language Model</translation>
    </message>
    <message id="settings.model.choose.filter">
        <source>GGUF models (*.gguf)</source>
        <translation>GGUF models (*.gguf)</translation>
    </message>
    <message id="settings.model.remove">
        <source>Remove</source>
        <translation>Remove</translation>
    </message>
    <message id="settings.model.refused.notFound">
        <source>%1 was not found.</source>
        <translation>%1 was not found.</translation>
    </message>
    <message id="settings.model.refused.unreadable">
        <source>%1 cannot be read.</source>
        <translation>%1 cannot be read.</translation>
    </message>
    <message id="settings.model.refused.notModel">
        <source>%1 is not a GGUF model file.</source>
        <translation>%1 is not a GGUF model file.</translation>
    </message>
    <message id="settings.model.refused.kept">
        <source>The chosen model stays as it was.</source>
        <translation>The chosen model stays as it was.</translation>
    </message>
    <message id="settings.model.try.title">
        <source>Try it</source>
        <translation>Try it</translation>
    </message>
    <message id="settings.model.try.caption">
        <source>Runs one short request and measures how fast the model answers.</source>
        <translation>Runs one short request and measures how fast the model answers.</translation>
    </message>
    <message id="settings.model.try">
        <source>Try It</source>
        <translation>Try It</translation>
    </message>
    <message id="settings.model.trial.running">
        <source>Running a short request…</source>
        <translation>Running a short request…</translation>
    </message>
    <message id="settings.model.trial.result">
        <source>%1 tokens in %2 s (%3 tokens per second)</source>
        <translation>%1 tokens in %2 s (%3 tokens per second)</translation>
    </message>
    <message id="settings.model.trial.failed">
        <source>The trial failed: %1</source>
        <translation>The trial failed: %1</translation>
    </message>
    <message id="settings.model.found.title">
        <source>On this computer</source>
        <translation>On this computer</translation>
    </message>
    <message id="settings.model.found.caption">
        <source>Models already downloaded with llama.cpp, LM Studio, GPT4All or Ollama, from Hugging Face, or into Downloads.</source>
        <translation>Models already downloaded with llama.cpp, LM Studio, GPT4All or Ollama, from Hugging Face, or into Downloads.</translation>
    </message>
    <message id="settings.model.found.looking">
        <source>Looking…</source>
        <translation>Looking…</translation>
    </message>
    <message id="settings.model.found.none">
        <source>No models found in those folders.</source>
        <translation>No models found in those folders.</translation>
    </message>
    <message id="settings.model.found.item">
        <source>%1 — %2 · %3</source>
        <translation>%1 — %2 · %3</translation>
    </message>
    <message id="settings.model.use">
        <source>Use</source>
        <translation>Use</translation>
    </message>
    <message id="banner.engineUnavailable.chooseModel">
        <source>Choose a model…</source>
        <translation>Choose a model…</translation>
    </message>
    <message id="settings.page.about">
        <source>About</source>
        <translation>About</translation>
    </message>
    <message id="settings.general.startup.title">
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message id="settings.general.launchAtLogin">
        <source>Open Fenrow when I log in</source>
        <translation>Open Fenrow when I log in</translation>
    </message>
    <message id="settings.general.widgetAtLogin">
        <source>Show the Ready list in the tray when I log in</source>
        <translation>Show the Ready list in the tray when I log in</translation>
    </message>
    <message id="settings.general.launchAtLogin.failed">
        <source>Fenrow could not change its autostart entry. Check that you may write to %1.</source>
        <translation>Fenrow could not change its autostart entry. Check that you may write to %1.</translation>
    </message>
    <message id="settings.general.reminders.title">
        <source>Reminders</source>
        <translation>Reminders</translation>
    </message>
    <message id="settings.general.dueReminders">
        <source>Remind me of tasks on their due day</source>
        <translation>Remind me of tasks on their due day</translation>
    </message>
    <message id="settings.general.dueReminderHour">
        <source>Time of the reminder</source>
        <translation>Time of the reminder</translation>
    </message>
    <message id="settings.general.morningDigest">
        <source>Send a morning summary of the day's tasks</source>
        <translation>Send a morning summary of the day's tasks</translation>
    </message>
    <message id="notification.due.body">
        <source>Due today</source>
        <translation>Due today</translation>
    </message>
    <message id="notification.digest.title">
        <source>Ready to work on today</source>
        <translation>Ready to work on today</translation>
    </message>
    <message id="notification.open">
        <source>Open</source>
        <translation>Open</translation>
    </message>
    <message id="settings.general.planDay.title">
        <source>Plan Day</source>
        <translation>Plan Day</translation>
    </message>
    <message id="settings.general.dayPlanBudget">
        <source>Time available per day</source>
        <translation>Time available per day</translation>
    </message>
    <message id="settings.general.dayPlanBudget.minutes">
        <source>minutes</source>
        <translation>minutes</translation>
    </message>
    <message id="settings.general.dayPlanBudget.hours">
        <source>hours</source>
        <translation>hours</translation>
    </message>
    <message id="settings.general.filter.title">
        <source>Filters</source>
        <translation>Filters</translation>
    </message>
    <message id="settings.general.filterMode">
        <source>Tasks a filter leaves out</source>
        <translation>Tasks a filter leaves out</translation>
    </message>
    <message id="settings.general.filterMode.dim">
        <source>Dim them</source>
        <translation>Dim them</translation>
    </message>
    <message id="settings.general.filterMode.hide">
        <source>Hide them</source>
        <translation>Hide them</translation>
    </message>
    <message id="settings.general.quickCapture.title">
        <source>Quick capture</source>
        <translation>Quick capture</translation>
    </message>
    <message id="settings.general.quickCapture.subtitle">
        <source>Opens the capture panel from any application while Fenrow is running.</source>
        <translation>Opens the capture panel from any application while Fenrow is running.</translation>
    </message>
    <message id="shortcut.recorder.recording">
        <source>Press keys…</source>
        <translation>Press keys…</translation>
    </message>
    <message id="settings.shortcuts.needsModifier">
        <source>A shortcut needs Ctrl, Alt, Shift or Meta. Try again, or press Esc to keep the old one.</source>
        <translation>A shortcut needs Ctrl, Alt, Shift or Meta. Try again, or press Esc to keep the old one.</translation>
    </message>
    <message id="settings.shortcuts.unsupportedKey">
        <source>This key can't be part of a shortcut. Try a letter, a digit or a punctuation key, or press Esc.</source>
        <translation>This key can't be part of a shortcut. Try a letter, a digit or a punctuation key, or press Esc.</translation>
    </message>
    <message id="settings.shortcuts.conflict">
        <source>Also used by: %1</source>
        <translation>Also used by: %1</translation>
    </message>
    <message id="settings.shortcuts.globalUnavailable">
        <source>This shortcut works only inside Fenrow: the desktop did not let Fenrow claim it. To open the capture panel from any application, assign a shortcut to this command in your desktop's keyboard settings:</source>
        <translation>This shortcut works only inside Fenrow: the desktop did not let Fenrow claim it. To open the capture panel from any application, assign a shortcut to this command in your desktop's keyboard settings:</translation>
    </message>
    <message id="settings.shortcuts.action.undo">
        <source>Undo</source>
        <translation>Undo</translation>
    </message>
    <message id="settings.shortcuts.action.redo">
        <source>Redo</source>
        <translation>Redo</translation>
    </message>
    <message id="settings.shortcuts.action.newFlowFromText">
        <source>New flow from text</source>
        <translation>New flow from text</translation>
    </message>
    <message id="settings.shortcuts.action.findInFlow">
        <source>Find in flow</source>
        <translation>Find in flow</translation>
    </message>
    <message id="settings.shortcuts.action.exportMarkdown">
        <source>Export as Markdown</source>
        <translation>Export as Markdown</translation>
    </message>
    <message id="settings.shortcuts.action.copyMarkdown">
        <source>Copy as Markdown</source>
        <translation>Copy as Markdown</translation>
    </message>
    <message id="settings.shortcuts.action.zoomIn">
        <source>Zoom in</source>
        <translation>Zoom in</translation>
    </message>
    <message id="settings.shortcuts.action.zoomOut">
        <source>Zoom out</source>
        <translation>Zoom out</translation>
    </message>
    <message id="settings.shortcuts.action.zoomToFit">
        <source>Zoom to fit</source>
        <translation>Zoom to fit</translation>
    </message>
    <message id="settings.shortcuts.reset">
        <source>Restore default shortcuts</source>
        <translation>Restore default shortcuts</translation>
    </message>
    <message id="settings.shortcuts.reference.title">
        <source>On the canvas</source>
        <translation>On the canvas</translation>
    </message>
    <message id="settings.shortcuts.reference.rename">
        <source>Rename the selected task</source>
        <translation>Rename the selected task</translation>
    </message>
    <message id="settings.shortcuts.reference.toggleDone">
        <source>Mark done or not done</source>
        <translation>Mark done or not done</translation>
    </message>
    <message id="settings.shortcuts.reference.addAfter">
        <source>Add the next task</source>
        <translation>Add the next task</translation>
    </message>
    <message id="settings.shortcuts.reference.addBefore">
        <source>Add a task before</source>
        <translation>Add a task before</translation>
    </message>
    <message id="settings.shortcuts.reference.delete">
        <source>Delete the selection</source>
        <translation>Delete the selection</translation>
    </message>
    <message id="settings.shortcuts.reference.delete.keys">
        <source>Delete or Backspace</source>
        <translation>Delete or Backspace</translation>
    </message>
    <message id="settings.shortcuts.reference.deselect">
        <source>Clear the selection</source>
        <translation>Clear the selection</translation>
    </message>
    <message id="settings.shortcuts.reference.move">
        <source>Select the nearest task in that direction</source>
        <translation>Select the nearest task in that direction</translation>
    </message>
    <message id="settings.shortcuts.reference.follow">
        <source>Follow a connection</source>
        <translation>Follow a connection</translation>
    </message>
    <message id="settings.shortcuts.reference.multiSelect">
        <source>Add to the selection</source>
        <translation>Add to the selection</translation>
    </message>
    <message id="settings.shortcuts.reference.multiSelect.keys">
        <source>Shift+click</source>
        <translation>Shift+click</translation>
    </message>
    <message id="settings.shortcuts.reference.pan">
        <source>Move the canvas</source>
        <translation>Move the canvas</translation>
    </message>
    <message id="settings.shortcuts.reference.pan.keys">
        <source>Space+drag</source>
        <translation>Space+drag</translation>
    </message>
    <message id="settings.shortcuts.reference.caption">
        <source>These keys work while the canvas has the focus and can't be changed.</source>
        <translation>These keys work while the canvas has the focus and can't be changed.</translation>
    </message>
    <message id="settings.appearance.theme.title">
        <source>Theme</source>
        <translation>Theme</translation>
    </message>
    <message id="settings.appearance.theme.auto">
        <source>Same as the system</source>
        <translation>Same as the system</translation>
    </message>
    <message id="settings.appearance.theme.light">
        <source>Light</source>
        <translation>Light</translation>
    </message>
    <message id="settings.appearance.theme.dark">
        <source>Dark</source>
        <translation>Dark</translation>
    </message>
    <message id="settings.appearance.theme.caption">
        <source>“Same as the system” follows the dark or light choice of your desktop.</source>
        <translation>“Same as the system” follows the dark or light choice of your desktop.</translation>
    </message>
    <message id="settings.appearance.palette.title">
        <source>Accent colour</source>
        <translation>Accent colour</translation>
    </message>
    <message id="settings.appearance.palette.violet">
        <source>Violet</source>
        <translation>Violet</translation>
    </message>
    <message id="settings.appearance.palette.blue">
        <source>Blue</source>
        <translation>Blue</translation>
    </message>
    <message id="settings.appearance.palette.green">
        <source>Green</source>
        <translation>Green</translation>
    </message>
    <message id="settings.appearance.palette.orange">
        <source>Orange</source>
        <translation>Orange</translation>
    </message>
    <message id="settings.appearance.palette.pink">
        <source>Pink</source>
        <translation>Pink</translation>
    </message>
    <message id="settings.appearance.palette.graphite">
        <source>Graphite</source>
        <translation>Graphite</translation>
    </message>
    <message id="settings.appearance.canvas.title">
        <source>Canvas</source>
        <translation>Canvas</translation>
    </message>
    <message id="settings.appearance.grid">
        <source>Show the dot grid</source>
        <translation>Show the dot grid</translation>
    </message>
    <message id="settings.appearance.sizeByEstimate">
        <source>Size cards by their estimate</source>
        <translation>Size cards by their estimate</translation>
    </message>
    <message id="settings.language.caption">
        <source>Fenrow switches language at once, without a restart.</source>
        <translation>Fenrow switches language at once, without a restart.</translation>
    </message>
    <message id="settings.language.system">
        <source>Same as the system</source>
        <translation>Same as the system</translation>
    </message>
    <message id="settings.about.version">
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message id="settings.about.tagline">
        <source>Plan projects as flows of tasks and work from what is ready.</source>
        <translation>Plan projects as flows of tasks and work from what is ready.</translation>
    </message>
    <message id="settings.about.files.title">
        <source>Your files</source>
        <translation>Your files</translation>
    </message>
    <message id="settings.about.dataFolder">
        <source>Open the data folder</source>
        <translation>Open the data folder</translation>
    </message>
    <message id="settings.about.settingsFile">
        <source>Open the settings file</source>
        <translation>Open the settings file</translation>
    </message>
    <message id="settings.data.autoArchive.title">
        <source>Archive</source>
        <translation>Archive</translation>
    </message>
    <message id="settings.data.autoArchive.label">
        <source>Move done tasks to the archive</source>
        <translation>Move done tasks to the archive</translation>
    </message>
    <message id="settings.data.autoArchive.caption">
        <source>Tasks done longer ago than this leave their flow and wait in the archive.</source>
        <translation>Tasks done longer ago than this leave their flow and wait in the archive.</translation>
    </message>
    <message id="settings.data.autoArchive.off">
        <source>Never</source>
        <translation>Never</translation>
    </message>
    <message id="settings.data.autoArchive.oneDay">
        <source>After 1 day</source>
        <translation>After 1 day</translation>
    </message>
    <message id="settings.data.autoArchive.days">
        <source>After %1 days</source>
        <translation>After %1 days</translation>
    </message>
    <message id="settings.data.autoBackup.title">
        <source>Automatic backup</source>
        <translation>Automatic backup</translation>
    </message>
    <message id="settings.data.autoBackup.choose">
        <source>Choose Folder…</source>
        <translation>Choose Folder…</translation>
    </message>
    <message id="settings.data.autoBackup.now">
        <source>Back Up Now</source>
        <translation>Back Up Now</translation>
    </message>
    <message id="settings.data.autoBackup.off">
        <source>Turn Off</source>
        <translation>Turn Off</translation>
    </message>
    <message id="settings.data.autoBackup.caption">
        <source>Once a week Fenrow writes a backup into this folder and keeps the five newest.</source>
        <translation>Once a week Fenrow writes a backup into this folder and keeps the five newest.</translation>
    </message>
    <message id="settings.data.autoBackup.none">
        <source>No folder chosen: automatic backups are off.</source>
        <translation>No folder chosen: automatic backups are off.</translation>
    </message>
    <message id="settings.data.autoBackup.last">
        <source>Last backup: %1</source>
        <translation>Last backup: %1</translation>
    </message>
    <message id="settings.data.autoBackup.never">
        <source>No backup written yet.</source>
        <translation>No backup written yet.</translation>
    </message>
    <message id="settings.data.autoBackup.failed">
        <source>The last backup could not be written. Check that the folder still exists and that you may write to it.</source>
        <translation>The last backup could not be written. Check that the folder still exists and that you may write to it.</translation>
    </message>
    <message id="settings.data.templates.title">
        <source>Templates</source>
        <translation>Templates</translation>
    </message>
    <message id="settings.data.templates.empty">
        <source>No templates yet. Save a flow as a template from its menu in the sidebar.</source>
        <translation>No templates yet. Save a flow as a template from its menu in the sidebar.</translation>
    </message>
    <message id="settings.data.templates.delete">
        <source>Delete template</source>
        <translation>Delete template</translation>
    </message>
    <message id="menu.quickCapture">
        <source>&amp;Quick Capture…</source>
        <translation>&amp;Quick Capture…</translation>
    </message>
    <message id="menu.helpMenu">
        <source>&amp;Help</source>
        <translation>&amp;Help</translation>
    </message>
    <message id="menu.help">
        <source>Fenrow &amp;Help</source>
        <translation>Fenrow &amp;Help</translation>
    </message>
    <message id="menu.about">
        <source>&amp;About Fenrow</source>
        <translation>&amp;About Fenrow</translation>
    </message>
    <message id="menu.restartOnboarding">
        <source>Show the &amp;Welcome Again</source>
        <translation>Show the &amp;Welcome Again</translation>
    </message>
    <message id="onboarding.welcome.title">
        <source>Welcome to Fenrow</source>
        <translation>Welcome to Fenrow</translation>
    </message>
    <message id="onboarding.welcome.message">
        <source>Plan each project as a flow of tasks, and always know what you can do next.</source>
        <translation>Plan each project as a flow of tasks, and always know what you can do next.</translation>
    </message>
    <message id="onboarding.flows.title">
        <source>A project is a flow</source>
        <translation>A project is a flow</translation>
    </message>
    <message id="onboarding.flows.message">
        <source>Tasks are cards on a canvas. Connect them to say what comes first: a task waits until the ones before it are done.</source>
        <translation>Tasks are cards on a canvas. Connect them to say what comes first: a task waits until the ones before it are done.</translation>
    </message>
    <message id="onboarding.ready.title">
        <source>Work from the Ready list</source>
        <translation>Work from the Ready list</translation>
    </message>
    <message id="onboarding.ready.message">
        <source>Everything you can start now, from all your flows, in one list. Tick a task off and whatever it held up moves in.</source>
        <translation>Everything you can start now, from all your flows, in one list. Tick a task off and whatever it held up moves in.</translation>
    </message>
    <message id="onboarding.capture.title">
        <source>Capture in a moment</source>
        <translation>Capture in a moment</translation>
    </message>
    <message id="onboarding.capture.message %@">
        <source>Press %1 to note a task without leaving what you are doing. Words like “tomorrow” or “next friday” set its due date.</source>
        <translation>Press %1 to note a task without leaving what you are doing. Words like “tomorrow” or “next friday” set its due date.</translation>
    </message>
    <message id="onboarding.capture.messageInsideOnly %@ %@">
        <source>Press %1 to note a task while Fenrow is in front. To do it from any application, assign a shortcut to “%2” in your desktop's keyboard settings. Words like “tomorrow” or “next friday” set its due date.</source>
        <translation>Press %1 to note a task while Fenrow is in front. To do it from any application, assign a shortcut to “%2” in your desktop's keyboard settings. Words like “tomorrow” or “next friday” set its due date.</translation>
    </message>
    <message id="onboarding.action.next">
        <source>Continue</source>
        <translation>Continue</translation>
    </message>
    <message id="onboarding.action.back">
        <source>Back</source>
        <translation>Back</translation>
    </message>
    <message id="onboarding.action.finish">
        <source>Get started</source>
        <translation>Get started</translation>
    </message>
    <message id="sidebar.route.search">
        <source>Search</source>
        <translation>Search</translation>
    </message>
    <message id="sidebar.action.collapse">
        <source>Hide sidebar</source>
        <translation>Hide sidebar</translation>
    </message>
    <message id="sidebar.action.expand">
        <source>Show sidebar</source>
        <translation>Show sidebar</translation>
    </message>
    <message id="flowSearch.field.placeholder">
        <source>Find tasks by title or notes</source>
        <translation>Find tasks by title or notes</translation>
    </message>
    <message id="flowSearch.close">
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message id="flowSearch.group.current">
        <source>This flow</source>
        <translation>This flow</translation>
    </message>
    <message id="flowSearch.empty.title">
        <source>No matches</source>
        <translation>No matches</translation>
    </message>
    <message id="flowSearch.empty.message">
        <source>No task title or note contains these words.</source>
        <translation>No task title or note contains these words.</translation>
    </message>
    <message id="flowSearch.count %lld">
        <source>%1 found</source>
        <translation>%1 found</translation>
    </message>
    <message id="flowSearch.footer.hint">
        <source>↑↓ to move · ↩ to open · esc to close</source>
        <translation>↑↓ to move · ↩ to open · esc to close</translation>
    </message>
    <message id="menu.view">
        <source>View</source>
        <translation>View</translation>
    </message>
    <message id="menu.zoomIn">
        <source>Zoom In</source>
        <translation>Zoom In</translation>
    </message>
    <message id="menu.zoomOut">
        <source>Zoom Out</source>
        <translation>Zoom Out</translation>
    </message>
    <message id="menu.actualSize">
        <source>Actual Size</source>
        <translation>Actual Size</translation>
    </message>
    <message id="menu.zoomToFit">
        <source>Zoom to Fit</source>
        <translation>Zoom to Fit</translation>
    </message>
    <message id="menu.toggleSidebar">
        <source>Show or Hide Sidebar</source>
        <translation>Show or Hide Sidebar</translation>
    </message>
    <message id="menu.flow">
        <source>Flow</source>
        <translation>Flow</translation>
    </message>
    <message id="menu.addTask">
        <source>Add Task</source>
        <translation>Add Task</translation>
    </message>
    <message id="menu.addNextTask">
        <source>Add Next Task</source>
        <translation>Add Next Task</translation>
    </message>
    <message id="menu.addTaskBefore">
        <source>Add Task Before</source>
        <translation>Add Task Before</translation>
    </message>
    <message id="menu.addSubtask">
        <source>Add Subtask</source>
        <translation>Add Subtask</translation>
    </message>
    <message id="menu.connect">
        <source>Connect Selected Tasks</source>
        <translation>Connect Selected Tasks</translation>
    </message>
    <message id="menu.rename">
        <source>Rename Task</source>
        <translation>Rename Task</translation>
    </message>
    <message id="menu.toggleDone">
        <source>Mark Done or Not Done</source>
        <translation>Mark Done or Not Done</translation>
    </message>
    <message id="menu.delete">
        <source>Delete Selection</source>
        <translation>Delete Selection</translation>
    </message>
    <message id="menu.arrange">
        <source>Arrange as Tree</source>
        <translation>Arrange as Tree</translation>
    </message>
    <message id="menu.archiveDone">
        <source>Archive Done Tasks…</source>
        <translation>Archive Done Tasks…</translation>
    </message>
    <message id="menu.find">
        <source>Find in Flows…</source>
        <translation>Find in Flows…</translation>
    </message>
    <message id="ready.row.references">
        <source>Linked files: %1</source>
        <translation>Linked files: %1</translation>
    </message>
    <message id="ready.row.reorder.help">
        <source>Drag to set today's order</source>
        <translation>Drag to set today's order</translation>
    </message>
    <message id="menu.newFlowFromText">
        <source>New Flow from Text…</source>
        <translation>New Flow from Text…</translation>
    </message>
    <message id="menu.planDay">
        <source>Plan Today…</source>
        <translation>Plan Today…</translation>
    </message>
    <message id="ready.action.planDay">
        <source>Plan Day</source>
        <translation>Plan Day</translation>
    </message>
    <message id="newFlowFromText.title">
        <source>New flow</source>
        <translation>New flow</translation>
    </message>
    <message id="newFlowFromText.subtitle">
        <source>Describe the project in your own words and the language model turns it into tasks. Or leave the text empty to start with a blank flow.</source>
        <translation>Describe the project in your own words and the language model turns it into tasks. Or leave the text empty to start with a blank flow.</translation>
    </message>
    <message id="newFlowFromText.name.label">
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message id="newFlowFromText.name.placeholder">
        <source>Taken from the text when left empty</source>
        <translation>Taken from the text when left empty</translation>
    </message>
    <message id="newFlowFromText.editor.label">
        <source>What is the project about?</source>
        <translation>What is the project about?</translation>
    </message>
    <message id="newFlowFromText.editor.placeholder">
        <source>Paste notes, an e-mail or a plan, or write a few sentences about what has to happen.</source>
        <translation>Paste notes, an e-mail or a plan, or write a few sentences about what has to happen.</translation>
    </message>
    <message id="newFlowFromText.processing">
        <source>Reading the text and making tasks…</source>
        <translation>Reading the text and making tasks…</translation>
    </message>
    <message id="newFlowFromText.cancel">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="newFlowFromText.overBudget.title">
        <source>Only the first part will be read</source>
        <translation>Only the first part will be read</translation>
    </message>
    <message id="newFlowFromText.overBudget.message">
        <source>The text is longer than the language model can take at once. You can still create the flow; tasks come from the beginning of the text.</source>
        <translation>The text is longer than the language model can take at once. You can still create the flow; tasks come from the beginning of the text.</translation>
    </message>
    <message id="generateSubtasks.title">
        <source>Generate subtasks</source>
        <translation>Generate subtasks</translation>
    </message>
    <message id="generateSubtasks.subtitle">
        <source>The language model breaks this task into smaller steps.</source>
        <translation>The language model breaks this task into smaller steps.</translation>
    </message>
    <message id="generateSubtasks.subtitle.named %@">
        <source>The language model breaks “%1” into smaller steps.</source>
        <translation>The language model breaks “%1” into smaller steps.</translation>
    </message>
    <message id="generateSubtasks.details.label">
        <source>Details (optional)</source>
        <translation>Details (optional)</translation>
    </message>
    <message id="generateSubtasks.details.placeholder">
        <source>What does the task involve?</source>
        <translation>What does the task involve?</translation>
    </message>
    <message id="generateSubtasks.processing">
        <source>Breaking the task down…</source>
        <translation>Breaking the task down…</translation>
    </message>
    <message id="generateSubtasks.cancel">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="generateSubtasks.generate">
        <source>Generate</source>
        <translation>Generate</translation>
    </message>
    <message id="canvas.node.generateSubtasks">
        <source>Generate Subtasks…</source>
        <translation>Generate Subtasks…</translation>
    </message>
    <message id="canvas.node.expand.failed.title">
        <source>Subtasks could not be generated</source>
        <translation>Subtasks could not be generated</translation>
    </message>
    <message id="canvas.node.expand.failed.message">
        <source>The language model gave no usable answer. Try again, or add the subtasks by hand.</source>
        <translation>The language model gave no usable answer. Try again, or add the subtasks by hand.</translation>
    </message>
    <message id="planDay.title">
        <source>Plan today</source>
        <translation>Plan today</translation>
    </message>
    <message id="planDay.cancel">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="planDay.running">
        <source>Ordering your tasks…</source>
        <translation>Ordering your tasks…</translation>
    </message>
    <message id="planDay.failed.title">
        <source>The day could not be planned</source>
        <translation>The day could not be planned</translation>
    </message>
    <message id="planDay.failed.message">
        <source>The language model gave no usable order. Go back and try again; nothing was changed.</source>
        <translation>The language model gave no usable order. Go back and try again; nothing was changed.</translation>
    </message>
    <message id="planDay.back">
        <source>Back</source>
        <translation>Back</translation>
    </message>
    <message id="planDay.commit">
        <source>Use this plan</source>
        <translation>Use this plan</translation>
    </message>
    <message id="planDay.cut.label">
        <source>Does not fit today</source>
        <translation>Does not fit today</translation>
    </message>
    <message id="planDay.timeline.label %@ %@">
        <source>%1 of %2 planned, in working order</source>
        <translation>%1 of %2 planned, in working order</translation>
    </message>
    <message id="planDay.nothingFits.title">
        <source>Nothing fits</source>
        <translation>Nothing fits</translation>
    </message>
    <message id="planDay.nothingFits.message">
        <source>Every ready task takes longer than the time you have. Go back and give the day more time.</source>
        <translation>Every ready task takes longer than the time you have. Go back and give the day more time.</translation>
    </message>
    <message id="planDay.budget.custom.label">
        <source>Time you have today</source>
        <translation>Time you have today</translation>
    </message>
    <message id="planDay.budget.unit.label">
        <source>Unit</source>
        <translation>Unit</translation>
    </message>
    <message id="planDay.budget.presets">
        <source>Presets</source>
        <translation>Presets</translation>
    </message>
    <message id="planDay.taskCount %lld">
        <source>Ready tasks to fit: %1</source>
        <translation>Ready tasks to fit: %1</translation>
    </message>
    <message id="ready.order.today">
        <source>In your order</source>
        <translation>In your order</translation>
    </message>
    <message id="intents.add.done %@ %@">
        <source>Added “%1” to %2.</source>
        <translation>Added “%1” to %2.</translation>
    </message>
    <message id="intents.ready.some %lld %@">
        <source>Ready now (%1): %2</source>
        <translation>Ready now (%1): %2</translation>
    </message>
    <message id="intents.ready.none">
        <source>Nothing is ready right now.</source>
        <translation>Nothing is ready right now.</translation>
    </message>
    <message id="intents.complete.done %@">
        <source>Done: %1.</source>
        <translation>Done: %1.</translation>
    </message>
    <message id="intents.error.notFound">
        <source>That task or flow does not exist any more.</source>
        <translation>That task or flow does not exist any more.</translation>
    </message>
    <message id="backup.restore.done.edgesLeftOut %lld">
        <source>Connections left out because they would have led a task back to itself or repeated another: %1.</source>
        <translation>Connections left out because they would have led a task back to itself or repeated another: %1.</translation>
    </message>
    <message id="backup.restore.done.safety %@">
        <source>What Fenrow held before is kept in “%1”. Restore that file with Replace to undo this.</source>
        <translation>What Fenrow held before is kept in “%1”. Restore that file with Replace to undo this.</translation>
    </message>
    <message id="backup.restore.failed.title">
        <source>The backup could not be restored</source>
        <translation>The backup could not be restored</translation>
    </message>
    <message id="backup.restore.failed.message">
        <source>Nothing was changed.</source>
        <translation>Nothing was changed.</translation>
    </message>
    <message id="backup.adjusted.title">
        <source>Backup written with changes</source>
        <translation>Backup written with changes</translation>
    </message>
    <message id="backup.adjusted.message">
        <source>Some values could not be written as they are; they were left out or held to their limits:</source>
        <translation>Some values could not be written as they are; they were left out or held to their limits:</translation>
    </message>
    <message id="import.opml.leftOut.title">
        <source>Part of the outline stayed out</source>
        <translation>Part of the outline stayed out</translation>
    </message>
    <message id="import.opml.leftOut %1 %2">
        <source>Entries without text left out: %1. Dates outside the calendar left out: %2. Everything else was imported.</source>
        <translation>Entries without text left out: %1. Dates outside the calendar left out: %2. Everything else was imported.</translation>
    </message>
    <message id="widget.count.one">
        <source>1 task ready</source>
        <translation>1 task ready</translation>
    </message>
    <message id="widget.count %1">
        <source>%1 tasks ready</source>
        <translation>%1 tasks ready</translation>
    </message>
    <message id="widget.empty.noTasks">
        <source>Nothing ready: no tasks yet</source>
        <translation>Nothing ready: no tasks yet</translation>
    </message>
    <message id="widget.empty.allDone">
        <source>Nothing ready: all done</source>
        <translation>Nothing ready: all done</translation>
    </message>
    <message id="widget.empty.allBlocked">
        <source>Nothing ready: everything waits on other tasks</source>
        <translation>Nothing ready: everything waits on other tasks</translation>
    </message>
    <message id="widget.empty.allDeferred">
        <source>Nothing ready: everything waits for its day</source>
        <translation>Nothing ready: everything waits for its day</translation>
    </message>
    <message id="widget.empty.allTicked">
        <source>All ticked: Fenrow marks them done when it runs</source>
        <translation>All ticked: Fenrow marks them done when it runs</translation>
    </message>
    <message id="widget.notWritten">
        <source>Fenrow has not written the Ready list yet. Open Fenrow to make it.</source>
        <translation>Fenrow has not written the Ready list yet. Open Fenrow to make it.</translation>
    </message>
    <message id="widget.outOfDate">
        <source>Open Fenrow to bring this list up to date</source>
        <translation>Open Fenrow to bring this list up to date</translation>
    </message>
    <message id="widget.popup.title">
        <source>Ready</source>
        <translation>Ready</translation>
    </message>
    <message id="widget.more %1">
        <source>and %1 more</source>
        <translation>and %1 more</translation>
    </message>
    <message id="widget.open">
        <source>Open Fenrow</source>
        <translation>Open Fenrow</translation>
    </message>
    <message id="widget.capture">
        <source>Quick capture</source>
        <translation>Quick capture</translation>
    </message>
    <message id="widget.quit">
        <source>Quit widget</source>
        <translation>Quit widget</translation>
    </message>
    <message id="widget.tick.failed">
        <source>The tick could not be saved. Try again, or tick the task in Fenrow.</source>
        <translation>The tick could not be saved. Try again, or tick the task in Fenrow.</translation>
    </message>
    <message id="widget.open.failed">
        <source>Fenrow could not be started.</source>
        <translation>Fenrow could not be started.</translation>
    </message>
    <message id="widget.tooltip %1">
        <source>Fenrow · %1</source>
        <translation>Fenrow · %1</translation>
    </message>
    <message id="engine.stop">
        <source>Stop</source>
        <translation>Stop</translation>
    </message>
    <message id="import.opml.relink.progress">
        <source>Connecting the imported tasks…</source>
        <translation>Connecting the imported tasks…</translation>
    </message>
    <message id="settings.model.stopLoading">
        <source>Stop Loading</source>
        <translation>Stop Loading</translation>
    </message>
    <message id="quickCapture.date.format.withYear">
        <source>ddd, MMM d, yyyy</source>
        <translation>ddd, MMM d, yyyy</translation>
    </message>
    <message id="canvas.access.file">
        <source>File</source>
        <translation>File</translation>
    </message>
    <message id="canvas.access.after %1">
        <source>After: %1</source>
        <translation>After: %1</translation>
    </message>
    <message id="canvas.access.before %1">
        <source>Before: %1</source>
        <translation>Before: %1</translation>
    </message>
    <message id="canvas.access.subtaskOf %1">
        <source>Subtask of: %1</source>
        <translation>Subtask of: %1</translation>
    </message>
    <message id="canvas.access.subtasks %1">
        <source>Subtasks: %1</source>
        <translation>Subtasks: %1</translation>
    </message>
    <message id="canvas.access.action.select">
        <source>Select</source>
        <translation>Select</translation>
    </message>
    <message id="canvas.access.action.open">
        <source>Open</source>
        <translation>Open</translation>
    </message>
    <message id="canvas.access.action.done">
        <source>Mark done</source>
        <translation>Mark done</translation>
    </message>
    <message id="canvas.access.action.undone">
        <source>Mark not done</source>
        <translation>Mark not done</translation>
    </message>
    <message id="canvas.access.name %1">
        <source>Canvas of %1</source>
        <translation>Canvas of %1</translation>
    </message>
    <message id="access.countedTasks %1 %2">
        <source>%1, tasks: %2</source>
        <translation>%1, tasks: %2</translation>
    </message>
</context>
</TS>
