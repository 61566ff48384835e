// Taking done work off the canvas into completion records, and back.
#include "FenrowStore.h"

#include "ArchivedTask.h"
#include "Clock.h"
#include "RecordID.h"

#include <algorithm>

namespace fenrow {

QList<const CompletionRecord *> FenrowStore::archiveRecords() const
{
    QList<const CompletionRecord *> records;
    records.reserve(qsizetype(m_completionRecords.size()));
    for (const CompletionRecord *record : m_completionRecords) {
        // A round taken back by undo stays in the file but is not shown.
        if (record->kindRaw == CompletionRecord::repeatKind) {
            const FlowNode *node = m_nodesByID.value(record->nodeID);
            if (node && node->repeatCount < record->cycle)
                continue;
        }
        records.append(record);
    }
    std::stable_sort(records.begin(), records.end(), [](const CompletionRecord *a, const CompletionRecord *b) {
        return a->completedAt > b->completedAt;
    });
    return records;
}

bool FenrowStore::canRestore(const CompletionRecord &record) const
{
    if (record.kindRaw != CompletionRecord::archivedKind || !m_flowsByID.contains(record.flowID))
        return false;
    const std::optional<QByteArray> payload = record.payload.value();
    return payload && ArchivedTask::decode(*payload);
}

const FlowNode *FenrowStore::restoreRecord(const CompletionRecord &record)
{
    if (!canRestore(record))
        return nullptr;
    const ArchivedTask task = *ArchivedTask::decode(*record.payload.value());
    TaskFlow *flow = m_flowsByID.value(record.flowID);

    auto node = std::make_unique<FlowNode>();
    // The old id when it is free, so links from elsewhere find it again.
    node->id = m_nodesByID.contains(record.nodeID) ? RecordID::make() : record.nodeID;
    qint64 order = 0;
    if (!flow->items().empty()) {
        order = flow->items()[0]->order;
        for (const FlowNode *item : std::as_const(*flow).items())
            order = std::max(order, item->order);
        ++order;
    }
    node->order = order;
    node->title = task.title;
    node->notes = task.notes;
    node->statusRaw = task.statusRaw;
    node->priorityRaw = task.priorityRaw;
    node->colorRaw = task.colorRaw;
    node->startDate = task.startDate;
    node->dueDate = task.dueDate;
    node->estimateMinutes = task.estimateMinutes;
    node->manualWidth = task.manualWidth;
    node->manualHeight = task.manualHeight;
    node->posX = task.posX;
    node->posY = task.posY;
    node->checklistData = task.checklistData;
    node->recurrenceRaw = task.recurrenceRaw;
    node->repeatCount = task.repeatCount.value_or(0);
    node->createdAt = task.createdAt;
    // It comes back done, so it holds nothing up.
    node->isDone = true;
    node->completedAt = record.completedAt;
    node->setFlow(flow);
    FlowNode *restored = flow->items().add(std::move(node));
    m_nodesByID.insert(restored->id, restored);
    m_pending.write(restored);

    CompletionRecord *used = mut(record);
    m_pending.remove(used);
    m_completionRecords.take(used);
    finishChange();
    emit flowHistoryInvalidated(flow->id);
    return restored;
}

void FenrowStore::deleteRecord(const CompletionRecord &record)
{
    CompletionRecord *target = mut(record);
    m_pending.remove(target);
    m_completionRecords.take(target);
    finishChange();
}

void FenrowStore::writeArchivedRecord(const FlowNode &node, const TaskFlow &flow, const QDateTime &now)
{
    const QByteArray payload = ArchivedTask::of(node).encode();
    const QDateTime completedAt = node.completedAt.value_or(now);
    for (CompletionRecord *record : m_completionRecords) {
        if (record->nodeID == node.id && record->kindRaw == CompletionRecord::archivedKind
            && record->completedAt == completedAt) {
            record->title = node.title;
            record->flowID = flow.id;
            record->flowName = flow.name;
            record->payload.set(payload);
            m_pending.write(record);
            return;
        }
    }
    auto record = std::make_unique<CompletionRecord>();
    record->id = RecordID::make();
    record->nodeID = node.id;
    record->flowID = flow.id;
    record->flowName = flow.name;
    record->title = node.title;
    record->kindRaw = CompletionRecord::archivedKind;
    record->completedAt = completedAt;
    record->cycle = node.repeatCount;
    record->payload.set(payload);
    m_pending.write(m_completionRecords.add(std::move(record)));
}

void FenrowStore::archiveNodes(const QList<const FlowNode *> &nodes, const TaskFlow &flow)
{
    if (nodes.isEmpty())
        return;
    const QDateTime now = m_clock.now();
    QSet<QUuid> ids;
    for (const FlowNode *node : nodes) {
        ids.insert(node->id);
        writeArchivedRecord(*node, flow, now);
        eraseStaleRepeats(*node);
    }
    // No edge is spliced across: dependents just lose the prerequisite.
    eraseNodes(mutableFlow(flow), ids);
    finishChange();
    emit flowHistoryInvalidated(flow.id);
}

void FenrowStore::archiveDone(const TaskFlow &flow)
{
    QList<const FlowNode *> done;
    for (const FlowNode *node : flow.orderedItems()) {
        if (node->isDone)
            done.append(node);
    }
    archiveNodes(done, flow);
}

int FenrowStore::autoArchive(int days, const QDateTime &now)
{
    if (days < 1)
        return 0;
    const QDateTime cutoff = now.toTimeZone(m_calendar.zone()).addDays(-days);
    int archived = 0;
    // The published list changes while archiving; walk a copy.
    const QList<const TaskFlow *> flows = m_flows;
    for (const TaskFlow *flow : flows) {
        QList<const FlowNode *> old;
        for (const FlowNode *node : flow->orderedItems()) {
            if (node->isDone && node->completedAt && *node->completedAt < cutoff)
                old.append(node);
        }
        archiveNodes(old, *flow);
        archived += int(old.size());
    }
    return archived;
}

} // namespace fenrow
