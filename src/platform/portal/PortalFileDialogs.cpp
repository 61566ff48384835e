#include "PortalFileDialogs.h"

#include "DesktopPortal.h"

namespace fenrow::PortalFileDialogs
{

bool wanted(const QStringList &arguments, const QByteArray &platformThemeVariable, const QDBusConnection &bus)
{
    if (!platformThemeVariable.isEmpty() || arguments.contains(QLatin1StringView("-platformtheme")))
        return false;
    return DesktopPortal::isRunning(bus) &&
           DesktopPortal::interfaceVersion(bus, QStringLiteral("org.freedesktop.portal.FileChooser"),
                                           DesktopPortal::startupTimeoutMs)
               .has_value();
}

ApplicationArguments::ApplicationArguments(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        m_texts.emplace_back(argv[i]);
        arguments << QString::fromLocal8Bit(argv[i]);
    }
    // Without a QCoreApplication the shared session connection is not to be
    // made; a private one serves for the one question.
    const QString probe = QStringLiteral("fenrow-portal-probe");
    {
        const QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, probe);
        m_choseTheme = wanted(arguments, qgetenv("QT_QPA_PLATFORMTHEME"), bus);
    }
    QDBusConnection::disconnectFromBus(probe);
    if (m_choseTheme)
        m_texts.insert(m_texts.begin() + (m_texts.empty() ? 0 : 1),
                       {QByteArray("-platformtheme"), QByteArray(themeName)});
    for (QByteArray &text : m_texts)
        m_pointers.push_back(text.data());
    m_argc = int(std::ssize(m_texts));
    // argv ends in a null pointer, as main's does.
    m_pointers.push_back(nullptr);
}

} // namespace fenrow::PortalFileDialogs
