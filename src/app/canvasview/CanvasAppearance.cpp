#include "CanvasAppearance.h"

#include "look/DesktopColorScheme.h"
#include "shell/AppPreferences.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>
#include <QStyleHints>

namespace fenrow {

CanvasAppearance::CanvasAppearance(AppPreferences &preferences, QObject *parent)
    : QObject(parent), m_preferences(preferences)
{
    connect(&m_preferences, &AppPreferences::changed, this, [this](const QString &key) {
        if (key == QLatin1StringView(PreferenceKey::theme) || key == QLatin1StringView(PreferenceKey::accentPalette))
            update();
    });
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    connect(QGuiApplication::styleHints(), &QStyleHints::colorSchemeChanged, this, &CanvasAppearance::update);
#endif
    // The window's theme changes the application palette when the desktop
    // turns dark or light; that event is the cue to look again.
    qGuiApp->installEventFilter(this);
    m_colors = CanvasColors::make(m_preferences.accentPalette(), false);
    update();
}

bool CanvasAppearance::desktopPrefersDark()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    switch (QGuiApplication::styleHints()->colorScheme()) {
    case Qt::ColorScheme::Dark:
        return true;
    case Qt::ColorScheme::Light:
        return false;
    case Qt::ColorScheme::Unknown:
        break;
    }
#endif
    // The application palette is Fenrow's own by now; it says only what
    // the theme already decided.
    return DesktopColorScheme::prefersDark();
}

bool CanvasAppearance::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == qGuiApp && event->type() == QEvent::ApplicationPaletteChange)
        update();
    return QObject::eventFilter(watched, event);
}

void CanvasAppearance::update()
{
    bool dark = false;
    switch (m_preferences.theme()) {
    case AppTheme::automatic:
        dark = desktopPrefersDark();
        break;
    case AppTheme::light:
        break;
    case AppTheme::dark:
        dark = true;
        break;
    }
    const CanvasColors colors = CanvasColors::make(m_preferences.accentPalette(), dark);
    if (colors == m_colors)
        return;
    m_colors = colors;
    emit changed();
}

} // namespace fenrow
