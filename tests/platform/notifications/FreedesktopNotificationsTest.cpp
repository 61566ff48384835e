// Fenrow's notifications through a real notification server: Debian's
// dunst on the private session bus, watched with dbus-monitor and driven
// with dunstctl.
#include "FreedesktopNotifications.h"
#include "NotificationDaemon.h"

#include "domain/FenrowStore.h"
#include "domain/Scheduler.h"
#include "domain/SystemClock.h"
#include "persistence/StoreDatabase.h"
#include "shell/AppPreferences.h"
#include "shell/NotificationService.h"

#include <QDBusConnection>
#include <QElapsedTimer>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace fenrow {
namespace {

using testing::BusMonitor;
using testing::Dunst;
using testing::runTool;

// An empty store in memory and preferences of their own, for a service.
struct TemporaryStore {
    bool open()
    {
        QString error;
        store = FenrowStore::open(StoreDatabase::open(QString::fromLatin1(StoreDatabase::inMemoryPath), &error),
                                  clock, LocalCalendar(), &error);
        preferences = std::make_unique<AppPreferences>(
            std::make_unique<QSettings>(folder.filePath(QStringLiteral("fenrow.conf")), QSettings::IniFormat));
        return store != nullptr;
    }

    SystemClock clock;
    QTemporaryDir folder;
    std::unique_ptr<FenrowStore> store;
    std::unique_ptr<AppPreferences> preferences;
};

NotificationRequest reminder(const QString &identifier, const QString &title)
{
    return {identifier, title, QStringLiteral("Home & Garden"), QStringLiteral("Due today"),
            NotificationTrigger::once(QDateTime::currentDateTimeUtc().addDays(1))};
}

class DesktopNotifications : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QDBusConnection::sessionBus().isConnected()) << "run this suite on a private session bus";
        ASSERT_TRUE(dunst.start()) << "dunst did not come up";
        ASSERT_TRUE(monitor.start()) << "dbus-monitor did not come up";
        presenter = std::make_unique<FreedesktopNotifications>();
        presenter->setOpenedHandler([this](const QString &identifier) { opened << identifier; });
    }

    void TearDown() override
    {
        presenter.reset();
        dunst.stop();
    }

    bool shows(const QString &identifier)
    {
        return QTest::qWaitFor([&] { return presenter->serverID(identifier).has_value(); }, 15000);
    }
    bool displayedBecomes(int count)
    {
        return QTest::qWaitFor([&] { return dunst.displayed() == count; }, 15000);
    }

    Dunst dunst;
    BusMonitor monitor;
    std::unique_ptr<FreedesktopNotifications> presenter;
    QStringList opened;
};

TEST_F(DesktopNotifications, EachNotifyIsAnsweredAndShown)
{
    presenter->show(reminder(QStringLiteral("due.A"), QStringLiteral("Pay <rent>")));
    ASSERT_TRUE(shows(QStringLiteral("due.A")));
    EXPECT_TRUE(displayedBecomes(1));

    // dbus-monitor prints what it saw in its own time.
    ASSERT_TRUE(QTest::qWaitFor([this] {
        const auto calls = monitor.notifyCalls(QStringLiteral("Fenrow"));
        return calls.size() == 1 && calls.first().second;
    }));
    const auto calls = monitor.notifyCalls(QStringLiteral("Fenrow"));
    const QString arguments = calls.first().first.arguments;
    EXPECT_EQ(calls.first().second, presenter->serverID(QStringLiteral("due.A"))) << "answered with its number";
    EXPECT_TRUE(arguments.contains(QStringLiteral("string \"Pay <rent>\""))) << arguments.toStdString();
    // dunst reads markup, so the body's lines come escaped.
    EXPECT_TRUE(arguments.contains(QStringLiteral("string \"Home &amp; Garden\nDue today\"")))
        << arguments.toStdString();
    EXPECT_TRUE(arguments.contains(QStringLiteral("string \"default\"")))
        << "the default action, so that the notification can be opened";
    EXPECT_TRUE(arguments.contains(QStringLiteral("string \"desktop-entry\"")));
}

TEST_F(DesktopNotifications, ShowingAgainReplacesWhatIsOnScreen)
{
    presenter->show(reminder(QStringLiteral("digest.daily"), QStringLiteral("Monday")));
    ASSERT_TRUE(shows(QStringLiteral("digest.daily")));
    const uint first = *presenter->serverID(QStringLiteral("digest.daily"));
    presenter->show(reminder(QStringLiteral("digest.daily"), QStringLiteral("Tuesday")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return monitor.notifyCalls(QStringLiteral("Fenrow")).size() == 2 &&
                                             monitor.notifyCalls(QStringLiteral("Fenrow")).last().second; }));
    EXPECT_EQ(monitor.notifyCalls(QStringLiteral("Fenrow")).last().second, first);
    EXPECT_TRUE(monitor.notifyCalls(QStringLiteral("Fenrow")).last().first.arguments.contains(
        QStringLiteral("uint32 %1").arg(first)))
        << "replaces_id names the one on screen";
    EXPECT_TRUE(displayedBecomes(1));
}

TEST_F(DesktopNotifications, ClosingTakesNotificationsOffTheScreen)
{
    for (const char *identifier : {"due.A", "due.B", "due.C"}) {
        presenter->show(reminder(QString::fromLatin1(identifier), QString::fromLatin1(identifier)));
        ASSERT_TRUE(shows(QString::fromLatin1(identifier)));
    }
    ASSERT_TRUE(displayedBecomes(3));

    presenter->close(QStringLiteral("due.B"));
    EXPECT_FALSE(presenter->serverID(QStringLiteral("due.B")));
    EXPECT_TRUE(displayedBecomes(2));
    presenter->close(QStringLiteral("due.B"));
    presenter->close(QStringLiteral("never shown"));

    bool done = false;
    presenter->closeAll([&done] { done = true; });
    ASSERT_TRUE(QTest::qWaitFor([&done] { return done; }, 15000)) << "the server answered";
    EXPECT_TRUE(displayedBecomes(0));
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return monitor.of(QStringLiteral("method call"), QStringLiteral("CloseNotification")).size() == 3; }));
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return monitor.of(QStringLiteral("signal"), QStringLiteral("NotificationClosed")).size() == 3; }));
    EXPECT_TRUE(dunst.history().contains(QStringLiteral("due.C")));

    bool nothingLeft = false;
    presenter->closeAll([&nothingLeft] { nothingLeft = true; });
    EXPECT_TRUE(nothingLeft) << "nothing shown: done at once";
}

TEST_F(DesktopNotifications, ANotificationClosedByTheUserIsForgotten)
{
    presenter->show(reminder(QStringLiteral("due.A"), QStringLiteral("First")));
    ASSERT_TRUE(shows(QStringLiteral("due.A")));
    runTool(QStringLiteral("dunstctl"), {QStringLiteral("close")});
    EXPECT_TRUE(QTest::qWaitFor([&] { return !presenter->serverID(QStringLiteral("due.A")); }, 15000));
}

TEST_F(DesktopNotifications, AWithdrawalWaitsTwoSecondsAtMostForAServerThatHangs)
{
    presenter->show(reminder(QStringLiteral("due.A"), QStringLiteral("Pay rent")));
    ASSERT_TRUE(shows(QStringLiteral("due.A")));

    // The withdrawal of an orderly quit, through the notification service
    // and on the program's own timers.
    TemporaryStore store;
    ASSERT_TRUE(store.open());
    TimerScheduler timers;
    NotificationService service(*store.store, *store.preferences, timers, *presenter, {});
    service.arm();

    dunst.pause();
    QElapsedTimer waited;
    waited.start();
    bool left = false;
    service.withdrawAll([&left] { left = true; });
    ASSERT_TRUE(QTest::qWaitFor([&left] { return left; }, 15000));
    EXPECT_GE(waited.elapsed(), NotificationService::withdrawLimit.count() - 50);
    EXPECT_LT(waited.elapsed(), NotificationService::withdrawLimit.count() + 1500);
    dunst.resume();
    EXPECT_TRUE(displayedBecomes(0)) << "the close went through once the server woke";
}

} // namespace
} // namespace fenrow
