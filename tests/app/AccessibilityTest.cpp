#include "AppTestSupport.h"

#include "canvas/CanvasEditor.h"
#include "canvasview/CanvasView.h"
#include "domain/FlowFile.h"
#include "domain/TaskFlow.h"
#include "lists/ReadyListView.h"
#include "sidebar/SidebarRouteRow.h"
#include "window/FlowDetailView.h"

#include <QAccessible>
#include <QDesktopServices>
#include <QFile>
#include <QListView>
#include <QProcess>
#include <QScopeGuard>

namespace fenrow::testing
{
namespace
{

// Takes the addresses the desktop would be asked to open.
class OpenedUrls : public QObject
{
    Q_OBJECT
public:
    QList<QUrl> urls;
public slots:
    void open(const QUrl &url) { urls << url; }
};

// The window as assistive technology reads it: Qt's own accessible
// interfaces and the canvas's. Qt answers them and sends its events only
// once a screen reader is said to run, so the suite starts the desktop's
// accessibility bus with that flag set, as a screen reader finds it; the
// events are then caught where that bus would take them.
class AccessibilityTest : public WindowFixture
{
protected:
    static void SetUpTestSuite()
    {
        QAccessible::isActive(); // Qt's bridge starts watching for the bus
        bus = new QProcess;
        bus->start(
            QStringLiteral("/usr/libexec/at-spi-bus-launcher"),
            {QStringLiteral("--launch-immediately"), QStringLiteral("--a11y=1"), QStringLiteral("--screen-reader=1")});
        bus->waitForStarted();
    }
    static void TearDownTestSuite()
    {
        bus->terminate();
        if (!bus->waitForFinished(5000))
            bus->kill();
        delete bus;
    }

    AccessibilityTest()
    {
        events().clear();
        EXPECT_TRUE(QTest::qWaitFor([] { return QAccessible::isActive(); }, 10000)) << "no accessibility bus";
        QAccessible::installUpdateHandler([](QAccessibleEvent *event) {
            QAccessibleInterface *target = event->accessibleInterface();
            events() << std::pair(event->type(), target ? target->text(QAccessible::Name) : QString());
        });
    }
    ~AccessibilityTest() override
    {
        window.reset();
        QAccessible::installUpdateHandler(nullptr);
    }

    static inline QProcess *bus = nullptr;

    static QList<std::pair<QAccessible::Event, QString>> &events()
    {
        static QList<std::pair<QAccessible::Event, QString>> caught;
        return caught;
    }
    static bool sent(QAccessible::Event type, const QString &name) { return events().contains(std::pair(type, name)); }

    CanvasView &canvas() const { return *window->flowDetail()->canvas(); }

    // The canvas's child named `name`, looked up afresh: a card's interface
    // lives only as long as its card.
    QAccessibleInterface *card(const QString &name) const
    {
        QAccessibleInterface *view = QAccessible::queryAccessibleInterface(&canvas());
        for (int i = 0; i < view->childCount(); ++i)
            if (QAccessibleInterface *child = view->child(i); child && child->text(QAccessible::Name) == name)
                return child;
        ADD_FAILURE() << "no card " << name.toStdString();
        return nullptr;
    }

    static QAccessibleInterface *childNamed(QAccessibleInterface *parent, const QString &name)
    {
        for (int i = 0; i < parent->childCount(); ++i)
            if (QAccessibleInterface *child = parent->child(i); child && child->text(QAccessible::Name) == name)
                return child;
        return nullptr;
    }
};

TEST_F(AccessibilityTest, CanvasCardsSayTheirTitleStatePlaceAndAct)
{
    const TaskFlow &flow = *store->addFlow(QStringLiteral("Move house"));
    const FlowNode &books = *store->addNode(QStringLiteral("Pack books"), flow);
    const FlowNode &van = *store->addNode(QStringLiteral("Book the van"), flow);
    const FlowNode &sofa = *store->addNode(QStringLiteral("Sell the sofa"), flow);
    store->moveNode(books, 200, 200);
    store->moveNode(van, 500, 200);
    store->moveNode(sofa, 800, 200);
    store->addEdge(books, van, EdgeSource::manual, EdgeKind::dependency);
    store->addEdge(van, sofa, EdgeSource::manual, EdgeKind::dependency);
    store->setStatus(NodeStatus::done, books);
    store->setViewport(flow, 0, 0, 1);
    show();
    window->resize(1320, 840);
    window->selectFlow(flow.id);
    QApplication::processEvents();
    ASSERT_NE(canvas().editor(), nullptr);

    QAccessibleInterface *view = QAccessible::queryAccessibleInterface(&canvas());
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->text(QAccessible::Name), "Canvas of Move house");
    QStringList titles;
    for (int i = 0; i < view->childCount(); ++i)
        if (view->child(i)->role() == QAccessible::ListItem)
            titles << view->child(i)->text(QAccessible::Name);
    titles.sort();
    EXPECT_EQ(titles.join(", ").toStdString(), "Book the van, Pack books, Sell the sofa");

    ASSERT_TRUE(card("Pack books") && card("Book the van") && card("Sell the sofa"));
    EXPECT_EQ(card("Pack books")->text(QAccessible::Value), "Done");
    EXPECT_TRUE(card("Pack books")->state().checked);
    EXPECT_EQ(card("Sell the sofa")->text(QAccessible::Value), "Waiting on 1");
    EXPECT_FALSE(card("Sell the sofa")->state().checked);
    EXPECT_EQ(card("Book the van")->text(QAccessible::Description),
              "Ready · After: Pack books · Before: Sell the sofa");

    // Where it is drawn, and found there.
    const QRect place = card("Book the van")->rect();
    EXPECT_TRUE(QRect(canvas().mapToGlobal(QPoint(0, 0)), canvas().size()).contains(place)) << place.x();
    EXPECT_EQ(view->childAt(place.center().x(), place.center().y()), card("Book the van"));
    EXPECT_EQ(view->indexOfChild(card("Book the van")), 1);

    // Select: the canvas's selection, the keyboard's anchor, announced.
    QAccessibleActionInterface *sofaActions = card("Sell the sofa")->actionInterface();
    ASSERT_NE(sofaActions, nullptr);
    sofaActions->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(canvas().editor()->interaction().selectedItemIDs(), QSet<QUuid>{sofa.id});
    EXPECT_TRUE(card("Sell the sofa")->state().selected);
    EXPECT_TRUE(card("Sell the sofa")->state().focused);
    EXPECT_EQ(view->focusChild(), card("Sell the sofa"));
    EXPECT_TRUE(sent(QAccessible::Focus, "Sell the sofa"));

    // Done: the canvas's own command, one undo step, and the card behind
    // it hears that it is no longer waiting.
    QAccessibleActionInterface *vanActions = card("Book the van")->actionInterface();
    EXPECT_EQ(vanActions->localizedActionName(QAccessibleActionInterface::toggleAction()), "Mark done");
    vanActions->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(van.isDone);
    QStringList steps;
    for (const FenrowHistory::Entry &entry : history->undoStack(flow.id))
        if (!entry.isSelectionOnly())
            steps << entry.name;
    EXPECT_EQ(steps, QStringList{"Change status"});
    EXPECT_TRUE(card("Book the van")->state().checked);
    EXPECT_EQ(card("Sell the sofa")->text(QAccessible::Value), "Ready");
    EXPECT_TRUE(sent(QAccessible::DescriptionChanged, "Sell the sofa"));
    window->undoAction()->trigger();
    EXPECT_FALSE(van.isDone);
    EXPECT_EQ(card("Sell the sofa")->text(QAccessible::Value), "Waiting on 1");
    // A task done before the flow was shown, open again.
    store->setStatus(NodeStatus::pending, books);
    QApplication::processEvents();
    EXPECT_EQ(card("Book the van")->text(QAccessible::Value), "Waiting on 1");
    store->setStatus(NodeStatus::done, books);

    // A subtask still open holds its parent up as a prerequisite does.
    const FlowNode &photos = *store->addNode(QStringLiteral("Photograph the sofa"), flow);
    store->moveNode(photos, 800, 400);
    store->addEdge(sofa, photos, EdgeSource::manual, EdgeKind::subtask);
    QApplication::processEvents();
    EXPECT_EQ(card("Sell the sofa")->text(QAccessible::Value), "Waiting on 2");
    store->setStatus(NodeStatus::done, photos);
    QApplication::processEvents();
    EXPECT_EQ(card("Sell the sofa")->text(QAccessible::Value), "Waiting on 1");

    // Open: selected, and its title field open as a double click leaves it.
    card("Pack books")->actionInterface()->doAction(QStringLiteral("open"));
    EXPECT_EQ(canvas().editor()->interaction().editingItemID(), books.id);
    canvas().titleEditor()->clearFocus();

    // A file's card opens the file, as its menu does, with the desktop's
    // program for it.
    const FlowFile &list = *store->attachFile(
        {QStringLiteral("boxes.txt"), QStringLiteral("text/plain"), 15, "a list of boxes"}, 500, 420, flow);
    QApplication::processEvents();
    OpenedUrls opened;
    QDesktopServices::setUrlHandler(QStringLiteral("file"), &opened, "open");
    const auto cleared = qScopeGuard([] { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); });
    ASSERT_TRUE(card("boxes.txt"));
    EXPECT_EQ(card("boxes.txt")->actionInterface()->actionNames(),
              QStringList({QAccessibleActionInterface::pressAction(), QStringLiteral("open")}));
    EXPECT_EQ(card("boxes.txt")->actionInterface()->localizedActionName(QStringLiteral("open")), "Open");
    card("boxes.txt")->actionInterface()->doAction(QStringLiteral("open"));
    ASSERT_EQ(opened.urls.size(), 1);
    QFile staged(opened.urls.first().toLocalFile());
    ASSERT_TRUE(staged.open(QIODevice::ReadOnly)) << staged.fileName().toStdString();
    EXPECT_EQ(staged.readAll(), "a list of boxes");
    EXPECT_TRUE(staged.fileName().endsWith(list.filename));

    // A card that goes takes its child with it.
    events().clear();
    store->deleteNode(sofa);
    QApplication::processEvents();
    EXPECT_EQ(childNamed(view, "Sell the sofa"), nullptr);
    EXPECT_TRUE(sent(QAccessible::ObjectReorder, view->text(QAccessible::Name)));
}

TEST_F(AccessibilityTest, ListRowsSayTheirTextAndStateAndTabReadsTheSidebarDownwards)
{
    store->saveAsTemplate(addFlow(QStringLiteral("Garden"), 1, 1, 2));
    show();

    QAccessibleInterface *flows = QAccessible::queryAccessibleInterface(sidebar().flowList());
    QAccessibleInterface *garden = childNamed(flows, "Garden");
    ASSERT_NE(garden, nullptr);
    EXPECT_EQ(garden->text(QAccessible::Description), "1 of 4 done · 1 in progress");

    QAccessibleInterface *readyRow = QAccessible::queryAccessibleInterface(sidebar().readyRow());
    EXPECT_EQ(readyRow->text(QAccessible::Name), "Ready, tasks: 3");
    EXPECT_FALSE(readyRow->state().checked);
    QTest::mouseClick(sidebar().readyRow(), Qt::LeftButton);
    EXPECT_TRUE(readyRow->state().checked) << "the route shown";

    QAccessibleInterface *ready = QAccessible::queryAccessibleInterface(window->readyList()->list());
    QAccessibleInterface *header = childNamed(ready, "Garden, tasks: 3");
    ASSERT_NE(header, nullptr) << "a header says what it holds";
    QAccessibleInterface *active = childNamed(ready, "Task 2");
    ASSERT_NE(active, nullptr);
    EXPECT_EQ(active->text(QAccessible::Description), "In progress, Garden") << "its flow though the header names it";
    EXPECT_EQ(childNamed(ready, "Task 3")->text(QAccessible::Description), "Ready, Garden");

    // Tab reads the sidebar from the top down.
    QWidget *collapse = sidebar().findChild<QWidget *>(QStringLiteral("sidebar.action.collapse"));
    ASSERT_NE(collapse, nullptr);
    collapse->setFocus(Qt::TabFocusReason);
    QStringList stops{collapse->objectName()};
    for (int press = 0; press < 8; ++press) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        stops << QApplication::focusWidget()->objectName();
    }
    EXPECT_EQ(stops.join(' ').toStdString(), "sidebar.action.collapse sidebar.route.search sidebar.route.ready "
                                             "sidebar.route.archive sidebar.templateMenu sidebar.action.newFlow "
                                             "sidebar.flows sidebar.action.settings sidebar.action.quit");
}

} // namespace
} // namespace fenrow::testing

#include "AccessibilityTest.moc"
