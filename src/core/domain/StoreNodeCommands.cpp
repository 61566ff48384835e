// Node commands of the canvas, built from the single-node operations: each
// step signals and saves on its own, and the caller wraps the whole command
// as one undoable action.
#include "FenrowStore.h"

#include "canvas/CanvasBounds.h"
#include "canvas/FreeSpot.h"
#include "canvas/NodeSizeResolver.h"
#include "canvas/TreeArrangement.h"

#include <algorithm>

namespace fenrow {

namespace {

// Distance from a card's centre to the centre of its neighbour in a row.
double neighbourOffset(const FlowNode &anchor, const NodeSizeResolver &sizes)
{
    return sizes.resolve(anchor).width / 2 + 105 + 32;
}

} // namespace

const FlowNode *FenrowStore::addNodeAt(const TaskFlow &flow, const QString &title, QPointF center,
                                       const NodeSizeResolver &sizes)
{
    const QPointF spot = FreeSpot::find(flow, center, FreeSpot::Direction::sideways, sizes);
    const FlowNode *node = addNode(title, flow);
    moveNode(*node, spot.x(), spot.y());
    return node;
}

const FlowNode *FenrowStore::addNextNode(const FlowNode &anchor, const QString &title, const NodeSizeResolver &sizes)
{
    const TaskFlow &flow = *anchor.flow();
    const QPointF wanted(anchor.posX + neighbourOffset(anchor, sizes), anchor.posY);
    const QPointF spot = FreeSpot::find(flow, wanted, FreeSpot::Direction::downward, sizes);
    const FlowNode *node = addNode(title, flow);
    moveNode(*node, spot.x(), spot.y());
    try {
        addEdge(anchor, *node, EdgeSource::manual, EdgeKind::dependency);
    } catch (const GraphMutationError &) {
        // The new node stays, unconnected.
    }
    return node;
}

const FlowNode *FenrowStore::addNodeBefore(const FlowNode &anchor, const QString &title, const NodeSizeResolver &sizes)
{
    const TaskFlow &flow = *anchor.flow();
    const QPointF wanted(anchor.posX - neighbourOffset(anchor, sizes), anchor.posY);
    const QPointF spot = FreeSpot::find(flow, wanted, FreeSpot::Direction::downward, sizes);
    const FlowNode *node = addNode(title, flow);
    moveNode(*node, spot.x(), spot.y());
    try {
        addEdge(*node, anchor, EdgeSource::manual, EdgeKind::dependency);
    } catch (const GraphMutationError &) {
    }
    return node;
}

const FlowNode *FenrowStore::addChildNode(const FlowNode &parent, const QString &title, const NodeSizeResolver &sizes)
{
    const FlowNode *node = addNode(title, *parent.flow());
    try {
        addEdge(parent, *node, EdgeSource::manual, EdgeKind::subtask);
    } catch (const GraphMutationError &) {
        return node;
    }
    placeChildren(parent, sizes);
    return node;
}

void FenrowStore::placeChildren(const FlowNode &parent, const NodeSizeResolver &sizes)
{
    const TaskFlow &flow = *parent.flow();
    QList<const FlowNode *> children;
    for (const DependencyEdge *edge : flow.edges()) {
        if (edge->isSubtask() && edge->fromItem() == &parent && edge->toItem())
            children.append(edge->toItem());
    }
    std::stable_sort(children.begin(), children.end(),
                     [](const FlowNode *a, const FlowNode *b) { return a->order < b->order; });

    double widest = 0;
    double tallest = 0;
    for (const FlowNode *node : flow.items()) {
        const NodeSize size = sizes.resolve(*node);
        widest = std::max(widest, size.width);
        tallest = std::max(tallest, size.height);
    }
    const double stepX = widest + 60;
    const double stepY = flow.items().empty() ? 150 : tallest + 30;
    // One column right of the parent, centred on it.
    const double middle = double(children.size() - 1) / 2;
    for (qsizetype i = 0; i < children.size(); ++i)
        moveNode(*children[i], parent.posX + stepX, parent.posY + (double(i) - middle) * stepY);
}

void FenrowStore::arrangeAsTree(const TaskFlow &flow, const NodeSizeResolver &sizes)
{
    const QHash<QUuid, QPointF> positions = TreeArrangement::arrange(flow, sizes);
    bool changedAny = false;
    for (FlowNode *node : mutableFlow(flow)->items()) {
        const QPointF point = positions.value(node->id, {node->posX, node->posY});
        changedAny |= update(node, &FlowNode::posX, point.x());
        changedAny |= update(node, &FlowNode::posY, point.y());
    }
    if (changedAny)
        finishChange();
}

void FenrowStore::moveNodeToFlow(const FlowNode &node, const TaskFlow &flow, const NodeSizeResolver &sizes)
{
    TaskFlow *source = mut(node)->flow();
    if (!source)
        throw GraphMutationError(GraphMutationError::Kind::invalidItems);
    if (source->id == flow.id)
        return;
    const bool connected = std::any_of(source->edges().begin(), source->edges().end(), [&](const DependencyEdge *edge) {
        return edge->fromItem() == &node || edge->toItem() == &node;
    });
    const bool linked = std::any_of(source->fileLinks().begin(), source->fileLinks().end(),
                                    [&](const FileLink *link) { return link->node() == &node; });
    if (connected || linked)
        throw GraphMutationError(GraphMutationError::Kind::invalidItems);

    TaskFlow *target = mutableFlow(flow);
    const QPointF spot = FreeSpot::find(flow, QPointF(0, 0), FreeSpot::Direction::sideways, sizes);
    qint64 order = 0;
    if (!target->items().empty()) {
        order = target->items()[0]->order;
        for (const FlowNode *other : std::as_const(*target).items())
            order = std::max(order, other->order);
        ++order;
    }
    // The old flow's readers learn that it lost a node, the new one's that
    // it gained one.
    source->nodesChanged();
    std::unique_ptr<FlowNode> moved = source->items().take(&node);
    moved->setFlow(target);
    moved->order = order;
    moved->posX = CanvasBounds::clampCoordinate(spot.x());
    moved->posY = CanvasBounds::clampCoordinate(spot.y());
    moved->isCollapsed = false;
    m_pending.write(target->items().add(std::move(moved)));
    finishChange();
    emit flowHistoryInvalidated(source->id);
    emit flowHistoryInvalidated(target->id);
}

} // namespace fenrow
