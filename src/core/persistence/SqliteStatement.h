#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringEncoder>
#include <QUuid>

#include <memory>
#include <optional>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace fenrow {

// A prepared statement with binders and readers for the value types the
// records use. Positions are 1-based for binding and 0-based for reading,
// as in SQLite itself. Identifiers are stored as 16-byte blobs and instants
// as milliseconds since the epoch.
class SqliteStatement {
public:
    SqliteStatement(sqlite3 *db, const char *sql);
    ~SqliteStatement();
    SqliteStatement(const SqliteStatement &) = delete;
    SqliteStatement &operator=(const SqliteStatement &) = delete;

    bool isValid() const { return m_statement != nullptr; }

    void bind(int position, const QUuid &value);
    void bind(int position, const QString &value);
    // A Latin-1 text, such as an enumeration's raw name, without making a
    // QString of it first.
    void bind(int position, QLatin1StringView value);
    void bind(int position, const QByteArray &value);
    void bind(int position, qint64 value);
    void bind(int position, double value);
    void bind(int position, bool value);
    void bind(int position, const QDateTime &value);
    void bindNull(int position);

    template <typename T>
    void bind(int position, const std::optional<T> &value)
    {
        if (value)
            bind(position, *value);
        else
            bindNull(position);
    }

    // Steps once. True while a row is available; errors end the iteration
    // and are reported through `failed`.
    bool step();
    // Runs to completion; false on error.
    bool run();
    void reset();
    bool failed() const { return m_failed; }

    bool isNull(int column) const;
    QUuid uuid(int column) const;
    QString text(int column) const;
    // The column's UTF-8 bytes, valid until the next step.
    QByteArrayView utf8(int column) const;
    QByteArray bytes(int column) const;
    qint64 integer(int column) const;
    double real(int column) const;
    bool boolean(int column) const { return integer(column) != 0; }
    QDateTime dateTime(int column) const;

    std::optional<QString> optionalText(int column) const;
    std::optional<qint64> optionalInteger(int column) const;
    std::optional<double> optionalReal(int column) const;
    std::optional<QDateTime> optionalDateTime(int column) const;

private:
    // Room for the bytes of bound ids and texts until the statement is
    // reset: SQLite reads them where they lie instead of copying each value
    // into an allocation of its own, which a bulk write did hundreds of
    // thousands of times.
    class BindArena {
    public:
        char *take(std::size_t size);
        void clear();

    private:
        static constexpr std::size_t chunkSize = 64 * 1024;
        std::vector<std::unique_ptr<char[]>> m_chunks;
        std::vector<std::unique_ptr<char[]>> m_oversized;
        std::size_t m_chunk = 0;
        std::size_t m_used = 0;
    };

    sqlite3_stmt *m_statement = nullptr;
    bool m_failed = false;
    BindArena m_arena;
    QStringEncoder m_utf8{QStringEncoder::Utf8, QStringConverter::Flag::Stateless};
};

} // namespace fenrow
