#pragma once

#include "GraphInferenceEngine.h"

namespace fenrow {

// Fixed answers for scripted runs ("--ui-test") and tests: never fails,
// and gives the same answer for the same question. It answers at once, but
// for a text to draft a flow from that holds "((held))": that waits until
// it is cancelled (at most a minute), as a model still thinking does.
class ScriptedInferenceEngine : public GraphInferenceEngine {
protected:
    EngineResult<QList<EdgeProposal>> answerLink(const ItemRef &newItem, const QList<ItemRef> &existing,
                                                 const QString &language, const EngineWork &work) const override;
    EngineResult<QList<EdgeProposal>> answerRelink(const QList<ItemRef> &items, const QString &language,
                                                   const EngineWork &work) const override;
    EngineResult<ExtractedFlow> answerExtractFlow(const QString &text, const QString &language,
                                                  const EngineWork &work) const override;
    EngineResult<QStringList> answerExpand(const ItemRef &item, const QString &detail, const ExpansionContext &context,
                                           const QString &language, const EngineWork &work) const override;
    EngineResult<QList<qint64>> answerEstimate(const QStringList &titles, const ExpansionContext &context,
                                               const QString &language, const EngineWork &work) const override;
    EngineResult<QList<QUuid>> answerPlanDay(const QList<PlannableTask> &tasks, qint64 minutes, const QString &language,
                                             const EngineWork &work) const override;
};

} // namespace fenrow
