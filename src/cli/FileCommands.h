#pragma once

namespace fenrow {

class CommandRegistry;

// "link", "unlink", "file trash" and "file purge": attached files joined to
// tasks, put in the trash, and the trash emptied.
namespace FileCommands {
void registerIn(CommandRegistry &registry);
}

} // namespace fenrow
