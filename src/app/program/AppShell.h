#pragma once

#include <QObject>
#include <QPointer>

#include <memory>

class QAction;
class QMenu;
class QTimer;

namespace fenrow {

class ActiveFlowState;
class AppEnvironment;
class AppPreferences;
class DesktopReminders;
class FenrowHistory;
class FenrowStore;
class GlobalCaptureKey;
class GlobalHotkeyController;
class MainWindow;
class MaintenanceScheduler;
class QuickCapturePanel;
class TimerScheduler;
class WidgetBridge;

// What runs once per process around the main window: the two stages of the
// program (welcome first; the capture panel and the other services only
// once onboarding is done), the size and place of the main window, the
// shell's own menu commands and the orderly way out, for Quit and SIGTERM
// alike.
//
// Onboarding's flag is the one switch: whenever it becomes true the
// application interface is installed, whenever it becomes false it is
// removed, each exactly once however often the flag is written.
class AppShell : public QObject {
    Q_OBJECT

public:
    // Starts the program with the capture panel open.
    static inline const QString captureArgument = QStringLiteral("--capture");

    AppShell(FenrowStore &store, FenrowHistory &history, ActiveFlowState &activeFlow, AppPreferences &preferences,
             AppEnvironment &environment, QObject *parent = nullptr);
    ~AppShell() override;

    // The shell of this process while it lives, for commands that have no
    // other way to reach it.
    static AppShell *current();

    // Takes over SIGTERM, then, once the event loop has shown the window,
    // evaluates onboarding's flag (installing the interface when it is
    // set), follows its changes from then on, and opens the capture panel
    // when the program was started with "--capture".
    void launch();

    // Adds the shell's commands to the window's menus, shows it and fits it
    // to the screen. The first window is kept; later calls change nothing.
    void registerMainWindow(MainWindow *window);
    MainWindow *mainWindow() const { return m_window; }

    // Whether the user may use the program beyond onboarding.
    bool canUseApplication() const;
    bool isAppUIInstalled() const { return m_appUIInstalled; }
    // The capture panel while the interface is installed, else null.
    QuickCapturePanel *quickCapturePanel() const;
    // The global hot key that toggles the panel; as long-lived as the panel.
    GlobalHotkeyController *hotkeyController() const;
    // Archiving and the weekly backup: made with the shell, running while
    // the interface is installed; the Data page's "Back up now" uses it.
    MaintenanceScheduler *maintenance() const { return m_maintenance.get(); }
    // Due reminders and the digest while the interface is installed, else null.
    DesktopReminders *reminders() const { return m_reminders.get(); }
    // The tray widget's files: made with the shell, started the first time
    // the interface is installed, and running from then on.
    WidgetBridge *widgetBridge() const { return m_widgetBridge.get(); }

    // The capture command: opens or closes the panel, once onboarding is done.
    void toggleQuickCapture();
    // Brings the main window to the front: shown, raised and given the
    // focus, or, where the desktop keeps the focus elsewhere, marked as
    // asking for attention.
    void showMainWindow();
    // Shows the About page of the settings; the Help command does the same.
    void showAbout();
    // Clears onboarding's flag: the interface is removed, the window shows
    // the welcome again and shrinks to it.
    void restartOnboarding();
    // What the window does after onboarding finished or restarted: the
    // flag is read again and the window fitted once its content settled.
    void onboardingChanged();

    // Sizes the window for the onboarding state within the screen under
    // the pointer and centres it there. Scripted runs ("--ui-test") keep
    // the window as made.
    void fitMainWindow();
    void scheduleFitting();

    // The one way out, for the Quit command and SIGTERM. Fenrow's pending
    // and shown notifications are withdrawn first; the desktop has two
    // seconds to answer before the loop ends anyway.
    void quit();

signals:
    // The capture panel, its global hot key, the reminders and the
    // maintenance scheduler are made before `appUIInstalled` and dropped
    // after `appUIRemoved`; whatever else lives with the installed
    // interface joins here.
    void appUIInstalled();
    void appUIRemoved();
    // The way out is clear; the event loop is told to end right after.
    void leaving();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void evaluateOnboarding();
    void installAppUI();
    void removeAppUI();
    void addCommands();
    void updateCommands();
    void centreAfterResize();

    FenrowStore &m_store;
    FenrowHistory &m_history;
    ActiveFlowState &m_activeFlow;
    AppPreferences &m_preferences;
    AppEnvironment &m_environment;
    QPointer<MainWindow> m_window;
    QPointer<QuickCapturePanel> m_panel;
    std::unique_ptr<GlobalCaptureKey> m_captureKey;
    // The timers of the background services, which go before them.
    std::unique_ptr<TimerScheduler> m_timers;
    std::unique_ptr<MaintenanceScheduler> m_maintenance;
    std::unique_ptr<DesktopReminders> m_reminders;
    std::unique_ptr<WidgetBridge> m_widgetBridge;
    bool m_appUIInstalled = false;
    bool m_launched = false;
    QTimer *m_fitTimer = nullptr;
    // Set while the next resize of the window is to be answered by
    // centring it once more.
    QTimer *m_recentreWatch = nullptr;
    QAction *m_quickCapture = nullptr;
    QAction *m_help = nullptr;
    QAction *m_about = nullptr;
    QAction *m_restartOnboarding = nullptr;
};

} // namespace fenrow
