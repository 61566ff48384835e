#pragma once

namespace fenrow {

class CommandRegistry;

// "show" and "checklist": everything about one task, and its steps.
namespace TaskDetailCommands {
void registerIn(CommandRegistry &registry);
}

} // namespace fenrow
