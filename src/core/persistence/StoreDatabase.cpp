#include "StoreDatabase.h"

#include "SqliteStatement.h"
#include "StoreSchema.h"

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

bool StoreDatabase::write(const StoreChangeSet &changes, QString *error)
{
    if (changes.isEmpty())
        return true;
    if (!m_connection.exec("BEGIN IMMEDIATE", error))
        return false;
    if (!writeRows(changes)) {
        *error = m_connection.lastError();
        m_connection.exec("ROLLBACK");
        return false;
    }
    if (!m_connection.exec("COMMIT", error)) {
        m_connection.exec("ROLLBACK");
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
