#pragma once

#include "KeyCombo.h"

#include <QKeyCombination>
#include <QtGlobal>

#include <functional>
#include <memory>

namespace fenrow {

// What the desktop offers for a key combination that works while another
// program is in front. Statuses follow the original hot-key service: 0 is
// success, anything else a failure the caller only logs.
class GlobalHotkeyBackend {
public:
    // No way to grab keys on this desktop ("unimplemented"), or the
    // desktop's service went away.
    static constexpr int unsupportedStatus = -4;
    // The user declined the key in the desktop's own dialog ("user
    // cancelled").
    static constexpr int cancelledStatus = -128;
    // Another program holds the combination ("hot key exists").
    static constexpr int takenStatus = -9878;
    // This keyboard has no key for it, or the desktop would not bind it
    // ("hot key invalid").
    static constexpr int invalidStatus = -9879;

    // What a registration names: the combination in the numberings the
    // backends may need, and the fixed identity of Fenrow's one hot key.
    struct Request {
        KeyCombo combo;
        // The combination as Qt keys (ShortcutKeys::captureShortcut), which
        // desktops without the original numbering map from.
        QKeyCombination keys;
        quint32 carbonModifiers = 0;
        quint32 signature = 0; // 'FNRW'
        quint32 number = 1;
    };

    struct Handlers {
        // A press of a registered combination; on the UI thread.
        std::function<void()> pressed;
        // A registration that returned 0 but that the desktop turned down
        // later, or a key the desktop took back: the handle and the
        // failure status. A desktop that answers at once never calls it.
        std::function<void(quintptr handle, int status)> lost;
    };

    virtual ~GlobalHotkeyBackend() = default;

    virtual void installHandler(Handlers handlers) = 0;
    virtual void removeHandler() = 0;
    // Returns 0 and a handle on success, the failure status otherwise.
    virtual int registerHotKey(const Request &request, quintptr &handle) = 0;
    virtual void unregisterHotKey(quintptr handle) = 0;
};

// Where no desktop service can grab keys: every registration fails with
// `unsupportedStatus`.
class UnsupportedHotkeyBackend final : public GlobalHotkeyBackend {
public:
    void installHandler(Handlers) override {}
    void removeHandler() override {}
    int registerHotKey(const Request &, quintptr &) override { return unsupportedStatus; }
    void unregisterHotKey(quintptr) override {}
};

} // namespace fenrow
