// Documents in and out: the backup of the large store, written and then
// read back into an empty store, and one large flow as an OPML outline,
// exported and imported again. The backup runs while the window waits; an
// outline is exported or imported at a click.
#include "BenchmarkMain.h"
#include "GeneratedStores.h"
#include "LargeStoreGenerator.h"
#include "LiveStore.h"
#include "OperationSamples.h"

#include "TaskFlow.h"
#include "formats/FenrowBackup.h"
#include "formats/OPMLCodec.h"
#include "shell/InterfaceLanguage.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>

using namespace fenrow;
using namespace fenrow::bench;

namespace {

using Clock = std::chrono::steady_clock;

std::size_t nodeCount(const FenrowStore &store)
{
    std::size_t nodes = 0;
    for (const TaskFlow *flow : store.flows())
        nodes += flow->items().size();
    return nodes;
}

// ---------------------------------------------------------------- backup

// makeBackup and encoding, as the back-up command runs them.
void backupEncode(benchmark::State &state, LargeStoreShape shape)
{
    QString error;
    LiveStore *live = LiveStore::of(shape, &error);
    if (!live) {
        fail(state, error);
        return;
    }
    const QDateTime now = LargeStoreGenerator::clock().now();
    QByteArray bytes;
    OperationSamples samples;
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        const std::optional<QByteArray> encoded = live->store->makeBackup(now).encoded();
        samples.add(secondsSince(start));
        if (!encoded) {
            fail(state, QStringLiteral("the store could not be encoded"));
            return;
        }
        bytes = *encoded;
    }
    const auto decoded = FenrowBackup::decoded(bytes);
    const FenrowBackup *backup = std::get_if<FenrowBackup>(&decoded);
    if (!backup || backup->flows.size() != live->store->flows().size()
        || backup->records.size() != qsizetype(live->store->completionRecords().size())) {
        fail(state, QStringLiteral("the document does not read back as the store"));
        return;
    }
    samples.report(state);
    state.counters["MiB"] = double(bytes.size()) / (1 << 20);
    state.counters["nodes"] = double(nodeCount(*live->store));
}

// Reading the document and replacing an empty store's contents with it, as
// the restore command does once the user has answered; the store is a new
// file each time.
void backupDecodeAndRestore(benchmark::State &state, LargeStoreShape shape)
{
    QString error;
    LiveStore *live = LiveStore::of(shape, &error);
    if (!live) {
        fail(state, error);
        return;
    }
    const QByteArray bytes = *live->store->makeBackup(LargeStoreGenerator::clock().now()).encoded();
    const std::size_t expectedNodes = nodeCount(*live->store);

    OperationSamples decoding;
    OperationSamples restoring;
    for (auto _ : state) {
        QTemporaryDir folder;
        std::unique_ptr<FenrowStore> store = LiveStore::open(folder.filePath(QStringLiteral("default.store")), &error);
        if (!store) {
            fail(state, error);
            return;
        }
        Clock::time_point start = Clock::now();
        const auto decoded = FenrowBackup::decoded(bytes);
        const double decodeSeconds = secondsSince(start);
        const FenrowBackup *backup = std::get_if<FenrowBackup>(&decoded);
        if (!backup) {
            fail(state, QStringLiteral("the document does not read back"));
            return;
        }
        start = Clock::now();
        const int added = store->restoreBackup(*backup, RestoreMode::replace);
        const double restoreSeconds = secondsSince(start);
        state.SetIterationTime(decodeSeconds + restoreSeconds);
        decoding.add(decodeSeconds);
        restoring.add(restoreSeconds);
        if (added != live->store->flows().size() || nodeCount(*store) != expectedNodes || store->hasChanges()) {
            fail(state, QStringLiteral("the restore did not bring back every flow and task, saved"));
            return;
        }
    }
    decoding.report(state, "decode_");
    restoring.report(state, "restore_");
    state.counters["MiB"] = double(bytes.size()) / (1 << 20);
}

// ---------------------------------------------------------------- OPML

constexpr int fullFlowNodes = 10000;
constexpr double edgesPerNode = 1.5;

LargeStoreShape outlineShape()
{
    const int nodes = std::max(8, int(std::lround(fullFlowNodes * GeneratedStores::scale())));
    return LargeStoreShape::oneFlow(nodes, int(std::lround(nodes * edgesPerNode)));
}

LiveStore *flowStore(benchmark::State &state, const LargeStoreShape &shape)
{
    // The note for other outliners words prerequisites in the interface
    // language.
    InterfaceLanguage::apply(QStringLiteral("en"));
    QString error;
    LiveStore *live = LiveStore::of(shape, &error);
    if (!live)
        fail(state, error);
    else if (live->store->flows().isEmpty())
        fail(state, QStringLiteral("the store has no flow"));
    return live && !live->store->flows().isEmpty() ? live : nullptr;
}

void outlineExport(benchmark::State &state, LargeStoreShape shape)
{
    LiveStore *live = flowStore(state, shape);
    if (!live)
        return;
    const TaskFlow &flow = *live->store->flows().first();
    QString text;
    for (auto _ : state) {
        text = live->store->exportOPML(flow);
        benchmark::DoNotOptimize(text);
    }
    const std::optional<OPMLCodec::Document> read = OPMLCodec::decode(text.toUtf8(), live->store->calendar());
    if (!read || OPMLCodec::outlineCount(read->roots) != qsizetype(flow.items().size())) {
        fail(state, QStringLiteral("the outline does not hold every task once"));
        return;
    }
    state.counters["nodes"] = double(flow.items().size());
    state.counters["edges"] = double(flow.edges().size());
    state.counters["KiB"] = double(text.toUtf8().size()) / 1024;
}

// Reading the file's bytes into outlines and making the new flow, saved.
// The flow is deleted again after each round, untimed, so that every round
// meets the same store.
void outlineImport(benchmark::State &state, LargeStoreShape shape)
{
    LiveStore *live = flowStore(state, shape);
    if (!live)
        return;
    FenrowStore &store = *live->store;
    const TaskFlow &source = *store.flows().first();
    const QByteArray bytes = store.exportOPML(source).toUtf8();

    OperationSamples decoding;
    OperationSamples importing;
    std::size_t edges = 0;
    for (auto _ : state) {
        Clock::time_point start = Clock::now();
        const std::optional<OPMLCodec::Document> read = OPMLCodec::decode(bytes, store.calendar());
        const double decodeSeconds = secondsSince(start);
        if (!read) {
            fail(state, QStringLiteral("the outline does not read back"));
            return;
        }
        start = Clock::now();
        const FenrowStore::ImportedFlow imported = store.importOPML(read->title, read->roots, QStringLiteral("x"));
        const double importSeconds = secondsSince(start);
        state.SetIterationTime(decodeSeconds + importSeconds);
        decoding.add(decodeSeconds);
        importing.add(importSeconds);
        if (imported.flow->items().size() != source.items().size() || !imported.hasDependencies
            || store.hasChanges()) {
            fail(state, QStringLiteral("the import did not make every task, with its dependencies, saved"));
            return;
        }
        edges = imported.flow->edges().size();
        store.deleteFlow(*imported.flow);
    }
    decoding.report(state, "decode_");
    importing.report(state, "import_");
    state.counters["nodes"] = double(source.items().size());
    state.counters["edges_kept"] = double(edges);
}

} // namespace

int main(int argc, char **argv)
{
    const LargeStoreShape large = GeneratedStores::scaledShape();
    const std::string stored = "/nodes:" + std::to_string(large.nodes);
    benchmark::RegisterBenchmark(("BackupEncode" + stored).c_str(), backupEncode, large)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("BackupDecodeAndRestore" + stored).c_str(), backupDecodeAndRestore, large)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);

    const LargeStoreShape outline = outlineShape();
    const std::string flow = "/nodes:" + std::to_string(outline.nodes);
    benchmark::RegisterBenchmark(("OPMLExport" + flow).c_str(), outlineExport, outline)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("OPMLImport" + flow).c_str(), outlineImport, outline)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    return runBenchmarks(argc, argv);
}
