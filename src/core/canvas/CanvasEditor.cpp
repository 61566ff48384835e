// The editor's life with its flow: appearing and leaving, following the
// store and the preferences, the viewport (framing, zoom commands, reveal,
// the debounced save), banners and the two request mailboxes.
#include "CanvasEditor.h"

#include "CanvasEditorSelection.h"
#include "CanvasRequests.h"
#include "CardSpacing.h"
#include "SubtaskArrangement.h"
#include "domain/ActiveFlowState.h"
#include "domain/FenrowHistory.h"
#include "domain/FenrowStore.h"
#include "domain/FlowGraph.h"
#include "shell/AppPreferences.h"

#include <algorithm>

namespace fenrow {

CanvasEditor::CanvasEditor(Services services, const QUuid &flowID, CanvasInteraction &interaction, QObject *parent)
    : QObject(parent), m_services(services), m_flowID(flowID), m_interaction(interaction)
{
    connect(&m_services.store, &FenrowStore::changed, this, &CanvasEditor::storeChanged);
    connect(&m_services.preferences, &AppPreferences::changed, this, &CanvasEditor::preferenceChanged);
    connect(&m_interaction, &CanvasInteraction::changed, this, &CanvasEditor::interactionChanged);
    if (m_services.zoomRequests)
        connect(m_services.zoomRequests, &CanvasZoomRequest::pendingChanged, this, &CanvasEditor::serveZoomRequest);
    if (m_services.revealRequests)
        connect(m_services.revealRequests, &CanvasRevealRequest::pendingChanged, this,
                &CanvasEditor::serveRevealRequest);
}

CanvasEditor::~CanvasEditor()
{
    if (m_appeared)
        disappear();
}

CanvasEditor::SelectionStep::SelectionStep(CanvasEditor &editor)
    : m_editor(editor), m_before(currentSelection(editor.m_interaction))
{
    ++m_editor.m_selectionDepth;
}

CanvasEditor::SelectionStep::~SelectionStep()
{
    if (--m_editor.m_selectionDepth > 0)
        return;
    const CanvasSelection after = currentSelection(m_editor.m_interaction);
    const TaskFlow *current = m_editor.flow();
    if (current && after != m_before)
        m_editor.m_services.history.recordSelection(after, *current);
}

// --- lifecycle

void CanvasEditor::appear(QSizeF viewportSize)
{
    m_appeared = true;
    m_interaction.setViewportSize(viewportSize.width(), viewportSize.height());
    m_interaction.setSizeResolver(NodeSizeResolver(m_services.preferences.sizeByEstimate()));
    const TaskFlow *current = flow();
    if (!current)
        return;
    FenrowHistory::SelectionBridge bridge;
    bridge.read = [this] { return currentSelection(m_interaction); };
    bridge.write = [this](const CanvasSelection &selection) {
        m_interaction.setSelectedItemIDs(selection.itemIDs);
        m_interaction.setSelectedEdgeID(selection.edgeID);
    };
    m_services.history.setSelectionBridge(m_flowID, std::move(bridge));
    m_services.history.rememberSelection(currentSelection(m_interaction), *current);
    // A trashed file comes back only through undo; with nothing to undo it
    // never will.
    if (!m_services.history.canUndo(m_flowID))
        m_services.store.purgeTrashedFiles(*current);
    spaceCardsForSizes();
    firstFraming();
}

void CanvasEditor::disappear()
{
    m_appeared = false;
    for (Scheduler::Ticket *ticket : {&m_persistTicket, &m_rejectionTicket, &m_fileDropFailureTicket}) {
        m_services.scheduler.cancel(*ticket);
        *ticket = 0;
    }
    m_services.history.removeSelectionBridge(m_flowID);
}

void CanvasEditor::setViewportSize(QSizeF size)
{
    m_interaction.setViewportSize(size.width(), size.height());
    if (m_appeared)
        firstFraming();
}

void CanvasEditor::firstFraming()
{
    const TaskFlow *current = flow();
    if (!current || !m_interaction.hasViewport())
        return;
    if (current->hasBeenFramed) {
        if (m_didInitViewport)
            return;
        m_interaction.setScale(std::clamp(current->viewportScale, CanvasZoom::minimumScale, CanvasZoom::maximumScale));
        m_interaction.setOffset({current->viewportOffsetX, current->viewportOffsetY});
        m_interaction.clampOffset(contentBounds());
    } else {
        // Until a save marks the flow framed, every new size fits it again.
        const std::vector<QRectF> frames = cardFrames();
        m_interaction.zoomToFit(frames);
    }
    if (m_didInitViewport)
        return;
    m_didInitViewport = true;
    emit viewStateChanged();
    serveAddTaskRequest();
    serveRevealRequest();
}

// --- reading

const TaskFlow *CanvasEditor::flow() const
{
    return m_services.store.flow(m_flowID);
}

const FlowNode *CanvasEditor::node(const QUuid &id) const
{
    const FlowNode *found = m_services.store.node(id);
    return found && found->flow() && found->flow()->id == m_flowID ? found : nullptr;
}

const FlowFile *CanvasEditor::file(const QUuid &id) const
{
    if (const TaskFlow *current = flow()) {
        for (const FlowFile *candidate : current->files()) {
            if (candidate->id == id)
                return candidate;
        }
    }
    return nullptr;
}

const DependencyEdge *CanvasEditor::edge(const QUuid &id) const
{
    if (const TaskFlow *current = flow()) {
        for (const DependencyEdge *candidate : current->edges()) {
            if (candidate->id == id)
                return candidate;
        }
    }
    return nullptr;
}

const FileLink *CanvasEditor::fileLink(const QUuid &id) const
{
    if (const TaskFlow *current = flow()) {
        for (const FileLink *candidate : current->fileLinks()) {
            if (candidate->id == id)
                return candidate;
        }
    }
    return nullptr;
}

int CanvasEditor::foldedCount(const FlowNode &fold) const
{
    const TaskFlow *current = flow();
    if (!current)
        return 0;
    visibleNodes();
    if (!m_foldedBelow) {
        m_foldedBelow.emplace();
        if (!m_folded.isEmpty())
            for (const DependencyEdge *edge : current->edges())
                if (edge->fromItem() && edge->toItem() && m_folded.contains(edge->toItem()->id))
                    (*m_foldedBelow)[edge->fromItem()].append(edge->toItem());
    }
    QSet<const FlowNode *> seen;
    QList<const FlowNode *> next = m_foldedBelow->value(&fold);
    while (!next.isEmpty()) {
        const FlowNode *below = next.takeLast();
        if (seen.contains(below))
            continue;
        seen.insert(below);
        next.append(m_foldedBelow->value(below));
    }
    return int(seen.size());
}

const QList<const FlowNode *> &CanvasEditor::visibleNodes() const
{
    if (m_visibleValid)
        return m_visible;
    m_visible.clear();
    if (const TaskFlow *current = flow()) {
        // A filter alone leaves the folds, and so the unfolded tasks and
        // their shapes, as they were.
        if (!m_unfoldedValid) {
            m_shapes.clear();
            m_shapes.reserve(current->items().size());
            for (const FlowNode *candidate : current->items())
                m_shapes.insert(candidate, shapeOf(*candidate));
            m_folded = FlowGraph::hiddenNodeIDs(*current);
            m_unfolded = FlowGraph::visibleItems(*current, m_folded);
            m_unfoldedValid = true;
        }
        m_hiddenIDs = m_folded;
        const CanvasColorFilter filter = m_interaction.colorFilter();
        const bool hides = hidesByFilter();
        m_visibleHidden = hides;
        for (const FlowNode *candidate : std::as_const(m_unfolded)) {
            if (hides && !filter.contains(candidate->color())) {
                m_hiddenIDs.insert(candidate->id);
                continue;
            }
            m_visible.append(candidate);
        }
    }
    m_visibleValid = true;
    return m_visible;
}

const std::vector<CanvasScene::Card> &CanvasEditor::sceneCards() const
{
    if (m_sceneCardsValid)
        return m_scene.nodes;
    m_scene.nodes.clear();
    m_sceneCardsValid = true;
    const QList<const FlowNode *> &visible = visibleNodes();
    m_scene.nodes.reserve(std::size_t(visible.size()));
    for (const FlowNode *node : visible) {
        const QPointF stored(node->posX, node->posY);
        m_scene.nodes.push_back(
            {node->id, m_interaction.effectiveCenter(node->id, stored), stored, m_interaction.effectiveSize(*node)});
    }
    return m_scene.nodes;
}

const CanvasScene &CanvasEditor::scene() const
{
    if (m_sceneValid)
        return m_scene;
    m_scene.files.clear();
    m_scene.edges.clear();
    m_scene.links.clear();
    sceneCards();
    m_sceneValid = true;
    const TaskFlow *current = flow();
    if (!current)
        return m_scene;
    const QList<const FlowNode *> &visible = visibleNodes();
    QHash<const FlowNode *, int> nodeIndex;
    nodeIndex.reserve(visible.size());
    for (int i = 0; i < int(visible.size()); ++i)
        nodeIndex.insert(visible[i], i);
    auto line = [](const QUuid &id, int from, int to, const CanvasScene::Card &a, const CanvasScene::Card &b,
                   int listed) {
        return CanvasScene::Line{id, from, to, CanvasGeometry::spanningRect(a.center, b.center),
                                 CanvasGeometry::spanningRect(a.stored, b.stored), listed};
    };
    m_scene.edges.reserve(current->edges().size());
    int listed = 0;
    for (const DependencyEdge *edge : current->edges()) {
        const int from = nodeIndex.value(edge->fromItem(), -1);
        const int to = nodeIndex.value(edge->toItem(), -1);
        if (from >= 0 && to >= 0)
            m_scene.edges.push_back(
                line(edge->id, from, to, m_scene.nodes[std::size_t(from)], m_scene.nodes[std::size_t(to)], listed));
        ++listed;
    }
    QHash<const FlowFile *, int> fileIndex;
    for (const FlowFile *file : current->files()) {
        if (file->isTrashed)
            continue;
        fileIndex.insert(file, int(m_scene.files.size()));
        const QPointF stored(file->posX, file->posY);
        m_scene.files.push_back({file->id, m_interaction.effectiveFileCenter(file->id, stored), stored,
                                 m_interaction.effectiveFileSize(*file)});
    }
    listed = 0;
    for (const FileLink *link : current->fileLinks()) {
        const int from = fileIndex.value(link->file(), -1);
        const int to = nodeIndex.value(link->node(), -1);
        if (from >= 0 && to >= 0)
            m_scene.links.push_back(
                line(link->id, from, to, m_scene.files[std::size_t(from)], m_scene.nodes[std::size_t(to)], listed));
        ++listed;
    }
    return m_scene;
}

bool CanvasEditor::isVisible(const QUuid &nodeID) const
{
    visibleNodes();
    return node(nodeID) && !m_hiddenIDs.contains(nodeID);
}

bool CanvasEditor::isDimmed(const FlowNode &candidate) const
{
    return dimsByFilter() && !m_interaction.colorFilter().contains(candidate.color());
}

bool CanvasEditor::hidesByFilter() const
{
    return !m_interaction.colorFilter().isEmpty() && m_services.preferences.filterMode() == FilterMode::hide;
}

bool CanvasEditor::dimsByFilter() const
{
    return !m_interaction.colorFilter().isEmpty() && m_services.preferences.filterMode() == FilterMode::dim;
}

QList<const FlowFile *> CanvasEditor::liveFiles() const
{
    const TaskFlow *current = flow();
    return current ? FenrowStore::liveFiles(*current) : QList<const FlowFile *>();
}

// A line's ends are tasks of this flow: asking the few hidden ones is
// quicker than the whole flow's visible set, for each of thousands of lines.
bool CanvasEditor::isDrawn(const DependencyEdge &candidate) const
{
    visibleNodes();
    return candidate.fromItem() && candidate.toItem() && !m_hiddenIDs.contains(candidate.fromItem()->id) &&
           !m_hiddenIDs.contains(candidate.toItem()->id);
}

bool CanvasEditor::isDrawn(const FileLink &link) const
{
    visibleNodes();
    return link.file() && !link.file()->isTrashed && link.node() && !m_hiddenIDs.contains(link.node()->id);
}

std::vector<QRectF> CanvasEditor::cardFrames() const
{
    std::vector<QRectF> frames;
    const TaskFlow *current = flow();
    if (!current)
        return frames;
    frames.reserve(current->items().size() + current->files().size());
    for (const FlowNode *candidate : current->items())
        frames.push_back(m_interaction.frame(*candidate));
    for (const FlowFile *candidate : current->files()) {
        if (!candidate->isTrashed)
            frames.push_back(m_interaction.fileFrame(*candidate));
    }
    return frames;
}

QRectF CanvasEditor::contentBounds() const
{
    // Asked at every step of a pan or a zoom: read from every task's record,
    // a large flow's frames were a tenth of such a step's work.
    if (!m_contentBounds)
        m_contentBounds = CanvasGeometry::contentRectangle(cardFrames());
    return *m_contentBounds;
}

bool CanvasEditor::snapsToGrid() const
{
    return m_services.preferences.gridEnabled();
}

QPointF CanvasEditor::effectiveOffset() const
{
    return m_interaction.marquee() ? m_interaction.offset() : m_interaction.offset() + m_panTranslation;
}

bool CanvasEditor::isEditing() const
{
    return m_interaction.editingItemID().has_value();
}

QString CanvasEditor::newTaskTitle() const
{
    const QString localized = qtTrId("canvas.node.new");
    // Without a loaded translation the id itself comes back.
    return localized == QLatin1StringView("canvas.node.new") ? QStringLiteral("New task") : localized;
}

// --- following the store and the preferences

void CanvasEditor::invalidateVisible()
{
    m_unfoldedValid = false;
    m_foldedBelow.reset();
    invalidateFiltered();
}

void CanvasEditor::invalidateFiltered()
{
    m_visibleValid = false;
    invalidateScene();
}

void CanvasEditor::invalidateScene()
{
    m_sceneValid = false;
    m_sceneCardsValid = false;
    m_contentBounds.reset();
}

void CanvasEditor::filterChanged()
{
    // A filter that dims, or none, leaves every unfolded task shown: the
    // list and the scene stay unless a filter hid some before or does now.
    if (m_visibleValid && !m_visibleHidden && !hidesByFilter())
        return;
    invalidateFiltered();
}

CanvasEditor::NodeShape CanvasEditor::shapeOf(const FlowNode &node)
{
    return {node.id,   node.order,       node.isCollapsed,  node.colorRaw,       node.posX,
            node.posY, node.manualWidth, node.manualHeight, node.estimateMinutes};
}

void CanvasEditor::storeChanged()
{
    // Flow rows alone (the viewport saved at a scroll's end, a name), or
    // tasks whose place, size, order, fold and colour stayed (a title, a
    // status), leave the visible list and the scene as they are.
    const StoreChange &change = m_services.store.lastChange();
    if (change.everything || !m_visibleValid) {
        invalidateVisible();
    } else {
        for (const QUuid &id : change.nodes) {
            const FlowNode *changed = m_services.store.node(id);
            const bool here = changed && changed->flow() && changed->flow()->id == m_flowID;
            auto known = changed ? m_shapes.constFind(changed) : m_shapes.cend();
            if (known != m_shapes.cend() && known->id != id)
                known = m_shapes.cend();
            // A task of another flow is skipped; one gone, whose flow is
            // not known any more, has the list made again.
            if (!here && known == m_shapes.cend() && changed)
                continue;
            if (!here || known == m_shapes.cend() || known->order != changed->order ||
                known->isCollapsed != changed->isCollapsed || known->colorRaw != changed->colorRaw) {
                invalidateVisible();
                break;
            }
            if (const NodeShape now = shapeOf(*changed); !(*known == now)) {
                m_shapes[changed] = now;
                invalidateScene();
            }
        }
    }
    pruneSelection();
}

void CanvasEditor::pruneSelection()
{
    const TaskFlow *current = flow();
    if (!current)
        return;
    const CanvasSelection before = currentSelection(m_interaction);
    QSet<QUuid> ids = before.itemIDs;
    ids.removeIf([this](const QUuid &id) { return !node(id); });
    m_interaction.setSelectedItemIDs(ids);
    if (const auto editing = m_interaction.editingItemID(); editing && !node(*editing))
        m_interaction.setEditingItemID(std::nullopt);
    if (const auto edgeID = m_interaction.selectedEdgeID(); edgeID && !edge(*edgeID))
        m_interaction.setSelectedEdgeID(std::nullopt);
    if (const auto fileID = m_interaction.selectedFileID()) {
        const FlowFile *selected = file(*fileID);
        if (!selected || selected->isTrashed)
            m_interaction.setSelectedFileID(std::nullopt);
    }
    if (const auto linkID = m_interaction.selectedFileLinkID(); linkID && !fileLink(*linkID))
        m_interaction.setSelectedFileLinkID(std::nullopt);
    const CanvasSelection after = currentSelection(m_interaction);
    if (after != before)
        m_services.history.rememberSelection(after, *current);
}

void CanvasEditor::preferenceChanged(const QString &key)
{
    if (key == QLatin1StringView(PreferenceKey::sizeByEstimate)) {
        m_interaction.setSizeResolver(NodeSizeResolver(m_services.preferences.sizeByEstimate()));
        if (m_appeared)
            spaceCardsForSizes();
    } else if (key == QLatin1StringView(PreferenceKey::filterMode)) {
        filterChanged();
        emit viewStateChanged();
    }
}

void CanvasEditor::interactionChanged(CanvasInteraction::Field field)
{
    switch (field) {
    case CanvasInteraction::Field::colorFilter:
        filterChanged();
        break;
    case CanvasInteraction::Field::nodeDrag:
    case CanvasInteraction::Field::nodeResize:
    case CanvasInteraction::Field::fileDrag:
    case CanvasInteraction::Field::fileResize:
    case CanvasInteraction::Field::sizeResolver:
        invalidateScene();
        break;
    case CanvasInteraction::Field::rejection:
        rejectionChanged();
        break;
    case CanvasInteraction::Field::fileDropFailure:
        fileDropFailureChanged();
        break;
    default:
        break;
    }
}

// --- banners: each new refusal starts its own wait, and a wait only
// clears the banner it was started for.

void CanvasEditor::rejectionChanged()
{
    m_services.scheduler.cancel(m_rejectionTicket);
    m_rejectionTicket = 0;
    const std::optional<CycleRejection> &shown = m_interaction.rejection();
    if (!shown)
        return;
    const QUuid id = shown->id;
    m_rejectionTicket = m_services.scheduler.schedule(rejectionLifetime, [this, id] {
        m_rejectionTicket = 0;
        if (m_interaction.rejection() && m_interaction.rejection()->id == id)
            m_interaction.setRejection(std::nullopt);
    });
}

void CanvasEditor::fileDropFailureChanged()
{
    m_services.scheduler.cancel(m_fileDropFailureTicket);
    m_fileDropFailureTicket = 0;
    const std::optional<FileDropFailure> &shown = m_interaction.fileDropFailure();
    if (!shown)
        return;
    const QUuid id = shown->id;
    m_fileDropFailureTicket = m_services.scheduler.schedule(fileDropFailureLifetime, [this, id] {
        m_fileDropFailureTicket = 0;
        if (m_interaction.fileDropFailure() && m_interaction.fileDropFailure()->id == id)
            m_interaction.setFileDropFailure(std::nullopt);
    });
}

void CanvasEditor::rejectConnection(QPointF point)
{
    m_interaction.setRejection(CycleRejection{QUuid::createUuid(), point});
}

void CanvasEditor::fileDropFailed(const FlowFileImport::Failure &failure, const QString &filename, QPointF screenPoint)
{
    m_interaction.setFileDropFailure(
        FileDropFailure{QUuid::createUuid(), failure, filename, m_interaction.toCanvas(screenPoint)});
}

// --- viewport

void CanvasEditor::schedulePersist()
{
    m_services.scheduler.cancel(m_persistTicket);
    m_persistTicket = m_services.scheduler.schedule(persistDelay, [this] {
        m_persistTicket = 0;
        persistViewport();
    });
}

void CanvasEditor::persistViewport()
{
    m_services.scheduler.cancel(m_persistTicket);
    m_persistTicket = 0;
    const TaskFlow *current = flow();
    // A canvas that has no size on screen has no viewport worth keeping,
    // and saving one would mark the flow as framed.
    if (!current || !m_interaction.hasViewport())
        return;
    const QPointF offset = m_interaction.offset();
    m_services.store.setViewport(*current, offset.x(), offset.y(), m_interaction.scale());
}

void CanvasEditor::pan(double dx, double dy)
{
    m_interaction.panBy(dx, dy, contentBounds());
    schedulePersist();
}

void CanvasEditor::zoom(double factor, QPointF anchor)
{
    m_interaction.zoomBy(factor, anchor, contentBounds());
    schedulePersist();
}

void CanvasEditor::zoomCommand(CanvasZoom::Kind kind)
{
    const QSizeF size = m_interaction.viewportSize();
    const QPointF middle(size.width() * 0.5, size.height() * 0.5);
    switch (kind) {
    case CanvasZoom::Kind::zoomIn:
        m_interaction.zoomBy(CanvasZoom::zoomInFactor, middle, contentBounds());
        break;
    case CanvasZoom::Kind::zoomOut:
        m_interaction.zoomBy(CanvasZoom::zoomOutFactor, middle, contentBounds());
        break;
    case CanvasZoom::Kind::zoomToFit: {
        const std::vector<QRectF> frames = cardFrames();
        m_interaction.zoomToFit(frames);
        break;
    }
    }
    persistViewport();
}

void CanvasEditor::reveal(const QUuid &nodeID, bool animated)
{
    const FlowNode *target = node(nodeID);
    if (!target)
        return;
    const QRectF bounds = contentBounds();
    if (animated)
        emit animationRequested(revealDuration);
    m_interaction.centerOn({target->posX, target->posY}, bounds);
    persistViewport();
}

// --- requests

void CanvasEditor::serveAddTaskRequest()
{
    ActiveFlowState *state = m_services.activeFlow;
    if (!state || state->pendingSeedFlowID() != m_flowID)
        return;
    state->setPendingSeedFlowID(std::nullopt);
    addTaskAtCenter();
}

void CanvasEditor::serveZoomRequest()
{
    CanvasZoomRequest *requests = m_services.zoomRequests;
    if (!requests || !requests->pending() || requests->pending()->flowID != m_flowID)
        return;
    const CanvasZoom::Kind kind = requests->pending()->kind;
    requests->clear();
    zoomCommand(kind);
}

void CanvasEditor::serveRevealRequest()
{
    CanvasRevealRequest *requests = m_services.revealRequests;
    // Before first framing the view has nowhere to scroll to; framing
    // serves the request once it is done.
    if (!requests || !m_didInitViewport || !requests->pending() || requests->pending()->flowID != m_flowID)
        return;
    const QUuid nodeID = requests->pending()->nodeID;
    requests->clear();
    const TaskFlow *current = flow();
    const FlowNode *target = node(nodeID);
    if (!current || !target)
        return;
    const SelectionStep step(*this);
    if (FlowGraph::hiddenNodeIDs(*current).contains(nodeID))
        m_services.store.unfoldAncestors({nodeID}, *current);
    m_interaction.setSelectedEdgeID(std::nullopt);
    m_interaction.setEditingItemID(std::nullopt);
    m_interaction.setSelectedFileID(std::nullopt);
    m_interaction.setSelectedFileLinkID(std::nullopt);
    m_interaction.setSelectedItemIDs({nodeID});
    reveal(nodeID, true);
}

// --- adding and renaming

void CanvasEditor::selectNew(const FlowNode &created)
{
    m_interaction.setSelectedEdgeID(std::nullopt);
    m_interaction.setSelectedFileID(std::nullopt);
    m_interaction.setSelectedFileLinkID(std::nullopt);
    m_interaction.setSelectedItemIDs({created.id});
    m_interaction.setEditingItemID(created.id);
}

const FlowNode *CanvasEditor::addTaskAtCenter()
{
    const TaskFlow *current = flow();
    if (!current)
        return nullptr;
    const SelectionStep step(*this);
    const FlowNode *created = m_services.history.recordAction(QStringLiteral("Add task"), *current, [&] {
        const FlowNode *added = m_services.store.addNodeAt(*current, newTaskTitle(), m_interaction.viewportCenter(),
                                                           m_interaction.sizeResolver());
        selectNew(*added);
        return added;
    });
    keepVisible(*created);
    return created;
}

const FlowNode *CanvasEditor::addSubtask(const QUuid &parentID)
{
    const TaskFlow *current = flow();
    const FlowNode *parent = node(parentID);
    if (!current || !parent)
        return nullptr;
    const SelectionStep step(*this);
    const FlowNode *created = m_services.history.recordAction(QStringLiteral("Add subtask"), *current, [&] {
        const FlowNode *added = m_services.store.addNode(newTaskTitle(), *current);
        try {
            m_services.store.addEdge(*parent, *added, EdgeSource::manual, EdgeKind::subtask);
        } catch (const GraphMutationError &) {
            // A fresh card cannot close a loop; should it fail, it stays unjoined.
        }
        m_services.store.moveNodes(*current,
                                   SubtaskArrangement::arrange(*parent, *current, m_interaction.sizeResolver()));
        selectNew(*added);
        return added;
    });
    keepVisible(*created);
    return created;
}

void CanvasEditor::spaceCardsForSizes()
{
    const TaskFlow *current = flow();
    if (!current)
        return;
    const NodeSizeResolver now = m_interaction.sizeResolver();
    const QHash<QUuid, QPointF> moved = CardSpacing::separate(*current, NodeSizeResolver(!now.sizesByEstimate), now);
    if (!moved.isEmpty())
        m_services.store.moveNodes(*current, moved);
}

void CanvasEditor::finishEditing(const std::optional<QString> &title)
{
    const std::optional<QUuid> editing = m_interaction.editingItemID();
    m_interaction.setEditingItemID(std::nullopt);
    const TaskFlow *current = flow();
    const FlowNode *target = editing ? node(*editing) : nullptr;
    if (!title || !current || !target)
        return;
    m_services.history.recordAction(QStringLiteral("Rename"), *current,
                                    [&] { m_services.store.setTitle(*target, *title); });
}

void CanvasEditor::selectOnly(const QUuid &nodeID)
{
    m_interaction.setSelectedEdgeID(std::nullopt);
    m_interaction.setSelectedItemIDs({nodeID});
    m_interaction.setSelectedFileID(std::nullopt);
    m_interaction.setSelectedFileLinkID(std::nullopt);
}

void CanvasEditor::keepVisible(const FlowNode &target)
{
    const QRectF frame = m_interaction.frame(target);
    const double scale = m_interaction.scale();
    const QRectF onScreen(m_interaction.toScreen(frame.topLeft()), frame.size() * scale);
    const QSizeF view = m_interaction.viewportSize();
    const QRectF inner =
        QRectF(0, 0, view.width(), view.height()).adjusted(visibleInset, visibleInset, -visibleInset, -visibleInset);
    const bool inView = inner.left() <= onScreen.left() && onScreen.right() <= inner.right()
        && inner.top() <= onScreen.top() && onScreen.bottom() <= inner.bottom();
    if (!inView)
        reveal(target.id, true);
}

void CanvasEditor::selectAndKeepVisible(const QUuid &nodeID)
{
    const FlowNode *target = node(nodeID);
    if (!target)
        return;
    const SelectionStep step(*this);
    selectOnly(nodeID);
    keepVisible(*target);
}

void CanvasEditor::setCursor(Cursor cursor)
{
    if (m_cursor == cursor)
        return;
    m_cursor = cursor;
    emit viewStateChanged();
}

void CanvasEditor::setPanTranslation(QPointF translation)
{
    if (m_panTranslation == translation)
        return;
    m_panTranslation = translation;
    emit viewStateChanged();
}

} // namespace fenrow
