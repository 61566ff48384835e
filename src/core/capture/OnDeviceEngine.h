#pragma once

#include "GraphInferenceEngine.h"
#include "GuidedGenerator.h"

#include <memory>

namespace fenrow {

// The engine of a language model on this computer. Each operation is one
// guided generation (two or more for a long `relink`) through a
// `GuidedGenerator`; what is ours is the instructions, the prompts, the
// limits that keep a call inside a small model's context, and what is done
// with an answer the model got wrong. Out-of-range numbers are dropped, a
// short list is filled up, and a record that is not of the asked shape is a
// failure, so a wayward model can only give what the rules allow.
//
// No retry: a failed call is logged and answered with `generationFailed`.
class OnDeviceEngine : public GraphInferenceEngine {
public:
    // Settled for a small context window; not derived from token counts.
    static constexpr qsizetype proseLimit = 12000;
    static constexpr qsizetype batchSize = 40;
    static constexpr qsizetype existingItemsLimit = 39;
    static constexpr qsizetype listLimit = 40;
    static constexpr qint64 largestEstimate = 9600;
    static constexpr double temperature = 0.1;

    explicit OnDeviceEngine(std::shared_ptr<const GuidedGenerator> generator);

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

private:
    // The record, checked against its schema; nothing after logging why,
    // or when the call was cancelled.
    std::optional<QJsonObject> generate(const QString &instruction, const QString &prompt, const QJsonObject &schema,
                                        const EngineWork &work) const;

    std::shared_ptr<const GuidedGenerator> m_generator;
};

} // namespace fenrow
