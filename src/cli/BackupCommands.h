#pragma once

namespace fenrow {

class CommandRegistry;

// "backup" and "restore": everything in one document, and back again by
// merging or replacing.
namespace BackupCommands {
void registerIn(CommandRegistry &registry);
}

} // namespace fenrow
