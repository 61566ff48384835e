#include "TestStore.h"

#include "domain/FenrowHistory.h"

namespace fenrow {
namespace {

using testing::FlowFixture;

class History : public FlowFixture {
protected:
    FenrowHistory history{*store};

    void act(const QString &name, const std::function<void()> &body) { history.recordAction(name, *flow, body); }
    QStringList names(const QList<FenrowHistory::Entry> &stack) const
    {
        QStringList result;
        for (const auto &entry : stack)
            result << entry.name;
        return result;
    }
};

TEST_F(History, NoOpsNestingAndRedoClearing)
{
    act("Add task", [&] { add("a"); });
    act("Rename", [&] { store->setTitle((*this)["a"], QStringLiteral("a")); });
    EXPECT_EQ(names(history.undoStack(flow->id)), QStringList{"Add task"}) << "nothing changed, nothing recorded";

    // A nested action records nothing of its own; the outer name wins.
    act("Add next", [&] {
        history.recordAction(QStringLiteral("Add task"), *flow, [&] { add("b"); });
        link("a", "b");
    });
    EXPECT_EQ(names(history.undoStack(flow->id)), (QStringList{"Add task", "Add next"}));

    ASSERT_TRUE(history.undoFlow(flow->id));
    EXPECT_EQ(flow->items().size(), 1u);
    EXPECT_TRUE(flow->edges().empty());
    // A no-op after an undo keeps the redo stack.
    act("Rename", [&] { store->setTitle((*this)["a"], QStringLiteral("a")); });
    EXPECT_TRUE(history.canRedo(flow->id));

    // Another flow's action leaves this flow's redo alone; this flow's clears it.
    const TaskFlow *other = store->addFlow(QStringLiteral("Other"));
    history.recordAction(QStringLiteral("Add task"), *other, [&] { store->addNode(QStringLiteral("x"), *other); });
    EXPECT_TRUE(history.canRedo(flow->id));
    act("Move", [&] { store->moveNode((*this)["a"], 10, 10); });
    EXPECT_FALSE(history.canRedo(flow->id));

    // A refused change still closes the action.
    EXPECT_THROW(act("Connect", [&] { link("a", "a"); }), GraphMutationError);
    EXPECT_FALSE(history.isPerforming());
}

TEST_F(History, UndoOfADeletionBringsBackTheSameRows)
{
    addAll("abc");
    link("a", "b");
    link("b", "c", EdgeKind::subtask);
    store->moveNode((*this)["b"], 120, -40);
    store->setCollapsed((*this)["b"], true);
    const FlowNode &b = (*this)["b"];
    const QUuid bID = b.id;
    const QDateTime created = b.createdAt;
    const qint64 order = b.order;
    QList<QUuid> edgeIDs;
    for (const DependencyEdge *edge : flow->edges())
        edgeIDs << edge->id;
    const FlowNode *a = &(*this)["a"];

    act("Delete tasks", [&] { store->deleteNode(b); });
    EXPECT_EQ(flow->items().size(), 1u);
    ASSERT_TRUE(history.undoFlow(flow->id));

    const FlowNode *restored = store->node(bID);
    ASSERT_NE(restored, nullptr);
    EXPECT_EQ(restored->createdAt, created);
    EXPECT_EQ(restored->order, order);
    EXPECT_EQ(restored->posX, 120);
    EXPECT_EQ(restored->posY, -40);
    EXPECT_FALSE(restored->isCollapsed) << "folding is not part of the history";
    EXPECT_EQ(store->node(a->id), a) << "a row that survived is the same object";
    QList<QUuid> restoredEdges;
    for (const DependencyEdge *edge : flow->edges())
        restoredEdges << edge->id;
    EXPECT_EQ(QSet<QUuid>(restoredEdges.begin(), restoredEdges.end()), QSet<QUuid>(edgeIDs.begin(), edgeIDs.end()));

    // And it reached the file.
    ASSERT_TRUE(history.redoFlow(flow->id));
    EXPECT_EQ(store->node(bID), nullptr);
    ASSERT_TRUE(history.undoFlow(flow->id));
    store->save();
    EXPECT_FALSE(store->hasChanges());
}

TEST_F(History, EntriesShareTheRowsTheirActionsLeftAlone)
{
    addAll("abc");
    act("Move", [&] { store->moveNode((*this)["a"], 10, 10); });
    act("Move", [&] { store->moveNode((*this)["b"], 20, 20); });
    const QList<FenrowHistory::Entry> stack = history.undoStack(flow->id);
    ASSERT_EQ(stack.size(), 2);
    const FlowSnapshot &first = *stack[0].after;
    const FlowSnapshot &second = *stack[1].before;
    const FlowSnapshot &last = *stack[1].after;
    ASSERT_EQ(first.items.size(), 3);
    for (qsizetype i = 0; i < 3; ++i)
        EXPECT_EQ(first.items.handle(i), second.items.handle(i)) << "one action's after is the next one's before";
    qsizetype shared = 0;
    for (qsizetype i = 0; i < 3; ++i)
        shared += second.items.handle(i) == last.items.handle(i) ? 1 : 0;
    EXPECT_EQ(shared, 2) << "only the moved card has a row of its own";

    // A change made outside any action is seen by value, not missed
    // because a row with that id was kept already.
    const QPointF cAt((*this)["c"].posX, (*this)["c"].posY);
    store->setTitle((*this)["c"], QStringLiteral("renamed quietly"));
    act("Move", [&] { store->moveNode((*this)["c"], 30, 30); });
    ASSERT_TRUE(history.undoFlow(flow->id));
    const FlowNode &c = (*this)["c"];
    EXPECT_EQ(QPointF(c.posX, c.posY), cAt);
    EXPECT_EQ(c.title, QStringLiteral("renamed quietly"));
    // So is a line drawn outside any action, though no task changed since
    // the last action's "after".
    act("Move", [&] { store->moveNode((*this)["c"], 60, 60); });
    store->addEdge((*this)["a"], (*this)["c"], EdgeSource::manual, EdgeKind::dependency);
    act("Move", [&] { store->moveNode((*this)["c"], 70, 70); });
    ASSERT_TRUE(history.undoFlow(flow->id));
    EXPECT_EQ(QPointF((*this)["c"].posX, (*this)["c"].posY), QPointF(60, 60));
    EXPECT_EQ(flow->edges().size(), 1);
    // And one taken away in an action is gone from its "after".
    act("Disconnect", [&] { store->removeEdge(*flow->edges()[0]); });
    ASSERT_TRUE(history.undoFlow(flow->id));
    EXPECT_EQ(flow->edges().size(), 1);
    ASSERT_TRUE(history.redoFlow(flow->id));
    EXPECT_EQ(flow->edges().size(), 0);
    ASSERT_TRUE(history.undoFlow(flow->id));
    ASSERT_TRUE(history.undoFlow(flow->id));

    // Undo through shared rows brings each card back in turn.
    const QPointF bMoved((*this)["b"].posX, (*this)["b"].posY);
    ASSERT_TRUE(history.undoFlow(flow->id));
    EXPECT_NE(QPointF((*this)["b"].posX, (*this)["b"].posY), bMoved);
    EXPECT_EQ(QPointF((*this)["a"].posX, (*this)["a"].posY), QPointF(10, 10));
    ASSERT_TRUE(history.redoFlow(flow->id));
    EXPECT_EQ(QPointF((*this)["b"].posX, (*this)["b"].posY), QPointF(20, 20));

    // In a larger flow the list of rows is shared too, all but the stretch
    // around the moved card: an entry does not cost a handle per task.
    for (int i = 0; i < 3 * SharedRows<FlowSnapshot::Item>::chunkSize; ++i)
        add(QStringLiteral("t%1").arg(i));
    act("Move", [&] { store->moveNode((*this)["a"], 40, 40); });
    act("Move", [&] { store->moveNode((*this)["a"], 50, 50); });
    const QList<FenrowHistory::Entry> moves = history.undoStack(flow->id);
    const FlowSnapshot &large = *moves.last().after;
    const FlowSnapshot &larger = *moves.last().before;
    qsizetype sameHandles = 0;
    for (qsizetype i = 0; i < large.items.size(); ++i)
        sameHandles += &large.items.handle(i) == &larger.items.handle(i) ? 1 : 0;
    EXPECT_EQ(sameHandles, large.items.size() - SharedRows<FlowSnapshot::Item>::chunkSize)
        << "one stretch of handles of its own";
}

TEST_F(History, TrimmingSacrificesSelectionStepsFirst)
{
    add("a");
    const CanvasSelection none;
    const CanvasSelection a{{(*this)["a"].id}, std::nullopt};
    history.recordSelection(none, *flow);
    EXPECT_TRUE(history.undoStack(flow->id).isEmpty()) << "the first selection is only a baseline";
    for (int i = 0; i < 24; ++i)
        act(QStringLiteral("Move %1").arg(i), [&, i] { store->moveNode((*this)["a"], i + 1, 0); });
    history.recordSelection(a, *flow);
    history.recordSelection(a, *flow);
    for (int i = 24; i < 49; ++i)
        act(QStringLiteral("Move %1").arg(i), [&, i] { store->moveNode((*this)["a"], i + 1, 0); });
    ASSERT_EQ(history.undoStack(flow->id).size(), 50) << "a repeated selection makes no entry";

    // The 51st entry pushes out the selection step, however recent, and
    // the oldest action stays.
    act("Move 49", [&] { store->moveNode((*this)["a"], 100, 0); });
    QStringList stack = names(history.undoStack(flow->id));
    EXPECT_EQ(stack.size(), 50);
    EXPECT_FALSE(stack.contains("Select"));
    EXPECT_EQ(stack.first(), "Move 0");

    // With only actions left, the oldest goes.
    act("Move 50", [&] { store->moveNode((*this)["a"], 101, 0); });
    stack = names(history.undoStack(flow->id));
    EXPECT_EQ(stack.size(), 50);
    EXPECT_EQ(stack.first(), "Move 1");
    EXPECT_EQ(stack.last(), "Move 50");
}

TEST_F(History, SelectionsAndBridges)
{
    addAll("ab");
    CanvasSelection onCanvas{{(*this)["a"].id}, std::nullopt};
    history.setSelectionBridge(flow->id, {[&] { return onCanvas; }, [&](const CanvasSelection &s) { onCanvas = s; }});
    history.rememberSelection(onCanvas, *flow);

    act("Add task", [&] {
        add("c");
        onCanvas = {{(*this)["c"].id}, std::nullopt};
    });
    const CanvasSelection afterAdd = onCanvas;
    ASSERT_TRUE(history.undoFlow(flow->id));
    EXPECT_EQ(onCanvas, (CanvasSelection{{(*this)["a"].id}, std::nullopt})) << "undo puts the selection back";
    ASSERT_TRUE(history.redoFlow(flow->id));
    EXPECT_EQ(onCanvas, afterAdd);

    // A selection change during an undo makes no entry.
    history.setSelectionBridge(flow->id, {[&] { return onCanvas; },
                                          [&](const CanvasSelection &s) {
                                              onCanvas = s;
                                              history.recordSelection(s, *flow);
                                          }});
    const qsizetype before = history.undoStack(flow->id).size();
    history.undoFlow(flow->id);
    EXPECT_EQ(history.undoStack(flow->id).size(), before - 1);
}

TEST_F(History, BorrowedStepsAndTheActiveFlow)
{
    add("a");
    const TaskFlow *other = store->addFlow(QStringLiteral("Other"));
    const FlowNode *x = store->addNode(QStringLiteral("x"), *other);

    // From the Ready list: no canvas, steps are borrowed across flows.
    history.recordBorrowedAction(QStringLiteral("Change status"), *flow,
                                 [&] { store->setStatus(NodeStatus::done, (*this)["a"]); });
    history.recordBorrowedAction(QStringLiteral("Change status"), *other,
                                 [&] { store->setStatus(NodeStatus::done, *x); });
    history.recordBorrowedAction(QStringLiteral("Change status"), *other,
                                 [&] { store->setStatus(NodeStatus::done, *x); });
    EXPECT_EQ(history.borrowedUndo(), (QList<QUuid>{flow->id, other->id})) << "a no-op borrows nothing";

    history.undo();
    EXPECT_FALSE(x->isDone);
    EXPECT_EQ(history.borrowedRedo(), QList<QUuid>{other->id});

    // Opening a flow on the canvas takes it out of both borrowed lists.
    history.setActiveFlowID(other->id);
    EXPECT_EQ(history.borrowedUndo(), QList<QUuid>{flow->id});
    EXPECT_TRUE(history.borrowedRedo().isEmpty());
    history.undo();
    EXPECT_TRUE((*this)["a"].isDone) << "with a flow on the canvas, its empty stack does not fall back";

    // A deleted flow is forgotten, so the next undo goes elsewhere.
    history.setActiveFlowID(std::nullopt);
    history.recordBorrowedAction(QStringLiteral("Change status"), *other,
                                 [&] { store->setStatus(NodeStatus::done, *x); });
    store->deleteFlow(*other);
    EXPECT_EQ(history.borrowedUndo(), QList<QUuid>{flow->id});
    history.undo();
    EXPECT_FALSE((*this)["a"].isDone);

    // A full stack still takes a borrowed step, and undo finds it: the
    // stack stays at its limit when it grows by one.
    const FlowNode &a = (*this)["a"];
    for (int i = 0; i < FenrowHistory::stackLimit; ++i)
        history.recordAction(QStringLiteral("Rename"), *flow,
                             [&, i] { store->setTitle(a, QStringLiteral("a%1").arg(i)); });
    ASSERT_EQ(history.undoStack(flow->id).size(), FenrowHistory::stackLimit);
    history.recordBorrowedAction(QStringLiteral("Change status"), *flow,
                                 [&] { store->setStatus(NodeStatus::done, a); });
    EXPECT_EQ(history.borrowedUndo(), QList<QUuid>{flow->id});
    history.undo();
    EXPECT_FALSE(a.isDone) << "the tick of a full stack is undone";
}

} // namespace
} // namespace fenrow
