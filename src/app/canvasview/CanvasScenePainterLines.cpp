#include "CanvasScenePainter.h"

#include "CanvasScenePainting.h"
#include "canvas/CanvasEditor.h"
#include "canvas/CanvasGeometry.h"
#include "domain/DependencyEdge.h"
#include "domain/FileLink.h"
#include "domain/FlowFile.h"
#include "domain/FlowNode.h"
#include "domain/TaskFlow.h"

#include <QPainter>
#include <QPainterPath>
#include <QVarLengthArray>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace fenrow {

using namespace CanvasGeometry;
using namespace ScenePainting;

namespace {

// The part of the segment from a to b inside `rect` (Liang and Barsky), as
// fractions along it. A long line that crosses the view is stroked only
// where it shows: dashes along a line thousands of units long cost more
// than everything else on screen.
std::optional<std::pair<double, double>> clipSegment(QPointF a, QPointF b, const QRectF &rect)
{
    double t0 = 0;
    double t1 = 1;
    const QPointF d = b - a;
    const std::array<std::pair<double, double>, 4> sides{{{-d.x(), a.x() - rect.left()},
                                                          {d.x(), rect.right() - a.x()},
                                                          {-d.y(), a.y() - rect.top()},
                                                          {d.y(), rect.bottom() - a.y()}}};
    for (const auto &[p, q] : sides) {
        if (p == 0) {
            if (q < 0)
                return std::nullopt;
            continue;
        }
        const double t = q / p;
        if (p < 0)
            t0 = std::max(t0, t);
        else
            t1 = std::min(t1, t);
        if (t0 > t1)
            return std::nullopt;
    }
    return std::pair(t0, t1);
}

QColor dimmed(QColor color, double opacity)
{
    if (opacity < 1)
        color.setAlphaF(float(color.alphaF() * opacity));
    return color;
}

} // namespace

namespace ScenePainting {

void drawClippedLine(QPainter &painter, QPointF a, QPointF b, const QRectF &visible, std::span<const double> dashes)
{
    const auto part = clipSegment(a, b, visible);
    if (!part)
        return;
    const QPointF d = b - a;
    if (dashes.empty()) {
        painter.drawLine(a + d * part->first, a + d * part->second);
        return;
    }
    const double length = std::hypot(d.x(), d.y());
    if (length < degenerateLength)
        return;
    const double width = std::max(painter.pen().widthF(), 1.0);
    double period = 0;
    for (const double dash : dashes)
        period += dash * width;
    const QPointF unit = d / length;
    const double from = part->first * length;
    const double to = part->second * length;
    QVarLengthArray<QLineF, 64> segments;
    // Whole periods before the visible part are skipped at once.
    double at = std::floor(from / period) * period;
    for (std::size_t i = 0; at < to; i = (i + 1) % dashes.size()) {
        const double next = at + dashes[i] * width;
        if (i % 2 == 0 && next > from)
            segments.append(QLineF(a + unit * std::max(at, from), a + unit * std::min(next, to)));
        at = next;
    }
    painter.drawLines(segments.constData(), int(segments.size()));
}

void drawArrowhead(QPainter &painter, QPointF tip, QPointF source, const QColor &color)
{
    const auto corners = Arrowhead{tip, source}.triangle();
    QPainterPath path;
    path.moveTo(corners[0]);
    path.lineTo(corners[1]);
    path.lineTo(corners[2]);
    path.closeSubpath();
    painter.fillPath(path, color);
}

} // namespace ScenePainting

// --- lines between cards and files

void CanvasScenePainter::paintLines(QPainter &painter, const CanvasEditor &editor, const CanvasColors &colors,
                                    const QRectF &visible, const QSet<QUuid> &moving, bool onlyMoving) const
{
    const TaskFlow &flow = *editor.flow();
    const CanvasInteraction &interaction = editor.interaction();
    const auto center = [&](const FlowNode &node) { return interaction.effectiveCenter(node.id, {node.posX, node.posY}); };
    const auto fileCenter = [&](const FlowFile &file) {
        return interaction.effectiveFileCenter(file.id, {file.posX, file.posY});
    };
    // Either the lines of moving cards, or all the others.
    const auto wanted = [&](const QUuid &a, const QUuid &b) {
        return onlyMoving == (moving.contains(a) || moving.contains(b));
    };

    for (const FileLink *link : flow.fileLinks()) {
        if (!editor.isDrawn(*link) || !wanted(link->file()->id, link->node()->id))
            continue;
        const FlowFile &file = *link->file();
        const FlowNode &node = *link->node();
        const EdgeLine line =
            EdgeLine::between(fileCenter(file), interaction.effectiveFileSize(file), center(node), interaction.effectiveSize(node));
        if (!visible.intersects(QRectF(line.start, line.end).normalized().adjusted(-1, -1, 1, 1)))
            continue;
        const bool selected = interaction.selectedFileLinkID() == link->id;
        const QColor color = selected ? colors.ramp.brand : withAlpha(colors.secondaryText, 0.6);
        painter.setPen(
            QPen(dimmed(color, editor.isDimmed(node) ? 0.25 : 1), fileLinkStroke, Qt::SolidLine, Qt::FlatCap));
        drawClippedLine(painter, line.start, line.end, visible, linkDashes);
    }

    const std::optional<EdgeReconnect> &reconnect = interaction.edgeReconnect();
    for (const DependencyEdge *edge : flow.edges()) {
        if (!editor.isDrawn(*edge) || !wanted(edge->fromItem()->id, edge->toItem()->id))
            continue;
        const FlowNode &from = *edge->fromItem();
        const FlowNode &to = *edge->toItem();
        const EdgeLine line =
            EdgeLine::between(center(from), interaction.effectiveSize(from), center(to), interaction.effectiveSize(to));
        if (!visible.intersects(QRectF(line.start, line.end).normalized().adjusted(-10, -10, 10, 10)))
            continue;
        const bool selected = interaction.selectedEdgeID() == edge->id;
        double opacity = editor.isDimmed(from) || editor.isDimmed(to) ? 0.25 : 1;
        if (reconnect && reconnect->edgeID == edge->id)
            opacity = 0.3;
        // Faded through the colour: a painter's opacity takes every line
        // off the raster engine's fast path.
        const QColor color = dimmed(selected ? colors.ramp.brand : colors.edge, opacity);
        // Flat caps keep plain lines on the raster engine's fast path.
        painter.setPen(QPen(color, selected ? selectedEdgeStroke : edgeStroke, Qt::SolidLine, Qt::FlatCap));
        // The line stops at the arrowhead's base, so it does not poke out.
        const QPointF d = line.end - line.start;
        const double length = std::max(std::hypot(d.x(), d.y()), degenerateLength);
        const QPointF base = line.end - d / length * std::min(arrowheadLength * 0.8, length);
        // A subtask line reads as belonging rather than following.
        drawClippedLine(painter, line.start, base, visible,
                        edge->isSubtask() ? std::span<const double>(subtaskDashes) : std::span<const double>());
        if (visible.contains(line.end))
            drawArrowhead(painter, line.end, line.start, color);
    }
}

void CanvasScenePainter::paintLineLayer(QPainter &painter, const CanvasEditor &editor, const CanvasColors &colors,
                                        const ViewState &view, const QSet<QUuid> &moving, const QRectF &exposed)
{
    const CanvasInteraction &interaction = editor.interaction();
    const double scale = view.scale > 0 ? view.scale : 1;
    const double pixelRatio = painter.device() ? painter.device()->devicePixelRatioF() : 1;
    LineLayer::Key key;
    key.version = m_version;
    key.linesVersion = m_linesVersion;
    key.geometry = m_contents.geometrySerial(*editor.flow());
    key.selectedEdge = interaction.selectedEdgeID();
    key.selectedLink = interaction.selectedFileLinkID();
    key.reconnecting = interaction.edgeReconnect() ? std::optional(interaction.edgeReconnect()->edgeID) : std::nullopt;
    key.moving = moving;
    key.brand = colors.ramp.brand.rgba();
    key.dark = colors.dark;
    key.grid = view.grid;
    key.pixelRatio = pixelRatio;

    const QSizeF viewport = interaction.viewportSize().isEmpty() ? exposed.size() : interaction.viewportSize();
    const QRectF viewArea(-view.offset / scale, viewport / scale);
    const bool sameScale = std::abs(m_lines.scale - scale) < 1e-9;
    const bool reusable = m_lines.key == key && !m_lines.image.isNull()
        && (view.zooming || (sameScale && m_lines.area.contains(viewArea)));
    if (!reusable) {
        // The layer reaches a stretch beyond the view, so a pan reuses it.
        const double reach = layerReach / scale;
        m_lines.key = key;
        m_lines.scale = scale;
        m_lines.area = viewArea.adjusted(-reach, -reach, reach, reach);
        const QSize pixels = (m_lines.area.size() * scale * pixelRatio).toSize().expandedTo(QSize(1, 1));
        // Opaque, so that copying it is a plain copy rather than a blend.
        if (m_lines.image.size() != pixels)
            m_lines.image = QImage(pixels, QImage::Format_RGB32);
        m_lines.image.setDevicePixelRatio(pixelRatio);
        m_lines.image.fill(colors.ramp.brandSubtle);
        QPainter into(&m_lines.image);
        if (view.grid) {
            ViewState ground = view;
            ground.offset = -m_lines.area.topLeft() * scale;
            paintGrid(into, colors, ground, QRectF(QPointF(), m_lines.area.size() * scale));
        }
        into.setRenderHint(QPainter::Antialiasing);
        into.setTransform(QTransform::fromScale(scale, scale).translate(-m_lines.area.left(), -m_lines.area.top()));
        paintLines(into, editor, colors, m_lines.area, moving, false);
    }
    // The layer's corner where it falls now, stretched if the zoom moved
    // on since it was drawn.
    const QRectF target(m_lines.area.topLeft() * scale + view.offset, m_lines.area.size() * scale);
    painter.resetTransform();
    painter.setOpacity(1);
    if (sameScale && reusable) {
        const QPointF corner(std::round(target.left() * pixelRatio) / pixelRatio,
                             std::round(target.top() * pixelRatio) / pixelRatio);
        painter.drawImage(corner, m_lines.image);
    } else {
        // Drawn at another scale while the zoom moves: the ground under it
        // shows where the stretched layer does not reach.
        painter.fillRect(exposed, colors.ramp.brandSubtle);
        if (view.grid)
            paintGrid(painter, colors, view, exposed);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(target, m_lines.image);
    }
}

} // namespace fenrow
