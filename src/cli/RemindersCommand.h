#pragma once

namespace fenrow {

class CommandRegistry;

// "reminders": the due reminders and the morning digest the running program
// lays out now, as its notification service would.
namespace RemindersCommand {
void registerIn(CommandRegistry &registry);
}

} // namespace fenrow
