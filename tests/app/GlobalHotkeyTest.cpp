// The global capture key of the real program on a real X server (Xvfb):
// the desktop program's session as `fenrow` starts it, keys typed through
// the server with xdotool while another X client's window has the focus,
// another client holding the key first, and the `fenrow` executable itself.
#include "program/AppShell.h"
#include "AppTestSupport.h"
#include "program/DesktopProgram.h"
#include "HotkeyLog.h"
#include "LineProcess.h"
#include "window/MainWindow.h"
#include "quickcapture/QuickCapturePanel.h"
#include "settings/SettingsShortcutsPage.h"
#include "settings/SettingsWindow.h"
#include "domain/FenrowStore.h"
#include "persistence/StoreLock.h"
#include "shell/AppEnvironment.h"
#include "shell/AppPreferences.h"
#include "shell/GlobalHotkeyController.h"
#include "shell/SettingsFile.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDir>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <csignal>

namespace fenrow::testing {
namespace {

using namespace KeyModifier;

const QString spaceSymbol = QStringLiteral("press 20 ");
const QString letterKSymbol = QStringLiteral("press 6b ");

class GlobalHotkeyTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QDBusConnection::sessionBus().isConnected()) << "run this suite on a private session bus";
        ASSERT_EQ(QGuiApplication::platformName(), "xcb") << "run this suite on an X server";
        ASSERT_TRUE(other.ready());
    }

    void TearDown() override
    {
        session.reset();
    }

    // The program as `fenrow` starts it, here in the test's process.
    void startProgram()
    {
        QString fatal;
        session = DesktopProgram::Session::start(*qApp, &fatal);
        ASSERT_NE(session, nullptr) << fatal.toStdString();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&session->window()));
        // The interface, and with it the key, is installed on the loop's first pass.
        ASSERT_TRUE(QTest::qWaitFor([] { return AppShell::current() && AppShell::current()->hotkeyController(); }));
    }

    AppShell &shell() const { return *AppShell::current(); }
    QuickCapturePanel &panel() const { return *shell().quickCapturePanel(); }

    // The other program's window takes the focus, as a click would give it.
    void focusOther()
    {
        const std::optional<QString> focused = other.ask("focus", {"focused"});
        ASSERT_TRUE(focused.has_value());
        EXPECT_EQ(runTool("xdotool", {"getwindowfocus"}), focused->section(' ', 1));
    }

    static void press(const QString &keys) { runTool("xdotool", {"key", keys}); }

    // Presses `keys` with the other window focused and the panel closed;
    // true when the panel opened, false when the key went to the other
    // window instead.
    bool keyOpensPanel(const QString &keys, const QString &otherSees)
    {
        panel().dismiss();
        focusOther();
        press(keys);
        bool otherGotIt = false;
        EXPECT_TRUE(QTest::qWaitFor([&] {
            otherGotIt = other.next(otherSees, 0).has_value();
            return panel().isOpen() || otherGotIt;
        })) << keys.toStdString() << " was seen by nobody";
        return panel().isOpen() && !otherGotIt;
    }

    PrivateHome home;
    LineProcess other{QStringLiteral(FENROW_TEST_X_CLIENT)};
    std::unique_ptr<DesktopProgram::Session> session;
};

TEST_F(GlobalHotkeyTest, TheKeyOpensThePanelOverAnotherProgramAndFollowsThePreference)
{
    HotkeyLog log;
    startProgram();
    ASSERT_TRUE(shell().hotkeyController()->isRegistered());
    EXPECT_EQ(session->environment().globalHotkeyState(), GlobalHotkeyState::registered);

    EXPECT_TRUE(keyOpensPanel("ctrl+shift+space", spaceSymbol));
    saveScreenshot(panel(), "global-hotkey-panel.png");
    // The same key closes it again: the panel has the focus now (a click
    // elsewhere would close it by itself), and the desktop's key is Fenrow's
    // there too.
    ASSERT_TRUE(QTest::qWaitFor([&] { return panel().isActiveWindow(); }));
    press("ctrl+shift+space");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !panel().isOpen(); }));

    // A new combination in the settings: the old one goes back to the
    // other program, the new one opens the panel.
    session->preferences().setGlobalShortcut({40, command | option});
    ASSERT_TRUE(shell().hotkeyController()->isRegistered());
    EXPECT_FALSE(keyOpensPanel("ctrl+shift+space", spaceSymbol));
    EXPECT_TRUE(keyOpensPanel("ctrl+alt+k", letterKSymbol));

    // And back to the default with the reset of the shortcuts.
    session->preferences().resetShortcuts();
    EXPECT_FALSE(keyOpensPanel("ctrl+alt+k", letterKSymbol));
    EXPECT_TRUE(keyOpensPanel("ctrl+shift+space", spaceSymbol));
    EXPECT_TRUE(log.messages().isEmpty()) << log.messages().join('\n').toStdString();
}

TEST_F(GlobalHotkeyTest, AKeyAnotherProgramHoldsIsLoggedTheLaunchGoesOnAndTheShortcutsPageSaysSo)
{
    LineProcess holder{QStringLiteral(FENROW_TEST_X_CLIENT)};
    ASSERT_TRUE(holder.ready());
    ASSERT_EQ(holder.ask("grab ctrl+shift+space", {"grabbed", "refused", "error"}), "grabbed");

    HotkeyLog log;
    startProgram();
    EXPECT_FALSE(shell().hotkeyController()->isRegistered());
    EXPECT_EQ(log.messages(), QStringList{"Failed to register global hotkey (status -9878)."});
    EXPECT_TRUE(session->window().isVisible()) << "the launch goes on";
    EXPECT_EQ(session->environment().globalHotkeyState(), GlobalHotkeyState::failed);

    session->window().openSettings(SettingsPage::shortcuts);
    SettingsWindow *settings = session->window().settingsWindow();
    ASSERT_NE(settings, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(settings));
    auto *page = qobject_cast<SettingsShortcutsPage *>(settings->page(SettingsPage::shortcuts));
    ASSERT_NE(page, nullptr);
    EXPECT_TRUE(page->globalUnavailable()->isVisible());
    EXPECT_FALSE(page->globalSubtitle()->isVisible()) << "no promise of a key from any application";
    EXPECT_TRUE(page->globalUnavailable()->text().contains("fenrow --capture"));
    saveScreenshot(*settings, "global-hotkey-refused.png");

    // Another combination the desktop grants: the line goes.
    session->preferences().setGlobalShortcut({40, command | option});
    EXPECT_TRUE(shell().hotkeyController()->isRegistered());
    EXPECT_FALSE(page->globalUnavailable()->isVisible());
    EXPECT_TRUE(page->globalSubtitle()->isVisible());
    saveScreenshot(*settings, "global-hotkey-registered.png");

    // Back to the one held elsewhere: refused again, and said again.
    session->preferences().setGlobalShortcut(defaultGlobalShortcut);
    EXPECT_TRUE(page->globalUnavailable()->isVisible());
    EXPECT_EQ(log.messages().size(), 2);
    // The key still works inside Fenrow, through its menu command.
    EXPECT_TRUE(holder.saw("grabbed"));
}

TEST_F(GlobalHotkeyTest, TheKeyIsLetGoWhenTheInterfaceGoesAndOnQuit)
{
    startProgram();
    ASSERT_TRUE(shell().hotkeyController()->isRegistered());
    LineProcess probe{QStringLiteral(FENROW_TEST_X_CLIENT)};
    ASSERT_TRUE(probe.ready());
    EXPECT_EQ(probe.ask("grab ctrl+shift+space", {"grabbed", "refused"}), "refused 10") << "Fenrow holds it";

    // Onboarding restarted: the interface, and the key, go.
    shell().restartOnboarding();
    EXPECT_EQ(shell().hotkeyController(), nullptr);
    EXPECT_EQ(session->environment().globalHotkeyState(), GlobalHotkeyState::none);
    EXPECT_EQ(probe.ask("grab ctrl+shift+space", {"grabbed", "refused"}), "grabbed");
    EXPECT_EQ(probe.ask("ungrab", {"ungrabbed"}), "ungrabbed");

    session->preferences().setHasCompletedOnboarding(true);
    shell().onboardingChanged();
    ASSERT_NE(shell().hotkeyController(), nullptr);
    EXPECT_TRUE(shell().hotkeyController()->isRegistered());
    EXPECT_EQ(probe.ask("grab ctrl+shift+space", {"grabbed", "refused"}), "refused 10");

    // Quit lets go before the loop ends.
    shell().quit();
    EXPECT_EQ(probe.ask("grab ctrl+shift+space", {"grabbed", "refused"}), "grabbed");
}

// The executable as a user starts it: its window comes up, the key opens
// its capture panel over another program, and `fenrow --capture` (what a
// desktop's own keyboard settings can bind) toggles the same panel.
TEST_F(GlobalHotkeyTest, TheFenrowExecutableOpensItsPanelFromTheKeyAndFromItsCommand)
{
    QProcessEnvironment environment = home.environment();
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(FENROW_EXECUTABLE), {});
    ASSERT_TRUE(program.waitForStarted());
    const QString pid = QString::number(program.processId());
    const auto panelWindows = [&] {
        return runTool("xdotool", {"search", "--all", "--onlyvisible", "--pid", pid, "--name", "^Quick Capture$"});
    };
    ASSERT_FALSE(runTool("xdotool", {"search", "--sync", "--all", "--onlyvisible", "--pid", pid}).isEmpty());

    // The key is grabbed on the program's first pass after its window:
    // until then a press reaches the focused window, and is made again.
    bool opened = false;
    for (int attempt = 0; attempt < 50 && !opened; ++attempt) {
        focusOther();
        press("ctrl+shift+space");
        bool otherGotIt = false;
        (void)QTest::qWaitFor([&] {
            otherGotIt = other.next(spaceSymbol, 0).has_value();
            opened = !panelWindows().isEmpty();
            return opened || otherGotIt;
        });
    }
    EXPECT_TRUE(opened) << "the key opened the panel of the running program";

    const auto fenrowCommand = [&](const QStringList &arguments) {
        QProcess command;
        command.setProcessEnvironment(environment);
        command.start(QStringLiteral(FENROW_EXECUTABLE), arguments);
        EXPECT_TRUE(command.waitForFinished(60000));
        return command.exitCode();
    };
    ASSERT_EQ(fenrowCommand({"--capture"}), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return panelWindows().isEmpty(); })) << "fenrow --capture closed it";
    ASSERT_EQ(fenrowCommand({"--capture"}), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !panelWindows().isEmpty(); })) << "and opened it again";

    // SIGTERM takes the orderly way out, letting go of the key.
    ::kill(pid_t(program.processId()), SIGTERM);
    ASSERT_TRUE(program.waitForFinished(30000));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(other.ask("grab ctrl+shift+space", {"grabbed", "refused"}), "grabbed");
}

} // namespace
} // namespace fenrow::testing
