#include "AppTestSupport.h"

#include "canvasview/CanvasView.h"
#include "window/FlowDetailView.h"
#include "sheets/FlowSearchPaletteView.h"
#include "lists/ReadyListView.h"
#include "sidebar/SidebarRail.h"
#include "sidebar/SidebarRouteRow.h"
#include "canvas/CanvasEditor.h"
#include "canvas/DialogPresence.h"
#include "domain/DependencyEdge.h"
#include "domain/TaskFlow.h"
#include "shell/RouteRequest.h"
#include "shell/ShortcutKeys.h"

#include <QLabel>
#include <QListView>
#include <QMenuBar>
#include <QToolButton>

namespace fenrow::testing {
namespace {

// Getting around the window: the find palette, the folded sidebar, the
// View and Flow menus and routes asked for from elsewhere.
class NavigationTest : public WindowFixture {
protected:
    const FlowNode &task(const TaskFlow &flow, const QString &title, double x = 0, double y = 0,
                         const QString &notes = {})
    {
        const FlowNode &node = *store->addNode(title, flow);
        store->moveNode(node, x, y);
        if (!notes.isEmpty())
            store->setNotes(node, notes);
        return node;
    }

    FlowSearchPaletteView *palette() const { return window->searchPalette(); }
    bool paletteUp() const { return palette() && palette()->isVisible(); }
    CanvasEditor *editor() const { return window->flowDetail()->editor(); }
    QSet<QUuid> selection() const { return editor() ? editor()->interaction().selectedItemIDs() : QSet<QUuid>(); }

    // The identifiers of the palette's rows, and of the highlighted one.
    QStringList resultRows() const
    {
        QStringList ids;
        const QAbstractItemModel &model = *palette()->results()->model();
        for (int row = 0; row < model.rowCount(); ++row)
            ids << model.index(row, 0).data(FlowSearchResultsModel::IdentifierRole).toString();
        return ids;
    }
    QString highlightedRow() const
    {
        const QAbstractItemModel &model = *palette()->results()->model();
        for (int row = 0; row < model.rowCount(); ++row)
            if (model.index(row, 0).data(FlowSearchResultsModel::HighlightedRole).toBool())
                return model.index(row, 0).data(FlowSearchResultsModel::IdentifierRole).toString();
        return {};
    }

    QAction *menuAction(const char *name) const
    {
        QAction *action = window->menuBar()->findChild<QAction *>(QString::fromLatin1(name));
        EXPECT_NE(action, nullptr) << name;
        return action;
    }
    // A command as the menu runs it, guards and all.
    void choose(const char *name) { menuAction(name)->trigger(); }

    static QString row(const QUuid &id) { return "flowSearch.result." + id.toString(QUuid::WithoutBraces).toUpper(); }
    static QString group(const QUuid &id) { return "flowSearch.group." + id.toString(QUuid::WithoutBraces).toUpper(); }
};

TEST_F(NavigationTest, FindPaletteWalksTheMatchesWithTheKeysAndOpensTheChosenTask)
{
    const TaskFlow &kitchen = *store->addFlow("Kitchen");
    const TaskFlow &garden = *store->addFlow("Garden");
    const FlowNode &walls = task(kitchen, "Paint walls");
    task(kitchen, "Buy tiles", 300);
    const FlowNode &fence = task(garden, "Fix fence", 0, 0, "Sand it\n  then paint twice  ");
    task(garden, "Water plants", 300);
    show();
    window->selectFlow(kitchen.id);
    QApplication::processEvents();

    // The Find key from the canvas; the field has the focus and the
    // canvas's keys are held back while the palette is up.
    QTest::keyClick(window->flowDetail()->canvas(), Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(paletteUp());
    EXPECT_EQ(QApplication::focusWidget(), palette()->field());
    EXPECT_EQ(DialogPresence::depth(), 1);
    EXPECT_TRUE(resultRows().isEmpty());
    EXPECT_FALSE(palette()->findChild<QWidget *>("flowSearch.empty")->isVisible()) << "no query, no verdict";

    QTest::keyClicks(palette()->field(), "paint");
    EXPECT_EQ(resultRows(), QStringList({"flowSearch.group.current", row(walls.id), group(garden.id), row(fence.id)}));
    EXPECT_EQ(palette()->results()->model()->index(3, 0).data(FlowSearchResultsModel::SnippetRole),
              "then paint twice");
    EXPECT_EQ(palette()->findChild<QLabel *>("flowSearch.count")->text(), qtTrId("flowSearch.count %lld").arg(2));
    EXPECT_EQ(highlightedRow(), row(walls.id));
    QTest::keyClick(palette()->field(), Qt::Key_Down);
    EXPECT_EQ(highlightedRow(), row(fence.id));
    QTest::keyClick(palette()->field(), Qt::Key_Down);
    EXPECT_EQ(highlightedRow(), row(fence.id)) << "the last row stays highlighted";
    QTest::keyClick(palette()->field(), Qt::Key_Up);
    QTest::keyClick(palette()->field(), Qt::Key_Up);
    EXPECT_EQ(highlightedRow(), row(walls.id));
    QTest::keyClick(palette()->field(), Qt::Key_Down);

    // Return opens the highlighted task in its own flow, selected.
    QTest::keyClick(palette()->field(), Qt::Key_Return);
    EXPECT_FALSE(paletteUp());
    EXPECT_EQ(DialogPresence::depth(), 0);
    EXPECT_EQ(window->selectedFlow(), garden.id);
    EXPECT_TRUE(QTest::qWaitFor([&] { return selection() == QSet<QUuid>{fence.id}; }));

    // From the sidebar's search row; nothing found says so, and Escape
    // leaves everything as it was.
    QTest::mouseClick(sidebar().searchRow(), Qt::LeftButton);
    ASSERT_TRUE(paletteUp());
    EXPECT_TRUE(palette()->field()->text().isEmpty()) << "each time starts afresh";
    QTest::keyClicks(palette()->field(), "zebra");
    EXPECT_TRUE(palette()->findChild<QWidget *>("flowSearch.empty")->isVisible());
    EXPECT_TRUE(palette()->findChild<QLabel *>("flowSearch.count")->text().isEmpty());
    QTest::keyClick(palette()->field(), Qt::Key_Return);
    EXPECT_TRUE(paletteUp()) << "nothing to open";
    QTest::keyClick(palette()->field(), Qt::Key_Escape);
    EXPECT_FALSE(paletteUp());
    EXPECT_EQ(window->selectedFlow(), garden.id);

    // A click on a row of the flow on screen reveals it there; a click
    // beside the panel closes.
    window->presentSearch();
    QTest::keyClicks(palette()->field(), "water");
    QListView *results = palette()->results();
    const QModelIndex water = results->model()->index(1, 0);
    QTest::mouseClick(results->viewport(), Qt::LeftButton, Qt::NoModifier, results->visualRect(water).center());
    EXPECT_FALSE(paletteUp());
    EXPECT_TRUE(QTest::qWaitFor([&] { return selection().size() == 1 && !selection().contains(fence.id); }));
    window->presentSearch();
    // The panel's parent is the dimmed backdrop over the window.
    QWidget *overlay = palette()->parentWidget()->parentWidget();
    ASSERT_EQ(overlay->objectName(), "flowSearch.overlay");
    QTest::mouseClick(overlay, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    EXPECT_FALSE(paletteUp());
    EXPECT_EQ(DialogPresence::depth(), 0);
}

TEST_F(NavigationTest, TheRailTakesTheSidebarsPlaceAndTheChoiceIsKept)
{
    const TaskFlow &one = *store->addFlow("Move house");
    const TaskFlow &two = *store->addFlow("Tax return");
    show();
    window->selectFlow(one.id);
    const int fullWidth = sidebar().width();

    QTest::mouseClick(sidebar().findChild<QToolButton *>("sidebar.action.collapse"), Qt::LeftButton);
    EXPECT_TRUE(preferences->sidebarCollapsed());
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->rail()->isVisible(); }, 2000));
    EXPECT_FALSE(sidebar().isVisible());
    EXPECT_FALSE(window->findChild<QWidget *>("sidebar.resize")->isVisible()) << "a rail is not dragged wider";
    EXPECT_EQ(window->rail()->width(), SidebarRail::railWidth);
    EXPECT_EQ(window->rail()->flowTile(one.id)->width(), SidebarRail::tileSize);
    EXPECT_TRUE(window->rail()->flowTile(one.id)->isChecked());

    // Tiles choose routes like the sidebar's rows.
    QTest::mouseClick(window->rail()->flowTile(two.id), Qt::LeftButton);
    EXPECT_EQ(window->selectedFlow(), two.id);
    EXPECT_TRUE(window->rail()->flowTile(two.id)->isChecked());
    EXPECT_FALSE(window->rail()->flowTile(one.id)->isChecked());
    QTest::mouseClick(window->rail()->findChild<QToolButton *>("sidebar.rail.ready"), Qt::LeftButton);
    EXPECT_TRUE(window->route().isReady());
    const TaskFlow &three = *store->addFlow("Garden");
    QApplication::processEvents();
    ASSERT_NE(window->rail()->flowTile(three.id), nullptr) << "a new flow gets its tile";

    // The next window starts folded and unfolds to the width it had.
    window.reset();
    show();
    EXPECT_TRUE(window->rail()->isVisible());
    EXPECT_FALSE(sidebar().isVisible());
    QTest::mouseClick(window->rail()->findChild<QToolButton *>("sidebar.action.expand"), Qt::LeftButton);
    // Back to the width it had once the unfolding is over.
    EXPECT_TRUE(QTest::qWaitFor([&] { return sidebar().width() == fullWidth; }, 2000)) << sidebar().width();
    EXPECT_TRUE(sidebar().isVisible());
    EXPECT_FALSE(window->rail()->isVisible());
    EXPECT_FALSE(preferences->sidebarCollapsed());

    // The View menu folds it too.
    choose("menu.toggleSidebar");
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->rail()->isVisible(); }, 2000));
}

TEST_F(NavigationTest, FlowMenuCommandsActOnTheCanvasUnlessTextOrADialogHasTheKeys)
{
    const TaskFlow &flow = *store->addFlow("Launch");
    const FlowNode &plan = task(flow, "Plan", 0, 0);
    const FlowNode &build = task(flow, "Build", 320, 0);
    store->setViewport(flow, 200, 200, 1);
    show();
    window->selectFlow(flow.id);
    QApplication::processEvents();
    ASSERT_NE(editor(), nullptr);

    // Two selected tasks are connected left to right.
    editor()->interaction().setSelectedItemIDs({plan.id, build.id});
    choose("menu.connect");
    ASSERT_EQ(flow.edges().size(), 1);
    EXPECT_EQ((*flow.edges().begin())->fromItem(), &plan);
    EXPECT_EQ(history->undoStack(flow.id).last().name, "Connect");

    editor()->interaction().setSelectedItemIDs({build.id});
    choose("menu.delete");
    EXPECT_EQ(store->node(build.id), nullptr);

    // The canvas's guard holds the menu's commands too (the guard's rules are
    // the input monitor's own cases): nothing reaches the canvas while a
    // dialog is up.
    const qsizetype before = flow.items().size();
    {
        const DialogPresence::Scope dialog;
        choose("menu.addTask");
        EXPECT_EQ(flow.items().size(), before);
        choose("menu.find");
        EXPECT_FALSE(paletteUp());
    }
    choose("menu.addTask");
    EXPECT_EQ(flow.items().size(), before + 1);
    EXPECT_EQ(history->undoStack(flow.id).last().name, "Add task");
}

TEST_F(NavigationTest, ViewMenuZoomsWithTheUsersKeys)
{
    const TaskFlow &flow = *store->addFlow("Launch");
    task(flow, "Plan", 0, 0);
    task(flow, "Ship", 900, 500);
    store->setViewport(flow, 0, 0, 1);
    show();
    window->selectFlow(flow.id);
    QApplication::processEvents();
    const CanvasInteraction &view = editor()->interaction();

    EXPECT_EQ(menuAction("menu.zoomIn")->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Equal));
    EXPECT_EQ(menuAction("menu.find")->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_F));
    choose("menu.zoomIn");
    EXPECT_TRUE(QTest::qWaitFor([&] { return view.scale() > 1.01; }));
    choose("menu.actualSize");
    EXPECT_TRUE(QTest::qWaitFor([&] { return qAbs(view.scale() - 1) < 1e-9; }));
    choose("menu.zoomOut");
    EXPECT_TRUE(QTest::qWaitFor([&] { return view.scale() < 0.99; }));

    // A combination recorded in the settings takes over at once.
    const KeyCombo k{40, KeyModifier::command | KeyModifier::shift};
    preferences->setShortcut(k, ShortcutAction::zoomIn);
    EXPECT_EQ(menuAction("menu.zoomIn")->shortcut(),
              QKeySequence(ShortcutKeys::keyboardShortcut(k, ShortcutAction::zoomIn)));
    EXPECT_EQ(menuAction("menu.zoomIn")->shortcut(), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_K));
}

TEST_F(NavigationTest, ARouteRequestShowsTheFlowAndRevealsItsTask)
{
    const TaskFlow &one = *store->addFlow("One");
    const TaskFlow &two = *store->addFlow("Two");
    task(two, "Near", 0, 0);
    const FlowNode &far = task(two, "Far", 5000, 3000);
    show();
    window->setRoute(DetailRoute::ready());

    window->routeRequests()->requestFlow(two.id, far.id);
    EXPECT_EQ(window->selectedFlow(), two.id);
    EXPECT_TRUE(QTest::qWaitFor([&] { return selection() == QSet<QUuid>{far.id}; }));
    const QPointF onScreen = editor()->interaction().toScreen({far.posX, far.posY});
    EXPECT_TRUE(QRectF(QPointF(0, 0), editor()->interaction().viewportSize()).contains(onScreen))
        << "the task is brought into view";

    window->routeRequests()->requestFlow(QUuid::createUuid());
    EXPECT_EQ(window->selectedFlow(), two.id) << "an unknown flow leaves the window as it is";
    window->routeRequests()->requestFlow(one.id);
    EXPECT_EQ(window->selectedFlow(), one.id);
    window->routeRequests()->requestReady();
    EXPECT_TRUE(window->route().isReady());
}

} // namespace
} // namespace fenrow::testing
