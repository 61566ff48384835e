<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es">
<context>
    <name></name>
    <message id="mainWindow.title">
        <source>Fenrow</source>
        <translation>Fenrow</translation>
    </message>
    <message id="detail.empty.title">
        <source>No flow selected</source>
        <translation>Ningún flujo seleccionado</translation>
    </message>
    <message id="detail.empty.message">
        <source>Choose a flow in the sidebar, or create a new one with the + button.</source>
        <translation>Elige un flujo en la barra lateral o crea uno nuevo con el botón +.</translation>
    </message>
    <message id="sidebar.brandHeader">
        <source>Fenrow</source>
        <translation>Fenrow</translation>
    </message>
    <message id="sidebar.section.flows">
        <source>Flows</source>
        <translation>Flujos</translation>
    </message>
    <message id="sidebar.action.newFlow">
        <source>New flow</source>
        <translation>Nuevo flujo</translation>
    </message>
    <message id="sidebar.action.quit">
        <source>Quit Fenrow</source>
        <translation>Salir de Fenrow</translation>
    </message>
    <message id="sidebar.flow.progress %lld %lld %lld">
        <source>%1 of %3 done · %2 in progress</source>
        <translation>%1 de %3 hechas · %2 en curso</translation>
    </message>
    <message id="sidebar.flow.progress.complete %lld">
        <source>All %1 done</source>
        <translation>Las %1 hechas</translation>
    </message>
    <message id="sidebar.flow.progress.empty">
        <source>No tasks yet</source>
        <translation>Aún no hay tareas</translation>
    </message>
    <message id="sidebar.flow.rename.placeholder">
        <source>Flow name</source>
        <translation>Nombre del flujo</translation>
    </message>
    <message id="sidebar.row.action.rename">
        <source>Rename</source>
        <translation>Cambiar nombre</translation>
    </message>
    <message id="sidebar.row.action.delete">
        <source>Delete…</source>
        <translation>Eliminar…</translation>
    </message>
    <message id="sidebar.row.delete.confirm.title %@">
        <source>Delete “%1”?</source>
        <translation>¿Eliminar «%1»?</translation>
    </message>
    <message id="sidebar.row.delete.confirm.message">
        <source>The flow and all of its tasks, connections and files will be deleted. Its entries in the archive go too. This cannot be undone.</source>
        <translation>Se eliminarán el flujo y todas sus tareas, conexiones y archivos, además de sus entradas en el archivo. No se puede deshacer.</translation>
    </message>
    <message id="sidebar.row.delete">
        <source>Delete</source>
        <translation>Eliminar</translation>
    </message>
    <message id="sidebar.row.delete.confirm.cancel">
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message id="store.failed.title">
        <source>Fenrow cannot open its data</source>
        <translation>Fenrow no puede abrir sus datos</translation>
    </message>
    <message id="sample.flow.name">
        <source>Sample: Launch a landing page</source>
        <translation>Ejemplo: Lanzar una página de aterrizaje</translation>
    </message>
    <message id="sample.flow.item.offer">
        <source>Define the offer</source>
        <translation>Definir la oferta</translation>
    </message>
    <message id="sample.flow.item.copy">
        <source>Write the copy</source>
        <translation>Escribir los textos</translation>
    </message>
    <message id="sample.flow.item.layout">
        <source>Design the layout</source>
        <translation>Diseñar la maqueta</translation>
    </message>
    <message id="sample.flow.item.build">
        <source>Build the page</source>
        <translation>Construir la página</translation>
    </message>
    <message id="sample.flow.item.publish">
        <source>Publish and announce</source>
        <translation>Publicar y anunciar</translation>
    </message>
    <message id="sidebar.flow.untitled">
        <source>Untitled flow</source>
        <translation>Flujo sin título</translation>
    </message>
    <message id="sidebar.route.ready">
        <source>Ready</source>
        <translation>Disponibles</translation>
    </message>
    <message id="ready.title">
        <source>Ready</source>
        <translation>Disponibles</translation>
    </message>
    <message id="ready.sort.flow">
        <source>Flow</source>
        <translation>Flujo</translation>
    </message>
    <message id="ready.sort.dueDate">
        <source>Due date</source>
        <translation>Vencimiento</translation>
    </message>
    <message id="ready.sort.priority">
        <source>Priority</source>
        <translation>Prioridad</translation>
    </message>
    <message id="ready.sort.estimate">
        <source>Estimate</source>
        <translation>Duración</translation>
    </message>
    <message id="ready.group.today">
        <source>Today</source>
        <translation>Hoy</translation>
    </message>
    <message id="ready.group.other">
        <source>Other tasks</source>
        <translation>Otras tareas</translation>
    </message>
    <message id="ready.row.complete">
        <source>Mark as done</source>
        <translation>Marcar como hecha</translation>
    </message>
    <message id="ready.row.hasNotes">
        <source>Notes</source>
        <translation>Notas</translation>
    </message>
    <message id="ready.row.priority.high">
        <source>High</source>
        <translation>Alta</translation>
    </message>
    <message id="ready.row.priority.medium">
        <source>Medium</source>
        <translation>Media</translation>
    </message>
    <message id="ready.row.priority.low">
        <source>Low</source>
        <translation>Baja</translation>
    </message>
    <message id="ready.row.due.today">
        <source>Due today</source>
        <translation>Vence hoy</translation>
    </message>
    <message id="ready.row.due.tomorrow">
        <source>Due tomorrow</source>
        <translation>Vence mañana</translation>
    </message>
    <message id="ready.row.overdue %@">
        <source>Overdue · %1</source>
        <translation>Vencida · %1</translation>
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
        <translation>Aún no hay tareas</translation>
    </message>
    <message id="ready.empty.noTasks.message">
        <source>The tasks you can start right away gather here, from all of your flows. Add a few tasks to a flow to begin.</source>
        <translation>Aquí se reúnen las tareas que puedes empezar ya, de todos tus flujos. Añade algunas tareas a un flujo para comenzar.</translation>
    </message>
    <message id="ready.empty.allDone.title">
        <source>All done</source>
        <translation>Todo hecho</translation>
    </message>
    <message id="ready.empty.allDone.message">
        <source>Every task in every flow is finished. Enjoy the quiet, or plan what comes next.</source>
        <translation>Todas las tareas de todos tus flujos están terminadas. Disfruta de la calma o planifica lo siguiente.</translation>
    </message>
    <message id="ready.empty.allBlocked.title">
        <source>Everything is waiting</source>
        <translation>Todo está en espera</translation>
    </message>
    <message id="ready.empty.allBlocked.message">
        <source>Each open task waits for another one to finish first. Look over the connections in your flows.</source>
        <translation>Cada tarea abierta espera a que antes termine otra. Revisa las conexiones de tus flujos.</translation>
    </message>
    <message id="ready.empty.allDeferred.title">
        <source>Nothing starts today</source>
        <translation>Hoy no empieza nada</translation>
    </message>
    <message id="ready.empty.allDeferred.message">
        <source>Your next tasks have a later start date. They appear here on the day they start.</source>
        <translation>Tus próximas tareas empiezan más adelante. Aparecerán aquí el día en que comiencen.</translation>
    </message>
    <message id="sidebar.flow.copyName ">
        <source>%1 copy</source>
        <translation>Copia de %1</translation>
    </message>
    <message id="archive.day.today">
        <source>Today</source>
        <translation>Hoy</translation>
    </message>
    <message id="archive.day.yesterday">
        <source>Yesterday</source>
        <translation>Ayer</translation>
    </message>
    <message id="sidebar.route.archive">
        <source>Archive</source>
        <translation>Archivo</translation>
    </message>
    <message id="archive.title">
        <source>Archive</source>
        <translation>Archivo</translation>
    </message>
    <message id="archive.search.placeholder">
        <source>Search the archive</source>
        <translation>Buscar en el archivo</translation>
    </message>
    <message id="archive.row.repeated">
        <source>Repeated · round %1</source>
        <translation>Repetida · ronda %1</translation>
    </message>
    <message id="archive.row.restore">
        <source>Restore</source>
        <translation>Restaurar</translation>
    </message>
    <message id="archive.row.restore.help">
        <source>Put the task back into its flow, marked as done</source>
        <translation>Devolver la tarea a su flujo, marcada como hecha</translation>
    </message>
    <message id="archive.row.delete">
        <source>Delete</source>
        <translation>Eliminar</translation>
    </message>
    <message id="archive.count.label">
        <source>Entries: %1</source>
        <translation>Entradas: %1</translation>
    </message>
    <message id="archive.empty.title">
        <source>Nothing archived yet</source>
        <translation>Aún no hay nada archivado</translation>
    </message>
    <message id="archive.empty.message">
        <source>Done tasks you archive from a flow, and each finished round of a repeating task, are kept here by day.</source>
        <translation>Las tareas hechas que archives de un flujo y cada ronda terminada de una tarea repetitiva se guardan aquí por días.</translation>
    </message>
    <message id="archive.empty.search.title">
        <source>No matches</source>
        <translation>Sin resultados</translation>
    </message>
    <message id="archive.empty.search.message">
        <source>No archived task has this text in its title or in the name of its flow.</source>
        <translation>Ninguna tarea archivada tiene este texto en su título ni en el nombre de su flujo.</translation>
    </message>
    <message id="sidebar.template.menu.title">
        <source>New from Template</source>
        <translation>Nuevo desde plantilla</translation>
    </message>
    <message id="sidebar.template.menu.help">
        <source>Make a new flow from a saved template</source>
        <translation>Crear un flujo nuevo a partir de una plantilla guardada</translation>
    </message>
    <message id="sidebar.context.duplicate">
        <source>Duplicate</source>
        <translation>Duplicar</translation>
    </message>
    <message id="sidebar.context.saveTemplate">
        <source>Save as Template</source>
        <translation>Guardar como plantilla</translation>
    </message>
    <message id="sidebar.row.archiveDone">
        <source>Archive Done Tasks…</source>
        <translation>Archivar tareas hechas…</translation>
    </message>
    <message id="archive.confirm.title ">
        <source>Archive the done tasks of “%1”?</source>
        <translation>¿Archivar las tareas hechas de «%1»?</translation>
    </message>
    <message id="archive.confirm.message">
        <source>They leave the canvas along with their connections. Each one can be restored from the Archive; it comes back done, without connections.</source>
        <translation>Salen del lienzo junto con sus conexiones. Cada una puede restaurarse desde el Archivo; vuelve hecha y sin conexiones.</translation>
    </message>
    <message id="archive.confirm.action">
        <source>Archive</source>
        <translation>Archivar</translation>
    </message>
    <message id="archive.confirm.cancel">
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message id="menu.file">
        <source>&amp;File</source>
        <translation>&amp;Archivo</translation>
    </message>
    <message id="menu.edit">
        <source>&amp;Edit</source>
        <translation>&amp;Editar</translation>
    </message>
    <message id="menu.quit">
        <source>Quit</source>
        <translation>Salir</translation>
    </message>
    <message id="menu.undo">
        <source>Undo</source>
        <translation>Deshacer</translation>
    </message>
    <message id="menu.redo">
        <source>Redo</source>
        <translation>Rehacer</translation>
    </message>
    <message id="shortcut.key.unknown">
        <source>Unknown key</source>
        <translation>Tecla desconocida</translation>
    </message>
    <message id="export.markdown.progress %lld %lld">
        <source>%1 of %2 done</source>
        <translation>%1 de %2 hechas</translation>
    </message>
    <message id="export.markdown.status.inProgress">
        <source>in progress</source>
        <translation>en curso</translation>
    </message>
    <message id="export.markdown.status.paused">
        <source>paused</source>
        <translation>en pausa</translation>
    </message>
    <message id="export.markdown.after %@">
        <source>after %1</source>
        <translation>después de %1</translation>
    </message>
    <message id="export.markdown.panel.title">
        <source>Export as Markdown</source>
        <translation>Exportar como Markdown</translation>
    </message>
    <message id="export.markdown.panel.button">
        <source>Export</source>
        <translation>Exportar</translation>
    </message>
    <message id="export.markdown.failed.title">
        <source>Export failed</source>
        <translation>No se pudo exportar</translation>
    </message>
    <message id="export.markdown.failed.message">
        <source>The file could not be written. Check that the folder exists and that you may write to it.</source>
        <translation>No se pudo escribir el archivo. Compruebe que la carpeta existe y que puede escribir en ella.</translation>
    </message>
    <message id="export.opml.panel.title">
        <source>Export as OPML</source>
        <translation>Exportar como OPML</translation>
    </message>
    <message id="import.opml.panel.message">
        <source>Choose an OPML outline to import as a new flow</source>
        <translation>Elija un esquema OPML para importarlo como flujo nuevo</translation>
    </message>
    <message id="import.opml.panel.button">
        <source>Import</source>
        <translation>Importar</translation>
    </message>
    <message id="import.opml.failed.title">
        <source>This file can’t be imported</source>
        <translation>Este archivo no se puede importar</translation>
    </message>
    <message id="import.opml.failed.message">
        <source>It is not an OPML outline with at least one entry, or it is damaged. Nothing was added.</source>
        <translation>No es un esquema OPML con al menos una entrada, o está dañado. No se añadió nada.</translation>
    </message>
    <message id="sidebar.row.action.exportMarkdown">
        <source>Export as Markdown…</source>
        <translation>Exportar como Markdown…</translation>
    </message>
    <message id="sidebar.row.action.copyMarkdown">
        <source>Copy as Markdown</source>
        <translation>Copiar como Markdown</translation>
    </message>
    <message id="sidebar.context.exportOPML">
        <source>Export as OPML…</source>
        <translation>Exportar como OPML…</translation>
    </message>
    <message id="menu.exportMarkdown">
        <source>Export as &amp;Markdown…</source>
        <translation>Exportar como &amp;Markdown…</translation>
    </message>
    <message id="menu.copyMarkdown">
        <source>&amp;Copy as Markdown</source>
        <translation>&amp;Copiar como Markdown</translation>
    </message>
    <message id="menu.exportOPML">
        <source>Export as &amp;OPML…</source>
        <translation>Exportar como &amp;OPML…</translation>
    </message>
    <message id="menu.importOPML">
        <source>&amp;Import OPML…</source>
        <translation>&amp;Importar OPML…</translation>
    </message>
    <message id="menu.backUp">
        <source>&amp;Back Up…</source>
        <translation>Hacer copia de &amp;seguridad…</translation>
    </message>
    <message id="menu.restoreBackup">
        <source>&amp;Restore from Backup…</source>
        <translation>&amp;Restaurar copia de seguridad…</translation>
    </message>
    <message id="backup.save.panel.message">
        <source>Choose where to save a backup of all your flows, templates and archive</source>
        <translation>Elija dónde guardar la copia de seguridad de todos sus flujos, plantillas y archivo</translation>
    </message>
    <message id="backup.save.panel.button">
        <source>Back Up</source>
        <translation>Guardar copia</translation>
    </message>
    <message id="backup.failed.title">
        <source>Backup failed</source>
        <translation>La copia de seguridad falló</translation>
    </message>
    <message id="backup.failed.message">
        <source>The backup could not be written. Check that the folder exists and that you may write to it.</source>
        <translation>No se pudo escribir la copia de seguridad. Compruebe que la carpeta existe y que puede escribir en ella.</translation>
    </message>
    <message id="backup.open.panel.message">
        <source>Choose a Fenrow backup to restore</source>
        <translation>Elija una copia de seguridad de Fenrow para restaurar</translation>
    </message>
    <message id="backup.open.panel.button">
        <source>Restore</source>
        <translation>Restaurar</translation>
    </message>
    <message id="backup.restore.unreadable.title">
        <source>This backup can’t be restored</source>
        <translation>Esta copia de seguridad no se puede restaurar</translation>
    </message>
    <message id="backup.restore.unreadable.message">
        <source>The file is not a Fenrow backup, or it is damaged. Nothing was changed.</source>
        <translation>El archivo no es una copia de seguridad de Fenrow o está dañado. No se cambió nada.</translation>
    </message>
    <message id="backup.restore.newer.message">
        <source>The backup was made by a newer version of Fenrow. Update Fenrow to restore it. Nothing was changed.</source>
        <translation>La copia la hizo una versión más reciente de Fenrow. Actualice Fenrow para restaurarla. No se cambió nada.</translation>
    </message>
    <message id="backup.restore.mode.title">
        <source>Restore backup</source>
        <translation>Restaurar copia de seguridad</translation>
    </message>
    <message id="backup.restore.mode.message %lld">
        <source>Flows in the backup: %1. Merge adds the flows you don’t have yet and keeps everything else. Replace first deletes all your flows, templates and archive entries.</source>
        <translation>Flujos en la copia: %1. Combinar añade los flujos que aún no tiene y conserva todo lo demás. Reemplazar borra antes todos sus flujos, plantillas y entradas del archivo.</translation>
    </message>
    <message id="backup.restore.mode.merge">
        <source>Merge</source>
        <translation>Combinar</translation>
    </message>
    <message id="backup.restore.mode.replace">
        <source>Replace</source>
        <translation>Reemplazar</translation>
    </message>
    <message id="backup.restore.replace.confirm.title">
        <source>Replace all your data?</source>
        <translation>¿Reemplazar todos sus datos?</translation>
    </message>
    <message id="backup.restore.replace.confirm.message">
        <source>All flows, templates and archive entries in Fenrow are deleted and replaced by those of the backup. This can’t be undone.</source>
        <translation>Todos los flujos, plantillas y entradas del archivo de Fenrow se borran y se sustituyen por los de la copia. No se puede deshacer.</translation>
    </message>
    <message id="backup.restore.done.title">
        <source>Backup restored</source>
        <translation>Copia de seguridad restaurada</translation>
    </message>
    <message id="backup.restore.done.message %lld">
        <source>Flows restored: %1.</source>
        <translation>Flujos restaurados: %1.</translation>
    </message>
    <message id="backup.restore.done.nothing">
        <source>Every flow in the backup is already here. Nothing was added.</source>
        <translation>Todos los flujos de la copia ya están aquí. No se añadió nada.</translation>
    </message>
    <message id="inspector.flow">
        <source>Flow</source>
        <translation>Flujo</translation>
    </message>
    <message id="inspector.status.label">
        <source>Status</source>
        <translation>Estado</translation>
    </message>
    <message id="inspector.status.pending">
        <source>Not started</source>
        <translation>Sin empezar</translation>
    </message>
    <message id="inspector.status.inProgress">
        <source>In progress</source>
        <translation>En curso</translation>
    </message>
    <message id="inspector.status.paused">
        <source>Paused</source>
        <translation>En pausa</translation>
    </message>
    <message id="inspector.status.done">
        <source>Done</source>
        <translation>Hecha</translation>
    </message>
    <message id="inspector.priority.label">
        <source>Priority</source>
        <translation>Prioridad</translation>
    </message>
    <message id="inspector.priority.none">
        <source>None</source>
        <translation>Ninguna</translation>
    </message>
    <message id="inspector.priority.low">
        <source>Low</source>
        <translation>Baja</translation>
    </message>
    <message id="inspector.priority.medium">
        <source>Medium</source>
        <translation>Media</translation>
    </message>
    <message id="inspector.priority.high">
        <source>High</source>
        <translation>Alta</translation>
    </message>
    <message id="inspector.color.label">
        <source>Colour</source>
        <translation>Color</translation>
    </message>
    <message id="inspector.estimate.label">
        <source>Estimate</source>
        <translation>Estimación</translation>
    </message>
    <message id="inspector.estimate.placeholder">
        <source>None</source>
        <translation>Ninguna</translation>
    </message>
    <message id="inspector.estimate.unit">
        <source>min</source>
        <translation>min</translation>
    </message>
    <message id="inspector.startDate.label">
        <source>Start</source>
        <translation>Inicio</translation>
    </message>
    <message id="inspector.dueDate.label">
        <source>Due</source>
        <translation>Vence</translation>
    </message>
    <message id="inspector.date.add">
        <source>Add date</source>
        <translation>Añadir fecha</translation>
    </message>
    <message id="inspector.date.pick">
        <source>Choose a date</source>
        <translation>Elegir fecha</translation>
    </message>
    <message id="inspector.date.clear">
        <source>Remove date</source>
        <translation>Quitar fecha</translation>
    </message>
    <message id="inspector.deferred.note %@">
        <source>Not ready before %1.</source>
        <translation>No está lista antes del %1.</translation>
    </message>
    <message id="inspector.recurrence.label">
        <source>Repeat</source>
        <translation>Repetir</translation>
    </message>
    <message id="inspector.recurrence.never">
        <source>Never</source>
        <translation>Nunca</translation>
    </message>
    <message id="inspector.recurrence.daily">
        <source>Every day</source>
        <translation>Cada día</translation>
    </message>
    <message id="inspector.recurrence.weekdays">
        <source>Every weekday</source>
        <translation>Días laborables</translation>
    </message>
    <message id="inspector.recurrence.weekly">
        <source>Every week</source>
        <translation>Cada semana</translation>
    </message>
    <message id="inspector.recurrence.monthly">
        <source>Every month</source>
        <translation>Cada mes</translation>
    </message>
    <message id="inspector.recurrence.afterDone">
        <source>Some days after done</source>
        <translation>Unos días después de hecha</translation>
    </message>
    <message id="inspector.recurrence.interval.label">
        <source>Every</source>
        <translation>Cada</translation>
    </message>
    <message id="inspector.recurrence.interval.unit">
        <source>days</source>
        <translation>días</translation>
    </message>
    <message id="inspector.notes.label">
        <source>Notes</source>
        <translation>Notas</translation>
    </message>
    <message id="inspector.notes.placeholder">
        <source>Add notes</source>
        <translation>Añadir notas</translation>
    </message>
    <message id="inspector.notes.resize">
        <source>Notes height</source>
        <translation>Altura de las notas</translation>
    </message>
    <message id="inspector.checklist.label">
        <source>Checklist</source>
        <translation>Lista de pasos</translation>
    </message>
    <message id="inspector.checklist.count %lld %lld">
        <source>%1 of %2 done</source>
        <translation>%1 de %2 hechos</translation>
    </message>
    <message id="inspector.checklist.add.placeholder">
        <source>Add a step</source>
        <translation>Añadir un paso</translation>
    </message>
    <message id="inspector.checklist.toggle">
        <source>Tick step</source>
        <translation>Marcar paso</translation>
    </message>
    <message id="inspector.checklist.open">
        <source>Open step</source>
        <translation>Paso pendiente</translation>
    </message>
    <message id="inspector.checklist.done">
        <source>Done step</source>
        <translation>Paso hecho</translation>
    </message>
    <message id="inspector.checklist.delete">
        <source>Delete step</source>
        <translation>Eliminar paso</translation>
    </message>
    <message id="inspector.blockedBy.label">
        <source>Waits for</source>
        <translation>Espera a</translation>
    </message>
    <message id="inspector.blockedBy.empty">
        <source>Nothing: free to start</source>
        <translation>Nada: se puede empezar</translation>
    </message>
    <message id="inspector.blocks.label">
        <source>Holds up</source>
        <translation>Retiene a</translation>
    </message>
    <message id="inspector.blocks.empty">
        <source>No other task</source>
        <translation>Ninguna otra tarea</translation>
    </message>
    <message id="inspector.empty.title">
        <source>No task selected</source>
        <translation>Ninguna tarea seleccionada</translation>
    </message>
    <message id="inspector.empty.message">
        <source>Select one task on the canvas to see and edit its details.</source>
        <translation>Selecciona una tarea en el lienzo para ver y editar sus detalles.</translation>
    </message>
    <message id="inspector.file.label">
        <source>File</source>
        <translation>Archivo</translation>
    </message>
    <message id="inspector.calendar.today">
        <source>Today</source>
        <translation>Hoy</translation>
    </message>
    <message id="inspector.calendar.tomorrow">
        <source>Tomorrow</source>
        <translation>Mañana</translation>
    </message>
    <message id="inspector.calendar.nextWeek">
        <source>Next week</source>
        <translation>La próxima semana</translation>
    </message>
    <message id="canvas.node.new">
        <source>New task</source>
        <translation>Nueva tarea</translation>
    </message>
    <message id="engine.availability.available">
        <source>The on-device language model is ready.</source>
        <translation>El modelo de lenguaje del dispositivo está listo.</translation>
    </message>
    <message id="engine.availability.deviceNotEligible">
        <source>This computer cannot run the language model. Everything still works by hand.</source>
        <translation>Este ordenador no puede ejecutar el modelo de lenguaje. Todo sigue funcionando a mano.</translation>
    </message>
    <message id="engine.availability.appleIntelligenceNotEnabled">
        <source>The language model is switched off in the system settings. Everything still works by hand.</source>
        <translation>El modelo de lenguaje está desactivado en los ajustes del sistema. Todo sigue funcionando a mano.</translation>
    </message>
    <message id="engine.availability.modelNotReady">
        <source>The language model is not ready yet. Everything still works by hand.</source>
        <translation>El modelo de lenguaje aún no está listo. Todo sigue funcionando a mano.</translation>
    </message>
    <message id="engine.availability.frameworkUnavailable">
        <source>No on-device language model is available. Everything still works by hand.</source>
        <translation>No hay ningún modelo de lenguaje disponible en el dispositivo. Todo sigue funcionando a mano.</translation>
    </message>
    <message id="engine.availability.modelUnusable">
        <source>The chosen language model cannot be used. Everything still works by hand.</source>
        <translation>El modelo de lenguaje elegido no se puede usar. Todo sigue funcionando a mano.</translation>
    </message>
    <message id="banner.engineUnavailable.dismiss">
        <source>Dismiss</source>
        <translation>Descartar</translation>
    </message>
    <message id="planDay.plan">
        <source>Plan my day</source>
        <translation>Planificar mi día</translation>
    </message>
    <message id="planDay.planManual">
        <source>Fit into my time</source>
        <translation>Ajustar a mi tiempo</translation>
    </message>
    <message id="planDay.subtitle">
        <source>The language model orders your ready tasks, then they are fitted into the time you have.</source>
        <translation>El modelo de lenguaje ordena tus tareas disponibles y luego se ajustan al tiempo que tienes.</translation>
    </message>
    <message id="planDay.subtitle.manual">
        <source>Your ready tasks, in the order of the Ready list, are fitted into the time you have.</source>
        <translation>Tus tareas disponibles, en el orden de la lista Disponibles, se ajustan al tiempo que tienes.</translation>
    </message>
    <message id="planDay.order.ai">
        <source>Order by the language model</source>
        <translation>Orden del modelo de lenguaje</translation>
    </message>
    <message id="planDay.order.custom">
        <source>Your order</source>
        <translation>Tu orden</translation>
    </message>
    <message id="planDay.budget.unit.minutes">
        <source>minutes</source>
        <translation>minutos</translation>
    </message>
    <message id="planDay.budget.unit.hours">
        <source>hours</source>
        <translation>horas</translation>
    </message>
    <message id="planDay.summary">
        <source>%1 of %2 planned</source>
        <translation>%1 de %2 planificados</translation>
    </message>
    <message id="planDay.summary.overflow %lld">
        <source>%1 more do not fit.</source>
        <translation>%1 más no caben.</translation>
    </message>
    <message id="newFlowFromText.create">
        <source>Create flow</source>
        <translation>Crear flujo</translation>
    </message>
    <message id="newFlowFromText.createBlank">
        <source>Create empty flow</source>
        <translation>Crear flujo vacío</translation>
    </message>
    <message id="newFlowFromText.noTasksFound.title">
        <source>No tasks found</source>
        <translation>No se encontraron tareas</translation>
    </message>
    <message id="newFlowFromText.noTasksFound.message">
        <source>The text holds no steps to turn into tasks. Add some detail, or create an empty flow.</source>
        <translation>El texto no contiene pasos que convertir en tareas. Añade más detalle o crea un flujo vacío.</translation>
    </message>
    <message id="newFlowFromText.failed.title">
        <source>Could not create the flow</source>
        <translation>No se pudo crear el flujo</translation>
    </message>
    <message id="newFlowFromText.failed.message">
        <source>The language model could not read the text. Try again, or create an empty flow.</source>
        <translation>El modelo de lenguaje no pudo leer el texto. Inténtalo de nuevo o crea un flujo vacío.</translation>
    </message>
    <message id="quickCapture.picker.newFlow">
        <source>New flow</source>
        <translation>Nuevo flujo</translation>
    </message>
    <message id="canvas.node.status.pending">
        <source>Not started</source>
        <translation>Sin empezar</translation>
    </message>
    <message id="canvas.node.status.inProgress">
        <source>In progress</source>
        <translation>En curso</translation>
    </message>
    <message id="canvas.node.status.done">
        <source>Done</source>
        <translation>Hecho</translation>
    </message>
    <message id="canvas.node.status.paused">
        <source>Paused</source>
        <translation>En pausa</translation>
    </message>
    <message id="canvas.node.starts ">
        <source>Starts %1</source>
        <translation>Empieza %1</translation>
    </message>
    <message id="canvas.node.waiting ">
        <source>Waiting on %1</source>
        <translation>Espera a %1</translation>
    </message>
    <message id="canvas.node.ready">
        <source>Ready</source>
        <translation>Lista</translation>
    </message>
    <message id="canvas.node.status.label">
        <source>Status</source>
        <translation>Estado</translation>
    </message>
    <message id="canvas.node.deferred.help">
        <source>Not before this day</source>
        <translation>No antes de este día</translation>
    </message>
    <message id="canvas.node.due.label">
        <source>Due date</source>
        <translation>Fecha límite</translation>
    </message>
    <message id="canvas.node.repeat.label">
        <source>Repeats</source>
        <translation>Se repite</translation>
    </message>
    <message id="canvas.node.checklist.help">
        <source>Steps done</source>
        <translation>Pasos hechos</translation>
    </message>
    <message id="canvas.node.priority.label">
        <source>Priority</source>
        <translation>Prioridad</translation>
    </message>
    <message id="canvas.cycleRejection">
        <source>That connection would make a loop</source>
        <translation>Esa conexión formaría un ciclo</translation>
    </message>
    <message id="canvas.file.drop.tooLarge ">
        <source>%1 is too large to attach (%2)</source>
        <translation>%1 es demasiado grande para adjuntarlo (%2)</translation>
    </message>
    <message id="canvas.file.drop.failed ">
        <source>%1 could not be read</source>
        <translation>No se pudo leer %1</translation>
    </message>
    <message id="canvas.port.label">
        <source>Connect</source>
        <translation>Conectar</translation>
    </message>
    <message id="canvas.port.help.collapse">
        <source>Drag to connect; click to fold or unfold the subtasks</source>
        <translation>Arrastra para conectar; haz clic para plegar o desplegar las subtareas</translation>
    </message>
    <message id="canvas.port.action.collapse">
        <source>Fold subtasks</source>
        <translation>Plegar subtareas</translation>
    </message>
    <message id="canvas.port.action.expand">
        <source>Unfold subtasks</source>
        <translation>Desplegar subtareas</translation>
    </message>
    <message id="canvas.edge.delete">
        <source>Delete connection</source>
        <translation>Eliminar conexión</translation>
    </message>
    <message id="canvas.fileLink.delete">
        <source>Unlink file</source>
        <translation>Desvincular archivo</translation>
    </message>
    <message id="canvas.node.addChild">
        <source>Add subtask</source>
        <translation>Añadir subtarea</translation>
    </message>
    <message id="canvas.node.rename">
        <source>Rename</source>
        <translation>Renombrar</translation>
    </message>
    <message id="canvas.node.setColor">
        <source>Color</source>
        <translation>Color</translation>
    </message>
    <message id="canvas.node.color.none">
        <source>No color</source>
        <translation>Sin color</translation>
    </message>
    <message id="canvas.node.color.red">
        <source>Red</source>
        <translation>Rojo</translation>
    </message>
    <message id="canvas.node.color.orange">
        <source>Orange</source>
        <translation>Naranja</translation>
    </message>
    <message id="canvas.node.color.yellow">
        <source>Yellow</source>
        <translation>Amarillo</translation>
    </message>
    <message id="canvas.node.color.green">
        <source>Green</source>
        <translation>Verde</translation>
    </message>
    <message id="canvas.node.color.blue">
        <source>Blue</source>
        <translation>Azul</translation>
    </message>
    <message id="canvas.node.color.purple">
        <source>Purple</source>
        <translation>Morado</translation>
    </message>
    <message id="canvas.node.color.pink">
        <source>Pink</source>
        <translation>Rosa</translation>
    </message>
    <message id="canvas.node.color.grey">
        <source>Grey</source>
        <translation>Gris</translation>
    </message>
    <message id="canvas.node.resize.reset">
        <source>Reset size</source>
        <translation>Restablecer tamaño</translation>
    </message>
    <message id="canvas.node.delete">
        <source>Delete</source>
        <translation>Eliminar</translation>
    </message>
    <message id="canvas.file.open">
        <source>Open</source>
        <translation>Abrir</translation>
    </message>
    <message id="canvas.file.exportCopy">
        <source>Save a copy…</source>
        <translation>Guardar una copia…</translation>
    </message>
    <message id="canvas.file.missing">
        <source>The file's contents are missing</source>
        <translation>Falta el contenido del archivo</translation>
    </message>
    <message id="canvas.file.unlinkAll">
        <source>Unlink from all tasks</source>
        <translation>Desvincular de todas las tareas</translation>
    </message>
    <message id="canvas.file.delete">
        <source>Delete file</source>
        <translation>Eliminar archivo</translation>
    </message>
    <message id="canvas.file.add">
        <source>Attach file…</source>
        <translation>Adjuntar archivo…</translation>
    </message>
    <message id="canvas.file.add.prompt">
        <source>Choose files to attach</source>
        <translation>Elige los archivos que adjuntar</translation>
    </message>
    <message id="toolbar.addTask">
        <source>Add task</source>
        <translation>Añadir tarea</translation>
    </message>
    <message id="toolbar.addItem">
        <source>Add</source>
        <translation>Añadir</translation>
    </message>
    <message id="toolbar.attachFile">
        <source>Attach file</source>
        <translation>Adjuntar archivo</translation>
    </message>
    <message id="toolbar.filter">
        <source>Filter by color</source>
        <translation>Filtrar por color</translation>
    </message>
    <message id="toolbar.grid">
        <source>Snap to grid</source>
        <translation>Ajustar a la cuadrícula</translation>
    </message>
    <message id="toolbar.arrange">
        <source>Arrange as tree</source>
        <translation>Ordenar como árbol</translation>
    </message>
    <message id="toolbar.archiveDone">
        <source>Archive done tasks</source>
        <translation>Archivar las tareas hechas</translation>
    </message>
    <message id="archive.action.archiveDone">
        <source>Archive done</source>
        <translation>Archivar hechas</translation>
    </message>
    <message id="toolbar.filter.off">
        <source>No filter</source>
        <translation>Sin filtro</translation>
    </message>
    <message id="toolbar.filter.clear">
        <source>Clear filter</source>
        <translation>Quitar filtro</translation>
    </message>
    <message id="toolbar.filter.mode.label">
        <source>Other tasks</source>
        <translation>Otras tareas</translation>
    </message>
    <message id="toolbar.filter.mode.dim">
        <source>Dim</source>
        <translation>Atenuar</translation>
    </message>
    <message id="toolbar.filter.mode.hide">
        <source>Hide</source>
        <translation>Ocultar</translation>
    </message>
    <message id="toolbar.zoomOut">
        <source>Zoom out</source>
        <translation>Alejar</translation>
    </message>
    <message id="toolbar.zoomIn">
        <source>Zoom in</source>
        <translation>Acercar</translation>
    </message>
    <message id="toolbar.zoomToFit">
        <source>Zoom to fit</source>
        <translation>Ajustar a la vista</translation>
    </message>
    <message id="toolbar.zoomLevel">
        <source>%1%</source>
        <translation>%1 %</translation>
    </message>
    <message id="toolbar.progress">
        <source>Progress</source>
        <translation>Progreso</translation>
    </message>
    <message id="toolbar.progress %lld %lld">
        <source>%1 of %2 done</source>
        <translation>%1 de %2 hechas</translation>
    </message>
    <message id="toolbar.progress.short %lld %lld">
        <source>%1/%2</source>
        <translation>%1/%2</translation>
    </message>
    <message id="toolbar.progress.ready %lld %lld %lld">
        <source>%1 of %2 done · %3 ready</source>
        <translation>%1 de %2 hechas · %3 listas</translation>
    </message>
    <message id="canvas.empty.title">
        <source>An empty flow</source>
        <translation>Un flujo vacío</translation>
    </message>
    <message id="canvas.empty.message">
        <source>Add a first task, then draw from its port to the next one.</source>
        <translation>Añade una primera tarea y arrastra desde su conector hasta la siguiente.</translation>
    </message>
    <message id="canvas.empty.addButton">
        <source>Add first task</source>
        <translation>Añadir la primera tarea</translation>
    </message>
    <message id="import.opml.relink.title">
        <source>Connect the imported tasks?</source>
        <translation>¿Conectar las tareas importadas?</translation>
    </message>
    <message id="import.opml.relink.message">
        <source>The outline brought no dependencies. Fenrow can suggest which tasks have to come first; you can change or delete every connection afterwards.</source>
        <translation>El esquema no trae dependencias. Fenrow puede sugerir qué tareas van primero; después puede cambiar o borrar cada conexión.</translation>
    </message>
    <message id="import.opml.relink.connect">
        <source>Connect</source>
        <translation>Conectar</translation>
    </message>
    <message id="import.opml.relink.keep">
        <source>Keep as Is</source>
        <translation>Dejar así</translation>
    </message>
    <message id="quickCapture.window.title">
        <source>Quick Capture</source>
        <translation>Captura rápida</translation>
    </message>
    <message id="quickCapture.field.placeholder">
        <source>What needs doing? Try “call the bank tomorrow”</source>
        <translation>¿Qué hay que hacer? Prueba «llamar al banco mañana»</translation>
    </message>
    <message id="quickCapture.picker.label">
        <source>Flow</source>
        <translation>Flujo</translation>
    </message>
    <message id="quickCapture.date.due %@">
        <source>Due %1</source>
        <translation>Vence: %1</translation>
    </message>
    <message id="quickCapture.date.help %@">
        <source>Read from your text: due %1. Remove it to keep those words in the title.</source>
        <translation>Leído de tu texto: vence %1. Si lo quitas, esas palabras se quedan en el título.</translation>
    </message>
    <message id="quickCapture.date.dismiss">
        <source>Remove date</source>
        <translation>Quitar fecha</translation>
    </message>
    <message id="quickCapture.action.save">
        <source>Add task</source>
        <translation>Añadir tarea</translation>
    </message>
    <message id="quickCapture.action.cancel">
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message id="quickCapture.hint">
        <source>Return adds · Esc closes</source>
        <translation>Intro añade · Esc cierra</translation>
    </message>
    <message id="quickCapture.date.format">
        <source>ddd, MMM d</source>
        <translation>ddd d MMM</translation>
    </message>
    <message id="sidebar.action.settings">
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
    <message id="menu.settings">
        <source>Settings…</source>
        <translation>Ajustes…</translation>
    </message>
    <message id="settings.title">
        <source>Fenrow Settings</source>
        <translation>Ajustes de Fenrow</translation>
    </message>
    <message id="settings.page.general">
        <source>General</source>
        <translation>General</translation>
    </message>
    <message id="settings.page.shortcuts">
        <source>Shortcuts</source>
        <translation>Atajos</translation>
    </message>
    <message id="settings.page.appearance">
        <source>Appearance</source>
        <translation>Apariencia</translation>
    </message>
    <message id="settings.page.language">
        <source>Language</source>
        <translation>Idioma</translation>
    </message>
    <message id="settings.page.data">
        <source>Data</source>
        <translation>Datos</translation>
    </message>
    <message id="settings.page.model">
        <source>Language model</source>
        <translation>Modelo de lenguaje</translation>
    </message>
    <message id="settings.model.privacy">
        <source>The model runs on this computer; nothing you write leaves it.</source>
        <translation>El modelo se ejecuta en este ordenador; nada de lo que escribes sale de él.</translation>
    </message>
    <message id="settings.model.chosen.title">
        <source>Chosen model</source>
        <translation>Modelo elegido</translation>
    </message>
    <message id="settings.model.details">
        <source>%1 · %2</source>
        <translation>%1 · %2</translation>
    </message>
    <message id="settings.model.state.none">
        <source>No model is chosen. Until one is, everything is done by hand.</source>
        <translation>No hay ningún modelo elegido. Hasta que lo haya, todo se hace a mano.</translation>
    </message>
    <message id="settings.model.state.idle">
        <source>Not loaded yet; it loads when a feature first needs it.</source>
        <translation>Aún no está cargado; se carga cuando una función lo necesita por primera vez.</translation>
    </message>
    <message id="settings.model.state.loading">
        <source>Loading the model…</source>
        <translation>Cargando el modelo…</translation>
    </message>
    <message id="settings.model.state.ready">
        <source>Loaded: %1, with a context of %2 tokens.</source>
        <translation>Cargado: %1, con un contexto de %2 tokens.</translation>
    </message>
    <message id="settings.model.state.failed">
        <source>This file cannot be used: %1</source>
        <translation>Este archivo no se puede usar: %1</translation>
    </message>
    <message id="settings.model.state.unavailable">
        <source>The model cannot run here: %1</source>
        <translation>El modelo no puede ejecutarse aquí: %1</translation>
    </message>
    <message id="settings.model.choose">
        <source>Choose File…</source>
        <translation>Elegir archivo…</translation>
    </message>
    <message id="settings.model.choose.dialog">
        <source>Choose a Language Model</source>
        <translation>Elegir un modelo de lenguaje</translation>
    </message>
    <message id="settings.model.choose.filter">
        <source>GGUF models (*.gguf)</source>
        <translation>Modelos GGUF (*.gguf)</translation>
    </message>
    <message id="settings.model.remove">
        <source>Remove</source>
        <translation>Quitar</translation>
    </message>
    <message id="settings.model.refused.notFound">
        <source>%1 was not found.</source>
        <translation>No se encontró %1.</translation>
    </message>
    <message id="settings.model.refused.unreadable">
        <source>%1 cannot be read.</source>
        <translation>No se puede leer %1.</translation>
    </message>
    <message id="settings.model.refused.notModel">
        <source>%1 is not a GGUF model file.</source>
        <translation>%1 no es un archivo de modelo GGUF.</translation>
    </message>
    <message id="settings.model.refused.kept">
        <source>The chosen model stays as it was.</source>
        <translation>El modelo elegido sigue siendo el mismo.</translation>
    </message>
    <message id="settings.model.try.title">
        <source>Try it</source>
        <translation>Probar</translation>
    </message>
    <message id="settings.model.try.caption">
        <source>Runs one short request and measures how fast the model answers.</source>
        <translation>Ejecuta una petición breve y mide lo rápido que responde el modelo.</translation>
    </message>
    <message id="settings.model.try">
        <source>Try It</source>
        <translation>Probar</translation>
    </message>
    <message id="settings.model.trial.running">
        <source>Running a short request…</source>
        <translation>Ejecutando una petición breve…</translation>
    </message>
    <message id="settings.model.trial.result">
        <source>%1 tokens in %2 s (%3 tokens per second)</source>
        <translation>%1 tokens en %2 s (%3 tokens por segundo)</translation>
    </message>
    <message id="settings.model.trial.failed">
        <source>The trial failed: %1</source>
        <translation>La prueba falló: %1</translation>
    </message>
    <message id="settings.model.found.title">
        <source>On this computer</source>
        <translation>En este ordenador</translation>
    </message>
    <message id="settings.model.found.caption">
        <source>Models already downloaded with llama.cpp, LM Studio, GPT4All or Ollama, from Hugging Face, or into Downloads.</source>
        <translation>Modelos que ya descargaste con llama.cpp, LM Studio, GPT4All u Ollama, desde Hugging Face o en Descargas.</translation>
    </message>
    <message id="settings.model.found.looking">
        <source>Looking…</source>
        <translation>Buscando…</translation>
    </message>
    <message id="settings.model.found.none">
        <source>No models found in those folders.</source>
        <translation>No se encontraron modelos en esas carpetas.</translation>
    </message>
    <message id="settings.model.found.item">
        <source>%1 — %2 · %3</source>
        <translation>%1 — %2 · %3</translation>
    </message>
    <message id="settings.model.use">
        <source>Use</source>
        <translation>Usar</translation>
    </message>
    <message id="banner.engineUnavailable.chooseModel">
        <source>Choose a model…</source>
        <translation>Elegir un modelo…</translation>
    </message>
    <message id="settings.page.about">
        <source>About</source>
        <translation>Acerca de</translation>
    </message>
    <message id="settings.general.startup.title">
        <source>Start</source>
        <translation>Inicio</translation>
    </message>
    <message id="settings.general.launchAtLogin">
        <source>Open Fenrow when I log in</source>
        <translation>Abrir Fenrow al iniciar sesión</translation>
    </message>
    <message id="settings.general.widgetAtLogin">
        <source>Show the Ready list in the tray when I log in</source>
        <translation>Mostrar la lista Disponibles en la bandeja al iniciar sesión</translation>
    </message>
    <message id="settings.general.launchAtLogin.failed">
        <source>Fenrow could not change its autostart entry. Check that you may write to %1.</source>
        <translation>Fenrow no pudo cambiar su entrada de inicio automático. Compruebe que puede escribir en %1.</translation>
    </message>
    <message id="settings.general.reminders.title">
        <source>Reminders</source>
        <translation>Recordatorios</translation>
    </message>
    <message id="settings.general.dueReminders">
        <source>Remind me of tasks on their due day</source>
        <translation>Recordarme las tareas el día de su vencimiento</translation>
    </message>
    <message id="settings.general.dueReminderHour">
        <source>Time of the reminder</source>
        <translation>Hora del recordatorio</translation>
    </message>
    <message id="settings.general.morningDigest">
        <source>Send a morning summary of the day's tasks</source>
        <translation>Enviar por la mañana un resumen de las tareas del día</translation>
    </message>
    <message id="notification.due.body">
        <source>Due today</source>
        <translation>Vence hoy</translation>
    </message>
    <message id="notification.digest.title">
        <source>Ready to work on today</source>
        <translation>Listo para empezar hoy</translation>
    </message>
    <message id="notification.open">
        <source>Open</source>
        <translation>Abrir</translation>
    </message>
    <message id="settings.general.planDay.title">
        <source>Plan Day</source>
        <translation>Planificar el día</translation>
    </message>
    <message id="settings.general.dayPlanBudget">
        <source>Time available per day</source>
        <translation>Tiempo disponible al día</translation>
    </message>
    <message id="settings.general.dayPlanBudget.minutes">
        <source>minutes</source>
        <translation>minutos</translation>
    </message>
    <message id="settings.general.dayPlanBudget.hours">
        <source>hours</source>
        <translation>horas</translation>
    </message>
    <message id="settings.general.filter.title">
        <source>Filters</source>
        <translation>Filtros</translation>
    </message>
    <message id="settings.general.filterMode">
        <source>Tasks a filter leaves out</source>
        <translation>Tareas que el filtro deja fuera</translation>
    </message>
    <message id="settings.general.filterMode.dim">
        <source>Dim them</source>
        <translation>Atenuarlas</translation>
    </message>
    <message id="settings.general.filterMode.hide">
        <source>Hide them</source>
        <translation>Ocultarlas</translation>
    </message>
    <message id="settings.general.quickCapture.title">
        <source>Quick capture</source>
        <translation>Captura rápida</translation>
    </message>
    <message id="settings.general.quickCapture.subtitle">
        <source>Opens the capture panel from any application while Fenrow is running.</source>
        <translation>Abre el panel de captura desde cualquier aplicación mientras Fenrow está abierto.</translation>
    </message>
    <message id="shortcut.recorder.recording">
        <source>Press keys…</source>
        <translation>Pulsa las teclas…</translation>
    </message>
    <message id="settings.shortcuts.needsModifier">
        <source>A shortcut needs Ctrl, Alt, Shift or Meta. Try again, or press Esc to keep the old one.</source>
        <translation>Un atajo necesita Ctrl, Alt, Mayús o Meta. Inténtalo de nuevo o pulsa Esc para conservar el anterior.</translation>
    </message>
    <message id="settings.shortcuts.unsupportedKey">
        <source>This key can't be part of a shortcut. Try a letter, a digit or a punctuation key, or press Esc.</source>
        <translation>Esta tecla no puede formar parte de un atajo. Prueba una letra, un dígito o un signo de puntuación, o pulsa Esc.</translation>
    </message>
    <message id="settings.shortcuts.conflict">
        <source>Also used by: %1</source>
        <translation>También lo usa: %1</translation>
    </message>
    <message id="settings.shortcuts.globalUnavailable">
        <source>This shortcut works only inside Fenrow: the desktop did not let Fenrow claim it. To open the capture panel from any application, assign a shortcut to this command in your desktop's keyboard settings:</source>
        <translation>Este atajo solo funciona dentro de Fenrow: el escritorio no dejó que Fenrow lo reservara. Para abrir el panel de captura desde cualquier aplicación, asigna un atajo a este comando en los ajustes de teclado de tu escritorio:</translation>
    </message>
    <message id="settings.shortcuts.action.undo">
        <source>Undo</source>
        <translation>Deshacer</translation>
    </message>
    <message id="settings.shortcuts.action.redo">
        <source>Redo</source>
        <translation>Rehacer</translation>
    </message>
    <message id="settings.shortcuts.action.newFlowFromText">
        <source>New flow from text</source>
        <translation>Nuevo flujo desde texto</translation>
    </message>
    <message id="settings.shortcuts.action.findInFlow">
        <source>Find in flow</source>
        <translation>Buscar en el flujo</translation>
    </message>
    <message id="settings.shortcuts.action.exportMarkdown">
        <source>Export as Markdown</source>
        <translation>Exportar como Markdown</translation>
    </message>
    <message id="settings.shortcuts.action.copyMarkdown">
        <source>Copy as Markdown</source>
        <translation>Copiar como Markdown</translation>
    </message>
    <message id="settings.shortcuts.action.zoomIn">
        <source>Zoom in</source>
        <translation>Acercar</translation>
    </message>
    <message id="settings.shortcuts.action.zoomOut">
        <source>Zoom out</source>
        <translation>Alejar</translation>
    </message>
    <message id="settings.shortcuts.action.zoomToFit">
        <source>Zoom to fit</source>
        <translation>Ajustar a la ventana</translation>
    </message>
    <message id="settings.shortcuts.reset">
        <source>Restore default shortcuts</source>
        <translation>Restaurar los atajos predeterminados</translation>
    </message>
    <message id="settings.shortcuts.reference.title">
        <source>On the canvas</source>
        <translation>En el lienzo</translation>
    </message>
    <message id="settings.shortcuts.reference.rename">
        <source>Rename the selected task</source>
        <translation>Renombrar la tarea seleccionada</translation>
    </message>
    <message id="settings.shortcuts.reference.toggleDone">
        <source>Mark done or not done</source>
        <translation>Marcar como hecha o no hecha</translation>
    </message>
    <message id="settings.shortcuts.reference.addAfter">
        <source>Add the next task</source>
        <translation>Añadir la tarea siguiente</translation>
    </message>
    <message id="settings.shortcuts.reference.addBefore">
        <source>Add a task before</source>
        <translation>Añadir una tarea antes</translation>
    </message>
    <message id="settings.shortcuts.reference.delete">
        <source>Delete the selection</source>
        <translation>Eliminar la selección</translation>
    </message>
    <message id="settings.shortcuts.reference.delete.keys">
        <source>Delete or Backspace</source>
        <translation>Supr o Retroceso</translation>
    </message>
    <message id="settings.shortcuts.reference.deselect">
        <source>Clear the selection</source>
        <translation>Quitar la selección</translation>
    </message>
    <message id="settings.shortcuts.reference.move">
        <source>Select the nearest task in that direction</source>
        <translation>Seleccionar la tarea más cercana en esa dirección</translation>
    </message>
    <message id="settings.shortcuts.reference.follow">
        <source>Follow a connection</source>
        <translation>Seguir una conexión</translation>
    </message>
    <message id="settings.shortcuts.reference.multiSelect">
        <source>Add to the selection</source>
        <translation>Añadir a la selección</translation>
    </message>
    <message id="settings.shortcuts.reference.multiSelect.keys">
        <source>Shift+click</source>
        <translation>Mayús+clic</translation>
    </message>
    <message id="settings.shortcuts.reference.pan">
        <source>Move the canvas</source>
        <translation>Desplazar el lienzo</translation>
    </message>
    <message id="settings.shortcuts.reference.pan.keys">
        <source>Space+drag</source>
        <translation>Espacio+arrastrar</translation>
    </message>
    <message id="settings.shortcuts.reference.caption">
        <source>These keys work while the canvas has the focus and can't be changed.</source>
        <translation>Estas teclas funcionan cuando el lienzo tiene el foco y no se pueden cambiar.</translation>
    </message>
    <message id="settings.appearance.theme.title">
        <source>Theme</source>
        <translation>Tema</translation>
    </message>
    <message id="settings.appearance.theme.auto">
        <source>Same as the system</source>
        <translation>Igual que el sistema</translation>
    </message>
    <message id="settings.appearance.theme.light">
        <source>Light</source>
        <translation>Claro</translation>
    </message>
    <message id="settings.appearance.theme.dark">
        <source>Dark</source>
        <translation>Oscuro</translation>
    </message>
    <message id="settings.appearance.theme.caption">
        <source>“Same as the system” follows the dark or light choice of your desktop.</source>
        <translation>«Igual que el sistema» sigue la elección de claro u oscuro de tu escritorio.</translation>
    </message>
    <message id="settings.appearance.palette.title">
        <source>Accent colour</source>
        <translation>Color de acento</translation>
    </message>
    <message id="settings.appearance.palette.violet">
        <source>Violet</source>
        <translation>Violeta</translation>
    </message>
    <message id="settings.appearance.palette.blue">
        <source>Blue</source>
        <translation>Azul</translation>
    </message>
    <message id="settings.appearance.palette.green">
        <source>Green</source>
        <translation>Verde</translation>
    </message>
    <message id="settings.appearance.palette.orange">
        <source>Orange</source>
        <translation>Naranja</translation>
    </message>
    <message id="settings.appearance.palette.pink">
        <source>Pink</source>
        <translation>Rosa</translation>
    </message>
    <message id="settings.appearance.palette.graphite">
        <source>Graphite</source>
        <translation>Grafito</translation>
    </message>
    <message id="settings.appearance.canvas.title">
        <source>Canvas</source>
        <translation>Lienzo</translation>
    </message>
    <message id="settings.appearance.grid">
        <source>Show the dot grid</source>
        <translation>Mostrar la cuadrícula de puntos</translation>
    </message>
    <message id="settings.appearance.sizeByEstimate">
        <source>Size cards by their estimate</source>
        <translation>Tamaño de las tarjetas según la estimación</translation>
    </message>
    <message id="settings.language.caption">
        <source>Fenrow switches language at once, without a restart.</source>
        <translation>Fenrow cambia de idioma al momento, sin reiniciar.</translation>
    </message>
    <message id="settings.language.system">
        <source>Same as the system</source>
        <translation>Igual que el sistema</translation>
    </message>
    <message id="settings.about.version">
        <source>Version %1</source>
        <translation>Versión %1</translation>
    </message>
    <message id="settings.about.tagline">
        <source>Plan projects as flows of tasks and work from what is ready.</source>
        <translation>Planifica proyectos como flujos de tareas y trabaja con lo que está listo.</translation>
    </message>
    <message id="settings.about.files.title">
        <source>Your files</source>
        <translation>Tus archivos</translation>
    </message>
    <message id="settings.about.dataFolder">
        <source>Open the data folder</source>
        <translation>Abrir la carpeta de datos</translation>
    </message>
    <message id="settings.about.settingsFile">
        <source>Open the settings file</source>
        <translation>Abrir el archivo de ajustes</translation>
    </message>
    <message id="settings.data.autoArchive.title">
        <source>Archive</source>
        <translation>Archivo</translation>
    </message>
    <message id="settings.data.autoArchive.label">
        <source>Move done tasks to the archive</source>
        <translation>Mover las tareas hechas al archivo</translation>
    </message>
    <message id="settings.data.autoArchive.caption">
        <source>Tasks done longer ago than this leave their flow and wait in the archive.</source>
        <translation>Las tareas hechas hace más tiempo salen de su flujo y quedan en el archivo.</translation>
    </message>
    <message id="settings.data.autoArchive.off">
        <source>Never</source>
        <translation>Nunca</translation>
    </message>
    <message id="settings.data.autoArchive.oneDay">
        <source>After 1 day</source>
        <translation>Después de 1 día</translation>
    </message>
    <message id="settings.data.autoArchive.days">
        <source>After %1 days</source>
        <translation>Después de %1 días</translation>
    </message>
    <message id="settings.data.autoBackup.title">
        <source>Automatic backup</source>
        <translation>Copia de seguridad automática</translation>
    </message>
    <message id="settings.data.autoBackup.choose">
        <source>Choose Folder…</source>
        <translation>Elegir carpeta…</translation>
    </message>
    <message id="settings.data.autoBackup.now">
        <source>Back Up Now</source>
        <translation>Hacer copia ahora</translation>
    </message>
    <message id="settings.data.autoBackup.off">
        <source>Turn Off</source>
        <translation>Desactivar</translation>
    </message>
    <message id="settings.data.autoBackup.caption">
        <source>Once a week Fenrow writes a backup into this folder and keeps the five newest.</source>
        <translation>Una vez por semana Fenrow guarda una copia en esta carpeta y conserva las cinco más recientes.</translation>
    </message>
    <message id="settings.data.autoBackup.none">
        <source>No folder chosen: automatic backups are off.</source>
        <translation>Ninguna carpeta elegida: las copias automáticas están desactivadas.</translation>
    </message>
    <message id="settings.data.autoBackup.last">
        <source>Last backup: %1</source>
        <translation>Última copia: %1</translation>
    </message>
    <message id="settings.data.autoBackup.never">
        <source>No backup written yet.</source>
        <translation>Todavía no hay ninguna copia.</translation>
    </message>
    <message id="settings.data.autoBackup.failed">
        <source>The last backup could not be written. Check that the folder still exists and that you may write to it.</source>
        <translation>No se pudo escribir la última copia de seguridad. Compruebe que la carpeta sigue existiendo y que puede escribir en ella.</translation>
    </message>
    <message id="settings.data.templates.title">
        <source>Templates</source>
        <translation>Plantillas</translation>
    </message>
    <message id="settings.data.templates.empty">
        <source>No templates yet. Save a flow as a template from its menu in the sidebar.</source>
        <translation>Aún no hay plantillas. Guarda un flujo como plantilla desde su menú en la barra lateral.</translation>
    </message>
    <message id="settings.data.templates.delete">
        <source>Delete template</source>
        <translation>Eliminar plantilla</translation>
    </message>
    <message id="menu.quickCapture">
        <source>&amp;Quick Capture…</source>
        <translation>Captura &amp;rápida…</translation>
    </message>
    <message id="menu.helpMenu">
        <source>&amp;Help</source>
        <translation>Ay&amp;uda</translation>
    </message>
    <message id="menu.help">
        <source>Fenrow &amp;Help</source>
        <translation>Ay&amp;uda de Fenrow</translation>
    </message>
    <message id="menu.about">
        <source>&amp;About Fenrow</source>
        <translation>&amp;Acerca de Fenrow</translation>
    </message>
    <message id="menu.restartOnboarding">
        <source>Show the &amp;Welcome Again</source>
        <translation>Mostrar la &amp;bienvenida otra vez</translation>
    </message>
    <message id="onboarding.welcome.title">
        <source>Welcome to Fenrow</source>
        <translation>Te damos la bienvenida a Fenrow</translation>
    </message>
    <message id="onboarding.welcome.message">
        <source>Plan each project as a flow of tasks, and always know what you can do next.</source>
        <translation>Planifica cada proyecto como un flujo de tareas y sabe siempre qué puedes hacer a continuación.</translation>
    </message>
    <message id="onboarding.flows.title">
        <source>A project is a flow</source>
        <translation>Un proyecto es un flujo</translation>
    </message>
    <message id="onboarding.flows.message">
        <source>Tasks are cards on a canvas. Connect them to say what comes first: a task waits until the ones before it are done.</source>
        <translation>Las tareas son tarjetas en un lienzo. Conéctalas para indicar qué va primero: una tarea espera hasta que las anteriores estén hechas.</translation>
    </message>
    <message id="onboarding.ready.title">
        <source>Work from the Ready list</source>
        <translation>Trabaja desde la lista Disponibles</translation>
    </message>
    <message id="onboarding.ready.message">
        <source>Everything you can start now, from all your flows, in one list. Tick a task off and whatever it held up moves in.</source>
        <translation>Todo lo que puedes empezar ya, de todos tus flujos, en una sola lista. Marca una tarea y lo que esperaba por ella se incorpora.</translation>
    </message>
    <message id="onboarding.capture.title">
        <source>Capture in a moment</source>
        <translation>Captura al instante</translation>
    </message>
    <message id="onboarding.capture.message %@">
        <source>Press %1 to note a task without leaving what you are doing. Words like “tomorrow” or “next friday” set its due date.</source>
        <translation>Pulsa %1 para anotar una tarea sin dejar lo que estás haciendo. Palabras como «mañana» o «el próximo viernes» fijan su fecha de vencimiento.</translation>
    </message>
    <message id="onboarding.capture.messageInsideOnly %@ %@">
        <source>Press %1 to note a task while Fenrow is in front. To do it from any application, assign a shortcut to “%2” in your desktop's keyboard settings. Words like “tomorrow” or “next friday” set its due date.</source>
        <translation>Pulsa %1 para anotar una tarea mientras Fenrow está delante. Para hacerlo desde cualquier aplicación, asigna un atajo a «%2» en los ajustes de teclado de tu escritorio. Palabras como «mañana» o «el próximo viernes» fijan su fecha de vencimiento.</translation>
    </message>
    <message id="onboarding.action.next">
        <source>Continue</source>
        <translation>Continuar</translation>
    </message>
    <message id="onboarding.action.back">
        <source>Back</source>
        <translation>Atrás</translation>
    </message>
    <message id="onboarding.action.finish">
        <source>Get started</source>
        <translation>Empezar</translation>
    </message>
    <message id="sidebar.route.search">
        <source>Search</source>
        <translation>Buscar</translation>
    </message>
    <message id="sidebar.action.collapse">
        <source>Hide sidebar</source>
        <translation>Ocultar barra lateral</translation>
    </message>
    <message id="sidebar.action.expand">
        <source>Show sidebar</source>
        <translation>Mostrar barra lateral</translation>
    </message>
    <message id="flowSearch.field.placeholder">
        <source>Find tasks by title or notes</source>
        <translation>Buscar tareas por título o notas</translation>
    </message>
    <message id="flowSearch.close">
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
    <message id="flowSearch.group.current">
        <source>This flow</source>
        <translation>Este flujo</translation>
    </message>
    <message id="flowSearch.empty.title">
        <source>No matches</source>
        <translation>Sin coincidencias</translation>
    </message>
    <message id="flowSearch.empty.message">
        <source>No task title or note contains these words.</source>
        <translation>Ningún título ni nota de tarea contiene estas palabras.</translation>
    </message>
    <message id="flowSearch.count %lld">
        <source>%1 found</source>
        <translation>%1 encontradas</translation>
    </message>
    <message id="flowSearch.footer.hint">
        <source>↑↓ to move · ↩ to open · esc to close</source>
        <translation>↑↓ mover · ↩ abrir · esc cerrar</translation>
    </message>
    <message id="menu.view">
        <source>View</source>
        <translation>Ver</translation>
    </message>
    <message id="menu.zoomIn">
        <source>Zoom In</source>
        <translation>Acercar</translation>
    </message>
    <message id="menu.zoomOut">
        <source>Zoom Out</source>
        <translation>Alejar</translation>
    </message>
    <message id="menu.actualSize">
        <source>Actual Size</source>
        <translation>Tamaño real</translation>
    </message>
    <message id="menu.zoomToFit">
        <source>Zoom to Fit</source>
        <translation>Ajustar a la ventana</translation>
    </message>
    <message id="menu.toggleSidebar">
        <source>Show or Hide Sidebar</source>
        <translation>Mostrar u ocultar barra lateral</translation>
    </message>
    <message id="menu.flow">
        <source>Flow</source>
        <translation>Flujo</translation>
    </message>
    <message id="menu.addTask">
        <source>Add Task</source>
        <translation>Añadir tarea</translation>
    </message>
    <message id="menu.addNextTask">
        <source>Add Next Task</source>
        <translation>Añadir tarea siguiente</translation>
    </message>
    <message id="menu.addTaskBefore">
        <source>Add Task Before</source>
        <translation>Añadir tarea anterior</translation>
    </message>
    <message id="menu.addSubtask">
        <source>Add Subtask</source>
        <translation>Añadir subtarea</translation>
    </message>
    <message id="menu.connect">
        <source>Connect Selected Tasks</source>
        <translation>Conectar tareas seleccionadas</translation>
    </message>
    <message id="menu.rename">
        <source>Rename Task</source>
        <translation>Renombrar tarea</translation>
    </message>
    <message id="menu.toggleDone">
        <source>Mark Done or Not Done</source>
        <translation>Marcar como hecha o pendiente</translation>
    </message>
    <message id="menu.delete">
        <source>Delete Selection</source>
        <translation>Eliminar selección</translation>
    </message>
    <message id="menu.arrange">
        <source>Arrange as Tree</source>
        <translation>Organizar como árbol</translation>
    </message>
    <message id="menu.archiveDone">
        <source>Archive Done Tasks…</source>
        <translation>Archivar tareas hechas…</translation>
    </message>
    <message id="menu.find">
        <source>Find in Flows…</source>
        <translation>Buscar en flujos…</translation>
    </message>
    <message id="ready.row.references">
        <source>Linked files: %1</source>
        <translation>Archivos vinculados: %1</translation>
    </message>
    <message id="ready.row.reorder.help">
        <source>Drag to set today's order</source>
        <translation>Arrastra para fijar el orden de hoy</translation>
    </message>
    <message id="menu.newFlowFromText">
        <source>New Flow from Text…</source>
        <translation>Nuevo flujo desde texto…</translation>
    </message>
    <message id="menu.planDay">
        <source>Plan Today…</source>
        <translation>Planificar hoy…</translation>
    </message>
    <message id="ready.action.planDay">
        <source>Plan Day</source>
        <translation>Planificar el día</translation>
    </message>
    <message id="newFlowFromText.title">
        <source>New flow</source>
        <translation>Nuevo flujo</translation>
    </message>
    <message id="newFlowFromText.subtitle">
        <source>Describe the project in your own words and the language model turns it into tasks. Or leave the text empty to start with a blank flow.</source>
        <translation>Describe el proyecto con tus palabras y el modelo de lenguaje lo convierte en tareas. O deja el texto vacío para empezar con un flujo en blanco.</translation>
    </message>
    <message id="newFlowFromText.name.label">
        <source>Name</source>
        <translation>Nombre</translation>
    </message>
    <message id="newFlowFromText.name.placeholder">
        <source>Taken from the text when left empty</source>
        <translation>Si lo dejas vacío, se toma del texto</translation>
    </message>
    <message id="newFlowFromText.editor.label">
        <source>What is the project about?</source>
        <translation>¿De qué trata el proyecto?</translation>
    </message>
    <message id="newFlowFromText.editor.placeholder">
        <source>Paste notes, an e-mail or a plan, or write a few sentences about what has to happen.</source>
        <translation>Pega notas, un correo o un plan, o escribe unas frases sobre lo que hay que hacer.</translation>
    </message>
    <message id="newFlowFromText.processing">
        <source>Reading the text and making tasks…</source>
        <translation>Leyendo el texto y creando tareas…</translation>
    </message>
    <message id="newFlowFromText.cancel">
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message id="newFlowFromText.overBudget.title">
        <source>Only the first part will be read</source>
        <translation>Solo se leerá la primera parte</translation>
    </message>
    <message id="newFlowFromText.overBudget.message">
        <source>The text is longer than the language model can take at once. You can still create the flow; tasks come from the beginning of the text.</source>
        <translation>El texto es más largo de lo que el modelo de lenguaje puede leer de una vez. Puedes crear el flujo igualmente; las tareas salen del principio del texto.</translation>
    </message>
    <message id="generateSubtasks.title">
        <source>Generate subtasks</source>
        <translation>Generar subtareas</translation>
    </message>
    <message id="generateSubtasks.subtitle">
        <source>The language model breaks this task into smaller steps.</source>
        <translation>El modelo de lenguaje divide esta tarea en pasos más pequeños.</translation>
    </message>
    <message id="generateSubtasks.subtitle.named %@">
        <source>The language model breaks “%1” into smaller steps.</source>
        <translation>El modelo de lenguaje divide «%1» en pasos más pequeños.</translation>
    </message>
    <message id="generateSubtasks.details.label">
        <source>Details (optional)</source>
        <translation>Detalles (opcional)</translation>
    </message>
    <message id="generateSubtasks.details.placeholder">
        <source>What does the task involve?</source>
        <translation>¿Qué implica la tarea?</translation>
    </message>
    <message id="generateSubtasks.processing">
        <source>Breaking the task down…</source>
        <translation>Dividiendo la tarea…</translation>
    </message>
    <message id="generateSubtasks.cancel">
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message id="generateSubtasks.generate">
        <source>Generate</source>
        <translation>Generar</translation>
    </message>
    <message id="canvas.node.generateSubtasks">
        <source>Generate Subtasks…</source>
        <translation>Generar subtareas…</translation>
    </message>
    <message id="canvas.node.expand.failed.title">
        <source>Subtasks could not be generated</source>
        <translation>No se pudieron generar subtareas</translation>
    </message>
    <message id="canvas.node.expand.failed.message">
        <source>The language model gave no usable answer. Try again, or add the subtasks by hand.</source>
        <translation>El modelo de lenguaje no dio una respuesta útil. Inténtalo de nuevo o añade las subtareas a mano.</translation>
    </message>
    <message id="planDay.title">
        <source>Plan today</source>
        <translation>Planificar hoy</translation>
    </message>
    <message id="planDay.cancel">
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message id="planDay.running">
        <source>Ordering your tasks…</source>
        <translation>Ordenando tus tareas…</translation>
    </message>
    <message id="planDay.failed.title">
        <source>The day could not be planned</source>
        <translation>No se pudo planificar el día</translation>
    </message>
    <message id="planDay.failed.message">
        <source>The language model gave no usable order. Go back and try again; nothing was changed.</source>
        <translation>El modelo de lenguaje no dio un orden útil. Vuelve atrás e inténtalo de nuevo; no se cambió nada.</translation>
    </message>
    <message id="planDay.back">
        <source>Back</source>
        <translation>Atrás</translation>
    </message>
    <message id="planDay.commit">
        <source>Use this plan</source>
        <translation>Usar este plan</translation>
    </message>
    <message id="planDay.cut.label">
        <source>Does not fit today</source>
        <translation>No cabe hoy</translation>
    </message>
    <message id="planDay.timeline.label %@ %@">
        <source>%1 of %2 planned, in working order</source>
        <translation>%1 de %2 planificados, en orden de trabajo</translation>
    </message>
    <message id="planDay.nothingFits.title">
        <source>Nothing fits</source>
        <translation>No cabe nada</translation>
    </message>
    <message id="planDay.nothingFits.message">
        <source>Every ready task takes longer than the time you have. Go back and give the day more time.</source>
        <translation>Cada tarea lista dura más que el tiempo que tienes. Vuelve atrás y dale más tiempo al día.</translation>
    </message>
    <message id="planDay.budget.custom.label">
        <source>Time you have today</source>
        <translation>Tiempo que tienes hoy</translation>
    </message>
    <message id="planDay.budget.unit.label">
        <source>Unit</source>
        <translation>Unidad</translation>
    </message>
    <message id="planDay.budget.presets">
        <source>Presets</source>
        <translation>Predefinidos</translation>
    </message>
    <message id="planDay.taskCount %lld">
        <source>Ready tasks to fit: %1</source>
        <translation>Tareas listas para encajar: %1</translation>
    </message>
    <message id="ready.order.today">
        <source>In your order</source>
        <translation>En tu orden</translation>
    </message>
    <message id="intents.add.done %@ %@">
        <source>Added “%1” to %2.</source>
        <translation>Se añadió «%1» a %2.</translation>
    </message>
    <message id="intents.ready.some %lld %@">
        <source>Ready now (%1): %2</source>
        <translation>Listas ahora (%1): %2</translation>
    </message>
    <message id="intents.ready.none">
        <source>Nothing is ready right now.</source>
        <translation>Ahora no hay nada listo.</translation>
    </message>
    <message id="intents.complete.done %@">
        <source>Done: %1.</source>
        <translation>Hecho: %1.</translation>
    </message>
    <message id="intents.error.notFound">
        <source>That task or flow does not exist any more.</source>
        <translation>Esa tarea o ese flujo ya no existe.</translation>
    </message>
    <message id="backup.restore.done.edgesLeftOut %lld">
        <source>Connections left out because they would have led a task back to itself or repeated another: %1.</source>
        <translation>Conexiones omitidas porque habrían llevado una tarea de vuelta a sí misma o repetido otra: %1.</translation>
    </message>
    <message id="backup.restore.done.safety %@">
        <source>What Fenrow held before is kept in “%1”. Restore that file with Replace to undo this.</source>
        <translation>Lo que Fenrow tenía antes se guarda en «%1». Restaure ese archivo con Reemplazar para deshacerlo.</translation>
    </message>
    <message id="backup.restore.failed.title">
        <source>The backup could not be restored</source>
        <translation>No se pudo restaurar la copia de seguridad</translation>
    </message>
    <message id="backup.restore.failed.message">
        <source>Nothing was changed.</source>
        <translation>No se cambió nada.</translation>
    </message>
    <message id="backup.adjusted.title">
        <source>Backup written with changes</source>
        <translation>Copia de seguridad escrita con cambios</translation>
    </message>
    <message id="backup.adjusted.message">
        <source>Some values could not be written as they are; they were left out or held to their limits:</source>
        <translation>Algunos valores no se pudieron escribir tal cual; se omitieron o se ajustaron a sus límites:</translation>
    </message>
    <message id="import.opml.leftOut.title">
        <source>Part of the outline stayed out</source>
        <translation>Parte del esquema se dejó fuera</translation>
    </message>
    <message id="import.opml.leftOut %1 %2">
        <source>Entries without text left out: %1. Dates outside the calendar left out: %2. Everything else was imported.</source>
        <translation>Entradas sin texto que se dejaron fuera: %1. Fechas fuera del calendario que se dejaron fuera: %2. Todo lo demás se importó.</translation>
    </message>
    <message id="widget.count.one">
        <source>1 task ready</source>
        <translation>1 tarea disponible</translation>
    </message>
    <message id="widget.count %1">
        <source>%1 tasks ready</source>
        <translation>%1 tareas disponibles</translation>
    </message>
    <message id="widget.empty.noTasks">
        <source>Nothing ready: no tasks yet</source>
        <translation>Nada disponible: aún no hay tareas</translation>
    </message>
    <message id="widget.empty.allDone">
        <source>Nothing ready: all done</source>
        <translation>Nada disponible: todo está hecho</translation>
    </message>
    <message id="widget.empty.allBlocked">
        <source>Nothing ready: everything waits on other tasks</source>
        <translation>Nada disponible: todo espera a otras tareas</translation>
    </message>
    <message id="widget.empty.allDeferred">
        <source>Nothing ready: everything waits for its day</source>
        <translation>Nada disponible: todo espera a su día</translation>
    </message>
    <message id="widget.empty.allTicked">
        <source>All ticked: Fenrow marks them done when it runs</source>
        <translation>Todas marcadas: Fenrow las completa cuando se ejecuta</translation>
    </message>
    <message id="widget.notWritten">
        <source>Fenrow has not written the Ready list yet. Open Fenrow to make it.</source>
        <translation>Fenrow aún no ha escrito la lista Disponibles. Abre Fenrow para crearla.</translation>
    </message>
    <message id="widget.outOfDate">
        <source>Open Fenrow to bring this list up to date</source>
        <translation>Abre Fenrow para poner esta lista al día</translation>
    </message>
    <message id="widget.popup.title">
        <source>Ready</source>
        <translation>Disponibles</translation>
    </message>
    <message id="widget.more %1">
        <source>and %1 more</source>
        <translation>y %1 más</translation>
    </message>
    <message id="widget.open">
        <source>Open Fenrow</source>
        <translation>Abrir Fenrow</translation>
    </message>
    <message id="widget.capture">
        <source>Quick capture</source>
        <translation>Captura rápida</translation>
    </message>
    <message id="widget.quit">
        <source>Quit widget</source>
        <translation>Salir del widget</translation>
    </message>
    <message id="widget.tick.failed">
        <source>The tick could not be saved. Try again, or tick the task in Fenrow.</source>
        <translation>No se pudo guardar la marca. Inténtalo de nuevo o marca la tarea en Fenrow.</translation>
    </message>
    <message id="widget.open.failed">
        <source>Fenrow could not be started.</source>
        <translation>No se pudo iniciar Fenrow.</translation>
    </message>
    <message id="widget.tooltip %1">
        <source>Fenrow · %1</source>
        <translation>Fenrow · %1</translation>
    </message>
    <message id="engine.stop">
        <source>Stop</source>
        <translation>Detener</translation>
    </message>
    <message id="import.opml.relink.progress">
        <source>Connecting the imported tasks…</source>
        <translation>Conectando las tareas importadas…</translation>
    </message>
    <message id="settings.model.stopLoading">
        <source>Stop Loading</source>
        <translation>Detener la carga</translation>
    </message>
    <message id="quickCapture.date.format.withYear">
        <source>ddd, MMM d, yyyy</source>
        <translation>ddd d MMM yyyy</translation>
    </message>
    <message id="canvas.access.file">
        <source>File</source>
        <translation>Archivo</translation>
    </message>
    <message id="canvas.access.after %1">
        <source>After: %1</source>
        <translation>Después de: %1</translation>
    </message>
    <message id="canvas.access.before %1">
        <source>Before: %1</source>
        <translation>Antes de: %1</translation>
    </message>
    <message id="canvas.access.subtaskOf %1">
        <source>Subtask of: %1</source>
        <translation>Subtarea de: %1</translation>
    </message>
    <message id="canvas.access.subtasks %1">
        <source>Subtasks: %1</source>
        <translation>Subtareas: %1</translation>
    </message>
    <message id="canvas.access.action.select">
        <source>Select</source>
        <translation>Seleccionar</translation>
    </message>
    <message id="canvas.access.action.open">
        <source>Open</source>
        <translation>Abrir</translation>
    </message>
    <message id="canvas.access.action.done">
        <source>Mark done</source>
        <translation>Marcar como hecha</translation>
    </message>
    <message id="canvas.access.action.undone">
        <source>Mark not done</source>
        <translation>Marcar como no hecha</translation>
    </message>
    <message id="canvas.access.name %1">
        <source>Canvas of %1</source>
        <translation>Lienzo de %1</translation>
    </message>
    <message id="access.countedTasks %1 %2">
        <source>%1, tasks: %2</source>
        <translation>%1, tareas: %2</translation>
    </message>
</context>
</TS>
