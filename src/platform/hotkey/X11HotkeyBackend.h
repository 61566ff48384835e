#pragma once

#include "shell/GlobalHotkeyBackend.h"

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <vector>

struct xcb_connection_t;

namespace fenrow {

// The global hot key on an X11 display: a passive grab of the key on the
// root window, so that the X server hands the press to Fenrow whichever
// window has the focus. Num Lock and Caps Lock count as modifiers to X, so
// the key is grabbed with each of them, and both, as well; the key code is
// looked up from the key's symbol on the keyboard as it is mapped now. A
// combination another client grabbed first is refused with `takenStatus`.
// Grabs go with unregistering and with the backend.
//
// It speaks over Qt's own connection to the display, and sees the presses
// among Qt's events; without an X11 connection (another platform) every
// registration fails with `unsupportedStatus`.
class X11HotkeyBackend final : public GlobalHotkeyBackend, private QAbstractNativeEventFilter {
public:
    X11HotkeyBackend();
    ~X11HotkeyBackend() override;
    X11HotkeyBackend(const X11HotkeyBackend &) = delete;
    X11HotkeyBackend &operator=(const X11HotkeyBackend &) = delete;

    // Whether Qt runs on an X11 display here.
    static bool isAvailable();

    void installHandler(Handlers handlers) override;
    void removeHandler() override;
    int registerHotKey(const Request &request, quintptr &handle) override;
    void unregisterHotKey(quintptr handle) override;

private:
    struct Grab {
        quintptr handle = 0;
        std::vector<quint8> keyCodes;
        // The modifiers the combination needs, and those ignored beside
        // them (Caps Lock, Num Lock) with which it is grabbed too.
        quint16 modifiers = 0;
        std::vector<quint16> variants;
        quint16 ignored = 0;
    };

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    const Grab *grabFor(quint32 window, quint8 keyCode) const;
    void ungrab(const Grab &grab);

    xcb_connection_t *m_connection = nullptr;
    std::vector<quint32> m_roots;
    std::vector<Grab> m_grabs;
    quintptr m_nextHandle = 1;
    Handlers m_handlers;
    bool m_filtering = false;
    // Presses are passed on from the event loop, not from inside Qt's
    // event handling; calls queued on this die with the backend.
    QObject m_context;
    // Holding the key repeats its press: only the first one counts.
    quint8 m_heldKey = 0;
    quint8 m_releasedKey = 0;
    quint32 m_releaseTime = 0;
};

} // namespace fenrow
