#include "TestStore.h"

#include "domain/FenrowHistory.h"
#include "domain/NodeStatus.h"
#include "domain/Scheduler.h"
#include "shell/AppPreferences.h"
#include "shell/PendingCompletion.h"
#include "shell/SystemIntents.h"
#include "shell/WidgetBridge.h"
#include "shell/WidgetFiles.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>

namespace fenrow::testing {
namespace {

using namespace std::chrono_literals;

QByteArray expectedFile(const char *name)
{
    QFile file(QStringLiteral(FENROW_SOURCE_DIR "/tests/core/expected/") + QLatin1StringView(name));
    if (!file.open(QIODevice::ReadOnly))
        ADD_FAILURE() << "missing expected file " << name;
    return file.readAll();
}

// A store in a real file (Berlin, 10 June 2026, 09:00), preferences of
// their own, a shared folder in a temporary place and timers moved by hand.
class WidgetBridgeTest : public ::testing::Test {
protected:
    WidgetBridgeTest()
        : preferences(std::make_unique<QSettings>(settingsFolder.filePath(QStringLiteral("fenrow.conf")),
                                                  QSettings::IniFormat))
    {
        flow = store->addFlow(QStringLiteral("Home"));
    }

    std::unique_ptr<WidgetBridge> makeBridge()
    {
        auto made = std::make_unique<WidgetBridge>(*store, history, preferences, scheduler, shared.path());
        writes = std::make_unique<QSignalSpy>(made.get(), &WidgetBridge::snapshotWritten);
        return made;
    }
    // The file as written, each task's id replaced by "ID <title>", so
    // that it can be held to a stored file.
    QByteArray snapshotFileWithNamedIDs() const
    {
        QFile file(WidgetFiles::snapshotPath(shared.path()));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        QByteArray bytes = file.readAll();
        for (const FlowNode *node : flow->items())
            bytes.replace(node->id.toString(QUuid::WithoutBraces).toUpper().toLatin1(), "ID " + node->title.toUtf8());
        return bytes;
    }
    qsizetype undoCount() const { return history.undoStack(flow->id).size(); }

    TestStore store;
    FenrowHistory history{*store};
    QTemporaryDir settingsFolder;
    AppPreferences preferences;
    ManualScheduler scheduler;
    QTemporaryDir shared;
    const TaskFlow *flow = nullptr;
    std::unique_ptr<QSignalSpy> writes;
};

TEST_F(WidgetBridgeTest, TheSnapshotHoldsTheFirstEightTasksInTheListsOrderUntilMidnight)
{
    for (int i = 1; i <= 20; ++i)
        store->addNode(QStringLiteral("Task %1").arg(i, 2, 10, QLatin1Char('0')), *flow);
    const auto node = [&](int i) { return flow->orderedItems()[i - 1]; };
    store->setDueDate(berlinTime(2026, 6, 9, 17, 0), *node(1)); // overdue
    store->setDueDate(berlinTime(2026, 6, 10, 23, 30), *node(2)); // today
    store->setDueDate(berlinTime(2026, 6, 11, 0, 0), *node(3)); // tomorrow
    store->setPriority(NodePriority::high, *node(3));
    store->addEdge(*node(4), *node(20), EdgeSource::manual, EdgeKind::dependency); // 20 waits on 4
    store->setStatus(NodeStatus::done, *node(5));
    preferences.setAccentPalette(AccentPalette::green);

    auto bridge = makeBridge();
    bridge->start();
    EXPECT_EQ(writes->size(), 1);
    EXPECT_EQ(snapshotFileWithNamedIDs(), expectedFile("ready-snapshot.json"));
    const std::optional<ReadySnapshot> read = ReadySnapshot::read(shared.path());
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, *bridge->lastPublished()) << "what the widget reads is what was written";

    // A publish that finds the same list on the same day writes nothing.
    store.clock.set(berlinTime(2026, 6, 10, 23, 59));
    bridge->publish(store.clock.now());
    EXPECT_EQ(writes->size(), 1);
    // Past midnight the same tasks are a new day's list, with no change in
    // the store: the day timer publishes it.
    store.clock.set(berlinTime(2026, 6, 11).addSecs(1));
    scheduler.advance(1h);
    ASSERT_EQ(writes->size(), 2);
    EXPECT_EQ(bridge->lastPublished()->validUntil, berlinTime(2026, 6, 12));
    const auto item = [&](const char *title) {
        for (const ReadySnapshot::Item &item : bridge->lastPublished()->tasks)
            if (item.title == QLatin1StringView(title))
                return item;
        ADD_FAILURE() << title << " is not in the snapshot";
        return ReadySnapshot::Item{};
    };
    EXPECT_TRUE(item("Task 02").isOverdue && !item("Task 02").isToday) << "yesterday's today is overdue";
    EXPECT_TRUE(item("Task 03").isToday);
}

// Which reason is which is the Ready list's own rule; here, that it reaches
// the file.
TEST_F(WidgetBridgeTest, AnEmptyListSaysWhy)
{
    auto bridge = makeBridge();
    const auto reason = [&] {
        bridge->publish(store.clock.now());
        return bridge->lastPublished()->emptyReason.value_or(QStringLiteral("(none)"));
    };
    EXPECT_EQ(reason(), "noTasks");
    const FlowNode *later = store->addNode(QStringLiteral("Later"), *flow);
    store->setStartDate(berlinTime(2026, 6, 12, 8, 0), *later);
    EXPECT_EQ(reason(), "allDeferred");
    EXPECT_EQ(snapshotFileWithNamedIDs(), expectedFile("ready-snapshot-deferred.json"));
    store->setStatus(NodeStatus::done, *later);
    EXPECT_EQ(reason(), "allDone");
}

TEST_F(WidgetBridgeTest, ChangesWithin400MillisecondsGiveOnePublishAndAFailedWriteIsTriedAgain)
{
    auto bridge = makeBridge();
    bridge->start();
    ASSERT_EQ(writes->size(), 1);
    store->addNode(QStringLiteral("One"), *flow);
    scheduler.advance(300ms);
    store->addNode(QStringLiteral("Two"), *flow);
    scheduler.advance(399ms);
    EXPECT_EQ(writes->size(), 1);
    scheduler.advance(1ms);
    EXPECT_EQ(writes->size(), 2);
    EXPECT_EQ(bridge->lastPublished()->total, 2);
    preferences.setReadySortRaw(QStringLiteral("priority"));
    scheduler.advance(400ms);
    EXPECT_EQ(writes->size(), 2) << "the same tasks in the same order";

    // A snapshot that cannot be written leaves the last one standing, and
    // the next publish tries again.
    const QString path = WidgetFiles::snapshotPath(shared.path());
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(QDir().mkpath(path));
    store->addNode(QStringLiteral("Three"), *flow);
    scheduler.advance(400ms);
    EXPECT_EQ(writes->size(), 2);
    EXPECT_EQ(bridge->lastPublished()->total, 2);
    ASSERT_TRUE(QDir(path).removeRecursively());
    bridge->publish(store.clock.now());
    EXPECT_EQ(writes->size(), 3);
    EXPECT_EQ(ReadySnapshot::read(shared.path())->total, 3);
}

TEST_F(WidgetBridgeTest, TicksAreAppliedOnceAsUndoableCompletionsAndBadFilesNeverStopThem)
{
    const FlowNode *call = store->addNode(QStringLiteral("Call Anna"), *flow);
    const FlowNode *done = store->addNode(QStringLiteral("Done already"), *flow);
    store->setStatus(NodeStatus::done, *done);
    const QString id = call->id.toString(QUuid::WithoutBraces);

    // Parked while the program was not running: two ticks of one task, one
    // of a task done already, one of a task that is gone, one file that is
    // not a tick at all, and an id that is not one.
    const TickReadyTaskIntent tick{id};
    ASSERT_TRUE(tick.perform(shared.path(), store.clock.now()));
    ASSERT_TRUE(tick.perform(shared.path(), store.clock.now().addSecs(5)));
    ASSERT_TRUE(TickReadyTaskIntent{done->id.toString()}.perform(shared.path(), store.clock.now()));
    ASSERT_TRUE(TickReadyTaskIntent{QUuid::createUuid().toString()}.perform(shared.path(), store.clock.now()));
    EXPECT_FALSE(TickReadyTaskIntent{QStringLiteral("not an id")}.perform(shared.path(), store.clock.now()));
    const QDir pending(WidgetFiles::pendingFolder(shared.path()));
    QFile broken(pending.filePath(QStringLiteral("broken.json")));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("{\"id\": ");
    broken.close();
    ASSERT_EQ(pending.entryList(QDir::Files).size(), 5);

    auto bridge = makeBridge();
    bridge->start();
    EXPECT_TRUE(call->isDone);
    EXPECT_EQ(undoCount(), 1) << "one completion for two ticks";
    EXPECT_EQ(history.undoStack(flow->id).last().name, "Complete task");
    EXPECT_EQ(pending.entryList(QDir::Files), QStringList{"broken.json"}) << "the broken file stays";
    history.undoFlow(flow->id);
    EXPECT_FALSE(call->isDone);

    // Made while the program runs: the folder's watch applies it.
    ASSERT_TRUE(tick.perform(shared.path(), store.clock.now()));
    QTRY_VERIFY_WITH_TIMEOUT(call->isDone, 5000);
    EXPECT_EQ(undoCount(), 1);
    QTRY_COMPARE_WITH_TIMEOUT(pending.entryList(QDir::Files), QStringList{"broken.json"}, 5000);

    // A tick seen again (a file put back with the same id) counts once.
    history.undoFlow(flow->id);
    const PendingCompletion again{QUuid::createUuid(), call->id, store.clock.now(), {}};
    ASSERT_TRUE(again.park(shared.path()));
    bridge->applyPending();
    ASSERT_TRUE(call->isDone);
    history.undoFlow(flow->id);
    ASSERT_TRUE(again.park(shared.path()));
    bridge->applyPending();
    EXPECT_FALSE(call->isDone);
}

} // namespace
} // namespace fenrow::testing
