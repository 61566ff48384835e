#pragma once

#include <QSet>

#include <cstddef>
#include <vector>

namespace fenrow {

// The rules of addEdge, in its order, for a flow still being built from a
// document (an outline, a backup): a task never leads to itself, an
// ordered pair has at most one edge (the first stays), and no edge may
// close a cycle over edges of either kind. Tasks are numbered 0 to n - 1
// by the caller. Checking against the growing adjacency keeps a large
// document linear in its edges where addEdge would rescan the flow for
// every one.
class GrowingGraph {
public:
    explicit GrowingGraph(std::size_t nodeCount) : m_nodeCount(nodeCount), m_heads(nodeCount), m_seen(nodeCount, 0) {}

    // True when the edge passes the rules; it then counts for later edges.
    bool admit(std::size_t from, std::size_t to)
    {
        if (from == to)
            return false;
        const quint64 pair = quint64(from) * quint64(m_nodeCount) + quint64(to);
        if (m_pairs.contains(pair) || reaches(to, from))
            return false;
        m_pairs.insert(pair);
        m_heads[from].push_back(to);
        return true;
    }

private:
    bool reaches(std::size_t start, std::size_t target)
    {
        // A fresh mark per search: no clearing between searches.
        ++m_mark;
        m_stack.assign(1, start);
        while (!m_stack.empty()) {
            const std::size_t node = m_stack.back();
            m_stack.pop_back();
            if (node == target)
                return true;
            if (m_seen[node] == m_mark)
                continue;
            m_seen[node] = m_mark;
            m_stack.insert(m_stack.end(), m_heads[node].begin(), m_heads[node].end());
        }
        return false;
    }

    std::size_t m_nodeCount;
    std::vector<std::vector<std::size_t>> m_heads;
    std::vector<quint32> m_seen;
    quint32 m_mark = 0;
    std::vector<std::size_t> m_stack;
    QSet<quint64> m_pairs;
};

} // namespace fenrow
