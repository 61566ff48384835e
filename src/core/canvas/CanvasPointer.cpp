#include "CanvasPointer.h"

#include "CanvasEditor.h"
#include "domain/TaskFlow.h"

#include <cmath>

namespace fenrow {

using Kind = CanvasHit::Kind;

std::optional<CanvasHit> CanvasPointer::target() const
{
    return m_gesture ? std::optional(m_gesture->hit) : std::nullopt;
}

double CanvasPointer::minimumDistance() const
{
    switch (m_gesture->hit.kind) {
    case Kind::background:
    case Kind::edge:
    case Kind::fileLink:
        return CanvasEditor::backgroundDragMinimum;
    case Kind::edgeHandle:
        return handleDragMinimum;
    default:
        return 0;
    }
}

void CanvasPointer::press(QPointF point, Qt::KeyboardModifiers modifiers, int clickCount)
{
    Q_UNUSED(modifiers)
    Gesture gesture;
    gesture.hit = CanvasHitTest::at(m_editor, point);
    gesture.start = point;
    const CanvasInteraction &interaction = m_editor.interaction();
    const TaskFlow *flow = m_editor.flow();
    switch (gesture.hit.kind) {
    case Kind::port:
        for (const FlowNode *node : m_editor.visibleNodes()) {
            if (node->id == gesture.hit.id)
                gesture.grabbedPoint = CanvasGeometry::portAnchor(
                    interaction.effectiveCenter(node->id, {node->posX, node->posY}), interaction.effectiveSize(*node));
        }
        break;
    case Kind::filePort:
        for (const FlowFile *file : m_editor.liveFiles()) {
            if (file->id == gesture.hit.id)
                gesture.grabbedPoint = CanvasGeometry::portAnchor(
                    interaction.effectiveFileCenter(file->id, {file->posX, file->posY}),
                    interaction.effectiveFileSize(*file));
        }
        break;
    case Kind::edgeHandle:
        for (const DependencyEdge *edge : flow->edges()) {
            if (edge->id != gesture.hit.id)
                continue;
            const FlowNode &from = *edge->fromItem();
            const FlowNode &to = *edge->toItem();
            const EdgeLine line = EdgeLine::between(interaction.effectiveCenter(from.id, {from.posX, from.posY}),
                                                    interaction.effectiveSize(from),
                                                    interaction.effectiveCenter(to.id, {to.posX, to.posY}),
                                                    interaction.effectiveSize(to));
            gesture.grabbedPoint = gesture.hit.end == EdgeEnd::source ? line.start : line.end;
        }
        break;
    case Kind::card:
        if (clickCount >= 2) {
            m_editor.cardDoubleClicked(gesture.hit.id);
            gesture.consumed = true;
        }
        break;
    default:
        break;
    }
    m_gesture = gesture;
}

QPointF CanvasPointer::draggedPoint(QPointF point) const
{
    return m_gesture->grabbedPoint + (point - m_gesture->start) / m_editor.interaction().divisorScale();
}

void CanvasPointer::move(QPointF point, Qt::KeyboardModifiers modifiers)
{
    if (!m_gesture || m_gesture->consumed)
        return;
    if (!m_gesture->started) {
        const QPointF moved = point - m_gesture->start;
        // A drag without a minimum starts with the first move; the others
        // once they went far enough.
        if (moved.isNull() || std::hypot(moved.x(), moved.y()) < minimumDistance())
            return;
        m_gesture->started = true;
    }
    changed(point, modifiers);
}

void CanvasPointer::changed(QPointF point, Qt::KeyboardModifiers modifiers)
{
    const CanvasHit &hit = m_gesture->hit;
    const QPointF translation = point - m_gesture->start;
    switch (hit.kind) {
    case Kind::card:
        m_editor.cardDragChanged(hit.id, translation);
        break;
    case Kind::port:
        m_editor.connectionChanged(hit.id, draggedPoint(point));
        break;
    case Kind::resizeGrip:
        m_editor.cardResizeChanged(hit.id, translation);
        break;
    case Kind::file:
        m_editor.fileDragChanged(hit.id, translation);
        break;
    case Kind::filePort:
        m_editor.fileLinkChanged(hit.id, draggedPoint(point));
        break;
    case Kind::fileResizeGrip:
        m_editor.fileResizeChanged(hit.id, translation);
        break;
    case Kind::edgeHandle:
        m_editor.edgeEndChanged(hit.end, draggedPoint(point));
        break;
    case Kind::background:
        m_editor.backgroundDragChanged(m_gesture->start, point, modifiers);
        break;
    case Kind::edge:
    case Kind::fileLink:
        // Only taps mean something on a line.
        break;
    }
}

void CanvasPointer::release(QPointF point, Qt::KeyboardModifiers modifiers)
{
    if (!m_gesture)
        return;
    move(point, modifiers);
    const Gesture gesture = *m_gesture;
    m_gesture.reset();
    if (gesture.consumed)
        return;
    const CanvasHit &hit = gesture.hit;
    const QPointF translation = point - gesture.start;
    const QPointF dragged = gesture.grabbedPoint + translation / m_editor.interaction().divisorScale();
    switch (hit.kind) {
    case Kind::card:
        // Within the click threshold this is a click.
        m_editor.cardDragEnded(hit.id, translation, modifiers);
        break;
    case Kind::port:
        if (gesture.started)
            m_editor.connectionEnded(hit.id, dragged);
        else
            m_editor.toggleFold(hit.id);
        break;
    case Kind::resizeGrip:
        if (gesture.started)
            m_editor.cardResizeEnded(hit.id, translation);
        break;
    case Kind::file:
        m_editor.fileDragEnded(hit.id, translation);
        break;
    case Kind::filePort:
        if (gesture.started)
            m_editor.fileLinkEnded(hit.id, dragged);
        break;
    case Kind::fileResizeGrip:
        if (gesture.started)
            m_editor.fileResizeEnded(hit.id, translation);
        break;
    case Kind::edgeHandle:
        if (gesture.started)
            m_editor.edgeEndEnded(hit.end, dragged);
        break;
    case Kind::background:
        if (gesture.started)
            m_editor.backgroundDragEnded(gesture.start, point);
        else
            m_editor.backgroundTapped();
        break;
    case Kind::edge:
        if (!gesture.started)
            m_editor.edgeClicked(hit.id);
        break;
    case Kind::fileLink:
        if (!gesture.started)
            m_editor.fileLinkClicked(hit.id);
        break;
    }
}

} // namespace fenrow
