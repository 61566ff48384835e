#pragma once

#include "SqliteConnection.h"
#include "StoreChangeSet.h"
#include "WalCheckpointer.h"

#include <QByteArray>
#include <QString>
#include <QUuid>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace fenrow {

class CompletionRecord;
class FlowTemplate;
class SqliteStatement;
class TaskFlow;
struct TableColumns;

// Everything the store reads at start-up, with relationships already linked.
struct LoadedRecords {
    std::vector<std::unique_ptr<TaskFlow>> flows;
    std::vector<std::unique_ptr<CompletionRecord>> completionRecords;
    std::vector<std::unique_ptr<FlowTemplate>> templates;
};

// The SQLite file under the store: opening with its checks, loading every
// row once, writing a change set in one transaction, and fetching external
// bytes on demand.
class StoreDatabase {
public:
    enum class BytesTable { fileData, fileThumbnail, recordPayload };

    static constexpr const char *inMemoryPath = ":memory:";
    // How long a save waits for a lock held by the store's own checkpoint
    // thread: it holds one for microseconds, but on a loaded machine the
    // thread can be kept off the processor for a while holding it.
    static constexpr int busyMilliseconds = 500;

    ~StoreDatabase();

    // Opens and upgrades the store at `path`. A file that is not a Fenrow
    // store, or one from a newer version, is refused and left as it was.
    static std::unique_ptr<StoreDatabase> open(const QString &path, QString *error);

    const QString &path() const { return m_path; }

    std::optional<LoadedRecords> loadAll(QString *error);
    bool write(const StoreChangeSet &changes, QString *error);
    std::optional<QByteArray> loadBytes(BytesTable table, const QUuid &owner);

private:
    StoreDatabase() = default;
    SqliteStatement &statement(const std::string &sql);
    enum class RowStatement { update, upsertOne, upsertBatch };
    // The statement of `kind` for `table`, found without building its text.
    SqliteStatement &rowStatement(const TableColumns &table, RowStatement kind);
    bool writeTransaction(const StoreChangeSet &changes, QString *error);
    bool writeRows(const StoreChangeSet &changes);
    template <typename Record>
    bool upsertRows(const TableColumns &table, const std::vector<Record *> &records);
    bool deleteRows(const char *table, const std::vector<QUuid> &ids);
    bool writeBytes(BytesTable table, const QUuid &owner, const std::optional<QByteArray> &bytes);

    QString m_path;
    SqliteConnection m_connection;
    std::map<std::string, std::unique_ptr<SqliteStatement>> m_statements;
    std::map<std::pair<const TableColumns *, RowStatement>, SqliteStatement *> m_rowStatements;
    // After the connection: it stops before the connection closes.
    std::unique_ptr<WalCheckpointer> m_checkpointer;
};

} // namespace fenrow
