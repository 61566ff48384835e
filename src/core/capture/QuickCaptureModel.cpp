#include "QuickCaptureModel.h"

#include "CaptureLog.h"

#include "domain/ActiveFlowState.h"
#include "domain/Clock.h"
#include "domain/FenrowHistory.h"
#include "domain/FenrowStore.h"
#include "domain/TextRules.h"
#include "shell/AppEnvironment.h"
#include "shell/AppPreferences.h"
#include "shell/InterfaceLanguage.h"

namespace fenrow {

QuickCaptureModel::QuickCaptureModel(FenrowStore &store, AppEnvironment &environment, AppPreferences &preferences,
                                     FenrowHistory *history, const ActiveFlowState *activeFlowState,
                                     const QuickCaptureSeed &seed, QObject *parent)
    : QObject(parent), text(seed.text), selectedFlowID(seed.selectedFlowID), m_store(store),
      m_environment(environment), m_preferences(preferences), m_history(history)
{
    if (selectedFlowID)
        return;
    const std::optional<QUuid> last = preferences.lastCaptureFlowID();
    if (last && store.flow(*last))
        selectedFlowID = last;
    else if (activeFlowState && activeFlowState->activeFlowID())
        selectedFlowID = activeFlowState->activeFlowID();
    else if (!store.flows().isEmpty())
        selectedFlowID = store.flows().first()->id;
}

const TaskFlow *QuickCaptureModel::selectedFlow() const
{
    return selectedFlowID ? m_store.flow(*selectedFlowID) : nullptr;
}

const TaskFlow *QuickCaptureModel::targetFlow() const
{
    if (const TaskFlow *selected = selectedFlow())
        return selected;
    return m_store.flows().isEmpty() ? nullptr : m_store.flows().first();
}

QString QuickCaptureModel::pickerLabel() const
{
    const TaskFlow *flow = targetFlow();
    return flow ? flow->name : qtTrId("quickCapture.picker.newFlow");
}

std::optional<CaptureDateParser::Match> QuickCaptureModel::datePreview() const
{
    std::optional<CaptureDateParser::Match> match = CaptureDateParser::parse(
        text.trimmed(), InterfaceLanguage::current(), m_store.clock().now(), m_store.calendar());
    if (match && dismissedDatePhrase && match->phrase == *dismissedDatePhrase)
        return std::nullopt;
    return match;
}

void QuickCaptureModel::dismissDate()
{
    if (const std::optional<CaptureDateParser::Match> match = datePreview())
        dismissedDatePhrase = match->phrase;
}

const FlowNode *QuickCaptureModel::save(std::function<void(AutoLink)> autoLinked)
{
    if (!canSave())
        return nullptr;
    const std::optional<CaptureDateParser::Match> match =
        givenDueDate ? std::nullopt : datePreview();
    // Without a date the text goes in as typed; the store trims it.
    const QString title = match ? match->title : text;
    const std::optional<QDateTime> dueDate = match ? std::optional<QDateTime>(match->date) : givenDueDate;

    const TaskFlow *flow = targetFlow();
    if (!flow)
        flow = m_store.addFlow(TextRules::untitledFlowName);
    QList<ItemRef> existing;
    for (const FlowNode *node : flow->orderedItems())
        existing.append({node->id, node->title});

    const FlowNode *node = nullptr;
    auto capture = [&] {
        // Near the origin, where a flow's first cards stand, clear of others.
        node = m_store.addNodeAt(*flow, title, QPointF(0, 0), sizes);
        if (dueDate && node)
            m_store.setDueDate(*dueDate, *node);
    };
    if (m_history)
        m_history->recordFromOutside(QStringLiteral("Capture task"), *flow, capture);
    else
        capture();
    m_preferences.setLastCaptureFlowID(flow->id);

    if (node)
        QuickCapture::autoLink(m_store, m_environment, m_history, {node->id, node->title}, existing, flow->id,
                               std::move(autoLinked));
    else if (autoLinked)
        autoLinked(AutoLink::skipped);
    // Closing may delete this model.
    if (const auto close = onClose)
        close();
    return node;
}

namespace QuickCapture {

void autoLink(FenrowStore &store, const AppEnvironment &environment, FenrowHistory *history, const ItemRef &newItem,
              const QList<ItemRef> &existing, const QUuid &flowID,
              std::function<void(QuickCaptureModel::AutoLink)> done)
{
    using AutoLink = QuickCaptureModel::AutoLink;
    if (!environment.hasEngine() || existing.isEmpty()) {
        if (done)
            done(AutoLink::skipped);
        return;
    }
    FenrowStore *target = &store;
    const QPointer<FenrowHistory> undo(history);
    EngineCall::whenDone(
        environment.engine()->link(newItem, existing, contentLanguage()), target,
        [target, undo, flowID, done](EngineResult<QList<EdgeProposal>> answer) {
            if (!answer.ok()) {
                qCCritical(fenrowCaptureLog, "Quick capture auto-link failed: %s",
                           qUtf8Printable(engineErrorDescription(answer.error())));
                if (done)
                    done(AutoLink::failed);
                return;
            }
            // The flow may have gone while the engine worked; gone nodes are
            // skipped by the store.
            if (const TaskFlow *flow = target->flow(flowID)) {
                auto apply = [&] { target->applyProposals(answer.value(), *flow, false); };
                if (undo)
                    undo->recordFromOutside(QStringLiteral("Auto-link"), *flow, apply);
                else
                    apply();
            }
            if (done)
                done(AutoLink::applied);
        });
}

} // namespace QuickCapture

} // namespace fenrow
