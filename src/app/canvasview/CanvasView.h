#pragma once

#include "CanvasCardContent.h"
#include "CanvasScenePainter.h"
#include "canvas/CanvasInputMonitor.h"
#include "canvas/CanvasInteraction.h"

#include "canvas/CanvasEditor.h"

#include <QPointer>
#include <QUuid>
#include <QWidget>

#include <memory>
#include <optional>

class QLineEdit;
class QMenu;
class QTimer;
class QVariantAnimation;

namespace fenrow {

class AppPreferences;
class CanvasAppearance;
class CanvasEditor;
class CanvasPointer;
class FenrowHistory;
class FenrowStore;

// The canvas of one flow on screen: it paints the flow from the store and
// the editor's state, and turns Qt's events into the editor's gestures and
// commands. It keeps nothing of the graph; what a user changes goes
// through the editor, or through the store inside a named undo action.
class CanvasView : public QWidget {
    Q_OBJECT

public:
    CanvasView(FenrowStore &store, FenrowHistory &history, AppPreferences &preferences, CanvasAppearance &appearance,
               QWidget *parent = nullptr);
    ~CanvasView() override;

    // The editor of the flow to show, or none; the view does not own it.
    void setEditor(CanvasEditor *editor);
    CanvasEditor *editor() const { return m_editor; }

    // Where a canvas point is on screen as drawn now.
    QPointF toScreen(QPointF canvasPoint) const;
    // What the card of a task of the shown flow says besides its title.
    const CardContent &cardContent(const FlowNode &node);
    QLineEdit *titleEditor() const { return m_titleEditor; }
    // A zoom or an eased move is still under way; cards may be stretched.
    bool isZooming() const;

    // The menus a right click opens, built for a screen point.
    QMenu *contextMenuAt(QPointF point);
    // The menu the menu key opens: that of the one card or file selected,
    // with where its middle is in the view; none while nothing single is.
    QMenu *selectionMenu(QPointF *at);

    // Adds a task at the middle of the view, or at a screen point.
    void addTask();
    void addTaskAt(QPointF screenPoint);
    // Asks for files and attaches them at a canvas point.
    void attachFilesAt(QPointF canvasPoint);
    // Attaches files from disk, side by side from a canvas point; refused
    // files are reported at `screenPoint`.
    void attachPaths(const QStringList &paths, QPointF canvasPoint, QPointF screenPoint);

signals:
    // The part of the scene that belongs to the flow changed: the progress
    // readout and the empty hint follow it.
    void contentChanged();
    // The card menu asked for the task's subtasks to be generated.
    void generateSubtasksRequested(const QUuid &nodeID);

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    // Nothing on the canvas shows the keyboard focus (the ring is drawn
    // over the window), so gaining or losing it repaints nothing.
    void focusInEvent(QFocusEvent *) override {}
    void focusOutEvent(QFocusEvent *) override {}
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    QMenu *cardMenu(const QUuid &nodeID);
    QMenu *fileMenu(const QUuid &fileID);
    QMenu *backgroundMenu(QPointF point);
    void recordOnFlow(const QString &name, const std::function<void()> &change);

    CanvasInputMonitor::Context keyContext() const;
    bool handleKey(QKeyEvent *event, bool down);
    void updateHover(QPointF point);
    void updateCursor();
    void interactionChanged(CanvasInteraction::Field field);
    // What a card covers on screen, with its ring, port and grip.
    QRect cardRect(const QUuid &id) const;
    // What the gestures in progress cover on screen.
    QRect gestureRect() const;
    void storeChanged();
    void startAnimation(std::chrono::milliseconds duration);
    void placeTitleEditor();
    void finishTitleEditing(bool keep);
    QPointF displayOffset() const;
    double displayScale() const;

    FenrowStore &m_store;
    FenrowHistory &m_history;
    AppPreferences &m_preferences;
    CanvasAppearance &m_appearance;
    QPointer<CanvasEditor> m_editor;
    std::unique_ptr<CanvasPointer> m_pointer;
    CanvasInputMonitor m_monitor;
    CanvasCardContents m_contents;
    CanvasScenePainter m_scene;
    QList<QMetaObject::Connection> m_editorConnections;

    std::optional<QUuid> m_hoveredCard;
    std::optional<QUuid> m_hoveredPort;
    bool m_hoveringGrip = false;
    // Where the gestures in progress were last drawn.
    QRect m_gestureRect;
    // The cards drawn as selected, so that a new selection repaints only
    // the cards it adds or leaves.
    QSet<QUuid> m_shownSelection;
    // A middle-button drag pans directly.
    std::optional<QPointF> m_middlePan;

    // An eased move of the viewport: from where it was drawn to where it is.
    QVariantAnimation *m_animation = nullptr;
    QTimer *m_zoomSettle = nullptr;
    static constexpr std::chrono::milliseconds zoomSettleTime{140};
    QPointF m_animationFromOffset;
    double m_animationFromScale = 1;

    QLineEdit *m_titleEditor = nullptr;
    std::optional<QUuid> m_titleEditorNode;
    // Set again only when it differs: each setting restyles the field.
    QString m_titleEditorStyle;
    bool m_formerDropPending = false;
    bool m_finishingTitle = false;
};

} // namespace fenrow
