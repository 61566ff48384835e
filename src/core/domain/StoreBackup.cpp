// The backup document: everything out in one value, and everything back in,
// by replacing the store or by merging what it does not have yet.
#include "FenrowStore.h"

#include "Clock.h"
#include "GrowingGraph.h"
#include "StoreLog.h"
#include "ValueLimits.h"
#include "formats/FenrowBackup.h"
#include "persistence/StoreDatabase.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

namespace fenrow {

namespace {

// Holds each value on its way into a backup to ValueLimits, which a
// document can always carry, and names every value that had to change.
// The store keeps its values within the limits (edits pass them, opening
// normalises), so this only meets a value that came in by a road that
// skipped them; one such value must not cost the user the whole backup.
class OutgoingValues {
public:
    OutgoingValues(QStringList *adjusted, QDateTime fallbackDate)
        : m_adjusted(adjusted), m_fallbackDate(std::move(fallbackDate))
    {
    }

    // What the following values belong to: 'task "Pay" in flow "Home"'.
    void about(QString subject) { m_subject = std::move(subject); }

    std::optional<QDateTime> date(const std::optional<QDateTime> &value, const char *field)
    {
        std::optional<QDateTime> kept = ValueLimits::date(value);
        if (value && !kept)
            note(field, QStringLiteral("left out (%1)").arg(describe(*value)));
        return kept;
    }
    // A date the document cannot do without takes the backup's own moment.
    QDateTime date(const QDateTime &value, const char *field)
    {
        if (ValueLimits::isStorable(value))
            return value;
        note(field, QStringLiteral("written as the moment of the backup (%1)").arg(describe(value)));
        return m_fallbackDate;
    }
    double number(double value, double kept, const char *field)
    {
        if (kept != value)
            note(field, QStringLiteral("written as %1 (was %2)").arg(kept).arg(value));
        return kept;
    }
    ValueLimits::ManualSize size(std::optional<double> width, std::optional<double> height)
    {
        const ValueLimits::ManualSize kept = ValueLimits::manualSize(width, height);
        if (kept.width != width || kept.height != height)
            note("size", QStringLiteral("held to the card limits"));
        return kept;
    }

private:
    static QString describe(const QDateTime &value)
    {
        return value.isValid() ? QStringLiteral("year %1 cannot be written").arg(value.toUTC().date().year())
                               : QStringLiteral("not a valid date");
    }
    void note(const char *field, const QString &what)
    {
        if (m_adjusted)
            m_adjusted->append(QStringLiteral("%1: %2 %3").arg(m_subject, QLatin1StringView(field), what));
    }

    QStringList *m_adjusted;
    QDateTime m_fallbackDate;
    QString m_subject;
};

FenrowBackup::Flow backupFlow(const TaskFlow &flow, OutgoingValues &values)
{
    const QString flowName = flow.displayName();
    values.about(QStringLiteral("flow \"%1\"").arg(flowName));
    FenrowBackup::Flow out;
    out.id = flow.id;
    out.name = flow.name;
    out.order = flow.order;
    out.createdAt = values.date(flow.createdAt, "creation date");
    out.viewportOffsetX = values.number(flow.viewportOffsetX, ValueLimits::viewportOffset(flow.viewportOffsetX), "view");
    out.viewportOffsetY = values.number(flow.viewportOffsetY, ValueLimits::viewportOffset(flow.viewportOffsetY), "view");
    out.viewportScale = values.number(flow.viewportScale, ValueLimits::viewportScale(flow.viewportScale), "zoom");
    out.hasBeenFramed = flow.hasBeenFramed;

    out.items.reserve(qsizetype(flow.items().size()));
    for (const FlowNode *node : flow.items()) {
        values.about(QStringLiteral("task \"%1\" in flow \"%2\"").arg(node->title, flowName));
        const ValueLimits::ManualSize size = values.size(node->manualWidth, node->manualHeight);
        out.items.append({
            .id = node->id,
            .title = node->title,
            .isDone = node->isDone,
            .statusRaw = node->statusRaw,
            .notes = node->notes,
            .priorityRaw = node->priorityRaw,
            .colorRaw = node->colorRaw,
            .startDate = values.date(node->startDate, "start date"),
            .dueDate = values.date(node->dueDate, "due date"),
            .estimateMinutes = node->estimateMinutes,
            .dayPlanRank = node->dayPlanRank,
            .manualWidth = size.width,
            .manualHeight = size.height,
            .isCollapsed = node->isCollapsed,
            .checklistData = node->checklistData,
            .recurrenceRaw = node->recurrenceRaw,
            .repeatCount = node->repeatCount,
            .completedAt = values.date(node->completedAt, "completion date"),
            .posX = values.number(node->posX, ValueLimits::coordinate(node->posX), "position"),
            .posY = values.number(node->posY, ValueLimits::coordinate(node->posY), "position"),
            .order = node->order,
            .createdAt = values.date(node->createdAt, "creation date"),
        });
    }

    out.edges.reserve(qsizetype(flow.edges().size()));
    values.about(QStringLiteral("a connection in flow \"%1\"").arg(flowName));
    for (const DependencyEdge *edge : flow.edges()) {
        if (!edge->fromItem() || !edge->toItem())
            continue;
        std::optional<QString> kind;
        if (edge->kind)
            kind = rawString(*edge->kind);
        out.edges.append({edge->id, edge->fromItem()->id, edge->toItem()->id, rawString(edge->source), kind,
                          values.date(edge->createdAt, "creation date")});
    }

    // A trashed file waits only for undo; it and its links stay behind.
    for (const FlowFile *file : flow.files()) {
        if (file->isTrashed)
            continue;
        values.about(QStringLiteral("file \"%1\" in flow \"%2\"").arg(file->filename, flowName));
        const ValueLimits::ManualSize size = values.size(file->manualWidth, file->manualHeight);
        out.files.append({
            .id = file->id,
            .filename = file->filename,
            .contentTypeRaw = file->contentTypeRaw,
            .byteCount = file->byteCount,
            .data = file->data.value(),
            .thumbnail = file->thumbnail.value(),
            .posX = values.number(file->posX, ValueLimits::coordinate(file->posX), "position"),
            .posY = values.number(file->posY, ValueLimits::coordinate(file->posY), "position"),
            .manualWidth = size.width,
            .manualHeight = size.height,
            .order = file->order,
            .createdAt = values.date(file->createdAt, "creation date"),
        });
        for (const FileLink *link : file->links()) {
            if (link->node())
                out.links.append({link->id, file->id, link->node()->id, values.date(link->createdAt, "link date")});
        }
    }
    return out;
}

// Ids are unique across the whole store, not only within a flow: a row
// whose id is taken (by the store or earlier in the document) stays out,
// and whatever refers to it then finds nothing, as for any unknown end.
class TakenIDs {
public:
    bool claim(const QUuid &id)
    {
        if (m_ids.contains(id))
            return false;
        m_ids.insert(id);
        return true;
    }

private:
    QSet<QUuid> m_ids;
};

// A flow of the document as records, its values held to ValueLimits as an
// edit would hold them, its edges to the rules of addEdge; `edgesLeftOut`
// counts those that broke them.
std::unique_ptr<TaskFlow> restoredFlow(const FenrowBackup::Flow &source, qint64 order, TakenIDs &ids,
                                       int &edgesLeftOut)
{
    auto flow = std::make_unique<TaskFlow>();
    flow->id = source.id;
    flow->name = source.name;
    flow->order = order;
    flow->createdAt = source.createdAt;
    flow->viewportOffsetX = ValueLimits::viewportOffset(source.viewportOffsetX);
    flow->viewportOffsetY = ValueLimits::viewportOffset(source.viewportOffsetY);
    flow->viewportScale = ValueLimits::viewportScale(source.viewportScale);
    flow->hasBeenFramed = source.hasBeenFramed;

    // Each task by id, with its number in the graph of this flow.
    QHash<QUuid, std::pair<FlowNode *, std::size_t>> nodes;
    nodes.reserve(source.items.size());
    flow->items().reserve(std::size_t(source.items.size()));
    for (const FenrowBackup::Item &item : source.items) {
        if (!ids.claim(item.id))
            continue;
        auto node = std::make_unique<FlowNode>();
        node->id = item.id;
        node->title = item.title;
        node->isDone = item.isDone;
        node->statusRaw = item.statusRaw;
        node->notes = item.notes;
        node->priorityRaw = item.priorityRaw;
        node->colorRaw = item.colorRaw;
        node->startDate = ValueLimits::date(item.startDate);
        node->dueDate = ValueLimits::date(item.dueDate);
        node->estimateMinutes = ValueLimits::estimate(item.estimateMinutes);
        if (item.dayPlanRank)
            node->dayPlanRank = ValueLimits::count(*item.dayPlanRank);
        const ValueLimits::ManualSize size = ValueLimits::manualSize(item.manualWidth, item.manualHeight);
        node->manualWidth = size.width;
        node->manualHeight = size.height;
        node->isCollapsed = item.isCollapsed;
        node->checklistData = item.checklistData;
        node->recurrenceRaw = item.recurrenceRaw;
        node->repeatCount = ValueLimits::count(item.repeatCount);
        node->completedAt = ValueLimits::date(item.completedAt);
        node->posX = ValueLimits::coordinate(item.posX);
        node->posY = ValueLimits::coordinate(item.posY);
        node->order = item.order;
        node->createdAt = item.createdAt;
        node->setFlow(flow.get());
        const std::size_t number = std::size_t(nodes.size());
        nodes.insert(item.id, {flow->items().add(std::move(node)), number});
    }

    GrowingGraph graph(std::size_t(nodes.size()));
    flow->edges().reserve(std::size_t(source.edges.size()));
    for (const FenrowBackup::Edge &link : source.edges) {
        const auto from = nodes.constFind(link.fromID);
        const auto to = nodes.constFind(link.toID);
        if (from == nodes.cend() || to == nodes.cend() || !ids.claim(link.id))
            continue;
        if (!graph.admit(from->second, to->second)) {
            ++edgesLeftOut;
            continue;
        }
        auto edge = std::make_unique<DependencyEdge>();
        edge->id = link.id;
        // Unknown words fall to the case that asks least of the graph.
        edge->source = link.sourceRaw == rawString(EdgeSource::ai) ? EdgeSource::ai : EdgeSource::manual;
        edge->kind = link.kindRaw == rawString(EdgeKind::subtask) ? EdgeKind::subtask : EdgeKind::dependency;
        edge->createdAt = link.createdAt;
        edge->setFlow(flow.get());
        edge->setFromItem(from->first);
        edge->setToItem(to->first);
        flow->edges().add(std::move(edge));
    }

    QHash<QUuid, FlowFile *> files;
    for (const FenrowBackup::File &stored : source.files) {
        if (!ids.claim(stored.id))
            continue;
        auto file = std::make_unique<FlowFile>();
        file->id = stored.id;
        file->filename = stored.filename;
        file->contentTypeRaw = stored.contentTypeRaw;
        file->byteCount = ValueLimits::count(stored.byteCount);
        file->data.set(stored.data);
        file->thumbnail.set(stored.thumbnail);
        file->posX = ValueLimits::coordinate(stored.posX);
        file->posY = ValueLimits::coordinate(stored.posY);
        const ValueLimits::ManualSize size = ValueLimits::manualSize(stored.manualWidth, stored.manualHeight);
        file->manualWidth = size.width;
        file->manualHeight = size.height;
        file->order = stored.order;
        file->createdAt = stored.createdAt;
        file->setFlow(flow.get());
        files.insert(stored.id, flow->files().add(std::move(file)));
    }

    for (const FenrowBackup::Link &stored : source.links) {
        FlowFile *file = files.value(stored.fileID);
        const auto node = nodes.constFind(stored.nodeID);
        if (!file || node == nodes.cend() || !ids.claim(stored.id))
            continue;
        auto link = std::make_unique<FileLink>();
        link->id = stored.id;
        link->createdAt = stored.createdAt;
        link->setFlow(flow.get());
        link->setFile(file);
        link->setNode(node->first);
        FileLink *added = flow->fileLinks().add(std::move(link));
        file->links().append(added);
        node->first->fileLinks().append(added);
    }
    return flow;
}

bool isSafetyBackup(const QFileInfo &file)
{
    return file.fileName().startsWith(FenrowBackup::safetyPrefix)
        && file.suffix() == FenrowBackup::fileExtension;
}

} // namespace

FenrowBackup FenrowStore::makeBackup(const QDateTime &createdAt, QStringList *adjusted) const
{
    FenrowBackup backup;
    backup.createdAt = createdAt;
    OutgoingValues values(adjusted, createdAt);
    backup.flows.reserve(m_flows.size());
    for (const TaskFlow *flow : m_flows)
        backup.flows.append(backupFlow(*flow, values));
    for (const FlowTemplate *flowTemplate : templateList()) {
        values.about(QStringLiteral("template \"%1\"").arg(flowTemplate->name));
        backup.templates.append({flowTemplate->id, flowTemplate->name,
                                 values.date(flowTemplate->createdAt, "creation date"), flowTemplate->payload});
    }
    backup.records.reserve(qsizetype(m_completionRecords.size()));
    for (const CompletionRecord *record : m_completionRecords) {
        values.about(QStringLiteral("archive record \"%1\"").arg(record->title));
        backup.records.append({record->id, record->nodeID, record->flowID, record->flowName, record->title,
                               record->kindRaw, values.date(record->completedAt, "completion date"), record->cycle,
                               record->payload.value()});
    }
    return backup;
}

void FenrowStore::eraseEverything()
{
    // Unpublish before destroying, so nobody sees a dead record.
    m_flows.clear();
    for (TaskFlow *flow : m_allFlows) {
        forgetChildren(flow);
        m_pending.remove(flow);
    }
    m_flowsByID.clear();
    m_nodesByID.clear();
    m_allFlows = {};
    for (CompletionRecord *record : m_completionRecords)
        m_pending.remove(record);
    m_completionRecords = {};
    for (FlowTemplate *flowTemplate : m_templates)
        m_pending.remove(flowTemplate);
    m_templates = {};
}

QString FenrowStore::writeSafetyBackup(QString *problem) const
{
    if (m_database->path() == QLatin1StringView(StoreDatabase::inMemoryPath))
        return {};
    const QDir folder = QFileInfo(m_database->path()).absoluteDir();
    const QDateTime now = m_clock.now();
    QString name = FenrowBackup::safetyFileName(now, m_calendar);
    // Two replaces within a second (or under a clock held still) must not
    // share a file: the earlier one stays until the later has succeeded.
    const QString stem = QFileInfo(name).completeBaseName();
    for (int number = 2; QFileInfo::exists(folder.filePath(name)); ++number)
        name = QStringLiteral("%1 %2.%3").arg(stem).arg(number).arg(FenrowBackup::fileExtension);
    const QString path = folder.filePath(name);

    QString unwritable;
    const std::optional<QByteArray> bytes = makeBackup(now).encoded(&unwritable);
    if (!bytes) {
        *problem = QStringLiteral("the store as it is cannot be written to a backup (%1)").arg(unwritable);
        return {};
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(*bytes) != bytes->size() || !file.commit()) {
        *problem = QStringLiteral("the store as it is could not be backed up to \"%1\" first (%2)")
                       .arg(QDir::toNativeSeparators(path), file.errorString());
        return {};
    }
    return path;
}

FenrowStore::RestoreOutcome FenrowStore::restore(const FenrowBackup &backup, RestoreMode mode,
                                                 const QString &documentPath)
{
    RestoreOutcome outcome;
    const bool replacing = mode == RestoreMode::replace;

    // Every id that stays in the store, so that nothing restored can
    // collide with it; a replace keeps none.
    TakenIDs ids;
    if (!replacing) {
        for (const TaskFlow *flow : std::as_const(m_allFlows)) {
            ids.claim(flow->id);
            for (const FlowNode *node : flow->items())
                ids.claim(node->id);
            for (const DependencyEdge *edge : flow->edges())
                ids.claim(edge->id);
            for (const FlowFile *file : flow->files())
                ids.claim(file->id);
            for (const FileLink *link : flow->fileLinks())
                ids.claim(link->id);
        }
    }

    // Merge never updates a flow it has: a flow whose id is here is skipped
    // whole, changed or not.
    QList<const FenrowBackup::Flow *> kept;
    for (const FenrowBackup::Flow &flow : backup.flows) {
        if (ids.claim(flow.id))
            kept.append(&flow);
    }
    std::stable_sort(kept.begin(), kept.end(),
                     [](const FenrowBackup::Flow *a, const FenrowBackup::Flow *b) { return a->order < b->order; });

    // The new state is built aside and takes the place of the old one only
    // once the file holds it: a failed save leaves nothing to take back.
    RecordBundle bundle;
    QSet<QUuid> keptFlowIDs;
    const qint64 base = replacing ? 0 : nextFlowOrder();
    for (qsizetype position = 0; position < kept.size(); ++position) {
        const FenrowBackup::Flow &flow = *kept[position];
        keptFlowIDs.insert(flow.id);
        // Merged flows follow the existing ones, in the document's order.
        bundle.flows.push_back(
            restoredFlow(flow, replacing ? flow.order : base + position, ids, outcome.edgesLeftOut));
    }

    QSet<QUuid> templateIDs;
    if (!replacing) {
        for (const FlowTemplate *flowTemplate : m_templates)
            templateIDs.insert(flowTemplate->id);
    }
    for (const FenrowBackup::Template &source : backup.templates) {
        if (templateIDs.contains(source.id))
            continue;
        templateIDs.insert(source.id);
        auto flowTemplate = std::make_unique<FlowTemplate>();
        flowTemplate->id = source.id;
        flowTemplate->name = source.name;
        flowTemplate->createdAt = source.createdAt;
        flowTemplate->payload = source.payload;
        bundle.templates.push_back(std::move(flowTemplate));
    }

    QSet<QUuid> recordIDs;
    if (!replacing) {
        for (const CompletionRecord *record : m_completionRecords)
            recordIDs.insert(record->id);
    }
    for (const FenrowBackup::Record &source : backup.records) {
        if (recordIDs.contains(source.id))
            continue;
        // The archive of a flow that merge skipped stays out with it.
        if (!replacing && !keptFlowIDs.contains(source.flowID))
            continue;
        recordIDs.insert(source.id);
        auto record = std::make_unique<CompletionRecord>();
        record->id = source.id;
        record->nodeID = source.nodeID;
        record->flowID = source.flowID;
        record->flowName = source.flowName;
        record->title = source.title;
        // A round stays a round; any other word, known or not, is archive.
        const bool isRound = source.kindRaw == CompletionRecord::repeatKind;
        record->kindRaw = isRound ? CompletionRecord::repeatKind : CompletionRecord::archivedKind;
        record->completedAt = source.completedAt;
        record->cycle = ValueLimits::count(source.cycle);
        record->payload.set(source.payload);
        bundle.completionRecords.push_back(std::move(record));
    }

    // No undo survives a restore, in either mode: the rows have changed
    // beneath every snapshot. Said only once the restore stands.
    const auto forgetHistories = [this] {
        for (const TaskFlow *flow : std::as_const(m_flows))
            emit flowHistoryInvalidated(flow->id);
    };
    const bool adding = !bundle.flows.empty() || !bundle.templates.empty() || !bundle.completionRecords.empty();
    if (!adding && !replacing) {
        forgetHistories();
        outcome.restored = true;
        return outcome;
    }

    if (replacing) {
        outcome.safetyBackup = writeSafetyBackup(&outcome.problem);
        if (!outcome.problem.isEmpty())
            return outcome;
    }

    // One transaction: a replace's erasing and the new rows, and for a
    // merge whatever earlier saves left pending too.
    PendingWrites writes = replacing ? PendingWrites() : m_pending;
    if (replacing)
        writes.eraseEverything();
    for (const auto &flow : bundle.flows)
        markDirtyDeep(writes, flow.get());
    for (const auto &record : bundle.completionRecords)
        writes.write(record.get());
    for (const auto &flowTemplate : bundle.templates)
        writes.write(flowTemplate.get());
    QString error;
    if (!m_database->write(writes.changeSet(), &error)) {
        qCCritical(fenrowStoreLog, "Context save failed: %s", qUtf8Printable(error));
        // It was never needed: the store is as it was.
        if (!outcome.safetyBackup.isEmpty())
            QFile::remove(outcome.safetyBackup);
        outcome.safetyBackup.clear();
        outcome.problem = QStringLiteral("the store could not be saved (%1)").arg(error);
        return outcome;
    }
    writes.clear();

    forgetHistories();
    if (replacing)
        eraseEverything();
    m_pending = PendingWrites();
    outcome.flowsAdded = int(bundle.flows.size());
    adopt(std::move(bundle), false);
    reloadFlows();
    m_lastChange = StoreChange();
    emit changed();

    // The store now differs from the last safety backup only by what the
    // user chose to restore: earlier ones have had their turn.
    if (replacing && !outcome.safetyBackup.isEmpty()) {
        const QFileInfo source(documentPath);
        const QDir folder = QFileInfo(outcome.safetyBackup).absoluteDir();
        for (const QFileInfo &file : folder.entryInfoList(QDir::Files)) {
            if (isSafetyBackup(file) && file.absoluteFilePath() != outcome.safetyBackup
                && (documentPath.isEmpty() || file.canonicalFilePath() != source.canonicalFilePath()))
                QFile::remove(file.absoluteFilePath());
        }
    }
    outcome.restored = true;
    return outcome;
}

int FenrowStore::restoreBackup(const FenrowBackup &backup, RestoreMode mode)
{
    const RestoreOutcome outcome = restore(backup, mode);
    return outcome.restored ? outcome.flowsAdded : -1;
}

} // namespace fenrow
