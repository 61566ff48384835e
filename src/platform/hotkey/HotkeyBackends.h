#pragma once

#include "shell/GlobalHotkeyBackend.h"

#include <QDBusConnection>
#include <QProcessEnvironment>
#include <QString>

#include <memory>

namespace fenrow::HotkeyBackends {

enum class Kind { x11, portal, unsupported };

// Which desktop service takes the global hot key: the X11 key grab when Qt
// runs on X11 ("xcb"), the portal's GlobalShortcuts in a Wayland session
// whose portal offers it, and otherwise none (every registration fails).
Kind choose(const QString &platformName, bool waylandSession, bool portalOffered);

// A Wayland session: Qt runs on Wayland, or the session says it is one.
bool isWaylandSession(const QString &platformName, const QProcessEnvironment &environment);

// The choice for this process, asking the portal on `bus` only when the
// answer depends on it.
Kind kindForThisDesktop(const QDBusConnection &bus, const QProcessEnvironment &environment);

std::unique_ptr<GlobalHotkeyBackend> make(Kind kind, const QDBusConnection &bus);

// `make(kindForThisDesktop(…))` on the session bus and this process's
// environment.
std::unique_ptr<GlobalHotkeyBackend> forThisDesktop();

} // namespace fenrow::HotkeyBackends
