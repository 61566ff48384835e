#include "cli/CommandRegistry.h"
#include "cli/ParsedArguments.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>

namespace fenrow {
namespace {

TEST(ParsedArgumentsTest, SplitsWordsFromOptionsWhereverTheyStand)
{
    CommandRegistry registry;
    registry.addOption({QStringLiteral("yes"), QLatin1Char('y'), {}, {}});

    const struct {
        QStringList arguments;
        QStringList words;
        QHash<QString, QString> options;
    } cases[] = {
        {{"--json", "flows"}, {"flows"}, {{"json", ""}}},
        {{"flow", "add", "X", "--json"}, {"flow", "add", "X"}, {{"json", ""}}},
        {{"flows", "--now", "2026-06-10T09:00:00"}, {"flows"}, {{"now", "2026-06-10T09:00:00"}}},
        {{"--now=2026-06-10", "flows"}, {"flows"}, {{"now", "2026-06-10"}}},
        {{"flow", "delete", "-y", "X"}, {"flow", "delete", "X"}, {{"yes", ""}}},
        {{"flow", "move", "X", "-2"}, {"flow", "move", "X", "-2"}, {}},
        {{"flow", "add", "-"}, {"flow", "add", "-"}, {}},
        {{"flow", "add", "--", "--json", "-y"}, {"flow", "add", "--json", "-y"}, {}},
        {{"-h"}, {}, {{"help", ""}}},
    };
    for (const auto &example : cases) {
        const ParsedArguments parsed = ParsedArguments::parse(example.arguments, registry);
        const std::string shown = example.arguments.join(QLatin1Char(' ')).toStdString();
        EXPECT_EQ(parsed.error, QString()) << shown;
        EXPECT_EQ(parsed.words, example.words) << shown;
        EXPECT_EQ(parsed.options, example.options) << shown;
    }
}

TEST(ParsedArgumentsTest, ReportsTheFirstProblemAndKeepsTheWords)
{
    const CommandRegistry registry;
    const struct {
        QStringList arguments;
        QString error;
    } cases[] = {
        {{"flows", "--frobnicate"}, "unknown option --frobnicate"},
        {{"flows", "--frob=1", "--other"}, "unknown option --frob"},
        {{"flows", "-q"}, "unknown option -q"},
        {{"flows", "--now"}, "option --now needs a TIME value"},
        {{"flows", "--json=yes"}, "option --json takes no value"},
    };
    for (const auto &example : cases) {
        const ParsedArguments parsed = ParsedArguments::parse(example.arguments, registry);
        EXPECT_EQ(parsed.error, example.error) << example.arguments.join(QLatin1Char(' ')).toStdString();
        EXPECT_EQ(parsed.words.value(0), QStringLiteral("flows"));
    }
}

} // namespace
} // namespace fenrow
