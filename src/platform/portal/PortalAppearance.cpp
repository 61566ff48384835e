#include "PortalAppearance.h"

#include "DesktopPortal.h"

#include <QDBusMessage>
#include <QDBusVariant>

namespace fenrow
{

namespace
{

const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString schemeKey = QStringLiteral("color-scheme");

} // namespace

PortalAppearance::PortalAppearance(const QDBusConnection &bus, int timeoutMs, QObject *parent)
    : QObject(parent), m_bus(bus)
{
    // Followed by name, so a portal that starts later is heard as well. The
    // whole message, read by hand: Qt 6.4 does not match a slot with a
    // QDBusVariant parameter to the signal.
    m_bus.connect(DesktopPortal::service, DesktopPortal::path, settingsInterface, QStringLiteral("SettingChanged"),
                  this, SLOT(onSettingChanged(QDBusMessage)));
    read(timeoutMs);
}

std::optional<bool> PortalAppearance::prefersDark() const
{
    if (m_scheme == Scheme::preferDark)
        return true;
    if (m_scheme == Scheme::preferLight)
        return false;
    return std::nullopt;
}

void PortalAppearance::read(int timeoutMs)
{
    m_scheme.reset();
    if (!DesktopPortal::isRunning(m_bus))
        return;
    // ReadOne where the portal has it; portals before 1.17 only know Read,
    // which answers the same value wrapped once more.
    for (const char *method : {"ReadOne", "Read"}) {
        QDBusMessage call =
            QDBusMessage::createMethodCall(DesktopPortal::service, DesktopPortal::path, settingsInterface, method);
        call << appearanceGroup << schemeKey;
        const QDBusMessage answer = m_bus.call(call, QDBus::Block, timeoutMs);
        if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty()) {
            m_scheme = schemeOf(answer.arguments().constFirst());
            return;
        }
        if (answer.errorName() != QLatin1StringView("org.freedesktop.DBus.Error.UnknownMethod"))
            return;
    }
}

void PortalAppearance::onSettingChanged(const QDBusMessage &message)
{
    const QList<QVariant> arguments = message.arguments();
    if (arguments.size() < 3 || arguments[0].toString() != appearanceGroup || arguments[1].toString() != schemeKey)
        return;
    m_scheme = schemeOf(arguments[2]);
    emit changed();
}

std::optional<PortalAppearance::Scheme> PortalAppearance::schemeOf(const QVariant &value)
{
    bool ok = false;
    const uint number = DesktopPortal::unwrapped(value).toUInt(&ok);
    // Values a later portal may add read as no preference.
    if (!ok || number > uint(Scheme::preferLight))
        return Scheme::noPreference;
    return Scheme(number);
}

} // namespace fenrow
