#include "TestStore.h"

#include "domain/ArchiveDays.h"
#include "domain/ArchivedTask.h"
#include "domain/FenrowHistory.h"
#include "domain/Readiness.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace fenrow {
namespace {

using testing::berlinTime;
using testing::FlowFixture;

class Archive : public FlowFixture {
protected:
    const CompletionRecord *archivedRecordOf(const QUuid &nodeID) const
    {
        for (const CompletionRecord *record : store->completionRecords())
            if (record->nodeID == nodeID && record->kindRaw == CompletionRecord::archivedKind)
                return record;
        return nullptr;
    }
};

TEST(ArchivedTaskPayload, KeysInFieldOrderAndDatesFromTheReferenceDate)
{
    FlowNode node;
    node.title = QStringLiteral("Ship \"it\"");
    node.startDate = QDateTime(QDate(2001, 1, 2), QTime(0, 0), Qt::UTC);
    node.estimateMinutes = 45;
    node.posX = 1.5;
    node.repeatCount = 2;
    node.createdAt = QDateTime(QDate(2001, 1, 1), QTime(0, 1), Qt::UTC);
    const QByteArray json = ArchivedTask::of(node).encode();
    EXPECT_TRUE(json.startsWith(R"({"title":"Ship \"it\"","notes":"","statusRaw":"pending","priorityRaw":"none",)"))
        << json.toStdString();
    EXPECT_TRUE(json.contains(R"("startDate":86400,)")) << json.toStdString();
    EXPECT_TRUE(json.endsWith(R"("repeatCount":2,"createdAt":60})")) << json.toStdString();
    EXPECT_FALSE(json.contains("dueDate"));

    const auto decoded = ArchivedTask::decode(json);
    ASSERT_TRUE(decoded);
    EXPECT_EQ(*decoded, ArchivedTask::of(node));
    EXPECT_FALSE(ArchivedTask::decode(R"({"title":"no other fields"})"));
    EXPECT_FALSE(ArchivedTask::decode("not json"));
}

TEST_F(Archive, ArchivingFreesDependentsAndRestoringBringsTheTaskBackDone)
{
    addAll("abc");
    link("a", "b");
    link("b", "c", EdgeKind::subtask);
    store->setNotes((*this)["a"], QStringLiteral("keep me"));
    store->setDueDate(berlinTime(2026, 6, 20), (*this)["a"]);
    done("a");
    const QUuid aID = (*this)["a"].id;

    FenrowHistory history(*store);
    history.recordAction(QStringLiteral("Move"), *flow, [&] { store->moveNode((*this)["b"], 5, 5); });
    ASSERT_TRUE(history.canUndo(flow->id));

    store->archiveDone(*flow);
    EXPECT_EQ(store->node(aID), nullptr);
    EXPECT_EQ(flow->edges().size(), 1u) << "only the archived task's edges go";
    EXPECT_FALSE(history.canUndo(flow->id)) << "archiving clears the flow's undo";
    QStringList ready;
    for (const ReadyTask &task : Readiness::readyTasks(store->flows(), store.clock.now(), store->calendar()))
        ready << task.node->title;
    EXPECT_EQ(ready, QStringList{"c"}) << "b lost its prerequisite; c is its open subtask";

    const CompletionRecord *record = archivedRecordOf(aID);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->completedAt, store.clock.now());
    EXPECT_EQ(record->flowName, QStringLiteral("Test"));
    ASSERT_TRUE(store->canRestore(*record));

    const FlowNode *restored = store->restoreRecord(*record);
    ASSERT_NE(restored, nullptr);
    EXPECT_EQ(restored->id, aID) << "the old id is free again";
    EXPECT_TRUE(restored->isDone);
    EXPECT_EQ(restored->notes, QStringLiteral("keep me"));
    EXPECT_EQ(restored->dueDate, berlinTime(2026, 6, 20));
    EXPECT_GT(restored->order, (*this)["c"].order);
    EXPECT_EQ(flow->edges().size(), 1u) << "a restored task has no edges";
    EXPECT_EQ(archivedRecordOf(aID), nullptr) << "restoring twice is impossible";
}

TEST_F(Archive, RecordsListNewestFirstWithoutStaleRounds)
{
    addAll("rx");
    store->setRecurrence(NodeRecurrence{RecurrenceRule::daily, 1, std::nullopt}, (*this)["r"]);
    for (int round = 0; round < 3; ++round) {
        store.clock.advanceSeconds(3600);
        store->setStatus(NodeStatus::done, (*this)["r"]);
    }
    store.clock.advanceSeconds(3600);
    done("x");
    store->archiveDone(*flow);
    // Take one round back as undo would.
    const_cast<FlowNode &>((*this)["r"]).repeatCount = 2;

    QList<qint64> cycles;
    QStringList kinds;
    for (const CompletionRecord *record : store->archiveRecords()) {
        kinds << record->kindRaw;
        cycles << record->cycle;
    }
    EXPECT_EQ(kinds, (QStringList{"archived", "repeat", "repeat"}));
    EXPECT_EQ(cycles, (QList<qint64>{0, 2, 1}));

    // A record whose flow is gone can be listed but not restored.
    const CompletionRecord *archived = store->archiveRecords().first();
    const_cast<CompletionRecord *>(archived)->flowID = QUuid::createUuid();
    EXPECT_FALSE(store->canRestore(*archived));
    EXPECT_FALSE(store->canRestore(*store->archiveRecords()[1])) << "a repeat is never restored";
    store->deleteRecord(*archived);
    EXPECT_EQ(store->archiveRecords().size(), 2);
}

TEST_F(Archive, DaysAndSearch)
{
    addAll("abc");
    store->renameFlow(*flow, QStringLiteral("Café"));
    store->setTitle((*this)["a"], QStringLiteral("Résumé draft"));
    store.clock.set(berlinTime(2026, 6, 8, 23, 30));
    done("c");
    store.clock.set(berlinTime(2026, 6, 9, 0, 30));
    done("b");
    store.clock.set(berlinTime(2026, 6, 10, 8, 0));
    done("a");
    store->archiveDone(*flow);

    const QList<const CompletionRecord *> records = store->archiveRecords();
    const QList<ArchiveDay> days = ArchiveDays::group(records, berlinTime(2026, 6, 10, 12, 0), store->calendar());
    ASSERT_EQ(days.size(), 3);
    EXPECT_EQ(days[0].title, qtTrId("archive.day.today"));
    EXPECT_EQ(days[1].title, qtTrId("archive.day.yesterday"));
    EXPECT_EQ(days[1].id, QStringLiteral("2026-06-09")) << "half past midnight in Berlin is the 9th";
    EXPECT_EQ(days[2].id, QStringLiteral("2026-06-08"));

    EXPECT_EQ(ArchiveDays::filter(records, QStringLiteral("  resume ")).size(), 1);
    EXPECT_EQ(ArchiveDays::filter(records, QStringLiteral("CAFE")).size(), 3) << "the flow name counts too";
    EXPECT_EQ(ArchiveDays::filter(records, QStringLiteral("   ")).size(), 3);
    EXPECT_TRUE(ArchiveDays::filter(records, QStringLiteral("zzz")).isEmpty());
}

} // namespace
} // namespace fenrow
