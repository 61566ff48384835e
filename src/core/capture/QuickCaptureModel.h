#pragma once

#include "CaptureDateParser.h"
#include "GraphInferenceEngine.h"

#include "canvas/NodeSizeResolver.h"

#include <QObject>
#include <QPointer>
#include <QUuid>

#include <functional>
#include <optional>

namespace fenrow {

class ActiveFlowState;
class AppEnvironment;
class AppPreferences;
class FenrowHistory;
class FenrowStore;
class FlowNode;
class TaskFlow;

// What a new opening of the panel starts from.
struct QuickCaptureSeed {
    QString text{};
    std::optional<QUuid> selectedFlowID{};
};

// The quick-capture panel without its widgets: one line of text, with a
// date phrase read from it, saved as a task into a flow. Each opening makes
// a new model, so no draft outlives the panel.
class QuickCaptureModel : public QObject {
    Q_OBJECT

public:
    enum class AutoLink {
        // No engine, or the flow had no other task.
        skipped,
        applied,
        failed,
    };

    // Without a seeded flow the target is the flow of the last capture if it
    // still exists, else the active flow, else the store's first.
    QuickCaptureModel(FenrowStore &store, AppEnvironment &environment, AppPreferences &preferences,
                      FenrowHistory *history = nullptr, const ActiveFlowState *activeFlowState = nullptr,
                      const QuickCaptureSeed &seed = QuickCaptureSeed(), QObject *parent = nullptr);

    QString text;
    std::optional<QUuid> selectedFlowID;
    // The phrase of a date the user refused; only that very phrase stays
    // refused.
    std::optional<QString> dismissedDatePhrase;
    // A due date given outright (by a command or an intent): it is used as
    // it stands, and the text is not read for one.
    std::optional<QDateTime> givenDueDate;
    std::function<void()> onClose;
    // Where a new card is sized for its free spot.
    NodeSizeResolver sizes;

    // The selected flow while it exists.
    const TaskFlow *selectedFlow() const;
    // Where a save goes: the selected flow, else the store's first; none
    // when the store has no flows (a save then makes "Untitled flow").
    const TaskFlow *targetFlow() const;
    QString pickerLabel() const;

    // The date read from the text, unless its phrase was refused.
    std::optional<CaptureDateParser::Match> datePreview() const;
    void dismissDate();

    bool canSave() const { return !text.trimmed().isEmpty(); }
    // Adds the task under "Capture task", remembers the flow for the next
    // capture, starts the auto-link and closes. Returns the new task, or
    // null for blank text. `autoLinked` hears how the background link went,
    // even after this model is gone.
    const FlowNode *save(std::function<void(AutoLink)> autoLinked = {});

private:
    FenrowStore &m_store;
    AppEnvironment &m_environment;
    AppPreferences &m_preferences;
    QPointer<FenrowHistory> m_history;
};

namespace QuickCapture {

// Offers a new task to the engine to be linked into its flow, and applies
// the answer under "Auto-link" without replacing earlier edges. Runs only
// with an engine and when `existing` is not empty.
void autoLink(FenrowStore &store, const AppEnvironment &environment, FenrowHistory *history, const ItemRef &newItem,
              const QList<ItemRef> &existing, const QUuid &flowID,
              std::function<void(QuickCaptureModel::AutoLink)> done = {});

} // namespace QuickCapture

} // namespace fenrow
