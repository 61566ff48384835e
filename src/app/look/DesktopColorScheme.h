#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

class QPalette;

namespace fenrow {

// Whether the desktop asks for dark windows, for the automatic theme. Qt 6.4
// has no colour-scheme hint. The desktop portal's preference goes first
// (`PortalAppearance` reads it and tells it here); without one, the answer
// comes from what the desktop leaves in the user's configuration: the
// GTK_THEME variable, GTK 4 and GTK 3 settings.ini ("prefer dark", or a
// theme whose name says dark), KDE's kdeglobals (a dark colour scheme or a
// dark window colour); and when none of them says anything, the lightness
// of the palette the desktop gave the program before Fenrow set its own.
namespace DesktopColorScheme {

// True for dark, false for light, none when the configuration under
// `configHome` and the variable's value say nothing.
std::optional<bool> fromConfiguration(const QString &configHome, const QByteArray &gtkThemeVariable);

// Keeps the palette's lightness as the fallback; only the first call counts,
// since later the application palette is Fenrow's own.
void rememberDesktopPalette(const QPalette &palette);

// The portal's light or dark preference; none where no portal runs or it
// has no preference.
void setPortalPreference(std::optional<bool> dark);

// The portal's preference, else the configuration of this user and
// session, else the remembered palette.
bool prefersDark();

} // namespace DesktopColorScheme

} // namespace fenrow
