// The Ready list of a large store: gathering it from every flow, sorting
// it, and the reason shown when it is empty. All of it is recomputed on
// every view update, so it must stay far below a frame.
#include "BenchmarkMain.h"
#include "GeneratedStores.h"
#include "LargeStoreGenerator.h"
#include "LiveStore.h"

#include "FlowGraph.h"
#include "Readiness.h"
#include "TaskFlow.h"

#include <QHash>
#include <QSet>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <vector>

using namespace fenrow;
using namespace fenrow::bench;

namespace {

// What each open task is waiting for, worked out node by node from the
// blocker maps rather than the way the list gathers it, so that the list
// can be checked against it.
struct ReadyMix {
    int done = 0;
    int deferred = 0;  // open, nothing open before it, starts on a later day
    int waiting = 0;   // open blockers
    int chained = 0;   // waiting on a task that is itself waiting
    QList<const FlowNode *> ready;
};

ReadyMix classify(const QList<const TaskFlow *> &flows, const QDateTime &now, const LocalCalendar &calendar)
{
    ReadyMix mix;
    QHash<const FlowNode *, QList<const FlowNode *>> blockersOf;
    for (const TaskFlow *flow : flows) {
        const BlockerMaps maps = FlowGraph::blockerMaps(*flow);
        std::vector<const FlowNode *> nodes;
        for (const FlowNode *node : flow->items())
            nodes.push_back(node);
        std::stable_sort(nodes.begin(), nodes.end(),
                         [](const FlowNode *a, const FlowNode *b) { return a->order < b->order; });
        for (const FlowNode *node : nodes) {
            if (node->isDone) {
                ++mix.done;
                continue;
            }
            const QList<const FlowNode *> open = Readiness::openBlockers(*node, maps);
            if (!open.isEmpty()) {
                ++mix.waiting;
                blockersOf.insert(node, open);
            } else if (node->isDeferred(now, calendar)) {
                ++mix.deferred;
            } else {
                mix.ready.append(node);
            }
        }
    }
    for (const QList<const FlowNode *> &blockers : std::as_const(blockersOf)) {
        const bool onWaiting = std::any_of(blockers.begin(), blockers.end(),
                                           [&](const FlowNode *blocker) { return blockersOf.contains(blocker); });
        mix.chained += onWaiting ? 1 : 0;
    }
    return mix;
}

// The day after the last start date of the store: by then nothing is
// deferred any more.
QDateTime afterLastStart(const QList<const TaskFlow *> &flows, const LocalCalendar &calendar)
{
    QDateTime last = LargeStoreGenerator::now();
    for (const TaskFlow *flow : flows) {
        for (const FlowNode *node : flow->items()) {
            if (node->startDate && *node->startDate > last)
                last = *node->startDate;
        }
    }
    return calendar.startOfDay(calendar.dayOf(last).addDays(1));
}

QString listMismatch(const QList<ReadyTask> &tasks, const ReadyMix &mix)
{
    if (tasks.size() != mix.ready.size())
        return QStringLiteral("the list has %1 tasks, %2 are ready").arg(tasks.size()).arg(mix.ready.size());
    for (qsizetype i = 0; i < tasks.size(); ++i) {
        if (tasks[i].node != mix.ready[i] || tasks[i].flow != tasks[i].node->flow())
            return QStringLiteral("task %1 of the list is %2, expected %3")
                .arg(i)
                .arg(tasks[i].node->title, mix.ready[i]->title);
    }
    return {};
}

// A list worth measuring has every kind of task in it.
QString trivialMix(const ReadyMix &mix)
{
    if (mix.ready.isEmpty() || mix.done == 0 || mix.deferred == 0 || mix.waiting == 0 || mix.chained == 0)
        return QStringLiteral("the generated store lacks a kind of task: %1 ready, %2 done, %3 deferred, "
                              "%4 waiting, %5 waiting on waiting tasks")
            .arg(mix.ready.size())
            .arg(mix.done)
            .arg(mix.deferred)
            .arg(mix.waiting)
            .arg(mix.chained);
    return {};
}

// Time per task of the store, so that sizes compare: flat when the cost
// grows in proportion to the store.
void reportPerTask(benchmark::State &state, const FenrowStore &store)
{
    double nodes = 0;
    for (const TaskFlow *flow : store.flows())
        nodes += double(flow->items().size());
    state.counters["per_task"] =
        benchmark::Counter(nodes, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

const FenrowStore *openedStore(benchmark::State &state, const LargeStoreShape &shape)
{
    QString error;
    LiveStore *live = LiveStore::of(shape, &error);
    if (!live) {
        fail(state, error);
        return nullptr;
    }
    return live->store.get();
}

void readyTasks(benchmark::State &state, LargeStoreShape shape)
{
    const FenrowStore *store = openedStore(state, shape);
    if (!store)
        return;
    const QDateTime now = LargeStoreGenerator::now();
    const LocalCalendar calendar = LargeStoreGenerator::calendar();
    QList<ReadyTask> tasks;
    for (auto _ : state) {
        tasks = Readiness::readyTasks(store->flows(), now, calendar);
        benchmark::DoNotOptimize(tasks);
    }

    const ReadyMix mix = classify(store->flows(), now, calendar);
    QString wrong = listMismatch(tasks, mix);
    if (wrong.isEmpty())
        wrong = trivialMix(mix);
    if (!wrong.isEmpty()) {
        fail(state, wrong);
        return;
    }
    state.counters["ready"] = double(tasks.size());
    state.counters["done"] = mix.done;
    state.counters["deferred"] = mix.deferred;
    state.counters["waiting"] = mix.waiting;
    state.counters["chained"] = mix.chained;
    reportPerTask(state, *store);
}

// The store's flows copied anew, flow after flow, each flow's nodes by
// `order` and their texts copied with them: the records as a loader that
// reads one flow at a time would lay them out in memory. An opened store
// holds its nodes in the order of the file's rows, so a flow's nodes lie
// scattered over the whole heap.
struct FlowByFlowCopy {
    std::vector<std::unique_ptr<TaskFlow>> owned;
    QList<const TaskFlow *> flows;

    explicit FlowByFlowCopy(const QList<const TaskFlow *> &source)
    {
        auto deep = [](const QString &text) { return QString(text.constData(), text.size()); };
        for (const TaskFlow *flow : source) {
            auto copy = std::make_unique<TaskFlow>();
            copy->id = flow->id;
            copy->name = flow->name;
            copy->order = flow->order;
            QHash<const FlowNode *, FlowNode *> copied;
            for (const FlowNode *node : flow->orderedItems()) {
                auto made = std::make_unique<FlowNode>(*node);
                made->title = deep(node->title);
                made->notes = deep(node->notes);
                made->checklistData = deep(node->checklistData);
                made->setFlow(copy.get());
                made->fileLinks().clear();
                copied.insert(node, copy->items().add(std::move(made)));
            }
            for (const DependencyEdge *edge : flow->edges()) {
                auto made = std::make_unique<DependencyEdge>(*edge);
                made->setFlow(copy.get());
                made->setFromItem(copied.value(edge->fromItem()));
                made->setToItem(copied.value(edge->toItem()));
                copy->edges().add(std::move(made));
            }
            flows.append(copy.get());
            owned.push_back(std::move(copy));
        }
    }
};

// The list over that copy: what the layout of the records costs.
void readyTasksFlowByFlow(benchmark::State &state, LargeStoreShape shape)
{
    const FenrowStore *store = openedStore(state, shape);
    if (!store)
        return;
    const FlowByFlowCopy copy(store->flows());
    const QDateTime now = LargeStoreGenerator::now();
    const LocalCalendar calendar = LargeStoreGenerator::calendar();
    QList<ReadyTask> tasks;
    for (auto _ : state) {
        tasks = Readiness::readyTasks(copy.flows, now, calendar);
        benchmark::DoNotOptimize(tasks);
    }
    if (const QString wrong = listMismatch(tasks, classify(copy.flows, now, calendar)); !wrong.isEmpty()) {
        fail(state, wrong);
        return;
    }
    state.counters["ready"] = double(tasks.size());
    reportPerTask(state, *store);
}

// The floors the list is measured against, over the same records in the
// same order: `oneField` reads each task's completion and nothing else;
// `whatItReads` reads all the list must (each task's completion and start,
// each edge's ends and kind, and the completion of the end that blocks).
void readFloor(benchmark::State &state, LargeStoreShape shape, bool edges)
{
    const FenrowStore *store = openedStore(state, shape);
    if (!store)
        return;
    std::size_t sum = 0;
    for (auto _ : state) {
        for (const TaskFlow *flow : store->flows()) {
            for (const FlowNode *node : flow->items())
                sum += std::size_t(node->isDone) + (edges ? std::size_t(node->startDate.has_value()) : 0);
            if (!edges)
                continue;
            for (const DependencyEdge *edge : flow->edges()) {
                const FlowNode *blocker = edge->isSubtask() ? edge->toItem() : edge->fromItem();
                sum += std::size_t(blocker && edge->fromItem() && edge->toItem() && blocker->isDone);
            }
        }
        benchmark::DoNotOptimize(sum);
    }
    reportPerTask(state, *store);
}

double sortKey(const ReadyTask &task, ReadySort sort)
{
    constexpr double last = std::numeric_limits<double>::infinity();
    const FlowNode &node = *task.node;
    switch (sort) {
    case ReadySort::flow:
        return 0;
    case ReadySort::dueDate:
        return node.dueDate ? double(node.dueDate->toSecsSinceEpoch()) : last;
    case ReadySort::priority:
        return node.priority() == NodePriority::none ? last : -double(int(node.priority()));
    case ReadySort::estimate:
        return node.estimateMinutes ? double(*node.estimateMinutes) : last;
    }
    return 0;
}

// Sorted by key, and stable: equal keys keep the list's order.
QString sortMismatch(const QList<ReadyTask> &input, const QList<ReadyTask> &sorted, ReadySort sort)
{
    if (sorted.size() != input.size())
        return QStringLiteral("sorting changed the number of tasks");
    QHash<const FlowNode *, qsizetype> position;
    for (qsizetype i = 0; i < input.size(); ++i)
        position.insert(input[i].node, i);
    QSet<const FlowNode *> seen;
    for (qsizetype i = 0; i < sorted.size(); ++i) {
        if (!position.contains(sorted[i].node) || seen.contains(sorted[i].node))
            return QStringLiteral("the sorted list is not the same tasks");
        seen.insert(sorted[i].node);
        if (i == 0)
            continue;
        const double before = sortKey(sorted[i - 1], sort);
        const double here = sortKey(sorted[i], sort);
        if (before > here || (before == here && position[sorted[i - 1].node] > position[sorted[i].node]))
            return QStringLiteral("tasks %1 and %2 of the sorted list are out of order").arg(i - 1).arg(i);
    }
    return {};
}

void sortedReady(benchmark::State &state, LargeStoreShape shape, ReadySort sort)
{
    const FenrowStore *store = openedStore(state, shape);
    if (!store)
        return;
    const QList<ReadyTask> tasks =
        Readiness::readyTasks(store->flows(), LargeStoreGenerator::now(), LargeStoreGenerator::calendar());
    QList<ReadyTask> sorted;
    for (auto _ : state) {
        sorted = Readiness::sortedReady(tasks, sort);
        benchmark::DoNotOptimize(sorted);
    }
    if (const QString wrong = sortMismatch(tasks, sorted, sort); !wrong.isEmpty()) {
        fail(state, wrong);
        return;
    }
    state.counters["ready"] = double(tasks.size());
}

// At the generator's moment the walk stops at the first deferred task
// that nothing holds up. After the last start day nothing is deferred,
// so the walk covers every flow and answers "all blocked": the longest
// the reason can take, as when the list is empty because all is blocked.
void readyEmptyReason(benchmark::State &state, LargeStoreShape shape, bool fullWalk)
{
    const FenrowStore *store = openedStore(state, shape);
    if (!store)
        return;
    const LocalCalendar calendar = LargeStoreGenerator::calendar();
    const QDateTime now = fullWalk ? afterLastStart(store->flows(), calendar) : LargeStoreGenerator::now();
    ReadyEmptyReason reason = ReadyEmptyReason::noTasks;
    for (auto _ : state) {
        reason = Readiness::readyEmptyReason(store->flows(), now, calendar);
        benchmark::DoNotOptimize(reason);
    }

    const ReadyMix mix = classify(store->flows(), now, calendar);
    const ReadyEmptyReason expected = mix.deferred > 0 ? ReadyEmptyReason::allDeferred : ReadyEmptyReason::allBlocked;
    if (fullWalk != (mix.deferred == 0)) {
        fail(state, QStringLiteral("%1 tasks are deferred at %2").arg(mix.deferred).arg(now.toString(Qt::ISODate)));
        return;
    }
    if (reason != expected) {
        fail(state, QStringLiteral("the reason is %1, expected %2").arg(int(reason)).arg(int(expected)));
        return;
    }
    state.counters["deferred"] = mix.deferred;
}

} // namespace

int main(int argc, char **argv)
{
    // Three sizes in one run, so that the cost per task shows whether the
    // list grows in proportion to the store. A store of fewer than 100
    // tasks (in a smoke run) lacks some kinds of task.
    const LargeStoreShape large = GeneratedStores::scaledShape();
    for (const LargeStoreShape &shape : {LargeStoreShape::withNodes(std::max(large.nodes / 50, 100)),
                                         LargeStoreShape::withNodes(large.nodes / 5), large}) {
        const std::string size = "/nodes:" + std::to_string(shape.nodes);
        benchmark::RegisterBenchmark(("ReadyTasks" + size).c_str(), readyTasks, shape)->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("ReadyTasks/flowByFlow" + size).c_str(), readyTasksFlowByFlow, shape)
            ->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("Floor/oneField" + size).c_str(), readFloor, shape, false)
            ->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("Floor/whatItReads" + size).c_str(), readFloor, shape, true)
            ->Unit(benchmark::kMicrosecond);
        for (ReadySort sort : {ReadySort::flow, ReadySort::dueDate, ReadySort::priority, ReadySort::estimate}) {
            const std::string name = "SortedReady/" + rawString(sort).toStdString() + size;
            benchmark::RegisterBenchmark(name.c_str(), sortedReady, shape, sort)->Unit(benchmark::kMicrosecond);
        }
        benchmark::RegisterBenchmark(("ReadyEmptyReason" + size).c_str(), readyEmptyReason, shape, false)
            ->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("ReadyEmptyReason/fullWalk" + size).c_str(), readyEmptyReason, shape, true)
            ->Unit(benchmark::kMicrosecond);
    }
    return runBenchmarks(argc, argv);
}
