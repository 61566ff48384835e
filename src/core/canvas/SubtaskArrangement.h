#pragma once

#include "NodeSize.h"

#include <QHash>
#include <QPointF>
#include <QUuid>

#include <vector>

namespace fenrow {

class FlowNode;
class NodeSizeResolver;
class TaskFlow;

// Where a parent's subtasks stand once a new one is added: the parent's
// subtree, followed along subtask edges, as a tidy tree to its right. Each
// level is a column that starts 60 right of the widest card of the level
// before; siblings are stacked in `order` with 30 between the blocks of
// their own subtrees, and every block is centred on its parent. The parent
// and every card outside its subtree stay where they are. For cards of one
// size this is the store's own child layout, one column per level.
class SubtaskArrangement {
public:
    struct Node {
        QUuid id;
        qint64 order = 0;
        QPointF center;
        NodeSize size;
    };
    // Indices into the node list: `child` is a subtask of `parent`.
    struct Edge {
        int parent = 0;
        int child = 0;
    };

    static constexpr double columnGap = 60;
    static constexpr double rowGap = 30;

    // New centres of the subtree's cards by index, the root left out; a
    // card reached through several parents is placed once, under the first.
    static QHash<int, QPointF> arrange(int root, const std::vector<Node> &nodes, const std::vector<Edge> &edges);
    static QHash<QUuid, QPointF> arrange(const FlowNode &parent, const TaskFlow &flow, const NodeSizeResolver &sizes);
};

} // namespace fenrow
