#include "TestEngines.h"

#include "capture/UnavailableEngine.h"

#include <QCoreApplication>
#include <QTimer>

namespace fenrow::testing {
namespace {

QList<ItemRef> items(int count)
{
    QList<ItemRef> list;
    for (int i = 0; i < count; ++i)
        list.append({QUuid::createUuid(), QStringLiteral("Item %1").arg(i)});
    return list;
}

TEST(ScriptedEngine, AnswersByItsTable)
{
    const auto engine = std::make_shared<ScriptedInferenceEngine>();
    const QList<ItemRef> three = items(3);
    const ItemRef added{QUuid::createUuid(), QStringLiteral("New")};

    EXPECT_TRUE(awaitAnswer(engine->link(added, {}, "en")).value().isEmpty());
    const QList<EdgeProposal> linked = awaitAnswer(engine->link(added, three.first(2), "en")).value();
    ASSERT_EQ(linked.size(), 1);
    EXPECT_EQ(linked[0].fromItemID, three[0].id);
    EXPECT_EQ(linked[0].toItemID, added.id);

    const QList<EdgeProposal> chain = awaitAnswer(engine->relink(three, "en")).value();
    ASSERT_EQ(chain.size(), 2);
    EXPECT_EQ(chain[0].fromItemID, three[0].id);
    EXPECT_EQ(chain[1].toItemID, three[2].id);
    EXPECT_TRUE(awaitAnswer(engine->relink(three.first(1), "en")).value().isEmpty());

    EXPECT_EQ(awaitAnswer(engine->extractFlow(" \n\t", "en")).value(), (ExtractedFlow{"Empty Plan", {}}));
    EXPECT_EQ(awaitAnswer(engine->extractFlow("Plan it ((no tasks)) please", "en")).value().name, "Empty Plan");
    const ExtractedFlow draft = awaitAnswer(engine->extractFlow("Write a talk", "en")).value();
    EXPECT_EQ(draft.name, "Scripted Plan");
    EXPECT_EQ(draft.titles, QStringList({"Outline the plan", "Draft the content", "Review and ship"}));

    EXPECT_EQ(awaitAnswer(engine->expand(added, {}, {}, "en")).value().size(), 3);
    EXPECT_EQ(awaitAnswer(engine->estimate({"Write", "  ", ""}, {}, "en")).value(), QList<qint64>({45, 0, 0}));

    const QList<PlannableTask> tasks{{three[0].id, "a", "F", {}}, {three[1].id, "b", "F", 10}};
    EXPECT_EQ(awaitAnswer(engine->planDay(tasks, 60, "en")).value(), QList<QUuid>({three[1].id, three[0].id}));
}

TEST(UnavailableEngine, FailsEveryOperationWithModelUnavailable)
{
    const auto engine = std::make_shared<UnavailableEngine>();
    const QList<ItemRef> two = items(2);
    const QList<EngineError> errors{
        awaitAnswer(engine->link(two[0], two, "en")).error(),
        awaitAnswer(engine->relink(two, "en")).error(),
        awaitAnswer(engine->extractFlow("Write a talk", "en")).error(),
        awaitAnswer(engine->expand(two[0], {}, {}, "en")).error(),
        awaitAnswer(engine->estimate({"a"}, {}, "en")).error(),
        awaitAnswer(engine->planDay({{two[0].id, "a", "F", {}}}, 60, "en")).error(),
    };
    EXPECT_EQ(errors, QList<EngineError>(6, EngineError::modelUnavailable));
    EXPECT_FALSE(awaitAnswer(engine->relink(two, "en")).ok());
}

TEST(EngineCall, WorksOnAWorkerAndAnswersOnTheCallersThread)
{
    const auto engine = std::make_shared<TestEngine>();
    QObject receiver;
    QThread *answeredOn = nullptr;
    EngineCall::whenDone(engine->expand({QUuid::createUuid(), "Task"}, {}, {}, "en"), &receiver,
                         [&](EngineResult<QStringList>) { answeredOn = QThread::currentThread(); });
    // Nothing arrives before the event loop runs, even for an instant answer.
    EXPECT_EQ(answeredOn, nullptr);
    waitUntil([&] { return answeredOn != nullptr; });
    EXPECT_EQ(answeredOn, QThread::currentThread());
    ASSERT_EQ(engine->calls().size(), 1);
    EXPECT_NE(engine->calls()[0].thread, QThread::currentThread());
}

TEST(EngineCall, AnswerForAReceiverThatIsGoneIsDropped)
{
    const auto engine = std::make_shared<TestEngine>();
    engine->gate = std::make_shared<QSemaphore>();
    bool answered = false;
    auto receiver = std::make_unique<QObject>();
    EngineCall::whenDone(engine->relink(items(3), "en"), receiver.get(),
                         [&](EngineResult<QList<EdgeProposal>>) { answered = true; });
    receiver.reset();
    engine->gate->release();
    waitUntil([&] { return engine->calls().size() == 1; });
    QThreadPool::globalInstance()->waitForDone(2000);
    QCoreApplication::processEvents();
    EXPECT_FALSE(answered);
}

TEST(EngineCall, EventLoopKeepsRunningWhileASlowEngineWorks)
{
    // The engine holds its worker for up to a second, until the main
    // thread's timer has fired ten times. Had the call blocked the main
    // thread, the timer could not fire, the gate would time out, and the
    // engine would say so.
    const auto engine = std::make_shared<TestEngine>();
    engine->gate = std::make_shared<QSemaphore>();
    engine->gateTimeoutMs = 1000;

    int ticks = 0;
    int ticksAtAnswer = -1;
    QTimer timer;
    timer.setInterval(5);
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (++ticks == 10)
            engine->gate->release();
    });
    timer.start();

    QObject receiver;
    EngineCall::whenDone(engine->planDay({{QUuid::createUuid(), "a", "F", {}}}, 60, "en"), &receiver,
                         [&](EngineResult<QList<QUuid>> result) {
                             EXPECT_TRUE(result.ok());
                             ticksAtAnswer = ticks;
                         });
    waitUntil([&] { return ticksAtAnswer >= 0; });
    EXPECT_GE(ticksAtAnswer, 10);
    ASSERT_EQ(engine->calls().size(), 1);
    EXPECT_FALSE(engine->calls()[0].gateTimedOut);
}

TEST(ContentLanguage, IsTheLocalesLanguageOrEnglish)
{
    EXPECT_EQ(contentLanguage(QLocale(QLocale::German, QLocale::Austria)), "de");
    EXPECT_EQ(contentLanguage(QLocale(QLocale::Turkish)), "tr");
    EXPECT_EQ(contentLanguage(QLocale::c()), "en");
}

} // namespace
} // namespace fenrow::testing
