#pragma once

namespace fenrow {

class CommandRegistry;

// "archive", "archived" and "restore-task": done work taken off the canvas,
// the list of it, and a task brought back.
namespace ArchiveCommands {
void registerIn(CommandRegistry &registry);
}

} // namespace fenrow
