#include "SystemIntents.h"

#include "AppPreferences.h"
#include "RouteRequest.h"
#include "WidgetFiles.h"

#include "capture/QuickCaptureModel.h"
#include "domain/Clock.h"
#include "domain/FenrowHistory.h"
#include "domain/FenrowStore.h"
#include "domain/Readiness.h"

namespace fenrow {

namespace {

// Of the Ready list, the dialog names this many tasks.
constexpr qsizetype readyTitlesNamed = 3;

const FlowNode *findNode(const FenrowStore &store, const QUuid &id)
{
    return id.isNull() ? nullptr : store.node(id);
}

} // namespace

TaskEntity TaskEntity::of(const FlowNode &node)
{
    return {node.id, node.title, node.flow() ? node.flow()->displayName() : QString()};
}

QString describe(FenrowIntentError error)
{
    switch (error) {
    case FenrowIntentError::notFound:
        break;
    }
    return qtTrId("intents.error.notFound");
}

std::variant<AddTaskIntent::Result, FenrowIntentError> AddTaskIntent::perform(IntentServices &services) const
{
    FenrowStore &store = services.store;
    if (flow && !store.flow(*flow))
        return FenrowIntentError::notFound;

    // Quick capture's own save: the date read from the title unless one was
    // given, the flow of the last capture or else the first, "Capture task"
    // as one step, and the auto-link after it.
    QuickCaptureModel capture(store, services.environment, services.preferences, &services.history);
    capture.text = taskTitle;
    capture.givenDueDate = dueDate;
    if (flow)
        capture.selectedFlowID = *flow;
    const FlowNode *node = capture.save();
    if (!node)
        return FenrowIntentError::notFound;

    const TaskEntity task = TaskEntity::of(*node);
    return Result{task, qtTrId("intents.add.done %@ %@").arg(task.title, task.flowName)};
}

GetReadyTasksIntent::Result GetReadyTasksIntent::perform(IntentServices &services) const
{
    const FenrowStore &store = services.store;
    Result result;
    for (const ReadyTask &ready : Readiness::inListOrder(store.flows(), store.clock().now(), store.calendar(),
                                                         services.preferences.readySort()))
        result.tasks.append(TaskEntity::of(*ready.node));
    if (result.tasks.isEmpty()) {
        result.dialog = qtTrId("intents.ready.none");
        return result;
    }
    QStringList titles;
    for (qsizetype i = 0; i < std::min(result.tasks.size(), readyTitlesNamed); ++i)
        titles.append(result.tasks[i].title);
    result.dialog = qtTrId("intents.ready.some %lld %@").arg(result.tasks.size()).arg(titles.join(QStringLiteral(", ")));
    return result;
}

std::variant<QString, FenrowIntentError> CompleteTaskIntent::perform(IntentServices &services) const
{
    FenrowStore &store = services.store;
    const FlowNode *node = findNode(store, task);
    if (!node || !node->flow())
        return FenrowIntentError::notFound;
    if (!node->isDone)
        services.history.recordFromOutside(QStringLiteral("Complete task"), *node->flow(),
                                           [&] { store.setStatus(NodeStatus::done, *node); });
    return qtTrId("intents.complete.done %@").arg(node->title);
}

std::optional<FenrowIntentError> OpenFlowIntent::perform(IntentServices &services) const
{
    if (flow.isNull() || !services.store.flow(flow))
        return FenrowIntentError::notFound;
    if (services.showMainWindow)
        services.showMainWindow();
    if (services.routes)
        services.routes->requestFlow(flow);
    return std::nullopt;
}

std::optional<PendingCompletion> TickReadyTaskIntent::perform(const QString &sharedFolder, const QDateTime &now) const
{
    const QUuid task = QUuid::fromString(taskID);
    if (task.isNull())
        return std::nullopt;
    const PendingCompletion entry{QUuid::createUuid(), task, now, {}};
    QString error;
    if (!entry.park(sharedFolder, &error)) {
        qCWarning(fenrowWidgetLog, "Could not park a widget tick: %s", qUtf8Printable(error));
        return std::nullopt;
    }
    return entry;
}

} // namespace fenrow
