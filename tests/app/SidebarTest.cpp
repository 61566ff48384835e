#include "AppTestSupport.h"

#include "program/UuidText.h"
#include "shell/InterfaceLanguage.h"

#include <QMimeData>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QToolButton>
#include <QToolTip>

namespace fenrow::testing {
namespace {

using SidebarTest = WindowFixture;

TEST_F(SidebarTest, RowsShowNameProgressAndIdentifier)
{
    const TaskFlow &empty = addFlow("Garden");
    const TaskFlow &partly = addFlow("Move house", 2, 1, 3);
    const TaskFlow &finished = addFlow("Taxes", 4);
    show();

    ASSERT_EQ(model().rowCount(), 3);
    const auto row = [&](const TaskFlow &flow, int role) { return model().indexOf(flow.id).data(role).toString(); };
    EXPECT_EQ(row(empty, Qt::DisplayRole), "Garden");
    EXPECT_EQ(row(empty, FlowListModel::ProgressTextRole), "No tasks yet");
    EXPECT_EQ(row(partly, FlowListModel::ProgressTextRole), "2 of 6 done · 1 in progress");
    EXPECT_EQ(row(finished, FlowListModel::ProgressTextRole), "All 4 done");
    EXPECT_EQ(row(partly, FlowListModel::IdentifierRole), "sidebar.row." + uuidText(partly.id));

    // Progress follows the store without the row being rebuilt.
    store->setStatus(NodeStatus::done, *partly.orderedItems().last());
    EXPECT_EQ(row(partly, FlowListModel::ProgressTextRole), "3 of 6 done · 1 in progress");

    // In a narrow sidebar the longer text takes a second line, and the row
    // grows to hold it.
    window->setSidebarWidth(Sidebar::minimumWidth);
    QApplication::processEvents();
    const int oneLine = list().visualRect(model().indexOf(finished.id)).height();
    store->addNode("One more", finished);
    EXPECT_EQ(row(finished, FlowListModel::ProgressTextRole), "4 of 5 done · 0 in progress");
    EXPECT_GT(list().visualRect(model().indexOf(finished.id)).height(), oneLine);

    // A name cut short by the width shows whole in a tooltip; others don't.
    const auto tooltipOver = [&](const TaskFlow &flow) {
        QHelpEvent help(QEvent::ToolTip, rowCenter(flow.id), list().viewport()->mapToGlobal(rowCenter(flow.id)));
        QApplication::sendEvent(list().viewport(), &help);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    };
    store->renameFlow(partly, "Move house to the little village on the far side of the hills");
    EXPECT_EQ(tooltipOver(empty), "");
    EXPECT_EQ(tooltipOver(partly), partly.name);
}

TEST_F(SidebarTest, PlusButtonCreatesSelectsAndRenamesTheNewFlow)
{
    addFlow("Existing");
    show();
    auto *plus = sidebar().findChild<QToolButton *>("sidebar.action.newFlow");
    ASSERT_NE(plus, nullptr);
    EXPECT_EQ(plus->toolTip(), "New flow");

    QTest::mouseClick(plus, Qt::LeftButton);
    ASSERT_EQ(flowNames(), QStringList({"Existing", "Untitled flow"}));
    const QUuid created = store->flows().last()->id;
    EXPECT_EQ(window->selectedFlow(), created);
    EXPECT_EQ(list().currentIndex(), model().indexOf(created));

    QLineEdit *field = renameField();
    ASSERT_NE(field, nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&] { return field->hasFocus(); }));
    EXPECT_EQ(field->placeholderText(), "Flow name");
    EXPECT_EQ(field->selectedText(), "Untitled flow") << "typing replaces the stand-in name";

    QTest::keyClicks(field, "Launch plan");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return store->flow(created)->name == "Launch plan"; }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return renameField() == nullptr; }));
    EXPECT_EQ(window->windowTitle(), "Launch plan");

    // The stand-in name speaks the user's language.
    const auto english = qScopeGuard([] { InterfaceLanguage::apply("en"); });
    ASSERT_TRUE(InterfaceLanguage::apply("de"));
    QTest::mouseClick(plus, Qt::LeftButton);
    EXPECT_EQ(store->flows().last()->name, "Unbenannter Flow");
}

TEST_F(SidebarTest, RenameInPlaceCommitsOnReturnAndFocusLossAndCancelsOnEscape)
{
    const TaskFlow &flow = addFlow("Garden");
    addFlow("Taxes");
    show();
    QSignalSpy changes(store.get(), &FenrowStore::changed);

    // Escape leaves the old name and writes nothing.
    doubleClickRow(flow.id);
    ASSERT_NE(renameField(), nullptr);
    QTest::keyClicks(renameField(), "Orchard");
    QTest::keyClick(renameField(), Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return renameField() == nullptr; }));
    EXPECT_EQ(flow.name, "Garden");
    EXPECT_EQ(changes.count(), 0);

    // Return commits, trimmed like every entered name.
    doubleClickRow(flow.id);
    ASSERT_NE(renameField(), nullptr);
    QTest::keyClicks(renameField(), "  Orchard ");
    QTest::keyClick(renameField(), Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return flow.name == "Orchard"; }));

    // The context entry opens the same field; moving the focus away commits.
    chooseFromRowMenu(flow.id, "sidebar.row.action.rename");
    QLineEdit *field = renameField();
    ASSERT_NE(field, nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&] { return field->hasFocus(); }));
    EXPECT_EQ(field->text(), "Orchard");
    QTest::keyClicks(field, "Orchard and beds");
    window->findChild<QWidget *>("sidebar.action.quit")->setFocus();
    EXPECT_TRUE(QTest::qWaitFor([&] { return flow.name == "Orchard and beds"; }));
    EXPECT_EQ(renameField(), nullptr);
}

TEST_F(SidebarTest, DeleteFromTheRowMenuAsksFirst)
{
    const TaskFlow &flow = addFlow("Garden", 1, 0, 1);
    const QUuid id = flow.id;
    const QUuid other = addFlow("Taxes").id;
    show();
    clickRow(other);

    QMenu *menu = openRowMenu(id);
    ASSERT_NE(menu, nullptr);
    QStringList entries;
    for (QAction *action : menu->actions())
        if (!action->isSeparator())
            entries << action->objectName() + "=" + action->text() + (action->isEnabled() ? "" : " (off)");
    EXPECT_EQ(entries.join(", ").toStdString(),
              "sidebar.row.action.rename=Rename, sidebar.row.action.exportMarkdown=Export as Markdown…, "
              "sidebar.row.action.copyMarkdown=Copy as Markdown, sidebar.context.exportOPML=Export as OPML…, "
              "sidebar.context.duplicate=Duplicate, "
              "sidebar.context.saveTemplate=Save as Template, sidebar.row.archiveDone=Archive Done Tasks…, "
              "sidebar.row.action.delete=Delete…");
    menu->close();
    EXPECT_EQ(window->selectedFlow(), other) << "the menu does not change the shown flow";

    chooseFromRowMenu(id, "sidebar.row.action.delete");
    QMessageBox *box = deleteConfirmation();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->windowTitle(), "Delete “Garden”?");
    EXPECT_EQ(box->informativeText().left(40), "The flow and all of its tasks, connectio");
    auto *cancel = box->findChild<QPushButton *>("sidebar.row.confirmCancel");
    auto *confirm = box->findChild<QPushButton *>("sidebar.row.confirmDelete");
    ASSERT_TRUE(cancel && confirm);
    EXPECT_EQ(confirm->text(), "Delete");
    EXPECT_EQ(box->defaultButton(), cancel) << "Return must not delete";

    QPointer<QMessageBox> closing = box;
    QTest::mouseClick(cancel, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return closing.isNull(); }));
    ASSERT_NE(store->flow(id), nullptr);
}

TEST_F(SidebarTest, RowMenuDuplicatesSavesATemplateAndArchivesDoneTasks)
{
    const TaskFlow &garden = addFlow("Garden", 2, 0, 1);
    const TaskFlow &empty = addFlow("Taxes");
    show();

    chooseFromRowMenu(garden.id, "sidebar.context.duplicate");
    ASSERT_EQ(flowNames(), QStringList({"Garden", "Taxes", "Garden copy"}));
    const TaskFlow &copy = *store->flows().last();
    EXPECT_EQ(window->selectedFlow(), copy.id);
    EXPECT_EQ(list().currentIndex(), model().indexOf(copy.id));
    EXPECT_EQ(copy.items().size(), 3u);

    chooseFromRowMenu(garden.id, "sidebar.context.saveTemplate");
    ASSERT_EQ(store->templateList().size(), 1);
    EXPECT_EQ(store->templateList().first()->name, "Garden");

    // Archiving asks first, and is offered only where something is done.
    QMenu *menu = openRowMenu(empty.id);
    ASSERT_NE(menu, nullptr);
    EXPECT_FALSE(menu->findChild<QAction *>("sidebar.row.archiveDone")->isEnabled());
    menu->close();

    const auto confirmation = [&] {
        chooseFromRowMenu(garden.id, "sidebar.row.archiveDone");
        QMessageBox *box = nullptr;
        EXPECT_TRUE(QTest::qWaitFor([&] {
            box = window->findChild<QMessageBox *>("sidebar.row.archiveConfirmation");
            return box && box->isVisible();
        }));
        return box;
    };
    QMessageBox *box = confirmation();
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->windowTitle(), "Archive the done tasks of “Garden”?");
    EXPECT_TRUE(box->informativeText().startsWith("They leave the canvas"));
    auto *cancel = box->findChild<QPushButton *>("sidebar.row.confirmCancel");
    EXPECT_EQ(box->defaultButton(), cancel);
    QPointer<QMessageBox> closing = box;
    QTest::mouseClick(cancel, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return closing.isNull(); }));
    EXPECT_EQ(garden.items().size(), 3u);

    box = confirmation();
    ASSERT_NE(box, nullptr);
    auto *archive = box->findChild<QPushButton *>("sidebar.row.confirmArchive");
    ASSERT_NE(archive, nullptr);
    EXPECT_EQ(archive->text(), "Archive");
    QTest::mouseClick(archive, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return garden.items().size() == 1; }));
    EXPECT_EQ(garden.items()[0]->title, "Task 3");
    EXPECT_EQ(store->archiveRecords().size(), 2);
    EXPECT_EQ(model().indexOf(garden.id).data(FlowListModel::ProgressTextRole).toString(), "0 of 1 done · 0 in progress");
}

TEST_F(SidebarTest, TemplateMenuListsTemplatesAndMakesAFlowFromOne)
{
    // "&" in a name is no shortcut mark in the menu.
    const TaskFlow &garden = addFlow("Beds & borders", 1, 0, 2);
    show();
    auto *button = sidebar().findChild<QToolButton *>("sidebar.templateMenu");
    ASSERT_NE(button, nullptr);
    EXPECT_FALSE(button->isVisible());

    store->saveAsTemplate(garden);
    ASSERT_TRUE(button->isVisible()) << "the first template brings its menu";
    EXPECT_EQ(button->toolTip(), "Make a new flow from a saved template");

    QTest::mouseClick(button, Qt::LeftButton);
    QMenu *menu = nullptr;
    ASSERT_TRUE(QTest::qWaitFor([&] { return (menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())); }));
    EXPECT_EQ(menu->title(), "New from Template");
    QStringList entries;
    for (QAction *action : menu->actions())
        entries << (action->isSeparator() ? "[" + action->text() + "]" : action->iconText());
    EXPECT_EQ(entries.join(", ").toStdString(), "[New from Template], Beds & borders");
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(menu->actions()[1]).center());
    ASSERT_EQ(flowNames(), QStringList({"Beds & borders", "Beds & borders"}));
    const TaskFlow &made = *store->flows().last();
    EXPECT_NE(made.id, garden.id);
    EXPECT_EQ(window->selectedFlow(), made.id);
    EXPECT_EQ(window->windowTitle(), "Beds & borders");
    EXPECT_EQ(model().indexOf(made.id).data(FlowListModel::ProgressTextRole).toString(), "0 of 3 done · 0 in progress");
}

// Drag-and-drop events as a drag over the list delivers them.
class DropTest : public WindowFixture {
protected:
    struct Outcome {
        bool moveAccepted;
        bool dropAccepted;
    };

    Outcome drop(const QString &payload, const QUuid &target)
    {
        QMimeData data;
        data.setText(payload);
        QWidget *viewport = list().viewport();
        const QPoint at = rowCenter(target);
        QDragEnterEvent enter(at, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(viewport, &enter);
        QDragMoveEvent move(at, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(viewport, &move);
        QDropEvent dropped(at, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(viewport, &dropped);
        return {move.isAccepted(), dropped.isAccepted()};
    }

    void SetUp() override
    {
        a = addFlow("A").id;
        b = addFlow("B").id;
        c = addFlow("C").id;
        d = addFlow("D").id;
        show();
    }

    QUuid a, b, c, d;
};

TEST_F(DropTest, DropOnAnotherRowMovesTheFlowToThatPlace)
{
    // What a row drags is what a row takes.
    std::unique_ptr<QMimeData> dragged(model().mimeData({model().indexOf(a)}));
    ASSERT_NE(dragged, nullptr);
    EXPECT_TRUE(drop(dragged->text(), c).dropAccepted);
    EXPECT_EQ(flowNames(), QStringList({"B", "C", "A", "D"})) << "downwards";

    EXPECT_TRUE(drop(uuidText(d), b).dropAccepted);
    EXPECT_EQ(flowNames(), QStringList({"D", "B", "C", "A"})) << "upwards";

    // Ids from elsewhere come with braces, lower case or more lines.
    EXPECT_TRUE(drop(a.toString() + "\nmore text", d).dropAccepted);
    EXPECT_EQ(flowNames(), QStringList({"A", "D", "B", "C"}));

    // The order is the store's, not just the list's.
    QList<qint64> orders;
    for (const TaskFlow *flow : store->flows())
        orders << flow->order;
    EXPECT_EQ(orders, QList<qint64>({0, 1, 2, 3}));
}

TEST_F(DropTest, DropOnItselfOrOfAnUnknownIdIsRefusedAndChangesNothing)
{
    QSignalSpy changes(store.get(), &FenrowStore::changed);
    for (const QString &payload : {uuidText(b), uuidText(QUuid::createUuid()), QStringLiteral("not an id")}) {
        SCOPED_TRACE(payload.toStdString());
        const Outcome outcome = drop(payload, b);
        EXPECT_FALSE(outcome.moveAccepted);
        EXPECT_FALSE(outcome.dropAccepted);
    }
    EXPECT_EQ(flowNames(), QStringList({"A", "B", "C", "D"}));
    EXPECT_EQ(changes.count(), 0);
}

} // namespace
} // namespace fenrow::testing
