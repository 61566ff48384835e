#pragma once

namespace fenrow {

class CommandRegistry;

// "flows" and "flow add|rename|delete|move": the sidebar's list of flows.
namespace FlowCommands {
void registerIn(CommandRegistry &registry);
}

} // namespace fenrow
