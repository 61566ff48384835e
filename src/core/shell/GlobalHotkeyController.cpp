#include "GlobalHotkeyController.h"

#include "ShortcutKeys.h"

Q_LOGGING_CATEGORY(fenrowHotkeyLog, "fenrow.hotkey")

namespace fenrow {

namespace {

void logFailure(int status)
{
    qCCritical(fenrowHotkeyLog, "Failed to register global hotkey (status %d).", status);
}

} // namespace

GlobalHotkeyController::GlobalHotkeyController(std::function<void()> onTrigger,
                                               std::unique_ptr<GlobalHotkeyBackend> backend, QObject *parent)
    : QObject(parent), m_onTrigger(std::move(onTrigger)), m_backend(std::move(backend))
{
    GlobalHotkeyBackend::Handlers handlers;
    handlers.pressed = [this] {
        if (m_onTrigger)
            m_onTrigger();
    };
    handlers.lost = [this](quintptr handle, int status) { lost(handle, status); };
    m_backend->installHandler(std::move(handlers));
}

GlobalHotkeyController::~GlobalHotkeyController()
{
    // No signal from here on: whoever listens may be going too.
    blockSignals(true);
    unregisterHotKey();
    m_backend->removeHandler();
}

void GlobalHotkeyController::registerHotKey(const KeyCombo &combo)
{
    // The earlier key goes first; the state changes once, below, so that a
    // held key replaced by another held one is no change to whoever shows it.
    if (m_hotKeyRef)
        m_backend->unregisterHotKey(*m_hotKeyRef);
    const GlobalHotkeyBackend::Request request{combo, ShortcutKeys::captureShortcut(combo),
                                               ShortcutKeys::carbonModifiers(combo.modifierFlags), signature, 1};
    quintptr handle = 0;
    const int status = m_backend->registerHotKey(request, handle);
    if (status != 0) {
        logFailure(status);
        setState(std::nullopt, status);
        return;
    }
    setState(handle, 0);
}

void GlobalHotkeyController::unregisterHotKey()
{
    if (m_hotKeyRef)
        m_backend->unregisterHotKey(*m_hotKeyRef);
    setState(std::nullopt, std::nullopt);
}

void GlobalHotkeyController::lost(quintptr handle, int status)
{
    // A late answer about a key since replaced or let go changes nothing.
    if (m_hotKeyRef != handle)
        return;
    logFailure(status);
    m_backend->unregisterHotKey(handle);
    setState(std::nullopt, status);
}

void GlobalHotkeyController::setState(std::optional<quintptr> ref, std::optional<int> status)
{
    const bool changed = ref.has_value() != m_hotKeyRef.has_value() || status != m_status;
    m_hotKeyRef = ref;
    m_status = status;
    if (changed)
        emit registrationChanged();
}

} // namespace fenrow
