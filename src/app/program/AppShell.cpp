#include "AppShell.h"

#include "DesktopReminders.h"
#include "quickcapture/GlobalCaptureKey.h"
#include "window/MainWindow.h"
#include "quickcapture/QuickCapturePanel.h"
#include "domain/Scheduler.h"
#include "shell/AppEnvironment.h"
#include "shell/AppPreferences.h"
#include "shell/LoginItem.h"
#include "shell/MaintenanceScheduler.h"
#include "shell/NotificationService.h"
#include "shell/TerminationSignal.h"
#include "shell/WidgetBridge.h"
#include "shell/WidgetFiles.h"
#include "shell/WindowFitting.h"

#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QTimer>

namespace fenrow {

namespace {

QPointer<AppShell> currentShell;

std::optional<QRect> visibleFrame(const QScreen *screen)
{
    return screen ? std::optional<QRect>(screen->availableGeometry()) : std::nullopt;
}

} // namespace

AppShell::AppShell(FenrowStore &store, FenrowHistory &history, ActiveFlowState &activeFlow,
                   AppPreferences &preferences, AppEnvironment &environment, QObject *parent)
    : QObject(parent), m_store(store), m_history(history), m_activeFlow(activeFlow), m_preferences(preferences),
      m_environment(environment)
{
    m_fitTimer = new QTimer(this);
    m_fitTimer->setSingleShot(true);
    m_fitTimer->setInterval(WindowFitting::fitDelay);
    connect(m_fitTimer, &QTimer::timeout, this, &AppShell::fitMainWindow);
    m_recentreWatch = new QTimer(this);
    m_recentreWatch->setSingleShot(true);
    m_recentreWatch->setInterval(WindowFitting::recentreWatch);
    m_timers = std::make_unique<TimerScheduler>();
    m_maintenance = std::make_unique<MaintenanceScheduler>(m_store, m_preferences, *m_timers);
    m_widgetBridge = std::make_unique<WidgetBridge>(m_store, m_history, m_preferences, *m_timers,
                                                    WidgetFiles::sharedFolder());
    currentShell = this;
}

AppShell::~AppShell()
{
    m_captureKey.reset();
    // The panel is a window of its own, not a child; it goes with the shell.
    delete m_panel;
}

AppShell *AppShell::current()
{
    return currentShell;
}

bool AppShell::canUseApplication() const
{
    return m_preferences.hasCompletedOnboarding();
}

QuickCapturePanel *AppShell::quickCapturePanel() const
{
    return m_panel;
}

GlobalHotkeyController *AppShell::hotkeyController() const
{
    return m_captureKey ? &m_captureKey->controller() : nullptr;
}

void AppShell::launch()
{
    if (m_launched)
        return;
    m_launched = true;
    TerminationSignal::install();
    if (TerminationSignal *signal = TerminationSignal::instance())
        connect(signal, &TerminationSignal::received, this, &AppShell::quit);
    // The autostart entry is the truth: one removed in the desktop's own
    // settings turns the toggle off. Nothing is written to it here.
    LoginItem::forThisUser().alignPreference(m_preferences);
    LoginItem::forThisUser(LoginProgram::widget).alignPreference(m_preferences);

    // After the first pass of the loop, so that the window is up before
    // anything is installed over it.
    QTimer::singleShot(0, this, [this] {
        evaluateOnboarding();
        connect(&m_preferences, &AppPreferences::changed, this, [this](const QString &key) {
            if (key == QLatin1StringView(PreferenceKey::hasCompletedOnboarding))
                evaluateOnboarding();
        });
        if (m_environment.launchArguments().contains(captureArgument) && m_panel)
            m_panel->open();
    });
}

void AppShell::evaluateOnboarding()
{
    if (m_preferences.hasCompletedOnboarding())
        installAppUI();
    else
        removeAppUI();
    updateCommands();
}

void AppShell::installAppUI()
{
    if (m_appUIInstalled)
        return;
    m_appUIInstalled = true;
    m_panel = new QuickCapturePanel(m_store, &m_history, &m_activeFlow, m_preferences, m_environment);
    m_captureKey = std::make_unique<GlobalCaptureKey>(m_preferences, m_environment, [this] { toggleQuickCapture(); });
    m_maintenance->start();
    // Ticks made in the widget, also while Fenrow was not running, are the
    // user's and wait for them: once started it stays, even through a
    // restarted welcome.
    m_widgetBridge->start();
    m_reminders = std::make_unique<DesktopReminders>(m_store, m_preferences, *m_timers, [this] { showMainWindow(); },
                                                     m_window ? m_window->routeRequests() : nullptr);
    emit appUIInstalled();
}

void AppShell::removeAppUI()
{
    if (!m_appUIInstalled)
        return;
    m_appUIInstalled = false;
    if (m_window) {
        if (auto *settings = m_window->findChild<QWidget *>(QStringLiteral("settings.window")))
            settings->close();
    }
    emit appUIRemoved();
    m_maintenance->stop();
    m_reminders.reset();
    m_captureKey.reset();
    if (m_panel) {
        m_panel->dismiss();
        delete m_panel;
    }
}

void AppShell::registerMainWindow(MainWindow *window)
{
    if (m_window || !window)
        return;
    m_window = window;
    addCommands();
    connect(window, &MainWindow::onboardingCompleted, this, &AppShell::onboardingChanged);
    connect(window, &MainWindow::quitRequested, this, &AppShell::quit);
    window->installEventFilter(this);
    if (!window->isVisible())
        window->show();
    // A first guess now; the window manager's frame is known a moment later.
    fitMainWindow();
    scheduleFitting();
}

void AppShell::addCommands()
{
    QMenuBar *bar = m_window->menuBar();
    if (QMenu *file = bar->findChild<QMenu *>(QStringLiteral("menu.file"))) {
        m_quickCapture = new QAction(qtTrId("menu.quickCapture"), file);
        m_quickCapture->setObjectName(QStringLiteral("menu.quickCapture"));
        // Also from the panel itself, so the same keys close it again.
        m_quickCapture->setShortcutContext(Qt::ApplicationShortcut);
        m_quickCapture->setShortcut(QuickCapturePanel::shortcut(m_preferences.globalShortcut()));
        connect(m_quickCapture, &QAction::triggered, this, &AppShell::toggleQuickCapture);
        QAction *first = file->actions().value(0);
        file->insertAction(first, m_quickCapture);
        file->insertSeparator(first);
        connect(&m_preferences, &AppPreferences::changed, m_quickCapture, [this](const QString &key) {
            if (key == QLatin1StringView(PreferenceKey::globalShortcut))
                m_quickCapture->setShortcut(QuickCapturePanel::shortcut(m_preferences.globalShortcut()));
        });
    }

    QMenu *help = bar->addMenu(qtTrId("menu.helpMenu"));
    help->setObjectName(QStringLiteral("menu.helpMenu"));
    m_help = help->addAction(qtTrId("menu.help"), this, &AppShell::showAbout);
    m_help->setObjectName(QStringLiteral("menu.help"));
    m_help->setShortcut(QKeySequence::HelpContents);
    m_about = help->addAction(qtTrId("menu.about"), this, &AppShell::showAbout);
    m_about->setObjectName(QStringLiteral("menu.about"));
    m_about->setMenuRole(QAction::AboutRole);
    help->addSeparator();
    m_restartOnboarding = help->addAction(qtTrId("menu.restartOnboarding"), this, &AppShell::restartOnboarding);
    m_restartOnboarding->setObjectName(QStringLiteral("menu.restartOnboarding"));
    updateCommands();
}

void AppShell::updateCommands()
{
    if (m_quickCapture)
        m_quickCapture->setEnabled(m_appUIInstalled);
    for (QAction *action : {m_help, m_about, m_restartOnboarding})
        if (action)
            action->setEnabled(canUseApplication());
}

void AppShell::toggleQuickCapture()
{
    if (m_panel)
        m_panel->toggle();
}

void AppShell::showMainWindow()
{
    if (!m_window)
        return;
    if (m_window->isMinimized())
        m_window->showNormal();
    else
        m_window->show();
    m_window->raise();
    m_window->activateWindow();
    if (!m_window->isActiveWindow())
        QApplication::alert(m_window);
}

void AppShell::showAbout()
{
    if (canUseApplication() && m_window)
        m_window->openSettings(SettingsPage::about);
}

void AppShell::restartOnboarding()
{
    m_preferences.setHasCompletedOnboarding(false);
    onboardingChanged();
}

void AppShell::onboardingChanged()
{
    evaluateOnboarding();
    scheduleFitting();
}

void AppShell::scheduleFitting()
{
    m_fitTimer->start();
}

void AppShell::fitMainWindow()
{
    if (!m_window || m_environment.launchArguments().contains(AppEnvironment::uiTestArgument))
        return;
    WindowFitting::Situation situation;
    situation.onboarded = m_preferences.hasCompletedOnboarding();
    situation.pointerScreen = visibleFrame(QGuiApplication::screenAt(QCursor::pos()));
    situation.windowScreen = visibleFrame(m_window->screen());
    // The screen of another window the user works in, else the pointer's.
    const QWidget *active = QApplication::activeWindow();
    situation.preferredScreen = active && active != m_window ? visibleFrame(active->screen())
                                                             : situation.pointerScreen;
    situation.frame = m_window->frameGeometry();
    situation.contentSize = m_window->size();

    const WindowFitting::Fit fit = WindowFitting::fit(situation);
    switch (fit.kind) {
    case WindowFitting::Fit::Kind::keep:
        return;
    case WindowFitting::Fit::Kind::resize:
        m_window->resize(fit.contentSize);
        m_window->move(fit.origin);
        // The window manager may place the resized window itself.
        m_recentreWatch->start();
        return;
    case WindowFitting::Fit::Kind::move:
        m_window->move(fit.origin);
        return;
    }
}

bool AppShell::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_window && event->type() == QEvent::Resize && m_recentreWatch->isActive()) {
        m_recentreWatch->stop();
        centreAfterResize();
    }
    return QObject::eventFilter(watched, event);
}

void AppShell::centreAfterResize()
{
    const QScreen *screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen)
        screen = m_window->screen();
    if (screen)
        m_window->move(WindowFitting::centredOrigin(screen->availableGeometry(), m_window->frameGeometry().size()));
}

void AppShell::quit()
{
    // What the installed interface leaves on screen, and the desktop's
    // key, go first.
    m_captureKey.reset();
    if (m_appUIInstalled && m_panel)
        m_panel->dismiss();
    const auto leave = [this] {
        emit leaving();
        QCoreApplication::quit();
    };
    // Pending and shown reminders are withdrawn before the loop ends; the
    // desktop has two seconds to answer.
    if (m_reminders)
        m_reminders->service().withdrawAll(leave);
    else
        leave();
}

} // namespace fenrow
