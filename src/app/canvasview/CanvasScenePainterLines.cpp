#include "CanvasScenePainter.h"

#include "CanvasScenePainting.h"
#include "canvas/CanvasEditor.h"
#include "canvas/CanvasGeometry.h"
#include "domain/DependencyEdge.h"
#include "domain/FileLink.h"
#include "domain/FlowFile.h"
#include "domain/FlowNode.h"
#include "domain/TaskFlow.h"

#include <QList>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

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

// Lines gathered by pen and stroked in one call per pen, with their
// arrowheads filled as one path per colour, rather than a call and a
// stroker's set-up for each of thousands of lines and dashes.
class LineBatches
{
public:
    QList<QLineF> &lines(const QPen &pen)
    {
        for (Batch &batch : m_batches)
            if (batch.pen == pen)
                return batch.lines;
        m_batches.append(Batch{pen, {}, noHeads()});
        return m_batches.last().lines;
    }

    QPainterPath &heads(const QColor &color)
    {
        for (Batch &batch : m_batches)
            if (batch.pen.color() == color)
                return batch.heads;
        // Arrowheads of a colour no line has, as for a line too short to show.
        m_batches.append(Batch{QPen(color, 0, Qt::NoPen), {}, noHeads()});
        return m_batches.last().heads;
    }

    // Lines under arrowheads, as when each line was drawn with its head.
    // Into an opaque layer, lines at most a pixel wide are blended directly.
    void draw(QPainter &painter, QImage *layer) const
    {
        const QTransform &transform = painter.transform();
        const double pixelRatio = layer ? layer->devicePixelRatio() : 1;
        const QTransform toPixels = transform * QTransform::fromScale(pixelRatio, pixelRatio);
        const bool direct = layer && layer->format() == QImage::Format_RGB32 && !painter.hasClipping() &&
                            transform.type() <= QTransform::TxScale && qFuzzyCompare(toPixels.m11(), toPixels.m22());
        for (const Batch &batch : m_batches) {
            if (batch.lines.isEmpty())
                continue;
            const double pixels = batch.pen.widthF() * toPixels.m11();
            if (direct && batch.pen.style() == Qt::SolidLine && pixels <= 1) {
                blendThinLines(*layer, toPixels, batch.lines, batch.pen.color(), pixels);
                continue;
            }
            painter.setPen(batch.pen);
            painter.drawLines(batch.lines.constData(), int(batch.lines.size()));
        }
        for (const Batch &batch : m_batches)
            if (!batch.heads.isEmpty())
                painter.fillPath(batch.heads, batch.pen.color());
    }

private:
    // Overlapping heads are one shape, not holes in each other.
    static QPainterPath noHeads()
    {
        QPainterPath path;
        path.setFillRule(Qt::WindingFill);
        return path;
    }

    struct Batch {
        QPen pen;
        QList<QLineF> lines;
        QPainterPath heads;
    };
    QList<Batch> m_batches;
};

QColor dimmed(QColor color, double opacity)
{
    if (opacity < 1)
        color.setAlphaF(float(color.alphaF() * opacity));
    return color;
}

} // namespace

namespace ScenePainting {

void appendClippedLine(QList<QLineF> &segments, QPointF a, QPointF b, const QRectF &visible,
                       std::span<const double> dashes, double penWidth)
{
    const auto part = clipSegment(a, b, visible);
    if (!part)
        return;
    const QPointF d = b - a;
    if (dashes.empty()) {
        segments.append(QLineF(a + d * part->first, a + d * part->second));
        return;
    }
    const double length = std::hypot(d.x(), d.y());
    if (length < degenerateLength)
        return;
    const double width = std::max(penWidth, 1.0);
    double period = 0;
    for (const double dash : dashes)
        period += dash * width;
    const QPointF unit = d / length;
    const double from = part->first * length;
    const double to = part->second * length;
    // Whole periods before the visible part are skipped at once.
    double at = std::floor(from / period) * period;
    for (std::size_t i = 0; at < to; i = (i + 1) % dashes.size()) {
        const double next = at + dashes[i] * width;
        if (i % 2 == 0 && next > from)
            segments.append(QLineF(a + unit * std::max(at, from), a + unit * std::min(next, to)));
        at = next;
    }
}

void drawClippedLine(QPainter &painter, QPointF a, QPointF b, const QRectF &visible, std::span<const double> dashes)
{
    QList<QLineF> segments;
    appendClippedLine(segments, a, b, visible, dashes, painter.pen().widthF());
    painter.drawLines(segments.constData(), int(segments.size()));
}

// A column or row at a time, two pixels shared by how near each lies to
// the line. The raster engine's stroker sends every pixel of such a line
// through its blending on its own, which made a new layer of long lines
// take 60 to 140 ms. The image is walked in bands of rows that stay in the
// cache: a layer is larger than it, and a steep line meets a new row at
// every pixel.
void blendThinLines(QImage &image, const QTransform &toPixels, const QList<QLineF> &lines, QColor color,
                    double strength)
{
    constexpr int bandRows = 32;
    const int width = image.width();
    const int height = image.height();
    uchar *bits = image.bits();
    const qsizetype stride = image.bytesPerLine();
    const int alpha = int(std::lround(std::clamp(color.alphaF() * strength, 0.0, 1.0) * 256));
    const uint source = color.rgb();

    // Each line along its longer axis, from its lower end.
    struct Run {
        QPointF a;
        QPointF b;
        bool steep;
        double slope;
    };
    std::vector<Run> runs;
    runs.reserve(std::size_t(lines.size()));
    std::vector<std::vector<int>> bands(std::size_t((height + bandRows - 1) / bandRows));
    for (const QLineF &line : lines) {
        QPointF a = toPixels.map(line.p1());
        QPointF b = toPixels.map(line.p2());
        const int top = std::max(int(std::floor(std::min(a.y(), b.y()))) - 1, 0);
        const int bottom = std::min(int(std::ceil(std::max(a.y(), b.y()))) + 1, height - 1);
        if (top > bottom)
            continue;
        const bool steep = std::abs(b.y() - a.y()) > std::abs(b.x() - a.x());
        if (steep) {
            a = a.transposed();
            b = b.transposed();
        }
        if (a.x() > b.x())
            std::swap(a, b);
        const double run = b.x() - a.x();
        // A point draws nothing, as with flat caps.
        if (run <= 0)
            continue;
        for (int band = top / bandRows; band <= bottom / bandRows; ++band)
            bands[std::size_t(band)].push_back(int(runs.size()));
        runs.push_back(Run{a, b, steep, (b.y() - a.y()) / run});
    }

    for (std::size_t band = 0; band < bands.size(); ++band) {
        const int rowFrom = int(band) * bandRows;
        const int rowTo = std::min(rowFrom + bandRows, height);
        // A pixel moved towards the colour by f of 256.
        const auto plot = [&](int x, int y, int f) {
            if (x < 0 || y < rowFrom || x >= width || y >= rowTo || f <= 0)
                return;
            QRgb &pixel = reinterpret_cast<QRgb *>(bits + y * stride)[x];
            const QRgb d = pixel;
            const uint rb = ((source & 0xff00ff) * f + (d & 0xff00ff) * (256 - f)) >> 8;
            const uint ag = ((source >> 8) & 0xff00ff) * f + ((d >> 8) & 0xff00ff) * (256 - f);
            pixel = (rb & 0xff00ff) | (ag & 0xff00ff00);
        };
        for (const int index : bands[band]) {
            const Run &line = runs[std::size_t(index)];
            const QPointF &a = line.a;
            const QPointF &b = line.b;
            int first = std::max(int(std::floor(a.x())), 0);
            int last = std::min(int(std::ceil(b.x())), line.steep ? height : width);
            if (line.steep) {
                first = std::max(first, rowFrom);
                last = std::min(last, rowTo);
            } else if (line.slope != 0) {
                // The columns where the line is within a pixel of the band.
                const double x1 = a.x() + (rowFrom - 1 - a.y()) / line.slope;
                const double x2 = a.x() + (rowTo + 1 - a.y()) / line.slope;
                first = std::max(first, int(std::floor(std::min(x1, x2))) - 1);
                last = std::min(last, int(std::ceil(std::max(x1, x2))) + 1);
            }
            // Columns the line crosses whole are stepped in 1/65536ths of a
            // pixel; the two ends share their column with what is beside them.
            const int wholeFrom = int(std::ceil(a.x()));
            const int wholeTo = int(std::floor(b.x()));
            for (int i = first; i < last;) {
                if (i >= wholeFrom && i < wholeTo) {
                    const int end = std::min(wholeTo, last);
                    qint64 across = qint64(std::floor((a.y() + (i + 0.5 - a.x()) * line.slope - 0.5) * 65536));
                    const qint64 step = std::llround(line.slope * 65536);
                    if (line.steep) {
                        for (; i < end; ++i, across += step) {
                            const int below = (int((across >> 8) & 255) * alpha) >> 8;
                            plot(int(across >> 16), i, alpha - below);
                            plot(int(across >> 16) + 1, i, below);
                        }
                    } else {
                        for (; i < end; ++i, across += step) {
                            const int below = (int((across >> 8) & 255) * alpha) >> 8;
                            plot(i, int(across >> 16), alpha - below);
                            plot(i, int(across >> 16) + 1, below);
                        }
                    }
                    continue;
                }
                // The part of this column the line spans, and its height at the middle.
                const double from = std::max(a.x(), double(i));
                const double to = std::min(b.x(), double(i + 1));
                const double share = to - from;
                const int column = i++;
                if (share <= 0)
                    continue;
                // In 256ths of a pixel: the row or column above, and how near the one below is.
                const int across = int(std::floor((a.y() + ((from + to) / 2 - a.x()) * line.slope - 0.5) * 256));
                const int coverage = int(share * alpha + 0.5);
                const int below = ((across & 255) * coverage) >> 8;
                if (line.steep) {
                    plot(across >> 8, column, coverage - below);
                    plot((across >> 8) + 1, column, below);
                } else {
                    plot(column, across >> 8, coverage - below);
                    plot(column, (across >> 8) + 1, below);
                }
            }
        }
    }
}

void addArrowhead(QPainterPath &path, QPointF tip, QPointF source)
{
    const auto corners = Arrowhead{tip, source}.triangle();
    path.moveTo(corners[0]);
    path.lineTo(corners[1]);
    path.lineTo(corners[2]);
    path.closeSubpath();
}

void drawArrowhead(QPainter &painter, QPointF tip, QPointF source, const QColor &color)
{
    QPainterPath path;
    addArrowhead(path, tip, source);
    painter.fillPath(path, color);
}

} // namespace ScenePainting

// --- lines between cards and files

void CanvasScenePainter::paintLines(QPainter &painter, const CanvasEditor &editor, const CanvasColors &colors,
                                    const QRectF &visible, const QSet<QUuid> &moving, bool onlyMoving,
                                    QImage *layer) const
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

    LineBatches batches;
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
        appendClippedLine(batches.lines(QPen(dimmed(color, editor.isDimmed(node) ? 0.25 : 1), fileLinkStroke,
                                             Qt::SolidLine, Qt::FlatCap)),
                          line.start, line.end, visible, linkDashes, fileLinkStroke);
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
        const double width = selected ? selectedEdgeStroke : edgeStroke;
        // The line stops at the arrowhead's base, so it does not poke out.
        const QPointF d = line.end - line.start;
        const double length = std::max(std::hypot(d.x(), d.y()), degenerateLength);
        const QPointF base = line.end - d / length * std::min(arrowheadLength * 0.8, length);
        // A subtask line reads as belonging rather than following.
        appendClippedLine(batches.lines(QPen(color, width, Qt::SolidLine, Qt::FlatCap)), line.start, base, visible,
                          edge->isSubtask() ? std::span<const double>(subtaskDashes) : std::span<const double>(),
                          width);
        if (visible.contains(line.end))
            addArrowhead(batches.heads(color), line.end, line.start);
    }
    batches.draw(painter, layer);
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
        paintLines(into, editor, colors, m_lines.area, moving, false, &m_lines.image);
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
