// Generating the large store, and opening it: in this process for the time,
// and in a fresh process that only opens it for the memory.
#include "BenchmarkMain.h"
#include "GeneratedStores.h"
#include "LargeStoreGenerator.h"

#include "persistence/StoreDatabase.h"

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <sqlite3.h>

#include <chrono>
#include <string_view>

using namespace fenrow;
using namespace fenrow::bench;

namespace {

using Clock = std::chrono::steady_clock;

constexpr double mebibyte = 1024.0 * 1024.0;

// The reopened store must hold what was generated: the counts the shape
// fixes exactly, and some of each kind of record.
QString mismatch(const LargeStoreGenerator::Summary &found, const LargeStoreShape &shape)
{
    if (found.flows != shape.flows || found.nodes != shape.nodes || found.edges != shape.edges
        || found.completionRecords != shape.completionRecords || found.files != shape.files)
        return QStringLiteral("reopened store has %1 flows, %2 nodes, %3 edges, %4 records, %5 files")
            .arg(found.flows)
            .arg(found.nodes)
            .arg(found.edges)
            .arg(found.completionRecords)
            .arg(found.files);
    if (found.doneNodes == 0 || found.subtaskEdges == 0 || found.edgesWithoutKind == 0 || found.fileLinks == 0)
        return QStringLiteral("reopened store lacks done nodes, subtask edges, kindless edges or file links");
    if (shape.completionRecords > 10 && found.archivedRecords == 0)
        return QStringLiteral("reopened store has no archived records");
    return {};
}

// Bytes stay out of the loaded rows; asking for them reads them then.
QString bytesMismatch(const FenrowStore &store)
{
    for (const TaskFlow *flow : store.flows()) {
        for (const FlowFile *file : flow->files()) {
            const std::optional<QByteArray> data = file->data.value();
            if (!data || data->size() != file->byteCount || !file->thumbnail.value())
                return QStringLiteral("attachment %1 does not read back").arg(file->filename);
        }
    }
    for (const CompletionRecord *record : store.completionRecords()) {
        if (record->kindRaw != CompletionRecord::archivedKind)
            continue;
        const std::optional<QByteArray> payload = record->payload.value();
        if (!payload || !QJsonDocument::fromJson(*payload).isObject())
            return QStringLiteral("archived payload of %1 does not read back").arg(record->title);
        break;
    }
    return {};
}

void generateStore(benchmark::State &state, LargeStoreShape shape)
{
    QTemporaryDir folder;
    for (auto _ : state) {
        const QString path = folder.filePath(QStringLiteral("generated.store"));
        LargeStoreGenerator generator(shape);
        LargeStoreGenerator::Timings timings;
        QString error;
        if (!generator.writeStore(path, &error, &timings)) {
            fail(state, error);
            return;
        }
        state.SetIterationTime((timings.buildMs + timings.insertMs) / 1000.0);
        state.counters["records_ms"] = timings.buildMs;
        state.counters["insert_ms"] = timings.insertMs;
        state.counters["file_MiB"] = double(QFileInfo(path).size()) / mebibyte;
    }
}

// A copy of the generated store in `folder`; empty, and the benchmark
// failed, when there is none.
QString workingCopy(benchmark::State &state, const LargeStoreShape &shape, const QTemporaryDir &folder)
{
    QString error;
    const QString path = GeneratedStores::workingCopy(shape, folder.path(), &error);
    if (path.isEmpty())
        fail(state, error);
    return path;
}

void openStore(benchmark::State &state, LargeStoreShape shape)
{
    QTemporaryDir folder;
    QString error;
    const QString path = workingCopy(state, shape, folder);
    if (path.isEmpty())
        return;
    bool checked = false;
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        std::unique_ptr<FenrowStore> store;
        if (auto database = StoreDatabase::open(path, &error))
            store = FenrowStore::open(std::move(database), LargeStoreGenerator::clock(),
                                      LargeStoreGenerator::calendar(), &error);
        state.SetIterationTime(secondsSince(start));
        if (!store) {
            fail(state, error);
            return;
        }
        if (!checked) {
            QString wrong = mismatch(LargeStoreGenerator::summarize(*store), shape);
            if (wrong.isEmpty())
                wrong = bytesMismatch(*store);
            if (!wrong.isEmpty()) {
                fail(state, wrong);
                return;
            }
            checked = true;
        }
        // Closing is not part of opening: manual time leaves it out.
    }
    state.counters["nodes"] = shape.nodes;
}

// The floor under opening: every row and column the store loads, stepped
// through with SQLite alone and each value read in its stored type, but no
// record, string or link made of it.
void openStoreFloor(benchmark::State &state, LargeStoreShape shape)
{
    QTemporaryDir folder;
    QString error;
    const QString path = workingCopy(state, shape, folder);
    if (path.isEmpty())
        return;
    static const char *const queries[] = {
        "SELECT id, name, sort_order, created_at, viewport_offset_x, viewport_offset_y, viewport_scale, "
        "has_been_framed FROM task_flow",
        "SELECT id, flow_id, title, is_done, status_raw, notes, priority_raw, color_raw, start_date, due_date, "
        "estimate_minutes, day_plan_rank, manual_width, manual_height, checklist_data, recurrence_raw, "
        "repeat_count, completed_at, is_collapsed, pos_x, pos_y, sort_order, created_at FROM flow_node",
        "SELECT id, flow_id, from_id, to_id, source, kind, created_at FROM dependency_edge",
        "SELECT id, flow_id, filename, content_type_raw, byte_count, has_data, has_thumbnail, is_trashed, pos_x, "
        "pos_y, manual_width, manual_height, sort_order, created_at FROM flow_file",
        "SELECT id, flow_id, file_id, node_id, created_at FROM file_link",
        "SELECT id, node_id, flow_id, flow_name, title, kind_raw, completed_at, cycle, has_payload "
        "FROM completion_record",
        "SELECT id, name, created_at, payload FROM flow_template",
    };
    qint64 nodeRows = 0;
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        sqlite3 *db = nullptr;
        if (sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
            fail(state, QStringLiteral("cannot open the store with SQLite"));
            sqlite3_close(db);
            return;
        }
        qint64 touched = 0;
        nodeRows = 0;
        for (const char *query : queries) {
            sqlite3_stmt *statement = nullptr;
            if (sqlite3_prepare_v2(db, query, -1, &statement, nullptr) != SQLITE_OK) {
                fail(state, QString::fromUtf8(sqlite3_errmsg(db)));
                sqlite3_close(db);
                return;
            }
            const bool nodes = std::string_view(query).ends_with("flow_node");
            while (sqlite3_step(statement) == SQLITE_ROW) {
                nodeRows += nodes;
                for (int column = 0, count = sqlite3_column_count(statement); column < count; ++column) {
                    switch (sqlite3_column_type(statement, column)) {
                    case SQLITE_INTEGER:
                        touched += sqlite3_column_int64(statement, column);
                        break;
                    case SQLITE_FLOAT:
                        touched += qint64(sqlite3_column_double(statement, column));
                        break;
                    case SQLITE_TEXT:
                        touched += *sqlite3_column_text(statement, column);
                        break;
                    case SQLITE_BLOB:
                        touched += sqlite3_column_bytes(statement, column);
                        break;
                    default:
                        break;
                    }
                }
            }
            sqlite3_finalize(statement);
        }
        sqlite3_close(db);
        state.SetIterationTime(secondsSince(start));
        benchmark::DoNotOptimize(touched);
    }
    if (nodeRows != shape.nodes)
        fail(state, QStringLiteral("the floor read %1 task rows, not %2").arg(nodeRows).arg(shape.nodes));
    state.counters["nodes"] = shape.nodes;
}

// `cold` evicts the file from the page cache before each run, so the disk
// read is part of the time, as at the first launch after a reboot.
void openStoreInFreshProcess(benchmark::State &state, LargeStoreShape shape, bool cold)
{
    QTemporaryDir folder;
    QString error;
    const QString path = workingCopy(state, shape, folder);
    if (path.isEmpty())
        return;
    double openMs = 0;
    double rss = 0;
    double peak = 0;
    double baseline = 0;
    for (auto _ : state) {
        QProcess child;
        child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        const Clock::time_point start = Clock::now();
        child.start(QStringLiteral(FENROW_BENCH_OPEN_PROGRAM),
                    cold ? QStringList{QStringLiteral("--cold"), path} : QStringList{path});
        const bool finished = child.waitForFinished(-1);
        state.SetIterationTime(secondsSince(start));
        if (!finished || child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0) {
            fail(state, QStringLiteral("%1 failed: %2").arg(QStringLiteral(FENROW_BENCH_OPEN_PROGRAM), child.errorString()));
            return;
        }
        const QJsonObject result = QJsonDocument::fromJson(child.readAllStandardOutput()).object();
        if (result.value(QStringLiteral("nodes")).toInt() != shape.nodes) {
            fail(state, QStringLiteral("the fresh process did not load the store: %1")
                            .arg(QString::fromUtf8(QJsonDocument(result).toJson(QJsonDocument::Compact))));
            return;
        }
        openMs += result.value(QStringLiteral("openMs")).toDouble();
        rss += result.value(QStringLiteral("rssKiB")).toDouble() * 1024.0 / mebibyte;
        peak += result.value(QStringLiteral("peakRssKiB")).toDouble() * 1024.0 / mebibyte;
        baseline += result.value(QStringLiteral("baselineRssKiB")).toDouble() * 1024.0 / mebibyte;
    }
    const auto average = benchmark::Counter::kAvgIterations;
    state.counters["open_ms"] = benchmark::Counter(openMs, average);
    state.counters["rss_MiB"] = benchmark::Counter(rss, average);
    state.counters["peak_rss_MiB"] = benchmark::Counter(peak, average);
    state.counters["baseline_rss_MiB"] = benchmark::Counter(baseline, average);
}

std::string named(const char *what, const LargeStoreShape &shape)
{
    return std::string(what) + "/nodes:" + std::to_string(shape.nodes);
}

} // namespace

int main(int argc, char **argv)
{
    const LargeStoreShape shape = GeneratedStores::scaledShape();
    // Generation is slow and its time varies little: once is enough.
    benchmark::RegisterBenchmark(named("GenerateStore", shape).c_str(), generateStore, shape)
        ->Iterations(1)
        ->Repetitions(1)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(named("OpenStore", shape).c_str(), openStore, shape)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(named("OpenStore/floor", shape).c_str(), openStoreFloor, shape)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(named("OpenStoreInFreshProcess", shape).c_str(), openStoreInFreshProcess, shape,
                                 false)
        ->Iterations(1)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(named("OpenStoreColdInFreshProcess", shape).c_str(), openStoreInFreshProcess, shape,
                                 true)
        ->Iterations(1)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    return runBenchmarks(argc, argv);
}
