// Edges proposed by an inference engine: the one way machine-made edges
// enter a flow.
#include "FenrowStore.h"

#include "FlowGraph.h"

namespace fenrow {

void FenrowStore::applyProposals(const QList<EdgeProposal> &proposals, const TaskFlow &flow, bool replaceExisting)
{
    TaskFlow *target = mutableFlow(flow);
    bool changedAny = false;
    if (replaceExisting) {
        const std::size_t removed = target->edges().removeIf(
            [](const DependencyEdge &edge) { return edge.source == EdgeSource::ai; },
            [&](DependencyEdge *edge) { m_pending.remove(edge); });
        changedAny = removed > 0;
    }

    // The engine worked on a copy of the titles; nodes may have gone since.
    QHash<QUuid, FlowNode *> nodes;
    for (FlowNode *node : target->items())
        nodes.insert(node->id, node);
    // One by one: an accepted proposal can turn a later one into a cycle,
    // and then the earlier wins.
    for (const EdgeProposal &proposal : proposals) {
        FlowNode *from = nodes.value(proposal.fromItemID);
        FlowNode *to = nodes.value(proposal.toItemID);
        if (!from || !to || from == to || FlowGraph::findEdge(*from, *to, flow) || FlowGraph::hasPath(*to, *from, flow))
            continue;
        insertEdge(target, from, to, EdgeSource::ai, EdgeKind::dependency);
        changedAny = true;
    }
    if (changedAny)
        finishChange();
}

} // namespace fenrow
