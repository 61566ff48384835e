#pragma once

#include "CanvasScenePainter.h"

#include <QColor>
#include <QImage>
#include <QLineF>
#include <QList>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QTransform>

#include <array>
#include <span>

class QPainter;

// What the canvas painter's files share: a colour, a path and the two ways
// a line is stroked. Only the painter's own files include this.
namespace fenrow::ScenePainting {

// Dash and gap lengths, in line widths.
inline constexpr std::array<double, 2> subtaskDashes{3, 2.5};
inline constexpr std::array<double, 2> linkDashes{2, 3};

inline QColor withAlpha(QColor color, double alpha)
{
    color.setAlphaF(float(alpha));
    return color;
}

inline QPointF screenPoint(QPointF canvas, const CanvasScenePainter::ViewState &view)
{
    return canvas * view.scale + view.offset;
}

inline QPainterPath roundedRect(const QRectF &rect, double radius)
{
    QPainterPath path;
    path.addRoundedRect(rect, radius, radius);
    return path;
}

// Strokes the visible part of a line. Dashes are cut here into plain
// segments, where they would fall on the whole line: the raster engine
// draws plain flat-capped segments on its fast path, and a dashed pen off it.
void drawClippedLine(QPainter &painter, QPointF a, QPointF b, const QRectF &visible, std::span<const double> dashes = {});
// The same segments added to `segments`, for a pen `penWidth` wide.
void appendClippedLine(QList<QLineF> &segments, QPointF a, QPointF b, const QRectF &visible,
                       std::span<const double> dashes, double penWidth);

void drawArrowhead(QPainter &painter, QPointF tip, QPointF source, const QColor &color);
void addArrowhead(QPainterPath &path, QPointF tip, QPointF source);

// Antialiased lines at most a pixel wide, `strength` their width in pixels,
// blended straight into an opaque RGB32 image; `toPixels` maps them to its
// pixels and may only scale and move.
void blendThinLines(QImage &image, const QTransform &toPixels, const QList<QLineF> &lines, QColor color,
                    double strength);

} // namespace fenrow::ScenePainting
