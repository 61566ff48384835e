#include "CommandCatalog.h"

#include "FlowCommands.h"
#include "HelpCommand.h"

namespace fenrow::CommandCatalog {

void registerAll(CommandRegistry &registry)
{
    // Help lists the commands in this order.
    FlowCommands::registerIn(registry);
    HelpCommand::registerIn(registry);
}

} // namespace fenrow::CommandCatalog
