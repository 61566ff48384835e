#pragma once

#include <QHash>
#include <QList>
#include <QSet>
#include <QUuid>

#include <functional>

namespace fenrow {

class DependencyEdge;
class FlowNode;
class TaskFlow;

// Who holds up whom, built in one pass over a flow's edges.
struct BlockerMaps {
    // Dependent's id -> its prerequisites (the tails of dependency edges).
    QHash<QUuid, QList<const FlowNode *>> prerequisites;
    // Parent's id -> its subtasks (the heads of subtask edges).
    QHash<QUuid, QList<const FlowNode *>> subtasks;
};

// Read-only questions about a flow's graph. Edges that lost an end are
// ignored by all of them. Both edge kinds count for reachability: a
// dependency and a subtask edge can no more form a loop than two
// dependencies.
namespace FlowGraph {

BlockerMaps blockerMaps(const TaskFlow &flow);
// Calls `hold` for each edge by which a task holds another up, done or
// not: a dependency's tail holds its head, a subtask its parent.
void forEachHold(const TaskFlow &flow,
                 const std::function<void(const FlowNode &held, const FlowNode &blocker, bool bySubtask)> &hold);
// The nodes this one holds up: dependents of its outgoing dependency edges,
// then the parents it is a subtask of.
QList<const FlowNode *> dependentsOf(const FlowNode &node);
const DependencyEdge *findEdge(const FlowNode &from, const FlowNode &to, const TaskFlow &flow);
bool hasPath(const FlowNode &start, const FlowNode &target, const TaskFlow &flow);
// Every node reachable from `start`, `start` first, each once, in the order
// a depth-first walk visits them.
QList<const FlowNode *> descendants(const FlowNode &start, const TaskFlow &flow);
// The ids deleteNode removes: the node and each descendant whose parents
// are all going too.
QSet<QUuid> deletionClosure(const FlowNode &node, const TaskFlow &flow);
// The same for several nodes deleted together: a descendant goes when
// every parent is among them or goes with them.
QSet<QUuid> deletionClosure(const QList<const FlowNode *> &nodes, const TaskFlow &flow);
bool hasSubtasks(const FlowNode &node);
// Nodes folded away: reachable from a collapsed node and not reachable
// from a root without passing a collapsed one.
QSet<QUuid> hiddenNodeIDs(const TaskFlow &flow);
// The same, for a caller that has the flow's tail -> heads lists at hand
// already (edges of both kinds with both ends, in the edges' order).
QSet<QUuid> hiddenNodeIDs(const TaskFlow &flow, const QHash<const FlowNode *, QList<const FlowNode *>> &children);
QList<const FlowNode *> visibleItems(const TaskFlow &flow);
// The same, for a caller that keeps the hidden set too.
QList<const FlowNode *> visibleItems(const TaskFlow &flow, const QSet<QUuid> &hidden);

} // namespace FlowGraph

} // namespace fenrow
