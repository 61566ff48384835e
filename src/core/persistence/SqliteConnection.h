#pragma once

#include <QString>

#include <memory>

struct sqlite3;

namespace fenrow {

class SqliteStatement;

// Owns one SQLite connection. Thin on purpose: statements are prepared by
// their users, and every failure comes back as text for the caller to log.
class SqliteConnection {
public:
    SqliteConnection() = default;
    ~SqliteConnection();
    SqliteConnection(const SqliteConnection &) = delete;
    SqliteConnection &operator=(const SqliteConnection &) = delete;

    // Opens read-write, creating the file if it does not exist. Opening does
    // not read or write the file yet; a foreign file shows on first query.
    bool open(const QString &path, QString *error);
    // Opens an existing file for reading only, waiting at most
    // `busyMilliseconds` for a writer; for quick looks that must never
    // change or create anything.
    bool openReadOnly(const QString &path, int busyMilliseconds, QString *error);

    sqlite3 *handle() const { return m_db; }
    bool exec(const char *sql, QString *error = nullptr);
    std::unique_ptr<SqliteStatement> prepare(const char *sql, QString *error = nullptr);
    QString lastError() const;

private:
    sqlite3 *m_db = nullptr;
};

} // namespace fenrow
