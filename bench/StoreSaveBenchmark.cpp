// One small change and its save on a large store. The cost must follow the
// change, not the store: each benchmark runs on two store sizes.
#include "BenchmarkMain.h"
#include "GeneratedStores.h"
#include "LiveStore.h"
#include "OperationSamples.h"

#include <QHash>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>

using namespace fenrow;
using namespace fenrow::bench;

namespace {

using Clock = std::chrono::steady_clock;

template <typename Operation>
bool timeOperation(benchmark::State &state, FenrowStore &store, OperationSamples &samples, Operation operation)
{
    const Clock::time_point start = Clock::now();
    operation();
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    state.SetIterationTime(seconds);
    samples.add(seconds);
    // A failed save is only logged; its changes stay pending.
    if (store.hasChanges()) {
        fail(state, QStringLiteral("the change was not saved"));
        return false;
    }
    return true;
}

void renameFlow(benchmark::State &state, LargeStoreShape shape)
{
    QString error;
    LiveStore *live = LiveStore::of(shape, &error);
    if (!live) {
        fail(state, error);
        return;
    }
    // Renaming rewrites the flow's copies of its name in the archive too.
    // Take the flow with the most typical number of them, so that both
    // store sizes write about as many rows.
    const FenrowStore &store = *live->store;
    QHash<QUuid, qint64> archiveRows;
    for (const CompletionRecord *record : store.completionRecords())
        ++archiveRows[record->flowID];
    const double typical = double(store.completionRecords().size()) / double(store.flows().size());
    const TaskFlow *flow = store.flows().first();
    for (const TaskFlow *candidate : store.flows()) {
        if (std::abs(double(archiveRows.value(candidate->id)) - typical)
            < std::abs(double(archiveRows.value(flow->id)) - typical))
            flow = candidate;
    }
    const QUuid flowID = flow->id;
    const qint64 records = archiveRows.value(flowID);
    const QString base = flow->name.section(QStringLiteral(" (renamed"), 0, 0);

    OperationSamples samples;
    qint64 round = 0;
    QString lastName = flow->name;
    for (auto _ : state) {
        lastName = base + QStringLiteral(" (renamed %1)").arg(++round % 2);
        if (!timeOperation(state, *live->store, samples, [&] { live->store->renameFlow(*flow, lastName); }))
            return;
    }
    samples.report(state);
    state.counters["archive_rows"] = double(records);

    if (live->verified.insert("renameFlow").second) {
        if (!live->reopen(&error)) {
            fail(state, error);
            return;
        }
        const TaskFlow *reopened = live->store->flow(flowID);
        if (!reopened || reopened->name != lastName)
            fail(state, QStringLiteral("the new name did not reach the file"));
    }
}

void reorderFlows(benchmark::State &state, LargeStoreShape shape)
{
    QString error;
    LiveStore *live = LiveStore::of(shape, &error);
    if (!live) {
        fail(state, error);
        return;
    }
    if (live->store->flows().size() < 2) {
        state.SkipWithError("the store has fewer than two flows");
        return;
    }
    // Swapping the first two flows back and forth changes both each time.
    const TaskFlow *first = live->store->flows()[0];
    const TaskFlow *second = live->store->flows()[1];
    const QUuid firstID = first->id;
    OperationSamples samples;
    bool swapped = false;
    for (auto _ : state) {
        swapped = !swapped;
        const QList<const TaskFlow *> ordered = swapped ? QList<const TaskFlow *>{second, first}
                                                        : QList<const TaskFlow *>{first, second};
        if (!timeOperation(state, *live->store, samples, [&] { live->store->reorderFlows(ordered); }))
            return;
    }
    samples.report(state);

    if (live->verified.insert("reorderFlows").second) {
        if (!live->reopen(&error)) {
            fail(state, error);
            return;
        }
        const TaskFlow *reopened = live->store->flow(firstID);
        if (!reopened || reopened->order != (swapped ? 1 : 0))
            fail(state, QStringLiteral("the new order did not reach the file"));
    }
}

} // namespace

int main(int argc, char **argv)
{
    const LargeStoreShape large = GeneratedStores::scaledShape();
    const LargeStoreShape small = LargeStoreShape::withNodes(large.nodes / 10);
    for (const LargeStoreShape &shape : {small, large}) {
        const std::string size = "/nodes:" + std::to_string(shape.nodes);
        benchmark::RegisterBenchmark(("RenameFlow" + size).c_str(), renameFlow, shape)
            ->UseManualTime()
            ->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("ReorderFlows" + size).c_str(), reorderFlows, shape)
            ->UseManualTime()
            ->Unit(benchmark::kMicrosecond);
    }
    return runBenchmarks(argc, argv);
}
