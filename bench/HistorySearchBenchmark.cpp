// Undo snapshots of a large flow, and the find palette over a large store.
// A snapshot is taken twice per user action (before and after) and written
// back on every undo or redo, so both sit on the path of each click; the
// search runs again on every key typed into the palette.
#include "BenchmarkMain.h"
#include "GeneratedStores.h"
#include "LiveStore.h"
#include "OperationSamples.h"

#include "FenrowHistory.h"
#include "FlowGraph.h"
#include "FlowSearch.h"
#include "TaskFlow.h"
#include "shell/InterfaceLanguage.h"

#include <QScopeGuard>
#include <QSet>

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <optional>
#include <vector>

using namespace fenrow;
using namespace fenrow::bench;

namespace {

using Clock = std::chrono::steady_clock;

// Bytes the allocator hands out right now: the difference around a piece of
// work is what that work keeps on the heap (strings shared with the live
// records are not counted twice, which is the point).
double heapBytes()
{
    // Large blocks (a snapshot's row arrays) are mapped apart from the arena.
    const struct mallinfo2 info = mallinfo2();
    return double(info.uordblks + info.hblkhd);
}

// ---------------------------------------------------------------- snapshots

// The same flow size as the graph benchmarks, with a few attachments so that
// snapshots carry file and link rows as well.
constexpr int fullFlowNodes = 2000;
constexpr double edgesPerNode = 1.5;
constexpr int flowFiles = 3;

LargeStoreShape snapshotShape()
{
    const int nodes = std::max(8, int(std::lround(fullFlowNodes * GeneratedStores::scale())));
    LargeStoreShape shape = LargeStoreShape::oneFlow(nodes, int(std::lround(nodes * edgesPerNode)));
    shape.files = flowFiles;
    return shape;
}

// The flow of the one-flow store, re-read on every call: an undo that
// recreates a node replaces its object, and a reopen replaces them all.
const TaskFlow *openFlow(benchmark::State &state, const LargeStoreShape &shape, LiveStore **live)
{
    QString error;
    *live = LiveStore::of(shape, &error);
    if (!*live) {
        fail(state, error);
        return nullptr;
    }
    const QList<const TaskFlow *> &flows = (*live)->store->flows();
    if (flows.size() != 1) {
        fail(state, QStringLiteral("the store has %1 flows, not one").arg(flows.size()));
        return nullptr;
    }
    return flows.first();
}

std::vector<const FlowNode *> byOrder(const TaskFlow &flow)
{
    std::vector<const FlowNode *> nodes(flow.items().begin(), flow.items().end());
    std::sort(nodes.begin(), nodes.end(), [](const FlowNode *a, const FlowNode *b) { return a->order < b->order; });
    return nodes;
}

// A snapshot's rows sorted by id: an undo that recreates a node appends it,
// so the live order of rows may differ from the snapshot's while the rows
// themselves are the same.
FlowSnapshot sortedByID(FlowSnapshot snapshot)
{
    auto byID = [](const auto &a, const auto &b) { return a.id < b.id; };
    std::vector<FlowSnapshot::Item> items(snapshot.items.begin(), snapshot.items.end());
    std::sort(items.begin(), items.end(), byID);
    snapshot.items = {};
    for (FlowSnapshot::Item &item : items)
        snapshot.items.append(std::move(item));
    std::sort(snapshot.edges.begin(), snapshot.edges.end(), byID);
    std::sort(snapshot.files.begin(), snapshot.files.end(), byID);
    std::sort(snapshot.links.begin(), snapshot.links.end(), byID);
    return snapshot;
}

bool sameRows(const FlowSnapshot &a, const FlowSnapshot &b)
{
    return sortedByID(a) == sortedByID(b);
}

void reportFlow(benchmark::State &state, const TaskFlow &flow)
{
    state.counters["nodes"] = double(flow.items().size());
    state.counters["edges"] = double(flow.edges().size());
    state.counters["files"] = double(flow.files().size());
    state.counters["links"] = double(flow.fileLinks().size());
}

// Counts the store's change signals: one per operation that changed
// something, none for one that found nothing to do.
class ChangeCounter {
public:
    explicit ChangeCounter(FenrowStore &store)
        : m_connection(QObject::connect(&store, &FenrowStore::changed, [this] { ++m_count; }))
    {
    }
    ~ChangeCounter() { QObject::disconnect(m_connection); }
    ChangeCounter(const ChangeCounter &) = delete;
    ChangeCounter &operator=(const ChangeCounter &) = delete;

    int count() const { return m_count; }

private:
    int m_count = 0;
    QMetaObject::Connection m_connection;
};

void captureSnapshot(benchmark::State &state, LargeStoreShape shape)
{
    LiveStore *live = nullptr;
    const TaskFlow *flow = openFlow(state, shape, &live);
    if (!flow)
        return;
    const FenrowStore &store = *live->store;

    const double heapBefore = heapBytes();
    const FlowSnapshot kept = store.captureSnapshot(*flow);
    const double snapshotBytes = heapBytes() - heapBefore;

    for (auto _ : state) {
        FlowSnapshot snapshot = store.captureSnapshot(*flow);
        benchmark::DoNotOptimize(snapshot);
    }

    // Every row of the flow is in it, and a second capture of an unchanged
    // flow is the same snapshot.
    if (qsizetype(flow->items().size()) != kept.items.size() || qsizetype(flow->edges().size()) != kept.edges.size()
        || qsizetype(flow->files().size()) != kept.files.size()
        || qsizetype(flow->fileLinks().size()) != kept.links.size() || kept.flowID != flow->id) {
        fail(state, QStringLiteral("the snapshot does not hold every row of the flow"));
        return;
    }
    if (!(store.captureSnapshot(*flow) == kept)) {
        fail(state, QStringLiteral("two snapshots of an unchanged flow differ"));
        return;
    }
    reportFlow(state, *flow);
    state.counters["snapshot_kib"] = snapshotBytes / 1024.0;
}

// Writing back a snapshot of the flow as it is: what every undo pays before
// it finds anything to write. It must neither save nor signal.
void applyUnchanged(benchmark::State &state, LargeStoreShape shape)
{
    LiveStore *live = nullptr;
    const TaskFlow *flow = openFlow(state, shape, &live);
    if (!flow)
        return;
    FenrowStore &store = *live->store;
    const FlowSnapshot snapshot = store.captureSnapshot(*flow);
    const ChangeCounter changes(store);

    for (auto _ : state)
        store.applySnapshot(snapshot, *flow);

    if (changes.count() != 0 || store.hasChanges()) {
        fail(state, QStringLiteral("writing back an identical snapshot changed the store"));
        return;
    }
    if (!(store.captureSnapshot(*flow) == snapshot)) {
        fail(state, QStringLiteral("writing back an identical snapshot changed the flow"));
        return;
    }
    reportFlow(state, *flow);
}

constexpr int movedNodes = 20;

// A typical edit to take back: a selection of neighbouring cards dragged
// aside, and one task deleted with its edges (and a file link when one can
// be had). The task is one whose deletion takes nothing else with it.
struct RecordedAction {
    FlowSnapshot before;
    FlowSnapshot after;
    QUuid deletedID;
    int deletedEdges = 0;
    int deletedLinks = 0;
};

std::optional<RecordedAction> performAction(benchmark::State &state, FenrowStore &store, const TaskFlow &flow)
{
    const std::vector<const FlowNode *> nodes = byOrder(flow);
    auto edgesOf = [&](const FlowNode *node) {
        return int(std::count_if(flow.edges().begin(), flow.edges().end(), [&](const DependencyEdge *edge) {
            return edge->fromItem() == node || edge->toItem() == node;
        }));
    };
    // From the middle of the flow on, so that the moved cards follow it.
    const std::size_t middle = nodes.size() / 2;
    const FlowNode *doomed = nullptr;
    for (int pass = 0; pass < 2 && !doomed; ++pass) {
        for (std::size_t i = pass == 0 ? 0 : middle; i + movedNodes < nodes.size(); ++i) {
            const FlowNode *node = nodes[i];
            const bool wanted = pass == 0 ? !node->fileLinks().isEmpty() : true;
            if (wanted && edgesOf(node) >= 2 && FlowGraph::deletionClosure(*node, flow).size() == 1) {
                doomed = node;
                break;
            }
        }
    }
    if (!doomed) {
        fail(state, QStringLiteral("no task with edges can be deleted on its own"));
        return std::nullopt;
    }

    RecordedAction action;
    action.deletedID = doomed->id;
    action.deletedEdges = edgesOf(doomed);
    action.deletedLinks = int(doomed->fileLinks().size());
    action.before = store.captureSnapshot(flow);
    const auto at = std::find(nodes.begin(), nodes.end(), doomed);
    for (auto moved = at + 1; moved != at + 1 + movedNodes; ++moved)
        store.moveNode(**moved, (*moved)->posX + 140, (*moved)->posY + 90);
    store.deleteNode(*doomed);
    action.after = store.captureSnapshot(flow);
    if (store.node(action.deletedID) || store.hasChanges()) {
        fail(state, QStringLiteral("the edit to take back was not made and saved"));
        return std::nullopt;
    }
    return action;
}

// Undo and redo of that edit, alternately, so that every iteration writes:
// the undo recreates the task, its edges and link and moves the cards
// back; the redo deletes it again and moves them out. Each saves.
void undoRedo(benchmark::State &state, LargeStoreShape shape)
{
    LiveStore *live = nullptr;
    const TaskFlow *flow = openFlow(state, shape, &live);
    if (!flow)
        return;
    FenrowStore &store = *live->store;
    const std::optional<RecordedAction> action = performAction(state, store, *flow);
    if (!action)
        return;
    const ChangeCounter changes(store);

    OperationSamples undos;
    OperationSamples redos;
    bool undone = false;
    int expectedChanges = 0;
    for (auto _ : state) {
        const FlowSnapshot &target = undone ? action->after : action->before;
        const Clock::time_point start = Clock::now();
        store.applySnapshot(target, *flow);
        const double seconds = secondsSince(start);
        state.SetIterationTime(seconds);
        (undone ? redos : undos).add(seconds);
        undone = !undone;
        ++expectedChanges;
        if (changes.count() != expectedChanges || store.hasChanges()
            || (store.node(action->deletedID) != nullptr) != undone) {
            fail(state, QStringLiteral("an undo or redo was not applied and saved once"));
            return;
        }
    }
    // Leave the flow as it was found, for the next run.
    if (!undone)
        store.applySnapshot(action->before, *flow);
    if (!sameRows(store.captureSnapshot(*flow), action->before)) {
        fail(state, QStringLiteral("undoing the edit did not bring back the flow as it was"));
        return;
    }
    undos.report(state, "undo_");
    redos.report(state, "redo_");
    reportFlow(state, *flow);
    state.counters["deleted_edges"] = action->deletedEdges;
    state.counters["deleted_links"] = action->deletedLinks;

    if (live->verified.insert("undoRedo").second) {
        QString error;
        if (!live->reopen(&error)) {
            fail(state, error);
            return;
        }
        const TaskFlow &reopened = *live->store->flows().first();
        if (!sameRows(live->store->captureSnapshot(reopened), action->before))
            fail(state, QStringLiteral("the file does not hold the flow as the undo left it"));
    }
}

// The whole of a recorded action around the smallest edit, a card dragged:
// two captures, the comparison, the move and its save, and the push onto a
// stack that is full after fifty steps and then trims its oldest entry.
void recordMove(benchmark::State &state, LargeStoreShape shape)
{
    LiveStore *live = nullptr;
    const TaskFlow *flow = openFlow(state, shape, &live);
    if (!flow)
        return;
    FenrowStore &store = *live->store;
    const FlowNode *node = byOrder(*flow)[flow->items().size() / 2];
    const QUuid nodeID = node->id;
    const double startX = node->posX;

    const double heapBefore = heapBytes();
    {
        FenrowHistory history(store);
        OperationSamples actions;
        double offset = 0;
        for (auto _ : state) {
            offset = offset > 0 ? 0 : 10;
            const Clock::time_point start = Clock::now();
            history.recordAction(QStringLiteral("Move"), *flow,
                                 [&] { store.moveNode(*node, startX + offset, node->posY); });
            const double seconds = secondsSince(start);
            state.SetIterationTime(seconds);
            actions.add(seconds);
        }
        const double heapHeld = heapBytes() - heapBefore;

        const QList<FenrowHistory::Entry> stack = history.undoStack(flow->id);
        const qsizetype expected = std::min<qsizetype>(qsizetype(state.iterations()), FenrowHistory::stackLimit);
        if (stack.size() != expected || node->posX != startX + offset) {
            fail(state, QStringLiteral("%1 moves left %2 undo steps").arg(state.iterations()).arg(stack.size()));
            return;
        }
        // The last step takes back exactly the last move.
        const double previous = offset > 0 ? 0 : 10;
        if (!history.undoFlow(flow->id) || store.node(nodeID)->posX != startX + previous) {
            fail(state, QStringLiteral("undoing the last move did not put the card back"));
            return;
        }
        store.moveNode(*node, startX, node->posY);
        actions.report(state);
        state.counters["stack_entries"] = double(stack.size());
        state.counters["stack_mib"] = heapHeld / (1024.0 * 1024.0);
    }
    reportFlow(state, *flow);
}

// ---------------------------------------------------------------- search

enum class QueryKind {
    titles,    // expected in titles; any notes hits are extra
    notesOnly, // in notes, never in a title
    none,      // in nothing: the longest scan
};

struct SearchCase {
    const char *label;
    const char *query;
    const char *language;
    // Plain case-insensitive text every hit set must include: folding only
    // ever adds matches to it.
    const char *probe;
    QueryKind kind;
};

struct SearchCount {
    int titleHits = 0;
    int notesHits = 0;
    int groups = 0;
    int nodes = 0;
};

void searchFlows(benchmark::State &state, LargeStoreShape shape, SearchCase searchCase)
{
    QString error;
    LiveStore *live = LiveStore::of(shape, &error);
    if (!live) {
        fail(state, error);
        return;
    }
    if (!InterfaceLanguage::apply(QString::fromLatin1(searchCase.language))) {
        fail(state, QStringLiteral("no translations for %1").arg(QString::fromLatin1(searchCase.language)));
        return;
    }
    const auto english = qScopeGuard([] { InterfaceLanguage::apply(QStringLiteral("en")); });
    const QList<const TaskFlow *> &flows = live->store->flows();
    // Searching from inside the largest flow, whose group comes first.
    const TaskFlow *current = *std::max_element(flows.begin(), flows.end(), [](const TaskFlow *a, const TaskFlow *b) {
        return a->items().size() < b->items().size();
    });
    const QString query = QString::fromUtf8(searchCase.query);

    QList<FlowSearchGroup> groups;
    for (auto _ : state) {
        groups = FlowSearch::searchGroups(query, current, flows);
        benchmark::DoNotOptimize(groups);
    }

    SearchCount count;
    QSet<QUuid> found;
    for (const FlowSearchGroup &group : std::as_const(groups)) {
        ++count.groups;
        for (const FlowSearchMatch &match : group.matches) {
            (match.notesSnippet ? count.notesHits : count.titleHits) += 1;
            found.insert(match.id);
        }
    }
    const QString probe = QString::fromUtf8(searchCase.probe);
    int probed = 0;
    for (const TaskFlow *flow : flows) {
        for (const FlowNode *node : flow->items()) {
            ++count.nodes;
            if (node->title.contains(probe, Qt::CaseInsensitive) || node->notes.contains(probe, Qt::CaseInsensitive)) {
                ++probed;
                if (!found.contains(node->id)) {
                    fail(state, QStringLiteral("\"%1\" misses the task \"%2\"").arg(query, node->title));
                    return;
                }
            }
        }
    }
    const int hits = count.titleHits + count.notesHits;
    const bool expected = searchCase.kind == QueryKind::none ? hits == 0
        : searchCase.kind == QueryKind::notesOnly           ? count.titleHits == 0 && count.notesHits > 0
                                                             : count.titleHits > 0;
    if (!expected || found.size() != hits) {
        fail(state, QStringLiteral("\"%1\" found %2 titles and %3 notes, not what its data holds")
                        .arg(query)
                        .arg(count.titleHits)
                        .arg(count.notesHits));
        return;
    }
    if (hits > 0 && groups.first().flowID != current->id
        && std::any_of(current->items().begin(), current->items().end(),
                       [&](const FlowNode *node) { return found.contains(node->id); })) {
        fail(state, QStringLiteral("the current flow's matches do not come first"));
        return;
    }
    state.counters["hits"] = hits;
    state.counters["title_hits"] = count.titleHits;
    state.counters["notes_hits"] = count.notesHits;
    state.counters["probe_hits"] = probed;
    state.counters["groups"] = count.groups;
    state.counters["nodes"] = count.nodes;
}

// The floor a query is measured against: every task's title and notes
// read once (the length in each string's header), as any search must.
void searchFloor(benchmark::State &state, LargeStoreShape shape)
{
    QString error;
    LiveStore *live = LiveStore::of(shape, &error);
    if (!live) {
        fail(state, error);
        return;
    }
    qsizetype characters = 0;
    for (auto _ : state) {
        characters = 0;
        for (const TaskFlow *flow : live->store->flows()) {
            for (const FlowNode *node : flow->items())
                characters += node->title.size() + node->notes.size();
        }
        benchmark::DoNotOptimize(characters);
    }
    state.counters["characters"] = double(characters);
}

} // namespace

int main(int argc, char **argv)
{
    const LargeStoreShape flow = snapshotShape();
    const std::string size = "/nodes:" + std::to_string(flow.nodes);
    benchmark::RegisterBenchmark(("CaptureSnapshot" + size).c_str(), captureSnapshot, flow)
        ->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark(("ApplySnapshot/unchanged" + size).c_str(), applyUnchanged, flow)
        ->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark(("ApplySnapshot/undoRedo" + size).c_str(), undoRedo, flow)
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark(("RecordAction/moveOneNode" + size).c_str(), recordMove, flow)
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond);

    const LargeStoreShape store = GeneratedStores::scaledShape();
    const std::string storeSize = "/nodes:" + std::to_string(store.nodes);
    static const SearchCase cases[] = {
        {"common", "the", "en", "the", QueryKind::titles},
        // The palette searches from the first keys typed: two letters
        // match nearly every task.
        {"twoLetters", "re", "en", "re", QueryKind::titles},
        {"rare", "sign the lease", "en", "sign the lease", QueryKind::titles},
        {"notesOnly", "escalates", "en", "escalates", QueryKind::notesOnly},
        {"diacritic", "réunion", "en", "réunion", QueryKind::titles},
        // Typed without its accent, as most people do.
        {"folded", "reunion", "en", "réunion", QueryKind::titles},
        {"noMatch", "zeppelin", "en", "zeppelin", QueryKind::none},
        {"common", "the", "tr", "the", QueryKind::titles},
        {"dottedCapital", "TOPLANTI", "tr", "toplantı", QueryKind::titles},
    };
    benchmark::RegisterBenchmark(("FlowSearch/floor" + storeSize).c_str(), searchFloor, store)
        ->Unit(benchmark::kMillisecond);
    for (const SearchCase &searchCase : cases) {
        const std::string name = std::string("FlowSearch/") + searchCase.label + "/" + searchCase.language + storeSize;
        benchmark::RegisterBenchmark(name.c_str(), searchFlows, store, searchCase)->Unit(benchmark::kMillisecond);
    }
    return runBenchmarks(argc, argv);
}
