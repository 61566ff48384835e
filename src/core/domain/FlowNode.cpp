#include "FlowNode.h"

#include "LocalCalendar.h"

namespace fenrow {

NodeStatus FlowNode::status() const
{
    return isDone ? NodeStatus::done : readRaw<NodeStatus>(statusRaw);
}

void FlowNode::setStatus(NodeStatus status)
{
    isDone = status == NodeStatus::done;
    if (status != NodeStatus::done)
        statusRaw = rawString(status);
}

bool FlowNode::isDeferred(const QDateTime &now, const LocalCalendar &calendar) const
{
    if (isDone || !startDate)
        return false;
    return calendar.startOfDay(*startDate) > calendar.startOfDay(now);
}

bool FlowNode::isOverdue(const QDateTime &now, const LocalCalendar &calendar) const
{
    if (isDone || !dueDate)
        return false;
    return *dueDate < calendar.startOfDay(now);
}

bool FlowNode::hasNotes() const
{
    return !notes.trimmed().isEmpty();
}

} // namespace fenrow
