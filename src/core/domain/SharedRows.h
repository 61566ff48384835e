#pragma once

#include <QList>

#include <iterator>
#include <memory>

namespace fenrow {

// An immutable list of rows in which each row may be shared with other
// lists. Undo keeps up to fifty pairs of whole-flow snapshots per flow, and
// one action changes a handful of rows: sharing the untouched rows with the
// snapshot before makes an entry cost about what it changed.
//
// Rows are held in chunks of `chunkSize` handles, and a chunk whose every
// handle is the same as in an earlier list is shared whole
// (`shareChunksWith`), so even the list of handles costs what changed: a
// moved card in a flow of 2,000 tasks owns one chunk, not 2,000 handles.
template <typename Row>
class SharedRows {
public:
    using Handle = std::shared_ptr<const Row>;
    static constexpr qsizetype chunkSize = 64;

    class const_iterator {
    public:
        using iterator_category = std::random_access_iterator_tag;
        using value_type = Row;
        using difference_type = qsizetype;
        using pointer = const Row *;
        using reference = const Row &;

        const_iterator() = default;
        const_iterator(const SharedRows *rows, qsizetype at) : m_rows(rows), m_at(at) {}

        const Row &operator*() const { return m_rows->at(m_at); }
        const Row *operator->() const { return &m_rows->at(m_at); }
        const Row &operator[](qsizetype n) const { return m_rows->at(m_at + n); }
        const_iterator &operator++() { ++m_at; return *this; }
        const_iterator operator++(int) { return const_iterator(m_rows, m_at++); }
        const_iterator &operator--() { --m_at; return *this; }
        const_iterator operator--(int) { return const_iterator(m_rows, m_at--); }
        const_iterator &operator+=(qsizetype n) { m_at += n; return *this; }
        const_iterator &operator-=(qsizetype n) { m_at -= n; return *this; }
        friend const_iterator operator+(const_iterator it, qsizetype n) { return it += n; }
        friend const_iterator operator+(qsizetype n, const_iterator it) { return it += n; }
        friend const_iterator operator-(const_iterator it, qsizetype n) { return it -= n; }
        friend qsizetype operator-(const const_iterator &a, const const_iterator &b) { return a.m_at - b.m_at; }
        friend bool operator==(const const_iterator &, const const_iterator &) = default;
        friend bool operator<(const const_iterator &a, const const_iterator &b) { return a.m_at < b.m_at; }
        friend bool operator>(const const_iterator &a, const const_iterator &b) { return b < a; }
        friend bool operator<=(const const_iterator &a, const const_iterator &b) { return !(b < a); }
        friend bool operator>=(const const_iterator &a, const const_iterator &b) { return !(a < b); }

    private:
        const SharedRows *m_rows = nullptr;
        qsizetype m_at = 0;
    };

    SharedRows() = default;
    SharedRows(std::initializer_list<Row> rows)
    {
        for (const Row &row : rows)
            append(row);
    }

    qsizetype size() const { return m_size; }
    bool isEmpty() const { return m_size == 0; }
    const Handle &handle(qsizetype i) const { return m_chunks.at(i / chunkSize)->at(i % chunkSize); }
    const Row &at(qsizetype i) const { return *handle(i); }
    const Row &operator[](qsizetype i) const { return at(i); }
    const Row &first() const { return at(0); }
    const Row &last() const { return at(m_size - 1); }

    const_iterator begin() const { return const_iterator(this, 0); }
    const_iterator end() const { return const_iterator(this, m_size); }

    void reserve(qsizetype count) { m_chunks.reserve((count + chunkSize - 1) / chunkSize); }
    void append(Row row) { append(std::make_shared<const Row>(std::move(row))); }
    void append(Handle row)
    {
        if (m_chunks.isEmpty() || m_chunks.last()->size() == chunkSize) {
            m_chunks.append(std::make_shared<QList<Handle>>());
            m_chunks.last()->reserve(chunkSize);
        } else if (m_chunks.last().use_count() > 1) {
            // The last chunk is shared: this list gets a copy of its own.
            m_chunks.last() = std::make_shared<QList<Handle>>(*m_chunks.last());
        }
        m_chunks.last()->append(std::move(row));
        ++m_size;
    }

    // Takes over each chunk of `earlier` that holds the very same rows at
    // the same place, and `earlier`'s whole list of chunks when all are.
    void shareChunksWith(const SharedRows &earlier)
    {
        bool all = m_chunks.size() == earlier.m_chunks.size();
        for (qsizetype i = 0; i < m_chunks.size(); ++i) {
            if (i < earlier.m_chunks.size() && *m_chunks.at(i) == *earlier.m_chunks.at(i))
                m_chunks[i] = earlier.m_chunks.at(i);
            else
                all = false;
        }
        if (all)
            m_chunks = earlier.m_chunks;
    }

    // Equal row for row, by value; a shared row is equal without a look.
    friend bool operator==(const SharedRows &a, const SharedRows &b)
    {
        if (a.m_size != b.m_size)
            return false;
        for (qsizetype i = 0; i < a.m_size; ++i) {
            if (a.handle(i) != b.handle(i) && !(a.at(i) == b.at(i)))
                return false;
        }
        return true;
    }

private:
    // Chunks are filled while the list is built and never changed after.
    QList<std::shared_ptr<QList<Handle>>> m_chunks;
    qsizetype m_size = 0;
};

} // namespace fenrow
