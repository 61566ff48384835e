#include "CommandLineTest.h"

#include "cli/ExitStatus.h"
#include "shell/InterfaceLanguage.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace fenrow::testing {
namespace {

using CaptureDateCommandsTest = CommandLineTest;

// A Wednesday.
const QString now = QStringLiteral("2026-06-10T09:00:00");

QJsonObject jsonOf(const CommandResult &result)
{
    EXPECT_EQ(result.status, exitSuccess) << result.err.toStdString();
    return QJsonDocument::fromJson(result.out.toUtf8()).object();
}

TEST_F(CaptureDateCommandsTest, ParseDatePrintsTheMatchOrNoDate)
{
    const CommandResult found = run({"parse-date", "Pay rent by june 5th.", "--now", now});
    EXPECT_EQ(found.status, exitSuccess);
    EXPECT_EQ(found.out, "date    2027-06-05\n"
                         "phrase  by june 5th\n"
                         "title   Pay rent\n");

    const CommandResult json = run({"parse-date", "  Call Anna tomorrow ", "--json", "--now", now});
    EXPECT_EQ(json.status, exitSuccess);
    EXPECT_EQ(QJsonDocument::fromJson(json.out.toUtf8()).object(),
              (QJsonObject{{"date", "2026-06-11"}, {"phrase", "tomorrow"}, {"title", "Call Anna"}}));

    EXPECT_EQ(run({"parse-date", "tomorrow", "--now", now}).out, "no date\n");
    const CommandResult none = run({"parse-date", "tomorrow", "--json", "--now", now});
    EXPECT_EQ(none.status, exitSuccess);
    EXPECT_EQ(none.out.trimmed(), "null");
    // It needs no store: it works when the store cannot be opened.
    fatalMessage = QStringLiteral("broken");
    EXPECT_EQ(run({"parse-date", "Plan next week", "--now", now}).status, exitSuccess);
    EXPECT_EQ(storeOpenings, 0);
}

TEST_F(CaptureDateCommandsTest, ParseDateTakesTheLanguageFromLangBeforeTheInterface)
{
    const QString turkish = QStringLiteral("Faturayı YARIN öde");
    EXPECT_EQ(run({"parse-date", turkish, "--now", now}).out, "no date\n");
    EXPECT_EQ(jsonOf(run({"parse-date", turkish, "--lang", "tr", "--json", "--now", now}))["title"], "Faturayı öde");
    EXPECT_EQ(jsonOf(run({"parse-date", turkish, "--lang", "TR-cy", "--json", "--now", now}))["date"], "2026-06-11");

    ASSERT_TRUE(InterfaceLanguage::apply(QStringLiteral("tr")));
    const CommandResult overridden = run({"parse-date", turkish, "--lang", "en", "--now", now});
    InterfaceLanguage::apply(QStringLiteral("en"));
    EXPECT_EQ(overridden.out, "no date\n");

    const CommandResult wrong = run({"parse-date", turkish, "--lang", "english"});
    EXPECT_EQ(wrong.status, exitUsage);
    EXPECT_TRUE(wrong.err.startsWith("fenrow: --lang takes en, tr, de, es or fr, not \"english\""))
        << wrong.err.toStdString();
}

TEST_F(CaptureDateCommandsTest, AddTakesTheDueDateFromTheTitle)
{
    addFlows({"Home"});
    const QJsonObject rent = jsonOf(run({"add", "Pay rent by june 5th", "--json", "--now", now}));
    EXPECT_EQ(rent["title"], "Pay rent");
    EXPECT_EQ(rent["flowName"], "Home");
    EXPECT_EQ(rent["dueDate"], "2027-06-05T00:00:00+02:00");

    const CommandResult plain = run({"add", "Call Anna tomorrow", "--flow", "Calls", "--now", now});
    EXPECT_EQ(plain.status, exitSuccess);
    EXPECT_TRUE(plain.out.startsWith("Added a task to the new flow \"Calls\":\nCall Anna\n")) << plain.out.toStdString();
    EXPECT_TRUE(plain.out.contains("  due    2026-06-11\n")) << plain.out.toStdString();
    EXPECT_TRUE(plain.out.endsWith("The due date comes from \"tomorrow\"; --due none keeps the title as typed.\n"))
        << plain.out.toStdString();
}

TEST_F(CaptureDateCommandsTest, AnExplicitDueDateWinsAndKeepsTheTitle)
{
    const QJsonObject dated = jsonOf(run({"add", "Call Anna tomorrow", "--due", "2026-07-01", "--json", "--now", now}));
    EXPECT_EQ(dated["title"], "Call Anna tomorrow");
    EXPECT_EQ(dated["dueDate"], "2026-07-01T00:00:00+02:00");

    const CommandResult literal = run({"add", "Read Tomorrow's news next week", "--due", "NONE", "--now", now});
    EXPECT_EQ(literal.status, exitSuccess);
    EXPECT_FALSE(literal.out.contains("due")) << literal.out.toStdString();

    // A wrong date is a usage error that adds nothing, not even the flow.
    const CommandResult wrong = run({"add", "Lost", "--due", "next week", "--flow", "Garden"});
    EXPECT_EQ(wrong.status, exitUsage);
    EXPECT_TRUE(wrong.err.startsWith("fenrow: --due takes a date")) << wrong.err.toStdString();

    auto store = openStore();
    ASSERT_EQ(store->flows().size(), 1);
    QStringList titles;
    for (const FlowNode *node : store->flows()[0]->orderedItems())
        titles << node->title;
    EXPECT_EQ(titles, (QStringList{"Call Anna tomorrow", "Read Tomorrow's news next week"}));
    EXPECT_FALSE(store->flows()[0]->orderedItems()[1]->dueDate.has_value());
}

} // namespace
} // namespace fenrow::testing
