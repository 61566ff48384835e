#include "CommandRegistry.h"

#include <algorithm>

namespace fenrow {

namespace {

bool startsWithWords(const QStringList &words, const QStringList &prefix)
{
    if (prefix.size() > words.size())
        return false;
    for (qsizetype i = 0; i < prefix.size(); ++i) {
        if (words[i] != prefix[i])
            return false;
    }
    return true;
}

} // namespace

CommandRegistry::CommandRegistry()
{
    const QList<OptionDefinition> global{
        {GlobalOption::json, {}, {}, QStringLiteral("Print machine-readable JSON")},
        {GlobalOption::now, {}, QStringLiteral("TIME"),
         QStringLiteral("Take TIME (ISO 8601, e.g. 2026-06-10T09:00:00) as the current time")},
        {GlobalOption::help, QLatin1Char('h'), {}, QStringLiteral("Show help")},
        {GlobalOption::version, {}, {}, QStringLiteral("Show the version")},
        {GlobalOption::uiTest, {}, {}, QStringLiteral("Keep the store in memory"), true},
        {GlobalOption::uiTestEngineUnavailable, {}, {}, QStringLiteral("With --ui-test, use no inference engine"),
         true},
    };
    for (const OptionDefinition &option : global) {
        addOption(option);
        m_globalOptionNames.append(option.name);
    }
}

void CommandRegistry::addOption(OptionDefinition option)
{
    Q_ASSERT(!this->option(option.name));
    m_options.push_back(std::move(option));
}

void CommandRegistry::addCommand(CommandDefinition command)
{
    Q_ASSERT(std::none_of(m_commands.begin(), m_commands.end(),
                          [&](const CommandDefinition &known) { return known.name == command.name; }));
    m_commands.push_back(std::move(command));
}

const OptionDefinition *CommandRegistry::option(const QString &name) const
{
    for (const OptionDefinition &option : m_options) {
        if (option.name == name)
            return &option;
    }
    return nullptr;
}

const OptionDefinition *CommandRegistry::optionByShortName(QChar shortName) const
{
    for (const OptionDefinition &option : m_options) {
        if (!option.shortName.isNull() && option.shortName == shortName)
            return &option;
    }
    return nullptr;
}

bool CommandRegistry::isGlobalOption(const QString &name) const
{
    return m_globalOptionNames.contains(name);
}

QList<const OptionDefinition *> CommandRegistry::globalOptions() const
{
    QList<const OptionDefinition *> options;
    for (const QString &name : m_globalOptionNames)
        options.append(option(name));
    return options;
}

CommandRegistry::Match CommandRegistry::find(const QStringList &words) const
{
    Match best;
    for (const CommandDefinition &command : m_commands) {
        const QStringList commandWords = command.words();
        if (commandWords.size() > best.wordCount && startsWithWords(words, commandWords))
            best = {&command, commandWords.size()};
    }
    return best;
}

QList<const CommandDefinition *> CommandRegistry::commandsUnder(const QStringList &prefix) const
{
    QList<const CommandDefinition *> found;
    for (const CommandDefinition &command : m_commands) {
        if (startsWithWords(command.words(), prefix))
            found.append(&command);
    }
    return found;
}

} // namespace fenrow
