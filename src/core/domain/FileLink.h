#pragma once

#include <QDateTime>
#include <QUuid>

namespace fenrow {

class FlowFile;
class FlowNode;
class TaskFlow;

// A line on the canvas between one file card and one node.
class FileLink {
public:
    QUuid id;
    QDateTime createdAt;

    const TaskFlow *flow() const { return m_flow; }
    TaskFlow *flow() { return m_flow; }
    void setFlow(TaskFlow *flow) { m_flow = flow; }

    const FlowFile *file() const { return m_file; }
    FlowFile *file() { return m_file; }
    void setFile(FlowFile *file) { m_file = file; }

    const FlowNode *node() const { return m_node; }
    FlowNode *node() { return m_node; }
    void setNode(FlowNode *node) { m_node = node; }

private:
    TaskFlow *m_flow = nullptr;
    FlowFile *m_file = nullptr;
    FlowNode *m_node = nullptr;
};

} // namespace fenrow
