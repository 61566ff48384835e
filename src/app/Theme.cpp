#include "Theme.h"

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

QPalette palette()
{
    QPalette palette;
    palette.setColor(QPalette::Window, Color::window);
    palette.setColor(QPalette::WindowText, Color::text);
    palette.setColor(QPalette::Base, Color::window);
    palette.setColor(QPalette::AlternateBase, Color::sidebar);
    palette.setColor(QPalette::Text, Color::text);
    palette.setColor(QPalette::PlaceholderText, Color::secondaryText);
    palette.setColor(QPalette::Button, Color::sidebar);
    palette.setColor(QPalette::ButtonText, Color::text);
    palette.setColor(QPalette::Highlight, Color::accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, Color::text);
    palette.setColor(QPalette::ToolTipText, Qt::white);
    palette.setColor(QPalette::Link, Color::accent);
    palette.setColor(QPalette::Light, Qt::white);
    palette.setColor(QPalette::Midlight, Color::hover);
    palette.setColor(QPalette::Mid, Color::divider);
    palette.setColor(QPalette::Dark, Color::track);
    palette.setColor(QPalette::Shadow, Color::secondaryText);
    palette.setColor(QPalette::Disabled, QPalette::Text, Color::secondaryText);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, Color::secondaryText);
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, Color::secondaryText);
    return palette;
}

} // namespace

void apply(QApplication &application)
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QFont base = QApplication::font();
    // Desktop defaults without a platform theme come out at 9 pt, which is
    // cramped for a list the user reads all day.
    base.setPointSizeF(std::max(base.pointSizeF(), 10.0));
    QApplication::setFont(base);
    application.setPalette(palette());
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
    return QStringLiteral("QPushButton { color: white; background: %1; border: none;"
                          " border-radius: 5px; padding: 5px 14px; }"
                          " QPushButton:hover { background: %2; }")
        .arg(color.name(), color.darker(115).name());
}

} // namespace fenrow::Theme
