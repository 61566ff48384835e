#pragma once

#include <QString>

namespace fenrow {

class CommandContext;
class TaskFlow;

// Options several command groups take; each is registered once, by the
// group named beside it.
namespace SharedOption {
inline const QString flow = QStringLiteral("flow"); // TaskCommands
inline const QString yes = QStringLiteral("yes");   // FlowCommands
} // namespace SharedOption

namespace CommandSupport {

inline const QString flowArgumentHelp = QStringLiteral(
    "FLOW is the flow's id, or its name: the exact name or the start of one\n"
    "flow's name, either ignoring case.");

// Resolves the FLOW argument at `index`, or reports why it names none.
const TaskFlow *flowArgument(CommandContext &context, qsizetype index);

// Asks `question` unless --yes was given. Any answer but yes reports
// `refusal` ("flow "Tax" was not deleted") and returns false; so does a run
// without a terminal, which also tells how to go ahead.
bool confirmed(CommandContext &context, const QString &question, const QString &refusal);

} // namespace CommandSupport

} // namespace fenrow
