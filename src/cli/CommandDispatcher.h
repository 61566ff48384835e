#pragma once

#include "CommandWorkspace.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

namespace fenrow {

class Clock;
class CommandRegistry;
class Console;
class FenrowStore;

// Runs one command line: parses it, finds the command, checks what it was
// given, sets the clock, opens the store when the command needs it (or
// takes the running program's), runs the command and makes sure its
// changes reached the file; what it writes to the standard output is
// printed only then, and not at all when the save failed.
class CommandDispatcher {
public:
    // How a run alone reaches the store: opened here, or not at all (with
    // the whole message why), or the command was handed to the process that
    // owns the store, which ran it (with its exit status).
    struct StoreAccess {
        std::unique_ptr<FenrowStore> store{};
        QString fatalMessage{};
        std::optional<int> handedOverStatus{};
    };
    // Asked only once the command line is known good and the command needs
    // the store. An opened store is closed when the command has run.
    using StoreOpener = std::function<StoreAccess(const Clock &clock)>;

    // Commands run alone, each on a store of its own.
    CommandDispatcher(const CommandRegistry &registry, StoreOpener openStore);
    // Commands run inside the program that owns `workspace`.
    CommandDispatcher(const CommandRegistry &registry, CommandWorkspace workspace);

    // `arguments` without the program name; relative paths in them are
    // taken from `workingDirectory` (the current one when empty). Returns
    // the exit status.
    int run(const QStringList &arguments, Console &console, const QString &workingDirectory = {}) const;

    // When the process ends right after the command, the store's records
    // are left to the exit instead of being freed one by one.
    void setProcessEndsAfterCommand(bool ends) { m_processEndsAfterCommand = ends; }

private:
    const CommandRegistry &m_registry;
    StoreOpener m_openStore;
    CommandWorkspace m_workspace;
    bool m_processEndsAfterCommand = false;
};

} // namespace fenrow
