#pragma once

#include "shell/PreferenceChoices.h"

#include <QColor>
#include <QFont>

class QApplication;

namespace fenrow {

// The look of the desktop program in one place: the colours of the light
// or dark appearance in the user's accent palette, the type scale and the
// spacing every view shares. Views take their colours and fonts from here
// instead of inventing their own.
//
// The colours come from the same brand ramp as the canvas, so lists,
// sidebar and canvas always agree. `Color::…` always names the colours in
// force: a view reads them when it paints or is built, and a change of
// appearance rebuilds the views that keep them (see MainWindow).
namespace Theme {

struct Colors {
    bool dark = false;
    QColor window;
    QColor sidebar;
    QColor field;
    QColor divider;
    QColor text;
    QColor secondaryText;
    QColor accent;
    QColor accentSoft;
    // Text and marks drawn on a filled accent.
    QColor onAccent;
    // The edge that tells a control from its ground: check boxes, radio
    // buttons, fields and buttons; at least 3:1 against every surface.
    QColor controlBorder;
    QColor hover;
    QColor track;
    QColor ringOutline;
    QColor done;
    QColor destructive;
    QColor warning;
    QColor priorityHigh;
    QColor priorityMedium;
    QColor priorityLow;
    QColor canvasDot;

    static Colors make(AccentPalette palette, bool dark);
    friend bool operator==(const Colors &, const Colors &) = default;
};

// Fusion style with the program's control edges and check marks
// (ThemeStyle), the keyboard focus ring (ThemeFocusRing), the base font
// and the colours in force, for the whole process.
void apply(QApplication &application);
// Makes `colors` the ones in force: the application palette and `Color::…`.
void setColors(const Colors &colors);
const Colors &colors();

namespace detail {
extern Colors current;
} // namespace detail

namespace Color {
inline const QColor &window = detail::current.window;
inline const QColor &sidebar = detail::current.sidebar;
inline const QColor &field = detail::current.field;
inline const QColor &divider = detail::current.divider;
inline const QColor &text = detail::current.text;
inline const QColor &secondaryText = detail::current.secondaryText;
inline const QColor &accent = detail::current.accent;
inline const QColor &accentSoft = detail::current.accentSoft;
inline const QColor &onAccent = detail::current.onAccent;
inline const QColor &controlBorder = detail::current.controlBorder;
inline const QColor &hover = detail::current.hover;
inline const QColor &track = detail::current.track;
inline const QColor &ringOutline = detail::current.ringOutline;
inline const QColor &done = detail::current.done;
inline const QColor &destructive = detail::current.destructive;
// Past due: urgent, but not the red of destroying something.
inline const QColor &warning = detail::current.warning;
inline const QColor &priorityHigh = detail::current.priorityHigh;
inline const QColor &priorityMedium = detail::current.priorityMedium;
inline const QColor &priorityLow = detail::current.priorityLow;
inline const QColor &canvasDot = detail::current.canvasDot;
} // namespace Color

namespace Metric {
inline constexpr int sidebarPadding = 10;
inline constexpr int rowRadius = 7;
inline constexpr int rowPaddingX = 10;
inline constexpr int rowPaddingY = 7;
inline constexpr int rowGap = 2;
inline constexpr int progressRing = 16;
inline constexpr int dividerGrab = 5;
} // namespace Metric

// The type scale, relative to the application font so that a user's larger
// system font scales everything together.
QFont bodyFont();
QFont captionFont();
QFont sectionFont();
QFont brandFont();
QFont titleFont();
QFont largeTitleFont();

// A slim vertical scroll bar that floats over the list's own background.
QString thinScrollBarStyle();

// A question or notice in a message box: the text as a bold title, the
// informative text below it in the secondary colour, wide enough to read.
QString messageBoxStyle();
// The button that goes ahead, filled with `color`.
QString filledButtonStyle(const QColor &color);

} // namespace Theme
} // namespace fenrow
