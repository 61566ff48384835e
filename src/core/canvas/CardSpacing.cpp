#include "CardSpacing.h"

#include "CanvasBounds.h"
#include "NodeSizeResolver.h"
#include "domain/TaskFlow.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace fenrow::CardSpacing {

namespace {

enum class Axis { x, y };

double along(QPointF point, Axis axis)
{
    return axis == Axis::x ? point.x() : point.y();
}

double &coordinate(QPointF &point, Axis axis)
{
    return axis == Axis::x ? point.rx() : point.ry();
}

double extent(NodeSize size, Axis axis)
{
    return axis == Axis::x ? size.width : size.height;
}

// Overlap with some area; touching borders do not count.
bool overlaps(QPointF a, NodeSize sa, QPointF b, NodeSize sb)
{
    return std::abs(a.x() - b.x()) < (sa.width + sb.width) / 2 && std::abs(a.y() - b.y()) < (sa.height + sb.height) / 2;
}

class Spacer {
public:
    Spacer(const std::vector<Card> &cards, const std::vector<std::pair<int, int>> &subtaskEdges)
        : m_cards(cards), m_positions(cards.size()), m_siblings(cards.size())
    {
        for (std::size_t i = 0; i < cards.size(); ++i)
            m_positions[i] = cards[i].center;
        std::vector<std::vector<int>> children(cards.size());
        for (const auto &[parent, child] : subtaskEdges) {
            if (parent >= 0 && child >= 0 && std::size_t(parent) < cards.size() && std::size_t(child) < cards.size())
                children[std::size_t(parent)].push_back(child);
        }
        for (const std::vector<int> &group : children) {
            for (int a : group) {
                for (int b : group) {
                    if (a != b)
                        m_siblings[std::size_t(a)].push_back(b);
                }
            }
        }
    }

    std::vector<QPointF> run()
    {
        if (!anyCardGrew())
            return m_positions;
        for (int round = 0; round < 3 && anyNewOverlap(); ++round) {
            sweep(Axis::x, false);
            sweep(Axis::y, false);
        }
        if (anyNewOverlap())
            sweep(Axis::y, true);
        for (QPointF &point : m_positions)
            point = {CanvasBounds::clampCoordinate(point.x()), CanvasBounds::clampCoordinate(point.y())};
        return m_positions;
    }

private:
    const Card &card(int i) const { return m_cards[std::size_t(i)]; }

    bool anyCardGrew() const
    {
        return std::any_of(m_cards.begin(), m_cards.end(), [](const Card &c) {
            return c.after.width > c.before.width || c.after.height > c.before.height;
        });
    }

    // They stood apart before; whatever they do now is the sizes' doing.
    bool exempt(int i, int j) const
    {
        return overlaps(card(i).center, card(i).before, card(j).center, card(j).before);
    }

    // How far apart the pair stood on an axis, border to border, before.
    double gapBefore(int i, int j, Axis axis) const
    {
        return std::abs(along(card(i).center, axis) - along(card(j).center, axis))
            - (extent(card(i).before, axis) + extent(card(j).before, axis)) / 2;
    }

    // The axis on which the pair stood further apart.
    Axis separatingAxis(int i, int j) const { return gapBefore(i, j, Axis::x) >= gapBefore(i, j, Axis::y) ? Axis::x : Axis::y; }

    bool overlapNow(int i, int j) const
    {
        return overlaps(m_positions[std::size_t(i)], card(i).after, m_positions[std::size_t(j)], card(j).after);
    }

    // Sort and sweep along x over the current frames.
    bool anyNewOverlap() const
    {
        std::vector<int> byLeft(m_cards.size());
        std::iota(byLeft.begin(), byLeft.end(), 0);
        auto left = [&](int i) { return m_positions[std::size_t(i)].x() - card(i).after.width / 2; };
        auto right = [&](int i) { return m_positions[std::size_t(i)].x() + card(i).after.width / 2; };
        std::sort(byLeft.begin(), byLeft.end(), [&](int a, int b) { return left(a) < left(b); });
        std::vector<int> open;
        for (int i : byLeft) {
            std::erase_if(open, [&](int j) { return right(j) <= left(i); });
            for (int j : open) {
                if (overlapNow(i, j) && !exempt(i, j))
                    return true;
            }
            open.push_back(i);
        }
        return false;
    }

    // Cards in the order of their original place on `axis`; each is pushed
    // on until it clears every card before it that it has to clear, and
    // stays behind its siblings that came before it.
    void sweep(Axis axis, bool everyPair)
    {
        const std::size_t count = m_cards.size();
        std::vector<int> sequence(count);
        std::iota(sequence.begin(), sequence.end(), 0);
        auto key = [&](int i) { return everyPair ? along(m_positions[std::size_t(i)], axis) : along(card(i).center, axis); };
        // Ties go by the original place, so that the last sweep keeps the
        // order the earlier ones left.
        std::stable_sort(sequence.begin(), sequence.end(), [&](int a, int b) {
            if (key(a) != key(b))
                return key(a) < key(b);
            if (along(card(a).center, axis) != along(card(b).center, axis))
                return along(card(a).center, axis) < along(card(b).center, axis);
            return card(a).order < card(b).order;
        });
        std::vector<int> rank(count);
        for (std::size_t r = 0; r < count; ++r)
            rank[std::size_t(sequence[r])] = int(r);

        for (std::size_t r = 0; r < count; ++r) {
            const int k = sequence[r];
            double &mine = coordinate(m_positions[std::size_t(k)], axis);
            bool moved = true;
            while (moved) {
                moved = false;
                for (std::size_t earlier = 0; earlier < r; ++earlier) {
                    const int j = sequence[earlier];
                    if (exempt(j, k) || !overlapNow(j, k))
                        continue;
                    if (!everyPair && separatingAxis(j, k) != axis)
                        continue;
                    const double gap = gapBefore(j, k, axis);
                    const double needed = along(m_positions[std::size_t(j)], axis)
                        + (extent(card(j).after, axis) + extent(card(k).after, axis)) / 2
                        + (!everyPair && gap >= 0 ? gap : minimumGap);
                    if (mine < needed) {
                        mine = needed;
                        moved = true;
                    }
                }
                for (int sibling : m_siblings[std::size_t(k)]) {
                    const double theirs = along(m_positions[std::size_t(sibling)], axis);
                    if (rank[std::size_t(sibling)] < int(r) && mine < theirs) {
                        mine = theirs;
                        moved = true;
                    }
                }
            }
        }
    }

    const std::vector<Card> &m_cards;
    std::vector<QPointF> m_positions;
    std::vector<std::vector<int>> m_siblings;
};

} // namespace

std::vector<QPointF> separate(const std::vector<Card> &cards, const std::vector<std::pair<int, int>> &subtaskEdges)
{
    return Spacer(cards, subtaskEdges).run();
}

QHash<QUuid, QPointF> separate(const TaskFlow &flow, const NodeSizeResolver &before, const NodeSizeResolver &after)
{
    std::vector<Card> cards;
    QHash<const FlowNode *, int> index;
    cards.reserve(flow.items().size());
    for (const FlowNode *node : flow.items()) {
        index.insert(node, int(cards.size()));
        cards.push_back({node->id, node->order, {node->posX, node->posY}, before.resolve(*node), after.resolve(*node)});
    }
    std::vector<std::pair<int, int>> edges;
    for (const DependencyEdge *edge : flow.edges()) {
        if (edge->isSubtask() && edge->fromItem() && edge->toItem())
            edges.emplace_back(index.value(edge->fromItem()), index.value(edge->toItem()));
    }
    const std::vector<QPointF> placed = separate(cards, edges);
    QHash<QUuid, QPointF> moved;
    for (std::size_t i = 0; i < cards.size(); ++i) {
        if (placed[i] != cards[i].center)
            moved.insert(cards[i].id, placed[i]);
    }
    return moved;
}

} // namespace fenrow::CardSpacing
