#include "AppTestSupport.h"
#include "HeldEngine.h"

#include "canvasview/CanvasView.h"
#include "sheets/DismissableDialogOverlay.h"
#include "window/FlowDetailView.h"
#include "sheets/GenerateSubtasksSheet.h"
#include "sheets/NewFlowFromTextSheet.h"
#include "sheets/PlanDaySheet.h"
#include "lists/ReadyListView.h"
#include "sheets/WindowSheets.h"
#include "canvas/CanvasEditor.h"
#include "canvas/DialogPresence.h"
#include "capture/GeneratedFlows.h"
#include "capture/UnavailableEngine.h"
#include "domain/DependencyEdge.h"
#include "domain/TaskFlow.h"
#include "shell/InterfaceLanguage.h"

#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QPlainTextEdit>
#include <QThreadPool>

namespace fenrow::testing {
namespace {

// The window's sheets, raised the way a user raises them, answered by the
// scripted engine.
class SheetsTest : public WindowFixture {
protected:
    void TearDown() override { InterfaceLanguage::apply("en"); }

    // A window over `other` instead of the fixture's scripted environment.
    MainWindow &showWith(AppEnvironment &other)
    {
        window = std::make_unique<MainWindow>(*store, *history, activeFlow, *preferences, other);
        window->show();
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
        return *window;
    }

    template <typename Sheet>
    Sheet *shownSheet(const char *name) const
    {
        Sheet *sheet = nullptr;
        const bool shown = QTest::qWaitFor([&] {
            sheet = window->findChild<Sheet *>(QString::fromLatin1(name));
            return sheet && sheet->isVisible();
        });
        return shown ? sheet : nullptr;
    }

    bool sheetGone(const char *name) const
    {
        return QTest::qWaitFor([&] {
            QWidget *sheet = window->findChild<QWidget *>(QString::fromLatin1(name));
            return !sheet || !sheet->isVisible();
        });
    }

    template <typename Widget = QWidget>
    static Widget *part(QWidget *sheet, const char *name)
    {
        return sheet->findChild<Widget *>(QString::fromLatin1(name));
    }

    const FlowNode &addTask(const TaskFlow &flow, const QString &title, std::optional<qint64> minutes)
    {
        const FlowNode &node = *store->addNode(title, flow);
        store->setEstimate(minutes, node);
        return node;
    }

    // The titles of the rows below or above the cut, in order, as one line.
    static std::string titles(const QList<PlanDayModel::Row> &rows, PlanDayRowPlacement::Kind kind)
    {
        QStringList found;
        for (const PlanDayModel::Row &row : rows)
            if (row.placement.kind == kind)
                found << row.task.title;
        return found.join(QStringLiteral(", ")).toStdString();
    }

    // Drags the planned row `from` by its handle onto the row at `to`.
    static void dragRow(PlanDayList &list, qsizetype from, qsizetype to)
    {
        const QPoint grab = list.handleRect(from).center();
        const QPoint drop(grab.x(), list.rowRect(to).center().y());
        QTest::mousePress(&list, Qt::LeftButton, Qt::NoModifier, grab);
        QTest::mouseMove(&list, (grab + drop) / 2);
        QTest::mouseMove(&list, drop);
        QTest::mouseRelease(&list, Qt::LeftButton, Qt::NoModifier, drop);
    }
};

TEST_F(SheetsTest, NewFlowFromTextMakesTheFlowShowsItAndConnectsItsTasks)
{
    show();
    const int depth = DialogPresence::depth();
    // The menu's key combination raises the sheet.
    QTest::keyClick(window.get(), Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
    auto *sheet = shownSheet<NewFlowFromTextSheet>("newFlowFromText.sheet");
    ASSERT_NE(sheet, nullptr);
    EXPECT_TRUE(window->sheets()->newFlowFromText()->isPresented());
    EXPECT_EQ(DialogPresence::depth(), depth + 1);
    QPushButton *generate = part<QPushButton>(sheet, "newFlowFromText.generate");
    EXPECT_EQ(generate->text(), qtTrId("newFlowFromText.createBlank"));

    // A text over the model's limit is only warned about.
    QWidget *overBudget = part(sheet, "newFlowFromText.overBudget");
    sheet->textField()->setPlainText(QString(NewFlowFromTextModel::proseLimit, QLatin1Char('a')));
    EXPECT_FALSE(overBudget->isVisible());
    sheet->textField()->setPlainText(QString(NewFlowFromTextModel::proseLimit + 1, QLatin1Char('a')));
    EXPECT_TRUE(overBudget->isVisible());
    EXPECT_TRUE(generate->isEnabled());

    // A text without steps keeps the sheet up with its notice.
    sheet->textField()->setPlainText(QStringLiteral("((no tasks))"));
    EXPECT_FALSE(overBudget->isVisible());
    EXPECT_EQ(generate->text(), qtTrId("newFlowFromText.create"));
    QTest::mouseClick(generate, Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return part(sheet, "newFlowFromText.noTasksFound") != nullptr; }));
    EXPECT_TRUE(part(sheet, "newFlowFromText.noTasksFound")->isVisible());
    EXPECT_TRUE(store->flows().isEmpty());
    EXPECT_TRUE(sheet->isVisible());

    sheet->textField()->setPlainText(QStringLiteral("We move to Leipzig in June: book a van, pack, clean."));
    QTest::keyClicks(sheet->nameField(), QStringLiteral("Move to Leipzig"));
    saveScreenshot(*window, QStringLiteral("sheet-new-flow-from-text-en"));
    QTest::mouseClick(generate, Qt::LeftButton);
    ASSERT_TRUE(sheetGone("newFlowFromText.sheet"));

    // What the flow holds is GeneratedFlows'; here, that the sheet made it.
    ASSERT_EQ(store->flows().size(), 1);
    const TaskFlow &flow = *store->flows().first();
    EXPECT_EQ(flow.name, QStringLiteral("Move to Leipzig"));
    EXPECT_EQ(flow.items().size(), 3u);
    EXPECT_EQ(window->selectedFlow(), flow.id);
    EXPECT_FALSE(window->sheets()->newFlowFromText()->isPresented());
    EXPECT_EQ(DialogPresence::depth(), depth);
    // The engine connects the tasks once the sheet has gone.
    EXPECT_TRUE(QTest::qWaitFor([&] { return flow.edges().size() == 2; }));
}

TEST_F(SheetsTest, StopGivesUpTheEnginesWorkAndChangesNothing)
{
    auto engine = std::make_shared<HeldEngine>();
    AppEnvironment held({AppEnvironment::uiTestArgument}, heldFactories(engine));
    showWith(held);
    const QString text = QStringLiteral("We move to Leipzig in June: book a van, pack, clean.");
    window->sheets()->newFlowFromText()->setPresented(true);
    auto *sheet = shownSheet<NewFlowFromTextSheet>("newFlowFromText.sheet");
    ASSERT_NE(sheet, nullptr);
    sheet->textField()->setPlainText(text);
    QPushButton *generate = part<QPushButton>(sheet, "newFlowFromText.generate");
    QTest::mouseClick(generate, Qt::LeftButton);
    auto *stop = part<QPushButton>(sheet, "newFlowFromText.processing.stop");
    ASSERT_TRUE(QTest::qWaitFor([&] { return stop->isVisible() && engine->waiting() == 1; }));
    EXPECT_FALSE(generate->isEnabled());
    saveScreenshot(*window, QStringLiteral("sheet-new-flow-from-text-working"));
    QTest::mouseClick(stop, Qt::LeftButton);
    // The held call ends because it was given up, not because it was let go.
    EXPECT_TRUE(QThreadPool::globalInstance()->waitForDone(5000));
    QApplication::processEvents();
    EXPECT_TRUE(store->flows().isEmpty());
    EXPECT_TRUE(sheet->isVisible());
    EXPECT_FALSE(stop->isVisible());
    EXPECT_TRUE(generate->isEnabled());
    EXPECT_EQ(sheet->textField()->toPlainText(), text);
    window->sheets()->newFlowFromText()->setPresented(false);
    ASSERT_TRUE(sheetGone("newFlowFromText.sheet"));

    const TaskFlow &flow = *store->addFlow(QStringLiteral("Move house"));
    const FlowNode &parent = *store->addNode(QStringLiteral("Pack the kitchen"), flow);
    window->sheets()->generateSubtasks()->present(parent.id);
    auto *subtasks = shownSheet<GenerateSubtasksSheet>("generateSubtasks.sheet");
    ASSERT_NE(subtasks, nullptr);
    QTest::mouseClick(part<QPushButton>(subtasks, "generateSubtasks.generate"), Qt::LeftButton);
    stop = part<QPushButton>(subtasks, "generateSubtasks.processing.stop");
    ASSERT_TRUE(QTest::qWaitFor([&] { return stop->isVisible() && engine->waiting() == 1; }));
    QTest::mouseClick(stop, Qt::LeftButton);
    EXPECT_TRUE(QThreadPool::globalInstance()->waitForDone(5000));
    QApplication::processEvents();
    EXPECT_EQ(flow.items().size(), 1u);
    EXPECT_TRUE(subtasks->isVisible());
    EXPECT_TRUE(part<QPushButton>(subtasks, "generateSubtasks.generate")->isEnabled());
}

TEST_F(SheetsTest, WithoutAModelTheSheetMakesAnEmptyFlowThatOpensWithACardToName)
{
    AppEnvironment unavailable{{AppEnvironment::uiTestArgument, AppEnvironment::engineUnavailableArgument}};
    showWith(unavailable);
    // The window says the model is off until told to stop.
    QWidget *banner = window->centralWidget()->findChild<QWidget *>("banner.engineUnavailable");
    ASSERT_NE(banner, nullptr);
    EXPECT_TRUE(banner->isVisible());
    QTest::mouseClick(part<QAbstractButton>(banner, "banner.engineUnavailable.dismiss"), Qt::LeftButton);
    EXPECT_FALSE(banner->isVisible());

    window->sheets()->newFlowFromText()->setPresented(true);
    auto *sheet = shownSheet<NewFlowFromTextSheet>("newFlowFromText.sheet");
    ASSERT_NE(sheet, nullptr);
    EXPECT_FALSE(sheet->textField()->isVisible());
    EXPECT_TRUE(part(sheet, "banner.engineUnavailable")->isVisible());
    QPushButton *generate = part<QPushButton>(sheet, "newFlowFromText.generate");
    EXPECT_EQ(generate->text(), qtTrId("newFlowFromText.createBlank"));
    QTest::keyClicks(sheet->nameField(), QStringLiteral("  Garden shed "));
    QTest::keyClick(sheet->nameField(), Qt::Key_Return);

    ASSERT_TRUE(sheetGone("newFlowFromText.sheet"));
    ASSERT_EQ(store->flows().size(), 1);
    const TaskFlow &flow = *store->flows().first();
    EXPECT_EQ(flow.name, QStringLiteral("Garden shed"));
    EXPECT_EQ(window->selectedFlow(), flow.id);
    // The canvas starts the flow with one card whose title is being typed.
    ASSERT_TRUE(QTest::qWaitFor([&] { return flow.items().size() == 1; }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->flowDetail()->canvas()->titleEditor()->isVisible(); }));
}

TEST_F(SheetsTest, GenerateSubtasksFromTheCardMenuIsOneUndoableStep)
{
    const TaskFlow &flow = *store->addFlow(QStringLiteral("Move house"));
    const FlowNode &parent = *store->addNode(QStringLiteral("Pack the kitchen"), flow);
    show();
    window->selectFlow(flow.id);
    QApplication::processEvents();
    CanvasView &canvas = *window->flowDetail()->canvas();
    ASSERT_NE(canvas.editor(), nullptr);

    QMenu *menu = canvas.contextMenuAt(canvas.toScreen({parent.posX, parent.posY}));
    ASSERT_NE(menu, nullptr);
    QAction *entry = menu->findChild<QAction *>("canvas.node.generateSubtasks");
    ASSERT_NE(entry, nullptr);
    // It follows adding a subtask by hand.
    EXPECT_EQ(menu->actions().indexOf(entry), menu->actions().indexOf(menu->findChild<QAction *>("canvas.node.addChild")) + 1);
    entry->trigger();
    delete menu;

    auto *sheet = shownSheet<GenerateSubtasksSheet>("generateSubtasks.sheet");
    ASSERT_NE(sheet, nullptr);
    EXPECT_EQ(window->sheets()->generateSubtasks()->itemID(), parent.id);
    EXPECT_TRUE(sheet->subtitle()->text().contains(QStringLiteral("Pack the kitchen")));
    QTest::keyClicks(sheet->detailsField(), QStringLiteral("plates, pans and the good glasses"));
    saveScreenshot(*window, QStringLiteral("sheet-generate-subtasks-en"));
    QTest::mouseClick(part<QPushButton>(sheet, "generateSubtasks.generate"), Qt::LeftButton);
    ASSERT_TRUE(sheetGone("generateSubtasks.sheet"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return flow.items().size() == 4; }));

    QSet<QUuid> children;
    for (const DependencyEdge *edge : flow.edges()) {
        EXPECT_EQ(edge->fromItem(), &parent);
        children.insert(edge->toItem()->id);
    }
    EXPECT_EQ(children.size(), 3);
    // The new subtasks are what the canvas shows selected.
    EXPECT_EQ(canvas.editor()->interaction().selectedItemIDs(), children);
    EXPECT_FALSE(window->sheets()->generateSubtasks()->isPresented());

    const QList<FenrowHistory::Entry> steps = history->undoStack(flow.id);
    ASSERT_FALSE(steps.isEmpty());
    EXPECT_EQ(steps.last().name, QStringLiteral("Generate subtasks"));
    window->undo();
    EXPECT_EQ(flow.items().size(), 1u);
    EXPECT_TRUE(flow.edges().empty());
}

TEST_F(SheetsTest, AFailedGenerationClosesTheSheetAndTheCanvasSaysSo)
{
    // An engine that is chosen, yet fails every call.
    EngineFactories failing = EngineFactories::standard();
    failing.scripted = [] { return std::make_shared<UnavailableEngine>(); };
    AppEnvironment environment{{AppEnvironment::uiTestArgument}, failing};
    const TaskFlow &flow = *store->addFlow(QStringLiteral("Move house"));
    const FlowNode &parent = *store->addNode(QStringLiteral("Pack the kitchen"), flow);
    showWith(environment);
    window->selectFlow(flow.id);
    QApplication::processEvents();

    window->sheets()->generateSubtasks()->present(parent.id);
    auto *sheet = shownSheet<GenerateSubtasksSheet>("generateSubtasks.sheet");
    ASSERT_NE(sheet, nullptr);
    QTest::mouseClick(part<QPushButton>(sheet, "generateSubtasks.generate"), Qt::LeftButton);
    ASSERT_TRUE(sheetGone("generateSubtasks.sheet"));

    QWidget *banner = window->flowDetail()->findChild<QWidget *>("canvas.node.expand.failed");
    ASSERT_NE(banner, nullptr);
    ASSERT_TRUE(QTest::qWaitFor([&] { return banner->isVisible(); }));
    EXPECT_TRUE(window->flowDetail()->editor()->interaction().expandFailure().has_value());
    EXPECT_EQ(flow.items().size(), 1u);
    // Closing it clears the failure from the canvas state.
    QTest::mouseClick(part<QAbstractButton>(banner, "canvas.node.expand.failed.dismiss"), Qt::LeftButton);
    EXPECT_FALSE(banner->isVisible());
    EXPECT_FALSE(window->flowDetail()->editor()->interaction().expandFailure().has_value());
}

TEST_F(SheetsTest, PlanDayFromTheReadyListReordersMovesTheCutAndCommitsRanks)
{
    const TaskFlow &flow = *store->addFlow(QStringLiteral("Move house"));
    const FlowNode &labels = addTask(flow, QStringLiteral("Print labels"), 10);
    const FlowNode &van = addTask(flow, QStringLiteral("Book the van"), 30);
    const FlowNode &keys = addTask(flow, QStringLiteral("Copy the keys"), 15);
    const FlowNode &boxes = addTask(flow, QStringLiteral("Pack the boxes"), 45);
    // Ranked by an earlier plan; left out of this one, it loses the rank.
    store->setDayPlanRank(1, boxes);
    show();
    window->setRoute(DetailRoute::ready());
    QApplication::processEvents();

    QTest::mouseClick(window->readyList()->findChild<QPushButton *>("ready.action.planDay"), Qt::LeftButton);
    auto *sheet = shownSheet<PlanDaySheet>("planDay.sheet");
    ASSERT_NE(sheet, nullptr);
    EXPECT_TRUE(window->sheets()->planDay()->isPresented());
    // An hour, typed in hours; the choice is kept for the next plan.
    QTest::keyClick(sheet->unitMenu(), Qt::Key_Down);
    EXPECT_EQ(preferences->dayPlanBudgetUnit(), DayPlanBudgetUnit::hours);
    sheet->budgetField()->selectAll();
    QTest::keyClicks(sheet->budgetField(), QStringLiteral("1"));
    QTest::keyClick(sheet->budgetField(), Qt::Key_Return);
    EXPECT_EQ(preferences->dayPlanBudgetMinutes(), 60);

    QPushButton *primary = part<QPushButton>(sheet, "planDay.primary");
    EXPECT_EQ(primary->text(), qtTrId("planDay.plan"));
    QTest::mouseClick(primary, Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return sheet->model().phase().kind == PlanDayPhase::Kind::result; }));

    // The scripted engine reverses the list: boxes, keys, van, labels. An
    // hour holds boxes and keys exactly; van and labels go below the cut.
    PlanDayList &list = *sheet->list();
    using Kind = PlanDayRowPlacement::Kind;
    EXPECT_EQ(titles(list.rows(), Kind::planned), "Pack the boxes, Copy the keys");
    EXPECT_EQ(titles(list.rows(), Kind::overflow), "Book the van, Print labels");
    EXPECT_EQ(part<QLabel>(sheet, "planDay.order")->text(), qtTrId("planDay.order.ai"));
    EXPECT_EQ(sheet->timeline()->durations(), (QList<qint64>{45, 15}));
    EXPECT_GE(list.cutRect().top(), list.rowRect(1).bottom());
    saveScreenshot(*window, QStringLiteral("sheet-plan-day-en"));

    // Boxes dragged to the end: keys, van and labels now fit, and the cut
    // line moves down under them.
    dragRow(list, 0, 3);
    EXPECT_EQ(titles(list.rows(), Kind::planned), "Copy the keys, Book the van, Print labels");
    EXPECT_EQ(titles(list.rows(), Kind::overflow), "Pack the boxes");
    EXPECT_GE(list.cutRect().top(), list.rowRect(2).bottom());
    EXPECT_EQ(part<QLabel>(sheet, "planDay.order")->text(), qtTrId("planDay.order.custom"));
    // A row below the cut has no handle to drag by.
    dragRow(list, 3, 0);
    EXPECT_EQ(titles(list.rows(), Kind::planned), "Copy the keys, Book the van, Print labels");

    EXPECT_EQ(primary->text(), qtTrId("planDay.commit"));
    QTest::mouseClick(primary, Qt::LeftButton);
    ASSERT_TRUE(sheetGone("planDay.sheet"));
    EXPECT_EQ(keys.dayPlanRank, 1);
    EXPECT_EQ(van.dayPlanRank, 2);
    EXPECT_EQ(labels.dayPlanRank, 3);
    EXPECT_EQ(boxes.dayPlanRank, std::nullopt);
    EXPECT_FALSE(window->sheets()->planDay()->isPresented());
    // One step to take back from the list.
    window->undo();
    EXPECT_EQ(keys.dayPlanRank, std::nullopt);
    EXPECT_EQ(boxes.dayPlanRank, 1);
}

TEST_F(SheetsTest, SheetsInGermanAndTurkishShowTheirWholeTexts)
{
    const TaskFlow &move = *store->addFlow(QStringLiteral("Umzug nach Leipzig"));
    const FlowNode &movers = addTask(move, QStringLiteral("Umzugsfirma buchen"), 45);
    addTask(move, QStringLiteral("Internetvertrag kündigen"), 20);
    addTask(move, QStringLiteral("Bücher in Kartons packen"), 90);
    const TaskFlow &tax = *store->addFlow(QStringLiteral("Steuererklärung 2025"));
    addTask(tax, QStringLiteral("Belege sortieren"), std::nullopt);
    addTask(tax, QStringLiteral("Formular ausfüllen und abschicken"), 120);

    for (const char *code : {"de", "tr"}) {
        SCOPED_TRACE(code);
        const QString language = QString::fromLatin1(code);
        ASSERT_TRUE(InterfaceLanguage::apply(code));
        preferences->setDayPlanBudgetMinutes(240);
        show();
        // The File menu's command, by its keys.
        QTest::keyClick(window.get(), Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
        auto *sheet = shownSheet<PlanDaySheet>("planDay.sheet");
        ASSERT_NE(sheet, nullptr);
        expectNothingClipped(*sheet);
        saveScreenshot(*window, QStringLiteral("sheet-plan-day-setup-") + language);
        QTest::mouseClick(part<QPushButton>(sheet, "planDay.primary"), Qt::LeftButton);
        ASSERT_TRUE(QTest::qWaitFor([&] { return sheet->model().phase().kind == PlanDayPhase::Kind::result; }));
        QApplication::processEvents();
        expectNothingClipped(*sheet);
        saveScreenshot(*window, QStringLiteral("sheet-plan-day-") + language);

        // With no time at all nothing fits, and the sheet says so instead of a list.
        part<QPushButton>(sheet, "planDay.cancel")->click();
        ASSERT_TRUE(sheetGone("planDay.sheet"));
        preferences->setDayPlanBudgetMinutes(0);
        window->sheets()->planDay()->setPresented(true);
        sheet = shownSheet<PlanDaySheet>("planDay.sheet");
        ASSERT_NE(sheet, nullptr);
        QTest::mouseClick(part<QPushButton>(sheet, "planDay.primary"), Qt::LeftButton);
        ASSERT_TRUE(QTest::qWaitFor([&] { return sheet->model().phase().kind == PlanDayPhase::Kind::result; }));
        QApplication::processEvents();
        EXPECT_TRUE(part(sheet, "planDay.nothingFits")->isVisible());
        EXPECT_FALSE(sheet->list()->isVisible());
        expectNothingClipped(*sheet);
        part<QPushButton>(sheet, "planDay.cancel")->click();
        ASSERT_TRUE(sheetGone("planDay.sheet"));

        window->sheets()->newFlowFromText()->setPresented(true);
        auto *newFlow = shownSheet<NewFlowFromTextSheet>("newFlowFromText.sheet");
        ASSERT_NE(newFlow, nullptr);
        newFlow->textField()->setPlainText(QString(NewFlowFromTextModel::proseLimit + 1, QLatin1Char('x')));
        QApplication::processEvents();
        expectNothingClipped(*newFlow);
        saveScreenshot(*window, QStringLiteral("sheet-new-flow-from-text-") + language);
        newFlow->cancelButton()->click();
        ASSERT_TRUE(sheetGone("newFlowFromText.sheet"));

        window->sheets()->generateSubtasks()->present(movers.id);
        auto *generate = shownSheet<GenerateSubtasksSheet>("generateSubtasks.sheet");
        ASSERT_NE(generate, nullptr);
        expectNothingClipped(*generate);
        generate->cancelButton()->click();
        ASSERT_TRUE(sheetGone("generateSubtasks.sheet"));
        window.reset();
    }
}

TEST_F(SheetsTest, ClosingThePresentationClosesItsSheet)
{
    show();
    const int depth = DialogPresence::depth();
    PlanDayPresentation &planDay = *window->sheets()->planDay();
    planDay.setPresented(true);
    ASSERT_NE(shownSheet<PlanDaySheet>("planDay.sheet"), nullptr);
    // A second sheet over the first counts twice.
    window->sheets()->newFlowFromText()->setPresented(true);
    ASSERT_NE(shownSheet<NewFlowFromTextSheet>("newFlowFromText.sheet"), nullptr);
    EXPECT_EQ(DialogPresence::depth(), depth + 2);
    window->sheets()->newFlowFromText()->setPresented(false);
    EXPECT_TRUE(sheetGone("newFlowFromText.sheet"));
    planDay.setPresented(false);
    EXPECT_TRUE(sheetGone("planDay.sheet"));
    EXPECT_EQ(DialogPresence::depth(), depth);
    // And a click on the scrim clears the presentation.
    planDay.setPresented(true);
    DismissableDialogOverlay *overlay = window->sheets()->currentOverlay();
    ASSERT_NE(overlay, nullptr);
    QTest::mouseClick(overlay, Qt::LeftButton, Qt::NoModifier, QPoint(4, 4));
    EXPECT_FALSE(planDay.isPresented());
    EXPECT_EQ(DialogPresence::depth(), depth);

    // The welcome covers the window: a sheet open when it comes back goes,
    // and none opens under it, by command or by request.
    planDay.setPresented(true);
    ASSERT_NE(shownSheet<PlanDaySheet>("planDay.sheet"), nullptr);
    preferences->setHasCompletedOnboarding(false);
    EXPECT_TRUE(sheetGone("planDay.sheet"));
    for (const char *name : {"menu.planDay", "menu.newFlowFromText"}) {
        QAction *command = window->findChild<QAction *>(QString::fromLatin1(name));
        ASSERT_NE(command, nullptr) << name;
        EXPECT_FALSE(command->isEnabled()) << name;
    }
    window->sheets()->newFlowFromText()->setPresented(true);
    EXPECT_FALSE(window->sheets()->newFlowFromText()->isPresented());
    EXPECT_EQ(window->findChild<QWidget *>(QStringLiteral("newFlowFromText.sheet")), nullptr);
    EXPECT_EQ(DialogPresence::depth(), depth);
    preferences->setHasCompletedOnboarding(true);
    EXPECT_TRUE(window->findChild<QAction *>(QStringLiteral("menu.planDay"))->isEnabled());
}

} // namespace
} // namespace fenrow::testing
