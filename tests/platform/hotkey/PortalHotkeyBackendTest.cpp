// The portal backend against a GlobalShortcuts portal on the private
// session bus: a separate process (ShortcutsPortal.cpp) that keeps what it
// was asked and activates the shortcut on command.
#include "HotkeyBackends.h"
#include "HotkeyLog.h"
#include "LineProcess.h"
#include "PortalHotkeyBackend.h"
#include "shell/GlobalHotkeyController.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace fenrow::testing {
namespace {

using namespace KeyModifier;

class PortalHotkeyBackendTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QDBusConnection::sessionBus().isConnected()) << "run this suite on a private session bus";
    }

    std::unique_ptr<LineProcess> startPortal(const QStringList &arguments = {})
    {
        auto portal = std::make_unique<LineProcess>(QStringLiteral(FENROW_TEST_SHORTCUTS_PORTAL), arguments);
        EXPECT_TRUE(portal->ready());
        return portal;
    }

    // Waits until the portal's name is gone from the bus with its process.
    static void waitForPortalGone()
    {
        EXPECT_TRUE(QTest::qWaitFor([] {
            return !QDBusConnection::sessionBus().interface()->isServiceRegistered(PortalHotkeyBackend::service);
        }));
    }

    std::unique_ptr<GlobalHotkeyController> makeController()
    {
        return std::make_unique<GlobalHotkeyController>(
            [this] { ++triggered; }, std::make_unique<PortalHotkeyBackend>(QDBusConnection::sessionBus()));
    }

    HotkeyLog log;
    int triggered = 0;
};

TEST_F(PortalHotkeyBackendTest, TheShortcutIsBoundWithThePreferredTriggerAndActivatedByThePortal)
{
    const auto portal = startPortal();
    EXPECT_EQ(PortalHotkeyBackend::offeredVersion(QDBusConnection::sessionBus()), 1u);
    auto controller = makeController();
    controller->registerHotKey(defaultGlobalShortcut);
    EXPECT_TRUE(controller->isRegistered()) << "the portal answers later; until then the key counts as held";

    const std::optional<QString> created = portal->next("CreateSession ");
    ASSERT_TRUE(created.has_value());
    const QString session = created->section(' ', 1);
    EXPECT_EQ(portal->next("BindShortcuts "),
              QStringLiteral("BindShortcuts %1 quick-capture Quick capture CTRL+SHIFT+space").arg(session));

    ASSERT_EQ(portal->ask("activate quick-capture", {"activated"}), "activated");
    EXPECT_TRUE(QTest::qWaitFor([&] { return triggered == 1; }));
    // Another shortcut's activation is not ours.
    ASSERT_EQ(portal->ask("activate something-else", {"activated"}), "activated");
    ASSERT_EQ(portal->ask("activate quick-capture", {"activated"}), "activated");
    EXPECT_TRUE(QTest::qWaitFor([&] { return triggered == 2; }));
    EXPECT_EQ(triggered, 2);

    // A new combination: a new session with the new trigger, the old one closed.
    controller->registerHotKey({0, control | option});
    EXPECT_EQ(portal->next("Close "), "Close " + session);
    const std::optional<QString> second = portal->next("CreateSession ");
    ASSERT_TRUE(second.has_value());
    const QString secondSession = second->section(' ', 1);
    EXPECT_NE(secondSession, session);
    EXPECT_EQ(portal->next("BindShortcuts "),
              QStringLiteral("BindShortcuts %1 quick-capture Quick capture ALT+LOGO+a").arg(secondSession));

    controller->unregisterHotKey();
    EXPECT_EQ(portal->next("Close "), "Close " + secondSession);
    EXPECT_TRUE(log.messages().isEmpty()) << log.messages().join('\n').toStdString();
}

TEST_F(PortalHotkeyBackendTest, ALaterRefusalIsLoggedWithItsStatus)
{
    for (const auto &[arguments, status] :
         {std::pair{QStringList{"--answer", "1"}, GlobalHotkeyBackend::cancelledStatus},
          std::pair{QStringList{"--answer", "2"}, GlobalHotkeyBackend::invalidStatus},
          std::pair{QStringList{"--bind-nothing"}, GlobalHotkeyBackend::invalidStatus}}) {
        log.messages().clear();
        const auto portal = startPortal(arguments);
        auto controller = makeController();
        QSignalSpy changes(controller.get(), &GlobalHotkeyController::registrationChanged);
        controller->registerHotKey(defaultGlobalShortcut);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !controller->isRegistered(); })) << arguments.join(' ').toStdString();
        EXPECT_EQ(controller->status(), status);
        EXPECT_EQ(log.messages(), QStringList{QStringLiteral("Failed to register global hotkey (status %1).").arg(status)});
        EXPECT_EQ(changes.size(), 2) << "held while asked, then refused";
        // The session the refusal leaves behind is closed.
        const std::optional<QString> created = portal->next("CreateSession ");
        ASSERT_TRUE(created.has_value());
        EXPECT_EQ(portal->next("Close "), "Close " + created->section(' ', 1));
        controller.reset();
        portal->process().closeWriteChannel();
        waitForPortalGone();
    }
}

TEST_F(PortalHotkeyBackendTest, APortalThatGoesAwayOrClosesTheSessionTakesTheKeyWithIt)
{
    {
        const auto portal = startPortal();
        auto controller = makeController();
        controller->registerHotKey(defaultGlobalShortcut);
        ASSERT_TRUE(portal->next("BindShortcuts ").has_value());
        ASSERT_EQ(portal->ask("close", {"closed"}), "closed");
        EXPECT_TRUE(QTest::qWaitFor([&] { return !controller->isRegistered(); }));
        EXPECT_EQ(controller->status(), GlobalHotkeyBackend::unsupportedStatus);
        portal->process().closeWriteChannel();
    }
    waitForPortalGone();

    // No portal on the bus at all: the call fails, later.
    log.messages().clear();
    auto controller = makeController();
    controller->registerHotKey(defaultGlobalShortcut);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !controller->isRegistered(); }));
    EXPECT_EQ(log.messages(), QStringList{"Failed to register global hotkey (status -4)."});
    EXPECT_EQ(PortalHotkeyBackend::offeredVersion(QDBusConnection::sessionBus()), std::nullopt);
}

TEST_F(PortalHotkeyBackendTest, LettingGoBeforeThePortalAnsweredClosesTheSessionOnceItExists)
{
    const auto portal = startPortal();
    auto controller = makeController();
    controller->registerHotKey(defaultGlobalShortcut);
    // Gone before the portal's Response to CreateSession could arrive.
    controller.reset();
    const std::optional<QString> created = portal->next("CreateSession ");
    ASSERT_TRUE(created.has_value());
    EXPECT_EQ(portal->next("Close "), "Close " + created->section(' ', 1));
    EXPECT_FALSE(portal->saw("BindShortcuts ")) << "nothing is bound for a key let go";
}

TEST(HotkeyBackends, X11OnXcbThePortalInAWaylandSessionThatOffersItElseNone)
{
    using HotkeyBackends::Kind;
    using HotkeyBackends::choose;
    EXPECT_EQ(choose("xcb", false, false), Kind::x11);
    EXPECT_EQ(choose("xcb", true, true), Kind::x11) << "XWayland: the grab works for X clients";
    EXPECT_EQ(choose("wayland", true, true), Kind::portal);
    EXPECT_EQ(choose("wayland", true, false), Kind::unsupported);
    EXPECT_EQ(choose("offscreen", false, true), Kind::unsupported);
    EXPECT_EQ(choose("offscreen", true, true), Kind::portal);

    QProcessEnvironment plain;
    EXPECT_FALSE(HotkeyBackends::isWaylandSession("xcb", plain));
    EXPECT_TRUE(HotkeyBackends::isWaylandSession("wayland-egl", plain));
    QProcessEnvironment session;
    session.insert("XDG_SESSION_TYPE", "wayland");
    EXPECT_TRUE(HotkeyBackends::isWaylandSession("xcb", session));
    QProcessEnvironment display;
    display.insert("WAYLAND_DISPLAY", "wayland-0");
    EXPECT_TRUE(HotkeyBackends::isWaylandSession("offscreen", display));

    // This suite runs on Xvfb: the X11 grab, whatever the session says.
    EXPECT_EQ(HotkeyBackends::kindForThisDesktop(QDBusConnection::sessionBus(), session), Kind::x11);
}

} // namespace
} // namespace fenrow::testing
