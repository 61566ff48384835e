#pragma once

#include "shell/GlobalHotkeyBackend.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

namespace fenrow {

class AppEnvironment;
class AppPreferences;
class GlobalHotkeyController;

// The quick-capture combination on the desktop, for as long as the
// program's interface is installed: a `GlobalHotkeyController` over this
// desktop's backend whose trigger is `toggle`, the `globalShortcut`
// preference registered at once and again whenever it changes, and the
// outcome kept in the environment, where the settings read whether the key
// works. Destroying it lets go of the key.
class GlobalCaptureKey : public QObject {
    Q_OBJECT

public:
    // The backend of this desktop (HotkeyBackends::forThisDesktop) unless
    // one is given.
    GlobalCaptureKey(AppPreferences &preferences, AppEnvironment &environment, std::function<void()> toggle,
                     std::unique_ptr<GlobalHotkeyBackend> backend = nullptr, QObject *parent = nullptr);
    ~GlobalCaptureKey() override;

    GlobalHotkeyController &controller() const { return *m_controller; }

    // Whether this desktop has a service that could give Fenrow the key at
    // all (it may still refuse a combination another program holds).
    static bool offeredOnThisDesktop();
    // What a desktop's own keyboard settings can bind instead: the program
    // with AppShell's capture argument, which opens the panel of the
    // running Fenrow.
    static inline const QString fallbackCommand = QStringLiteral("fenrow --capture");

private:
    void publish();

    AppPreferences &m_preferences;
    AppEnvironment &m_environment;
    std::unique_ptr<GlobalHotkeyController> m_controller;
};

} // namespace fenrow
