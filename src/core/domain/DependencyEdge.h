#pragma once

#include "EdgeKind.h"
#include "EdgeSource.h"

#include <QDateTime>
#include <QUuid>

#include <optional>

namespace fenrow {

class FlowNode;
class TaskFlow;

// A directed relation between two nodes of one flow. A dependency edge holds
// up its head (`toItem`); a subtask edge holds up its tail (`fromItem`, the
// parent). The ends are plain references: an edge that lost an end is
// ignored by every graph query.
class DependencyEdge {
public:
    QUuid id;
    EdgeSource source = EdgeSource::manual;
    // Stored as `kind`; absent in data written before kinds existed.
    std::optional<EdgeKind> kind;
    QDateTime createdAt;

    EdgeKind effectiveKind() const { return kind.value_or(EdgeKind::dependency); }
    bool isSubtask() const { return effectiveKind() == EdgeKind::subtask; }

    const TaskFlow *flow() const { return m_flow; }
    TaskFlow *flow() { return m_flow; }
    void setFlow(TaskFlow *flow) { m_flow = flow; }

    const FlowNode *fromItem() const { return m_from; }
    FlowNode *fromItem() { return m_from; }
    void setFromItem(FlowNode *node) { m_from = node; }

    const FlowNode *toItem() const { return m_to; }
    FlowNode *toItem() { return m_to; }
    void setToItem(FlowNode *node) { m_to = node; }

private:
    TaskFlow *m_flow = nullptr;
    FlowNode *m_from = nullptr;
    FlowNode *m_to = nullptr;
};

} // namespace fenrow
