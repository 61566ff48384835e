#pragma once

namespace fenrow {

class CommandRegistry;

// "plan": today's ready tasks fitted into a time budget, and optionally
// saved as today's order.
namespace PlanCommand {
void registerIn(CommandRegistry &registry);
}

} // namespace fenrow
