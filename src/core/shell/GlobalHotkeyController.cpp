#include "GlobalHotkeyController.h"

#include "ShortcutKeys.h"

Q_LOGGING_CATEGORY(fenrowHotkeyLog, "fenrow.hotkey")

namespace fenrow {

GlobalHotkeyController::GlobalHotkeyController(std::function<void()> onTrigger,
                                               std::unique_ptr<GlobalHotkeyBackend> backend)
    : m_onTrigger(std::move(onTrigger)), m_backend(std::move(backend))
{
    m_backend->installHandler([this] {
        if (m_onTrigger)
            m_onTrigger();
    });
}

GlobalHotkeyController::~GlobalHotkeyController()
{
    unregisterHotKey();
    m_backend->removeHandler();
}

void GlobalHotkeyController::registerHotKey(const KeyCombo &combo)
{
    unregisterHotKey();
    const GlobalHotkeyBackend::Request request{combo, ShortcutKeys::carbonModifiers(combo.modifierFlags), signature, 1};
    quintptr handle = 0;
    const int status = m_backend->registerHotKey(request, handle);
    if (status != 0) {
        qCCritical(fenrowHotkeyLog, "Failed to register global hotkey (status %d).", status);
        return;
    }
    m_hotKeyRef = handle;
}

void GlobalHotkeyController::unregisterHotKey()
{
    if (!m_hotKeyRef)
        return;
    m_backend->unregisterHotKey(*m_hotKeyRef);
    m_hotKeyRef.reset();
}

} // namespace fenrow
