#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace fenrow {

class Clock;
class CommandRegistry;
class Console;
class FenrowStore;

// Runs one command line: parses it, finds the command, checks what it was
// given, sets the clock, opens the store when the command needs it, runs the
// command and makes sure its changes reached the file.
class CommandDispatcher {
public:
    // Opens the store on the given clock, or returns null with the whole
    // fatal message. The store is closed when the command has run.
    using StoreOpener = std::function<std::unique_ptr<FenrowStore>(const Clock &clock, QString *fatalMessage)>;

    CommandDispatcher(const CommandRegistry &registry, StoreOpener openStore);

    // `arguments` without the program name. Returns the exit status.
    int run(const QStringList &arguments, Console &console) const;

    // When the process ends right after the command, the store's records
    // are left to the exit instead of being freed one by one.
    void setProcessEndsAfterCommand(bool ends) { m_processEndsAfterCommand = ends; }

private:
    const CommandRegistry &m_registry;
    StoreOpener m_openStore;
    bool m_processEndsAfterCommand = false;
};

} // namespace fenrow
