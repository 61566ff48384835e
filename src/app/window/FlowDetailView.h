#pragma once

#include "canvas/CanvasSelection.h"

#include <QUuid>
#include <QWidget>

#include <memory>

namespace fenrow {

class ActiveFlowState;
class AppPreferences;
class CanvasAppearance;
class CanvasEditor;
class CanvasInteraction;
class CanvasProgressReadout;
class CanvasRevealRequest;
class CanvasToolbar;
class CanvasView;
class CanvasZoomPill;
class CanvasZoomRequest;
class EmptyCanvasHint;
class ExpandFailureBanner;
class FenrowHistory;
class FenrowStore;
class NodeInspector;
class PanelResizeDivider;
class TimerScheduler;

// The detail of one flow: its canvas with the floating tools, and the
// inspector beside it while one task or file is selected. A canvas's
// state lives as long as the flow is on screen: showing another flow, or
// another route, starts the next one fresh (the viewport is kept in the
// flow). It keeps the flow's id and reads the record on every change, so
// it never holds on to a deleted flow.
class FlowDetailView : public QWidget {
    Q_OBJECT

public:
    FlowDetailView(FenrowStore &store, FenrowHistory &history, ActiveFlowState &activeFlow,
                   AppPreferences &preferences, QWidget *parent = nullptr);
    ~FlowDetailView() override;

    void showFlow(const QUuid &id);
    QUuid flowId() const { return m_flowId; }
    // What is selected on the canvas now, and a selection for the canvas
    // to take when it next starts on `flowID`: a window built again keeps
    // what the user had selected, and with it the inspector.
    CanvasSelection selection() const;
    void restoreSelection(const QUuid &flowID, const CanvasSelection &selection);

    CanvasView *canvas() const { return m_canvas; }
    CanvasEditor *editor() const { return m_editor.get(); }
    CanvasToolbar *toolbar() const { return m_toolbar; }
    CanvasZoomPill *zoomPill() const { return m_zoomPill; }
    NodeInspector *inspector() const { return m_inspector; }
    // The width the inspector takes from the canvas: none while it is closed.
    int inspectorRoom() const;
    CanvasAppearance *appearance() const { return m_appearance; }
    // The mailboxes through which menus and other views address the canvas.
    CanvasZoomRequest *zoomRequests() const { return m_zoomRequests; }
    CanvasRevealRequest *revealRequests() const { return m_revealRequests; }
    ExpandFailureBanner *expandFailureBanner() const { return m_expandFailure; }
    // Lets go of the flow, writing what was being typed on the canvas or in
    // the inspector: the window calls it before it goes, while all that
    // hears of the store's changes is still there.
    void stopCanvas();

signals:
    void archiveDoneRequested(const QUuid &flowID);
    void generateSubtasksRequested(const QUuid &nodeID);
    void inspectorShownChanged();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void startCanvas();
    void refresh();
    void followSelection();
    void applySelection(const CanvasSelection &selection);
    void revealNode(const QUuid &nodeID);
    void placeOverlays();
    void setInspectorWidth(int width);

    FenrowStore &m_store;
    FenrowHistory &m_history;
    ActiveFlowState &m_activeFlow;
    AppPreferences &m_preferences;
    QUuid m_flowId;
    QUuid m_restoreFlowId;
    CanvasSelection m_restoreSelection;

    CanvasAppearance *m_appearance = nullptr;
    TimerScheduler *m_scheduler = nullptr;
    CanvasZoomRequest *m_zoomRequests = nullptr;
    CanvasRevealRequest *m_revealRequests = nullptr;
    std::unique_ptr<CanvasInteraction> m_interaction;
    std::unique_ptr<CanvasEditor> m_editor;

    CanvasView *m_canvas = nullptr;
    CanvasProgressReadout *m_readout = nullptr;
    CanvasToolbar *m_toolbar = nullptr;
    CanvasZoomPill *m_zoomPill = nullptr;
    EmptyCanvasHint *m_emptyHint = nullptr;
    ExpandFailureBanner *m_expandFailure = nullptr;
    PanelResizeDivider *m_divider = nullptr;
    NodeInspector *m_inspector = nullptr;
};

} // namespace fenrow
