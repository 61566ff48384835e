#include "FreeSpot.h"

#include "NodeSizeResolver.h"
#include "domain/TaskFlow.h"

#include <cmath>
#include <vector>

namespace fenrow::FreeSpot {

namespace {

struct Card {
    QPointF center;
    NodeSize size;
};

constexpr int maxRounds = 64;
constexpr double sidewaysGap = 105 + 32;
constexpr double downwardGap = 60 + 16;

} // namespace

QPointF find(const TaskFlow &flow, QPointF wanted, Direction direction, const NodeSizeResolver &sizes)
{
    if (flow.items().empty())
        return wanted;
    std::vector<Card> cards;
    cards.reserve(flow.items().size());
    for (const FlowNode *node : flow.items())
        cards.push_back({{node->posX, node->posY}, sizes.resolve(*node)});

    // The new card is tried at the default size, whatever it becomes later.
    const NodeSize probe = NodeSizeResolver::defaultSize;
    QPointF center = wanted;
    for (int round = 0; round < maxRounds; ++round) {
        double widest = -1;
        double tallest = -1;
        for (const Card &card : cards) {
            // Touching counts as colliding.
            const bool overlaps = std::abs(card.center.x() - center.x()) <= (card.size.width + probe.width) / 2
                && std::abs(card.center.y() - center.y()) <= (card.size.height + probe.height) / 2;
            if (overlaps) {
                widest = std::max(widest, card.size.width);
                tallest = std::max(tallest, card.size.height);
            }
        }
        if (widest < 0)
            return center;
        if (direction == Direction::sideways)
            center.rx() += widest / 2 + sidewaysGap;
        else
            center.ry() += tallest / 2 + downwardGap;
    }
    return center;
}

} // namespace fenrow::FreeSpot
