#pragma once

#include <QList>

namespace fenrow {

class FlowNode;

// Completion counters of a list of nodes, computed in one pass, never stored.
struct FlowProgress {
    qint64 doneCount = 0;
    qint64 inProgressCount = 0;
    qint64 totalCount = 0;

    template <typename Nodes>
    static FlowProgress of(const Nodes &nodes);

    friend bool operator==(const FlowProgress &, const FlowProgress &) = default;
};

namespace detail {
void countNode(FlowProgress &progress, const FlowNode &node);
}

template <typename Nodes>
FlowProgress FlowProgress::of(const Nodes &nodes)
{
    FlowProgress progress;
    for (const FlowNode *node : nodes)
        detail::countNode(progress, *node);
    return progress;
}

} // namespace fenrow
