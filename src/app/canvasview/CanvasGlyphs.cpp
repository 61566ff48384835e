#include "CanvasGlyphs.h"

#include "look/Glyphs.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include <algorithm>

namespace fenrow::CanvasGlyphs {

namespace {

QRectF square(const QRectF &rect)
{
    const qreal side = std::min(rect.width(), rect.height());
    return QRectF(rect.center().x() - side / 2, rect.center().y() - side / 2, side, side);
}

void circleStatus(QPainter &painter, const QRectF &box, Glyph glyph, const QColor &color, qreal stroke)
{
    const qreal s = box.width();
    const QPointF c = box.center();
    const qreal r = s * 0.4;
    painter.setPen(QPen(color, stroke));
    painter.setBrush(Qt::NoBrush);
    switch (glyph) {
    case Glyph::statusPending:
        painter.drawEllipse(c, r, r);
        break;
    case Glyph::statusInProgress: {
        painter.drawEllipse(c, r, r);
        QPainterPath half;
        half.moveTo(c + QPointF(0, -r));
        half.arcTo(QRectF(c.x() - r, c.y() - r, 2 * r, 2 * r), 90, 180);
        half.closeSubpath();
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawPath(half);
        break;
    }
    case Glyph::statusPaused:
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawEllipse(c, r, r);
        painter.setBrush(Qt::white);
        painter.drawRoundedRect(QRectF(c.x() - r * 0.45, c.y() - r * 0.45, r * 0.3, r * 0.9), r * 0.1, r * 0.1);
        painter.drawRoundedRect(QRectF(c.x() + r * 0.15, c.y() - r * 0.45, r * 0.3, r * 0.9), r * 0.1, r * 0.1);
        break;
    case Glyph::statusDone: {
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawEllipse(c, r, r);
        QPainterPath tick;
        tick.moveTo(c + QPointF(-r * 0.45, 0));
        tick.lineTo(c + QPointF(-r * 0.1, r * 0.35));
        tick.lineTo(c + QPointF(r * 0.5, -r * 0.35));
        painter.setPen(QPen(Qt::white, stroke * 1.1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(tick);
        break;
    }
    default:
        break;
    }
}

} // namespace

void paint(QPainter &painter, const QRectF &rect, Glyph glyph, const QColor &color)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box = square(rect);
    const qreal s = box.width();
    const auto at = [&](qreal x, qreal y) { return QPointF(box.left() + s * x, box.top() + s * y); };
    const qreal stroke = std::max(1.2, s / 11);
    QPen pen(color, stroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);

    switch (glyph) {
    case Glyph::add:
    case Glyph::zoomIn:
        painter.drawLine(at(0.5, 0.2), at(0.5, 0.8));
        painter.drawLine(at(0.2, 0.5), at(0.8, 0.5));
        break;
    case Glyph::zoomOut:
        painter.drawLine(at(0.2, 0.5), at(0.8, 0.5));
        break;
    case Glyph::attach: {
        // A paper clip: two nested loops, slanted.
        painter.translate(box.center());
        painter.rotate(40);
        painter.translate(-box.center());
        QPainterPath clip;
        clip.moveTo(at(0.6, 0.36));
        clip.lineTo(at(0.6, 0.74));
        clip.arcTo(QRectF(at(0.4, 0.64), QSizeF(s * 0.2, s * 0.2)), 0, -180);
        clip.lineTo(at(0.4, 0.24));
        clip.arcTo(QRectF(at(0.4, 0.1), QSizeF(s * 0.3, s * 0.28)), 180, -180);
        clip.lineTo(at(0.7, 0.8));
        painter.drawPath(clip);
        break;
    }
    case Glyph::filter:
    case Glyph::filterActive: {
        const QPointF c = box.center();
        const qreal r = s * 0.44;
        if (glyph == Glyph::filterActive) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(color);
            painter.drawEllipse(c, r, r);
            painter.setPen(QPen(Qt::white, stroke, Qt::SolidLine, Qt::RoundCap));
        } else {
            painter.drawEllipse(c, r, r);
        }
        painter.drawLine(at(0.28, 0.36), at(0.72, 0.36));
        painter.drawLine(at(0.35, 0.5), at(0.65, 0.5));
        painter.drawLine(at(0.43, 0.64), at(0.57, 0.64));
        break;
    }
    case Glyph::grid: {
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        for (const qreal x : {0.22, 0.5, 0.78})
            for (const qreal y : {0.22, 0.5, 0.78})
                painter.drawEllipse(at(x, y), s * 0.09, s * 0.09);
        break;
    }
    case Glyph::arrange: {
        // One root branching to two: a tree laid out.
        painter.drawLine(at(0.22, 0.5), at(0.46, 0.5));
        QPainterPath branch;
        branch.moveTo(at(0.46, 0.5));
        branch.cubicTo(at(0.58, 0.5), at(0.58, 0.26), at(0.72, 0.26));
        branch.moveTo(at(0.46, 0.5));
        branch.cubicTo(at(0.58, 0.5), at(0.58, 0.74), at(0.72, 0.74));
        painter.drawPath(branch);
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawEllipse(at(0.18, 0.5), s * 0.1, s * 0.1);
        painter.drawEllipse(at(0.8, 0.26), s * 0.1, s * 0.1);
        painter.drawEllipse(at(0.8, 0.74), s * 0.1, s * 0.1);
        break;
    }
    case Glyph::archive:
        painter.drawRoundedRect(QRectF(at(0.1, 0.18), at(0.9, 0.38)), s * 0.05, s * 0.05);
        painter.drawRoundedRect(QRectF(at(0.16, 0.38), at(0.84, 0.86)), s * 0.06, s * 0.06);
        painter.drawLine(at(0.4, 0.54), at(0.6, 0.54));
        break;
    case Glyph::zoomToFit: {
        // Two arrows pointing out to opposite corners.
        painter.drawLine(at(0.22, 0.22), at(0.44, 0.44));
        painter.drawLine(at(0.78, 0.78), at(0.56, 0.56));
        QPainterPath heads;
        heads.moveTo(at(0.22, 0.46));
        heads.lineTo(at(0.22, 0.22));
        heads.lineTo(at(0.46, 0.22));
        heads.moveTo(at(0.78, 0.54));
        heads.lineTo(at(0.78, 0.78));
        heads.lineTo(at(0.54, 0.78));
        painter.drawPath(heads);
        break;
    }
    case Glyph::notes:
        painter.drawLine(at(0.16, 0.26), at(0.84, 0.26));
        painter.drawLine(at(0.16, 0.5), at(0.64, 0.5));
        painter.drawLine(at(0.16, 0.74), at(0.76, 0.74));
        break;
    case Glyph::due:
        painter.restore();
        Glyphs::paintMark(painter, rect, Glyphs::Mark::due, color);
        return;
    case Glyph::repeat:
        painter.restore();
        Glyphs::paintMark(painter, rect, Glyphs::Mark::repeat, color);
        return;
    case Glyph::priority:
        painter.restore();
        Glyphs::paintMark(painter, rect, Glyphs::Mark::priority, color);
        return;
    case Glyph::estimate:
        painter.restore();
        Glyphs::paintMark(painter, rect, Glyphs::Mark::estimate, color);
        return;
    case Glyph::deferred: {
        // A calendar sheet with a small clock on its corner.
        painter.drawRoundedRect(QRectF(at(0.08, 0.16), at(0.72, 0.78)), s * 0.1, s * 0.1);
        painter.drawLine(at(0.08, 0.36), at(0.72, 0.36));
        painter.drawLine(at(0.26, 0.06), at(0.26, 0.22));
        painter.drawLine(at(0.54, 0.06), at(0.54, 0.22));
        painter.setBrush(color);
        painter.setPen(Qt::NoPen);
        painter.drawEllipse(at(0.72, 0.72), s * 0.26, s * 0.26);
        painter.setPen(QPen(Qt::white, stroke * 0.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        QPainterPath hands;
        hands.moveTo(at(0.72, 0.58));
        hands.lineTo(at(0.72, 0.72));
        hands.lineTo(at(0.82, 0.78));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(hands);
        break;
    }
    case Glyph::checklist: {
        QPainterPath tick;
        tick.moveTo(at(0.12, 0.3));
        tick.lineTo(at(0.24, 0.42));
        tick.lineTo(at(0.42, 0.2));
        painter.drawPath(tick);
        painter.drawRoundedRect(QRectF(at(0.12, 0.6), at(0.36, 0.84)), s * 0.05, s * 0.05);
        painter.drawLine(at(0.54, 0.32), at(0.9, 0.32));
        painter.drawLine(at(0.54, 0.72), at(0.9, 0.72));
        break;
    }
    case Glyph::warning: {
        QPainterPath triangle;
        triangle.moveTo(at(0.5, 0.08));
        triangle.lineTo(at(0.95, 0.88));
        triangle.lineTo(at(0.05, 0.88));
        triangle.closeSubpath();
        painter.setBrush(color);
        painter.setPen(QPen(color, stroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(triangle);
        painter.setPen(QPen(Qt::white, stroke * 1.1, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(at(0.5, 0.36), at(0.5, 0.6));
        painter.drawPoint(at(0.5, 0.74));
        break;
    }
    case Glyph::emptyCanvas: {
        // Three cards joined, one line still dotted: a flow to be drawn.
        const QPointF a = at(0.2, 0.74), b = at(0.5, 0.24), c = at(0.8, 0.74);
        painter.drawLine(a, b);
        painter.drawLine(b, c);
        QPen dotted = pen;
        dotted.setDashPattern({0.1, 2.4});
        painter.setPen(dotted);
        painter.drawLine(a, c);
        painter.setPen(pen);
        painter.setBrush(color);
        for (const QPointF &p : {a, b, c})
            painter.drawEllipse(p, s * 0.08, s * 0.08);
        break;
    }
    case Glyph::trash:
        painter.drawLine(at(0.16, 0.24), at(0.84, 0.24));
        painter.drawLine(at(0.4, 0.12), at(0.6, 0.12));
        painter.drawRoundedRect(QRectF(at(0.24, 0.24), at(0.76, 0.9)), s * 0.06, s * 0.06);
        painter.drawLine(at(0.42, 0.4), at(0.42, 0.74));
        painter.drawLine(at(0.58, 0.4), at(0.58, 0.74));
        break;
    case Glyph::file: {
        QPainterPath sheet;
        sheet.moveTo(at(0.22, 0.08));
        sheet.lineTo(at(0.6, 0.08));
        sheet.lineTo(at(0.8, 0.28));
        sheet.lineTo(at(0.8, 0.92));
        sheet.lineTo(at(0.22, 0.92));
        sheet.closeSubpath();
        painter.drawPath(sheet);
        painter.drawLine(at(0.6, 0.08), at(0.6, 0.28));
        painter.drawLine(at(0.6, 0.28), at(0.8, 0.28));
        break;
    }
    case Glyph::ready: {
        painter.drawEllipse(box.center(), s * 0.4, s * 0.4);
        QPainterPath play;
        play.moveTo(at(0.42, 0.32));
        play.lineTo(at(0.68, 0.5));
        play.lineTo(at(0.42, 0.68));
        play.closeSubpath();
        painter.setBrush(color);
        painter.drawPath(play);
        break;
    }
    case Glyph::waiting: {
        // An hourglass.
        QPainterPath glass;
        glass.moveTo(at(0.26, 0.12));
        glass.lineTo(at(0.74, 0.12));
        glass.lineTo(at(0.5, 0.5));
        glass.lineTo(at(0.74, 0.88));
        glass.lineTo(at(0.26, 0.88));
        glass.lineTo(at(0.5, 0.5));
        glass.closeSubpath();
        painter.drawPath(glass);
        break;
    }
    case Glyph::statusPending:
    case Glyph::statusInProgress:
    case Glyph::statusPaused:
    case Glyph::statusDone:
        circleStatus(painter, box, glyph, color, stroke);
        break;
    }
    painter.restore();
}

QIcon icon(Glyph glyph, const QColor &color, int side)
{
    const qreal ratio = qGuiApp->devicePixelRatio();
    QPixmap pixmap(QSize(side, side) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(painter, QRectF(1, 1, side - 2, side - 2), glyph, color);
    painter.end();
    return QIcon(pixmap);
}

} // namespace fenrow::CanvasGlyphs
