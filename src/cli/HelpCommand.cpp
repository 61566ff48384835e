#include "HelpCommand.h"

#include "CommandContext.h"
#include "CommandRegistry.h"
#include "ExitStatus.h"
#include "HelpText.h"
#include "PlainText.h"

namespace fenrow::HelpCommand {

namespace {

int showHelp(CommandContext &context)
{
    const CommandRegistry &registry = context.registry();
    const QStringList &topic = context.arguments();
    if (topic.isEmpty()) {
        HelpText::printOverview(registry, context.out());
        return exitSuccess;
    }
    const CommandRegistry::Match match = registry.find(topic);
    if (match.command && match.wordCount == topic.size()) {
        HelpText::printCommand(registry, *match.command, context.out());
        return exitSuccess;
    }
    if (!registry.commandsUnder(topic).isEmpty()) {
        HelpText::printGroup(registry, topic, context.out());
        return exitSuccess;
    }
    // Point to the overview, which lists what there is.
    return context.console().usageError(
        QStringLiteral("there is no command %1").arg(PlainText::quoted(topic.join(QLatin1Char(' ')))), {}, {});
}

} // namespace

void registerIn(CommandRegistry &registry)
{
    registry.addCommand({
        .name = QStringLiteral("help"),
        .argumentsSyntax = QStringLiteral("[COMMAND]"),
        .argumentKinds = {QStringLiteral("COMMAND...")},
        .summary = QStringLiteral("Show help on all commands, or on one"),
        .maxArguments = -1,
        .usesStore = false,
        .run = showHelp,
    });
}

} // namespace fenrow::HelpCommand
