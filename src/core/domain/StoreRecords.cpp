// Taking in whole records: at start-up from the file, and in bulk from
// restores, imports and generators.
#include "FenrowStore.h"

namespace fenrow {

void FenrowStore::adopt(RecordBundle bundle, bool isNew)
{
    std::size_t nodeCount = std::size_t(m_nodesByID.size());
    for (const auto &flow : bundle.flows)
        nodeCount += flow->items().size();
    m_nodesByID.reserve(qsizetype(nodeCount));

    for (auto &owned : bundle.flows) {
        TaskFlow *flow = m_allFlows.add(std::move(owned));
        m_flowsByID.insert(flow->id, flow);
        for (FlowNode *node : flow->items())
            m_nodesByID.insert(node->id, node);
        if (isNew)
            markDirtyDeep(flow);
    }
    for (auto &record : bundle.completionRecords) {
        CompletionRecord *added = m_completionRecords.add(std::move(record));
        if (isNew)
            m_pending.write(added);
    }
    for (auto &flowTemplate : bundle.templates) {
        FlowTemplate *added = m_templates.add(std::move(flowTemplate));
        if (isNew)
            m_pending.write(added);
    }
}

void FenrowStore::insertRecords(RecordBundle bundle)
{
    if (bundle.flows.empty() && bundle.completionRecords.empty() && bundle.templates.empty())
        return;
    adopt(std::move(bundle), true);
    finishChange();
}

void FenrowStore::markDirtyDeep(PendingWrites &writes, TaskFlow *flow)
{
    writes.write(flow);
    for (FlowNode *node : flow->items())
        writes.write(node);
    for (DependencyEdge *edge : flow->edges())
        writes.write(edge);
    for (FlowFile *file : flow->files())
        writes.write(file);
    for (FileLink *link : flow->fileLinks())
        writes.write(link);
}

void FenrowStore::forgetChildren(TaskFlow *flow)
{
    for (FileLink *link : flow->fileLinks())
        m_pending.remove(link, false);
    for (DependencyEdge *edge : flow->edges())
        m_pending.remove(edge, false);
    for (FlowFile *file : flow->files())
        m_pending.remove(file, false);
    for (FlowNode *node : flow->items()) {
        m_pending.remove(node, false);
        m_nodesByID.remove(node->id);
    }
}

} // namespace fenrow
