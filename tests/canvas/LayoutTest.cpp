#include "CanvasDriver.h"

#include "canvas/CardSpacing.h"
#include "canvas/SubtaskArrangement.h"

#include <QRandomGenerator>

namespace fenrow {
namespace {

using testing::CanvasDriver;
using Node = SubtaskArrangement::Node;

constexpr NodeSize card{210, 120};

bool overlap(QPointF a, NodeSize sa, QPointF b, NodeSize sb)
{
    return std::abs(a.x() - b.x()) < (sa.width + sb.width) / 2 && std::abs(a.y() - b.y()) < (sa.height + sb.height) / 2;
}

TEST(SubtaskArrangement, ChildrenStackInOrderCentredOnTheirParentLevelByLevel)
{
    // Edges in another order than `order`: the column follows `order`.
    const std::vector<Node> three{{{}, 0, {100, 50}, card}, {{}, 3, {}, card}, {{}, 1, {}, card}, {{}, 2, {}, card}};
    const auto placed = SubtaskArrangement::arrange(0, three, {{0, 1}, {0, 2}, {0, 3}});
    ASSERT_EQ(placed.size(), 3);
    EXPECT_EQ(placed.value(2), QPointF(370, -100));
    EXPECT_EQ(placed.value(3), QPointF(370, 50)) << "the middle one is level with its parent";
    EXPECT_EQ(placed.value(1), QPointF(370, 200));

    // A child with subtasks of its own takes the room of its block, and the
    // next level starts after the widest card of this one.
    const std::vector<Node> deep{{{}, 0, {0, 0}, card},
                                 {{}, 1, {}, {330, 180}},
                                 {{}, 2, {}, card},
                                 {{}, 3, {}, card},
                                 {{}, 4, {}, card},
                                 {{}, 5, {500, 500}, card}};
    const auto tree = SubtaskArrangement::arrange(0, deep, {{0, 1}, {0, 2}, {1, 3}, {1, 4}, {2, 4}});
    EXPECT_FALSE(tree.contains(5)) << "cards outside the subtree stay";
    EXPECT_EQ(tree.value(1).x(), 105 + 60 + 165);
    EXPECT_EQ(tree.value(2).x(), 105 + 60 + 105) << "left edges line up";
    EXPECT_EQ(tree.value(3).x(), 105 + 60 + 330 + 60 + 105);
    // Block of 1: its two subtasks, 120 + 30 + 120; then 30, then 2.
    EXPECT_EQ(tree.value(1).y(), -(270 + 30 + 120) / 2.0 + 135);
    EXPECT_EQ(tree.value(2).y(), tree.value(1).y() + 135 + 30 + 60);
    EXPECT_EQ(tree.value(3).y(), tree.value(1).y() - 75);
    EXPECT_EQ(tree.value(4).y(), tree.value(1).y() + 75) << "4 is placed once, under its first parent";
    std::vector<QPointF> centers{{0, 0}};
    for (int i = 1; i <= 4; ++i)
        centers.push_back(tree.value(i));
    for (int i = 0; i <= 4; ++i) {
        for (int j = i + 1; j <= 4; ++j)
            EXPECT_FALSE(overlap(centers[i], deep[i].size, centers[j], deep[j].size)) << i << " and " << j;
    }

    const std::vector<Node> edge{{{}, 0, {19900, 0}, card}, {{}, 1, {}, card}};
    EXPECT_EQ(SubtaskArrangement::arrange(0, edge, {{0, 1}}).value(1).x(), 20000) << "held to the canvas";
}

TEST(CardSpacing, GrowingCardsPushTheirNeighboursOnAndKeepTheirGaps)
{
    using CardSpacing::Card;
    const NodeSize small{180, 90};
    const NodeSize large{330, 180};
    // A row with gaps of 32: the cards move right, the gaps stay.
    const std::vector<Card> row{{{}, 0, {0, 0}, small, large}, {{}, 1, {212, 0}, small, large}, {{}, 2, {424, 0}, small, large}};
    EXPECT_EQ(CardSpacing::separate(row, {}), (std::vector<QPointF>{{0, 0}, {362, 0}, {724, 0}}));

    // A column of subtasks grows downwards, in order, keeping 30 between.
    const std::vector<Card> column{{{}, 0, {0, 0}, card, card},
                                   {{}, 1, {270, -150}, card, large},
                                   {{}, 2, {270, 0}, card, large},
                                   {{}, 3, {270, 150}, card, large}};
    EXPECT_EQ(CardSpacing::separate(column, {{0, 1}, {0, 2}, {0, 3}}),
              (std::vector<QPointF>{{0, 0}, {270, -150}, {270, 60}, {270, 270}}));

    // Cards that overlapped already are left alone; shrinking moves nothing.
    const std::vector<Card> stacked{{{}, 0, {0, 0}, card, large}, {{}, 1, {50, 20}, card, large}};
    EXPECT_EQ(CardSpacing::separate(stacked, {}), (std::vector<QPointF>{{0, 0}, {50, 20}}));
    const std::vector<Card> shrinking{{{}, 0, {0, 0}, large, small}, {{}, 1, {400, 0}, large, small}};
    EXPECT_EQ(CardSpacing::separate(shrinking, {}), (std::vector<QPointF>{{0, 0}, {400, 0}}));

    // A card pushed into one that neither grew nor moved moves that one on
    // in turn.
    const std::vector<Card> chain{{{}, 0, {40, 120}, small, large},
                                  {{}, 1, {320, 120}, small, card},
                                  {{}, 2, {240, 210}, small, small},
                                  {{}, 3, {440, 300}, card, small}};
    EXPECT_EQ(CardSpacing::separate(chain, {}), (std::vector<QPointF>{{40, 120}, {320, 120}, {315, 225}, {500, 300}}));

    // s1 is pushed below its sibling s2 by a card above it; s2 follows, so
    // the siblings do not swap.
    const std::vector<Card> siblings{{{}, 0, {0, 0}, card, large},
                                     {{}, 1, {0, 140}, card, card},
                                     {{}, 2, {600, 160}, card, card},
                                     {{}, 3, {-300, 150}, card, card}};
    const std::vector<QPointF> kept = CardSpacing::separate(siblings, {{3, 1}, {3, 2}});
    EXPECT_EQ(kept[1], QPointF(0, 170)) << "below the grown card by the 20 it had";
    EXPECT_EQ(kept[2], QPointF(600, 170));
}

TEST(CardSpacing, NoPairThatStoodApartOverlapsAndSiblingsNeverSwap)
{
    using CardSpacing::Card;
    QRandomGenerator random(7);
    const NodeSize tiers[] = {{180, 90}, {210, 120}, {270, 150}, {330, 180}};
    for (int trial = 0; trial < 20; ++trial) {
        // Default cards on a loose grid, jittered, some overlapping already.
        std::vector<Card> cards;
        for (int i = 0; i < 60; ++i) {
            const QPointF at(double(i % 8) * 240 + random.bounded(40), double(i / 8) * 150 + random.bounded(40));
            cards.push_back({{}, i, at, card, tiers[random.bounded(4)]});
        }
        std::vector<std::pair<int, int>> edges;
        for (int child = 1; child < 60; child += 2)
            edges.emplace_back(random.bounded(child), child);
        const std::vector<QPointF> placed = CardSpacing::separate(cards, edges);
        for (std::size_t i = 0; i < cards.size(); ++i) {
            for (std::size_t j = i + 1; j < cards.size(); ++j) {
                if (!overlap(cards[i].center, cards[i].before, cards[j].center, cards[j].before)) {
                    ASSERT_FALSE(overlap(placed[i], cards[i].after, placed[j], cards[j].after))
                        << "trial " << trial << ": " << i << " and " << j;
                }
            }
        }
        for (const auto &[parent, a] : edges) {
            for (const auto &[other, b] : edges) {
                if (parent != other || a == b)
                    continue;
                if (cards[std::size_t(a)].center.y() < cards[std::size_t(b)].center.y()) {
                    ASSERT_LE(placed[std::size_t(a)].y(), placed[std::size_t(b)].y()) << "trial " << trial;
                }
                if (cards[std::size_t(a)].center.x() < cards[std::size_t(b)].center.x()) {
                    ASSERT_LE(placed[std::size_t(a)].x(), placed[std::size_t(b)].x()) << "trial " << trial;
                }
            }
        }
    }
}

TEST_F(CanvasDriver, SizingByEstimateSpacesTheCardsOutsideTheUndoHistory)
{
    const FlowNode &a = place("a", 100, 100);
    const FlowNode &b = place("b", 342, 100);
    store->setEstimate(600, a);
    store->setEstimate(600, b);
    open();
    EXPECT_EQ(position("b"), QPointF(342, 100)) << "at the default size they stand 32 apart";

    preferences.setSizeByEstimate(true);
    EXPECT_TRUE(interaction.sizeResolver().sizesByEstimate);
    EXPECT_EQ(position("b"), QPointF(100 + 330 + 32, 100));
    EXPECT_TRUE(undoNames().isEmpty());
    preferences.setSizeByEstimate(false);
    EXPECT_EQ(position("b"), QPointF(462, 100)) << "smaller cards leave the cards where they are";

    const FlowNode *first = editor.addSubtask(a.id);
    const FlowNode *second = editor.addSubtask(a.id);
    ASSERT_TRUE(first && second);
    EXPECT_EQ(QPointF(first->posX, first->posY), QPointF(370, 25));
    EXPECT_EQ(QPointF(second->posX, second->posY), QPointF(370, 175));
    EXPECT_EQ(interaction.editingItemID(), second->id);
    EXPECT_EQ(undoNames(), (QStringList{"Add subtask", "Add subtask"}));
    ASSERT_TRUE(history.undoFlow(flow->id));
    EXPECT_EQ(QPointF(first->posX, first->posY), QPointF(370, 100)) << "the first subtask goes back beside its parent";
}

} // namespace
} // namespace fenrow
