// One very large flat flow, as an outline of 300,000 entries makes it: the
// Ready list as `fenrow ready --json` prints it, a duplicate, a template
// saved from it and a flow made from that template. And outlines whose
// elements carry many attributes, the most a document may give one and far
// more. The store is opened with the system clock, as a command opens it.
#include "BenchmarkMain.h"
#include "GeneratedStores.h"
#include "LargeStoreGenerator.h"
#include "OperationSamples.h"

#include "FenrowStore.h"
#include "Readiness.h"
#include "SystemClock.h"
#include "TaskFlow.h"
#include "cli/JsonOutput.h"
#include "formats/OPMLCodec.h"
#include "persistence/StoreDatabase.h"
#include "shell/InterfaceLanguage.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>

using namespace fenrow;
using namespace fenrow::bench;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int fullFlatNodes = 300000;

int flatNodes()
{
    return std::max(100, int(std::lround(fullFlatNodes * GeneratedStores::scale())));
}

// A store file holding one flat flow of `flatNodes()` tasks, made once.
struct FlatStore {
    QTemporaryDir folder;
    SystemClock clock;
    std::unique_ptr<FenrowStore> store;
    const TaskFlow *flow = nullptr;
    const FlowTemplate *flowTemplate = nullptr;

    static FlatStore *get(QString *error)
    {
        static std::unique_ptr<FlatStore> made;
        if (made)
            return made.get();
        // A duplicate's name is in the interface language.
        InterfaceLanguage::apply(QStringLiteral("en"));
        auto fresh = std::make_unique<FlatStore>();
        fresh->store = FenrowStore::open(
            StoreDatabase::open(fresh->folder.filePath(QStringLiteral("default.store")), error), fresh->clock,
            LargeStoreGenerator::calendar(), error);
        if (!fresh->store)
            return nullptr;
        QList<OPMLCodec::Outline> roots;
        roots.reserve(flatNodes());
        for (int i = 0; i < flatNodes(); ++i)
            roots.append({.text = QStringLiteral("Task %1").arg(i + 1)});
        fresh->flow = fresh->store->importOPML(QStringLiteral("Flat"), roots, {}).flow;
        made = std::move(fresh);
        return made.get();
    }
};

FlatStore *flatStore(benchmark::State &state)
{
    QString error;
    FlatStore *flat = FlatStore::get(&error);
    if (!flat)
        fail(state, error);
    return flat;
}

// Gathering the list and writing its JSON, as the command does.
void readyJson(benchmark::State &state)
{
    FlatStore *flat = flatStore(state);
    if (!flat)
        return;
    const FenrowStore &store = *flat->store;
    const QDateTime now = flat->clock.now();
    QByteArray json;
    for (auto _ : state) {
        const QList<ReadyTask> tasks =
            Readiness::sortedReady(Readiness::readyTasks(store.flows(), now, store.calendar()), ReadySort::flow);
        json = JsonOutput::readyList(tasks, 0, now, store.calendar());
        benchmark::DoNotOptimize(json);
    }
    if (QJsonDocument::fromJson(json).array().size() != flatNodes()) {
        fail(state, QStringLiteral("the JSON does not list every task"));
        return;
    }
    state.counters["nodes"] = double(flatNodes());
    state.counters["MiB"] = double(json.size()) / (1 << 20);
}

// An operation that adds a flow as large as the source, timed; the flow is
// deleted again, untimed, so that every round meets the same store.
template <typename Make>
void addsFlow(benchmark::State &state, Make make)
{
    FlatStore *flat = flatStore(state);
    if (!flat)
        return;
    FenrowStore &store = *flat->store;
    OperationSamples samples;
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        const TaskFlow *made = make(*flat);
        const double seconds = secondsSince(start);
        state.SetIterationTime(seconds);
        samples.add(seconds);
        if (!made || made->items().size() != flat->flow->items().size() || store.hasChanges()) {
            fail(state, QStringLiteral("the new flow does not hold every task, saved"));
            return;
        }
        store.deleteFlow(*made);
    }
    samples.report(state);
    state.counters["nodes"] = double(flatNodes());
}

void duplicate(benchmark::State &state)
{
    addsFlow(state, [](FlatStore &flat) { return flat.store->duplicateFlow(*flat.flow); });
}

void templateNew(benchmark::State &state)
{
    FlatStore *flat = flatStore(state);
    if (!flat)
        return;
    if (!flat->flowTemplate)
        flat->flowTemplate = flat->store->saveAsTemplate(*flat->flow);
    if (!flat->flowTemplate) {
        fail(state, QStringLiteral("the flow cannot be saved as a template"));
        return;
    }
    addsFlow(state, [](FlatStore &flat) { return flat.store->createFlow(*flat.flowTemplate); });
}

void templateSave(benchmark::State &state)
{
    FlatStore *flat = flatStore(state);
    if (!flat)
        return;
    FenrowStore &store = *flat->store;
    qsizetype bytes = 0;
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        const FlowTemplate *saved = store.saveAsTemplate(*flat->flow);
        state.SetIterationTime(secondsSince(start));
        if (!saved || !saved->payload || store.hasChanges()) {
            fail(state, QStringLiteral("the template was not saved"));
            return;
        }
        bytes = saved->payload->size();
        store.deleteTemplate(*saved);
    }
    state.counters["nodes"] = double(flatNodes());
    state.counters["MiB"] = double(bytes) / (1 << 20);
}

// An outline of `entries` entries, each with `attributes` attributes.
QByteArray crowdedOutline(int entries, int attributes)
{
    QByteArray bytes = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<opml version=\"2.0\"><head><title>Wide</title>"
                       "</head><body>\n";
    for (int entry = 0; entry < entries; ++entry) {
        bytes += "<outline text=\"Entry " + QByteArray::number(entry) + "\"";
        for (int attribute = 1; attribute < attributes; ++attribute)
            bytes += " a" + QByteArray::number(attribute) + "=\"value\"";
        bytes += "/>\n";
    }
    return bytes + "</body></opml>\n";
}

void outlineDecode(benchmark::State &state, int entries, int attributes)
{
    const QByteArray bytes = crowdedOutline(entries, attributes);
    const LocalCalendar calendar = LargeStoreGenerator::calendar();
    qsizetype read = -1;
    for (auto _ : state) {
        const std::optional<OPMLCodec::Document> document = OPMLCodec::decode(bytes, calendar);
        read = document ? OPMLCodec::outlineCount(document->roots) : 0;
    }
    state.counters["entries_read"] = double(read);
    state.counters["KiB"] = double(bytes.size()) / 1024;
}

} // namespace

int main(int argc, char **argv)
{
    const std::string nodes = "/nodes:" + std::to_string(flatNodes());
    benchmark::RegisterBenchmark(("ReadyJson" + nodes).c_str(), readyJson)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("Duplicate" + nodes).c_str(), duplicate)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("TemplateSave" + nodes).c_str(), templateSave)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("TemplateNew" + nodes).c_str(), templateNew)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);

    // The widest outline a document may be (64 attributes to an element),
    // and one element with far more.
    const int wideEntries = std::max(10, int(std::lround(10000 * GeneratedStores::scale())));
    const int crowd = std::max(200, int(std::lround(50000 * GeneratedStores::scale())));
    benchmark::RegisterBenchmark(("OPMLDecodeWidest/entries:" + std::to_string(wideEntries)).c_str(), outlineDecode,
                                 wideEntries, 64)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("OPMLDecodeCrowdedElement/attributes:" + std::to_string(crowd)).c_str(),
                                 outlineDecode, 1, crowd)
        ->Unit(benchmark::kMillisecond);
    return runBenchmarks(argc, argv);
}
