#include "CommandLineTest.h"

#include "cli/CommandLine.h"
#include "cli/ExitStatus.h"

#include <QByteArrayList>

namespace fenrow::testing {
namespace {

using DispatcherTest = CommandLineTest;

TEST_F(DispatcherTest, UsageErrorsSayWhatIsWrongAndWhereToReadMore)
{
    const struct {
        QStringList arguments;
        QString problem;
        QString help;
    } cases[] = {
        {{"flow", "add"}, "flow add needs NAME", "fenrow help flow add"},
        {{"flow", "rename", "X"}, "flow rename needs NAME", "fenrow help flow rename"},
        {{"flow", "add", "Launch", "site"}, "too many arguments for flow add at \"site\"", "fenrow help flow add"},
        {{"flows", "--frob"}, "unknown option --frob", "fenrow help flows"},
        {{"flow", "add", "X", "--yes"}, "flow add takes no option --yes", "fenrow help flow add"},
        {{"flows", "--now", "June"}, "--now needs an ISO 8601 time", "fenrow help flows"},
        {{"flow"}, "flow needs a command: add, rename, delete, move", "fenrow help flow"},
        {{"flow", "remove", "X"}, "unknown command flow \"remove\"", "fenrow help flow"},
        {{"floes"}, "unknown command \"floes\"", "fenrow help\""},
        {{"--json"}, "no command given", "fenrow help\""},
        {{"help", "nothing"}, "there is no command \"nothing\"", "fenrow help\""},
    };
    for (const auto &example : cases) {
        const CommandResult result = run(example.arguments);
        const std::string shown = example.arguments.join(' ').toStdString();
        EXPECT_EQ(result.status, exitUsage) << shown;
        EXPECT_TRUE(result.err.startsWith("fenrow: " + example.problem)) << shown << "\n" << result.err.toStdString();
        EXPECT_TRUE(result.err.contains(example.help)) << shown << "\n" << result.err.toStdString();
        EXPECT_EQ(result.out, QString()) << shown;
    }
    // A mistake in the command line is found before the store is touched.
    EXPECT_EQ(storeOpenings, 0);
}

TEST_F(DispatcherTest, HelpAndVersionWorkWithoutTheStore)
{
    fatalMessage = "Failed to create the Fenrow ModelContainer: broken";

    const CommandResult overview = run({"--help"});
    EXPECT_EQ(overview.status, exitSuccess);
    for (const CommandDefinition *command : registry.commands())
        EXPECT_TRUE(overview.out.contains("  " + command->name)) << command->name.toStdString();
    EXPECT_FALSE(overview.out.contains("ui-test"));
    EXPECT_EQ(run({"help"}).out, overview.out);

    const CommandResult group = run({"help", "flow"});
    EXPECT_TRUE(group.out.contains("flow move FLOW POSITION"));
    EXPECT_FALSE(group.out.contains("  flows"));
    EXPECT_EQ(run({"flow", "--help"}).out, group.out);

    const CommandResult command = run({"help", "flow", "delete"});
    EXPECT_TRUE(command.out.startsWith("Usage: fenrow flow delete FLOW [--yes]\n")) << command.out.toStdString();
    EXPECT_EQ(run({"flow", "delete", "-h"}).out, command.out);

    EXPECT_EQ(run({"--version"}).out, "fenrow 9.8.7\n");
    EXPECT_EQ(storeOpenings, 0);
}

TEST(SubcommandDetectionTest, TellsSubcommandsFromDesktopLaunches)
{
    const struct {
        QByteArrayList arguments;
        bool subcommand;
    } cases[] = {
        {{}, false},
        {{"--ui-test"}, false},
        {{"--style", "fusion", "-platform", "offscreen"}, false},
        {{"fenrow://ready"}, false},
        {{"flows"}, true},
        {{"--ui-test", "flow", "add", "X"}, true},
        {{"-platform", "offscreen", "flows"}, true},
        {{"-h"}, true},
        {{"--version"}, true},
        {{"nonsense"}, true},
    };
    for (const auto &example : cases) {
        QByteArrayList arguments{"fenrow"};
        arguments += example.arguments;
        std::vector<char *> argv;
        for (QByteArray &argument : arguments)
            argv.push_back(argument.data());
        EXPECT_EQ(CommandLine::hasSubcommand(int(argv.size()), argv.data()), example.subcommand)
            << example.arguments.join(' ').toStdString();
    }
}

} // namespace
} // namespace fenrow::testing
