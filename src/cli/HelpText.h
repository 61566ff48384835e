#pragma once

#include <QString>
#include <QStringList>
#include <QTextStream>

namespace fenrow {

class CommandRegistry;
struct CommandDefinition;

// The help the front end prints, all of it read from the registry.
namespace HelpText {

// Everything at a glance: "fenrow --help" and "fenrow help".
void printOverview(const CommandRegistry &registry, QTextStream &out);
// The commands under a group's words: "fenrow help flow".
void printGroup(const CommandRegistry &registry, const QStringList &group, QTextStream &out);
void printCommand(const CommandRegistry &registry, const CommandDefinition &command, QTextStream &out);

// "fenrow flow delete FLOW [--yes]".
QString usage(const CommandRegistry &registry, const CommandDefinition &command);

} // namespace HelpText

} // namespace fenrow
