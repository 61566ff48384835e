#pragma once

#include <algorithm>
#include <memory>
#include <vector>

namespace fenrow {

// The records a parent owns (a flow's nodes, edges, files, links). A const
// list hands out const records, so views that hold the store read-only
// cannot write; only the store, which holds records mutably, can.
template <typename T>
class OwnedList {
    using Storage = std::vector<std::unique_ptr<T>>;

public:
    template <typename Pointer, typename Base>
    class Iterator {
    public:
        using iterator_category = std::random_access_iterator_tag;
        using value_type = Pointer;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = Pointer;

        Iterator() = default;
        explicit Iterator(Base base) : m_base(base) {}
        Pointer operator*() const { return m_base->get(); }
        Iterator &operator++() { ++m_base; return *this; }
        Iterator operator++(int) { Iterator copy = *this; ++m_base; return copy; }
        difference_type operator-(const Iterator &other) const { return m_base - other.m_base; }
        bool operator==(const Iterator &other) const = default;

    private:
        Base m_base;
    };

    using iterator = Iterator<T *, typename Storage::iterator>;
    using const_iterator = Iterator<const T *, typename Storage::const_iterator>;

    iterator begin() { return iterator(m_items.begin()); }
    iterator end() { return iterator(m_items.end()); }
    const_iterator begin() const { return const_iterator(m_items.begin()); }
    const_iterator end() const { return const_iterator(m_items.end()); }

    std::size_t size() const { return m_items.size(); }
    bool empty() const { return m_items.empty(); }
    const T *operator[](std::size_t index) const { return m_items[index].get(); }
    T *operator[](std::size_t index) { return m_items[index].get(); }

    void reserve(std::size_t count) { m_items.reserve(count); }

    T *add(std::unique_ptr<T> item)
    {
        m_items.push_back(std::move(item));
        return m_items.back().get();
    }

    std::unique_ptr<T> take(const T *item)
    {
        auto found = std::find_if(m_items.begin(), m_items.end(),
                                  [item](const std::unique_ptr<T> &owned) { return owned.get() == item; });
        if (found == m_items.end())
            return nullptr;
        std::unique_ptr<T> taken = std::move(*found);
        m_items.erase(found);
        return taken;
    }

    // Removes (and destroys) every item the predicate accepts, after handing
    // each to `beforeRemoval`. One pass, whatever the count.
    template <typename Predicate, typename Visitor>
    std::size_t removeIf(Predicate accepts, Visitor beforeRemoval)
    {
        auto kept = std::stable_partition(m_items.begin(), m_items.end(),
                                          [&](const std::unique_ptr<T> &owned) { return !accepts(*owned); });
        const auto removed = std::size_t(m_items.end() - kept);
        for (auto it = kept; it != m_items.end(); ++it)
            beforeRemoval(it->get());
        m_items.erase(kept, m_items.end());
        return removed;
    }

    bool contains(const T *item) const
    {
        return std::any_of(m_items.begin(), m_items.end(),
                           [item](const std::unique_ptr<T> &owned) { return owned.get() == item; });
    }

private:
    Storage m_items;
};

} // namespace fenrow
