#pragma once

#include "NodeSize.h"

#include <QPointF>
#include <QRectF>
#include <QUuid>

#include <vector>

namespace fenrow {

// What the canvas draws, flattened into plain arrays for the pointer: the
// drawn cards in drawing order with their shown centre and size, and the
// drawn lines as pairs of indices. The editor rebuilds it when the flow, a
// gesture in progress or the filter changes what is shown, so that hit
// tests and the rubber band walk contiguous memory instead of the records.
struct CanvasScene {
    struct Card {
        QUuid id;
        // Where the card is shown (live gestures included) and where it is
        // stored; the rubber band goes by the stored place.
        QPointF center;
        QPointF stored;
        NodeSize size;
    };
    struct Line {
        QUuid id;
        // Indices into `files` (links only) or `nodes`.
        int from = 0;
        int to = 0;
        // The box around both shown centres: nothing outside it, widened by
        // half the hit band, can touch the line.
        QRectF shownBox;
        // The box around both stored centres.
        QRectF storedBox;
        // The line's place in its flow's list of edges or of links.
        int listed = -1;
    };

    std::vector<Card> nodes;
    std::vector<Card> files;
    std::vector<Line> edges;
    std::vector<Line> links;

    // The index of the line with this id, or -1.
    int edgeIndex(const QUuid &id) const;
};

} // namespace fenrow
