#include "AppTestSupport.h"

#include "lists/ArchiveListView.h"
#include "window/FlowDetailView.h"
#include "lists/ReadyListModel.h"
#include "lists/ReadyListView.h"
#include "lists/ReadyRowDelegate.h"
#include "sidebar/SidebarRouteRow.h"

#include <QLabel>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QWindow>

namespace fenrow::testing {
namespace {

class MainWindowTest : public WindowFixture {
protected:
    QWidget *shownDetail() const { return window->findChild<QStackedWidget *>("detail")->currentWidget(); }
    QString detailName() const { return window->findChild<QLabel *>("detail.flow.name")->text(); }

    void deleteThroughMenu(const QUuid &id)
    {
        chooseFromRowMenu(id, "sidebar.row.action.delete");
        QMessageBox *box = deleteConfirmation();
        ASSERT_NE(box, nullptr);
        QTest::mouseClick(box->findChild<QPushButton *>("sidebar.row.confirmDelete"), Qt::LeftButton);
        ASSERT_TRUE(QTest::qWaitFor([&] { return store->flow(id) == nullptr; }));
    }
};

TEST_F(MainWindowTest, TitleAndDetailFollowTheSelectedFlow)
{
    const TaskFlow &garden = addFlow("Garden", 1, 1, 2);
    show();
    EXPECT_NE(window->findChild<QWidget *>("main.window.root"), nullptr);
    EXPECT_NE(window->findChild<QWidget *>("sidebar.root"), nullptr);
    EXPECT_GE(window->minimumWidth(), 720);
    EXPECT_GE(window->minimumHeight(), 480);

    EXPECT_EQ(window->windowTitle(), "Fenrow");
    EXPECT_EQ(shownDetail()->objectName(), "detail.empty");
    EXPECT_FALSE(activeFlow.activeFlowID().has_value());

    clickRow(garden.id);
    EXPECT_EQ(window->selectedFlow(), garden.id);
    EXPECT_EQ(window->windowTitle(), "Garden");
    EXPECT_EQ(shownDetail()->objectName(), "canvas.root");
    EXPECT_EQ(detailName(), "Garden");
    EXPECT_EQ(window->findChild<QLabel *>("detail.flow.progress")->text(), "1 of 4 done · 3 ready");
    EXPECT_EQ(activeFlow.activeFlowID(), garden.id);

    // A rename from anywhere reaches the title and the detail.
    store->renameFlow(garden, "Kitchen garden");
    EXPECT_EQ(window->windowTitle(), "Kitchen garden");
    EXPECT_EQ(detailName(), "Kitchen garden");
    store->renameFlow(garden, "Beds [*]");
    EXPECT_EQ(window->windowHandle()->title(), "Beds [*]") << "a name is shown as typed";

    // The keyboard moves through the rows like clicks do.
    const TaskFlow &taxes = addFlow("Taxes");
    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_Down);
    EXPECT_EQ(window->selectedFlow(), taxes.id);
    EXPECT_EQ(window->windowTitle(), "Taxes");

    QSignalSpy quitting(window.get(), &MainWindow::quitRequested);
    QTest::mouseClick(window->findChild<QPushButton *>("sidebar.action.quit"), Qt::LeftButton);
    EXPECT_EQ(quitting.count(), 1);
}

TEST_F(MainWindowTest, TheNextStartOpensWhatWasLeftAndTheWelcomeNamesNoFlow)
{
    const TaskFlow &garden = addFlow("Garden", 1, 1, 2);
    show();
    clickRow(garden.id);
    window.reset();
    show();
    EXPECT_EQ(window->selectedFlow(), garden.id);
    EXPECT_EQ(shownDetail()->objectName(), "canvas.root");

    window->setRoute(DetailRoute::ready());
    store->deleteFlow(garden);
    window.reset();
    show();
    EXPECT_TRUE(window->route().isReady());

    // The welcome is shown over whatever flow is selected, and the title
    // does not give one away.
    window->selectFlow(addFlow("Taxes").id);
    preferences->setHasCompletedOnboarding(false);
    EXPECT_EQ(window->windowTitle(), "Fenrow");
    preferences->setHasCompletedOnboarding(true);
    EXPECT_EQ(window->windowTitle(), "Taxes");
}

TEST_F(MainWindowTest, DeletingTheShownFlowFallsBackToTheFirstRemainingThenToNone)
{
    const QUuid first = addFlow("First").id;
    const QUuid second = addFlow("Second").id;
    const QUuid third = addFlow("Third").id;
    show();

    clickRow(second);
    deleteThroughMenu(second);
    EXPECT_EQ(window->selectedFlow(), first);
    EXPECT_EQ(list().currentIndex(), model().indexOf(first));
    EXPECT_EQ(window->windowTitle(), "First");
    EXPECT_EQ(detailName(), "First");
    EXPECT_EQ(activeFlow.activeFlowID(), first);

    // Deleting a flow that isn't shown leaves the selection alone.
    deleteThroughMenu(third);
    EXPECT_EQ(window->selectedFlow(), first);

    deleteThroughMenu(first);
    EXPECT_TRUE(window->selectedFlow().isNull());
    EXPECT_FALSE(list().selectionModel()->hasSelection());
    EXPECT_EQ(window->windowTitle(), "Fenrow");
    EXPECT_EQ(shownDetail()->objectName(), "detail.empty");
    EXPECT_FALSE(activeFlow.activeFlowID().has_value());
}

TEST_F(MainWindowTest, ANewUserMeetsTheSampleFlowOnTheFirstAppearanceOnly)
{
    // Who gets the sample is the seeding's own rule; here, that the window
    // asks on its first appearance only.
    preferences->setHasSeededSampleFlow(false);
    addFlow("Existing");
    show();
    store->deleteFlow(*store->flows().first());
    window->hide();
    window->show();
    EXPECT_TRUE(store->flows().isEmpty()) << "showing the same window again is no new start";

    // The next start finds no flows and seeds.
    show();
    ASSERT_EQ(store->flows().size(), 1);
    const TaskFlow &sample = *store->flows().first();
    EXPECT_EQ(sample.name, "Sample: Launch a landing page");
    EXPECT_EQ(window->selectedFlow(), sample.id);
    EXPECT_EQ(window->windowTitle(), sample.name);
    EXPECT_EQ(list().currentIndex(), model().indexOf(sample.id));
    EXPECT_EQ(sidebar().readyRow()->badge(), 1) << "only the first task of the diamond is ready";
}

TEST_F(MainWindowTest, TheReadyRowLeadsToTheReadyListAndCountsWhatIsReady)
{
    // Half a second before midnight, so that the turn of the day comes
    // during the test.
    clock.set(QDateTime(QDate(2026, 6, 10), QTime(23, 59, 59, 500), QTimeZone("Europe/Berlin")));
    const TaskFlow &garden = addFlow("Garden", 0, 0, 3);
    const QList<const FlowNode *> tasks = garden.orderedItems();
    store->addEdge(*tasks[0], *tasks[1], EdgeSource::manual, EdgeKind::dependency);
    store->setStartDate(QDateTime(QDate(2026, 6, 11), QTime(0, 0), QTimeZone("Europe/Berlin")), *tasks[2]);
    const TaskFlow &taxes = addFlow("Taxes", 1, 1, 0);
    show();

    SidebarRouteRow *ready = sidebar().readyRow();
    ASSERT_NE(ready, nullptr);
    EXPECT_EQ(sidebar().findChild<QWidget *>("sidebar.route.ready"), ready);
    EXPECT_EQ(ready->text(), "Ready");
    EXPECT_EQ(ready->badge(), 2) << "not the blocked task, not tomorrow's";

    clickRow(taxes.id);
    QTest::mouseClick(ready, Qt::LeftButton);
    EXPECT_TRUE(window->route().isReady());
    EXPECT_TRUE(ready->isChecked());
    EXPECT_FALSE(list().selectionModel()->hasSelection()) << "one route is chosen at a time";
    EXPECT_EQ(window->windowTitle(), "Ready");
    EXPECT_EQ(shownDetail()->objectName(), "ready.root");
    EXPECT_FALSE(activeFlow.activeFlowID().has_value());

    // A second click keeps the route; deleting a flow leaves it alone.
    QTest::mouseClick(ready, Qt::LeftButton);
    EXPECT_TRUE(ready->isChecked());
    store->deleteFlow(taxes);
    EXPECT_TRUE(window->route().isReady());
    EXPECT_EQ(ready->badge(), 1);

    store->setStatus(NodeStatus::done, *tasks[0]);
    EXPECT_EQ(ready->badge(), 1) << "done one, released one";

    // At midnight tomorrow's task becomes today's, with no store change.
    clock.set(QDateTime(QDate(2026, 6, 11), QTime(0, 0, 1), QTimeZone("Europe/Berlin")));
    EXPECT_TRUE(QTest::qWaitFor([&] { return ready->badge() == 2; }, 3000));

    clickRow(garden.id);
    EXPECT_FALSE(ready->isChecked());
    EXPECT_EQ(window->selectedFlow(), garden.id);
    EXPECT_EQ(window->windowTitle(), "Garden");
}

TEST_F(MainWindowTest, UndoAndRedoACompletionFromTheReadyListButNotInsideATextField)
{
    store->archiveDone(addFlow("Last year", 1));
    const TaskFlow &garden = addFlow("Garden", 0, 0, 2);
    const FlowNode &first = *garden.orderedItems()[0];
    show();
    EXPECT_FALSE(window->undoAction()->isEnabled());
    EXPECT_EQ(window->undoAction()->shortcut(), QKeySequence("Ctrl+Z"));
    EXPECT_EQ(window->redoAction()->shortcut(), QKeySequence("Ctrl+Shift+Z"));

    QTest::mouseClick(sidebar().readyRow(), Qt::LeftButton);
    QListView *ready = window->readyList()->list();
    const QModelIndex row = window->readyList()->model()->indexOf(first.id);
    QTest::mouseClick(ready->viewport(), Qt::LeftButton, Qt::NoModifier,
                      ReadyRowDelegate::completeRect(ready->visualRect(row)).center());
    ASSERT_TRUE(first.isDone);
    EXPECT_TRUE(window->undoAction()->isEnabled());

    // In a text field the keys edit the text, and the menu commands too.
    QTest::mouseClick(sidebar().archiveRow(), Qt::LeftButton);
    QLineEdit *search = window->archiveList()->searchField();
    search->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return search->hasFocus(); }));
    QTest::keyClicks(search, "Task");
    QTest::keyClick(search, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(search->text(), "");
    window->redoAction()->trigger();
    EXPECT_EQ(search->text(), "Task");
    window->undoAction()->trigger();
    EXPECT_EQ(search->text(), "");
    EXPECT_TRUE(first.isDone) << "the history was not touched";

    // Away from the field the step taken in the Ready list is undone, from
    // any view that shows no flow.
    sidebar().archiveRow()->setFocus();
    QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(first.isDone);
    QTest::mouseClick(sidebar().readyRow(), Qt::LeftButton);
    EXPECT_TRUE(window->readyList()->model()->indexOf(first.id).isValid()) << "back in the list";
    QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(first.isDone);

    // On a flow's route, its own steps are the ones undone.
    clickRow(garden.id);
    EXPECT_EQ(history->activeFlowID(), garden.id);
    QTest::mouseClick(sidebar().readyRow(), Qt::LeftButton);
    EXPECT_EQ(history->activeFlowID(), std::nullopt);
}

TEST_F(MainWindowTest, SidebarWidthStaysWithinItsLimits)
{
    show();
    EXPECT_EQ(window->sidebarWidth(), 260);
    window->setSidebarWidth(100);
    EXPECT_EQ(window->sidebarWidth(), 216);
    window->setSidebarWidth(1000);
    EXPECT_EQ(window->sidebarWidth(), 420);
    window->setSidebarWidth(300);
    EXPECT_EQ(window->sidebarWidth(), 300);

    // Dragging the divider resizes live and reports the final width once.
    QWidget *divider = window->findChild<QWidget *>("sidebar.resize");
    ASSERT_NE(divider, nullptr);
    QSignalSpy committed(window.get(), &MainWindow::sidebarWidthCommitted);
    const QPoint grip = divider->rect().center();
    QTest::mousePress(divider, Qt::LeftButton, Qt::NoModifier, grip);
    QTest::mouseMove(divider, grip + QPoint(40, 0));
    EXPECT_EQ(window->sidebarWidth(), 340);
    EXPECT_EQ(committed.count(), 0);
    QTest::mouseRelease(divider, Qt::LeftButton, Qt::NoModifier, grip + QPoint(500, 0));
    EXPECT_EQ(window->sidebarWidth(), 420);
    ASSERT_EQ(committed.count(), 1);
    EXPECT_EQ(committed.first().first().toInt(), 420);

    // The settled width is the user's, and the next window starts with it.
    EXPECT_EQ(preferences->sidebarWidth(), 420);
    show();
    EXPECT_EQ(window->sidebarWidth(), 420);
}

} // namespace
} // namespace fenrow::testing
