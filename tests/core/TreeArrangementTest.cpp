#include "canvas/CanvasBounds.h"
#include "canvas/TreeArrangement.h"

#include <QRandomGenerator>
#include <QRectF>

#include <gtest/gtest.h>

#include <algorithm>

namespace fenrow {
namespace {

using Node = TreeArrangement::Node;
using Edge = TreeArrangement::Edge;

std::vector<Node> nodesOfSize(int count, NodeSize size = {210, 120})
{
    std::vector<Node> nodes;
    for (int i = 0; i < count; ++i)
        nodes.push_back({QUuid::fromString(QStringLiteral("00000000-0000-0000-0000-%1").arg(i, 12, 10, QChar('0'))), i,
                         size});
    return nodes;
}

void expectNoOverlapsWithinBounds(const std::vector<Node> &nodes, const std::vector<QPointF> &centers)
{
    std::vector<QRectF> frames;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const QPointF c = centers[i];
        ASSERT_LE(std::abs(c.x()), CanvasBounds::limit);
        ASSERT_LE(std::abs(c.y()), CanvasBounds::limit);
        frames.emplace_back(c.x() - nodes[i].size.width / 2, c.y() - nodes[i].size.height / 2, nodes[i].size.width,
                            nodes[i].size.height);
    }
    // Sweep by left edge so that large inputs stay quick to check.
    std::vector<std::size_t> byLeft(frames.size());
    std::iota(byLeft.begin(), byLeft.end(), 0);
    std::sort(byLeft.begin(), byLeft.end(), [&](auto a, auto b) { return frames[a].left() < frames[b].left(); });
    for (std::size_t i = 0; i < byLeft.size(); ++i) {
        for (std::size_t j = i + 1; j < byLeft.size() && frames[byLeft[j]].left() < frames[byLeft[i]].right(); ++j)
            ASSERT_FALSE(frames[byLeft[i]].intersects(frames[byLeft[j]])) << byLeft[i] << " and " << byLeft[j];
    }
}

TEST(TreeArrangement, DiamondRunsLeftToRightWithSiblingsInOrder)
{
    // 0 -> 1, 0 -> 2, 1 -> 3, 2 -> 3.
    const auto nodes = nodesOfSize(4);
    const std::vector<Edge> edges{{0, 1}, {0, 2}, {1, 3}, {2, 3}};
    const auto at = TreeArrangement::arrange(nodes, edges, {100, 50});
    EXPECT_LT(at[0].x(), at[1].x());
    EXPECT_EQ(at[1].x(), at[2].x());
    EXPECT_LT(at[2].x(), at[3].x());
    EXPECT_EQ(at[1].x() - at[0].x(), 210 + TreeArrangement::columnGap);
    EXPECT_LT(at[1].y(), at[2].y()) << "siblings keep their order";
    EXPECT_EQ(at[2].y() - at[1].y(), 120 + TreeArrangement::rowGap);
    EXPECT_DOUBLE_EQ(at[0].y(), (at[1].y() + at[2].y()) / 2) << "a parent centres on its children";
    EXPECT_DOUBLE_EQ(at[3].y(), at[0].y());
    const double left = std::min({at[0].x(), at[1].x(), at[3].x()}) - 105;
    const double top = std::min({at[0].y(), at[1].y(), at[2].y()}) - 60;
    EXPECT_EQ(QPointF(left, top), QPointF(100, 50)) << "the arrangement starts at the origin";
    expectNoOverlapsWithinBounds(nodes, at);
}

TEST(TreeArrangement, LongEdgesAndSeparatePieces)
{
    // 0 -> 1 -> 2 and 0 -> 2: 2 goes to the third column. 3 stands alone.
    auto nodes = nodesOfSize(4);
    nodes[1].size = {330, 180};
    const auto at = TreeArrangement::arrange(nodes, {{0, 1}, {1, 2}, {0, 2}});
    EXPECT_LT(at[1].x(), at[2].x());
    EXPECT_GT(at[3].y(), std::max({at[0].y(), at[1].y(), at[2].y()})) << "a separate piece goes below";
    expectNoOverlapsWithinBounds(nodes, at);
}

TEST(TreeArrangement, DeterministicWhateverTheInputOrder)
{
    auto nodes = nodesOfSize(30);
    std::vector<Edge> edges;
    QRandomGenerator random(7);
    for (int i = 0; i < 45; ++i) {
        const int a = int(random.bounded(30));
        const int b = int(random.bounded(30));
        if (a != b)
            edges.push_back({std::min(a, b), std::max(a, b)});
    }
    const auto first = TreeArrangement::arrange(nodes, edges);
    EXPECT_EQ(TreeArrangement::arrange(nodes, edges), first);

    // The same graph with nodes and edges listed backwards.
    std::vector<Node> reversed(nodes.rbegin(), nodes.rend());
    std::vector<Edge> remapped;
    for (auto it = edges.rbegin(); it != edges.rend(); ++it)
        remapped.push_back({29 - it->from, 29 - it->to});
    const auto second = TreeArrangement::arrange(reversed, remapped);
    for (int i = 0; i < 30; ++i)
        EXPECT_EQ(second[std::size_t(29 - i)], first[std::size_t(i)]) << i;
    expectNoOverlapsWithinBounds(nodes, first);
}

TEST(TreeArrangement, HugeFlowsStayOnTheCanvas)
{
    // One parent with 1,500 subtasks is taller than the canvas: the column
    // wraps instead of running off it.
    auto fan = nodesOfSize(1501, {210, 120});
    std::vector<Edge> fanEdges;
    for (int i = 1; i <= 1500; ++i)
        fanEdges.push_back({0, i});
    const auto fanned = TreeArrangement::arrange(fan, fanEdges, {19000, 19000});
    expectNoOverlapsWithinBounds(fan, fanned);
    for (int i = 1; i <= 1500; ++i)
        ASSERT_GT(fanned[std::size_t(i)].x(), fanned[0].x());

    // A chain of 200 cards is wider than the canvas: it wraps into bands.
    auto chain = nodesOfSize(200, {210, 120});
    chain[17].size = {480, 360};
    std::vector<Edge> chainEdges;
    for (int i = 0; i + 1 < 200; ++i)
        chainEdges.push_back({i, i + 1});
    const auto wrapped = TreeArrangement::arrange(chain, chainEdges);
    expectNoOverlapsWithinBounds(chain, wrapped);
    EXPECT_LT(wrapped[0].x(), wrapped[1].x());

    // 2,000 unconnected cards fill shelves side by side.
    const auto loose = nodesOfSize(2000, {330, 180});
    expectNoOverlapsWithinBounds(loose, TreeArrangement::arrange(loose, {}));
}

} // namespace
} // namespace fenrow
