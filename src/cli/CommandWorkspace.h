#pragma once

namespace fenrow {

class AppEnvironment;
class AppPreferences;
class FenrowHistory;
class FenrowStore;
class OverridableClock;

// The running program's own store and what lives beside it, for commands
// run inside the process that owns the store. A command run alone has none
// of these and makes its own.
struct CommandWorkspace {
    FenrowStore *store = nullptr;
    FenrowHistory *history = nullptr;
    AppPreferences *preferences = nullptr;
    AppEnvironment *environment = nullptr;
    // The store's clock, fixed for a command that brings `--now`.
    OverridableClock *clock = nullptr;
};

} // namespace fenrow
