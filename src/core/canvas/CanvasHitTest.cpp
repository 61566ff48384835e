#include "CanvasHitTest.h"

#include "CanvasEditor.h"
#include "domain/TaskFlow.h"

#include <algorithm>
#include <cmath>
#include <ranges>

namespace fenrow::CanvasHitTest {

using namespace CanvasGeometry;

namespace {

bool withinRadius(QPointF point, QPointF center, double radius)
{
    const QPointF d = point - center;
    return d.x() * d.x() + d.y() * d.y() <= radius * radius;
}

bool withinSquare(QPointF point, QPointF center, double half)
{
    return std::abs(point.x() - center.x()) <= half && std::abs(point.y() - center.y()) <= half;
}

bool withinClosed(const QRectF &rect, QPointF point)
{
    return rect.left() <= point.x() && point.x() <= rect.right() && rect.top() <= point.y()
        && point.y() <= rect.bottom();
}

// A cheap test before the clipping: the band can only be hit near the box
// of the two centres.
bool nearSegment(QPointF point, QPointF a, QPointF b)
{
    const double margin = hitWidth / 2;
    return point.x() >= std::min(a.x(), b.x()) - margin && point.x() <= std::max(a.x(), b.x()) + margin
        && point.y() >= std::min(a.y(), b.y()) - margin && point.y() <= std::max(a.y(), b.y()) + margin;
}

struct Card {
    QPointF center;
    NodeSize size;
};

// The part of a card under the point: port, grip or body.
std::optional<CanvasHit::Kind> cardPart(const Card &card, QPointF point, double perScreenUnit, bool isFile)
{
    const double portRadius = portDiameter * portHoverGrowth / 2 * perScreenUnit;
    if (withinRadius(point, portAnchor(card.center, card.size), portRadius))
        return isFile ? CanvasHit::Kind::filePort : CanvasHit::Kind::port;
    const QRectF rect = frame(card.center, card.size);
    if (!withinClosed(rect, point))
        return std::nullopt;
    const double grip = resizeGripSide * perScreenUnit;
    if (point.x() >= rect.right() - grip && point.y() >= rect.bottom() - grip)
        return isFile ? CanvasHit::Kind::fileResizeGrip : CanvasHit::Kind::resizeGrip;
    return isFile ? CanvasHit::Kind::file : CanvasHit::Kind::card;
}

} // namespace

CanvasHit at(const CanvasEditor &editor, QPointF screenPoint)
{
    const CanvasInteraction &interaction = editor.interaction();
    const TaskFlow *flow = editor.flow();
    if (!flow)
        return {};
    const QPointF point = interaction.toCanvas(screenPoint);
    const double perScreenUnit = 1 / interaction.divisorScale();
    auto nodeCard = [&](const FlowNode &node) {
        return Card{interaction.effectiveCenter(node.id, {node.posX, node.posY}), interaction.effectiveSize(node)};
    };
    auto fileCard = [&](const FlowFile &file) {
        return Card{interaction.effectiveFileCenter(file.id, {file.posX, file.posY}), interaction.effectiveFileSize(file)};
    };

    if (const auto selected = interaction.selectedEdgeID()) {
        for (const DependencyEdge *edge : flow->edges()) {
            if (edge->id != *selected || !editor.isDrawn(*edge))
                continue;
            const Card from = nodeCard(*edge->fromItem());
            const Card to = nodeCard(*edge->toItem());
            const EdgeLine line = EdgeLine::between(from.center, from.size, to.center, to.size);
            const double half = handleHitSide / 2 * perScreenUnit;
            if (withinSquare(point, line.start, half))
                return {CanvasHit::Kind::edgeHandle, edge->id, EdgeEnd::source};
            if (withinSquare(point, line.end, half))
                return {CanvasHit::Kind::edgeHandle, edge->id, EdgeEnd::target};
        }
    }

    for (const FlowNode *node : editor.visibleNodes() | std::views::reverse) {
        if (const auto part = cardPart(nodeCard(*node), point, perScreenUnit, false))
            return {*part, node->id};
    }
    const QList<const FlowFile *> files = editor.liveFiles();
    for (const FlowFile *file : files | std::views::reverse) {
        if (const auto part = cardPart(fileCard(*file), point, perScreenUnit, true))
            return {*part, file->id};
    }

    const auto &edges = flow->edges();
    for (std::size_t i = edges.size(); i-- > 0;) {
        const DependencyEdge *edge = edges[i];
        if (!edge->fromItem() || !edge->toItem())
            continue;
        const Card from = nodeCard(*edge->fromItem());
        const Card to = nodeCard(*edge->toItem());
        if (!nearSegment(point, from.center, to.center) || !editor.isDrawn(*edge))
            continue;
        const EdgeLine line = EdgeLine::between(from.center, from.size, to.center, to.size);
        if (EdgeHitShape{line.start, line.end}.contains(point))
            return {CanvasHit::Kind::edge, edge->id};
    }
    const auto &links = flow->fileLinks();
    for (std::size_t i = links.size(); i-- > 0;) {
        const FileLink *link = links[i];
        if (!editor.isDrawn(*link))
            continue;
        const Card from = fileCard(*link->file());
        const Card to = nodeCard(*link->node());
        const EdgeLine line = EdgeLine::between(from.center, from.size, to.center, to.size);
        if (EdgeHitShape{line.start, line.end}.contains(point))
            return {CanvasHit::Kind::fileLink, link->id};
    }
    return {};
}

} // namespace fenrow::CanvasHitTest
