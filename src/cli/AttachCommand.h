#pragma once

namespace fenrow {

class CommandRegistry;

// "attach": a file copied into a flow, as a card on its canvas.
namespace AttachCommand {
void registerIn(CommandRegistry &registry);
}

} // namespace fenrow
