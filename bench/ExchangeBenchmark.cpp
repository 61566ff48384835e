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

#include "domain/RawEnum.h"

#include <QHash>
#include <QTemporaryDir>
#include <QUuid>

#include <benchmark/benchmark.h>

#include <sqlite3.h>

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
// The flow is deleted again after each round, and the log emptied before
// each timed write, untimed, so that every round meets the same store.
// A peer for an import's save: the same tasks and edges, with new ids made
// beforehand, inserted into the same file in one transaction with SQLite
// alone, one row per statement as a plain program would, at the store's
// durability (WAL, synchronous NORMAL, foreign keys on; checkpoints left out
// of the commit, as the store leaves them to a thread of its own),
// statements prepared once. Taken out again, untimed, after each round.
class BareOutlineWrite
{
public:
    ~BareOutlineWrite()
    {
        for (sqlite3_stmt *statement : {m_flow, m_node, m_edge, m_removeFlow})
            sqlite3_finalize(statement);
        sqlite3_close(m_db);
    }

    bool open(const QString &path, QString *error)
    {
        if (sqlite3_open_v2(path.toUtf8().constData(), &m_db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK ||
            sqlite3_exec(m_db,
                         "PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL; PRAGMA foreign_keys = ON; "
                         "PRAGMA busy_timeout = 5000; PRAGMA wal_autocheckpoint = 0;",
                         nullptr, nullptr, nullptr) != SQLITE_OK ||
            !prepare("INSERT INTO task_flow (id, name, sort_order, created_at, viewport_offset_x, "
                     "viewport_offset_y, viewport_scale, has_been_framed) VALUES (?, 'peer', 0, 0, 0, 0, 1, 0)",
                     &m_flow) ||
            !prepare("INSERT INTO flow_node (id, flow_id, title, is_done, status_raw, notes, priority_raw, "
                     "color_raw, start_date, due_date, estimate_minutes, day_plan_rank, manual_width, "
                     "manual_height, checklist_data, recurrence_raw, repeat_count, completed_at, is_collapsed, "
                     "pos_x, pos_y, sort_order, created_at) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
                     "?, ?, ?, ?, ?, ?, ?, ?)",
                     &m_node) ||
            !prepare("INSERT INTO dependency_edge (id, flow_id, from_id, to_id, source, kind, created_at) "
                     "VALUES (?, ?, ?, ?, ?, ?, ?)",
                     &m_edge) ||
            !prepare("DELETE FROM task_flow WHERE id = ?", &m_removeFlow)) {
            *error = QString::fromUtf8(sqlite3_errmsg(m_db));
            return false;
        }
        return true;
    }

    // Copies the log back into the file and empties it, after waiting for
    // a copy the store's own thread has under way, as an idle program's
    // store stands. Without it a round's timed work shared the machine
    // with the copying of the write before it.
    bool settle()
    {
        return sqlite3_exec(m_db, "PRAGMA wal_checkpoint(TRUNCATE)", nullptr, nullptr, nullptr) == SQLITE_OK;
    }

    // Seconds for the transaction; negative when a statement failed.
    double write(const TaskFlow &source)
    {
        const QByteArray flowID = QUuid::createUuid().toRfc4122();
        QHash<const FlowNode *, QByteArray> ids;
        ids.reserve(qsizetype(source.items().size()));
        for (const FlowNode *node : source.items())
            ids.insert(node, QUuid::createUuid().toRfc4122());
        QList<QByteArray> edgeIDs;
        for (qsizetype i = 0; i < qsizetype(source.edges().size()); ++i)
            edgeIDs.append(QUuid::createUuid().toRfc4122());

        if (!settle())
            return -1;
        const Clock::time_point start = Clock::now();
        bool ok = sqlite3_exec(m_db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr) == SQLITE_OK;
        bindBlob(m_flow, 1, flowID);
        ok = ok && run(m_flow);
        for (const FlowNode *node : source.items()) {
            int column = 0;
            bindBlob(m_node, ++column, ids.value(node));
            bindBlob(m_node, ++column, flowID);
            bindText(m_node, ++column, node->title);
            sqlite3_bind_int(m_node, ++column, node->isDone);
            bindText(m_node, ++column, node->statusRaw);
            bindText(m_node, ++column, node->notes);
            bindText(m_node, ++column, node->priorityRaw);
            bindText(m_node, ++column, node->colorRaw);
            bindTime(m_node, ++column, node->startDate);
            bindTime(m_node, ++column, node->dueDate);
            bindInteger(m_node, ++column, node->estimateMinutes);
            bindInteger(m_node, ++column, node->dayPlanRank);
            bindReal(m_node, ++column, node->manualWidth);
            bindReal(m_node, ++column, node->manualHeight);
            bindText(m_node, ++column, node->checklistData);
            if (node->recurrenceRaw)
                bindText(m_node, ++column, *node->recurrenceRaw);
            else
                sqlite3_bind_null(m_node, ++column);
            sqlite3_bind_int64(m_node, ++column, node->repeatCount);
            bindTime(m_node, ++column, node->completedAt);
            sqlite3_bind_int(m_node, ++column, node->isCollapsed);
            sqlite3_bind_double(m_node, ++column, node->posX);
            sqlite3_bind_double(m_node, ++column, node->posY);
            sqlite3_bind_int64(m_node, ++column, node->order);
            sqlite3_bind_int64(m_node, ++column, node->createdAt.toMSecsSinceEpoch());
            ok = ok && run(m_node);
        }
        qsizetype edgeIndex = 0;
        for (const DependencyEdge *edge : source.edges()) {
            bindBlob(m_edge, 1, edgeIDs[edgeIndex++]);
            bindBlob(m_edge, 2, flowID);
            bindBlob(m_edge, 3, ids.value(edge->fromItem()));
            bindBlob(m_edge, 4, ids.value(edge->toItem()));
            bindText(m_edge, 5, rawString(edge->source));
            if (edge->kind)
                bindText(m_edge, 6, rawString(*edge->kind));
            else
                sqlite3_bind_null(m_edge, 6);
            sqlite3_bind_int64(m_edge, 7, edge->createdAt.toMSecsSinceEpoch());
            ok = ok && run(m_edge);
        }
        ok = ok && sqlite3_exec(m_db, "COMMIT", nullptr, nullptr, nullptr) == SQLITE_OK;
        const double seconds = secondsSince(start);
        // Untimed: the rows go again with their flow.
        bindBlob(m_removeFlow, 1, flowID);
        ok = ok && run(m_removeFlow);
        return ok ? seconds : -1;
    }

private:
    bool prepare(const char *sql, sqlite3_stmt **statement)
    {
        return sqlite3_prepare_v2(m_db, sql, -1, statement, nullptr) == SQLITE_OK;
    }
    static bool run(sqlite3_stmt *statement)
    {
        const bool done = sqlite3_step(statement) == SQLITE_DONE;
        sqlite3_reset(statement);
        return done;
    }
    static void bindBlob(sqlite3_stmt *statement, int column, const QByteArray &bytes)
    {
        sqlite3_bind_blob(statement, column, bytes.constData(), int(bytes.size()), SQLITE_TRANSIENT);
    }
    static void bindText(sqlite3_stmt *statement, int column, const QString &text)
    {
        const QByteArray utf8 = text.toUtf8();
        sqlite3_bind_text(statement, column, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
    }
    static void bindTime(sqlite3_stmt *statement, int column, const std::optional<QDateTime> &time)
    {
        if (time)
            sqlite3_bind_int64(statement, column, time->toMSecsSinceEpoch());
        else
            sqlite3_bind_null(statement, column);
    }
    static void bindInteger(sqlite3_stmt *statement, int column, const std::optional<qint64> &value)
    {
        if (value)
            sqlite3_bind_int64(statement, column, *value);
        else
            sqlite3_bind_null(statement, column);
    }
    static void bindReal(sqlite3_stmt *statement, int column, const std::optional<double> &value)
    {
        if (value)
            sqlite3_bind_double(statement, column, *value);
        else
            sqlite3_bind_null(statement, column);
    }

    sqlite3 *m_db = nullptr;
    sqlite3_stmt *m_flow = nullptr;
    sqlite3_stmt *m_node = nullptr;
    sqlite3_stmt *m_edge = nullptr;
    sqlite3_stmt *m_removeFlow = nullptr;
};

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
    OperationSamples peer;
    BareOutlineWrite bare;
    QString error;
    if (!bare.open(live->path, &error)) {
        fail(state, error);
        return;
    }
    std::size_t edges = 0;
    for (auto _ : state) {
        if (!bare.settle()) {
            fail(state, QStringLiteral("the store's log could not be emptied"));
            return;
        }
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
        // The peer writes what the import made, so that both save alike.
        const double peerSeconds = bare.write(*imported.flow);
        store.deleteFlow(*imported.flow);
        if (peerSeconds < 0) {
            fail(state, QStringLiteral("the bare SQLite write of the outline failed"));
            return;
        }
        peer.add(peerSeconds);
    }
    decoding.report(state, "decode_");
    importing.report(state, "import_");
    peer.report(state, "plain_sqlite_write_");
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
