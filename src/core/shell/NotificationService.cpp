#include "NotificationService.h"

#include "AppPreferences.h"
#include "InterfaceLanguage.h"
#include "NotificationCenter.h"
#include "RouteRequest.h"
#include "domain/Clock.h"
#include "domain/FenrowStore.h"
#include "domain/Readiness.h"

#include <QLocale>

#include <algorithm>

namespace fenrow {

namespace {

// The preferences whose change changes the list. The three of the design,
// and the sort and the language, which the digest's text is made of.
bool changesNotifications(const QString &key)
{
    for (const char *watched : {PreferenceKey::dueRemindersEnabled, PreferenceKey::morningDigestEnabled,
                                PreferenceKey::dueReminderHour, PreferenceKey::readySort, PreferenceKey::uiLanguage})
        if (key == QLatin1StringView(watched))
            return true;
    return false;
}

// The reminded task of a reminder's identifier; null for any other.
const FlowNode *remindedNode(const FenrowStore &store, const QString &identifier)
{
    if (!identifier.startsWith(NotificationService::reminderPrefix))
        return nullptr;
    const QUuid id = QUuid::fromString(QStringView(identifier).mid(NotificationService::reminderPrefix.size()));
    return id.isNull() ? nullptr : store.node(id);
}

} // namespace

NotificationService::NotificationService(FenrowStore &store, AppPreferences &preferences, Scheduler &scheduler,
                                         NotificationPresenter &presenter, Opening opening, QObject *parent)
    : QObject(parent), m_store(store), m_preferences(preferences), m_scheduler(scheduler),
      m_opening(std::move(opening)),
      m_center(std::make_unique<NotificationCenter>(store.clock(), store.calendar(), scheduler, presenter))
{
}

NotificationService::~NotificationService()
{
    m_scheduler.cancel(m_rearm);
}

void NotificationService::arm()
{
    if (m_armed)
        return;
    m_armed = true;
    m_center->setOpenedHandler([this](const QString &identifier) { open(identifier); });
    m_center->setClockChangedHandler([this] { rearm(); });
    connect(&m_store, &FenrowStore::changed, this, &NotificationService::scheduleRearm);
    connect(&m_preferences, &AppPreferences::changed, this, [this](const QString &key) {
        if (changesNotifications(key))
            scheduleRearm();
    });
    rearm();
}

void NotificationService::scheduleRearm()
{
    m_scheduler.cancel(m_rearm);
    m_rearm = m_scheduler.schedule(rearmDelay, [this] {
        m_rearm = 0;
        rearm();
    });
}

void NotificationService::rearm()
{
    if (!m_armed || m_withdrawn)
        return;
    m_scheduler.cancel(m_rearm);
    m_rearm = 0;
    m_center->removeAllPending();
    closeStaleReminders();
    // A failed add (the list full) is not looked at: the 60 reminders and
    // the digest fit.
    for (const NotificationRequest &request : requests(m_store, m_preferences, m_store.clock().now()))
        m_center->add(request);
    emit rearmed();
}

void NotificationService::closeStaleReminders()
{
    for (const QString &identifier : m_center->deliveredIdentifiers()) {
        if (!identifier.startsWith(reminderPrefix))
            continue;
        const FlowNode *node = remindedNode(m_store, identifier);
        if (!node || node->isDone)
            m_center->removeDelivered(identifier);
    }
}

void NotificationService::withdrawAll(std::function<void()> done)
{
    m_withdrawn = true;
    m_scheduler.cancel(m_rearm);
    m_rearm = 0;
    m_center->removeAllPending();
    // Whichever comes first, the desktop's answer or the limit, ends the
    // wait; the other finds nothing left to do.
    auto once = std::make_shared<std::function<void()>>(std::move(done));
    const auto finish = [once] {
        if (!*once)
            return;
        const std::function<void()> run = std::exchange(*once, {});
        run();
    };
    m_scheduler.schedule(withdrawLimit, finish);
    m_center->removeAllDelivered(finish);
}

void NotificationService::open(const QString &identifier)
{
    if (m_opening.showMainWindow)
        m_opening.showMainWindow();
    const FlowNode *node = remindedNode(m_store, identifier);
    if (node && node->flow() && m_opening.routes)
        m_opening.routes->requestFlow(node->flow()->id, node->id);
}

QString NotificationService::reminderIdentifier(const QUuid &nodeID)
{
    return reminderPrefix + nodeID.toString(QUuid::WithoutBraces).toUpper();
}

QList<NotificationRequest> NotificationService::requests(const FenrowStore &store, const AppPreferences &preferences,
                                                         const QDateTime &now)
{
    QList<NotificationRequest> requests;
    const int hour = std::clamp(preferences.dueReminderHour(), 0, 23);
    if (preferences.dueRemindersEnabled()) {
        const QString body = qtTrId("notification.due.body");
        for (const DueReminder &reminder : store.dueReminders(now, hour))
            requests.append({reminderIdentifier(reminder.nodeID), reminder.title, reminder.flowName, body,
                             NotificationTrigger::once(reminder.fireDate)});
    }
    if (preferences.morningDigestEnabled()) {
        const QList<ReadyTask> ready = Readiness::sortedReady(store.readyTasks(now), preferences.readySort());
        if (!ready.isEmpty()) {
            QStringList titles;
            for (const ReadyTask &task : ready.first(std::min(ready.size(), digestTitleCount)))
                titles << task.node->title;
            requests.append({digestIdentifier, qtTrId("notification.digest.title"), {},
                             QLocale(InterfaceLanguage::current()).createSeparatedList(titles),
                             NotificationTrigger::daily(QTime(hour, 0))});
        }
    }
    return requests;
}

} // namespace fenrow
