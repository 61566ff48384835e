#include "GraphInferenceEngine.h"

namespace fenrow {

// Arguments are copied into the task: the caller's lists may change or go
// before the worker runs.

EngineFuture<QList<EdgeProposal>> GraphInferenceEngine::link(const ItemRef &newItem, const QList<ItemRef> &existing,
                                                             const QString &language) const
{
    return onWorker<QList<EdgeProposal>>([newItem, existing, language](const GraphInferenceEngine &engine) {
        return engine.answerLink(newItem, existing, language);
    });
}

EngineFuture<QList<EdgeProposal>> GraphInferenceEngine::relink(const QList<ItemRef> &items,
                                                               const QString &language) const
{
    return onWorker<QList<EdgeProposal>>(
        [items, language](const GraphInferenceEngine &engine) { return engine.answerRelink(items, language); });
}

EngineFuture<ExtractedFlow> GraphInferenceEngine::extractFlow(const QString &text, const QString &language) const
{
    return onWorker<ExtractedFlow>(
        [text, language](const GraphInferenceEngine &engine) { return engine.answerExtractFlow(text, language); });
}

EngineFuture<QStringList> GraphInferenceEngine::expand(const ItemRef &item, const QString &detail,
                                                       const ExpansionContext &context,
                                                       const QString &language) const
{
    return onWorker<QStringList>([item, detail, context, language](const GraphInferenceEngine &engine) {
        return engine.answerExpand(item, detail, context, language);
    });
}

EngineFuture<QList<qint64>> GraphInferenceEngine::estimate(const QStringList &titles, const ExpansionContext &context,
                                                           const QString &language) const
{
    return onWorker<QList<qint64>>([titles, context, language](const GraphInferenceEngine &engine) {
        return engine.answerEstimate(titles, context, language);
    });
}

EngineFuture<QList<QUuid>> GraphInferenceEngine::planDay(const QList<PlannableTask> &tasks, qint64 minutes,
                                                         const QString &language) const
{
    return onWorker<QList<QUuid>>([tasks, minutes, language](const GraphInferenceEngine &engine) {
        return engine.answerPlanDay(tasks, minutes, language);
    });
}

} // namespace fenrow
