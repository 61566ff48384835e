#include "GeneratedFlows.h"

#include "CaptureLog.h"

#include "domain/ActiveFlowState.h"
#include "domain/FenrowHistory.h"
#include "domain/FenrowStore.h"
#include "shell/AppEnvironment.h"

#include <QSet>

namespace fenrow {

namespace {

void logFailure(const char *prefix, EngineError error)
{
    qCCritical(fenrowCaptureLog, "%s%s", prefix, qUtf8Printable(engineErrorDescription(error)));
}

// The first subtask parent of `node`, if any.
const FlowNode *subtaskParent(const FlowNode &node)
{
    for (const DependencyEdge *edge : node.flow()->edges()) {
        if (edge->isSubtask() && edge->toItem() == &node && edge->fromItem())
            return edge->fromItem();
    }
    return nullptr;
}

} // namespace

namespace GeneratedFlows {

ExpansionContext expansionContext(const FlowNode &node)
{
    ExpansionContext context;
    if (!node.flow())
        return context;
    context.topic = node.flow()->name;
    QSet<const FlowNode *> seen{&node};
    for (const FlowNode *parent = subtaskParent(node); parent && !seen.contains(parent);
         parent = subtaskParent(*parent)) {
        seen.insert(parent);
        context.ancestors.prepend(parent->title);
    }
    return context;
}

QStringList cleanTitles(const QStringList &titles)
{
    QStringList clean;
    for (const QString &title : titles) {
        const QString trimmed = title.trimmed();
        if (!trimmed.isEmpty())
            clean.append(trimmed);
    }
    return clean;
}

void relink(FenrowStore &store, std::shared_ptr<const GraphInferenceEngine> engine, const QUuid &flowID,
            const QString &failurePrefix, std::function<void(bool)> done, const RelinkControl &control)
{
    const TaskFlow *flow = store.flow(flowID);
    if (!flow) {
        if (done)
            done(false);
        return;
    }
    QList<ItemRef> items;
    for (const FlowNode *node : flow->orderedItems())
        items.append({node->id, node->title});
    FenrowStore *target = &store;
    const EngineCancel cancel = control.cancel;
    const EngineFuture<QList<EdgeProposal>> answered = engine->relink(items, contentLanguage(), cancel);
    if (control.progress)
        EngineCall::whenProgress(answered, target, control.progress);
    EngineCall::whenDone(answered, target,
                         [target, flowID, failurePrefix, done, cancel](EngineResult<QList<EdgeProposal>> answer) {
                             const TaskFlow *flow = target->flow(flowID);
                             const bool apply = answer.ok() && flow && !cancel.isCancelled();
                             if (!answer.ok() && !cancel.isCancelled())
                                 logFailure(qUtf8Printable(failurePrefix), answer.error());
                             if (apply)
                                 target->applyProposals(answer.value(), *flow, true);
                             if (done)
                                 done(apply);
                         });
}

void relinkImported(FenrowStore &store, const AppEnvironment &environment, const QUuid &flowID,
                    std::function<void(bool)> done, const RelinkControl &control)
{
    relink(store, environment.engine(), flowID, QStringLiteral("OPML relink failed: "), std::move(done), control);
}

} // namespace GeneratedFlows

// --- new flow from text

NewFlowFromTextModel::NewFlowFromTextModel(FenrowStore &store, AppEnvironment &environment,
                                           ActiveFlowState *activeFlowState, QObject *parent)
    : QObject(parent), m_store(store), m_environment(environment), m_activeFlowState(activeFlowState)
{
}

bool NewFlowFromTextModel::showsEditor() const
{
    return m_environment.hasEngine();
}

bool NewFlowFromTextModel::willProcess() const
{
    return m_environment.hasEngine() && !text.trimmed().isEmpty();
}

const char *NewFlowFromTextModel::generateButtonKey() const
{
    return willProcess() ? QT_TRID_NOOP("newFlowFromText.create") : QT_TRID_NOOP("newFlowFromText.createBlank");
}

const char *NewFlowFromTextModel::noticeTitleKey(NewFlowFromTextNotice notice)
{
    return notice == NewFlowFromTextNotice::noTasksFound ? QT_TRID_NOOP("newFlowFromText.noTasksFound.title")
                                                         : QT_TRID_NOOP("newFlowFromText.failed.title");
}

const char *NewFlowFromTextModel::noticeMessageKey(NewFlowFromTextNotice notice)
{
    return notice == NewFlowFromTextNotice::noTasksFound ? QT_TRID_NOOP("newFlowFromText.noTasksFound.message")
                                                         : QT_TRID_NOOP("newFlowFromText.failed.message");
}

void NewFlowFromTextModel::generate()
{
    if (m_isProcessing)
        return;
    if (willProcess())
        process();
    else
        createBlank();
}

void NewFlowFromTextModel::createBlank()
{
    const TaskFlow *flow = m_store.addFlow(name.trimmed());
    if (m_activeFlowState && !m_environment.launchArguments().contains(QStringLiteral("--ui-test-suppress-seed")))
        m_activeFlowState->setPendingSeedFlowID(flow->id);
    // Either callback may close, and so delete, this sheet.
    const auto created = onCreated;
    const auto dismiss = onDismiss;
    if (created)
        created(*flow);
    if (dismiss)
        dismiss();
}

void NewFlowFromTextModel::finishWith(std::optional<NewFlowFromTextNotice> notice)
{
    if (m_notice != notice) {
        m_notice = notice;
        emit noticeChanged();
    }
    if (m_isProcessing) {
        m_isProcessing = false;
        emit processingChanged();
    }
}

void NewFlowFromTextModel::stop()
{
    if (!m_isProcessing)
        return;
    m_cancel.cancel();
    finishWith(std::nullopt);
}

void NewFlowFromTextModel::process()
{
    m_cancel = EngineCancel();
    m_isProcessing = true;
    emit processingChanged();
    if (m_notice) {
        m_notice.reset();
        emit noticeChanged();
    }

    // The sheet may close while the engine works; the result still lands.
    const QPointer<NewFlowFromTextModel> sheet(this);
    FenrowStore *store = &m_store;
    const std::shared_ptr<const GraphInferenceEngine> engine = m_environment.engine();
    const QString language = contentLanguage();
    const QString typedName = name.trimmed();
    const EngineCancel cancel = m_cancel;
    const auto failed = [sheet](EngineError error) {
        logFailure("New flow from text failed: ", error);
        if (sheet)
            sheet->finishWith(NewFlowFromTextNotice::processingFailed);
    };

    // A stopped call's answer is dropped at each step, so nothing is made.
    EngineCall::whenDone(engine->extractFlow(text, language, cancel), store, [=](EngineResult<ExtractedFlow> draft) {
        if (cancel.isCancelled())
            return;
        if (!draft.ok())
            return failed(draft.error());
        const QStringList titles = GeneratedFlows::cleanTitles(draft.value().titles);
        if (titles.isEmpty()) {
            if (sheet)
                sheet->finishWith(NewFlowFromTextNotice::noTasksFound);
            return;
        }
        const QString draftName = draft.value().name.trimmed();
        EngineCall::whenDone(
            engine->estimate(titles, {draftName, {}}, language, cancel), store,
            [=](EngineResult<QList<qint64>> minutes) {
                if (cancel.isCancelled())
                    return;
                if (!minutes.ok())
                    return failed(minutes.error());
                const TaskFlow *flow = store->addFlow(typedName.isEmpty() ? draftName : typedName);
                for (qsizetype i = 0; i < titles.size(); ++i) {
                    // Side by side from the origin, clear of each other.
                    const FlowNode *node = store->addNodeAt(*flow, titles[i], QPointF(0, 0), NodeSizeResolver());
                    if (i < minutes.value().size() && minutes.value()[i] > 0)
                        store->setEstimate(minutes.value()[i], *node);
                }
                const QUuid flowID = flow->id;
                std::function<void(bool)> relinked;
                if (sheet) {
                    const auto created = sheet->onCreated;
                    const auto dismiss = sheet->onDismiss;
                    relinked = sheet->onRelinked;
                    sheet->finishWith(std::nullopt);
                    if (created)
                        created(*flow);
                    if (dismiss)
                        dismiss();
                }
                GeneratedFlows::relink(*store, engine, flowID, QStringLiteral("New flow relink failed: "), relinked);
            });
    });
}

// --- generate subtasks

GenerateSubtasksModel::GenerateSubtasksModel(FenrowStore &store, AppEnvironment &environment,
                                             FenrowHistory *history, const QUuid &itemID, NodeSizeResolver sizes,
                                             QObject *parent)
    : QObject(parent), m_store(store), m_environment(environment), m_history(history), m_itemID(itemID),
      m_sizes(sizes)
{
}

void GenerateSubtasksModel::setProcessing(bool processing)
{
    if (m_isProcessing == processing)
        return;
    m_isProcessing = processing;
    emit processingChanged();
}

void GenerateSubtasksModel::stop()
{
    if (!m_isProcessing)
        return;
    m_cancel.cancel();
    setProcessing(false);
}

void GenerateSubtasksModel::generate()
{
    const FlowNode *parent = m_store.node(m_itemID);
    if (m_isProcessing || !parent)
        return;
    m_cancel = EngineCancel();
    setProcessing(true);

    const QPointer<GenerateSubtasksModel> sheet(this);
    FenrowStore *store = &m_store;
    const QPointer<FenrowHistory> history = m_history;
    const std::shared_ptr<const GraphInferenceEngine> engine = m_environment.engine();
    const QString language = contentLanguage();
    const QUuid parentID = m_itemID;
    const NodeSizeResolver sizes = m_sizes;
    const ExpansionContext context = GeneratedFlows::expansionContext(*parent);
    const EngineCancel cancel = m_cancel;
    const auto failed = [sheet](EngineError error) {
        logFailure("Generate subtasks failed: ", error);
        if (!sheet)
            return;
        sheet->setProcessing(false);
        if (const auto notify = sheet->onFailed)
            notify();
    };
    const auto finished = [sheet](const QList<QUuid> &added) {
        if (!sheet)
            return;
        sheet->setProcessing(false);
        if (const auto notify = sheet->onFinished)
            notify(added);
    };

    EngineCall::whenDone(
        engine->expand({parent->id, parent->title}, details.trimmed(), context, language, cancel), store,
        [=](EngineResult<QStringList> answer) {
            if (cancel.isCancelled())
                return;
            if (!answer.ok())
                return failed(answer.error());
            const QStringList titles = GeneratedFlows::cleanTitles(answer.value());
            if (titles.isEmpty())
                return finished({});
            EngineCall::whenDone(
                engine->estimate(titles, context, language, cancel), store, [=](EngineResult<QList<qint64>> minutes) {
                    if (cancel.isCancelled())
                        return;
                    if (!minutes.ok())
                        return failed(minutes.error());
                    // The task may have gone while the engine worked.
                    const FlowNode *live = store->node(parentID);
                    if (!live)
                        return finished({});
                    QList<QUuid> added;
                    auto addSubtasks = [&] {
                        for (qsizetype i = 0; i < titles.size(); ++i) {
                            // A new node under the parent, joined by a subtask
                            // edge, and the parent's subtasks laid out again.
                            const FlowNode *child = store->addChildNode(*live, titles[i], sizes);
                            if (i < minutes.value().size() && minutes.value()[i] > 0)
                                store->setEstimate(minutes.value()[i], *child);
                            added.append(child->id);
                        }
                    };
                    if (history)
                        history->recordAction(QStringLiteral("Generate subtasks"), *live->flow(), addSubtasks);
                    else
                        addSubtasks();
                    finished(added);
                });
        });
}

} // namespace fenrow
