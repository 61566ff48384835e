#include "LargeStoreShape.h"

#include <algorithm>
#include <cmath>

namespace fenrow::bench {

namespace {

// Fewer nodes than this per flow leaves no room for the edges a flow has.
constexpr int minimumNodesPerFlow = 4;

int scaledCount(int count, double scale, int minimum)
{
    return std::max(minimum, int(std::lround(count * scale)));
}

} // namespace

LargeStoreShape LargeStoreShape::scaled(double scale)
{
    const LargeStoreShape base = full();
    LargeStoreShape shape;
    // Two flows at least: reordering needs a pair.
    shape.flows = scaledCount(base.flows, scale, 2);
    shape.nodes = scaledCount(base.nodes, scale, shape.flows * minimumNodesPerFlow);
    // Edges keep their ratio to nodes, so graphs stay equally dense.
    shape.edges = int(std::lround(double(shape.nodes) * base.edges / base.nodes));
    shape.completionRecords = scaledCount(base.completionRecords, scale, 0);
    shape.files = scaledCount(base.files, scale, 1);
    return shape;
}

LargeStoreShape LargeStoreShape::withNodes(int nodes)
{
    return scaled(double(nodes) / full().nodes);
}

LargeStoreShape LargeStoreShape::oneFlow(int nodes, int edges)
{
    return {1, nodes, edges, 0, 0};
}

} // namespace fenrow::bench
