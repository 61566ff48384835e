#include "Glyphs.h"

#include "Theme.h"

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

QIcon gear(const QColor &color)
{
    return drawnIcon([&](QPainter &painter) {
        // Eight teeth round a ring, with the axle's hole.
        const QPointF centre(8, 8);
        QPainterPath teeth;
        for (int i = 0; i < 8; ++i) {
            QTransform turn;
            turn.translate(centre.x(), centre.y());
            turn.rotate(i * 45.0);
            teeth.addPolygon(turn.map(QPolygonF(QRectF(-1.3, -6.6, 2.6, 3.0))));
        }
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawPath(teeth.simplified());
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(color, 1.6));
        painter.drawEllipse(centre, 4.1, 4.1);
        painter.setPen(QPen(color, 1.3));
        painter.drawEllipse(centre, 1.5, 1.5);
    });
}

QIcon magnifier(const QColor &color)
{
    return drawnIcon([&](QPainter &painter) {
        painter.setPen(QPen(color, 1.6, Qt::SolidLine, Qt::RoundCap));
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(QPointF(6.8, 6.8), 4.3, 4.3);
        painter.setPen(QPen(color, 2.0, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(10.1, 10.1), QPointF(13.6, 13.6));
    });
}

QIcon sidebarToggle(const QColor &color)
{
    return drawnIcon([&](QPainter &painter) {
        painter.setPen(QPen(color, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(1.7, 2.7, 12.6, 10.6), 2, 2);
        painter.drawLine(QPointF(6, 2.7), QPointF(6, 13.3));
        painter.setPen(QPen(color, 1.2, Qt::SolidLine, Qt::RoundCap));
        for (const qreal y : {5.5, 7.5, 9.5})
            painter.drawLine(QPointF(3.3, y), QPointF(4.4, y));
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

QIcon readyList(const QColor &color)
{
    return drawnIcon([&](QPainter &painter) {
        painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        QPainterPath tick;
        tick.moveTo(2.2, 4.1);
        tick.lineTo(3.7, 5.6);
        tick.lineTo(6.2, 2.6);
        painter.drawPath(tick);
        for (const qreal y : {4.0, 8.5, 13.0})
            painter.drawLine(QPointF(8.5, y), QPointF(14, y));
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(color, 1.3));
        painter.drawEllipse(QPointF(4.2, 8.5), 1.6, 1.6);
        painter.drawEllipse(QPointF(4.2, 13), 1.6, 1.6);
    });
}

QIcon archiveBox(const QColor &color)
{
    return drawnIcon([&](QPainter &painter) {
        painter.setPen(QPen(color, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(2, 3, 12, 3.2), 1, 1);
        QPainterPath body;
        body.moveTo(3, 6.2);
        body.lineTo(3, 12.2);
        body.quadTo(3, 13.5, 4.3, 13.5);
        body.lineTo(11.7, 13.5);
        body.quadTo(13, 13.5, 13, 12.2);
        body.lineTo(13, 6.2);
        painter.drawPath(body);
        painter.drawLine(QPointF(6.5, 9), QPointF(9.5, 9));
    });
}

QIcon templates(const QColor &color)
{
    return drawnIcon([&](QPainter &painter) {
        painter.setPen(QPen(color, 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        // The back sheet shows only where the front one leaves it.
        QPainterPath back;
        back.moveTo(5, 2.5);
        back.lineTo(12, 2.5);
        back.quadTo(13.5, 2.5, 13.5, 4);
        back.lineTo(13.5, 11);
        painter.drawPath(back);
        painter.drawRoundedRect(QRectF(2.5, 5, 8.5, 8.5), 1.5, 1.5);
        painter.drawLine(QPointF(4.8, 8), QPointF(8.7, 8));
        painter.drawLine(QPointF(4.8, 10.6), QPointF(7.4, 10.6));
    });
}

QIcon restore(const QColor &color)
{
    return drawnIcon([&](QPainter &painter) {
        painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        // Most of a circle, open at the top left where the arrow starts.
        painter.drawArc(QRectF(3, 3, 10.5, 10.5), 150 * 16, -290 * 16);
        QPainterPath head;
        head.moveTo(2.6, 3.6);
        head.lineTo(3.6, 6.9);
        head.lineTo(6.9, 6.1);
        painter.drawPath(head);
    });
}

QIcon trash(const QColor &color)
{
    return drawnIcon([&](QPainter &painter) {
        painter.setPen(QPen(color, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        painter.drawLine(QPointF(2.5, 4.5), QPointF(13.5, 4.5));
        painter.drawLine(QPointF(6.3, 4.5), QPointF(6.7, 2.5));
        painter.drawLine(QPointF(6.7, 2.5), QPointF(9.3, 2.5));
        painter.drawLine(QPointF(9.3, 2.5), QPointF(9.7, 4.5));
        QPainterPath can;
        can.moveTo(4, 4.5);
        can.lineTo(4.8, 12.6);
        can.quadTo(4.9, 13.6, 5.9, 13.6);
        can.lineTo(10.1, 13.6);
        can.quadTo(11.1, 13.6, 11.2, 12.6);
        can.lineTo(12, 4.5);
        painter.drawPath(can);
        painter.drawLine(QPointF(6.9, 7), QPointF(7.1, 11.2));
        painter.drawLine(QPointF(9.1, 7), QPointF(8.9, 11.2));
    });
}

namespace {

// A square of side `side` centred in `rect`: symbols keep their proportions
// whatever box they get.
QRectF centredSquare(const QRectF &rect, qreal side)
{
    return QRectF(rect.center() - QPointF(side / 2, side / 2), QSizeF(side, side));
}

void paintEmptySelection(QPainter &painter, const QRectF &rect, const QColor &color, qreal stroke)
{
    const qreal side = std::min(rect.width(), rect.height()) * 0.68;
    const qreal radius = side * 0.16;
    QPen dashed(color, stroke, Qt::CustomDashLine, Qt::RoundCap);
    dashed.setDashPattern({2.2, 2.6});
    const QRectF back(rect.topLeft(), QSizeF(side, side));
    const QRectF front(rect.bottomRight() - QPointF(side, side), QSizeF(side, side));
    painter.setPen(dashed);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(back, radius, radius);
    painter.setBrush(Theme::Color::window);
    painter.setPen(QPen(color, stroke));
    painter.drawRoundedRect(front, radius, radius);
}

void paintAllDone(QPainter &painter, const QRectF &box, const QColor &color, qreal stroke)
{
    const QPointF c = box.center();
    const qreal r = box.width() * 0.45;
    painter.setPen(QPen(color, stroke));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(c, r, r);
    QPainterPath tick;
    tick.moveTo(c + QPointF(-0.42 * r, 0.02 * r));
    tick.lineTo(c + QPointF(-0.1 * r, 0.34 * r));
    tick.lineTo(c + QPointF(0.44 * r, -0.3 * r));
    painter.setPen(QPen(color, stroke * 1.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(tick);
}

void paintHourglass(QPainter &painter, const QRectF &box, const QColor &color, qreal stroke)
{
    const qreal w = box.width() * 0.58;
    const qreal h = box.height() * 0.84;
    const qreal cx = box.center().x();
    const qreal cy = box.center().y();
    const qreal l = cx - w / 2, r = cx + w / 2, t = cy - h / 2, b = cy + h / 2;
    const qreal waist = w * 0.07;

    QPainterPath glass;
    glass.moveTo(l, t);
    glass.lineTo(r, t);
    glass.quadTo(r, cy - h * 0.14, cx + waist, cy);
    glass.quadTo(r, cy + h * 0.14, r, b);
    glass.lineTo(l, b);
    glass.quadTo(l, cy + h * 0.14, cx - waist, cy);
    glass.quadTo(l, cy - h * 0.14, l, t);
    painter.setPen(QPen(color, stroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(glass);

    // Sand: most of it has run down, a little is still waiting above.
    QColor sand = color;
    sand.setAlphaF(0.35);
    painter.setPen(Qt::NoPen);
    painter.setBrush(sand);
    QPainterPath below;
    below.moveTo(l + w * 0.12, b - stroke);
    below.quadTo(cx, b - h * 0.34, r - w * 0.12, b - stroke);
    below.closeSubpath();
    painter.drawPath(below);
    QPainterPath above;
    above.moveTo(cx - w * 0.22, cy - h * 0.17);
    above.lineTo(cx + w * 0.22, cy - h * 0.17);
    above.lineTo(cx, cy - h * 0.03);
    above.closeSubpath();
    painter.drawPath(above);

    painter.setPen(QPen(color, stroke * 1.4, Qt::SolidLine, Qt::RoundCap));
    const qreal overhang = w * 0.16;
    painter.drawLine(QPointF(l - overhang, t), QPointF(r + overhang, t));
    painter.drawLine(QPointF(l - overhang, b), QPointF(r + overhang, b));
}

void paintCalendarClock(QPainter &painter, const QRectF &box, const QColor &color, qreal stroke)
{
    const qreal s = box.width();
    const QRectF sheet(box.left() + s * 0.04, box.top() + s * 0.12, s * 0.72, s * 0.66);
    painter.setPen(QPen(color, stroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(sheet, s * 0.1, s * 0.1);
    painter.drawLine(QPointF(sheet.left(), sheet.top() + s * 0.18), QPointF(sheet.right(), sheet.top() + s * 0.18));
    for (const qreal x : {sheet.left() + s * 0.2, sheet.right() - s * 0.2})
        painter.drawLine(QPointF(x, box.top() + s * 0.04), QPointF(x, sheet.top() + s * 0.08));
    // Days as dots, left clear where the clock will sit.
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    const qreal dot = s * 0.028;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 4; ++column)
            if (row < 2 || column < 2)
                painter.drawEllipse(QPointF(sheet.left() + s * (0.14 + 0.145 * column),
                                            sheet.top() + s * (0.3 + 0.12 * row)),
                                    dot, dot);

    const QPointF c(box.left() + s * 0.72, box.top() + s * 0.72);
    const qreal r = s * 0.24;
    painter.setBrush(Theme::Color::window);
    painter.setPen(QPen(color, stroke));
    painter.drawEllipse(c, r, r);
    painter.setPen(QPen(color, stroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    QPainterPath hands;
    hands.moveTo(c + QPointF(0, -r * 0.58));
    hands.lineTo(c);
    hands.lineTo(c + QPointF(r * 0.42, r * 0.2));
    painter.drawPath(hands);
}

void paintOpenBox(QPainter &painter, const QRectF &box, const QColor &color, qreal stroke)
{
    const qreal s = box.width();
    const auto at = [&](qreal x, qreal y) { return QPointF(box.left() + s * x, box.top() + s * y); };
    painter.setPen(QPen(color, stroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    // The body, and its two flaps folded open.
    QPainterPath body;
    body.moveTo(at(0.16, 0.4));
    body.lineTo(at(0.16, 0.82));
    body.quadTo(at(0.16, 0.88), at(0.22, 0.88));
    body.lineTo(at(0.78, 0.88));
    body.quadTo(at(0.84, 0.88), at(0.84, 0.82));
    body.lineTo(at(0.84, 0.4));
    body.closeSubpath();
    painter.drawPath(body);
    painter.drawLine(at(0.16, 0.4), at(0.06, 0.22));
    painter.drawLine(at(0.84, 0.4), at(0.94, 0.22));
    painter.drawLine(at(0.06, 0.22), at(0.3, 0.22));
    painter.drawLine(at(0.94, 0.22), at(0.7, 0.22));
    painter.drawLine(at(0.4, 0.58), at(0.6, 0.58));
}

void paintMagnifier(QPainter &painter, const QRectF &box, const QColor &color, qreal stroke)
{
    const qreal s = box.width();
    const QPointF c(box.left() + s * 0.42, box.top() + s * 0.42);
    const qreal r = s * 0.28;
    painter.setPen(QPen(color, stroke, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(c, r, r);
    painter.setPen(QPen(color, stroke * 1.8, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(c + QPointF(r * 0.74, r * 0.74), QPointF(box.left() + s * 0.88, box.top() + s * 0.88));
}

} // namespace

void paintSymbol(QPainter &painter, const QRectF &rect, Symbol symbol, const QColor &color)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal side = std::min(rect.width(), rect.height());
    const qreal stroke = std::max(1.5, side / 26);
    const QRectF box = centredSquare(rect, side);
    switch (symbol) {
    case Symbol::emptySelection:
        paintEmptySelection(painter, box, color, stroke);
        break;
    case Symbol::allDone:
        paintAllDone(painter, box, color, stroke);
        break;
    case Symbol::allBlocked:
        paintHourglass(painter, box, color, stroke);
        break;
    case Symbol::allDeferred:
        paintCalendarClock(painter, box, color, stroke);
        break;
    case Symbol::archiveEmpty:
        paintOpenBox(painter, box, color, stroke);
        break;
    case Symbol::noMatches:
        paintMagnifier(painter, box, color, stroke);
        break;
    }
    painter.restore();
}

void paintMark(QPainter &painter, const QRectF &rect, Mark mark, const QColor &color)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box = centredSquare(rect, std::min(rect.width(), rect.height()));
    const qreal s = box.width();
    const auto at = [&](qreal x, qreal y) { return QPointF(box.left() + s * x, box.top() + s * y); };
    QPen pen(color, std::max(1.1, s / 10), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    switch (mark) {
    case Mark::flow: {
        // One task leading to two: a flow in miniature.
        painter.drawLine(at(0.3, 0.3), at(0.72, 0.26));
        painter.drawLine(at(0.3, 0.3), at(0.72, 0.74));
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawEllipse(at(0.26, 0.3), s * 0.15, s * 0.15);
        painter.drawEllipse(at(0.76, 0.26), s * 0.13, s * 0.13);
        painter.drawEllipse(at(0.76, 0.74), s * 0.13, s * 0.13);
        break;
    }
    case Mark::due: {
        const QRectF sheet(at(0.1, 0.16), at(0.9, 0.9));
        painter.drawRoundedRect(sheet, s * 0.14, s * 0.14);
        painter.drawLine(at(0.1, 0.4), at(0.9, 0.4));
        painter.drawLine(at(0.32, 0.06), at(0.32, 0.24));
        painter.drawLine(at(0.68, 0.06), at(0.68, 0.24));
        break;
    }
    case Mark::priority: {
        painter.drawLine(at(0.22, 0.08), at(0.22, 0.94));
        QPainterPath flag;
        flag.moveTo(at(0.22, 0.12));
        flag.lineTo(at(0.84, 0.12));
        flag.lineTo(at(0.68, 0.34));
        flag.lineTo(at(0.84, 0.56));
        flag.lineTo(at(0.22, 0.56));
        flag.closeSubpath();
        painter.setBrush(color);
        painter.drawPath(flag);
        break;
    }
    case Mark::estimate: {
        painter.drawEllipse(at(0.5, 0.5), s * 0.42, s * 0.42);
        QPainterPath hands;
        hands.moveTo(at(0.5, 0.24));
        hands.lineTo(at(0.5, 0.5));
        hands.lineTo(at(0.7, 0.6));
        painter.drawPath(hands);
        break;
    }
    case Mark::notes: {
        painter.drawRoundedRect(QRectF(at(0.14, 0.06), at(0.86, 0.94)), s * 0.12, s * 0.12);
        for (const qreal y : {0.32, 0.5, 0.68})
            painter.drawLine(at(0.32, y), at(y < 0.6 ? 0.68 : 0.54, y));
        break;
    }
    case Mark::repeat: {
        // Two arrows chasing each other round.
        const QRectF ring(at(0.12, 0.12), at(0.88, 0.88));
        painter.drawArc(ring, 20 * 16, 140 * 16);
        painter.drawArc(ring, 200 * 16, 140 * 16);
        QPainterPath heads;
        heads.moveTo(at(0.62, 0.1));
        heads.lineTo(at(0.86, 0.34));
        heads.lineTo(at(0.96, 0.08));
        heads.moveTo(at(0.38, 0.9));
        heads.lineTo(at(0.14, 0.66));
        heads.lineTo(at(0.04, 0.92));
        painter.drawPath(heads);
        break;
    }
    case Mark::files: {
        // A paper clip: two loops, one inside the other.
        QPainterPath clip;
        clip.moveTo(at(0.62, 0.3));
        clip.lineTo(at(0.62, 0.74));
        clip.arcTo(QRectF(at(0.3, 0.6), at(0.62, 0.9)), 0, -180);
        clip.lineTo(at(0.3, 0.2));
        clip.arcTo(QRectF(at(0.3, 0.04), at(0.78, 0.36)), 180, -180);
        clip.lineTo(at(0.78, 0.7));
        painter.drawPath(clip);
        break;
    }
    }
    painter.restore();
}

} // namespace fenrow::Glyphs
