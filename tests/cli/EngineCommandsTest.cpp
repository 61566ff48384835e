#include "CommandLineTest.h"

#include "cli/ExitStatus.h"

#include "TinyModel.h"
#include "shell/SettingsFile.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace fenrow::testing {
namespace {

// Flow "Work" with a (30 min), b (45 min) and c (15 min); flow "Home" with
// d, which has no estimate.
class EngineCommandsTest : public CommandLineTest {
protected:
    void addPlanTasks()
    {
        addFlows({"Work", "Home"});
        auto store = openStore();
        const TaskFlow *work = store->flows()[0];
        const QList<std::pair<QString, qint64>> tasks{{"a", 30}, {"b", 45}, {"c", 15}};
        for (const auto &[title, minutes] : tasks)
            store->setEstimate(minutes, *store->addNode(title, *work));
        store->addNode("d", *store->flows()[1]);
    }
    // Title to rank, for the tasks that have one.
    QMap<QString, qint64> ranks()
    {
        QMap<QString, qint64> result;
        const auto store = openStore();
        for (const TaskFlow *flow : store->flows())
            for (const FlowNode *node : flow->orderedItems())
                if (node->dayPlanRank)
                    result.insert(node->title, *node->dayPlanRank);
        return result;
    }
    // "from>to" for each machine-made edge of the named flow, sorted: the
    // file keeps no edge order.
    QStringList aiEdges(const QString &flowName)
    {
        QStringList edges;
        const auto store = openStore();
        for (const TaskFlow *flow : store->flows())
            if (flow->name == flowName)
                for (const DependencyEdge *edge : flow->edges())
                    if (edge->source == EdgeSource::ai)
                        edges << edge->fromItem()->title + ">" + edge->toItem()->title;
        edges.sort();
        return edges;
    }
};

TEST_F(EngineCommandsTest, PlanShowsTheCutLineInListOrderWithoutAnEngine)
{
    addPlanTasks();
    const CommandResult result = run({"plan", "--budget", "60m"});
    EXPECT_EQ(result.status, exitSuccess) << result.err.toStdString();
    EXPECT_EQ(result.out.toStdString(),
              "Today's plan: 45 minutes of 60 minutes, in the order of the Ready list.\n"
              "Engine: none. No on-device language model is available. Everything still works by hand.\n"
              "  1  a  Work  30 min\n"
              "  2  c  Work  15 min\n"
              "--- 60 minutes ends here; these do not fit:\n"
              "     b  Work  45 min\n"
              "     d  Home  30 min (no estimate)\n"
              "Run again with --commit to save this as today's order.\n");
    EXPECT_TRUE(ranks().isEmpty()) << "without --commit nothing is written";
}

TEST_F(EngineCommandsTest, PlanCommitRanksAndTheEngineOrders)
{
    addPlanTasks();
    // The scripted engine turns the list round: d, c, b, a.
    const CommandResult result = run({"--ui-test", "plan", "--budget", "1.5h", "--commit", "--json"});
    ASSERT_EQ(result.status, exitSuccess) << result.err.toStdString();
    const QJsonObject plan = QJsonDocument::fromJson(result.out.toUtf8()).object();
    EXPECT_EQ(plan["budgetMinutes"].toInt(), 90);
    EXPECT_EQ(plan["totalMinutes"].toInt(), 90);
    EXPECT_EQ(plan["order"].toString(), "engine");
    QStringList planned;
    for (const QJsonValue &task : plan["planned"].toArray())
        planned << task["title"].toString() + QString::number(task["position"].toInt());
    EXPECT_EQ(planned, QStringList({"d1", "c2", "b3"}));
    EXPECT_EQ(plan["overflow"].toArray().size(), 1);
    EXPECT_EQ(ranks(), (QMap<QString, qint64>{{"d", 1}, {"c", 2}, {"b", 3}}));
}

TEST_F(EngineCommandsTest, PlanRefusesUnreadableBudgetsAndSaysWhenNothingFits)
{
    EXPECT_EQ(run({"plan"}).out, "Nothing is ready to plan.\n");
    addPlanTasks();
    for (const QString budget : {"soon", "-1h", "h", "90x"}) {
        const CommandResult result = run({"plan", "--budget", budget});
        EXPECT_EQ(result.status, exitUsage) << budget.toStdString();
        EXPECT_TRUE(result.err.contains("--budget takes minutes or hours")) << result.err.toStdString();
    }
    const CommandResult none = run({"plan", "--budget", "10 min", "--commit"});
    EXPECT_TRUE(none.out.contains("Nothing fits in 10 minutes:")) << none.out.toStdString();
    EXPECT_TRUE(ranks().isEmpty());
}

TEST_F(EngineCommandsTest, NewFlowFromTextNeedsAnEngine)
{
    const CommandResult refused = run({"new-flow", "--from-text", "-"}, "Write a talk, then rehearse it.");
    EXPECT_EQ(refused.status, exitFailure);
    EXPECT_TRUE(refused.err.contains("No on-device language model is available")) << refused.err.toStdString();
    EXPECT_TRUE(refused.err.contains("fenrow flow add NAME")) << refused.err.toStdString();
    EXPECT_TRUE(flowNames().isEmpty());
    EXPECT_EQ(run({"new-flow"}).status, exitUsage);
}

TEST_F(EngineCommandsTest, NewFlowFromTextMakesConnectedEstimatedTasks)
{
    const CommandResult made = run({"--ui-test", "new-flow", "--from-text", "-"}, "Write a talk, then rehearse it.");
    ASSERT_EQ(made.status, exitSuccess) << made.err.toStdString();
    EXPECT_EQ(made.out.toStdString(),
              "Made the flow \"Scripted Plan\" with 3 tasks:\n"
              "  Outline the plan   45 min\n"
              "  Draft the content  45 min\n"
              "  Review and ship    45 min\n"
              "The engine put them in order:\n"
              "  \"Outline the plan\" before \"Draft the content\"\n"
              "  \"Draft the content\" before \"Review and ship\"\n"
              "Engine: the scripted stand-in of this scripted run.\n");
    EXPECT_EQ(aiEdges("Scripted Plan"),
              QStringList({"Draft the content>Review and ship", "Outline the plan>Draft the content"}));

    const QString path = folder.filePath("talk.txt");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("Prepare the talk.");
    file.close();
    const CommandResult named = run({"--ui-test", "new-flow", "--from-text", path, "--name", "Talk", "--json"});
    ASSERT_EQ(named.status, exitSuccess) << named.err.toStdString();
    const QJsonObject flow = QJsonDocument::fromJson(named.out.toUtf8()).object();
    EXPECT_EQ(flow["name"].toString(), "Talk");
    EXPECT_EQ(flow["tasks"].toArray().size(), 3);
    EXPECT_TRUE(flow["connected"].toBool());
}

TEST_F(EngineCommandsTest, NewFlowFromTextThatHoldsNoTasksMakesNothing)
{
    const CommandResult empty = run({"--ui-test", "new-flow", "--from-text", "-"}, "Just musing ((no tasks))");
    EXPECT_EQ(empty.status, exitFailure);
    EXPECT_TRUE(empty.err.contains("found no tasks")) << empty.err.toStdString();
    EXPECT_EQ(run({"--ui-test", "new-flow", "--from-text", folder.filePath("absent.txt")}).status, exitFailure);
    EXPECT_EQ(run({"--ui-test", "new-flow", "--from-text", "-"}, " \n").status, exitFailure);
    EXPECT_TRUE(flowNames().isEmpty());
}

TEST_F(EngineCommandsTest, AddLinksTheTaskWhenAnEngineIsThere)
{
    addFlows({"Launch"});
    ASSERT_EQ(run({"add", "Pick domain"}).status, exitSuccess);
    const CommandResult linked = run({"--ui-test", "add", "Ship it tomorrow", "--now", "2026-06-10T09:00:00"});
    ASSERT_EQ(linked.status, exitSuccess) << linked.err.toStdString();
    EXPECT_TRUE(linked.out.contains("The due date comes from \"tomorrow\"")) << linked.out.toStdString();
    EXPECT_TRUE(linked.out.endsWith("The inference engine linked it: after \"Pick domain\".\n"
                                "Engine: the scripted stand-in of this scripted run.\n")) << linked.out.toStdString();
    EXPECT_EQ(aiEdges("Launch"), QStringList{"Pick domain>Ship it"});

    const CommandResult manual = run({"--ui-test", "--ui-test-engine-unavailable", "add", "Tweet"});
    EXPECT_FALSE(manual.out.contains("linked")) << manual.out.toStdString();
    EXPECT_EQ(aiEdges("Launch").size(), 1);
}

// The whole way to a model, run alone: the model the settings name is
// loaded by the helper (a tiny one with random weights, written here, so
// its answers say nothing; that it answers does), and the output says
// which engine answered. A file that is no model leaves the command on its
// by-hand path, saying why.
TEST_F(EngineCommandsTest, TheChosenLanguageModelAnswersACommandRunAlone)
{
    QString problem;
    const QString tiny = tinyModel(&problem);
    ASSERT_FALSE(tiny.isEmpty()) << problem.toStdString();
    QTemporaryDir models;
    const auto choose = [](const QString &path) {
        const auto settings = SettingsFile::open();
        settings->setValue("preferences.languageModelPath", path);
        settings->sync();
    };
    const struct Forget {
        ~Forget() { SettingsFile::open()->remove("preferences.languageModelPath"); }
    } forget;

    addPlanTasks();
    choose(tiny);
    const CommandResult planned = run({"plan", "--budget", "60m"});
    ASSERT_EQ(planned.status, exitSuccess) << planned.err.toStdString();
    EXPECT_TRUE(planned.err.contains("Loading the language model tiny.gguf")) << planned.err.toStdString();
    EXPECT_TRUE(planned.out.contains("in the order the inference engine suggests")) << planned.out.toStdString();
    EXPECT_TRUE(planned.out.contains("Engine: the language model ")) << planned.out.toStdString();

    const QString text = models.filePath(QStringLiteral("notes.gguf"));
    QFile notes(text);
    ASSERT_TRUE(notes.open(QIODevice::WriteOnly));
    notes.write("These are notes, not a model.\n");
    notes.close();
    choose(text);
    const CommandResult byHand = run({"plan", "--budget", "60m"});
    ASSERT_EQ(byHand.status, exitSuccess) << byHand.err.toStdString();
    EXPECT_TRUE(byHand.out.contains("in the order of the Ready list")) << byHand.out.toStdString();
    EXPECT_TRUE(byHand.out.contains("Engine: none. notes.gguf is not a GGUF model file.")) << byHand.out.toStdString();
}

} // namespace
} // namespace fenrow::testing
