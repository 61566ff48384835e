#pragma once

#include "NodeSize.h"

namespace fenrow {

class FlowNode;

// A card's size: the user's manual size when both sides are set (within
// the card limits), else a size by estimate when that option is on, else
// the default 210 × 120.
class NodeSizeResolver {
public:
    static constexpr NodeSize defaultSize{210, 120};
    static constexpr double minWidth = 150;
    static constexpr double maxWidth = 480;
    static constexpr double minHeight = 90;
    static constexpr double maxHeight = 360;

    NodeSizeResolver() = default;
    explicit NodeSizeResolver(bool sizesByEstimate) : sizesByEstimate(sizesByEstimate) {}

    NodeSize resolve(const FlowNode &node) const;
    static NodeSize clampManual(double width, double height);

    bool sizesByEstimate = false;
};

} // namespace fenrow
