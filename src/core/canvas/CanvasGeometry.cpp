#include "CanvasGeometry.h"

#include "NodeSizeResolver.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace fenrow {

namespace CanvasGeometry {

namespace {

double cross(QPointF a, QPointF b)
{
    return a.x() * b.y() - a.y() * b.x();
}

double length(QPointF v)
{
    return std::hypot(v.x(), v.y());
}

// Whether `point` lies in the bounding box of the segment a–b, borders
// included: the collinear case of the intersection test.
bool inBox(QPointF a, QPointF b, QPointF point)
{
    return std::min(a.x(), b.x()) <= point.x() && point.x() <= std::max(a.x(), b.x())
        && std::min(a.y(), b.y()) <= point.y() && point.y() <= std::max(a.y(), b.y());
}

bool strictlyOpposite(double a, double b)
{
    return (a > 0 && b < 0) || (a < 0 && b > 0);
}

} // namespace

QRectF frame(QPointF center, NodeSize size)
{
    return {center.x() - size.width / 2, center.y() - size.height / 2, size.width, size.height};
}

QRectF contentRectangle(std::span<const QRectF> frames)
{
    if (frames.empty())
        return {0, 0, 1, 1};
    double minX = frames.front().left();
    double minY = frames.front().top();
    double maxX = frames.front().right();
    double maxY = frames.front().bottom();
    for (const QRectF &rect : frames.subspan(1)) {
        minX = std::min(minX, rect.left());
        minY = std::min(minY, rect.top());
        maxX = std::max(maxX, rect.right());
        maxY = std::max(maxY, rect.bottom());
    }
    return {minX, minY, std::max(maxX - minX, 1.0), std::max(maxY - minY, 1.0)};
}

QRectF spanningRect(QPointF a, QPointF b)
{
    return {std::min(a.x(), b.x()), std::min(a.y(), b.y()), std::abs(a.x() - b.x()), std::abs(a.y() - b.y())};
}

double displayPitch(double scale)
{
    if (gridPitch * scale <= 0)
        return 0;
    if (gridPitch * scale >= minimumScreenPitch)
        return gridPitch;
    for (double pitch : coarsePitches) {
        if (pitch * scale >= minimumScreenPitch)
            return pitch;
    }
    return coarsestPitch;
}

std::optional<GridLayout> gridLayout(QPointF offset, double scale)
{
    const double screenPitch = displayPitch(scale) * scale;
    if (!(screenPitch > 0))
        return std::nullopt;
    return GridLayout{screenPitch,
                      {offset.x() + screenPitch * std::ceil(-offset.x() / screenPitch),
                       offset.y() + screenPitch * std::ceil(-offset.y() / screenPitch)}};
}

std::vector<QPointF> gridPoints(QPointF offset, double scale, QSizeF viewport)
{
    std::vector<QPointF> points;
    const std::optional<GridLayout> layout = gridLayout(offset, scale);
    if (!layout)
        return points;
    for (double y = layout->firstPoint.y(); y <= viewport.height(); y += layout->screenPitch) {
        for (double x = layout->firstPoint.x(); x <= viewport.width(); x += layout->screenPitch)
            points.emplace_back(x, y);
    }
    return points;
}

double snap(double value)
{
    // std::round takes halves away from zero, which is the rule here.
    return std::round(value / gridPitch) * gridPitch;
}

QPointF snappedTranslation(QPointF center, NodeSize size, QPointF translation)
{
    auto axis = [](double position, double extent, double moved) {
        return snap(position + moved - extent / 2) + extent / 2 - position;
    };
    return {axis(center.x(), size.width, translation.x()), axis(center.y(), size.height, translation.y())};
}

NodeSize resizedSize(NodeSize base, QPointF translation, bool snapToGrid)
{
    double width = base.width + translation.x();
    double height = base.height + translation.y();
    if (snapToGrid) {
        width = snap(width);
        height = snap(height);
    }
    return NodeSizeResolver::clampManual(width, height);
}

QPointF resizedCenter(QPointF center, NodeSize oldSize, NodeSize newSize)
{
    return {center.x() - oldSize.width / 2 + newSize.width / 2, center.y() - oldSize.height / 2 + newSize.height / 2};
}

QPointF clipToCard(QPointF center, QPointF toward, NodeSize size)
{
    const double dx = std::abs(toward.x() - center.x());
    const double dy = std::abs(toward.y() - center.y());
    if (dx <= degenerateLength && dy <= degenerateLength)
        return center;
    double t = dx < degenerateLength ? std::numeric_limits<double>::infinity() : (size.width / 2) / dx;
    if (dy >= degenerateLength)
        t = std::min(t, (size.height / 2) / dy);
    return center + (toward - center) * t;
}

QPointF portAnchor(QPointF center, NodeSize size)
{
    return {center.x() + size.width / 2, center.y()};
}

bool overlapsClosed(const QRectF &a, const QRectF &b)
{
    return a.left() <= b.right() && b.left() <= a.right() && a.top() <= b.bottom() && b.top() <= a.bottom();
}

bool containsHalfOpen(const QRectF &rect, QPointF point)
{
    return rect.left() <= point.x() && point.x() < rect.right() && rect.top() <= point.y()
        && point.y() < rect.bottom();
}

bool segmentsIntersect(QPointF p1, QPointF p2, QPointF p3, QPointF p4)
{
    const double d1 = cross(p4 - p3, p1 - p3);
    const double d2 = cross(p4 - p3, p2 - p3);
    const double d3 = cross(p2 - p1, p3 - p1);
    const double d4 = cross(p2 - p1, p4 - p1);
    if (strictlyOpposite(d1, d2) && strictlyOpposite(d3, d4))
        return true;
    return (d1 == 0 && inBox(p3, p4, p1)) || (d2 == 0 && inBox(p3, p4, p2)) || (d3 == 0 && inBox(p1, p2, p3))
        || (d4 == 0 && inBox(p1, p2, p4));
}

bool edgeCaught(const QRectF &rect, QPointF a, QPointF b)
{
    if (containsHalfOpen(rect, a) || containsHalfOpen(rect, b))
        return true;
    const QPointF topLeft = rect.topLeft();
    const QPointF topRight = rect.topRight();
    const QPointF bottomRight = rect.bottomRight();
    const QPointF bottomLeft = rect.bottomLeft();
    return segmentsIntersect(a, b, topLeft, topRight) || segmentsIntersect(a, b, topRight, bottomRight)
        || segmentsIntersect(a, b, bottomRight, bottomLeft) || segmentsIntersect(a, b, bottomLeft, topLeft);
}

} // namespace CanvasGeometry

EdgeLine EdgeLine::between(QPointF fromCenter, NodeSize fromSize, QPointF toCenter, NodeSize toSize)
{
    return {CanvasGeometry::clipToCard(fromCenter, toCenter, fromSize),
            CanvasGeometry::clipToCard(toCenter, fromCenter, toSize)};
}

std::array<QPointF, 3> Arrowhead::triangle() const
{
    using namespace CanvasGeometry;
    const QPointF d = tip - source;
    const double len = std::max(std::hypot(d.x(), d.y()), degenerateLength);
    const QPointF u = d / len;
    const QPointF base = tip - arrowheadLength * u;
    return {tip, QPointF(base.x() - arrowheadHalfWidth * u.y(), base.y() + arrowheadHalfWidth * u.x()),
            QPointF(base.x() + arrowheadHalfWidth * u.y(), base.y() - arrowheadHalfWidth * u.x())};
}

std::array<QPointF, 4> EdgeHitShape::corners() const
{
    using namespace CanvasGeometry;
    const QPointF d = end - start;
    const double len = std::max(std::hypot(d.x(), d.y()), degenerateLength);
    const double h = width / 2;
    const QPointF n(-d.y() * h / len, d.x() * h / len);
    return {start + n, end + n, end - n, start - n};
}

bool EdgeHitShape::contains(QPointF point) const
{
    using namespace CanvasGeometry;
    const QPointF d = end - start;
    const double len = CanvasGeometry::length(d);
    // A segment of no length has a band of no area.
    if (len < degenerateLength)
        return false;
    const QPointF u = d / len;
    const QPointF v = point - start;
    const double along = v.x() * u.x() + v.y() * u.y();
    const double across = u.x() * v.y() - u.y() * v.x();
    return along >= 0 && along <= len && std::abs(across) <= width / 2;
}

} // namespace fenrow
