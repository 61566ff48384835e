#pragma once

class QCoreApplication;

namespace fenrow {

// The headless front end: `fenrow <subcommand> …`.
namespace CommandLine {
// True when the arguments name a subcommand (or ask for help or the
// version), so the process must not start the desktop program.
bool hasSubcommand(int argc, char *argv[]);
// Runs the subcommand and returns the process exit status.
int run(QCoreApplication &application);
} // namespace CommandLine

} // namespace fenrow
