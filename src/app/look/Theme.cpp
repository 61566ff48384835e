#include "Theme.h"

#include "BrandPalette.h"
#include "DesktopColorScheme.h"
#include "ThemeFocusRing.h"
#include "ThemeStyle.h"

#include <QApplication>
#include <QPalette>
#include <QStyleFactory>

namespace fenrow::Theme {

namespace {

QFont scaled(double factor, QFont::Weight weight)
{
    QFont font = QApplication::font();
    font.setPointSizeF(font.pointSizeF() * factor);
    font.setWeight(weight);
    return font;
}

QPalette palette(const Colors &colors)
{
    QPalette palette;
    palette.setColor(QPalette::Window, colors.window);
    palette.setColor(QPalette::WindowText, colors.text);
    palette.setColor(QPalette::Base, colors.field);
    palette.setColor(QPalette::AlternateBase, colors.sidebar);
    palette.setColor(QPalette::Text, colors.text);
    palette.setColor(QPalette::PlaceholderText, colors.secondaryText);
    palette.setColor(QPalette::Button, colors.dark ? colors.hover : colors.sidebar);
    palette.setColor(QPalette::ButtonText, colors.text);
    palette.setColor(QPalette::BrightText, colors.onAccent);
    palette.setColor(QPalette::Highlight, colors.accent);
    palette.setColor(QPalette::HighlightedText, colors.onAccent);
    // Tool tips stand out against the window in either appearance.
    palette.setColor(QPalette::ToolTipBase, colors.dark ? colors.track : colors.text);
    palette.setColor(QPalette::ToolTipText, colors.dark ? colors.text : colors.window);
    palette.setColor(QPalette::Link, colors.accent);
    palette.setColor(QPalette::LinkVisited, colors.accent);
    // Fusion draws bevels and frames from these.
    palette.setColor(QPalette::Light, colors.dark ? colors.track : QColor(Qt::white));
    palette.setColor(QPalette::Midlight, colors.hover);
    palette.setColor(QPalette::Mid, colors.divider);
    palette.setColor(QPalette::Dark, colors.dark ? colors.sidebar.darker(140) : colors.track);
    palette.setColor(QPalette::Shadow, colors.dark ? QColor(Qt::black) : colors.secondaryText);
    const QColor disabled = colors.dark ? colors.secondaryText.darker(140) : colors.secondaryText.lighter(130);
    palette.setColor(QPalette::Disabled, QPalette::Text, disabled);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, disabled);
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, disabled);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, colors.track);
    return palette;
}

} // namespace

namespace detail {
Colors current = Colors::make(AccentPalette::violet, false);
} // namespace detail

Colors Colors::make(AccentPalette accent, bool dark)
{
    // The canvas's colours are the source; the rest of the window takes the
    // ramp's surfaces in the same roles.
    const CanvasColors canvas = CanvasColors::make(accent, dark);
    const BrandRamp &ramp = canvas.ramp;
    Colors colors;
    colors.dark = dark;
    colors.text = canvas.text;
    colors.secondaryText = canvas.secondaryText;
    colors.accent = ramp.brand;
    colors.onAccent = ramp.onAccent;
    colors.accentSoft = ramp.brandBorder;
    colors.divider = ramp.brandBorder;
    colors.track = ramp.canvasGrid;
    colors.ringOutline = canvas.edge;
    colors.done = canvas.done;
    colors.warning = canvas.warning;
    colors.canvasDot = ramp.canvasGrid;
    if (dark) {
        colors.window = ramp.brandPanel;
        colors.sidebar = ramp.brandSubtle;
        colors.field = ramp.fieldSurface;
        colors.hover = ramp.fieldSurface;
        colors.controlBorder = QColor(0x7c, 0x7f, 0x8e);
        colors.destructive = QColor(0xe8, 0x6a, 0x64);
        colors.priorityHigh = QColor(0xf0, 0x74, 0x62);
        colors.priorityMedium = QColor(0xf0, 0xb4, 0x4c);
        colors.priorityLow = QColor(0x7e, 0xa9, 0xec);
    } else {
        colors.window = ramp.nodeSurface;
        colors.sidebar = ramp.brandPanel;
        colors.field = ramp.nodeSurface;
        colors.hover = ramp.fieldSurface;
        colors.controlBorder = QColor(0x84, 0x87, 0x95);
        colors.destructive = QColor(0xc2, 0x3a, 0x34);
        colors.priorityHigh = QColor(0xdc, 0x4f, 0x3a);
        colors.priorityMedium = QColor(0xe0, 0x9a, 0x1f);
        colors.priorityLow = QColor(0x5b, 0x8d, 0xd6);
    }
    return colors;
}

void apply(QApplication &application)
{
    // The desktop's own palette is the last hint at its light or dark
    // choice; ours replaces it in a moment.
    DesktopColorScheme::rememberDesktopPalette(application.palette());
    QApplication::setStyle(new ThemeStyle(QStyleFactory::create(QStringLiteral("Fusion"))));
    if (!application.findChild<ThemeFocusRing *>(QString(), Qt::FindDirectChildrenOnly))
        new ThemeFocusRing(&application);
    QFont base = QApplication::font();
    // Desktop defaults without a platform theme come out at 9 pt, which is
    // cramped for a list the user reads all day.
    base.setPointSizeF(std::max(base.pointSizeF(), 10.0));
    QApplication::setFont(base);
    setColors(detail::current);
}

void setColors(const Colors &colors)
{
    detail::current = colors;
    QApplication::setPalette(palette(colors));
}

const Colors &colors()
{
    return detail::current;
}

QFont bodyFont()
{
    return scaled(1.0, QFont::Normal);
}

QFont captionFont()
{
    return scaled(0.9, QFont::Normal);
}

QFont sectionFont()
{
    return scaled(0.9, QFont::DemiBold);
}

QFont brandFont()
{
    return scaled(1.3, QFont::Bold);
}

QFont titleFont()
{
    return scaled(1.5, QFont::DemiBold);
}

QFont largeTitleFont()
{
    return scaled(2.0, QFont::Bold);
}

QString thinScrollBarStyle()
{
    return QStringLiteral("QScrollBar:vertical { width: 8px; background: transparent; margin: 0; }"
                          " QScrollBar::handle:vertical { background: %1; border-radius: 4px; min-height: 28px; }"
                          " QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical { height: 0; }"
                          " QScrollBar::add-page:vertical, QScrollBar::sub-page:vertical { background: none; }")
        .arg(Color::ringOutline.name());
}

QString messageBoxStyle()
{
    return QStringLiteral("QLabel#qt_msgbox_label { font-weight: 600; font-size: %1pt; }"
                          " QLabel#qt_msgbox_informativelabel { color: %2; min-width: 320px; }")
        .arg(titleFont().pointSizeF() * 0.8)
        .arg(Color::secondaryText.name());
}

QString filledButtonStyle(const QColor &color)
{
    return QStringLiteral("QPushButton { color: %3; background: %1; border: none;"
                          " border-radius: 5px; padding: 5px 14px; }"
                          " QPushButton:hover { background: %2; }")
        .arg(color.name(), detail::current.dark ? color.lighter(112).name() : color.darker(115).name(),
             detail::current.onAccent.name());
}

} // namespace fenrow::Theme
