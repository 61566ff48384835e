#include "Glyphs.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>

#include <functional>

namespace fenrow::Glyphs {

namespace {

constexpr int iconSize = 16;

QPixmap canvas(int size)
{
    const qreal ratio = qGuiApp->devicePixelRatio();
    QPixmap pixmap(QSize(size, size) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    return pixmap;
}

QIcon drawnIcon(const std::function<void(QPainter &)> &draw)
{
    QPixmap pixmap = canvas(iconSize);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter);
    return QIcon(pixmap);
}

} // namespace

QIcon plus(const QColor &color)
{
    return drawnIcon([&](QPainter &painter) {
        painter.setPen(QPen(color, 1.7, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(8, 3.5), QPointF(8, 12.5));
        painter.drawLine(QPointF(3.5, 8), QPointF(12.5, 8));
    });
}

QIcon quit(const QColor &color)
{
    return drawnIcon([&](QPainter &painter) {
        painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        // A door frame open to the right, and an arrow leaving through it.
        QPainterPath frame;
        frame.moveTo(9, 3);
        frame.lineTo(3.5, 3);
        frame.lineTo(3.5, 13);
        frame.lineTo(9, 13);
        painter.drawPath(frame);
        painter.drawLine(QPointF(7, 8), QPointF(13.5, 8));
        QPainterPath head;
        head.moveTo(11, 5.5);
        head.lineTo(13.5, 8);
        head.lineTo(11, 10.5);
        painter.drawPath(head);
    });
}

QPixmap brandMark(int size)
{
    QPixmap pixmap = canvas(size);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal s = size;
    QLinearGradient fill(0, 0, s, s);
    fill.setColorAt(0, QColor(0x5b, 0x78, 0xe6));
    fill.setColorAt(1, QColor(0x3a, 0x55, 0xc2));
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(0, 0, s, s), s * 0.26, s * 0.26);

    // A diamond of four tasks: one first, two side by side, one last.
    const QPointF top(s * 0.5, s * 0.24);
    const QPointF left(s * 0.26, s * 0.5);
    const QPointF right(s * 0.74, s * 0.5);
    const QPointF bottom(s * 0.5, s * 0.76);
    painter.setPen(QPen(QColor(255, 255, 255, 200), s * 0.065, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(top, left);
    painter.drawLine(top, right);
    painter.drawLine(left, bottom);
    painter.drawLine(right, bottom);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    const qreal radius = s * 0.1;
    for (const QPointF &node : {top, left, right, bottom})
        painter.drawEllipse(node, radius, radius);
    return pixmap;
}

void paintEmptySelection(QPainter &painter, const QRectF &rect, const QColor &color)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal side = std::min(rect.width(), rect.height()) * 0.68;
    const qreal radius = side * 0.16;
    QPen dashed(color, std::max(1.5, side / 26), Qt::CustomDashLine, Qt::RoundCap);
    dashed.setDashPattern({2.2, 2.6});
    const QRectF back(rect.topLeft(), QSizeF(side, side));
    const QRectF front(rect.bottomRight() - QPointF(side, side), QSizeF(side, side));
    painter.setPen(dashed);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(back, radius, radius);
    painter.setBrush(QColor(255, 255, 255));
    painter.setPen(QPen(color, dashed.widthF()));
    painter.drawRoundedRect(front, radius, radius);
    painter.restore();
}

} // namespace fenrow::Glyphs
