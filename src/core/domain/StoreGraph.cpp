// Edges and folding: the mutations that keep a flow a directed acyclic graph.
#include "FenrowStore.h"

#include "Clock.h"
#include "FlowGraph.h"
#include "RecordID.h"

namespace fenrow {

DependencyEdge *FenrowStore::insertEdge(TaskFlow *flow, FlowNode *from, FlowNode *to, EdgeSource source,
                                        EdgeKind kind)
{
    auto edge = std::make_unique<DependencyEdge>();
    edge->id = RecordID::make();
    edge->source = source;
    edge->kind = kind;
    edge->createdAt = m_clock.now();
    edge->setFlow(flow);
    edge->setFromItem(from);
    edge->setToItem(to);
    DependencyEdge *added = flow->edges().add(std::move(edge));
    m_pending.write(added);
    return added;
}

void FenrowStore::eraseEdge(DependencyEdge *edge)
{
    m_pending.remove(edge);
    edge->flow()->edges().take(edge);
}

const DependencyEdge &FenrowStore::addEdge(const FlowNode &from, const FlowNode &to, EdgeSource source, EdgeKind kind)
{
    // The order of these checks decides which error a caller sees.
    if (from.id == to.id)
        throw GraphMutationError(GraphMutationError::Kind::selfLoop);
    if (!from.flow() || !to.flow() || from.flow()->id != to.flow()->id)
        throw GraphMutationError(GraphMutationError::Kind::invalidItems);
    const TaskFlow &flow = *from.flow();
    if (const DependencyEdge *existing = FlowGraph::findEdge(from, to, flow))
        return *existing;
    if (FlowGraph::hasPath(to, from, flow))
        throw GraphMutationError(GraphMutationError::Kind::cycleRejected);

    DependencyEdge *edge = insertEdge(mutableFlow(flow), mut(from), mut(to), source, kind);
    finishChange();
    return *edge;
}

void FenrowStore::reconnectEdge(const DependencyEdge &edge, const FlowNode &from, const FlowNode &to)
{
    const TaskFlow *flow = edge.flow();
    if (!flow || !from.flow() || !to.flow() || from.flow()->id != flow->id || to.flow()->id != flow->id)
        throw GraphMutationError(GraphMutationError::Kind::invalidItems);
    if (from.id == to.id)
        throw GraphMutationError(GraphMutationError::Kind::selfLoop);
    if (edge.fromItem() && edge.toItem() && edge.fromItem()->id == from.id && edge.toItem()->id == to.id)
        return;

    const DependencyEdge *other = FlowGraph::findEdge(from, to, *flow);
    if (other && other != &edge) {
        // Moving onto an existing pair would double it: the moved edge goes.
        eraseEdge(mut(edge));
        finishChange();
        return;
    }
    // Searched with the edge still in place, so swapping both ends of an
    // edge in one move is refused as a cycle.
    if (FlowGraph::hasPath(to, from, *flow))
        throw GraphMutationError(GraphMutationError::Kind::cycleRejected);

    DependencyEdge *target = mut(edge);
    target->setFromItem(mut(from));
    target->setToItem(mut(to));
    m_pending.write(target);
    finishChange();
}

void FenrowStore::removeEdge(const DependencyEdge &edge)
{
    eraseEdge(mut(edge));
    finishChange();
}

void FenrowStore::setCollapsed(const FlowNode &node, bool collapsed)
{
    if (update(mut(node), &FlowNode::isCollapsed, collapsed))
        finishChange();
}

void FenrowStore::unfoldAncestors(const QSet<QUuid> &ids, const TaskFlow &flow)
{
    QHash<QUuid, QList<QUuid>> parents;
    for (const DependencyEdge *edge : flow.edges()) {
        if (edge->fromItem() && edge->toItem())
            parents[edge->toItem()->id].append(edge->fromItem()->id);
    }
    QList<QUuid> stack(ids.begin(), ids.end());
    QSet<QUuid> visited;
    QSet<QUuid> ancestors;
    while (!stack.isEmpty()) {
        const QUuid id = stack.takeLast();
        if (visited.contains(id))
            continue;
        visited.insert(id);
        for (const QUuid &parent : parents.value(id)) {
            ancestors.insert(parent);
            stack.append(parent);
        }
    }

    bool changedAny = false;
    for (FlowNode *node : mutableFlow(flow)->items()) {
        if (ancestors.contains(node->id))
            changedAny |= update(node, &FlowNode::isCollapsed, false);
    }
    if (changedAny)
        finishChange();
}

} // namespace fenrow
