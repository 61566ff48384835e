#pragma once

#include "CanvasKeyCommand.h"

#include <QList>
#include <QPointF>
#include <QSet>
#include <QUuid>

namespace fenrow {

class FlowNode;
class TaskFlow;

// Which card the arrow keys go to. All of it works on stored positions
// (card centres) and on the list of visible cards, in their order; an
// earlier card wins every tie.
namespace CanvasNavigation {

// The card in the 90° wedge that opens from `anchor` towards `direction`
// (its diagonals included), scored by the distance along the direction plus
// twice the distance across it; null when the wedge is empty.
const FlowNode *spatialNeighbor(const FlowNode &anchor, CanvasKeyCommand::Direction direction,
                                const QList<const FlowNode *> &visible);

// Along the anchor's edges: forward to what it points at, back to what
// points at it. Of several, the one at the nearest height; none of
// `hiddenIDs`.
const FlowNode *edgeNeighbor(const FlowNode &anchor, bool forward, const TaskFlow &flow, const QSet<QUuid> &hiddenIDs);

// The card whose centre is nearest to `point`; null with no cards.
const FlowNode *nearest(QPointF point, const QList<const FlowNode *> &visible);

} // namespace CanvasNavigation

} // namespace fenrow
