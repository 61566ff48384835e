#include "WalCheckpointer.h"

#include "domain/StoreLog.h"

#include <sqlite3.h>

namespace fenrow {

WalCheckpointer::WalCheckpointer(sqlite3 *connection, const QString &path) : m_path(path)
{
    // The hook replaces SQLite's automatic checkpoint on this connection.
    sqlite3_wal_hook(connection, &WalCheckpointer::afterCommit, this);
    m_thread = std::thread(&WalCheckpointer::run, this);
}

WalCheckpointer::~WalCheckpointer()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

int WalCheckpointer::afterCommit(void *self, sqlite3 *, const char *, int pages)
{
    if (pages >= pagesBeforeCheckpoint)
        static_cast<WalCheckpointer *>(self)->request();
    return SQLITE_OK;
}

void WalCheckpointer::request()
{
    {
        const std::lock_guard lock(m_mutex);
        m_requested = true;
    }
    m_wake.notify_one();
}

namespace {

// A new connection learns that the file is in WAL mode only from its first
// read; until then a checkpoint on it does nothing.
sqlite3 *openConnection(const QString &path)
{
    sqlite3 *connection = nullptr;
    if (sqlite3_open_v2(path.toUtf8().constData(), &connection, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK
        && sqlite3_exec(connection, "PRAGMA schema_version", nullptr, nullptr, nullptr) == SQLITE_OK)
        return connection;
    qCWarning(fenrowStoreLog, "Checkpoint connection failed: %s", sqlite3_errmsg(connection));
    sqlite3_close(connection);
    return nullptr;
}

} // namespace

void WalCheckpointer::run()
{
    sqlite3 *connection = nullptr;
    while (true) {
        {
            std::unique_lock lock(m_mutex);
            m_wake.wait(lock, [this] { return m_requested || m_stopping; });
            if (m_stopping)
                break;
            m_requested = false;
        }
        if (!connection && !(connection = openConnection(m_path)))
            continue;
        // Passive: whatever frames no reader still needs; the rest waits
        // for the next request.
        const int result = sqlite3_wal_checkpoint_v2(connection, nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
        if (result == SQLITE_BUSY) {
            // It met the writer's commit half-way through updating the log's
            // index (a passive checkpoint never waits for the lock). Nothing
            // is lost: the frames stay in the log, and the next commit that
            // leaves the log long asks again.
            qCDebug(fenrowStoreLog, "Checkpoint deferred: %s", sqlite3_errmsg(connection));
        } else if (result != SQLITE_OK) {
            qCWarning(fenrowStoreLog, "Checkpoint failed: %s", sqlite3_errmsg(connection));
        }
    }
    sqlite3_close(connection);
}

} // namespace fenrow
