#pragma once

#include "CanvasCardContent.h"
#include "TitleWords.h"
#include "canvas/NodeSize.h"
#include "domain/NodeColor.h"
#include "look/BrandPalette.h"

#include <QCache>
#include <QFont>
#include <QGlyphRun>
#include <QHash>
#include <QImage>
#include <QLineF>
#include <QList>
#include <QPointF>
#include <QRectF>
#include <QRegion>
#include <QSet>
#include <QStringList>
#include <QUuid>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QPainter;

namespace fenrow {

class CanvasEditor;
class CanvasInteraction;
class FlowFile;
class FlowNode;
class TaskFlow;

// Draws a flow's canvas from the editor's state: the grid, lines, cards,
// the gestures in progress and the banners. It only reads; what it keeps
// between frames is layout worked out for a card's text, so that a frame
// of an unchanged card costs no text shaping.
class CanvasScenePainter {
public:
    // What the view adds to the editor's state.
    struct ViewState {
        // The transform drawn with: screen = canvas × scale + offset.
        QPointF offset;
        double scale = 1;
        bool grid = false;
        std::optional<QUuid> hoveredCard;
        std::optional<QUuid> hoveredPort;
        // A card whose title an editor covers.
        std::optional<QUuid> editing;
        // The zoom is still moving: cards drawn at another scale may be
        // stretched for now instead of drawn again in every frame.
        bool zooming = false;
    };

    // Measures inside a card, in canvas units.
    static constexpr double cornerRadius = 10;
    static constexpr double paddingX = 12;
    static constexpr double paddingY = 10;
    static constexpr double pillHeight = 20;
    static constexpr double pillGap = 5;
    static constexpr double titlePillGap = 8;
    static constexpr double notesMarkSide = 12;
    // Room around a card's image for its shadow, ring and selection glow.
    static constexpr double cardImageMargin = 8;
    // What the images of cards may take, in KiB.
    static constexpr int cardImageBudget = 96 * 1024;
    // What the chrome shared by cards of one look may take, in bytes.
    static constexpr qsizetype cardChromeBudget = 24 * 1024 * 1024;

    explicit CanvasScenePainter(CanvasCardContents &contents);

    void paint(QPainter &painter, const CanvasEditor &editor, const CanvasColors &colors, const ViewState &view,
               const QRectF &exposed);
    // The store changed: cards and lines are checked against it again.
    void invalidate();
    // Only what the store's last change touched is checked again; says
    // which cards it may have made look different.
    CanvasCardContents::Touched invalidate(const StoreChange &change);
    // Whether a filter dims or hides changed: the lines are drawn again,
    // the cards' pictures stay. The filter's colours are read each frame.
    void filterChanged() { ++m_linesVersion; }
    // Everything is drawn anew: the filter, the sizes or the language changed.
    void invalidateAll();
    // Another flow is shown: its cards and lines are drawn anew, but the
    // pictures every flow's cards share (chrome, ports, shortened pill
    // texts) are kept.
    void flowChanged();
    // The last flow's layouts and pictures, set aside by `flowChanged`, are
    // freed once the new flow's first frame is shown.
    bool holdsFormer() const { return !m_formerLayouts.isEmpty() || m_formerCardImages; }
    void dropFormer();

    QFont titleFont() const { return m_titleFont; }
    // Where a card's title stands, relative to the card's top left corner.
    QRectF titleRect(const TaskFlow &flow, const FlowNode &node, NodeSize size);
    // The pill under a canvas point on a card, for its help text.
    std::optional<MetaPill> pillAt(const TaskFlow &flow, const FlowNode &node, NodeSize size, QPointF pointInCard);

private:
    struct PlacedPill {
        MetaPill pill;
        QRectF rect;
        QString shownText;
    };
    struct CardLayout {
        quint64 version = 0;
        quint64 serial = 0;
        NodeSize size;
        QString title;
        // The title's lines as shaped for the layout, each with the start of
        // its baseline on the card: drawing them shapes nothing again.
        QList<std::pair<QPointF, QGlyphRun>> titleRuns;
        // Where a done task's title is struck through, line by line.
        QList<QLineF> titleStrikes;
        QRectF titleRect;
        QList<PlacedPill> pills;
    };

    // How a card is drawn beyond its record.
    struct CardLook {
        bool selected = false;
        bool hovered = false;
        bool editing = false;
        friend bool operator==(const CardLook &, const CardLook &) = default;
    };
    struct CardImageKey {
        quint64 version = 0;
        quint64 serial = 0;
        NodeSize size;
        double devicePixelsPerUnit = 1;
        CardLook look;
        QRgb brand = 0;
        bool dark = false;
        friend bool operator==(const CardImageKey &, const CardImageKey &) = default;
    };
    struct CardImage {
        CardImageKey key;
        QImage image;
    };
    // A card's shadow, rings, surface and border: the same for every card
    // of one size, state and colour tag, so drawn once and copied.
    struct CardChromeKey {
        NodeSize size;
        double devicePixelsPerUnit = 1;
        bool done = false;
        bool lifted = false;
        bool actionable = false;
        bool selected = false;
        bool dashed = false;
        NodeColor tag = NodeColor::none;
        QRgb brand = 0;
        bool dark = false;
        friend bool operator==(const CardChromeKey &, const CardChromeKey &) = default;
    };

    // The ground, its grid, edges and file links drawn once into an opaque
    // image a little larger than the view, kept while they stay the same:
    // pans within its reach, hovers and card selections copy it instead of
    // filling, dotting and drawing every line. Only the part a frame shows
    // is drawn, the rest when a pan brings it into view.
    struct LineLayer {
        struct Key {
            quint64 version = 0;
            quint64 linesVersion = 0;
            quint32 colorFilter = 0;
            quint64 geometry = 0;
            std::optional<QUuid> selectedEdge;
            std::optional<QUuid> selectedLink;
            std::optional<QUuid> reconnecting;
            QSet<QUuid> moving;
            QRgb brand = 0;
            bool dark = false;
            bool grid = false;
            double pixelRatio = 1;
            friend bool operator==(const Key &, const Key &) = default;
        };
        Key key;
        double scale = 0;
        // The canvas area the image covers.
        QRectF area;
        QImage image;
        // The image's pixels drawn so far.
        QRegion drawn;
    };
    // How far the line layer reaches past the view, on screen.
    static constexpr double layerReach = 256;

    // How a colour filter's dimming reaches the lines drawn.
    enum class LineDimming {
        // Each line as the filter leaves it.
        asFiltered,
        // Every line at full strength, as with no filter: the layer a
        // dimmed one is made from.
        ignored,
        // Only the lines the filter leaves whole, over all of them dimmed.
        undimmedOnly,
    };

    static QSet<QUuid> movingCards(const CanvasInteraction &interaction);
    // Into `layer`, the image `painter` draws on, lines are drawn only
    // within its pixels `layerClip`, thin ones directly, over what `ground`
    // draws there first.
    void paintLines(QPainter &painter, const CanvasEditor &editor, const CanvasColors &colors, const QRectF &visible,
                    const QSet<QUuid> &moving, bool onlyMoving, LineDimming dimming, QImage *layer = nullptr,
                    const QRect &layerClip = {},
                    const std::function<void(QPainter &, const QRect &)> &ground = {}) const;
    // Draws the pixels `pixels` of `layer`. With `undimmed`, the same
    // pixels of a layer of the same place and key but no filter, all its
    // lines are dimmed at once and only the undimmed ones drawn again.
    void drawLineLayer(LineLayer &layer, const CanvasEditor &editor, const CanvasColors &colors, const ViewState &view,
                       const QSet<QUuid> &moving, const QRect &pixels, LineDimming dimming,
                       const QImage *undimmed = nullptr);
    void paintLineLayer(QPainter &painter, const CanvasEditor &editor, const CanvasColors &colors,
                        const ViewState &view, const QSet<QUuid> &moving, const QRectF &exposed);
    const CardLayout &layout(const TaskFlow &flow, const FlowNode &node, NodeSize size);
    const CardLayout &layout(const CardContent &content, const FlowNode &node, NodeSize size);
    // The card's chrome, then its title, notes mark and pills, in its own
    // canvas units, its top left corner at the origin.
    void paintCardChrome(QPainter &painter, const CardContent &content, const FlowNode &node, NodeSize size,
                         const CardLook &look, const CanvasColors &colors) const;
    const QImage &cardChrome(const CardChromeKey &key, const CardContent &content, const FlowNode &node,
                             const CardLook &look, const QSize &pixels, const CanvasColors &colors);
    void paintCardBody(QPainter &painter, const CardLayout &text, const CardContent &content, const FlowNode &node,
                       NodeSize size, const CardLook &look, const CanvasColors &colors) const;
    // A pill or a mark, by how it looks at one scale.
    struct StampKey {
        enum class Kind : quint8 { pill, mark } kind = Kind::pill;
        QString text;
        CanvasGlyphs::Glyph glyph = CanvasGlyphs::Glyph::notes;
        QRgb ink = 0;
        QRgb fill = 0;
        double width = 0;
        double height = 0;
        double devicePixelsPerUnit = 1;
        friend bool operator==(const StampKey &, const StampKey &) = default;
        friend size_t qHash(const StampKey &key, size_t seed = 0)
        {
            return qHashMulti(seed, int(key.kind), key.text, int(key.glyph), key.ink, key.fill, key.width, key.height,
                              key.devicePixelsPerUnit);
        }
    };
    // Draws `key`'s look at `corner` of the painter's units, which only
    // scale and move: drawn once with `draw` and copied onto whole pixels.
    void stamp(QPainter &painter, QPointF corner, StampKey key, const std::function<void(QPainter &)> &draw) const;
    QImage cardImage(const FlowNode &node, const CardContent &content, const CardLayout &text, NodeSize size,
                     const CardLook &look, double scale, double pixelRatio, const CanvasColors &colors,
                     bool anyScale);
    static CardLook lookOf(const CanvasEditor &editor, const FlowNode &node, const ViewState &view);
    // The card's picture as the view shows it now, made if not kept.
    QImage cardPicture(const CanvasEditor &editor, const CardContent &content, const FlowNode &node,
                       const CanvasColors &colors, const ViewState &view, double pixelRatio);
    // A card's picture faded to `opacity`, kept while the picture stays:
    // copying it is the raster engine's fast path, drawing the picture with
    // the painter's opacity is not.
    QImage fadedCardImage(const QUuid &cardID, const QImage &image, double opacity);
    CardLayout makeLayout(const CardContent &content, const FlowNode &node, NodeSize size) const;
    QImage thumbnail(const FlowFile &file);

    void paintGrid(QPainter &painter, const CanvasColors &colors, const ViewState &view, const QRectF &exposed) const;
    // A port's look, drawn once and copied: a card's (`content`) or a file's.
    struct PortLook {
        QImage image;
        double radius = 0;
        bool folded = false;
    };
    const PortLook &portLook(const CardContent *content, bool hovered, const CanvasColors &colors,
                             double pixelRatio) const;
    // Where a port's image goes for its centre to fall on a pixel's corner.
    static QPointF portCorner(QPointF screenAnchor, const QImage &image);
    // What a card in view shows, worked out on the window's thread: the
    // picture and port it copies, and the marks drawn over every card.
    struct CardDraw {
        QImage picture;
        // The picture's top left on whole device pixels, or the rectangle
        // it is stretched over while a zoom moves.
        QPointF corner;
        std::optional<QRectF> stretched;
        double opacity = 1;
        std::optional<PortLook> port;
        QPointF portAnchor;
        // Tasks folded away below the port, told beside it.
        int foldedCount = 0;
        // The resize grip's corner.
        std::optional<QPointF> grip;
        // What the copies cover, on screen.
        QRectF bounds;
    };
    CardDraw cardDraw(const CanvasEditor &editor, const CardContent &content, const FlowNode &node,
                      const CanvasColors &colors, const ViewState &view, double pixelRatio);
    // Only copies images, so it may run on any thread that has a painter
    // of its own over pixels no other thread draws.
    static void copyCard(QPainter &painter, const CardDraw &card);
    // Copies every card, in halves on two threads where the frame is an
    // image whose pixels can be shared out.
    static void copyCards(QPainter &painter, const std::vector<CardDraw> &cards);
    void paintCardMarks(QPainter &painter, const CardDraw &card, const CanvasColors &colors) const;
    void paintPort(QPainter &painter, QPointF screenAnchor, bool hovered, const CanvasColors &colors) const;
    void paintFoldedCount(QPainter &painter, QPointF screenAnchor, double radius, int count,
                          const CanvasColors &colors) const;
    void paintFile(QPainter &painter, const CanvasEditor &editor, const FlowFile &file, const CanvasColors &colors,
                   const ViewState &view);
    void paintBanner(QPainter &painter, QPointF screenPoint, const QString &text, const CanvasColors &colors,
                     const QRectF &viewport) const;

    CanvasCardContents &m_contents;
    quint64 m_version = 1;
    quint64 m_linesVersion = 1;
    QHash<QUuid, CardLayout> m_layouts;
    // A pill's text shortened to the room it has, and its width: the same
    // few priorities, estimates and days recur across a flow's cards.
    mutable QHash<std::pair<QString, double>, std::pair<QString, double>> m_pillTexts;
    // Pills and notes marks: the same few recur on every card of every flow.
    mutable QHash<StampKey, QImage> m_stamps;
    QHash<QUuid, QImage> m_thumbnails;
    std::unique_ptr<QCache<QUuid, CardImage>> m_cardImages =
        std::make_unique<QCache<QUuid, CardImage>>(cardImageBudget);
    // The last flow's layouts and pictures, freed after the new flow's
    // first frame rather than before it begins.
    QHash<QUuid, CardLayout> m_formerLayouts;
    std::unique_ptr<QCache<QUuid, CardImage>> m_formerCardImages;
    QList<std::pair<CardChromeKey, QImage>> m_cardChromes;
    qsizetype m_cardChromeBytes = 0;
    // A port's circle, by how it looks.
    struct PortKey {
        bool hovered = false;
        bool folded = false;
        bool marked = false;
        QRgb ring = 0;
        QRgb fill = 0;
        double pixelRatio = 1;
        friend bool operator==(const PortKey &, const PortKey &) = default;
    };
    mutable QList<std::pair<PortKey, PortLook>> m_ports;
    // By card: the picture's cache key and opacity, and the faded picture,
    // within the same budget as the pictures themselves.
    struct FadedCard {
        std::pair<qint64, double> key;
        QImage image;
    };
    QCache<QUuid, FadedCard> m_fadedCards{cardImageBudget};
    // Work for the window's thread while the second gathers and draws a
    // new line layer; taken by the first layer drawn in two threads, if any.
    // Meanwhile the second thread works out the editor's visible cards:
    // `first` must not read the editor, `then` runs once they are known.
    struct LinesMeanwhile {
        std::function<void()> first;
        std::function<void()> then;
    };
    mutable LinesMeanwhile m_whileLinesDraw;
    LineLayer m_lines;
    // The layer before the last change of its key: a filter taken off, a
    // selection undone or a drag let go without a move finds it again.
    // While a filter dims, it is the same layer without the filter, which
    // the dimmed one is made from.
    LineLayer m_spareLines;
    QFont m_titleFont;
    // Declared after the title's font, which it is made with.
    mutable TitleWords m_titleWords{m_titleFont};
    QFont m_pillFont;
    QFont m_fileFont;
    QFont m_bannerFont;
};

} // namespace fenrow
