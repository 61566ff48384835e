#include "CardSpacing.h"

#include "CanvasBounds.h"
#include "NodeSizeResolver.h"
#include "domain/TaskFlow.h"

#include <algorithm>
#include <cmath>
#include <limits>
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
    explicit Spacer(const std::vector<Card> &cards) : m_cards(cards), m_positions(cards.size())
    {
        for (std::size_t i = 0; i < cards.size(); ++i)
            m_positions[i] = cards[i].center;
    }

    // `subtaskEdges()` is asked for only when some card has to move.
    template <typename Edges>
    std::vector<QPointF> run(Edges subtaskEdges)
    {
        if (!anyCardGrew())
            return m_positions;
        bool overlapping = anyNewOverlap();
        if (overlapping)
            linkSiblings(subtaskEdges());
        for (int round = 0; round < 3 && overlapping; ++round) {
            sweep(Axis::x, false);
            sweep(Axis::y, false);
            overlapping = anyNewOverlap();
        }
        if (overlapping)
            sweep(Axis::y, true);
        for (QPointF &point : m_positions)
            point = {CanvasBounds::clampCoordinate(point.x()), CanvasBounds::clampCoordinate(point.y())};
        return m_positions;
    }

private:
    const Card &card(int i) const { return m_cards[std::size_t(i)]; }

    static bool grew(const Card &c) { return c.after.width > c.before.width || c.after.height > c.before.height; }

    bool anyCardGrew() const { return std::any_of(m_cards.begin(), m_cards.end(), grew); }

    void linkSiblings(const std::vector<std::pair<int, int>> &subtaskEdges)
    {
        const std::size_t count = m_cards.size();
        m_siblings.assign(count, {});
        std::vector<std::vector<int>> children(count);
        for (const auto &[parent, child] : subtaskEdges) {
            if (parent >= 0 && child >= 0 && std::size_t(parent) < count && std::size_t(child) < count)
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

    // A pair that neither grew nor moved overlaps now only if it did
    // before, so only cards that did either are looked at, each against
    // the cards in its own and the neighbouring cells of a grid whose
    // cells are wider and taller than any two half cards together.
    bool anyNewOverlap() const
    {
        const std::size_t count = m_cards.size();
        std::vector<int> changed;
        double widest = 0;
        double tallest = 0;
        double minX = std::numeric_limits<double>::max();
        double minY = minX;
        double maxX = std::numeric_limits<double>::lowest();
        double maxY = maxX;
        for (std::size_t i = 0; i < count; ++i) {
            const QPointF at = m_positions[i];
            if (grew(m_cards[i]) || at != m_cards[i].center)
                changed.push_back(int(i));
            widest = std::max(widest, m_cards[i].after.width);
            tallest = std::max(tallest, m_cards[i].after.height);
            minX = std::min(minX, at.x());
            maxX = std::max(maxX, at.x());
            minY = std::min(minY, at.y());
            maxY = std::max(maxY, at.y());
        }
        if (changed.empty())
            return false;

        // About as many cells as cards; the margin of 1 absorbs rounding.
        const double side = std::ceil(std::sqrt(double(count)));
        const double cellWidth = std::max(widest + 1, (maxX - minX) / side);
        const double cellHeight = std::max(tallest + 1, (maxY - minY) / side);
        const int columns = int((maxX - minX) / cellWidth) + 1;
        const int rows = int((maxY - minY) / cellHeight) + 1;
        const auto column = [&](int i) { return int((m_positions[std::size_t(i)].x() - minX) / cellWidth); };
        const auto row = [&](int i) { return int((m_positions[std::size_t(i)].y() - minY) / cellHeight); };
        // The cards by cell, each cell's run starting at `starts[cell]`.
        std::vector<int> starts(std::size_t(columns) * std::size_t(rows) + 1, 0);
        std::vector<int> cellOf(count);
        for (std::size_t i = 0; i < count; ++i) {
            cellOf[i] = row(int(i)) * columns + column(int(i));
            ++starts[std::size_t(cellOf[i]) + 1];
        }
        for (std::size_t c = 1; c < starts.size(); ++c)
            starts[c] += starts[c - 1];
        std::vector<int> byCell(count);
        std::vector<int> filled(starts.begin(), starts.end() - 1);
        for (std::size_t i = 0; i < count; ++i)
            byCell[std::size_t(filled[std::size_t(cellOf[i])]++)] = int(i);

        for (int i : changed) {
            const int x = column(i);
            const int y = row(i);
            for (int r = std::max(y - 1, 0); r <= std::min(y + 1, rows - 1); ++r) {
                for (int c = std::max(x - 1, 0); c <= std::min(x + 1, columns - 1); ++c) {
                    const std::size_t cell = std::size_t(r * columns + c);
                    for (int k = starts[cell]; k < starts[cell + 1]; ++k) {
                        const int j = byCell[std::size_t(k)];
                        if (j != i && overlapNow(i, j) && !exempt(i, j))
                            return true;
                    }
                }
            }
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
    return Spacer(cards).run([&] { return subtaskEdges; });
}

QHash<QUuid, QPointF> separate(const TaskFlow &flow, const NodeSizeResolver &before, const NodeSizeResolver &after)
{
    std::vector<Card> cards;
    cards.reserve(flow.items().size());
    for (const FlowNode *node : flow.items())
        cards.push_back({node->id, node->order, {node->posX, node->posY}, before.resolve(*node), after.resolve(*node)});
    // The subtask edges matter only when cards move, which they seldom do.
    const auto edges = [&] {
        QHash<const FlowNode *, int> index;
        index.reserve(flow.items().size());
        for (const FlowNode *node : flow.items())
            index.insert(node, int(index.size()));
        std::vector<std::pair<int, int>> subtasks;
        for (const DependencyEdge *edge : flow.edges()) {
            if (edge->isSubtask() && edge->fromItem() && edge->toItem())
                subtasks.emplace_back(index.value(edge->fromItem()), index.value(edge->toItem()));
        }
        return subtasks;
    };
    const std::vector<QPointF> placed = Spacer(cards).run(edges);
    QHash<QUuid, QPointF> moved;
    for (std::size_t i = 0; i < cards.size(); ++i) {
        if (placed[i] != cards[i].center)
            moved.insert(cards[i].id, placed[i]);
    }
    return moved;
}

} // namespace fenrow::CardSpacing
