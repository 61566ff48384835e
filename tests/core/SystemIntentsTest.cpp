#include "TestStore.h"

#include "domain/FenrowHistory.h"
#include "shell/AppEnvironment.h"
#include "shell/AppPreferences.h"
#include "shell/InterfaceLanguage.h"
#include "shell/RouteRequest.h"
#include "shell/SystemIntents.h"

#include <QSettings>

namespace fenrow::testing {
namespace {

// The intents against a store file, a history, preferences in a file of
// their own and no engine, so nothing is linked behind the test's back.
class SystemIntents : public ::testing::Test {
protected:
    SystemIntents()
        : preferences(std::make_unique<QSettings>(settingsFolder.filePath(QStringLiteral("fenrow.conf")),
                                                  QSettings::IniFormat))
    {
        InterfaceLanguage::apply(QStringLiteral("en"));
    }

    AddTaskIntent::Result add(const QString &title, std::optional<QUuid> flow = std::nullopt,
                              std::optional<QDateTime> dueDate = std::nullopt)
    {
        auto result = AddTaskIntent{title, flow, dueDate}.perform(services);
        if (!std::holds_alternative<AddTaskIntent::Result>(result)) {
            ADD_FAILURE() << "adding \"" << title.toStdString() << "\" failed";
            return {};
        }
        return std::get<AddTaskIntent::Result>(result);
    }
    QStringList undoNames(const TaskFlow &flow) const
    {
        QStringList names;
        for (const FenrowHistory::Entry &entry : history.undoStack(flow.id))
            names.append(entry.name);
        return names;
    }

    TestStore store;
    FenrowHistory history{*store};
    QTemporaryDir settingsFolder;
    AppPreferences preferences;
    AppEnvironment environment{{"fenrow", "--ui-test", "--ui-test-engine-unavailable"}};
    RouteRequest routes;
    int windowRaised = 0;
    IntentServices services{*store, history, preferences, environment, [this] { ++windowRaised; }, &routes};
};

TEST_F(SystemIntents, AddingReadsTheTitleForADateUnlessOneIsGivenAndFindsItsFlow)
{
    const AddTaskIntent::Result first = add(QStringLiteral("Call Anna tomorrow"));
    ASSERT_EQ(store->flows().size(), 1);
    const TaskFlow &untitled = *store->flows().first();
    EXPECT_EQ(untitled.name, "Untitled flow");
    EXPECT_EQ(first.task.title, "Call Anna");
    EXPECT_EQ(first.task.flowName, "Untitled flow");
    EXPECT_EQ(first.dialog, "Added “Call Anna” to Untitled flow.");
    ASSERT_NE(store->node(first.task.id), nullptr);
    EXPECT_EQ(store->node(first.task.id)->dueDate, berlinTime(2026, 6, 11));

    const QDateTime given = berlinTime(2026, 7, 1);
    const AddTaskIntent::Result dated = add(QStringLiteral("Call Anna tomorrow"), std::nullopt, given);
    EXPECT_EQ(dated.task.title, "Call Anna tomorrow") << "a given date leaves the title whole";
    EXPECT_EQ(store->node(dated.task.id)->dueDate, given);

    // The flow of the last capture while it exists, else the first.
    const TaskFlow &work = *store->addFlow(QStringLiteral("Work"));
    preferences.setLastCaptureFlowID(work.id);
    EXPECT_EQ(add(QStringLiteral("Report")).task.flowName, "Work");
    const AddTaskIntent::Result named = add(QStringLiteral("Groceries"), untitled.id);
    EXPECT_EQ(store->node(named.task.id)->flow(), &untitled);
    EXPECT_EQ(preferences.lastCaptureFlowID(), untitled.id);
    preferences.setLastCaptureFlowID(work.id);
    store->deleteFlow(work);
    // Added first: adding replaces the flow list that first() refers into.
    const AddTaskIntent::Result laundry = add(QStringLiteral("Laundry"));
    EXPECT_EQ(store->node(laundry.task.id)->flow(), store->flows().first());

    // An unknown flow changes nothing at all.
    const qsizetype tasks = store->flows().first()->items().size();
    const QStringList steps = undoNames(*store->flows().first());
    const std::optional<QUuid> lastCapture = preferences.lastCaptureFlowID();
    const auto refused = AddTaskIntent{QStringLiteral("Lost"), QUuid::createUuid(), std::nullopt}.perform(services);
    ASSERT_TRUE(std::holds_alternative<FenrowIntentError>(refused));
    EXPECT_EQ(std::get<FenrowIntentError>(refused), FenrowIntentError::notFound);
    EXPECT_EQ(store->flows().size(), 1);
    EXPECT_EQ(store->flows().first()->items().size(), tasks);
    EXPECT_EQ(undoNames(*store->flows().first()), steps);
    EXPECT_EQ(preferences.lastCaptureFlowID(), lastCapture);
}

TEST_F(SystemIntents, EachChangeIsOneStepThatUndoReachesFromAnywhere)
{
    const TaskFlow &home = *store->addFlow(QStringLiteral("Home"));
    const QUuid rent = store->addNode(QStringLiteral("Pay rent"), home)->id;

    // No flow on the canvas: a borrowed step, which Undo finds by itself.
    const auto done = CompleteTaskIntent{rent}.perform(services);
    ASSERT_TRUE(std::holds_alternative<QString>(done));
    EXPECT_EQ(std::get<QString>(done), "Done: Pay rent.");
    EXPECT_TRUE(store->node(rent)->isDone);
    EXPECT_EQ(undoNames(home), QStringList{"Complete task"});
    EXPECT_EQ(history.borrowedUndo(), QList<QUuid>{home.id});

    // Done already: answered, nothing recorded.
    const auto again = CompleteTaskIntent{rent}.perform(services);
    ASSERT_TRUE(std::holds_alternative<QString>(again));
    EXPECT_EQ(std::get<QString>(again), "Done: Pay rent.");
    EXPECT_EQ(undoNames(home), QStringList{"Complete task"});
    EXPECT_EQ(history.borrowedUndo().size(), 1);

    history.undo();
    EXPECT_FALSE(store->node(rent)->isDone);
    EXPECT_TRUE(undoNames(home).isEmpty());

    const QUuid added = add(QStringLiteral("Water plants"), home.id).task.id;
    EXPECT_EQ(undoNames(home), QStringList{"Capture task"});
    history.undo();
    EXPECT_EQ(store->node(added), nullptr);

    // The flow on the canvas: a step of its own stack, where Undo looks.
    history.setActiveFlowID(home.id);
    ASSERT_TRUE(std::holds_alternative<QString>(CompleteTaskIntent{rent}.perform(services)));
    EXPECT_EQ(undoNames(home), QStringList{"Complete task"});
    EXPECT_TRUE(history.borrowedUndo().isEmpty());
    history.undo();
    EXPECT_FALSE(store->node(rent)->isDone);

    // A task that is gone, or none.
    store->deleteNode(*store->node(rent));
    for (const QUuid &id : {rent, QUuid()}) {
        const auto missing = CompleteTaskIntent{id}.perform(services);
        ASSERT_TRUE(std::holds_alternative<FenrowIntentError>(missing));
        EXPECT_EQ(describe(std::get<FenrowIntentError>(missing)), "That task or flow does not exist any more.");
    }
}

TEST_F(SystemIntents, ReadyNamesTheCountAndTheFirstThreeInTheListsOwnOrder)
{
    GetReadyTasksIntent::Result none = GetReadyTasksIntent{}.perform(services);
    EXPECT_TRUE(none.tasks.isEmpty());
    EXPECT_EQ(none.dialog, "Nothing is ready right now.");

    const TaskFlow &home = *store->addFlow(QStringLiteral("Home"));
    const TaskFlow &work = *store->addFlow(QStringLiteral("Work"));
    auto task = [&](const char *title, const TaskFlow &flow, std::optional<int> dueDay) -> const FlowNode & {
        const FlowNode &node = *store->addNode(QString::fromLatin1(title), flow);
        if (dueDay)
            store->setDueDate(berlinTime(2026, 6, *dueDay), node);
        return node;
    };
    const FlowNode &later = task("Later", home, 20);
    const FlowNode &blocked = task("Blocked", home, 11);
    store->addEdge(later, blocked, EdgeSource::manual, EdgeKind::dependency);
    store->setStatus(NodeStatus::done, task("Finished", home, 11));
    task("Undated", work, std::nullopt);
    task("Sooner", work, 13);
    task("Soonest", work, 12);
    preferences.setReadySort(ReadySort::dueDate);

    const GetReadyTasksIntent::Result some = GetReadyTasksIntent{}.perform(services);
    QStringList titles;
    for (const TaskEntity &entity : some.tasks)
        titles.append(entity.title);
    EXPECT_EQ(titles, QStringList({"Soonest", "Sooner", "Later", "Undated"}));
    EXPECT_EQ(some.dialog, "Ready now (4): Soonest, Sooner, Later");
    ASSERT_FALSE(some.tasks.isEmpty());
    EXPECT_EQ(some.tasks.first().flowName, "Work");
}

TEST_F(SystemIntents, OpeningAFlowRaisesTheWindowWithAFreshRequestEachTime)
{
    const TaskFlow &gone = *store->addFlow(QStringLiteral("Gone"));
    const QUuid goneID = gone.id;
    store->deleteFlow(gone);
    for (const QUuid &id : {goneID, QUuid()})
        EXPECT_EQ(OpenFlowIntent{id}.perform(services), FenrowIntentError::notFound);
    EXPECT_EQ(windowRaised, 0);
    EXPECT_EQ(routes.flowRequest(), std::nullopt);

    const QUuid flow = store->addFlow(QStringLiteral("Trip"))->id;
    EXPECT_EQ(OpenFlowIntent{flow}.perform(services), std::nullopt);
    ASSERT_TRUE(routes.flowRequest().has_value());
    const RouteRequest::FlowRequest first = *routes.flowRequest();
    EXPECT_EQ(first.flowID, flow);
    EXPECT_EQ(first.nodeID, std::nullopt);
    EXPECT_EQ(OpenFlowIntent{flow}.perform(services), std::nullopt);
    EXPECT_EQ(windowRaised, 2);
    EXPECT_NE(routes.flowRequest()->token, first.token);

    // Without a window to raise or a mailbox it still answers.
    IntentServices headless{*store, history, preferences, environment};
    EXPECT_EQ(OpenFlowIntent{flow}.perform(headless), std::nullopt);
}

} // namespace
} // namespace fenrow::testing
