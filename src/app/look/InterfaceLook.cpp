#include "InterfaceLook.h"

#include "DesktopColorScheme.h"
#include "DesktopPortal.h"
#include "PortalAppearance.h"
#include "shell/AppPreferences.h"
#include "shell/InterfaceLanguage.h"

#include <QGuiApplication>
#include <QPalette>
#include <QLocale>
#include <QTimer>

namespace fenrow {

InterfaceLook::InterfaceLook(AppPreferences &preferences, QObject *parent)
    : QObject(parent),
      m_preferences(preferences),
      m_portal(new PortalAppearance(QDBusConnection::sessionBus(), DesktopPortal::startupTimeoutMs, this))
{
    DesktopColorScheme::setPortalPreference(m_portal->prefersDark());
    // The desktop switched between light and dark: the automatic theme
    // follows at once.
    connect(m_portal, &PortalAppearance::changed, this, [this] {
        DesktopColorScheme::setPortalPreference(m_portal->prefersDark());
        refreshDesktop();
    });
    applyColors();
    m_identity = currentIdentity();
    connect(&m_preferences, &AppPreferences::changed, this, [this](const QString &key) {
        if (key == QLatin1StringView(PreferenceKey::uiLanguage)) {
            applyLanguage();
            noteIdentity();
        } else if (key == QLatin1StringView(PreferenceKey::theme) ||
                   key == QLatin1StringView(PreferenceKey::accentPalette)) {
            applyColors();
            noteIdentity();
        }
    });
    // A desktop switched to dark while Fenrow was in the background shows
    // when the user comes back.
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive)
            refreshDesktop();
    });
}

void InterfaceLook::refreshDesktop()
{
    if (m_preferences.theme() != AppTheme::automatic)
        return;
    applyColors();
    noteIdentity();
}

void InterfaceLook::applyLanguage()
{
    const QString code = InterfaceLanguage::resolve(m_preferences.uiLanguageRaw(), QLocale::system().uiLanguages());
    if (code != InterfaceLanguage::current())
        InterfaceLanguage::apply(code);
}

void InterfaceLook::applyColors()
{
    bool dark = false;
    switch (m_preferences.theme()) {
    case AppTheme::automatic:
        dark = DesktopColorScheme::prefersDark();
        break;
    case AppTheme::light:
        break;
    case AppTheme::dark:
        dark = true;
        break;
    }
    const Theme::Colors colors = Theme::Colors::make(m_preferences.accentPalette(), dark);
    if (!(colors == Theme::colors()) || QGuiApplication::palette().color(QPalette::Window) != colors.window)
        Theme::setColors(colors);
}

QString InterfaceLook::currentIdentity() const
{
    return QStringList{InterfaceLanguage::current(), rawString(m_preferences.accentPalette()),
                       isDark() ? QStringLiteral("dark") : QStringLiteral("light")}
        .join(u'#');
}

void InterfaceLook::noteIdentity()
{
    const QString identity = currentIdentity();
    if (identity == m_identity)
        return;
    m_identity = identity;
    if (m_announcing)
        return;
    m_announcing = true;
    QTimer::singleShot(0, this, [this] {
        m_announcing = false;
        emit changed();
    });
}

} // namespace fenrow
