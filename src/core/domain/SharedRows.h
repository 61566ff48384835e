#pragma once

#include <QList>

#include <iterator>
#include <memory>

namespace fenrow {

// An immutable list of rows in which each row may be shared with other
// lists. Undo keeps up to fifty pairs of whole-flow snapshots per flow, and
// one action changes a handful of rows: sharing the untouched rows with the
// snapshot before makes an entry cost about what it changed.
template <typename Row>
class SharedRows {
public:
    using Handle = std::shared_ptr<const Row>;

    class const_iterator {
    public:
        using iterator_category = std::random_access_iterator_tag;
        using value_type = Row;
        using difference_type = qsizetype;
        using pointer = const Row *;
        using reference = const Row &;

        const_iterator() = default;
        explicit const_iterator(typename QList<Handle>::const_iterator at) : m_at(at) {}

        const Row &operator*() const { return **m_at; }
        const Row *operator->() const { return m_at->get(); }
        const Row &operator[](qsizetype n) const { return *m_at[n]; }
        const_iterator &operator++() { ++m_at; return *this; }
        const_iterator operator++(int) { return const_iterator(m_at++); }
        const_iterator &operator--() { --m_at; return *this; }
        const_iterator operator--(int) { return const_iterator(m_at--); }
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
        typename QList<Handle>::const_iterator m_at;
    };

    SharedRows() = default;
    SharedRows(std::initializer_list<Row> rows)
    {
        m_rows.reserve(qsizetype(rows.size()));
        for (const Row &row : rows)
            append(row);
    }

    qsizetype size() const { return m_rows.size(); }
    bool isEmpty() const { return m_rows.isEmpty(); }
    const Row &at(qsizetype i) const { return *m_rows.at(i); }
    const Row &operator[](qsizetype i) const { return *m_rows.at(i); }
    const Row &first() const { return *m_rows.first(); }
    const Row &last() const { return *m_rows.last(); }
    const Handle &handle(qsizetype i) const { return m_rows.at(i); }

    const_iterator begin() const { return const_iterator(m_rows.cbegin()); }
    const_iterator end() const { return const_iterator(m_rows.cend()); }

    void reserve(qsizetype count) { m_rows.reserve(count); }
    void append(Row row) { m_rows.append(std::make_shared<const Row>(std::move(row))); }
    void append(Handle row) { m_rows.append(std::move(row)); }

    // Equal row for row, by value; a shared row is equal without a look.
    friend bool operator==(const SharedRows &a, const SharedRows &b)
    {
        if (a.m_rows.size() != b.m_rows.size())
            return false;
        for (qsizetype i = 0; i < a.m_rows.size(); ++i) {
            if (a.m_rows.at(i) != b.m_rows.at(i) && !(*a.m_rows.at(i) == *b.m_rows.at(i)))
                return false;
        }
        return true;
    }

private:
    QList<Handle> m_rows;
};

} // namespace fenrow
