#pragma once

#include "ChecklistEntry.h"
#include "NodeColor.h"
#include "NodePriority.h"
#include "NodeStatus.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace fenrow {

class FileLink;
class LocalCalendar;
class TaskFlow;

// One task of a flow.
//
// `isDone` is the one truth of completion. `statusRaw` holds what the task
// is when it is not done (pending, in progress, paused) and survives
// completion, so un-ticking a task brings back its earlier state.
class FlowNode {
public:
    QUuid id;
    QString title;
    bool isDone = false;
    QString statusRaw = QStringLiteral("pending");
    QString notes;
    QString priorityRaw = QStringLiteral("none");
    QString colorRaw = QStringLiteral("none");
    std::optional<QDateTime> startDate;
    std::optional<QDateTime> dueDate;
    std::optional<qint64> estimateMinutes;
    std::optional<qint64> dayPlanRank;
    std::optional<double> manualWidth;
    std::optional<double> manualHeight;
    QString checklistData;
    std::optional<QString> recurrenceRaw;
    qint64 repeatCount = 0;
    std::optional<QDateTime> completedAt;
    bool isCollapsed = false;
    double posX = 0;
    double posY = 0;
    qint64 order = 0;
    QDateTime createdAt;

    const TaskFlow *flow() const { return m_flow; }
    TaskFlow *flow() { return m_flow; }
    void setFlow(TaskFlow *flow) { m_flow = flow; }

    // Links to file cards; owned by the flow, listed here for the cascade.
    const QList<FileLink *> &fileLinks() const { return m_fileLinks; }
    QList<FileLink *> &fileLinks() { return m_fileLinks; }

    // The flow's `nodesVersion` at the node's latest write (0 for a node as
    // it was read from the file; the largest number when it was written
    // without a flow): a reader that kept what it read of the node at a
    // version from this one on may keep using it.
    quint64 writtenVersion() const { return m_writtenVersion; }

    NodeStatus status() const;
    // Writes `isDone`, and `statusRaw` only for a not-done status: assigning
    // done leaves the earlier not-done state in place.
    void setStatus(NodeStatus status);

    NodePriority priority() const { return readRaw<NodePriority>(priorityRaw); }
    NodeColor color() const { return readRaw<NodeColor>(colorRaw); }
    Checklist checklist() const { return ChecklistCodec::decode(checklistData); }

    bool isDeferred(const QDateTime &now, const LocalCalendar &calendar) const;
    bool isOverdue(const QDateTime &now, const LocalCalendar &calendar) const;
    bool hasNotes() const;
    bool hasManualSize() const { return manualWidth.has_value() && manualHeight.has_value(); }

private:
    friend class PendingWrites;

    TaskFlow *m_flow = nullptr;
    quint64 m_writtenVersion = 0;
    QList<FileLink *> m_fileLinks;
};

} // namespace fenrow
