#include "CommandLineTest.h"

#include "cli/ExitStatus.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace fenrow::testing {
namespace {

const QString now = QStringLiteral("2026-06-10T09:00:00");

QDateTime day(int month, int dayOfMonth)
{
    return QDateTime(QDate(2026, month, dayOfMonth), QTime(0, 0));
}

class ReadyCommandTest : public CommandLineTest {
protected:
    // Two flows with tasks that are ready, blocked, deferred and done.
    void addMixedFlows()
    {
        addFlows({"Launch", "Home"});
        auto store = openStore();
        const TaskFlow &launch = *store->flows()[0];
        const TaskFlow &home = *store->flows()[1];
        const FlowNode *design = store->addNode("Design", launch);
        store->setPriority(NodePriority::low, *design);
        store->setEstimate(30, *design);
        store->setDueDate(day(6, 12), *design);
        store->addEdge(*design, *store->addNode("Build", launch), EdgeSource::manual, EdgeKind::dependency);
        const FlowNode *copy = store->addNode("Copy", launch);
        store->setPriority(NodePriority::high, *copy);
        store->setEstimate(120, *copy);
        store->setDueDate(day(6, 8), *copy);
        store->setDayPlanRank(2, *copy);
        store->setStatus(NodeStatus::done, *store->addNode("Shipped", launch));
        store->setStartDate(day(6, 11), *store->addNode("Later", launch));

        const FlowNode *water = store->addNode("Water", home);
        store->setStatus(NodeStatus::paused, *water);
        store->setPriority(NodePriority::medium, *water);
        store->setDueDate(day(6, 9), *water);
        const FlowNode *sweep = store->addNode("Sweep", home);
        store->setStartDate(day(6, 10), *sweep);
        store->setEstimate(15, *sweep);
    }

    QJsonArray readyJson(const QStringList &options = {})
    {
        const CommandResult result = run(QStringList{"ready", "--json", "--now", now} + options);
        EXPECT_EQ(result.status, exitSuccess) << result.err.toStdString();
        return QJsonDocument::fromJson(result.out.toUtf8()).array();
    }

    QStringList readyTitles(const QStringList &options)
    {
        QStringList titles;
        for (const QJsonValue &task : readyJson(options))
            titles.append(task["title"].toString());
        return titles;
    }
};

TEST_F(ReadyCommandTest, ListsTheReadyTasksInTheChosenSort)
{
    addMixedFlows();
    // What each sort does is Readiness's; here, that --sort reaches it.
    EXPECT_EQ(readyTitles({"--sort", "ESTIMATE"}), (QStringList{"Sweep", "Design", "Copy", "Water"}));

    // Today's tasks first, naming their flows; then, by flow, one heading
    // per flow and columns aligned across them. A rank alone (Copy's) does
    // not make a task today's.
    const CommandResult grouped = run({"ready", "--sort", "flow", "--now", now});
    EXPECT_EQ(grouped.out, "Today\n"
                           "  Sweep  Home      15 min\n"
                           "Launch\n"
                           "  Design          due 2026-06-12            low priority     30 min\n"
                           "  Copy            due 2026-06-08 (overdue)  high priority    2 h\n"
                           "Home\n"
                           "  Water [paused]  due 2026-06-09 (overdue)  medium priority\n");
    // Otherwise each row names its flow, in one table.
    const QString byPriority = run({"ready", "--sort", "priority", "--now", now}).out;
    EXPECT_TRUE(byPriority.startsWith("Today\n"
                                    "  Sweep           Home                                               15 min\n"
                                    "Other tasks\n"
                                    "  Copy            Launch  due 2026-06-08 (overdue)  high priority    2 h\n"))
        << byPriority.toStdString();

    const CommandResult wrong = run({"ready", "--sort", "title"});
    EXPECT_EQ(wrong.status, exitUsage);
    EXPECT_TRUE(wrong.err.startsWith("fenrow: --sort takes flow, dueDate, priority or estimate, not \"title\""))
        << wrong.err.toStdString();
}

TEST_F(ReadyCommandTest, JsonRowsCarryIdsZonedDatesAndNulls)
{
    addMixedFlows();
    const QJsonArray tasks = readyJson({"--sort", "flow"});
    ASSERT_EQ(tasks.size(), 4);

    const QJsonObject copy = tasks[2].toObject();
    EXPECT_EQ(copy.keys(), (QStringList{"dayPlanRank", "dueDate", "estimateMinutes", "flowID", "flowName", "id",
                                        "inToday", "isOverdue", "priorityRaw", "title"}));
    EXPECT_EQ(copy["inToday"], false);
    auto store = openStore();
    const TaskFlow &launch = *store->flows()[0];
    EXPECT_EQ(copy["id"].toString(), launch.orderedItems()[2]->id.toString(QUuid::WithoutBraces).toUpper());
    EXPECT_EQ(copy["flowID"].toString(), launch.id.toString(QUuid::WithoutBraces).toUpper());
    EXPECT_EQ(copy["flowName"].toString(), "Launch");
    EXPECT_EQ(copy["dueDate"].toString(), "2026-06-08T00:00:00+02:00");
    EXPECT_EQ(copy["isOverdue"], true);
    EXPECT_EQ(copy["priorityRaw"].toString(), "high");
    EXPECT_EQ(copy["estimateMinutes"].toInt(), 120);
    EXPECT_EQ(copy["dayPlanRank"].toInt(), 2);

    const QJsonObject sweep = tasks[0].toObject();
    EXPECT_EQ(sweep["inToday"], true);
    for (const char *absent : {"dueDate", "dayPlanRank"})
        EXPECT_TRUE(sweep[absent].isNull()) << absent;
    EXPECT_EQ(sweep["isOverdue"], false);
    EXPECT_EQ(sweep["priorityRaw"].toString(), "none");
    EXPECT_TRUE(tasks[3].toObject()["estimateMinutes"].isNull());

    // Written as QJsonDocument indents it, whatever a title holds.
    {
        auto store = openStore();
        store->setTitle(*store->flows()[1]->orderedItems()[1],
                        QStringLiteral("Tab\t\"quoted\" \\ \x01\x7f é 😀"));
    }
    const QString raw = run({"ready", "--json", "--now", now}).out;
    EXPECT_EQ(raw, QString::fromUtf8(QJsonDocument::fromJson(raw.toUtf8()).toJson(QJsonDocument::Indented)));
    EXPECT_TRUE(raw.contains("Tab\\t\\\"quoted\\\" \\\\ \\u0001")) << raw.toStdString();
}

TEST_F(ReadyCommandTest, AnEmptyListSaysWhy)
{
    auto reason = [&] { return run({"ready", "--sort", "flow", "--now", now}).out; };
    EXPECT_TRUE(reason().startsWith("Nothing is ready: there are no tasks yet.")) << reason().toStdString();
    addFlows({"Empty", "Chores"});

    addTasks("Chores", {NodeStatus::done, NodeStatus::done});
    EXPECT_TRUE(reason().startsWith("Nothing is ready: every task is done."));

    // Subtask edges hold their tail, so three edges can hold three tasks in a
    // ring without a cycle: nothing is free.
    {
        auto store = openStore();
        const TaskFlow &flow = *store->flows()[0];
        const FlowNode *x = store->addNode("x", flow);
        const FlowNode *y = store->addNode("y", flow);
        const FlowNode *z = store->addNode("z", flow);
        store->addEdge(*x, *y, EdgeSource::manual, EdgeKind::subtask);
        store->addEdge(*x, *z, EdgeSource::manual, EdgeKind::dependency);
        store->addEdge(*z, *y, EdgeSource::manual, EdgeKind::dependency);
        store->setStartDate(day(7, 1), *store->addNode("Summer", *store->flows()[1]));
    }
    EXPECT_TRUE(reason().startsWith("Nothing is ready today: the open tasks start on a later day."));
    {
        auto store = openStore();
        store->setStatus(NodeStatus::done, *store->flows()[1]->orderedItems().last());
    }
    EXPECT_TRUE(reason().startsWith("Nothing is ready: every open task is waiting")) << reason().toStdString();

    // JSON stays an array, empty.
    const CommandResult json = run({"ready", "--json", "--now", now});
    EXPECT_EQ(json.out, "[\n]\n");
}

} // namespace
} // namespace fenrow::testing
