#pragma once

#include "GraphInferenceEngine.h"

#include "canvas/NodeSizeResolver.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>

namespace fenrow {

class ActiveFlowState;
class AppEnvironment;
class FenrowHistory;
class FenrowStore;
class FlowNode;
class TaskFlow;

// Engine answers turned into graph changes. Every engine call answers on
// the UI thread with the store as receiver, so a result still lands after
// the sheet that asked for it has closed; nodes and flows are looked up
// again before anything is written.
namespace GeneratedFlows {

// The flow's name as topic, and the titles of the chain of subtask parents
// above `node`, outermost first.
ExpansionContext expansionContext(const FlowNode &node);

// Titles trimmed, blank ones dropped.
QStringList cleanTitles(const QStringList &titles);

// How one relink is followed and stopped by whoever started it.
struct RelinkControl {
    // Once cancelled, nothing is applied and `done` hears false.
    EngineCancel cancel{};
    // Batches done of their total, on the store's thread.
    std::function<void(int done, int total)> progress{};
};

// Asks the engine for dependencies among all the flow's tasks and applies
// them in place of earlier machine-made edges. A failure is logged as
// `failurePrefix` and the error; `done` hears whether edges were applied.
void relink(FenrowStore &store, std::shared_ptr<const GraphInferenceEngine> engine, const QUuid &flowID,
            const QString &failurePrefix, std::function<void(bool)> done = {}, const RelinkControl &control = {});

// The user agreed to have an imported outline connected.
void relinkImported(FenrowStore &store, const AppEnvironment &environment, const QUuid &flowID,
                    std::function<void(bool)> done = {}, const RelinkControl &control = {});

} // namespace GeneratedFlows

enum class NewFlowFromTextNotice { noTasksFound, processingFailed };

// The "new flow from text" sheet without its widgets. With an engine and
// some text, the text becomes a named flow of estimated tasks that are
// connected in the background once the sheet has gone; otherwise an empty
// flow is made and its canvas opens with a first card in edit.
class NewFlowFromTextModel : public QObject {
    Q_OBJECT

public:
    // Above this many characters the engine reads only the first part.
    static constexpr qsizetype proseLimit = 12000;

    NewFlowFromTextModel(FenrowStore &store, AppEnvironment &environment, ActiveFlowState *activeFlowState = nullptr,
                         QObject *parent = nullptr);

    QString name;
    QString text;
    std::function<void(const TaskFlow &)> onCreated;
    std::function<void()> onDismiss;
    // After the background relink of a created flow, successful or not.
    std::function<void(bool)> onRelinked;

    bool isProcessing() const { return m_isProcessing; }
    std::optional<NewFlowFromTextNotice> notice() const { return m_notice; }
    bool showsEditor() const;
    bool willProcess() const;
    bool isOverBudget() const { return text.size() > proseLimit; }
    const char *generateButtonKey() const;
    static const char *noticeTitleKey(NewFlowFromTextNotice notice);
    static const char *noticeMessageKey(NewFlowFromTextNotice notice);

    // The generate button: the blank path or the engine's.
    void generate();
    // Gives up on the engine's work: nothing is made, and the sheet keeps
    // its text for another try.
    void stop();

signals:
    void processingChanged();
    void noticeChanged();

private:
    void createBlank();
    void process();
    void finishWith(std::optional<NewFlowFromTextNotice> notice);

    FenrowStore &m_store;
    AppEnvironment &m_environment;
    QPointer<ActiveFlowState> m_activeFlowState;
    bool m_isProcessing = false;
    EngineCancel m_cancel;
    std::optional<NewFlowFromTextNotice> m_notice;
};

// The "generate subtasks" sheet without its widgets: the engine breaks one
// task into subtasks, estimated, added under it in one undoable step.
class GenerateSubtasksModel : public QObject {
    Q_OBJECT

public:
    GenerateSubtasksModel(FenrowStore &store, AppEnvironment &environment, FenrowHistory *history,
                          const QUuid &itemID, NodeSizeResolver sizes = NodeSizeResolver(),
                          QObject *parent = nullptr);

    QString details;
    // The new subtasks to reveal, in order; empty when the engine found the
    // task atomic or it went away meanwhile. The sheet then closes.
    std::function<void(const QList<QUuid> &)> onFinished;
    // The engine failed; the sheet closes and the canvas shows the alert.
    std::function<void()> onFailed;

    bool isProcessing() const { return m_isProcessing; }
    void generate();
    // Gives up on the engine's work: no subtask is added.
    void stop();

signals:
    void processingChanged();

private:
    void setProcessing(bool processing);

    FenrowStore &m_store;
    AppEnvironment &m_environment;
    QPointer<FenrowHistory> m_history;
    QUuid m_itemID;
    NodeSizeResolver m_sizes;
    bool m_isProcessing = false;
    EngineCancel m_cancel;
};

} // namespace fenrow
