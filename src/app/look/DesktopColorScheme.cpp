#include "DesktopColorScheme.h"

#include <QColor>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPalette>
#include <QSettings>
#include <QStandardPaths>

namespace fenrow::DesktopColorScheme {

namespace {

std::optional<bool> &rememberedPaletteDark()
{
    static std::optional<bool> dark;
    return dark;
}

std::optional<bool> &portalDark()
{
    static std::optional<bool> dark;
    return dark;
}

bool namesDark(const QString &themeName)
{
    return themeName.contains(QLatin1StringView("dark"), Qt::CaseInsensitive);
}

bool isTrue(const QVariant &value)
{
    const QString text = value.toString().trimmed().toLower();
    return text == QLatin1StringView("1") || text == QLatin1StringView("true");
}

std::optional<bool> fromGtkSettings(const QString &path)
{
    if (!QFileInfo::exists(path))
        return std::nullopt;
    const QSettings ini(path, QSettings::IniFormat);
    const QVariant preferDark = ini.value(QStringLiteral("Settings/gtk-application-prefer-dark-theme"));
    const QVariant themeName = ini.value(QStringLiteral("Settings/gtk-theme-name"));
    if (isTrue(preferDark) || namesDark(themeName.toString()))
        return true;
    if (preferDark.isValid() || themeName.isValid())
        return false;
    return std::nullopt;
}

std::optional<bool> fromKdeGlobals(const QString &path)
{
    if (!QFileInfo::exists(path))
        return std::nullopt;
    const QSettings ini(path, QSettings::IniFormat);
    // QSettings reads an INI file's [General] section as keys without a group.
    const QVariant scheme = ini.value(QStringLiteral("ColorScheme"));
    if (scheme.isValid())
        return namesDark(scheme.toString());
    // "r,g,b" reads as a list of three.
    const QStringList rgb = ini.value(QStringLiteral("Colors:Window/BackgroundNormal")).toStringList();
    if (rgb.size() >= 3) {
        const QColor window(rgb[0].toInt(), rgb[1].toInt(), rgb[2].toInt());
        return window.lightness() < 128;
    }
    return std::nullopt;
}

} // namespace

std::optional<bool> fromConfiguration(const QString &configHome, const QByteArray &gtkThemeVariable)
{
    // "Adwaita:dark" names a variant, "Adwaita-dark" a theme; both are dark.
    if (!gtkThemeVariable.isEmpty())
        return namesDark(QString::fromUtf8(gtkThemeVariable));
    const QDir home(configHome);
    for (const char *file : {"gtk-4.0/settings.ini", "gtk-3.0/settings.ini"})
        if (const std::optional<bool> dark = fromGtkSettings(home.filePath(QLatin1StringView(file))))
            return dark;
    return fromKdeGlobals(home.filePath(QStringLiteral("kdeglobals")));
}

void rememberDesktopPalette(const QPalette &palette)
{
    if (!rememberedPaletteDark())
        rememberedPaletteDark() = palette.color(QPalette::Window).lightness() < 128;
}

void setPortalPreference(std::optional<bool> dark)
{
    portalDark() = dark;
}

bool prefersDark()
{
    if (portalDark())
        return *portalDark();
    const QString configHome = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    if (const std::optional<bool> dark = fromConfiguration(configHome, qgetenv("GTK_THEME")))
        return *dark;
    return rememberedPaletteDark().value_or(false);
}

} // namespace fenrow::DesktopColorScheme
