// Whole-flow snapshots for undo: taken before and after each user action,
// and written back over the live rows without replacing those that exist.
#include "FenrowStore.h"

#include "Clock.h"

#include <QHash>

#include <optional>

namespace fenrow {

namespace {

FlowSnapshot::Item itemOf(const FlowNode &node)
{
    return {node.id,         node.title,           node.isDone,       node.statusRaw,      node.notes,
            node.priorityRaw, node.colorRaw,       node.startDate,    node.dueDate,        node.estimateMinutes,
            node.dayPlanRank, node.manualWidth,    node.manualHeight, node.checklistData,  node.recurrenceRaw,
            node.repeatCount, node.completedAt,    node.posX,         node.posY,           node.order,
            node.createdAt};
}

// The task rows of `flow`, each shared with `earlier`'s where equal, or
// where its task was not written since `readAt`, when `earlier` was read.
SharedRows<FlowSnapshot::Item> itemsOf(const TaskFlow &flow, const SharedRows<FlowSnapshot::Item> *earlier,
                                       std::optional<quint64> readAt)
{
    SharedRows<FlowSnapshot::Item> items;
    items.reserve(qsizetype(flow.items().size()));
    // Rows are looked for at the same position first, which is where they
    // are unless nodes were added or removed; by id otherwise.
    QHash<QUuid, qsizetype> earlierByID;
    qsizetype position = 0;
    const bool readAtKnown = readAt.has_value();
    const quint64 read = readAt.value_or(0);
    const auto unwrittenSinceRead = [&](const FlowNode &node) { return readAtKnown && node.writtenVersion() <= read; };
    for (const FlowNode *node : flow.items()) {
        qsizetype found = -1;
        if (earlier) {
            if (position < earlier->size() && earlier->at(position).id == node->id) {
                found = position;
            } else {
                if (earlierByID.isEmpty()) {
                    earlierByID.reserve(earlier->size());
                    for (qsizetype i = 0; i < earlier->size(); ++i)
                        earlierByID.insert(earlier->at(i).id, i);
                }
                found = earlierByID.value(node->id, -1);
            }
        }
        ++position;
        if (found >= 0 && unwrittenSinceRead(*node)) {
            items.append(earlier->handle(found));
            continue;
        }
        FlowSnapshot::Item item = itemOf(*node);
        if (found >= 0 && earlier->at(found) == item)
            items.append(earlier->handle(found));
        else
            items.append(std::move(item));
    }
    if (earlier)
        items.shareChunksWith(*earlier);
    return items;
}

// The rows `rowOf` makes of `records` (of those it makes one for), or the
// list `earlier` itself when they are the same: compared as they are made,
// so that an unchanged list, the usual case, is not built to be thrown away.
template <typename Row, typename Records, typename Make>
QList<Row> rowsOf(const Records &records, const QList<Row> *earlier, Make rowOf)
{
    if (earlier) {
        qsizetype matched = 0;
        bool same = true;
        for (const auto *record : records) {
            const std::optional<Row> row = rowOf(*record);
            if (!row)
                continue;
            if (matched == earlier->size() || !(earlier->at(matched) == *row)) {
                same = false;
                break;
            }
            ++matched;
        }
        if (same && matched == earlier->size())
            return *earlier;
    }
    QList<Row> rows;
    for (const auto *record : records)
        if (std::optional<Row> row = rowOf(*record))
            rows.append(std::move(*row));
    return rows;
}

} // namespace

FlowSnapshot FenrowStore::captureSnapshot(const TaskFlow &flow, const FlowSnapshot *sharingWith,
                                          std::optional<quint64> tasksReadAt) const
{
    FlowSnapshot snapshot;
    snapshot.flowID = flow.id;
    if (!sharingWith)
        tasksReadAt.reset();
    if (tasksReadAt && *tasksReadAt == flow.nodesVersion())
        snapshot.items = sharingWith->items;
    else
        snapshot.items = itemsOf(flow, sharingWith ? &sharingWith->items : nullptr, tasksReadAt);
    // Edges, files and links change less often than tasks: an unchanged
    // list is shared whole.
    snapshot.edges = rowsOf(flow.edges(), sharingWith ? &sharingWith->edges : nullptr,
                            [](const DependencyEdge &edge) -> std::optional<FlowSnapshot::Edge> {
                                if (!edge.fromItem() || !edge.toItem())
                                    return std::nullopt;
                                return FlowSnapshot::Edge{edge.id,     edge.fromItem()->id, edge.toItem()->id,
                                                          edge.source, edge.kind,           edge.createdAt};
                            });
    snapshot.files = rowsOf(flow.files(), sharingWith ? &sharingWith->files : nullptr,
                            [](const FlowFile &file) -> std::optional<FlowSnapshot::File> {
                                return FlowSnapshot::File{file.id,          file.isTrashed,    file.posX, file.posY,
                                                          file.manualWidth, file.manualHeight, file.order};
                            });
    snapshot.links = rowsOf(flow.fileLinks(), sharingWith ? &sharingWith->links : nullptr,
                            [](const FileLink &link) -> std::optional<FlowSnapshot::Link> {
                                if (!link.file() || !link.node())
                                    return std::nullopt;
                                return FlowSnapshot::Link{link.id, link.file()->id, link.node()->id};
                            });
    return snapshot;
}

void FenrowStore::applySnapshot(const FlowSnapshot &snapshot, const TaskFlow &flow)
{
    TaskFlow *target = mutableFlow(flow);
    bool changedAny = false;

    // Nodes first: edges and links refer to them. Deletes before inserts.
    QSet<QUuid> wanted;
    for (const FlowSnapshot::Item &item : snapshot.items)
        wanted.insert(item.id);
    QSet<QUuid> unwanted;
    for (const FlowNode *node : std::as_const(*target).items()) {
        if (!wanted.contains(node->id))
            unwanted.insert(node->id);
    }
    if (!unwanted.isEmpty()) {
        eraseNodes(target, unwanted);
        changedAny = true;
    }

    QHash<QUuid, FlowNode *> nodes;
    for (FlowNode *node : target->items())
        nodes.insert(node->id, node);
    for (const FlowSnapshot::Item &item : snapshot.items) {
        FlowNode *node = nodes.value(item.id);
        if (!node) {
            auto created = std::make_unique<FlowNode>();
            created->id = item.id;
            created->setFlow(target);
            node = target->items().add(std::move(created));
            m_nodesByID.insert(node->id, node);
            nodes.insert(node->id, node);
            m_pending.write(node);
            changedAny = true;
        }
        // Only rows that really differ are written, so an undo costs what
        // it changes.
        const FlowSnapshot::Item current = itemOf(*node);
        if (current == item)
            continue;
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
        node->checklistData = item.checklistData;
        node->recurrenceRaw = item.recurrenceRaw;
        node->repeatCount = item.repeatCount;
        node->completedAt = item.completedAt;
        node->posX = item.posX;
        node->posY = item.posY;
        node->order = item.order;
        node->createdAt = item.createdAt;
        m_pending.write(node);
        changedAny = true;
    }

    QSet<QUuid> wantedEdges;
    for (const FlowSnapshot::Edge &edge : snapshot.edges)
        wantedEdges.insert(edge.id);
    changedAny |= 0 < target->edges().removeIf([&](const DependencyEdge &edge) { return !wantedEdges.contains(edge.id); },
                                               [&](DependencyEdge *edge) { m_pending.remove(edge); });
    QHash<QUuid, DependencyEdge *> edges;
    for (DependencyEdge *edge : target->edges())
        edges.insert(edge->id, edge);
    for (const FlowSnapshot::Edge &wantedEdge : snapshot.edges) {
        FlowNode *from = nodes.value(wantedEdge.fromItemID);
        FlowNode *to = nodes.value(wantedEdge.toItemID);
        if (!from || !to)
            continue;
        DependencyEdge *edge = edges.value(wantedEdge.id);
        if (!edge) {
            auto created = std::make_unique<DependencyEdge>();
            created->id = wantedEdge.id;
            created->setFlow(target);
            edge = target->edges().add(std::move(created));
        } else if (edge->fromItem() == from && edge->toItem() == to && edge->source == wantedEdge.source
                   && edge->kind == wantedEdge.kind && edge->createdAt == wantedEdge.createdAt) {
            continue;
        }
        edge->setFromItem(from);
        edge->setToItem(to);
        edge->source = wantedEdge.source;
        edge->kind = wantedEdge.kind;
        edge->createdAt = wantedEdge.createdAt;
        m_pending.write(edge);
        changedAny = true;
    }

    // Files are never created or deleted here; their bytes are not touched.
    QHash<QUuid, FlowFile *> files;
    for (FlowFile *file : target->files())
        files.insert(file->id, file);
    for (const FlowSnapshot::File &wantedFile : snapshot.files) {
        FlowFile *file = files.value(wantedFile.id);
        if (!file)
            continue;
        const FlowSnapshot::File current{file->id,          file->isTrashed,   file->posX, file->posY,
                                         file->manualWidth, file->manualHeight, file->order};
        if (current == wantedFile)
            continue;
        file->isTrashed = wantedFile.isTrashed;
        file->posX = wantedFile.posX;
        file->posY = wantedFile.posY;
        file->manualWidth = wantedFile.manualWidth;
        file->manualHeight = wantedFile.manualHeight;
        file->order = wantedFile.order;
        m_pending.write(file);
        changedAny = true;
    }

    QSet<QUuid> wantedLinks;
    for (const FlowSnapshot::Link &link : snapshot.links)
        wantedLinks.insert(link.id);
    changedAny |= 0 < target->fileLinks().removeIf(
                          [&](const FileLink &link) { return !wantedLinks.contains(link.id); },
                          [&](FileLink *link) {
                              if (FlowFile *file = link->file())
                                  file->links().removeOne(link);
                              if (FlowNode *node = link->node())
                                  node->fileLinks().removeOne(link);
                              m_pending.remove(link);
                          });
    QSet<QUuid> liveLinks;
    for (const FileLink *link : std::as_const(*target).fileLinks())
        liveLinks.insert(link->id);
    for (const FlowSnapshot::Link &wantedLink : snapshot.links) {
        FlowFile *file = files.value(wantedLink.fileID);
        FlowNode *node = nodes.value(wantedLink.nodeID);
        if (!file || !node || liveLinks.contains(wantedLink.id))
            continue;
        auto created = std::make_unique<FileLink>();
        created->id = wantedLink.id;
        created->createdAt = m_clock.now();
        created->setFlow(target);
        created->setFile(file);
        created->setNode(node);
        FileLink *link = target->fileLinks().add(std::move(created));
        file->links().append(link);
        node->fileLinks().append(link);
        m_pending.write(link);
        changedAny = true;
    }

    if (changedAny)
        finishChange();
}

} // namespace fenrow
