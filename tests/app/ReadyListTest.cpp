#include "AppTestSupport.h"

#include "look/EmptyStateView.h"
#include "lists/ReadyListModel.h"
#include "lists/ReadyListView.h"
#include "lists/ReadyRowDelegate.h"
#include "sidebar/SidebarRouteRow.h"
#include "domain/FlowFile.h"

#include <QLabel>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QToolButton>

namespace fenrow::testing {
namespace {

QDateTime berlinDay(int month, int day)
{
    return QDateTime(QDate(2026, month, day), QTime(0, 0), QTimeZone("Europe/Berlin"));
}

class ReadyListTest : public WindowFixture {
protected:
    ReadyListView &showReady()
    {
        show();
        QTest::mouseClick(sidebar().readyRow(), Qt::LeftButton);
        return *window->readyList();
    }

    ReadyListModel &rows() const { return *window->readyList()->model(); }

    // Headers as "# title (count)", tasks by title.
    QStringList rowTexts() const
    {
        QStringList texts;
        for (int row = 0; row < rows().rowCount(); ++row) {
            const QModelIndex index = rows().index(row);
            const QString title = index.data().toString();
            if (ReadyListModel::Kind(index.data(ReadyListModel::KindRole).toInt()) == ReadyListModel::Kind::header)
                texts << QStringLiteral("# %1 (%2)").arg(title).arg(index.data(ReadyListModel::CountRole).toInt());
            else
                texts << title;
        }
        return texts;
    }

    QModelIndex rowOf(const FlowNode &node) const { return rows().indexOf(node.id); }

    QPoint circleOf(const FlowNode &node) const
    {
        return ReadyRowDelegate::completeRect(window->readyList()->list()->visualRect(rowOf(node))).center();
    }

    QWidget *viewport() const { return window->readyList()->list()->viewport(); }
};

TEST_F(ReadyListTest, RowsFollowTheChosenSortWithTodayFirst)
{
    const TaskFlow &garden = addFlow("Garden", 0, 0, 4);
    const QList<const FlowNode *> g = garden.orderedItems();
    const FlowNode &water = *g[0], &prune = *g[1], &plant = *g[2], &fence = *g[3];
    store->setTitle(water, "Water");
    store->setPriority(NodePriority::low, water);
    store->setEstimate(15, water);
    store->setDueDate(berlinDay(6, 12), water);
    store->setTitle(prune, "Prune");
    store->setPriority(NodePriority::high, prune);
    store->setEstimate(90, prune);
    store->setDueDate(berlinDay(6, 8), prune);
    store->setTitle(plant, "Plant");
    store->setStartDate(berlinDay(6, 10), plant);
    store->setDueDate(berlinDay(6, 11), plant);
    store->setTitle(fence, "Fence");
    store->addEdge(prune, fence, EdgeSource::manual, EdgeKind::dependency);
    const TaskFlow &taxes = addFlow("Taxes", 0, 0, 2);
    const FlowNode &receipts = *taxes.orderedItems()[0];
    store->setTitle(receipts, "Receipts");
    store->setNotes(receipts, "In the drawer");
    store->setPriority(NodePriority::medium, receipts);
    store->setEstimate(120, receipts);
    store->setDueDate(berlinDay(6, 10), receipts);
    store->setDueDate(QDateTime(QDate(2027, 1, 5), QTime(0, 0), QTimeZone("Europe/Berlin")),
                      *taxes.orderedItems()[1]);
    store->setTitle(*taxes.orderedItems()[1], "File");

    ReadyListView &ready = showReady();
    EXPECT_EQ(ready.sort(), ReadySort::flow);
    EXPECT_EQ(rowTexts(), QStringList({"# Today (1)", "Plant", "# Garden (2)", "Water", "Prune", "# Taxes (2)",
                                       "Receipts", "File"}));

    const auto text = [&](const FlowNode &node, int role) { return rowOf(node).data(role).toString(); };
    EXPECT_EQ(text(plant, ReadyListModel::FlowNameRole), "Garden") << "Today mixes flows";
    EXPECT_EQ(text(water, ReadyListModel::FlowNameRole), "") << "its header names it";
    EXPECT_EQ(text(plant, ReadyListModel::DueTextRole), "Due tomorrow");
    EXPECT_EQ(text(water, ReadyListModel::DueTextRole), "Jun 12");
    EXPECT_EQ(text(prune, ReadyListModel::DueTextRole), "Overdue · Jun 8");
    EXPECT_TRUE(rowOf(prune).data(ReadyListModel::OverdueRole).toBool());
    EXPECT_FALSE(rowOf(receipts).data(ReadyListModel::OverdueRole).toBool()) << "due today is not late";
    EXPECT_EQ(text(receipts, ReadyListModel::DueTextRole), "Due today");
    EXPECT_EQ(text(*taxes.orderedItems()[1], ReadyListModel::DueTextRole), "Jan 5, 2027");
    EXPECT_EQ(text(prune, ReadyListModel::PriorityTextRole), "High");
    EXPECT_EQ(text(water, ReadyListModel::PriorityTextRole), "Low");
    EXPECT_EQ(text(prune, ReadyListModel::EstimateTextRole), "1 h 30 min");
    EXPECT_EQ(text(water, ReadyListModel::EstimateTextRole), "15 min");
    EXPECT_EQ(text(receipts, ReadyListModel::EstimateTextRole), "2 h");
    EXPECT_TRUE(rowOf(receipts).data(ReadyListModel::HasNotesRole).toBool());
    EXPECT_FALSE(rowOf(water).data(ReadyListModel::HasNotesRole).toBool());
    EXPECT_EQ(text(prune, Qt::AccessibleDescriptionRole), "Ready, Garden, Overdue · Jun 8, High, 1 h 30 min");

    // The choice is the user's setting, and a new window starts with it.
    QTest::mouseClick(ready.findChild<QToolButton *>("ready.sort.priority"), Qt::LeftButton);
    EXPECT_EQ(preferences->readySortRaw(), "priority");
    EXPECT_EQ(rowTexts(),
              QStringList({"# Today (1)", "Plant", "# Other tasks (4)", "Prune", "Receipts", "Water", "File"}));
    EXPECT_EQ(text(water, ReadyListModel::FlowNameRole), "Garden");
    QTest::mouseClick(ready.findChild<QToolButton *>("ready.sort.dueDate"), Qt::LeftButton);
    EXPECT_EQ(rowTexts().mid(3), QStringList({"Prune", "Receipts", "Water", "File"}));

    ReadyListView &again = showReady();
    EXPECT_EQ(again.sort(), ReadySort::dueDate);
    EXPECT_TRUE(again.findChild<QToolButton *>("ready.sort.dueDate")->isChecked());
    QTest::mouseClick(again.findChild<QToolButton *>("ready.sort.estimate"), Qt::LeftButton);
    EXPECT_EQ(rowTexts().mid(3), QStringList({"Water", "Prune", "Receipts", "File"}));

    // Changes elsewhere show at once.
    store->setStatus(NodeStatus::done, prune);
    EXPECT_EQ(rowTexts().mid(3), QStringList({"Water", "Receipts", "Fence", "File"}));
    store->setTitle(water, "Water the beds");
    EXPECT_EQ(rowOf(water).data().toString(), "Water the beds");
}

TEST_F(ReadyListTest, TheCircleCompletesItsTaskOnceAndOnlyIt)
{
    const TaskFlow &flow = addFlow("Chores", 0, 0, 4);
    const QList<const FlowNode *> tasks = flow.orderedItems();
    ReadyListView &ready = showReady();
    QSignalSpy changes(store.get(), &FenrowStore::changed);

    // A click on the row beside the circle chooses the row and nothing else.
    QTest::mouseClick(viewport(), Qt::LeftButton, Qt::NoModifier, circleOf(*tasks[0]) + QPoint(120, 0));
    EXPECT_EQ(changes.count(), 0);
    EXPECT_EQ(ready.list()->currentIndex(), rowOf(*tasks[0]));

    // A double click on a circle: the first click completes the task, the
    // second lands on the next row, which moved up, and must not.
    const QPoint circle = circleOf(*tasks[0]);
    QTest::mouseClick(viewport(), Qt::LeftButton, Qt::NoModifier, circle);
    QTest::mouseDClick(viewport(), Qt::LeftButton, Qt::NoModifier, circle);
    QTest::mouseRelease(viewport(), Qt::LeftButton, Qt::NoModifier, circle);
    EXPECT_TRUE(tasks[0]->isDone);
    EXPECT_FALSE(tasks[1]->isDone);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(ready.window()->windowTitle(), "Ready") << "the circle does not open the flow";

    // Pressing on one circle and letting go on another completes neither.
    QTest::mousePress(viewport(), Qt::LeftButton, Qt::NoModifier, circleOf(*tasks[1]));
    QTest::mouseRelease(viewport(), Qt::LeftButton, Qt::NoModifier, circleOf(*tasks[2]));
    EXPECT_EQ(changes.count(), 1);

    QTest::mouseClick(viewport(), Qt::LeftButton, Qt::NoModifier, circleOf(*tasks[2]));
    EXPECT_TRUE(tasks[2]->isDone);

    // Space ticks the current task.
    ready.list()->setFocus();
    ready.list()->setCurrentIndex(rowOf(*tasks[3]));
    QTest::keyClick(ready.list(), Qt::Key_Space);
    EXPECT_TRUE(tasks[3]->isDone);
    EXPECT_EQ(rowTexts(), QStringList({"# Chores (1)", "Task 2"}));

    // A double click on the row opens its flow.
    const QPoint title = circleOf(*tasks[1]) + QPoint(120, 0);
    QTest::mouseClick(viewport(), Qt::LeftButton, Qt::NoModifier, title);
    QTest::mouseDClick(viewport(), Qt::LeftButton, Qt::NoModifier, title);
    EXPECT_EQ(window->selectedFlow(), flow.id);
    EXPECT_FALSE(tasks[1]->isDone);
}

TEST_F(ReadyListTest, DraggingInTodaySetsItsOrderAsOneStepPerFlow)
{
    const TaskFlow &home = addFlow("Home", 0, 0, 2);
    const TaskFlow &work = addFlow("Work", 0, 0, 1);
    const FlowNode &dishes = *home.orderedItems()[0];
    const FlowNode &laundry = *home.orderedItems()[1];
    const FlowNode &report = *work.orderedItems()[0];
    for (const FlowNode *task : {&dishes, &laundry, &report})
        store->setStartDate(berlinDay(6, 10), *task);
    store->setTitle(dishes, "Dishes");
    store->setTitle(laundry, "Laundry");
    store->setTitle(report, "Report");
    ReadyListView &ready = showReady();
    ASSERT_EQ(rows().todayNodeIds(), QList<QUuid>({dishes.id, laundry.id, report.id}));
    EXPECT_EQ(rows().index(0).data(Qt::ToolTipRole).toString(), qtTrId("ready.row.reorder.help"))
        << "Today's header tells how to order it";
    EXPECT_EQ(rows().index(0).data(ReadyListModel::OrderNoteRole).toString(), QString())
        << "no order of the user's yet";

    const auto mouse = [&](QEvent::Type type, QPoint at, Qt::MouseButtons buttons) {
        QMouseEvent event(type, at, viewport()->mapToGlobal(at), type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                          buttons, Qt::NoModifier);
        QApplication::sendEvent(viewport(), &event);
    };
    const auto dragRow = [&](const FlowNode &task, const FlowNode &onto, int dy) {
        const QRect from = ready.list()->visualRect(rowOf(task));
        const QPoint to = ready.list()->visualRect(rowOf(onto)).center() + QPoint(0, dy);
        const QPoint start = from.center() + QPoint(60, 0);
        mouse(QEvent::MouseButtonPress, start, Qt::LeftButton);
        mouse(QEvent::MouseMove, start + QPoint(0, to.y() > start.y() ? 12 : -12), Qt::LeftButton);
        mouse(QEvent::MouseMove, QPoint(start.x(), to.y()), Qt::LeftButton);
        EXPECT_TRUE(ready.findChild<QWidget *>("ready.today.dropMark")->isVisible());
        mouse(QEvent::MouseButtonRelease, QPoint(start.x(), to.y()), Qt::NoButton);
    };

    // Report dropped on the upper half of Dishes goes first.
    dragRow(report, dishes, -4);
    EXPECT_EQ(rows().todayNodeIds(), QList<QUuid>({report.id, dishes.id, laundry.id}));
    EXPECT_FALSE(ready.findChild<QWidget *>("ready.today.dropMark")->isVisible());
    EXPECT_EQ(rows().index(0).data(ReadyListModel::OrderNoteRole).toString(), qtTrId("ready.order.today"));
    ASSERT_FALSE(history->undoStack(home.id).isEmpty());
    EXPECT_EQ(history->undoStack(home.id).last().name, "Reorder today");

    // Dishes onto the lower half of Laundry: after it.
    dragRow(dishes, laundry, 4);
    EXPECT_EQ(rows().todayNodeIds(), QList<QUuid>({report.id, laundry.id, dishes.id}));

    // The Edit menu takes the steps back, most recent first.
    window->undo();
    EXPECT_EQ(rows().todayNodeIds(), QList<QUuid>({report.id, dishes.id, laundry.id}));
    window->undo();
    window->undo();
    EXPECT_EQ(rows().todayNodeIds(), QList<QUuid>({dishes.id, laundry.id, report.id}));
    EXPECT_EQ(rows().index(0).data(ReadyListModel::OrderNoteRole).toString(), QString());

    // A short wiggle is a click: nothing moves.
    const QPoint start = ready.list()->visualRect(rowOf(laundry)).center();
    mouse(QEvent::MouseButtonPress, start, Qt::LeftButton);
    mouse(QEvent::MouseMove, start + QPoint(0, 1), Qt::LeftButton);
    mouse(QEvent::MouseButtonRelease, start + QPoint(0, 1), Qt::NoButton);
    EXPECT_EQ(laundry.dayPlanRank, std::nullopt);
    EXPECT_EQ(ready.list()->currentIndex(), rowOf(laundry));
}

TEST_F(ReadyListTest, ARowCountsTheFilesLinkedToItsTask)
{
    const TaskFlow &flow = addFlow("Trip", 0, 0, 1);
    const FlowNode &task = *flow.orderedItems()[0];
    QList<const FlowFile *> files;
    for (const char *name : {"ticket.txt", "map.txt", "hotel.txt"}) {
        const FlowFile *added = store->attachFile({QString::fromLatin1(name), "text/plain", 1, "x"}, 0, 0, flow);
        ASSERT_NE(added, nullptr);
        store->linkFile(*added, task);
        files.append(added);
    }
    store->setFileTrashed(*files[2], true);
    showReady();
    const QModelIndex row = rowOf(task);
    EXPECT_EQ(row.data(ReadyListModel::ReferencesRole).toInt(), 2) << "a file in the bin is not counted";
    EXPECT_TRUE(row.data(Qt::AccessibleDescriptionRole).toString().contains(qtTrId("ready.row.references").arg(2)));
}

TEST_F(ReadyListTest, AnEmptyListSaysWhy)
{
    ReadyListView &ready = showReady();
    const auto shown = [&] {
        const QWidget *content = qobject_cast<QStackedWidget *>(ready.list()->parentWidget())->currentWidget();
        return content == ready.emptyState() ? ready.findChild<QLabel *>("ready.empty.title")->text()
                                             : QStringLiteral("list");
    };
    EXPECT_EQ(shown(), "No tasks yet");
    EXPECT_EQ(ready.emptyState()->symbol(), Glyphs::Symbol::emptySelection);
    EXPECT_FALSE(ready.findChild<QLabel *>("ready.empty.message")->text().isEmpty());

    const TaskFlow &flow = addFlow("Garden", 1);
    EXPECT_EQ(shown(), "All done");
    EXPECT_EQ(ready.emptyState()->symbol(), Glyphs::Symbol::allDone);

    const FlowNode &later = *store->addNode("Later", flow);
    store->setStartDate(berlinDay(6, 11), later);
    EXPECT_EQ(shown(), "Nothing starts today");
    EXPECT_EQ(ready.emptyState()->symbol(), Glyphs::Symbol::allDeferred);

    // Dependencies one way and a subtask the other way hold each other up.
    store->deleteNode(later);
    const TaskFlow &knot = addFlow("Knot", 0, 0, 3);
    const QList<const FlowNode *> k = knot.orderedItems();
    store->addEdge(*k[0], *k[1], EdgeSource::manual, EdgeKind::dependency);
    store->addEdge(*k[1], *k[2], EdgeSource::manual, EdgeKind::dependency);
    store->addEdge(*k[0], *k[2], EdgeSource::manual, EdgeKind::subtask);
    EXPECT_EQ(shown(), "Everything is waiting");
    EXPECT_EQ(ready.emptyState()->symbol(), Glyphs::Symbol::allBlocked);

    store->addNode("Free", knot);
    EXPECT_EQ(shown(), "list");
    EXPECT_EQ(sidebar().readyRow()->badge(), 1);
}

} // namespace
} // namespace fenrow::testing
