#pragma once

namespace fenrow {

class CommandRegistry;

// "undo" and "redo": the running window's Edit ▸ Undo and Redo, for one
// flow or for the flow Edit ▸ Undo would take.
namespace HistoryCommands {
void registerIn(CommandRegistry &registry);
}

} // namespace fenrow
