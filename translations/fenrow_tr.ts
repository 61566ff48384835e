<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="tr">
<context>
    <name></name>
    <message id="mainWindow.title">
        <source>Fenrow</source>
        <translation>Fenrow</translation>
    </message>
    <message id="detail.empty.title">
        <source>No flow selected</source>
        <translation>Seçili akış yok</translation>
    </message>
    <message id="detail.empty.message">
        <source>Choose a flow in the sidebar, or create a new one with the + button.</source>
        <translation>Kenar çubuğundan bir akış seçin ya da + düğmesiyle yeni bir akış oluşturun.</translation>
    </message>
    <message id="sidebar.brandHeader">
        <source>Fenrow</source>
        <translation>Fenrow</translation>
    </message>
    <message id="sidebar.section.flows">
        <source>Flows</source>
        <translation>Akışlar</translation>
    </message>
    <message id="sidebar.action.newFlow">
        <source>New flow</source>
        <translation>Yeni akış</translation>
    </message>
    <message id="sidebar.action.quit">
        <source>Quit Fenrow</source>
        <translation>Fenrow'dan çık</translation>
    </message>
    <message id="sidebar.flow.progress %lld %lld %lld">
        <source>%1 of %3 done · %2 in progress</source>
        <translation>%3 görevden %1 tamam · %2 sürüyor</translation>
    </message>
    <message id="sidebar.flow.progress.complete %lld">
        <source>All %1 done</source>
        <translation>%1 görevin hepsi tamam</translation>
    </message>
    <message id="sidebar.flow.progress.empty">
        <source>No tasks yet</source>
        <translation>Henüz görev yok</translation>
    </message>
    <message id="sidebar.flow.rename.placeholder">
        <source>Flow name</source>
        <translation>Akış adı</translation>
    </message>
    <message id="sidebar.row.action.rename">
        <source>Rename</source>
        <translation>Yeniden adlandır</translation>
    </message>
    <message id="sidebar.row.action.delete">
        <source>Delete…</source>
        <translation>Sil…</translation>
    </message>
    <message id="sidebar.row.delete.confirm.title %@">
        <source>Delete “%1”?</source>
        <translation>“%1” silinsin mi?</translation>
    </message>
    <message id="sidebar.row.delete.confirm.message">
        <source>The flow and all of its tasks, connections and files will be deleted. Its entries in the archive go too. This cannot be undone.</source>
        <translation>Akış; tüm görevleri, bağlantıları ve dosyalarıyla birlikte silinecek. Arşivdeki kayıtları da silinir. Bu işlem geri alınamaz.</translation>
    </message>
    <message id="sidebar.row.delete">
        <source>Delete</source>
        <translation>Sil</translation>
    </message>
    <message id="sidebar.row.delete.confirm.cancel">
        <source>Cancel</source>
        <translation>Vazgeç</translation>
    </message>
    <message id="store.failed.title">
        <source>Fenrow cannot open its data</source>
        <translation>Fenrow verilerini açamıyor</translation>
    </message>
    <message id="sample.flow.name">
        <source>Sample: Launch a landing page</source>
        <translation>Örnek: Bir tanıtım sayfası yayınla</translation>
    </message>
    <message id="sample.flow.item.offer">
        <source>Define the offer</source>
        <translation>Teklifi belirle</translation>
    </message>
    <message id="sample.flow.item.copy">
        <source>Write the copy</source>
        <translation>Metni yaz</translation>
    </message>
    <message id="sample.flow.item.layout">
        <source>Design the layout</source>
        <translation>Sayfa düzenini tasarla</translation>
    </message>
    <message id="sample.flow.item.build">
        <source>Build the page</source>
        <translation>Sayfayı oluştur</translation>
    </message>
    <message id="sample.flow.item.publish">
        <source>Publish and announce</source>
        <translation>Yayınla ve duyur</translation>
    </message>
    <message id="sidebar.flow.untitled">
        <source>Untitled flow</source>
        <translation>Adsız akış</translation>
    </message>
    <message id="sidebar.route.ready">
        <source>Ready</source>
        <translation>Hazır</translation>
    </message>
    <message id="ready.title">
        <source>Ready</source>
        <translation>Hazır</translation>
    </message>
    <message id="ready.sort.flow">
        <source>Flow</source>
        <translation>Akış</translation>
    </message>
    <message id="ready.sort.dueDate">
        <source>Due date</source>
        <translation>Son tarih</translation>
    </message>
    <message id="ready.sort.priority">
        <source>Priority</source>
        <translation>Öncelik</translation>
    </message>
    <message id="ready.sort.estimate">
        <source>Estimate</source>
        <translation>Süre</translation>
    </message>
    <message id="ready.group.today">
        <source>Today</source>
        <translation>Bugün</translation>
    </message>
    <message id="ready.group.other">
        <source>Other tasks</source>
        <translation>Diğer görevler</translation>
    </message>
    <message id="ready.row.complete">
        <source>Mark as done</source>
        <translation>Tamamlandı olarak işaretle</translation>
    </message>
    <message id="ready.row.hasNotes">
        <source>Notes</source>
        <translation>Notlar</translation>
    </message>
    <message id="ready.row.priority.high">
        <source>High</source>
        <translation>Yüksek</translation>
    </message>
    <message id="ready.row.priority.medium">
        <source>Medium</source>
        <translation>Orta</translation>
    </message>
    <message id="ready.row.priority.low">
        <source>Low</source>
        <translation>Düşük</translation>
    </message>
    <message id="ready.row.due.today">
        <source>Due today</source>
        <translation>Son tarih bugün</translation>
    </message>
    <message id="ready.row.due.tomorrow">
        <source>Due tomorrow</source>
        <translation>Son tarih yarın</translation>
    </message>
    <message id="ready.row.overdue %@">
        <source>Overdue · %1</source>
        <translation>Gecikti · %1</translation>
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
        <translation>%1 dk</translation>
    </message>
    <message id="ready.row.estimate.hours %lld">
        <source>%1 h</source>
        <translation>%1 sa</translation>
    </message>
    <message id="ready.row.estimate.hoursMinutes %lld %lld">
        <source>%1 h %2 min</source>
        <translation>%1 sa %2 dk</translation>
    </message>
    <message id="ready.empty.noTasks.title">
        <source>No tasks yet</source>
        <translation>Henüz görev yok</translation>
    </message>
    <message id="ready.empty.noTasks.message">
        <source>The tasks you can start right away gather here, from all of your flows. Add a few tasks to a flow to begin.</source>
        <translation>Hemen başlayabileceğiniz görevler tüm akışlarınızdan burada toplanır. Başlamak için bir akışa birkaç görev ekleyin.</translation>
    </message>
    <message id="ready.empty.allDone.title">
        <source>All done</source>
        <translation>Hepsi tamam</translation>
    </message>
    <message id="ready.empty.allDone.message">
        <source>Every task in every flow is finished. Enjoy the quiet, or plan what comes next.</source>
        <translation>Tüm akışlarınızdaki bütün görevler bitti. Sessizliğin tadını çıkarın ya da sıradakini planlayın.</translation>
    </message>
    <message id="ready.empty.allBlocked.title">
        <source>Everything is waiting</source>
        <translation>Her şey bekliyor</translation>
    </message>
    <message id="ready.empty.allBlocked.message">
        <source>Each open task waits for another one to finish first. Look over the connections in your flows.</source>
        <translation>Açık görevlerin her biri önce başka bir görevin bitmesini bekliyor. Akışlarınızdaki bağlantılara göz atın.</translation>
    </message>
    <message id="ready.empty.allDeferred.title">
        <source>Nothing starts today</source>
        <translation>Bugün başlayan bir şey yok</translation>
    </message>
    <message id="ready.empty.allDeferred.message">
        <source>Your next tasks have a later start date. They appear here on the day they start.</source>
        <translation>Sıradaki görevlerinizin başlangıç tarihi daha ileride. Başladıkları gün burada görünürler.</translation>
    </message>
    <message id="sidebar.flow.copyName ">
        <source>%1 copy</source>
        <translation>%1 kopyası</translation>
    </message>
    <message id="archive.day.today">
        <source>Today</source>
        <translation>Bugün</translation>
    </message>
    <message id="archive.day.yesterday">
        <source>Yesterday</source>
        <translation>Dün</translation>
    </message>
    <message id="sidebar.route.archive">
        <source>Archive</source>
        <translation>Arşiv</translation>
    </message>
    <message id="archive.title">
        <source>Archive</source>
        <translation>Arşiv</translation>
    </message>
    <message id="archive.search.placeholder">
        <source>Search the archive</source>
        <translation>Arşivde ara</translation>
    </message>
    <message id="archive.row.repeated">
        <source>Repeated · round %1</source>
        <translation>Tekrarlandı · %1. tur</translation>
    </message>
    <message id="archive.row.restore">
        <source>Restore</source>
        <translation>Geri yükle</translation>
    </message>
    <message id="archive.row.restore.help">
        <source>Put the task back into its flow, marked as done</source>
        <translation>Görevi tamamlanmış olarak akışına geri koy</translation>
    </message>
    <message id="archive.row.delete">
        <source>Delete</source>
        <translation>Sil</translation>
    </message>
    <message id="archive.count.label">
        <source>Entries: %1</source>
        <translation>Kayıt: %1</translation>
    </message>
    <message id="archive.empty.title">
        <source>Nothing archived yet</source>
        <translation>Henüz arşivlenen bir şey yok</translation>
    </message>
    <message id="archive.empty.message">
        <source>Done tasks you archive from a flow, and each finished round of a repeating task, are kept here by day.</source>
        <translation>Bir akıştan arşivlediğin tamamlanmış görevler ve tekrarlanan görevlerin biten her turu burada güne göre saklanır.</translation>
    </message>
    <message id="archive.empty.search.title">
        <source>No matches</source>
        <translation>Eşleşme yok</translation>
    </message>
    <message id="archive.empty.search.message">
        <source>No archived task has this text in its title or in the name of its flow.</source>
        <translation>Başlığında ya da akışının adında bu metin geçen arşivlenmiş görev yok.</translation>
    </message>
    <message id="sidebar.template.menu.title">
        <source>New from Template</source>
        <translation>Şablondan yeni akış</translation>
    </message>
    <message id="sidebar.template.menu.help">
        <source>Make a new flow from a saved template</source>
        <translation>Kayıtlı bir şablondan yeni akış oluştur</translation>
    </message>
    <message id="sidebar.context.duplicate">
        <source>Duplicate</source>
        <translation>Çoğalt</translation>
    </message>
    <message id="sidebar.context.saveTemplate">
        <source>Save as Template</source>
        <translation>Şablon olarak kaydet</translation>
    </message>
    <message id="sidebar.row.archiveDone">
        <source>Archive Done Tasks…</source>
        <translation>Tamamlanan görevleri arşivle…</translation>
    </message>
    <message id="archive.confirm.title ">
        <source>Archive the done tasks of “%1”?</source>
        <translation>“%1” akışındaki tamamlanan görevler arşivlensin mi?</translation>
    </message>
    <message id="archive.confirm.message">
        <source>They leave the canvas along with their connections. Each one can be restored from the Archive; it comes back done, without connections.</source>
        <translation>Görevler bağlantılarıyla birlikte tuvalden kalkar. Her biri Arşiv'den geri yüklenebilir; tamamlanmış olarak ve bağlantısız geri gelir.</translation>
    </message>
    <message id="archive.confirm.action">
        <source>Archive</source>
        <translation>Arşivle</translation>
    </message>
    <message id="archive.confirm.cancel">
        <source>Cancel</source>
        <translation>İptal</translation>
    </message>
    <message id="menu.file">
        <source>&amp;File</source>
        <translation>&amp;Dosya</translation>
    </message>
    <message id="menu.edit">
        <source>&amp;Edit</source>
        <translation>Dü&amp;zen</translation>
    </message>
    <message id="menu.quit">
        <source>Quit</source>
        <translation>Çık</translation>
    </message>
    <message id="menu.undo">
        <source>Undo</source>
        <translation>Geri al</translation>
    </message>
    <message id="menu.redo">
        <source>Redo</source>
        <translation>Yinele</translation>
    </message>
    <message id="shortcut.key.unknown">
        <source>Unknown key</source>
        <translation>Bilinmeyen tuş</translation>
    </message>
    <message id="export.markdown.progress %lld %lld">
        <source>%1 of %2 done</source>
        <translation>%1/%2 tamamlandı</translation>
    </message>
    <message id="export.markdown.status.inProgress">
        <source>in progress</source>
        <translation>sürüyor</translation>
    </message>
    <message id="export.markdown.status.paused">
        <source>paused</source>
        <translation>duraklatıldı</translation>
    </message>
    <message id="export.markdown.after %@">
        <source>after %1</source>
        <translation>%1 bittikten sonra</translation>
    </message>
    <message id="export.markdown.panel.title">
        <source>Export as Markdown</source>
        <translation>Markdown olarak dışa aktar</translation>
    </message>
    <message id="export.markdown.panel.button">
        <source>Export</source>
        <translation>Dışa aktar</translation>
    </message>
    <message id="export.markdown.failed.title">
        <source>Export failed</source>
        <translation>Dışa aktarılamadı</translation>
    </message>
    <message id="export.markdown.failed.message">
        <source>The file could not be written. Check that the folder exists and that you may write to it.</source>
        <translation>Dosya yazılamadı. Klasörün var olduğunu ve yazma izniniz olduğunu denetleyin.</translation>
    </message>
    <message id="export.opml.panel.title">
        <source>Export as OPML</source>
        <translation>OPML olarak dışa aktar</translation>
    </message>
    <message id="import.opml.panel.message">
        <source>Choose an OPML outline to import as a new flow</source>
        <translation>Yeni akış olarak içe aktarılacak bir OPML dosyası seçin</translation>
    </message>
    <message id="import.opml.panel.button">
        <source>Import</source>
        <translation>İçe aktar</translation>
    </message>
    <message id="import.opml.failed.title">
        <source>This file can’t be imported</source>
        <translation>Bu dosya içe aktarılamıyor</translation>
    </message>
    <message id="import.opml.failed.message">
        <source>It is not an OPML outline with at least one entry, or it is damaged. Nothing was added.</source>
        <translation>Bu, en az bir öğesi olan bir OPML taslağı değil ya da dosya bozuk. Hiçbir şey eklenmedi.</translation>
    </message>
    <message id="sidebar.row.action.exportMarkdown">
        <source>Export as Markdown…</source>
        <translation>Markdown olarak dışa aktar…</translation>
    </message>
    <message id="sidebar.row.action.copyMarkdown">
        <source>Copy as Markdown</source>
        <translation>Markdown olarak kopyala</translation>
    </message>
    <message id="sidebar.context.exportOPML">
        <source>Export as OPML…</source>
        <translation>OPML olarak dışa aktar…</translation>
    </message>
    <message id="menu.exportMarkdown">
        <source>Export as &amp;Markdown…</source>
        <translation>&amp;Markdown olarak dışa aktar…</translation>
    </message>
    <message id="menu.copyMarkdown">
        <source>&amp;Copy as Markdown</source>
        <translation>Markdown olarak &amp;kopyala</translation>
    </message>
    <message id="menu.exportOPML">
        <source>Export as &amp;OPML…</source>
        <translation>&amp;OPML olarak dışa aktar…</translation>
    </message>
    <message id="menu.importOPML">
        <source>&amp;Import OPML…</source>
        <translation>OPML &amp;içe aktar…</translation>
    </message>
    <message id="menu.backUp">
        <source>&amp;Back Up…</source>
        <translation>&amp;Yedekle…</translation>
    </message>
    <message id="menu.restoreBackup">
        <source>&amp;Restore from Backup…</source>
        <translation>Yedekten &amp;geri yükle…</translation>
    </message>
    <message id="backup.save.panel.message">
        <source>Choose where to save a backup of all your flows, templates and archive</source>
        <translation>Tüm akışlarınızın, şablonlarınızın ve arşivinizin yedeğinin kaydedileceği yeri seçin</translation>
    </message>
    <message id="backup.save.panel.button">
        <source>Back Up</source>
        <translation>Yedekle</translation>
    </message>
    <message id="backup.failed.title">
        <source>Backup failed</source>
        <translation>Yedekleme başarısız</translation>
    </message>
    <message id="backup.failed.message">
        <source>The backup could not be written. Check that the folder exists and that you may write to it.</source>
        <translation>Yedek yazılamadı. Klasörün var olduğunu ve yazma izniniz olduğunu denetleyin.</translation>
    </message>
    <message id="backup.open.panel.message">
        <source>Choose a Fenrow backup to restore</source>
        <translation>Geri yüklenecek bir Fenrow yedeği seçin</translation>
    </message>
    <message id="backup.open.panel.button">
        <source>Restore</source>
        <translation>Geri yükle</translation>
    </message>
    <message id="backup.restore.unreadable.title">
        <source>This backup can’t be restored</source>
        <translation>Bu yedek geri yüklenemiyor</translation>
    </message>
    <message id="backup.restore.unreadable.message">
        <source>The file is not a Fenrow backup, or it is damaged. Nothing was changed.</source>
        <translation>Dosya bir Fenrow yedeği değil ya da bozuk. Hiçbir şey değişmedi.</translation>
    </message>
    <message id="backup.restore.newer.message">
        <source>The backup was made by a newer version of Fenrow. Update Fenrow to restore it. Nothing was changed.</source>
        <translation>Yedek, Fenrow'un daha yeni bir sürümüyle yapılmış. Geri yüklemek için Fenrow'u güncelleyin. Hiçbir şey değişmedi.</translation>
    </message>
    <message id="backup.restore.mode.title">
        <source>Restore backup</source>
        <translation>Yedeği geri yükle</translation>
    </message>
    <message id="backup.restore.mode.message %lld">
        <source>Flows in the backup: %1. Merge adds the flows you don’t have yet and keeps everything else. Replace first deletes all your flows, templates and archive entries.</source>
        <translation>Yedekteki akış sayısı: %1. Birleştir, henüz sizde olmayan akışları ekler ve geri kalan her şeyi korur. Değiştir, önce tüm akışlarınızı, şablonlarınızı ve arşiv kayıtlarınızı siler.</translation>
    </message>
    <message id="backup.restore.mode.merge">
        <source>Merge</source>
        <translation>Birleştir</translation>
    </message>
    <message id="backup.restore.mode.replace">
        <source>Replace</source>
        <translation>Değiştir</translation>
    </message>
    <message id="backup.restore.replace.confirm.title">
        <source>Replace all your data?</source>
        <translation>Tüm verileriniz değiştirilsin mi?</translation>
    </message>
    <message id="backup.restore.replace.confirm.message">
        <source>All flows, templates and archive entries in Fenrow are deleted and replaced by those of the backup. This can’t be undone.</source>
        <translation>Fenrow'daki tüm akışlar, şablonlar ve arşiv kayıtları silinir ve yedektekilerle değiştirilir. Bu geri alınamaz.</translation>
    </message>
    <message id="backup.restore.done.title">
        <source>Backup restored</source>
        <translation>Yedek geri yüklendi</translation>
    </message>
    <message id="backup.restore.done.message %lld">
        <source>Flows restored: %1.</source>
        <translation>Geri yüklenen akış sayısı: %1.</translation>
    </message>
    <message id="backup.restore.done.nothing">
        <source>Every flow in the backup is already here. Nothing was added.</source>
        <translation>Yedekteki her akış zaten burada. Hiçbir şey eklenmedi.</translation>
    </message>
    <message id="inspector.flow">
        <source>Flow</source>
        <translation>Akış</translation>
    </message>
    <message id="inspector.status.label">
        <source>Status</source>
        <translation>Durum</translation>
    </message>
    <message id="inspector.status.pending">
        <source>Not started</source>
        <translation>Başlanmadı</translation>
    </message>
    <message id="inspector.status.inProgress">
        <source>In progress</source>
        <translation>Sürüyor</translation>
    </message>
    <message id="inspector.status.paused">
        <source>Paused</source>
        <translation>Duraklatıldı</translation>
    </message>
    <message id="inspector.status.done">
        <source>Done</source>
        <translation>Bitti</translation>
    </message>
    <message id="inspector.priority.label">
        <source>Priority</source>
        <translation>Öncelik</translation>
    </message>
    <message id="inspector.priority.none">
        <source>None</source>
        <translation>Yok</translation>
    </message>
    <message id="inspector.priority.low">
        <source>Low</source>
        <translation>Düşük</translation>
    </message>
    <message id="inspector.priority.medium">
        <source>Medium</source>
        <translation>Orta</translation>
    </message>
    <message id="inspector.priority.high">
        <source>High</source>
        <translation>Yüksek</translation>
    </message>
    <message id="inspector.color.label">
        <source>Colour</source>
        <translation>Renk</translation>
    </message>
    <message id="inspector.estimate.label">
        <source>Estimate</source>
        <translation>Tahmin</translation>
    </message>
    <message id="inspector.estimate.placeholder">
        <source>None</source>
        <translation>Yok</translation>
    </message>
    <message id="inspector.estimate.unit">
        <source>min</source>
        <translation>dk</translation>
    </message>
    <message id="inspector.startDate.label">
        <source>Start</source>
        <translation>Başlangıç</translation>
    </message>
    <message id="inspector.dueDate.label">
        <source>Due</source>
        <translation>Bitiş</translation>
    </message>
    <message id="inspector.date.add">
        <source>Add date</source>
        <translation>Tarih ekle</translation>
    </message>
    <message id="inspector.date.pick">
        <source>Choose a date</source>
        <translation>Tarih seç</translation>
    </message>
    <message id="inspector.date.clear">
        <source>Remove date</source>
        <translation>Tarihi kaldır</translation>
    </message>
    <message id="inspector.deferred.note %@">
        <source>Not ready before %1.</source>
        <translation>%1 tarihinden önce hazır değil.</translation>
    </message>
    <message id="inspector.recurrence.label">
        <source>Repeat</source>
        <translation>Tekrar</translation>
    </message>
    <message id="inspector.recurrence.never">
        <source>Never</source>
        <translation>Hiçbir zaman</translation>
    </message>
    <message id="inspector.recurrence.daily">
        <source>Every day</source>
        <translation>Her gün</translation>
    </message>
    <message id="inspector.recurrence.weekdays">
        <source>Every weekday</source>
        <translation>Hafta içi her gün</translation>
    </message>
    <message id="inspector.recurrence.weekly">
        <source>Every week</source>
        <translation>Her hafta</translation>
    </message>
    <message id="inspector.recurrence.monthly">
        <source>Every month</source>
        <translation>Her ay</translation>
    </message>
    <message id="inspector.recurrence.afterDone">
        <source>Some days after done</source>
        <translation>Bittikten birkaç gün sonra</translation>
    </message>
    <message id="inspector.recurrence.interval.label">
        <source>Every</source>
        <translation>Her</translation>
    </message>
    <message id="inspector.recurrence.interval.unit">
        <source>days</source>
        <translation>gün</translation>
    </message>
    <message id="inspector.notes.label">
        <source>Notes</source>
        <translation>Notlar</translation>
    </message>
    <message id="inspector.notes.placeholder">
        <source>Add notes</source>
        <translation>Not ekle</translation>
    </message>
    <message id="inspector.notes.resize">
        <source>Notes height</source>
        <translation>Not yüksekliği</translation>
    </message>
    <message id="inspector.checklist.label">
        <source>Checklist</source>
        <translation>Yapılacaklar</translation>
    </message>
    <message id="inspector.checklist.count %lld %lld">
        <source>%1 of %2 done</source>
        <translation>%2 adımdan %1 tanesi bitti</translation>
    </message>
    <message id="inspector.checklist.add.placeholder">
        <source>Add a step</source>
        <translation>Adım ekle</translation>
    </message>
    <message id="inspector.checklist.toggle">
        <source>Tick step</source>
        <translation>Adımı işaretle</translation>
    </message>
    <message id="inspector.checklist.open">
        <source>Open step</source>
        <translation>Açık adım</translation>
    </message>
    <message id="inspector.checklist.done">
        <source>Done step</source>
        <translation>Biten adım</translation>
    </message>
    <message id="inspector.checklist.delete">
        <source>Delete step</source>
        <translation>Adımı sil</translation>
    </message>
    <message id="inspector.blockedBy.label">
        <source>Waits for</source>
        <translation>Bekledikleri</translation>
    </message>
    <message id="inspector.blockedBy.empty">
        <source>Nothing: free to start</source>
        <translation>Hiçbir şey: başlanabilir</translation>
    </message>
    <message id="inspector.blocks.label">
        <source>Holds up</source>
        <translation>Bunu bekleyenler</translation>
    </message>
    <message id="inspector.blocks.empty">
        <source>No other task</source>
        <translation>Başka görev yok</translation>
    </message>
    <message id="inspector.empty.title">
        <source>No task selected</source>
        <translation>Görev seçilmedi</translation>
    </message>
    <message id="inspector.empty.message">
        <source>Select one task on the canvas to see and edit its details.</source>
        <translation>Ayrıntılarını görmek ve düzenlemek için tuvalde bir görev seçin.</translation>
    </message>
    <message id="inspector.file.label">
        <source>File</source>
        <translation>Dosya</translation>
    </message>
    <message id="inspector.calendar.today">
        <source>Today</source>
        <translation>Bugün</translation>
    </message>
    <message id="inspector.calendar.tomorrow">
        <source>Tomorrow</source>
        <translation>Yarın</translation>
    </message>
    <message id="inspector.calendar.nextWeek">
        <source>Next week</source>
        <translation>Gelecek hafta</translation>
    </message>
    <message id="canvas.node.new">
        <source>New task</source>
        <translation>Yeni görev</translation>
    </message>
    <message id="engine.availability.available">
        <source>The on-device language model is ready.</source>
        <translation>Cihaz üzerindeki dil modeli hazır.</translation>
    </message>
    <message id="engine.availability.deviceNotEligible">
        <source>This computer cannot run the language model. Everything still works by hand.</source>
        <translation>Bu bilgisayar dil modelini çalıştıramıyor. Her şey yine elle yapılabilir.</translation>
    </message>
    <message id="engine.availability.appleIntelligenceNotEnabled">
        <source>The language model is switched off in the system settings. Everything still works by hand.</source>
        <translation>Dil modeli sistem ayarlarında kapalı. Her şey yine elle yapılabilir.</translation>
    </message>
    <message id="engine.availability.modelNotReady">
        <source>The language model is not ready yet. Everything still works by hand.</source>
        <translation>Dil modeli henüz hazır değil. Her şey yine elle yapılabilir.</translation>
    </message>
    <message id="engine.availability.frameworkUnavailable">
        <source>No on-device language model is available. Everything still works by hand.</source>
        <translation>Cihaz üzerinde kullanılabilir bir dil modeli yok. Her şey yine elle yapılabilir.</translation>
    </message>
    <message id="engine.availability.modelUnusable">
        <source>The chosen language model cannot be used. Everything still works by hand.</source>
        <translation>Seçilen dil modeli kullanılamıyor. Her şey yine elle yapılabilir.</translation>
    </message>
    <message id="banner.engineUnavailable.dismiss">
        <source>Dismiss</source>
        <translation>Kapat</translation>
    </message>
    <message id="planDay.plan">
        <source>Plan my day</source>
        <translation>Günümü planla</translation>
    </message>
    <message id="planDay.planManual">
        <source>Fit into my time</source>
        <translation>Zamanıma sığdır</translation>
    </message>
    <message id="planDay.subtitle">
        <source>The language model orders your ready tasks, then they are fitted into the time you have.</source>
        <translation>Dil modeli hazır görevlerini sıralar, sonra bunlar ayırdığın zamana yerleştirilir.</translation>
    </message>
    <message id="planDay.subtitle.manual">
        <source>Your ready tasks, in the order of the Ready list, are fitted into the time you have.</source>
        <translation>Hazır görevlerin, Hazır listesindeki sırayla, ayırdığın zamana yerleştirilir.</translation>
    </message>
    <message id="planDay.order.ai">
        <source>Order by the language model</source>
        <translation>Dil modelinin sırası</translation>
    </message>
    <message id="planDay.order.custom">
        <source>Your order</source>
        <translation>Senin sıran</translation>
    </message>
    <message id="planDay.budget.unit.minutes">
        <source>minutes</source>
        <translation>dakika</translation>
    </message>
    <message id="planDay.budget.unit.hours">
        <source>hours</source>
        <translation>saat</translation>
    </message>
    <message id="planDay.summary">
        <source>%1 of %2 planned</source>
        <translation>%2 içinden %1 planlandı</translation>
    </message>
    <message id="planDay.summary.overflow %lld">
        <source>%1 more do not fit.</source>
        <translation>%1 görev daha sığmıyor.</translation>
    </message>
    <message id="newFlowFromText.create">
        <source>Create flow</source>
        <translation>Akış oluştur</translation>
    </message>
    <message id="newFlowFromText.createBlank">
        <source>Create empty flow</source>
        <translation>Boş akış oluştur</translation>
    </message>
    <message id="newFlowFromText.noTasksFound.title">
        <source>No tasks found</source>
        <translation>Görev bulunamadı</translation>
    </message>
    <message id="newFlowFromText.noTasksFound.message">
        <source>The text holds no steps to turn into tasks. Add some detail, or create an empty flow.</source>
        <translation>Metinde göreve dönüştürülecek adım yok. Biraz ayrıntı ekle ya da boş bir akış oluştur.</translation>
    </message>
    <message id="newFlowFromText.failed.title">
        <source>Could not create the flow</source>
        <translation>Akış oluşturulamadı</translation>
    </message>
    <message id="newFlowFromText.failed.message">
        <source>The language model could not read the text. Try again, or create an empty flow.</source>
        <translation>Dil modeli metni okuyamadı. Yeniden dene ya da boş bir akış oluştur.</translation>
    </message>
    <message id="quickCapture.picker.newFlow">
        <source>New flow</source>
        <translation>Yeni akış</translation>
    </message>
    <message id="canvas.node.status.pending">
        <source>Not started</source>
        <translation>Başlanmadı</translation>
    </message>
    <message id="canvas.node.status.inProgress">
        <source>In progress</source>
        <translation>Sürüyor</translation>
    </message>
    <message id="canvas.node.status.done">
        <source>Done</source>
        <translation>Bitti</translation>
    </message>
    <message id="canvas.node.status.paused">
        <source>Paused</source>
        <translation>Duraklatıldı</translation>
    </message>
    <message id="canvas.node.starts ">
        <source>Starts %1</source>
        <translation>Başlangıç %1</translation>
    </message>
    <message id="canvas.node.waiting ">
        <source>Waiting on %1</source>
        <translation>%1 görev bekleniyor</translation>
    </message>
    <message id="canvas.node.ready">
        <source>Ready</source>
        <translation>Hazır</translation>
    </message>
    <message id="canvas.node.status.label">
        <source>Status</source>
        <translation>Durum</translation>
    </message>
    <message id="canvas.node.deferred.help">
        <source>Not before this day</source>
        <translation>Bu günden önce değil</translation>
    </message>
    <message id="canvas.node.due.label">
        <source>Due date</source>
        <translation>Bitiş tarihi</translation>
    </message>
    <message id="canvas.node.repeat.label">
        <source>Repeats</source>
        <translation>Tekrarlanır</translation>
    </message>
    <message id="canvas.node.checklist.help">
        <source>Steps done</source>
        <translation>Tamamlanan adımlar</translation>
    </message>
    <message id="canvas.node.priority.label">
        <source>Priority</source>
        <translation>Öncelik</translation>
    </message>
    <message id="canvas.cycleRejection">
        <source>That connection would make a loop</source>
        <translation>Bu bağlantı bir döngü oluşturur</translation>
    </message>
    <message id="canvas.file.drop.tooLarge ">
        <source>%1 is too large to attach (%2)</source>
        <translation>%1 eklenemeyecek kadar büyük (%2)</translation>
    </message>
    <message id="canvas.file.drop.failed ">
        <source>%1 could not be read</source>
        <translation>%1 okunamadı</translation>
    </message>
    <message id="canvas.port.label">
        <source>Connect</source>
        <translation>Bağla</translation>
    </message>
    <message id="canvas.port.help.collapse">
        <source>Drag to connect; click to fold or unfold the subtasks</source>
        <translation>Bağlamak için sürükleyin; alt görevleri katlamak ya da açmak için tıklayın</translation>
    </message>
    <message id="canvas.port.action.collapse">
        <source>Fold subtasks</source>
        <translation>Alt görevleri katla</translation>
    </message>
    <message id="canvas.port.action.expand">
        <source>Unfold subtasks</source>
        <translation>Alt görevleri aç</translation>
    </message>
    <message id="canvas.edge.delete">
        <source>Delete connection</source>
        <translation>Bağlantıyı sil</translation>
    </message>
    <message id="canvas.fileLink.delete">
        <source>Unlink file</source>
        <translation>Dosya bağlantısını kaldır</translation>
    </message>
    <message id="canvas.node.addChild">
        <source>Add subtask</source>
        <translation>Alt görev ekle</translation>
    </message>
    <message id="canvas.node.rename">
        <source>Rename</source>
        <translation>Yeniden adlandır</translation>
    </message>
    <message id="canvas.node.setColor">
        <source>Color</source>
        <translation>Renk</translation>
    </message>
    <message id="canvas.node.color.none">
        <source>No color</source>
        <translation>Renksiz</translation>
    </message>
    <message id="canvas.node.color.red">
        <source>Red</source>
        <translation>Kırmızı</translation>
    </message>
    <message id="canvas.node.color.orange">
        <source>Orange</source>
        <translation>Turuncu</translation>
    </message>
    <message id="canvas.node.color.yellow">
        <source>Yellow</source>
        <translation>Sarı</translation>
    </message>
    <message id="canvas.node.color.green">
        <source>Green</source>
        <translation>Yeşil</translation>
    </message>
    <message id="canvas.node.color.blue">
        <source>Blue</source>
        <translation>Mavi</translation>
    </message>
    <message id="canvas.node.color.purple">
        <source>Purple</source>
        <translation>Mor</translation>
    </message>
    <message id="canvas.node.color.pink">
        <source>Pink</source>
        <translation>Pembe</translation>
    </message>
    <message id="canvas.node.color.grey">
        <source>Grey</source>
        <translation>Gri</translation>
    </message>
    <message id="canvas.node.resize.reset">
        <source>Reset size</source>
        <translation>Boyutu sıfırla</translation>
    </message>
    <message id="canvas.node.delete">
        <source>Delete</source>
        <translation>Sil</translation>
    </message>
    <message id="canvas.file.open">
        <source>Open</source>
        <translation>Aç</translation>
    </message>
    <message id="canvas.file.exportCopy">
        <source>Save a copy…</source>
        <translation>Bir kopyasını kaydet…</translation>
    </message>
    <message id="canvas.file.missing">
        <source>The file's contents are missing</source>
        <translation>Dosyanın içeriği eksik</translation>
    </message>
    <message id="canvas.file.unlinkAll">
        <source>Unlink from all tasks</source>
        <translation>Tüm görevlerden ayır</translation>
    </message>
    <message id="canvas.file.delete">
        <source>Delete file</source>
        <translation>Dosyayı sil</translation>
    </message>
    <message id="canvas.file.add">
        <source>Attach file…</source>
        <translation>Dosya ekle…</translation>
    </message>
    <message id="canvas.file.add.prompt">
        <source>Choose files to attach</source>
        <translation>Eklenecek dosyaları seçin</translation>
    </message>
    <message id="toolbar.addTask">
        <source>Add task</source>
        <translation>Görev ekle</translation>
    </message>
    <message id="toolbar.addItem">
        <source>Add</source>
        <translation>Ekle</translation>
    </message>
    <message id="toolbar.attachFile">
        <source>Attach file</source>
        <translation>Dosya ekle</translation>
    </message>
    <message id="toolbar.filter">
        <source>Filter by color</source>
        <translation>Renge göre süz</translation>
    </message>
    <message id="toolbar.grid">
        <source>Snap to grid</source>
        <translation>Izgaraya hizala</translation>
    </message>
    <message id="toolbar.arrange">
        <source>Arrange as tree</source>
        <translation>Ağaç olarak diz</translation>
    </message>
    <message id="toolbar.archiveDone">
        <source>Archive done tasks</source>
        <translation>Biten görevleri arşivle</translation>
    </message>
    <message id="archive.action.archiveDone">
        <source>Archive done</source>
        <translation>Bitenleri arşivle</translation>
    </message>
    <message id="toolbar.filter.off">
        <source>No filter</source>
        <translation>Süzgeç yok</translation>
    </message>
    <message id="toolbar.filter.clear">
        <source>Clear filter</source>
        <translation>Süzgeci temizle</translation>
    </message>
    <message id="toolbar.filter.mode.label">
        <source>Other tasks</source>
        <translation>Diğer görevler</translation>
    </message>
    <message id="toolbar.filter.mode.dim">
        <source>Dim</source>
        <translation>Soluklaştır</translation>
    </message>
    <message id="toolbar.filter.mode.hide">
        <source>Hide</source>
        <translation>Gizle</translation>
    </message>
    <message id="toolbar.zoomOut">
        <source>Zoom out</source>
        <translation>Uzaklaştır</translation>
    </message>
    <message id="toolbar.zoomIn">
        <source>Zoom in</source>
        <translation>Yakınlaştır</translation>
    </message>
    <message id="toolbar.zoomToFit">
        <source>Zoom to fit</source>
        <translation>Sığacak şekilde yakınlaştır</translation>
    </message>
    <message id="toolbar.zoomLevel">
        <source>%1%</source>
        <translation>%%1</translation>
    </message>
    <message id="toolbar.progress">
        <source>Progress</source>
        <translation>İlerleme</translation>
    </message>
    <message id="toolbar.progress %lld %lld">
        <source>%1 of %2 done</source>
        <translation>%2 görevin %1 tanesi bitti</translation>
    </message>
    <message id="toolbar.progress.short %lld %lld">
        <source>%1/%2</source>
        <translation>%1/%2</translation>
    </message>
    <message id="toolbar.progress.ready %lld %lld %lld">
        <source>%1 of %2 done · %3 ready</source>
        <translation>%2 görevin %1 tanesi bitti · %3 hazır</translation>
    </message>
    <message id="canvas.empty.title">
        <source>An empty flow</source>
        <translation>Boş bir akış</translation>
    </message>
    <message id="canvas.empty.message">
        <source>Add a first task, then draw from its port to the next one.</source>
        <translation>İlk görevi ekleyin, sonra bağlantı noktasından bir sonrakine çizin.</translation>
    </message>
    <message id="canvas.empty.addButton">
        <source>Add first task</source>
        <translation>İlk görevi ekle</translation>
    </message>
    <message id="import.opml.relink.title">
        <source>Connect the imported tasks?</source>
        <translation>İçe aktarılan görevler bağlansın mı?</translation>
    </message>
    <message id="import.opml.relink.message">
        <source>The outline brought no dependencies. Fenrow can suggest which tasks have to come first; you can change or delete every connection afterwards.</source>
        <translation>Taslak hiçbir bağımlılık getirmedi. Fenrow hangi görevlerin önce gelmesi gerektiğini önerebilir; her bağlantıyı sonradan değiştirebilir ya da silebilirsiniz.</translation>
    </message>
    <message id="import.opml.relink.connect">
        <source>Connect</source>
        <translation>Bağla</translation>
    </message>
    <message id="import.opml.relink.keep">
        <source>Keep as Is</source>
        <translation>Olduğu gibi bırak</translation>
    </message>
    <message id="quickCapture.window.title">
        <source>Quick Capture</source>
        <translation>Hızlı Ekle</translation>
    </message>
    <message id="quickCapture.field.placeholder">
        <source>What needs doing? Try “call the bank tomorrow”</source>
        <translation>Ne yapılacak? Örneğin “yarın bankayı ara”</translation>
    </message>
    <message id="quickCapture.picker.label">
        <source>Flow</source>
        <translation>Akış</translation>
    </message>
    <message id="quickCapture.date.due %@">
        <source>Due %1</source>
        <translation>Son gün: %1</translation>
    </message>
    <message id="quickCapture.date.help %@">
        <source>Read from your text: due %1. Remove it to keep those words in the title.</source>
        <translation>Metninden okundu: son gün %1. Kaldırırsan bu sözcükler başlıkta kalır.</translation>
    </message>
    <message id="quickCapture.date.dismiss">
        <source>Remove date</source>
        <translation>Tarihi kaldır</translation>
    </message>
    <message id="quickCapture.action.save">
        <source>Add task</source>
        <translation>Görevi ekle</translation>
    </message>
    <message id="quickCapture.action.cancel">
        <source>Cancel</source>
        <translation>Vazgeç</translation>
    </message>
    <message id="quickCapture.hint">
        <source>Return adds · Esc closes</source>
        <translation>Enter ekler · Esc kapatır</translation>
    </message>
    <message id="quickCapture.date.format">
        <source>ddd, MMM d</source>
        <translation>d MMMM ddd</translation>
    </message>
    <message id="sidebar.action.settings">
        <source>Settings</source>
        <translation>Ayarlar</translation>
    </message>
    <message id="menu.settings">
        <source>Settings…</source>
        <translation>Ayarlar…</translation>
    </message>
    <message id="settings.title">
        <source>Fenrow Settings</source>
        <translation>Fenrow Ayarları</translation>
    </message>
    <message id="settings.page.general">
        <source>General</source>
        <translation>Genel</translation>
    </message>
    <message id="settings.page.shortcuts">
        <source>Shortcuts</source>
        <translation>Kısayollar</translation>
    </message>
    <message id="settings.page.appearance">
        <source>Appearance</source>
        <translation>Görünüm</translation>
    </message>
    <message id="settings.page.language">
        <source>Language</source>
        <translation>Dil</translation>
    </message>
    <message id="settings.page.data">
        <source>Data</source>
        <translation>Veriler</translation>
    </message>
    <message id="settings.page.model">
        <source>Language model</source>
        <translation>Dil modeli</translation>
    </message>
    <message id="settings.model.privacy">
        <source>The model runs on this computer; nothing you write leaves it.</source>
        <translation>Model bu bilgisayarda çalışır; yazdığınız hiçbir şey bilgisayarınızdan çıkmaz.</translation>
    </message>
    <message id="settings.model.chosen.title">
        <source>Chosen model</source>
        <translation>Seçili model</translation>
    </message>
    <message id="settings.model.details">
        <source>%1 · %2</source>
        <translation>%1 · %2</translation>
    </message>
    <message id="settings.model.state.none">
        <source>No model is chosen. Until one is, everything is done by hand.</source>
        <translation>Seçili model yok. Bir model seçilene kadar her şey elle yapılır.</translation>
    </message>
    <message id="settings.model.state.idle">
        <source>Not loaded yet; it loads when a feature first needs it.</source>
        <translation>Henüz yüklenmedi; bir özellik ilk kez ihtiyaç duyduğunda yüklenir.</translation>
    </message>
    <message id="settings.model.state.loading">
        <source>Loading the model…</source>
        <translation>Model yükleniyor…</translation>
    </message>
    <message id="settings.model.state.ready">
        <source>Loaded: %1, with a context of %2 tokens.</source>
        <translation>Yüklendi: %1, %2 token bağlamla.</translation>
    </message>
    <message id="settings.model.state.failed">
        <source>This file cannot be used: %1</source>
        <translation>Bu dosya kullanılamıyor: %1</translation>
    </message>
    <message id="settings.model.state.unavailable">
        <source>The model cannot run here: %1</source>
        <translation>Model burada çalışamıyor: %1</translation>
    </message>
    <message id="settings.model.choose">
        <source>Choose File…</source>
        <translation>Dosya Seç…</translation>
    </message>
    <message id="settings.model.choose.dialog">
        <source>Choose a Language Model</source>
        <translation>Dil Modeli Seçin</translation>
    </message>
    <message id="settings.model.choose.filter">
        <source>GGUF models (*.gguf)</source>
        <translation>GGUF modelleri (*.gguf)</translation>
    </message>
    <message id="settings.model.remove">
        <source>Remove</source>
        <translation>Kaldır</translation>
    </message>
    <message id="settings.model.refused.notFound">
        <source>%1 was not found.</source>
        <translation>%1 bulunamadı.</translation>
    </message>
    <message id="settings.model.refused.unreadable">
        <source>%1 cannot be read.</source>
        <translation>%1 okunamıyor.</translation>
    </message>
    <message id="settings.model.refused.notModel">
        <source>%1 is not a GGUF model file.</source>
        <translation>%1 bir GGUF model dosyası değil.</translation>
    </message>
    <message id="settings.model.refused.kept">
        <source>The chosen model stays as it was.</source>
        <translation>Seçili model olduğu gibi kalır.</translation>
    </message>
    <message id="settings.model.try.title">
        <source>Try it</source>
        <translation>Deneyin</translation>
    </message>
    <message id="settings.model.try.caption">
        <source>Runs one short request and measures how fast the model answers.</source>
        <translation>Kısa bir istek çalıştırır ve modelin ne kadar hızlı yanıt verdiğini ölçer.</translation>
    </message>
    <message id="settings.model.try">
        <source>Try It</source>
        <translation>Dene</translation>
    </message>
    <message id="settings.model.trial.running">
        <source>Running a short request…</source>
        <translation>Kısa bir istek çalışıyor…</translation>
    </message>
    <message id="settings.model.trial.result">
        <source>%1 tokens in %2 s (%3 tokens per second)</source>
        <translation>%2 sn içinde %1 token (saniyede %3 token)</translation>
    </message>
    <message id="settings.model.trial.failed">
        <source>The trial failed: %1</source>
        <translation>Deneme başarısız oldu: %1</translation>
    </message>
    <message id="settings.model.found.title">
        <source>On this computer</source>
        <translation>Bu bilgisayarda</translation>
    </message>
    <message id="settings.model.found.caption">
        <source>Models already downloaded with llama.cpp, LM Studio, GPT4All or Ollama, from Hugging Face, or into Downloads.</source>
        <translation>llama.cpp, LM Studio, GPT4All ya da Ollama ile, Hugging Face'ten veya İndirilenler klasörüne zaten indirilmiş modeller.</translation>
    </message>
    <message id="settings.model.found.looking">
        <source>Looking…</source>
        <translation>Aranıyor…</translation>
    </message>
    <message id="settings.model.found.none">
        <source>No models found in those folders.</source>
        <translation>Bu klasörlerde model bulunamadı.</translation>
    </message>
    <message id="settings.model.found.item">
        <source>%1 — %2 · %3</source>
        <translation>%1 — %2 · %3</translation>
    </message>
    <message id="settings.model.use">
        <source>Use</source>
        <translation>Kullan</translation>
    </message>
    <message id="banner.engineUnavailable.chooseModel">
        <source>Choose a model…</source>
        <translation>Model seçin…</translation>
    </message>
    <message id="settings.page.about">
        <source>About</source>
        <translation>Hakkında</translation>
    </message>
    <message id="settings.general.startup.title">
        <source>Start</source>
        <translation>Başlangıç</translation>
    </message>
    <message id="settings.general.launchAtLogin">
        <source>Open Fenrow when I log in</source>
        <translation>Oturum açtığımda Fenrow'u başlat</translation>
    </message>
    <message id="settings.general.widgetAtLogin">
        <source>Show the Ready list in the tray when I log in</source>
        <translation>Oturum açtığımda Hazır listesini sistem tepsisinde göster</translation>
    </message>
    <message id="settings.general.launchAtLogin.failed">
        <source>Fenrow could not change its autostart entry. Check that you may write to %1.</source>
        <translation>Fenrow otomatik başlatma kaydını değiştiremedi. %1 klasörüne yazma izniniz olduğunu denetleyin.</translation>
    </message>
    <message id="settings.general.reminders.title">
        <source>Reminders</source>
        <translation>Hatırlatıcılar</translation>
    </message>
    <message id="settings.general.dueReminders">
        <source>Remind me of tasks on their due day</source>
        <translation>Son günü gelen görevleri hatırlat</translation>
    </message>
    <message id="settings.general.dueReminderHour">
        <source>Time of the reminder</source>
        <translation>Hatırlatma saati</translation>
    </message>
    <message id="settings.general.morningDigest">
        <source>Send a morning summary of the day's tasks</source>
        <translation>Günün görevlerini sabah özetle</translation>
    </message>
    <message id="notification.due.body">
        <source>Due today</source>
        <translation>Son tarih bugün</translation>
    </message>
    <message id="notification.digest.title">
        <source>Ready to work on today</source>
        <translation>Bugün başlanabilecek görevler</translation>
    </message>
    <message id="notification.open">
        <source>Open</source>
        <translation>Aç</translation>
    </message>
    <message id="settings.general.planDay.title">
        <source>Plan Day</source>
        <translation>Günü Planla</translation>
    </message>
    <message id="settings.general.dayPlanBudget">
        <source>Time available per day</source>
        <translation>Günlük ayrılan süre</translation>
    </message>
    <message id="settings.general.dayPlanBudget.minutes">
        <source>minutes</source>
        <translation>dakika</translation>
    </message>
    <message id="settings.general.dayPlanBudget.hours">
        <source>hours</source>
        <translation>saat</translation>
    </message>
    <message id="settings.general.filter.title">
        <source>Filters</source>
        <translation>Filtreler</translation>
    </message>
    <message id="settings.general.filterMode">
        <source>Tasks a filter leaves out</source>
        <translation>Filtrenin dışında kalan görevler</translation>
    </message>
    <message id="settings.general.filterMode.dim">
        <source>Dim them</source>
        <translation>Soluk göster</translation>
    </message>
    <message id="settings.general.filterMode.hide">
        <source>Hide them</source>
        <translation>Gizle</translation>
    </message>
    <message id="settings.general.quickCapture.title">
        <source>Quick capture</source>
        <translation>Hızlı ekleme</translation>
    </message>
    <message id="settings.general.quickCapture.subtitle">
        <source>Opens the capture panel from any application while Fenrow is running.</source>
        <translation>Fenrow açıkken ekleme panelini her uygulamadan açar.</translation>
    </message>
    <message id="shortcut.recorder.recording">
        <source>Press keys…</source>
        <translation>Tuşlara basın…</translation>
    </message>
    <message id="settings.shortcuts.needsModifier">
        <source>A shortcut needs Ctrl, Alt, Shift or Meta. Try again, or press Esc to keep the old one.</source>
        <translation>Kısayolda Ctrl, Alt, Shift veya Meta olmalı. Yeniden deneyin ya da eskisini korumak için Esc'ye basın.</translation>
    </message>
    <message id="settings.shortcuts.unsupportedKey">
        <source>This key can't be part of a shortcut. Try a letter, a digit or a punctuation key, or press Esc.</source>
        <translation>Bu tuş kısayolda kullanılamaz. Bir harf, rakam veya noktalama tuşu deneyin ya da Esc'ye basın.</translation>
    </message>
    <message id="settings.shortcuts.conflict">
        <source>Also used by: %1</source>
        <translation>Şunda da kullanılıyor: %1</translation>
    </message>
    <message id="settings.shortcuts.globalUnavailable">
        <source>This shortcut works only inside Fenrow: the desktop did not let Fenrow claim it. To open the capture panel from any application, assign a shortcut to this command in your desktop's keyboard settings:</source>
        <translation>Bu kısayol yalnızca Fenrow içinde çalışır: masaüstü onu Fenrow'a vermedi. Ekleme panelini her uygulamadan açmak için masaüstünüzün klavye ayarlarında şu komuta bir kısayol atayın:</translation>
    </message>
    <message id="settings.shortcuts.action.undo">
        <source>Undo</source>
        <translation>Geri al</translation>
    </message>
    <message id="settings.shortcuts.action.redo">
        <source>Redo</source>
        <translation>Yinele</translation>
    </message>
    <message id="settings.shortcuts.action.newFlowFromText">
        <source>New flow from text</source>
        <translation>Metinden yeni akış</translation>
    </message>
    <message id="settings.shortcuts.action.findInFlow">
        <source>Find in flow</source>
        <translation>Akışta bul</translation>
    </message>
    <message id="settings.shortcuts.action.exportMarkdown">
        <source>Export as Markdown</source>
        <translation>Markdown olarak dışa aktar</translation>
    </message>
    <message id="settings.shortcuts.action.copyMarkdown">
        <source>Copy as Markdown</source>
        <translation>Markdown olarak kopyala</translation>
    </message>
    <message id="settings.shortcuts.action.zoomIn">
        <source>Zoom in</source>
        <translation>Yakınlaştır</translation>
    </message>
    <message id="settings.shortcuts.action.zoomOut">
        <source>Zoom out</source>
        <translation>Uzaklaştır</translation>
    </message>
    <message id="settings.shortcuts.action.zoomToFit">
        <source>Zoom to fit</source>
        <translation>Sığacak şekilde yakınlaştır</translation>
    </message>
    <message id="settings.shortcuts.reset">
        <source>Restore default shortcuts</source>
        <translation>Varsayılan kısayolları geri yükle</translation>
    </message>
    <message id="settings.shortcuts.reference.title">
        <source>On the canvas</source>
        <translation>Tuvalde</translation>
    </message>
    <message id="settings.shortcuts.reference.rename">
        <source>Rename the selected task</source>
        <translation>Seçili görevi yeniden adlandır</translation>
    </message>
    <message id="settings.shortcuts.reference.toggleDone">
        <source>Mark done or not done</source>
        <translation>Tamamlandı olarak işaretle veya geri al</translation>
    </message>
    <message id="settings.shortcuts.reference.addAfter">
        <source>Add the next task</source>
        <translation>Sonraki görevi ekle</translation>
    </message>
    <message id="settings.shortcuts.reference.addBefore">
        <source>Add a task before</source>
        <translation>Öncesine görev ekle</translation>
    </message>
    <message id="settings.shortcuts.reference.delete">
        <source>Delete the selection</source>
        <translation>Seçimi sil</translation>
    </message>
    <message id="settings.shortcuts.reference.delete.keys">
        <source>Delete or Backspace</source>
        <translation>Delete veya Geri</translation>
    </message>
    <message id="settings.shortcuts.reference.deselect">
        <source>Clear the selection</source>
        <translation>Seçimi kaldır</translation>
    </message>
    <message id="settings.shortcuts.reference.move">
        <source>Select the nearest task in that direction</source>
        <translation>O yöndeki en yakın görevi seç</translation>
    </message>
    <message id="settings.shortcuts.reference.follow">
        <source>Follow a connection</source>
        <translation>Bir bağlantıyı izle</translation>
    </message>
    <message id="settings.shortcuts.reference.multiSelect">
        <source>Add to the selection</source>
        <translation>Seçime ekle</translation>
    </message>
    <message id="settings.shortcuts.reference.multiSelect.keys">
        <source>Shift+click</source>
        <translation>Shift+tıklama</translation>
    </message>
    <message id="settings.shortcuts.reference.pan">
        <source>Move the canvas</source>
        <translation>Tuvali kaydır</translation>
    </message>
    <message id="settings.shortcuts.reference.pan.keys">
        <source>Space+drag</source>
        <translation>Boşluk+sürükle</translation>
    </message>
    <message id="settings.shortcuts.reference.caption">
        <source>These keys work while the canvas has the focus and can't be changed.</source>
        <translation>Bu tuşlar tuval odaktayken çalışır ve değiştirilemez.</translation>
    </message>
    <message id="settings.appearance.theme.title">
        <source>Theme</source>
        <translation>Tema</translation>
    </message>
    <message id="settings.appearance.theme.auto">
        <source>Same as the system</source>
        <translation>Sistemle aynı</translation>
    </message>
    <message id="settings.appearance.theme.light">
        <source>Light</source>
        <translation>Açık</translation>
    </message>
    <message id="settings.appearance.theme.dark">
        <source>Dark</source>
        <translation>Koyu</translation>
    </message>
    <message id="settings.appearance.theme.caption">
        <source>“Same as the system” follows the dark or light choice of your desktop.</source>
        <translation>“Sistemle aynı”, masaüstünüzün koyu veya açık tercihini izler.</translation>
    </message>
    <message id="settings.appearance.palette.title">
        <source>Accent colour</source>
        <translation>Vurgu rengi</translation>
    </message>
    <message id="settings.appearance.palette.violet">
        <source>Violet</source>
        <translation>Mor</translation>
    </message>
    <message id="settings.appearance.palette.blue">
        <source>Blue</source>
        <translation>Mavi</translation>
    </message>
    <message id="settings.appearance.palette.green">
        <source>Green</source>
        <translation>Yeşil</translation>
    </message>
    <message id="settings.appearance.palette.orange">
        <source>Orange</source>
        <translation>Turuncu</translation>
    </message>
    <message id="settings.appearance.palette.pink">
        <source>Pink</source>
        <translation>Pembe</translation>
    </message>
    <message id="settings.appearance.palette.graphite">
        <source>Graphite</source>
        <translation>Grafit</translation>
    </message>
    <message id="settings.appearance.canvas.title">
        <source>Canvas</source>
        <translation>Tuval</translation>
    </message>
    <message id="settings.appearance.grid">
        <source>Show the dot grid</source>
        <translation>Nokta ızgarasını göster</translation>
    </message>
    <message id="settings.appearance.sizeByEstimate">
        <source>Size cards by their estimate</source>
        <translation>Kartları tahmini süreye göre boyutlandır</translation>
    </message>
    <message id="settings.language.caption">
        <source>Fenrow switches language at once, without a restart.</source>
        <translation>Fenrow dili yeniden başlatmadan hemen değiştirir.</translation>
    </message>
    <message id="settings.language.system">
        <source>Same as the system</source>
        <translation>Sistemle aynı</translation>
    </message>
    <message id="settings.about.version">
        <source>Version %1</source>
        <translation>Sürüm %1</translation>
    </message>
    <message id="settings.about.tagline">
        <source>Plan projects as flows of tasks and work from what is ready.</source>
        <translation>Projeleri görev akışları olarak planlayın, hazır olanla çalışın.</translation>
    </message>
    <message id="settings.about.files.title">
        <source>Your files</source>
        <translation>Dosyalarınız</translation>
    </message>
    <message id="settings.about.dataFolder">
        <source>Open the data folder</source>
        <translation>Veri klasörünü aç</translation>
    </message>
    <message id="settings.about.settingsFile">
        <source>Open the settings file</source>
        <translation>Ayar dosyasını aç</translation>
    </message>
    <message id="settings.data.autoArchive.title">
        <source>Archive</source>
        <translation>Arşiv</translation>
    </message>
    <message id="settings.data.autoArchive.label">
        <source>Move done tasks to the archive</source>
        <translation>Tamamlanan görevleri arşive taşı</translation>
    </message>
    <message id="settings.data.autoArchive.caption">
        <source>Tasks done longer ago than this leave their flow and wait in the archive.</source>
        <translation>Bu süreden önce tamamlanan görevler akıştan çıkar ve arşivde bekler.</translation>
    </message>
    <message id="settings.data.autoArchive.off">
        <source>Never</source>
        <translation>Hiçbir zaman</translation>
    </message>
    <message id="settings.data.autoArchive.oneDay">
        <source>After 1 day</source>
        <translation>1 gün sonra</translation>
    </message>
    <message id="settings.data.autoArchive.days">
        <source>After %1 days</source>
        <translation>%1 gün sonra</translation>
    </message>
    <message id="settings.data.autoBackup.title">
        <source>Automatic backup</source>
        <translation>Otomatik yedekleme</translation>
    </message>
    <message id="settings.data.autoBackup.choose">
        <source>Choose Folder…</source>
        <translation>Klasör Seç…</translation>
    </message>
    <message id="settings.data.autoBackup.now">
        <source>Back Up Now</source>
        <translation>Şimdi Yedekle</translation>
    </message>
    <message id="settings.data.autoBackup.off">
        <source>Turn Off</source>
        <translation>Kapat</translation>
    </message>
    <message id="settings.data.autoBackup.caption">
        <source>Once a week Fenrow writes a backup into this folder and keeps the five newest.</source>
        <translation>Fenrow haftada bir bu klasöre yedek yazar ve en yeni beşini saklar.</translation>
    </message>
    <message id="settings.data.autoBackup.none">
        <source>No folder chosen: automatic backups are off.</source>
        <translation>Klasör seçilmedi: otomatik yedekleme kapalı.</translation>
    </message>
    <message id="settings.data.autoBackup.last">
        <source>Last backup: %1</source>
        <translation>Son yedek: %1</translation>
    </message>
    <message id="settings.data.autoBackup.never">
        <source>No backup written yet.</source>
        <translation>Henüz yedek yazılmadı.</translation>
    </message>
    <message id="settings.data.autoBackup.failed">
        <source>The last backup could not be written. Check that the folder still exists and that you may write to it.</source>
        <translation>Son yedek yazılamadı. Klasörün hâlâ var olduğunu ve yazma izniniz olduğunu denetleyin.</translation>
    </message>
    <message id="settings.data.templates.title">
        <source>Templates</source>
        <translation>Şablonlar</translation>
    </message>
    <message id="settings.data.templates.empty">
        <source>No templates yet. Save a flow as a template from its menu in the sidebar.</source>
        <translation>Henüz şablon yok. Kenar çubuğundaki menüsünden bir akışı şablon olarak kaydedin.</translation>
    </message>
    <message id="settings.data.templates.delete">
        <source>Delete template</source>
        <translation>Şablonu sil</translation>
    </message>
    <message id="menu.quickCapture">
        <source>&amp;Quick Capture…</source>
        <translation>&amp;Hızlı Ekle…</translation>
    </message>
    <message id="menu.helpMenu">
        <source>&amp;Help</source>
        <translation>&amp;Yardım</translation>
    </message>
    <message id="menu.help">
        <source>Fenrow &amp;Help</source>
        <translation>Fenrow &amp;Yardımı</translation>
    </message>
    <message id="menu.about">
        <source>&amp;About Fenrow</source>
        <translation>Fenrow &amp;Hakkında</translation>
    </message>
    <message id="menu.restartOnboarding">
        <source>Show the &amp;Welcome Again</source>
        <translation>&amp;Karşılamayı Yeniden Göster</translation>
    </message>
    <message id="onboarding.welcome.title">
        <source>Welcome to Fenrow</source>
        <translation>Fenrow’a hoş geldin</translation>
    </message>
    <message id="onboarding.welcome.message">
        <source>Plan each project as a flow of tasks, and always know what you can do next.</source>
        <translation>Her projeyi görevlerden oluşan bir akış olarak planla ve sıradaki işini her zaman bil.</translation>
    </message>
    <message id="onboarding.flows.title">
        <source>A project is a flow</source>
        <translation>Her proje bir akıştır</translation>
    </message>
    <message id="onboarding.flows.message">
        <source>Tasks are cards on a canvas. Connect them to say what comes first: a task waits until the ones before it are done.</source>
        <translation>Görevler tuvaldeki kartlardır. Neyin önce geldiğini bağlantılarla göster: bir görev, öncekiler bitene kadar bekler.</translation>
    </message>
    <message id="onboarding.ready.title">
        <source>Work from the Ready list</source>
        <translation>Hazır listesinden çalış</translation>
    </message>
    <message id="onboarding.ready.message">
        <source>Everything you can start now, from all your flows, in one list. Tick a task off and whatever it held up moves in.</source>
        <translation>Tüm akışlarından hemen başlayabileceğin her şey tek listede. Bir görevi işaretle, beklettiği görevler listeye girsin.</translation>
    </message>
    <message id="onboarding.capture.title">
        <source>Capture in a moment</source>
        <translation>Anında not al</translation>
    </message>
    <message id="onboarding.capture.message %@">
        <source>Press %1 to note a task without leaving what you are doing. Words like “tomorrow” or “next friday” set its due date.</source>
        <translation>Elindeki işi bırakmadan bir görev yazmak için %1 tuşlarına bas. “yarın” ya da “gelecek cuma” gibi sözcükler son günü belirler.</translation>
    </message>
    <message id="onboarding.capture.messageInsideOnly %@ %@">
        <source>Press %1 to note a task while Fenrow is in front. To do it from any application, assign a shortcut to “%2” in your desktop's keyboard settings. Words like “tomorrow” or “next friday” set its due date.</source>
        <translation>Fenrow öndeyken bir görev yazmak için %1 tuşlarına bas. Bunu her uygulamadan yapmak için masaüstünün klavye ayarlarında “%2” komutuna bir kısayol ata. “yarın” ya da “gelecek cuma” gibi sözcükler son günü belirler.</translation>
    </message>
    <message id="onboarding.action.next">
        <source>Continue</source>
        <translation>Devam</translation>
    </message>
    <message id="onboarding.action.back">
        <source>Back</source>
        <translation>Geri</translation>
    </message>
    <message id="onboarding.action.finish">
        <source>Get started</source>
        <translation>Başlayalım</translation>
    </message>
    <message id="sidebar.route.search">
        <source>Search</source>
        <translation>Ara</translation>
    </message>
    <message id="sidebar.action.collapse">
        <source>Hide sidebar</source>
        <translation>Kenar çubuğunu gizle</translation>
    </message>
    <message id="sidebar.action.expand">
        <source>Show sidebar</source>
        <translation>Kenar çubuğunu göster</translation>
    </message>
    <message id="flowSearch.field.placeholder">
        <source>Find tasks by title or notes</source>
        <translation>Görevleri başlığa veya notlara göre bul</translation>
    </message>
    <message id="flowSearch.close">
        <source>Close</source>
        <translation>Kapat</translation>
    </message>
    <message id="flowSearch.group.current">
        <source>This flow</source>
        <translation>Bu akış</translation>
    </message>
    <message id="flowSearch.empty.title">
        <source>No matches</source>
        <translation>Eşleşme yok</translation>
    </message>
    <message id="flowSearch.empty.message">
        <source>No task title or note contains these words.</source>
        <translation>Hiçbir görev başlığı veya notu bu kelimeleri içermiyor.</translation>
    </message>
    <message id="flowSearch.count %lld">
        <source>%1 found</source>
        <translation>%1 sonuç</translation>
    </message>
    <message id="flowSearch.footer.hint">
        <source>↑↓ to move · ↩ to open · esc to close</source>
        <translation>↑↓ gezin · ↩ aç · esc kapat</translation>
    </message>
    <message id="menu.view">
        <source>View</source>
        <translation>Görünüm</translation>
    </message>
    <message id="menu.zoomIn">
        <source>Zoom In</source>
        <translation>Yakınlaştır</translation>
    </message>
    <message id="menu.zoomOut">
        <source>Zoom Out</source>
        <translation>Uzaklaştır</translation>
    </message>
    <message id="menu.actualSize">
        <source>Actual Size</source>
        <translation>Gerçek Boyut</translation>
    </message>
    <message id="menu.zoomToFit">
        <source>Zoom to Fit</source>
        <translation>Sığacak Şekilde Yakınlaştır</translation>
    </message>
    <message id="menu.toggleSidebar">
        <source>Show or Hide Sidebar</source>
        <translation>Kenar Çubuğunu Göster veya Gizle</translation>
    </message>
    <message id="menu.flow">
        <source>Flow</source>
        <translation>Akış</translation>
    </message>
    <message id="menu.addTask">
        <source>Add Task</source>
        <translation>Görev Ekle</translation>
    </message>
    <message id="menu.addNextTask">
        <source>Add Next Task</source>
        <translation>Sonraki Görevi Ekle</translation>
    </message>
    <message id="menu.addTaskBefore">
        <source>Add Task Before</source>
        <translation>Önce Görev Ekle</translation>
    </message>
    <message id="menu.addSubtask">
        <source>Add Subtask</source>
        <translation>Alt Görev Ekle</translation>
    </message>
    <message id="menu.connect">
        <source>Connect Selected Tasks</source>
        <translation>Seçili Görevleri Bağla</translation>
    </message>
    <message id="menu.rename">
        <source>Rename Task</source>
        <translation>Görevi Yeniden Adlandır</translation>
    </message>
    <message id="menu.toggleDone">
        <source>Mark Done or Not Done</source>
        <translation>Bitti veya Bitmedi Olarak İşaretle</translation>
    </message>
    <message id="menu.delete">
        <source>Delete Selection</source>
        <translation>Seçimi Sil</translation>
    </message>
    <message id="menu.arrange">
        <source>Arrange as Tree</source>
        <translation>Ağaç Olarak Düzenle</translation>
    </message>
    <message id="menu.archiveDone">
        <source>Archive Done Tasks…</source>
        <translation>Biten Görevleri Arşivle…</translation>
    </message>
    <message id="menu.find">
        <source>Find in Flows…</source>
        <translation>Akışlarda Bul…</translation>
    </message>
    <message id="ready.row.references">
        <source>Linked files: %1</source>
        <translation>Bağlı dosyalar: %1</translation>
    </message>
    <message id="ready.row.reorder.help">
        <source>Drag to set today's order</source>
        <translation>Bugünün sırasını belirlemek için sürükleyin</translation>
    </message>
    <message id="menu.newFlowFromText">
        <source>New Flow from Text…</source>
        <translation>Metinden Yeni Akış…</translation>
    </message>
    <message id="menu.planDay">
        <source>Plan Today…</source>
        <translation>Bugünü Planla…</translation>
    </message>
    <message id="ready.action.planDay">
        <source>Plan Day</source>
        <translation>Günü planla</translation>
    </message>
    <message id="newFlowFromText.title">
        <source>New flow</source>
        <translation>Yeni akış</translation>
    </message>
    <message id="newFlowFromText.subtitle">
        <source>Describe the project in your own words and the language model turns it into tasks. Or leave the text empty to start with a blank flow.</source>
        <translation>Projeyi kendi sözlerinle anlat, dil modeli onu görevlere dönüştürsün. Ya da boş bir akışla başlamak için metni boş bırak.</translation>
    </message>
    <message id="newFlowFromText.name.label">
        <source>Name</source>
        <translation>Ad</translation>
    </message>
    <message id="newFlowFromText.name.placeholder">
        <source>Taken from the text when left empty</source>
        <translation>Boş bırakılırsa metinden alınır</translation>
    </message>
    <message id="newFlowFromText.editor.label">
        <source>What is the project about?</source>
        <translation>Proje ne hakkında?</translation>
    </message>
    <message id="newFlowFromText.editor.placeholder">
        <source>Paste notes, an e-mail or a plan, or write a few sentences about what has to happen.</source>
        <translation>Notları, bir e-postayı ya da bir planı yapıştır veya yapılması gerekenleri birkaç cümleyle yaz.</translation>
    </message>
    <message id="newFlowFromText.processing">
        <source>Reading the text and making tasks…</source>
        <translation>Metin okunuyor ve görevler oluşturuluyor…</translation>
    </message>
    <message id="newFlowFromText.cancel">
        <source>Cancel</source>
        <translation>Vazgeç</translation>
    </message>
    <message id="newFlowFromText.overBudget.title">
        <source>Only the first part will be read</source>
        <translation>Yalnızca ilk kısım okunacak</translation>
    </message>
    <message id="newFlowFromText.overBudget.message">
        <source>The text is longer than the language model can take at once. You can still create the flow; tasks come from the beginning of the text.</source>
        <translation>Metin, dil modelinin bir kerede alabileceğinden uzun. Akışı yine de oluşturabilirsin; görevler metnin başından çıkarılır.</translation>
    </message>
    <message id="generateSubtasks.title">
        <source>Generate subtasks</source>
        <translation>Alt görev üret</translation>
    </message>
    <message id="generateSubtasks.subtitle">
        <source>The language model breaks this task into smaller steps.</source>
        <translation>Dil modeli bu görevi daha küçük adımlara böler.</translation>
    </message>
    <message id="generateSubtasks.subtitle.named %@">
        <source>The language model breaks “%1” into smaller steps.</source>
        <translation>Dil modeli “%1” görevini daha küçük adımlara böler.</translation>
    </message>
    <message id="generateSubtasks.details.label">
        <source>Details (optional)</source>
        <translation>Ayrıntılar (isteğe bağlı)</translation>
    </message>
    <message id="generateSubtasks.details.placeholder">
        <source>What does the task involve?</source>
        <translation>Görev neleri kapsıyor?</translation>
    </message>
    <message id="generateSubtasks.processing">
        <source>Breaking the task down…</source>
        <translation>Görev bölünüyor…</translation>
    </message>
    <message id="generateSubtasks.cancel">
        <source>Cancel</source>
        <translation>Vazgeç</translation>
    </message>
    <message id="generateSubtasks.generate">
        <source>Generate</source>
        <translation>Üret</translation>
    </message>
    <message id="canvas.node.generateSubtasks">
        <source>Generate Subtasks…</source>
        <translation>Alt Görev Üret…</translation>
    </message>
    <message id="canvas.node.expand.failed.title">
        <source>Subtasks could not be generated</source>
        <translation>Alt görevler üretilemedi</translation>
    </message>
    <message id="canvas.node.expand.failed.message">
        <source>The language model gave no usable answer. Try again, or add the subtasks by hand.</source>
        <translation>Dil modeli kullanılabilir bir yanıt vermedi. Yeniden dene ya da alt görevleri elle ekle.</translation>
    </message>
    <message id="planDay.title">
        <source>Plan today</source>
        <translation>Bugünü planla</translation>
    </message>
    <message id="planDay.cancel">
        <source>Cancel</source>
        <translation>Vazgeç</translation>
    </message>
    <message id="planDay.running">
        <source>Ordering your tasks…</source>
        <translation>Görevlerin sıralanıyor…</translation>
    </message>
    <message id="planDay.failed.title">
        <source>The day could not be planned</source>
        <translation>Gün planlanamadı</translation>
    </message>
    <message id="planDay.failed.message">
        <source>The language model gave no usable order. Go back and try again; nothing was changed.</source>
        <translation>Dil modeli kullanılabilir bir sıra vermedi. Geri dönüp yeniden dene; hiçbir şey değişmedi.</translation>
    </message>
    <message id="planDay.back">
        <source>Back</source>
        <translation>Geri</translation>
    </message>
    <message id="planDay.commit">
        <source>Use this plan</source>
        <translation>Bu planı kullan</translation>
    </message>
    <message id="planDay.cut.label">
        <source>Does not fit today</source>
        <translation>Bugüne sığmıyor</translation>
    </message>
    <message id="planDay.timeline.label %@ %@">
        <source>%1 of %2 planned, in working order</source>
        <translation>%2 içinden %1 çalışma sırasıyla planlandı</translation>
    </message>
    <message id="planDay.nothingFits.title">
        <source>Nothing fits</source>
        <translation>Hiçbir şey sığmıyor</translation>
    </message>
    <message id="planDay.nothingFits.message">
        <source>Every ready task takes longer than the time you have. Go back and give the day more time.</source>
        <translation>Hazır görevlerin her biri elindeki süreden uzun. Geri dönüp güne daha fazla zaman ver.</translation>
    </message>
    <message id="planDay.budget.custom.label">
        <source>Time you have today</source>
        <translation>Bugün ayırabileceğin süre</translation>
    </message>
    <message id="planDay.budget.unit.label">
        <source>Unit</source>
        <translation>Birim</translation>
    </message>
    <message id="planDay.budget.presets">
        <source>Presets</source>
        <translation>Hazır süreler</translation>
    </message>
    <message id="planDay.taskCount %lld">
        <source>Ready tasks to fit: %1</source>
        <translation>Sığdırılacak hazır görev: %1</translation>
    </message>
    <message id="ready.order.today">
        <source>In your order</source>
        <translation>Senin sıran</translation>
    </message>
    <message id="intents.add.done %@ %@">
        <source>Added “%1” to %2.</source>
        <translation>“%1”, %2 akışına eklendi.</translation>
    </message>
    <message id="intents.ready.some %lld %@">
        <source>Ready now (%1): %2</source>
        <translation>Şimdi hazır (%1): %2</translation>
    </message>
    <message id="intents.ready.none">
        <source>Nothing is ready right now.</source>
        <translation>Şu anda hazır bir şey yok.</translation>
    </message>
    <message id="intents.complete.done %@">
        <source>Done: %1.</source>
        <translation>Tamamlandı: %1.</translation>
    </message>
    <message id="intents.error.notFound">
        <source>That task or flow does not exist any more.</source>
        <translation>Bu görev ya da akış artık yok.</translation>
    </message>
    <message id="backup.restore.done.edgesLeftOut %lld">
        <source>Connections left out because they would have led a task back to itself or repeated another: %1.</source>
        <translation>Bir görevi kendisine geri götüreceği ya da başka bir bağlantıyı yineleyeceği için dışarıda bırakılan bağlantılar: %1.</translation>
    </message>
    <message id="backup.restore.done.safety %@">
        <source>What Fenrow held before is kept in “%1”. Restore that file with Replace to undo this.</source>
        <translation>Fenrow’un önceki içeriği “%1” dosyasında saklanıyor. Bunu geri almak için o dosyayı Değiştir ile geri yükleyin.</translation>
    </message>
    <message id="backup.restore.failed.title">
        <source>The backup could not be restored</source>
        <translation>Yedek geri yüklenemedi</translation>
    </message>
    <message id="backup.restore.failed.message">
        <source>Nothing was changed.</source>
        <translation>Hiçbir şey değiştirilmedi.</translation>
    </message>
    <message id="backup.adjusted.title">
        <source>Backup written with changes</source>
        <translation>Yedek değişikliklerle yazıldı</translation>
    </message>
    <message id="backup.adjusted.message">
        <source>Some values could not be written as they are; they were left out or held to their limits:</source>
        <translation>Bazı değerler olduğu gibi yazılamadı; dışarıda bırakıldılar ya da sınırlarına çekildiler:</translation>
    </message>
    <message id="import.opml.leftOut.title">
        <source>Part of the outline stayed out</source>
        <translation>Taslağın bir kısmı alınmadı</translation>
    </message>
    <message id="import.opml.leftOut %1 %2">
        <source>Entries without text left out: %1. Dates outside the calendar left out: %2. Everything else was imported.</source>
        <translation>Metni olmayan, alınmayan girdiler: %1. Takvim dışında kalan, alınmayan tarihler: %2. Geri kalan her şey alındı.</translation>
    </message>
    <message id="widget.count.one">
        <source>1 task ready</source>
        <translation>1 görev hazır</translation>
    </message>
    <message id="widget.count %1">
        <source>%1 tasks ready</source>
        <translation>%1 görev hazır</translation>
    </message>
    <message id="widget.empty.noTasks">
        <source>Nothing ready: no tasks yet</source>
        <translation>Hazır görev yok: henüz hiç görev yok</translation>
    </message>
    <message id="widget.empty.allDone">
        <source>Nothing ready: all done</source>
        <translation>Hazır görev yok: hepsi tamam</translation>
    </message>
    <message id="widget.empty.allBlocked">
        <source>Nothing ready: everything waits on other tasks</source>
        <translation>Hazır görev yok: hepsi başka görevleri bekliyor</translation>
    </message>
    <message id="widget.empty.allDeferred">
        <source>Nothing ready: everything waits for its day</source>
        <translation>Hazır görev yok: hepsi kendi gününü bekliyor</translation>
    </message>
    <message id="widget.empty.allTicked">
        <source>All ticked: Fenrow marks them done when it runs</source>
        <translation>Hepsi işaretlendi: Fenrow çalışınca bunları tamamlar</translation>
    </message>
    <message id="widget.notWritten">
        <source>Fenrow has not written the Ready list yet. Open Fenrow to make it.</source>
        <translation>Fenrow, Hazır listesini henüz yazmadı. Oluşturmak için Fenrow’u açın.</translation>
    </message>
    <message id="widget.outOfDate">
        <source>Open Fenrow to bring this list up to date</source>
        <translation>Bu listeyi güncellemek için Fenrow’u açın</translation>
    </message>
    <message id="widget.popup.title">
        <source>Ready</source>
        <translation>Hazır</translation>
    </message>
    <message id="widget.more %1">
        <source>and %1 more</source>
        <translation>ve %1 görev daha</translation>
    </message>
    <message id="widget.open">
        <source>Open Fenrow</source>
        <translation>Fenrow’u aç</translation>
    </message>
    <message id="widget.capture">
        <source>Quick capture</source>
        <translation>Hızlı ekleme</translation>
    </message>
    <message id="widget.quit">
        <source>Quit widget</source>
        <translation>Widget’tan çık</translation>
    </message>
    <message id="widget.tick.failed">
        <source>The tick could not be saved. Try again, or tick the task in Fenrow.</source>
        <translation>İşaret kaydedilemedi. Yeniden deneyin ya da görevi Fenrow’da işaretleyin.</translation>
    </message>
    <message id="widget.open.failed">
        <source>Fenrow could not be started.</source>
        <translation>Fenrow başlatılamadı.</translation>
    </message>
    <message id="widget.tooltip %1">
        <source>Fenrow · %1</source>
        <translation>Fenrow · %1</translation>
    </message>
    <message id="engine.stop">
        <source>Stop</source>
        <translation>Durdur</translation>
    </message>
    <message id="import.opml.relink.progress">
        <source>Connecting the imported tasks…</source>
        <translation>İçe aktarılan görevler bağlanıyor…</translation>
    </message>
    <message id="settings.model.stopLoading">
        <source>Stop Loading</source>
        <translation>Yüklemeyi Durdur</translation>
    </message>
    <message id="quickCapture.date.format.withYear">
        <source>ddd, MMM d, yyyy</source>
        <translation>d MMMM yyyy ddd</translation>
    </message>
    <message id="canvas.access.file">
        <source>File</source>
        <translation>Dosya</translation>
    </message>
    <message id="canvas.access.after %1">
        <source>After: %1</source>
        <translation>Öncesi: %1</translation>
    </message>
    <message id="canvas.access.before %1">
        <source>Before: %1</source>
        <translation>Sonrası: %1</translation>
    </message>
    <message id="canvas.access.subtaskOf %1">
        <source>Subtask of: %1</source>
        <translation>Üst görev: %1</translation>
    </message>
    <message id="canvas.access.subtasks %1">
        <source>Subtasks: %1</source>
        <translation>Alt görevler: %1</translation>
    </message>
    <message id="canvas.access.action.select">
        <source>Select</source>
        <translation>Seç</translation>
    </message>
    <message id="canvas.access.action.open">
        <source>Open</source>
        <translation>Aç</translation>
    </message>
    <message id="canvas.access.action.done">
        <source>Mark done</source>
        <translation>Tamamlandı olarak işaretle</translation>
    </message>
    <message id="canvas.access.action.undone">
        <source>Mark not done</source>
        <translation>Tamamlanmadı olarak işaretle</translation>
    </message>
    <message id="canvas.access.name %1">
        <source>Canvas of %1</source>
        <translation>%1 tuvali</translation>
    </message>
    <message id="access.countedTasks %1 %2">
        <source>%1, tasks: %2</source>
        <translation>%1, görev: %2</translation>
    </message>
</context>
</TS>
