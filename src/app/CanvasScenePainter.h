#pragma once

#include "BrandPalette.h"
#include "CanvasCardContent.h"
#include "canvas/NodeSize.h"

#include <QFont>
#include <QHash>
#include <QImage>
#include <QPointF>
#include <QRectF>
#include <QStringList>
#include <QUuid>

#include <optional>

class QPainter;

namespace fenrow {

class CanvasEditor;
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
    };

    // Measures inside a card, in canvas units.
    static constexpr double cornerRadius = 10;
    static constexpr double paddingX = 12;
    static constexpr double paddingY = 10;
    static constexpr double pillHeight = 20;
    static constexpr double pillGap = 5;
    static constexpr double titlePillGap = 8;
    static constexpr double notesMarkSide = 12;

    explicit CanvasScenePainter(CanvasCardContents &contents);

    void paint(QPainter &painter, const CanvasEditor &editor, const CanvasColors &colors, const ViewState &view,
               const QRectF &exposed);
    // Forget card layouts, after the store or the language changed.
    void invalidate();

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
        NodeSize size;
        QString title;
        QStringList titleLines;
        QRectF titleRect;
        QList<PlacedPill> pills;
    };

    const CardLayout &layout(const TaskFlow &flow, const FlowNode &node, NodeSize size);
    CardLayout makeLayout(const CardContent &content, const FlowNode &node, NodeSize size) const;
    QImage thumbnail(const FlowFile &file);

    void paintGrid(QPainter &painter, const CanvasColors &colors, const ViewState &view, const QRectF &exposed) const;
    void paintNode(QPainter &painter, const CanvasEditor &editor, const TaskFlow &flow, const FlowNode &node,
                   const CanvasColors &colors, const ViewState &view);
    void paintPort(QPainter &painter, QPointF screenAnchor, const CardContent *content, bool hovered,
                   const CanvasColors &colors) const;
    void paintFile(QPainter &painter, const CanvasEditor &editor, const FlowFile &file, const CanvasColors &colors,
                   const ViewState &view);
    void paintBanner(QPainter &painter, QPointF screenPoint, const QString &text, const CanvasColors &colors,
                     const QRectF &viewport) const;

    CanvasCardContents &m_contents;
    quint64 m_version = 1;
    QHash<QUuid, CardLayout> m_layouts;
    QHash<QUuid, QImage> m_thumbnails;
    QFont m_titleFont;
    QFont m_pillFont;
    QFont m_fileFont;
    QFont m_bannerFont;
};

} // namespace fenrow
