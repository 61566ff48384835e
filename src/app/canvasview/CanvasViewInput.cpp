#include "CanvasView.h"

#include "canvas/CanvasEditor.h"
#include "canvas/CanvasHitTest.h"
#include "canvas/CanvasPointer.h"
#include "canvas/DialogPresence.h"
#include "domain/FenrowStore.h"
#include "domain/FlowNode.h"
#include "sheets/DismissableDialogOverlay.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QNativeGestureEvent>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QTimer>
#include <QToolTip>
#include <QVariantAnimation>

namespace fenrow {

namespace {

using Kind = CanvasHit::Kind;

CanvasInputMonitor::Responder responderOf(const QWidget *focus)
{
    using Responder = CanvasInputMonitor::Responder;
    if (!focus)
        return Responder::canvas;
    if (qobject_cast<const QLineEdit *>(focus) || qobject_cast<const QTextEdit *>(focus)
        || qobject_cast<const QPlainTextEdit *>(focus) || qobject_cast<const QAbstractSpinBox *>(focus))
        return Responder::text;
    if (qobject_cast<const QAbstractItemView *>(focus))
        return Responder::table;
    if (qobject_cast<const QAbstractButton *>(focus) || qobject_cast<const QComboBox *>(focus)
        || qobject_cast<const QAbstractSlider *>(focus))
        return Responder::control;
    return Responder::canvas;
}

} // namespace

// --- pointer

void CanvasView::updateHover(QPointF point)
{
    std::optional<QUuid> card;
    std::optional<QUuid> port;
    bool grip = false;
    if (m_editor && rect().contains(point.toPoint())) {
        const CanvasHit hit = CanvasHitTest::at(*m_editor, point);
        switch (hit.kind) {
        case Kind::card:
        case Kind::file:
            card = hit.id;
            break;
        case Kind::port:
        case Kind::filePort:
            card = hit.id;
            port = hit.id;
            break;
        case Kind::resizeGrip:
        case Kind::fileResizeGrip:
            card = hit.id;
            grip = true;
            break;
        default:
            break;
        }
    }
    if (card == m_hoveredCard && port == m_hoveredPort && grip == m_hoveringGrip)
        return;
    // Only the cards that gain or lose the hover change.
    for (const std::optional<QUuid> &id : {m_hoveredCard, card})
        if (id)
            update(cardRect(*id));
    m_hoveredCard = card;
    m_hoveredPort = port;
    m_hoveringGrip = grip;
    updateCursor();
}

void CanvasView::updateCursor()
{
    if (!m_editor) {
        unsetCursor();
        return;
    }
    switch (m_editor->cursor()) {
    case CanvasEditor::Cursor::closedHand:
        setCursor(Qt::ClosedHandCursor);
        return;
    case CanvasEditor::Cursor::openHand:
        setCursor(Qt::OpenHandCursor);
        return;
    case CanvasEditor::Cursor::arrow:
        break;
    }
    if (m_hoveringGrip)
        setCursor(Qt::SizeFDiagCursor);
    else if (m_hoveredPort)
        setCursor(Qt::CrossCursor);
    else
        unsetCursor();
}

void CanvasView::mousePressEvent(QMouseEvent *event)
{
    if (!m_editor || !m_pointer)
        return;
    if (event->button() == Qt::MiddleButton) {
        m_middlePan = event->position();
        setCursor(Qt::ClosedHandCursor);
        return;
    }
    if (event->button() != Qt::LeftButton)
        return;
    // The pointer acts on the viewport as it will be: finish an eased move.
    m_animation->stop();
    setFocus(Qt::MouseFocusReason);
    m_pointer->press(event->position(), event->modifiers());
}

void CanvasView::mouseMoveEvent(QMouseEvent *event)
{
    if (m_middlePan && m_editor) {
        const QPointF moved = event->position() - *m_middlePan;
        m_middlePan = event->position();
        m_editor->pan(moved.x(), moved.y());
        return;
    }
    if (m_pointer && m_pointer->isPressed() && (event->buttons() & Qt::LeftButton)) {
        m_pointer->move(event->position(), event->modifiers());
        return;
    }
    updateHover(event->position());
}

void CanvasView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::MiddleButton && m_middlePan) {
        m_middlePan.reset();
        updateCursor();
        return;
    }
    if (event->button() != Qt::LeftButton || !m_pointer)
        return;
    m_pointer->release(event->position(), event->modifiers());
    updateHover(event->position());
}

void CanvasView::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_pointer)
        return;
    m_pointer->press(event->position(), event->modifiers(), 2);
}

void CanvasView::leaveEvent(QEvent *event)
{
    QWidget::leaveEvent(event);
    updateHover(QPointF(-1, -1));
}

void CanvasView::wheelEvent(QWheelEvent *event)
{
    CanvasInputMonitor::Scroll scroll;
    scroll.precise = !event->pixelDelta().isNull();
    scroll.delta = scroll.precise ? QPointF(event->pixelDelta()) : QPointF(event->angleDelta()) / 120.0;
    // A plain wheel scrolls sideways with Shift held, as lists do.
    if ((event->modifiers() & Qt::ShiftModifier) && scroll.delta.x() == 0)
        scroll.delta = QPointF(scroll.delta.y(), 0);
    scroll.modifiers = event->modifiers();
    scroll.position = event->position();
    CanvasInputMonitor::Context context = keyContext();
    context.pointerInside = rect().contains(event->position().toPoint());
    if (m_editor && m_monitor.scroll(scroll, context))
        event->accept();
    else
        event->ignore();
}

bool CanvasView::event(QEvent *event)
{
    if (event->type() == QEvent::NativeGesture) {
        auto *gesture = static_cast<QNativeGestureEvent *>(event);
        if (gesture->gestureType() == Qt::ZoomNativeGesture && m_editor) {
            const QPointF point = mapFromGlobal(gesture->globalPosition());
            CanvasInputMonitor::Context context = keyContext();
            context.pointerInside = rect().contains(point.toPoint());
            if (m_monitor.magnify(gesture->value(), point, context)) {
                event->accept();
                return true;
            }
        }
    }
    if (event->type() == QEvent::ToolTip && m_editor && m_editor->flow()) {
        auto *help = static_cast<QHelpEvent *>(event);
        const CanvasHit hit = CanvasHitTest::at(*m_editor, help->pos());
        QString text;
        if (hit.kind == Kind::port) {
            const FlowNode *node = m_store.node(hit.id);
            const CardContent &content = m_contents.of(*m_editor->flow(), *node);
            text = content.canCollapse ? qtTrId("canvas.port.help.collapse") : qtTrId("canvas.port.label");
        } else if (hit.kind == Kind::card) {
            const FlowNode *node = m_store.node(hit.id);
            const CanvasInteraction &interaction = m_editor->interaction();
            const QPointF inCard = interaction.toCanvas(help->pos()) - interaction.frame(*node).topLeft();
            if (const auto pill = m_scene.pillAt(*m_editor->flow(), *node, interaction.effectiveSize(*node), inCard))
                text = pill->help;
        }
        if (text.isEmpty())
            QToolTip::hideText();
        else
            QToolTip::showText(help->globalPos(), text, this);
        return true;
    }
    return QWidget::event(event);
}

// --- keys

CanvasInputMonitor::Context CanvasView::keyContext() const
{
    CanvasInputMonitor::Context context;
    context.inCanvasWindow = true;
    context.hasSheet = QApplication::activeModalWidget() != nullptr;
    context.dialogDepth = DialogPresence::depth();
    context.focus = responderOf(QApplication::focusWidget());
    return context;
}

bool CanvasView::handleKey(QKeyEvent *event, bool down)
{
    CanvasInputMonitor::KeyPress press;
    press.key = event->key();
    press.modifiers = event->modifiers() & ~Qt::KeypadModifier;
    press.isAutoRepeat = event->isAutoRepeat();
    const CanvasInputMonitor::Context context = keyContext();
    return down ? m_monitor.keyDown(press, context) : m_monitor.keyUp(press, context);
}

bool CanvasView::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if ((type == QEvent::KeyPress || type == QEvent::KeyRelease || type == QEvent::ShortcutOverride) && m_editor
        && isVisible() && watched->isWidgetType()) {
        auto *widget = static_cast<QWidget *>(watched);
        // A sheet over the window counts as a window of its own.
        if (widget->window() != window() || DismissableDialogOverlay::holds(widget))
            return false;
        auto *key = static_cast<QKeyEvent *>(event);
        // A key the canvas takes must not fire a menu shortcut first.
        if (type == QEvent::ShortcutOverride) {
            const CanvasInputMonitor::Context context = keyContext();
            const bool commandsOn = !context.hasSheet && context.dialogDepth == 0
                && context.focus == CanvasInputMonitor::Responder::canvas && !m_editor->isEditing();
            if (commandsOn && CanvasKeyMap::command(key->key(), key->modifiers() & ~Qt::KeypadModifier))
                event->accept();
            return false;
        }
        if (handleKey(key, type == QEvent::KeyPress)) {
            event->accept();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace fenrow
