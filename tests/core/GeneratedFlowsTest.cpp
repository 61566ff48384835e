#include "CaptureFixture.h"

#include "capture/GeneratedFlows.h"
#include "domain/ActiveFlowState.h"

#include <QSignalSpy>
#include <QThreadPool>

namespace fenrow::testing {
namespace {

class GeneratedFlowsTest : public CaptureFixture {
protected:
    // "ab" for a manual edge a -> b, "ab*" for a machine-made one, in the
    // flow's edge order.
    static QStringList edgesOf(const TaskFlow &of)
    {
        QStringList edges;
        for (const DependencyEdge *edge : of.edges())
            edges << edge->fromItem()->title + edge->toItem()->title + (edge->source == EdgeSource::ai ? "*" : "");
        return edges;
    }
    EdgeProposal proposal(const QString &from, const QString &to) { return {(*this)[from].id, (*this)[to].id}; }

    const TaskFlow *flowNamed(const QString &name) const
    {
        for (const TaskFlow *each : store->flows())
            if (each->name == name)
                return each;
        return nullptr;
    }
    static QStringList titlesIn(const TaskFlow &of)
    {
        QStringList titles;
        for (const FlowNode *node : of.orderedItems())
            titles << node->title + (node->estimateMinutes ? QStringLiteral(" %1").arg(*node->estimateMinutes) : "");
        return titles;
    }
};

TEST_F(GeneratedFlowsTest, ProposalForANodeDeletedMeanwhileIsSkipped)
{
    addAll("abc");
    engine->gate = std::make_shared<QSemaphore>();
    engine->relinkAnswer = QList<EdgeProposal>{proposal("a", "b"), proposal("a", "c"), proposal("b", "c")};
    std::optional<bool> applied;
    GeneratedFlows::relink(*store, engine, flow->id, "Relink failed: ", [&](bool ok) { applied = ok; });

    // The engine has the titles; the user deletes b before it answers.
    store->deleteNode((*this)["b"]);
    engine->gate->release();
    waitUntil([&] { return applied.has_value(); });
    EXPECT_TRUE(*applied);
    ASSERT_EQ(flow->edges().size(), 1u);
    EXPECT_EQ(flow->edges()[0]->toItem()->title, "c");
}

TEST_F(GeneratedFlowsTest, RelinkOfAFlowDeletedMeanwhileChangesNothing)
{
    addAll("ab");
    engine->gate = std::make_shared<QSemaphore>();
    std::optional<bool> applied;
    GeneratedFlows::relinkImported(*store, environment(), flow->id, [&](bool ok) { applied = ok; });
    store->deleteFlow(*flow);
    engine->gate->release();
    waitUntil([&] { return applied.has_value(); });
    EXPECT_FALSE(*applied);

    // A failing engine is logged under the import's name.
    const TaskFlow *imported = store->addFlow("Imported");
    store->addNode("x", *imported);
    engine->gate.reset();
    engine->failures.insert("relink", EngineError::generationFailed);
    LogCapture log;
    applied.reset();
    GeneratedFlows::relinkImported(*store, environment(), imported->id, [&](bool ok) { applied = ok; });
    waitUntil([&] { return applied.has_value(); });
    EXPECT_TRUE(log.contains("OPML relink failed: "));
}

TEST_F(GeneratedFlowsTest, TextBecomesAFlowOfEstimatedTasksConnectedAfterwards)
{
    NewFlowFromTextModel sheet(*store, environment());
    sheet.text = "Write the talk, then rehearse it.";
    EXPECT_STREQ(sheet.generateButtonKey(), "newFlowFromText.create");
    const TaskFlow *created = nullptr;
    bool dismissed = false;
    std::optional<bool> relinked;
    sheet.onCreated = [&](const TaskFlow &made) {
        created = &made;
        EXPECT_TRUE(made.edges().empty()) << "connecting waits until the sheet has gone";
    };
    sheet.onDismiss = [&] { dismissed = true; };
    sheet.onRelinked = [&](bool ok) { relinked = ok; };

    sheet.generate();
    EXPECT_TRUE(sheet.isProcessing());
    waitUntil([&] { return relinked.has_value(); });
    ASSERT_NE(created, nullptr);
    EXPECT_TRUE(dismissed);
    EXPECT_FALSE(sheet.isProcessing());
    EXPECT_EQ(created->name, "Scripted Plan");
    EXPECT_EQ(titlesIn(*created),
              QStringList({"Outline the plan 45", "Draft the content 45", "Review and ship 45"}));
    EXPECT_EQ(edgesOf(*created), QStringList({"Outline the planDraft the content*", "Draft the contentReview and ship*"}));

    // The engine estimated against the draft's name.
    const auto calls = engine->calls();
    ASSERT_EQ(calls.size(), 3);
    EXPECT_EQ(calls[1].operation, "estimate");
    EXPECT_EQ(calls[1].context.topic, "Scripted Plan");
}

TEST_F(GeneratedFlowsTest, TypedNameWinsAndUselessEstimatesLeaveNone)
{
    engine->extractAnswer = ExtractedFlow{"Draft", {"  Buy paint ", "", "Paint"}};
    engine->estimateAnswer = QList<qint64>{0};
    NewFlowFromTextModel sheet(*store, environment());
    sheet.name = "  Kitchen ";
    sheet.text = "paint the kitchen";
    std::optional<bool> relinked;
    sheet.onRelinked = [&](bool ok) { relinked = ok; };
    sheet.generate();
    waitUntil([&] { return relinked.has_value(); });
    const TaskFlow *kitchen = flowNamed("Kitchen");
    ASSERT_NE(kitchen, nullptr);
    EXPECT_EQ(titlesIn(*kitchen), QStringList({"Buy paint", "Paint"}));
    EXPECT_EQ(engine->calls()[1].titles, QStringList({"Buy paint", "Paint"})) << "blank titles never reach estimate";
}

TEST_F(GeneratedFlowsTest, NothingIsCreatedWhenNoTasksOrEstimatesFail)
{
    const qsizetype flowsBefore = store->flows().size();
    NewFlowFromTextModel sheet(*store, environment());
    bool created = false;
    sheet.onCreated = [&](const TaskFlow &) { created = true; };

    sheet.text = "Nothing to do here ((no tasks))";
    sheet.generate();
    waitUntil([&] { return !sheet.isProcessing(); });
    EXPECT_EQ(sheet.notice(), NewFlowFromTextNotice::noTasksFound);

    engine->failures.insert("estimate", EngineError::generationFailed);
    LogCapture log;
    sheet.text = "Write the talk";
    sheet.generate();
    EXPECT_EQ(sheet.notice(), std::nullopt) << "a new run clears the notice";
    waitUntil([&] { return !sheet.isProcessing(); });
    EXPECT_EQ(sheet.notice(), NewFlowFromTextNotice::processingFailed);
    EXPECT_TRUE(log.contains("New flow from text failed: "));
    EXPECT_STREQ(NewFlowFromTextModel::noticeTitleKey(*sheet.notice()), "newFlowFromText.failed.title");

    EXPECT_FALSE(created);
    EXPECT_EQ(store->flows().size(), flowsBefore);
}

TEST_F(GeneratedFlowsTest, AFailedRelinkKeepsTheFlow)
{
    engine->failures.insert("relink", EngineError::invalidResponse);
    LogCapture log;
    auto sheet = std::make_unique<NewFlowFromTextModel>(*store, environment());
    sheet->text = "Write the talk";
    std::optional<bool> relinked;
    sheet->onRelinked = [&](bool ok) { relinked = ok; };
    sheet->generate();
    waitUntil([&] { return relinked.has_value(); });
    EXPECT_FALSE(*relinked);
    ASSERT_NE(flowNamed("Scripted Plan"), nullptr);
    EXPECT_EQ(flowNamed("Scripted Plan")->items().size(), 3u);
    EXPECT_TRUE(log.contains("New flow relink failed: "));
}

TEST_F(GeneratedFlowsTest, ASheetClosedWhileTheEngineWorksStillGetsItsFlow)
{
    engine->gate = std::make_shared<QSemaphore>();
    auto sheet = std::make_unique<NewFlowFromTextModel>(*store, environment());
    sheet->text = "Write the talk";
    sheet->generate();
    sheet.reset();
    engine->gate->release(3);
    waitUntil([&] { return engine->callCount("relink") == 1; });
    ASSERT_NE(flowNamed("Scripted Plan"), nullptr);
}

// Lets every engine call that was started finish and its answer arrive.
void settleEngineCalls()
{
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

TEST_F(GeneratedFlowsTest, StoppedWorkLeavesTheStoreAsItWas)
{
    addAll("ab");
    engine->gate = std::make_shared<QSemaphore>();
    LogCapture log;

    NewFlowFromTextModel newFlow(*store, environment());
    newFlow.text = "Write the talk";
    newFlow.generate();
    newFlow.stop();
    EXPECT_FALSE(newFlow.isProcessing());
    EXPECT_FALSE(newFlow.notice().has_value());

    GenerateSubtasksModel subtasks(*store, environment(), &history, (*this)["a"].id);
    bool heard = false;
    subtasks.onFinished = [&](const QList<QUuid> &) { heard = true; };
    subtasks.onFailed = [&] { heard = true; };
    subtasks.generate();
    subtasks.stop();
    EXPECT_FALSE(subtasks.isProcessing());

    GeneratedFlows::RelinkControl control;
    std::optional<bool> relinked;
    GeneratedFlows::relink(*store, engine, flow->id, "Relink failed: ", [&](bool ok) { relinked = ok; }, control);
    control.cancel.cancel();

    // The engine answers all three after all; none of it lands.
    engine->gate->release(3);
    settleEngineCalls();
    ASSERT_EQ(engine->calls().size(), 3);
    EXPECT_EQ(engine->callCount("estimate"), 0);
    EXPECT_EQ(store->flows().size(), 1u);
    EXPECT_EQ(flow->items().size(), 2u);
    EXPECT_TRUE(flow->edges().empty());
    EXPECT_TRUE(undoNames(*flow).isEmpty());
    EXPECT_FALSE(heard);
    EXPECT_EQ(relinked, false);
    EXPECT_FALSE(newFlow.isProcessing());
    for (const char *failure : {"Relink failed", "New flow from text failed", "Generate subtasks failed"})
        EXPECT_FALSE(log.contains(failure)) << failure;

    // A stopped sheet can try again.
    engine->gate.reset();
    subtasks.generate();
    ASSERT_TRUE(waitUntil([&] { return heard; }));
    EXPECT_EQ(flow->items().size(), 5u);
}

// The blank flow and its seed card are SheetsTest's; here, what a scripted
// run changes and that blank text never reaches the engine.
TEST_F(GeneratedFlowsTest, ScriptedRunsMayAskForNoSeed)
{
    ActiveFlowState quiet;
    NewFlowFromTextModel blank(*store, environment(true, {"--ui-test-suppress-seed"}), &quiet);
    blank.text = "  \n ";
    EXPECT_STREQ(blank.generateButtonKey(), "newFlowFromText.createBlank");
    blank.generate();
    EXPECT_EQ(quiet.pendingSeedFlowID(), std::nullopt);
    EXPECT_NE(flowNamed("Untitled flow"), nullptr);
    EXPECT_EQ(engine->calls().size(), 0);
}

TEST_F(GeneratedFlowsTest, SubtasksComeWithContextEstimatesAndOneUndoStep)
{
    addAll("gpt");
    link("g", "p", EdgeKind::subtask);
    link("p", "t", EdgeKind::subtask);
    GenerateSubtasksModel sheet(*store, environment(), &history, (*this)["t"].id);
    sheet.details = "  for the spring release ";
    std::optional<QList<QUuid>> added;
    sheet.onFinished = [&](const QList<QUuid> &ids) { added = ids; };
    sheet.generate();
    EXPECT_TRUE(sheet.isProcessing());
    waitUntil([&] { return added.has_value(); });
    EXPECT_FALSE(sheet.isProcessing());

    const TestEngine::Call expand = engine->calls()[0];
    EXPECT_EQ(expand.context, (ExpansionContext{"Test", {"g", "p"}}));
    EXPECT_EQ(expand.detail, "for the spring release");
    EXPECT_EQ(engine->calls()[1].context, expand.context);

    ASSERT_EQ(added->size(), 3);
    QStringList children;
    for (const QUuid &id : *added) {
        const FlowNode *child = store->node(id);
        ASSERT_NE(child, nullptr);
        EXPECT_EQ(child->estimateMinutes, 45);
        children << child->title;
    }
    EXPECT_EQ(children, QStringList({"Break it down", "Do the core work", "Review the result"}));
    EXPECT_EQ(edgesOf(*flow).mid(2), QStringList({"tBreak it down", "tDo the core work", "tReview the result"}));
    EXPECT_EQ(undoNames(*flow), QStringList{"Generate subtasks"});

    ASSERT_TRUE(history.undoFlow(flow->id));
    EXPECT_EQ(flow->items().size(), 3u);
}

TEST_F(GeneratedFlowsTest, SubtasksFailOrFindTheTaskGone)
{
    addAll("t");
    engine->failures.insert("expand", EngineError::generationFailed);
    LogCapture log;
    auto sheet = std::make_unique<GenerateSubtasksModel>(*store, environment(), &history, (*this)["t"].id);
    bool failed = false;
    sheet->onFailed = [&] { failed = true; };
    sheet->generate();
    waitUntil([&] { return failed; });
    EXPECT_TRUE(log.contains("Generate subtasks failed: "));

    // The task is deleted while the engine works: nothing is added.
    engine->failures.clear();
    engine->gate = std::make_shared<QSemaphore>();
    std::optional<QList<QUuid>> added;
    sheet->onFinished = [&](const QList<QUuid> &ids) { added = ids; };
    sheet->generate();
    store->deleteNode((*this)["t"]);
    engine->gate->release(2);
    waitUntil([&] { return added.has_value(); });
    EXPECT_TRUE(added->isEmpty());
    EXPECT_TRUE(flow->items().empty());
    EXPECT_TRUE(undoNames(*flow).isEmpty());
}

} // namespace
} // namespace fenrow::testing
