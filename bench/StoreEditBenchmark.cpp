// Editing one task and its save, the commonest write a user makes: its
// title, its priority, its place on the canvas, and ticking it done. Each
// edit is timed beside the floor under it: a bare SQLite commit of the same
// columns of the same row, on a second copy of the same store, with the
// store connection's journal mode, synchronous setting and page size,
// measured in the same loop so that both meet the same load. The edit
// should cost at most twice the floor and not grow with the store.
#include "BenchmarkMain.h"
#include "GeneratedStores.h"
#include "LiveStore.h"
#include "OperationSamples.h"

#include <QtGlobal>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

using namespace fenrow;
using namespace fenrow::bench;

namespace
{

using Clock = std::chrono::steady_clock;

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

// A raw connection on a copy of the store, writing one row per commit with
// statements prepared once. The log is copied back outside the timed part
// (the store does it on a thread of its own), so the floor is the commit
// alone.
class FloorDatabase
{
public:
    ~FloorDatabase()
    {
        for (sqlite3_stmt *statement : {m_begin, m_commit, m_update})
            sqlite3_finalize(statement);
        sqlite3_close(m_db);
    }

    static std::unique_ptr<FloorDatabase> open(const LargeStoreShape &shape, const QString &storePath, QString *error)
    {
        auto floor = std::unique_ptr<FloorDatabase>(new FloorDatabase);
        const QString path = GeneratedStores::workingCopy(shape, floor->m_folder.path(), error);
        if (path.isEmpty())
            return nullptr;
        if (sqlite3_open_v2(path.toUtf8().constData(), &floor->m_db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
            *error = QStringLiteral("cannot open the floor's copy");
            return nullptr;
        }
        // The store connection's settings, read from the live store's file
        // rather than assumed.
        const QString pragmas = QStringLiteral("PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL; "
                                               "PRAGMA foreign_keys = ON");
        if (!floor->exec(pragmas.toUtf8().constData(), error) || !floor->sameSettingsAs(storePath, error))
            return nullptr;
        sqlite3_wal_hook(floor->m_db, &FloorDatabase::afterCommit, floor.get());
        floor->m_begin = floor->prepare("BEGIN IMMEDIATE");
        floor->m_commit = floor->prepare("COMMIT");
        return floor;
    }

    // The statement that writes `columns` (a SET list of "?" values) of one
    // node row; prepared once per list.
    bool prepareUpdate(const char *columns, QString *error)
    {
        sqlite3_finalize(m_update);
        m_update = prepare((std::string("UPDATE flow_node SET ") + columns + " WHERE id = ?").c_str());
        if (!m_update)
            *error = QString::fromUtf8(sqlite3_errmsg(m_db));
        return m_update != nullptr;
    }

    // Commits one row: `bind` sets the values, the id goes last. Returns
    // the seconds the commit took, or a negative number on failure.
    double commit(const QUuid &id, const std::function<void(sqlite3_stmt *)> &bind)
    {
        const QByteArray key = id.toRfc4122();
        const Clock::time_point start = Clock::now();
        bind(m_update);
        sqlite3_bind_blob(m_update, sqlite3_bind_parameter_count(m_update), key.constData(), int(key.size()),
                          SQLITE_STATIC);
        const bool written = step(m_begin) && step(m_update) && sqlite3_changes(m_db) == 1 && step(m_commit);
        const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        if (m_logPages >= 1000) {
            sqlite3_wal_checkpoint_v2(m_db, nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
            m_logPages = 0;
        }
        return written ? seconds : -1;
    }

private:
    FloorDatabase() = default;

    static int afterCommit(void *self, sqlite3 *, const char *, int pages)
    {
        static_cast<FloorDatabase *>(self)->m_logPages = pages;
        return SQLITE_OK;
    }

    bool exec(const char *sql, QString *error)
    {
        if (sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr) == SQLITE_OK)
            return true;
        *error = QString::fromUtf8(sqlite3_errmsg(m_db));
        return false;
    }

    sqlite3_stmt *prepare(const char *sql)
    {
        sqlite3_stmt *statement = nullptr;
        sqlite3_prepare_v3(m_db, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
        return statement;
    }

    bool step(sqlite3_stmt *statement)
    {
        const int result = sqlite3_step(statement);
        sqlite3_reset(statement);
        return result == SQLITE_DONE;
    }

    static QString setting(sqlite3 *db, const char *name)
    {
        sqlite3_stmt *statement = nullptr;
        QString value;
        if (sqlite3_prepare_v2(db, (std::string("PRAGMA ") + name).c_str(), -1, &statement, nullptr) == SQLITE_OK &&
            sqlite3_step(statement) == SQLITE_ROW)
            value = QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(statement, 0)));
        sqlite3_finalize(statement);
        return value;
    }

    // The journal mode and page size are the file's, the same in both
    // copies; a store that changed either would make the floor a wrong one.
    bool sameSettingsAs(const QString &storePath, QString *error)
    {
        sqlite3 *store = nullptr;
        bool same = false;
        if (sqlite3_open_v2(storePath.toUtf8().constData(), &store, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK) {
            same = true;
            for (const char *name : {"journal_mode", "page_size"})
                same = same && setting(store, name) == setting(m_db, name);
        }
        sqlite3_close(store);
        if (!same)
            *error = QStringLiteral("the floor's copy differs from the store in journal mode or page size");
        return same;
    }

    QTemporaryDir m_folder;
    sqlite3 *m_db = nullptr;
    sqlite3_stmt *m_begin = nullptr;
    sqlite3_stmt *m_commit = nullptr;
    sqlite3_stmt *m_update = nullptr;
    int m_logPages = 0;
};

FloorDatabase *floorOf(const LargeStoreShape &shape, const QString &storePath, QString *error)
{
    static std::map<LargeStoreShape, std::unique_ptr<FloorDatabase>> floors;
    std::unique_ptr<FloorDatabase> &floor = floors[shape];
    if (!floor)
        floor = FloorDatabase::open(shape, storePath, error);
    return floor.get();
}

// An open task with no repeat rule in a flow of typical size: completing it
// is a plain completion, and the flow is neither the smallest nor the largest.
const FlowNode *typicalTask(const FenrowStore &store)
{
    QList<const TaskFlow *> flows = store.flows();
    std::sort(flows.begin(), flows.end(),
              [](const TaskFlow *a, const TaskFlow *b) { return a->items().size() < b->items().size(); });
    for (qsizetype i = flows.size() / 2; i < flows.size(); ++i) {
        for (const FlowNode *node : flows[i]->items()) {
            if (!node->isDone && !node->recurrenceRaw)
                return node;
        }
    }
    return nullptr;
}

enum class Edit { title, priority, move, complete };

struct EditCase {
    const char *name;
    // The columns the edit changes, as the floor writes them.
    const char *floorColumns;
};

constexpr std::array<EditCase, 4> editCases{{
    {"Title", "title = ?"},
    {"Priority", "priority_raw = ?"},
    {"Move", "pos_x = ?, pos_y = ?"},
    {"Complete", "is_done = ?, status_raw = ?, completed_at = ?"},
}};

void editTask(benchmark::State &state, LargeStoreShape shape, Edit edit)
{
    QString error;
    LiveStore *live = LiveStore::of(shape, &error);
    FloorDatabase *floor = live ? floorOf(shape, live->path, &error) : nullptr;
    if (!floor || !floor->prepareUpdate(editCases[std::size_t(edit)].floorColumns, &error)) {
        fail(state, error);
        return;
    }
    const FlowNode *node = typicalTask(*live->store);
    if (!node) {
        state.SkipWithError("the store has no open task without a repeat rule");
        return;
    }
    const QUuid id = node->id;
    const QString title = node->title;
    const QByteArray titleBytes = title.toUtf8();

    OperationSamples samples;
    OperationSamples floorSamples;
    std::vector<double> editSeconds;
    std::vector<double> floorSeconds;
    qint64 round = 0;
    for (auto _ : state) {
        FenrowStore &store = *live->store;
        const bool odd = ++round % 2 == 1;
        const QString newTitle = odd ? title + QStringLiteral(" (edited)") : title;
        const NodePriority priority = odd ? NodePriority::high : NodePriority::low;
        const double x = odd ? 120.0 : 40.0;

        const Clock::time_point start = Clock::now();
        switch (edit) {
        case Edit::title:
            store.setTitle(*node, newTitle);
            break;
        case Edit::priority:
            store.setPriority(priority, *node);
            break;
        case Edit::move:
            store.moveNode(*node, x, x);
            break;
        case Edit::complete:
            store.setStatus(NodeStatus::done, *node);
            break;
        }
        const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        state.SetIterationTime(seconds);
        samples.add(seconds);
        editSeconds.push_back(seconds);
        // A failed save is only logged; its changes stay pending.
        if (store.hasChanges()) {
            fail(state, QStringLiteral("the edit was not saved"));
            return;
        }

        state.PauseTiming();
        if (edit == Edit::complete) {
            store.setStatus(NodeStatus::pending, *node);
            if (store.hasChanges()) {
                fail(state, QStringLiteral("reopening the task was not saved"));
                return;
            }
        }
        const QByteArray floorTitle = odd ? titleBytes + " (edited)" : titleBytes;
        const double floorTime = floor->commit(id, [&](sqlite3_stmt *update) {
            switch (edit) {
            case Edit::title:
                sqlite3_bind_text(update, 1, floorTitle.constData(), int(floorTitle.size()), SQLITE_TRANSIENT);
                break;
            case Edit::priority:
                sqlite3_bind_text(update, 1, odd ? "high" : "low", -1, SQLITE_STATIC);
                break;
            case Edit::move:
                sqlite3_bind_double(update, 1, x);
                sqlite3_bind_double(update, 2, x);
                break;
            case Edit::complete:
                sqlite3_bind_int(update, 1, odd ? 1 : 0);
                sqlite3_bind_text(update, 2, odd ? "done" : "pending", -1, SQLITE_STATIC);
                sqlite3_bind_int64(update, 3, round);
                break;
            }
        });
        state.ResumeTiming();
        if (floorTime < 0) {
            fail(state, QStringLiteral("the floor's commit failed"));
            return;
        }
        floorSeconds.push_back(floorTime);
        floorSamples.add(floorTime);
    }
    samples.report(state);
    floorSamples.report(state, "floor_");
    const double floorMedian = median(floorSeconds);
    state.counters["ratio_to_floor"] = floorMedian > 0 ? median(editSeconds) / floorMedian : 0;

    // Once per edit and size: the last value reached the file.
    if (!live->verified.insert(std::string(editCases[std::size_t(edit)].name)).second)
        return;
    const FlowNode *last = node;
    const QString expectedTitle = last->title;
    const NodePriority expectedPriority = last->priority();
    const double expectedX = last->posX;
    if (edit == Edit::complete)
        live->store->setStatus(NodeStatus::done, *node);
    if (!live->reopen(&error)) {
        fail(state, error);
        return;
    }
    const FlowNode *reopened = live->store->node(id);
    const bool kept = reopened && reopened->title == expectedTitle && reopened->priority() == expectedPriority &&
                      reopened->posX == expectedX && (edit != Edit::complete || reopened->isDone);
    if (!kept)
        fail(state, QStringLiteral("the edit did not reach the file"));
    else if (edit == Edit::complete)
        live->store->setStatus(NodeStatus::pending, *reopened);
}

// A line at warning level or above from the store (a failed save, a failed
// checkpoint) means something went wrong; the run fails on one. Lines at
// debug level (a checkpoint put off) are dropped.
QtMessageHandler defaultHandler = nullptr;
std::atomic<int> storeProblems = 0;

void watchStoreLog(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (type == QtDebugMsg)
        return;
    if (context.category && std::string_view(context.category) == "fenrow.store")
        ++storeProblems;
    defaultHandler(type, context, message);
}

} // namespace

int main(int argc, char **argv)
{
    defaultHandler = qInstallMessageHandler(watchStoreLog);
    const double scale = GeneratedStores::scale();
    for (const int nodes : {1000, 10000, 50000}) {
        const LargeStoreShape shape = LargeStoreShape::withNodes(std::max(1, int(nodes * scale)));
        for (std::size_t edit = 0; edit < editCases.size(); ++edit) {
            const std::string name =
                std::string("Edit") + editCases[edit].name + "/nodes:" + std::to_string(shape.nodes);
            benchmark::RegisterBenchmark(name.c_str(), editTask, shape, Edit(edit))
                ->UseManualTime()
                ->Unit(benchmark::kMicrosecond);
        }
    }
    const int status = runBenchmarks(argc, argv);
    if (storeProblems > 0) {
        std::fprintf(stderr, "%d warnings or errors from the store\n", storeProblems.load());
        return 1;
    }
    return status;
}
