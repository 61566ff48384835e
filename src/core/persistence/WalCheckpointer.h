#pragma once

#include <QString>

#include <condition_variable>
#include <mutex>
#include <thread>

struct sqlite3;

namespace fenrow {

// Copies the write-ahead log back into the store file on a thread of its
// own. SQLite would do it inside whichever commit pushed the log past a
// thousand pages, so a large import or restore paid for writing its pages
// twice, and the disk sync, before the window could go on. The thread has
// a connection of its own and only ever asks for a passive checkpoint,
// which never waits for the writer and never blocks it.
class WalCheckpointer {
public:
    // Takes over checkpointing for `connection`, an open connection in WAL
    // mode on the file at `path`.
    WalCheckpointer(sqlite3 *connection, const QString &path);
    // Finishes a checkpoint under way and closes the thread's connection;
    // the owner closes its own connection afterwards.
    ~WalCheckpointer();
    WalCheckpointer(const WalCheckpointer &) = delete;
    WalCheckpointer &operator=(const WalCheckpointer &) = delete;

    // The log length that asks for a checkpoint, as SQLite's own default.
    static constexpr int pagesBeforeCheckpoint = 1000;

private:
    static int afterCommit(void *self, sqlite3 *connection, const char *database, int pages);
    void request();
    void run();

    QString m_path;
    std::thread m_thread;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_requested = false;
    bool m_stopping = false;
};

} // namespace fenrow
