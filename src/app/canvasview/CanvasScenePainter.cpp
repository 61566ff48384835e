#include "CanvasScenePainter.h"

#include "canvas/CanvasEditor.h"
#include "canvas/CanvasGeometry.h"
#include "domain/DependencyEdge.h"
#include "domain/FileLink.h"
#include "domain/FlowFile.h"
#include "domain/FlowNode.h"
#include "domain/TaskFlow.h"
#include "formats/DocumentInput.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QLocale>
#include <QPainter>
#include <QPainterPath>
#include <QTextLayout>
#include <QVarLengthArray>

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <cmath>

namespace fenrow {

using namespace CanvasGeometry;

namespace {

constexpr double pillPaddingX = 7;
constexpr double pillGlyph = 11;
constexpr double pillGlyphGap = 4;
constexpr double maxTitleLines = 4;
// Dash and gap lengths, in line widths.
constexpr std::array<double, 2> subtaskDashes{3, 2.5};
constexpr std::array<double, 2> linkDashes{2, 3};

QFont pixelFont(int pixels, QFont::Weight weight)
{
    QFont font = QApplication::font();
    font.setPixelSize(pixels);
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

QColor withAlpha(QColor color, double alpha)
{
    color.setAlphaF(float(alpha));
    return color;
}

QPointF screenPoint(QPointF canvas, const CanvasScenePainter::ViewState &view)
{
    return canvas * view.scale + view.offset;
}

// Text and fill of a pill in the palette's terms.
std::pair<QColor, QColor> pillColors(MetaPill::Tint tint, const CanvasColors &colors)
{
    switch (tint) {
    case MetaPill::Tint::brand:
        return {colors.ramp.brand, withAlpha(colors.ramp.brand, colors.dark ? 0.2 : 0.11)};
    case MetaPill::Tint::warning:
        return {colors.warning, withAlpha(colors.warning, colors.dark ? 0.2 : 0.11)};
    case MetaPill::Tint::done:
        return {colors.done, withAlpha(colors.done, colors.dark ? 0.2 : 0.12)};
    case MetaPill::Tint::neutral:
        break;
    }
    // On a dark card the field surface is too close to the card to read.
    return {colors.secondaryText, colors.dark ? withAlpha(colors.ramp.brandBorder, 0.7) : colors.ramp.fieldSurface};
}

QPainterPath roundedRect(const QRectF &rect, double radius)
{
    QPainterPath path;
    path.addRoundedRect(rect, radius, radius);
    return path;
}

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

// Strokes the visible part of a line. Dashes are cut here into plain
// segments, where they would fall on the whole line: the raster engine
// draws plain flat-capped segments on its fast path, and a dashed pen off it.
void drawClippedLine(QPainter &painter, QPointF a, QPointF b, const QRectF &visible, std::span<const double> dashes = {})
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

} // namespace

CanvasScenePainter::CanvasScenePainter(CanvasCardContents &contents)
    : m_contents(contents), m_titleFont(pixelFont(13, QFont::DemiBold)), m_pillFont(pixelFont(11, QFont::Medium)),
      m_fileFont(pixelFont(12, QFont::Medium)), m_bannerFont(pixelFont(13, QFont::Medium))
{
}

void CanvasScenePainter::invalidate()
{
    // Cards and lines that stayed the same keep their pictures.
    m_contents.invalidate();
}

void CanvasScenePainter::invalidateAll()
{
    ++m_version;
    m_contents.invalidate();
    m_cardImages.clear();
    // A file's bytes never change under its id; only gone files leave.
    if (m_thumbnails.size() > 256)
        m_thumbnails.clear();
}

// --- layout of a card's text

CanvasScenePainter::CardLayout CanvasScenePainter::makeLayout(const CardContent &content, const FlowNode &node,
                                                               NodeSize size) const
{
    CardLayout result;
    result.version = m_version;
    result.serial = content.serial;
    result.size = size;
    result.title = node.title;
    const double innerWidth = std::max(1.0, size.width - 2 * paddingX);
    const QFontMetricsF pillMetrics(m_pillFont);
    const QFontMetricsF titleMetrics(m_titleFont);
    const double lineHeight = titleMetrics.lineSpacing();

    // Pills flow in rows at the foot of the card; pills that would leave
    // the title no line at all are left out, the least telling first.
    QList<MetaPill> pills = content.pills;
    QList<PlacedPill> placed;
    int rows = 0;
    int lines = 0;
    for (;;) {
        placed.clear();
        rows = pills.isEmpty() ? 0 : 1;
        double x = 0;
        for (const MetaPill &pill : std::as_const(pills)) {
            const double textRoom = innerWidth - 2 * pillPaddingX - pillGlyph - pillGlyphGap;
            const QString shown = pillMetrics.elidedText(pill.text, Qt::ElideRight, std::max(0.0, textRoom));
            const double width = 2 * pillPaddingX + pillGlyph + (shown.isEmpty() ? 0 : pillGlyphGap)
                + std::ceil(pillMetrics.horizontalAdvance(shown));
            if (x > 0 && x + width > innerWidth) {
                ++rows;
                x = 0;
            }
            placed.append({pill, QRectF(x, rows - 1, width, pillHeight), shown});
            x += width + pillGap;
        }
        const double pillsHeight = rows == 0 ? 0 : rows * pillHeight + (rows - 1) * pillGap + titlePillGap;
        lines = int(std::floor((size.height - 2 * paddingY - pillsHeight) / lineHeight));
        if (lines >= 1 || pills.size() <= 1)
            break;
        pills.removeLast();
    }
    lines = std::clamp(lines, 1, int(maxTitleLines));
    for (PlacedPill &pill : placed) {
        const int row = int(pill.rect.y());
        const double y = size.height - paddingY - (rows - row) * pillHeight - (rows - 1 - row) * pillGap;
        pill.rect.moveTo(paddingX + pill.rect.x(), y);
    }
    result.pills = placed;

    const double titleWidth = innerWidth - (content.hasNotes ? notesMarkSide + 6 : 0);
    const QString title = node.title.simplified();
    QTextLayout text(title, m_titleFont);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    text.setTextOption(option);
    text.beginLayout();
    for (;;) {
        QTextLine line = text.createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(titleWidth);
        if (result.titleLines.size() == lines - 1) {
            // The last line takes the rest of the title, shortened.
            result.titleLines.append(
                titleMetrics.elidedText(title.mid(line.textStart()), Qt::ElideRight, titleWidth));
            break;
        }
        result.titleLines.append(title.mid(line.textStart(), line.textLength()).trimmed());
    }
    text.endLayout();
    result.titleRect = QRectF(paddingX, paddingY, titleWidth, std::max<qsizetype>(1, result.titleLines.size()) * lineHeight);
    return result;
}

const CanvasScenePainter::CardLayout &CanvasScenePainter::layout(const TaskFlow &flow, const FlowNode &node,
                                                                  NodeSize size)
{
    const CardContent &content = m_contents.of(flow, node);
    auto found = m_layouts.find(node.id);
    if (found != m_layouts.end() && found->version == m_version && found->serial == content.serial
        && found->size == size)
        return *found;
    return *m_layouts.insert(node.id, makeLayout(content, node, size));
}

QRectF CanvasScenePainter::titleRect(const TaskFlow &flow, const FlowNode &node, NodeSize size)
{
    return layout(flow, node, size).titleRect;
}

std::optional<MetaPill> CanvasScenePainter::pillAt(const TaskFlow &flow, const FlowNode &node, NodeSize size,
                                                   QPointF pointInCard)
{
    for (const PlacedPill &pill : layout(flow, node, size).pills) {
        if (pill.rect.contains(pointInCard))
            return pill.pill;
    }
    return std::nullopt;
}

QImage CanvasScenePainter::thumbnail(const FlowFile &file)
{
    const auto found = m_thumbnails.constFind(file.id);
    if (found != m_thumbnails.cend())
        return *found;
    QImage image;
    if (const auto bytes = file.thumbnail.value())
        image.loadFromData(*bytes);
    m_thumbnails.insert(file.id, image);
    return image;
}

// --- the frame

void CanvasScenePainter::paintGrid(QPainter &painter, const CanvasColors &colors, const ViewState &view,
                                   const QRectF &exposed) const
{
    const auto grid = gridLayout(view.offset, view.scale);
    if (!grid)
        return;
    const double pitch = grid->screenPitch;
    const double half = gridDotSide / 2;
    const double firstX = grid->firstPoint.x() + std::ceil((exposed.left() - half - grid->firstPoint.x()) / pitch) * pitch;
    const double firstY = grid->firstPoint.y() + std::ceil((exposed.top() - half - grid->firstPoint.y()) / pitch) * pitch;
    painter.setPen(Qt::NoPen);
    painter.setBrush(colors.ramp.canvasGrid);
    painter.setRenderHint(QPainter::Antialiasing, false);
    QList<QRectF> dots;
    for (double y = std::max(firstY, grid->firstPoint.y()); y <= exposed.bottom() + half; y += pitch)
        for (double x = std::max(firstX, grid->firstPoint.x()); x <= exposed.right() + half; x += pitch)
            dots.append(QRectF(x - half, y - half, gridDotSide, gridDotSide));
    painter.drawRects(dots.constData(), int(dots.size()));
    painter.setRenderHint(QPainter::Antialiasing, true);
}

void CanvasScenePainter::paint(QPainter &painter, const CanvasEditor &editor, const CanvasColors &colors,
                               const ViewState &view, const QRectF &exposed)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.fillRect(exposed, colors.ramp.brandSubtle);
    if (view.grid)
        paintGrid(painter, colors, view, exposed);
    const TaskFlow *flow = editor.flow();
    if (!flow)
        return;
    const CanvasInteraction &interaction = editor.interaction();
    const double scale = view.scale > 0 ? view.scale : 1;
    const QTransform toScreen(scale, 0, 0, scale, view.offset.x(), view.offset.y());
    // Ports, grips and shadows reach a little beyond a card.
    const double margin = 24 / scale + 8;
    const QRectF visible =
        QRectF((exposed.topLeft() - view.offset) / scale, exposed.size() / scale).adjusted(-margin, -margin, margin, margin);
    const auto center = [&](const FlowNode &node) { return interaction.effectiveCenter(node.id, {node.posX, node.posY}); };
    const auto fileCenter = [&](const FlowFile &file) {
        return interaction.effectiveFileCenter(file.id, {file.posX, file.posY});
    };

    // Lines first: those of cards that move are drawn live, the rest come
    // from the layer.
    const QSet<QUuid> moving = movingCards(interaction);
    paintLineLayer(painter, editor, colors, view, moving, exposed);
    painter.setTransform(toScreen);
    if (!moving.isEmpty())
        paintLines(painter, editor, colors, visible, moving, true);
    painter.setOpacity(1);
    const std::optional<EdgeReconnect> &reconnect = interaction.edgeReconnect();

    // The reconnect preview, from the end that stays.
    if (reconnect) {
        for (const FlowNode *node : editor.visibleNodes()) {
            if (node->id != reconnect->anchorItemID)
                continue;
            const QPointF start = clipToCard(center(*node), reconnect->current, interaction.effectiveSize(*node));
            painter.setPen(QPen(colors.ramp.brand, selectedEdgeStroke, Qt::DashLine, Qt::RoundCap));
            if (reconnect->end == EdgeEnd::target) {
                painter.drawLine(start, reconnect->current);
                drawArrowhead(painter, reconnect->current, start, colors.ramp.brand);
            } else {
                painter.drawLine(reconnect->current, start);
                drawArrowhead(painter, start, reconnect->current, colors.ramp.brand);
            }
        }
    }

    // File cards, then node cards.
    for (const FlowFile *file : editor.liveFiles()) {
        if (interaction.fileFrame(*file).intersects(visible))
            paintFile(painter, editor, *file, colors, view);
    }
    for (const FlowNode *node : editor.visibleNodes()) {
        if (interaction.frame(*node).intersects(visible))
            paintNode(painter, editor, *flow, *node, colors, view);
    }
    painter.setTransform(toScreen);
    painter.setOpacity(1);

    // The connection being drawn, and the card it would land on.
    if (const auto &pending = interaction.pendingConnection()) {
        for (const FlowNode *node : editor.visibleNodes()) {
            if (node->id == pending->fromItemID) {
                const QPointF start = clipToCard(center(*node), pending->current, interaction.effectiveSize(*node));
                painter.setPen(QPen(colors.ramp.brand, edgeStroke + 0.5, Qt::SolidLine, Qt::RoundCap));
                painter.drawLine(start, pending->current);
                drawArrowhead(painter, pending->current, start, colors.ramp.brand);
            } else if (containsHalfOpen(interaction.frame(*node), pending->current)) {
                painter.setPen(QPen(colors.ramp.brand, 2));
                painter.setBrush(Qt::NoBrush);
                painter.drawPath(roundedRect(interaction.frame(*node).adjusted(-3, -3, 3, 3), cornerRadius + 3));
            }
        }
    }
    if (const auto &link = interaction.pendingFileLink()) {
        for (const FlowFile *file : editor.liveFiles()) {
            if (file->id != link->fileID)
                continue;
            const QPointF start = clipToCard(fileCenter(*file), link->current, interaction.effectiveFileSize(*file));
            painter.setPen(QPen(colors.ramp.brand, fileLinkStroke, Qt::SolidLine, Qt::FlatCap));
            drawClippedLine(painter, start, link->current, visible, linkDashes);
        }
    }
    if (const auto marquee = interaction.marquee()) {
        painter.setPen(QPen(colors.ramp.brand, 1 / scale));
        painter.setBrush(withAlpha(colors.ramp.brand, 0.15));
        painter.drawRect(*marquee);
    }

    painter.resetTransform();

    // Handles of the selected edge, above everything, at their size on screen.
    if (const auto selected = interaction.selectedEdgeID()) {
        for (const DependencyEdge *edge : flow->edges()) {
            if (edge->id != *selected || !editor.isDrawn(*edge) || reconnect)
                continue;
            const FlowNode &from = *edge->fromItem();
            const FlowNode &to = *edge->toItem();
            const EdgeLine line = EdgeLine::between(center(from), interaction.effectiveSize(from), center(to),
                                                    interaction.effectiveSize(to));
            painter.setPen(QPen(colors.ramp.brand, handleStroke));
            painter.setBrush(colors.ramp.nodeSurface);
            for (const QPointF end : {line.start, line.end})
                painter.drawEllipse(screenPoint(end, view), handleDiameter / 2, handleDiameter / 2);
        }
    }

    const QRectF viewport(QPointF(0, 0), interaction.viewportSize());
    if (const auto &rejection = interaction.rejection())
        paintBanner(painter, screenPoint(rejection->location, view), qtTrId("canvas.cycleRejection"), colors, viewport);
    if (const auto &failure = interaction.fileDropFailure()) {
        QString text;
        if (const auto *tooLarge = std::get_if<FlowFileImport::TooLarge>(&failure->failure))
            text = qtTrId("canvas.file.drop.tooLarge ")
                       .arg(failure->filename, DocumentInput::sizeText(tooLarge->byteCount, FlowFileImport::maxBytes,
                                                                       QLocale(QLocale::system())));
        else
            text = qtTrId("canvas.file.drop.failed ").arg(failure->filename);
        paintBanner(painter, screenPoint(failure->location, view), text, colors, viewport);
    }
}

QSet<QUuid> CanvasScenePainter::movingCards(const CanvasInteraction &interaction)
{
    QSet<QUuid> moving;
    if (const auto &drag = interaction.nodeDrag())
        moving = drag->itemIDs;
    if (const auto &resize = interaction.nodeResize())
        moving.insert(resize->itemID);
    if (const auto &drag = interaction.fileDrag())
        moving.insert(drag->fileID);
    if (const auto &resize = interaction.fileResize())
        moving.insert(resize->fileID);
    return moving;
}

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
        painter.setOpacity(editor.isDimmed(node) ? 0.25 : 1);
        painter.setPen(QPen(selected ? colors.ramp.brand : withAlpha(colors.secondaryText, 0.6), fileLinkStroke,
                            Qt::SolidLine, Qt::FlatCap));
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
        const QColor color = selected ? colors.ramp.brand : colors.edge;
        double opacity = editor.isDimmed(from) || editor.isDimmed(to) ? 0.25 : 1;
        if (reconnect && reconnect->edgeID == edge->id)
            opacity = 0.3;
        painter.setOpacity(opacity);
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
    key.geometry = m_contents.geometrySerial(*editor.flow());
    key.selectedEdge = interaction.selectedEdgeID();
    key.selectedLink = interaction.selectedFileLinkID();
    key.reconnecting = interaction.edgeReconnect() ? std::optional(interaction.edgeReconnect()->edgeID) : std::nullopt;
    key.moving = moving;
    key.brand = colors.ramp.brand.rgba();
    key.dark = colors.dark;
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
        if (m_lines.image.size() != pixels)
            m_lines.image = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
        m_lines.image.setDevicePixelRatio(pixelRatio);
        m_lines.image.fill(Qt::transparent);
        QPainter into(&m_lines.image);
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
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(target, m_lines.image);
    }
}

void CanvasScenePainter::paintCardBody(QPainter &painter, const CardLayout &text, const CardContent &content,
                                       const FlowNode &node, NodeSize size, const CardLook &look,
                                       const CanvasColors &colors) const
{
    const QRectF rect(0, 0, size.width, size.height);
    // Rings and borders are filled between two outlines rather than
    // stroked: the raster engine fills far faster than it strokes a curve.
    const auto band = [&](double outside, double width, const QColor &color) {
        QPainterPath ring = roundedRect(rect.adjusted(-outside - width / 2, -outside - width / 2, outside + width / 2,
                                                      outside + width / 2),
                                        cornerRadius + outside + width / 2);
        ring.addPath(roundedRect(rect.adjusted(-outside + width / 2, -outside + width / 2, outside - width / 2,
                                               outside - width / 2),
                                 std::max(0.0, cornerRadius + outside - width / 2)));
        painter.fillPath(ring, color);
    };

    // A soft shadow of two layers, lifted a little more under the pointer.
    if (!node.isDone) {
        const double lift = look.hovered || look.selected ? 1.6 : 1;
        painter.fillPath(roundedRect(rect.adjusted(-1, -0.5, 1, 2 * lift + 1.5), cornerRadius + 1),
                         withAlpha(colors.shadow, colors.shadow.alphaF() * 0.55));
        painter.fillPath(roundedRect(rect.adjusted(-0.25, 0.5, 0.25, lift + 0.5), cornerRadius), colors.shadow);
    }
    if (look.selected) {
        band(3.5, 5, withAlpha(colors.ramp.brand, 0.18));
        band(1.5, 1.5, colors.ramp.brand);
    } else if (content.actionable) {
        band(2, 4, withAlpha(colors.ramp.brand, 0.15));
        band(2, 1.5, colors.ramp.brand);
    }

    const NodeColor tag = node.color();
    const double borderWidth = tag != NodeColor::none ? 2 : 1;
    const QColor borderColor = tag != NodeColor::none ? colors.tag(tag) : colors.cardBorder;
    painter.fillPath(roundedRect(rect, cornerRadius), node.isDone ? colors.ramp.nodeSurfaceDone : colors.ramp.nodeSurface);
    if (content.dashed) {
        QPen border(borderColor, borderWidth, Qt::CustomDashLine, Qt::FlatCap);
        border.setDashPattern({4, 3});
        painter.setPen(border);
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(roundedRect(rect.adjusted(borderWidth / 2, borderWidth / 2, -borderWidth / 2, -borderWidth / 2),
                                     cornerRadius - borderWidth / 2));
    } else {
        band(-borderWidth / 2, borderWidth, borderColor);
    }

    if (!look.editing) {
        QFont font = m_titleFont;
        font.setStrikeOut(node.isDone);
        painter.setFont(font);
        painter.setPen(node.isDone ? colors.secondaryText : colors.text);
        const QFontMetricsF metrics(m_titleFont);
        double baseline = text.titleRect.top() + metrics.ascent();
        for (const QString &line : text.titleLines) {
            painter.drawText(QPointF(text.titleRect.left(), baseline), line);
            baseline += metrics.lineSpacing();
        }
    }
    if (content.hasNotes) {
        const QRectF mark(size.width - paddingX - notesMarkSide, paddingY + 2, notesMarkSide, notesMarkSide);
        CanvasGlyphs::paint(painter, mark, CanvasGlyphs::Glyph::notes, colors.secondaryText);
    }
    painter.setFont(m_pillFont);
    const QFontMetricsF pillMetrics(m_pillFont);
    for (const PlacedPill &pill : text.pills) {
        const auto [ink, fill] = pillColors(pill.pill.tint, colors);
        painter.fillPath(roundedRect(pill.rect, pillHeight / 2), fill);
        const QRectF glyph(pill.rect.left() + pillPaddingX, pill.rect.center().y() - pillGlyph / 2, pillGlyph, pillGlyph);
        CanvasGlyphs::paint(painter, glyph, pill.pill.glyph, ink);
        painter.setPen(ink);
        const double baseline = pill.rect.center().y() + (pillMetrics.ascent() - pillMetrics.descent()) / 2;
        painter.drawText(QPointF(glyph.right() + pillGlyphGap, baseline), pill.shownText);
    }
}

QImage CanvasScenePainter::cardImage(const FlowNode &node, const CardContent &content, const CardLayout &text,
                                     NodeSize size, const CardLook &look, double scale, double pixelRatio,
                                     const CanvasColors &colors, bool anyScale)
{
    CardImageKey key{m_version, content.serial, size, scale * pixelRatio, look, colors.ramp.brand.rgba(), colors.dark};
    if (CardImage *cached = m_cardImages.object(node.id)) {
        if (cached->key == key)
            return cached->image;
        CardImageKey rescaled = cached->key;
        rescaled.devicePixelsPerUnit = key.devicePixelsPerUnit;
        if (anyScale && rescaled == key)
            return cached->image;
    }
    const double device = scale * pixelRatio;
    const QSize pixels = (QSizeF(size.width + 2 * cardImageMargin, size.height + 2 * cardImageMargin) * device)
                             .toSize()
                             .expandedTo(QSize(1, 1));
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter into(&image);
        into.setRenderHint(QPainter::Antialiasing);
        into.setRenderHint(QPainter::TextAntialiasing);
        into.scale(device, device);
        into.translate(cardImageMargin, cardImageMargin);
        paintCardBody(into, text, content, node, size, look, colors);
    }
    image.setDevicePixelRatio(pixelRatio);
    m_cardImages.insert(node.id, new CardImage{key, image}, int(image.sizeInBytes() / 1024));
    return image;
}

void CanvasScenePainter::paintNode(QPainter &painter, const CanvasEditor &editor, const TaskFlow &flow,
                                   const FlowNode &node, const CanvasColors &colors, const ViewState &view)
{
    const CanvasInteraction &interaction = editor.interaction();
    const CardContent &content = m_contents.of(flow, node);
    const NodeSize size = interaction.effectiveSize(node);
    const QRectF rect = interaction.frame(node);
    const double scale = view.scale > 0 ? view.scale : 1;
    CardLook look;
    look.selected = interaction.selectedItemIDs().contains(node.id);
    look.hovered = view.hoveredCard == node.id;
    look.editing = view.editing == node.id;
    const double opacity = editor.isDimmed(node) ? 0.25 : 1;

    // The card is drawn once into an image at this scale and then only
    // copied while it stays the same; a pan or a drag elsewhere costs a copy.
    const double pixelRatio = painter.device() ? painter.device()->devicePixelRatioF() : 1;
    const QImage image =
        cardImage(node, content, layout(flow, node, size), size, look, scale, pixelRatio, colors, view.zooming);
    const QPointF corner = screenPoint(rect.topLeft() - QPointF(cardImageMargin, cardImageMargin), view);
    // Whole device pixels keep the text as crisp as it was drawn.
    const QPointF snapped(std::round(corner.x() * pixelRatio) / pixelRatio, std::round(corner.y() * pixelRatio) / pixelRatio);
    const QSizeF shown = QSizeF(size.width + 2 * cardImageMargin, size.height + 2 * cardImageMargin) * scale;
    painter.resetTransform();
    painter.setOpacity(opacity);
    if (std::abs(shown.width() - image.deviceIndependentSize().width()) < 1.0) {
        painter.drawImage(snapped, image);
    } else {
        // An image of another scale, stretched while the zoom moves.
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(QRectF(snapped, shown), image);
    }

    // Port and grip keep their size on screen.
    const bool connecting = interaction.pendingConnection() && interaction.pendingConnection()->fromItemID == node.id;
    if (content.canCollapse || look.hovered || look.selected || connecting)
        paintPort(painter, screenPoint(portAnchor(rect.center(), size), view), &content,
                  view.hoveredPort == node.id || connecting, colors);
    if (look.hovered || look.selected) {
        const QPointF gripCorner = screenPoint(rect.bottomRight(), view);
        painter.setPen(QPen(colors.secondaryText, 1.3, Qt::SolidLine, Qt::FlatCap));
        for (const double step : {4.0, 8.0})
            painter.drawLine(gripCorner + QPointF(-4, -4 - step), gripCorner + QPointF(-4 - step, -4));
    }
    painter.setOpacity(1);
}

void CanvasScenePainter::paintPort(QPainter &painter, QPointF anchor, const CardContent *content, bool hovered,
                                   const CanvasColors &colors) const
{
    const double radius = portDiameter / 2 * (hovered ? portHoverGrowth : 1);
    const bool folded = content && content->folded;
    painter.setPen(QPen(colors.ramp.brand, portStroke));
    painter.setBrush(folded ? colors.ramp.portFolded : colors.ramp.nodeSurface);
    painter.drawEllipse(anchor, radius, radius);
    if (content && content->canCollapse && !folded) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(colors.ramp.brand);
        painter.drawEllipse(anchor, 2.2, 2.2);
    }
    if (folded && content->foldedCount > 0) {
        // The count of tasks folded away, in a tag beside the port.
        const QString count = QStringLiteral("+%1").arg(content->foldedCount);
        const QFontMetricsF metrics(m_pillFont);
        const double width = std::ceil(metrics.horizontalAdvance(count)) + 12;
        const QRectF tag(anchor.x() + radius + 4, anchor.y() - 9, width, 18);
        painter.setPen(Qt::NoPen);
        // On a dark ground the folded colour is too close to the ground to read.
        painter.setBrush(colors.dark ? colors.ramp.brandBorder : colors.ramp.portFolded);
        painter.drawRoundedRect(tag, 9, 9);
        painter.setFont(m_pillFont);
        painter.setPen(colors.dark ? colors.text : QColor(Qt::white));
        painter.drawText(tag, Qt::AlignCenter, count);
    }
}

void CanvasScenePainter::paintFile(QPainter &painter, const CanvasEditor &editor, const FlowFile &file,
                                   const CanvasColors &colors, const ViewState &view)
{
    const CanvasInteraction &interaction = editor.interaction();
    const QRectF rect = interaction.fileFrame(file);
    const NodeSize size = interaction.effectiveFileSize(file);
    const bool selected = interaction.selectedFileID() == file.id;
    const bool hovered = view.hoveredCard == file.id;
    const double scale = view.scale > 0 ? view.scale : 1;
    painter.setTransform(QTransform(scale, 0, 0, scale, view.offset.x(), view.offset.y()));
    painter.setOpacity(1);

    painter.setPen(Qt::NoPen);
    painter.setBrush(colors.shadow);
    painter.drawPath(roundedRect(rect.adjusted(-0.25, 0.5, 0.25, 1.5), cornerRadius));
    if (selected) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(withAlpha(colors.ramp.brand, 0.18), 5));
        painter.drawPath(roundedRect(rect.adjusted(-3.5, -3.5, 3.5, 3.5), cornerRadius + 3.5));
        painter.setPen(QPen(colors.ramp.brand, 1.5));
        painter.drawPath(roundedRect(rect.adjusted(-1.5, -1.5, 1.5, 1.5), cornerRadius + 1.5));
    }
    painter.setPen(QPen(colors.cardBorder, 1));
    painter.setBrush(colors.ramp.brandPanel);
    painter.drawPath(roundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius - 0.5));

    const double footer = 30;
    const QRectF picture = QRectF(rect.left() + 8, rect.top() + 8, size.width - 16, size.height - 16 - footer);
    const QImage image = thumbnail(file);
    if (!image.isNull() && picture.width() > 4 && picture.height() > 4) {
        // The picture fills its frame, cut to fit, with rounded corners.
        const QSizeF scaled = QSizeF(image.size()).scaled(picture.size(), Qt::KeepAspectRatioByExpanding);
        const QRectF source((scaled.width() - picture.width()) / 2 * image.width() / scaled.width(),
                            (scaled.height() - picture.height()) / 2 * image.height() / scaled.height(),
                            picture.width() * image.width() / scaled.width(),
                            picture.height() * image.height() / scaled.height());
        painter.save();
        painter.setClipPath(roundedRect(picture, 6), Qt::IntersectClip);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(picture, image, source);
        painter.restore();
    } else {
        const double side = std::min({picture.width(), picture.height(), 44.0});
        CanvasGlyphs::paint(painter, QRectF(picture.center() - QPointF(side / 2, side / 2), QSizeF(side, side)),
                            CanvasGlyphs::Glyph::file, colors.secondaryText);
    }
    painter.setFont(m_fileFont);
    painter.setPen(colors.text);
    const QFontMetricsF metrics(m_fileFont);
    const QRectF caption(rect.left() + 12, rect.bottom() - footer, size.width - 24, footer - 4);
    painter.drawText(caption, Qt::AlignVCenter | Qt::AlignLeft,
                     metrics.elidedText(file.filename, Qt::ElideMiddle, caption.width()));

    painter.resetTransform();
    if (hovered || selected || (interaction.pendingFileLink() && interaction.pendingFileLink()->fileID == file.id))
        paintPort(painter, screenPoint(portAnchor(rect.center(), size), view), nullptr, view.hoveredPort == file.id,
                  colors);
    if (hovered || selected) {
        const QPointF corner = screenPoint(rect.bottomRight(), view);
        painter.setPen(QPen(colors.secondaryText, 1.3, Qt::SolidLine, Qt::RoundCap));
        for (const double step : {4.0, 8.0})
            painter.drawLine(corner + QPointF(-4, -4 - step), corner + QPointF(-4 - step, -4));
    }
}

void CanvasScenePainter::paintBanner(QPainter &painter, QPointF point, const QString &text, const CanvasColors &colors,
                                     const QRectF &viewport) const
{
    const QFontMetricsF metrics(m_bannerFont);
    const double glyph = 15;
    const double width = std::min(std::ceil(metrics.horizontalAdvance(text)) + glyph + 8 + 28, viewport.width() - 16);
    const double height = 34;
    QRectF banner(point.x() - width / 2, point.y() - height - 14, width, height);
    // Kept inside the view, whatever point it speaks of.
    banner.moveLeft(std::clamp(banner.left(), viewport.left() + 8, std::max(viewport.left() + 8, viewport.right() - width - 8)));
    banner.moveTop(std::clamp(banner.top(), viewport.top() + 8, std::max(viewport.top() + 8, viewport.bottom() - height - 8)));
    painter.setPen(Qt::NoPen);
    painter.setBrush(colors.shadow);
    painter.drawRoundedRect(banner.translated(0, 2), height / 2, height / 2);
    painter.setPen(QPen(colors.ramp.brandBorder, 1));
    painter.setBrush(colors.ramp.noticeSurface);
    painter.drawRoundedRect(banner, height / 2, height / 2);
    const QRectF mark(banner.left() + 14, banner.center().y() - glyph / 2, glyph, glyph);
    CanvasGlyphs::paint(painter, mark, CanvasGlyphs::Glyph::warning, colors.warning);
    painter.setFont(m_bannerFont);
    painter.setPen(colors.text);
    const QRectF textRect(mark.right() + 8, banner.top(), banner.right() - mark.right() - 22, height);
    painter.drawText(textRect, Qt::AlignVCenter | Qt::AlignLeft, metrics.elidedText(text, Qt::ElideRight, textRect.width()));
}

} // namespace fenrow
