#pragma once

#include "NodeSize.h"

namespace fenrow {

class FlowFile;
class FlowNode;

// A card's size: the user's manual size when both sides are set (within
// the card limits), else a size by estimate when that option is on, else
// the default 210 × 120.
class NodeSizeResolver {
public:
    static constexpr NodeSize defaultSize{210, 120};
    static constexpr NodeSize pictureFileSize{270, 180};
    static constexpr double minWidth = 150;
    static constexpr double maxWidth = 480;
    static constexpr double minHeight = 90;
    static constexpr double maxHeight = 360;

    NodeSizeResolver() = default;
    explicit NodeSizeResolver(bool sizesByEstimate) : sizesByEstimate(sizesByEstimate) {}

    NodeSize resolve(const FlowNode &node) const;
    // A file card: its manual size, else larger when it has a picture to
    // show (a thumbnail was made), else the default. Estimates do not apply.
    static NodeSize resolveFile(const FlowFile &file);
    static NodeSize clampManual(double width, double height);

    bool sizesByEstimate = false;
};

} // namespace fenrow
