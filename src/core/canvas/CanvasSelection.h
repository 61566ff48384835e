#pragma once

#include <QSet>
#include <QUuid>

#include <optional>

namespace fenrow {

// What is selected on a canvas: cards (nodes and files) by id, or one edge.
struct CanvasSelection {
    QSet<QUuid> itemIDs;
    std::optional<QUuid> edgeID;

    friend bool operator==(const CanvasSelection &, const CanvasSelection &) = default;
};

} // namespace fenrow
