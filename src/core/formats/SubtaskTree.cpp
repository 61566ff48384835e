#include "SubtaskTree.h"

namespace fenrow {

SubtaskTree::SubtaskTree(qsizetype count, const QList<std::pair<qsizetype, qsizetype>> &pairs)
    : m_parents(std::size_t(count), noParent), m_children(std::size_t(count))
{
    for (const auto &[parent, child] : pairs) {
        if (parent < 0 || child < 0 || parent >= count || child >= count || parent == child)
            continue;
        qsizetype &chosen = m_parents[std::size_t(child)];
        if (chosen == noParent || parent < chosen)
            chosen = parent;
    }
    // Ranks ascend as they are visited, so every list comes out sorted.
    for (qsizetype rank = 0; rank < count; ++rank) {
        if (const qsizetype parent = m_parents[std::size_t(rank)]; parent != noParent)
            m_children[std::size_t(parent)].push_back(rank);
    }
}

} // namespace fenrow
