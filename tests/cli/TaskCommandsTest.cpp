#include "CommandLineTest.h"

#include "cli/ExitStatus.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace fenrow::testing {
namespace {

using TaskCommandsTest = CommandLineTest;

const QString now = QStringLiteral("2026-06-10T09:00:00");

QDateTime berlinDay(int month, int day)
{
    return QDateTime(QDate(2026, month, day), QTime(0, 0));
}

QJsonObject jsonOf(const CommandResult &result)
{
    EXPECT_EQ(result.status, exitSuccess) << result.err.toStdString();
    return QJsonDocument::fromJson(result.out.toUtf8()).object();
}

// Titles by flow, in sidebar and task order: "Flow: a, b".
QStringList contents(FenrowStore &store)
{
    QStringList lines;
    for (const TaskFlow *flow : store.flows()) {
        QStringList titles;
        for (const FlowNode *node : flow->orderedItems())
            titles.append(node->title);
        lines.append(flow->name + ": " + titles.join(", "));
    }
    return lines;
}

TEST_F(TaskCommandsTest, AddPicksOrMakesTheFlow)
{
    // No flow at all: an untitled one is made.
    const QJsonObject first = jsonOf(run({"add", "  Write copy ", "--json", "--now", now}));
    EXPECT_EQ(first["title"].toString(), "Write copy");
    EXPECT_EQ(first["flowName"].toString(), "Untitled flow");
    EXPECT_EQ(first["createdAt"].toString(), "2026-06-10T09:00:00+02:00");

    addFlows({"Launch", "Laundry"});
    const CommandResult plain = run({"add", "Pick domain"});
    EXPECT_TRUE(plain.out.startsWith("Added a task to flow \"Untitled flow\":\nPick domain\n")) << plain.out.toStdString();
    EXPECT_EQ(run({"add", "Fold shirts", "--flow", "laundry"}).status, exitSuccess);
    EXPECT_TRUE(run({"add", "Sow", "--flow", "Garden"}).out.startsWith("Added a task to the new flow \"Garden\""));

    // An ambiguous flow changes nothing and names the candidates.
    const CommandResult ambiguous = run({"add", "Lost", "--flow", "la"});
    EXPECT_EQ(ambiguous.status, exitFailure);
    EXPECT_TRUE(ambiguous.err.contains("Launch") && ambiguous.err.contains("Laundry")) << ambiguous.err.toStdString();
    EXPECT_EQ(run({"add", "Lost", "--flow", " "}).status, exitUsage);
    EXPECT_EQ(run({"add", "Lost", "--flow", QUuid::createUuid().toString()}).status, exitFailure);
    // Without --flow, where the last capture went; a failed one moved nothing.
    EXPECT_TRUE(run({"add", "Rake"}).out.startsWith("Added a task to flow \"Garden\""));

    auto store = openStore();
    EXPECT_EQ(contents(*store), (QStringList{"Untitled flow: Write copy, Pick domain", "Launch: ",
                                             "Laundry: Fold shirts", "Garden: Sow, Rake"}));
    // Each new card stands clear of the earlier ones.
    const QList<const FlowNode *> cards = store->flows()[0]->orderedItems();
    EXPECT_NE(cards[0]->posX, cards[1]->posX);
}

TEST_F(TaskCommandsTest, EditAppliesEveryOptionAndClears)
{
    addFlows({"Home"});
    addTasks("Home", {NodeStatus::pending});
    const QJsonObject edited = jsonOf(run({"edit", "task", "--json", "--now", now, "--title", "Pay rent", "--notes",
                                           " Bank \n", "--status", "inprogress", "--priority", "HIGH", "--color",
                                           "grey", "--estimate", "45", "--start", "2026-06-09", "--due",
                                           "2026-06-30T23:30:00", "--repeat", "monthly"}));
    EXPECT_EQ(edited["title"].toString(), "Pay rent");
    EXPECT_EQ(edited["notes"].toString(), "Bank");
    EXPECT_EQ(edited["status"].toString(), "inProgress");
    EXPECT_EQ(edited["priorityRaw"].toString(), "high");
    EXPECT_EQ(edited["colorRaw"].toString(), "grey");
    EXPECT_EQ(edited["estimateMinutes"].toInt(), 45);
    EXPECT_EQ(edited["startDate"].toString(), "2026-06-09T00:00:00+02:00");
    EXPECT_EQ(edited["dueDate"].toString(), "2026-06-30T00:00:00+02:00");
    // Monthly takes its day from the start date, and follows it when it moves.
    EXPECT_EQ(edited["recurrenceRaw"].toString(), "monthly@9");
    EXPECT_EQ(jsonOf(run({"edit", "pay", "--json", "--start", "2026-06-14"}))["recurrenceRaw"].toString(),
              "monthly@14");
    EXPECT_EQ(jsonOf(run({"edit", "pay", "--json", "--repeat", "monthly:31", "--start", "2026-06-15"}))
                  ["recurrenceRaw"].toString(), "monthly@31");
    EXPECT_EQ(jsonOf(run({"edit", "pay", "--json", "--repeat", "after:3"}))["recurrenceRaw"].toString(), "after@3");

    const QJsonObject cleared = jsonOf(run({"edit", "pay", "--json", "--notes", "", "--estimate", "none", "--start",
                                            "none", "--due", "NONE", "--repeat", "never", "--priority", "none"}));
    for (const char *field : {"estimateMinutes", "startDate", "dueDate", "recurrenceRaw"})
        EXPECT_TRUE(cleared[field].isNull()) << field;
    EXPECT_EQ(cleared["notes"].toString(), "");
    EXPECT_EQ(cleared["priorityRaw"].toString(), "none");

    const CommandResult plain = run({"edit", "pay", "--due", "2026-06-01", "--now", now});
    EXPECT_EQ(plain.out, "Pay rent\n"
                         "  id     " + openStore()->flows()[0]->orderedItems().first()->id.toString(QUuid::WithoutBraces)
                                           .toUpper() + "\n"
                         "  flow   Home\n"
                         "  state  in progress\n"
                         "  color  grey\n"
                         "  due    2026-06-01 (overdue)\n");
}

TEST_F(TaskCommandsTest, InvalidValuesAreUsageErrorsThatChangeNothing)
{
    addFlows({"Home"});
    addTasks("Home", {NodeStatus::pending});
    const struct {
        QString option;
        QString value;
    } cases[] = {
        {"title", "  "},        {"status", "finished"},  {"priority", "urgent"}, {"color", "teal"},
        {"estimate", "-5"},     {"estimate", "1h"},      {"start", "2026-13-01"}, {"due", "tomorrow"},
        {"repeat", "yearly"},   {"repeat", "monthly:0"}, {"repeat", "monthly:32"}, {"repeat", "after:0"},
        {"repeat", "daily:2"},
    };
    for (const auto &example : cases) {
        // A valid change comes first on the line: it must not be applied either.
        const CommandResult result =
            run({"edit", "task", "--priority", "high", "--" + example.option, example.value});
        EXPECT_EQ(result.status, exitUsage) << example.option.toStdString() << " " << example.value.toStdString();
        EXPECT_TRUE(result.err.startsWith("fenrow: --" + example.option)) << result.err.toStdString();
    }
    EXPECT_EQ(run({"edit", "task"}).status, exitUsage);
    EXPECT_EQ(openStore()->flows()[0]->orderedItems().first()->priorityRaw, "none");
}

TEST_F(TaskCommandsTest, DoneReportsReleasesAndRepeats)
{
    addFlows({"Launch", "Home"});
    {
        auto store = openStore();
        const FlowNode *design = store->addNode("Design", *store->flows()[0]);
        const FlowNode *build = store->addNode("Build", *store->flows()[0]);
        store->addEdge(*design, *build, EdgeSource::manual, EdgeKind::dependency);
        const FlowNode *water = store->addNode("Water plants", *store->flows()[1]);
        store->setStartDate(berlinDay(6, 1), *water);
        store->setDueDate(berlinDay(6, 3), *water);
        store->setRecurrence(NodeRecurrence{RecurrenceRule::daily, 1, std::nullopt}, *water);
    }

    const CommandResult design = run({"done", "design", "--now", now});
    EXPECT_EQ(design.out, "Done: \"Design\" (Launch).\nReleased 1 task:\n  \"Build\" (Launch)  ready\n");
    auto store = openStore();
    EXPECT_EQ(store->flows()[0]->orderedItems()[0]->completedAt, QDateTime::fromString(now, Qt::ISODate));
    store.reset();
    EXPECT_EQ(run({"done", "design"}).out, "\"Design\" (Launch) was already done.\n");

    // Due a week ago, completed today: the next round starts tomorrow and the
    // two days between start and due stay.
    const CommandResult water = run({"done", "water", "--now", now});
    EXPECT_EQ(water.out, "Done: \"Water plants\" (Home).\n"
                         "It repeats daily; the next round starts 2026-06-11, due 2026-06-13.\n");
    const QJsonObject again = jsonOf(run({"done", "water", "--json", "--now", "2026-06-11T10:00:00"}));
    EXPECT_EQ(again["repeated"], true);
    EXPECT_EQ(again["released"].toArray().size(), 0);
    EXPECT_EQ(again["task"]["title"], "Water plants");
}

TEST_F(TaskCommandsTest, TasksAreNamedByIdOrAnUnambiguousTitle)
{
    addFlows({"Launch", "Home"});
    addTasks("Launch", {NodeStatus::pending});
    addTasks("Home", {NodeStatus::pending});
    QString homeTaskID;
    {
        auto store = openStore();
        store->setTitle(*store->flows()[0]->orderedItems().first(), "Write copy");
        store->addNode("Write copy for ads", *store->flows()[0]);
        store->setTitle(*store->flows()[1]->orderedItems().first(), "Write copy");
        homeTaskID = store->flows()[1]->orderedItems().first()->id.toString();
    }

    // Two exact titles: ambiguous, listed as "title (flow)"; nothing changes.
    CommandResult result = run({"done", "WRITE COPY"});
    EXPECT_EQ(result.status, exitFailure);
    EXPECT_TRUE(result.err.contains("\"WRITE COPY\" matches more than one task"));
    EXPECT_TRUE(result.err.contains("Write copy (Launch)") && result.err.contains("Write copy (Home)"))
        << result.err.toStdString();
    EXPECT_FALSE(result.err.contains("for ads"));

    result = run({"edit", "nothing", "--title", "X"});
    EXPECT_EQ(result.status, exitFailure);
    EXPECT_TRUE(result.err.startsWith("fenrow: no task matches \"nothing\"")) << result.err.toStdString();
    result = run({"edit", "ads", "--title", "X"});
    EXPECT_TRUE(result.err.contains("Write copy for ads (Launch)")) << result.err.toStdString();
    EXPECT_EQ(run({"done", "write", "--flow", "Garden"}).status, exitFailure);

    // A unique prefix, a narrowing flow, or the id in any spelling.
    EXPECT_EQ(jsonOf(run({"edit", "write copy f", "--json", "--priority", "low"}))["title"], "Write copy for ads");
    EXPECT_EQ(jsonOf(run({"edit", "write copy", "--flow", "home", "--json", "--priority", "low"}))["flowName"], "Home");
    for (const QString &id : {homeTaskID.toLower(), homeTaskID.mid(1, 36).toUpper()})
        EXPECT_EQ(jsonOf(run({"edit", id, "--json", "--color", "red"}))["flowName"], "Home") << id.toStdString();

    auto store = openStore();
    EXPECT_FALSE(store->flows()[0]->orderedItems().first()->isDone);
    EXPECT_EQ(store->flows()[0]->orderedItems().first()->priorityRaw, "none");
}

} // namespace
} // namespace fenrow::testing
