#pragma once

#include "CommandDefinition.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <deque>

namespace fenrow {

// Names of the options every command takes.
namespace GlobalOption {
inline const QString json = QStringLiteral("json");
inline const QString now = QStringLiteral("now");
inline const QString help = QStringLiteral("help");
inline const QString version = QStringLiteral("version");
inline const QString uiTest = QStringLiteral("ui-test");
inline const QString uiTestEngineUnavailable = QStringLiteral("ui-test-engine-unavailable");
} // namespace GlobalOption

// Every command and option the front end knows. Command groups add
// themselves through their own `registerIn`; the dispatcher and the help
// read from here, so a new command needs no change elsewhere.
class CommandRegistry {
public:
    // Starts with the global options.
    CommandRegistry();

    void addOption(OptionDefinition option);
    void addCommand(CommandDefinition command);

    const OptionDefinition *option(const QString &name) const;
    const OptionDefinition *optionByShortName(QChar shortName) const;
    bool isGlobalOption(const QString &name) const;
    QList<const OptionDefinition *> globalOptions() const;

    // The command whose words begin `words`, the longest when several do.
    struct Match {
        const CommandDefinition *command = nullptr;
        qsizetype wordCount = 0;
    };
    Match find(const QStringList &words) const;

    // Commands whose words start with `prefix`, in the order they were added.
    QList<const CommandDefinition *> commandsUnder(const QStringList &prefix) const;
    QList<const CommandDefinition *> commands() const { return commandsUnder({}); }

private:
    // Deques keep the addresses handed out stable as entries are added.
    std::deque<OptionDefinition> m_options;
    QStringList m_globalOptionNames;
    std::deque<CommandDefinition> m_commands;
};

} // namespace fenrow
