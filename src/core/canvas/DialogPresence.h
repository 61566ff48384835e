#pragma once

namespace fenrow {

// How many in-app dialogs are open, process-wide; the canvas takes no key
// commands while any is. UI thread only.
namespace DialogPresence {

int depth();

// Counts one dialog for as long as it lives.
class Scope {
public:
    Scope();
    ~Scope();
    Scope(const Scope &) = delete;
    Scope &operator=(const Scope &) = delete;
};

} // namespace DialogPresence

} // namespace fenrow
