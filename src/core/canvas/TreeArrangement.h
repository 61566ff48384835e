#pragma once

#include "NodeSize.h"

#include <QHash>
#include <QPointF>
#include <QUuid>

#include <vector>

namespace fenrow {

class NodeSizeResolver;
class TaskFlow;

// "Arrange as tree": lays a flow out in columns from left to right along
// its edges, so that a prerequisite stands left of what waits for it and a
// parent left of its subtasks. Siblings keep their `order`, crossings are
// reduced by barycentre sweeps, cards never overlap, and the result is the
// same for the same input.
class TreeArrangement {
public:
    struct Node {
        QUuid id;
        qint64 order = 0;
        NodeSize size;
    };
    // Indices into the node list: `from` is placed left of `to`.
    struct Edge {
        int from = 0;
        int to = 0;
    };

    // Horizontal gap between columns and vertical gap between cards; the
    // same spacing as the layout of new subtasks.
    static constexpr double columnGap = 60;
    static constexpr double rowGap = 30;
    static constexpr double componentGap = 60;

    // Centres for every node, index for index, with `origin` as the top-left
    // corner of the arrangement. All coordinates lie within the canvas.
    static std::vector<QPointF> arrange(const std::vector<Node> &nodes, const std::vector<Edge> &edges,
                                        QPointF origin = {});

    // The same over a live flow; the top-left corner stays where the flow's
    // cards begin now, so the view does not jump.
    static QHash<QUuid, QPointF> arrange(const TaskFlow &flow, const NodeSizeResolver &sizes);
};

} // namespace fenrow
