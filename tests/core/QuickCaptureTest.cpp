#include "CaptureFixture.h"

#include "capture/QuickCaptureModel.h"
#include "domain/ActiveFlowState.h"

namespace fenrow::testing {
namespace {

class QuickCapture : public CaptureFixture {
protected:
    std::unique_ptr<QuickCaptureModel> panel(bool withEngine = true, const ActiveFlowState *active = nullptr)
    {
        auto model = std::make_unique<QuickCaptureModel>(*store, environment(withEngine), preferences, &history, active);
        model->onClose = [this] { ++closings; };
        return model;
    }
    // Saves and waits for the background link to settle.
    QuickCaptureModel::AutoLink saveAndLink(QuickCaptureModel &model)
    {
        std::optional<QuickCaptureModel::AutoLink> outcome;
        model.save([&](QuickCaptureModel::AutoLink result) { outcome = result; });
        waitUntil([&] { return outcome.has_value(); });
        return outcome.value_or(QuickCaptureModel::AutoLink::failed);
    }
    const FlowNode *newest(const TaskFlow &of) const { return of.orderedItems().last(); }

    int closings = 0;
};

TEST_F(QuickCapture, TargetIsTheLastCaptureFlowThenTheActiveThenTheFirst)
{
    const TaskFlow *second = store->addFlow("Second");
    const TaskFlow *third = store->addFlow("Third");
    ActiveFlowState active;
    active.setActiveFlowID(third->id);

    preferences.setLastCaptureFlowID(second->id);
    EXPECT_EQ(panel(true, &active)->pickerLabel(), "Second");
    preferences.setLastCaptureFlowID(QUuid::createUuid());
    EXPECT_EQ(panel(true, &active)->pickerLabel(), "Third");
    EXPECT_EQ(panel(true)->pickerLabel(), "Test");

    // A selected flow deleted while the panel is open: the save goes to the
    // first flow.
    auto model = panel();
    model->selectedFlowID = second->id;
    store->deleteFlow(*second);
    model->text = "Water plants";
    const FlowNode *node = model->save();
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->flow(), flow);
    EXPECT_EQ(preferences.lastCaptureFlowID(), flow->id);
}

TEST_F(QuickCapture, SaveTakesTheDateOutOfTheTitleAsOneUndoStep)
{
    auto model = panel(false);
    model->text = "  Call Anna tomorrow ";
    const FlowNode *node = model->save();
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->title, "Call Anna");
    EXPECT_EQ(node->dueDate, berlinTime(2026, 6, 11).toUTC());
    EXPECT_EQ(undoNames(*flow), QStringList{"Capture task"});
    EXPECT_EQ(closings, 1);

    // Blank text: nothing at all, and the panel stays.
    model->text = " \n ";
    EXPECT_FALSE(model->canSave());
    EXPECT_EQ(model->save(), nullptr);
    EXPECT_EQ(closings, 1);
    EXPECT_EQ(flow->items().size(), 1u);

    // A text that is only a date phrase stays a title.
    model->text = "tomorrow";
    EXPECT_EQ(model->datePreview(), std::nullopt);
    EXPECT_EQ(model->save()->dueDate, std::nullopt);
}

TEST_F(QuickCapture, ADismissedDateHoldsForItsPhraseOnly)
{
    auto model = panel(false);
    model->text = "Gym on friday";
    ASSERT_TRUE(model->datePreview());
    model->dismissDate();
    EXPECT_EQ(model->datePreview(), std::nullopt);

    model->text = "Gym next wednesday";
    ASSERT_TRUE(model->datePreview()) << "another phrase gives a new chip";
    EXPECT_EQ(model->datePreview()->phrase, "next wednesday");

    model->text = "  Gym on friday";
    const FlowNode *node = model->save();
    EXPECT_EQ(node->title, "Gym on friday");
    EXPECT_EQ(node->dueDate, std::nullopt);
}

TEST_F(QuickCapture, AnEmptyStoreGetsAnUntitledFlow)
{
    store->deleteFlow(*flow);
    auto model = panel(false);
    EXPECT_EQ(model->pickerLabel(), qtTrId("quickCapture.picker.newFlow"));
    model->text = "First thing";
    const FlowNode *node = model->save();
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->flow()->name, "Untitled flow");
    EXPECT_EQ(preferences.lastCaptureFlowID(), node->flow()->id);
}

TEST_F(QuickCapture, AutoLinkFollowsAsASecondUndoStep)
{
    addAll("ab");
    auto model = panel();
    model->text = "Ship it";
    EXPECT_EQ(saveAndLink(*model), QuickCaptureModel::AutoLink::applied);
    ASSERT_EQ(engine->calls().size(), 1);
    // The engine saw the flow's tasks as they were before the capture.
    EXPECT_EQ(engine->calls()[0].items.size(), 3);
    ASSERT_EQ(flow->edges().size(), 1u);
    EXPECT_EQ(flow->edges()[0]->fromItem(), &(*this)["a"]);
    EXPECT_EQ(flow->edges()[0]->toItem(), newest(*flow));
    EXPECT_EQ(flow->edges()[0]->source, EdgeSource::ai);
    EXPECT_EQ(undoNames(*flow), QStringList({"Capture task", "Auto-link"}));

    ASSERT_TRUE(history.undoFlow(flow->id));
    EXPECT_TRUE(flow->edges().empty());
    EXPECT_EQ(flow->items().size(), 3u) << "undoing the link keeps the task";
}

TEST_F(QuickCapture, NoAutoLinkWithoutAnEngineOrOtherTasks)
{
    auto alone = panel();
    alone->text = "Only task";
    EXPECT_EQ(saveAndLink(*alone), QuickCaptureModel::AutoLink::skipped);

    auto manual = panel(false);
    manual->text = "Second task";
    EXPECT_EQ(saveAndLink(*manual), QuickCaptureModel::AutoLink::skipped);
    EXPECT_EQ(engine->calls().size(), 0);
    EXPECT_TRUE(flow->edges().empty());
}

TEST_F(QuickCapture, AFailedAutoLinkIsLoggedAndTheTaskStays)
{
    addAll("a");
    engine->failures.insert("link", EngineError::generationFailed);
    LogCapture log;
    auto model = panel();
    model->text = "Ship it";
    EXPECT_EQ(saveAndLink(*model), QuickCaptureModel::AutoLink::failed);
    EXPECT_TRUE(log.contains("Quick capture auto-link failed: "));
    EXPECT_EQ(flow->items().size(), 2u);
    EXPECT_EQ(undoNames(*flow), QStringList{"Capture task"});
}

TEST_F(QuickCapture, TheLinkLandsAfterThePanelHasClosed)
{
    addAll("a");
    engine->gate = std::make_shared<QSemaphore>();
    auto model = panel();
    model->onClose = [&] { model.reset(); };
    model->text = "Ship it";
    std::optional<QuickCaptureModel::AutoLink> outcome;
    model->save([&](QuickCaptureModel::AutoLink result) { outcome = result; });
    EXPECT_EQ(model, nullptr);
    engine->gate->release();
    waitUntil([&] { return outcome.has_value(); });
    EXPECT_EQ(flow->edges().size(), 1u);
}

} // namespace
} // namespace fenrow::testing
