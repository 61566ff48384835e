#include "CanvasScenePainter.h"

#include "CanvasScenePainting.h"
#include "canvas/CanvasEditor.h"
#include "canvas/CanvasGeometry.h"
#include "domain/DependencyEdge.h"
#include "domain/FlowFile.h"
#include "domain/FlowNode.h"
#include "domain/TaskFlow.h"
#include "formats/DocumentInput.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <thread>
#include <vector>

namespace fenrow {

using namespace CanvasGeometry;
using namespace ScenePainting;

namespace {

QFont pixelFont(int pixels, QFont::Weight weight)
{
    QFont font = QApplication::font();
    font.setPixelSize(pixels);
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
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

CanvasCardContents::Touched CanvasScenePainter::invalidate(const StoreChange &change)
{
    return m_contents.invalidate(change);
}

void CanvasScenePainter::invalidateAll()
{
    flowChanged();
    m_cardChromes.clear();
    m_cardChromeBytes = 0;
    m_ports.clear();
    m_pillTexts.clear();
    m_stamps.clear();
    m_titleWords.clear();
}

void CanvasScenePainter::flowChanged()
{
    ++m_version;
    m_contents.invalidate();
    // Every layout is of the version before; kept, they would pile up over
    // every flow shown.
    // Set aside only if there are any: a view given no flow and then the
    // next would otherwise free them here after all.
    if (!m_layouts.isEmpty())
        m_formerLayouts = std::exchange(m_layouts, {});
    if (!m_cardImages->isEmpty())
        m_formerCardImages = std::exchange(m_cardImages, std::make_unique<QCache<QUuid, CardImage>>(cardImageBudget));
    m_fadedCards.clear();
    // A file's bytes never change under its id; only gone files leave.
    if (m_thumbnails.size() > 256)
        m_thumbnails.clear();
}

void CanvasScenePainter::dropFormer()
{
    m_formerLayouts = {};
    m_formerCardImages.reset();
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
    const TaskFlow *flow = editor.flow();
    if (!flow) {
        dropFormer();
        painter.fillRect(exposed, colors.ramp.brandSubtle);
        if (view.grid)
            paintGrid(painter, colors, view, exposed);
        return;
    }
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

    // The ground and lines first: those of cards that move are drawn live,
    // the rest come from the layer.
    const QSet<QUuid> moving = movingCards(interaction);
    // Should the lines be drawn anew, the cards' pictures are made while
    // the second thread draws them.
    const double pixelRatio = painter.device() ? painter.device()->devicePixelRatioF() : 1;
    // The cards in view, found once, from the editor's flat list of the
    // shown cards' places and sizes: read from the tasks themselves, the
    // thousands of records scattered in memory cost more than the rest of
    // a small repaint. The list is not made for a frame that would make it
    // only to drop it (cards moving in a gesture) or that has more to do
    // meanwhile (a new flow's first, while its lines are drawn): those read
    // the records.
    // Their contents too: each is looked up in a table of the whole flow.
    std::vector<std::pair<const FlowNode *, const CardContent *>> cardsInView;
    bool cardsFound = false;
    const auto findCards = [&](bool whileLinesDraw) {
        cardsFound = true;
        const QList<const FlowNode *> &nodes = editor.visibleNodes();
        if (!editor.hasSceneCards() && (whileLinesDraw || !moving.isEmpty())) {
            for (const FlowNode *node : nodes)
                if (interaction.frame(*node).intersects(visible))
                    cardsInView.emplace_back(node, &m_contents.of(*flow, *node));
            return;
        }
        const std::vector<CanvasScene::Card> &cards = editor.sceneCards();
        Q_ASSERT(cards.size() == std::size_t(nodes.size()));
        for (std::size_t i = 0; i < cards.size(); ++i)
            if (CanvasGeometry::frame(cards[i].center, cards[i].size).intersects(visible))
                cardsInView.emplace_back(nodes[qsizetype(i)], &m_contents.of(*flow, *nodes[qsizetype(i)]));
    };
    m_whileLinesDraw.then = [&] {
        findCards(true);
        for (const auto &[node, content] : cardsInView)
            cardPicture(editor, *content, *node, colors, view, pixelRatio);
    };
    paintLineLayer(painter, editor, colors, view, moving, exposed);
    m_whileLinesDraw = {};
    if (!cardsFound)
        findCards(false);
    painter.setTransform(toScreen);
    if (!moving.isEmpty())
        paintLines(painter, editor, colors, visible, moving, true, LineDimming::asFiltered);
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
    std::vector<CardDraw> cards;
    cards.reserve(cardsInView.size());
    for (const auto &[node, content] : cardsInView)
        cards.push_back(cardDraw(editor, *content, *node, colors, view, pixelRatio));
    painter.resetTransform();
    copyCards(painter, cards);
    // Fold counts and grips over every card: they are text and strokes,
    // which only the window's thread draws.
    for (const CardDraw &card : cards)
        paintCardMarks(painter, card, colors);
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

void CanvasScenePainter::copyCards(QPainter &painter, const std::vector<CardDraw> &cards)
{
    // The frame's own pixels, where they are an image at one pixel per
    // unit (a window's backing store, or a widget grabbed); anything else
    // is copied here.
    QPaintEngine *const engine = painter.paintEngine();
    QPaintDevice *const device = engine ? engine->paintDevice() : nullptr;
    const QTransform toDevice = painter.deviceTransform();
    const bool shared = cards.size() >= 64 && std::thread::hardware_concurrency() > 1 && device &&
                        device->devType() == QInternal::Image && !painter.hasClipping() &&
                        toDevice.type() <= QTransform::TxTranslate && toDevice.dx() == std::round(toDevice.dx()) &&
                        toDevice.dy() == std::round(toDevice.dy()) && device->devicePixelRatioF() == 1;
    if (!shared) {
        for (const CardDraw &card : cards)
            copyCard(painter, card);
        return;
    }
    // Each half of the rows it paints takes the cards that reach into it,
    // in the same order, clipped to it: every pixel sees the same copies
    // as it would on one thread. The lower half goes to a second thread
    // with a painter of its own over the same pixels.
    const QImage &frame = *static_cast<QImage *>(device);
    const QRegion painted = engine->systemClip().isEmpty() ? QRegion(frame.rect()) : engine->systemClip();
    const QRect span = painted.boundingRect();
    const int middle = span.top() + span.height() / 2;
    const QRegion upper = painted & QRect(span.left(), span.top(), span.width(), middle - span.top());
    const QRegion lower = painted - upper;
    const auto copyInto = [&](QPainter &into, const QRegion &rows) {
        const QRectF reach = toDevice.inverted().mapRect(QRectF(rows.boundingRect()));
        for (const CardDraw &card : cards)
            if (card.bounds.intersects(reach))
                copyCard(into, card);
    };
    const QPainter::RenderHints hints = painter.renderHints();
    std::thread helper([&] {
        QImage pixels(const_cast<uchar *>(frame.constBits()), frame.width(), frame.height(), frame.bytesPerLine(),
                      frame.format());
        QPainter into(&pixels);
        into.setRenderHints(hints);
        into.setClipRegion(lower);
        into.setTransform(toDevice);
        copyInto(into, lower);
    });
    painter.save();
    painter.setClipRegion(toDevice.inverted().map(upper));
    copyInto(painter, upper);
    painter.restore();
    helper.join();
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
