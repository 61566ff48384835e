#include "Readiness.h"

#include "LocalCalendar.h"
#include "TaskFlow.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace fenrow::Readiness {

namespace {

// The first instant that no longer belongs to today: a start date at or
// after it lies on a later day, so the node is deferred.
QDateTime startOfTomorrow(const QDateTime &now, const LocalCalendar &calendar)
{
    return calendar.startOfDay(calendar.dayOf(now).addDays(1));
}

bool isDeferredBefore(const FlowNode &node, const QDateTime &tomorrow)
{
    return !node.isDone && node.startDate && *node.startDate >= tomorrow;
}

// Nodes of a flow held up by at least one open prerequisite or subtask,
// sorted for binary search. One pass over the edges.
std::vector<const FlowNode *> blockedNodes(const TaskFlow &flow)
{
    std::vector<const FlowNode *> blocked;
    for (const DependencyEdge *edge : flow.edges()) {
        const FlowNode *from = edge->fromItem();
        const FlowNode *to = edge->toItem();
        if (!from || !to)
            continue;
        // A dependency holds up its head; a subtask edge holds up its tail.
        const bool subtask = edge->isSubtask();
        const FlowNode *blocker = subtask ? to : from;
        if (!blocker->isDone)
            blocked.push_back(subtask ? from : to);
    }
    std::sort(blocked.begin(), blocked.end());
    return blocked;
}

bool contains(const std::vector<const FlowNode *> &sorted, const FlowNode *node)
{
    return std::binary_search(sorted.begin(), sorted.end(), node);
}

void sortByOrder(std::vector<const FlowNode *> &nodes)
{
    std::sort(nodes.begin(), nodes.end(), [](const FlowNode *a, const FlowNode *b) { return a->order < b->order; });
}

} // namespace

QList<const FlowNode *> openBlockers(const FlowNode &node, const BlockerMaps &maps)
{
    QList<const FlowNode *> open;
    for (const FlowNode *blocker : maps.prerequisites.value(node.id)) {
        if (!blocker->isDone)
            open.append(blocker);
    }
    for (const FlowNode *blocker : maps.subtasks.value(node.id)) {
        if (!blocker->isDone)
            open.append(blocker);
    }
    return open;
}

QList<const FlowNode *> openBlockers(const FlowNode &node)
{
    const TaskFlow *flow = node.flow();
    if (!flow)
        return {};
    // The same answer as through the maps, for one node without building them.
    QList<const FlowNode *> prerequisites;
    QList<const FlowNode *> subtasks;
    for (const DependencyEdge *edge : flow->edges()) {
        if (!edge->fromItem() || !edge->toItem())
            continue;
        if (edge->isSubtask()) {
            if (edge->fromItem() == &node && !edge->toItem()->isDone)
                subtasks.append(edge->toItem());
        } else if (edge->toItem() == &node && !edge->fromItem()->isDone) {
            prerequisites.append(edge->fromItem());
        }
    }
    return prerequisites + subtasks;
}

QList<const FlowNode *> readyNodes(const TaskFlow &flow)
{
    const std::vector<const FlowNode *> blocked = blockedNodes(flow);
    std::vector<const FlowNode *> ready;
    for (const FlowNode *node : flow.items()) {
        if (!node->isDone && !contains(blocked, node))
            ready.push_back(node);
    }
    sortByOrder(ready);
    return QList<const FlowNode *>(ready.begin(), ready.end());
}

QList<const FlowNode *> unlockedBy(const FlowNode &node)
{
    const TaskFlow *flow = node.flow();
    if (!flow)
        return {};
    QList<const FlowNode *> candidates;
    QList<const FlowNode *> parents;
    for (const DependencyEdge *edge : flow->edges()) {
        if (!edge->fromItem() || !edge->toItem())
            continue;
        if (!edge->isSubtask() && edge->fromItem() == &node)
            candidates.append(edge->toItem());
        else if (edge->isSubtask() && edge->toItem() == &node)
            parents.append(edge->fromItem());
    }
    candidates += parents;
    candidates.removeIf([](const FlowNode *candidate) {
        return candidate->isDone || !openBlockers(*candidate).isEmpty();
    });
    return candidates;
}

QList<ReadyTask> readyTasks(const QList<const TaskFlow *> &flows, const QDateTime &now, const LocalCalendar &calendar)
{
    const QDateTime tomorrow = startOfTomorrow(now, calendar);
    QList<ReadyTask> tasks;
    std::vector<const FlowNode *> ready;
    for (const TaskFlow *flow : flows) {
        const std::vector<const FlowNode *> blocked = blockedNodes(*flow);
        ready.clear();
        for (const FlowNode *node : flow->items()) {
            if (!node->isDone && !contains(blocked, node) && !isDeferredBefore(*node, tomorrow))
                ready.push_back(node);
        }
        sortByOrder(ready);
        for (const FlowNode *node : ready)
            tasks.append({node, flow});
    }
    return tasks;
}

qsizetype readyCount(const TaskFlow &flow, const QDateTime &now, const LocalCalendar &calendar)
{
    const QDateTime tomorrow = startOfTomorrow(now, calendar);
    const QList<const FlowNode *> ready = readyNodes(flow);
    return std::count_if(ready.begin(), ready.end(),
                         [&](const FlowNode *node) { return !isDeferredBefore(*node, tomorrow); });
}

QList<ReadyTask> sortedReady(const QList<ReadyTask> &tasks, ReadySort sort)
{
    constexpr double last = std::numeric_limits<double>::infinity();
    auto key = [&](const ReadyTask &task) -> double {
        const FlowNode &node = *task.node;
        switch (sort) {
        case ReadySort::flow:
            return 0;
        case ReadySort::dueDate:
            return node.dueDate ? double(node.dueDate->toMSecsSinceEpoch()) : last;
        case ReadySort::priority:
            switch (node.priority()) {
            case NodePriority::high:
                return -3;
            case NodePriority::medium:
                return -2;
            case NodePriority::low:
                return -1;
            case NodePriority::none:
                return last;
            }
            return last;
        case ReadySort::estimate:
            return node.estimateMinutes ? double(*node.estimateMinutes) : last;
        }
        return 0;
    };
    std::vector<std::pair<double, ReadyTask>> keyed;
    keyed.reserve(std::size_t(tasks.size()));
    for (const ReadyTask &task : tasks)
        keyed.emplace_back(key(task), task);
    std::stable_sort(keyed.begin(), keyed.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    QList<ReadyTask> sorted;
    sorted.reserve(tasks.size());
    for (const auto &entry : keyed)
        sorted.append(entry.second);
    return sorted;
}

TodayGroups todayGroups(const QList<ReadyTask> &tasks, const QDateTime &now, const LocalCalendar &calendar)
{
    const QDateTime tomorrow = startOfTomorrow(now, calendar);
    TodayGroups groups;
    for (const ReadyTask &task : tasks) {
        const FlowNode &node = *task.node;
        if (node.startDate && *node.startDate < tomorrow) {
            groups.today.append(task);
            groups.hasRanks |= node.dayPlanRank.has_value();
        } else {
            groups.rest.append(task);
        }
    }
    std::stable_sort(groups.today.begin(), groups.today.end(), [](const ReadyTask &a, const ReadyTask &b) {
        constexpr qint64 unranked = std::numeric_limits<qint64>::max();
        return a.node->dayPlanRank.value_or(unranked) < b.node->dayPlanRank.value_or(unranked);
    });
    return groups;
}

ReadyEmptyReason readyEmptyReason(const QList<const TaskFlow *> &flows, const QDateTime &now,
                                  const LocalCalendar &calendar)
{
    bool anyNode = false;
    bool allDone = true;
    for (const TaskFlow *flow : flows) {
        for (const FlowNode *node : flow->items()) {
            anyNode = true;
            allDone &= node->isDone;
        }
    }
    if (!anyNode)
        return ReadyEmptyReason::noTasks;
    if (allDone)
        return ReadyEmptyReason::allDone;

    // A node that is both blocked and deferred never decides the reason.
    const QDateTime tomorrow = startOfTomorrow(now, calendar);
    for (const TaskFlow *flow : flows) {
        const std::vector<const FlowNode *> blocked = blockedNodes(*flow);
        for (const FlowNode *node : flow->items()) {
            if (!node->isDone && !contains(blocked, node) && isDeferredBefore(*node, tomorrow))
                return ReadyEmptyReason::allDeferred;
        }
    }
    return ReadyEmptyReason::allBlocked;
}

NodeCardState cardState(const FlowNode &node, qsizetype openBlockerCount, const QDateTime &now,
                        const LocalCalendar &calendar)
{
    const NodeStatus status = node.status();
    if (status != NodeStatus::pending)
        return {NodeCardState::Kind::status, status, {}, 0};
    // Deferral outranks blockers: a pending node that is both shows its date.
    if (node.isDeferred(now, calendar))
        return {NodeCardState::Kind::deferred, status, *node.startDate, 0};
    if (openBlockerCount > 0)
        return {NodeCardState::Kind::waiting, status, {}, openBlockerCount};
    return {NodeCardState::Kind::ready, status, {}, 0};
}

} // namespace fenrow::Readiness
