#pragma once

#include "KeyCombo.h"

#include <QtGlobal>

#include <functional>
#include <memory>

namespace fenrow {

// What the desktop offers for a key combination that works while another
// program is in front. Statuses follow the original hot-key service: 0 is
// success, anything else a failure the caller only logs.
class GlobalHotkeyBackend {
public:
    // A backend that cannot grab keys on this desktop says so with this.
    static constexpr int unsupportedStatus = -4;

    // What a registration names: the combination in both numberings the
    // backends may need, and the fixed identity of Fenrow's one hot key.
    struct Request {
        KeyCombo combo;
        quint32 carbonModifiers = 0;
        quint32 signature = 0; // 'FNRW'
        quint32 number = 1;
    };

    virtual ~GlobalHotkeyBackend() = default;

    // Presses of a registered combination call `pressed`, on the UI thread.
    virtual void installHandler(std::function<void()> pressed) = 0;
    virtual void removeHandler() = 0;
    // Returns 0 and a handle on success, the failure status otherwise.
    virtual int registerHotKey(const Request &request, quintptr &handle) = 0;
    virtual void unregisterHotKey(quintptr handle) = 0;
};

// Stands in until this desktop's hot-key service is wired: every
// registration fails with `unsupportedStatus`.
class UnsupportedHotkeyBackend final : public GlobalHotkeyBackend {
public:
    void installHandler(std::function<void()>) override {}
    void removeHandler() override {}
    int registerHotKey(const Request &, quintptr &) override { return unsupportedStatus; }
    void unregisterHotKey(quintptr) override {}
};

} // namespace fenrow
