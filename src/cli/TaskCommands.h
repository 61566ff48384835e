#pragma once

namespace fenrow {

class CommandRegistry;

// "add", "edit" and "done": single tasks, named by id or title.
namespace TaskCommands {
void registerIn(CommandRegistry &registry);
}

} // namespace fenrow
