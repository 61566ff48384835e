#pragma once

namespace fenrow {

class CommandRegistry;

// "duplicate", "templates" and "template save|new|delete": new flows made
// from the shape of another, without its progress.
namespace TemplateCommands {
void registerIn(CommandRegistry &registry);
}

} // namespace fenrow
