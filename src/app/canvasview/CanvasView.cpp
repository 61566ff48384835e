#include "CanvasView.h"

#include "CanvasAppearance.h"
#include "FileOpener.h"
#include "canvas/CanvasEditor.h"
#include "canvas/CanvasHitTest.h"
#include "canvas/CanvasPointer.h"
#include "canvas/DialogPresence.h"
#include "sheets/DismissableDialogOverlay.h"
#include "sheets/SheetParts.h"
#include "domain/DependencyEdge.h"
#include "domain/FenrowHistory.h"
#include "domain/FenrowStore.h"
#include "domain/FileLink.h"
#include "domain/FlowFile.h"
#include "domain/FlowFileImport.h"
#include "domain/FlowNode.h"
#include "domain/TaskFlow.h"
#include "shell/AppPreferences.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QTimer>
#include <QToolTip>
#include <QVariantAnimation>

namespace fenrow {

namespace {

using Kind = CanvasHit::Kind;

// Escape gives the title back untouched; everything else is an ordinary
// line edit.
class TitleEditor : public QLineEdit {
public:
    using QLineEdit::QLineEdit;
    std::function<void()> onCancel;

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() == Qt::Key_Escape && onCancel) {
            onCancel();
            return;
        }
        QLineEdit::keyPressEvent(event);
        // A line edit lets Return travel on to its parent, where the canvas
        // would read it as "rename" and open the field again.
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            event->accept();
    }
};

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

QString colorKey(NodeColor color)
{
    return QStringLiteral("canvas.node.color.") + rawString(color);
}

QString statusKey(NodeStatus status)
{
    return QStringLiteral("canvas.node.status.") + rawString(status);
}

} // namespace

CanvasView::CanvasView(FenrowStore &store, FenrowHistory &history, AppPreferences &preferences,
                       CanvasAppearance &appearance, QWidget *parent)
    : QWidget(parent), m_store(store), m_history(history), m_preferences(preferences), m_appearance(appearance),
      m_contents(store), m_scene(m_contents)
{
    setObjectName(QStringLiteral("canvas.view"));
    setFocusPolicy(Qt::ClickFocus);
    setMouseTracking(true);
    setAcceptDrops(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_AcceptTouchEvents, false);
    grabGesture(Qt::PinchGesture);

    m_monitor.onPan = [this](double dx, double dy) {
        if (m_editor)
            m_editor->pan(dx, dy);
    };
    m_monitor.onZoom = [this](double factor, QPointF point) {
        if (m_editor)
            m_editor->zoom(factor, point);
    };
    m_monitor.onSpaceHeldChange = [this](bool held) {
        if (m_editor)
            m_editor->setSpaceHeld(held);
    };
    m_monitor.onDeleteSelection = [this] { return m_editor && m_editor->deleteSelection(); };
    m_monitor.onKeyCommand = [this](CanvasKeyCommand command) {
        return m_editor && m_editor->handleKeyCommand(command);
    };
    m_monitor.isEditing = [this] { return m_editor && m_editor->isEditing(); };

    m_animation = new QVariantAnimation(this);
    m_animation->setStartValue(0.0);
    m_animation->setEndValue(1.0);
    m_animation->setEasingCurve(QEasingCurve::InOutQuad);
    connect(m_animation, &QVariantAnimation::valueChanged, this, [this] {
        placeTitleEditor();
        update();
    });

    m_zoomSettle = new QTimer(this);
    m_zoomSettle->setSingleShot(true);
    m_zoomSettle->setInterval(zoomSettleTime);
    connect(m_zoomSettle, &QTimer::timeout, this, qOverload<>(&QWidget::update));
    connect(m_animation, &QVariantAnimation::finished, this, qOverload<>(&QWidget::update));

    auto *title = new TitleEditor(this);
    title->setObjectName(QStringLiteral("canvas.node.titleEditor"));
    title->setFrame(false);
    title->hide();
    title->onCancel = [this] { finishTitleEditing(false); };
    connect(title, &QLineEdit::returnPressed, this, [this] { finishTitleEditing(true); });
    connect(title, &QLineEdit::editingFinished, this, [this] {
        // Leaving the field keeps what was typed.
        if (m_titleEditor->isVisible() && !m_titleEditor->hasFocus())
            finishTitleEditing(true);
    });
    m_titleEditor = title;

    connect(&m_store, &FenrowStore::changed, this, &CanvasView::storeChanged);
    connect(&m_appearance, &CanvasAppearance::changed, this, [this] {
        placeTitleEditor();
        update();
    });
    connect(&m_preferences, &AppPreferences::changed, this, [this](const QString &key) {
        if (key == QLatin1StringView(PreferenceKey::filterMode))
            m_scene.invalidateAll();
        if (key == QLatin1StringView(PreferenceKey::gridEnabled) || key == QLatin1StringView(PreferenceKey::filterMode))
            update();
    });
    // Keys reach the canvas before any control of its window sees them.
    qApp->installEventFilter(this);
}

CanvasView::~CanvasView()
{
    qApp->removeEventFilter(this);
}

void CanvasView::setEditor(CanvasEditor *editor)
{
    for (const QMetaObject::Connection &connection : std::as_const(m_editorConnections))
        disconnect(connection);
    m_editorConnections.clear();
    m_pointer.reset();
    m_hoveredCard.reset();
    m_hoveredPort.reset();
    m_animation->stop();
    m_editor = editor;
    m_titleEditor->hide();
    m_titleEditorNode.reset();
    m_contents.invalidate();
    m_scene.invalidateAll();
    if (editor) {
        m_pointer = std::make_unique<CanvasPointer>(*editor);
        CanvasInteraction &interaction = editor->interaction();
        interaction.setRequestFocus([this] {
            // The title field keeps the keyboard while it is open.
            if (!m_titleEditor->isVisible())
                setFocus(Qt::OtherFocusReason);
        });
        m_editorConnections << connect(&interaction, &CanvasInteraction::changed, this,
                                       &CanvasView::interactionChanged);
        m_editorConnections << connect(editor, &CanvasEditor::viewStateChanged, this, [this] {
            updateCursor();
            update();
        });
        m_editorConnections << connect(editor, &CanvasEditor::animationRequested, this, &CanvasView::startAnimation);
    }
    updateCursor();
    placeTitleEditor();
    update();
    emit contentChanged();
}

// --- what is drawn where

QPointF CanvasView::displayOffset() const
{
    if (!m_editor)
        return {};
    const QPointF target = m_editor->effectiveOffset();
    if (m_animation->state() != QAbstractAnimation::Running)
        return target;
    const double t = m_animation->currentValue().toDouble();
    return m_animationFromOffset + (target - m_animationFromOffset) * t;
}

double CanvasView::displayScale() const
{
    if (!m_editor)
        return 1;
    const double target = m_editor->interaction().scale();
    if (m_animation->state() != QAbstractAnimation::Running)
        return target;
    const double t = m_animation->currentValue().toDouble();
    return m_animationFromScale + (target - m_animationFromScale) * t;
}

bool CanvasView::isZooming() const
{
    return m_zoomSettle->isActive() || m_animation->state() == QAbstractAnimation::Running;
}

QPointF CanvasView::toScreen(QPointF canvasPoint) const
{
    return canvasPoint * displayScale() + displayOffset();
}

void CanvasView::startAnimation(std::chrono::milliseconds duration)
{
    // The viewport changes right after this; ease from what is drawn now.
    m_animationFromOffset = displayOffset();
    m_animationFromScale = displayScale();
    m_animation->stop();
    m_animation->setDuration(int(duration.count()));
    m_animation->start();
}

void CanvasView::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    if (!m_editor || !m_editor->flow()) {
        painter.fillRect(rect(), m_appearance.colors().ramp.brandSubtle);
        return;
    }
    CanvasScenePainter::ViewState view;
    view.offset = displayOffset();
    view.scale = displayScale();
    view.grid = m_preferences.gridEnabled();
    view.hoveredCard = m_hoveredCard;
    view.hoveredPort = m_hoveredPort;
    view.editing = m_titleEditor->isVisible() ? m_titleEditorNode : std::nullopt;
    view.zooming = isZooming();
    m_scene.paint(painter, *m_editor, m_appearance.colors(), view, event->rect());
}

void CanvasView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (m_editor)
        m_editor->setViewportSize(size());
    placeTitleEditor();
}

// --- following the editor and the store

void CanvasView::interactionChanged(CanvasInteraction::Field field)
{
    using Field = CanvasInteraction::Field;
    switch (field) {
    case Field::nodeDrag:
    case Field::nodeResize:
    case Field::fileDrag:
    case Field::fileResize:
    case Field::pendingConnection:
    case Field::pendingFileLink:
    case Field::edgeReconnect:
    case Field::marquee:
        // A gesture repaints only what it moves: where it was and where it is.
        if (field == Field::nodeDrag || field == Field::nodeResize)
            placeTitleEditor();
        if (m_animation->state() != QAbstractAnimation::Running) {
            const QRect now = gestureRect();
            update(m_gestureRect.united(now));
            m_gestureRect = now;
            return;
        }
        break;
    case Field::scale:
        // Cards are drawn anew at the new scale once the zoom rests.
        m_zoomSettle->start();
        placeTitleEditor();
        break;
    case Field::editingItemID:
    case Field::offset:
        placeTitleEditor();
        break;
    case Field::colorFilter:
    case Field::sizeResolver:
        m_scene.invalidateAll();
        emit contentChanged();
        break;
    default:
        break;
    }
    m_gestureRect = gestureRect();
    update();
}

QRect CanvasView::cardRect(const QUuid &id) const
{
    if (!m_editor || !m_editor->flow())
        return {};
    const CanvasInteraction &interaction = m_editor->interaction();
    QRectF frame;
    if (const FlowNode *node = m_store.node(id); node && node->flow() == m_editor->flow())
        frame = interaction.frame(*node);
    else
        for (const FlowFile *file : m_editor->flow()->files())
            if (file->id == id)
                frame = interaction.fileFrame(*file);
    if (frame.isNull())
        return {};
    const double scale = displayScale();
    // Rings, shadows, the port with its fold count and the grip reach past
    // the frame by a fixed amount on screen.
    return QRectF(toScreen(frame.topLeft()), frame.size() * scale).toAlignedRect().adjusted(-14, -14, 52, 14);
}

QRect CanvasView::gestureRect() const
{
    if (!m_editor || !m_editor->flow())
        return {};
    const CanvasInteraction &interaction = m_editor->interaction();
    const TaskFlow &flow = *m_editor->flow();
    QSet<QUuid> moving;
    if (const auto &drag = interaction.nodeDrag())
        moving = drag->itemIDs;
    if (const auto &resize = interaction.nodeResize())
        moving.insert(resize->itemID);
    if (const auto &drag = interaction.fileDrag())
        moving.insert(drag->fileID);
    if (const auto &resize = interaction.fileResize())
        moving.insert(resize->fileID);
    QRect dirty;
    for (const QUuid &id : std::as_const(moving))
        dirty |= cardRect(id);
    const auto line = [&](QPointF a, QPointF b) {
        return QRectF(toScreen(a), toScreen(b)).normalized().toAlignedRect().adjusted(-12, -12, 12, 12);
    };
    // The lines that follow the moving cards.
    if (!moving.isEmpty()) {
        for (const DependencyEdge *edge : flow.edges()) {
            if (!edge->fromItem() || !edge->toItem())
                continue;
            if (moving.contains(edge->fromItem()->id) || moving.contains(edge->toItem()->id))
                dirty |= line(interaction.frame(*edge->fromItem()).center(), interaction.frame(*edge->toItem()).center());
        }
        for (const FileLink *link : flow.fileLinks()) {
            if (!link->file() || !link->node())
                continue;
            if (moving.contains(link->file()->id) || moving.contains(link->node()->id))
                dirty |= line(interaction.fileFrame(*link->file()).center(), interaction.frame(*link->node()).center());
        }
    }
    // A line being drawn, and the card it would land on.
    const auto pending = [&](const QUuid &from, QPointF current) {
        dirty |= cardRect(from);
        dirty |= line(interaction.frame(*m_store.node(from)).center(), current);
        for (const FlowNode *node : m_editor->visibleNodes())
            if (interaction.frame(*node).contains(current))
                dirty |= cardRect(node->id);
    };
    if (const auto &connection = interaction.pendingConnection(); connection && m_store.node(connection->fromItemID))
        pending(connection->fromItemID, connection->current);
    if (const auto &reconnect = interaction.edgeReconnect(); reconnect && m_store.node(reconnect->anchorItemID)) {
        pending(reconnect->anchorItemID, reconnect->current);
        for (const DependencyEdge *edge : flow.edges())
            if (edge->id == reconnect->edgeID && edge->fromItem() && edge->toItem())
                dirty |= line(interaction.frame(*edge->fromItem()).center(), interaction.frame(*edge->toItem()).center());
    }
    if (const auto &link = interaction.pendingFileLink()) {
        dirty |= cardRect(link->fileID);
        for (const FlowFile *file : flow.files())
            if (file->id == link->fileID)
                dirty |= line(interaction.fileFrame(*file).center(), link->current);
    }
    if (const auto marquee = interaction.marquee())
        dirty |= line(marquee->topLeft(), marquee->bottomRight());
    return dirty;
}

void CanvasView::storeChanged()
{
    m_scene.invalidate();
    placeTitleEditor();
    update();
    emit contentChanged();
}

void CanvasView::placeTitleEditor()
{
    const std::optional<QUuid> editing = m_editor ? m_editor->interaction().editingItemID() : std::nullopt;
    const TaskFlow *flow = m_editor ? m_editor->flow() : nullptr;
    const FlowNode *node = editing ? m_store.node(*editing) : nullptr;
    if (!flow || !node || node->flow() != flow) {
        if (m_titleEditor->isVisible()) {
            m_titleEditor->hide();
            m_titleEditorNode.reset();
            if (m_titleEditor->hasFocus())
                setFocus(Qt::OtherFocusReason);
        }
        return;
    }
    const CanvasInteraction &interaction = m_editor->interaction();
    const NodeSize size = interaction.effectiveSize(*node);
    const QRectF frame = interaction.frame(*node);
    const QRectF title = m_scene.titleRect(*flow, *node, size);
    const double scale = displayScale();
    const QFontMetricsF metrics(m_scene.titleFont());
    const QPointF topLeft = toScreen(frame.topLeft() + title.topLeft() - QPointF(4, 3));
    const QSizeF area(title.width() + 8, metrics.lineSpacing() + 6);
    m_titleEditor->setGeometry(QRectF(topLeft, area * scale).toAlignedRect());

    QFont font = m_scene.titleFont();
    font.setPixelSize(std::max(8, qRound(13 * scale)));
    m_titleEditor->setFont(font);
    const CanvasColors &colors = m_appearance.colors();
    m_titleEditor->setStyleSheet(QStringLiteral("QLineEdit { background: %1; color: %2; border: 1px solid %3;"
                                                " border-radius: %4px; padding: 0 %5px;"
                                                " selection-background-color: %3; selection-color: %6; }")
                                     .arg(colors.ramp.nodeSurface.name(), colors.text.name(), colors.ramp.brand.name())
                                     .arg(qRound(4 * scale))
                                     .arg(qRound(3 * scale))
                                     .arg(colors.ramp.onAccent.name()));
    if (m_titleEditorNode != node->id || !m_titleEditor->isVisible()) {
        m_titleEditorNode = node->id;
        m_titleEditor->setText(node->title);
        m_titleEditor->selectAll();
        m_titleEditor->show();
        m_titleEditor->setFocus(Qt::OtherFocusReason);
    }
}

void CanvasView::finishTitleEditing(bool keep)
{
    if (m_finishingTitle || !m_editor)
        return;
    m_finishingTitle = true;
    const QString text = m_titleEditor->text();
    m_titleEditor->hide();
    m_titleEditorNode.reset();
    m_editor->finishEditing(keep ? std::optional<QString>(text) : std::nullopt);
    setFocus(Qt::OtherFocusReason);
    m_finishingTitle = false;
    update();
}

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

// --- menus

void CanvasView::recordOnFlow(const QString &name, const std::function<void()> &change)
{
    const TaskFlow *flow = m_editor ? m_editor->flow() : nullptr;
    if (flow)
        m_history.recordAction(name, *flow, change);
}

QMenu *CanvasView::contextMenuAt(QPointF point)
{
    if (!m_editor || !m_editor->flow())
        return nullptr;
    const CanvasHit hit = CanvasHitTest::at(*m_editor, point);
    switch (hit.kind) {
    case Kind::card:
    case Kind::port:
    case Kind::resizeGrip:
        return cardMenu(hit.id);
    case Kind::file:
    case Kind::filePort:
    case Kind::fileResizeGrip:
        return fileMenu(hit.id);
    case Kind::edge:
    case Kind::edgeHandle: {
        m_editor->edgeClicked(hit.id);
        auto *menu = new QMenu(this);
        menu->setObjectName(QStringLiteral("canvas.edge.menu"));
        QAction *remove = menu->addAction(CanvasGlyphs::icon(CanvasGlyphs::Glyph::trash, m_appearance.colors().text),
                                          qtTrId("canvas.edge.delete"), this, [this] { m_editor->deleteSelection(); });
        remove->setObjectName(QStringLiteral("canvas.edge.delete"));
        return menu;
    }
    case Kind::fileLink: {
        m_editor->fileLinkClicked(hit.id);
        auto *menu = new QMenu(this);
        menu->setObjectName(QStringLiteral("canvas.fileLink.menu"));
        QAction *remove = menu->addAction(qtTrId("canvas.fileLink.delete"), this, [this] { m_editor->deleteSelection(); });
        remove->setObjectName(QStringLiteral("canvas.fileLink.delete"));
        return menu;
    }
    case Kind::background:
        break;
    }
    return backgroundMenu(point);
}

QMenu *CanvasView::cardMenu(const QUuid &nodeID)
{
    const FlowNode *node = m_store.node(nodeID);
    if (!node)
        return nullptr;
    // The menu speaks of this card: it becomes the selection if it was not in it.
    if (!m_editor->interaction().selectedItemIDs().contains(nodeID))
        m_editor->cardClicked(nodeID, {});
    const CanvasColors &colors = m_appearance.colors();
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("canvas.node.menu"));
    const auto add = [&](QMenu *into, const QString &key, auto &&run) {
        QAction *action = into->addAction(qtTrId(key.toUtf8().constData()));
        action->setObjectName(key);
        connect(action, &QAction::triggered, this, std::forward<decltype(run)>(run));
        return action;
    };
    add(menu, QStringLiteral("canvas.node.addChild"), [this, nodeID] { m_editor->addSubtask(nodeID); })
        ->setIcon(CanvasGlyphs::icon(CanvasGlyphs::Glyph::add, colors.text));
    add(menu, QStringLiteral("canvas.node.generateSubtasks"), [this, nodeID] { emit generateSubtasksRequested(nodeID); })
        ->setIcon(SheetGlyphs::icon(SheetGlyphs::Glyph::sparkles, colors.text));
    add(menu, QStringLiteral("canvas.node.rename"), [this, nodeID] { m_editor->cardDoubleClicked(nodeID); });
    if (m_contents.of(*m_editor->flow(), *node).canCollapse)
        add(menu, node->isCollapsed ? QStringLiteral("canvas.port.action.expand") : QStringLiteral("canvas.port.action.collapse"),
            [this, nodeID] { m_editor->toggleFold(nodeID); });

    QMenu *colorMenu = menu->addMenu(qtTrId("canvas.node.setColor"));
    colorMenu->setObjectName(QStringLiteral("canvas.node.setColor"));
    for (int i = 0; i <= int(NodeColor::grey); ++i) {
        const auto color = NodeColor(i);
        QAction *action = add(colorMenu, colorKey(color), [this, nodeID, color] {
            const FlowNode *target = m_store.node(nodeID);
            if (target && target->color() != color)
                recordOnFlow(QStringLiteral("Change color"), [&] { m_store.setColor(color, *target); });
        });
        action->setCheckable(true);
        action->setChecked(node->color() == color);
        QPixmap swatch(14, 14);
        swatch.fill(Qt::transparent);
        QPainter painter(&swatch);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(colors.tag(NodeColor::none), 1));
        painter.setBrush(color == NodeColor::none ? QColor(Qt::transparent) : colors.tag(color));
        painter.drawEllipse(QRectF(1.5, 1.5, 11, 11));
        painter.end();
        action->setIcon(QIcon(swatch));
    }

    QMenu *statusMenu = menu->addMenu(qtTrId("canvas.node.status.label"));
    statusMenu->setObjectName(QStringLiteral("canvas.node.status.label"));
    for (const NodeStatus status : {NodeStatus::pending, NodeStatus::inProgress, NodeStatus::paused, NodeStatus::done}) {
        QAction *action = add(statusMenu, statusKey(status), [this, nodeID, status] {
            const FlowNode *target = m_store.node(nodeID);
            if (target && target->status() != status)
                recordOnFlow(QStringLiteral("Change status"), [&] { m_store.setStatus(status, *target); });
        });
        action->setCheckable(true);
        action->setChecked(node->status() == status);
    }

    if (node->hasManualSize())
        add(menu, QStringLiteral("canvas.node.resize.reset"), [this, nodeID] { m_editor->resetCardSize(nodeID); });
    menu->addSeparator();
    add(menu, QStringLiteral("canvas.node.delete"), [this, nodeID] {
        const FlowNode *target = m_store.node(nodeID);
        if (!target)
            return;
        bool isSubtask = false;
        for (const DependencyEdge *edge : target->flow()->edges())
            isSubtask = isSubtask || (edge->isSubtask() && edge->toItem() == target && edge->fromItem());
        recordOnFlow(isSubtask ? QStringLiteral("Delete subtask") : QStringLiteral("Delete tasks"), [&] {
            m_store.deleteNode(*target);
            m_editor->interaction().setSelectedItemIDs({});
        });
    })->setIcon(CanvasGlyphs::icon(CanvasGlyphs::Glyph::trash, colors.warning));
    return menu;
}

QMenu *CanvasView::fileMenu(const QUuid &fileID)
{
    const TaskFlow *flow = m_editor->flow();
    const FlowFile *file = nullptr;
    for (const FlowFile *candidate : flow->files())
        file = candidate->id == fileID ? candidate : file;
    if (!file)
        return nullptr;
    m_editor->fileClicked(fileID);
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("canvas.file.menu"));
    const auto add = [&](const char *key, auto &&run) {
        QAction *action = menu->addAction(qtTrId(key));
        action->setObjectName(QString::fromLatin1(key));
        connect(action, &QAction::triggered, this, std::forward<decltype(run)>(run));
        return action;
    };
    const auto find = [this, fileID]() -> const FlowFile * {
        const TaskFlow *current = m_editor ? m_editor->flow() : nullptr;
        if (current)
            for (const FlowFile *candidate : current->files())
                if (candidate->id == fileID)
                    return candidate;
        return nullptr;
    };
    if (file->data.isPresent()) {
        add("canvas.file.open", [find] {
            if (const FlowFile *target = find())
                FileOpener::open(*target);
        });
        add("canvas.file.exportCopy", [this, find] {
            const FlowFile *target = find();
            if (!target)
                return;
            const QString path = QFileDialog::getSaveFileName(this, qtTrId("canvas.file.exportCopy"), target->filename);
            if (!path.isEmpty())
                FileOpener::exportCopy(*target, path);
        });
    } else {
        menu->addAction(qtTrId("canvas.file.missing"))->setEnabled(false);
    }
    QAction *unlink = add("canvas.file.unlinkAll", [this, find] {
        if (const FlowFile *target = find())
            recordOnFlow(QStringLiteral("Unlink file"), [&] { m_store.unlinkAll(*target); });
    });
    unlink->setEnabled(!file->links().isEmpty());
    menu->addSeparator();
    add("canvas.file.delete", [this] { m_editor->deleteSelection(); })
        ->setIcon(CanvasGlyphs::icon(CanvasGlyphs::Glyph::trash, m_appearance.colors().warning));
    return menu;
}

QMenu *CanvasView::backgroundMenu(QPointF point)
{
    const CanvasInteraction &interaction = m_editor->interaction();
    const QPointF canvasPoint = interaction.toCanvas(point);
    const CanvasColors &colors = m_appearance.colors();
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("canvas.background.menu"));
    QAction *add = menu->addAction(CanvasGlyphs::icon(CanvasGlyphs::Glyph::add, colors.text), qtTrId("toolbar.addTask"),
                                   this, [this, point] { addTaskAt(point); });
    add->setObjectName(QStringLiteral("toolbar.addTask"));
    QAction *attach = menu->addAction(CanvasGlyphs::icon(CanvasGlyphs::Glyph::attach, colors.text),
                                      qtTrId("canvas.file.add"), this,
                                      [this, canvasPoint] { attachFilesAt(canvasPoint); });
    attach->setObjectName(QStringLiteral("canvas.file.add"));

    QStringList deletions;
    if (interaction.selectedFileLinkID())
        deletions << QStringLiteral("canvas.fileLink.delete");
    else if (interaction.selectedFileID())
        deletions << QStringLiteral("canvas.file.delete");
    else if (!interaction.selectedItemIDs().isEmpty())
        deletions << QStringLiteral("canvas.node.delete");
    else if (interaction.selectedEdgeID())
        deletions << QStringLiteral("canvas.edge.delete");
    if (!deletions.isEmpty()) {
        menu->addSeparator();
        for (const QString &key : std::as_const(deletions)) {
            QAction *remove = menu->addAction(CanvasGlyphs::icon(CanvasGlyphs::Glyph::trash, colors.warning),
                                              qtTrId(key.toUtf8().constData()), this,
                                              [this] { m_editor->deleteSelection(); });
            remove->setObjectName(key);
        }
    }
    return menu;
}

void CanvasView::contextMenuEvent(QContextMenuEvent *event)
{
    if (m_pointer && m_pointer->isPressed())
        return;
    QMenu *menu = contextMenuAt(event->pos());
    if (!menu)
        return;
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
}

// --- adding

void CanvasView::addTask()
{
    if (m_editor)
        m_editor->addTaskAtCenter();
}

void CanvasView::addTaskAt(QPointF screenPoint)
{
    const TaskFlow *flow = m_editor ? m_editor->flow() : nullptr;
    if (!flow)
        return;
    CanvasInteraction &interaction = m_editor->interaction();
    const QPointF point = interaction.toCanvas(screenPoint);
    m_history.recordAction(QStringLiteral("Add task"), *flow, [&] {
        const FlowNode *added =
            m_store.addNodeAt(*flow, qtTrId("canvas.node.new"), point, interaction.sizeResolver());
        interaction.setSelectedEdgeID(std::nullopt);
        interaction.setSelectedFileID(std::nullopt);
        interaction.setSelectedFileLinkID(std::nullopt);
        interaction.setSelectedItemIDs({added->id});
        interaction.setEditingItemID(added->id);
    });
}

void CanvasView::attachFilesAt(QPointF canvasPoint)
{
    const QStringList paths = QFileDialog::getOpenFileNames(this, qtTrId("canvas.file.add.prompt"));
    if (!paths.isEmpty())
        attachPaths(paths, canvasPoint, toScreen(canvasPoint));
}

void CanvasView::attachPaths(const QStringList &paths, QPointF canvasPoint, QPointF screenPoint)
{
    const TaskFlow *flow = m_editor ? m_editor->flow() : nullptr;
    if (!flow)
        return;
    // Files stand side by side, one card width and a gap apart.
    constexpr double step = 242;
    int index = 0;
    for (const QString &path : paths) {
        auto read = FlowFileImport::read(path);
        if (const auto *payload = std::get_if<FlowFileImport::Payload>(&read)) {
            m_store.attachFile(*payload, canvasPoint.x() + index * step, canvasPoint.y(), *flow);
            ++index;
        } else {
            m_editor->fileDropFailed(std::get<FlowFileImport::Failure>(read), QFileInfo(path).fileName(), screenPoint);
        }
    }
}

void CanvasView::dragEnterEvent(QDragEnterEvent *event)
{
    if (m_editor && event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void CanvasView::dragMoveEvent(QDragMoveEvent *event)
{
    if (m_editor && event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void CanvasView::dropEvent(QDropEvent *event)
{
    if (!m_editor)
        return;
    QStringList paths;
    for (const QUrl &url : event->mimeData()->urls()) {
        if (url.isLocalFile())
            paths << url.toLocalFile();
    }
    if (paths.isEmpty())
        return;
    event->acceptProposedAction();
    attachPaths(paths, m_editor->interaction().toCanvas(event->position()), event->position());
}

} // namespace fenrow
