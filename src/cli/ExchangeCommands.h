#pragma once

namespace fenrow {

class CommandRegistry;

// "export markdown", "export opml" and "import": one flow out as a
// Markdown task list or an OPML outline, and an outline in as a new flow.
namespace ExchangeCommands {
void registerIn(CommandRegistry &registry);
}

} // namespace fenrow
