#pragma once

#include "PendingCompletion.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

#include <functional>
#include <optional>
#include <variant>

namespace fenrow {

class AppEnvironment;
class AppPreferences;
class FenrowHistory;
class FenrowStore;
class FlowNode;
class RouteRequest;

// The program's automation entry points: add a task, ask what is ready,
// complete a task, open a flow. The session bus and the command line reach
// them; each runs on the UI thread against the program's own store and
// history, so its change is one step of Undo.

struct TaskEntity {
    QUuid id;
    QString title;
    // The flow's display name ("Untitled flow" in the interface language
    // for a blank one).
    QString flowName;

    static TaskEntity of(const FlowNode &node);
    friend bool operator==(const TaskEntity &, const TaskEntity &) = default;
};

struct FlowEntity {
    QUuid id;
    QString name;
};

// The one error an intent shows: what it was asked about is not there.
enum class FenrowIntentError { notFound };

QString describe(FenrowIntentError error);

// What the intents work with: the program's store and its companions, and
// the way to the main window.
struct IntentServices {
    FenrowStore &store;
    FenrowHistory &history;
    AppPreferences &preferences;
    AppEnvironment &environment;
    // Brings the main window forward; may be empty (nothing to show).
    std::function<void()> showMainWindow{};
    // Where a flow to open is asked for; may be null.
    RouteRequest *routes = nullptr;
};

struct AddTaskIntent {
    QString taskTitle;
    std::optional<QUuid> flow;
    // Used as it stands when given; otherwise the title is read for a date
    // as quick capture reads it.
    std::optional<QDateTime> dueDate;

    struct Result {
        TaskEntity task;
        QString dialog;
    };
    // The task is captured as one "Capture task" step; with an engine it is
    // then linked ("Auto-link") without holding up the answer.
    std::variant<Result, FenrowIntentError> perform(IntentServices &services) const;
};

struct GetReadyTasksIntent {
    struct Result {
        QList<TaskEntity> tasks;
        QString dialog;
    };
    // The Ready list as the window shows it, in the list's own sort.
    Result perform(IntentServices &services) const;
};

struct CompleteTaskIntent {
    QUuid task;

    // The dialog; a task done already is only answered.
    std::variant<QString, FenrowIntentError> perform(IntentServices &services) const;
};

struct OpenFlowIntent {
    QUuid flow;

    // Brings the main window forward showing the flow.
    std::optional<FenrowIntentError> perform(IntentServices &services) const;
};

// The tray widget's tick, in the widget's process: parks a
// `PendingCompletion` for the program and never touches the store.
struct TickReadyTaskIntent {
    QString taskID;

    // The tick parked in `sharedFolder`; nothing when the id does not
    // parse, or when it could not be written ("Could not park a widget
    // tick: …" logged under "fenrow.widget").
    std::optional<PendingCompletion> perform(const QString &sharedFolder, const QDateTime &now) const;
};

} // namespace fenrow
