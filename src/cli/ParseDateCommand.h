#pragma once

namespace fenrow {

class CommandRegistry;

// "parse-date": what "add" (and quick capture, once it exists) reads as a
// date in a title.
namespace ParseDateCommand {
void registerIn(CommandRegistry &registry);
}

} // namespace fenrow
