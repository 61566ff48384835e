#include "FlowProgress.h"

#include "FlowNode.h"

namespace fenrow::detail {

void countNode(FlowProgress &progress, const FlowNode &node)
{
    ++progress.totalCount;
    if (node.isDone)
        ++progress.doneCount;
    // Exactly "inProgress": the counter reads the stored text, not the
    // tolerant reading, so unknown states are not counted as started.
    else if (node.statusRaw == QLatin1StringView("inProgress"))
        ++progress.inProgressCount;
}

} // namespace fenrow::detail
