// Due reminders and the morning digest: which are pending, when they come,
// and what re-arms them. Time is a fixed clock moved by hand together with
// a manual scheduler; what comes due goes to a presenter that keeps it.
#include "TestStore.h"

#include "domain/NodeStatus.h"
#include "domain/Scheduler.h"
#include "shell/AppPreferences.h"
#include "shell/InterfaceLanguage.h"
#include "shell/NotificationCenter.h"
#include "shell/NotificationPresenter.h"
#include "shell/NotificationService.h"
#include "shell/RouteRequest.h"

#include <QSettings>
#include <QSignalSpy>

namespace fenrow {
namespace {

using namespace std::chrono_literals;
using testing::berlin;
using testing::berlinTime;
using testing::TestStore;

QStringList identifiers(const QList<NotificationRequest> &requests)
{
    QStringList result;
    for (const NotificationRequest &request : requests)
        result << request.identifier;
    return result;
}

// Keeps what the centre hands over; the desktop's answer to closeAll comes
// when the test gives it.
class KeepingPresenter final : public NotificationPresenter {
public:
    void show(const NotificationRequest &request) override { shown.append(request); }
    void close(const QString &identifier) override { closed.append(identifier); }
    void closeAll(std::function<void()> done) override
    {
        ++closeAllCalls;
        unanswered.append(std::move(done));
    }
    void setOpenedHandler(Opened handler) override { opened = std::move(handler); }

    void answer()
    {
        for (const std::function<void()> &done : std::exchange(unanswered, {}))
            done();
    }

    QList<NotificationRequest> shown;
    QStringList closed;
    int closeAllCalls = 0;
    QList<std::function<void()>> unanswered;
    Opened opened;
};

class Notifications : public ::testing::Test {
protected:
    Notifications()
        : store(TestStore::Backing::memory),
          preferences(std::make_unique<QSettings>(settingsFolder.filePath(QStringLiteral("fenrow.conf")),
                                                  QSettings::IniFormat))
    {
        InterfaceLanguage::apply(QStringLiteral("en"));
        store.clock.set(berlinTime(2026, 6, 10, 8, 0));
        home = store->addFlow(QStringLiteral("Home"));
        service = std::make_unique<NotificationService>(
            *store, preferences, scheduler, presenter,
            NotificationService::Opening{[this] { ++windowShown; }, &routes});
    }

    NotificationCenter &center() const { return service->center(); }
    QStringList pending() const { return identifiers(center().pendingRequests()); }

    const FlowNode &task(const QString &title, const TaskFlow *flow = nullptr)
    {
        return *store->addNode(title, flow ? *flow : *home);
    }
    const FlowNode &dueOn(const QString &title, QDate day, const TaskFlow *flow = nullptr)
    {
        const FlowNode &node = task(title, flow);
        store->setDueDate(store->calendar().startOfDay(day), node);
        return node;
    }
    static QString reminderOf(const FlowNode &node) { return NotificationService::reminderIdentifier(node.id); }

    // Time passes on the wall clock and for the timers alike, a tenth of a
    // second at a time.
    void pass(std::chrono::milliseconds span)
    {
        while (span > 0ms) {
            const auto step = std::min(span, std::chrono::milliseconds(100));
            store.clock.set(store.clock.now().addMSecs(step.count()));
            scheduler.advance(step);
            span -= step;
        }
    }
    // Past the re-arming's delay.
    void settle() { pass(NotificationService::rearmDelay + 100ms); }

    TestStore store;
    QTemporaryDir settingsFolder;
    AppPreferences preferences;
    ManualScheduler scheduler;
    KeepingPresenter presenter;
    RouteRequest routes;
    int windowShown = 0;
    std::unique_ptr<NotificationService> service;
    const TaskFlow *home = nullptr;
};

TEST_F(Notifications, AReminderComesAtTheHourOfItsDueDay)
{
    const FlowNode &rent = dueOn(QStringLiteral("Pay rent"), QDate(2026, 6, 10));
    service->arm();

    ASSERT_EQ(center().pendingRequests().size(), 1);
    const NotificationRequest request = center().pendingRequests().first();
    EXPECT_EQ(request.identifier, QStringLiteral("due.") + rent.id.toString(QUuid::WithoutBraces).toUpper());
    EXPECT_EQ(request.title, QStringLiteral("Pay rent"));
    EXPECT_EQ(request.subtitle, QStringLiteral("Home"));
    EXPECT_EQ(request.body, qtTrId("notification.due.body"));
    EXPECT_EQ(request.body, QStringLiteral("Due today"));
    EXPECT_EQ(request.trigger, NotificationTrigger::once(berlinTime(2026, 6, 10, 9, 0)));

    pass(59min + 59s);
    EXPECT_TRUE(presenter.shown.isEmpty()) << "a second before the hour";
    pass(1s);
    ASSERT_EQ(identifiers(presenter.shown), QStringList{request.identifier});
    EXPECT_EQ(presenter.shown.first(), request);
    EXPECT_TRUE(pending().isEmpty()) << "a reminder comes once";
    pass(24h);
    EXPECT_EQ(presenter.shown.size(), 1);
}

TEST_F(Notifications, ATaskDueTodayAfterTheHourGetsNoReminder)
{
    store.clock.set(berlinTime(2026, 6, 10, 9, 0));
    dueOn(QStringLiteral("Today"), QDate(2026, 6, 10));
    const FlowNode &tomorrow = dueOn(QStringLiteral("Tomorrow"), QDate(2026, 6, 11));
    const FlowNode &done = dueOn(QStringLiteral("Done"), QDate(2026, 6, 12));
    store->setStatus(NodeStatus::done, done);
    task(QStringLiteral("No due date"));

    const QList<DueReminder> reminders = store->dueReminders(store.clock.now(), 9);
    ASSERT_EQ(reminders.size(), 1) << "at the hour itself is not after now";
    EXPECT_EQ(reminders.first(), (DueReminder{tomorrow.id, QStringLiteral("Tomorrow"), QStringLiteral("Home"),
                                              berlinTime(2026, 6, 11, 9, 0)}));
    EXPECT_EQ(store->dueReminders(store.clock.now(), 10).size(), 2) << "a later hour still comes today";
}

TEST_F(Notifications, SeventyComingRemindersGiveTheEarliestSixty)
{
    // Created latest first, in two flows, so that only sorting puts them right.
    const TaskFlow *work = store->addFlow(QStringLiteral("  "));
    QList<QUuid> byDay(70);
    for (int day = 70; day >= 1; --day)
        byDay[day - 1] = dueOn(QStringLiteral("Task %1").arg(day), QDate(2026, 6, 10).addDays(day),
                               day % 2 ? home : work)
                             .id;
    const QList<DueReminder> reminders = store->dueReminders(store.clock.now(), 9);
    ASSERT_EQ(reminders.size(), 60);
    for (int index = 0; index < 60; ++index) {
        EXPECT_EQ(reminders[index].nodeID, byDay[index]);
        EXPECT_EQ(reminders[index].fireDate, berlinTime(2026, 6, 11, 9, 0).addDays(index));
    }
    EXPECT_EQ(reminders[1].flowName, QStringLiteral("Untitled flow")) << "a blank flow name reads as untitled";

    preferences.setMorningDigestEnabled(true);
    service->arm();
    EXPECT_EQ(center().pendingRequests().size(), 61) << "60 reminders and the digest";
    EXPECT_LE(center().pendingRequests().size(), NotificationCenter::pendingLimit);
}

TEST_F(Notifications, TasksOfOneMomentKeepTheirFlowAndTaskOrder)
{
    const TaskFlow *second = store->addFlow(QStringLiteral("Second"));
    const FlowNode &later = dueOn(QStringLiteral("Later flow"), QDate(2026, 6, 12), second);
    const FlowNode &first = dueOn(QStringLiteral("First"), QDate(2026, 6, 12));
    const FlowNode &next = dueOn(QStringLiteral("Next"), QDate(2026, 6, 12));
    const FlowNode &sooner = dueOn(QStringLiteral("Sooner"), QDate(2026, 6, 11), second);
    QList<QUuid> order;
    for (const DueReminder &reminder : store->dueReminders(store.clock.now(), 9))
        order << reminder.nodeID;
    EXPECT_EQ(order, (QList<QUuid>{sooner.id, first.id, next.id, later.id}));
}

TEST_F(Notifications, ClockChangesMoveTheHourToTheNextValidTimeOrTheFirstOfTwo)
{
    // Berlin skips 02:00 to 03:00 on 29 March 2026 and shows 02:00 to 03:00
    // twice on 25 October 2026.
    const LocalCalendar calendar(berlin());
    EXPECT_EQ(calendar.atHour(QDate(2026, 3, 29), 2), QDateTime(QDate(2026, 3, 29), QTime(1, 0), Qt::UTC));
    EXPECT_EQ(calendar.atHour(QDate(2026, 3, 29), 3), QDateTime(QDate(2026, 3, 29), QTime(1, 0), Qt::UTC));
    EXPECT_EQ(calendar.atHour(QDate(2026, 10, 25), 2), QDateTime(QDate(2026, 10, 25), QTime(0, 0), Qt::UTC));
    EXPECT_EQ(calendar.atHour(QDate(2026, 10, 25), 3), QDateTime(QDate(2026, 10, 25), QTime(2, 0), Qt::UTC));
    EXPECT_EQ(calendar.atHour(QDate(2026, 6, 10), 0), QDateTime(QDate(2026, 6, 9), QTime(22, 0), Qt::UTC));
    EXPECT_EQ(LocalCalendar(QTimeZone("America/Sao_Paulo")).atHour(QDate(2018, 11, 4), 0),
              QDateTime(QDate(2018, 11, 4), QTime(3, 0), Qt::UTC))
        << "a skipped midnight west of Greenwich";

    store.clock.set(berlinTime(2026, 3, 1));
    const FlowNode &spring = dueOn(QStringLiteral("Spring"), QDate(2026, 3, 29));
    const QList<DueReminder> reminders = store->dueReminders(store.clock.now(), 2);
    ASSERT_EQ(reminders.size(), 1);
    EXPECT_EQ(reminders.first().nodeID, spring.id);
    EXPECT_EQ(reminders.first().fireDate, berlinTime(2026, 3, 29, 3, 0));
}

TEST_F(Notifications, CompletingATaskDropsItsReminderAtTheNextRearming)
{
    const FlowNode &rent = dueOn(QStringLiteral("Pay rent"), QDate(2026, 6, 12));
    const FlowNode &call = dueOn(QStringLiteral("Call"), QDate(2026, 6, 13));
    service->arm();
    QSignalSpy rearmed(service.get(), &NotificationService::rearmed);
    ASSERT_EQ(pending(), (QStringList{reminderOf(rent), reminderOf(call)}));

    store->setStatus(NodeStatus::done, rent);
    pass(NotificationService::rearmDelay - 100ms);
    EXPECT_EQ(rearmed.size(), 0) << "not before the delay";
    EXPECT_EQ(pending().size(), 2);
    pass(200ms);
    EXPECT_EQ(rearmed.size(), 1);
    EXPECT_EQ(pending(), QStringList{reminderOf(call)});

    store->setStatus(NodeStatus::pending, rent);
    settle();
    EXPECT_EQ(pending(), (QStringList{reminderOf(rent), reminderOf(call)})) << "taking it back brings it back";
}

TEST_F(Notifications, ABurstOfChangesRearmsOnceAfterTheLast)
{
    service->arm();
    QSignalSpy rearmed(service.get(), &NotificationService::rearmed);
    for (int index = 0; index < 5; ++index) {
        dueOn(QStringLiteral("Task %1").arg(index), QDate(2026, 6, 20));
        pass(300ms);
    }
    EXPECT_EQ(rearmed.size(), 0);
    pass(200ms);
    EXPECT_EQ(rearmed.size(), 1);
    EXPECT_EQ(pending().size(), 5);
}

TEST_F(Notifications, TheDigestNamesTheFirstThreeReadyTasks)
{
    for (const char *title : {"Alpha", "Beta", "Gamma", "Delta"})
        task(QString::fromLatin1(title));
    preferences.setMorningDigestEnabled(true);
    service->arm();

    ASSERT_EQ(pending(), QStringList{NotificationService::digestIdentifier});
    const NotificationRequest digest = center().pendingRequests().first();
    EXPECT_EQ(digest.identifier, QStringLiteral("digest.daily"));
    EXPECT_EQ(digest.title, qtTrId("notification.digest.title"));
    EXPECT_EQ(digest.body, QStringLiteral("Alpha, Beta, and Gamma"));
    EXPECT_EQ(digest.trigger, NotificationTrigger::daily(QTime(9, 0)));
    EXPECT_EQ(center().nextFireDate(digest.identifier), berlinTime(2026, 6, 10, 9, 0));

    pass(1h);
    EXPECT_EQ(identifiers(presenter.shown), QStringList{digest.identifier});
    EXPECT_EQ(center().nextFireDate(digest.identifier), berlinTime(2026, 6, 11, 9, 0)) << "every day";
    pass(24h);
    EXPECT_EQ(presenter.shown.size(), 2);
}

TEST_F(Notifications, TheDigestFollowsTheReadySortAndTheLanguage)
{
    task(QStringLiteral("Low"));
    const FlowNode &high = task(QStringLiteral("High"));
    store->setPriority(NodePriority::high, high);
    preferences.setMorningDigestEnabled(true);
    preferences.setReadySort(ReadySort::priority);
    InterfaceLanguage::apply(QStringLiteral("de"));
    service->arm();
    const NotificationRequest digest = center().pendingRequests().value(0);
    InterfaceLanguage::apply(QStringLiteral("en"));
    EXPECT_EQ(digest.body, QStringLiteral("High und Low"));
}

TEST_F(Notifications, AnEmptyReadyListHasNoDigest)
{
    preferences.setMorningDigestEnabled(true);
    service->arm();
    EXPECT_TRUE(pending().isEmpty());

    const FlowNode &only = task(QStringLiteral("Only"));
    settle();
    EXPECT_EQ(pending(), QStringList{NotificationService::digestIdentifier});
    store->setStatus(NodeStatus::done, only);
    settle();
    EXPECT_TRUE(pending().isEmpty()) << "everything done";
}

TEST_F(Notifications, WithRemindersOffOnlyTheDigestIsPending)
{
    dueOn(QStringLiteral("Due"), QDate(2026, 6, 11));
    preferences.setMorningDigestEnabled(true);
    preferences.setDueRemindersEnabled(false);
    service->arm();
    EXPECT_EQ(pending(), QStringList{QStringLiteral("digest.daily")});

    preferences.setDueRemindersEnabled(true);
    settle();
    EXPECT_EQ(pending().size(), 2);
    preferences.setMorningDigestEnabled(false);
    settle();
    EXPECT_EQ(pending().size(), 1);
    EXPECT_TRUE(pending().first().startsWith(QStringLiteral("due.")));
}

TEST_F(Notifications, TheReminderHourRearmsAfterTheDelay)
{
    const FlowNode &rent = dueOn(QStringLiteral("Pay rent"), QDate(2026, 6, 10));
    preferences.setMorningDigestEnabled(true);
    service->arm();
    preferences.setDueReminderHour(11);
    EXPECT_EQ(center().nextFireDate(reminderOf(rent)), berlinTime(2026, 6, 10, 9, 0));
    settle();
    EXPECT_EQ(center().nextFireDate(reminderOf(rent)), berlinTime(2026, 6, 10, 11, 0));
    EXPECT_EQ(center().nextFireDate(NotificationService::digestIdentifier), berlinTime(2026, 6, 10, 11, 0));

    preferences.setDueReminderHour(7);
    settle();
    EXPECT_EQ(pending(), QStringList{NotificationService::digestIdentifier}) << "7:00 has passed today";
    EXPECT_EQ(center().nextFireDate(NotificationService::digestIdentifier), berlinTime(2026, 6, 11, 7, 0));

    QSignalSpy rearmed(service.get(), &NotificationService::rearmed);
    preferences.setSidebarWidth(300);
    settle();
    EXPECT_EQ(rearmed.size(), 0) << "other preferences leave the list alone";
}

TEST_F(Notifications, NothingIsPendingBeforeArming)
{
    dueOn(QStringLiteral("Pay rent"), QDate(2026, 6, 11));
    settle();
    EXPECT_TRUE(pending().isEmpty());
    service->arm();
    service->arm();
    EXPECT_EQ(pending().size(), 1);
}

TEST_F(Notifications, AWakeFromSuspendShowsWhatCameDueAndRearms)
{
    const FlowNode &rent = dueOn(QStringLiteral("Pay rent"), QDate(2026, 6, 10));
    const FlowNode &call = dueOn(QStringLiteral("Call"), QDate(2026, 6, 11));
    service->arm();
    QSignalSpy rearmed(service.get(), &NotificationService::rearmed);
    pass(30s);

    // Asleep for three hours: the wall clock moves, the monotonic waits do
    // not.
    store.clock.advanceSeconds(3 * 3600);
    EXPECT_TRUE(presenter.shown.isEmpty());
    pass(NotificationCenter::clockCheckInterval);
    EXPECT_EQ(identifiers(presenter.shown), QStringList{reminderOf(rent)}) << "what came due while asleep";
    EXPECT_EQ(rearmed.size(), 1);
    EXPECT_EQ(pending(), QStringList{reminderOf(call)});
}

TEST_F(Notifications, AClockSetBackRearmsTheDigestForTheNewDay)
{
    task(QStringLiteral("Ready"));
    preferences.setMorningDigestEnabled(true);
    service->arm();
    pass(2h);
    ASSERT_EQ(presenter.shown.size(), 1);
    ASSERT_EQ(center().nextFireDate(NotificationService::digestIdentifier), berlinTime(2026, 6, 11, 9, 0));

    QSignalSpy rearmed(service.get(), &NotificationService::rearmed);
    store.clock.set(berlinTime(2026, 6, 9, 8, 0));
    pass(NotificationCenter::clockCheckInterval);
    EXPECT_EQ(rearmed.size(), 1);
    EXPECT_EQ(center().nextFireDate(NotificationService::digestIdentifier), berlinTime(2026, 6, 9, 9, 0));
    EXPECT_EQ(presenter.shown.size(), 1);
}

TEST_F(Notifications, AClockThatKeepsTimeDoesNotRearm)
{
    dueOn(QStringLiteral("Pay rent"), QDate(2026, 6, 11));
    service->arm();
    QSignalSpy rearmed(service.get(), &NotificationService::rearmed);
    store.clock.advanceSeconds(1);
    pass(10min);
    EXPECT_EQ(rearmed.size(), 0) << "a second off is no jump";
}

TEST_F(Notifications, OpeningAReminderShowsTheWindowAndRoutesToTheTask)
{
    const FlowNode &rent = dueOn(QStringLiteral("Pay rent"), QDate(2026, 6, 10));
    service->arm();
    QSignalSpy flowRequests(&routes, &RouteRequest::flowRequested);
    ASSERT_TRUE(presenter.opened);

    presenter.opened(reminderOf(rent));
    EXPECT_EQ(windowShown, 1);
    ASSERT_EQ(flowRequests.size(), 1);
    EXPECT_EQ(routes.flowRequest()->flowID, home->id);
    EXPECT_EQ(routes.flowRequest()->nodeID, rent.id);

    presenter.opened(NotificationService::digestIdentifier);
    EXPECT_EQ(windowShown, 2) << "the digest opens the window only";
    EXPECT_EQ(flowRequests.size(), 1);

    presenter.opened(QStringLiteral("due.not-a-uuid"));
    presenter.opened(NotificationService::reminderIdentifier(QUuid::createUuid()));
    EXPECT_EQ(windowShown, 4);
    EXPECT_EQ(flowRequests.size(), 1) << "no task, no route";
}

TEST_F(Notifications, AReminderOnScreenGoesWhenItsTaskIsDone)
{
    const FlowNode &rent = dueOn(QStringLiteral("Pay rent"), QDate(2026, 6, 10));
    const FlowNode &call = dueOn(QStringLiteral("Call"), QDate(2026, 6, 10));
    service->arm();
    pass(1h);
    ASSERT_EQ(presenter.shown.size(), 2);

    store->setStatus(NodeStatus::done, rent);
    settle();
    EXPECT_EQ(presenter.closed, QStringList{reminderOf(rent)});
    const QString callReminder = reminderOf(call);
    store->deleteNode(call);
    settle();
    EXPECT_EQ(presenter.closed, (QStringList{reminderOf(rent), callReminder}));
    EXPECT_TRUE(center().deliveredIdentifiers().isEmpty());
}

TEST_F(Notifications, QuittingWithdrawsEverythingAndWaitsForTheDesktop)
{
    dueOn(QStringLiteral("Pay rent"), QDate(2026, 6, 10));
    dueOn(QStringLiteral("Later"), QDate(2026, 6, 20));
    service->arm();
    pass(1h);
    ASSERT_EQ(presenter.shown.size(), 1);
    ASSERT_EQ(pending().size(), 1);

    int left = 0;
    service->withdrawAll([&left] { ++left; });
    EXPECT_TRUE(pending().isEmpty());
    EXPECT_EQ(presenter.closeAllCalls, 1);
    pass(500ms);
    EXPECT_EQ(left, 0) << "waiting for the desktop";
    presenter.answer();
    EXPECT_EQ(left, 1);
    pass(3s);
    EXPECT_EQ(left, 1) << "once";

    dueOn(QStringLiteral("After the quit"), QDate(2026, 6, 21));
    settle();
    service->rearm();
    EXPECT_TRUE(pending().isEmpty()) << "nothing is laid out again";
}

class NotificationCentre : public ::testing::Test {
protected:
    NotificationCentre() : clock(berlinTime(2026, 6, 10, 8, 0)), centre(clock, LocalCalendar(berlin()), scheduler, presenter) {}

    static NotificationRequest once(const QString &identifier, const QDateTime &when)
    {
        return {identifier, identifier, {}, {}, NotificationTrigger::once(when)};
    }

    FixedClock clock;
    ManualScheduler scheduler;
    KeepingPresenter presenter;
    NotificationCenter centre;
};

TEST_F(NotificationCentre, HoldsSixtyFourRequestsAtMost)
{
    for (int index = 0; index < NotificationCenter::pendingLimit; ++index)
        EXPECT_TRUE(centre.add(once(QString::number(index), berlinTime(2026, 6, 11).addSecs(index))));
    EXPECT_FALSE(centre.add(once(QStringLiteral("one more"), berlinTime(2026, 6, 11))));
    EXPECT_TRUE(centre.add(once(QStringLiteral("0"), berlinTime(2026, 6, 12))))
        << "the same identifier takes the place of the pending one";
    EXPECT_EQ(centre.pendingRequests().size(), 64);
    EXPECT_EQ(centre.pendingRequests().last().identifier, QStringLiteral("0"));
    EXPECT_EQ(centre.nextFireDate(QStringLiteral("0")), berlinTime(2026, 6, 12));
    centre.removeAllPending();
    EXPECT_TRUE(centre.pendingRequests().isEmpty());
}

TEST_F(NotificationCentre, RefusesWhatCouldNeverCome)
{
    EXPECT_FALSE(centre.add(once(QStringLiteral("past"), clock.now())));
    EXPECT_FALSE(centre.add(once(QString(), berlinTime(2026, 6, 11))));
    EXPECT_FALSE(centre.add({QStringLiteral("daily"), {}, {}, {}, NotificationTrigger::daily(QTime())}));
    EXPECT_TRUE(centre.pendingRequests().isEmpty());
}

TEST_F(NotificationCentre, WaitsLongerThanATimerCanInOneGo)
{
    EXPECT_TRUE(centre.add(once(QStringLiteral("far"), berlinTime(2026, 9, 1, 12, 0))));
    // A minute at a time, in step with the centre's check of the clock.
    for (int minute = 0; minute < 90 * 24 * 60; ++minute) {
        clock.advanceSeconds(60);
        scheduler.advance(1min);
    }
    EXPECT_EQ(identifiers(presenter.shown), QStringList{QStringLiteral("far")});
}

} // namespace
} // namespace fenrow
