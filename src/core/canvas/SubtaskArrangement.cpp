#include "SubtaskArrangement.h"

#include "CanvasBounds.h"
#include "NodeSizeResolver.h"
#include "domain/TaskFlow.h"

#include <algorithm>
#include <numeric>

namespace fenrow {

QHash<int, QPointF> SubtaskArrangement::arrange(int root, const std::vector<Node> &nodes, const std::vector<Edge> &edges)
{
    const int count = int(nodes.size());
    std::vector<std::vector<int>> children(nodes.size());
    for (const Edge &edge : edges) {
        if (edge.parent >= 0 && edge.parent < count && edge.child >= 0 && edge.child < count)
            children[std::size_t(edge.parent)].push_back(edge.child);
    }
    for (std::vector<int> &list : children) {
        // Stable: equal orders keep the order of the edges.
        std::stable_sort(list.begin(), list.end(),
                         [&](int a, int b) { return nodes[std::size_t(a)].order < nodes[std::size_t(b)].order; });
    }

    // The subtree as a tree: depth first, each card under the first parent
    // that reaches it.
    std::vector<std::vector<int>> tree(nodes.size());
    std::vector<int> depth(std::size_t(count), -1);
    std::vector<int> preorder;
    std::vector<int> stack{root};
    depth[std::size_t(root)] = 0;
    while (!stack.empty()) {
        const int node = stack.back();
        stack.pop_back();
        preorder.push_back(node);
        const std::vector<int> &next = children[std::size_t(node)];
        for (int child : next) {
            if (depth[std::size_t(child)] >= 0)
                continue;
            depth[std::size_t(child)] = depth[std::size_t(node)] + 1;
            tree[std::size_t(node)].push_back(child);
        }
        for (auto it = tree[std::size_t(node)].rbegin(); it != tree[std::size_t(node)].rend(); ++it)
            stack.push_back(*it);
    }

    // Columns: as wide as their widest card, left edges aligned.
    int deepest = 0;
    for (int node : preorder)
        deepest = std::max(deepest, depth[std::size_t(node)]);
    std::vector<double> columnWidth(std::size_t(deepest) + 1, 0);
    for (int node : preorder) {
        double &width = columnWidth[std::size_t(depth[std::size_t(node)])];
        width = std::max(width, nodes[std::size_t(node)].size.width);
    }
    std::vector<double> columnLeft(std::size_t(deepest) + 1, 0);
    const Node &top = nodes[std::size_t(root)];
    columnLeft[0] = top.center.x() - top.size.width / 2;
    for (int level = 1; level <= deepest; ++level) {
        const double previousRight = level == 1 ? top.center.x() + top.size.width / 2
                                                : columnLeft[std::size_t(level - 1)] + columnWidth[std::size_t(level - 1)];
        columnLeft[std::size_t(level)] = previousRight + columnGap;
    }

    // Heights of the blocks, children before parents.
    std::vector<double> extent(std::size_t(count), 0);
    for (auto it = preorder.rbegin(); it != preorder.rend(); ++it) {
        const std::vector<int> &below = tree[std::size_t(*it)];
        double stacked = 0;
        for (int child : below)
            stacked += extent[std::size_t(child)];
        if (!below.empty())
            stacked += rowGap * double(below.size() - 1);
        extent[std::size_t(*it)] = std::max(nodes[std::size_t(*it)].size.height, stacked);
    }

    QHash<int, QPointF> placed;
    std::vector<double> centerY(std::size_t(count), 0);
    centerY[std::size_t(root)] = top.center.y();
    for (int node : preorder) {
        const std::vector<int> &below = tree[std::size_t(node)];
        if (below.empty())
            continue;
        double stacked = rowGap * double(below.size() - 1);
        for (int child : below)
            stacked += extent[std::size_t(child)];
        double cursor = centerY[std::size_t(node)] - stacked / 2;
        for (int child : below) {
            const double middle = cursor + extent[std::size_t(child)] / 2;
            centerY[std::size_t(child)] = middle;
            cursor += extent[std::size_t(child)] + rowGap;
            const Node &card = nodes[std::size_t(child)];
            const double x = columnLeft[std::size_t(depth[std::size_t(child)])] + card.size.width / 2;
            placed.insert(child, {CanvasBounds::clampCoordinate(x), CanvasBounds::clampCoordinate(middle)});
        }
    }
    return placed;
}

QHash<QUuid, QPointF> SubtaskArrangement::arrange(const FlowNode &parent, const TaskFlow &flow,
                                                  const NodeSizeResolver &sizes)
{
    std::vector<Node> nodes;
    QHash<const FlowNode *, int> index;
    nodes.reserve(flow.items().size());
    for (const FlowNode *node : flow.items()) {
        index.insert(node, int(nodes.size()));
        nodes.push_back({node->id, node->order, {node->posX, node->posY}, sizes.resolve(*node)});
    }
    std::vector<Edge> edges;
    for (const DependencyEdge *edge : flow.edges()) {
        if (edge->isSubtask() && edge->fromItem() && edge->toItem())
            edges.push_back({index.value(edge->fromItem()), index.value(edge->toItem())});
    }
    QHash<QUuid, QPointF> positions;
    const auto root = index.constFind(&parent);
    if (root == index.constEnd())
        return positions;
    const QHash<int, QPointF> placed = arrange(*root, nodes, edges);
    for (auto it = placed.begin(); it != placed.end(); ++it)
        positions.insert(nodes[std::size_t(it.key())].id, it.value());
    return positions;
}

} // namespace fenrow
