// Keyboard commands of the editor and the deletion of what is selected.
#include "CanvasEditor.h"

#include "CanvasEditorSelection.h"
#include "CanvasNavigation.h"
#include "domain/FenrowHistory.h"
#include "domain/FenrowStore.h"

namespace fenrow {

const FlowNode *CanvasEditor::anchorNode() const
{
    const QSet<QUuid> &selected = m_interaction.selectedItemIDs();
    if (selected.size() != 1)
        return nullptr;
    const QUuid id = *selected.begin();
    return isVisible(id) ? node(id) : nullptr;
}

bool CanvasEditor::handleKeyCommand(const CanvasKeyCommand &command)
{
    using Kind = CanvasKeyCommand::Kind;
    using Direction = CanvasKeyCommand::Direction;
    const TaskFlow *current = flow();
    if (!current)
        return false;
    const SelectionStep step(*this);
    const FlowNode *anchor = anchorNode();
    switch (command.kind) {
    case Kind::move: {
        const FlowNode *next = anchor
            ? CanvasNavigation::spatialNeighbor(*anchor, command.direction, visibleNodes())
            : CanvasNavigation::nearest(m_interaction.viewportCenter(), visibleNodes());
        if (!next)
            return false;
        selectAndKeepVisible(next->id);
        return true;
    }
    case Kind::follow: {
        if (!anchor || (command.direction != Direction::left && command.direction != Direction::right))
            return false;
        visibleNodes();
        const FlowNode *next =
            CanvasNavigation::edgeNeighbor(*anchor, command.direction == Direction::right, *current, m_hiddenIDs);
        if (!next)
            return false;
        selectAndKeepVisible(next->id);
        return true;
    }
    case Kind::addAfter:
    case Kind::addBefore: {
        if (!anchor)
            return false;
        const bool after = command.kind == Kind::addAfter;
        const FlowNode *created = m_services.history.recordAction(
            after ? QStringLiteral("Add next task") : QStringLiteral("Add task before"), *current, [&] {
                const NodeSizeResolver &sizes = m_interaction.sizeResolver();
                const FlowNode *added = after ? m_services.store.addNextNode(*anchor, newTaskTitle(), sizes)
                                              : m_services.store.addNodeBefore(*anchor, newTaskTitle(), sizes);
                selectNew(*added);
                return added;
            });
        reveal(created->id, true);
        return true;
    }
    case Kind::rename:
        if (!anchor)
            return false;
        m_interaction.setEditingItemID(anchor->id);
        return true;
    case Kind::toggleDone: {
        if (!anchor)
            return false;
        m_services.history.recordAction(QStringLiteral("Change status"), *current, [&] {
            if (!anchor->isDone) {
                m_services.store.setStatus(NodeStatus::done, *anchor);
                return;
            }
            // Back to the state it had before it was done.
            const NodeStatus earlier = readRaw<NodeStatus>(anchor->statusRaw);
            m_services.store.setStatus(earlier == NodeStatus::done ? NodeStatus::pending : earlier, *anchor);
        });
        return true;
    }
    case Kind::deselect:
        if (m_interaction.selectedItemIDs().isEmpty() && !m_interaction.selectedEdgeID()
            && !m_interaction.selectedFileID() && !m_interaction.selectedFileLinkID())
            return false;
        m_interaction.clearSelection();
        return true;
    }
    return false;
}

bool CanvasEditor::deleteSelection()
{
    const TaskFlow *current = flow();
    if (!current)
        return false;
    const SelectionStep step(*this);
    FenrowHistory &history = m_services.history;
    FenrowStore &store = m_services.store;

    // The first kind of selection that applies is the only one deleted.
    if (const auto linkID = m_interaction.selectedFileLinkID()) {
        if (const FileLink *link = fileLink(*linkID); link && link->file() && link->node()) {
            history.recordAction(QStringLiteral("Unlink file"), *current, [&] {
                store.unlinkFile(*link->file(), *link->node());
                m_interaction.setSelectedFileLinkID(std::nullopt);
            });
            return true;
        }
    }
    if (const auto fileID = m_interaction.selectedFileID()) {
        if (const FlowFile *selected = file(*fileID); selected && !selected->isTrashed) {
            // Trashed, not removed: undo can bring it back with its bytes.
            history.recordAction(QStringLiteral("Delete file"), *current, [&] {
                store.setFileTrashed(*selected, true);
                m_interaction.setSelectedFileID(std::nullopt);
            });
            return true;
        }
    }
    QList<QUuid> doomed;
    for (const FlowNode *candidate : visibleNodes()) {
        if (m_interaction.selectedItemIDs().contains(candidate->id))
            doomed.append(candidate->id);
    }
    if (!doomed.isEmpty()) {
        history.recordAction(QStringLiteral("Delete tasks"), *current, [&] {
            // Deleting one card can take others with it; look each up anew.
            for (const QUuid &id : std::as_const(doomed)) {
                if (const FlowNode *target = node(id))
                    store.deleteNode(*target);
            }
            m_interaction.setSelectedItemIDs({});
        });
        return true;
    }
    if (const auto edgeID = m_interaction.selectedEdgeID()) {
        if (const DependencyEdge *selected = edge(*edgeID)) {
            history.recordAction(QStringLiteral("Delete connection"), *current, [&] {
                store.removeEdge(*selected);
                m_interaction.setSelectedEdgeID(std::nullopt);
            });
            return true;
        }
    }
    return false;
}

} // namespace fenrow
