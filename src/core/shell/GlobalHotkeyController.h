#pragma once

#include "GlobalHotkeyBackend.h"

#include <QLoggingCategory>
#include <QObject>

#include <functional>
#include <memory>
#include <optional>

Q_DECLARE_LOGGING_CATEGORY(fenrowHotkeyLog)

namespace fenrow {

// Makes the quick-capture combination work while another program is in
// front. It lives only while the program's interface is installed: it
// listens for hot-key presses from construction and lets go of everything
// when destroyed. A combination the desktop refuses (taken by another
// program, or no support), at once or later, is logged under
// "fenrow.hotkey" and otherwise ignored: the user gets no dialog.
class GlobalHotkeyController : public QObject {
    Q_OBJECT

public:
    static constexpr quint32 signature = 0x464E5257; // "FNRW"

    GlobalHotkeyController(std::function<void()> onTrigger, std::unique_ptr<GlobalHotkeyBackend> backend,
                           QObject *parent = nullptr);
    ~GlobalHotkeyController() override;

    // Replaces the registered combination, if any, with `combo`.
    void registerHotKey(const KeyCombo &combo);
    void unregisterHotKey();
    bool isRegistered() const { return m_hotKeyRef.has_value(); }
    // The status of the last registration: 0 while it holds, the failure
    // otherwise; none before the first and after an unregister.
    std::optional<int> status() const { return m_status; }

signals:
    // `isRegistered` or `status` changed.
    void registrationChanged();

private:
    void lost(quintptr handle, int status);
    void setState(std::optional<quintptr> ref, std::optional<int> status);

    std::function<void()> m_onTrigger;
    std::unique_ptr<GlobalHotkeyBackend> m_backend;
    std::optional<quintptr> m_hotKeyRef;
    std::optional<int> m_status;
};

} // namespace fenrow
