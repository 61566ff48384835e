#pragma once

#include "CanvasInteraction.h"
#include "CanvasKeyCommand.h"
#include "CanvasScene.h"
#include "domain/Scheduler.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QSet>
#include <QSizeF>
#include <QUuid>

#include <chrono>
#include <optional>
#include <vector>

namespace fenrow {

class ActiveFlowState;
class AppPreferences;
class CanvasRevealRequest;
class CanvasZoomRequest;
class DependencyEdge;
class FenrowHistory;
class FenrowStore;
class FileLink;
class FlowFile;
class FlowNode;
class TaskFlow;

// The graph editor of one flow without a toolkit: it gives gestures, keys
// and commands their meaning on a `CanvasInteraction`, writes the graph
// through the store inside named undo actions, and keeps what a view would
// otherwise hold for the length of a gesture (the live pan, the mode of a
// background drag, the cursor). A view only turns its events into these
// calls (see `CanvasPointer` and `CanvasInputMonitor`) and paints.
//
// Selection changes made by a call are handed to the history once, when
// the outermost call returns, so that one click is one "Select" step.
class CanvasEditor : public QObject {
    Q_OBJECT

public:
    struct Services {
        FenrowStore &store;
        FenrowHistory &history;
        AppPreferences &preferences;
        Scheduler &scheduler;
        // Optional: the pending first task of a new flow, and the mailboxes.
        ActiveFlowState *activeFlow = nullptr;
        CanvasRevealRequest *revealRequests = nullptr;
        CanvasZoomRequest *zoomRequests = nullptr;
    };

    enum class BackgroundDragMode { pan, marquee, additiveMarquee };
    enum class Cursor { arrow, openHand, closedHand };

    // A card move or resize is a click until it went further than this on
    // either axis (screen units).
    static constexpr double clickThreshold = 4;
    static constexpr double backgroundDragMinimum = 4;
    static constexpr std::chrono::milliseconds persistDelay{200};
    static constexpr std::chrono::milliseconds rejectionLifetime{2000};
    static constexpr std::chrono::milliseconds fileDropFailureLifetime{4000};
    static constexpr std::chrono::milliseconds revealDuration{250};
    // A card counts as in view when it keeps this far from the view's edges.
    static constexpr double visibleInset = 20;

    CanvasEditor(Services services, const QUuid &flowID, CanvasInteraction &interaction, QObject *parent = nullptr);
    ~CanvasEditor() override;

    // --- lifecycle
    // The view appeared at this size: takes over the preferences, lends the
    // history the selection, spaces cards for their sizes, frames the flow.
    void appear(QSizeF viewportSize);
    // Saves nothing more: cancels the pending viewport save and the banners'
    // timers and takes the selection back from the history.
    void disappear();
    void setViewportSize(QSizeF size);

    // --- reading
    const TaskFlow *flow() const;
    QUuid flowID() const { return m_flowID; }
    CanvasInteraction &interaction() const { return m_interaction; }
    // Nodes drawn and hit, in `order`: without folded branches, and when
    // the filter hides, only the filtered colours.
    const QList<const FlowNode *> &visibleNodes() const;
    bool isVisible(const QUuid &nodeID) const;
    // How many tasks a folded task hides below it: those no other way
    // keeps in view, each counted once.
    int foldedCount(const FlowNode &fold) const;
    bool isDimmed(const FlowNode &node) const;
    // A colour filter is on and dims the other cards rather than hiding them.
    bool dimsByFilter() const;
    bool hidesByFilter() const;
    // The flow's files that are not trashed.
    QList<const FlowFile *> liveFiles() const;
    // An edge is drawn when both ends are; a file link when its file is
    // live and its node drawn.
    bool isDrawn(const DependencyEdge &edge) const;
    bool isDrawn(const FileLink &link) const;
    // The drawn cards and lines as plain arrays, for hit tests.
    const CanvasScene &scene() const;
    // The scene's cards alone, made without its lines when those are not
    // made yet: about the cost of reading each card's frame from its task
    // once, and every later frame finds the cards in view from it.
    const std::vector<CanvasScene::Card> &sceneCards() const;
    bool hasSceneCards() const { return m_sceneCardsValid; }
    bool hasScene() const { return m_sceneValid; }
    // The frames of all cards as they are shown now.
    QRectF contentBounds() const;
    std::vector<QRectF> cardFrames() const;
    bool snapsToGrid() const;

    // Gesture-local state of the view.
    QPointF panTranslation() const { return m_panTranslation; }
    // What the view draws with: the live pan is added while no marquee is.
    QPointF effectiveOffset() const;
    bool didInitViewport() const { return m_didInitViewport; }
    std::optional<BackgroundDragMode> backgroundDragMode() const { return m_backgroundDragMode; }
    bool grabbing() const { return m_grabbing; }
    Cursor cursor() const { return m_cursor; }
    bool isEditing() const;

    // --- pointer gestures; translations are raw, in screen units
    void cardDragChanged(const QUuid &nodeID, QPointF translation);
    void cardDragEnded(const QUuid &nodeID, QPointF translation, Qt::KeyboardModifiers modifiers);
    void cardClicked(const QUuid &nodeID, Qt::KeyboardModifiers modifiers);
    void cardDoubleClicked(const QUuid &nodeID);
    void cardResizeChanged(const QUuid &nodeID, QPointF translation);
    void cardResizeEnded(const QUuid &nodeID, QPointF translation);
    void resetCardSize(const QUuid &nodeID);
    // Points are canvas points under the pointer.
    void connectionChanged(const QUuid &fromID, QPointF point);
    void connectionEnded(const QUuid &fromID, QPointF point);
    void edgeClicked(const QUuid &edgeID);
    void edgeEndChanged(EdgeEnd end, QPointF point);
    void edgeEndEnded(EdgeEnd end, QPointF point);
    // A tap on a port that has subtasks folds or unfolds the branch.
    void toggleFold(const QUuid &nodeID);

    void fileClicked(const QUuid &fileID);
    void fileDragChanged(const QUuid &fileID, QPointF translation);
    void fileDragEnded(const QUuid &fileID, QPointF translation);
    void fileResizeChanged(const QUuid &fileID, QPointF translation);
    void fileResizeEnded(const QUuid &fileID, QPointF translation);
    void fileLinkChanged(const QUuid &fileID, QPointF point);
    void fileLinkEnded(const QUuid &fileID, QPointF point);
    void fileLinkClicked(const QUuid &linkID);
    // A drop that could not attach a file, at a screen point.
    void fileDropFailed(const FlowFileImport::Failure &failure, const QString &filename, QPointF screenPoint);

    void backgroundTapped();
    // Screen points of the drag's start and of the pointer now.
    void backgroundDragChanged(QPointF start, QPointF location, Qt::KeyboardModifiers modifiers);
    void backgroundDragEnded(QPointF start, QPointF location);
    void commitMarquee(const QRectF &rect, bool additive);
    void setSpaceHeld(bool held);

    // --- wheel and pinch; each ends in a debounced viewport save
    void pan(double dx, double dy);
    void zoom(double factor, QPointF anchor);

    // --- commands
    bool handleKeyCommand(const CanvasKeyCommand &command);
    bool deleteSelection();
    // Ends title editing; a title, when given, is saved as "Rename".
    void finishEditing(const std::optional<QString> &title = std::nullopt);
    const FlowNode *addTaskAtCenter();
    // A new subtask of the card, its parent's subtree laid out again.
    const FlowNode *addSubtask(const QUuid &parentID);
    void zoomCommand(CanvasZoom::Kind kind);
    void selectAndKeepVisible(const QUuid &nodeID);
    void reveal(const QUuid &nodeID, bool animated);
    // Moves cards apart where the present sizing makes them overlap and the
    // other sizing would not; run when the view appears and when sizing by
    // estimate is switched. Not an undoable change: it follows a setting.
    void spaceCardsForSizes();

    // --- viewport persistence
    void schedulePersist();
    void persistViewport();

signals:
    // Gesture-local state changed (live pan, cursor, drag mode): repaint.
    void viewStateChanged();
    // The next viewport change should be eased over `duration`.
    void animationRequested(std::chrono::milliseconds duration);

private:
    class SelectionStep;
    friend class SelectionStep;

    const FlowNode *node(const QUuid &id) const;
    const FlowFile *file(const QUuid &id) const;
    const DependencyEdge *edge(const QUuid &id) const;
    const FileLink *fileLink(const QUuid &id) const;
    const FlowNode *anchorNode() const;
    const FlowNode *dropTarget(QPointF point, const std::optional<QUuid> &excluded) const;
    QPointF canvasTranslation(QPointF raw) const;
    static bool beyondThreshold(QPointF raw);
    QString newTaskTitle() const;
    void selectOnly(const QUuid &nodeID);
    void selectNew(const FlowNode &node);
    // Reveals the card unless it already stands well inside the view.
    void keepVisible(const FlowNode &node);

    void storeChanged();
    void preferenceChanged(const QString &key);
    void interactionChanged(CanvasInteraction::Field field);
    void invalidateVisible();
    // The scene and the content's bounds are made again when next asked for.
    void invalidateScene();
    // Only the colour filter or its mode changed.
    void invalidateFiltered();
    // The colour filter or whether it hides changed.
    void filterChanged();
    void pruneSelection();
    void firstFraming();
    void serveAddTaskRequest();
    void serveZoomRequest();
    void serveRevealRequest();
    void rejectionChanged();
    void fileDropFailureChanged();
    void setCursor(Cursor cursor);
    void setPanTranslation(QPointF translation);
    void rejectConnection(QPointF point);
    void commitNodeDrag(const QUuid &grabbedID, QPointF translation);

    Services m_services;
    QUuid m_flowID;
    CanvasInteraction &m_interaction;

    mutable bool m_visibleValid = false;
    // The visible list was made while a filter hid cards.
    mutable bool m_visibleHidden = false;
    // The tasks no fold hides, in order, before the filter.
    mutable bool m_unfoldedValid = false;
    mutable QList<const FlowNode *> m_unfolded;
    // The flow's tasks a fold hides, and those with the ones the filter hides.
    mutable QSet<QUuid> m_folded;
    mutable QSet<QUuid> m_hiddenIDs;
    // The lines into folded-away tasks, by the task they start at: what a
    // fold's count walks. Made when first asked for, few and with the folds.
    mutable std::optional<QHash<const FlowNode *, QList<const FlowNode *>>> m_foldedBelow;
    mutable QList<const FlowNode *> m_visible;
    mutable bool m_sceneValid = false;
    // The scene's cards, which may be made before the rest of it.
    mutable bool m_sceneCardsValid = false;
    mutable CanvasScene m_scene;
    // Every card's frame, hidden ones too, changes only with the scene.
    mutable std::optional<QRectF> m_contentBounds;
    // What the visible list and the scene read of each task of the flow,
    // as of their last reading: a change that leaves it alone (a title, a
    // status) leaves them as they are.
    struct NodeShape {
        // A task made later where one gone stood would share its address.
        QUuid id;
        qint64 order = 0;
        bool isCollapsed = false;
        QString colorRaw;
        double posX = 0;
        double posY = 0;
        std::optional<double> manualWidth;
        std::optional<double> manualHeight;
        std::optional<qint64> estimateMinutes;
        friend bool operator==(const NodeShape &, const NodeShape &) = default;
    };
    static NodeShape shapeOf(const FlowNode &node);
    // By address: a flow of thousands of tasks is read whenever it is shown.
    mutable QHash<const FlowNode *, NodeShape> m_shapes;

    QPointF m_panTranslation;
    bool m_didInitViewport = false;
    bool m_appeared = false;
    std::optional<BackgroundDragMode> m_backgroundDragMode;
    bool m_grabbing = false;
    Cursor m_cursor = Cursor::arrow;
    // The card (or file card) a resize started from, as it was.
    struct ResizeBase {
        QUuid id;
        NodeSize size;
        QPointF center;
    };
    std::optional<ResizeBase> m_resizeBase;

    Scheduler::Ticket m_persistTicket = 0;
    Scheduler::Ticket m_rejectionTicket = 0;
    Scheduler::Ticket m_fileDropFailureTicket = 0;
    int m_selectionDepth = 0;
};

} // namespace fenrow
