// The backup document: everything out in one value, and everything back in,
// by replacing the store or by merging what it does not have yet.
#include "FenrowStore.h"

#include "formats/FenrowBackup.h"

#include <algorithm>

namespace fenrow {

namespace {

FenrowBackup::Flow backupFlow(const TaskFlow &flow)
{
    FenrowBackup::Flow out;
    out.id = flow.id;
    out.name = flow.name;
    out.order = flow.order;
    out.createdAt = flow.createdAt;
    out.viewportOffsetX = flow.viewportOffsetX;
    out.viewportOffsetY = flow.viewportOffsetY;
    out.viewportScale = flow.viewportScale;
    out.hasBeenFramed = flow.hasBeenFramed;

    out.items.reserve(qsizetype(flow.items().size()));
    for (const FlowNode *node : flow.items()) {
        out.items.append({
            .id = node->id,
            .title = node->title,
            .isDone = node->isDone,
            .statusRaw = node->statusRaw,
            .notes = node->notes,
            .priorityRaw = node->priorityRaw,
            .colorRaw = node->colorRaw,
            .startDate = node->startDate,
            .dueDate = node->dueDate,
            .estimateMinutes = node->estimateMinutes,
            .dayPlanRank = node->dayPlanRank,
            .manualWidth = node->manualWidth,
            .manualHeight = node->manualHeight,
            .isCollapsed = node->isCollapsed,
            .checklistData = node->checklistData,
            .recurrenceRaw = node->recurrenceRaw,
            .repeatCount = node->repeatCount,
            .completedAt = node->completedAt,
            .posX = node->posX,
            .posY = node->posY,
            .order = node->order,
            .createdAt = node->createdAt,
        });
    }

    out.edges.reserve(qsizetype(flow.edges().size()));
    for (const DependencyEdge *edge : flow.edges()) {
        if (!edge->fromItem() || !edge->toItem())
            continue;
        std::optional<QString> kind;
        if (edge->kind)
            kind = rawString(*edge->kind);
        out.edges.append({edge->id, edge->fromItem()->id, edge->toItem()->id, rawString(edge->source), kind,
                          edge->createdAt});
    }

    // A trashed file waits only for undo; it and its links stay behind.
    for (const FlowFile *file : flow.files()) {
        if (file->isTrashed)
            continue;
        out.files.append({
            .id = file->id,
            .filename = file->filename,
            .contentTypeRaw = file->contentTypeRaw,
            .byteCount = file->byteCount,
            .data = file->data.value(),
            .thumbnail = file->thumbnail.value(),
            .posX = file->posX,
            .posY = file->posY,
            .manualWidth = file->manualWidth,
            .manualHeight = file->manualHeight,
            .order = file->order,
            .createdAt = file->createdAt,
        });
        for (const FileLink *link : file->links()) {
            if (link->node())
                out.links.append({link->id, file->id, link->node()->id, link->createdAt});
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

std::unique_ptr<TaskFlow> restoredFlow(const FenrowBackup::Flow &source, qint64 order, TakenIDs &ids)
{
    auto flow = std::make_unique<TaskFlow>();
    flow->id = source.id;
    flow->name = source.name;
    flow->order = order;
    flow->createdAt = source.createdAt;
    flow->viewportOffsetX = source.viewportOffsetX;
    flow->viewportOffsetY = source.viewportOffsetY;
    flow->viewportScale = source.viewportScale;
    flow->hasBeenFramed = source.hasBeenFramed;

    QHash<QUuid, FlowNode *> nodes;
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
        node->startDate = item.startDate;
        node->dueDate = item.dueDate;
        node->estimateMinutes = item.estimateMinutes;
        node->dayPlanRank = item.dayPlanRank;
        node->manualWidth = item.manualWidth;
        node->manualHeight = item.manualHeight;
        node->isCollapsed = item.isCollapsed;
        node->checklistData = item.checklistData;
        node->recurrenceRaw = item.recurrenceRaw;
        node->repeatCount = item.repeatCount;
        node->completedAt = item.completedAt;
        node->posX = item.posX;
        node->posY = item.posY;
        node->order = item.order;
        node->createdAt = item.createdAt;
        node->setFlow(flow.get());
        nodes.insert(item.id, flow->items().add(std::move(node)));
    }

    // The document is trusted once readable: no graph rules here.
    flow->edges().reserve(std::size_t(source.edges.size()));
    for (const FenrowBackup::Edge &link : source.edges) {
        FlowNode *from = nodes.value(link.fromID);
        FlowNode *to = nodes.value(link.toID);
        if (!from || !to || !ids.claim(link.id))
            continue;
        auto edge = std::make_unique<DependencyEdge>();
        edge->id = link.id;
        // Unknown words fall to the case that asks least of the graph.
        edge->source = link.sourceRaw == rawString(EdgeSource::ai) ? EdgeSource::ai : EdgeSource::manual;
        edge->kind = link.kindRaw == rawString(EdgeKind::subtask) ? EdgeKind::subtask : EdgeKind::dependency;
        edge->createdAt = link.createdAt;
        edge->setFlow(flow.get());
        edge->setFromItem(from);
        edge->setToItem(to);
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
        file->byteCount = stored.byteCount;
        file->data.set(stored.data);
        file->thumbnail.set(stored.thumbnail);
        file->posX = stored.posX;
        file->posY = stored.posY;
        file->manualWidth = stored.manualWidth;
        file->manualHeight = stored.manualHeight;
        file->order = stored.order;
        file->createdAt = stored.createdAt;
        file->setFlow(flow.get());
        files.insert(stored.id, flow->files().add(std::move(file)));
    }

    for (const FenrowBackup::Link &stored : source.links) {
        FlowFile *file = files.value(stored.fileID);
        FlowNode *node = nodes.value(stored.nodeID);
        if (!file || !node || !ids.claim(stored.id))
            continue;
        auto link = std::make_unique<FileLink>();
        link->id = stored.id;
        link->createdAt = stored.createdAt;
        link->setFlow(flow.get());
        link->setFile(file);
        link->setNode(node);
        FileLink *added = flow->fileLinks().add(std::move(link));
        file->links().append(added);
        node->fileLinks().append(added);
    }
    return flow;
}

} // namespace

FenrowBackup FenrowStore::makeBackup(const QDateTime &createdAt) const
{
    FenrowBackup backup;
    backup.createdAt = createdAt;
    backup.flows.reserve(m_flows.size());
    for (const TaskFlow *flow : m_flows)
        backup.flows.append(backupFlow(*flow));
    for (const FlowTemplate *flowTemplate : templateList())
        backup.templates.append({flowTemplate->id, flowTemplate->name, flowTemplate->createdAt, flowTemplate->payload});
    backup.records.reserve(qsizetype(m_completionRecords.size()));
    for (const CompletionRecord *record : m_completionRecords) {
        backup.records.append({record->id, record->nodeID, record->flowID, record->flowName, record->title,
                               record->kindRaw, record->completedAt, record->cycle, record->payload.value()});
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

int FenrowStore::restoreBackup(const FenrowBackup &backup, RestoreMode mode)
{
    // No undo survives a restore, in either mode: the rows have changed
    // beneath every snapshot.
    for (const TaskFlow *flow : std::as_const(m_flows))
        emit flowHistoryInvalidated(flow->id);

    const bool replacing = mode == RestoreMode::replace;
    if (replacing) {
        eraseEverything();
        save();
        reloadFlows();
    }

    // Every id the store holds, so that nothing restored can collide.
    TakenIDs ids;
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

    // Merge never updates a flow it has: a flow whose id is here is skipped
    // whole, changed or not.
    QList<const FenrowBackup::Flow *> kept;
    for (const FenrowBackup::Flow &flow : backup.flows) {
        if (ids.claim(flow.id))
            kept.append(&flow);
    }
    std::stable_sort(kept.begin(), kept.end(),
                     [](const FenrowBackup::Flow *a, const FenrowBackup::Flow *b) { return a->order < b->order; });

    RecordBundle bundle;
    QSet<QUuid> keptFlowIDs;
    const qint64 base = nextFlowOrder();
    for (qsizetype position = 0; position < kept.size(); ++position) {
        const FenrowBackup::Flow &flow = *kept[position];
        keptFlowIDs.insert(flow.id);
        // Merged flows follow the existing ones, in the document's order.
        bundle.flows.push_back(restoredFlow(flow, replacing ? flow.order : base + position, ids));
    }

    QSet<QUuid> templateIDs;
    for (const FlowTemplate *flowTemplate : m_templates)
        templateIDs.insert(flowTemplate->id);
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
    for (const CompletionRecord *record : m_completionRecords)
        recordIDs.insert(record->id);
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
        record->cycle = source.cycle;
        record->payload.set(source.payload);
        bundle.completionRecords.push_back(std::move(record));
    }

    const bool adding = !bundle.flows.empty() || !bundle.templates.empty() || !bundle.completionRecords.empty();
    if (adding)
        adopt(std::move(bundle), true);
    // A replace has changed the store even when the document was empty.
    if (adding || replacing)
        finishChange();
    return int(kept.size());
}

} // namespace fenrow
