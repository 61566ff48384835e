#include "AppTestSupport.h"

#include "program/AppShell.h"
#include "window/OnboardingView.h"
#include "quickcapture/QuickCapturePanel.h"
#include "settings/SettingsWindow.h"
#include "shell/InterfaceLanguage.h"

#include <QCursor>
#include <QDir>
#include <QKeySequence>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>
#include <QSignalSpy>

namespace fenrow::testing {
namespace {

// The shell over the fixture's window, launched as the program launches
// it. Each test says whether onboarding is done.
class AppShellTest : public WindowFixture {
protected:
    AppShell &launch(bool onboarded, const QStringList &arguments = {AppEnvironment::uiTestArgument})
    {
        preferences->setHasCompletedOnboarding(onboarded);
        shellEnvironment = std::make_unique<AppEnvironment>(arguments);
        shell = std::make_unique<AppShell>(*store, *history, activeFlow, *preferences, *shellEnvironment);
        installed = std::make_unique<QSignalSpy>(shell.get(), &AppShell::appUIInstalled);
        removed = std::make_unique<QSignalSpy>(shell.get(), &AppShell::appUIRemoved);
        show();
        shell->registerMainWindow(window.get());
        shell->launch();
        // The launch finishes on the event loop's first pass.
        QApplication::processEvents();
        return *shell;
    }
    ~AppShellTest() override
    {
        shell.reset();
        InterfaceLanguage::apply("en");
    }

    QAction *command(const char *name) const { return window->menuBar()->findChild<QAction *>(name); }
    bool onboardingShown() const { return window->onboarding() && window->onboarding()->isVisible(); }
    // Through the pages with the button a user presses.
    void clickThroughOnboarding()
    {
        for (int page = 0; page < OnboardingView::pageCount; ++page) {
            auto *next = window->onboarding()->findChild<QPushButton *>(
                page + 1 < OnboardingView::pageCount ? "onboarding.next" : "onboarding.finish");
            ASSERT_NE(next, nullptr) << "page " << page;
            QTest::mouseClick(next, Qt::LeftButton);
        }
    }
    std::unique_ptr<AppEnvironment> shellEnvironment;
    std::unique_ptr<AppShell> shell;
    std::unique_ptr<QSignalSpy> installed;
    std::unique_ptr<QSignalSpy> removed;
};

TEST_F(AppShellTest, OnboardingGatesThePanelWhichIsInstalledAndRemovedExactlyOnce)
{
    AppShell &started = launch(false);
    EXPECT_TRUE(onboardingShown());
    EXPECT_EQ(installed->size(), 0);
    EXPECT_EQ(started.quickCapturePanel(), nullptr);
    EXPECT_FALSE(command("menu.quickCapture")->isEnabled());
    EXPECT_FALSE(command("menu.about")->isEnabled());
    EXPECT_EQ(window->minimumSize(), QSize(560, 396));

    clickThroughOnboarding();
    EXPECT_TRUE(preferences->hasCompletedOnboarding());
    EXPECT_FALSE(onboardingShown());
    EXPECT_TRUE(window->sidebar()->isVisible());
    EXPECT_EQ(installed->size(), 1);
    ASSERT_NE(started.quickCapturePanel(), nullptr);
    EXPECT_TRUE(command("menu.quickCapture")->isEnabled());
    EXPECT_EQ(window->minimumSize(), QSize(720, 480));

    // Writing the flag again, and the notification again, change nothing.
    preferences->setHasCompletedOnboarding(true);
    started.onboardingChanged();
    EXPECT_EQ(installed->size(), 1);

    // Restarting onboarding from the Help menu tears it down once.
    QPointer<QuickCapturePanel> panel = started.quickCapturePanel();
    panel->open();
    command("menu.restartOnboarding")->trigger();
    EXPECT_FALSE(preferences->hasCompletedOnboarding());
    EXPECT_EQ(removed->size(), 1);
    EXPECT_TRUE(panel.isNull()) << "the panel goes with the interface";
    EXPECT_TRUE(onboardingShown());
    ASSERT_NE(window->onboarding(), nullptr);
    EXPECT_EQ(window->onboarding()->page(), OnboardingView::Page::welcome);
    started.onboardingChanged();
    EXPECT_EQ(removed->size(), 1);

    clickThroughOnboarding();
    EXPECT_EQ(installed->size(), 2);
}

TEST_F(AppShellTest, TheWindowIsFittedToTheOnboardingStateOnTheScreenUnderThePointer)
{
    const QRect visible = QGuiApplication::primaryScreen()->availableGeometry();
    QCursor::setPos(visible.center());
    // A real start: without "--ui-test" the window is fitted.
    AppShell &started = launch(false, {});
    started.fitMainWindow();
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->size() == QSize(560, 396); }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->frameGeometry().center() == visible.center(); }))
        << "centred on the screen";

    clickThroughOnboarding();
    // After the change has settled, the window grows.
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->size() == QSize(1320, 840); }));
    EXPECT_LE((window->frameGeometry().center() - visible.center()).manhattanLength(), 1);

    // A window moved aside but of the right size stays where the user put it.
    window->move(visible.topLeft());
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->pos() == visible.topLeft(); }));
    started.fitMainWindow();
    QApplication::processEvents();
    EXPECT_EQ(window->pos(), visible.topLeft());
}

TEST_F(AppShellTest, ScriptedRunsKeepTheWindowAsMade)
{
    AppShell &started = launch(false);
    const QSize made = window->size();
    started.fitMainWindow();
    QApplication::processEvents();
    EXPECT_EQ(window->size(), made);
}

TEST_F(AppShellTest, StartingWithCaptureOpensThePanelOnceOnboardingIsDone)
{
    addFlow("Errands");
    const QStringList arguments = {AppEnvironment::uiTestArgument, AppShell::captureArgument};
    AppShell &started = launch(true, arguments);
    ASSERT_NE(started.quickCapturePanel(), nullptr);
    EXPECT_TRUE(started.quickCapturePanel()->isOpen());

    // The menu command toggles it.
    command("menu.quickCapture")->trigger();
    EXPECT_FALSE(started.quickCapturePanel()->isOpen());
    command("menu.quickCapture")->trigger();
    EXPECT_TRUE(started.quickCapturePanel()->isOpen());
    EXPECT_EQ(command("menu.quickCapture")->shortcut(), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Space));
}

TEST_F(AppShellTest, StartingWithCaptureBeforeOnboardingShowsTheWelcomeOnly)
{
    AppShell &started = launch(false, {AppEnvironment::uiTestArgument, AppShell::captureArgument});
    EXPECT_EQ(started.quickCapturePanel(), nullptr);
    EXPECT_TRUE(onboardingShown());
}

TEST_F(AppShellTest, AboutAndHelpOpenTheSettingsOnTheAboutPage)
{
    launch(true);
    command("menu.help")->trigger();
    SettingsWindow *settings = window->settingsWindow();
    ASSERT_NE(settings, nullptr);
    EXPECT_TRUE(settings->isVisible());
    EXPECT_EQ(settings->currentPage(), SettingsPage::about);
    settings->showPage(SettingsPage::general);
    command("menu.about")->trigger();
    EXPECT_EQ(settings->currentPage(), SettingsPage::about);

    // The settings go when the interface does.
    command("menu.restartOnboarding")->trigger();
    EXPECT_FALSE(settings->isVisible());
    command("menu.about")->trigger();
    EXPECT_FALSE(settings->isVisible()) << "not before onboarding is done";
}

TEST_F(AppShellTest, TheEngineBannerShowsWithoutAnEngineAndIsDismissedForTheWindowsLife)
{
    preferences->setHasCompletedOnboarding(true);
    AppEnvironment none({AppEnvironment::uiTestArgument, AppEnvironment::engineUnavailableArgument});
    window = std::make_unique<MainWindow>(*store, *history, activeFlow, *preferences, none);
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    QWidget *banner = window->findChild<QWidget *>("banner.engineUnavailable");
    ASSERT_NE(banner, nullptr);
    EXPECT_TRUE(banner->isVisible());
    // It leads to where a model is chosen.
    auto *chooseModel = banner->findChild<QAbstractButton *>("banner.engineUnavailable.chooseModel");
    ASSERT_NE(chooseModel, nullptr);
    EXPECT_TRUE(chooseModel->isVisible());
    QTest::mouseClick(chooseModel, Qt::LeftButton);
    ASSERT_NE(window->settingsWindow(), nullptr);
    EXPECT_TRUE(window->settingsWindow()->isVisible());
    EXPECT_EQ(window->settingsWindow()->currentPage(), SettingsPage::languageModel);
    auto *dismiss = banner->findChild<QAbstractButton *>("banner.engineUnavailable.dismiss");
    ASSERT_NE(dismiss, nullptr);
    QTest::mouseClick(dismiss, Qt::LeftButton);
    EXPECT_FALSE(banner->isVisible());
    window->selectFlow(addFlow("Later").id);
    EXPECT_FALSE(window->findChild<QWidget *>("banner.engineUnavailable")->isVisible())
        << "dismissed for the window's life";
    window.reset();
}

// Where no desktop service can give Fenrow the key, the welcome does not
// promise it everywhere: it names the command to bind instead.
TEST_F(AppShellTest, WithoutAGlobalKeyServiceTheWelcomeNamesTheCommandToBind)
{
    const auto captureMessage = [](OnboardingView &view) {
        view.showPage(OnboardingView::Page::capture);
        for (auto *label : view.findChildren<QLabel *>("onboarding.page.message"))
            if (label->isVisibleTo(&view))
                return label->text();
        return QString();
    };
    const QString keys =
        QKeySequence(QuickCapturePanel::shortcut(preferences->globalShortcut())).toString(QKeySequence::NativeText);
    OnboardingView everywhere(*preferences, true);
    OnboardingView insideOnly(*preferences, false);
    EXPECT_TRUE(captureMessage(everywhere).contains(keys));
    EXPECT_FALSE(captureMessage(everywhere).contains("fenrow --capture"));
    EXPECT_TRUE(captureMessage(insideOnly).contains(keys));
    EXPECT_TRUE(captureMessage(insideOnly).contains("“fenrow --capture”")) << captureMessage(insideOnly).toStdString();

    insideOnly.resize(560, 396);
    insideOnly.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&insideOnly));
    saveScreenshot(insideOnly, QStringLiteral("onboarding-4-en-without-global-key"));
}

// Not a check: the welcome for a reviewer, in English and Turkish.
TEST_F(AppShellTest, OnboardingScreenshots)
{
    for (const char *code : {"en", "tr"}) {
        ASSERT_TRUE(InterfaceLanguage::apply(code));
        shell.reset();
        window.reset();
        launch(false, {});
        shell->fitMainWindow();
        ASSERT_TRUE(QTest::qWaitFor([&] { return window->size() == QSize(560, 396); }));
        const QString language = QString::fromLatin1(code);
        for (int page = 0; page < OnboardingView::pageCount; ++page) {
            window->onboarding()->showPage(OnboardingView::Page(page));
            QApplication::processEvents();
            saveScreenshot(*window, QStringLiteral("onboarding-%1-%2").arg(page + 1).arg(language));
        }
    }
}

} // namespace
} // namespace fenrow::testing
