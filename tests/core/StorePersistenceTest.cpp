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

// Builds one flow using every field of every record kind, with optionals
// present on some records and absent on others.
RecordBundle fullBundle(QUuid *flowID)
{
    RecordBundle bundle;
    auto flow = std::make_unique<TaskFlow>();
    flow->id = QUuid::createUuid();
    *flowID = flow->id;
    flow->name = QStringLiteral("Launch ✈");
    flow->order = 3;
    flow->createdAt = berlinTime(2026, 1, 2, 3, 4);
    flow->viewportOffsetX = -120.5;
    flow->viewportOffsetY = 42.25;
    flow->viewportScale = 1.75;
    flow->hasBeenFramed = true;

    auto full = std::make_unique<FlowNode>();
    full->id = QUuid::createUuid();
    full->title = QStringLiteral("Write copy");
    full->isDone = true;
    full->statusRaw = QStringLiteral("paused");
    full->notes = QStringLiteral("Line one\nLine \"two\"");
    full->priorityRaw = QStringLiteral("high");
    full->colorRaw = QStringLiteral("mystery-colour");
    full->startDate = berlinTime(2026, 6, 1);
    full->dueDate = berlinTime(2026, 6, 30);
    full->estimateMinutes = 90;
    full->dayPlanRank = 2;
    full->manualWidth = 240.5;
    full->manualHeight = 120;
    full->checklistData = ChecklistCodec::encode({{QUuid::createUuid(), QStringLiteral("a"), true}});
    full->recurrenceRaw = QStringLiteral("weekly:1");
    full->repeatCount = 4;
    full->completedAt = berlinTime(2026, 6, 5, 17, 45);
    full->isCollapsed = true;
    full->posX = 19999.5;
    full->posY = -20000;
    full->order = 7;
    full->createdAt = berlinTime(2026, 1, 2, 3, 5);
    full->setFlow(flow.get());
    FlowNode *fullNode = flow->items().add(std::move(full));

    auto bare = std::make_unique<FlowNode>();
    bare->id = QUuid::createUuid();
    bare->title = QString();
    bare->createdAt = berlinTime(2026, 1, 2, 3, 6);
    bare->setFlow(flow.get());
    FlowNode *bareNode = flow->items().add(std::move(bare));

    auto typed = std::make_unique<DependencyEdge>();
    typed->id = QUuid::createUuid();
    typed->source = EdgeSource::ai;
    typed->kind = EdgeKind::subtask;
    typed->createdAt = berlinTime(2026, 1, 3);
    typed->setFlow(flow.get());
    typed->setFromItem(fullNode);
    typed->setToItem(bareNode);
    flow->edges().add(std::move(typed));

    auto untyped = std::make_unique<DependencyEdge>();
    untyped->id = QUuid::createUuid();
    untyped->createdAt = berlinTime(2026, 1, 4);
    untyped->setFlow(flow.get());
    untyped->setFromItem(bareNode);
    untyped->setToItem(fullNode);
    flow->edges().add(std::move(untyped));

    auto file = std::make_unique<FlowFile>();
    file->id = QUuid::createUuid();
    file->filename = QStringLiteral("plan.pdf");
    file->contentTypeRaw = QStringLiteral("application/pdf");
    file->byteCount = 5;
    file->data.set(QByteArray("%PDF\0", 5));
    file->thumbnail.set(QByteArray());
    file->isTrashed = true;
    file->posX = 10;
    file->posY = 20;
    file->manualWidth = 300;
    file->manualHeight = 150;
    file->order = 1;
    file->createdAt = berlinTime(2026, 1, 5);
    file->setFlow(flow.get());
    FlowFile *fileRecord = flow->files().add(std::move(file));

    auto link = std::make_unique<FileLink>();
    link->id = QUuid::createUuid();
    link->createdAt = berlinTime(2026, 1, 6);
    link->setFlow(flow.get());
    link->setFile(fileRecord);
    link->setNode(fullNode);
    FileLink *linkRecord = flow->fileLinks().add(std::move(link));
    fileRecord->links().append(linkRecord);
    fullNode->fileLinks().append(linkRecord);
    bundle.flows.push_back(std::move(flow));

    auto archived = std::make_unique<CompletionRecord>();
    archived->id = QUuid::createUuid();
    archived->nodeID = fullNode->id;
    archived->flowID = *flowID;
    archived->flowName = QStringLiteral("Launch ✈");
    archived->title = QStringLiteral("Old task");
    archived->kindRaw = CompletionRecord::archivedKind;
    archived->completedAt = berlinTime(2026, 2, 1, 8, 0);
    archived->cycle = 0;
    archived->payload.set(QByteArray("{\"title\":\"Old task\"}"));
    bundle.completionRecords.push_back(std::move(archived));

    auto repeat = std::make_unique<CompletionRecord>();
    repeat->id = QUuid::createUuid();
    repeat->nodeID = QUuid::createUuid();
    repeat->flowID = QUuid::createUuid();
    repeat->flowName = QStringLiteral("Gone");
    repeat->title = QStringLiteral("Water plants");
    repeat->kindRaw = CompletionRecord::repeatKind;
    repeat->completedAt = berlinTime(2026, 2, 2);
    repeat->cycle = 12;
    bundle.completionRecords.push_back(std::move(repeat));

    auto withPayload = std::make_unique<FlowTemplate>();
    withPayload->id = QUuid::createUuid();
    withPayload->name = QStringLiteral("Weekly review");
    withPayload->createdAt = berlinTime(2026, 3, 1);
    withPayload->payload = QByteArray("{\"nodes\":[]}");
    bundle.templates.push_back(std::move(withPayload));
    auto empty = std::make_unique<FlowTemplate>();
    empty->id = QUuid::createUuid();
    empty->name = QStringLiteral("Empty");
    empty->createdAt = berlinTime(2026, 3, 2);
    bundle.templates.push_back(std::move(empty));
    return bundle;
}

const FlowNode *nodeTitled(const TaskFlow &flow, const QString &title)
{
    for (const FlowNode *node : flow.items())
        if (node->title == title)
            return node;
    return nullptr;
}

TEST(StorePersistence, EveryFieldSurvivesCloseAndReopen)
{
    TestStore store;
    QUuid flowID;
    store->insertRecords(fullBundle(&flowID));
    const QStringList inserted = testing::describe(*store);
    FenrowStore &reopened = store.reopen();
    EXPECT_EQ(testing::describe(reopened), inserted);

    // Values the bundle chose because a reader could quietly change them;
    // both sides of the comparison would then agree.
    const TaskFlow &flow = *reopened.flow(flowID);
    const FlowNode *full = nodeTitled(flow, QStringLiteral("Write copy"));
    ASSERT_NE(full, nullptr);
    EXPECT_EQ(full->colorRaw, QStringLiteral("mystery-colour")) << "unknown raw text is kept as stored";
    EXPECT_EQ(full->recurrenceRaw, QStringLiteral("weekly:1"));
    EXPECT_EQ(full->posX, 19999.5);
    EXPECT_EQ(full->fileLinks(), flow.files()[0]->links()) << "the link is known from both ends";
    for (const DependencyEdge *edge : flow.edges()) {
        if (edge->fromItem() != full) {
            EXPECT_FALSE(edge->kind.has_value()) << "an absent kind stays absent";
        }
    }
    EXPECT_EQ(flow.files()[0]->thumbnail.value(), QByteArray()) << "empty bytes differ from no bytes";
    for (const CompletionRecord *record : reopened.completionRecords())
        EXPECT_EQ(record->payload.isPresent(), record->kindRaw == CompletionRecord::archivedKind);
}

// A row rewritten in place and a row that changes flows (an indexed column)
// are written by different statements.
TEST(StorePersistence, SingleRowEditsReachTheFile)
{
    TestStore store;
    QUuid flowID;
    store->insertRecords(fullBundle(&flowID));
    const TaskFlow &flow = *store->flow(flowID);
    const FlowNode &edited = *nodeTitled(flow, QStringLiteral("Write copy"));
    store->setTitle(edited, QStringLiteral("Rewrite copy"));
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
    QUuid flowID;
    RecordBundle bundle = fullBundle(&flowID);
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
