#pragma once

#include "capture/ScriptedInferenceEngine.h"
#include "shell/AppEnvironment.h"

#include <QSemaphore>

#include <atomic>

namespace fenrow::testing {

// The scripted engine, holding each operation on its worker until the test
// lets it go or the caller gives the operation up, so that a test can act
// while an engine call is in flight.
class HeldEngine : public ScriptedInferenceEngine {
public:
    // Lets every waiting and every later operation go on.
    void release() { m_released = true; }
    // Operations waiting now.
    int waiting() const { return m_waiting; }

protected:
    EngineResult<QList<EdgeProposal>> answerLink(const ItemRef &newItem, const QList<ItemRef> &existing,
                                                 const QString &language, const EngineWork &work) const override
    {
        hold(work);
        return ScriptedInferenceEngine::answerLink(newItem, existing, language, work);
    }
    EngineResult<QList<EdgeProposal>> answerRelink(const QList<ItemRef> &items, const QString &language,
                                                   const EngineWork &work) const override
    {
        hold(work);
        return ScriptedInferenceEngine::answerRelink(items, language, work);
    }
    EngineResult<ExtractedFlow> answerExtractFlow(const QString &text, const QString &language,
                                                  const EngineWork &work) const override
    {
        hold(work);
        return ScriptedInferenceEngine::answerExtractFlow(text, language, work);
    }
    EngineResult<QStringList> answerExpand(const ItemRef &item, const QString &detail, const ExpansionContext &context,
                                           const QString &language, const EngineWork &work) const override
    {
        hold(work);
        return ScriptedInferenceEngine::answerExpand(item, detail, context, language, work);
    }
    EngineResult<QList<qint64>> answerEstimate(const QStringList &titles, const ExpansionContext &context,
                                               const QString &language, const EngineWork &work) const override
    {
        hold(work);
        return ScriptedInferenceEngine::answerEstimate(titles, context, language, work);
    }
    EngineResult<QList<QUuid>> answerPlanDay(const QList<PlannableTask> &tasks, qint64 minutes,
                                             const QString &language, const EngineWork &work) const override
    {
        hold(work);
        return ScriptedInferenceEngine::answerPlanDay(tasks, minutes, language, work);
    }

private:
    void hold(const EngineWork &work) const
    {
        ++m_waiting;
        // A cancel flag wakes nobody: look at it often.
        QSemaphore never;
        while (!m_released && !work.isCancelled())
            never.tryAcquire(1, 10);
        --m_waiting;
    }

    std::atomic_bool m_released = false;
    mutable std::atomic_int m_waiting = 0;
};

// The scripted run's environment, answered by `engine`.
inline EngineFactories heldFactories(std::shared_ptr<HeldEngine> engine)
{
    EngineFactories factories = EngineFactories::standard();
    factories.scripted = [engine] { return engine; };
    return factories;
}

} // namespace fenrow::testing
