#include "CommandLineTest.h"

#include "cli/ExitStatus.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace fenrow::testing {
namespace {

class FindCommandTest : public CommandLineTest {
protected:
    FindCommandTest()
    {
        auto store = openStore();
        const TaskFlow *jobs = store->addFlow("Jobs");
        const TaskFlow *home = store->addFlow("Home");
        store->setStatus(NodeStatus::done, *store->addNode("Résumé draft", *jobs));
        const FlowNode *call = store->addNode("Call Anna", *jobs);
        store->setNotes(*call, "Ask about the role\nthen\n   send the RESUME by Friday  \nresume again");
        store->setStatus(NodeStatus::inProgress, *call);
        store->addNode("Buy milk", *home);
    }
};

TEST_F(FindCommandTest, GroupsByFlowWithTheMatchingNotesLine)
{
    const CommandResult found = run({"find", "resume"});
    EXPECT_EQ(found.status, exitSuccess);
    EXPECT_EQ(found.out, "Jobs\n"
                         "  [x]  Résumé draft\n"
                         "  [~]  Call Anna\n"
                         "         send the RESUME by Friday\n");

    const QJsonArray groups = QJsonDocument::fromJson(run({"find", "RESUME", "--json"}).out.toUtf8()).array();
    ASSERT_EQ(groups.size(), 1);
    const QJsonArray matches = groups[0]["matches"].toArray();
    ASSERT_EQ(matches.size(), 2);
    EXPECT_EQ(groups[0]["flowName"].toString(), "Jobs");
    EXPECT_TRUE(matches[0]["notesSnippet"].isNull());
    EXPECT_EQ(matches[1]["status"].toString(), "inProgress");
    EXPECT_EQ(matches[1]["notesSnippet"].toString(), "send the RESUME by Friday");
}

TEST_F(FindCommandTest, TheNamedFlowComesFirstButOthersStillCount)
{
    EXPECT_EQ(run({"find", "milk", "--flow", "jobs"}).out, "Home\n  [ ]  Buy milk\n");
    // "l" is in a task of each flow.
    EXPECT_EQ(run({"find", "l"}).out.section('\n', 0, 0), "Jobs");
    EXPECT_EQ(run({"find", "l", "--flow", "home"}).out.section('\n', 0, 0), "Home");
    EXPECT_EQ(run({"find", "taxes"}).out, "No task matches \"taxes\".\n");
    EXPECT_EQ(run({"find", "  "}).status, exitUsage);
    EXPECT_EQ(run({"find", "milk", "--flow", "nowhere"}).status, exitFailure);
}

} // namespace
} // namespace fenrow::testing
