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
    CommandResult empty = run({QStringLiteral("flows")});
    EXPECT_EQ(empty.status, exitSuccess);
    EXPECT_TRUE(empty.out.startsWith(QStringLiteral("No flows yet."))) << empty.out.toStdString();

    addFlows({QStringLiteral("Launch site"), QStringLiteral("Tax"), QStringLiteral("Garden")});
    addTasks(QStringLiteral("Launch site"), {NodeStatus::done, NodeStatus::inProgress, NodeStatus::pending});
    addTasks(QStringLiteral("Tax"), {NodeStatus::done, NodeStatus::done});
    {
        auto store = openStore();
        store->reorderFlows({store->flows()[2], store->flows()[0], store->flows()[1]});
    }

    const CommandResult listed = run({QStringLiteral("flows")});
    EXPECT_EQ(listed.status, exitSuccess);
    EXPECT_EQ(listed.err, QString());
    const QStringList lines = listed.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 3) << listed.out.toStdString();
    EXPECT_EQ(lines[0], QStringLiteral("1  Garden       No tasks yet"));
    EXPECT_EQ(lines[1], QStringLiteral("2  Launch site  1 of 3 done · 1 in progress"));
    EXPECT_EQ(lines[2], QStringLiteral("3  Tax          All 2 done"));
}

TEST_F(FlowCommandsTest, JsonListingHasIdsTimesAndRawCounters)
{
    const CommandResult added =
        run({QStringLiteral("flow"), QStringLiteral("add"), QStringLiteral("Launch"), QStringLiteral("--now"),
             QStringLiteral("2026-06-10T09:00:00")});
    ASSERT_EQ(added.status, exitSuccess) << added.err.toStdString();
    addTasks(QStringLiteral("Launch"), {NodeStatus::done, NodeStatus::inProgress, NodeStatus::paused});

    const CommandResult listed = run({QStringLiteral("--json"), QStringLiteral("flows")});
    ASSERT_EQ(listed.status, exitSuccess);
    const QJsonArray flows = parseJson(listed.out).array();
    ASSERT_EQ(flows.size(), 1);
    const QJsonObject flow = flows[0].toObject();
    const QUuid id = openStore()->flows().first()->id;
    EXPECT_EQ(flow[QStringLiteral("id")].toString(), id.toString(QUuid::WithoutBraces).toUpper());
    EXPECT_EQ(flow[QStringLiteral("name")].toString(), QStringLiteral("Launch"));
    EXPECT_EQ(flow[QStringLiteral("position")].toInt(), 1);
    // Berlin is two hours ahead in June: the offset is spelled out.
    EXPECT_EQ(flow[QStringLiteral("createdAt")].toString(), QStringLiteral("2026-06-10T09:00:00+02:00"));
    const QJsonObject progress = flow[QStringLiteral("progress")].toObject();
    EXPECT_EQ(progress[QStringLiteral("doneCount")].toInt(), 1);
    EXPECT_EQ(progress[QStringLiteral("inProgressCount")].toInt(), 1);
    EXPECT_EQ(progress[QStringLiteral("totalCount")].toInt(), 3);

    EXPECT_EQ(parseJson(run({QStringLiteral("flow"), QStringLiteral("add"), QStringLiteral("Next"),
                             QStringLiteral("--json")})
                            .out)
                  .object()[QStringLiteral("position")]
                  .toInt(),
              2);
}

TEST_F(FlowCommandsTest, AddAndRenameReachTheFile)
{
    const CommandResult added = run({QStringLiteral("flow"), QStringLiteral("add"), QStringLiteral("  Launch site \n")});
    EXPECT_EQ(added.status, exitSuccess);
    EXPECT_TRUE(added.out.startsWith(QStringLiteral("Added flow \"Launch site\" ("))) << added.out.toStdString();
    EXPECT_TRUE(added.out.endsWith(QStringLiteral(") at position 1.\n")));
    EXPECT_EQ(run({QStringLiteral("flow"), QStringLiteral("add"), QStringLiteral("   ")}).status, exitSuccess);
    EXPECT_EQ(flowNames(), (QStringList{QStringLiteral("Launch site"), QStringLiteral("Untitled flow")}));

    const CommandResult renamed =
        run({QStringLiteral("flow"), QStringLiteral("rename"), QStringLiteral("launch"), QStringLiteral("Website")});
    EXPECT_EQ(renamed.status, exitSuccess);
    EXPECT_EQ(renamed.out, QStringLiteral("Renamed flow \"Launch site\" to \"Website\".\n"));
    EXPECT_EQ(flowNames(), (QStringList{QStringLiteral("Website"), QStringLiteral("Untitled flow")}));
}

TEST_F(FlowCommandsTest, DeleteNeedsAConfirmation)
{
    addFlows({QStringLiteral("Launch site"), QStringLiteral("Tax")});
    addTasks(QStringLiteral("Tax"), {NodeStatus::pending, NodeStatus::done});
    const QStringList deleteTax{QStringLiteral("flow"), QStringLiteral("delete"), QStringLiteral("tax")};

    // No terminal: refused, whatever is on the input.
    CommandResult result = run(deleteTax, QStringLiteral("y\n"), false);
    EXPECT_EQ(result.status, exitFailure);
    EXPECT_TRUE(result.err.contains(QStringLiteral("--yes"))) << result.err.toStdString();
    EXPECT_EQ(flowNames().size(), 2);

    // A terminal, but the input ends before an answer.
    result = run(deleteTax, QString(), true);
    EXPECT_EQ(result.status, exitFailure);
    EXPECT_TRUE(result.err.startsWith(QStringLiteral("Delete flow \"Tax\" with 2 tasks? [y/N] ")))
        << result.err.toStdString();
    EXPECT_EQ(flowNames().size(), 2);

    for (const QString &refusal : {QStringLiteral("\n"), QStringLiteral("n\n"), QStringLiteral("yep\n")}) {
        result = run(deleteTax, refusal, true);
        EXPECT_EQ(result.status, exitFailure) << refusal.toStdString();
        EXPECT_EQ(flowNames().size(), 2) << refusal.toStdString();
    }

    result = run(deleteTax, QStringLiteral(" Yes \n"), true);
    EXPECT_EQ(result.status, exitSuccess) << result.err.toStdString();
    EXPECT_EQ(result.out, QStringLiteral("Deleted flow \"Tax\" with 2 tasks.\n"));
    EXPECT_EQ(flowNames(), QStringList{QStringLiteral("Launch site")});

    result = run({QStringLiteral("flow"), QStringLiteral("delete"), QStringLiteral("launch site"), QStringLiteral("-y"),
                  QStringLiteral("--json")});
    EXPECT_EQ(result.status, exitSuccess);
    EXPECT_EQ(parseJson(result.out).object()[QStringLiteral("name")].toString(), QStringLiteral("Launch site"));
    EXPECT_TRUE(flowNames().isEmpty());
}

TEST_F(FlowCommandsTest, MoveClampsThePositionAndRenumbersTheWholeList)
{
    addFlows({QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C"), QStringLiteral("D")});
    const struct {
        QString flow;
        QString position;
        QStringList expected;
    } moves[] = {
        {QStringLiteral("A"), QStringLiteral("3"), {"B", "C", "A", "D"}},
        {QStringLiteral("D"), QStringLiteral("1"), {"D", "B", "C", "A"}},
        {QStringLiteral("D"), QStringLiteral("99"), {"B", "C", "A", "D"}},
        {QStringLiteral("A"), QStringLiteral("0"), {"A", "B", "C", "D"}},
        {QStringLiteral("C"), QStringLiteral("-4"), {"C", "A", "B", "D"}},
        {QStringLiteral("B"), QStringLiteral("3"), {"C", "A", "B", "D"}},
    };
    for (const auto &move : moves) {
        const CommandResult result = run({QStringLiteral("flow"), QStringLiteral("move"), move.flow, move.position});
        EXPECT_EQ(result.status, exitSuccess) << result.err.toStdString();
        EXPECT_EQ(flowNames(), move.expected) << move.flow.toStdString() << " to " << move.position.toStdString();
    }
    // Orders follow positions exactly, so the next added flow lands last.
    auto store = openStore();
    for (qsizetype i = 0; i < store->flows().size(); ++i)
        EXPECT_EQ(store->flows()[i]->order, i);

    EXPECT_EQ(run({QStringLiteral("flow"), QStringLiteral("move"), QStringLiteral("B"), QStringLiteral("99")}).out,
              QStringLiteral("Moved flow \"B\" to position 4 of 4.\n"));
}

TEST_F(FlowCommandsTest, UnresolvedFlowsFailWithoutChangingAnything)
{
    addFlows({QStringLiteral("Launch site"), QStringLiteral("Laundry")});
    const QStringList before = flowNames();

    CommandResult result =
        run({QStringLiteral("flow"), QStringLiteral("rename"), QStringLiteral("la"), QStringLiteral("X")});
    EXPECT_EQ(result.status, exitFailure);
    EXPECT_TRUE(result.err.contains(QStringLiteral("Launch site")) && result.err.contains(QStringLiteral("Laundry")))
        << result.err.toStdString();

    result = run({QStringLiteral("flow"), QStringLiteral("delete"), QStringLiteral("nothing"), QStringLiteral("--yes")});
    EXPECT_EQ(result.status, exitFailure);
    EXPECT_TRUE(result.err.startsWith(QStringLiteral("fenrow: no flow matches \"nothing\""))) << result.err.toStdString();

    result = run({QStringLiteral("flow"), QStringLiteral("move"), QStringLiteral("launch"), QStringLiteral("second")});
    EXPECT_EQ(result.status, exitUsage);
    EXPECT_TRUE(result.err.contains(QStringLiteral("fenrow help flow move"))) << result.err.toStdString();

    EXPECT_EQ(flowNames(), before);
}

} // namespace
} // namespace fenrow::testing
