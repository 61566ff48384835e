#pragma once

#include "CanvasScenePainter.h"

#include <QColor>
#include <QImage>
#include <QLineF>
#include <QList>
#include <QPainterPath>
#include <QPointF>
#include <QRect>
#include <QRectF>
#include <QTransform>

#include <array>
#include <span>
#include <vector>

class QPainter;

// What the canvas painter's files share: a colour, a path and the two ways
// a line is stroked. Only the painter's own files include this.
namespace fenrow::ScenePainting {

// Dash and gap lengths, in line widths.
inline constexpr std::array<double, 2> subtaskDashes{3, 2.5};
inline constexpr std::array<double, 2> linkDashes{2, 3};
// How strong a line between dimmed cards is, of its full strength.
inline constexpr double dimmedLineStrength = 0.25;

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
// The dashes, in line widths of `width`, of the line from `a` along `unit`
// between the distances `from` and `to`; the pattern begins at `a`.
void appendDashes(QList<QLineF> &segments, QPointF a, QPointF unit, double from, double to,
                  std::span<const double> dashes, double width);

void drawArrowhead(QPainter &painter, QPointF tip, QPointF source, const QColor &color);
void addArrowhead(QPainterPath &path, QPointF tip, QPointF source);

// A dash pattern of one dash and one gap, in the lines' units; for each
// line, how far along the pattern its first end stands.
struct ThinDashes {
    double dash = 0;
    double period = 0;
    QList<double> phases;
};

// Lines mapped once to the pixels of an image, each along its longer axis
// from its lower end, with the rows and columns it reaches: a layer is
// blended a strip of rows at a time, and each strip takes only the lines
// that reach it. `toPixels` may only scale (the same both ways) and move.
struct ThinLineRuns {
    struct Run {
        // Its ends, swapped to x along its longer axis when it is steep.
        QPointF a;
        QPointF b;
        bool steep = false;
        double slope = 0;
        // A dashed line's distance along its pattern at `a`, and which way
        // and how fast that distance runs per step along the axis.
        double patternAtA = 0;
        double patternPerStep = 0;
        // The rows it reaches, and the columns, in the image's pixels.
        int firstRow = 0;
        int lastRow = 0;
        double leftmost = 0;
        double rightmost = 0;
    };
    std::vector<Run> runs;
    // Pixels per unit of the lines, for the lengths of the dash pattern.
    double pixelsPerUnit = 1;

    static ThinLineRuns map(const QTransform &toPixels, const QList<QLineF> &lines, const ThinDashes *dashes);
};

// Antialiased lines at most a pixel wide, `strength` their width in pixels,
// blended straight into an opaque RGB32 image, only within its pixels
// `clip`; `toPixels` maps them to its pixels and may only scale (the same
// both ways) and move. When the image already holds them dimmed
// (`dimmedLineStrength` of each pixel's share, over the ground), `restore`
// brings them back to full strength instead of blending them again.
void blendThinLines(QImage &image, const QRect &clip, const QTransform &toPixels, const QList<QLineF> &lines,
                    QColor color, double strength, const ThinDashes *dashes = nullptr, bool restore = false);
// The same with the lines mapped already, to the pixels of a larger image
// whose row `firstRow` is this image's first: a strip of a layer.
void blendThinLines(QImage &image, const QRect &clip, const ThinLineRuns &lines, int firstRow, QColor color,
                    double strength, const ThinDashes *dashes = nullptr, bool restore = false);

// Each RGB32 pixel of `target` within `rect` the same pixel of `lines`, a
// layer of the same size and stride drawn over the opaque colour `ground`,
// faded towards that colour to `dimmedLineStrength`: every line dimmed at
// once, in one pass. Takes the bits, so that two threads may each do a
// part of one image.
void dimLines(uchar *target, const uchar *lines, qsizetype stride, const QRect &rect, QRgb ground);

// A row of `count` pixels set to `color`: a new layer's ground, the
// whole view, four pixels a store rather than one.
void fillPixels(QRgb *row, int count, QRgb color);

} // namespace fenrow::ScenePainting
