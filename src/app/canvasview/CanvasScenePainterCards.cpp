#include "CanvasScenePainter.h"

#include "CanvasScenePainting.h"
#include "canvas/CanvasEditor.h"
#include "canvas/CanvasGeometry.h"
#include "domain/FlowFile.h"
#include "domain/FlowNode.h"
#include "domain/TaskFlow.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace fenrow {

using namespace CanvasGeometry;
using namespace ScenePainting;

namespace {

constexpr double pillPaddingX = 7;
constexpr double pillGlyph = 11;
constexpr double pillGlyphGap = 4;
constexpr double maxTitleLines = 4;

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

} // namespace

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
            const std::pair<QString, double> fitting(pill.text, std::max(0.0, textRoom));
            auto measured = m_pillTexts.constFind(fitting);
            if (measured == m_pillTexts.cend()) {
                // Kept across flows; names of people and places could make it grow without end.
                if (m_pillTexts.size() >= 8192)
                    m_pillTexts.clear();
                const QString shortened = pillMetrics.elidedText(fitting.first, Qt::ElideRight, fitting.second);
                measured = m_pillTexts.insert(fitting, {shortened, pillMetrics.horizontalAdvance(shortened)});
            }
            const QString &shown = measured->first;
            const double width =
                2 * pillPaddingX + pillGlyph + (shown.isEmpty() ? 0 : pillGlyphGap) + std::ceil(measured->second);
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
    // A line's glyphs, whose baseline starts at `origin`, moved to the
    // title's left on its row.
    int titleRows = 0;
    const auto place = [&](const QList<QGlyphRun> &runs, double naturalWidth, QPointF origin = {}) {
        // Each run is kept from its leftmost glyph on the baseline, where a
        // strike through is drawn from (right-to-left text lists its glyphs
        // rightmost first).
        const double baseline = paddingY + titleMetrics.ascent() + titleRows * lineHeight;
        const QPointF shift(paddingX, baseline);
        for (QGlyphRun run : runs) {
            QList<QPointF> positions = run.positions();
            if (positions.isEmpty())
                continue;
            const QPointF first = *std::min_element(positions.cbegin(), positions.cend(),
                                                    [](QPointF a, QPointF b) { return a.x() < b.x(); });
            for (QPointF &position : positions)
                position -= first;
            run.setPositions(positions);
            result.titleRuns.append({first - origin + shift, run});
        }
        const double strike = baseline - titleMetrics.strikeOutPos();
        result.titleStrikes.append(QLineF(paddingX, strike, paddingX + naturalWidth, strike));
        ++titleRows;
    };
    // The glyphs of a laid out line of `text`, without the spaces it ends with.
    const auto placeLine = [&](const QTextLine &line, const QString &text) {
        qsizetype end = line.textStart() + line.textLength();
        while (end > line.textStart() && text.at(end - 1).isSpace())
            --end;
        place(line.glyphRuns(line.textStart(), int(end - line.textStart())), line.naturalTextWidth(),
              QPointF(line.x(), line.y() + line.ascent()));
    };
    // The last line takes the rest of the title, shortened.
    const auto placeRest = [&](qsizetype start) {
        const QString rest = titleMetrics.elidedText(title.mid(start), Qt::ElideRight, titleWidth);
        QTextLayout shortened(rest, m_titleFont);
        placeLine(TitleWords::oneLine(shortened), rest);
    };
    if (const auto fromWords = m_titleWords.lines(title, titleWidth, lines)) {
        for (const TitleWords::Line &line : fromWords->lines)
            place(line.runs, line.width);
        if (fromWords->restStart)
            placeRest(*fromWords->restStart);
    } else {
        QTextLayout text(title, m_titleFont);
        // Shaped glyphs are otherwise dropped at the end of the layout, and
        // taking the runs would shape the title again.
        text.setCacheEnabled(true);
        QTextOption option;
        option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        text.setTextOption(option);
        text.beginLayout();
        QList<QTextLine> whole;
        std::optional<qsizetype> rest;
        for (;;) {
            QTextLine line = text.createLine();
            if (!line.isValid())
                break;
            line.setLineWidth(titleWidth);
            if (whole.size() == lines - 1) {
                rest = line.textStart();
                break;
            }
            whole.append(line);
        }
        text.endLayout();
        for (const QTextLine &line : std::as_const(whole))
            placeLine(line, title);
        if (rest)
            placeRest(*rest);
    }
    result.titleRect = QRectF(paddingX, paddingY, titleWidth, std::max(1, titleRows) * lineHeight);
    return result;
}

const CanvasScenePainter::CardLayout &CanvasScenePainter::layout(const TaskFlow &flow, const FlowNode &node,
                                                                  NodeSize size)
{
    return layout(m_contents.of(flow, node), node, size);
}

const CanvasScenePainter::CardLayout &CanvasScenePainter::layout(const CardContent &content, const FlowNode &node,
                                                                 NodeSize size)
{
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

// --- cards and files

void CanvasScenePainter::paintCardChrome(QPainter &painter, const CardContent &content, const FlowNode &node,
                                         NodeSize size, const CardLook &look, const CanvasColors &colors) const
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
    // A ready card wears a thin glowing ring on its edge; the selection is
    // a stronger ring set off from the card by a gap, so the two never
    // read as one another and a selected ready card shows both.
    if (content.actionable) {
        band(2, 4, withAlpha(colors.ramp.brand, 0.15));
        band(2, 1.5, colors.ramp.brand);
    }
    if (look.selected)
        band(5.5, 2.5, colors.ramp.brand);

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
}

void CanvasScenePainter::paintCardBody(QPainter &painter, const CardLayout &text, const CardContent &content,
                                       const FlowNode &node, NodeSize size, const CardLook &look,
                                       const CanvasColors &colors) const
{
    if (!look.editing) {
        painter.setPen(node.isDone ? colors.secondaryText : colors.text);
        for (const auto &[start, run] : text.titleRuns)
            painter.drawGlyphRun(start, run);
        if (node.isDone) {
            // Filled as the thin rectangle it is: the raster engine strokes
            // a pen many times more slowly than it fills.
            const double width = QFontMetricsF(m_titleFont).lineWidth();
            for (const QLineF &strike : text.titleStrikes)
                painter.fillRect(QRectF(strike.x1(), strike.y1() - width / 2, strike.dx(), width),
                                 painter.pen().color());
        }
    }
    if (content.hasNotes) {
        const QRectF mark(size.width - paddingX - notesMarkSide, paddingY + 2, notesMarkSide, notesMarkSide);
        StampKey key;
        key.kind = StampKey::Kind::mark;
        key.glyph = CanvasGlyphs::Glyph::notes;
        key.ink = colors.secondaryText.rgba();
        key.width = key.height = notesMarkSide;
        stamp(painter, mark.topLeft(), key, [&](QPainter &into) {
            CanvasGlyphs::paint(into, QRectF(0, 0, notesMarkSide, notesMarkSide), key.glyph, colors.secondaryText);
        });
    }
    for (const PlacedPill &pill : text.pills) {
        const std::pair<QColor, QColor> tones = pillColors(pill.pill.tint, colors);
        const QColor ink = tones.first;
        const QColor fill = tones.second;
        StampKey key;
        key.text = pill.shownText;
        key.glyph = pill.pill.glyph;
        key.ink = ink.rgba();
        key.fill = fill.rgba();
        key.width = pill.rect.width();
        key.height = pill.rect.height();
        stamp(painter, pill.rect.topLeft(), key, [&](QPainter &into) {
            const QRectF rect(0, 0, key.width, key.height);
            into.fillPath(roundedRect(rect, pillHeight / 2), fill);
            const QRectF glyph(pillPaddingX, rect.center().y() - pillGlyph / 2, pillGlyph, pillGlyph);
            CanvasGlyphs::paint(into, glyph, key.glyph, ink);
            into.setFont(m_pillFont);
            into.setPen(ink);
            const QFontMetricsF metrics(m_pillFont);
            const double baseline = rect.center().y() + (metrics.ascent() - metrics.descent()) / 2;
            into.drawText(QPointF(glyph.right() + pillGlyphGap, baseline), key.text);
        });
    }
}

void CanvasScenePainter::stamp(QPainter &painter, QPointF corner, StampKey key,
                               const std::function<void(QPainter &)> &draw) const
{
    const QTransform kept = painter.transform();
    key.devicePixelsPerUnit = kept.m11();
    auto found = m_stamps.constFind(key);
    if (found == m_stamps.cend()) {
        // A theme changed its colours many times over.
        if (m_stamps.size() >= 1024)
            m_stamps.clear();
        const double device = key.devicePixelsPerUnit;
        QImage image(std::max(1, int(std::ceil(key.width * device))), std::max(1, int(std::ceil(key.height * device))),
                     QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        {
            QPainter into(&image);
            into.setRenderHints(painter.renderHints());
            into.scale(device, device);
            draw(into);
        }
        found = m_stamps.insert(key, image);
    }
    const QPointF onDevice = kept.map(corner);
    painter.resetTransform();
    painter.drawImage(QPoint(int(std::round(onDevice.x())), int(std::round(onDevice.y()))), *found);
    painter.setTransform(kept);
}

const QImage &CanvasScenePainter::cardChrome(const CardChromeKey &key, const CardContent &content, const FlowNode &node,
                                             const CardLook &look, const QSize &pixels, const CanvasColors &colors)
{
    for (const auto &[kept, image] : m_cardChromes)
        if (kept == key)
            return image;
    // Sizes, states and tags meet in a hundred or so looks in a view of a
    // large flow, and they are kept across flows; past the budget, the
    // oldest, most likely of another scale or flow, are done with.
    const qsizetype bytes = qsizetype(pixels.width()) * pixels.height() * 4;
    while (!m_cardChromes.isEmpty() && m_cardChromeBytes + bytes > cardChromeBudget) {
        m_cardChromeBytes -= m_cardChromes.first().second.sizeInBytes();
        m_cardChromes.removeFirst();
    }
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter into(&image);
        into.setRenderHint(QPainter::Antialiasing);
        into.scale(key.devicePixelsPerUnit, key.devicePixelsPerUnit);
        into.translate(cardImageMargin, cardImageMargin);
        paintCardChrome(into, content, node, key.size, look, colors);
    }
    m_cardChromes.append({key, image});
    m_cardChromeBytes += image.sizeInBytes();
    return m_cardChromes.last().second;
}

QImage CanvasScenePainter::cardImage(const FlowNode &node, const CardContent &content, const CardLayout &text,
                                     NodeSize size, const CardLook &look, double scale, double pixelRatio,
                                     const CanvasColors &colors, bool anyScale)
{
    CardImageKey key{m_version, content.serial, size, scale * pixelRatio, look, colors.ramp.brand.rgba(), colors.dark};
    if (CardImage *cached = m_cardImages->object(node.id)) {
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
    CardChromeKey chromeKey;
    chromeKey.size = size;
    chromeKey.devicePixelsPerUnit = device;
    chromeKey.done = node.isDone;
    chromeKey.lifted = look.hovered || look.selected;
    chromeKey.actionable = content.actionable;
    chromeKey.selected = look.selected;
    chromeKey.dashed = content.dashed;
    chromeKey.tag = node.color();
    chromeKey.brand = colors.ramp.brand.rgba();
    chromeKey.dark = colors.dark;
    // A copy of the chrome, written to from here on.
    QImage image = cardChrome(chromeKey, content, node, look, pixels, colors);
    {
        QPainter into(&image);
        into.setRenderHint(QPainter::Antialiasing);
        into.setRenderHint(QPainter::TextAntialiasing);
        into.scale(device, device);
        into.translate(cardImageMargin, cardImageMargin);
        paintCardBody(into, text, content, node, size, look, colors);
    }
    image.setDevicePixelRatio(pixelRatio);
    m_cardImages->insert(node.id, new CardImage{key, image}, int(image.sizeInBytes() / 1024));
    return image;
}

QImage CanvasScenePainter::fadedCardImage(const QUuid &cardID, const QImage &image, double opacity)
{
    const std::pair<qint64, double> key(image.cacheKey(), opacity);
    if (const FadedCard *found = m_fadedCards.object(cardID); found && found->key == key)
        return found->image;
    QImage faded = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const uint f = uint(std::lround(std::clamp(opacity, 0.0, 1.0) * 256));
    for (int y = 0; y < faded.height(); ++y) {
        QRgb *line = reinterpret_cast<QRgb *>(faded.scanLine(y));
        for (int x = 0; x < faded.width(); ++x) {
            const QRgb p = line[x];
            line[x] = (((p & 0xff00ff) * f >> 8) & 0xff00ff) | (((p >> 8) & 0xff00ff) * f & 0xff00ff00);
        }
    }
    m_fadedCards.insert(cardID, new FadedCard{key, faded}, int(faded.sizeInBytes() / 1024));
    return faded;
}

CanvasScenePainter::CardLook CanvasScenePainter::lookOf(const CanvasEditor &editor, const FlowNode &node,
                                                        const ViewState &view)
{
    CardLook look;
    look.selected = editor.interaction().selectedItemIDs().contains(node.id);
    look.hovered = view.hoveredCard == node.id;
    look.editing = view.editing == node.id;
    return look;
}

QImage CanvasScenePainter::cardPicture(const CanvasEditor &editor, const CardContent &content, const FlowNode &node,
                                       const CanvasColors &colors, const ViewState &view, double pixelRatio)
{
    const NodeSize size = editor.interaction().effectiveSize(node);
    return cardImage(node, content, layout(content, node, size), size, lookOf(editor, node, view),
                     view.scale > 0 ? view.scale : 1, pixelRatio, colors, view.zooming);
}

CanvasScenePainter::CardDraw CanvasScenePainter::cardDraw(const CanvasEditor &editor, const CardContent &content,
                                                          const FlowNode &node, const CanvasColors &colors,
                                                          const ViewState &view, double pixelRatio)
{
    const CanvasInteraction &interaction = editor.interaction();
    const NodeSize size = interaction.effectiveSize(node);
    const QRectF rect = interaction.frame(node);
    const double scale = view.scale > 0 ? view.scale : 1;
    const CardLook look = lookOf(editor, node, view);
    CardDraw card;
    card.opacity = editor.isDimmed(node) ? 0.25 : 1;

    // The card is drawn once into an image at this scale and then only
    // copied while it stays the same; a pan or a drag elsewhere costs a copy.
    const QImage image = cardPicture(editor, content, node, colors, view, pixelRatio);
    const QPointF corner = screenPoint(rect.topLeft() - QPointF(cardImageMargin, cardImageMargin), view);
    // Whole device pixels keep the text as crisp as it was drawn.
    card.corner =
        QPointF(std::round(corner.x() * pixelRatio) / pixelRatio, std::round(corner.y() * pixelRatio) / pixelRatio);
    const QSizeF shown = QSizeF(size.width + 2 * cardImageMargin, size.height + 2 * cardImageMargin) * scale;
    if (std::abs(shown.width() - image.deviceIndependentSize().width()) < 1.0) {
        card.picture = card.opacity < 1 ? fadedCardImage(node.id, image, card.opacity) : image;
        card.bounds = QRectF(card.corner, card.picture.deviceIndependentSize());
    } else {
        // An image of another scale, stretched while the zoom moves.
        card.picture = image;
        card.stretched = QRectF(card.corner, shown);
        card.bounds = *card.stretched;
    }

    // Port and grip keep their size on screen.
    const bool connecting = interaction.pendingConnection() && interaction.pendingConnection()->fromItemID == node.id;
    if (content.canCollapse || look.hovered || look.selected || connecting) {
        card.port = portLook(&content, view.hoveredPort == node.id || connecting, colors, pixelRatio);
        card.portAnchor = screenPoint(portAnchor(rect.center(), size), view);
        card.foldedCount = content.folded ? editor.foldedCount(node) : 0;
        card.bounds |= QRectF(portCorner(card.portAnchor, card.port->image), card.port->image.deviceIndependentSize());
    }
    if (look.hovered || look.selected)
        card.grip = screenPoint(rect.bottomRight(), view);
    return card;
}

void CanvasScenePainter::copyCard(QPainter &painter, const CardDraw &card)
{
    if (card.stretched) {
        painter.setOpacity(card.opacity);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(*card.stretched, card.picture);
    } else {
        // Faded already: copying is the raster engine's fast path.
        painter.setOpacity(1);
        painter.drawImage(card.corner, card.picture);
    }
    // A dimmed card's port is dimmed with it, not left standing out.
    if (card.port) {
        painter.setOpacity(card.opacity);
        painter.drawImage(portCorner(card.portAnchor, card.port->image), card.port->image);
    }
    painter.setOpacity(1);
}

void CanvasScenePainter::paintCardMarks(QPainter &painter, const CardDraw &card, const CanvasColors &colors) const
{
    painter.setOpacity(card.opacity);
    if (card.port && card.port->folded && card.foldedCount > 0)
        paintFoldedCount(painter, card.portAnchor, card.port->radius, card.foldedCount, colors);
    if (card.grip) {
        painter.setPen(QPen(colors.secondaryText, 1.3, Qt::SolidLine, Qt::FlatCap));
        for (const double step : {4.0, 8.0})
            painter.drawLine(*card.grip + QPointF(-4, -4 - step), *card.grip + QPointF(-4 - step, -4));
    }
    painter.setOpacity(1);
}

QPointF CanvasScenePainter::portCorner(QPointF anchor, const QImage &image)
{
    const double pixelRatio = image.devicePixelRatio();
    return (QPointF(std::round(anchor.x() * pixelRatio), std::round(anchor.y() * pixelRatio)) -
            QPointF(image.width(), image.height()) / 2) /
           pixelRatio;
}

const CanvasScenePainter::PortLook &CanvasScenePainter::portLook(const CardContent *content, bool hovered,
                                                                 const CanvasColors &colors, double pixelRatio) const
{
    const double radius = portDiameter / 2 * (hovered ? portHoverGrowth : 1);
    const bool folded = content && content->folded;
    const bool marked = content && content->canCollapse && !folded;
    // Every card with subtasks shows a port, and they look alike: each look
    // is drawn once and copied, its centre on a pixel's corner.
    const PortKey key{hovered,
                      folded,
                      marked,
                      colors.ramp.brand.rgba(),
                      (folded ? colors.ramp.portFolded : colors.ramp.nodeSurface).rgba(),
                      pixelRatio};
    auto found = std::find_if(m_ports.cbegin(), m_ports.cend(), [&](const auto &port) { return port.first == key; });
    if (found != m_ports.cend())
        return found->second;
    // A theme changed its colours many times over.
    if (m_ports.size() >= 16)
        m_ports.clear();
    const int side = 2 * int(std::ceil((radius + portStroke) * pixelRatio));
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter into(&image);
        into.setRenderHint(QPainter::Antialiasing);
        into.scale(pixelRatio, pixelRatio);
        const QPointF center = QPointF(side, side) / 2 / pixelRatio;
        into.setPen(QPen(colors.ramp.brand, portStroke));
        into.setBrush(folded ? colors.ramp.portFolded : colors.ramp.nodeSurface);
        into.drawEllipse(center, radius, radius);
        if (marked) {
            into.setPen(Qt::NoPen);
            into.setBrush(colors.ramp.brand);
            into.drawEllipse(center, 2.2, 2.2);
        }
    }
    image.setDevicePixelRatio(pixelRatio);
    m_ports.append({key, PortLook{image, radius, folded}});
    return m_ports.last().second;
}

void CanvasScenePainter::paintPort(QPainter &painter, QPointF anchor, bool hovered, const CanvasColors &colors) const
{
    const double pixelRatio = painter.device() ? painter.device()->devicePixelRatioF() : 1;
    const QImage &image = portLook(nullptr, hovered, colors, pixelRatio).image;
    painter.drawImage(portCorner(anchor, image), image);
}

void CanvasScenePainter::paintFoldedCount(QPainter &painter, QPointF anchor, double radius, int count,
                                          const CanvasColors &colors) const
{
    // The count of tasks folded away, in a tag beside the port.
    const QString text = QStringLiteral("+%1").arg(count);
    const QFontMetricsF metrics(m_pillFont);
    const double width = std::ceil(metrics.horizontalAdvance(text)) + 12;
    const QRectF tag(anchor.x() + radius + 4, anchor.y() - 9, width, 18);
    painter.setPen(Qt::NoPen);
    // On a dark ground the folded colour is too close to the ground to read.
    painter.setBrush(colors.dark ? colors.ramp.brandBorder : colors.ramp.portFolded);
    painter.drawRoundedRect(tag, 9, 9);
    painter.setFont(m_pillFont);
    painter.setPen(colors.dark ? colors.text : QColor(Qt::white));
    painter.drawText(tag, Qt::AlignCenter, text);
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
        paintPort(painter, screenPoint(portAnchor(rect.center(), size), view), view.hoveredPort == file.id, colors);
    if (hovered || selected) {
        const QPointF corner = screenPoint(rect.bottomRight(), view);
        painter.setPen(QPen(colors.secondaryText, 1.3, Qt::SolidLine, Qt::RoundCap));
        for (const double step : {4.0, 8.0})
            painter.drawLine(corner + QPointF(-4, -4 - step), corner + QPointF(-4 - step, -4));
    }
}

} // namespace fenrow
