#pragma once

#include "shell/GlobalHotkeyBackend.h"

#include <QObject>

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

private:
    void publish();

    AppPreferences &m_preferences;
    AppEnvironment &m_environment;
    std::unique_ptr<GlobalHotkeyController> m_controller;
};

} // namespace fenrow
