#pragma once

#include "FlowGraph.h"
#include "NodeStatus.h"

#include <QDateTime>
#include <QList>

#include <optional>

namespace fenrow {

class FlowNode;
class LocalCalendar;
class TaskFlow;

// One row of the Ready list.
struct ReadyTask {
    const FlowNode *node = nullptr;
    const TaskFlow *flow = nullptr;
};

enum class ReadySort { flow, dueDate, priority, estimate };

template <>
struct RawNames<ReadySort> {
    static constexpr std::array<const char *, 4> names{"flow", "dueDate", "priority", "estimate"};
};

enum class ReadyEmptyReason { noTasks, allDone, allBlocked, allDeferred };

// What a card or a row says about a node.
struct NodeCardState {
    enum class Kind { status, deferred, waiting, ready };
    Kind kind = Kind::ready;
    NodeStatus status = NodeStatus::pending; // for `status`
    QDateTime until;                         // for `deferred`
    qsizetype blockers = 0;                  // for `waiting`

    friend bool operator==(const NodeCardState &, const NodeCardState &) = default;
};

struct TodayGroups {
    QList<ReadyTask> today;
    QList<ReadyTask> rest;
    bool hasRanks = false;
};

// What can be worked on now. A node is ready when it is not done, every
// prerequisite and every subtask of it is done, and its start day has come.
// Paused and in-progress states, folding, due dates and priorities play no
// part. Only direct edges count.
namespace Readiness {

// Prerequisites first, then subtasks, those not done; duplicates stay.
QList<const FlowNode *> openBlockers(const FlowNode &node);
QList<const FlowNode *> openBlockers(const FlowNode &node, const BlockerMaps &maps);
// Whether openBlockers would be non-empty, without making the list.
bool hasOpenBlocker(const FlowNode &node, const BlockerMaps &maps);
// Not-done nodes without open blockers, deferred ones included, by order.
QList<const FlowNode *> readyNodes(const TaskFlow &flow);
// What a node's completion released: its dependents and the parents it is
// a subtask of that are now free, deferred or not.
QList<const FlowNode *> unlockedBy(const FlowNode &node);
// Every ready task of every flow, flow by flow, then by order. Linear in
// nodes plus edges.
QList<ReadyTask> readyTasks(const QList<const TaskFlow *> &flows, const QDateTime &now, const LocalCalendar &calendar);
qsizetype readyCount(const TaskFlow &flow, const QDateTime &now, const LocalCalendar &calendar);
// Stable: equal keys keep their incoming order.
QList<ReadyTask> sortedReady(const QList<ReadyTask> &tasks, ReadySort sort);
TodayGroups todayGroups(const QList<ReadyTask> &tasks, const QDateTime &now, const LocalCalendar &calendar);
// The Ready list as the window shows it: today's tasks first, in their
// planned order, then the rest in `sort`.
QList<ReadyTask> inListOrder(const QList<const TaskFlow *> &flows, const QDateTime &now,
                             const LocalCalendar &calendar, ReadySort sort);
// Why the Ready list is empty; meaningful only when it is.
ReadyEmptyReason readyEmptyReason(const QList<const TaskFlow *> &flows, const QDateTime &now,
                                  const LocalCalendar &calendar);
NodeCardState cardState(const FlowNode &node, qsizetype openBlockerCount, const QDateTime &now,
                        const LocalCalendar &calendar);

} // namespace Readiness

} // namespace fenrow
