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

// The nodes of one flow held up by an open prerequisite or subtask: an
// open-addressing set of node pointers, built in one pass over the edges.
// The Ready list asks it once per candidate of every flow, so it avoids
// both hashing containers and branches that depend on completion state.
// One set serves every flow of a call: its arrays are reused, not
// allocated per flow.
class BlockedSet {
public:
    void build(const TaskFlow &flow)
    {
        m_waiting.resize(flow.edges().size());
        std::size_t count = 0;
        for (const DependencyEdge *edge : flow.edges()) {
            const FlowNode *from = edge->fromItem();
            const FlowNode *to = edge->toItem();
            if (!from || !to)
                continue;
            // A dependency holds up its head; a subtask edge holds up its tail.
            const bool subtask = edge->isSubtask();
            const FlowNode *blocker = subtask ? to : from;
            m_waiting[count] = subtask ? from : to;
            count += !blocker->isDone;
        }
        std::size_t capacity = 16;
        while (capacity < count * 2)
            capacity *= 2;
        m_mask = capacity - 1;
        m_slots.assign(capacity, nullptr);
        for (std::size_t i = 0; i < count; ++i)
            insert(m_waiting[i]);
    }

    bool contains(const FlowNode *node) const
    {
        for (std::size_t slot = hash(node);; slot = (slot + 1) & m_mask) {
            if (m_slots[slot] == node)
                return true;
            if (!m_slots[slot])
                return false;
        }
    }

private:
    std::size_t hash(const FlowNode *node) const
    {
        return std::size_t((reinterpret_cast<quintptr>(node) >> 4) * 0x9E3779B97F4A7C15ULL) & m_mask;
    }
    void insert(const FlowNode *node)
    {
        std::size_t slot = hash(node);
        while (m_slots[slot] && m_slots[slot] != node)
            slot = (slot + 1) & m_mask;
        m_slots[slot] = node;
    }

    std::vector<const FlowNode *> m_waiting;
    std::vector<const FlowNode *> m_slots;
    std::size_t m_mask = 0;
};

// A flow's nodes that are not done. Nodes lie scattered over the heap, so
// on a large store nearly every node is a cache miss. Reading them here
// first, in the order the flow holds them, lets those misses overlap (no
// load waits for another); the edge pass that follows then finds each
// blocker's completion in the cache instead of missing on it behind the
// load of its edge.
void openNodes(const TaskFlow &flow, std::vector<const FlowNode *> &open)
{
    open.resize(flow.items().size());
    std::size_t count = 0;
    for (const FlowNode *node : flow.items()) {
        open[count] = node;
        count += !node->isDone;
    }
    open.resize(count);
}

// Nodes with their `order`, read once, so that sorting compares numbers
// instead of loading a node for every comparison.
using OrderedNodes = std::vector<std::pair<qint64, const FlowNode *>>;

void sortByOrder(OrderedNodes &nodes)
{
    auto byOrder = [](const auto &a, const auto &b) { return a.first < b.first; };
    // Nodes are often stored in order already.
    if (!std::is_sorted(nodes.begin(), nodes.end(), byOrder))
        std::sort(nodes.begin(), nodes.end(), byOrder);
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

bool hasOpenBlocker(const FlowNode &node, const BlockerMaps &maps)
{
    const auto open = [&](const QHash<QUuid, QList<const FlowNode *>> &map) {
        const auto found = map.constFind(node.id);
        return found != map.cend() &&
               std::any_of(found->cbegin(), found->cend(), [](const FlowNode *blocker) { return !blocker->isDone; });
    };
    return open(maps.prerequisites) || open(maps.subtasks);
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
    std::vector<const FlowNode *> open;
    openNodes(flow, open);
    BlockedSet blocked;
    blocked.build(flow);
    OrderedNodes ready;
    for (const FlowNode *node : open) {
        if (!blocked.contains(node))
            ready.emplace_back(node->order, node);
    }
    sortByOrder(ready);
    QList<const FlowNode *> nodes;
    nodes.reserve(qsizetype(ready.size()));
    for (const auto &entry : ready)
        nodes.append(entry.second);
    return nodes;
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
    std::vector<const FlowNode *> open;
    BlockedSet blocked;
    OrderedNodes ready;
    for (const TaskFlow *flow : flows) {
        openNodes(*flow, open);
        if (open.empty())
            continue;
        blocked.build(*flow);
        ready.clear();
        for (const FlowNode *node : open) {
            if (!blocked.contains(node) && !isDeferredBefore(*node, tomorrow))
                ready.emplace_back(node->order, node);
        }
        sortByOrder(ready);
        for (const auto &entry : ready)
            tasks.append({entry.second, flow});
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
    // The list comes in flow order, and a stable sort by flow keeps it.
    if (sort == ReadySort::flow)
        return tasks;
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

QList<ReadyTask> inListOrder(const QList<const TaskFlow *> &flows, const QDateTime &now,
                             const LocalCalendar &calendar, ReadySort sort)
{
    const TodayGroups groups = todayGroups(sortedReady(readyTasks(flows, now, calendar), sort), now, calendar);
    return groups.today + groups.rest;
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
    std::vector<const FlowNode *> open;
    BlockedSet blocked;
    for (const TaskFlow *flow : flows) {
        openNodes(*flow, open);
        // A flow with nothing deferred needs no pass over its edges.
        std::erase_if(open, [&](const FlowNode *node) { return !isDeferredBefore(*node, tomorrow); });
        if (open.empty())
            continue;
        blocked.build(*flow);
        if (std::any_of(open.begin(), open.end(), [&](const FlowNode *node) { return !blocked.contains(node); }))
            return ReadyEmptyReason::allDeferred;
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
