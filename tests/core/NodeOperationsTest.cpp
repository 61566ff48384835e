#include "TestStore.h"

#include "canvas/FreeSpot.h"
#include "canvas/NodeSizeResolver.h"

#include <QSignalSpy>

namespace fenrow {
namespace {

using testing::berlinTime;
using testing::FlowFixture;

class NodeOperations : public FlowFixture {};

TEST_F(NodeOperations, AddNodeTitlesAndOrders)
{
    const FlowNode &first = add(QStringLiteral("  "));
    EXPECT_EQ(first.title, QStringLiteral("New task"));
    EXPECT_EQ(first.order, 0);
    EXPECT_EQ(first.statusRaw, QStringLiteral("pending"));
    EXPECT_EQ(first.posX, 0);
    EXPECT_EQ(store->node(first.id), &first);

    store->deleteNode(first);
    RecordBundle bundle;
    auto seeded = std::make_unique<TaskFlow>();
    seeded->id = QUuid::createUuid();
    seeded->name = QStringLiteral("Seeded");
    auto high = std::make_unique<FlowNode>();
    high->id = QUuid::createUuid();
    high->order = 7;
    high->setFlow(seeded.get());
    seeded->items().add(std::move(high));
    const QUuid seededID = seeded->id;
    bundle.flows.push_back(std::move(seeded));
    store->insertRecords(std::move(bundle));
    EXPECT_EQ(store->addNode(QStringLiteral(" Next\n"), *store->flow(seededID))->order, 8);
}

TEST_F(NodeOperations, SettersTrimClampAndCompareBeforeWriting)
{
    const FlowNode &node = add(QStringLiteral("Task"));
    QSignalSpy changed(store.store.get(), &FenrowStore::changed);

    store->moveNode(node, 30000, -30000);
    EXPECT_EQ(node.posX, 20000);
    EXPECT_EQ(node.posY, -20000);
    store->moveNode(node, 20000, -20000);
    EXPECT_EQ(changed.count(), 2) << "a move always saves, even to the same place";

    changed.clear();
    store->setTitle(node, QStringLiteral("   "));
    store->setTitle(node, QStringLiteral(" Task "));
    store->setNotes(node, QStringLiteral("\n"));
    store->setPriority(NodePriority::none, node);
    store->setColor(NodeColor::none, node);
    store->setEstimate(std::nullopt, node);
    store->setEstimate(0, node);
    store->setManualSize(node, 300, std::nullopt);
    store->setDueDate(std::nullopt, node);
    EXPECT_EQ(changed.count(), 0) << "none of these changes anything";

    store->setEstimate(200000, node);
    EXPECT_EQ(node.estimateMinutes, 124800);
    store->setEstimate(-5, node);
    EXPECT_FALSE(node.estimateMinutes);
    store->setManualSize(node, 1000, 10);
    EXPECT_EQ(node.manualWidth, 480);
    EXPECT_EQ(node.manualHeight, 90);
    store->setManualSize(node, std::nullopt, std::nullopt);
    EXPECT_FALSE(node.hasManualSize());
    store->setPriority(NodePriority::high, node);
    EXPECT_EQ(node.priorityRaw, QStringLiteral("high"));
    EXPECT_EQ(changed.count(), 5);
}

TEST_F(NodeOperations, DatesAreDaysAndAStartChangeLeavesTodaysPlan)
{
    const FlowNode &node = add(QStringLiteral("Task"));
    store->setStartDate(berlinTime(2026, 6, 12, 15, 0), node);
    EXPECT_EQ(node.startDate, berlinTime(2026, 6, 12));
    store->setDayPlanRank(3, node);

    QSignalSpy changed(store.store.get(), &FenrowStore::changed);
    store->setStartDate(berlinTime(2026, 6, 12, 22, 30), node);
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(node.dayPlanRank, 3);

    store->setStartDate(berlinTime(2026, 6, 11, 8, 0), node);
    EXPECT_FALSE(node.dayPlanRank) << "moving the start day earlier also leaves the plan";

    store->setDayPlanRank(2, node);
    store->setDueDate(berlinTime(2026, 6, 20, 23, 59), node);
    EXPECT_EQ(node.dueDate, berlinTime(2026, 6, 20));
    EXPECT_EQ(node.dayPlanRank, 2);
}

TEST_F(NodeOperations, ChecklistEditsDropBlanksAndSkipNoOps)
{
    const FlowNode &node = add(QStringLiteral("Task"));
    store->addChecklistEntry(QStringLiteral("  "), node);
    EXPECT_EQ(node.checklistData, QString());
    store->addChecklistEntry(QStringLiteral(" Buy paint "), node);
    store->addChecklistEntry(QStringLiteral("Sand"), node);
    const Checklist entries = node.checklist();
    ASSERT_EQ(entries.size(), 2);
    EXPECT_EQ(entries[0].title, QStringLiteral("Buy paint"));

    QSignalSpy changed(store.store.get(), &FenrowStore::changed);
    store->toggleChecklistEntry(QUuid::createUuid(), node);
    store->renameChecklistEntry(entries[1].id, QStringLiteral(" Sand "), node);
    EXPECT_EQ(changed.count(), 0);

    store->toggleChecklistEntry(entries[1].id, node);
    EXPECT_TRUE(node.checklist()[1].isDone);
    EXPECT_FALSE(node.isDone) << "a checklist completes nothing";
    store->renameChecklistEntry(entries[0].id, QStringLiteral("   "), node);
    ASSERT_EQ(node.checklist().size(), 1);
    EXPECT_EQ(node.checklist()[0].id, entries[1].id);
    store->removeChecklistEntry(entries[1].id, node);
    EXPECT_EQ(node.checklistData, QString()) << "an emptied checklist is stored as blank";
}

TEST_F(NodeOperations, FreeSpotSearchesSidewaysOrDownward)
{
    const NodeSizeResolver sizes;
    EXPECT_EQ(FreeSpot::find(*flow, {5, 5}, FreeSpot::Direction::sideways, sizes), QPointF(5, 5));

    const FlowNode &blocker = add(QStringLiteral("Blocker"));
    store->moveNode(blocker, 0, 0);
    // Touching counts: a card exactly 210 to the right still collides.
    EXPECT_EQ(FreeSpot::find(*flow, {210, 0}, FreeSpot::Direction::sideways, sizes), QPointF(210 + 105 + 137, 0));
    EXPECT_EQ(FreeSpot::find(*flow, {0, 10}, FreeSpot::Direction::downward, sizes), QPointF(0, 10 + 60 + 76));
    EXPECT_EQ(FreeSpot::find(*flow, {211, 0}, FreeSpot::Direction::sideways, sizes), QPointF(211, 0));

    // A wall of cards: after 64 steps the last centre is used anyway.
    for (int i = 1; i < 80; ++i)
        store->moveNode(add(QString::number(i)), i * 242.0, 0);
    const QPointF last = FreeSpot::find(*flow, {0, 0}, FreeSpot::Direction::sideways, sizes);
    EXPECT_EQ(last, QPointF(64 * 242.0, 0));
}

} // namespace
} // namespace fenrow
