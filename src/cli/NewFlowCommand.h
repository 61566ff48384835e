#pragma once

namespace fenrow {

class CommandRegistry;

// "new-flow --from-text": a flow of tasks drafted from prose by the
// inference engine.
namespace NewFlowCommand {
void registerIn(CommandRegistry &registry);
}

} // namespace fenrow
