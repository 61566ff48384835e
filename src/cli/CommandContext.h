#pragma once

#include "CommandDefinition.h"
#include "Console.h"
#include "ParsedArguments.h"

#include <QJsonValue>
#include <QStringList>

namespace fenrow {

class Clock;
class CommandRegistry;
class FenrowStore;

// Everything one command run needs: its words and options, the clock, the
// store (for commands that use it) and the console.
class CommandContext {
public:
    CommandContext(const CommandRegistry &registry, const CommandDefinition &command, const ParsedArguments &parsed,
                   Console &console, const Clock &clock, FenrowStore *store);

    const CommandRegistry &registry() const { return m_registry; }
    const CommandDefinition &command() const { return m_command; }

    // The words after the command's own.
    const QStringList &arguments() const { return m_arguments; }
    QString argument(qsizetype index) const { return m_arguments.value(index); }
    bool hasOption(const QString &name) const { return m_parsed.has(name); }
    // The value an option was given; empty when it was not.
    QString optionValue(const QString &name) const { return m_parsed.value(name); }
    bool json() const;

    const Clock &clock() const { return m_clock; }
    // Only for commands that use the store; the dispatcher opened it.
    FenrowStore &store() const;

    Console &console() { return m_console; }
    QTextStream &out() { return m_console.out(); }

    void printJson(const QJsonValue &value);
    int fail(const QString &message) { return m_console.fail(message); }
    int usageError(const QString &message);

private:
    const CommandRegistry &m_registry;
    const CommandDefinition &m_command;
    const ParsedArguments &m_parsed;
    QStringList m_arguments;
    Console &m_console;
    const Clock &m_clock;
    FenrowStore *m_store;
};

} // namespace fenrow
