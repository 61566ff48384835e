#include "TreeArrangement.h"

#include "CanvasBounds.h"
#include "NodeSizeResolver.h"
#include "domain/TaskFlow.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <queue>

namespace fenrow {

namespace {

// Columns taller than this are split, so that every card stays on the
// canvas even in a flow with hundreds of siblings.
constexpr double maxExtent = 2 * CanvasBounds::limit - 1000;

struct Graph {
    std::vector<std::vector<int>> successors;
    std::vector<std::vector<int>> predecessors;
};

struct Placed {
    std::vector<int> members;
    std::vector<QPointF> centers; // by member position
    double width = 0;
    double height = 0;
};

class ComponentLayout {
public:
    ComponentLayout(const std::vector<TreeArrangement::Node> &nodes, const Graph &graph,
                    const std::vector<int> &rank, std::vector<int> members)
        : m_nodes(nodes), m_graph(graph), m_rank(rank), m_members(std::move(members))
    {
    }

    Placed run()
    {
        assignLayers();
        orderWithinLayers();
        buildColumns();
        assignCoordinates();
        if (height() > maxExtent)
            stackColumnsFromTheTop();
        return finish();
    }

private:
    void assignLayers()
    {
        for (int node : m_members) {
            m_layer[node] = 0;
            m_pending[node] = int(m_graph.predecessors[node].size());
        }
        // Longest path from the sources, taking ready nodes by rank so that
        // the result does not depend on hash or container order.
        auto byRank = [&](int a, int b) { return m_rank[a] > m_rank[b]; };
        std::priority_queue<int, std::vector<int>, decltype(byRank)> ready(byRank);
        for (int node : m_members) {
            if (m_pending[node] == 0)
                ready.push(node);
        }
        QSet<int> done;
        std::size_t processed = 0;
        while (processed < m_members.size()) {
            if (ready.empty()) {
                // Only damaged data has a cycle: break it at the first node.
                for (int node : m_members) {
                    if (!done.contains(node)) {
                        ready.push(node);
                        break;
                    }
                }
            }
            const int node = ready.top();
            ready.pop();
            if (done.contains(node))
                continue;
            done.insert(node);
            ++processed;
            for (int next : m_graph.successors[node]) {
                if (done.contains(next))
                    continue;
                m_layer[next] = std::max(m_layer[next], m_layer[node] + 1);
                if (--m_pending[next] == 0)
                    ready.push(next);
            }
        }
        int layers = 0;
        for (int node : m_members)
            layers = std::max(layers, m_layer[node] + 1);
        m_layers.assign(std::size_t(layers), {});
    }

    void orderWithinLayers()
    {
        // Depth-first from the roots, children by rank: siblings start out
        // next to each other and in their order.
        QHash<int, int> sequence;
        std::vector<int> roots;
        for (int node : m_members) {
            if (m_graph.predecessors[node].empty())
                roots.push_back(node);
        }
        if (roots.empty())
            roots.push_back(m_members.front());
        std::vector<int> stack(roots.rbegin(), roots.rend());
        while (!stack.empty()) {
            const int node = stack.back();
            stack.pop_back();
            if (sequence.contains(node))
                continue;
            sequence.insert(node, int(sequence.size()));
            const auto &next = m_graph.successors[node];
            stack.insert(stack.end(), next.rbegin(), next.rend());
        }
        for (int node : m_members) {
            if (!sequence.contains(node))
                sequence.insert(node, int(sequence.size()));
            m_layers[std::size_t(m_layer[node])].push_back(node);
        }
        for (auto &layer : m_layers)
            std::sort(layer.begin(), layer.end(), [&](int a, int b) { return sequence[a] < sequence[b]; });

        // One sweep of barycentres, left to right: a node moves towards the
        // mean place of its predecessors; ties keep the sibling order.
        QHash<int, double> place;
        for (auto &layer : m_layers) {
            std::vector<std::pair<double, int>> keyed;
            keyed.reserve(layer.size());
            for (std::size_t i = 0; i < layer.size(); ++i) {
                const auto &before = m_graph.predecessors[std::size_t(layer[i])];
                double key = double(i) / double(std::max<std::size_t>(layer.size(), 1));
                if (!before.empty()) {
                    double sum = 0;
                    for (int p : before)
                        sum += place.value(p);
                    key = sum / double(before.size());
                }
                keyed.emplace_back(key, layer[i]);
            }
            std::stable_sort(keyed.begin(), keyed.end(),
                             [](const auto &a, const auto &b) { return a.first < b.first; });
            for (std::size_t i = 0; i < keyed.size(); ++i) {
                layer[i] = keyed[i].second;
                place.insert(layer[i], double(i) / double(keyed.size()));
            }
        }
    }

    void buildColumns()
    {
        for (const auto &layer : m_layers) {
            std::vector<int> column;
            double height = 0;
            for (int node : layer) {
                const double h = m_nodes[std::size_t(node)].size.height;
                if (!column.empty() && height + TreeArrangement::rowGap + h > maxExtent) {
                    m_columns.push_back(std::move(column));
                    column.clear();
                    height = 0;
                }
                height += (column.empty() ? 0 : TreeArrangement::rowGap) + h;
                column.push_back(node);
            }
            if (!column.empty())
                m_columns.push_back(std::move(column));
        }
    }

    // Places one column top to bottom: each card as near its wish as the
    // cards above allow, then the column shifted so that the pushes balance.
    void placeColumn(const std::vector<int> &column, const QHash<int, double> &wish)
    {
        double previousBottom = -INFINITY;
        std::vector<double> ys;
        ys.reserve(column.size());
        double overshoot = 0;
        int wished = 0;
        for (int node : column) {
            const double half = m_nodes[std::size_t(node)].size.height / 2;
            const double lowest = previousBottom + TreeArrangement::rowGap + half;
            double y = std::isinf(previousBottom) ? 0 : lowest;
            if (wish.contains(node)) {
                y = std::isinf(previousBottom) ? wish[node] : std::max(lowest, wish[node]);
                overshoot += y - wish[node];
                ++wished;
            }
            ys.push_back(y);
            previousBottom = y + half;
        }
        const double shift = wished ? overshoot / wished / 2 : 0;
        for (std::size_t i = 0; i < column.size(); ++i)
            m_y[column[i]] = ys[i] - shift;
    }

    void assignCoordinates()
    {
        // Each column is as wide as its widest card, so one large card does
        // not stretch the whole flow.
        double previousRight = -TreeArrangement::columnGap;
        for (std::size_t c = 0; c < m_columns.size(); ++c) {
            double widest = 0;
            for (int node : m_columns[c])
                widest = std::max(widest, m_nodes[std::size_t(node)].size.width);
            m_columnLeft.push_back(previousRight + TreeArrangement::columnGap);
            previousRight = m_columnLeft.back() + widest;
        }

        // Left to right, cards follow the mean height of their predecessors.
        for (std::size_t c = 0; c < m_columns.size(); ++c) {
            QHash<int, double> wish;
            double widest = 0;
            for (int node : m_columns[c])
                widest = std::max(widest, m_nodes[std::size_t(node)].size.width);
            for (int node : m_columns[c]) {
                m_x[node] = m_columnLeft[c] + widest / 2;
                const auto &before = m_graph.predecessors[std::size_t(node)];
                double sum = 0;
                int count = 0;
                for (int p : before) {
                    if (m_y.contains(p)) {
                        sum += m_y[p];
                        ++count;
                    }
                }
                if (count)
                    wish.insert(node, sum / count);
            }
            placeColumn(m_columns[c], wish);
        }
        // Then a column of roots centres on what hangs off it.
        if (!m_columns.empty()) {
            QHash<int, double> wish;
            for (int node : m_columns.front()) {
                const auto &after = m_graph.successors[std::size_t(node)];
                if (after.empty())
                    continue;
                double sum = 0;
                for (int s : after)
                    sum += m_y[s];
                wish.insert(node, sum / double(after.size()));
            }
            placeColumn(m_columns.front(), wish);
        }
    }

    double height() const
    {
        double top = INFINITY;
        double bottom = -INFINITY;
        for (int node : m_members) {
            const double half = m_nodes[std::size_t(node)].size.height / 2;
            top = std::min(top, m_y.value(node) - half);
            bottom = std::max(bottom, m_y.value(node) + half);
        }
        return bottom - top;
    }

    // Following predecessors can let a long flow drift taller than the
    // canvas; then every column simply starts at the top.
    void stackColumnsFromTheTop()
    {
        for (const auto &column : m_columns) {
            double cursor = 0;
            for (int node : column) {
                const double h = m_nodes[std::size_t(node)].size.height;
                m_y[node] = cursor + h / 2;
                cursor += h + TreeArrangement::rowGap;
            }
        }
    }

    // A chain longer than the canvas is wide continues in a band below, the
    // way text wraps: edges between bands then point back, but every card
    // stays on the canvas and none overlaps.
    void wrapIntoBands()
    {
        if (m_columns.empty())
            return;
        std::vector<std::size_t> bandStart{0};
        for (std::size_t c = 1; c < m_columns.size(); ++c) {
            double widest = 0;
            for (int node : m_columns[c])
                widest = std::max(widest, m_nodes[std::size_t(node)].size.width);
            if (m_columnLeft[c] + widest - m_columnLeft[bandStart.back()] > maxExtent)
                bandStart.push_back(c);
        }
        if (bandStart.size() == 1)
            return;
        bandStart.push_back(m_columns.size());
        double cursor = 0;
        for (std::size_t band = 0; band + 1 < bandStart.size(); ++band) {
            double top = INFINITY;
            double bottom = -INFINITY;
            for (std::size_t c = bandStart[band]; c < bandStart[band + 1]; ++c) {
                for (int node : m_columns[c]) {
                    const double half = m_nodes[std::size_t(node)].size.height / 2;
                    top = std::min(top, m_y[node] - half);
                    bottom = std::max(bottom, m_y[node] + half);
                }
            }
            const double shiftX = -m_columnLeft[bandStart[band]];
            const double shiftY = cursor - top;
            for (std::size_t c = bandStart[band]; c < bandStart[band + 1]; ++c) {
                for (int node : m_columns[c]) {
                    m_x[node] += shiftX;
                    m_y[node] += shiftY;
                }
            }
            cursor += bottom - top + TreeArrangement::componentGap;
        }
    }

    Placed finish()
    {
        wrapIntoBands();
        double left = INFINITY, top = INFINITY, right = -INFINITY, bottom = -INFINITY;
        for (int node : m_members) {
            const NodeSize &size = m_nodes[std::size_t(node)].size;
            left = std::min(left, m_x[node] - size.width / 2);
            right = std::max(right, m_x[node] + size.width / 2);
            top = std::min(top, m_y[node] - size.height / 2);
            bottom = std::max(bottom, m_y[node] + size.height / 2);
        }
        Placed placed;
        placed.members = m_members;
        placed.width = right - left;
        placed.height = bottom - top;
        for (int node : m_members)
            placed.centers.emplace_back(m_x[node] - left, m_y[node] - top);
        return placed;
    }

    const std::vector<TreeArrangement::Node> &m_nodes;
    const Graph &m_graph;
    const std::vector<int> &m_rank;
    std::vector<int> m_members;
    QHash<int, int> m_layer;
    QHash<int, int> m_pending;
    std::vector<std::vector<int>> m_layers;
    std::vector<std::vector<int>> m_columns;
    std::vector<double> m_columnLeft;
    QHash<int, double> m_x;
    QHash<int, double> m_y;
};

} // namespace

std::vector<QPointF> TreeArrangement::arrange(const std::vector<Node> &nodes, const std::vector<Edge> &edges,
                                              QPointF origin)
{
    const int count = int(nodes.size());
    std::vector<QPointF> result(nodes.size());
    if (count == 0)
        return result;

    std::vector<int> byOrder(nodes.size());
    std::iota(byOrder.begin(), byOrder.end(), 0);
    std::sort(byOrder.begin(), byOrder.end(), [&](int a, int b) {
        if (nodes[a].order != nodes[b].order)
            return nodes[a].order < nodes[b].order;
        return nodes[a].id < nodes[b].id;
    });
    std::vector<int> rank(nodes.size());
    for (int i = 0; i < count; ++i)
        rank[byOrder[i]] = i;

    Graph graph;
    graph.successors.resize(nodes.size());
    graph.predecessors.resize(nodes.size());
    for (const Edge &edge : edges) {
        if (edge.from == edge.to || edge.from < 0 || edge.to < 0 || edge.from >= count || edge.to >= count)
            continue;
        graph.successors[edge.from].push_back(edge.to);
        graph.predecessors[edge.to].push_back(edge.from);
    }
    auto tidy = [&](std::vector<int> &list) {
        std::sort(list.begin(), list.end(), [&](int a, int b) { return rank[a] < rank[b]; });
        list.erase(std::unique(list.begin(), list.end()), list.end());
    };
    for (int i = 0; i < count; ++i) {
        tidy(graph.successors[i]);
        tidy(graph.predecessors[i]);
    }

    // Connected pieces are laid out apart, in the order of their first node.
    std::vector<int> component(nodes.size(), -1);
    std::vector<std::vector<int>> components;
    for (int start : byOrder) {
        if (component[start] >= 0)
            continue;
        std::vector<int> members;
        std::vector<int> stack{start};
        component[start] = int(components.size());
        while (!stack.empty()) {
            const int node = stack.back();
            stack.pop_back();
            members.push_back(node);
            for (const auto *list : {&graph.successors[node], &graph.predecessors[node]}) {
                for (int next : *list) {
                    if (component[next] < 0) {
                        component[next] = component[start];
                        stack.push_back(next);
                    }
                }
            }
        }
        std::sort(members.begin(), members.end(), [&](int a, int b) { return rank[a] < rank[b]; });
        components.push_back(std::move(members));
    }

    // Pieces stack downwards, and start a new shelf to the right when the
    // canvas runs out of height.
    double shelfLeft = 0;
    double shelfWidth = 0;
    double cursor = 0;
    double totalWidth = 0;
    double totalHeight = 0;
    for (auto &members : components) {
        const Placed placed = ComponentLayout(nodes, graph, rank, std::move(members)).run();
        if (cursor > 0 && cursor + placed.height > maxExtent) {
            shelfLeft += shelfWidth + componentGap;
            shelfWidth = 0;
            cursor = 0;
        }
        for (std::size_t i = 0; i < placed.members.size(); ++i)
            result[placed.members[i]] = placed.centers[i] + QPointF(shelfLeft, cursor);
        shelfWidth = std::max(shelfWidth, placed.width);
        totalWidth = std::max(totalWidth, shelfLeft + placed.width);
        totalHeight = std::max(totalHeight, cursor + placed.height);
        cursor += placed.height + componentGap;
    }

    // Keep the whole arrangement on the canvas.
    const double limit = CanvasBounds::limit;
    const double left = std::clamp(origin.x(), -limit, std::max(-limit, limit - totalWidth));
    const double top = std::clamp(origin.y(), -limit, std::max(-limit, limit - totalHeight));
    for (QPointF &point : result) {
        point = QPointF(CanvasBounds::clampCoordinate(point.x() + left), CanvasBounds::clampCoordinate(point.y() + top));
    }
    return result;
}

QHash<QUuid, QPointF> TreeArrangement::arrange(const TaskFlow &flow, const NodeSizeResolver &sizes)
{
    std::vector<Node> nodes;
    QHash<const FlowNode *, int> index;
    double left = INFINITY;
    double top = INFINITY;
    for (const FlowNode *node : flow.items()) {
        const NodeSize size = sizes.resolve(*node);
        index.insert(node, int(nodes.size()));
        nodes.push_back({node->id, node->order, size});
        left = std::min(left, node->posX - size.width / 2);
        top = std::min(top, node->posY - size.height / 2);
    }
    std::vector<Edge> edges;
    for (const DependencyEdge *edge : flow.edges()) {
        const auto from = index.constFind(edge->fromItem());
        const auto to = index.constFind(edge->toItem());
        if (from != index.constEnd() && to != index.constEnd())
            edges.push_back({*from, *to});
    }
    const std::vector<QPointF> centers = arrange(nodes, edges, {left, top});
    QHash<QUuid, QPointF> positions;
    for (std::size_t i = 0; i < nodes.size(); ++i)
        positions.insert(nodes[i].id, centers[i]);
    return positions;
}

} // namespace fenrow
