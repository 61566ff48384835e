#pragma once

#include "TestStore.h"

#include "capture/ScriptedInferenceEngine.h"

#include <QHash>
#include <QMutex>
#include <QSemaphore>
#include <QThread>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace fenrow::testing {

// An engine for tests: answers as the scripted engine unless told otherwise,
// fails the operations named in `failures`, can be held at a gate until the
// test opens it, and remembers what it was asked. Set it up before the first
// call; workers only read it.
class TestEngine : public ScriptedInferenceEngine {
public:
    QHash<QString, EngineError> failures;
    std::optional<QList<EdgeProposal>> linkAnswer;
    std::optional<QList<EdgeProposal>> relinkAnswer;
    std::optional<ExtractedFlow> extractAnswer;
    std::optional<QList<qint64>> estimateAnswer;
    std::optional<QList<QUuid>> planAnswer;

    // With a gate, each operation waits on its worker until the gate is
    // released or `gateTimeoutMs` has passed.
    std::shared_ptr<QSemaphore> gate;
    int gateTimeoutMs = 1000;

    struct Call {
        QString operation{};
        QThread *thread = nullptr;
        bool gateTimedOut = false;
        QList<ItemRef> items{};
        ExpansionContext context{};
        QString detail{};
        QStringList titles{};
        QString language{};
    };
    QList<Call> calls() const
    {
        QMutexLocker lock(&m_mutex);
        return m_calls;
    }
    qsizetype callCount(const QString &operation) const
    {
        qsizetype count = 0;
        for (const Call &call : calls())
            count += call.operation == operation;
        return count;
    }

protected:
    EngineResult<QList<EdgeProposal>> answerLink(const ItemRef &newItem, const QList<ItemRef> &existing,
                                                 const QString &language, const EngineWork &work) const override
    {
        QList<ItemRef> items = existing;
        items.append(newItem);
        return answer(QStringLiteral("link"), {.items = items, .language = language}, linkAnswer,
                      [&] { return ScriptedInferenceEngine::answerLink(newItem, existing, language, work); });
    }
    EngineResult<QList<EdgeProposal>> answerRelink(const QList<ItemRef> &items, const QString &language,
                                                   const EngineWork &work) const override
    {
        return answer(QStringLiteral("relink"), {.items = items, .language = language}, relinkAnswer,
                      [&] { return ScriptedInferenceEngine::answerRelink(items, language, work); });
    }
    EngineResult<ExtractedFlow> answerExtractFlow(const QString &text, const QString &language,
                                                  const EngineWork &work) const override
    {
        return answer(QStringLiteral("extractFlow"), {.detail = text, .language = language}, extractAnswer,
                      [&] { return ScriptedInferenceEngine::answerExtractFlow(text, language, work); });
    }
    EngineResult<QStringList> answerExpand(const ItemRef &item, const QString &detail, const ExpansionContext &context,
                                           const QString &language, const EngineWork &work) const override
    {
        return answer(QStringLiteral("expand"),
                      {.items = {item}, .context = context, .detail = detail, .language = language},
                      std::optional<QStringList>(),
                      [&] { return ScriptedInferenceEngine::answerExpand(item, detail, context, language, work); });
    }
    EngineResult<QList<qint64>> answerEstimate(const QStringList &titles, const ExpansionContext &context,
                                               const QString &language, const EngineWork &work) const override
    {
        return answer(QStringLiteral("estimate"), {.context = context, .titles = titles, .language = language},
                      estimateAnswer,
                      [&] { return ScriptedInferenceEngine::answerEstimate(titles, context, language, work); });
    }
    EngineResult<QList<QUuid>> answerPlanDay(const QList<PlannableTask> &tasks, qint64 minutes, const QString &language,
                                             const EngineWork &work) const override
    {
        QStringList titles;
        for (const PlannableTask &task : tasks)
            titles.append(task.title);
        return answer(QStringLiteral("planDay"), {.titles = titles, .language = language}, planAnswer,
                      [&] { return ScriptedInferenceEngine::answerPlanDay(tasks, minutes, language, work); });
    }

private:
    template <typename T, typename Scripted>
    EngineResult<T> answer(const QString &operation, Call call, const std::optional<T> &fixed, Scripted scripted) const
    {
        call.operation = operation;
        call.thread = QThread::currentThread();
        if (gate)
            call.gateTimedOut = !gate->tryAcquire(1, gateTimeoutMs);
        {
            QMutexLocker lock(&m_mutex);
            m_calls.append(call);
        }
        if (failures.contains(operation))
            return failures.value(operation);
        if (fixed)
            return *fixed;
        return scripted();
    }

    mutable QMutex m_mutex;
    mutable QList<Call> m_calls;
};

// Waits, spinning the event loop, until `done` holds; fails the test after
// five seconds.
template <typename Predicate>
bool waitUntil(Predicate done)
{
    const bool reached = QTest::qWaitFor(done, 5000);
    EXPECT_TRUE(reached) << "timed out waiting";
    return reached;
}

// The answer of an engine operation, received on this thread.
template <typename T>
EngineResult<T> awaitAnswer(const EngineFuture<T> &future)
{
    QObject receiver;
    std::optional<EngineResult<T>> answer;
    EngineCall::whenDone(future, &receiver, [&](EngineResult<T> result) { answer.emplace(std::move(result)); });
    if (!waitUntil([&] { return answer.has_value(); }))
        return EngineError::generationFailed;
    return *answer;
}

} // namespace fenrow::testing
