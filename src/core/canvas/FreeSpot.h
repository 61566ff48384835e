#pragma once

#include <QPointF>

namespace fenrow {

class NodeSizeResolver;
class TaskFlow;

// Where a new default-sized card can stand without touching another card:
// starting at `wanted`, it steps right (sideways) or down (downward) past
// the cards in the way, at most 64 times.
namespace FreeSpot {
enum class Direction { sideways, downward };
QPointF find(const TaskFlow &flow, QPointF wanted, Direction direction, const NodeSizeResolver &sizes);
} // namespace FreeSpot

} // namespace fenrow
