// Operations on whole flows: add, rename, delete, reorder.
#include "FenrowStore.h"

#include "Clock.h"
#include "RecordID.h"
#include "TextRules.h"

namespace fenrow {

const TaskFlow *FenrowStore::addFlow(const QString &name)
{
    auto flow = std::make_unique<TaskFlow>();
    flow->id = RecordID::make();
    flow->name = TextRules::nameOr(name, TextRules::untitledFlowName);
    flow->order = nextFlowOrder();
    flow->createdAt = m_clock.now();

    TaskFlow *added = m_allFlows.add(std::move(flow));
    m_flowsByID.insert(added->id, added);
    m_pending.write(added);
    finishChange();
    return added;
}

qint64 FenrowStore::nextFlowOrder() const
{
    if (m_flows.isEmpty())
        return 0;
    qint64 order = m_flows.first()->order;
    for (const TaskFlow *existing : std::as_const(m_flows))
        order = std::max(order, existing->order);
    return order + 1;
}

void FenrowStore::renameFlow(const TaskFlow &flow, const QString &name)
{
    TaskFlow *target = mutableFlow(flow);
    const QString newName = TextRules::nameOr(name, TextRules::untitledFlowName);
    bool changedAny = false;
    if (target->name != newName) {
        target->name = newName;
        m_pending.write(target);
        changedAny = true;
    }
    // The archive keeps copies of the flow's name; keep them current.
    for (CompletionRecord *record : m_completionRecords) {
        if (record->flowID == target->id && record->flowName != newName) {
            record->flowName = newName;
            m_pending.write(record);
            changedAny = true;
        }
    }
    if (changedAny)
        finishChange();
}

void FenrowStore::deleteFlow(const TaskFlow &flow)
{
    TaskFlow *target = mutableFlow(flow);
    const QUuid id = target->id;
    m_completionRecords.removeIf([&](const CompletionRecord &record) { return record.flowID == id; },
                                 [&](CompletionRecord *record) { m_pending.remove(record); });
    forgetChildren(target);
    m_pending.remove(target);
    m_flowsByID.remove(id);
    // Unpublish before destroying, so nobody sees a dead record.
    m_flows.removeOne(target);
    m_allFlows.take(target);
    finishChange();
    emit flowHistoryInvalidated(id);
}

void FenrowStore::reorderFlows(const QList<const TaskFlow *> &ordered)
{
    bool changedAny = false;
    for (qsizetype position = 0; position < ordered.size(); ++position) {
        TaskFlow *flow = mutableFlow(*ordered[position]);
        if (flow->order != position) {
            flow->order = position;
            m_pending.write(flow);
            changedAny = true;
        }
    }
    if (changedAny)
        finishChange();
}

} // namespace fenrow
