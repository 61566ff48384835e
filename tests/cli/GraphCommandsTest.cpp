#include "CommandLineTest.h"

#include "cli/ExitStatus.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace fenrow::testing {
namespace {

// Launch: Design -> Build -> Ship, Build has the subtask Test; Home: Water,
// a task that stands alone.
class GraphCommandsTest : public CommandLineTest {
protected:
    void SetUp() override
    {
        addFlows({"Launch", "Home"});
        auto store = openStore();
        const TaskFlow &launch = *store->flows()[0];
        const FlowNode *design = store->addNode("Design", launch);
        const FlowNode *build = store->addNode("Build", launch);
        const FlowNode *ship = store->addNode("Ship", launch);
        const FlowNode *test = store->addNode("Test", launch);
        store->addEdge(*design, *build, EdgeSource::manual, EdgeKind::dependency);
        store->addEdge(*build, *ship, EdgeSource::manual, EdgeKind::dependency);
        store->addEdge(*build, *test, EdgeSource::manual, EdgeKind::subtask);
        store->addChecklistEntry("Unit", *test);
        store->addChecklistEntry("Manual", *test);
        store->addNode("Water", *store->flows()[1]);
    }

    QJsonObject json(const QStringList &arguments)
    {
        const CommandResult result = run(arguments + QStringList{"--json"});
        EXPECT_EQ(result.status, exitSuccess) << result.err.toStdString();
        return QJsonDocument::fromJson(result.out.toUtf8()).object();
    }

    // Everything the commands can change, as the command line lists it.
    QString listing()
    {
        QString all = run({"flows", "--json"}).out;
        auto store = openStore();
        QStringList ids;
        for (const TaskFlow *flow : store->flows())
            for (const FlowNode *node : flow->orderedItems())
                ids.append(node->id.toString());
        store.reset();
        for (const QString &id : std::as_const(ids))
            all += run({"show", id, "--json"}).out;
        return all;
    }

    static QStringList titles(const QJsonValue &tasks)
    {
        QStringList found;
        for (const QJsonValue &task : tasks.toArray())
            found.append(task["title"].toString());
        return found;
    }

    // Each refusal: exit status 2, a message naming why, nothing changed.
    void expectRefused(const QStringList &arguments, const QString &why)
    {
        SCOPED_TRACE(arguments.join(' ').toStdString());
        const QString before = listing();
        const CommandResult result = run(arguments);
        EXPECT_EQ(result.status, exitUsage);
        EXPECT_TRUE(result.err.startsWith("fenrow: ") && result.err.contains(why)) << result.err.toStdString();
        EXPECT_TRUE(result.out.isEmpty()) << result.out.toStdString();
        EXPECT_EQ(listing(), before);
    }
};

TEST_F(GraphCommandsTest, ConnectAndDisconnectWithTheGraphsRefusals)
{
    const QJsonObject connected = json({"connect", "Design", "Test"});
    EXPECT_EQ(connected["kind"].toString(), "dependency");
    EXPECT_EQ(connected["from"]["title"].toString(), "Design");
    EXPECT_EQ(titles(json({"show", "Test"})["prerequisites"]), QStringList{"Design"});

    expectRefused({"connect", "Ship", "Design"}, "would close a loop");
    expectRefused({"connect", "Ship", "Ship"}, "itself");
    expectRefused({"connect", "Design", "Build", "--subtask"}, "connected already: \"Design\" comes before \"Build\"");
    expectRefused({"connect", "Ship", "Water"}, "cannot join two flows");
    expectRefused({"disconnect", "Design", "Ship"}, "not connected");
    expectRefused({"disconnect", "Ship", "Water"}, "not connected");

    EXPECT_EQ(run({"connect", "Design", "Ship", "--subtask"}).out,
              "Connected in flow \"Launch\": \"Ship\" is a subtask of \"Design\".\n");
    EXPECT_EQ(titles(json({"show", "Design"})["subtasks"]), QStringList{"Ship"});

    // Either way round, either kind.
    EXPECT_EQ(json({"disconnect", "Test", "Build"})["kind"].toString(), "subtask");
    EXPECT_EQ(run({"disconnect", "Build", "Design"}).out,
              "Disconnected in flow \"Launch\": \"Design\" comes before \"Build\" no more.\n");
    const QJsonObject build = json({"show", "Build"});
    EXPECT_TRUE(build["prerequisites"].toArray().isEmpty());
    EXPECT_TRUE(build["subtasks"].toArray().isEmpty());
    EXPECT_EQ(titles(build["holdsUp"]), QStringList{"Ship"});
}

TEST_F(GraphCommandsTest, SubtaskStandsRightOfItsParentAndHoldsItUp)
{
    EXPECT_EQ(run({"done", "Design"}).status, exitSuccess);
    EXPECT_EQ(titles(QJsonDocument::fromJson(run({"ready", "--json"}).out.toUtf8()).array()),
              (QStringList{"Test", "Water"}));
    const QJsonObject child = json({"subtask", "Build", " Write docs "});
    EXPECT_EQ(child["title"].toString(), "Write docs");
    EXPECT_EQ(child["flowName"].toString(), "Launch");

    const QJsonObject build = json({"show", "Build"});
    EXPECT_EQ(titles(build["subtasks"]), (QStringList{"Test", "Write docs"}));
    const QJsonObject docs = json({"show", "Write docs"});
    EXPECT_EQ(titles(docs["parents"]), QStringList{"Build"});
    EXPECT_GT(docs["posX"].toDouble(), build["posX"].toDouble());
    EXPECT_NE(docs["posY"].toDouble(), json({"show", "Test"})["posY"].toDouble());

    EXPECT_EQ(run({"subtask", "Nothing like it", "x"}).status, exitFailure);
}

TEST_F(GraphCommandsTest, DeleteTakesWhatOnlyTheDeletedHoldAndAsksFirst)
{
    const QString before = listing();
    // No terminal and no --yes; then a terminal where the answer is no.
    const CommandResult unasked = run({"delete", "Build"});
    EXPECT_EQ(unasked.status, exitFailure);
    EXPECT_TRUE(unasked.err.contains("3 tasks were not deleted") && unasked.err.contains("--yes"))
        << unasked.err.toStdString();
    const CommandResult declined = run({"delete", "Build"}, "n\n", true);
    EXPECT_EQ(declined.status, exitFailure);
    EXPECT_TRUE(declined.err.startsWith("These tasks go, with their connections:\n"
                                        "  \"Build\" (Launch)\n"
                                        "  \"Ship\" (Launch)   goes with them\n"
                                        "  \"Test\" (Launch)   goes with them\n"
                                        "Delete 3 tasks? [y/N] "))
        << declined.err.toStdString();
    EXPECT_EQ(listing(), before);

    // Design stays: it comes before Build, not after it.
    const CommandResult deleted = run({"delete", "Build"}, "y\n", true);
    EXPECT_EQ(deleted.status, exitSuccess) << deleted.err.toStdString();
    EXPECT_EQ(deleted.out, "Deleted 3 tasks:\n  \"Build\" (Launch)\n  \"Ship\" (Launch)\n  \"Test\" (Launch)\n");
    EXPECT_TRUE(json({"show", "Design"})["holdsUp"].toArray().isEmpty());

    // A task with two parents goes when both go together, in one run.
    {
        auto store = openStore();
        const TaskFlow &home = *store->flows()[1];
        const FlowNode *water = home.orderedItems()[0];
        const FlowNode *weed = store->addNode("Weed", home);
        const FlowNode *harvest = store->addNode("Harvest", home);
        store->addEdge(*water, *harvest, EdgeSource::manual, EdgeKind::dependency);
        store->addEdge(*weed, *harvest, EdgeSource::manual, EdgeKind::dependency);
    }
    const CommandResult both = run({"delete", "Weed", "Water", "Design", "Weed", "--yes", "--json"});
    EXPECT_EQ(titles(QJsonDocument::fromJson(both.out.toUtf8()).array()),
              (QStringList{"Design", "Water", "Weed", "Harvest"}));
    EXPECT_EQ(run({"flows", "--json"}).out.count("\"totalCount\": 0"), 2);

    // A name that matches no task deletes none of the others.
    addTasks("Home", {NodeStatus::pending});
    EXPECT_EQ(run({"delete", "Task", "Nothing like it", "--yes"}).status, exitFailure);
    EXPECT_EQ(json({"show", "Task"})["title"].toString(), "Task");
}

TEST_F(GraphCommandsTest, MoveTakesOnlyATaskThatStandsAlone)
{
    run({"add", "Sweep", "--flow", "Home"});
    const CommandResult moved = run({"move", "Water", "Launch"});
    EXPECT_EQ(moved.out, "Moved \"Water\" from flow \"Home\" to flow \"Launch\".\n") << moved.err.toStdString();
    const QJsonObject water = json({"show", "Water"});
    EXPECT_EQ(water["flowName"].toString(), "Launch");
    // Last in its new flow, clear of the cards there.
    EXPECT_EQ(water["order"].toInt(), 4);
    for (const char *other : {"Design", "Build", "Ship", "Test"})
        EXPECT_NE(json({"show", other})["posX"].toDouble(), water["posX"].toDouble()) << other;
    // Connected now, so it cannot go back.
    EXPECT_EQ(run({"connect", "Water", "Ship"}).status, exitSuccess);

    expectRefused({"move", "Water", "Home"}, "connected to \"Ship\"");
    expectRefused({"move", "Build", "Home"}, "connected to \"Design\", \"Ship\", \"Test\"");
    expectRefused({"move", "Sweep", "Home"}, "in flow \"Home\" already");
    EXPECT_EQ(run({"move", "Sweep", "Nowhere"}).status, exitFailure);
}

TEST_F(GraphCommandsTest, ShowPrintsEveryFieldAndTheTasksAround)
{
    run({"edit", "Build", "--priority", "high", "--notes", "Two lines\nof notes", "--estimate", "90"});
    const CommandResult shown = run({"show", "Build", "--now", "2026-06-10T09:00:00"});
    EXPECT_EQ(shown.status, exitSuccess);
    const QString id = json({"show", "Build"})["id"].toString();
    EXPECT_EQ(shown.out, "Build\n"
                         "  id        " + id + "\n"
                         "  flow      Launch\n"
                         "  state     waiting for 2 tasks\n"
                         "  priority  high\n"
                         "  estimate  1 h 30 min\n"
                         "  notes     Two lines\n"
                         "            of notes\n"
                         "  status    pending\n"
                         "  created   2026-05-01 08:02\n"
                         "  place     0, 0\n"
                         "  order     1\n"
                         "Prerequisites:\n"
                         "  \"Design\"  ready\n"
                         "Holds up:\n"
                         "  \"Ship\"  waiting for 1 task\n"
                         "Subtasks:\n"
                         "  \"Test\"  ready\n"
                         "Subtask of: none\n"
                         "Checklist: none\n");
    const QJsonObject test = json({"show", "Test"});
    EXPECT_EQ(titles(test["holdsUp"]), QStringList{"Build"});
    EXPECT_EQ(titles(test["parents"]), QStringList{"Build"});
    EXPECT_EQ(titles(test["checklist"]), (QStringList{"Unit", "Manual"}));
    EXPECT_EQ(test["checklist"][1]["number"].toInt(), 2);
}

TEST_F(GraphCommandsTest, ChecklistStepsByTheirNumbers)
{
    EXPECT_EQ(run({"checklist", "Test", "add", " Load "}).out,
              "\"Test\" (Launch)\nChecklist:\n  1.  [ ] Unit\n  2.  [ ] Manual\n  3.  [ ] Load\n");
    EXPECT_EQ(run({"checklist", "Test", "tick", "2"}).status, exitSuccess);
    EXPECT_EQ(run({"checklist", "Test", "tick", "2"}).out.section('\n', 0, 0), "Step 2 was ticked already.");
    EXPECT_EQ(run({"checklist", "Test", "move", "3", "1"}).status, exitSuccess);
    EXPECT_EQ(run({"checklist", "Test", "remove", "2"}).status, exitSuccess);
    const QJsonObject result = json({"checklist", "Test", "untick", "2"});
    EXPECT_EQ(titles(result["checklist"]), (QStringList{"Load", "Manual"}));
    EXPECT_FALSE(result["checklist"][1]["isDone"].toBool());
    EXPECT_EQ(json({"checklist", "Test", "tick", "1"})["checklist"][0]["isDone"].toBool(), true);

    expectRefused({"checklist", "Test", "tick", "3"}, "numbered 1 to 2");
    expectRefused({"checklist", "Test", "move", "1", "0"}, "numbered 1 to 2");
    expectRefused({"checklist", "Test", "remove", "one"}, "\"one\" is not a step");
    expectRefused({"checklist", "Ship", "tick", "1"}, "has no checklist steps");
    for (const QStringList &mistake : {QStringList{"checklist", "Test", "cross", "1"},
                                       QStringList{"checklist", "Test", "add", " "},
                                       QStringList{"checklist", "Test", "move", "1"}})
        EXPECT_EQ(run(mistake).status, exitUsage) << mistake.join(' ').toStdString();
}

} // namespace
} // namespace fenrow::testing
