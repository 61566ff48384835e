#include "SqliteStatement.h"

#include <sqlite3.h>

#include <cstring>

namespace fenrow {

SqliteStatement::SqliteStatement(sqlite3 *db, const char *sql)
{
    if (sqlite3_prepare_v2(db, sql, -1, &m_statement, nullptr) != SQLITE_OK) {
        m_statement = nullptr;
        m_failed = true;
    }
}

SqliteStatement::~SqliteStatement()
{
    sqlite3_finalize(m_statement);
}

char *SqliteStatement::BindArena::take(std::size_t size)
{
    if (size > chunkSize / 4) {
        m_oversized.push_back(std::make_unique<char[]>(size));
        return m_oversized.back().get();
    }
    if (m_chunk < m_chunks.size() && m_used + size > chunkSize) {
        ++m_chunk;
        m_used = 0;
    }
    if (m_chunk == m_chunks.size())
        m_chunks.push_back(std::make_unique<char[]>(chunkSize));
    char *place = m_chunks[m_chunk].get() + m_used;
    m_used += size;
    return place;
}

void SqliteStatement::BindArena::clear()
{
    m_chunk = 0;
    m_used = 0;
    m_oversized.clear();
}

void SqliteStatement::bind(int position, const QUuid &value)
{
    // The RFC 4122 bytes: big-endian fields.
    auto *bytes = reinterpret_cast<unsigned char *>(m_arena.take(16));
    for (int i = 0; i < 4; ++i)
        bytes[i] = static_cast<unsigned char>(value.data1 >> (24 - 8 * i));
    bytes[4] = static_cast<unsigned char>(value.data2 >> 8);
    bytes[5] = static_cast<unsigned char>(value.data2);
    bytes[6] = static_cast<unsigned char>(value.data3 >> 8);
    bytes[7] = static_cast<unsigned char>(value.data3);
    for (int i = 0; i < 8; ++i)
        bytes[8 + i] = value.data4[i];
    sqlite3_bind_blob(m_statement, position, bytes, 16, SQLITE_STATIC);
}

void SqliteStatement::bind(int position, const QString &value)
{
    // An empty text must stay text, not turn into NULL.
    if (value.isEmpty()) {
        sqlite3_bind_text(m_statement, position, "", 0, SQLITE_STATIC);
        return;
    }
    // Most texts bound are short and ASCII (titles, raw enumeration
    // values): narrowed in place, they skip the encoder's call and set-up.
    // The rest of a text is encoded from its first code unit that is not
    // ASCII on.
    const qsizetype size = value.size();
    char *utf8 = m_arena.take(std::size_t(m_utf8.requiredSpace(size)));
    const auto *units = reinterpret_cast<const char16_t *>(value.constData());
    qsizetype ascii = 0;
    for (; ascii + 8 <= size; ascii += 8) {
        quint64 first;
        quint64 second;
        std::memcpy(&first, units + ascii, sizeof first);
        std::memcpy(&second, units + ascii + 4, sizeof second);
        if ((first | second) & 0xFF80FF80FF80FF80ULL)
            break;
        for (int i = 0; i < 8; ++i)
            utf8[ascii + i] = char(units[ascii + i]);
    }
    while (ascii < size && units[ascii] < 0x80) {
        utf8[ascii] = char(units[ascii]);
        ++ascii;
    }
    const char *end = utf8 + ascii;
    if (ascii < size)
        end = m_utf8.appendToBuffer(utf8 + ascii, QStringView(units + ascii, size - ascii));
    sqlite3_bind_text(m_statement, position, utf8, int(end - utf8), SQLITE_STATIC);
}

void SqliteStatement::bind(int position, QLatin1StringView value)
{
    auto *utf8 = reinterpret_cast<unsigned char *>(m_arena.take(std::size_t(value.size()) * 2 + 1));
    std::size_t size = 0;
    for (const char c : value) {
        const auto unit = static_cast<unsigned char>(c);
        if (unit < 0x80) {
            utf8[size++] = unit;
        } else {
            utf8[size++] = static_cast<unsigned char>(0xC0 | unit >> 6);
            utf8[size++] = static_cast<unsigned char>(0x80 | (unit & 0x3F));
        }
    }
    sqlite3_bind_text(m_statement, position, reinterpret_cast<const char *>(utf8), int(size), SQLITE_STATIC);
}

void SqliteStatement::bind(int position, const QByteArray &value)
{
    // A zero-length blob must stay a blob, not turn into NULL.
    sqlite3_bind_blob64(m_statement, position, value.isEmpty() ? "" : value.constData(),
                        sqlite3_uint64(value.size()), SQLITE_TRANSIENT);
}

void SqliteStatement::bind(int position, qint64 value)
{
    sqlite3_bind_int64(m_statement, position, value);
}

void SqliteStatement::bind(int position, double value)
{
    sqlite3_bind_double(m_statement, position, value);
}

void SqliteStatement::bind(int position, bool value)
{
    sqlite3_bind_int(m_statement, position, value ? 1 : 0);
}

void SqliteStatement::bind(int position, const QDateTime &value)
{
    sqlite3_bind_int64(m_statement, position, value.toMSecsSinceEpoch());
}

void SqliteStatement::bindNull(int position)
{
    sqlite3_bind_null(m_statement, position);
}

bool SqliteStatement::step()
{
    if (!m_statement)
        return false;
    const int result = sqlite3_step(m_statement);
    if (result == SQLITE_ROW)
        return true;
    if (result != SQLITE_DONE)
        m_failed = true;
    return false;
}

bool SqliteStatement::run()
{
    // A cached statement runs again after a failure (a busy BEGIN, say):
    // only this run's outcome counts.
    m_failed = m_statement == nullptr;
    while (step()) {
    }
    const bool ok = !m_failed;
    reset();
    return ok;
}

void SqliteStatement::reset()
{
    if (!m_statement)
        return;
    sqlite3_reset(m_statement);
    sqlite3_clear_bindings(m_statement);
    m_arena.clear();
}

bool SqliteStatement::isNull(int column) const
{
    return sqlite3_column_type(m_statement, column) == SQLITE_NULL;
}

QUuid SqliteStatement::uuid(int column) const
{
    const int size = sqlite3_column_bytes(m_statement, column);
    const auto *data = static_cast<const char *>(sqlite3_column_blob(m_statement, column));
    if (size != 16 || !data)
        return {};
    return QUuid::fromRfc4122(QByteArrayView(data, size));
}

QString SqliteStatement::text(int column) const
{
    const auto *data = reinterpret_cast<const char *>(sqlite3_column_text(m_statement, column));
    return QString::fromUtf8(data, sqlite3_column_bytes(m_statement, column));
}

QByteArrayView SqliteStatement::utf8(int column) const
{
    const auto *data = reinterpret_cast<const char *>(sqlite3_column_text(m_statement, column));
    return QByteArrayView(data, sqlite3_column_bytes(m_statement, column));
}

QByteArray SqliteStatement::bytes(int column) const
{
    const auto *data = static_cast<const char *>(sqlite3_column_blob(m_statement, column));
    return QByteArray(data, sqlite3_column_bytes(m_statement, column));
}

qint64 SqliteStatement::integer(int column) const
{
    return sqlite3_column_int64(m_statement, column);
}

double SqliteStatement::real(int column) const
{
    return sqlite3_column_double(m_statement, column);
}

QDateTime SqliteStatement::dateTime(int column) const
{
    // Instants come back in UTC: comparing them then needs no zone lookup,
    // and display converts through the calendar anyway.
    return QDateTime::fromMSecsSinceEpoch(integer(column), Qt::UTC);
}

std::optional<QString> SqliteStatement::optionalText(int column) const
{
    return isNull(column) ? std::nullopt : std::optional(text(column));
}

std::optional<qint64> SqliteStatement::optionalInteger(int column) const
{
    return isNull(column) ? std::nullopt : std::optional(integer(column));
}

std::optional<double> SqliteStatement::optionalReal(int column) const
{
    return isNull(column) ? std::nullopt : std::optional(real(column));
}

std::optional<QDateTime> SqliteStatement::optionalDateTime(int column) const
{
    return isNull(column) ? std::nullopt : std::optional(dateTime(column));
}

} // namespace fenrow
