// The backup document: everything out in one value, and everything back in,
// by replacing the store or by merging what it does not have yet.
#include "FenrowStore.h"

#include "ValueLimits.h"
#include "formats/FenrowBackup.h"

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
