#pragma once

namespace fenrow {

// Process exit statuses of every command: scripts tell a refusal or a
// mistake in the command line apart from a command that could not do its
// work. `fenrow help` and the README list them.
enum ExitStatus : int {
    exitSuccess = 0,
    exitFailure = 1,
    exitUsage = 2,
};

} // namespace fenrow
