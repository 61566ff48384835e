#pragma once

#include "FlowSnapshot.h"
#include "TaskFlow.h"
#include "canvas/CanvasSelection.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QUuid>

#include <functional>
#include <optional>
#include <type_traits>

namespace fenrow {

class FenrowStore;

// Undo and redo by whole-flow snapshots, one pair of stacks per flow, in
// memory only. Every user action is wrapped from outside the store: the
// history captures the flow before and after, and undo writes the earlier
// snapshot back over the live rows. Selection changes on a canvas become
// entries of their own, the first to go when a stack is trimmed.
class FenrowHistory : public QObject {
    Q_OBJECT

public:
    static constexpr int stackLimit = 50;
    static inline const QString selectName = QStringLiteral("Select");

    // The canvas showing a flow lends the history its selection.
    struct SelectionBridge {
        std::function<CanvasSelection()> read;
        std::function<void(const CanvasSelection &)> write;
    };

    struct Entry {
        QString name;
        std::optional<FlowSnapshot> before;
        std::optional<FlowSnapshot> after;
        CanvasSelection selectionBefore;
        CanvasSelection selectionAfter;

        bool isSelectionOnly() const { return !before.has_value(); }
    };

    explicit FenrowHistory(FenrowStore &store, QObject *parent = nullptr);

    // Runs `body` as one undoable action named `name` on `flow`. Nested
    // calls record nothing of their own; an action that changed nothing
    // leaves the stacks, the redo stack included, as they were.
    template <typename Body>
    auto recordAction(const QString &name, const TaskFlow &flow, Body &&body) -> std::invoke_result_t<Body>;
    // The same for a flow that may not be on the canvas (Ready list, Plan
    // Day): the step is also remembered across flows.
    template <typename Body>
    auto recordBorrowedAction(const QString &name, const TaskFlow &flow, Body &&body) -> std::invoke_result_t<Body>;

    // For a change that comes from outside the window (a command, an intent,
    // the capture panel): a plain action when the flow is on the canvas,
    // where Undo reaches it; borrowed otherwise, so Undo reaches it from
    // any other view.
    template <typename Body>
    auto recordFromOutside(const QString &name, const TaskFlow &flow, Body &&body) -> std::invoke_result_t<Body>
    {
        if (m_activeFlowID == flow.id)
            return recordAction(name, flow, std::forward<Body>(body));
        return recordBorrowedAction(name, flow, std::forward<Body>(body));
    }

    void recordSelection(const CanvasSelection &selection, const TaskFlow &flow);
    void rememberSelection(const CanvasSelection &selection, const TaskFlow &flow);
    void setSelectionBridge(const QUuid &flowID, SelectionBridge bridge);
    void removeSelectionBridge(const QUuid &flowID);

    void forgetFlow(const QUuid &flowID);
    bool canUndo(const QUuid &flowID) const;
    bool canRedo(const QUuid &flowID) const;

    // The menu commands: the flow on the canvas, or else the most recent
    // borrowed step.
    void undo();
    void redo();
    bool undoFlow(const QUuid &flowID);
    bool redoFlow(const QUuid &flowID);

    std::optional<QUuid> activeFlowID() const { return m_activeFlowID; }
    void setActiveFlowID(std::optional<QUuid> flowID);

    bool isPerforming() const { return m_isPerforming; }
    const QList<Entry> undoStack(const QUuid &flowID) const { return m_undoStacks.value(flowID); }
    const QList<Entry> redoStack(const QUuid &flowID) const { return m_redoStacks.value(flowID); }
    const QList<QUuid> &borrowedUndo() const { return m_borrowedUndo; }
    const QList<QUuid> &borrowedRedo() const { return m_borrowedRedo; }

signals:
    // Any stack changed: menus re-read canUndo and canRedo.
    void stacksChanged();

private:
    struct Recording {
        QUuid flowID;
        QString name;
        FlowSnapshot before;
        CanvasSelection selectionBefore;
    };

    Recording begin(const QString &name, const TaskFlow &flow);
    FlowSnapshot capture(const TaskFlow &flow);
    void finish(const Recording &recording);
    void push(const QUuid &flowID, Entry entry);
    void restore(const QUuid &flowID, const std::optional<FlowSnapshot> &snapshot, const CanvasSelection &selection);
    bool move(const QUuid &flowID, bool undoing);
    void step(bool undoing);

    FenrowStore &m_store;
    std::optional<QUuid> m_activeFlowID;
    QHash<QUuid, QList<Entry>> m_undoStacks;
    QHash<QUuid, QList<Entry>> m_redoStacks;
    QList<QUuid> m_borrowedUndo;
    QList<QUuid> m_borrowedRedo;
    QHash<QUuid, CanvasSelection> m_selections;
    // The latest snapshot taken or written back per flow: the next capture
    // shares its unchanged rows, so an entry costs what its action changed.
    QHash<QUuid, FlowSnapshot> m_latest;
    // The flow's `nodesVersion` when the latest snapshot's task rows were
    // read from it; none when they were written back (undo may leave the
    // tasks in another order). While it holds, an action's "before" takes
    // those rows whole instead of reading every task again; after the
    // action, the rows of the tasks it did not write are taken as they are.
    QHash<QUuid, quint64> m_latestTasks;
    QHash<QUuid, SelectionBridge> m_bridges;
    bool m_isPerforming = false;
    // Every entry ever pushed, so that an action knows it made one.
    quint64 m_entriesPushed = 0;
};

template <typename Body>
auto FenrowHistory::recordAction(const QString &name, const TaskFlow &flow, Body &&body)
    -> std::invoke_result_t<Body>
{
    if (m_isPerforming)
        return body();
    const Recording recording = begin(name, flow);
    // A refused graph change throws before it writes; the history must
    // still close the action.
    try {
        if constexpr (std::is_void_v<std::invoke_result_t<Body>>) {
            body();
            finish(recording);
        } else {
            auto result = body();
            finish(recording);
            return result;
        }
    } catch (...) {
        finish(recording);
        throw;
    }
}

template <typename Body>
auto FenrowHistory::recordBorrowedAction(const QString &name, const TaskFlow &flow, Body &&body)
    -> std::invoke_result_t<Body>
{
    const QUuid flowID = flow.id;
    // Counted pushes, not the stack's size: a full stack stays at its limit
    // when it takes a step, and the step must be remembered all the same.
    const quint64 before = m_entriesPushed;
    auto remember = [&] {
        if (m_entriesPushed != before) {
            m_borrowedUndo.append(flowID);
            m_borrowedRedo.clear();
            emit stacksChanged();
        }
    };
    if constexpr (std::is_void_v<std::invoke_result_t<Body>>) {
        recordAction(name, flow, std::forward<Body>(body));
        remember();
    } else {
        auto result = recordAction(name, flow, std::forward<Body>(body));
        remember();
        return result;
    }
}

} // namespace fenrow
