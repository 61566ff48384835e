#include "CanvasAppearance.h"

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
    // Without a colour scheme hint the application palette is what the
    // desktop tells us; it announces its changes as events.
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
    return QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
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
