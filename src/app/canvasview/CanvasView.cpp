#include "CanvasView.h"

#include "CanvasAccessibility.h"
#include "CanvasAppearance.h"
#include "canvas/CanvasEditor.h"
#include "canvas/CanvasPointer.h"
#include "domain/DependencyEdge.h"
#include "domain/FenrowStore.h"
#include "domain/FileLink.h"
#include "domain/FlowFile.h"
#include "domain/FlowNode.h"
#include "domain/TaskFlow.h"
#include "shell/AppPreferences.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QTimer>
#include <QVariantAnimation>

namespace fenrow {

namespace {

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

} // namespace

CanvasView::CanvasView(FenrowStore &store, FenrowHistory &history, AppPreferences &preferences,
                       CanvasAppearance &appearance, QWidget *parent)
    : QWidget(parent), m_store(store), m_history(history), m_preferences(preferences), m_appearance(appearance),
      m_contents(store), m_scene(m_contents)
{
    setObjectName(QStringLiteral("canvas.view"));
    installCanvasAccessibility();
    setFocusPolicy(Qt::StrongFocus);
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
            m_scene.filterChanged();
        if (key == QLatin1StringView(PreferenceKey::gridEnabled) || key == QLatin1StringView(PreferenceKey::filterMode))
            update();
    });
    // Keys reach the canvas before any control of its window sees them.
    qApp->installEventFilter(this);
}

CanvasView::~CanvasView()
{
    qApp->removeEventFilter(this);
    // The field loses the focus in QWidget's own destructor, after this
    // view's members are gone.
    m_titleEditor->disconnect(this);
}

void CanvasView::setEditor(CanvasEditor *editor)
{
    // A title being typed belongs to the flow it was typed in.
    if (m_titleEditor->isVisible())
        finishTitleEditing(true);
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
    m_scene.flowChanged();
    m_shownSelection = editor ? editor->interaction().selectedItemIDs() : QSet<QUuid>();
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

const CardContent &CanvasView::cardContent(const FlowNode &node)
{
    return m_contents.of(*node.flow(), node);
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
        m_scene.dropFormer();
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
    // Freeing the last flow's pictures and layouts made a new flow's first
    // frame some 3 ms longer; once the frame is shown, it delays nothing.
    if (m_scene.holdsFormer() && !std::exchange(m_formerDropPending, true))
        QTimer::singleShot(0, this, [this] {
            m_formerDropPending = false;
            m_scene.dropFormer();
        });
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
    case Field::editingItemID: {
        // Only the card the title field leaves and the one it covers now
        // look different.
        const std::optional<QUuid> before = m_titleEditorNode;
        placeTitleEditor();
        QRegion dirty;
        for (const std::optional<QUuid> &id : {before, m_titleEditorNode})
            if (id)
                dirty += cardRect(*id);
        update(dirty);
        return;
    }
    case Field::selectedItemIDs: {
        // Only the cards the selection takes in or leaves.
        const QSet<QUuid> now = m_editor ? m_editor->interaction().selectedItemIDs() : QSet<QUuid>();
        QRegion dirty;
        for (const QUuid &id : now)
            if (!m_shownSelection.contains(id))
                dirty += cardRect(id);
        for (const QUuid &id : std::as_const(m_shownSelection))
            if (!now.contains(id))
                dirty += cardRect(id);
        m_shownSelection = now;
        update(dirty);
        return;
    }
    case Field::offset:
        placeTitleEditor();
        break;
    case Field::colorFilter:
        // Cards look the same whether dimmed or hidden; only lines follow,
        // and the painter reads the filter itself.
        emit contentChanged();
        break;
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
    const CanvasCardContents::Touched touched = m_scene.invalidate(m_store.lastChange());
    placeTitleEditor();
    if (touched.everything) {
        update();
    } else {
        // A title, a status or a date: only those cards and the ones they
        // hold up are painted again; the rest of the window keeps its pixels.
        QRegion dirty;
        for (const FlowNode *node : touched.nodes)
            dirty += cardRect(node->id);
        if (!dirty.isEmpty())
            update(dirty);
    }
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
    const QString style = QStringLiteral("QLineEdit { background: %1; color: %2; border: 1px solid %3;"
                                         " border-radius: %4px; padding: 0 %5px;"
                                         " selection-background-color: %3; selection-color: %6; }")
                              .arg(colors.ramp.nodeSurface.name(), colors.text.name(), colors.ramp.brand.name())
                              .arg(qRound(4 * scale))
                              .arg(qRound(3 * scale))
                              .arg(colors.ramp.onAccent.name());
    if (style != m_titleEditorStyle) {
        m_titleEditorStyle = style;
        m_titleEditor->setStyleSheet(style);
    }
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
    const std::optional<QUuid> edited = std::exchange(m_titleEditorNode, std::nullopt);
    m_titleEditor->hide();
    m_editor->finishEditing(keep ? std::optional<QString>(text) : std::nullopt);
    setFocus(Qt::OtherFocusReason);
    m_finishingTitle = false;
    // The card shows its title again.
    if (edited)
        update(cardRect(*edited));
}

} // namespace fenrow
