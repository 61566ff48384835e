<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr">
<context>
    <name></name>
    <message id="mainWindow.title">
        <source>Fenrow</source>
        <translation>Fenrow</translation>
    </message>
    <message id="detail.empty.title">
        <source>No flow selected</source>
        <translation>Aucun flux sélectionné</translation>
    </message>
    <message id="detail.empty.message">
        <source>Choose a flow in the sidebar, or create a new one with the + button.</source>
        <translation>Choisissez un flux dans la barre latérale ou créez-en un avec le bouton +.</translation>
    </message>
    <message id="sidebar.brandHeader">
        <source>Fenrow</source>
        <translation>Fenrow</translation>
    </message>
    <message id="sidebar.section.flows">
        <source>Flows</source>
        <translation>Flux</translation>
    </message>
    <message id="sidebar.action.newFlow">
        <source>New flow</source>
        <translation>Nouveau flux</translation>
    </message>
    <message id="sidebar.action.quit">
        <source>Quit Fenrow</source>
        <translation>Quitter Fenrow</translation>
    </message>
    <message id="sidebar.flow.progress %lld %lld %lld">
        <source>%1 of %3 done · %2 in progress</source>
        <translation>%1 sur %3 faites · %2 en cours</translation>
    </message>
    <message id="sidebar.flow.progress.complete %lld">
        <source>All %1 done</source>
        <translation>Les %1 faites</translation>
    </message>
    <message id="sidebar.flow.progress.empty">
        <source>No tasks yet</source>
        <translation>Aucune tâche pour l’instant</translation>
    </message>
    <message id="sidebar.flow.rename.placeholder">
        <source>Flow name</source>
        <translation>Nom du flux</translation>
    </message>
    <message id="sidebar.row.action.rename">
        <source>Rename</source>
        <translation>Renommer</translation>
    </message>
    <message id="sidebar.row.action.delete">
        <source>Delete…</source>
        <translation>Supprimer…</translation>
    </message>
    <message id="sidebar.row.delete.confirm.title %@">
        <source>Delete “%1”?</source>
        <translation>Supprimer « %1 » ?</translation>
    </message>
    <message id="sidebar.row.delete.confirm.message">
        <source>The flow and all of its tasks, connections and files will be deleted. Its entries in the archive go too. This cannot be undone.</source>
        <translation>Le flux sera supprimé avec toutes ses tâches, connexions et fichiers, ainsi que ses entrées dans les archives. Cette action est irréversible.</translation>
    </message>
    <message id="sidebar.row.delete">
        <source>Delete</source>
        <translation>Supprimer</translation>
    </message>
    <message id="sidebar.row.delete.confirm.cancel">
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message id="store.failed.title">
        <source>Fenrow cannot open its data</source>
        <translation>Fenrow ne peut pas ouvrir ses données</translation>
    </message>
    <message id="sample.flow.name">
        <source>Sample: Launch a landing page</source>
        <translation>Exemple : lancer une page d’accueil</translation>
    </message>
    <message id="sample.flow.item.offer">
        <source>Define the offer</source>
        <translation>Définir l’offre</translation>
    </message>
    <message id="sample.flow.item.copy">
        <source>Write the copy</source>
        <translation>Rédiger les textes</translation>
    </message>
    <message id="sample.flow.item.layout">
        <source>Design the layout</source>
        <translation>Concevoir la mise en page</translation>
    </message>
    <message id="sample.flow.item.build">
        <source>Build the page</source>
        <translation>Construire la page</translation>
    </message>
    <message id="sample.flow.item.publish">
        <source>Publish and announce</source>
        <translation>Publier et annoncer</translation>
    </message>
    <message id="sidebar.flow.untitled">
        <source>Untitled flow</source>
        <translation>Flux sans titre</translation>
    </message>
    <message id="sidebar.route.ready">
        <source>Ready</source>
        <translation>Prêtes</translation>
    </message>
    <message id="ready.title">
        <source>Ready</source>
        <translation>Prêtes</translation>
    </message>
    <message id="ready.sort.flow">
        <source>Flow</source>
        <translation>Flux</translation>
    </message>
    <message id="ready.sort.dueDate">
        <source>Due date</source>
        <translation>Échéance</translation>
    </message>
    <message id="ready.sort.priority">
        <source>Priority</source>
        <translation>Priorité</translation>
    </message>
    <message id="ready.sort.estimate">
        <source>Estimate</source>
        <translation>Durée</translation>
    </message>
    <message id="ready.group.today">
        <source>Today</source>
        <translation>Aujourd’hui</translation>
    </message>
    <message id="ready.group.other">
        <source>Other tasks</source>
        <translation>Autres tâches</translation>
    </message>
    <message id="ready.row.complete">
        <source>Mark as done</source>
        <translation>Marquer comme terminée</translation>
    </message>
    <message id="ready.row.hasNotes">
        <source>Notes</source>
        <translation>Notes</translation>
    </message>
    <message id="ready.row.priority.high">
        <source>High</source>
        <translation>Haute</translation>
    </message>
    <message id="ready.row.priority.medium">
        <source>Medium</source>
        <translation>Moyenne</translation>
    </message>
    <message id="ready.row.priority.low">
        <source>Low</source>
        <translation>Basse</translation>
    </message>
    <message id="ready.row.due.today">
        <source>Due today</source>
        <translation>Échéance aujourd’hui</translation>
    </message>
    <message id="ready.row.due.tomorrow">
        <source>Due tomorrow</source>
        <translation>Échéance demain</translation>
    </message>
    <message id="ready.row.overdue %@">
        <source>Overdue · %1</source>
        <translation>En retard · %1</translation>
    </message>
    <message id="ready.row.dateFormat">
        <source>MMM d</source>
        <translation>d MMM</translation>
    </message>
    <message id="ready.row.dateFormat.withYear">
        <source>MMM d, yyyy</source>
        <translation>d MMM yyyy</translation>
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
        <translation>Pas encore de tâches</translation>
    </message>
    <message id="ready.empty.noTasks.message">
        <source>The tasks you can start right away gather here, from all of your flows. Add a few tasks to a flow to begin.</source>
        <translation>Les tâches que vous pouvez commencer tout de suite se rassemblent ici, depuis tous vos flux. Ajoutez quelques tâches à un flux pour démarrer.</translation>
    </message>
    <message id="ready.empty.allDone.title">
        <source>All done</source>
        <translation>Tout est terminé</translation>
    </message>
    <message id="ready.empty.allDone.message">
        <source>Every task in every flow is finished. Enjoy the quiet, or plan what comes next.</source>
        <translation>Toutes les tâches de tous vos flux sont terminées. Profitez du calme ou préparez la suite.</translation>
    </message>
    <message id="ready.empty.allBlocked.title">
        <source>Everything is waiting</source>
        <translation>Tout est en attente</translation>
    </message>
    <message id="ready.empty.allBlocked.message">
        <source>Each open task waits for another one to finish first. Look over the connections in your flows.</source>
        <translation>Chaque tâche ouverte attend qu’une autre soit terminée d’abord. Vérifiez les liens dans vos flux.</translation>
    </message>
    <message id="ready.empty.allDeferred.title">
        <source>Nothing starts today</source>
        <translation>Rien ne commence aujourd’hui</translation>
    </message>
    <message id="ready.empty.allDeferred.message">
        <source>Your next tasks have a later start date. They appear here on the day they start.</source>
        <translation>Vos prochaines tâches commencent plus tard. Elles apparaîtront ici le jour où elles commencent.</translation>
    </message>
    <message id="sidebar.flow.copyName ">
        <source>%1 copy</source>
        <translation>Copie de %1</translation>
    </message>
    <message id="archive.day.today">
        <source>Today</source>
        <translation>Aujourd’hui</translation>
    </message>
    <message id="archive.day.yesterday">
        <source>Yesterday</source>
        <translation>Hier</translation>
    </message>
    <message id="sidebar.route.archive">
        <source>Archive</source>
        <translation>Archives</translation>
    </message>
    <message id="archive.title">
        <source>Archive</source>
        <translation>Archives</translation>
    </message>
    <message id="archive.search.placeholder">
        <source>Search the archive</source>
        <translation>Rechercher dans les archives</translation>
    </message>
    <message id="archive.row.repeated">
        <source>Repeated · round %1</source>
        <translation>Répétée · tour %1</translation>
    </message>
    <message id="archive.row.restore">
        <source>Restore</source>
        <translation>Restaurer</translation>
    </message>
    <message id="archive.row.restore.help">
        <source>Put the task back into its flow, marked as done</source>
        <translation>Remettre la tâche dans son flux, marquée comme terminée</translation>
    </message>
    <message id="archive.row.delete">
        <source>Delete</source>
        <translation>Supprimer</translation>
    </message>
    <message id="archive.count.label">
        <source>Entries: %1</source>
        <translation>Entrées : %1</translation>
    </message>
    <message id="archive.empty.title">
        <source>Nothing archived yet</source>
        <translation>Rien n'est encore archivé</translation>
    </message>
    <message id="archive.empty.message">
        <source>Done tasks you archive from a flow, and each finished round of a repeating task, are kept here by day.</source>
        <translation>Les tâches terminées que vous archivez depuis un flux, et chaque tour achevé d'une tâche répétitive, sont conservés ici par jour.</translation>
    </message>
    <message id="archive.empty.search.title">
        <source>No matches</source>
        <translation>Aucun résultat</translation>
    </message>
    <message id="archive.empty.search.message">
        <source>No archived task has this text in its title or in the name of its flow.</source>
        <translation>Aucune tâche archivée ne contient ce texte dans son titre ou dans le nom de son flux.</translation>
    </message>
    <message id="sidebar.template.menu.title">
        <source>New from Template</source>
        <translation>Nouveau depuis un modèle</translation>
    </message>
    <message id="sidebar.template.menu.help">
        <source>Make a new flow from a saved template</source>
        <translation>Créer un flux à partir d'un modèle enregistré</translation>
    </message>
    <message id="sidebar.context.duplicate">
        <source>Duplicate</source>
        <translation>Dupliquer</translation>
    </message>
    <message id="sidebar.context.saveTemplate">
        <source>Save as Template</source>
        <translation>Enregistrer comme modèle</translation>
    </message>
    <message id="sidebar.row.archiveDone">
        <source>Archive Done Tasks…</source>
        <translation>Archiver les tâches terminées…</translation>
    </message>
    <message id="archive.confirm.title ">
        <source>Archive the done tasks of “%1”?</source>
        <translation>Archiver les tâches terminées de « %1 » ?</translation>
    </message>
    <message id="archive.confirm.message">
        <source>They leave the canvas along with their connections. Each one can be restored from the Archive; it comes back done, without connections.</source>
        <translation>Elles quittent le canevas avec leurs connexions. Chacune peut être restaurée depuis les Archives ; elle revient terminée, sans connexions.</translation>
    </message>
    <message id="archive.confirm.action">
        <source>Archive</source>
        <translation>Archiver</translation>
    </message>
    <message id="archive.confirm.cancel">
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message id="menu.file">
        <source>&amp;File</source>
        <translation>&amp;Fichier</translation>
    </message>
    <message id="menu.edit">
        <source>&amp;Edit</source>
        <translation>É&amp;dition</translation>
    </message>
    <message id="menu.quit">
        <source>Quit</source>
        <translation>Quitter</translation>
    </message>
    <message id="menu.undo">
        <source>Undo</source>
        <translation>Annuler</translation>
    </message>
    <message id="menu.redo">
        <source>Redo</source>
        <translation>Rétablir</translation>
    </message>
    <message id="shortcut.key.unknown">
        <source>Unknown key</source>
        <translation>Touche inconnue</translation>
    </message>
    <message id="export.markdown.progress %lld %lld">
        <source>%1 of %2 done</source>
        <translation>%1 sur %2 terminées</translation>
    </message>
    <message id="export.markdown.status.inProgress">
        <source>in progress</source>
        <translation>en cours</translation>
    </message>
    <message id="export.markdown.status.paused">
        <source>paused</source>
        <translation>en pause</translation>
    </message>
    <message id="export.markdown.after %@">
        <source>after %1</source>
        <translation>après %1</translation>
    </message>
    <message id="export.markdown.panel.title">
        <source>Export as Markdown</source>
        <translation>Exporter en Markdown</translation>
    </message>
    <message id="export.markdown.panel.button">
        <source>Export</source>
        <translation>Exporter</translation>
    </message>
    <message id="export.markdown.failed.title">
        <source>Export failed</source>
        <translation>Échec de l’exportation</translation>
    </message>
    <message id="export.markdown.failed.message">
        <source>The file could not be written. Check that the folder exists and that you may write to it.</source>
        <translation>Le fichier n’a pas pu être écrit. Vérifiez que le dossier existe et que vous pouvez y écrire.</translation>
    </message>
    <message id="export.opml.panel.title">
        <source>Export as OPML</source>
        <translation>Exporter en OPML</translation>
    </message>
    <message id="import.opml.panel.message">
        <source>Choose an OPML outline to import as a new flow</source>
        <translation>Choisissez un plan OPML à importer comme nouveau flux</translation>
    </message>
    <message id="import.opml.panel.button">
        <source>Import</source>
        <translation>Importer</translation>
    </message>
    <message id="import.opml.failed.title">
        <source>This file can’t be imported</source>
        <translation>Ce fichier ne peut pas être importé</translation>
    </message>
    <message id="import.opml.failed.message">
        <source>It is not an OPML outline with at least one entry, or it is damaged. Nothing was added.</source>
        <translation>Ce n’est pas un plan OPML comportant au moins une entrée, ou il est endommagé. Rien n’a été ajouté.</translation>
    </message>
    <message id="sidebar.row.action.exportMarkdown">
        <source>Export as Markdown…</source>
        <translation>Exporter en Markdown…</translation>
    </message>
    <message id="sidebar.row.action.copyMarkdown">
        <source>Copy as Markdown</source>
        <translation>Copier en Markdown</translation>
    </message>
    <message id="sidebar.context.exportOPML">
        <source>Export as OPML…</source>
        <translation>Exporter en OPML…</translation>
    </message>
    <message id="menu.exportMarkdown">
        <source>Export as &amp;Markdown…</source>
        <translation>Exporter en &amp;Markdown…</translation>
    </message>
    <message id="menu.copyMarkdown">
        <source>&amp;Copy as Markdown</source>
        <translation>&amp;Copier en Markdown</translation>
    </message>
    <message id="menu.exportOPML">
        <source>Export as &amp;OPML…</source>
        <translation>Exporter en &amp;OPML…</translation>
    </message>
    <message id="menu.importOPML">
        <source>&amp;Import OPML…</source>
        <translation>&amp;Importer un OPML…</translation>
    </message>
    <message id="menu.backUp">
        <source>&amp;Back Up…</source>
        <translation>&amp;Sauvegarder…</translation>
    </message>
    <message id="menu.restoreBackup">
        <source>&amp;Restore from Backup…</source>
        <translation>&amp;Restaurer une sauvegarde…</translation>
    </message>
    <message id="backup.save.panel.message">
        <source>Choose where to save a backup of all your flows, templates and archive</source>
        <translation>Choisissez où enregistrer la sauvegarde de tous vos flux, modèles et archives</translation>
    </message>
    <message id="backup.save.panel.button">
        <source>Back Up</source>
        <translation>Sauvegarder</translation>
    </message>
    <message id="backup.failed.title">
        <source>Backup failed</source>
        <translation>Échec de la sauvegarde</translation>
    </message>
    <message id="backup.failed.message">
        <source>The backup could not be written. Check that the folder exists and that you may write to it.</source>
        <translation>La sauvegarde n’a pas pu être écrite. Vérifiez que le dossier existe et que vous pouvez y écrire.</translation>
    </message>
    <message id="backup.open.panel.message">
        <source>Choose a Fenrow backup to restore</source>
        <translation>Choisissez une sauvegarde Fenrow à restaurer</translation>
    </message>
    <message id="backup.open.panel.button">
        <source>Restore</source>
        <translation>Restaurer</translation>
    </message>
    <message id="backup.restore.unreadable.title">
        <source>This backup can’t be restored</source>
        <translation>Cette sauvegarde ne peut pas être restaurée</translation>
    </message>
    <message id="backup.restore.unreadable.message">
        <source>The file is not a Fenrow backup, or it is damaged. Nothing was changed.</source>
        <translation>Le fichier n’est pas une sauvegarde Fenrow, ou il est endommagé. Rien n’a été modifié.</translation>
    </message>
    <message id="backup.restore.newer.message">
        <source>The backup was made by a newer version of Fenrow. Update Fenrow to restore it. Nothing was changed.</source>
        <translation>La sauvegarde provient d’une version plus récente de Fenrow. Mettez Fenrow à jour pour la restaurer. Rien n’a été modifié.</translation>
    </message>
    <message id="backup.restore.mode.title">
        <source>Restore backup</source>
        <translation>Restaurer la sauvegarde</translation>
    </message>
    <message id="backup.restore.mode.message %lld">
        <source>Flows in the backup: %1. Merge adds the flows you don’t have yet and keeps everything else. Replace first deletes all your flows, templates and archive entries.</source>
        <translation>Flux dans la sauvegarde : %1. Fusionner ajoute les flux que vous n’avez pas encore et garde tout le reste. Remplacer supprime d’abord tous vos flux, modèles et entrées d’archive.</translation>
    </message>
    <message id="backup.restore.mode.merge">
        <source>Merge</source>
        <translation>Fusionner</translation>
    </message>
    <message id="backup.restore.mode.replace">
        <source>Replace</source>
        <translation>Remplacer</translation>
    </message>
    <message id="backup.restore.replace.confirm.title">
        <source>Replace all your data?</source>
        <translation>Remplacer toutes vos données ?</translation>
    </message>
    <message id="backup.restore.replace.confirm.message">
        <source>All flows, templates and archive entries in Fenrow are deleted and replaced by those of the backup. This can’t be undone.</source>
        <translation>Tous les flux, modèles et entrées d’archive de Fenrow sont supprimés et remplacés par ceux de la sauvegarde. Action irréversible.</translation>
    </message>
    <message id="backup.restore.done.title">
        <source>Backup restored</source>
        <translation>Sauvegarde restaurée</translation>
    </message>
    <message id="backup.restore.done.message %lld">
        <source>Flows restored: %1.</source>
        <translation>Flux restaurés : %1.</translation>
    </message>
    <message id="backup.restore.done.nothing">
        <source>Every flow in the backup is already here. Nothing was added.</source>
        <translation>Tous les flux de la sauvegarde sont déjà là. Rien n’a été ajouté.</translation>
    </message>
    <message id="inspector.flow">
        <source>Flow</source>
        <translation>Flux</translation>
    </message>
    <message id="inspector.status.label">
        <source>Status</source>
        <translation>Statut</translation>
    </message>
    <message id="inspector.status.pending">
        <source>Not started</source>
        <translation>Pas commencée</translation>
    </message>
    <message id="inspector.status.inProgress">
        <source>In progress</source>
        <translation>En cours</translation>
    </message>
    <message id="inspector.status.paused">
        <source>Paused</source>
        <translation>En pause</translation>
    </message>
    <message id="inspector.status.done">
        <source>Done</source>
        <translation>Terminée</translation>
    </message>
    <message id="inspector.priority.label">
        <source>Priority</source>
        <translation>Priorité</translation>
    </message>
    <message id="inspector.priority.none">
        <source>None</source>
        <translation>Aucune</translation>
    </message>
    <message id="inspector.priority.low">
        <source>Low</source>
        <translation>Basse</translation>
    </message>
    <message id="inspector.priority.medium">
        <source>Medium</source>
        <translation>Moyenne</translation>
    </message>
    <message id="inspector.priority.high">
        <source>High</source>
        <translation>Haute</translation>
    </message>
    <message id="inspector.color.label">
        <source>Colour</source>
        <translation>Couleur</translation>
    </message>
    <message id="inspector.estimate.label">
        <source>Estimate</source>
        <translation>Estimation</translation>
    </message>
    <message id="inspector.estimate.placeholder">
        <source>None</source>
        <translation>Aucune</translation>
    </message>
    <message id="inspector.estimate.unit">
        <source>min</source>
        <translation>min</translation>
    </message>
    <message id="inspector.startDate.label">
        <source>Start</source>
        <translation>Début</translation>
    </message>
    <message id="inspector.dueDate.label">
        <source>Due</source>
        <translation>Échéance</translation>
    </message>
    <message id="inspector.date.add">
        <source>Add date</source>
        <translation>Ajouter une date</translation>
    </message>
    <message id="inspector.date.pick">
        <source>Choose a date</source>
        <translation>Choisir une date</translation>
    </message>
    <message id="inspector.date.clear">
        <source>Remove date</source>
        <translation>Retirer la date</translation>
    </message>
    <message id="inspector.deferred.note %@">
        <source>Not ready before %1.</source>
        <translation>Pas prête avant le %1.</translation>
    </message>
    <message id="inspector.recurrence.label">
        <source>Repeat</source>
        <translation>Répéter</translation>
    </message>
    <message id="inspector.recurrence.never">
        <source>Never</source>
        <translation>Jamais</translation>
    </message>
    <message id="inspector.recurrence.daily">
        <source>Every day</source>
        <translation>Chaque jour</translation>
    </message>
    <message id="inspector.recurrence.weekdays">
        <source>Every weekday</source>
        <translation>Jours de semaine</translation>
    </message>
    <message id="inspector.recurrence.weekly">
        <source>Every week</source>
        <translation>Chaque semaine</translation>
    </message>
    <message id="inspector.recurrence.monthly">
        <source>Every month</source>
        <translation>Chaque mois</translation>
    </message>
    <message id="inspector.recurrence.afterDone">
        <source>Some days after done</source>
        <translation>Quelques jours après</translation>
    </message>
    <message id="inspector.recurrence.interval.label">
        <source>Every</source>
        <translation>Tous les</translation>
    </message>
    <message id="inspector.recurrence.interval.unit">
        <source>days</source>
        <translation>jours</translation>
    </message>
    <message id="inspector.notes.label">
        <source>Notes</source>
        <translation>Notes</translation>
    </message>
    <message id="inspector.notes.placeholder">
        <source>Add notes</source>
        <translation>Ajouter des notes</translation>
    </message>
    <message id="inspector.notes.resize">
        <source>Notes height</source>
        <translation>Hauteur des notes</translation>
    </message>
    <message id="inspector.checklist.label">
        <source>Checklist</source>
        <translation>Liste d'étapes</translation>
    </message>
    <message id="inspector.checklist.count %lld %lld">
        <source>%1 of %2 done</source>
        <translation>%1 sur %2 faites</translation>
    </message>
    <message id="inspector.checklist.add.placeholder">
        <source>Add a step</source>
        <translation>Ajouter une étape</translation>
    </message>
    <message id="inspector.checklist.toggle">
        <source>Tick step</source>
        <translation>Cocher l'étape</translation>
    </message>
    <message id="inspector.checklist.open">
        <source>Open step</source>
        <translation>Étape ouverte</translation>
    </message>
    <message id="inspector.checklist.done">
        <source>Done step</source>
        <translation>Étape faite</translation>
    </message>
    <message id="inspector.checklist.delete">
        <source>Delete step</source>
        <translation>Supprimer l'étape</translation>
    </message>
    <message id="inspector.blockedBy.label">
        <source>Waits for</source>
        <translation>Attend</translation>
    </message>
    <message id="inspector.blockedBy.empty">
        <source>Nothing: free to start</source>
        <translation>Rien : peut commencer</translation>
    </message>
    <message id="inspector.blocks.label">
        <source>Holds up</source>
        <translation>Retient</translation>
    </message>
    <message id="inspector.blocks.empty">
        <source>No other task</source>
        <translation>Aucune autre tâche</translation>
    </message>
    <message id="inspector.empty.title">
        <source>No task selected</source>
        <translation>Aucune tâche sélectionnée</translation>
    </message>
    <message id="inspector.empty.message">
        <source>Select one task on the canvas to see and edit its details.</source>
        <translation>Sélectionnez une tâche sur le canevas pour voir et modifier ses détails.</translation>
    </message>
    <message id="inspector.file.label">
        <source>File</source>
        <translation>Fichier</translation>
    </message>
    <message id="inspector.calendar.today">
        <source>Today</source>
        <translation>Aujourd'hui</translation>
    </message>
    <message id="inspector.calendar.tomorrow">
        <source>Tomorrow</source>
        <translation>Demain</translation>
    </message>
    <message id="inspector.calendar.nextWeek">
        <source>Next week</source>
        <translation>La semaine prochaine</translation>
    </message>
    <message id="canvas.node.new">
        <source>New task</source>
        <translation>Nouvelle tâche</translation>
    </message>
    <message id="engine.availability.available">
        <source>The on-device language model is ready.</source>
        <translation>Le modèle de langage de l’appareil est prêt.</translation>
    </message>
    <message id="engine.availability.deviceNotEligible">
        <source>This computer cannot run the language model. Everything still works by hand.</source>
        <translation>Cet ordinateur ne peut pas exécuter le modèle de langage. Tout reste possible à la main.</translation>
    </message>
    <message id="engine.availability.appleIntelligenceNotEnabled">
        <source>The language model is switched off in the system settings. Everything still works by hand.</source>
        <translation>Le modèle de langage est désactivé dans les réglages du système. Tout reste possible à la main.</translation>
    </message>
    <message id="engine.availability.modelNotReady">
        <source>The language model is not ready yet. Everything still works by hand.</source>
        <translation>Le modèle de langage n’est pas encore prêt. Tout reste possible à la main.</translation>
    </message>
    <message id="engine.availability.frameworkUnavailable">
        <source>No on-device language model is available. Everything still works by hand.</source>
        <translation>Aucun modèle de langage n’est disponible sur l’appareil. Tout reste possible à la main.</translation>
    </message>
    <message id="engine.availability.modelUnusable">
        <source>The chosen language model cannot be used. Everything still works by hand.</source>
        <translation>Le modèle de langage choisi ne peut pas être utilisé. Tout reste possible à la main.</translation>
    </message>
    <message id="banner.engineUnavailable.dismiss">
        <source>Dismiss</source>
        <translation>Masquer</translation>
    </message>
    <message id="planDay.plan">
        <source>Plan my day</source>
        <translation>Planifier ma journée</translation>
    </message>
    <message id="planDay.planManual">
        <source>Fit into my time</source>
        <translation>Ajuster à mon temps</translation>
    </message>
    <message id="planDay.subtitle">
        <source>The language model orders your ready tasks, then they are fitted into the time you have.</source>
        <translation>Le modèle de langage ordonne tes tâches prêtes, puis elles sont ajustées au temps dont tu disposes.</translation>
    </message>
    <message id="planDay.subtitle.manual">
        <source>Your ready tasks, in the order of the Ready list, are fitted into the time you have.</source>
        <translation>Tes tâches prêtes, dans l’ordre de la liste Prêtes, sont ajustées au temps dont tu disposes.</translation>
    </message>
    <message id="planDay.order.ai">
        <source>Order by the language model</source>
        <translation>Ordre du modèle de langage</translation>
    </message>
    <message id="planDay.order.custom">
        <source>Your order</source>
        <translation>Ton ordre</translation>
    </message>
    <message id="planDay.budget.unit.minutes">
        <source>minutes</source>
        <translation>minutes</translation>
    </message>
    <message id="planDay.budget.unit.hours">
        <source>hours</source>
        <translation>heures</translation>
    </message>
    <message id="planDay.summary">
        <source>%1 of %2 planned</source>
        <translation>%1 sur %2 planifiées</translation>
    </message>
    <message id="planDay.summary.overflow %lld">
        <source>%1 more do not fit.</source>
        <translation>%1 de plus ne tiennent pas.</translation>
    </message>
    <message id="newFlowFromText.create">
        <source>Create flow</source>
        <translation>Créer le flux</translation>
    </message>
    <message id="newFlowFromText.createBlank">
        <source>Create empty flow</source>
        <translation>Créer un flux vide</translation>
    </message>
    <message id="newFlowFromText.noTasksFound.title">
        <source>No tasks found</source>
        <translation>Aucune tâche trouvée</translation>
    </message>
    <message id="newFlowFromText.noTasksFound.message">
        <source>The text holds no steps to turn into tasks. Add some detail, or create an empty flow.</source>
        <translation>Le texte ne contient aucune étape à transformer en tâches. Ajoute des détails ou crée un flux vide.</translation>
    </message>
    <message id="newFlowFromText.failed.title">
        <source>Could not create the flow</source>
        <translation>Impossible de créer le flux</translation>
    </message>
    <message id="newFlowFromText.failed.message">
        <source>The language model could not read the text. Try again, or create an empty flow.</source>
        <translation>Le modèle de langage n’a pas pu lire le texte. Réessaie ou crée un flux vide.</translation>
    </message>
    <message id="quickCapture.picker.newFlow">
        <source>New flow</source>
        <translation>Nouveau flux</translation>
    </message>
    <message id="canvas.node.status.pending">
        <source>Not started</source>
        <translation>À faire</translation>
    </message>
    <message id="canvas.node.status.inProgress">
        <source>In progress</source>
        <translation>En cours</translation>
    </message>
    <message id="canvas.node.status.done">
        <source>Done</source>
        <translation>Terminé</translation>
    </message>
    <message id="canvas.node.status.paused">
        <source>Paused</source>
        <translation>En pause</translation>
    </message>
    <message id="canvas.node.starts ">
        <source>Starts %1</source>
        <translation>Début %1</translation>
    </message>
    <message id="canvas.node.waiting ">
        <source>Waiting on %1</source>
        <translation>Attend %1</translation>
    </message>
    <message id="canvas.node.ready">
        <source>Ready</source>
        <translation>Prête</translation>
    </message>
    <message id="canvas.node.status.label">
        <source>Status</source>
        <translation>Statut</translation>
    </message>
    <message id="canvas.node.deferred.help">
        <source>Not before this day</source>
        <translation>Pas avant ce jour</translation>
    </message>
    <message id="canvas.node.due.label">
        <source>Due date</source>
        <translation>Échéance</translation>
    </message>
    <message id="canvas.node.repeat.label">
        <source>Repeats</source>
        <translation>Se répète</translation>
    </message>
    <message id="canvas.node.checklist.help">
        <source>Steps done</source>
        <translation>Étapes faites</translation>
    </message>
    <message id="canvas.node.priority.label">
        <source>Priority</source>
        <translation>Priorité</translation>
    </message>
    <message id="canvas.cycleRejection">
        <source>That connection would make a loop</source>
        <translation>Ce lien créerait une boucle</translation>
    </message>
    <message id="canvas.file.drop.tooLarge ">
        <source>%1 is too large to attach (%2)</source>
        <translation>%1 est trop volumineux pour être joint (%2)</translation>
    </message>
    <message id="canvas.file.drop.failed ">
        <source>%1 could not be read</source>
        <translation>Impossible de lire %1</translation>
    </message>
    <message id="canvas.port.label">
        <source>Connect</source>
        <translation>Relier</translation>
    </message>
    <message id="canvas.port.help.collapse">
        <source>Drag to connect; click to fold or unfold the subtasks</source>
        <translation>Glisser pour relier ; cliquer pour replier ou déplier les sous-tâches</translation>
    </message>
    <message id="canvas.port.action.collapse">
        <source>Fold subtasks</source>
        <translation>Replier les sous-tâches</translation>
    </message>
    <message id="canvas.port.action.expand">
        <source>Unfold subtasks</source>
        <translation>Déplier les sous-tâches</translation>
    </message>
    <message id="canvas.edge.delete">
        <source>Delete connection</source>
        <translation>Supprimer le lien</translation>
    </message>
    <message id="canvas.fileLink.delete">
        <source>Unlink file</source>
        <translation>Détacher le fichier</translation>
    </message>
    <message id="canvas.node.addChild">
        <source>Add subtask</source>
        <translation>Ajouter une sous-tâche</translation>
    </message>
    <message id="canvas.node.rename">
        <source>Rename</source>
        <translation>Renommer</translation>
    </message>
    <message id="canvas.node.setColor">
        <source>Color</source>
        <translation>Couleur</translation>
    </message>
    <message id="canvas.node.color.none">
        <source>No color</source>
        <translation>Aucune couleur</translation>
    </message>
    <message id="canvas.node.color.red">
        <source>Red</source>
        <translation>Rouge</translation>
    </message>
    <message id="canvas.node.color.orange">
        <source>Orange</source>
        <translation>Orange</translation>
    </message>
    <message id="canvas.node.color.yellow">
        <source>Yellow</source>
        <translation>Jaune</translation>
    </message>
    <message id="canvas.node.color.green">
        <source>Green</source>
        <translation>Vert</translation>
    </message>
    <message id="canvas.node.color.blue">
        <source>Blue</source>
        <translation>Bleu</translation>
    </message>
    <message id="canvas.node.color.purple">
        <source>Purple</source>
        <translation>Violet</translation>
    </message>
    <message id="canvas.node.color.pink">
        <source>Pink</source>
        <translation>Rose</translation>
    </message>
    <message id="canvas.node.color.grey">
        <source>Grey</source>
        <translation>Gris</translation>
    </message>
    <message id="canvas.node.resize.reset">
        <source>Reset size</source>
        <translation>Rétablir la taille</translation>
    </message>
    <message id="canvas.node.delete">
        <source>Delete</source>
        <translation>Supprimer</translation>
    </message>
    <message id="canvas.file.open">
        <source>Open</source>
        <translation>Ouvrir</translation>
    </message>
    <message id="canvas.file.exportCopy">
        <source>Save a copy…</source>
        <translation>Enregistrer une copie…</translation>
    </message>
    <message id="canvas.file.missing">
        <source>The file's contents are missing</source>
        <translation>Le contenu du fichier est introuvable</translation>
    </message>
    <message id="canvas.file.unlinkAll">
        <source>Unlink from all tasks</source>
        <translation>Détacher de toutes les tâches</translation>
    </message>
    <message id="canvas.file.delete">
        <source>Delete file</source>
        <translation>Supprimer le fichier</translation>
    </message>
    <message id="canvas.file.add">
        <source>Attach file…</source>
        <translation>Joindre un fichier…</translation>
    </message>
    <message id="canvas.file.add.prompt">
        <source>Choose files to attach</source>
        <translation>Choisissez les fichiers à joindre</translation>
    </message>
    <message id="toolbar.addTask">
        <source>Add task</source>
        <translation>Ajouter une tâche</translation>
    </message>
    <message id="toolbar.addItem">
        <source>Add</source>
        <translation>Ajouter</translation>
    </message>
    <message id="toolbar.attachFile">
        <source>Attach file</source>
        <translation>Joindre un fichier</translation>
    </message>
    <message id="toolbar.filter">
        <source>Filter by color</source>
        <translation>Filtrer par couleur</translation>
    </message>
    <message id="toolbar.grid">
        <source>Snap to grid</source>
        <translation>Aligner sur la grille</translation>
    </message>
    <message id="toolbar.arrange">
        <source>Arrange as tree</source>
        <translation>Disposer en arbre</translation>
    </message>
    <message id="toolbar.archiveDone">
        <source>Archive done tasks</source>
        <translation>Archiver les tâches terminées</translation>
    </message>
    <message id="archive.action.archiveDone">
        <source>Archive done</source>
        <translation>Archiver les terminées</translation>
    </message>
    <message id="toolbar.filter.off">
        <source>No filter</source>
        <translation>Aucun filtre</translation>
    </message>
    <message id="toolbar.filter.clear">
        <source>Clear filter</source>
        <translation>Effacer le filtre</translation>
    </message>
    <message id="toolbar.filter.mode.label">
        <source>Other tasks</source>
        <translation>Autres tâches</translation>
    </message>
    <message id="toolbar.filter.mode.dim">
        <source>Dim</source>
        <translation>Estomper</translation>
    </message>
    <message id="toolbar.filter.mode.hide">
        <source>Hide</source>
        <translation>Masquer</translation>
    </message>
    <message id="toolbar.zoomOut">
        <source>Zoom out</source>
        <translation>Zoom arrière</translation>
    </message>
    <message id="toolbar.zoomIn">
        <source>Zoom in</source>
        <translation>Zoom avant</translation>
    </message>
    <message id="toolbar.zoomToFit">
        <source>Zoom to fit</source>
        <translation>Tout afficher</translation>
    </message>
    <message id="toolbar.zoomLevel">
        <source>%1%</source>
        <translation>%1 %</translation>
    </message>
    <message id="toolbar.progress">
        <source>Progress</source>
        <translation>Progression</translation>
    </message>
    <message id="toolbar.progress %lld %lld">
        <source>%1 of %2 done</source>
        <translation>%1 sur %2 terminées</translation>
    </message>
    <message id="toolbar.progress.short %lld %lld">
        <source>%1/%2</source>
        <translation>%1/%2</translation>
    </message>
    <message id="toolbar.progress.ready %lld %lld %lld">
        <source>%1 of %2 done · %3 ready</source>
        <translation>%1 sur %2 terminées · %3 prêtes</translation>
    </message>
    <message id="canvas.empty.title">
        <source>An empty flow</source>
        <translation>Un flux vide</translation>
    </message>
    <message id="canvas.empty.message">
        <source>Add a first task, then draw from its port to the next one.</source>
        <translation>Ajoutez une première tâche, puis tirez depuis son port vers la suivante.</translation>
    </message>
    <message id="canvas.empty.addButton">
        <source>Add first task</source>
        <translation>Ajouter une première tâche</translation>
    </message>
    <message id="import.opml.relink.title">
        <source>Connect the imported tasks?</source>
        <translation>Relier les tâches importées ?</translation>
    </message>
    <message id="import.opml.relink.message">
        <source>The outline brought no dependencies. Fenrow can suggest which tasks have to come first; you can change or delete every connection afterwards.</source>
        <translation>Le plan n’apporte aucune dépendance. Fenrow peut proposer quelles tâches passent d’abord ; vous pourrez ensuite modifier ou supprimer chaque connexion.</translation>
    </message>
    <message id="import.opml.relink.connect">
        <source>Connect</source>
        <translation>Relier</translation>
    </message>
    <message id="import.opml.relink.keep">
        <source>Keep as Is</source>
        <translation>Laisser ainsi</translation>
    </message>
    <message id="quickCapture.window.title">
        <source>Quick Capture</source>
        <translation>Saisie rapide</translation>
    </message>
    <message id="quickCapture.field.placeholder">
        <source>What needs doing? Try “call the bank tomorrow”</source>
        <translation>Que faut-il faire ? Essayez « appeler la banque demain »</translation>
    </message>
    <message id="quickCapture.picker.label">
        <source>Flow</source>
        <translation>Flux</translation>
    </message>
    <message id="quickCapture.date.due %@">
        <source>Due %1</source>
        <translation>Échéance : %1</translation>
    </message>
    <message id="quickCapture.date.help %@">
        <source>Read from your text: due %1. Remove it to keep those words in the title.</source>
        <translation>Lu dans votre texte : échéance %1. Retirez-la pour garder ces mots dans le titre.</translation>
    </message>
    <message id="quickCapture.date.dismiss">
        <source>Remove date</source>
        <translation>Retirer la date</translation>
    </message>
    <message id="quickCapture.action.save">
        <source>Add task</source>
        <translation>Ajouter la tâche</translation>
    </message>
    <message id="quickCapture.action.cancel">
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message id="quickCapture.hint">
        <source>Return adds · Esc closes</source>
        <translation>Entrée ajoute · Échap ferme</translation>
    </message>
    <message id="quickCapture.date.format">
        <source>ddd, MMM d</source>
        <translation>ddd d MMM</translation>
    </message>
    <message id="sidebar.action.settings">
        <source>Settings</source>
        <translation>Réglages</translation>
    </message>
    <message id="menu.settings">
        <source>Settings…</source>
        <translation>Réglages…</translation>
    </message>
    <message id="settings.title">
        <source>Fenrow Settings</source>
        <translation>Réglages de Fenrow</translation>
    </message>
    <message id="settings.page.general">
        <source>General</source>
        <translation>Général</translation>
    </message>
    <message id="settings.page.shortcuts">
        <source>Shortcuts</source>
        <translation>Raccourcis</translation>
    </message>
    <message id="settings.page.appearance">
        <source>Appearance</source>
        <translation>Apparence</translation>
    </message>
    <message id="settings.page.language">
        <source>Language</source>
        <translation>Langue</translation>
    </message>
    <message id="settings.page.data">
        <source>Data</source>
        <translation>Données</translation>
    </message>
    <message id="settings.page.model">
        <source>Language model</source>
        <translation>Modèle de langage</translation>
    </message>
    <message id="settings.model.privacy">
        <source>The model runs on this computer; nothing you write leaves it.</source>
        <translation>Le modèle tourne sur cet ordinateur ; rien de ce que vous écrivez ne le quitte.</translation>
    </message>
    <message id="settings.model.chosen.title">
        <source>Chosen model</source>
        <translation>Modèle choisi</translation>
    </message>
    <message id="settings.model.details">
        <source>%1 · %2</source>
        <translation>%1 · %2</translation>
    </message>
    <message id="settings.model.state.none">
        <source>No model is chosen. Until one is, everything is done by hand.</source>
        <translation>Aucun modèle n’est choisi. D’ici là, tout se fait à la main.</translation>
    </message>
    <message id="settings.model.state.idle">
        <source>Not loaded yet; it loads when a feature first needs it.</source>
        <translation>Pas encore chargé ; il se charge dès qu’une fonction en a besoin.</translation>
    </message>
    <message id="settings.model.state.loading">
        <source>Loading the model…</source>
        <translation>Chargement du modèle…</translation>
    </message>
    <message id="settings.model.state.ready">
        <source>Loaded: %1, with a context of %2 tokens.</source>
        <translation>Chargé : %1, avec un contexte de %2 jetons.</translation>
    </message>
    <message id="settings.model.state.failed">
        <source>This file cannot be used: %1</source>
        <translation>Ce fichier ne peut pas être utilisé : %1</translation>
    </message>
    <message id="settings.model.state.unavailable">
        <source>The model cannot run here: %1</source>
        <translation>Le modèle ne peut pas tourner ici : %1</translation>
    </message>
    <message id="settings.model.choose">
        <source>Choose File…</source>
        <translation>Choisir un fichier…</translation>
    </message>
    <message id="settings.model.choose.dialog">
        <source>Choose a Language Model</source>
        <translation>Choisir un modèle de langage</translation>
    </message>
    <message id="settings.model.choose.filter">
        <source>GGUF models (*.gguf)</source>
        <translation>Modèles GGUF (*.gguf)</translation>
    </message>
    <message id="settings.model.remove">
        <source>Remove</source>
        <translation>Retirer</translation>
    </message>
    <message id="settings.model.refused.notFound">
        <source>%1 was not found.</source>
        <translation>%1 est introuvable.</translation>
    </message>
    <message id="settings.model.refused.unreadable">
        <source>%1 cannot be read.</source>
        <translation>%1 ne peut pas être lu.</translation>
    </message>
    <message id="settings.model.refused.notModel">
        <source>%1 is not a GGUF model file.</source>
        <translation>%1 n’est pas un fichier de modèle GGUF.</translation>
    </message>
    <message id="settings.model.refused.kept">
        <source>The chosen model stays as it was.</source>
        <translation>Le modèle choisi reste le même.</translation>
    </message>
    <message id="settings.model.try.title">
        <source>Try it</source>
        <translation>Essayer</translation>
    </message>
    <message id="settings.model.try.caption">
        <source>Runs one short request and measures how fast the model answers.</source>
        <translation>Lance une courte requête et mesure la vitesse de réponse du modèle.</translation>
    </message>
    <message id="settings.model.try">
        <source>Try It</source>
        <translation>Essayer</translation>
    </message>
    <message id="settings.model.trial.running">
        <source>Running a short request…</source>
        <translation>Requête courte en cours…</translation>
    </message>
    <message id="settings.model.trial.result">
        <source>%1 tokens in %2 s (%3 tokens per second)</source>
        <translation>%1 jetons en %2 s (%3 jetons par seconde)</translation>
    </message>
    <message id="settings.model.trial.failed">
        <source>The trial failed: %1</source>
        <translation>L’essai a échoué : %1</translation>
    </message>
    <message id="settings.model.found.title">
        <source>On this computer</source>
        <translation>Sur cet ordinateur</translation>
    </message>
    <message id="settings.model.found.caption">
        <source>Models already downloaded with llama.cpp, LM Studio, GPT4All or Ollama, from Hugging Face, or into Downloads.</source>
        <translation>Les modèles déjà téléchargés avec llama.cpp, LM Studio, GPT4All ou Ollama, depuis Hugging Face ou dans Téléchargements.</translation>
    </message>
    <message id="settings.model.found.looking">
        <source>Looking…</source>
        <translation>Recherche…</translation>
    </message>
    <message id="settings.model.found.none">
        <source>No models found in those folders.</source>
        <translation>Aucun modèle trouvé dans ces dossiers.</translation>
    </message>
    <message id="settings.model.found.item">
        <source>%1 — %2 · %3</source>
        <translation>%1 — %2 · %3</translation>
    </message>
    <message id="settings.model.use">
        <source>Use</source>
        <translation>Utiliser</translation>
    </message>
    <message id="banner.engineUnavailable.chooseModel">
        <source>Choose a model…</source>
        <translation>Choisir un modèle…</translation>
    </message>
    <message id="settings.page.about">
        <source>About</source>
        <translation>À propos</translation>
    </message>
    <message id="settings.general.startup.title">
        <source>Start</source>
        <translation>Démarrage</translation>
    </message>
    <message id="settings.general.launchAtLogin">
        <source>Open Fenrow when I log in</source>
        <translation>Ouvrir Fenrow à l'ouverture de session</translation>
    </message>
    <message id="settings.general.widgetAtLogin">
        <source>Show the Ready list in the tray when I log in</source>
        <translation>Afficher la liste Prêtes dans la zone de notification à l'ouverture de session</translation>
    </message>
    <message id="settings.general.launchAtLogin.failed">
        <source>Fenrow could not change its autostart entry. Check that you may write to %1.</source>
        <translation>Fenrow n’a pas pu modifier son entrée de démarrage automatique. Vérifiez que vous pouvez écrire dans %1.</translation>
    </message>
    <message id="settings.general.reminders.title">
        <source>Reminders</source>
        <translation>Rappels</translation>
    </message>
    <message id="settings.general.dueReminders">
        <source>Remind me of tasks on their due day</source>
        <translation>Me rappeler les tâches le jour de leur échéance</translation>
    </message>
    <message id="settings.general.dueReminderHour">
        <source>Time of the reminder</source>
        <translation>Heure du rappel</translation>
    </message>
    <message id="settings.general.morningDigest">
        <source>Send a morning summary of the day's tasks</source>
        <translation>Envoyer le matin un résumé des tâches du jour</translation>
    </message>
    <message id="notification.due.body">
        <source>Due today</source>
        <translation>Échéance aujourd’hui</translation>
    </message>
    <message id="notification.digest.title">
        <source>Ready to work on today</source>
        <translation>Prêt à commencer aujourd’hui</translation>
    </message>
    <message id="notification.open">
        <source>Open</source>
        <translation>Ouvrir</translation>
    </message>
    <message id="settings.general.planDay.title">
        <source>Plan Day</source>
        <translation>Planifier la journée</translation>
    </message>
    <message id="settings.general.dayPlanBudget">
        <source>Time available per day</source>
        <translation>Temps disponible par jour</translation>
    </message>
    <message id="settings.general.dayPlanBudget.minutes">
        <source>minutes</source>
        <translation>minutes</translation>
    </message>
    <message id="settings.general.dayPlanBudget.hours">
        <source>hours</source>
        <translation>heures</translation>
    </message>
    <message id="settings.general.filter.title">
        <source>Filters</source>
        <translation>Filtres</translation>
    </message>
    <message id="settings.general.filterMode">
        <source>Tasks a filter leaves out</source>
        <translation>Tâches exclues par le filtre</translation>
    </message>
    <message id="settings.general.filterMode.dim">
        <source>Dim them</source>
        <translation>Les estomper</translation>
    </message>
    <message id="settings.general.filterMode.hide">
        <source>Hide them</source>
        <translation>Les masquer</translation>
    </message>
    <message id="settings.general.quickCapture.title">
        <source>Quick capture</source>
        <translation>Saisie rapide</translation>
    </message>
    <message id="settings.general.quickCapture.subtitle">
        <source>Opens the capture panel from any application while Fenrow is running.</source>
        <translation>Ouvre le panneau de saisie depuis n'importe quelle application tant que Fenrow est ouvert.</translation>
    </message>
    <message id="shortcut.recorder.recording">
        <source>Press keys…</source>
        <translation>Appuyez sur les touches…</translation>
    </message>
    <message id="settings.shortcuts.needsModifier">
        <source>A shortcut needs Ctrl, Alt, Shift or Meta. Try again, or press Esc to keep the old one.</source>
        <translation>Un raccourci doit comporter Ctrl, Alt, Maj ou Méta. Réessayez, ou appuyez sur Échap pour garder l'ancien.</translation>
    </message>
    <message id="settings.shortcuts.unsupportedKey">
        <source>This key can't be part of a shortcut. Try a letter, a digit or a punctuation key, or press Esc.</source>
        <translation>Cette touche ne peut pas faire partie d'un raccourci. Essayez une lettre, un chiffre ou une ponctuation, ou appuyez sur Échap.</translation>
    </message>
    <message id="settings.shortcuts.conflict">
        <source>Also used by: %1</source>
        <translation>Également utilisé par : %1</translation>
    </message>
    <message id="settings.shortcuts.globalUnavailable">
        <source>This shortcut works only inside Fenrow: the desktop did not let Fenrow claim it. To open the capture panel from any application, assign a shortcut to this command in your desktop's keyboard settings:</source>
        <translation>Ce raccourci ne fonctionne que dans Fenrow : le bureau ne l'a pas laissé à Fenrow. Pour ouvrir le panneau de saisie depuis n'importe quelle application, associez un raccourci à cette commande dans les réglages du clavier de votre bureau :</translation>
    </message>
    <message id="settings.shortcuts.action.undo">
        <source>Undo</source>
        <translation>Annuler</translation>
    </message>
    <message id="settings.shortcuts.action.redo">
        <source>Redo</source>
        <translation>Rétablir</translation>
    </message>
    <message id="settings.shortcuts.action.newFlowFromText">
        <source>New flow from text</source>
        <translation>Nouveau flux à partir d'un texte</translation>
    </message>
    <message id="settings.shortcuts.action.findInFlow">
        <source>Find in flow</source>
        <translation>Rechercher dans le flux</translation>
    </message>
    <message id="settings.shortcuts.action.exportMarkdown">
        <source>Export as Markdown</source>
        <translation>Exporter en Markdown</translation>
    </message>
    <message id="settings.shortcuts.action.copyMarkdown">
        <source>Copy as Markdown</source>
        <translation>Copier en Markdown</translation>
    </message>
    <message id="settings.shortcuts.action.zoomIn">
        <source>Zoom in</source>
        <translation>Zoom avant</translation>
    </message>
    <message id="settings.shortcuts.action.zoomOut">
        <source>Zoom out</source>
        <translation>Zoom arrière</translation>
    </message>
    <message id="settings.shortcuts.action.zoomToFit">
        <source>Zoom to fit</source>
        <translation>Ajuster à la fenêtre</translation>
    </message>
    <message id="settings.shortcuts.reset">
        <source>Restore default shortcuts</source>
        <translation>Rétablir les raccourcis par défaut</translation>
    </message>
    <message id="settings.shortcuts.reference.title">
        <source>On the canvas</source>
        <translation>Sur le canevas</translation>
    </message>
    <message id="settings.shortcuts.reference.rename">
        <source>Rename the selected task</source>
        <translation>Renommer la tâche sélectionnée</translation>
    </message>
    <message id="settings.shortcuts.reference.toggleDone">
        <source>Mark done or not done</source>
        <translation>Marquer comme faite ou non faite</translation>
    </message>
    <message id="settings.shortcuts.reference.addAfter">
        <source>Add the next task</source>
        <translation>Ajouter la tâche suivante</translation>
    </message>
    <message id="settings.shortcuts.reference.addBefore">
        <source>Add a task before</source>
        <translation>Ajouter une tâche avant</translation>
    </message>
    <message id="settings.shortcuts.reference.delete">
        <source>Delete the selection</source>
        <translation>Supprimer la sélection</translation>
    </message>
    <message id="settings.shortcuts.reference.delete.keys">
        <source>Delete or Backspace</source>
        <translation>Suppr ou Retour arrière</translation>
    </message>
    <message id="settings.shortcuts.reference.deselect">
        <source>Clear the selection</source>
        <translation>Désélectionner</translation>
    </message>
    <message id="settings.shortcuts.reference.move">
        <source>Select the nearest task in that direction</source>
        <translation>Sélectionner la tâche la plus proche dans ce sens</translation>
    </message>
    <message id="settings.shortcuts.reference.follow">
        <source>Follow a connection</source>
        <translation>Suivre une connexion</translation>
    </message>
    <message id="settings.shortcuts.reference.multiSelect">
        <source>Add to the selection</source>
        <translation>Ajouter à la sélection</translation>
    </message>
    <message id="settings.shortcuts.reference.multiSelect.keys">
        <source>Shift+click</source>
        <translation>Maj+clic</translation>
    </message>
    <message id="settings.shortcuts.reference.pan">
        <source>Move the canvas</source>
        <translation>Déplacer le canevas</translation>
    </message>
    <message id="settings.shortcuts.reference.pan.keys">
        <source>Space+drag</source>
        <translation>Espace+glisser</translation>
    </message>
    <message id="settings.shortcuts.reference.caption">
        <source>These keys work while the canvas has the focus and can't be changed.</source>
        <translation>Ces touches agissent quand le canevas a le focus et ne peuvent pas être modifiées.</translation>
    </message>
    <message id="settings.appearance.theme.title">
        <source>Theme</source>
        <translation>Thème</translation>
    </message>
    <message id="settings.appearance.theme.auto">
        <source>Same as the system</source>
        <translation>Comme le système</translation>
    </message>
    <message id="settings.appearance.theme.light">
        <source>Light</source>
        <translation>Clair</translation>
    </message>
    <message id="settings.appearance.theme.dark">
        <source>Dark</source>
        <translation>Sombre</translation>
    </message>
    <message id="settings.appearance.theme.caption">
        <source>“Same as the system” follows the dark or light choice of your desktop.</source>
        <translation>« Comme le système » suit le choix clair ou sombre de votre bureau.</translation>
    </message>
    <message id="settings.appearance.palette.title">
        <source>Accent colour</source>
        <translation>Couleur d'accent</translation>
    </message>
    <message id="settings.appearance.palette.violet">
        <source>Violet</source>
        <translation>Violet</translation>
    </message>
    <message id="settings.appearance.palette.blue">
        <source>Blue</source>
        <translation>Bleu</translation>
    </message>
    <message id="settings.appearance.palette.green">
        <source>Green</source>
        <translation>Vert</translation>
    </message>
    <message id="settings.appearance.palette.orange">
        <source>Orange</source>
        <translation>Orange</translation>
    </message>
    <message id="settings.appearance.palette.pink">
        <source>Pink</source>
        <translation>Rose</translation>
    </message>
    <message id="settings.appearance.palette.graphite">
        <source>Graphite</source>
        <translation>Graphite</translation>
    </message>
    <message id="settings.appearance.canvas.title">
        <source>Canvas</source>
        <translation>Canevas</translation>
    </message>
    <message id="settings.appearance.grid">
        <source>Show the dot grid</source>
        <translation>Afficher la grille de points</translation>
    </message>
    <message id="settings.appearance.sizeByEstimate">
        <source>Size cards by their estimate</source>
        <translation>Taille des cartes selon l'estimation</translation>
    </message>
    <message id="settings.language.caption">
        <source>Fenrow switches language at once, without a restart.</source>
        <translation>Fenrow change de langue aussitôt, sans redémarrage.</translation>
    </message>
    <message id="settings.language.system">
        <source>Same as the system</source>
        <translation>Comme le système</translation>
    </message>
    <message id="settings.about.version">
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message id="settings.about.tagline">
        <source>Plan projects as flows of tasks and work from what is ready.</source>
        <translation>Planifiez vos projets en flux de tâches et travaillez sur ce qui est prêt.</translation>
    </message>
    <message id="settings.about.files.title">
        <source>Your files</source>
        <translation>Vos fichiers</translation>
    </message>
    <message id="settings.about.dataFolder">
        <source>Open the data folder</source>
        <translation>Ouvrir le dossier des données</translation>
    </message>
    <message id="settings.about.settingsFile">
        <source>Open the settings file</source>
        <translation>Ouvrir le fichier de réglages</translation>
    </message>
    <message id="settings.data.autoArchive.title">
        <source>Archive</source>
        <translation>Archives</translation>
    </message>
    <message id="settings.data.autoArchive.label">
        <source>Move done tasks to the archive</source>
        <translation>Déplacer les tâches faites dans les archives</translation>
    </message>
    <message id="settings.data.autoArchive.caption">
        <source>Tasks done longer ago than this leave their flow and wait in the archive.</source>
        <translation>Les tâches faites depuis plus longtemps quittent leur flux et attendent dans les archives.</translation>
    </message>
    <message id="settings.data.autoArchive.off">
        <source>Never</source>
        <translation>Jamais</translation>
    </message>
    <message id="settings.data.autoArchive.oneDay">
        <source>After 1 day</source>
        <translation>Après 1 jour</translation>
    </message>
    <message id="settings.data.autoArchive.days">
        <source>After %1 days</source>
        <translation>Après %1 jours</translation>
    </message>
    <message id="settings.data.autoBackup.title">
        <source>Automatic backup</source>
        <translation>Sauvegarde automatique</translation>
    </message>
    <message id="settings.data.autoBackup.choose">
        <source>Choose Folder…</source>
        <translation>Choisir un dossier…</translation>
    </message>
    <message id="settings.data.autoBackup.now">
        <source>Back Up Now</source>
        <translation>Sauvegarder maintenant</translation>
    </message>
    <message id="settings.data.autoBackup.off">
        <source>Turn Off</source>
        <translation>Désactiver</translation>
    </message>
    <message id="settings.data.autoBackup.caption">
        <source>Once a week Fenrow writes a backup into this folder and keeps the five newest.</source>
        <translation>Une fois par semaine, Fenrow écrit une sauvegarde dans ce dossier et garde les cinq plus récentes.</translation>
    </message>
    <message id="settings.data.autoBackup.none">
        <source>No folder chosen: automatic backups are off.</source>
        <translation>Aucun dossier choisi : les sauvegardes automatiques sont désactivées.</translation>
    </message>
    <message id="settings.data.autoBackup.last">
        <source>Last backup: %1</source>
        <translation>Dernière sauvegarde : %1</translation>
    </message>
    <message id="settings.data.autoBackup.never">
        <source>No backup written yet.</source>
        <translation>Aucune sauvegarde écrite pour l'instant.</translation>
    </message>
    <message id="settings.data.autoBackup.failed">
        <source>The last backup could not be written. Check that the folder still exists and that you may write to it.</source>
        <translation>La dernière sauvegarde n’a pas pu être écrite. Vérifiez que le dossier existe toujours et que vous pouvez y écrire.</translation>
    </message>
    <message id="settings.data.templates.title">
        <source>Templates</source>
        <translation>Modèles</translation>
    </message>
    <message id="settings.data.templates.empty">
        <source>No templates yet. Save a flow as a template from its menu in the sidebar.</source>
        <translation>Pas encore de modèles. Enregistrez un flux comme modèle depuis son menu dans la barre latérale.</translation>
    </message>
    <message id="settings.data.templates.delete">
        <source>Delete template</source>
        <translation>Supprimer le modèle</translation>
    </message>
    <message id="menu.quickCapture">
        <source>&amp;Quick Capture…</source>
        <translation>Saisie &amp;rapide…</translation>
    </message>
    <message id="menu.helpMenu">
        <source>&amp;Help</source>
        <translation>&amp;Aide</translation>
    </message>
    <message id="menu.help">
        <source>Fenrow &amp;Help</source>
        <translation>&amp;Aide de Fenrow</translation>
    </message>
    <message id="menu.about">
        <source>&amp;About Fenrow</source>
        <translation>À &amp;propos de Fenrow</translation>
    </message>
    <message id="menu.restartOnboarding">
        <source>Show the &amp;Welcome Again</source>
        <translation>Revoir l’&amp;accueil</translation>
    </message>
    <message id="onboarding.welcome.title">
        <source>Welcome to Fenrow</source>
        <translation>Bienvenue dans Fenrow</translation>
    </message>
    <message id="onboarding.welcome.message">
        <source>Plan each project as a flow of tasks, and always know what you can do next.</source>
        <translation>Organisez chaque projet en un flux de tâches et sachez toujours ce que vous pouvez faire ensuite.</translation>
    </message>
    <message id="onboarding.flows.title">
        <source>A project is a flow</source>
        <translation>Un projet est un flux</translation>
    </message>
    <message id="onboarding.flows.message">
        <source>Tasks are cards on a canvas. Connect them to say what comes first: a task waits until the ones before it are done.</source>
        <translation>Les tâches sont des cartes sur un canevas. Reliez-les pour dire ce qui vient d’abord : une tâche attend que les précédentes soient faites.</translation>
    </message>
    <message id="onboarding.ready.title">
        <source>Work from the Ready list</source>
        <translation>Travaillez depuis la liste Prêtes</translation>
    </message>
    <message id="onboarding.ready.message">
        <source>Everything you can start now, from all your flows, in one list. Tick a task off and whatever it held up moves in.</source>
        <translation>Tout ce que vous pouvez commencer maintenant, de tous vos flux, dans une seule liste. Cochez une tâche et ce qu’elle bloquait y entre.</translation>
    </message>
    <message id="onboarding.capture.title">
        <source>Capture in a moment</source>
        <translation>Notez en un instant</translation>
    </message>
    <message id="onboarding.capture.message %@">
        <source>Press %1 to note a task without leaving what you are doing. Words like “tomorrow” or “next friday” set its due date.</source>
        <translation>Appuyez sur %1 pour noter une tâche sans quitter ce que vous faites. Des mots comme « demain » ou « vendredi prochain » fixent son échéance.</translation>
    </message>
    <message id="onboarding.capture.messageInsideOnly %@ %@">
        <source>Press %1 to note a task while Fenrow is in front. To do it from any application, assign a shortcut to “%2” in your desktop's keyboard settings. Words like “tomorrow” or “next friday” set its due date.</source>
        <translation>Appuyez sur %1 pour noter une tâche quand Fenrow est au premier plan. Pour le faire depuis n'importe quelle application, associez un raccourci à « %2 » dans les réglages du clavier de votre bureau. Des mots comme « demain » ou « vendredi prochain » fixent son échéance.</translation>
    </message>
    <message id="onboarding.action.next">
        <source>Continue</source>
        <translation>Continuer</translation>
    </message>
    <message id="onboarding.action.back">
        <source>Back</source>
        <translation>Retour</translation>
    </message>
    <message id="onboarding.action.finish">
        <source>Get started</source>
        <translation>Commencer</translation>
    </message>
    <message id="sidebar.route.search">
        <source>Search</source>
        <translation>Rechercher</translation>
    </message>
    <message id="sidebar.action.collapse">
        <source>Hide sidebar</source>
        <translation>Masquer la barre latérale</translation>
    </message>
    <message id="sidebar.action.expand">
        <source>Show sidebar</source>
        <translation>Afficher la barre latérale</translation>
    </message>
    <message id="flowSearch.field.placeholder">
        <source>Find tasks by title or notes</source>
        <translation>Trouver des tâches par titre ou notes</translation>
    </message>
    <message id="flowSearch.close">
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
    <message id="flowSearch.group.current">
        <source>This flow</source>
        <translation>Ce flux</translation>
    </message>
    <message id="flowSearch.empty.title">
        <source>No matches</source>
        <translation>Aucun résultat</translation>
    </message>
    <message id="flowSearch.empty.message">
        <source>No task title or note contains these words.</source>
        <translation>Aucun titre ni aucune note de tâche ne contient ces mots.</translation>
    </message>
    <message id="flowSearch.count %lld">
        <source>%1 found</source>
        <translation>%1 trouvées</translation>
    </message>
    <message id="flowSearch.footer.hint">
        <source>↑↓ to move · ↩ to open · esc to close</source>
        <translation>↑↓ naviguer · ↩ ouvrir · Échap fermer</translation>
    </message>
    <message id="menu.view">
        <source>View</source>
        <translation>Présentation</translation>
    </message>
    <message id="menu.zoomIn">
        <source>Zoom In</source>
        <translation>Zoom avant</translation>
    </message>
    <message id="menu.zoomOut">
        <source>Zoom Out</source>
        <translation>Zoom arrière</translation>
    </message>
    <message id="menu.actualSize">
        <source>Actual Size</source>
        <translation>Taille réelle</translation>
    </message>
    <message id="menu.zoomToFit">
        <source>Zoom to Fit</source>
        <translation>Ajuster à la fenêtre</translation>
    </message>
    <message id="menu.toggleSidebar">
        <source>Show or Hide Sidebar</source>
        <translation>Afficher ou masquer la barre latérale</translation>
    </message>
    <message id="menu.flow">
        <source>Flow</source>
        <translation>Flux</translation>
    </message>
    <message id="menu.addTask">
        <source>Add Task</source>
        <translation>Ajouter une tâche</translation>
    </message>
    <message id="menu.addNextTask">
        <source>Add Next Task</source>
        <translation>Ajouter la tâche suivante</translation>
    </message>
    <message id="menu.addTaskBefore">
        <source>Add Task Before</source>
        <translation>Ajouter une tâche avant</translation>
    </message>
    <message id="menu.addSubtask">
        <source>Add Subtask</source>
        <translation>Ajouter une sous-tâche</translation>
    </message>
    <message id="menu.connect">
        <source>Connect Selected Tasks</source>
        <translation>Relier les tâches sélectionnées</translation>
    </message>
    <message id="menu.rename">
        <source>Rename Task</source>
        <translation>Renommer la tâche</translation>
    </message>
    <message id="menu.toggleDone">
        <source>Mark Done or Not Done</source>
        <translation>Marquer comme faite ou non faite</translation>
    </message>
    <message id="menu.delete">
        <source>Delete Selection</source>
        <translation>Supprimer la sélection</translation>
    </message>
    <message id="menu.arrange">
        <source>Arrange as Tree</source>
        <translation>Disposer en arbre</translation>
    </message>
    <message id="menu.archiveDone">
        <source>Archive Done Tasks…</source>
        <translation>Archiver les tâches faites…</translation>
    </message>
    <message id="menu.find">
        <source>Find in Flows…</source>
        <translation>Rechercher dans les flux…</translation>
    </message>
    <message id="ready.row.references">
        <source>Linked files: %1</source>
        <translation>Fichiers liés : %1</translation>
    </message>
    <message id="ready.row.reorder.help">
        <source>Drag to set today's order</source>
        <translation>Faites glisser pour fixer l'ordre du jour</translation>
    </message>
    <message id="menu.newFlowFromText">
        <source>New Flow from Text…</source>
        <translation>Nouveau flux à partir d'un texte…</translation>
    </message>
    <message id="menu.planDay">
        <source>Plan Today…</source>
        <translation>Planifier aujourd'hui…</translation>
    </message>
    <message id="ready.action.planDay">
        <source>Plan Day</source>
        <translation>Planifier la journée</translation>
    </message>
    <message id="newFlowFromText.title">
        <source>New flow</source>
        <translation>Nouveau flux</translation>
    </message>
    <message id="newFlowFromText.subtitle">
        <source>Describe the project in your own words and the language model turns it into tasks. Or leave the text empty to start with a blank flow.</source>
        <translation>Décrivez le projet avec vos mots et le modèle de langage en fait des tâches. Ou laissez le texte vide pour commencer avec un flux vierge.</translation>
    </message>
    <message id="newFlowFromText.name.label">
        <source>Name</source>
        <translation>Nom</translation>
    </message>
    <message id="newFlowFromText.name.placeholder">
        <source>Taken from the text when left empty</source>
        <translation>Tiré du texte s'il reste vide</translation>
    </message>
    <message id="newFlowFromText.editor.label">
        <source>What is the project about?</source>
        <translation>De quoi parle le projet ?</translation>
    </message>
    <message id="newFlowFromText.editor.placeholder">
        <source>Paste notes, an e-mail or a plan, or write a few sentences about what has to happen.</source>
        <translation>Collez des notes, un e-mail ou un plan, ou écrivez quelques phrases sur ce qu'il faut faire.</translation>
    </message>
    <message id="newFlowFromText.processing">
        <source>Reading the text and making tasks…</source>
        <translation>Lecture du texte et création des tâches…</translation>
    </message>
    <message id="newFlowFromText.cancel">
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message id="newFlowFromText.overBudget.title">
        <source>Only the first part will be read</source>
        <translation>Seule la première partie sera lue</translation>
    </message>
    <message id="newFlowFromText.overBudget.message">
        <source>The text is longer than the language model can take at once. You can still create the flow; tasks come from the beginning of the text.</source>
        <translation>Le texte dépasse ce que le modèle de langage peut lire en une fois. Vous pouvez quand même créer le flux ; les tâches viennent du début du texte.</translation>
    </message>
    <message id="generateSubtasks.title">
        <source>Generate subtasks</source>
        <translation>Générer des sous-tâches</translation>
    </message>
    <message id="generateSubtasks.subtitle">
        <source>The language model breaks this task into smaller steps.</source>
        <translation>Le modèle de langage découpe cette tâche en étapes plus petites.</translation>
    </message>
    <message id="generateSubtasks.subtitle.named %@">
        <source>The language model breaks “%1” into smaller steps.</source>
        <translation>Le modèle de langage découpe « %1 » en étapes plus petites.</translation>
    </message>
    <message id="generateSubtasks.details.label">
        <source>Details (optional)</source>
        <translation>Détails (facultatif)</translation>
    </message>
    <message id="generateSubtasks.details.placeholder">
        <source>What does the task involve?</source>
        <translation>Que comprend la tâche ?</translation>
    </message>
    <message id="generateSubtasks.processing">
        <source>Breaking the task down…</source>
        <translation>Découpage de la tâche…</translation>
    </message>
    <message id="generateSubtasks.cancel">
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message id="generateSubtasks.generate">
        <source>Generate</source>
        <translation>Générer</translation>
    </message>
    <message id="canvas.node.generateSubtasks">
        <source>Generate Subtasks…</source>
        <translation>Générer des sous-tâches…</translation>
    </message>
    <message id="canvas.node.expand.failed.title">
        <source>Subtasks could not be generated</source>
        <translation>Impossible de générer les sous-tâches</translation>
    </message>
    <message id="canvas.node.expand.failed.message">
        <source>The language model gave no usable answer. Try again, or add the subtasks by hand.</source>
        <translation>Le modèle de langage n'a pas donné de réponse exploitable. Réessayez, ou ajoutez les sous-tâches à la main.</translation>
    </message>
    <message id="planDay.title">
        <source>Plan today</source>
        <translation>Planifier aujourd'hui</translation>
    </message>
    <message id="planDay.cancel">
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message id="planDay.running">
        <source>Ordering your tasks…</source>
        <translation>Classement de vos tâches…</translation>
    </message>
    <message id="planDay.failed.title">
        <source>The day could not be planned</source>
        <translation>La journée n'a pas pu être planifiée</translation>
    </message>
    <message id="planDay.failed.message">
        <source>The language model gave no usable order. Go back and try again; nothing was changed.</source>
        <translation>Le modèle de langage n'a pas donné d'ordre exploitable. Revenez en arrière et réessayez ; rien n'a été modifié.</translation>
    </message>
    <message id="planDay.back">
        <source>Back</source>
        <translation>Retour</translation>
    </message>
    <message id="planDay.commit">
        <source>Use this plan</source>
        <translation>Adopter ce plan</translation>
    </message>
    <message id="planDay.cut.label">
        <source>Does not fit today</source>
        <translation>Ne tient pas aujourd'hui</translation>
    </message>
    <message id="planDay.timeline.label %@ %@">
        <source>%1 of %2 planned, in working order</source>
        <translation>%1 sur %2 planifiés, dans l'ordre de travail</translation>
    </message>
    <message id="planDay.nothingFits.title">
        <source>Nothing fits</source>
        <translation>Rien ne tient</translation>
    </message>
    <message id="planDay.nothingFits.message">
        <source>Every ready task takes longer than the time you have. Go back and give the day more time.</source>
        <translation>Chaque tâche prête dure plus longtemps que le temps dont vous disposez. Revenez en arrière et donnez plus de temps à la journée.</translation>
    </message>
    <message id="planDay.budget.custom.label">
        <source>Time you have today</source>
        <translation>Temps dont vous disposez aujourd'hui</translation>
    </message>
    <message id="planDay.budget.unit.label">
        <source>Unit</source>
        <translation>Unité</translation>
    </message>
    <message id="planDay.budget.presets">
        <source>Presets</source>
        <translation>Préréglages</translation>
    </message>
    <message id="planDay.taskCount %lld">
        <source>Ready tasks to fit: %1</source>
        <translation>Tâches prêtes à placer : %1</translation>
    </message>
    <message id="ready.order.today">
        <source>In your order</source>
        <translation>Dans ton ordre</translation>
    </message>
    <message id="intents.add.done %@ %@">
        <source>Added “%1” to %2.</source>
        <translation>« %1 » ajoutée à %2.</translation>
    </message>
    <message id="intents.ready.some %lld %@">
        <source>Ready now (%1): %2</source>
        <translation>Prêtes maintenant (%1) : %2</translation>
    </message>
    <message id="intents.ready.none">
        <source>Nothing is ready right now.</source>
        <translation>Rien n’est prêt pour l’instant.</translation>
    </message>
    <message id="intents.complete.done %@">
        <source>Done: %1.</source>
        <translation>Terminé : %1.</translation>
    </message>
    <message id="intents.error.notFound">
        <source>That task or flow does not exist any more.</source>
        <translation>Cette tâche ou ce flux n’existe plus.</translation>
    </message>
    <message id="backup.restore.done.edgesLeftOut %lld">
        <source>Connections left out because they would have led a task back to itself or repeated another: %1.</source>
        <translation>Liens écartés parce qu’ils auraient ramené une tâche à elle-même ou répété un autre lien : %1.</translation>
    </message>
    <message id="backup.restore.done.safety %@">
        <source>What Fenrow held before is kept in “%1”. Restore that file with Replace to undo this.</source>
        <translation>Ce que Fenrow contenait avant est conservé dans « %1 ». Restaurez ce fichier avec Remplacer pour annuler.</translation>
    </message>
    <message id="backup.restore.failed.title">
        <source>The backup could not be restored</source>
        <translation>La sauvegarde n’a pas pu être restaurée</translation>
    </message>
    <message id="backup.restore.failed.message">
        <source>Nothing was changed.</source>
        <translation>Rien n’a été modifié.</translation>
    </message>
    <message id="backup.adjusted.title">
        <source>Backup written with changes</source>
        <translation>Sauvegarde écrite avec des modifications</translation>
    </message>
    <message id="backup.adjusted.message">
        <source>Some values could not be written as they are; they were left out or held to their limits:</source>
        <translation>Certaines valeurs n’ont pas pu être écrites telles quelles ; elles ont été omises ou ramenées à leurs limites :</translation>
    </message>
    <message id="import.opml.leftOut.title">
        <source>Part of the outline stayed out</source>
        <translation>Une partie du plan a été laissée de côté</translation>
    </message>
    <message id="import.opml.leftOut %1 %2">
        <source>Entries without text left out: %1. Dates outside the calendar left out: %2. Everything else was imported.</source>
        <translation>Entrées sans texte laissées de côté : %1. Dates hors du calendrier laissées de côté : %2. Tout le reste a été importé.</translation>
    </message>
    <message id="widget.count.one">
        <source>1 task ready</source>
        <translation>1 tâche prête</translation>
    </message>
    <message id="widget.count %1">
        <source>%1 tasks ready</source>
        <translation>%1 tâches prêtes</translation>
    </message>
    <message id="widget.empty.noTasks">
        <source>Nothing ready: no tasks yet</source>
        <translation>Rien de prêt : aucune tâche pour l’instant</translation>
    </message>
    <message id="widget.empty.allDone">
        <source>Nothing ready: all done</source>
        <translation>Rien de prêt : tout est fait</translation>
    </message>
    <message id="widget.empty.allBlocked">
        <source>Nothing ready: everything waits on other tasks</source>
        <translation>Rien de prêt : tout attend d’autres tâches</translation>
    </message>
    <message id="widget.empty.allDeferred">
        <source>Nothing ready: everything waits for its day</source>
        <translation>Rien de prêt : tout attend son jour</translation>
    </message>
    <message id="widget.empty.allTicked">
        <source>All ticked: Fenrow marks them done when it runs</source>
        <translation>Toutes cochées : Fenrow les termine dès qu’il tourne</translation>
    </message>
    <message id="widget.notWritten">
        <source>Fenrow has not written the Ready list yet. Open Fenrow to make it.</source>
        <translation>Fenrow n’a pas encore écrit la liste Prêtes. Ouvrez Fenrow pour la créer.</translation>
    </message>
    <message id="widget.outOfDate">
        <source>Open Fenrow to bring this list up to date</source>
        <translation>Ouvrez Fenrow pour mettre cette liste à jour</translation>
    </message>
    <message id="widget.popup.title">
        <source>Ready</source>
        <translation>Prêtes</translation>
    </message>
    <message id="widget.more %1">
        <source>and %1 more</source>
        <translation>et %1 de plus</translation>
    </message>
    <message id="widget.open">
        <source>Open Fenrow</source>
        <translation>Ouvrir Fenrow</translation>
    </message>
    <message id="widget.capture">
        <source>Quick capture</source>
        <translation>Saisie rapide</translation>
    </message>
    <message id="widget.quit">
        <source>Quit widget</source>
        <translation>Quitter le widget</translation>
    </message>
    <message id="widget.tick.failed">
        <source>The tick could not be saved. Try again, or tick the task in Fenrow.</source>
        <translation>La coche n’a pas pu être enregistrée. Réessayez, ou cochez la tâche dans Fenrow.</translation>
    </message>
    <message id="widget.open.failed">
        <source>Fenrow could not be started.</source>
        <translation>Fenrow n’a pas pu être lancé.</translation>
    </message>
    <message id="widget.tooltip %1">
        <source>Fenrow · %1</source>
        <translation>Fenrow · %1</translation>
    </message>
    <message id="engine.stop">
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
    <message id="import.opml.relink.progress">
        <source>Connecting the imported tasks…</source>
        <translation>Connexion des tâches importées…</translation>
    </message>
    <message id="settings.model.stopLoading">
        <source>Stop Loading</source>
        <translation>Arrêter le chargement</translation>
    </message>
    <message id="quickCapture.date.format.withYear">
        <source>ddd, MMM d, yyyy</source>
        <translation>ddd d MMM yyyy</translation>
    </message>
    <message id="canvas.access.file">
        <source>File</source>
        <translation>Fichier</translation>
    </message>
    <message id="canvas.access.after %1">
        <source>After: %1</source>
        <translation>Après : %1</translation>
    </message>
    <message id="canvas.access.before %1">
        <source>Before: %1</source>
        <translation>Avant : %1</translation>
    </message>
    <message id="canvas.access.subtaskOf %1">
        <source>Subtask of: %1</source>
        <translation>Sous-tâche de : %1</translation>
    </message>
    <message id="canvas.access.subtasks %1">
        <source>Subtasks: %1</source>
        <translation>Sous-tâches : %1</translation>
    </message>
    <message id="canvas.access.action.select">
        <source>Select</source>
        <translation>Sélectionner</translation>
    </message>
    <message id="canvas.access.action.open">
        <source>Open</source>
        <translation>Ouvrir</translation>
    </message>
    <message id="canvas.access.action.done">
        <source>Mark done</source>
        <translation>Marquer comme terminée</translation>
    </message>
    <message id="canvas.access.action.undone">
        <source>Mark not done</source>
        <translation>Marquer comme non terminée</translation>
    </message>
    <message id="canvas.access.name %1">
        <source>Canvas of %1</source>
        <translation>Canevas de %1</translation>
    </message>
    <message id="access.countedTasks %1 %2">
        <source>%1, tasks: %2</source>
        <translation>%1, tâches : %2</translation>
    </message>
</context>
</TS>
