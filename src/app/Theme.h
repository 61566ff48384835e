#pragma once

#include <QColor>
#include <QFont>

class QApplication;

namespace fenrow {

// The look of the desktop program in one place: a calm light palette, the
// type scale and the spacing every view shares. Views take their colours
// and fonts from here instead of inventing their own.
namespace Theme {

// Fusion style with the Fenrow palette and base font, for the whole process.
void apply(QApplication &application);

namespace Color {
inline const QColor window{0xff, 0xff, 0xff};
inline const QColor sidebar{0xf4, 0xf5, 0xf7};
inline const QColor divider{0xe1, 0xe3, 0xe8};
inline const QColor text{0x1f, 0x23, 0x28};
inline const QColor secondaryText{0x62, 0x68, 0x73};
inline const QColor accent{0x46, 0x63, 0xd1};
inline const QColor accentSoft{0xe2, 0xe8, 0xfa};
inline const QColor hover{0xe9, 0xeb, 0xef};
inline const QColor track{0xdc, 0xdf, 0xe5};
inline const QColor ringOutline{0xa9, 0xaf, 0xba};
inline const QColor done{0x2f, 0x9e, 0x6b};
inline const QColor destructive{0xc2, 0x3a, 0x34};
// Past due: urgent, but not the red of destroying something.
inline const QColor warning{0xc4, 0x4d, 0x12};
inline const QColor priorityHigh{0xdc, 0x4f, 0x3a};
inline const QColor priorityMedium{0xe0, 0x9a, 0x1f};
inline const QColor priorityLow{0x5b, 0x8d, 0xd6};
inline const QColor canvasDot{0xd9, 0xdc, 0xe2};
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
