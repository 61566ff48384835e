#pragma once

namespace fenrow {

class CommandRegistry;

// "help [COMMAND]": the overview, a group's commands, or one command.
namespace HelpCommand {
void registerIn(CommandRegistry &registry);
}

} // namespace fenrow
