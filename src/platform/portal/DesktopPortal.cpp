#include "DesktopPortal.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>

namespace fenrow::DesktopPortal
{

bool isRunning(const QDBusConnection &bus)
{
    if (!bus.isConnected() || !bus.interface())
        return false;
    const QDBusReply<bool> owned = bus.interface()->isServiceRegistered(service);
    return owned.isValid() && owned.value();
}

std::optional<uint> interfaceVersion(const QDBusConnection &bus, const QString &interface, int timeoutMs)
{
    QDBusMessage get =
        QDBusMessage::createMethodCall(service, path, QStringLiteral("org.freedesktop.DBus.Properties"), "Get");
    get << interface << QStringLiteral("version");
    const QDBusMessage answer = bus.call(get, QDBus::Block, timeoutMs);
    if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty())
        return std::nullopt;
    bool ok = false;
    const uint version = unwrapped(answer.arguments().constFirst()).toUInt(&ok);
    return ok ? std::optional<uint>(version) : std::nullopt;
}

QVariant unwrapped(QVariant value)
{
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace fenrow::DesktopPortal
