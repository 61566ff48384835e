#pragma once

#include "GraphInferenceEngine.h"

namespace fenrow {

// Stands in when no model can answer: every operation fails at once with
// `modelUnavailable`, so callers take their by-hand path.
class UnavailableEngine : public GraphInferenceEngine {
protected:
    EngineResult<QList<EdgeProposal>> answerLink(const ItemRef &, const QList<ItemRef> &, const QString &,
                                                 const EngineWork &) const override
    {
        return EngineError::modelUnavailable;
    }
    EngineResult<QList<EdgeProposal>> answerRelink(const QList<ItemRef> &, const QString &,
                                                   const EngineWork &) const override
    {
        return EngineError::modelUnavailable;
    }
    EngineResult<ExtractedFlow> answerExtractFlow(const QString &, const QString &, const EngineWork &) const override
    {
        return EngineError::modelUnavailable;
    }
    EngineResult<QStringList> answerExpand(const ItemRef &, const QString &, const ExpansionContext &, const QString &,
                                           const EngineWork &) const override
    {
        return EngineError::modelUnavailable;
    }
    EngineResult<QList<qint64>> answerEstimate(const QStringList &, const ExpansionContext &, const QString &,
                                               const EngineWork &) const override
    {
        return EngineError::modelUnavailable;
    }
    EngineResult<QList<QUuid>> answerPlanDay(const QList<PlannableTask> &, qint64, const QString &,
                                             const EngineWork &) const override
    {
        return EngineError::modelUnavailable;
    }
};

} // namespace fenrow
