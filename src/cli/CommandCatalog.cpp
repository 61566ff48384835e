#include "CommandCatalog.h"

#include "ArchiveCommands.h"
#include "AttachCommand.h"
#include "BackupCommands.h"
#include "ExchangeCommands.h"
#include "FileCommands.h"
#include "FindCommand.h"
#include "FlowCommands.h"
#include "GraphCommands.h"
#include "HelpCommand.h"
#include "HistoryCommands.h"
#include "NewFlowCommand.h"
#include "ParseDateCommand.h"
#include "PlanCommand.h"
#include "ReadyCommand.h"
#include "RemindersCommand.h"
#include "TaskCommands.h"
#include "TaskDetailCommands.h"
#include "TemplateCommands.h"

namespace fenrow::CommandCatalog {

void registerAll(CommandRegistry &registry)
{
    // Help lists the commands in this order.
    ReadyCommand::registerIn(registry);
    TaskCommands::registerIn(registry);
    TaskDetailCommands::registerIn(registry);
    GraphCommands::registerIn(registry);
    HistoryCommands::registerIn(registry);
    PlanCommand::registerIn(registry);
    RemindersCommand::registerIn(registry);
    ParseDateCommand::registerIn(registry);
    FindCommand::registerIn(registry);
    FlowCommands::registerIn(registry);
    NewFlowCommand::registerIn(registry);
    TemplateCommands::registerIn(registry);
    AttachCommand::registerIn(registry);
    FileCommands::registerIn(registry);
    ArchiveCommands::registerIn(registry);
    ExchangeCommands::registerIn(registry);
    BackupCommands::registerIn(registry);
    HelpCommand::registerIn(registry);
}

} // namespace fenrow::CommandCatalog
