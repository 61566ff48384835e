// Another X client beside the program under test, driven through its
// standard input one command a line, answering one line each on its
// standard output:
//   focus                    a window of its own, mapped and given the
//                            focus: "focused <window>"
//   grab MODS+KEY            a passive grab of the key on the root window,
//                            exactly these modifiers: "grabbed", or
//                            "refused <X error code>" (10: held by another)
//   ungrab                   lets go of its grabs: "ungrabbed"
// Every key press that reaches its window or its grabs is told as
// "press <keysym in hex> <state>". It ends when its input closes, and the
// X server then drops whatever it held.
//
// Modifiers: ctrl, shift, alt (Mod1), super (Mod4), numlock (Mod2),
// capslock (Lock). Keys: "space" or a single lower-case letter.
#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

#include <poll.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

namespace {

xcb_connection_t *connection = nullptr;
xcb_screen_t *screen = nullptr;
xcb_key_symbols_t *symbols = nullptr;
xcb_window_t window = XCB_NONE;

struct Grab {
    xcb_keycode_t code;
    uint16_t modifiers;
};
std::vector<Grab> grabs;

void say(const std::string &line)
{
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

bool parseCombination(const std::string &text, uint16_t &modifiers, xcb_keysym_t &keysym)
{
    modifiers = 0;
    std::stringstream parts(text);
    std::string part;
    std::vector<std::string> names;
    while (std::getline(parts, part, '+'))
        names.push_back(part);
    if (names.empty())
        return false;
    for (std::size_t i = 0; i + 1 < names.size(); ++i) {
        const std::string &name = names[i];
        if (name == "ctrl")
            modifiers |= XCB_MOD_MASK_CONTROL;
        else if (name == "shift")
            modifiers |= XCB_MOD_MASK_SHIFT;
        else if (name == "alt")
            modifiers |= XCB_MOD_MASK_1;
        else if (name == "super")
            modifiers |= XCB_MOD_MASK_4;
        else if (name == "numlock")
            modifiers |= XCB_MOD_MASK_2;
        else if (name == "capslock")
            modifiers |= XCB_MOD_MASK_LOCK;
        else
            return false;
    }
    const std::string &key = names.back();
    if (key == "space")
        keysym = 0x20;
    else if (key.size() == 1 && key[0] >= 'a' && key[0] <= 'z')
        keysym = xcb_keysym_t(key[0]);
    else
        return false;
    return true;
}

void focus()
{
    if (window == XCB_NONE) {
        window = xcb_generate_id(connection);
        const uint32_t values[] = {screen->white_pixel, XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_STRUCTURE_NOTIFY};
        xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, 20, 20, 320, 200, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK,
                          values);
        const char title[] = "Another program";
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                            sizeof(title) - 1, title);
        xcb_map_window(connection, window);
        xcb_flush(connection);
        // Focus can be given only to a viewable window.
        while (xcb_generic_event_t *event = xcb_wait_for_event(connection)) {
            const bool mapped = (event->response_type & 0x7f) == XCB_MAP_NOTIFY;
            std::free(event);
            if (mapped)
                break;
        }
    }
    xcb_set_input_focus(connection, XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    // A round trip: the focus is set once this returns.
    std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    say("focused " + std::to_string(window));
}

void grab(const std::string &combination)
{
    uint16_t modifiers = 0;
    xcb_keysym_t keysym = 0;
    if (!parseCombination(combination, modifiers, keysym)) {
        say("error unknown combination " + combination);
        return;
    }
    xcb_keycode_t *codes = xcb_key_symbols_get_keycode(symbols, keysym);
    if (!codes || codes[0] == XCB_NO_SYMBOL) {
        std::free(codes);
        say("error no key for " + combination);
        return;
    }
    const xcb_keycode_t code = codes[0];
    std::free(codes);
    xcb_void_cookie_t cookie =
        xcb_grab_key_checked(connection, 1, screen->root, modifiers, code, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    if (xcb_generic_error_t *error = xcb_request_check(connection, cookie)) {
        say("refused " + std::to_string(error->error_code));
        std::free(error);
        return;
    }
    grabs.push_back({code, modifiers});
    say("grabbed");
}

void ungrab()
{
    for (const Grab &held : grabs)
        xcb_ungrab_key(connection, held.code, screen->root, held.modifiers);
    grabs.clear();
    std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    say("ungrabbed");
}

void command(const std::string &line)
{
    std::stringstream words(line);
    std::string verb, argument;
    words >> verb >> argument;
    if (verb == "focus")
        focus();
    else if (verb == "grab")
        grab(argument);
    else if (verb == "ungrab")
        ungrab();
    else if (!verb.empty())
        say("error unknown command " + verb);
}

void drainEvents()
{
    while (xcb_generic_event_t *event = xcb_poll_for_event(connection)) {
        if ((event->response_type & 0x7f) == XCB_KEY_PRESS) {
            const auto *press = reinterpret_cast<xcb_key_press_event_t *>(event);
            char line[64];
            std::snprintf(line, sizeof line, "press %x %u", xcb_key_symbols_get_keysym(symbols, press->detail, 0),
                          unsigned(press->state));
            say(line);
        }
        std::free(event);
    }
}

} // namespace

int main()
{
    connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection)) {
        std::fprintf(stderr, "no X display\n");
        return 1;
    }
    screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    symbols = xcb_key_symbols_alloc(connection);
    say("ready");

    std::string pending;
    pollfd watched[2] = {{STDIN_FILENO, POLLIN, 0}, {xcb_get_file_descriptor(connection), POLLIN, 0}};
    for (;;) {
        drainEvents();
        if (poll(watched, 2, -1) < 0)
            continue;
        if (watched[0].revents & (POLLIN | POLLHUP)) {
            char buffer[256];
            const ssize_t count = read(STDIN_FILENO, buffer, sizeof buffer);
            if (count <= 0)
                break;
            pending.append(buffer, std::size_t(count));
            for (std::size_t end; (end = pending.find('\n')) != std::string::npos;) {
                command(pending.substr(0, end));
                pending.erase(0, end + 1);
            }
        }
        if (xcb_connection_has_error(connection))
            break;
    }
    xcb_key_symbols_free(symbols);
    xcb_disconnect(connection);
    return 0;
}
