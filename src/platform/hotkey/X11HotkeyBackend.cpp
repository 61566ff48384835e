#include "X11HotkeyBackend.h"

#include "KeySymbols.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QtGui/qguiapplication_platform.h>

#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace fenrow {

namespace {

constexpr quint32 numLockSymbol = 0xff7f;
constexpr quint32 altSymbols[] = {0xffe9, 0xffea};   // Alt_L, Alt_R
constexpr quint32 superSymbols[] = {0xffeb, 0xffec}; // Super_L, Super_R
// The eight core modifier bits; above them XKB puts the keyboard group.
constexpr quint16 coreModifiers = 0xff;

xcb_connection_t *qtConnection()
{
    auto *application = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    if (!application)
        return nullptr;
    auto *x11 = application->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

struct KeySymbolsFree {
    void operator()(xcb_key_symbols_t *symbols) const { xcb_key_symbols_free(symbols); }
};
using KeySymbolsPtr = std::unique_ptr<xcb_key_symbols_t, KeySymbolsFree>;

template <typename T>
struct ReplyFree {
    void operator()(T *reply) const { std::free(reply); }
};
template <typename T>
using Reply = std::unique_ptr<T, ReplyFree<T>>;

// Which modifier bits Alt, Super and Num Lock sit on in this keyboard's
// modifier map; the usual Mod1, Mod4 and Mod2 where the map does not say.
struct ModifierBits {
    quint16 alt = XCB_MOD_MASK_1;
    quint16 super = XCB_MOD_MASK_4;
    quint16 numLock = XCB_MOD_MASK_2;
};

ModifierBits modifierBits(xcb_connection_t *connection, xcb_key_symbols_t *symbols)
{
    ModifierBits bits;
    const Reply<xcb_get_modifier_mapping_reply_t> map(
        xcb_get_modifier_mapping_reply(connection, xcb_get_modifier_mapping(connection), nullptr));
    if (!map)
        return bits;
    const xcb_keycode_t *codes = xcb_get_modifier_mapping_keycodes(map.get());
    const int perModifier = map->keycodes_per_modifier;
    bool altFound = false, superFound = false, numLockFound = false;
    // Shift, Lock and Control (the first three) are fixed.
    for (int modifier = 3; modifier < 8; ++modifier) {
        for (int i = 0; i < perModifier; ++i) {
            const xcb_keycode_t code = codes[modifier * perModifier + i];
            if (code == 0)
                continue;
            for (int column = 0; column < 4; ++column) {
                const quint32 keysym = xcb_key_symbols_get_keysym(symbols, code, column);
                const quint16 bit = quint16(1u << modifier);
                if (keysym == numLockSymbol && !numLockFound) {
                    bits.numLock = bit;
                    numLockFound = true;
                } else if (std::ranges::find(altSymbols, keysym) != std::end(altSymbols) && !altFound) {
                    bits.alt = bit;
                    altFound = true;
                } else if (std::ranges::find(superSymbols, keysym) != std::end(superSymbols) && !superFound) {
                    bits.super = bit;
                    superFound = true;
                }
            }
        }
    }
    return bits;
}

quint16 modifierMask(Qt::KeyboardModifiers modifiers, const ModifierBits &bits)
{
    quint16 mask = 0;
    if (modifiers & Qt::ShiftModifier)
        mask |= XCB_MOD_MASK_SHIFT;
    if (modifiers & Qt::ControlModifier)
        mask |= XCB_MOD_MASK_CONTROL;
    if (modifiers & Qt::AltModifier)
        mask |= bits.alt;
    if (modifiers & Qt::MetaModifier)
        mask |= bits.super;
    return mask;
}

} // namespace

X11HotkeyBackend::X11HotkeyBackend() : m_connection(qtConnection())
{
    if (!m_connection)
        return;
    for (xcb_screen_iterator_t screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)); screen.rem;
         xcb_screen_next(&screen))
        m_roots.push_back(screen.data->root);
}

X11HotkeyBackend::~X11HotkeyBackend()
{
    for (const Grab &grab : m_grabs)
        ungrab(grab);
    m_grabs.clear();
    removeHandler();
}

bool X11HotkeyBackend::isAvailable()
{
    return qtConnection() != nullptr;
}

void X11HotkeyBackend::installHandler(Handlers handlers)
{
    m_handlers = std::move(handlers);
    if (m_connection && !m_filtering) {
        QCoreApplication::instance()->installNativeEventFilter(this);
        m_filtering = true;
    }
}

void X11HotkeyBackend::removeHandler()
{
    if (m_filtering && QCoreApplication::instance())
        QCoreApplication::instance()->removeNativeEventFilter(this);
    m_filtering = false;
    m_handlers = {};
}

int X11HotkeyBackend::registerHotKey(const Request &request, quintptr &handle)
{
    if (!m_connection)
        return unsupportedStatus;
    const std::optional<KeySymbols::Symbol> symbol = KeySymbols::symbol(request.keys.key());
    if (!symbol)
        return invalidStatus;
    const KeySymbolsPtr symbols(xcb_key_symbols_alloc(m_connection));
    if (!symbols)
        return unsupportedStatus;

    Grab grab;
    if (xcb_keycode_t *codes = xcb_key_symbols_get_keycode(symbols.get(), symbol->keysym)) {
        for (const xcb_keycode_t *code = codes; *code != XCB_NO_SYMBOL; ++code)
            if (std::ranges::find(grab.keyCodes, *code) == grab.keyCodes.end())
                grab.keyCodes.push_back(*code);
        std::free(codes);
    }
    // This keyboard cannot type the key at all.
    if (grab.keyCodes.empty())
        return invalidStatus;

    const ModifierBits bits = modifierBits(m_connection, symbols.get());
    grab.modifiers = modifierMask(request.keys.keyboardModifiers(), bits);
    grab.ignored = XCB_MOD_MASK_LOCK | bits.numLock;
    for (const quint16 variant : {quint16(0), quint16(XCB_MOD_MASK_LOCK), bits.numLock,
                                  quint16(XCB_MOD_MASK_LOCK | bits.numLock)})
        if (std::ranges::find(grab.variants, variant) == grab.variants.end())
            grab.variants.push_back(variant);

    struct Attempt {
        xcb_window_t root;
        xcb_keycode_t code;
        quint16 modifiers;
        xcb_void_cookie_t cookie;
    };
    std::vector<Attempt> attempts;
    for (const xcb_window_t root : m_roots)
        for (const quint8 code : grab.keyCodes)
            for (const quint16 variant : grab.variants) {
                const quint16 modifiers = grab.modifiers | variant;
                // The press goes to Fenrow alone, whichever window has the
                // focus, the program's own windows included.
                attempts.push_back({root, code, modifiers,
                                    xcb_grab_key_checked(m_connection, 0, root, modifiers, code,
                                                         XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)});
            }

    int status = 0;
    std::vector<const Attempt *> held;
    for (const Attempt &attempt : attempts) {
        if (const Reply<xcb_generic_error_t> error{xcb_request_check(m_connection, attempt.cookie)}) {
            if (status == 0 || error->error_code == XCB_ACCESS)
                status = error->error_code == XCB_ACCESS ? takenStatus : invalidStatus;
        } else {
            held.push_back(&attempt);
        }
    }
    if (status != 0) {
        // All or nothing: a key that works only with Num Lock off is no key.
        for (const Attempt *attempt : held)
            xcb_ungrab_key(m_connection, attempt->code, attempt->root, attempt->modifiers);
        xcb_flush(m_connection);
        return status;
    }
    grab.handle = m_nextHandle++;
    handle = grab.handle;
    // A release that went to a grab since let go of cannot hold up this one.
    m_heldKey = 0;
    m_grabs.push_back(std::move(grab));
    return 0;
}

void X11HotkeyBackend::unregisterHotKey(quintptr handle)
{
    const auto found = std::ranges::find(m_grabs, handle, &Grab::handle);
    if (found == m_grabs.end())
        return;
    ungrab(*found);
    m_grabs.erase(found);
    m_heldKey = 0;
}

void X11HotkeyBackend::ungrab(const Grab &grab)
{
    if (!m_connection)
        return;
    for (const xcb_window_t root : m_roots)
        for (const quint8 code : grab.keyCodes)
            for (const quint16 variant : grab.variants)
                xcb_ungrab_key(m_connection, code, root, grab.modifiers | variant);
    xcb_flush(m_connection);
}

const X11HotkeyBackend::Grab *X11HotkeyBackend::grabFor(quint32 window, quint8 keyCode) const
{
    if (std::ranges::find(m_roots, window) == m_roots.end())
        return nullptr;
    for (const Grab &grab : m_grabs)
        if (std::ranges::find(grab.keyCodes, keyCode) != grab.keyCodes.end())
            return &grab;
    return nullptr;
}

bool X11HotkeyBackend::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t" || m_grabs.empty())
        return false;
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    const quint8 type = event->response_type & 0x7f;
    if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE)
        return false;
    // Presses and releases have the same layout.
    const auto *key = reinterpret_cast<const xcb_key_press_event_t *>(event);
    const Grab *grab = grabFor(key->event, key->detail);
    if (!grab)
        return false;

    if (type == XCB_KEY_RELEASE) {
        m_heldKey = 0;
        m_releasedKey = key->detail;
        m_releaseTime = key->time;
        return true;
    }
    if ((key->state & coreModifiers & ~grab->ignored) != grab->modifiers)
        return false;
    // A repeat comes as a second press before any release (detectable
    // auto-repeat, which Qt asks for), or else as a release and a press at
    // the same moment.
    const bool repeat = m_heldKey == key->detail || (m_releasedKey == key->detail && m_releaseTime == key->time);
    m_heldKey = key->detail;
    if (!repeat && m_handlers.pressed) {
        QMetaObject::invokeMethod(
            &m_context,
            [this] {
                if (m_handlers.pressed)
                    m_handlers.pressed();
            },
            Qt::QueuedConnection);
    }
    return true;
}

} // namespace fenrow
