#include "CommandSupport.h"

#include "CommandContext.h"
#include "NamedReference.h"
#include "PlainText.h"
#include "TaskReference.h"

#include "domain/FenrowStore.h"

namespace fenrow::CommandSupport {

const TaskFlow *flowArgument(CommandContext &context, qsizetype index)
{
    const FlowReference reference = FlowReference::resolve(context.store().flows(), context.argument(index));
    if (!reference.found())
        context.fail(reference.problem());
    return reference.found();
}

const FlowNode *taskArgument(CommandContext &context, qsizetype index)
{
    QList<const TaskFlow *> scope = context.store().flows();
    QString scopeNote;
    if (context.hasOption(SharedOption::flow)) {
        const FlowReference flow = FlowReference::resolve(scope, context.optionValue(SharedOption::flow));
        if (!flow.found()) {
            context.fail(flow.problem());
            return nullptr;
        }
        scope = {flow.found()};
        scopeNote = QStringLiteral("\nOnly flow %1 was searched.").arg(PlainText::quoted(flow.found()->name));
    }
    const TaskReference task = TaskReference::resolve(scope, context.argument(index));
    if (!task.node())
        context.fail(task.problem() + scopeNote);
    return task.node();
}

bool confirmed(CommandContext &context, const QString &question, const QString &refusal)
{
    if (context.hasOption(SharedOption::yes))
        return true;
    switch (context.console().confirm(question)) {
    case Console::Answer::yes:
        return true;
    case Console::Answer::no:
        context.fail(refusal);
        return false;
    case Console::Answer::unanswered:
        context.fail(refusal
                     + QStringLiteral(": nobody confirmed it. Run the command on a terminal to be asked, or pass "
                                      "--yes."));
        return false;
    }
    return false;
}

} // namespace fenrow::CommandSupport
