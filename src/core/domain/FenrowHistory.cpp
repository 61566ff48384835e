#include "FenrowHistory.h"

#include "FenrowStore.h"

namespace fenrow {

FenrowHistory::FenrowHistory(FenrowStore &store, QObject *parent) : QObject(parent), m_store(store)
{
    // Rows changed outside any action (archive, restore, deletion): old
    // snapshots no longer describe the flow.
    connect(&store, &FenrowStore::flowHistoryInvalidated, this, &FenrowHistory::forgetFlow);
}

FenrowHistory::Recording FenrowHistory::begin(const QString &name, const TaskFlow &flow)
{
    m_isPerforming = true;
    CanvasSelection selection;
    if (m_selections.contains(flow.id))
        selection = m_selections.value(flow.id);
    else if (const auto bridge = m_bridges.constFind(flow.id); bridge != m_bridges.constEnd())
        selection = bridge->read();
    return {flow.id, name, capture(flow), selection};
}

FlowSnapshot FenrowHistory::capture(const TaskFlow &flow)
{
    const auto latest = m_latest.constFind(flow.id);
    const bool known = latest != m_latest.constEnd();
    const auto tasks = m_latestTasks.constFind(flow.id);
    const std::optional<quint64> tasksReadAt =
        known && tasks != m_latestTasks.constEnd() ? std::optional(*tasks) : std::nullopt;
    FlowSnapshot snapshot = m_store.captureSnapshot(flow, known ? &*latest : nullptr, tasksReadAt);
    m_latest.insert(flow.id, snapshot);
    m_latestTasks.insert(flow.id, flow.nodesVersion());
    return snapshot;
}

void FenrowHistory::finish(const Recording &recording)
{
    m_isPerforming = false;
    const TaskFlow *flow = m_store.flow(recording.flowID);
    if (!flow)
        return;
    FlowSnapshot after = capture(*flow);
    const auto bridge = m_bridges.constFind(recording.flowID);
    const CanvasSelection selectionAfter = bridge != m_bridges.constEnd() ? bridge->read() : recording.selectionBefore;
    m_selections.insert(recording.flowID, selectionAfter);
    if (after == recording.before && selectionAfter == recording.selectionBefore)
        return;
    push(recording.flowID,
         {recording.name, recording.before, std::move(after), recording.selectionBefore, selectionAfter});
}

void FenrowHistory::push(const QUuid &flowID, Entry entry)
{
    QList<Entry> &stack = m_undoStacks[flowID];
    stack.append(std::move(entry));
    ++m_entriesPushed;
    // Selection steps go before actions, however recent they are.
    qsizetype excess = stack.size() - stackLimit;
    while (excess > 0) {
        const auto selection = std::find_if(stack.begin(), stack.end(),
                                            [](const Entry &candidate) { return candidate.isSelectionOnly(); });
        if (selection == stack.end()) {
            stack.remove(0, excess);
            break;
        }
        stack.erase(selection);
        --excess;
    }
    m_redoStacks.remove(flowID);
    emit stacksChanged();
}

void FenrowHistory::recordSelection(const CanvasSelection &selection, const TaskFlow &flow)
{
    // Selection changes made by an action or an undo are not the user's.
    if (m_isPerforming)
        return;
    const std::optional<CanvasSelection> previous =
        m_selections.contains(flow.id) ? std::optional(m_selections.value(flow.id)) : std::nullopt;
    m_selections.insert(flow.id, selection);
    if (!previous || *previous == selection)
        return;
    push(flow.id, {selectName, std::nullopt, std::nullopt, *previous, selection});
}

void FenrowHistory::rememberSelection(const CanvasSelection &selection, const TaskFlow &flow)
{
    m_selections.insert(flow.id, selection);
}

void FenrowHistory::setSelectionBridge(const QUuid &flowID, SelectionBridge bridge)
{
    m_bridges.insert(flowID, std::move(bridge));
}

void FenrowHistory::removeSelectionBridge(const QUuid &flowID)
{
    m_bridges.remove(flowID);
}

void FenrowHistory::forgetFlow(const QUuid &flowID)
{
    m_undoStacks.remove(flowID);
    m_redoStacks.remove(flowID);
    m_selections.remove(flowID);
    m_latest.remove(flowID);
    m_latestTasks.remove(flowID);
    m_borrowedUndo.removeAll(flowID);
    m_borrowedRedo.removeAll(flowID);
    emit stacksChanged();
}

bool FenrowHistory::canUndo(const QUuid &flowID) const
{
    return !m_undoStacks.value(flowID).isEmpty();
}

bool FenrowHistory::canRedo(const QUuid &flowID) const
{
    return !m_redoStacks.value(flowID).isEmpty();
}

void FenrowHistory::setActiveFlowID(std::optional<QUuid> flowID)
{
    m_activeFlowID = flowID;
    if (flowID) {
        // Its steps are now reached through the canvas; a borrowed step
        // must not be replayed later from another view.
        m_borrowedUndo.removeAll(*flowID);
        m_borrowedRedo.removeAll(*flowID);
    }
}

void FenrowHistory::restore(const QUuid &flowID, const std::optional<FlowSnapshot> &snapshot,
                            const CanvasSelection &selection)
{
    const bool wasPerforming = m_isPerforming;
    m_isPerforming = true;
    if (snapshot) {
        if (const TaskFlow *flow = m_store.flow(flowID)) {
            m_store.applySnapshot(*snapshot, *flow);
            m_latest.insert(flowID, *snapshot);
            m_latestTasks.remove(flowID);
        }
    }
    m_selections.insert(flowID, selection);
    if (const auto bridge = m_bridges.constFind(flowID); bridge != m_bridges.constEnd())
        bridge->write(selection);
    m_isPerforming = wasPerforming;
}

bool FenrowHistory::move(const QUuid &flowID, bool undoing)
{
    QHash<QUuid, QList<Entry>> &from = undoing ? m_undoStacks : m_redoStacks;
    QHash<QUuid, QList<Entry>> &to = undoing ? m_redoStacks : m_undoStacks;
    QList<Entry> stack = from.value(flowID);
    if (stack.isEmpty() || !m_store.flow(flowID))
        return false;
    const Entry entry = stack.takeLast();
    from.insert(flowID, stack);
    if (undoing)
        restore(flowID, entry.before, entry.selectionBefore);
    else
        restore(flowID, entry.after, entry.selectionAfter);
    to[flowID].append(entry);
    emit stacksChanged();
    return true;
}

bool FenrowHistory::undoFlow(const QUuid &flowID)
{
    return move(flowID, true);
}

bool FenrowHistory::redoFlow(const QUuid &flowID)
{
    return move(flowID, false);
}

void FenrowHistory::step(bool undoing)
{
    if (m_activeFlowID) {
        // An empty stack on the canvas does not fall back to borrowed steps.
        move(*m_activeFlowID, undoing);
        return;
    }
    QList<QUuid> &pending = undoing ? m_borrowedUndo : m_borrowedRedo;
    QList<QUuid> &done = undoing ? m_borrowedRedo : m_borrowedUndo;
    if (pending.isEmpty())
        return;
    const QUuid flowID = pending.last();
    const bool applied = move(flowID, undoing);
    pending.removeLast();
    // A stale borrowed step costs one press and is dropped.
    if (applied)
        done.append(flowID);
    emit stacksChanged();
}

void FenrowHistory::undo()
{
    step(true);
}

void FenrowHistory::redo()
{
    step(false);
}

} // namespace fenrow
