#include "CanvasDriver.h"

#include <QSignalSpy>

namespace fenrow {
namespace {

using testing::CanvasDriver;
using Mode = CanvasEditor::BackgroundDragMode;
using Cursor = CanvasEditor::Cursor;

class Gestures : public CanvasDriver {
protected:
    // A default card at scale 1 has its port 105 right of its centre.
    static QPointF port(QPointF center) { return center + QPointF(105, 0); }
    // Just inside the bottom right corner of the card as it is now.
    QPointF grip(const QString &title) const
    {
        return interaction.toScreen(interaction.frame((*this)[title]).bottomRight()) - QPointF(5, 5);
    }
};

TEST_F(Gestures, AGroupDragSnapsTheGrabbedCardAndUndoRestoresEveryPosition)
{
    preferences.setGridEnabled(true);
    place("a", 100, 100);
    place("b", 400, 130);
    place("c", 700, 100);
    open();
    click(screen("a"));
    click(screen("b"), Qt::ShiftModifier);
    ASSERT_EQ(interaction.selectedItemIDs(), ids({"a", "b"}));

    // a's top left corner is at (-5, 40); moved by (37, 22) it would be at
    // (32, 62), and the grid takes it to (30, 60).
    const QPointF from = screen("a");
    pointer.press(from, {});
    pointer.move(from + QPointF(20, 10), {});
    pointer.move(from + QPointF(37, 22), {});
    ASSERT_TRUE(interaction.nodeDrag());
    EXPECT_EQ(interaction.nodeDrag()->itemIDs, ids({"a", "b"}));
    EXPECT_EQ(interaction.nodeDrag()->translation, QPointF(35, 20));
    EXPECT_EQ(position("a"), QPointF(100, 100)) << "nothing is written while the drag runs";
    EXPECT_EQ(interaction.effectiveCenter((*this)["b"].id, position("b")), QPointF(435, 150));
    pointer.release(from + QPointF(37, 22), {});

    EXPECT_FALSE(interaction.nodeDrag());
    EXPECT_EQ(position("a"), QPointF(135, 120));
    EXPECT_EQ(position("b"), QPointF(435, 150));
    EXPECT_EQ(position("c"), QPointF(700, 100));
    ASSERT_EQ(undoNames().last(), QStringLiteral("Move tasks"));

    ASSERT_TRUE(history.undoFlow(flow->id));
    EXPECT_EQ(position("a"), QPointF(100, 100));
    EXPECT_EQ(position("b"), QPointF(400, 130));
    EXPECT_EQ(interaction.selectedItemIDs(), ids({"a", "b"}));
    ASSERT_TRUE(history.redoFlow(flow->id));
    EXPECT_EQ(position("b"), QPointF(435, 150));
}

TEST_F(Gestures, AClickWithinTheThresholdSelectsAndMovesNothing)
{
    place("a", 100, 100);
    place("b", 400, 100);
    open();
    click(screen("b"));
    const int focusBefore = focusRequests;

    // Four units on both axes is still a click.
    drag(screen("a"), screen("a") + QPointF(4, -4));
    EXPECT_EQ(interaction.selectedItemIDs(), ids({"a"}));
    EXPECT_EQ(position("a"), QPointF(100, 100));
    EXPECT_FALSE(interaction.nodeDrag());
    EXPECT_EQ(focusRequests, focusBefore + 1);
    EXPECT_EQ(undoNames(), (QStringList{"Select", "Select"})) << "the click is a selection step, not a move";

    // Dragging a card that is not selected takes the selection with it.
    drag(screen("b"), screen("b") + QPointF(50, 0));
    EXPECT_EQ(interaction.selectedItemIDs(), ids({"b"}));
    EXPECT_EQ(position("b"), QPointF(450, 100));
    EXPECT_EQ(position("a"), QPointF(100, 100));
    EXPECT_EQ(undoNames().last(), QStringLiteral("Move"));

    // Ctrl-click is a plain click; Shift-click toggles.
    click(screen("a"), Qt::ControlModifier);
    EXPECT_EQ(interaction.selectedItemIDs(), ids({"a"}));
    click(screen("b"), Qt::ShiftModifier);
    click(screen("a"), Qt::ShiftModifier);
    EXPECT_EQ(interaction.selectedItemIDs(), ids({"b"}));

    // Positions past the edge of the canvas are held to it, per axis.
    editor.cardDragChanged((*this)["b"].id, {30000, 10});
    editor.cardDragEnded((*this)["b"].id, {30000, 10}, {});
    EXPECT_EQ(position("b"), QPointF(20000, 110));
}

TEST_F(Gestures, ACycleIsRefusedWithABannerThatLastsTwoSecondsAfterTheLatestRefusal)
{
    place("a", 100, 100);
    place("b", 500, 100);
    open();
    drag(port(screen("a")), screen("b"));
    ASSERT_EQ(flow->edges().size(), 1u);
    EXPECT_EQ(undoNames().last(), QStringLiteral("Connect"));
    EXPECT_FALSE(interaction.pendingConnection());

    const QPointF drop = screen("a") + QPointF(10, 5);
    pointer.press(port(screen("b")), {});
    pointer.move(drop, {});
    ASSERT_TRUE(interaction.pendingConnection());
    EXPECT_EQ(interaction.pendingConnection()->current, drop);
    pointer.release(drop, {});
    ASSERT_TRUE(interaction.rejection());
    EXPECT_EQ(interaction.rejection()->location, drop);
    EXPECT_FALSE(interaction.pendingConnection());
    EXPECT_EQ(flow->edges().size(), 1u);
    EXPECT_EQ(undoNames(), (QStringList{"Connect"})) << "a refused connection leaves no step";

    wait(1500);
    const QUuid first = interaction.rejection()->id;
    drag(port(screen("b")), screen("a"));
    ASSERT_TRUE(interaction.rejection());
    EXPECT_NE(interaction.rejection()->id, first);
    wait(1500);
    EXPECT_TRUE(interaction.rejection()) << "the second refusal restarted the wait";
    wait(499);
    EXPECT_TRUE(interaction.rejection());
    wait(1);
    EXPECT_FALSE(interaction.rejection());
    EXPECT_EQ(scheduler.pendingCount(), 0);
}

TEST_F(Gestures, TheRubberBandAddsWithShiftAndCatchesEdgesWhenItMissesCards)
{
    place("a", 100, 100);
    place("b", 400, 100);
    place("c", 100, 500);
    link("a", "c");
    open();
    click(screen("a"));
    const int focusBefore = focusRequests;

    drag({700, 600}, {800, 700}, Qt::ShiftModifier);
    EXPECT_EQ(interaction.selectedItemIDs(), ids({"a"})) << "an additive band that catches nothing changes nothing";
    EXPECT_EQ(focusRequests, focusBefore);

    // Across the line from a to c, between the cards.
    pointer.press({50, 250}, {});
    pointer.move({100, 300}, {});
    pointer.move({150, 330}, {});
    EXPECT_EQ(interaction.marquee(), QRectF(50, 250, 100, 80));
    EXPECT_EQ(editor.backgroundDragMode(), Mode::marquee);
    pointer.release({150, 330}, {});
    EXPECT_FALSE(interaction.marquee());
    EXPECT_TRUE(interaction.selectedItemIDs().isEmpty());
    EXPECT_EQ(interaction.selectedEdgeID(), flow->edges()[0]->id);

    drag({700, 600}, {800, 700}, Qt::ShiftModifier);
    EXPECT_EQ(interaction.selectedEdgeID(), flow->edges()[0]->id) << "nor does it drop the edge";

    // Touching a card's border is enough.
    drag({-50, -50}, {295, 160});
    EXPECT_EQ(interaction.selectedItemIDs(), ids({"a", "b"}));
    EXPECT_FALSE(interaction.selectedEdgeID());
    drag({-60, 430}, {-4, 445}, Qt::ShiftModifier);
    EXPECT_EQ(interaction.selectedItemIDs(), ids({"a", "b", "c"}));
    EXPECT_FALSE(editor.backgroundDragMode());
}

TEST_F(Gestures, APanStopsAtTheCardsWhereverAMoveOrADragTookThem)
{
    place("near", 100, 100);
    const FlowNode &far = place("far", 300, 100);
    open();
    const auto stop = [&] {
        editor.pan(-100000, 0);
        return interaction.offset().x();
    };
    const double first = stop();
    store->moveNode(far, 2300, 100);
    EXPECT_EQ(stop(), first - 2000) << "a card moved further out lets the view follow it";
    interaction.setNodeDrag(NodeDrag{{far.id}, QPointF(500, 0)});
    EXPECT_EQ(stop(), first - 2500) << "and one dragged further still";
    interaction.setNodeDrag(std::nullopt);
    store->moveNode(far, 300, 100);
    EXPECT_EQ(stop(), first) << "brought back, it holds the view back again";
}

TEST_F(Gestures, AHandToolPanStaysAPanAndTheViewportIsSavedOnceAfterItSettles)
{
    place("a", 100, 100);
    open();
    QSignalSpy saves(&*store, &FenrowStore::changed);
    ASSERT_TRUE(key(Qt::Key_Space));
    EXPECT_EQ(editor.cursor(), Cursor::openHand);

    pointer.press({600, 600}, {});
    pointer.move({610, 620}, {});
    EXPECT_EQ(editor.backgroundDragMode(), Mode::pan);
    EXPECT_EQ(editor.cursor(), Cursor::closedHand);
    ASSERT_TRUE(keyUp(Qt::Key_Space));
    EXPECT_EQ(editor.cursor(), Cursor::closedHand) << "the hand stays closed while it holds the canvas";
    pointer.move({650, 640}, {});
    EXPECT_EQ(editor.panTranslation(), QPointF(50, 40));
    EXPECT_EQ(editor.effectiveOffset(), QPointF(50, 40));
    EXPECT_EQ(interaction.offset(), QPointF(0, 0)) << "the offset moves once, at the end";
    EXPECT_FALSE(interaction.marquee());
    pointer.release({650, 640}, {});
    EXPECT_EQ(interaction.offset(), QPointF(50, 40));
    EXPECT_EQ(editor.panTranslation(), QPointF(0, 0));
    EXPECT_EQ(editor.cursor(), Cursor::arrow);
    EXPECT_FALSE(editor.grabbing());

    // Scrolling on: every event restarts the 0.2 s wait.
    for (int i = 0; i < 5; ++i) {
        ASSERT_TRUE(wheel({0, -10}));
        wait(150);
    }
    EXPECT_EQ(saves.count(), 0);
    wait(50);
    EXPECT_EQ(saves.count(), 1);
    EXPECT_EQ(flow->viewportOffsetY, interaction.offset().y());
    EXPECT_EQ(interaction.offset(), QPointF(50, -10));
    EXPECT_TRUE(flow->hasBeenFramed);
    EXPECT_TRUE(undoNames().isEmpty()) << "moving the view is not an undoable change";

    // A notched wheel moves 24 per notch; with Ctrl it zooms around the pointer.
    wheel({0, 1}, false);
    EXPECT_EQ(interaction.offset(), QPointF(50, 14));
    const QPointF under = interaction.toCanvas({300, 300});
    wheel({0, 11}, false, Qt::ControlModifier, {300, 300});
    EXPECT_DOUBLE_EQ(interaction.scale(), std::sqrt(2.0));
    EXPECT_NEAR(interaction.toCanvas({300, 300}).x(), under.x(), 1e-9);
}

TEST_F(Gestures, ResizingSnapsHoldsTheLimitsAndKeepsTheTopLeftCorner)
{
    preferences.setGridEnabled(true);
    place("a", 100, 100);
    open();
    const QPointF corner = grip("a");
    pointer.press(corner, {});
    pointer.move(corner + QPointF(47, 13), {});
    ASSERT_TRUE(interaction.nodeResize());
    EXPECT_EQ(interaction.nodeResize()->size, (NodeSize{270, 120}));
    EXPECT_EQ(interaction.nodeResize()->center, QPointF(130, 100));
    pointer.move(corner + QPointF(900, -400), {});
    EXPECT_EQ(interaction.nodeResize()->size, (NodeSize{480, 90}));
    pointer.release(corner + QPointF(47, 13), {});

    const FlowNode &a = (*this)["a"];
    EXPECT_FALSE(interaction.nodeResize());
    EXPECT_EQ(a.manualWidth, 270);
    EXPECT_EQ(a.manualHeight, 120);
    EXPECT_EQ(position("a"), QPointF(130, 100));
    EXPECT_EQ(undoNames(), (QStringList{"Resize"}));

    drag(grip("a"), grip("a") + QPointF(3, 3));
    EXPECT_EQ(undoNames(), (QStringList{"Resize"})) << "a nudge within the threshold is no resize";
    editor.resetCardSize(a.id);
    EXPECT_FALSE(a.hasManualSize());
    EXPECT_EQ(undoNames().last(), QStringLiteral("Reset size"));
}

TEST_F(Gestures, AnEdgeEndMovesToAnotherCardUnlessThatMakesACycle)
{
    place("a", 100, 100);
    place("b", 500, 100);
    place("c", 500, 450);
    place("d", 100, 450);
    const DependencyEdge &ab = link("a", "b");
    link("b", "c");
    link("c", "d");
    open();
    click({300, 100});
    ASSERT_EQ(interaction.selectedEdgeID(), ab.id);

    // The target handle sits where the line meets b's border.
    drag({395, 100}, screen("c"));
    EXPECT_EQ(ab.toItem(), &(*this)["c"]);
    EXPECT_EQ(interaction.selectedEdgeID(), ab.id);
    EXPECT_FALSE(interaction.edgeReconnect());
    EXPECT_EQ(undoNames().last(), QStringLiteral("Reconnect"));

    // Moving a's end to d would make d wait for c, which waits for d.
    const QPointF sourceHandle = interaction.toScreen(
        CanvasGeometry::clipToCard(position("a"), position("c"), NodeSizeResolver::defaultSize));
    drag(sourceHandle, screen("d"));
    EXPECT_TRUE(interaction.rejection());
    EXPECT_EQ(interaction.selectedEdgeID(), ab.id);
    EXPECT_EQ(ab.fromItem(), &(*this)["a"]);
    EXPECT_EQ(ab.toItem(), &(*this)["c"]);
}

TEST_F(Gestures, FileCardsMoveLinkAndReportRefusedDrops)
{
    place("a", 500, 100);
    const FlowFile *file =
        store->attachFile(FlowFileImport::Payload{QStringLiteral("plan.pdf"), QStringLiteral("application/pdf"), 3,
                                                  QByteArray("pdf")},
                          150, 400, *flow);
    open();
    click({150, 400});
    EXPECT_EQ(interaction.selectedFileID(), file->id);
    EXPECT_TRUE(interaction.selectedItemIDs().isEmpty());

    drag({150, 400}, {190, 420});
    EXPECT_EQ(file->posX, 190);
    EXPECT_EQ(file->posY, 420);
    EXPECT_EQ(undoNames().last(), QStringLiteral("Move file"));

    drag({190 + 105, 420}, screen("a"));
    ASSERT_EQ(flow->fileLinks().size(), 1u);
    EXPECT_EQ(flow->fileLinks()[0]->node(), &(*this)["a"]);
    EXPECT_EQ(undoNames().last(), QStringLiteral("Link file"));
    EXPECT_FALSE(interaction.pendingFileLink());

    // A point on the line between the two cards, clear of both.
    click({350, 260});
    EXPECT_EQ(interaction.selectedFileLinkID(), flow->fileLinks()[0]->id);
    EXPECT_FALSE(interaction.selectedFileID());

    editor.fileDropFailed(FlowFileImport::TooLarge{30000000}, QStringLiteral("huge.iso"), {40, 50});
    ASSERT_TRUE(interaction.fileDropFailure());
    EXPECT_EQ(interaction.fileDropFailure()->location, QPointF(40, 50));
    wait(3999);
    EXPECT_TRUE(interaction.fileDropFailure());
    wait(1);
    EXPECT_FALSE(interaction.fileDropFailure());
}

TEST_F(Gestures, SelectionStepsAreUndoneAndVanishedCardsArePruned)
{
    place("a", 100, 100);
    place("b", 400, 100);
    open();
    click(screen("a"));
    click(screen("b"));
    doubleClick(screen("b"));
    EXPECT_EQ(interaction.editingItemID(), (*this)["b"].id);
    EXPECT_EQ(undoNames(), (QStringList{"Select", "Select"}));
    ASSERT_TRUE(history.undoFlow(flow->id));
    EXPECT_EQ(interaction.selectedItemIDs(), ids({"a"}));

    click(screen("b"));
    const qsizetype steps = history.undoStack(flow->id).size();
    interaction.setEditingItemID((*this)["b"].id);
    store->deleteNode((*this)["b"]);
    EXPECT_TRUE(interaction.selectedItemIDs().isEmpty());
    EXPECT_FALSE(interaction.editingItemID());
    EXPECT_EQ(history.undoStack(flow->id).size(), steps) << "pruning is remembered, not recorded";
}

TEST_F(Gestures, FirstFramingFitsUntilSavedThenTakesTheStoredViewport)
{
    place("a", 0, 0);
    place("b", 2000, 0);
    activeFlow.setPendingSeedFlowID(flow->id);
    editor.appear({0, 0});
    EXPECT_FALSE(editor.didInitViewport()) << "no size, no framing";
    editor.setViewportSize({1000, 800});
    EXPECT_TRUE(editor.didInitViewport());
    EXPECT_DOUBLE_EQ(interaction.scale(), 904.0 / 2210);
    EXPECT_FALSE(flow->hasBeenFramed);

    // The pending first task of a new flow was added at the view's centre.
    EXPECT_FALSE(activeFlow.pendingSeedFlowID());
    ASSERT_EQ(flow->items().size(), 3u);
    ASSERT_TRUE(interaction.editingItemID());
    EXPECT_EQ(store->node(*interaction.editingItemID())->title, QStringLiteral("New task"));
    EXPECT_EQ(undoNames(), (QStringList{"Add task"}));

    editor.setViewportSize({500, 400});
    EXPECT_LT(interaction.scale(), 0.41) << "a new size fits again until the flow is framed";
    editor.persistViewport();
    ASSERT_TRUE(flow->hasBeenFramed);
    const double kept = interaction.scale();
    editor.setViewportSize({1200, 900});
    EXPECT_EQ(interaction.scale(), kept);

    store->setViewport(*flow, 10, 20, 5);
    CanvasInteraction another;
    CanvasEditor reopened({*store, history, preferences, scheduler}, flow->id, another);
    reopened.appear({1000, 800});
    EXPECT_EQ(another.scale(), 2.5) << "held to the zoom limits";
    EXPECT_TRUE(reopened.didInitViewport());
}

TEST_F(Gestures, RequestsAreTakenOnlyByTheirOwnFlow)
{
    place("a", 100, 100);
    const FlowNode &child = place("child", 3000, 2000);
    const DependencyEdge &down = link("a", "child", EdgeKind::subtask);
    store->setCollapsed((*this)["a"], true);
    open();
    ASSERT_FALSE(editor.isVisible(child.id));
    EXPECT_FALSE(editor.isDrawn(down)) << "no line into a fold";

    const QUuid elsewhere = QUuid::createUuid();
    zooms.post(CanvasZoom::Kind::zoomIn, elsewhere);
    EXPECT_TRUE(zooms.pending()) << "left for the canvas of that flow";
    EXPECT_EQ(interaction.scale(), 1);
    zooms.post(CanvasZoom::Kind::zoomIn, flow->id);
    EXPECT_FALSE(zooms.pending());
    EXPECT_EQ(interaction.scale(), 1.25);
    EXPECT_EQ(flow->viewportScale, 1.25) << "zoom commands save at once";

    reveals.post(child.id, flow->id);
    EXPECT_FALSE(reveals.pending());
    EXPECT_FALSE((*this)["a"].isCollapsed) << "the folded branch opens";
    EXPECT_EQ(interaction.selectedItemIDs(), ids({"child"}));
    EXPECT_EQ(interaction.offset(), QPointF(500 - 3000 * 1.25, 400 - 2000 * 1.25));
    EXPECT_EQ(flow->viewportOffsetX, interaction.offset().x());
}

// The editor keeps its visible list and scene across changes that leave
// places, sizes, folds and colours alone; a card moved must be hit where
// it went and a colour changed must reach the filter at once.
TEST_F(Gestures, AMoveReachesThePointerAndAColourTheFilterAtOnce)
{
    const FlowNode &a = place("a", 100, 100);
    place("b", 600, 100);
    const DependencyEdge &ab = link("a", "b");
    store->setColor(NodeColor::blue, a);
    preferences.setFilterMode(FilterMode::hide);
    open();
    CanvasColorFilter blue;
    blue.toggle(NodeColor::blue);
    interaction.setColorFilter(blue);
    ASSERT_TRUE(editor.isVisible(a.id));
    ASSERT_FALSE(editor.isVisible((*this)["b"].id));
    EXPECT_FALSE(editor.isDrawn(ab)) << "a line to a hidden card";

    store->setTitle(a, QStringLiteral("renamed"));
    EXPECT_TRUE(editor.isVisible(a.id));
    ASSERT_EQ(editor.scene().nodes.size(), 1u);
    store->moveNode(a, 300, 400);
    click(interaction.toScreen({300, 400}));
    EXPECT_EQ(interaction.selectedItemIDs(), QSet<QUuid>{a.id}) << "the card is hit where it went";
    store->setColor(NodeColor::red, a);
    EXPECT_FALSE(editor.isVisible(a.id)) << "a colour the filter hides";
    store->setColor(NodeColor::blue, (*this)["b"]);
    EXPECT_TRUE(editor.isVisible((*this)["b"].id));
    EXPECT_FALSE(editor.isDrawn(ab)) << "its other end now hidden";
    store->setColor(NodeColor::blue, a);
    EXPECT_TRUE(editor.isDrawn(ab));
}

// The tag beside a folded port: each task the fold hides once, none that
// another line keeps in view, and counted again when a fold opens.
TEST_F(Gestures, AFoldCountsWhatItHidesOnceAndNothingStillInView)
{
    for (const char *title : {"a", "b", "c", "d", "e", "x"})
        place(QString::fromUtf8(title), 100, 100);
    link("a", "b", EdgeKind::subtask);
    link("a", "c", EdgeKind::subtask);
    link("b", "d");
    link("c", "d");
    link("a", "e");
    link("x", "e");
    store->setCollapsed((*this)["a"], true);
    store->setCollapsed((*this)["b"], true);
    open();
    EXPECT_EQ(editor.foldedCount((*this)["a"]), 3) << "b, c and d, which both reach; e stays in view through x";
    EXPECT_EQ(editor.foldedCount((*this)["x"]), 0);

    store->setCollapsed((*this)["a"], false);
    EXPECT_EQ(editor.foldedCount((*this)["b"]), 0) << "d stays in view through c";
    store->setCollapsed((*this)["c"], true);
    EXPECT_EQ(editor.foldedCount((*this)["c"]), 1);
}

} // namespace
} // namespace fenrow
