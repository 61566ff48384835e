// Pointer gestures of the editor: moving and resizing cards and file
// cards, drawing and reconnecting edges, linking files, the background's
// pan and rubber band, and the selection rules of clicks.
#include "CanvasEditor.h"

#include "CanvasEditorSelection.h"
#include "domain/FenrowHistory.h"
#include "domain/FenrowStore.h"
#include "domain/FlowGraph.h"

#include <cmath>

namespace fenrow {

using namespace CanvasGeometry;

bool CanvasEditor::beyondThreshold(QPointF raw)
{
    return std::abs(raw.x()) > clickThreshold || std::abs(raw.y()) > clickThreshold;
}

QPointF CanvasEditor::canvasTranslation(QPointF raw) const
{
    return raw / m_interaction.divisorScale();
}

const FlowNode *CanvasEditor::dropTarget(QPointF point, const std::optional<QUuid> &excluded) const
{
    for (const CanvasScene::Card &card : scene().nodes) {
        if (excluded && card.id == *excluded)
            continue;
        if (containsHalfOpen(frame(card.center, card.size), point))
            return node(card.id);
    }
    return nullptr;
}

// --- cards

void CanvasEditor::cardClicked(const QUuid &nodeID, Qt::KeyboardModifiers modifiers)
{
    if (!node(nodeID))
        return;
    const SelectionStep step(*this);
    m_interaction.setSelectedEdgeID(std::nullopt);
    // Only Shift adds to the selection; Ctrl-click is a plain click.
    if (modifiers & Qt::ShiftModifier) {
        m_interaction.toggleSelection(nodeID);
    } else {
        m_interaction.setSelectedItemIDs({nodeID});
        m_interaction.setSelectedFileID(std::nullopt);
        m_interaction.setSelectedFileLinkID(std::nullopt);
    }
    m_interaction.requestFocus();
}

void CanvasEditor::cardDoubleClicked(const QUuid &nodeID)
{
    if (!node(nodeID))
        return;
    const SelectionStep step(*this);
    selectOnly(nodeID);
    m_interaction.setEditingItemID(nodeID);
    m_interaction.requestFocus();
}

void CanvasEditor::cardDragChanged(const QUuid &nodeID, QPointF translation)
{
    const FlowNode *grabbed = node(nodeID);
    // Within the threshold the press may still become a click.
    if (!grabbed || !beyondThreshold(translation))
        return;
    const SelectionStep step(*this);
    if (!m_interaction.selectedItemIDs().contains(nodeID)) {
        m_interaction.setSelectedItemIDs({nodeID});
        m_interaction.setSelectedFileID(std::nullopt);
        m_interaction.setSelectedFileLinkID(std::nullopt);
    }
    QPointF moved = canvasTranslation(translation);
    // The grabbed card lands on the grid; the rest of the group keeps its
    // distance to it.
    if (snapsToGrid())
        moved = snappedTranslation({grabbed->posX, grabbed->posY}, m_interaction.effectiveSize(*grabbed), moved);
    m_interaction.setNodeDrag(NodeDrag{m_interaction.selectedItemIDs(), moved});
}

void CanvasEditor::cardDragEnded(const QUuid &nodeID, QPointF translation, Qt::KeyboardModifiers modifiers)
{
    if (!beyondThreshold(translation)) {
        m_interaction.setNodeDrag(std::nullopt);
        cardClicked(nodeID, modifiers);
        return;
    }
    commitNodeDrag(nodeID, translation);
}

void CanvasEditor::commitNodeDrag(const QUuid &grabbedID, QPointF translation)
{
    const std::optional<NodeDrag> drag = m_interaction.nodeDrag();
    m_interaction.setNodeDrag(std::nullopt);
    const TaskFlow *current = flow();
    const FlowNode *grabbed = node(grabbedID);
    if (!current)
        return;
    QPointF moved;
    QSet<QUuid> ids;
    if (drag) {
        moved = drag->translation;
        ids = drag->itemIDs;
    } else if (grabbed) {
        moved = canvasTranslation(translation);
        if (snapsToGrid())
            moved = snappedTranslation({grabbed->posX, grabbed->posY}, m_interaction.effectiveSize(*grabbed), moved);
        ids = {grabbedID};
    }
    // Cards that vanished during the drag are skipped.
    QHash<QUuid, QPointF> positions;
    for (const QUuid &id : std::as_const(ids)) {
        if (const FlowNode *moving = node(id))
            positions.insert(id, QPointF(moving->posX, moving->posY) + moved);
    }
    if (positions.isEmpty())
        return;
    const QString name = positions.size() == 1 ? QStringLiteral("Move") : QStringLiteral("Move tasks");
    m_services.history.recordAction(name, *current, [&] { m_services.store.moveNodes(*current, positions); });
}

void CanvasEditor::cardResizeChanged(const QUuid &nodeID, QPointF translation)
{
    const FlowNode *target = node(nodeID);
    if (!target)
        return;
    if (!m_resizeBase || m_resizeBase->id != nodeID)
        m_resizeBase = ResizeBase{nodeID, m_interaction.sizeResolver().resolve(*target), {target->posX, target->posY}};
    const NodeSize size = resizedSize(m_resizeBase->size, canvasTranslation(translation), snapsToGrid());
    m_interaction.setNodeResize(NodeResize{nodeID, size, resizedCenter(m_resizeBase->center, m_resizeBase->size, size)});
}

void CanvasEditor::cardResizeEnded(const QUuid &nodeID, QPointF translation)
{
    const TaskFlow *current = flow();
    const FlowNode *target = node(nodeID);
    const std::optional<ResizeBase> base =
        m_resizeBase && m_resizeBase->id == nodeID
        ? m_resizeBase
        : (target ? std::optional(ResizeBase{nodeID, m_interaction.sizeResolver().resolve(*target),
                                             {target->posX, target->posY}})
                  : std::nullopt);
    m_resizeBase.reset();
    m_interaction.setNodeResize(std::nullopt);
    if (!current || !target || !base || !beyondThreshold(translation))
        return;
    const NodeSize size = resizedSize(base->size, canvasTranslation(translation), snapsToGrid());
    const QPointF center = resizedCenter(base->center, base->size, size);
    m_services.history.recordAction(QStringLiteral("Resize"), *current, [&] {
        m_services.store.setManualSize(*target, size.width, size.height);
        m_services.store.moveNode(*target, center.x(), center.y());
    });
}

void CanvasEditor::resetCardSize(const QUuid &nodeID)
{
    const TaskFlow *current = flow();
    const FlowNode *target = node(nodeID);
    if (!current || !target)
        return;
    m_services.history.recordAction(QStringLiteral("Reset size"), *current, [&] {
        m_services.store.setManualSize(*target, std::nullopt, std::nullopt);
    });
}

void CanvasEditor::toggleFold(const QUuid &nodeID)
{
    const FlowNode *target = node(nodeID);
    if (target && FlowGraph::hasSubtasks(*target))
        m_services.store.setCollapsed(*target, !target->isCollapsed);
}

// --- edges

void CanvasEditor::connectionChanged(const QUuid &fromID, QPointF point)
{
    m_interaction.setPendingConnection(PendingConnection{fromID, point});
}

void CanvasEditor::connectionEnded(const QUuid &fromID, QPointF point)
{
    m_interaction.setPendingConnection(std::nullopt);
    const TaskFlow *current = flow();
    const FlowNode *from = node(fromID);
    const FlowNode *target = from ? dropTarget(point, fromID) : nullptr;
    if (!current || !target)
        return;
    const SelectionStep step(*this);
    try {
        m_services.history.recordAction(QStringLiteral("Connect"), *current, [&] {
            m_services.store.addEdge(*from, *target, EdgeSource::manual, EdgeKind::dependency);
            m_interaction.setSelectedEdgeID(std::nullopt);
        });
    } catch (const GraphMutationError &error) {
        // A loop onto itself or across flows cannot come from a drop on a
        // visible card; only a cycle is worth telling.
        if (error.kind() == GraphMutationError::Kind::cycleRejected)
            rejectConnection(point);
    }
}

void CanvasEditor::edgeClicked(const QUuid &edgeID)
{
    if (!edge(edgeID))
        return;
    const SelectionStep step(*this);
    // The file selections stay: a file card and an edge may be selected
    // together.
    m_interaction.setSelectedItemIDs({});
    m_interaction.setSelectedEdgeID(edgeID);
}

void CanvasEditor::edgeEndChanged(EdgeEnd end, QPointF point)
{
    const std::optional<QUuid> edgeID = m_interaction.selectedEdgeID();
    const DependencyEdge *moving = edgeID ? edge(*edgeID) : nullptr;
    if (!moving || !moving->fromItem() || !moving->toItem())
        return;
    const FlowNode *anchor = end == EdgeEnd::source ? moving->toItem() : moving->fromItem();
    m_interaction.setEdgeReconnect(EdgeReconnect{moving->id, end, anchor->id, point});
}

void CanvasEditor::edgeEndEnded(EdgeEnd end, QPointF point)
{
    m_interaction.setEdgeReconnect(std::nullopt);
    const TaskFlow *current = flow();
    const std::optional<QUuid> edgeID = m_interaction.selectedEdgeID();
    const DependencyEdge *moving = edgeID ? edge(*edgeID) : nullptr;
    if (!current || !moving || !moving->fromItem() || !moving->toItem())
        return;
    const FlowNode *anchor = end == EdgeEnd::source ? moving->toItem() : moving->fromItem();
    const FlowNode *target = dropTarget(point, anchor->id);
    if (!target)
        return;
    const FlowNode *from = end == EdgeEnd::source ? target : anchor;
    const FlowNode *to = end == EdgeEnd::source ? anchor : target;
    const QUuid id = moving->id;
    const SelectionStep step(*this);
    try {
        m_services.history.recordAction(QStringLiteral("Reconnect"), *current, [&] {
            m_services.store.reconnectEdge(*moving, *from, *to);
            // Moved onto a pair that had an edge, this one is gone.
            m_interaction.setSelectedEdgeID(edge(id) ? std::optional(id) : std::nullopt);
        });
    } catch (const GraphMutationError &error) {
        if (error.kind() == GraphMutationError::Kind::cycleRejected)
            rejectConnection(point);
    }
}

// --- file cards

void CanvasEditor::fileClicked(const QUuid &fileID)
{
    if (!file(fileID))
        return;
    const SelectionStep step(*this);
    m_interaction.setSelectedEdgeID(std::nullopt);
    m_interaction.setSelectedItemIDs({});
    m_interaction.setSelectedFileLinkID(std::nullopt);
    m_interaction.setSelectedFileID(fileID);
    m_interaction.requestFocus();
}

void CanvasEditor::fileDragChanged(const QUuid &fileID, QPointF translation)
{
    const FlowFile *grabbed = file(fileID);
    if (!grabbed || !beyondThreshold(translation))
        return;
    const SelectionStep step(*this);
    if (m_interaction.selectedFileID() != fileID) {
        m_interaction.setSelectedEdgeID(std::nullopt);
        m_interaction.setSelectedItemIDs({});
        m_interaction.setSelectedFileLinkID(std::nullopt);
        m_interaction.setSelectedFileID(fileID);
    }
    QPointF moved = canvasTranslation(translation);
    if (snapsToGrid())
        moved = snappedTranslation({grabbed->posX, grabbed->posY}, m_interaction.effectiveFileSize(*grabbed), moved);
    m_interaction.setFileDrag(FileDrag{fileID, moved});
}

void CanvasEditor::fileDragEnded(const QUuid &fileID, QPointF translation)
{
    const std::optional<FileDrag> drag = m_interaction.fileDrag();
    m_interaction.setFileDrag(std::nullopt);
    if (!beyondThreshold(translation)) {
        fileClicked(fileID);
        return;
    }
    const TaskFlow *current = flow();
    const FlowFile *moving = file(fileID);
    if (!current || !moving)
        return;
    QPointF moved = drag && drag->fileID == fileID ? drag->translation : canvasTranslation(translation);
    if (!drag && snapsToGrid())
        moved = snappedTranslation({moving->posX, moving->posY}, m_interaction.effectiveFileSize(*moving), moved);
    m_services.history.recordAction(QStringLiteral("Move file"), *current, [&] {
        m_services.store.moveFile(*moving, moving->posX + moved.x(), moving->posY + moved.y());
    });
}

void CanvasEditor::fileResizeChanged(const QUuid &fileID, QPointF translation)
{
    const FlowFile *target = file(fileID);
    if (!target)
        return;
    if (!m_resizeBase || m_resizeBase->id != fileID)
        m_resizeBase = ResizeBase{fileID, NodeSizeResolver::resolveFile(*target), {target->posX, target->posY}};
    const NodeSize size = resizedSize(m_resizeBase->size, canvasTranslation(translation), snapsToGrid());
    m_interaction.setFileResize(FileResize{fileID, size, resizedCenter(m_resizeBase->center, m_resizeBase->size, size)});
}

void CanvasEditor::fileResizeEnded(const QUuid &fileID, QPointF translation)
{
    const TaskFlow *current = flow();
    const FlowFile *target = file(fileID);
    const std::optional<ResizeBase> base =
        m_resizeBase && m_resizeBase->id == fileID
        ? m_resizeBase
        : (target ? std::optional(ResizeBase{fileID, NodeSizeResolver::resolveFile(*target),
                                             {target->posX, target->posY}})
                  : std::nullopt);
    m_resizeBase.reset();
    m_interaction.setFileResize(std::nullopt);
    if (!current || !target || !base || !beyondThreshold(translation))
        return;
    const NodeSize size = resizedSize(base->size, canvasTranslation(translation), snapsToGrid());
    const QPointF center = resizedCenter(base->center, base->size, size);
    m_services.history.recordAction(QStringLiteral("Resize file"), *current, [&] {
        m_services.store.setFileManualSize(*target, size.width, size.height);
        m_services.store.moveFile(*target, center.x(), center.y());
    });
}

void CanvasEditor::fileLinkChanged(const QUuid &fileID, QPointF point)
{
    m_interaction.setPendingFileLink(PendingFileLink{fileID, point});
}

void CanvasEditor::fileLinkEnded(const QUuid &fileID, QPointF point)
{
    m_interaction.setPendingFileLink(std::nullopt);
    const TaskFlow *current = flow();
    const FlowFile *linked = file(fileID);
    const FlowNode *target = dropTarget(point, std::nullopt);
    if (!current || !linked || linked->isTrashed || !target)
        return;
    m_services.history.recordAction(QStringLiteral("Link file"), *current,
                                    [&] { m_services.store.linkFile(*linked, *target); });
}

void CanvasEditor::fileLinkClicked(const QUuid &linkID)
{
    if (!fileLink(linkID))
        return;
    const SelectionStep step(*this);
    m_interaction.setSelectedEdgeID(std::nullopt);
    m_interaction.setSelectedItemIDs({});
    m_interaction.setSelectedFileID(std::nullopt);
    m_interaction.setSelectedFileLinkID(linkID);
    m_interaction.requestFocus();
}

// --- background

void CanvasEditor::backgroundTapped()
{
    const SelectionStep step(*this);
    m_interaction.clearSelection();
}

void CanvasEditor::backgroundDragChanged(QPointF start, QPointF location, Qt::KeyboardModifiers modifiers)
{
    // The mode is fixed by the first change: letting go of the space bar
    // mid-gesture does not turn a pan into a rubber band.
    if (!m_backgroundDragMode) {
        m_backgroundDragMode = m_interaction.spaceHeld() ? BackgroundDragMode::pan
            : (modifiers & Qt::ShiftModifier)            ? BackgroundDragMode::additiveMarquee
                                                         : BackgroundDragMode::marquee;
        emit viewStateChanged();
    }
    if (*m_backgroundDragMode == BackgroundDragMode::pan) {
        if (!m_grabbing) {
            m_grabbing = true;
            setCursor(Cursor::closedHand);
        }
        // No model write during a pan: the offset moves once, at the end.
        setPanTranslation(location - start);
        return;
    }
    m_interaction.setMarquee(spanningRect(m_interaction.toCanvas(start), m_interaction.toCanvas(location)));
}

void CanvasEditor::backgroundDragEnded(QPointF start, QPointF location)
{
    const std::optional<BackgroundDragMode> mode = m_backgroundDragMode;
    if (!mode || *mode == BackgroundDragMode::pan) {
        setPanTranslation({});
        const QPointF moved = location - start;
        m_interaction.panBy(moved.x(), moved.y(), contentBounds());
        schedulePersist();
    } else {
        commitMarquee(spanningRect(m_interaction.toCanvas(start), m_interaction.toCanvas(location)),
                      *mode == BackgroundDragMode::additiveMarquee);
        m_interaction.setMarquee(std::nullopt);
    }
    m_backgroundDragMode.reset();
    if (m_grabbing) {
        m_grabbing = false;
        setCursor(m_interaction.spaceHeld() ? Cursor::openHand : Cursor::arrow);
    }
    emit viewStateChanged();
}

void CanvasEditor::commitMarquee(const QRectF &rect, bool additive)
{
    const CanvasScene &shown = scene();
    QSet<QUuid> hits;
    for (const CanvasScene::Card &card : shown.nodes) {
        if (overlapsClosed(rect, frame(card.stored, card.size)))
            hits.insert(card.id);
    }
    // Adding nothing to a selection is no change at all, not even of focus.
    if (additive && hits.isEmpty())
        return;
    const SelectionStep step(*this);
    if (additive) {
        m_interaction.setSelectedItemIDs(m_interaction.selectedItemIDs() | hits);
        m_interaction.setSelectedEdgeID(std::nullopt);
    } else if (!hits.isEmpty()) {
        m_interaction.setSelectedItemIDs(hits);
        m_interaction.setSelectedEdgeID(std::nullopt);
    } else {
        m_interaction.setSelectedItemIDs({});
        std::optional<QUuid> caught;
        for (const CanvasScene::Line &line : shown.edges) {
            // A line whose box misses the band can neither end in it nor cross it.
            if (!overlapsClosed(rect, line.storedBox))
                continue;
            if (edgeCaught(rect, shown.nodes[std::size_t(line.from)].stored, shown.nodes[std::size_t(line.to)].stored)) {
                caught = line.id;
                break;
            }
        }
        m_interaction.setSelectedEdgeID(caught);
    }
    m_interaction.requestFocus();
}

void CanvasEditor::setSpaceHeld(bool held)
{
    m_interaction.setSpaceHeld(held);
    if (held)
        setCursor(Cursor::openHand);
    else if (!m_grabbing)
        setCursor(Cursor::arrow);
}

} // namespace fenrow
