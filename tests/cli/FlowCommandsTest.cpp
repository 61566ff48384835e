#include "CommandLineTest.h"

#include "cli/ExitStatus.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace fenrow::testing {
namespace {

using FlowCommandsTest = CommandLineTest;

QJsonDocument parseJson(const QString &text)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8(), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << text.toStdString();
    return document;
}

TEST_F(FlowCommandsTest, ListsFlowsInSidebarOrderWithAlignedProgress)
{
    EXPECT_TRUE(run({"flows"}).out.startsWith("No flows yet."));

    addFlows({"Launch site", "Tax", "Garden"});
    addTasks("Launch site", {NodeStatus::done, NodeStatus::inProgress, NodeStatus::pending});
    addTasks("Tax", {NodeStatus::done, NodeStatus::done});
    {
        auto store = openStore();
        store->reorderFlows({store->flows()[2], store->flows()[0], store->flows()[1]});
    }

    const CommandResult listed = run({"flows"});
    EXPECT_EQ(listed.status, exitSuccess);
    EXPECT_EQ(listed.err, QString());
    EXPECT_EQ(listed.out, QStringLiteral("1  Garden       No tasks yet\n"
                                         "2  Launch site  1 of 3 done · 1 in progress\n"
                                         "3  Tax          All 2 done\n"));
}

TEST_F(FlowCommandsTest, JsonListingHasIdsTimesAndRawCounters)
{
    ASSERT_EQ(run({"flow", "add", "Launch", "--now", "2026-06-10T09:00:00"}).status, exitSuccess);
    addTasks("Launch", {NodeStatus::done, NodeStatus::inProgress, NodeStatus::paused});

    const QJsonArray flows = parseJson(run({"--json", "flows"}).out).array();
    ASSERT_EQ(flows.size(), 1);
    const QJsonObject flow = flows[0].toObject();
    EXPECT_EQ(flow["id"].toString(), openStore()->flows().first()->id.toString(QUuid::WithoutBraces).toUpper());
    EXPECT_EQ(flow["name"].toString(), "Launch");
    EXPECT_EQ(flow["position"].toInt(), 1);
    // Berlin is two hours ahead in June: the offset is spelled out.
    EXPECT_EQ(flow["createdAt"].toString(), "2026-06-10T09:00:00+02:00");
    const QJsonObject progress = flow["progress"].toObject();
    EXPECT_EQ(progress["doneCount"].toInt(), 1);
    EXPECT_EQ(progress["inProgressCount"].toInt(), 1);
    EXPECT_EQ(progress["totalCount"].toInt(), 3);
}

TEST_F(FlowCommandsTest, AddAndRenameReachTheFile)
{
    const CommandResult added = run({"flow", "add", "  Launch site \n"});
    EXPECT_EQ(added.status, exitSuccess);
    EXPECT_TRUE(added.out.startsWith("Added flow \"Launch site\" (")) << added.out.toStdString();
    EXPECT_TRUE(added.out.endsWith(") at position 1.\n"));
    EXPECT_EQ(run({"flow", "add", "   "}).status, exitSuccess);
    EXPECT_EQ(flowNames(), (QStringList{"Launch site", "Untitled flow"}));

    const CommandResult renamed = run({"flow", "rename", "launch", "Website"});
    EXPECT_EQ(renamed.status, exitSuccess);
    EXPECT_EQ(renamed.out, "Renamed flow \"Launch site\" to \"Website\".\n");
    EXPECT_EQ(flowNames(), (QStringList{"Website", "Untitled flow"}));
}

TEST_F(FlowCommandsTest, DeleteNeedsAConfirmation)
{
    addFlows({"Launch site", "Tax"});
    addTasks("Tax", {NodeStatus::pending, NodeStatus::done});
    const QStringList deleteTax{"flow", "delete", "tax"};

    // No terminal: refused, whatever is on the input.
    CommandResult result = run(deleteTax, "y\n", false);
    EXPECT_EQ(result.status, exitFailure);
    EXPECT_TRUE(result.err.contains("--yes")) << result.err.toStdString();

    // A terminal, but the input ends before an answer; then answers that are no yes.
    for (const char *answer : {"", "\n", "n\n", "yep\n"}) {
        result = run(deleteTax, answer, true);
        EXPECT_EQ(result.status, exitFailure) << answer;
        EXPECT_TRUE(result.err.startsWith("Delete flow \"Tax\" with 2 tasks? [y/N] ")) << result.err.toStdString();
    }
    EXPECT_EQ(flowNames().size(), 2);

    result = run(deleteTax, " Yes \n", true);
    EXPECT_EQ(result.status, exitSuccess) << result.err.toStdString();
    EXPECT_EQ(result.out, "Deleted flow \"Tax\" with 2 tasks.\n");
    EXPECT_EQ(flowNames(), QStringList{"Launch site"});

    result = run({"flow", "delete", "launch site", "-y", "--json"});
    EXPECT_EQ(result.status, exitSuccess);
    EXPECT_EQ(parseJson(result.out).object()["name"].toString(), "Launch site");
    EXPECT_TRUE(flowNames().isEmpty());
}

TEST_F(FlowCommandsTest, MoveClampsThePositionAndRenumbersTheWholeList)
{
    addFlows({"A", "B", "C", "D"});
    const struct {
        QString flow;
        QString position;
        QStringList expected;
    } moves[] = {
        {"A", "3", {"B", "C", "A", "D"}},  {"D", "1", {"D", "B", "C", "A"}},
        {"D", "99", {"B", "C", "A", "D"}}, {"A", "0", {"A", "B", "C", "D"}},
        {"C", "-4", {"C", "A", "B", "D"}}, {"B", "3", {"C", "A", "B", "D"}},
    };
    for (const auto &move : moves) {
        const CommandResult result = run({"flow", "move", move.flow, move.position});
        EXPECT_EQ(result.status, exitSuccess) << result.err.toStdString();
        EXPECT_EQ(flowNames(), move.expected) << move.flow.toStdString() << " to " << move.position.toStdString();
    }
    // Orders follow positions exactly, so the next added flow lands last.
    auto store = openStore();
    for (qsizetype i = 0; i < store->flows().size(); ++i)
        EXPECT_EQ(store->flows()[i]->order, i);
    store.reset();

    EXPECT_EQ(run({"flow", "move", "B", "99"}).out, "Moved flow \"B\" to position 4 of 4.\n");
}

} // namespace
} // namespace fenrow::testing
