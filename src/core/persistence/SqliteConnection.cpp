#include "SqliteConnection.h"

#include "SqliteStatement.h"

#include <sqlite3.h>

namespace fenrow {

SqliteConnection::~SqliteConnection()
{
    sqlite3_close_v2(m_db);
}

bool SqliteConnection::open(const QString &path, QString *error)
{
    const QByteArray name = path.toUtf8();
    const int result = sqlite3_open_v2(name.constData(), &m_db,
                                       SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    if (result == SQLITE_OK)
        return true;
    if (error)
        *error = m_db ? lastError() : QString::fromUtf8(sqlite3_errstr(result));
    sqlite3_close_v2(m_db);
    m_db = nullptr;
    return false;
}

bool SqliteConnection::openReadOnly(const QString &path, int busyMilliseconds, QString *error)
{
    const QByteArray name = path.toUtf8();
    const int result = sqlite3_open_v2(name.constData(), &m_db, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
    if (result == SQLITE_OK) {
        sqlite3_busy_timeout(m_db, busyMilliseconds);
        return true;
    }
    if (error)
        *error = m_db ? lastError() : QString::fromUtf8(sqlite3_errstr(result));
    sqlite3_close_v2(m_db);
    m_db = nullptr;
    return false;
}

bool SqliteConnection::exec(const char *sql, QString *error)
{
    char *message = nullptr;
    if (sqlite3_exec(m_db, sql, nullptr, nullptr, &message) == SQLITE_OK)
        return true;
    if (error)
        *error = QString::fromUtf8(message ? message : sqlite3_errmsg(m_db));
    sqlite3_free(message);
    return false;
}

std::unique_ptr<SqliteStatement> SqliteConnection::prepare(const char *sql, QString *error)
{
    auto statement = std::make_unique<SqliteStatement>(m_db, sql);
    if (!statement->isValid()) {
        if (error)
            *error = lastError();
        return nullptr;
    }
    return statement;
}

QString SqliteConnection::lastError() const
{
    return QString::fromUtf8(sqlite3_errmsg(m_db));
}

} // namespace fenrow
