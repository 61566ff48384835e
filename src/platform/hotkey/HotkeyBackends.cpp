#include "HotkeyBackends.h"

#include "PortalHotkeyBackend.h"
#include "X11HotkeyBackend.h"
#include "shell/GlobalHotkeyController.h"

#include <QGuiApplication>

namespace fenrow::HotkeyBackends {

Kind choose(const QString &platformName, bool waylandSession, bool portalOffered)
{
    if (platformName == QLatin1StringView("xcb"))
        return Kind::x11;
    if (waylandSession && portalOffered)
        return Kind::portal;
    return Kind::unsupported;
}

bool isWaylandSession(const QString &platformName, const QProcessEnvironment &environment)
{
    return platformName.startsWith(QLatin1StringView("wayland")) ||
           environment.value(QStringLiteral("XDG_SESSION_TYPE")) == QLatin1StringView("wayland") ||
           !environment.value(QStringLiteral("WAYLAND_DISPLAY")).isEmpty();
}

Kind kindForThisDesktop(const QDBusConnection &bus, const QProcessEnvironment &environment)
{
    const QString platform = QGuiApplication::platformName();
    const bool wayland = isWaylandSession(platform, environment);
    // The portal is asked (a call on the bus) only where its answer counts.
    const bool offered = choose(platform, wayland, true) == Kind::portal &&
                         PortalHotkeyBackend::offeredVersion(bus).has_value();
    return choose(platform, wayland, offered);
}

std::unique_ptr<GlobalHotkeyBackend> make(Kind kind, const QDBusConnection &bus)
{
    switch (kind) {
    case Kind::x11:
        return std::make_unique<X11HotkeyBackend>();
    case Kind::portal:
        return std::make_unique<PortalHotkeyBackend>(bus);
    case Kind::unsupported:
        break;
    }
    return std::make_unique<UnsupportedHotkeyBackend>();
}

std::unique_ptr<GlobalHotkeyBackend> forThisDesktop()
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    const Kind kind = kindForThisDesktop(bus, QProcessEnvironment::systemEnvironment());
    qCDebug(fenrowHotkeyLog, "Global hot key through %s.",
            kind == Kind::x11 ? "the X11 key grab"
                              : kind == Kind::portal ? "the GlobalShortcuts portal" : "nothing on this desktop");
    return make(kind, bus);
}

} // namespace fenrow::HotkeyBackends
