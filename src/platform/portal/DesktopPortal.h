#pragma once

#include <QDBusConnection>
#include <QString>
#include <QVariant>

#include <optional>

// The desktop portal on the session bus: its name, its object, and the one
// question asked before talking to it at all.
namespace fenrow::DesktopPortal
{

inline const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString path = QStringLiteral("/org/freedesktop/portal/desktop");

// Calls on the portal at start-up wait no longer than this: a portal that
// hangs must not hold up the window.
constexpr int startupTimeoutMs = 200;

// Whether the portal runs now. A call to a name nobody owns would start the
// portal through bus activation (or wait for it); this asks the bus only.
bool isRunning(const QDBusConnection &bus);

// The version of `interface` where the running portal offers it.
std::optional<uint> interfaceVersion(const QDBusConnection &bus, const QString &interface, int timeoutMs);

// The value inside however many variants wrap it: Settings.Read answers a
// variant in a variant.
QVariant unwrapped(QVariant value);

} // namespace fenrow::DesktopPortal
