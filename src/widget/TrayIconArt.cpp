#include "TrayIconArt.h"

#include "look/BrandPalette.h"
#include "shell/PreferenceChoices.h"

#include <QPainter>
#include <QPainterPath>

namespace fenrow::TrayIconArt {

namespace {

QString badgeText(qsizetype count)
{
    return count > 99 ? QStringLiteral("99+") : QString::number(count);
}

} // namespace

QColor accent(const QString &paletteRaw, bool dark)
{
    return BrandPalette::ramp(readRaw<AccentPalette>(paletteRaw), dark).brand;
}

QPixmap mark(int size, const QColor &color, std::optional<qsizetype> badge)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal unit = size / 16.0;

    // A rounded tile with a tick: Fenrow's Ready list at a glance.
    const QRectF tile(unit * 1, unit * 1, unit * 14, unit * 14);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(tile, unit * 3.5, unit * 3.5);
    QPainterPath tick;
    // Up and to the left when a badge sits in the corner.
    const qreal shift = badge && *badge > 0 ? unit * 1.4 : 0;
    tick.moveTo(unit * 4.2 - shift, unit * 8.3 - shift);
    tick.lineTo(unit * 6.8 - shift, unit * 10.8 - shift);
    tick.lineTo(unit * 11.8 - shift, unit * 5.4 - shift);
    painter.setPen(QPen(Qt::white, unit * 1.9, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(tick);

    if (badge && *badge > 0) {
        // The count over the bottom right corner, white on dark ink with a
        // white ring, readable on light and dark panels alike.
        const QString text = badgeText(*badge);
        QFont font = painter.font();
        font.setBold(true);
        font.setPixelSize(qMax(6, int(unit * (text.size() > 2 ? 5.0 : 6.6))));
        painter.setFont(font);
        const qreal height = unit * 8.5;
        const qreal width = qMax(height, QFontMetricsF(font).horizontalAdvance(text) + unit * 3);
        const QRectF pill(size - width, size - height, width, height);
        painter.setPen(QPen(Qt::white, qMax(1.0, unit * 0.9)));
        painter.setBrush(QColor(0x1F, 0x21, 0x2B));
        painter.drawRoundedRect(pill.adjusted(unit * 0.45, unit * 0.45, -unit * 0.45, -unit * 0.45), height / 2,
                                height / 2);
        painter.setPen(Qt::white);
        painter.drawText(pill, Qt::AlignCenter, text);
    }
    return pixmap;
}

QIcon icon(const QColor &color, std::optional<qsizetype> badge)
{
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64})
        icon.addPixmap(mark(size, color, badge));
    return icon;
}

} // namespace fenrow::TrayIconArt
