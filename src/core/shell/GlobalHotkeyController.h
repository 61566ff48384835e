#pragma once

#include "GlobalHotkeyBackend.h"

#include <QLoggingCategory>

#include <functional>
#include <memory>
#include <optional>

Q_DECLARE_LOGGING_CATEGORY(fenrowHotkeyLog)

namespace fenrow {

// Makes the quick-capture combination work while another program is in
// front. It lives only while the program's interface is installed: it
// listens for hot-key presses from construction and lets go of everything
// when destroyed. A combination the desktop refuses (taken by another
// program, or no support) is logged under "fenrow.hotkey" and otherwise
// ignored: the user gets no dialog.
class GlobalHotkeyController {
public:
    static constexpr quint32 signature = 0x464E5257; // "FNRW"

    GlobalHotkeyController(std::function<void()> onTrigger, std::unique_ptr<GlobalHotkeyBackend> backend);
    ~GlobalHotkeyController();
    GlobalHotkeyController(const GlobalHotkeyController &) = delete;
    GlobalHotkeyController &operator=(const GlobalHotkeyController &) = delete;

    // Replaces the registered combination, if any, with `combo`.
    void registerHotKey(const KeyCombo &combo);
    void unregisterHotKey();
    bool isRegistered() const { return m_hotKeyRef.has_value(); }

private:
    std::function<void()> m_onTrigger;
    std::unique_ptr<GlobalHotkeyBackend> m_backend;
    std::optional<quintptr> m_hotKeyRef;
};

} // namespace fenrow
