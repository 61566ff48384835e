#include "GraphInferenceEngine.h"

namespace fenrow {

// Arguments are copied into the task: the caller's lists may change or go
// before the worker runs.

EngineFuture<QList<EdgeProposal>> GraphInferenceEngine::link(const ItemRef &newItem, const QList<ItemRef> &existing,
                                                             const QString &language, EngineCancel cancel) const
{
    return onWorker<QList<EdgeProposal>>(
        cancel, [newItem, existing, language](const GraphInferenceEngine &engine, const EngineWork &work) {
            return engine.answerLink(newItem, existing, language, work);
        });
}

EngineFuture<QList<EdgeProposal>> GraphInferenceEngine::relink(const QList<ItemRef> &items, const QString &language,
                                                               EngineCancel cancel) const
{
    return onWorker<QList<EdgeProposal>>(cancel,
                                         [items, language](const GraphInferenceEngine &engine, const EngineWork &work) {
                                             return engine.answerRelink(items, language, work);
                                         });
}

EngineFuture<ExtractedFlow> GraphInferenceEngine::extractFlow(const QString &text, const QString &language,
                                                              EngineCancel cancel) const
{
    return onWorker<ExtractedFlow>(cancel,
                                   [text, language](const GraphInferenceEngine &engine, const EngineWork &work) {
                                       return engine.answerExtractFlow(text, language, work);
                                   });
}

EngineFuture<QStringList> GraphInferenceEngine::expand(const ItemRef &item, const QString &detail,
                                                       const ExpansionContext &context, const QString &language,
                                                       EngineCancel cancel) const
{
    return onWorker<QStringList>(
        cancel, [item, detail, context, language](const GraphInferenceEngine &engine, const EngineWork &work) {
            return engine.answerExpand(item, detail, context, language, work);
        });
}

EngineFuture<QList<qint64>> GraphInferenceEngine::estimate(const QStringList &titles, const ExpansionContext &context,
                                                           const QString &language, EngineCancel cancel) const
{
    return onWorker<QList<qint64>>(
        cancel, [titles, context, language](const GraphInferenceEngine &engine, const EngineWork &work) {
            return engine.answerEstimate(titles, context, language, work);
        });
}

EngineFuture<QList<QUuid>> GraphInferenceEngine::planDay(const QList<PlannableTask> &tasks, qint64 minutes,
                                                         const QString &language, EngineCancel cancel) const
{
    return onWorker<QList<QUuid>>(
        cancel, [tasks, minutes, language](const GraphInferenceEngine &engine, const EngineWork &work) {
            return engine.answerPlanDay(tasks, minutes, language, work);
        });
}

} // namespace fenrow
