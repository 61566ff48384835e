#pragma once

#include <QList>

#include <utility>
#include <vector>

namespace fenrow {

// The tree that outlines and lists draw from a flow's subtask edges. Tasks
// are numbered by rank (their position in the flow's order); a child with
// several parents hangs under the one of lowest rank, so the graph is
// flattened and every task appears exactly once.
class SubtaskTree {
public:
    // `pairs` are (parent rank, child rank); pairs naming a rank outside
    // [0, count) or a task under itself are ignored.
    SubtaskTree(qsizetype count, const QList<std::pair<qsizetype, qsizetype>> &pairs);

    qsizetype parentOf(qsizetype rank) const { return m_parents[std::size_t(rank)]; }
    // Ascending by rank.
    const std::vector<qsizetype> &childrenOf(qsizetype rank) const { return m_children[std::size_t(rank)]; }

    // Depth first from the roots (tasks without a parent) by rank, children
    // by rank; then every task not reached, at depth 0. `enter(rank, depth)`
    // and `leave(rank, depth)` are called once per task, `leave` after its
    // subtree. No recursion: a chain of any length is walked.
    template <typename Enter, typename Leave>
    void walk(Enter enter, Leave leave) const;

    static constexpr qsizetype noParent = -1;

private:
    std::vector<qsizetype> m_parents;
    std::vector<std::vector<qsizetype>> m_children;
};

template <typename Enter, typename Leave>
void SubtaskTree::walk(Enter enter, Leave leave) const
{
    struct Frame {
        qsizetype rank;
        qsizetype depth;
        std::size_t next;
    };
    const qsizetype count = qsizetype(m_parents.size());
    std::vector<char> visited(std::size_t(count), 0);
    std::vector<Frame> stack;
    const auto from = [&](qsizetype start) {
        if (visited[std::size_t(start)])
            return;
        visited[std::size_t(start)] = 1;
        enter(start, qsizetype(0));
        stack.push_back({start, 0, 0});
        while (!stack.empty()) {
            Frame &top = stack.back();
            const std::vector<qsizetype> &children = m_children[std::size_t(top.rank)];
            if (top.next < children.size()) {
                const qsizetype child = children[top.next++];
                if (visited[std::size_t(child)])
                    continue;
                visited[std::size_t(child)] = 1;
                const qsizetype depth = top.depth + 1;
                enter(child, depth);
                stack.push_back({child, depth, 0});
                continue;
            }
            leave(top.rank, top.depth);
            stack.pop_back();
        }
    };
    for (qsizetype rank = 0; rank < count; ++rank) {
        if (m_parents[std::size_t(rank)] == noParent)
            from(rank);
    }
    // Whatever no root reaches (a loop of parents in damaged data).
    for (qsizetype rank = 0; rank < count; ++rank)
        from(rank);
}

} // namespace fenrow
