#include "FlowGraph.h"

#include "TaskFlow.h"

#include <algorithm>
#include <vector>

namespace fenrow::FlowGraph {

namespace {

using Adjacency = QHash<const FlowNode *, QList<const FlowNode *>>;

// Tail -> heads over edges of both kinds, in the edges' stored order. One
// pass over the edges keeps reachability linear instead of rescanning the
// edge list for every visited node.
Adjacency childrenOf(const TaskFlow &flow)
{
    Adjacency children;
    for (const DependencyEdge *edge : flow.edges()) {
        if (edge->fromItem() && edge->toItem())
            children[edge->fromItem()].append(edge->toItem());
    }
    return children;
}

Adjacency parentsOf(const TaskFlow &flow)
{
    Adjacency parents;
    for (const DependencyEdge *edge : flow.edges()) {
        if (edge->fromItem() && edge->toItem())
            parents[edge->toItem()].append(edge->fromItem());
    }
    return parents;
}

// Goes on from every node.
struct EveryNode {
    bool operator()(const FlowNode *) const { return true; }
};

// Depth-first walk with an explicit stack: pops the last pushed node and
// pushes its heads in edge order. `visit` returns false to stop early;
// `goesOn` says whether the walk passes a visited node's heads.
// The nodes visited are added to `visited`, for a caller that wants them.
template <typename Visit, typename GoesOn = EveryNode>
void walk(const QList<const FlowNode *> &starts, const Adjacency &next, QSet<const FlowNode *> &visited, Visit visit,
          GoesOn goesOn = {})
{
    std::vector<const FlowNode *> stack;
    stack.insert(stack.end(), starts.begin(), starts.end());
    while (!stack.empty()) {
        const FlowNode *node = stack.back();
        stack.pop_back();
        // One lookup: the set grows only for a node not visited yet.
        const qsizetype seen = visited.size();
        visited.insert(node);
        if (visited.size() == seen)
            continue;
        if (!visit(node))
            return;
        if (!goesOn(node))
            continue;
        const auto found = next.constFind(node);
        if (found != next.constEnd())
            stack.insert(stack.end(), found->begin(), found->end());
    }
}

template <typename Visit, typename GoesOn = EveryNode>
void walk(const QList<const FlowNode *> &starts, const Adjacency &next, Visit visit, GoesOn goesOn = {})
{
    QSet<const FlowNode *> visited;
    walk(starts, next, visited, visit, goesOn);
}

} // namespace

BlockerMaps blockerMaps(const TaskFlow &flow)
{
    BlockerMaps maps;
    // Sized once: grown edge by edge, the tables of a large flow would be
    // rehashed several times over.
    const auto subtaskEdges = std::count_if(flow.edges().begin(), flow.edges().end(),
                                            [](const DependencyEdge *edge) { return edge->isSubtask(); });
    maps.subtasks.reserve(qsizetype(subtaskEdges));
    maps.prerequisites.reserve(qsizetype(flow.edges().size()) - qsizetype(subtaskEdges));
    forEachHold(flow, [&](const FlowNode &held, const FlowNode &blocker, bool bySubtask) {
        (bySubtask ? maps.subtasks : maps.prerequisites)[held.id].append(&blocker);
    });
    return maps;
}

void forEachHold(const TaskFlow &flow,
                 const std::function<void(const FlowNode &held, const FlowNode &blocker, bool bySubtask)> &hold)
{
    for (const DependencyEdge *edge : flow.edges()) {
        if (!edge->fromItem() || !edge->toItem())
            continue;
        if (edge->isSubtask())
            hold(*edge->fromItem(), *edge->toItem(), true);
        else
            hold(*edge->toItem(), *edge->fromItem(), false);
    }
}

QList<const FlowNode *> dependentsOf(const FlowNode &node)
{
    QList<const FlowNode *> dependents;
    const TaskFlow *flow = node.flow();
    if (!flow)
        return dependents;
    QList<const FlowNode *> parents;
    for (const DependencyEdge *edge : flow->edges()) {
        if (!edge->fromItem() || !edge->toItem())
            continue;
        if (!edge->isSubtask() && edge->fromItem() == &node)
            dependents.append(edge->toItem());
        else if (edge->isSubtask() && edge->toItem() == &node)
            parents.append(edge->fromItem());
    }
    return dependents + parents;
}

const DependencyEdge *findEdge(const FlowNode &from, const FlowNode &to, const TaskFlow &flow)
{
    for (const DependencyEdge *edge : flow.edges()) {
        if (edge->fromItem() && edge->toItem() && edge->fromItem()->id == from.id && edge->toItem()->id == to.id)
            return edge;
    }
    return nullptr;
}

bool hasPath(const FlowNode &start, const FlowNode &target, const TaskFlow &flow)
{
    bool found = false;
    walk({&start}, childrenOf(flow), [&](const FlowNode *node) {
        found = node->id == target.id;
        return !found;
    });
    return found;
}

QList<const FlowNode *> descendants(const FlowNode &start, const TaskFlow &flow)
{
    QList<const FlowNode *> reached;
    walk({&start}, childrenOf(flow), [&](const FlowNode *node) {
        reached.append(node);
        return true;
    });
    return reached;
}

QSet<QUuid> deletionClosure(const FlowNode &node, const TaskFlow &flow)
{
    return deletionClosure(QList<const FlowNode *>{&node}, flow);
}

QSet<QUuid> deletionClosure(const QList<const FlowNode *> &nodes, const TaskFlow &flow)
{
    QSet<QUuid> doomed;
    for (const FlowNode *node : nodes)
        doomed.insert(node->id);
    QList<const FlowNode *> candidates;
    for (const FlowNode *node : nodes) {
        for (const FlowNode *reached : descendants(*node, flow)) {
            if (!doomed.contains(reached->id) && !candidates.contains(reached))
                candidates.append(reached);
        }
    }
    if (candidates.isEmpty())
        return doomed;

    const Adjacency parents = parentsOf(flow);
    // A candidate goes only when every parent goes; that can become true
    // after a later candidate was doomed, so repeat until nothing moves.
    bool grew = true;
    while (grew) {
        grew = false;
        for (const FlowNode *candidate : std::as_const(candidates)) {
            if (doomed.contains(candidate->id))
                continue;
            const QList<const FlowNode *> own = parents.value(candidate);
            const bool allDoomed = std::all_of(own.begin(), own.end(),
                                               [&](const FlowNode *parent) { return doomed.contains(parent->id); });
            if (!own.isEmpty() && allDoomed) {
                doomed.insert(candidate->id);
                grew = true;
            }
        }
    }
    return doomed;
}

bool hasSubtasks(const FlowNode &node)
{
    const TaskFlow *flow = node.flow();
    if (!flow)
        return false;
    for (const DependencyEdge *edge : flow->edges()) {
        if (edge->isSubtask() && edge->fromItem() == &node && edge->toItem())
            return true;
    }
    return false;
}

QSet<QUuid> hiddenNodeIDs(const TaskFlow &flow)
{
    const auto &items = flow.items();
    if (std::none_of(items.begin(), items.end(), [](const FlowNode *node) { return node->isCollapsed; }))
        return {};
    return hiddenNodeIDs(flow, childrenOf(flow));
}

QSet<QUuid> hiddenNodeIDs(const TaskFlow &flow, const Adjacency &children)
{
    QList<const FlowNode *> collapsed;
    for (const FlowNode *node : flow.items()) {
        if (node->isCollapsed)
            collapsed.append(node);
    }
    if (collapsed.isEmpty())
        return {};

    // One walk from every fold's children, so that folds within folds do
    // not walk the same tasks again. The folds themselves stay in view.
    QList<const FlowNode *> below;
    for (const FlowNode *fold : std::as_const(collapsed))
        if (const auto heads = children.constFind(fold); heads != children.cend())
            for (const FlowNode *head : *heads)
                below.append(head);
    QSet<const FlowNode *> candidates;
    walk(below, children, candidates, [](const FlowNode *) { return true; });
    if (candidates.isEmpty())
        return {};

    // Everything else is in view: whatever lies below a fold was walked
    // above. A task below a fold stays in view through an unfolded parent
    // in view, so the walk starts at candidates with such a parent outside
    // them and spreads among the candidates only: a large flow's other
    // tasks are never walked again.
    QList<const FlowNode *> inView;
    for (const DependencyEdge *edge : flow.edges()) {
        const FlowNode *from = edge->fromItem();
        const FlowNode *to = edge->toItem();
        if (from && to && !from->isCollapsed && candidates.contains(to) && !candidates.contains(from))
            inView.append(to);
    }
    QSet<const FlowNode *> shown;
    walk(
        inView, children, shown, [](const FlowNode *) { return true; },
        [](const FlowNode *node) { return !node->isCollapsed; });
    QSet<QUuid> hidden;
    hidden.reserve(candidates.size() - shown.size());
    for (const FlowNode *node : std::as_const(candidates))
        if (!shown.contains(node))
            hidden.insert(node->id);
    return hidden;
}

QList<const FlowNode *> visibleItems(const TaskFlow &flow)
{
    return visibleItems(flow, hiddenNodeIDs(flow));
}

QList<const FlowNode *> visibleItems(const TaskFlow &flow, const QSet<QUuid> &hidden)
{
    QList<const FlowNode *> items = flow.orderedItems();
    if (!hidden.isEmpty())
        items.removeIf([&](const FlowNode *node) { return hidden.contains(node->id); });
    return items;
}

} // namespace fenrow::FlowGraph
