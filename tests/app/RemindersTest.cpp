// Due reminders in the running program, against Debian's dunst on the
// private session bus: they come with the installed interface, opening one
// brings the window to its task, and an orderly quit takes every one of
// them away without waiting on a server that hangs.
#include "AppTestSupport.h"

#include "program/AppShell.h"
#include "program/DesktopReminders.h"
#include "window/FlowDetailView.h"
#include "FreedesktopNotifications.h"
#include "NotificationDaemon.h"
#include "canvas/CanvasEditor.h"
#include "shell/NotificationCenter.h"
#include "shell/NotificationService.h"

#include <QElapsedTimer>
#include <QSignalSpy>

#include <signal.h>
#include <unistd.h>

namespace fenrow::testing {
namespace {

class RemindersTest : public WindowFixture {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QDBusConnection::sessionBus().isConnected()) << "run this suite on a private session bus";
        ASSERT_TRUE(dunst.start()) << "dunst did not come up";
        home = store->addFlow(QStringLiteral("Home"));
    }

    ~RemindersTest() override
    {
        shell.reset();
        dunst.stop();
    }

    AppShell &launch(bool onboarded)
    {
        preferences->setHasCompletedOnboarding(onboarded);
        shell = std::make_unique<AppShell>(*store, *history, activeFlow, *preferences, environment);
        show();
        shell->registerMainWindow(window.get());
        shell->launch();
        QApplication::processEvents();
        return *shell;
    }

    const FlowNode &dueToday(const QString &title)
    {
        const FlowNode *node = store->addNode(title, *home);
        store->setDueDate(store->calendar().startOfDay(clock.now()), *node);
        return *node;
    }
    NotificationService &service() const { return shell->reminders()->service(); }
    FreedesktopNotifications &presenter() const { return shell->reminders()->presenter(); }
    QStringList pending() const
    {
        QStringList identifiers;
        for (const NotificationRequest &request : service().center().pendingRequests())
            identifiers << request.identifier;
        return identifiers;
    }
    // Two notifications on screen, straight through the presenter (unlike
    // each other: dunst stacks equal ones).
    void showTwo()
    {
        for (const char *identifier : {"due.1", "digest.daily"})
            presenter().show({QString::fromLatin1(identifier), QString::fromLatin1(identifier), {}, {}, {}});
        ASSERT_TRUE(QTest::qWaitFor([this] { return dunst.displayed() == 2; }, 15000));
    }
    QSet<QUuid> selection() const
    {
        CanvasEditor *editor = window->flowDetail()->editor();
        return editor ? editor->interaction().selectedItemIDs() : QSet<QUuid>();
    }

    Dunst dunst;
    std::unique_ptr<AppShell> shell;
    const TaskFlow *home = nullptr;
};

TEST_F(RemindersTest, TheyComeWithTheInstalledInterfaceAndGoWithIt)
{
    const FlowNode &rent = dueToday(QStringLiteral("Pay rent"));
    preferences->setDueReminderHour(11);
    AppShell &started = launch(false);
    EXPECT_EQ(started.reminders(), nullptr) << "nothing during the welcome";

    preferences->setHasCompletedOnboarding(true);
    started.onboardingChanged();
    ASSERT_NE(started.reminders(), nullptr);
    EXPECT_TRUE(service().isArmed());
    EXPECT_EQ(pending(), QStringList{NotificationService::reminderIdentifier(rent.id)});

    started.restartOnboarding();
    EXPECT_EQ(started.reminders(), nullptr);
}

TEST_F(RemindersTest, AReminderComesAtItsHourAndOpeningItShowsTheTask)
{
    const FlowNode &rent = dueToday(QStringLiteral("Pay rent"));
    store->addNode(QStringLiteral("Other"), *store->addFlow(QStringLiteral("Elsewhere")));
    preferences->setDueReminderHour(10);
    clock.set(QDateTime(QDate(2026, 6, 10), QTime(9, 59, 59), QTimeZone("Europe/Berlin")));
    launch(true);
    window->setRoute(DetailRoute::ready());
    ASSERT_EQ(pending(), QStringList{NotificationService::reminderIdentifier(rent.id)});

    // The second passes; the program's own timer finds the reminder due.
    clock.set(QDateTime(QDate(2026, 6, 10), QTime(10, 0), QTimeZone("Europe/Berlin")));
    ASSERT_TRUE(QTest::qWaitFor([this] { return dunst.displayed() == 1; }, 15000));
    EXPECT_TRUE(pending().isEmpty());

    // Opened from the desktop, it brings the window back with the task.
    window->hide();
    dunst.openNotification(0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->selectedFlow() == home->id; }, 15000));
    EXPECT_TRUE(QTest::qWaitFor([&] { return selection() == QSet<QUuid>{rent.id}; }, 15000));
    EXPECT_TRUE(window->isVisible());
}

TEST_F(RemindersTest, QuitWithdrawsWhatIsPendingAndWhatIsOnScreen)
{
    store->setDueDate(store->calendar().startOfDay(clock.now().addDays(3)),
                      *store->addNode(QStringLiteral("Later"), *home));
    launch(true);
    ASSERT_EQ(pending().size(), 1);
    showTwo();

    QSignalSpy leaving(shell.get(), &AppShell::leaving);
    QElapsedTimer waited;
    waited.start();
    shell->quit();
    EXPECT_TRUE(pending().isEmpty());
    ASSERT_TRUE(leaving.wait(5000));
    EXPECT_LT(waited.elapsed(), NotificationService::withdrawLimit.count()) << "the server answered at once";
    EXPECT_EQ(dunst.displayed(), 0);
}

TEST_F(RemindersTest, SIGTERMTakesTheSameWayOut)
{
    launch(true);
    showTwo();
    QSignalSpy leaving(shell.get(), &AppShell::leaving);
    ::kill(::getpid(), SIGTERM);
    ASSERT_TRUE(leaving.wait(5000));
    EXPECT_EQ(dunst.displayed(), 0);
}

} // namespace
} // namespace fenrow::testing
