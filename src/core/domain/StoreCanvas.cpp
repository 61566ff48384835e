// Writes of the canvas that the single-node operations do not cover: many
// positions at once, and the viewport the canvas leaves in the flow.
#include "FenrowStore.h"

#include "ValueLimits.h"

namespace fenrow {

void FenrowStore::moveNodes(const TaskFlow &flow, const QHash<QUuid, QPointF> &positions)
{
    bool changedAny = false;
    for (FlowNode *node : mutableFlow(flow)->items()) {
        const auto found = positions.constFind(node->id);
        if (found == positions.constEnd())
            continue;
        changedAny |= update(node, &FlowNode::posX, ValueLimits::coordinate(found->x()));
        changedAny |= update(node, &FlowNode::posY, ValueLimits::coordinate(found->y()));
    }
    if (changedAny)
        finishChange();
}

void FenrowStore::setViewport(const TaskFlow &flow, double offsetX, double offsetY, double scale)
{
    TaskFlow *target = mutableFlow(flow);
    bool changedAny = update(target, &TaskFlow::viewportOffsetX, ValueLimits::viewportOffset(offsetX));
    changedAny |= update(target, &TaskFlow::viewportOffsetY, ValueLimits::viewportOffset(offsetY));
    changedAny |= update(target, &TaskFlow::viewportScale, ValueLimits::viewportScale(scale));
    changedAny |= update(target, &TaskFlow::hasBeenFramed, true);
    if (changedAny)
        finishChange();
}

} // namespace fenrow
