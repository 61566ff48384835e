#pragma once

#include "CanvasGeometry.h"

#include <QPointF>
#include <QUuid>

namespace fenrow {

class CanvasEditor;

// What lies under the pointer, topmost first: the selected edge's end
// handles, then cards (a later card above an earlier one; its port, then
// its resize grip, then its body), file cards likewise, edges, file links,
// and the background. Ports, handles and grips keep their size on screen;
// everything else is measured on the canvas.
struct CanvasHit {
    enum class Kind { background, card, port, resizeGrip, file, filePort, fileResizeGrip, edge, edgeHandle, fileLink };

    Kind kind = Kind::background;
    // The card, file, edge or link hit.
    QUuid id;
    // Which end, for an edge handle.
    EdgeEnd end = EdgeEnd::source;

    friend bool operator==(const CanvasHit &, const CanvasHit &) = default;
};

namespace CanvasHitTest {

CanvasHit at(const CanvasEditor &editor, QPointF screenPoint);

} // namespace CanvasHitTest

} // namespace fenrow
