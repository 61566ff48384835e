#include "CanvasHitTest.h"

#include "CanvasEditor.h"

#include <cmath>

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

// The part of a card under the point: port, grip or body.
std::optional<CanvasHit::Kind> cardPart(const CanvasScene::Card &card, QPointF point, double perScreenUnit, bool isFile)
{
    const double portRadius = portDiameter * portHoverGrowth / 2 * perScreenUnit;
    if (withinRadius(point, portAnchor(card.center, card.size), portRadius))
        return isFile ? CanvasHit::Kind::filePort : CanvasHit::Kind::port;
    const double halfWidth = card.size.width / 2;
    const double halfHeight = card.size.height / 2;
    if (std::abs(point.x() - card.center.x()) > halfWidth || std::abs(point.y() - card.center.y()) > halfHeight)
        return std::nullopt;
    const double grip = resizeGripSide * perScreenUnit;
    if (point.x() >= card.center.x() + halfWidth - grip && point.y() >= card.center.y() + halfHeight - grip)
        return isFile ? CanvasHit::Kind::fileResizeGrip : CanvasHit::Kind::resizeGrip;
    return isFile ? CanvasHit::Kind::file : CanvasHit::Kind::card;
}

bool near(const QRectF &box, QPointF point)
{
    const double margin = hitWidth / 2;
    return point.x() >= box.left() - margin && point.x() <= box.right() + margin && point.y() >= box.top() - margin
        && point.y() <= box.bottom() + margin;
}

EdgeLine clipped(const CanvasScene::Card &from, const CanvasScene::Card &to)
{
    return EdgeLine::between(from.center, from.size, to.center, to.size);
}

} // namespace

CanvasHit at(const CanvasEditor &editor, QPointF screenPoint)
{
    const CanvasInteraction &interaction = editor.interaction();
    const CanvasScene &scene = editor.scene();
    const QPointF point = interaction.toCanvas(screenPoint);
    const double perScreenUnit = 1 / interaction.divisorScale();

    if (const auto selected = interaction.selectedEdgeID()) {
        if (const int index = scene.edgeIndex(*selected); index >= 0) {
            const CanvasScene::Line &edge = scene.edges[std::size_t(index)];
            const EdgeLine line = clipped(scene.nodes[std::size_t(edge.from)], scene.nodes[std::size_t(edge.to)]);
            const double half = handleHitSide / 2 * perScreenUnit;
            if (withinSquare(point, line.start, half))
                return {CanvasHit::Kind::edgeHandle, edge.id, EdgeEnd::source};
            if (withinSquare(point, line.end, half))
                return {CanvasHit::Kind::edgeHandle, edge.id, EdgeEnd::target};
        }
    }
    // Later cards are drawn above earlier ones.
    for (auto card = scene.nodes.rbegin(); card != scene.nodes.rend(); ++card) {
        if (const auto part = cardPart(*card, point, perScreenUnit, false))
            return {*part, card->id};
    }
    for (auto card = scene.files.rbegin(); card != scene.files.rend(); ++card) {
        if (const auto part = cardPart(*card, point, perScreenUnit, true))
            return {*part, card->id};
    }
    for (auto edge = scene.edges.rbegin(); edge != scene.edges.rend(); ++edge) {
        if (!near(edge->shownBox, point))
            continue;
        const EdgeLine line = clipped(scene.nodes[std::size_t(edge->from)], scene.nodes[std::size_t(edge->to)]);
        if (EdgeHitShape{line.start, line.end}.contains(point))
            return {CanvasHit::Kind::edge, edge->id};
    }
    for (auto link = scene.links.rbegin(); link != scene.links.rend(); ++link) {
        if (!near(link->shownBox, point))
            continue;
        const EdgeLine line = clipped(scene.files[std::size_t(link->from)], scene.nodes[std::size_t(link->to)]);
        if (EdgeHitShape{line.start, line.end}.contains(point))
            return {CanvasHit::Kind::fileLink, link->id};
    }
    return {};
}

} // namespace fenrow::CanvasHitTest
