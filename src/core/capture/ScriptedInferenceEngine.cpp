#include "ScriptedInferenceEngine.h"

#include <QDeadlineTimer>
#include <QThread>

#include <algorithm>
#include <chrono>

namespace fenrow {

EngineResult<QList<EdgeProposal>> ScriptedInferenceEngine::answerLink(const ItemRef &newItem,
                                                                      const QList<ItemRef> &existing, const QString &,
                                                                      const EngineWork &) const
{
    if (existing.isEmpty())
        return QList<EdgeProposal>();
    return QList<EdgeProposal>{{existing.first().id, newItem.id}};
}

EngineResult<QList<EdgeProposal>> ScriptedInferenceEngine::answerRelink(const QList<ItemRef> &items, const QString &,
                                                                        const EngineWork &) const
{
    QList<EdgeProposal> chain;
    for (qsizetype i = 1; i < items.size(); ++i)
        chain.append({items[i - 1].id, items[i].id});
    return chain;
}

EngineResult<ExtractedFlow> ScriptedInferenceEngine::answerExtractFlow(const QString &text, const QString &,
                                                                       const EngineWork &work) const
{
    if (text.contains(QLatin1StringView("((held))"))) {
        const QDeadlineTimer limit(std::chrono::minutes(1));
        while (!work.isCancelled() && !limit.hasExpired())
            QThread::msleep(5);
        return EngineError::generationFailed;
    }
    if (text.trimmed().isEmpty() || text.contains(QLatin1StringView("((no tasks))")))
        return ExtractedFlow{QStringLiteral("Empty Plan"), {}};
    return ExtractedFlow{QStringLiteral("Scripted Plan"),
                         {QStringLiteral("Outline the plan"), QStringLiteral("Draft the content"),
                          QStringLiteral("Review and ship")}};
}

EngineResult<QStringList> ScriptedInferenceEngine::answerExpand(const ItemRef &, const QString &,
                                                                const ExpansionContext &, const QString &,
                                                                const EngineWork &) const
{
    return QStringList{QStringLiteral("Break it down"), QStringLiteral("Do the core work"),
                       QStringLiteral("Review the result")};
}

EngineResult<QList<qint64>> ScriptedInferenceEngine::answerEstimate(const QStringList &titles, const ExpansionContext &,
                                                                    const QString &, const EngineWork &) const
{
    QList<qint64> minutes;
    for (const QString &title : titles)
        minutes.append(title.trimmed().isEmpty() ? 0 : 45);
    return minutes;
}

EngineResult<QList<QUuid>> ScriptedInferenceEngine::answerPlanDay(const QList<PlannableTask> &tasks, qint64,
                                                                  const QString &, const EngineWork &) const
{
    QList<QUuid> order;
    for (const PlannableTask &task : tasks)
        order.append(task.id);
    std::reverse(order.begin(), order.end());
    return order;
}

} // namespace fenrow
