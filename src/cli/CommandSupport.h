#pragma once

#include <QString>

namespace fenrow {

class CommandContext;
class FlowNode;
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

inline const QString taskArgumentHelp = QStringLiteral(
    "TASK is the task's id, or its title: the exact title or the start of one\n"
    "task's title, either ignoring case, in any flow. --flow FLOW looks in\n"
    "that flow only.");

// Resolves the FLOW argument at `index`, or reports why it names none.
const TaskFlow *flowArgument(CommandContext &context, qsizetype index);
// Resolves the TASK argument at `index`, within --flow when given, or
// reports why it names none.
const FlowNode *taskArgument(CommandContext &context, qsizetype index);

// Asks `question` unless --yes was given. Any answer but yes reports
// `refusal` ("flow "Tax" was not deleted") and returns false; so does a run
// without a terminal, which also tells how to go ahead.
bool confirmed(CommandContext &context, const QString &question, const QString &refusal);

} // namespace CommandSupport

} // namespace fenrow
