#include "StoreDatabase.h"

#include "SqliteStatement.h"
#include "StoreSchema.h"

#include <sqlite3.h>

namespace fenrow {

StoreDatabase::~StoreDatabase() = default;

std::unique_ptr<StoreDatabase> StoreDatabase::open(const QString &path, QString *error)
{
    std::unique_ptr<StoreDatabase> database(new StoreDatabase);
    database->m_path = path;
    QString reason;
    if (!database->m_connection.open(path, &reason)) {
        *error = QStringLiteral("cannot open %1: %2").arg(path, reason);
        return nullptr;
    }

    int version = 0;
    const StoreSchema::Check check = StoreSchema::inspect(database->m_connection, &version, &reason);
    if (check == StoreSchema::Check::foreign || check == StoreSchema::Check::newer) {
        *error = QStringLiteral("cannot use %1: %2").arg(path, reason);
        return nullptr;
    }

    SqliteConnection &connection = database->m_connection;
    // WAL keeps a save to one short append; NORMAL sync is durable across a
    // crash of the program, which is what a desktop store needs.
    if (path != QLatin1StringView(inMemoryPath) && !connection.exec("PRAGMA journal_mode = WAL", &reason)) {
        *error = QStringLiteral("cannot use %1: %2").arg(path, reason);
        return nullptr;
    }
    if (!connection.exec("PRAGMA synchronous = NORMAL; PRAGMA foreign_keys = ON", &reason)) {
        *error = QStringLiteral("cannot use %1: %2").arg(path, reason);
        return nullptr;
    }
    if (path != QLatin1StringView(inMemoryPath)) {
        database->m_checkpointer = std::make_unique<WalCheckpointer>(connection.handle(), path);
        // The checkpointer's connection takes the log's write lock for a few
        // microseconds when it reads the log's index while a commit rewrites
        // it; a save starting just then waits for it rather than failing.
        // No other writer exists (StoreLock), so the wait stays that short.
        sqlite3_busy_timeout(connection.handle(), busyMilliseconds);
    }
    if (check == StoreSchema::Check::needsUpgrade && !StoreSchema::upgrade(connection, version, &reason)) {
        *error = QStringLiteral("cannot upgrade %1: %2").arg(path, reason);
        return nullptr;
    }
    return database;
}

SqliteStatement &StoreDatabase::statement(const std::string &sql)
{
    auto &cached = m_statements[sql];
    if (!cached)
        cached = std::make_unique<SqliteStatement>(m_connection.handle(), sql.c_str());
    return *cached;
}

namespace {

// More rows than this make a save a bulk write: a restore, an import, a
// generated store.
constexpr std::size_t bulkRows = 2000;

std::size_t rowCount(const StoreChangeSet &changes)
{
    return changes.flows.size() + changes.nodes.size() + changes.edges.size() + changes.files.size()
        + changes.fileLinks.size() + changes.completionRecords.size() + changes.templates.size();
}

bool hasDeletions(const StoreChangeSet &changes)
{
    return !changes.deletedFlows.empty() || !changes.deletedNodes.empty() || !changes.deletedEdges.empty()
        || !changes.deletedFiles.empty() || !changes.deletedFileLinks.empty()
        || !changes.deletedCompletionRecords.empty() || !changes.deletedTemplates.empty();
}

} // namespace

bool StoreDatabase::write(const StoreChangeSet &changes, QString *error)
{
    if (changes.isEmpty())
        return true;
    // A bulk write (a restore, an import) would overflow SQLite's small page
    // cache, spill pages to the log and read them back while it inserts: it
    // gets a cache that holds the whole transaction, given back after the
    // commit. When it only adds rows, the foreign-key checks are off for it
    // too: the records come linked from memory, parents first, and looking
    // each parent up again would double its cost. A write that deletes
    // keeps them, as deletion cascades through them.
    const bool bulk = rowCount(changes) > bulkRows;
    const bool unchecked = bulk && !hasDeletions(changes);
    qint64 cacheSize = 0;
    if (bulk) {
        SqliteStatement &current = statement("PRAGMA cache_size");
        cacheSize = current.step() ? current.integer(0) : -2000;
        current.reset();
        m_connection.exec("PRAGMA cache_size = -262144");
    }
    if (unchecked)
        m_connection.exec("PRAGMA foreign_keys = OFF");
    const bool written = writeTransaction(changes, error);
    if (unchecked)
        m_connection.exec("PRAGMA foreign_keys = ON");
    if (bulk)
        m_connection.exec(QByteArray("PRAGMA cache_size = ").append(QByteArray::number(cacheSize)).constData());
    return written;
}

bool StoreDatabase::writeTransaction(const StoreChangeSet &changes, QString *error)
{
    // Prepared once: parsing these took a tenth of a small save.
    const auto run = [this](const char *sql, QString *reason) {
        if (statement(sql).run())
            return true;
        if (reason)
            *reason = m_connection.lastError();
        return false;
    };
    if (!run("BEGIN IMMEDIATE", error))
        return false;
    if (!writeRows(changes)) {
        *error = m_connection.lastError();
        run("ROLLBACK", nullptr);
        return false;
    }
    if (!run("COMMIT", error)) {
        run("ROLLBACK", nullptr);
        return false;
    }
    return true;
}

std::optional<QByteArray> StoreDatabase::loadBytes(BytesTable table, const QUuid &owner)
{
    const char *sql = nullptr;
    switch (table) {
    case BytesTable::fileData:
        sql = "SELECT bytes FROM flow_file_data WHERE file_id = ?";
        break;
    case BytesTable::fileThumbnail:
        sql = "SELECT bytes FROM flow_file_thumbnail WHERE file_id = ?";
        break;
    case BytesTable::recordPayload:
        sql = "SELECT bytes FROM completion_record_payload WHERE record_id = ?";
        break;
    }
    SqliteStatement &query = statement(sql);
    query.bind(1, owner);
    std::optional<QByteArray> bytes;
    if (query.step())
        bytes = query.bytes(0);
    query.reset();
    return bytes;
}

} // namespace fenrow
