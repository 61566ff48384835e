#pragma once

namespace fenrow {

class CommandRegistry;

// "find": tasks by title or notes, grouped by flow.
namespace FindCommand {
void registerIn(CommandRegistry &registry);
}

} // namespace fenrow
