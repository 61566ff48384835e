#include "CanvasDriver.h"

#include "canvas/CanvasNavigation.h"
#include "canvas/DialogPresence.h"

namespace fenrow {
namespace {

using testing::CanvasDriver;
using Kind = CanvasKeyCommand::Kind;
using Direction = CanvasKeyCommand::Direction;
using Responder = CanvasInputMonitor::Responder;

TEST(KeyMap, EachCommandWantsExactlyItsOwnModifiers)
{
    struct Case {
        int key;
        Qt::KeyboardModifiers modifiers;
        std::optional<CanvasKeyCommand> command;
    };
    const auto none = std::optional<CanvasKeyCommand>();
    const Case cases[] = {
        {Qt::Key_Return, {}, CanvasKeyCommand::of(Kind::rename)},
        {Qt::Key_Enter, Qt::KeypadModifier, CanvasKeyCommand::of(Kind::rename)},
        {Qt::Key_Return, Qt::ControlModifier, CanvasKeyCommand::of(Kind::toggleDone)},
        {Qt::Key_Enter, Qt::ControlModifier | Qt::KeypadModifier, CanvasKeyCommand::of(Kind::toggleDone)},
        {Qt::Key_Return, Qt::MetaModifier, none},
        {Qt::Key_Return, Qt::ShiftModifier, none},
        {Qt::Key_Tab, {}, CanvasKeyCommand::of(Kind::addAfter)},
        {Qt::Key_Backtab, Qt::ShiftModifier, CanvasKeyCommand::of(Kind::addBefore)},
        {Qt::Key_Backtab, {}, CanvasKeyCommand::of(Kind::addBefore)},
        {Qt::Key_Tab, Qt::ShiftModifier, CanvasKeyCommand::of(Kind::addBefore)},
        {Qt::Key_Backtab, Qt::ShiftModifier | Qt::ControlModifier, none},
        {Qt::Key_Escape, {}, CanvasKeyCommand::of(Kind::deselect)},
        {Qt::Key_Escape, Qt::ShiftModifier, none},
        {Qt::Key_Left, Qt::KeypadModifier, CanvasKeyCommand::move(Direction::left)},
        {Qt::Key_Down, {}, CanvasKeyCommand::move(Direction::down)},
        {Qt::Key_Right, Qt::AltModifier, CanvasKeyCommand::follow(Direction::right)},
        {Qt::Key_Left, Qt::AltModifier, CanvasKeyCommand::follow(Direction::left)},
        {Qt::Key_Up, Qt::AltModifier, none},
        {Qt::Key_Right, Qt::AltModifier | Qt::ShiftModifier, none},
        {Qt::Key_Up, Qt::ControlModifier, none},
        {Qt::Key_A, {}, none},
    };
    for (const Case &c : cases)
        EXPECT_EQ(CanvasKeyMap::command(c.key, c.modifiers), c.command) << std::hex << c.key << " " << c.modifiers.toInt();
    EXPECT_TRUE(CanvasKeyMap::isDelete(Qt::Key_Backspace));
    EXPECT_TRUE(CanvasKeyMap::isDelete(Qt::Key_Delete));
}

TEST(InputMonitor, GuardsKeepKeysFromTheCanvasWhileTextOrADialogHasThem)
{
    CanvasInputMonitor monitor;
    QList<CanvasKeyCommand> commands;
    QList<bool> spaces;
    int deletes = 0;
    bool editing = false;
    QList<QPair<double, double>> pans;
    QList<double> zooms;
    monitor.onKeyCommand = [&](CanvasKeyCommand command) {
        commands << command;
        return true;
    };
    monitor.onSpaceHeldChange = [&](bool held) { spaces << held; };
    monitor.onDeleteSelection = [&] { return ++deletes > 0; };
    monitor.isEditing = [&] { return editing; };
    monitor.onPan = [&](double dx, double dy) { pans << qMakePair(dx, dy); };
    monitor.onZoom = [&](double factor, QPointF) { zooms << factor; };
    CanvasInputMonitor::Context context;
    auto down = [&](int key, Qt::KeyboardModifiers modifiers = {}, bool repeat = false) {
        return monitor.keyDown({key, modifiers, repeat}, context);
    };

    EXPECT_TRUE(down(Qt::Key_Right));
    EXPECT_FALSE(down(Qt::Key_Up, Qt::AltModifier)) << "a key without a command goes on";

    {
        const DialogPresence::Scope outer;
        const DialogPresence::Scope inner;
        EXPECT_EQ(DialogPresence::depth(), 2);
        context.dialogDepth = DialogPresence::depth();
        EXPECT_FALSE(down(Qt::Key_Right));
        EXPECT_TRUE(down(Qt::Key_Delete)) << "delete and space keep their own guards";
        EXPECT_TRUE(down(Qt::Key_Space));
    }
    EXPECT_EQ(DialogPresence::depth(), 0);
    context.dialogDepth = 0;
    context.hasSheet = true;
    EXPECT_FALSE(down(Qt::Key_Tab));
    context.hasSheet = false;

    // Typing in the inspector: the field keeps arrows, Tab, Return and Delete.
    context.focus = Responder::text;
    for (int key : {Qt::Key_Left, Qt::Key_Tab, Qt::Key_Return, Qt::Key_Backspace, Qt::Key_Space})
        EXPECT_FALSE(down(key)) << key;
    context.focus = Responder::table;
    EXPECT_FALSE(down(Qt::Key_Down));
    EXPECT_TRUE(down(Qt::Key_Backspace)) << "only text fields keep Delete";
    context.focus = Responder::canvas;
    editing = true;
    EXPECT_FALSE(down(Qt::Key_Escape)) << "Escape belongs to the title editor";
    EXPECT_FALSE(down(Qt::Key_Delete));
    editing = false;
    EXPECT_EQ(commands.size(), 1);
    EXPECT_EQ(deletes, 2);

    EXPECT_TRUE(down(Qt::Key_Space, {}, true)) << "a repeat is swallowed";
    EXPECT_TRUE(monitor.keyUp({Qt::Key_Space, {}, false}, context));
    EXPECT_FALSE(monitor.keyUp({Qt::Key_Right, {}, false}, context));
    EXPECT_EQ(spaces, (QList<bool>{true, false}));

    context.inCanvasWindow = false;
    EXPECT_FALSE(down(Qt::Key_Right));
    EXPECT_FALSE(monitor.scroll({{0, 3}, true, {}, {}}, context));
    context.inCanvasWindow = true;

    EXPECT_TRUE(monitor.scroll({{2, -1}, false, {}, {}}, context));
    EXPECT_TRUE(monitor.scroll({{5, 7}, true, {}, {}}, context));
    EXPECT_EQ(pans, (QList<QPair<double, double>>{{48, -24}, {5, 7}}));
    EXPECT_FALSE(monitor.scroll({{0, 0}, true, {}, {}}, context));
    EXPECT_FALSE(monitor.scroll({{4, 0}, true, Qt::ControlModifier, {}}, context)) << "sideways does not zoom";
    EXPECT_TRUE(monitor.scroll({{0, 420}, true, Qt::ControlModifier, {}}, context));
    EXPECT_TRUE(monitor.scroll({{0, -220}, false, Qt::ControlModifier, {}}, context));
    EXPECT_TRUE(monitor.magnify(-0.5, {}, context));
    EXPECT_FALSE(monitor.magnify(0, {}, context));
    context.pointerInside = false;
    EXPECT_FALSE(monitor.magnify(0.2, {}, context));
    EXPECT_EQ(zooms, (QList<double>{1.8, 0.6, 0.6})) << "doubling is held to 1.8, steps down to 0.6";
}

class Commands : public CanvasDriver {
protected:
    void select(const QString &title) { editor.selectAndKeepVisible((*this)[title].id); }
    QSet<QUuid> selected() const { return interaction.selectedItemIDs(); }
};

TEST_F(Commands, ArrowsWalkWithinFortyFiveDegreesAndStopWhereNothingLies)
{
    place("a", 300, 400);
    place("b", 600, 400);
    place("c", 500, 200);
    place("d", 300, 100);
    open();
    select("a");
    // c is exactly on the diagonal and qualifies, but b straight ahead scores lower.
    ASSERT_TRUE(key(Qt::Key_Right));
    EXPECT_EQ(selected(), ids({"b"}));
    EXPECT_FALSE(key(Qt::Key_Right)) << "nothing ahead: the key goes on";
    EXPECT_EQ(selected(), ids({"b"}));
    ASSERT_TRUE(key(Qt::Key_Up));
    EXPECT_EQ(selected(), ids({"c"}));
    ASSERT_TRUE(key(Qt::Key_Left));
    EXPECT_EQ(selected(), ids({"d"})) << "d scores 400, a on the diagonal 600";
    ASSERT_TRUE(key(Qt::Key_Down));
    EXPECT_EQ(selected(), ids({"a"})) << "c lies outside the wedge below d";
    EXPECT_EQ(interaction.offset(), QPointF(0, 0)) << "cards well in view do not move the canvas";

    const FlowNode &a = (*this)["a"];
    EXPECT_EQ(CanvasNavigation::spatialNeighbor(a, Direction::right, {&(*this)["d"]}), nullptr)
        << "straight above is outside the wedge";
    EXPECT_EQ(CanvasNavigation::spatialNeighbor(a, Direction::right, {&(*this)["c"]}), &(*this)["c"])
        << "the diagonal belongs to the wedge";
    EXPECT_EQ(CanvasNavigation::spatialNeighbor(a, Direction::up, {&(*this)["c"], &(*this)["d"]}), &(*this)["d"]);
    // Equal scores: the earlier card wins.
    place("e", 500, 600);
    EXPECT_EQ(CanvasNavigation::spatialNeighbor(a, Direction::right, {&(*this)["c"], &(*this)["e"]}), &(*this)["c"]);
    EXPECT_EQ(CanvasNavigation::spatialNeighbor(a, Direction::right, {&(*this)["e"], &(*this)["c"]}), &(*this)["e"]);

    // With two cards selected there is no anchor: arrows go to the card
    // nearest the view's centre, and Tab adds nothing.
    click(screen("a"));
    click(screen("c"), Qt::ShiftModifier);
    const std::size_t count = flow->items().size();
    EXPECT_FALSE(key(Qt::Key_Tab));
    EXPECT_EQ(flow->items().size(), count);
    ASSERT_TRUE(key(Qt::Key_Left));
    EXPECT_EQ(selected(), ids({"b"})) << "(600, 400) is nearest to (500, 400)";
}

TEST_F(Commands, AltRightFollowsTheEdgeToTheSuccessorAtTheNearestHeight)
{
    place("a", 200, 300);
    place("near", 450, 380);
    place("level", 1000, 310);
    place("high", 500, 100);
    link("a", "near");
    link("a", "level");
    link("a", "high");
    open();
    select("a");
    ASSERT_EQ(interaction.offset(), QPointF(0, 0));
    ASSERT_TRUE(key(Qt::Key_Right, Qt::AltModifier));
    EXPECT_EQ(selected(), ids({"level"})) << "the nearest height, not the nearest card";
    EXPECT_NE(interaction.offset(), QPointF(0, 0)) << "a card at the view's edge is brought into view";
    ASSERT_TRUE(key(Qt::Key_Left, Qt::AltModifier));
    EXPECT_EQ(selected(), ids({"a"}));
    EXPECT_FALSE(key(Qt::Key_Up, Qt::AltModifier));
    ASSERT_TRUE(key(Qt::Key_Right));
    EXPECT_EQ(selected(), ids({"near"})) << "plain arrows go by place, not by edges";
    EXPECT_FALSE(key(Qt::Key_Right, Qt::AltModifier)) << "no successors";

    // What a fold hides is passed over.
    store->setCollapsed((*this)["a"], true);
    select("a");
    EXPECT_FALSE(key(Qt::Key_Right, Qt::AltModifier)) << "every successor is folded away";
}

TEST_F(Commands, TabAddsBesideTheSelectionAndReturnRenamesAndCompletes)
{
    place("a", 100, 100);
    place("blocker", 342, 100);
    open();
    select("a");
    ASSERT_TRUE(key(Qt::Key_Tab));
    const QUuid next = *interaction.editingItemID();
    const FlowNode *added = store->node(next);
    ASSERT_NE(added, nullptr);
    EXPECT_EQ(QPointF(added->posX, added->posY), QPointF(342, 236)) << "moved down past the blocker";
    EXPECT_EQ(added->title, QStringLiteral("New task"));
    EXPECT_EQ(selected(), QSet<QUuid>{next});
    EXPECT_EQ(flow->edges()[0]->fromItem(), &(*this)["a"]);
    EXPECT_EQ(interaction.offset(), QPointF(500 - 342, 400 - 236)) << "revealed";
    EXPECT_EQ(undoNames().last(), QStringLiteral("Add next task"));

    EXPECT_FALSE(key(Qt::Key_Backtab, Qt::ShiftModifier)) << "keys go to the title while it is edited";
    editor.finishEditing(QStringLiteral("Write copy"));
    EXPECT_EQ(added->title, QStringLiteral("Write copy"));
    ASSERT_TRUE(key(Qt::Key_Backtab, Qt::ShiftModifier));
    const FlowNode *before = store->node(*interaction.editingItemID());
    EXPECT_EQ(QPointF(before->posX, before->posY), QPointF(100, 236));
    EXPECT_EQ(flow->edges()[1]->toItem(), added);
    EXPECT_EQ(undoNames().mid(undoNames().size() - 3),
              (QStringList{"Add next task", "Rename", "Add task before"}));
    editor.finishEditing();

    ASSERT_TRUE(history.undoFlow(flow->id));
    EXPECT_EQ(flow->items().size(), 3u);
    EXPECT_EQ(selected(), QSet<QUuid>{next}) << "undo brings back the selection it had";

    ASSERT_TRUE(key(Qt::Key_Return));
    EXPECT_EQ(interaction.editingItemID(), next);
    editor.finishEditing();
    store->setStatus(NodeStatus::inProgress, *added);
    ASSERT_TRUE(key(Qt::Key_Return, Qt::ControlModifier));
    EXPECT_TRUE(added->isDone);
    ASSERT_TRUE(key(Qt::Key_Enter, Qt::ControlModifier | Qt::KeypadModifier));
    EXPECT_EQ(added->status(), NodeStatus::inProgress) << "done again undone keeps its earlier state";
    EXPECT_EQ(undoNames().last(), QStringLiteral("Change status"));

    ASSERT_TRUE(key(Qt::Key_Escape));
    EXPECT_TRUE(selected().isEmpty());
    EXPECT_FALSE(key(Qt::Key_Escape)) << "nothing left to deselect";
    EXPECT_FALSE(key(Qt::Key_Return));
}

TEST_F(Commands, DeleteTakesTheFirstKindOfSelectionThatApplies)
{
    place("a", 100, 100);
    place("b", 400, 100);
    place("c", 400, 400);
    link("a", "b", EdgeKind::subtask);
    const DependencyEdge &bc = link("b", "c");
    open();
    EXPECT_FALSE(key(Qt::Key_Delete)) << "nothing selected";

    editor.edgeClicked(bc.id);
    ASSERT_TRUE(key(Qt::Key_Backspace));
    EXPECT_EQ(flow->edges().size(), 1u);
    EXPECT_EQ(undoNames().last(), QStringLiteral("Delete connection"));

    // b goes with its only parent; c stays.
    click(screen("a"));
    click(screen("b"), Qt::ShiftModifier);
    const QSet<QUuid> pair = ids({"a", "b"});
    ASSERT_TRUE(key(Qt::Key_Delete));
    EXPECT_EQ(flow->items().size(), 1u);
    EXPECT_TRUE(selected().isEmpty());
    EXPECT_EQ(undoNames().last(), QStringLiteral("Delete tasks"));
    ASSERT_TRUE(history.undoFlow(flow->id));
    EXPECT_EQ(flow->items().size(), 3u);
    EXPECT_EQ(selected(), pair) << "the same ids come back, selected";

    const FlowFile *file = store->attachFile(
        FlowFileImport::Payload{QStringLiteral("notes.txt"), QStringLiteral("text/plain"), 2, QByteArray("hi")}, 700,
        600, *flow);
    store->linkFile(*file, (*this)["c"]);
    editor.fileLinkClicked(flow->fileLinks()[0]->id);
    ASSERT_TRUE(key(Qt::Key_Delete));
    EXPECT_TRUE(flow->fileLinks().empty());
    EXPECT_EQ(undoNames().last(), QStringLiteral("Unlink file"));
    editor.fileClicked(file->id);
    ASSERT_TRUE(key(Qt::Key_Delete));
    EXPECT_TRUE(file->isTrashed);
    EXPECT_FALSE(interaction.selectedFileID());
    ASSERT_TRUE(history.undoFlow(flow->id));
    EXPECT_FALSE(file->isTrashed) << "the bytes were never gone";
}

} // namespace
} // namespace fenrow
