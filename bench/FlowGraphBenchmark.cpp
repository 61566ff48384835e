// Editing and arranging one large flow: adding an edge, whose cycle search
// runs on every connection the user draws, and "Arrange as tree".
#include "BenchmarkMain.h"
#include "GeneratedStores.h"
#include "LiveStore.h"
#include "OperationSamples.h"

#include "FlowGraph.h"
#include "GraphMutationError.h"
#include "TaskFlow.h"
#include "canvas/CanvasBounds.h"
#include "canvas/NodeSizeResolver.h"
#include "canvas/TreeArrangement.h"

#include <QRectF>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <set>
#include <vector>

using namespace fenrow;
using namespace fenrow::bench;

namespace {

using Clock = std::chrono::steady_clock;

// A flow of this size is far beyond what people draw by hand; imports and
// generated plans can reach it.
constexpr int fullFlowNodes = 2000;
constexpr double edgesPerNode = 1.5;

LargeStoreShape flowShape()
{
    const int nodes = std::max(8, int(std::lround(fullFlowNodes * GeneratedStores::scale())));
    return LargeStoreShape::oneFlow(nodes, int(std::lround(nodes * edgesPerNode)));
}

struct OneFlow {
    LiveStore *live = nullptr;
    const TaskFlow *flow = nullptr;
    std::vector<const FlowNode *> byOrder;
};

std::optional<OneFlow> openFlow(benchmark::State &state, const LargeStoreShape &shape)
{
    QString error;
    OneFlow opened;
    opened.live = LiveStore::of(shape, &error);
    if (!opened.live) {
        fail(state, error);
        return std::nullopt;
    }
    if (opened.live->store->flows().size() != 1) {
        fail(state, QStringLiteral("the store has %1 flows, not one").arg(opened.live->store->flows().size()));
        return std::nullopt;
    }
    opened.flow = opened.live->store->flows().first();
    for (const FlowNode *node : opened.flow->items())
        opened.byOrder.push_back(node);
    std::sort(opened.byOrder.begin(), opened.byOrder.end(),
              [](const FlowNode *a, const FlowNode *b) { return a->order < b->order; });
    return opened;
}

// Edges run from a lower to a higher order, so the early tasks reach the
// most of the flow. Of the first few, the one with the most descendants
// that `accepted` allows.
template <typename Accepted>
const FlowNode *widestEarlyNode(const OneFlow &opened, Accepted accepted)
{
    constexpr std::size_t candidates = 50;
    const FlowNode *widest = nullptr;
    qsizetype most = 0;
    for (std::size_t i = 0; i < std::min(candidates, opened.byOrder.size()); ++i) {
        const FlowNode *node = opened.byOrder[i];
        if (!accepted(node))
            continue;
        const qsizetype reached = FlowGraph::descendants(*node, *opened.flow).size();
        if (reached > most) {
            widest = node;
            most = reached;
        }
    }
    return widest;
}

void reportShape(benchmark::State &state, const OneFlow &opened)
{
    state.counters["nodes"] = double(opened.flow->items().size());
    state.counters["edges"] = double(opened.flow->edges().size());
}

// An edge from the first task to an early one that it does not reach yet:
// the search walks everything below the head without finding the tail.
// The edge is removed again after each addition, so that every iteration
// sees the same graph; both calls save. Only the addition is timed, the
// removal is reported beside it.
void addEdgeAccepted(benchmark::State &state, LargeStoreShape shape)
{
    std::optional<OneFlow> opened = openFlow(state, shape);
    if (!opened)
        return;
    FenrowStore &store = *opened->live->store;
    const TaskFlow &flow = *opened->flow;
    const FlowNode *from = opened->byOrder.front();
    const FlowNode *to = widestEarlyNode(*opened, [&](const FlowNode *node) {
        return node != from && !FlowGraph::findEdge(*from, *node, flow) && !FlowGraph::hasPath(*node, *from, flow);
    });
    if (!to) {
        fail(state, QStringLiteral("no early task is free to connect"));
        return;
    }
    const QUuid fromID = from->id;
    const QUuid toID = to->id;
    const std::size_t edges = flow.edges().size();

    OperationSamples additions;
    OperationSamples removals;
    for (auto _ : state) {
        Clock::time_point start = Clock::now();
        const DependencyEdge &edge = store.addEdge(*from, *to, EdgeSource::manual, EdgeKind::dependency);
        const double seconds = secondsSince(start);
        state.SetIterationTime(seconds);
        additions.add(seconds);
        if (edge.fromItem() != from || edge.toItem() != to || flow.edges().size() != edges + 1 || store.hasChanges()) {
            fail(state, QStringLiteral("the edge was not added and saved"));
            return;
        }
        start = Clock::now();
        store.removeEdge(edge);
        removals.add(secondsSince(start));
        if (flow.edges().size() != edges || store.hasChanges()) {
            fail(state, QStringLiteral("the edge was not removed and saved"));
            return;
        }
    }
    additions.report(state);
    removals.report(state, "remove_");
    reportShape(state, *opened);
    state.counters["searched"] = double(FlowGraph::descendants(*to, flow).size());

    LiveStore &live = *opened->live;
    if (live.verified.insert("addEdge").second) {
        QString error;
        if (!live.reopen(&error)) {
            fail(state, error);
            return;
        }
        const TaskFlow &reopened = *live.store->flows().first();
        const bool joined = std::any_of(reopened.edges().begin(), reopened.edges().end(), [&](const DependencyEdge *e) {
            return e->fromItem() && e->toItem() && e->fromItem()->id == fromID && e->toItem()->id == toID;
        });
        if (reopened.edges().size() != edges || joined)
            fail(state, QStringLiteral("the added and removed edge left a trace in the file"));
    }
}

// An edge from the task that the search from an early one reaches last,
// back to that early one: refused as a cycle after the longest walk. A
// refusal changes nothing and does not save, so this is the search alone.
void addEdgeRefused(benchmark::State &state, LargeStoreShape shape)
{
    std::optional<OneFlow> opened = openFlow(state, shape);
    if (!opened)
        return;
    FenrowStore &store = *opened->live->store;
    const TaskFlow &flow = *opened->flow;
    const FlowNode *root = widestEarlyNode(*opened, [](const FlowNode *) { return true; });
    const QList<const FlowNode *> reached = root ? FlowGraph::descendants(*root, flow) : QList<const FlowNode *>{};
    if (reached.size() < 2) {
        fail(state, QStringLiteral("no early task reaches another"));
        return;
    }
    const FlowNode *deepest = reached.last();
    const std::size_t edges = flow.edges().size();

    for (auto _ : state) {
        bool refused = false;
        const Clock::time_point start = Clock::now();
        try {
            store.addEdge(*deepest, *root, EdgeSource::manual, EdgeKind::dependency);
        } catch (const GraphMutationError &error) {
            refused = error.kind() == GraphMutationError::Kind::cycleRejected;
        }
        state.SetIterationTime(secondsSince(start));
        if (!refused || flow.edges().size() != edges || store.hasChanges()) {
            fail(state, QStringLiteral("the edge closing a cycle was not refused as one"));
            return;
        }
    }
    reportShape(state, *opened);
    state.counters["searched"] = double(reached.size());
}

// The number of tasks on the longest chain of edges: the fewest columns
// an arrangement that puts every edge's tail left of its head can have.
int longestChain(const TaskFlow &flow)
{
    QHash<const FlowNode *, QList<const FlowNode *>> heads;
    QHash<const FlowNode *, int> pending;
    for (const DependencyEdge *edge : flow.edges()) {
        if (!edge->fromItem() || !edge->toItem())
            continue;
        heads[edge->fromItem()].append(edge->toItem());
        ++pending[edge->toItem()];
    }
    QHash<const FlowNode *, int> length;
    QList<const FlowNode *> ready;
    for (const FlowNode *node : flow.items()) {
        if (!pending.value(node)) {
            ready.append(node);
            length.insert(node, 1);
        }
    }
    int longest = 0;
    while (!ready.isEmpty()) {
        const FlowNode *node = ready.takeLast();
        longest = std::max(longest, length.value(node));
        for (const FlowNode *head : heads.value(node)) {
            length[head] = std::max(length.value(head), length.value(node) + 1);
            if (--pending[head] == 0)
                ready.append(head);
        }
    }
    return longest;
}

struct ArrangementCheck {
    QString fault;       // broken whatever the flow's shape
    int leftwardEdges = 0;
    int overlaps = 0;
};

// Every task is placed on the canvas. Edges point right and cards do not
// overlap, as long as the longest chain fits across the canvas at all;
// beyond that both are counted, not required.
ArrangementCheck checkArrangement(const TaskFlow &flow, const NodeSizeResolver &sizes,
                                  const QHash<QUuid, QPointF> &positions)
{
    ArrangementCheck check;
    if (positions.size() != qsizetype(flow.items().size())) {
        check.fault = QStringLiteral("%1 of %2 tasks were placed").arg(positions.size()).arg(flow.items().size());
        return check;
    }
    for (const DependencyEdge *edge : flow.edges()) {
        if (edge->fromItem() && edge->toItem()
            && positions.value(edge->fromItem()->id).x() >= positions.value(edge->toItem()->id).x())
            ++check.leftwardEdges;
    }
    std::vector<QRectF> cards;
    double widest = 0;
    for (const FlowNode *node : flow.items()) {
        const NodeSize size = sizes.resolve(*node);
        const QPointF centre = positions.value(node->id);
        if (std::abs(centre.x()) > CanvasBounds::limit || std::abs(centre.y()) > CanvasBounds::limit) {
            check.fault = QStringLiteral("%1 lies off the canvas").arg(node->title);
            return check;
        }
        widest = std::max(widest, size.width);
        cards.emplace_back(centre.x() - size.width / 2, centre.y() - size.height / 2, size.width, size.height);
    }
    std::sort(cards.begin(), cards.end(), [](const QRectF &a, const QRectF &b) { return a.left() < b.left(); });
    for (std::size_t i = 0; i < cards.size(); ++i) {
        for (std::size_t j = i + 1; j < cards.size() && cards[j].left() < cards[i].right(); ++j)
            check.overlaps += cards[i].intersects(cards[j]) ? 1 : 0;
    }
    const double narrowest = longestChain(flow) * (widest + TreeArrangement::columnGap);
    const bool fits = narrowest <= 2 * CanvasBounds::limit;
    if (fits && (check.leftwardEdges || check.overlaps))
        check.fault = QStringLiteral("%1 edges point left and %2 pairs of cards overlap")
                          .arg(check.leftwardEdges)
                          .arg(check.overlaps);
    return check;
}

void arrangeAsTree(benchmark::State &state, LargeStoreShape shape)
{
    std::optional<OneFlow> opened = openFlow(state, shape);
    if (!opened)
        return;
    const TaskFlow &flow = *opened->flow;
    const NodeSizeResolver sizes;
    QHash<QUuid, QPointF> positions;
    for (auto _ : state) {
        positions = TreeArrangement::arrange(flow, sizes);
        benchmark::DoNotOptimize(positions);
    }
    const ArrangementCheck check = checkArrangement(flow, sizes, positions);
    if (!check.fault.isEmpty()) {
        fail(state, check.fault);
        return;
    }
    std::set<double> columns;
    for (const QPointF &position : std::as_const(positions))
        columns.insert(position.x());
    reportShape(state, *opened);
    state.counters["longest_chain"] = longestChain(flow);
    state.counters["columns"] = double(columns.size());
    state.counters["leftward_edges"] = check.leftwardEdges;
    state.counters["overlaps"] = check.overlaps;
}

} // namespace

int main(int argc, char **argv)
{
    const LargeStoreShape shape = flowShape();
    const std::string size = "/nodes:" + std::to_string(shape.nodes);
    benchmark::RegisterBenchmark(("AddEdgeAccepted" + size).c_str(), addEdgeAccepted, shape)
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark(("AddEdgeRefused" + size).c_str(), addEdgeRefused, shape)
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark(("ArrangeAsTree" + size).c_str(), arrangeAsTree, shape)->Unit(benchmark::kMillisecond);
    return runBenchmarks(argc, argv);
}
