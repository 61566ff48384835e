#pragma once

#include "CommandDefinition.h"
#include "CommandWorkspace.h"
#include "Console.h"
#include "DocumentFile.h"
#include "ParsedArguments.h"

#include "domain/FenrowHistory.h"

#include <QJsonValue>
#include <QStringList>

#include <memory>

namespace fenrow {

class AppEnvironment;
class AppPreferences;
class Clock;
class CommandRegistry;
class TaskFlow;

// Everything one command run needs: its words and options, the clock, the
// store (for commands that use it) with its history, the preferences and
// the engine, the folder relative paths start from, and the console.
class CommandContext {
public:
    // What `workspace` lacks, the context makes for itself when first asked.
    CommandContext(const CommandRegistry &registry, const CommandDefinition &command, const ParsedArguments &parsed,
                   Console &console, const Clock &clock, const CommandWorkspace &workspace,
                   QString workingDirectory);
    ~CommandContext();

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
    // Only for commands that use the store; the dispatcher opened it, or it
    // is the running program's.
    FenrowStore &store() const;
    FenrowHistory &history();
    // The running program's history; null for a command run alone, whose
    // own history starts empty and ends with it.
    FenrowHistory *runningHistory() const { return m_workspace.history; }
    AppPreferences &preferences();
    // The inference engine: the running program's, or the one this run
    // chooses (see EngineSupport::environment).
    AppEnvironment &environment();

    // Runs `body` as one undoable step named `name` on `flow`, as a change
    // from outside the window is recorded: in the running program, Edit ▸
    // Undo takes it back.
    template <typename Body>
    auto recordAction(const QString &name, const TaskFlow &flow, Body &&body)
    {
        return history().recordFromOutside(name, flow, std::forward<Body>(body));
    }

    // `path` as the user gave it, made absolute from the folder the command
    // was given in (which is not this process's own when the running
    // program runs the command).
    QString filePath(const QString &path) const;
    UserPath userPath(const QString &path) const { return {path, filePath(path)}; }
    const QString &workingDirectory() const { return m_workingDirectory; }

    Console &console() { return m_console; }
    QTextStream &out() { return m_console.out(); }

    void printJson(const QJsonValue &value);
    int fail(const QString &message) { return m_console.fail(message); }
    int refuse(const QString &message) { return m_console.refuse(message); }
    int usageError(const QString &message);

private:
    const CommandRegistry &m_registry;
    const CommandDefinition &m_command;
    const ParsedArguments &m_parsed;
    QStringList m_arguments;
    Console &m_console;
    const Clock &m_clock;
    CommandWorkspace m_workspace;
    QString m_workingDirectory;
    std::unique_ptr<FenrowHistory> m_ownHistory;
    std::unique_ptr<AppPreferences> m_ownPreferences;
    std::unique_ptr<AppEnvironment> m_ownEnvironment;
};

} // namespace fenrow
