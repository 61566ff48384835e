// The X11 key grab against a real X server (Xvfb): keys typed with xdotool
// through the server while another client's window has the focus, and a
// second client that holds a grab of its own.
#include "HotkeyLog.h"
#include "LineProcess.h"
#include "X11HotkeyBackend.h"
#include "shell/GlobalHotkeyController.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace fenrow::testing {
namespace {

using namespace KeyModifier;

const QString spaceSymbol = QStringLiteral("press 20 ");
const QString letterASymbol = QStringLiteral("press 61 ");

class X11HotkeyBackendTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(X11HotkeyBackend::isAvailable()) << "run this suite on an X server (xcb)";
        ASSERT_TRUE(other.ready());
        ASSERT_TRUE(other.ask("focus", {"focused"}).has_value());
        controller = std::make_unique<GlobalHotkeyController>([this] { ++triggered; },
                                                              std::make_unique<X11HotkeyBackend>());
    }

    void TearDown() override
    {
        controller.reset();
        // Lock keys go back off for the next test.
        for (const char *lock : {"Num_Lock", "Caps_Lock"})
            if (locks.contains(lock))
                press(lock);
    }

    // Types `keys` through the X server, as a keyboard would.
    static void press(const QString &keys) { runTool(QStringLiteral("xdotool"), {QStringLiteral("key"), keys}); }

    void toggleLock(const QString &lock)
    {
        press(lock);
        if (!locks.removeOne(lock))
            locks << lock;
    }

    // Presses `keys` and waits until the press was seen: by the hot key, or
    // by the window that has the focus. True when the hot key took it.
    bool pressReachesHotkey(const QString &keys, const QString &otherSees)
    {
        const int before = triggered;
        press(keys);
        bool otherGotIt = false;
        const bool seen = QTest::qWaitFor([&] {
            otherGotIt = other.next(otherSees, 0).has_value();
            return triggered > before || otherGotIt;
        });
        EXPECT_TRUE(seen) << keys.toStdString() << " was seen by nobody";
        // A hot key press never reaches the other window as well.
        QCoreApplication::processEvents();
        EXPECT_FALSE(triggered > before && (otherGotIt || other.next(otherSees, 0)))
            << keys.toStdString() << " reached both";
        return triggered > before;
    }

    LineProcess other{QStringLiteral(FENROW_TEST_X_CLIENT)};
    HotkeyLog log;
    int triggered = 0;
    std::unique_ptr<GlobalHotkeyController> controller;
    QStringList locks;
};

TEST_F(X11HotkeyBackendTest, TheKeyReachesFenrowWhileAnotherWindowHasTheFocus)
{
    controller->registerHotKey(defaultGlobalShortcut);
    ASSERT_TRUE(controller->isRegistered());
    EXPECT_EQ(controller->status(), 0);

    // Command is Ctrl on this desktop, as inside the program.
    EXPECT_TRUE(pressReachesHotkey("ctrl+shift+space", spaceSymbol));
    EXPECT_EQ(triggered, 1);
    // Other combinations of the key go where the focus is.
    EXPECT_FALSE(pressReachesHotkey("ctrl+space", spaceSymbol));
    EXPECT_FALSE(pressReachesHotkey("space", spaceSymbol));
    EXPECT_FALSE(pressReachesHotkey("ctrl+shift+alt+space", spaceSymbol));
    EXPECT_EQ(triggered, 1);
    EXPECT_TRUE(log.messages().isEmpty());
}

TEST_F(X11HotkeyBackendTest, NumLockAndCapsLockDoNotStopTheKey)
{
    controller->registerHotKey(defaultGlobalShortcut);
    ASSERT_TRUE(controller->isRegistered());
    toggleLock("Num_Lock");
    EXPECT_TRUE(pressReachesHotkey("ctrl+shift+space", spaceSymbol)) << "Num Lock on";
    toggleLock("Caps_Lock");
    EXPECT_TRUE(pressReachesHotkey("ctrl+shift+space", spaceSymbol)) << "both on";
    toggleLock("Num_Lock");
    EXPECT_TRUE(pressReachesHotkey("ctrl+shift+space", spaceSymbol)) << "Caps Lock on";
    toggleLock("Caps_Lock");
    EXPECT_TRUE(pressReachesHotkey("ctrl+shift+space", spaceSymbol)) << "both off again";
    EXPECT_EQ(triggered, 4);
}

TEST_F(X11HotkeyBackendTest, ControlAndOptionAreTheSuperAndAltKeys)
{
    controller->registerHotKey({0, control | option});
    ASSERT_TRUE(controller->isRegistered());
    EXPECT_FALSE(pressReachesHotkey("ctrl+alt+a", letterASymbol));
    EXPECT_TRUE(pressReachesHotkey("super+alt+a", letterASymbol));
}

TEST_F(X11HotkeyBackendTest, ReplacingAndUnregisteringLetTheOldKeyGo)
{
    controller->registerHotKey(defaultGlobalShortcut);
    controller->registerHotKey({0, command | option});
    ASSERT_TRUE(controller->isRegistered());
    EXPECT_FALSE(pressReachesHotkey("ctrl+shift+space", spaceSymbol)) << "the old key goes to the window again";
    EXPECT_TRUE(pressReachesHotkey("ctrl+alt+a", letterASymbol));

    controller->unregisterHotKey();
    EXPECT_FALSE(controller->isRegistered());
    EXPECT_FALSE(pressReachesHotkey("ctrl+alt+a", letterASymbol));
}

TEST_F(X11HotkeyBackendTest, AKeyAnotherClientHoldsFailsWithTheLoggedStatus)
{
    LineProcess holder{QStringLiteral(FENROW_TEST_X_CLIENT)};
    ASSERT_TRUE(holder.ready());
    ASSERT_EQ(holder.ask("grab ctrl+shift+space", {"grabbed", "refused", "error"}), "grabbed");

    QSignalSpy changes(controller.get(), &GlobalHotkeyController::registrationChanged);
    controller->registerHotKey(defaultGlobalShortcut);
    EXPECT_FALSE(controller->isRegistered());
    EXPECT_EQ(controller->status(), GlobalHotkeyBackend::takenStatus);
    EXPECT_EQ(log.messages(), QStringList{"Failed to register global hotkey (status -9878)."});
    EXPECT_EQ(changes.size(), 1);
    // Nothing of the refused key stays behind: the holder keeps its key,
    // and Fenrow holds none of the lock variants either.
    press("ctrl+shift+space");
    EXPECT_TRUE(holder.next(spaceSymbol).has_value());
    QCoreApplication::processEvents();
    EXPECT_EQ(triggered, 0);
    toggleLock("Num_Lock");
    EXPECT_FALSE(pressReachesHotkey("ctrl+shift+space", spaceSymbol));
    toggleLock("Num_Lock");

    // Once the other client lets go, the key can be had.
    ASSERT_EQ(holder.ask("ungrab", {"ungrabbed"}), "ungrabbed");
    controller->registerHotKey(defaultGlobalShortcut);
    EXPECT_TRUE(controller->isRegistered());
    EXPECT_TRUE(pressReachesHotkey("ctrl+shift+space", spaceSymbol));
}

TEST_F(X11HotkeyBackendTest, EveryVariantIsLetGoWhenTheControllerGoes)
{
    controller->registerHotKey(defaultGlobalShortcut);
    ASSERT_TRUE(controller->isRegistered());
    LineProcess holder{QStringLiteral(FENROW_TEST_X_CLIENT)};
    ASSERT_TRUE(holder.ready());
    for (const char *variant : {"ctrl+shift+space", "ctrl+shift+numlock+space", "ctrl+shift+capslock+space",
                                "ctrl+shift+numlock+capslock+space"})
        EXPECT_EQ(holder.ask(QStringLiteral("grab ") + variant, {"grabbed", "refused", "error"}), "refused 10")
            << variant << " is Fenrow's while registered";

    controller.reset();
    for (const char *variant : {"ctrl+shift+space", "ctrl+shift+numlock+space", "ctrl+shift+capslock+space",
                                "ctrl+shift+numlock+capslock+space"})
        EXPECT_EQ(holder.ask(QStringLiteral("grab ") + variant, {"grabbed", "refused", "error"}), "grabbed")
            << variant << " is free again";
}

} // namespace
} // namespace fenrow::testing
