#include "cli/CommandRegistry.h"
#include "cli/ParsedArguments.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>

namespace fenrow {
namespace {

TEST(ParsedArgumentsTest, SplitsWordsFromOptionsWhereverTheyStand)
{
    CommandRegistry registry;
    registry.addOption({"yes", 'y', {}, {}});
    const struct {
        QStringList arguments;
        QStringList words;
        QHash<QString, QString> options;
        QString error;
    } cases[] = {
        {{"--json", "flows"}, {"flows"}, {{"json", ""}}, {}},
        {{"flows", "--now", "2026-06-10T09:00:00"}, {"flows"}, {{"now", "2026-06-10T09:00:00"}}, {}},
        {{"--now=2026-06-10", "flows"}, {"flows"}, {{"now", "2026-06-10"}}, {}},
        {{"flow", "delete", "-y", "X"}, {"flow", "delete", "X"}, {{"yes", ""}}, {}},
        {{"flow", "move", "X", "-2"}, {"flow", "move", "X", "-2"}, {}, {}},
        {{"flow", "add", "--", "--json", "-"}, {"flow", "add", "--json", "-"}, {}, {}},
        // The words survive a problem, so its message can name the command.
        {{"flows", "--frob=1", "-q"}, {"flows"}, {}, "unknown option --frob"},
        {{"flows", "--now"}, {"flows"}, {}, "option --now needs a TIME value"},
        {{"flows", "--json=yes"}, {"flows"}, {{"json", ""}}, "option --json takes no value"},
    };
    for (const auto &example : cases) {
        const ParsedArguments parsed = ParsedArguments::parse(example.arguments, registry);
        const std::string shown = example.arguments.join(' ').toStdString();
        EXPECT_EQ(parsed.words, example.words) << shown;
        EXPECT_EQ(parsed.options, example.options) << shown;
        EXPECT_EQ(parsed.error, example.error) << shown;
    }
}

} // namespace
} // namespace fenrow
