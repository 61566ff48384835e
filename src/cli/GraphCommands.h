#pragma once

namespace fenrow {

class CommandRegistry;

// "connect", "disconnect", "subtask", "delete" and "move": the shape of a
// flow's graph, changed as the canvas changes it.
namespace GraphCommands {
void registerIn(CommandRegistry &registry);
}

} // namespace fenrow
