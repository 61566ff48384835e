#include "TestStore.h"
#include "../cli/QtPrinters.h"

#include "canvas/NodeSizeResolver.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QSignalSpy>
#include <QThread>

#include <sqlite3.h>

namespace fenrow {
namespace {

using testing::berlinTime;
using testing::TestStore;

TEST(StorePersistence, EveryFieldSurvivesCloseAndReopen)
{
    TestStore store;
    RecordBundle bundle = testing::richBundle();
    const QUuid flowID = bundle.flows[0]->id;
    // A null title is no missing one.
    for (FlowNode *node : bundle.flows[0]->items())
        node->title = node->title == QStringLiteral("Sow") ? QString() : node->title;
    store->insertRecords(std::move(bundle));
    const QStringList inserted = testing::describe(*store);
    FenrowStore &reopened = store.reopen();
    EXPECT_EQ(testing::describe(reopened), inserted);

    // Values chosen because a reader could quietly change them; both sides
    // of the comparison would then agree.
    const TaskFlow &flow = *reopened.flow(flowID);
    const QList<const FlowNode *> nodes = flow.orderedItems();
    ASSERT_EQ(nodes.size(), 3);
    EXPECT_EQ(nodes[2]->colorRaw, QStringLiteral("mystery-colour")) << "unknown raw text is kept as stored";
    EXPECT_EQ(nodes[0]->recurrenceRaw, QStringLiteral("weekly"));
    EXPECT_EQ(nodes[0]->posX, -1200.25);
    EXPECT_EQ(
        std::count_if(flow.edges().begin(), flow.edges().end(), [](const DependencyEdge *edge) { return !edge->kind; }),
        1)
        << "an absent kind stays absent";
    for (const FlowFile *file : flow.files()) {
        if (file->isTrashed) {
            EXPECT_EQ(file->thumbnail.value(), QByteArray()) << "empty bytes differ from no bytes";
            EXPECT_EQ(nodes[1]->fileLinks(), file->links()) << "the link is known from both ends";
        }
    }
    for (const CompletionRecord *record : reopened.completionRecords())
        EXPECT_EQ(record->payload.isPresent(), record->kindRaw == CompletionRecord::archivedKind);
}

// A row rewritten in place and a row that changes flows (an indexed column)
// are written by different statements.
TEST(StorePersistence, SingleRowEditsReachTheFile)
{
    TestStore store;
    RecordBundle bundle = testing::richBundle();
    const QUuid flowID = bundle.flows[0]->id;
    store->insertRecords(std::move(bundle));
    const TaskFlow &flow = *store->flow(flowID);
    const FlowNode &edited = *flow.orderedItems()[0];
    // ASCII before and after other text, as text is written in runs.
    store->setTitle(edited, QStringLiteral("Rewrite copy – für 😀 Zoë, then plain"));
    store->setPriority(NodePriority::low, edited);
    store->moveNode(edited, -40, 75.5);
    store->setStatus(NodeStatus::done, edited);
    const TaskFlow *other = store->addFlow(QStringLiteral("Elsewhere"));
    store->moveNodeToFlow(*store->addNode(QStringLiteral("Travels"), *other), flow, NodeSizeResolver());
    ASSERT_EQ(other->items().size(), 0u);

    const QStringList written = testing::describe(*store);
    EXPECT_EQ(testing::describe(store.reopen()), written);
}

TEST(StorePersistence, CompletionTimesAreBackfilledOnceAtOpening)
{
    TestStore store;
    RecordBundle bundle = testing::richBundle();
    const QUuid flowID = bundle.flows[0]->id;
    for (FlowNode *node : bundle.flows[0]->items()) {
        node->isDone = true;
        node->completedAt.reset();
    }
    store->insertRecords(std::move(bundle));

    store.clock.set(berlinTime(2026, 7, 1, 12, 0));
    FenrowStore &reopened = store.reopen();
    EXPECT_FALSE(reopened.hasChanges()) << "the back-fill saves what it changed";
    for (const FlowNode *node : reopened.flow(flowID)->items())
        EXPECT_EQ(node->completedAt, berlinTime(2026, 7, 1, 12, 0));

    // A later opening finds nothing to fill and keeps the first stamp.
    store.clock.set(berlinTime(2026, 8, 1, 12, 0));
    for (const FlowNode *node : store.reopen().flow(flowID)->items())
        EXPECT_EQ(node->completedAt, berlinTime(2026, 7, 1, 12, 0));
}

TEST(StorePersistence, FailedSaveIsKeptForTheNextSave)
{
    TestStore store;
    const TaskFlow *flow = store->addFlow(QStringLiteral("Before"));
    const QUuid id = flow->id;

    // Another connection holding the write lock makes the next save fail.
    sqlite3 *other = nullptr;
    ASSERT_EQ(sqlite3_open(store.path().toUtf8().constData(), &other), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);

    QSignalSpy changed(store.store.get(), &FenrowStore::changed);
    store->renameFlow(*flow, QStringLiteral("After"));
    EXPECT_EQ(changed.count(), 1) << "the operation returns as if it had succeeded";
    EXPECT_EQ(flow->name, QStringLiteral("After"));
    EXPECT_TRUE(store->hasChanges());

    sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(other);

    store->save();
    EXPECT_FALSE(store->hasChanges());
    EXPECT_EQ(store.reopen().flow(id)->name, QStringLiteral("After"));
}

// Enough rows for several statements of many rows and a tail of single ones,
// and enough bytes that the log passes the checkpoint mark.
TEST(StorePersistence, LargeSavesKeepEveryColumnAndAreCheckpointedInTheBackground)
{
    TestStore store;
    constexpr int nodeCount = 1000 + 7;
    RecordBundle bundle;
    auto flow = std::make_unique<TaskFlow>();
    flow->id = QUuid::createUuid();
    flow->name = QStringLiteral("Bulk");
    flow->createdAt = berlinTime(2026, 1, 1, 9, 0);
    const QUuid flowID = flow->id;
    std::vector<FlowNode *> nodes;
    for (int i = 0; i < nodeCount; ++i) {
        auto node = std::make_unique<FlowNode>();
        node->id = QUuid::createUuid();
        node->title = QStringLiteral("Task %1").arg(i);
        node->notes = QString(4000, QChar(u'a' + i % 26));
        node->estimateMinutes = i + 1;
        node->dueDate = i % 2 ? std::optional(berlinTime(2026, 2, 1 + i % 28, 0, 0)) : std::nullopt;
        node->posX = i;
        node->posY = -i;
        node->order = i;
        node->createdAt = berlinTime(2026, 1, 1, 9, 0);
        node->setFlow(flow.get());
        nodes.push_back(flow->items().add(std::move(node)));
    }
    for (int i = 1; i < nodeCount; ++i) {
        auto edge = std::make_unique<DependencyEdge>();
        edge->id = QUuid::createUuid();
        edge->kind = i % 3 ? EdgeKind::dependency : EdgeKind::subtask;
        edge->createdAt = berlinTime(2026, 1, 1, 9, i % 60);
        edge->setFlow(flow.get());
        edge->setFromItem(nodes[std::size_t(i - 1)]);
        edge->setToItem(nodes[std::size_t(i)]);
        flow->edges().add(std::move(edge));
    }
    bundle.flows.push_back(std::move(flow));
    store->insertRecords(std::move(bundle));
    ASSERT_FALSE(store->hasChanges());

    // The log reaches the store file while the store stays open.
    QElapsedTimer waited;
    waited.start();
    while (QFileInfo(store.path()).size() < qint64(nodeCount) * 4000 && waited.elapsed() < 10000)
        QThread::msleep(20);
    EXPECT_GE(QFileInfo(store.path()).size(), qint64(nodeCount) * 4000);

    // Rows that exist take every column of the new values.
    QHash<QUuid, QPointF> moved;
    for (const FlowNode *node : nodes)
        moved.insert(node->id, QPointF(node->posX + 1000, node->posY));
    store->moveNodes(*store->flow(flowID), moved);

    const TaskFlow *reopened = store.reopen().flow(flowID);
    ASSERT_NE(reopened, nullptr);
    ASSERT_EQ(reopened->items().size(), std::size_t(nodeCount));
    ASSERT_EQ(reopened->edges().size(), std::size_t(nodeCount - 1));
    QHash<QString, const FlowNode *> byTitle;
    for (const FlowNode *node : reopened->items())
        byTitle.insert(node->title, node);
    for (int i = 0; i < nodeCount; ++i) {
        const FlowNode *node = byTitle.value(QStringLiteral("Task %1").arg(i));
        ASSERT_NE(node, nullptr) << i;
        EXPECT_EQ(node->notes, QString(4000, QChar(u'a' + i % 26))) << i;
        EXPECT_EQ(node->estimateMinutes, i + 1);
        EXPECT_EQ(node->dueDate, i % 2 ? std::optional(berlinTime(2026, 2, 1 + i % 28, 0, 0)) : std::nullopt);
        EXPECT_EQ(node->posX, i + 1000);
        EXPECT_EQ(node->posY, -i);
        EXPECT_EQ(node->order, i);
    }
    for (const DependencyEdge *edge : reopened->edges()) {
        ASSERT_TRUE(edge->fromItem() && edge->toItem());
        const int to = edge->toItem()->order;
        EXPECT_EQ(edge->fromItem()->order, to - 1);
        EXPECT_EQ(edge->kind, to % 3 ? EdgeKind::dependency : EdgeKind::subtask);
    }
}

} // namespace
} // namespace fenrow
