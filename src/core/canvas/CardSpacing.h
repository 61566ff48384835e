#pragma once

#include "NodeSize.h"

#include <QHash>
#include <QPointF>
#include <QUuid>

#include <utility>
#include <vector>

namespace fenrow {

class NodeSizeResolver;
class TaskFlow;

// Moves cards apart after their sizes changed (sizing by estimate switched
// on or off), so that cards which stood apart before do not overlap now.
// Cards that overlapped already are left to each other: that was the
// user's doing. A pair is pushed apart along the axis on which it stood
// apart, the later card (right or below) moving on, and keeps the gap it
// had on that axis; every move is to the right or downwards, so no card
// passes another on the axis it is pushed along, and subtasks of one parent
// never swap places. A last sweep downwards settles what the first passes
// left overlapping. Cards that merely touch do not overlap.
namespace CardSpacing {

inline constexpr double minimumGap = 16;

struct Card {
    QUuid id;
    qint64 order = 0;
    QPointF center;
    NodeSize before;
    NodeSize after;
};

// New centres, index for index, each coordinate within the canvas.
// `subtaskEdges` are (parent, child) index pairs; they tell siblings.
std::vector<QPointF> separate(const std::vector<Card> &cards, const std::vector<std::pair<int, int>> &subtaskEdges);

// The nodes of the flow that have to move when the sizes go from `before`
// to `after`, with their new centres; empty when none has to.
QHash<QUuid, QPointF> separate(const TaskFlow &flow, const NodeSizeResolver &before, const NodeSizeResolver &after);

} // namespace CardSpacing

} // namespace fenrow
