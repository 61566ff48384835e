#include "CanvasNavigation.h"

#include "domain/TaskFlow.h"

#include <cmath>
#include <limits>

namespace fenrow::CanvasNavigation {

const FlowNode *spatialNeighbor(const FlowNode &anchor, CanvasKeyCommand::Direction direction,
                                const QList<const FlowNode *> &visible)
{
    using Direction = CanvasKeyCommand::Direction;
    const FlowNode *best = nullptr;
    double bestScore = std::numeric_limits<double>::infinity();
    for (const FlowNode *node : visible) {
        if (node == &anchor)
            continue;
        const double dx = node->posX - anchor.posX;
        const double dy = node->posY - anchor.posY;
        double along = 0;
        double across = 0;
        switch (direction) {
        case Direction::left:
            along = -dx;
            across = std::abs(dy);
            break;
        case Direction::right:
            along = dx;
            across = std::abs(dy);
            break;
        case Direction::up:
            along = -dy;
            across = std::abs(dx);
            break;
        case Direction::down:
            along = dy;
            across = std::abs(dx);
            break;
        }
        if (!(along > 0) || across > along)
            continue;
        // Sideways offset weighs double: the card straight ahead beats a
        // nearer one off to the side.
        const double score = along + 2 * across;
        if (score < bestScore) {
            best = node;
            bestScore = score;
        }
    }
    return best;
}

const FlowNode *edgeNeighbor(const FlowNode &anchor, bool forward, const TaskFlow &flow, const QSet<QUuid> &hiddenIDs)
{
    const FlowNode *best = nullptr;
    double bestDistance = std::numeric_limits<double>::infinity();
    for (const DependencyEdge *edge : flow.edges()) {
        const FlowNode *from = edge->fromItem();
        const FlowNode *to = edge->toItem();
        if (!from || !to)
            continue;
        const FlowNode *candidate = forward ? (from == &anchor ? to : nullptr) : (to == &anchor ? from : nullptr);
        if (!candidate || hiddenIDs.contains(candidate->id))
            continue;
        // A node met twice has the same distance and so never replaces
        // itself: each counts once.
        const double distance = std::abs(candidate->posY - anchor.posY);
        if (distance < bestDistance) {
            best = candidate;
            bestDistance = distance;
        }
    }
    return best;
}

const FlowNode *nearest(QPointF point, const QList<const FlowNode *> &visible)
{
    const FlowNode *best = nullptr;
    double bestDistance = std::numeric_limits<double>::infinity();
    for (const FlowNode *node : visible) {
        const double distance = std::hypot(node->posX - point.x(), node->posY - point.y());
        if (distance < bestDistance) {
            best = node;
            bestDistance = distance;
        }
    }
    return best;
}

} // namespace fenrow::CanvasNavigation
