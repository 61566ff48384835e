#pragma once

namespace fenrow {

class CommandRegistry;

// "ready": what can be worked on now, from every flow.
namespace ReadyCommand {
void registerIn(CommandRegistry &registry);
}

} // namespace fenrow
