#include "CommandDispatcher.h"

#include "CommandContext.h"
#include "CommandRegistry.h"
#include "Console.h"
#include "ExitStatus.h"
#include "HelpText.h"
#include "ParsedArguments.h"
#include "PlainText.h"

#include "domain/FenrowStore.h"
#include "domain/FixedClock.h"
#include "domain/OverridableClock.h"
#include "domain/SystemClock.h"

#include <QCoreApplication>
#include <QDir>

namespace fenrow {

namespace {

// No command matched: say which group the words began, if any, and what
// that group offers.
int reportUnknownCommand(const CommandRegistry &registry, const QStringList &words, Console &console)
{
    for (qsizetype length = words.size(); length > 0; --length) {
        const QStringList group = words.first(length);
        const QList<const CommandDefinition *> members = registry.commandsUnder(group);
        if (members.isEmpty())
            continue;
        QStringList choices;
        for (const CommandDefinition *command : members)
            choices.append(command->words().at(length));
        choices.removeDuplicates();
        const QString groupName = group.join(QLatin1Char(' '));
        const QString message = length == words.size()
            ? QStringLiteral("%1 needs a command: %2").arg(groupName, choices.join(QStringLiteral(", ")))
            : QStringLiteral("unknown command %1 %2; it is one of: %3")
                  .arg(groupName, PlainText::quoted(words[length]), choices.join(QStringLiteral(", ")));
        return console.usageError(message, {}, groupName);
    }
    return console.usageError(QStringLiteral("unknown command %1").arg(PlainText::quoted(words.first())), {}, {});
}

int printHelp(const CommandRegistry &registry, const ParsedArguments &parsed, const CommandRegistry::Match &match,
              Console &console)
{
    if (match.command)
        HelpText::printCommand(registry, *match.command, console.out());
    else if (parsed.words.isEmpty())
        HelpText::printOverview(registry, console.out());
    else if (!registry.commandsUnder(parsed.words).isEmpty())
        HelpText::printGroup(registry, parsed.words, console.out());
    else
        return reportUnknownCommand(registry, parsed.words, console);
    console.out().flush();
    return exitSuccess;
}

// What is wrong with the options and arguments `command` was given; empty
// when nothing is.
QString problemWith(const CommandRegistry &registry, const CommandDefinition &command, const ParsedArguments &parsed)
{
    for (auto it = parsed.options.cbegin(); it != parsed.options.cend(); ++it) {
        if (!registry.isGlobalOption(it.key()) && !command.options.contains(it.key()))
            return QStringLiteral("%1 takes no option --%2").arg(command.name, it.key());
    }
    if (parsed.has(GlobalOption::version))
        return QStringLiteral("--version goes alone");

    const qsizetype wordCount = command.words().size();
    const qsizetype given = parsed.words.size() - wordCount;
    if (given < command.minArguments) {
        const QStringList expected = command.argumentsSyntax.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        return QStringLiteral("%1 needs %2").arg(command.name, expected.value(given));
    }
    if (command.maxArguments >= 0 && given > command.maxArguments) {
        const QString extra = parsed.words.value(wordCount + command.maxArguments);
        return QStringLiteral("too many arguments for %1 at %2 (quote a name that has spaces)")
            .arg(command.name, PlainText::quoted(extra));
    }
    if (parsed.has(GlobalOption::now)
        && !QDateTime::fromString(parsed.value(GlobalOption::now), Qt::ISODate).isValid())
        return QStringLiteral("--now needs an ISO 8601 time such as 2026-06-10T09:00:00, not %1")
            .arg(PlainText::quoted(parsed.value(GlobalOption::now)));
    return {};
}

// The store logs a failed save and keeps the changes pending; a command
// must not report, even in part, changes that never reached the file, so
// what it printed is dropped and only the failure is told.
int notSaved(Console &console)
{
    console.discardOutput();
    return console.fail(QStringLiteral("the changes could not be saved"));
}

std::optional<QDateTime> fixedMoment(const ParsedArguments &parsed)
{
    if (parsed.has(GlobalOption::now))
        return QDateTime::fromString(parsed.value(GlobalOption::now), Qt::ISODate);
    return std::nullopt;
}

std::unique_ptr<Clock> clockFor(const ParsedArguments &parsed)
{
    if (const std::optional<QDateTime> moment = fixedMoment(parsed))
        return std::make_unique<FixedClock>(*moment);
    return std::make_unique<SystemClock>();
}

} // namespace

CommandDispatcher::CommandDispatcher(const CommandRegistry &registry, StoreOpener openStore)
    : m_registry(registry), m_openStore(std::move(openStore))
{
}

CommandDispatcher::CommandDispatcher(const CommandRegistry &registry, CommandWorkspace workspace)
    : m_registry(registry), m_workspace(workspace)
{
}

int CommandDispatcher::run(const QStringList &arguments, Console &console, const QString &workingDirectory) const
{
    const ParsedArguments parsed = ParsedArguments::parse(arguments, m_registry);
    const CommandRegistry::Match match = m_registry.find(parsed.words);

    if (!parsed.error.isEmpty()) {
        if (match.command)
            return console.usageError(parsed.error, HelpText::usage(m_registry, *match.command), match.command->name);
        return console.usageError(parsed.error, {}, {});
    }

    if (parsed.has(GlobalOption::version) && parsed.words.isEmpty()) {
        console.out() << "fenrow " << QCoreApplication::applicationVersion() << Qt::endl;
        return exitSuccess;
    }
    if (parsed.has(GlobalOption::help))
        return printHelp(m_registry, parsed, match, console);
    if (parsed.words.isEmpty())
        return console.usageError(QStringLiteral("no command given"),
                                  QStringLiteral("fenrow COMMAND [ARGUMENTS] [OPTIONS]"), {});
    if (!match.command)
        return reportUnknownCommand(m_registry, parsed.words, console);

    const CommandDefinition &command = *match.command;
    const QString problem = problemWith(m_registry, command, parsed);
    if (!problem.isEmpty())
        return console.usageError(problem, HelpText::usage(m_registry, command), command.name);

    const QString folder = workingDirectory.isEmpty() ? QDir::currentPath() : workingDirectory;
    if (m_workspace.store) {
        // Inside the program: its store, history and preferences, its clock
        // fixed for the command's length when it brought --now.
        const OverridableClock::Scope moment(*m_workspace.clock, fixedMoment(parsed));
        CommandContext context(m_registry, command, parsed, console, *m_workspace.clock, m_workspace, folder);
        FenrowStore &store = *m_workspace.store;
        console.holdOutput([&store] { return !store.hasChanges(); });
        const int status = command.run(context);
        if (command.usesStore && m_workspace.store->hasChanges())
            return notSaved(console);
        console.releaseOutput();
        return status;
    }

    const std::unique_ptr<Clock> clock = clockFor(parsed);
    // Declared after the clock, which the store keeps a reference to.
    std::unique_ptr<FenrowStore> store;
    if (command.usesStore) {
        StoreAccess access = m_openStore(*clock);
        if (access.handedOverStatus)
            return *access.handedOverStatus;
        store = std::move(access.store);
        if (!store) {
            console.out().flush();
            console.err() << access.fatalMessage << Qt::endl;
            return exitFailure;
        }
    }

    CommandWorkspace workspace;
    workspace.store = store.get();
    // In a block: the context's own history and preferences go before the
    // store they refer to.
    int status;
    console.holdOutput([&store] { return !store || !store->hasChanges(); });
    {
        CommandContext context(m_registry, command, parsed, console, *clock, workspace, folder);
        status = command.run(context);
    }
    if (store && store->hasChanges())
        return notSaved(console);
    console.releaseOutput();
    if (store && m_processEndsAfterCommand)
        FenrowStore::closeForExit(std::move(store));
    return status;
}

} // namespace fenrow
