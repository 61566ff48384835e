#include "FlowDetailView.h"

#include "PanelResizeDivider.h"
#include "canvas/CanvasEditor.h"
#include "canvas/CanvasRequests.h"
#include "canvasview/CanvasAppearance.h"
#include "canvasview/CanvasProgressReadout.h"
#include "canvasview/CanvasToolbar.h"
#include "canvasview/CanvasView.h"
#include "canvasview/CanvasZoomPill.h"
#include "canvasview/EmptyCanvasHint.h"
#include "canvasview/ExpandFailureBanner.h"
#include "domain/DependencyEdge.h"
#include "domain/FenrowStore.h"
#include "domain/FlowFile.h"
#include "domain/FlowNode.h"
#include "domain/FlowProgress.h"
#include "domain/Readiness.h"
#include "domain/Scheduler.h"
#include "domain/TaskFlow.h"
#include "inspector/NodeInspector.h"
#include "shell/AppPreferences.h"

#include "domain/Clock.h"

#include <QEvent>
#include <QShowEvent>
#include <QTimer>
#include <QHBoxLayout>

namespace fenrow {

namespace {
// Room between the floating tools and the canvas's edges.
constexpr int overlayMargin = 12;
// Below this canvas width the readout shows its numbers the short way.
constexpr int compactReadoutWidth = 620;
// Narrower than this, the flow's name would say too little beside the tools.
constexpr int minimumReadoutWidth = 220;
} // namespace

FlowDetailView::FlowDetailView(FenrowStore &store, FenrowHistory &history, ActiveFlowState &activeFlow,
                               AppPreferences &preferences, QWidget *parent)
    : QWidget(parent), m_store(store), m_history(history), m_activeFlow(activeFlow), m_preferences(preferences)
{
    setObjectName(QStringLiteral("canvas.root"));
    m_appearance = new CanvasAppearance(preferences, this);
    m_scheduler = new TimerScheduler(this);
    m_zoomRequests = new CanvasZoomRequest(this);
    m_revealRequests = new CanvasRevealRequest(this);

    m_canvas = new CanvasView(store, history, preferences, *m_appearance, this);
    m_readout = new CanvasProgressReadout(*m_appearance, m_canvas);
    m_toolbar = new CanvasToolbar(store, history, preferences, *m_appearance, *m_canvas, m_canvas);
    m_zoomPill = new CanvasZoomPill(*m_appearance, *m_zoomRequests, m_canvas);
    m_emptyHint = new EmptyCanvasHint(*m_appearance, m_canvas);
    m_emptyHint->hide();
    m_expandFailure = new ExpandFailureBanner(m_canvas);

    m_inspector = new NodeInspector(store, history, preferences, this);
    m_inspector->hide();
    m_divider = new PanelResizeDivider(m_inspector, PanelResizeDivider::Side::trailing,
                                       int(AppPreferences::minimumInspectorWidth),
                                       int(AppPreferences::maximumInspectorWidth), this);
    m_divider->setObjectName(QStringLiteral("inspector.resize"));
    m_divider->hide();
    setInspectorWidth(qRound(preferences.inspectorWidth()));

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_canvas, 1);
    row->addWidget(m_divider);
    row->addWidget(m_inspector);

    m_canvas->installEventFilter(this);
    connect(m_canvas, &CanvasView::contentChanged, this, &FlowDetailView::refresh);
    connect(m_emptyHint, &EmptyCanvasHint::addRequested, m_canvas, &CanvasView::addTask);
    connect(m_toolbar, &CanvasToolbar::archiveDoneRequested, this, &FlowDetailView::archiveDoneRequested);
    connect(m_canvas, &CanvasView::generateSubtasksRequested, this, &FlowDetailView::generateSubtasksRequested);
    connect(m_inspector, &NodeInspector::revealRequested, this, &FlowDetailView::revealNode);
    connect(m_divider, &PanelResizeDivider::widthChanged, this, &FlowDetailView::setInspectorWidth);
    connect(m_divider, &PanelResizeDivider::resizeFinished, this,
            [this](int width) { m_preferences.setInspectorWidth(width); });
    connect(&m_store, &FenrowStore::changed, this, &FlowDetailView::refresh);
}

FlowDetailView::~FlowDetailView()
{
    m_canvas->removeEventFilter(this);
    stopCanvas();
}

void FlowDetailView::setInspectorWidth(int width)
{
    m_inspector->setFixedWidth(std::clamp(width, int(AppPreferences::minimumInspectorWidth),
                                          int(AppPreferences::maximumInspectorWidth)));
}

void FlowDetailView::showFlow(const QUuid &id)
{
    if (id == m_flowId && (m_editor || !isVisible())) {
        refresh();
        return;
    }
    stopCanvas();
    m_flowId = id;
    if (isVisible())
        startCanvas();
    refresh();
}

void FlowDetailView::startCanvas()
{
    if (m_editor || m_flowId.isNull() || !m_store.flow(m_flowId))
        return;
    m_interaction = std::make_unique<CanvasInteraction>();
    m_editor = std::make_unique<CanvasEditor>(
        CanvasEditor::Services{m_store, m_history, m_preferences, *m_scheduler, &m_activeFlow, m_revealRequests,
                               m_zoomRequests},
        m_flowId, *m_interaction);
    m_canvas->setEditor(m_editor.get());
    m_toolbar->setEditor(m_editor.get());
    m_zoomPill->setEditor(m_editor.get());
    m_expandFailure->setInteraction(m_interaction.get());
    connect(m_interaction.get(), &CanvasInteraction::changed, this, [this](CanvasInteraction::Field field) {
        using Field = CanvasInteraction::Field;
        if (field == Field::selectedItemIDs || field == Field::selectedEdgeID || field == Field::selectedFileID)
            followSelection();
        if (field == Field::expandFailure)
            placeOverlays();
    });
    m_editor->appear(m_canvas->size());
    m_canvas->setFocus(Qt::OtherFocusReason);
    if (m_restoreFlowId == m_flowId)
        applySelection(m_restoreSelection);
    m_restoreFlowId = QUuid();
    followSelection();
}

CanvasSelection FlowDetailView::selection() const
{
    CanvasSelection selection;
    if (m_interaction) {
        selection.itemIDs = m_interaction->selectedItemIDs();
        selection.edgeID = m_interaction->selectedEdgeID();
        // A file card is shown when it is all that is selected.
        if (selection.itemIDs.isEmpty() && !selection.edgeID)
            if (const auto file = m_interaction->selectedFileID())
                selection.itemIDs = {*file};
    }
    return selection;
}

void FlowDetailView::restoreSelection(const QUuid &flowID, const CanvasSelection &selection)
{
    if (m_editor && flowID == m_flowId) {
        applySelection(selection);
        return;
    }
    m_restoreFlowId = flowID;
    m_restoreSelection = selection;
}

void FlowDetailView::applySelection(const CanvasSelection &selection)
{
    const TaskFlow *flow = m_store.flow(m_flowId);
    if (!flow || !m_interaction)
        return;
    // Only what still exists in the flow.
    QSet<QUuid> items;
    std::optional<QUuid> file;
    for (const QUuid &id : selection.itemIDs) {
        const FlowNode *node = m_store.node(id);
        if (node && node->flow() == flow)
            items.insert(id);
        else if (std::ranges::any_of(flow->files(), [&](const FlowFile *candidate) { return candidate->id == id; }))
            file = id;
    }
    if (items.isEmpty() && file) {
        m_interaction->setSelectedFileID(file);
        return;
    }
    m_interaction->setSelectedItemIDs(items);
    if (selection.edgeID &&
        std::ranges::any_of(flow->edges(), [&](const DependencyEdge *edge) { return edge->id == *selection.edgeID; }))
        m_interaction->setSelectedEdgeID(selection.edgeID);
}

void FlowDetailView::stopCanvas()
{
    if (!m_editor)
        return;
    // The panel lets go of the task first: what follows may change the store.
    m_inspector->showSelection(m_flowId, {});
    const bool wasShown = !m_inspector->isHidden();
    m_inspector->hide();
    m_divider->hide();
    if (wasShown)
        emit inspectorShownChanged();
    // What the user scrolled to is kept, even within the save's short delay.
    if (m_editor->didInitViewport())
        m_editor->persistViewport();
    m_editor->disappear();
    m_canvas->setEditor(nullptr);
    m_toolbar->setEditor(nullptr);
    m_zoomPill->setEditor(nullptr);
    m_expandFailure->setInteraction(nullptr);
    m_editor.reset();
    m_interaction.reset();
}

void FlowDetailView::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    startCanvas();
    refresh();
}

void FlowDetailView::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    // A minimised window is still showing its flow.
    if (!event->spontaneous())
        stopCanvas();
}

void FlowDetailView::refresh()
{
    const TaskFlow *flow = m_store.flow(m_flowId);
    if (!flow)
        return;
    const FlowProgress progress = FlowProgress::of(flow->items());
    const qsizetype ready = m_editor ? Readiness::readyCount(*flow, m_store.clock().now(), m_store.calendar()) : 0;
    m_readout->setFlow(flow->name, progress, ready);
    m_emptyHint->setVisible(flow->items().empty());
    placeOverlays();
}

void FlowDetailView::followSelection()
{
    const CanvasSelection selection = this->selection();
    m_inspector->showSelection(m_flowId, selection);
    const bool shown = m_interaction && m_inspector->page() != NodeInspector::Page::empty;
    const bool opening = shown && !m_inspector->isVisible();
    const bool changing = shown == m_inspector->isHidden();
    m_inspector->setVisible(shown);
    m_divider->setVisible(shown);
    if (changing)
        emit inspectorShownChanged();
    // The panel takes room from the canvas; the task it shows stays in view.
    if (opening && selection.itemIDs.size() == 1)
        QTimer::singleShot(0, this, [this, id = *selection.itemIDs.cbegin()] {
            if (m_editor && m_editor->isVisible(id))
                m_editor->selectAndKeepVisible(id);
        });
}

int FlowDetailView::inspectorRoom() const
{
    return m_inspector->isHidden() ? 0 : m_inspector->width() + m_divider->width();
}

void FlowDetailView::revealNode(const QUuid &nodeID)
{
    if (!m_editor)
        return;
    // A task folded away or filtered out has to be brought back first.
    if (m_editor->isVisible(nodeID))
        m_editor->selectAndKeepVisible(nodeID);
    else
        m_revealRequests->post(nodeID, m_flowId);
}

bool FlowDetailView::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_canvas && event->type() == QEvent::Resize)
        placeOverlays();
    return QWidget::eventFilter(watched, event);
}

void FlowDetailView::placeOverlays()
{
    const QRect area = m_canvas->rect().adjusted(overlayMargin, overlayMargin, -overlayMargin, -overlayMargin);
    const int shadow = CanvasPanel::shadowRoom;
    const int gap = 8;
    m_readout->setCompact(m_canvas->width() < compactReadoutWidth);
    m_toolbar->adjustSize();
    m_zoomPill->adjustSize();
    m_emptyHint->adjustSize();
    const QSize tools = m_toolbar->size() - QSize(2 * shadow, 2 * shadow);
    const QSize zoom = m_zoomPill->size() - QSize(2 * shadow, 2 * shadow);

    // The name and the tools share the top edge while both fit; on a narrow
    // canvas the tools go down beside the zoom pill.
    const bool toolsOnTop = area.width() - tools.width() - gap >= minimumReadoutWidth;
    m_readout->setRoom((toolsOnTop ? area.width() - tools.width() - gap : area.width()) + 2 * shadow);
    m_readout->adjustSize();
    m_readout->move(area.left() - shadow, area.top() - shadow);
    const bool toolsBesideZoom = area.width() - tools.width() - gap >= zoom.width();
    if (toolsOnTop)
        m_toolbar->move(area.right() - tools.width() + 1 - shadow, area.top() - shadow);
    else if (toolsBesideZoom)
        m_toolbar->move(area.left() - shadow, area.bottom() - tools.height() + 1 - shadow);
    else // Narrower still: under the name.
        m_toolbar->move(area.left() - shadow, area.top() + m_readout->height() - 2 * shadow + gap - shadow);
    m_zoomPill->move(area.right() - zoom.width() + 1 - shadow, area.bottom() - zoom.height() + 1 - shadow);
    m_emptyHint->move(m_canvas->width() / 2 - m_emptyHint->width() / 2,
                      m_canvas->height() / 2 - m_emptyHint->height() / 2);
    // Under the top row of tools, in the middle.
    m_expandFailure->adjustSize();
    m_expandFailure->move(m_canvas->width() / 2 - m_expandFailure->width() / 2, area.top() + 48);
}

} // namespace fenrow
