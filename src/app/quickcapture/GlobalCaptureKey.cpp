#include "GlobalCaptureKey.h"

#include "HotkeyBackends.h"
#include "shell/AppEnvironment.h"
#include "shell/AppPreferences.h"
#include "shell/GlobalHotkeyController.h"

namespace fenrow {

GlobalCaptureKey::GlobalCaptureKey(AppPreferences &preferences, AppEnvironment &environment,
                                   std::function<void()> toggle, std::unique_ptr<GlobalHotkeyBackend> backend,
                                   QObject *parent)
    : QObject(parent), m_preferences(preferences), m_environment(environment)
{
    if (!backend)
        backend = HotkeyBackends::forThisDesktop();
    m_controller = std::make_unique<GlobalHotkeyController>(std::move(toggle), std::move(backend));
    connect(m_controller.get(), &GlobalHotkeyController::registrationChanged, this, &GlobalCaptureKey::publish);
    connect(&m_preferences, &AppPreferences::changed, this, [this](const QString &key) {
        if (key == QLatin1StringView(PreferenceKey::globalShortcut))
            m_controller->registerHotKey(m_preferences.globalShortcut());
    });
    m_controller->registerHotKey(m_preferences.globalShortcut());
    publish();
}

GlobalCaptureKey::~GlobalCaptureKey()
{
    m_controller.reset();
    m_environment.setGlobalHotkeyState(GlobalHotkeyState::none);
}

bool GlobalCaptureKey::offeredOnThisDesktop()
{
    return HotkeyBackends::kindForThisDesktop(QDBusConnection::sessionBus(), QProcessEnvironment::systemEnvironment()) !=
           HotkeyBackends::Kind::unsupported;
}

void GlobalCaptureKey::publish()
{
    m_environment.setGlobalHotkeyState(m_controller->isRegistered() ? GlobalHotkeyState::registered
                                       : m_controller->status()    ? GlobalHotkeyState::failed
                                                                   : GlobalHotkeyState::none);
}

} // namespace fenrow
