#pragma once

namespace fenrow {

class CommandRegistry;

// The commands of the `fenrow` executable. Each group registers itself in
// its own file; a new group adds one line here.
namespace CommandCatalog {
void registerAll(CommandRegistry &registry);
}

} // namespace fenrow
