#include "AppTestSupport.h"
#include "inspector/NodeChecklistEditor.h"
#include "inspector/NodeInspector.h"

#include <QComboBox>
#include <QDir>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QToolButton>

namespace fenrow {
namespace {

class NodeInspectorTest : public testing::WindowFixture {
protected:
    NodeInspectorTest()
    {
        flow = store->addFlow(QStringLiteral("Move house"));
        task = store->addNode(QStringLiteral("Pack books"), *flow);
        other = store->addNode(QStringLiteral("Book the van"), *flow);
        inspector = std::make_unique<NodeInspector>(*store, *history, *preferences);
        inspector->resize(320, 900);
        inspector->show();
        // Focus decides when drafts are committed: the panel must be active.
        inspector->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(inspector.get()));
    }
    ~NodeInspectorTest() override { inspector.reset(); }

    void select(std::initializer_list<const FlowNode *> nodes)
    {
        CanvasSelection selection;
        for (const FlowNode *node : nodes)
            selection.itemIDs.insert(node->id);
        inspector->showSelection(flow->id, selection);
    }
    QStringList undoNames() const
    {
        QStringList names;
        for (const FenrowHistory::Entry &entry : history->undoStack(flow->id))
            names << entry.name;
        return names;
    }
    void type(QWidget *field, const QString &text)
    {
        field->setFocus();
        QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(field, text);
    }

    const TaskFlow *flow = nullptr;
    const FlowNode *task = nullptr;
    const FlowNode *other = nullptr;
    std::unique_ptr<NodeInspector> inspector;
};

TEST_F(NodeInspectorTest, ShowsOneTaskOnlyAndFollowsTheStore)
{
    EXPECT_EQ(inspector->page(), NodeInspector::Page::empty);
    select({task, other});
    EXPECT_EQ(inspector->page(), NodeInspector::Page::empty) << "two tasks show no mixed form";
    select({task});
    ASSERT_EQ(inspector->page(), NodeInspector::Page::node);
    EXPECT_EQ(inspector->titleField()->text(), QStringLiteral("Pack books"));

    // A change made elsewhere shows at once; a deleted task empties the panel.
    store->setStatus(NodeStatus::paused, *task);
    EXPECT_EQ(inspector->statusPicker()->currentData().toInt(), int(NodeStatus::paused));
    store->deleteNode(*task);
    EXPECT_EQ(inspector->page(), NodeInspector::Page::empty);
}

TEST_F(NodeInspectorTest, EstimateCommitsNumbersOnlyAndOnceEach)
{
    select({task});
    QLineEdit *estimate = inspector->estimateField();
    type(estimate, QStringLiteral(" 45 "));
    QTest::keyClick(estimate, Qt::Key_Return);
    EXPECT_EQ(task->estimateMinutes, 45);

    type(estimate, QStringLiteral("abc"));
    QTest::keyClick(estimate, Qt::Key_Return);
    EXPECT_EQ(task->estimateMinutes, 45) << "text that is no number keeps the value";
    EXPECT_EQ(estimate->text(), QStringLiteral("45")) << "and the field shows it again";

    type(estimate, QStringLiteral("45"));
    QTest::keyClick(estimate, Qt::Key_Return);
    type(estimate, QString());
    QTest::keyClick(estimate, Qt::Key_Backspace);
    QTest::keyClick(estimate, Qt::Key_Return);
    EXPECT_EQ(task->estimateMinutes, std::nullopt) << "a blank field clears it";
    EXPECT_EQ(undoNames(), (QStringList{"Set estimate", "Set estimate"})) << "the same value records nothing";

    ASSERT_TRUE(history->undoFlow(flow->id));
    EXPECT_EQ(task->estimateMinutes, 45);
    EXPECT_EQ(estimate->text(), QStringLiteral("45"));
}

// Closing the window takes the panel with it while a field still has
// the focus and a draft.
TEST_F(NodeInspectorTest, DraftsAreWrittenWhenThePanelCloses)
{
    select({task});
    type(inspector->titleField(), QStringLiteral("Pack the books"));
    inspector.reset();
    EXPECT_EQ(task->title, QStringLiteral("Pack the books"));

    inspector = std::make_unique<NodeInspector>(*store, *history, *preferences);
    select({task});
    QPlainTextEdit *notes = inspector->notesEditor();
    notes->setFocus();
    QTest::keyClicks(notes, QStringLiteral("Tape first"));
    inspector.reset();
    EXPECT_EQ(task->notes, QStringLiteral("Tape first"));
    EXPECT_EQ(undoNames(), (QStringList{"Rename", "Edit notes"}));
}

TEST_F(NodeInspectorTest, NotesCommitWhenTheEditorLosesFocus)
{
    select({task});
    QPlainTextEdit *notes = inspector->notesEditor();
    notes->setFocus();
    QTest::keyClicks(notes, QStringLiteral("Boxes in the cellar"));
    EXPECT_TRUE(task->notes.isEmpty()) << "nothing is written per key";
    inspector->titleField()->setFocus();
    EXPECT_EQ(task->notes, QStringLiteral("Boxes in the cellar"));
    EXPECT_EQ(undoNames(), QStringList{"Edit notes"});

    // A draft goes with its task when the selection moves on.
    notes->setFocus();
    QTest::keyClicks(notes, QStringLiteral(" first"));
    select({other});
    EXPECT_EQ(task->notes, QStringLiteral("Boxes in the cellar first"));
    EXPECT_TRUE(notes->toPlainText().isEmpty()) << "the next task shows its own notes";
    EXPECT_TRUE(other->notes.isEmpty());

    // The stored height is kept within the editor's limits.
    preferences->setInspectorNotesHeight(50);
    select({other});
    EXPECT_EQ(notes->height(), 72);
}

TEST_F(NodeInspectorTest, ChecklistAddsTicksRenamesReordersAndDeletes)
{
    select({task});
    NodeChecklistEditor *checklist = inspector->checklist();
    QLineEdit *add = checklist->addField();
    add->setFocus();
    for (const QString &step : {QStringLiteral("Fiction"), QStringLiteral("  Atlases "), QStringLiteral("Cookbooks")}) {
        QTest::keyClicks(add, step);
        QTest::keyClick(add, Qt::Key_Return);
    }
    EXPECT_TRUE(add->hasFocus()) << "the field stays for the next step";
    ASSERT_EQ(task->checklist().size(), 3);
    EXPECT_EQ(task->checklist()[1].title, QStringLiteral("Atlases"));

    QListWidget *list = checklist->list();
    ASSERT_EQ(list->count(), 3);
    list->item(0)->setCheckState(Qt::Checked);
    EXPECT_TRUE(task->checklist()[0].isDone);
    list->item(2)->setText(QStringLiteral("Cook books"));
    EXPECT_EQ(task->checklist()[2].title, QStringLiteral("Cook books"));

    // A drag inside the list is a move of the model's rows.
    list->model()->moveRow(QModelIndex(), 2, QModelIndex(), 0);
    QStringList titles;
    for (const ChecklistEntry &entry : task->checklist())
        titles << entry.title;
    EXPECT_EQ(titles, (QStringList{"Cook books", "Fiction", "Atlases"}));

    auto *remove = checklist->findChild<QToolButton *>(QStringLiteral("inspector.checklist.row.")
                                                       + task->checklist()[1].id.toString(QUuid::WithoutBraces)
                                                       + QStringLiteral(".delete"));
    ASSERT_NE(remove, nullptr);
    remove->click();
    EXPECT_EQ(task->checklist().size(), 2);
    EXPECT_EQ(undoNames(), (QStringList{"Add step", "Add step", "Add step", "Edit step", "Edit step",
                                       "Reorder steps", "Delete step"}));
}

TEST_F(NodeInspectorTest, RowsWriteThroughNamedStepsAndListRelatedTasks)
{
    store->addEdge(*other, *task, EdgeSource::manual, EdgeKind::dependency);
    select({task});
    QSignalSpy reveal(inspector.get(), &NodeInspector::revealRequested);

    type(inspector->titleField(), QStringLiteral("Pack all books"));
    QTest::keyClick(inspector->titleField(), Qt::Key_Return);
    inspector->findChild<QToolButton *>(QStringLiteral("inspector.color.green"))->click();
    auto *priority = inspector->findChild<QComboBox *>(QStringLiteral("inspector.priority"));
    priority->setCurrentIndex(priority->findData(int(NodePriority::high)));
    emit priority->activated(priority->currentIndex());
    inspector->findChild<QToolButton *>(QStringLiteral("inspector.startDate.clear"))->click();

    EXPECT_EQ(task->title, QStringLiteral("Pack all books"));
    EXPECT_EQ(task->color(), NodeColor::green);
    EXPECT_EQ(task->priority(), NodePriority::high);
    EXPECT_EQ(undoNames(), (QStringList{"Rename", "Change color", "Change priority"}))
        << "clearing a date that is not set records nothing";

    auto *blocker = inspector->findChild<QPushButton *>(QStringLiteral("inspector.related.")
                                                        + other->id.toString(QUuid::WithoutBraces));
    ASSERT_NE(blocker, nullptr);
    EXPECT_TRUE(blocker->text().contains(QStringLiteral("Book the van")));
    blocker->click();
    ASSERT_EQ(reveal.size(), 1);
    EXPECT_EQ(reveal.first().first().toUuid(), other->id);

    store->setNotes(*task, QStringLiteral("Start with the top shelf.\nLabel every box."));
    store->addChecklistEntry(QStringLiteral("Fiction"), *task);
    store->addChecklistEntry(QStringLiteral("Atlases"), *task);
    store->setEstimate(90, *task);
    testing::saveScreenshot(*inspector, "inspector-task");
}

} // namespace
} // namespace fenrow
