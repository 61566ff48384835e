#include "TestStore.h"

#include <QSignalSpy>

namespace fenrow {
namespace {

using testing::berlinTime;
using testing::TestStore;

QStringList names(const FenrowStore &store)
{
    QStringList result;
    for (const TaskFlow *flow : store.flows())
        result << flow->name;
    return result;
}

std::unique_ptr<CompletionRecord> record(const QUuid &flowID, const QString &flowName, const QString &kind)
{
    auto result = std::make_unique<CompletionRecord>();
    result->id = QUuid::createUuid();
    result->nodeID = QUuid::createUuid();
    result->flowID = flowID;
    result->flowName = flowName;
    result->title = QStringLiteral("Task");
    result->kindRaw = kind;
    result->completedAt = berlinTime(2026, 5, 1);
    if (kind == CompletionRecord::archivedKind)
        result->payload.set(QByteArray("{}"));
    return result;
}

TEST(StoreFlows, AddFlowTrimsNamesAndAppendsToTheOrder)
{
    TestStore store;
    const TaskFlow *first = store->addFlow(QStringLiteral("   \n"));
    EXPECT_EQ(first->name, QStringLiteral("Untitled flow"));
    EXPECT_EQ(first->order, 0);
    EXPECT_EQ(first->createdAt, store.clock.now());
    EXPECT_EQ(first->viewportScale, 1);
    EXPECT_FALSE(first->hasBeenFramed);

    const TaskFlow *second = store->addFlow(QStringLiteral("  Garden \t"));
    EXPECT_EQ(second->name, QStringLiteral("Garden"));
    EXPECT_EQ(second->order, 1);

    // The next order follows the highest, not the count.
    store->reorderFlows({second, first});
    RecordBundle gap;
    auto far = std::make_unique<TaskFlow>();
    far->id = QUuid::createUuid();
    far->name = QStringLiteral("Far");
    far->order = 7;
    far->createdAt = store.clock.now();
    gap.flows.push_back(std::move(far));
    store->insertRecords(std::move(gap));
    EXPECT_EQ(store->addFlow(QStringLiteral("Next"))->order, 8);

    EXPECT_EQ(names(store.reopen()), (QStringList{"Garden", "Untitled flow", "Far", "Next"}));
}

TEST(StoreFlows, EqualOrdersListOlderFirst)
{
    TestStore store;
    RecordBundle bundle;
    for (int i = 0; i < 3; ++i) {
        auto flow = std::make_unique<TaskFlow>();
        flow->id = QUuid::createUuid();
        flow->name = QStringLiteral("F%1").arg(i);
        flow->order = 1;
        flow->createdAt = berlinTime(2026, 1, 10 - i);
        bundle.flows.push_back(std::move(flow));
    }
    store->insertRecords(std::move(bundle));
    EXPECT_EQ(names(*store), (QStringList{"F2", "F1", "F0"}));
    EXPECT_EQ(names(store.reopen()), (QStringList{"F2", "F1", "F0"}));
}

TEST(StoreFlows, RenameUpdatesTheArchiveCopiesOfThatFlowOnly)
{
    TestStore store;
    const TaskFlow *home = store->addFlow(QStringLiteral("Home"));
    const TaskFlow *twin = store->addFlow(QStringLiteral("Home"));
    RecordBundle records;
    records.completionRecords.push_back(record(home->id, QStringLiteral("Home"), CompletionRecord::archivedKind));
    records.completionRecords.push_back(record(twin->id, QStringLiteral("Home"), CompletionRecord::repeatKind));
    store->insertRecords(std::move(records));

    store->renameFlow(*home, QStringLiteral(" House "));
    EXPECT_EQ(home->name, QStringLiteral("House"));
    store->renameFlow(*twin, QString());
    EXPECT_EQ(twin->name, QStringLiteral("Untitled flow")) << "a blank rename does not keep the old name";

    FenrowStore &reopened = store.reopen();
    for (const CompletionRecord *entry : reopened.completionRecords()) {
        if (entry->kindRaw == CompletionRecord::archivedKind)
            EXPECT_EQ(entry->flowName, QStringLiteral("House"));
        else
            EXPECT_EQ(entry->flowName, QStringLiteral("Untitled flow"));
    }
}

TEST(StoreFlows, DeleteFlowTakesItsContentsAndRecordsAlong)
{
    TestStore store;
    const TaskFlow *kept = store->addFlow(QStringLiteral("Kept"));
    const QUuid keptID = kept->id;
    const TaskFlow *doomed = store->addFlow(QStringLiteral("Doomed"));
    const QUuid doomedID = doomed->id;

    RecordBundle bundle;
    bundle.completionRecords.push_back(record(doomedID, QStringLiteral("Doomed"), CompletionRecord::archivedKind));
    bundle.completionRecords.push_back(record(doomedID, QStringLiteral("Doomed"), CompletionRecord::repeatKind));
    bundle.completionRecords.push_back(record(keptID, QStringLiteral("Kept"), CompletionRecord::repeatKind));
    auto full = std::make_unique<TaskFlow>();
    full->id = QUuid::createUuid();
    full->name = QStringLiteral("Full");
    full->createdAt = store.clock.now();
    auto node = std::make_unique<FlowNode>();
    node->id = QUuid::createUuid();
    node->setFlow(full.get());
    const QUuid nodeID = node->id;
    FlowNode *nodeRecord = full->items().add(std::move(node));
    auto edge = std::make_unique<DependencyEdge>();
    edge->id = QUuid::createUuid();
    edge->setFlow(full.get());
    edge->setFromItem(nodeRecord);
    edge->setToItem(nodeRecord);
    full->edges().add(std::move(edge));
    auto file = std::make_unique<FlowFile>();
    file->id = QUuid::createUuid();
    file->data.set(QByteArray(1000, 'x'));
    file->setFlow(full.get());
    full->files().add(std::move(file));
    const QUuid fullID = full->id;
    bundle.flows.push_back(std::move(full));
    store->insertRecords(std::move(bundle));
    ASSERT_NE(store->node(nodeID), nullptr);

    QSignalSpy changed(store.store.get(), &FenrowStore::changed);
    store->deleteFlow(*store->flow(doomedID));
    store->deleteFlow(*store->flow(fullID));
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(store->flow(doomedID), nullptr);
    EXPECT_EQ(store->node(nodeID), nullptr);
    EXPECT_EQ(names(*store), QStringList{"Kept"});
    ASSERT_EQ(store->completionRecords().size(), 1u);
    EXPECT_EQ(store->completionRecords()[0]->flowID, keptID);

    FenrowStore &reopened = store.reopen();
    EXPECT_EQ(names(reopened), QStringList{"Kept"});
    EXPECT_EQ(reopened.completionRecords().size(), 1u);
    EXPECT_EQ(reopened.node(nodeID), nullptr);
}

TEST(StoreFlows, ReorderGivesListedFlowsTheirPositions)
{
    TestStore store;
    const TaskFlow *a = store->addFlow(QStringLiteral("A"));
    store.clock.advanceSeconds(60);
    const TaskFlow *b = store->addFlow(QStringLiteral("B"));
    store.clock.advanceSeconds(60);
    const TaskFlow *c = store->addFlow(QStringLiteral("C"));

    store->reorderFlows({c, a, b});
    EXPECT_EQ(names(*store), (QStringList{"C", "A", "B"}));

    // Flows left out keep their numbers: C stays at 0 and ties with B,
    // which is older, so B comes first.
    store->reorderFlows({b});
    EXPECT_EQ(c->order, 0);
    EXPECT_EQ(names(*store), (QStringList{"B", "C", "A"}));
    EXPECT_EQ(names(store.reopen()), (QStringList{"B", "C", "A"}));
}

TEST(StoreFlows, OneSignalPerChangeAndNoneForNoOps)
{
    TestStore store;
    QSignalSpy changed(store.store.get(), &FenrowStore::changed);
    const TaskFlow *a = store->addFlow(QStringLiteral("A"));
    const TaskFlow *b = store->addFlow(QStringLiteral("B"));
    EXPECT_EQ(changed.count(), 2);
    EXPECT_FALSE(store->hasChanges()) << "each operation saves before it returns";

    changed.clear();
    store->renameFlow(*a, QStringLiteral(" A "));
    store->reorderFlows({a, b});
    store->reorderFlows({});
    store->insertRecords({});
    store->save();
    EXPECT_EQ(changed.count(), 0);
    EXPECT_FALSE(store->hasChanges());

    store->reorderFlows({b, a});
    EXPECT_EQ(changed.count(), 1);
}

} // namespace
} // namespace fenrow
