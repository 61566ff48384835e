#pragma once

#include "NodeSize.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <array>
#include <optional>
#include <span>
#include <vector>

namespace fenrow {

// The shapes of the canvas as numbers: card frames, the grid, snapping,
// edge lines with their arrowheads and hit areas, ports, and what a rubber
// band catches. All measures are canvas units unless a name says screen; a
// card is placed by its centre and y grows downward.
namespace CanvasGeometry {

inline constexpr double gridPitch = 30;
// Dots closer than this on screen are thinned out to a coarser pitch.
inline constexpr double minimumScreenPitch = 16;
inline constexpr std::array<double, 5> coarsePitches{60, 120, 240, 480, 960};
inline constexpr double coarsestPitch = 1920;
inline constexpr double gridDotSide = 2; // screen

inline constexpr double arrowheadLength = 9;
inline constexpr double arrowheadHalfWidth = 5;
// Below this a length counts as zero, so that no division blows up.
inline constexpr double degenerateLength = 0.0001;

inline constexpr double edgeStroke = 1.5;
inline constexpr double selectedEdgeStroke = 2.5;
inline constexpr double fileLinkStroke = 2.0;
// Edges and file links take clicks in a band this wide, at any zoom.
inline constexpr double hitWidth = 24;
inline constexpr double hitOpacity = 0.001;

// Ports, edge handles and the resize grip keep their size on screen.
inline constexpr double portDiameter = 14;
inline constexpr double portStroke = 1.5;
inline constexpr double portHoverGrowth = 1.3;
inline constexpr double handleDiameter = 13;
inline constexpr double handleStroke = 1.5;
inline constexpr double handleHitSide = 24;
inline constexpr double resizeGripSide = 16;

QRectF frame(QPointF center, NodeSize size);

// The rectangle around all frames, never thinner than 1 on an axis; a 1 × 1
// square at the origin when there are none.
QRectF contentRectangle(std::span<const QRectF> frames);

// The rectangle between two corners, whichever way the pointer went.
QRectF spanningRect(QPointF a, QPointF b);

// The grid pitch drawn at `scale`, in canvas units: 30 unless its dots
// would crowd closer than 16 on screen. 0 when nothing can be drawn.
double displayPitch(double scale);
struct GridLayout {
    double screenPitch = 0;
    // The grid point nearest to the view's top left corner, inside the view.
    QPointF firstPoint;
};
std::optional<GridLayout> gridLayout(QPointF offset, double scale);
// The centres of the grid dots on screen within a view of `viewport`.
std::vector<QPointF> gridPoints(QPointF offset, double scale, QSizeF viewport);

// The nearest multiple of the grid pitch, halves away from zero.
double snap(double value);
// The translation that puts a dragged card's top left corner on the grid.
QPointF snappedTranslation(QPointF center, NodeSize size, QPointF translation);
// A card's size after its grip moved by `translation` (canvas units):
// snapped per side when asked, then held to the card limits.
NodeSize resizedSize(NodeSize base, QPointF translation, bool snapToGrid);
// The centre that keeps the top left corner in place across a resize.
QPointF resizedCenter(QPointF center, NodeSize oldSize, NodeSize newSize);

// Where the ray from `center` towards `toward` leaves the card around
// `center`; corners count as square.
QPointF clipToCard(QPointF center, QPointF toward, NodeSize size);

// The middle of a card's right border, where connections start.
QPointF portAnchor(QPointF center, NodeSize size);

// Touching counts: the rubber band's test against cards.
bool overlapsClosed(const QRectF &a, const QRectF &b);
// Left and top borders inside, right and bottom outside.
bool containsHalfOpen(const QRectF &rect, QPointF point);
bool segmentsIntersect(QPointF p1, QPointF p2, QPointF p3, QPointF p4);
// Whether a rubber band catches the segment between two card centres.
bool edgeCaught(const QRectF &rect, QPointF a, QPointF b);

} // namespace CanvasGeometry

enum class EdgeEnd { source, target };

// A straight edge between the borders of its two cards.
struct EdgeLine {
    QPointF start;
    QPointF end;

    // Both ends clipped to their cards, so the arrow touches the border.
    static EdgeLine between(QPointF fromCenter, NodeSize fromSize, QPointF toCenter, NodeSize toSize);
    friend bool operator==(const EdgeLine &, const EdgeLine &) = default;
};

// The filled triangle at an edge's end, pointing away from `source`.
struct Arrowhead {
    QPointF tip;
    QPointF source;

    // The tip, then the two corners of the base.
    std::array<QPointF, 3> triangle() const;
};

// The invisible band around an edge or file link that takes its clicks.
struct EdgeHitShape {
    QPointF start;
    QPointF end;
    double width = CanvasGeometry::hitWidth;

    std::array<QPointF, 4> corners() const;
    bool contains(QPointF point) const;
};

} // namespace fenrow
