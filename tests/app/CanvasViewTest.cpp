#include "AppTestSupport.h"

#include "look/BrandPalette.h"

#include "canvas/CanvasEditor.h"
#include "canvas/NodeSizeResolver.h"
#include "canvasview/CanvasPanel.h"
#include "canvasview/CanvasToolbar.h"
#include "canvasview/CanvasView.h"
#include "canvasview/CanvasZoomPill.h"
#include "domain/DependencyEdge.h"
#include "domain/FlowFile.h"
#include "domain/Readiness.h"
#include "domain/TaskFlow.h"
#include "inspector/NodeInspector.h"
#include "shell/SampleFlow.h"
#include "window/FlowDetailView.h"

#include <QBuffer>
#include <QDir>
#include <QLabel>
#include <QMimeData>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QToolButton>
#include <QWheelEvent>

namespace fenrow::testing {
namespace {

// The canvas of a flow in the real window, driven by mouse, wheel and key
// events as Qt delivers them.
class CanvasViewTest : public WindowFixture {
protected:
    const TaskFlow &flowOf(std::initializer_list<std::pair<const char *, QPointF>> tasks)
    {
        const TaskFlow &made = *store->addFlow(QStringLiteral("Move house"));
        for (const auto &[title, at] : tasks)
            store->moveNode(*store->addNode(QString::fromUtf8(title), made), at.x(), at.y());
        // Shown at scale 1 with the canvas origin at the view's top left.
        store->setViewport(made, 0, 0, 1);
        return made;
    }

    void open(const TaskFlow &flow)
    {
        show();
        window->selectFlow(flow.id);
        QApplication::processEvents();
        ASSERT_NE(canvas().editor(), nullptr);
    }

    FlowDetailView &detail() const { return *window->flowDetail(); }
    CanvasView &canvas() const { return *detail().canvas(); }
    CanvasEditor &editor() const { return *canvas().editor(); }
    CanvasInteraction &interaction() const { return editor().interaction(); }
    const FlowNode &node(const TaskFlow &flow, const QString &title) const
    {
        for (const FlowNode *candidate : flow.items())
            if (candidate->title == title)
                return *candidate;
        throw std::runtime_error("no such task");
    }
    // Where the pointer finds a task: the viewport it is heading to, even
    // while an eased move is still drawing the way there.
    QPointF at(const FlowNode &task) const { return interaction().toScreen({task.posX, task.posY}); }

    void mouse(QEvent::Type type, QPointF point, Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers = {})
    {
        const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, point, canvas().mapToGlobal(point), button, buttons, modifiers);
        QApplication::sendEvent(&canvas(), &event);
    }
    void click(QPointF point, Qt::KeyboardModifiers modifiers = {})
    {
        mouse(QEvent::MouseButtonPress, point, Qt::LeftButton, modifiers);
        mouse(QEvent::MouseButtonRelease, point, Qt::NoButton, modifiers);
    }
    void drag(QPointF from, QPointF to)
    {
        mouse(QEvent::MouseButtonPress, from, Qt::LeftButton);
        for (int step = 1; step <= 5; ++step)
            mouse(QEvent::MouseMove, from + (to - from) * step / 5.0, Qt::LeftButton);
        mouse(QEvent::MouseButtonRelease, to, Qt::NoButton);
    }
    void wheel(QPointF point, int notches, Qt::KeyboardModifiers modifiers)
    {
        QWheelEvent event(point, canvas().mapToGlobal(point), QPoint(), QPoint(0, notches * 120), Qt::NoButton,
                          modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&canvas(), &event);
    }
    QStringList undoNames(const TaskFlow &flow) const
    {
        QStringList names;
        for (const FenrowHistory::Entry &entry : history->undoStack(flow.id))
            if (entry.name != QLatin1StringView("Select"))
                names << entry.name;
        return names;
    }
    QString zoomLevel() const { return detail().zoomPill()->level()->text(); }
    // The canvas as the window shows it, after the repaints it asked for.
    QImage shownOnScreen() const
    {
        const QPoint origin = canvas().mapTo(window.get(), QPoint(0, 0));
        return window->screen()
            ->grabWindow(window->winId(), origin.x(), origin.y(), canvas().width(), canvas().height())
            .toImage()
            .convertToFormat(QImage::Format_RGB32);
    }
    static int differing(const QImage &a, const QImage &b)
    {
        if (a.size() != b.size())
            return int(b.width() * b.height());
        int count = 0;
        for (int y = 0; y < b.height(); ++y)
            for (int x = 0; x < b.width(); ++x)
                count += a.pixel(x, y) != b.pixel(x, y) ? 1 : 0;
        return count;
    }
    // Pixels of the canvas on screen that differ from the canvas painted whole.
    int differingFromWholeRepaint() const
    {
        return differing(shownOnScreen(), canvas().grab().toImage().convertToFormat(QImage::Format_RGB32));
    }
};

TEST_F(CanvasViewTest, DraggingACardMovesItAndUndoPutsItBack)
{
    const TaskFlow &flow = flowOf({{"Pack books", {300, 200}}, {"Book the van", {650, 200}}});
    open(flow);
    const FlowNode &books = node(flow, "Pack books");

    drag(at(books), at(books) + QPointF(120, 90));
    EXPECT_EQ(QPointF(books.posX, books.posY), QPointF(420, 290));
    EXPECT_EQ(undoNames(flow), QStringList{"Move"});
    EXPECT_EQ(interaction().selectedItemIDs(), QSet<QUuid>{books.id}) << "the dragged card is selected";
    EXPECT_FALSE(interaction().nodeDrag()) << "nothing is left hanging after the release";

    ASSERT_TRUE(window->undoAction()->isEnabled());
    window->undoAction()->trigger();
    EXPECT_EQ(QPointF(books.posX, books.posY), QPointF(300, 200));
    window->redoAction()->trigger();
    EXPECT_EQ(QPointF(books.posX, books.posY), QPointF(420, 290));
}

TEST_F(CanvasViewTest, AClickSelectsAndTheInspectorShowsTheTask)
{
    const TaskFlow &flow = flowOf({{"Pack books", {300, 200}}, {"Book the van", {650, 200}}});
    store->addEdge(node(flow, "Pack books"), node(flow, "Book the van"), EdgeSource::manual, EdgeKind::dependency);
    open(flow);
    NodeInspector &inspector = *detail().inspector();
    EXPECT_FALSE(inspector.isVisible()) << "nothing selected, no inspector";

    const FlowNode &van = node(flow, "Book the van");
    // A title longer than the field shows its beginning.
    store->setTitle(van, "Book the van " + QString("and the trailer ").repeated(8));
    click(at(van));
    EXPECT_EQ(inspector.titleField()->cursorPosition(), 0);
    store->setTitle(van, "Book the van");
    EXPECT_EQ(interaction().selectedItemIDs(), QSet<QUuid>{van.id});
    ASSERT_TRUE(inspector.isVisible());
    EXPECT_EQ(inspector.page(), NodeInspector::Page::node);
    EXPECT_EQ(inspector.titleField()->text(), "Book the van");
    EXPECT_GE(inspector.width(), 220);
    EXPECT_LE(inspector.width(), 560);

    // Its "blocked by" row selects the other task on the canvas.
    const FlowNode &books = node(flow, "Pack books");
    auto *related = inspector.findChild<QAbstractButton *>(QStringLiteral("inspector.related.") + books.id.toString(QUuid::WithoutBraces));
    ASSERT_NE(related, nullptr);
    related->click();
    EXPECT_EQ(interaction().selectedItemIDs(), QSet<QUuid>{books.id});
    EXPECT_EQ(inspector.titleField()->text(), "Pack books");

    // Shift adds to the selection; two tasks have no form, so the panel goes.
    click(at(van), Qt::ShiftModifier);
    EXPECT_EQ(interaction().selectedItemIDs().size(), 2);
    EXPECT_FALSE(inspector.isVisible());

    click(QPointF(60, 500));
    EXPECT_TRUE(interaction().selectedItemIDs().isEmpty());

    // Selections are steps of their own that undo walks back through.
    window->undoAction()->trigger();
    EXPECT_EQ(interaction().selectedItemIDs().size(), 2);
}

TEST_F(CanvasViewTest, ControlWheelZoomsAboutThePointerAndThePillShowsTheLevel)
{
    const TaskFlow &flow = flowOf({{"Pack books", {300, 200}}, {"Book the van", {650, 200}}});
    open(flow);
    EXPECT_EQ(zoomLevel(), "100%");
    const FlowNode &books = node(flow, "Pack books");
    const QPointF pointer = at(books);

    wheel(pointer, 3, Qt::ControlModifier);
    const double zoomed = interaction().scale();
    EXPECT_GT(zoomed, 1.05);
    EXPECT_EQ(zoomLevel(), QStringLiteral("%1%").arg(std::lround(zoomed * 100)));
    EXPECT_NEAR(at(books).x(), pointer.x(), 0.5) << "the card under the pointer stays there";

    // A plain wheel pans instead.
    wheel(pointer, -2, {});
    EXPECT_DOUBLE_EQ(interaction().scale(), zoomed);
    EXPECT_NEAR(at(books).y(), pointer.y() - 48, 0.5);

    // At the lower limit the pill says 40 and zoom out is off.
    for (int turn = 0; turn < 12; ++turn)
        wheel(pointer, -5, Qt::ControlModifier);
    EXPECT_EQ(zoomLevel(), "40%");
    auto *out = detail().zoomPill()->findChild<QToolButton *>("toolbar.zoomOut");
    auto *in = detail().zoomPill()->findChild<QToolButton *>("toolbar.zoomIn");
    EXPECT_FALSE(out->isEnabled());
    EXPECT_TRUE(in->isEnabled());
    in->click();
    EXPECT_EQ(zoomLevel(), "50%");
    EXPECT_DOUBLE_EQ(flow.viewportScale, 0.5) << "a zoom command is kept at once";

    detail().zoomPill()->findChild<QToolButton *>("toolbar.zoomToFit")->click();
    EXPECT_EQ(zoomLevel(), "100%") << "two cards fit without being blown up";
}

TEST_F(CanvasViewTest, TheFilterHidesOtherColoursFromDrawingAndFromThePointer)
{
    const TaskFlow &flow = flowOf({{"Pack books", {300, 200}}, {"Book the van", {650, 200}}});
    store->setColor(NodeColor::red, node(flow, "Book the van"));
    open(flow);
    const FlowNode &books = node(flow, "Pack books");
    const QPointF booksAt = at(books);

    QMenu *menu = detail().toolbar()->filterMenu();
    emit menu->aboutToShow();
    menu->findChild<QAction *>("toolbar.filter.mode.hide")->trigger();
    emit menu->aboutToShow();
    menu->findChild<QAction *>("toolbar.filter.color.red")->trigger();
    EXPECT_EQ(preferences->filterMode(), FilterMode::hide);
    ASSERT_EQ(editor().visibleNodes().size(), 1);

    click(booksAt);
    EXPECT_TRUE(interaction().selectedItemIDs().isEmpty()) << "a hidden card takes no click";
    const QImage shown = canvas().grab().toImage();
    const QColor ground = shown.pixelColor(5, shown.height() / 2);
    EXPECT_EQ(shown.pixelColor(booksAt.toPoint()), ground) << "nor is it drawn";
    EXPECT_FALSE(window->findChild<QWidget *>("canvas.empty")->isVisible()) << "the flow still has tasks";

    // In dim mode the same card is drawn faintly and can be chosen.
    emit menu->aboutToShow();
    menu->findChild<QAction *>("toolbar.filter.mode.dim")->trigger();
    click(booksAt);
    EXPECT_EQ(interaction().selectedItemIDs(), QSet<QUuid>{books.id});

    emit menu->aboutToShow();
    menu->findChild<QAction *>("toolbar.filter.clear")->trigger();
    EXPECT_TRUE(interaction().colorFilter().isEmpty());
}

TEST_F(CanvasViewTest, DraggingFromAPortDrawsAnEdgeThatUndoTakesBack)
{
    const TaskFlow &flow = flowOf({{"Pack books", {200, 200}}, {"Book the van", {600, 200}}});
    open(flow);
    const FlowNode &books = node(flow, "Pack books");
    const FlowNode &van = node(flow, "Book the van");
    const auto port = [&](const FlowNode &task) { return at(task) + QPointF(105, 0); };

    // The port shows once the pointer is over the card.
    mouse(QEvent::MouseMove, at(books), Qt::NoButton);
    drag(port(books), at(van));
    ASSERT_EQ(flow.edges().size(), 1u);
    EXPECT_EQ(flow.edges()[0]->fromItem(), &books);
    EXPECT_EQ(flow.edges()[0]->toItem(), &van);
    EXPECT_EQ(undoNames(flow), QStringList{"Connect"});
    EXPECT_FALSE(interaction().pendingConnection());

    window->undoAction()->trigger();
    EXPECT_TRUE(flow.edges().empty());
}

TEST_F(CanvasViewTest, TabAddsATaskBesideTheSelectedOneAndItsTitleIsTypedInPlace)
{
    const TaskFlow &flow = flowOf({{"Pack books", {300, 200}}});
    open(flow);
    click(at(node(flow, "Pack books")));
    QTest::keyClick(&canvas(), Qt::Key_Tab);
    ASSERT_EQ(flow.items().size(), 2u);
    QLineEdit *title = canvas().titleEditor();
    ASSERT_TRUE(title->isVisible());
    EXPECT_TRUE(title->hasFocus());
    QTest::keyClicks(title, "Label the boxes");
    QTest::keyClick(title, Qt::Key_Return);
    EXPECT_FALSE(title->isVisible());
    EXPECT_TRUE(canvas().hasFocus()) << "the keyboard goes back to the canvas";
    EXPECT_EQ(undoNames(flow), (QStringList{"Add next task", "Rename"}));
    ASSERT_EQ(flow.edges().size(), 1u);
    EXPECT_EQ(flow.edges()[0]->toItem()->title, "Label the boxes");

    // A double click renames too; Escape keeps the old title.
    const FlowNode &labels = *flow.edges()[0]->toItem();
    click(at(labels));
    mouse(QEvent::MouseButtonDblClick, at(labels), Qt::LeftButton);
    mouse(QEvent::MouseButtonRelease, at(labels), Qt::NoButton);
    ASSERT_TRUE(title->isVisible());
    QTest::keyClicks(title, "Something else");
    QTest::keyClick(title, Qt::Key_Escape);
    EXPECT_EQ(labels.title, "Label the boxes");

    // Delete takes the selected task away; undo brings it back.
    QTest::keyClick(&canvas(), Qt::Key_Delete);
    EXPECT_EQ(flow.items().size(), 1u);
    window->undoAction()->trigger();
    EXPECT_EQ(flow.items().size(), 2u);

    // Another flow chosen, or the window closed, while a title is typed
    // keeps what was typed.
    QTest::keyClick(&canvas(), Qt::Key_Tab);
    ASSERT_TRUE(title->isVisible());
    QTest::keyClicks(title, "Tape the boxes");
    window->selectFlow(store->addFlow(QStringLiteral("Garden shed"))->id);
    EXPECT_FALSE(title->isVisible());
    EXPECT_NO_THROW(node(flow, "Tape the boxes"));
    window->selectFlow(flow.id);
    click(at(node(flow, "Pack books")));
    QTest::keyClick(&canvas(), Qt::Key_Tab);
    ASSERT_TRUE(canvas().titleEditor()->isVisible());
    QTest::keyClicks(canvas().titleEditor(), "Book the van");
    window.reset();
    EXPECT_NO_THROW(node(flow, "Book the van"));
}

TEST_F(CanvasViewTest, TheCardMenuColoursAndTheEmptyHintAddsTheFirstTask)
{
    const TaskFlow &empty = *store->addFlow(QStringLiteral("Garden shed"));
    open(empty);
    QWidget *hint = window->findChild<QWidget *>("canvas.empty");
    ASSERT_TRUE(hint->isVisible());
    QTest::mouseClick(window->findChild<QPushButton *>("canvas.empty.add"), Qt::LeftButton);
    ASSERT_EQ(empty.items().size(), 1u);
    EXPECT_FALSE(hint->isVisible());
    QTest::keyClick(canvas().titleEditor(), Qt::Key_Return);

    const FlowNode &task = *empty.items()[0];
    QMenu *menu = canvas().contextMenuAt(at(task));
    ASSERT_NE(menu, nullptr);
    menu->findChild<QAction *>("canvas.node.color.green")->trigger();
    EXPECT_EQ(task.color(), NodeColor::green);
    EXPECT_EQ(undoNames(empty).last(), "Change color");
    delete menu;

    menu = canvas().contextMenuAt(at(task));
    menu->findChild<QAction *>("canvas.node.status.done")->trigger();
    EXPECT_TRUE(task.isDone);
    delete menu;
    EXPECT_TRUE(detail().toolbar()->findChild<QToolButton *>("toolbar.archiveDone")->isEnabled());

    // A task with subtasks folds them from its menu, and the port counts them.
    const FlowNode &wood = *store->addNode(QStringLiteral("Pick a wood"), empty);
    store->moveNode(wood, task.posX, task.posY + 300);
    store->addEdge(task, wood, EdgeSource::manual, EdgeKind::subtask);
    menu = canvas().contextMenuAt(at(task));
    ASSERT_NE(menu->findChild<QAction *>("canvas.port.action.collapse"), nullptr);
    menu->findChild<QAction *>("canvas.port.action.collapse")->trigger();
    EXPECT_TRUE(task.isCollapsed);
    EXPECT_EQ(editor().visibleNodes().size(), 1);
    delete menu;

    menu = canvas().contextMenuAt(QPointF(30, canvas().height() - 30));
    ASSERT_NE(menu->findChild<QAction *>("toolbar.addTask"), nullptr);
    EXPECT_NE(menu->findChild<QAction *>("canvas.node.delete"), nullptr) << "the selected task can go from here";
    menu->findChild<QAction *>("toolbar.addTask")->trigger();
    EXPECT_EQ(empty.items().size(), 3u);
    delete menu;
}

TEST_F(CanvasViewTest, TheMenuKeyOpensTheSelectionsMenuBesideIt)
{
    const TaskFlow &flow = flowOf({{"Pack books", {150, 120}}, {"Book the van", {650, 200}}});
    const FlowFile &list = *store->attachFile(
        {QStringLiteral("boxes.txt"), QStringLiteral("text/plain"), 15, "a list of boxes"}, 150, 420, flow);
    open(flow);
    // The menu key, as the window hands it on: to the focused canvas, at
    // the middle of the view, which shows nothing.
    const auto menuKey = [&] {
        const QPoint middle(canvas().width() / 2, canvas().height() / 2);
        QContextMenuEvent event(QContextMenuEvent::Keyboard, middle, canvas().mapToGlobal(middle));
        QApplication::sendEvent(&canvas(), &event);
        QWidget *menu = QApplication::activePopupWidget();
        const QString name = menu ? menu->objectName() : QString();
        const QPoint corner = menu ? canvas().mapFromGlobal(menu->pos()) : QPoint();
        if (menu)
            menu->close();
        QApplication::processEvents();
        return std::pair(name, corner);
    };
    const auto near = [](QPoint corner, QPointF point) { return (QPointF(corner) - point).manhattanLength() < 4; };

    const FlowNode &books = node(flow, "Pack books");
    click(at(books));
    auto [name, corner] = menuKey();
    EXPECT_EQ(name, "canvas.node.menu");
    EXPECT_TRUE(near(corner, at(books))) << corner.x() << "," << corner.y();

    click(interaction().toScreen({list.posX, list.posY}));
    ASSERT_EQ(interaction().selectedFileID(), list.id);
    std::tie(name, corner) = menuKey();
    EXPECT_EQ(name, "canvas.file.menu");
    EXPECT_TRUE(near(corner, interaction().toScreen({list.posX, list.posY})));

    // A card scrolled out of view has its menu at the view's edge.
    const FlowNode &van = node(flow, "Book the van");
    store->moveNode(van, 5000, 200);
    click(at(books));
    interaction().setSelectedItemIDs({van.id});
    std::tie(name, corner) = menuKey();
    EXPECT_EQ(name, "canvas.node.menu");
    EXPECT_LT(corner.x(), canvas().width());
    EXPECT_GT(corner.x(), canvas().width() / 2);

    // Two cards selected: the menu is the view's own, as before.
    interaction().setSelectedFileID(std::nullopt);
    interaction().setSelectedItemIDs({books.id, van.id});
    EXPECT_EQ(menuKey().first, "canvas.background.menu");
}

TEST_F(CanvasViewTest, DroppedFilesBecomeCardsSideBySideAndATooLargeOneIsReported)
{
    const TaskFlow &flow = flowOf({{"Pack books", {300, 200}}});
    open(flow);
    QTemporaryDir folder;
    const auto file = [&](const QString &name, qint64 size) {
        QFile made(folder.filePath(name));
        EXPECT_TRUE(made.open(QIODevice::WriteOnly));
        if (size > 100)
            made.resize(size);
        else
            made.write("a list of boxes");
        return QUrl::fromLocalFile(made.fileName());
    };
    QMimeData data;
    data.setUrls({file("boxes.txt", 10), file("huge.bin", FlowFileImport::maxBytes + 1), file("keys.txt", 10)});
    const QPointF point(200, 420);
    QDragEnterEvent enter(point.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&canvas(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(point, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&canvas(), &drop);

    const QList<const FlowFile *> files = FenrowStore::liveFiles(flow);
    ASSERT_EQ(files.size(), 2);
    EXPECT_EQ(files[0]->filename, "boxes.txt");
    EXPECT_EQ(QPointF(files[0]->posX, files[0]->posY), point);
    EXPECT_EQ(QPointF(files[1]->posX, files[1]->posY), point + QPointF(242, 0)) << "the next file stands beside it";
    ASSERT_TRUE(interaction().fileDropFailure().has_value());
    EXPECT_EQ(interaction().fileDropFailure()->filename, "huge.bin");
    EXPECT_TRUE(std::holds_alternative<FlowFileImport::TooLarge>(interaction().fileDropFailure()->failure));

    // A file card is chosen like a task, and the inspector shows the file.
    click(interaction().toScreen({files[0]->posX, files[0]->posY}));
    EXPECT_EQ(interaction().selectedFileID(), files[0]->id);
    EXPECT_EQ(detail().inspector()->page(), NodeInspector::Page::file);
}

TEST_F(CanvasViewTest, EachFlowKeepsItsViewAndTheInspectorItsWidth)
{
    const TaskFlow &house = flowOf({{"Pack books", {300, 200}}, {"Book the van", {650, 200}}});
    const TaskFlow &garden = flowOf({{"Dig the bed", {300, 200}}});
    open(house);
    wheel(QPointF(300, 300), -4, {});
    wheel(QPointF(300, 300), 2, Qt::ControlModifier);
    const QPointF offset = interaction().offset();
    const double scale = interaction().scale();
    window->selectFlow(garden.id);
    QApplication::processEvents();
    EXPECT_EQ(QPointF(house.viewportOffsetX, house.viewportOffsetY), offset) << "kept when the flow goes";
    EXPECT_DOUBLE_EQ(house.viewportScale, scale);
    window->selectFlow(house.id);
    QApplication::processEvents();
    EXPECT_EQ(interaction().offset(), offset);
    EXPECT_DOUBLE_EQ(interaction().scale(), scale);

    // The inspector's edge is dragged within its limits, and the width kept.
    click(at(node(house, "Pack books")));
    QWidget *divider = window->findChild<QWidget *>("inspector.resize");
    ASSERT_TRUE(divider->isVisible());
    const QPoint grip = divider->rect().center();
    QTest::mousePress(divider, Qt::LeftButton, {}, grip);
    QMouseEvent move(QEvent::MouseMove, QPointF(grip) + QPointF(-900, 0), divider->mapToGlobal(QPointF(grip) + QPointF(-900, 0)),
                     Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(divider, &move);
    QTest::mouseRelease(divider, Qt::LeftButton, {}, grip + QPoint(-900, 0));
    EXPECT_EQ(detail().inspector()->width(), 560);
    EXPECT_DOUBLE_EQ(preferences->inspectorWidth(), 560);
}

TEST_F(CanvasViewTest, ArrangeIsOneStepAndTextFieldsKeepTheirKeys)
{
    const TaskFlow &flow = flowOf({{"Pack books", {900, 700}}, {"Book the van", {-300, 40}}, {"Label boxes", {120, -500}}});
    store->addEdge(node(flow, "Pack books"), node(flow, "Book the van"), EdgeSource::manual, EdgeKind::dependency);
    open(flow);
    const QList<QPointF> before{{900, 700}, {-300, 40}, {120, -500}};
    detail().toolbar()->findChild<QToolButton *>("toolbar.arrange")->click();
    EXPECT_EQ(undoNames(flow), QStringList{"Arrange as tree"});
    const FlowNode &books = node(flow, "Pack books");
    const FlowNode &van = node(flow, "Book the van");
    EXPECT_LT(books.posX, van.posX) << "the prerequisite stands left of what waits for it";
    window->undoAction()->trigger();
    EXPECT_EQ(QPointF(books.posX, books.posY), before[0]);

    // While the inspector's title has the keyboard, arrows and Delete edit the text.
    click(at(books));
    QLineEdit *title = detail().inspector()->titleField();
    title->setFocus();
    QTest::keyClick(title, Qt::Key_End);
    QTest::keyClick(title, Qt::Key_Backspace);
    QTest::keyClick(title, Qt::Key_Right);
    EXPECT_EQ(title->text(), "Pack book");
    EXPECT_EQ(flow.items().size(), 3u) << "nothing on the canvas was deleted";
    EXPECT_EQ(interaction().selectedItemIDs(), QSet<QUuid>{books.id});

    // On the canvas the space bar is the hand tool.
    canvas().setFocus();
    QTest::keyPress(&canvas(), Qt::Key_Space);
    EXPECT_TRUE(interaction().spaceHeld());
    EXPECT_EQ(canvas().cursor().shape(), Qt::OpenHandCursor);
    QTest::keyRelease(&canvas(), Qt::Key_Space);
    EXPECT_FALSE(interaction().spaceHeld());
}

// Counts what the canvas repaints.
class PaintWatch : public QObject {
public:
    QRegion painted;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            painted += static_cast<QPaintEvent *>(event)->region();
        return false;
    }
};

TEST_F(CanvasViewTest, ADragRepaintsOnlyWhatMovesAndLeavesNoTrail)
{
    const TaskFlow &flow = flowOf({{"Pack books", {200, 150}},
                                   {"Book the van", {520, 150}},
                                   {"Label boxes", {200, 420}},
                                   {"Clean the flat", {520, 420}},
                                   {"Hand over keys", {840, 420}}});
    store->addEdge(node(flow, "Pack books"), node(flow, "Book the van"), EdgeSource::manual, EdgeKind::dependency);
    open(flow);
    QApplication::processEvents();
    const FlowNode &books = node(flow, "Pack books");
    const QPointF from = at(books);

    // Choosing the card opens the inspector and redraws it all; the moves after do not.
    mouse(QEvent::MouseButtonPress, from, Qt::LeftButton);
    mouse(QEvent::MouseMove, from + QPointF(8, 0), Qt::LeftButton);
    QApplication::processEvents();
    PaintWatch watch;
    canvas().installEventFilter(&watch);
    for (int step = 1; step <= 6; ++step) {
        mouse(QEvent::MouseMove, from + QPointF(step * 12, step * 8), Qt::LeftButton);
        QApplication::processEvents();
    }
    canvas().removeEventFilter(&watch);
    ASSERT_TRUE(interaction().nodeDrag().has_value());
    qint64 area = 0;
    for (const QRect &rect : watch.painted)
        area += qint64(rect.width()) * rect.height();
    EXPECT_GT(area, 0);
    EXPECT_LT(area, qint64(canvas().width()) * canvas().height() / 3) << "a drag repaints its card and lines only";
    EXPECT_FALSE(watch.painted.intersects(QRect(at(node(flow, "Hand over keys")).toPoint(), QSize(4, 4))))
        << "a card far away is left alone";

    EXPECT_EQ(differingFromWholeRepaint(), 0) << "no trail of the card's earlier places";
    mouse(QEvent::MouseButtonRelease, from + QPointF(72, 48), Qt::NoButton);
}

TEST_F(CanvasViewTest, AnEditRepaintsOnlyTheCardsItChanges)
{
    // Close enough to stay in view beside the inspector.
    const TaskFlow &flow = flowOf({{"Pack books", {150, 130}},
                                   {"Book the van", {400, 130}},
                                   {"Label boxes", {150, 400}},
                                   {"Hand over keys", {400, 400}}});
    const FlowNode &books = node(flow, "Pack books");
    const FlowNode &van = node(flow, "Book the van");
    const FlowNode &keys = node(flow, "Hand over keys");
    store->addEdge(books, van, EdgeSource::manual, EdgeKind::dependency);
    open(flow);
    QApplication::processEvents();
    const auto repainted = [&](const std::function<void()> &edit) {
        PaintWatch watch;
        canvas().installEventFilter(&watch);
        edit();
        QApplication::processEvents();
        canvas().removeEventFilter(&watch);
        return watch.painted;
    };
    const auto shows = [&](const QRegion &painted, const FlowNode &task) {
        return painted.intersects(QRect(at(task).toPoint(), QSize(4, 4)));
    };

    // A title typed into the card's field: that card alone.
    interaction().setEditingItemID(books.id);
    QApplication::processEvents();
    QLineEdit *field = canvas().titleEditor();
    ASSERT_TRUE(field->isVisible());
    field->setText(QStringLiteral("Pack the books"));
    QRegion painted = repainted([&] { QTest::keyClick(field, Qt::Key_Return); });
    EXPECT_EQ(books.title, QStringLiteral("Pack the books"));
    EXPECT_TRUE(shows(painted, books));
    EXPECT_FALSE(shows(painted, van));
    EXPECT_FALSE(shows(painted, keys));
    EXPECT_EQ(differingFromWholeRepaint(), 0);

    // Done: the card and the one it held up, which is ready now.
    painted = repainted([&] { store->setStatus(NodeStatus::done, books); });
    EXPECT_TRUE(shows(painted, books));
    EXPECT_TRUE(shows(painted, van));
    EXPECT_FALSE(shows(painted, keys));
    EXPECT_EQ(differingFromWholeRepaint(), 0);

    // Selected: the card taken in and the one left.
    // The first opens the inspector, and the view eases over beside it
    // once the panel has taken its room.
    interaction().setSelectedItemIDs({van.id});
    QApplication::processEvents();
    EXPECT_TRUE(canvas().isZooming());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !canvas().isZooming(); }));
    painted = repainted([&] { interaction().setSelectedItemIDs({keys.id}); });
    EXPECT_TRUE(shows(painted, van));
    EXPECT_TRUE(shows(painted, keys));
    EXPECT_FALSE(shows(painted, books));
    EXPECT_EQ(differingFromWholeRepaint(), 0);

    // The viewport saved once a pan rests: nothing shown changes.
    editor().pan(-30, 0);
    QApplication::processEvents();
    painted = repainted([&] { editor().persistViewport(); });
    EXPECT_EQ(flow.viewportOffsetX, interaction().offset().x());
    for (const FlowNode *task : flow.items())
        EXPECT_FALSE(shows(painted, *task)) << task->title.toStdString();

    // Moved: the lines follow it, so everything is drawn again.
    painted = repainted([&] { store->moveNode(books, 260, 180); });
    EXPECT_TRUE(shows(painted, keys));
    EXPECT_EQ(differingFromWholeRepaint(), 0);
}

TEST_F(CanvasViewTest, LinesDrawnIntoTheLayerMatchThoseDrawnWithMovingCards)
{
    // Lines from eight cards to eight others at many slants, so that their
    // heads fall across the rows the kept layer of lines is drawn in; some
    // of them subtasks' dashed lines, one chosen, half the cards blue, so
    // that a filter of blue leaves some of each kind whole.
    const TaskFlow &flow = flowOf({});
    QList<const FlowNode *> from;
    QList<const FlowNode *> to;
    for (int i = 0; i < 8; ++i) {
        from << store->addNode(QStringLiteral("Before %1").arg(i), flow);
        store->moveNode(*from.last(), 150, 60 + 83 * i);
        to << store->addNode(QStringLiteral("After %1").arg(i), flow);
        store->moveNode(*to.last(), 640, 45 + 79 * i);
        for (const FlowNode *task : {from.last(), to.last()})
            store->setColor(i % 2 ? NodeColor::blue : NodeColor::none, *task);
    }
    QUuid chosen;
    for (int i = 0; i < 8; ++i)
        for (int j = i % 3; j < 8; j += 3) {
            const DependencyEdge &edge =
                store->addEdge(*from[i], *to[j], EdgeSource::manual, j == i ? EdgeKind::subtask : EdgeKind::dependency);
            if (i == 1 && j == 7)
                chosen = edge.id;
        }
    open(flow);
    ASSERT_GE(canvas().height(), 5 * 64) << "tall enough for the layer to be drawn in strips";
    interaction().setSelectedEdgeID(chosen);

    // Cards held still in a drag: their lines and heads are drawn whole
    // over the frame, from the tasks, rather than into the layer.
    QSet<QUuid> all;
    for (const FlowNode *task : flow.items())
        all.insert(task->id);
    const auto farFromLiveLines = [&](bool fromScene) {
        const QImage kept = canvas().grab().toImage().convertToFormat(QImage::Format_RGB32);
        EXPECT_EQ(editor().hasScene(), fromScene);
        interaction().setNodeDrag(NodeDrag{all, QPointF()});
        const QImage whole = canvas().grab().toImage().convertToFormat(QImage::Format_RGB32);
        interaction().setNodeDrag(std::nullopt);
        EXPECT_EQ(kept.size(), whole.size());
        // Lines blended into the layer may differ from stroked ones by a few
        // levels along their edges; a head cut short, a line left out or
        // drawn as another differs by far more.
        int far = 0;
        for (int y = 0; y < std::min(kept.height(), whole.height()); ++y)
            for (int x = 0; x < std::min(kept.width(), whole.width()); ++x) {
                const QRgb a = kept.pixel(x, y);
                const QRgb b = whole.pixel(x, y);
                far += std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                                 std::abs(qBlue(a) - qBlue(b))}) > 64
                           ? 1
                           : 0;
            }
        return far;
    };
    // The layer's lines found from the tasks, and then from the editor's
    // scene, which a filter that dims makes for the lines it leaves whole.
    EXPECT_EQ(farFromLiveLines(false), 0);
    CanvasColorFilter blue;
    blue.toggle(NodeColor::blue);
    interaction().setColorFilter(blue);
    EXPECT_EQ(farFromLiveLines(true), 0);
}

TEST_F(CanvasViewTest, ManyCardsCopiedOnTwoThreadsShowWhatOneThreadDraws)
{
    // Enough cards in view for the window to share their copies out
    // between two threads, packed so that cards, ports, fold counts and
    // the grip reach across the rows where the frame is halved; some
    // dimmed by a filter, one chosen.
    const TaskFlow &flow = flowOf({});
    QList<const FlowNode *> tasks;
    for (int i = 0; i < 144; ++i) {
        tasks << store->addNode(QStringLiteral("Task %1").arg(i), flow);
        store->moveNode(*tasks.last(), 110 + 150 * (i % 12), 60 + 70 * (i / 12));
        if (i % 3 == 0)
            store->setColor(NodeColor::blue, *tasks.last());
    }
    for (int i = 0; i + 1 < 144; i += 9) {
        store->addEdge(*tasks[i], *tasks[i + 1], EdgeSource::manual, EdgeKind::subtask);
        store->setCollapsed(*tasks[i], true);
    }
    store->setViewport(flow, 0, 0, 0.5);
    open(flow);
    CanvasColorFilter blue;
    blue.toggle(NodeColor::blue);
    interaction().setColorFilter(blue);
    interaction().setSelectedItemIDs({tasks[66]->id});
    QApplication::processEvents();
    // Painted in bands too narrow to share out, on the window's thread
    // alone, and then whole.
    const int band = 40;
    for (int top = 0; top < canvas().height(); top += band)
        canvas().repaint(QRect(0, top, canvas().width(), band));
    const QImage byOneThread = shownOnScreen();
    canvas().repaint();
    EXPECT_EQ(differing(shownOnScreen(), byOneThread), 0);
}

// A flow of every kind of card, shown in two palettes, light and dark, for
// a reviewer to look at.
class CanvasLookTest : public CanvasViewTest {
protected:
    const TaskFlow &sample()
    {
        preferences->setHasSeededSampleFlow(false);
        const TaskFlow &flow = *SampleFlow::seedIfNeeded(*store, *preferences, NodeSizeResolver());
        const auto day = [](int d) { return QDateTime(QDate(2026, 6, d), QTime(0, 0), QTimeZone("Europe/Berlin")); };
        const QList<const FlowNode *> tasks = flow.orderedItems();
        store->setStatus(NodeStatus::done, *tasks[0]);
        store->setStatus(NodeStatus::inProgress, *tasks[1]);
        store->setDueDate(day(12), *tasks[1]);
        store->setPriority(NodePriority::high, *tasks[1]);
        store->setEstimate(90, *tasks[2]);
        store->setColor(NodeColor::blue, *tasks[2]);
        store->addChecklistEntry(QStringLiteral("Hero image"), *tasks[2]);
        store->addChecklistEntry(QStringLiteral("Footer"), *tasks[2]);
        store->setNotes(*tasks[2], QStringLiteral("Keep it calm"));
        store->setDueDate(day(8), *tasks[3]);
        store->setStartDate(day(20), *tasks[4]);
        return flow;
    }

    // Changes the look and waits for the window built in it to show the
    // canvas again.
    void changeLook(const std::function<void()> &change)
    {
        const QPointer<FlowDetailView> before = window->flowDetail();
        change();
        ASSERT_TRUE(QTest::qWaitFor([&] {
            return !before && detail().isVisible() && canvas().editor() && canvas().editor()->didInitViewport();
        }));
    }

    // The window as it shows now, saved for a reviewer.
    QImage save(const QString &name)
    {
        // Cards are drawn sharp again once a zoom rests; an ease may start
        // only once the inspector has taken its room.
        QApplication::processEvents();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !canvas().isZooming(); }));
        return saveScreenshot(*window, name);
    }

    // The colour of the canvas's ground in `shot`, in its lower left corner.
    QColor groundIn(const QImage &shot) const
    {
        return shot.pixelColor(canvas().mapTo(window.get(), QPoint(40, canvas().height() - 40)));
    }

    // Whether the selection's ring, set off from the card by a gap, is in
    // `shot` above the middle of `task`'s card.
    bool showsSelectionRing(const QImage &shot, const FlowNode &task, const QColor &ring) const
    {
        const double top = task.posY - NodeSizeResolver().resolve(task).height / 2;
        const QPoint above = canvas().mapTo(window.get(), interaction().toScreen({task.posX, top - 5.5}).toPoint());
        for (int dy = -2; dy <= 2; ++dy) {
            const QColor seen = shot.pixelColor(above + QPoint(0, dy));
            if (std::abs(seen.red() - ring.red()) + std::abs(seen.green() - ring.green()) +
                    std::abs(seen.blue() - ring.blue()) <
                40)
                return true;
        }
        return false;
    }
};

TEST_F(CanvasLookTest, SampleFlowInLightAndDarkAndTwoPalettes)
{
    preferences->setTheme(AppTheme::light);
    const TaskFlow &flow = sample();
    open(flow);
    window->resize(1280, 800);
    QApplication::processEvents();
    detail().zoomPill()->findChild<QToolButton *>("toolbar.zoomToFit")->click();
    EXPECT_EQ(groundIn(save("canvas-light")), BrandPalette::ramp(AccentPalette::violet, false).brandSubtle);

    // A ready task: its own ring must not pass for the selection's.
    ASSERT_FALSE(Readiness::readyNodes(flow).isEmpty());
    const FlowNode &build = *Readiness::readyNodes(flow).constFirst();
    click(at(build));
    EXPECT_TRUE(showsSelectionRing(save("canvas-selected-light"), build,
                                   BrandPalette::ramp(AccentPalette::violet, false).brand));

    // A new look keeps the canvas where it was, the selection and the
    // inspector showing it.
    const QPointF place = at(build);
    changeLook([&] { preferences->setTheme(AppTheme::dark); });
    EXPECT_EQ(interaction().selectedItemIDs(), QSet<QUuid>{build.id});
    EXPECT_TRUE(detail().inspector()->isVisible());
    EXPECT_EQ(at(build), place);
    const QImage selected = save("canvas-selected-dark");
    EXPECT_TRUE(showsSelectionRing(selected, build, BrandPalette::ramp(AccentPalette::violet, true).brand));

    click(QPointF(40, canvas().height() - 40));
    const QImage plain = save("canvas-dark");
    EXPECT_FALSE(showsSelectionRing(plain, build, BrandPalette::ramp(AccentPalette::violet, true).brand));
    EXPECT_EQ(groundIn(plain), BrandPalette::ramp(AccentPalette::violet, true).brandSubtle);

    changeLook([&] { preferences->setAccentPalette(AccentPalette::green); });
    EXPECT_EQ(groundIn(save("canvas-green-dark")), BrandPalette::ramp(AccentPalette::green, true).brandSubtle);
    changeLook([&] {
        preferences->setTheme(AppTheme::light);
        preferences->setAccentPalette(AccentPalette::orange);
    });
    EXPECT_EQ(groundIn(save("canvas-orange-light")), BrandPalette::ramp(AccentPalette::orange, false).brandSubtle);
}

TEST_F(CanvasLookTest, GesturesInProgressFilesAndFolds)
{
    preferences->setTheme(AppTheme::light);
    preferences->setGridEnabled(true);
    const TaskFlow &flow = sample();
    const QList<const FlowNode *> tasks = flow.orderedItems();
    // A parent with two subtasks, folded away; its title wraps and is
    // shortened on its last line.
    const FlowNode &parent = *store->addNode(
        QStringLiteral(
            "Collect quotes from three printers and two hosts, then weigh their prices, terms and delivery dates"),
        flow);
    store->moveNode(parent, tasks[0]->posX, tasks[0]->posY + 260);
    for (const char *title : {"Printer", "Hosting"})
        store->addEdge(parent, *store->addNode(QString::fromUtf8(title), flow), EdgeSource::manual, EdgeKind::subtask);
    store->setCollapsed(parent, true);
    QImage picture(320, 200, QImage::Format_RGB32);
    QLinearGradient sky(0, 0, 0, 200);
    sky.setColorAt(0, QColor(0x7c, 0xa9, 0xe0));
    sky.setColorAt(1, QColor(0xf2, 0xd0, 0xa4));
    QPainter(&picture).fillRect(picture.rect(), sky);
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    store->setThumbnailMaker([png](const FlowFileImport::Payload &) { return std::optional<QByteArray>(png); });
    const FlowFile &file = *store->attachFile({QStringLiteral("hero-sketch.png"), QStringLiteral("image/png"), 10, "x"},
                                              tasks[2]->posX + 40, tasks[2]->posY + 300, flow);
    store->linkFile(file, *tasks[2]);
    open(flow);
    window->resize(1280, 800);
    QApplication::processEvents();
    detail().zoomPill()->findChild<QToolButton *>("toolbar.zoomToFit")->click();
    QApplication::processEvents();

    // A selected edge shows its handles; a connection is being drawn.
    const DependencyEdge &edge = *flow.edges()[0];
    const auto gestures = [&] {
        editor().edgeClicked(edge.id);
        interaction().setPendingConnection(PendingConnection{tasks[3]->id, {tasks[4]->posX, tasks[4]->posY + 200}});
        editor().backgroundDragChanged(QPointF(40, canvas().height() - 200), QPointF(200, canvas().height() - 60), {});
        interaction().setRejection(CycleRejection{QUuid::createUuid(), {tasks[1]->posX, tasks[1]->posY}});
    };
    gestures();
    const QImage light = save("canvas-gestures-light");
    changeLook([&] { preferences->setTheme(AppTheme::dark); });
    EXPECT_EQ(interaction().selectedEdgeID(), std::optional(edge.id)) << "a new look keeps the selected edge";
    gestures();
    const QImage dark = save("canvas-gestures-dark");
    // The marquee's corner is drawn over the ground in both.
    const QPoint inMarquee = canvas().mapTo(window.get(), QPoint(120, canvas().height() - 130));
    EXPECT_NE(light.pixelColor(inMarquee), BrandPalette::ramp(AccentPalette::violet, false).brandSubtle);
    EXPECT_NE(dark.pixelColor(inMarquee), BrandPalette::ramp(AccentPalette::violet, true).brandSubtle);
}

// The flow with a task open in the inspector, at a roomy, a small and the
// smallest window, in English and in the language of the longest words.
// The floating tools stay inside the canvas, apart, and the canvas keeps
// room to work in.
TEST_F(CanvasLookTest, EveryWindowSizeLeavesTheCanvasItsTools)
{
    preferences->setTheme(AppTheme::light);
    const TaskFlow &flow = sample();
    open(flow);
    click(at(*flow.orderedItems()[2]));
    ASSERT_TRUE(detail().inspector()->isVisible());
    for (const char *code : {"en", "de"}) {
        for (const AppTheme theme : {AppTheme::dark, AppTheme::light}) {
            changeLook([&] {
                preferences->setUiLanguageRaw(QString::fromLatin1(code));
                preferences->setTheme(theme);
            });
            for (const QSize size : {QSize(1320, 840), QSize(800, 600), window->minimumSize()}) {
                window->resize(size);
                QApplication::processEvents();
                const QString name = QStringLiteral("canvas-size-%1x%2-%3-%4")
                                         .arg(size.width())
                                         .arg(size.height())
                                         .arg(theme == AppTheme::dark ? "dark" : "light", code);
                save(name);
                SCOPED_TRACE(name.toStdString());
                EXPECT_TRUE(detail().inspector()->isVisible());
                EXPECT_GE(canvas().width(), 300) << "the inspector leaves the canvas room";
                const int room = CanvasPanel::shadowRoom;
                QList<QRect> tools;
                for (QWidget *tool : QList<QWidget *>{detail().findChild<QWidget *>("toolbar.progress"),
                                                      detail().toolbar(), detail().zoomPill()}) {
                    ASSERT_NE(tool, nullptr);
                    EXPECT_TRUE(tool->isVisible()) << tool->objectName().toStdString();
                    const QRect shown = tool->geometry().adjusted(room, room, -room, -room);
                    EXPECT_TRUE(canvas().rect().contains(shown)) << tool->objectName().toStdString();
                    for (const QRect &other : tools)
                        EXPECT_FALSE(shown.intersects(other)) << tool->objectName().toStdString();
                    tools << shown;
                }
            }
        }
    }
    preferences->setUiLanguageRaw(QStringLiteral("en"));
}

TEST_F(CanvasLookTest, APaletteOrThemeChangeRecoloursTheCanvasAtOnce)
{
    preferences->setTheme(AppTheme::light);
    const TaskFlow &flow = sample();
    open(flow);
    const auto ground = [&] {
        return canvas().grab().toImage().pixelColor(canvas().width() / 2, canvas().height() - 60);
    };
    const QString colorsBefore = flow.orderedItems()[2]->colorRaw;
    EXPECT_EQ(ground(), BrandPalette::ramp(AccentPalette::violet, false).brandSubtle);
    preferences->setAccentPalette(AccentPalette::blue);
    EXPECT_EQ(ground(), BrandPalette::ramp(AccentPalette::blue, false).brandSubtle);
    preferences->setTheme(AppTheme::dark);
    EXPECT_EQ(ground(), BrandPalette::ramp(AccentPalette::blue, true).brandSubtle);
    EXPECT_EQ(flow.orderedItems()[2]->colorRaw, colorsBefore) << "no stored colour changes";
}

} // namespace
} // namespace fenrow::testing
