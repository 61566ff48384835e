#include "NodeSizeResolver.h"

#include "domain/FlowFile.h"
#include "domain/FlowNode.h"

#include <algorithm>

namespace fenrow {

NodeSize NodeSizeResolver::clampManual(double width, double height)
{
    return {std::clamp(width, minWidth, maxWidth), std::clamp(height, minHeight, maxHeight)};
}

NodeSize NodeSizeResolver::resolve(const FlowNode &node) const
{
    if (node.hasManualSize())
        return clampManual(*node.manualWidth, *node.manualHeight);
    if (sizesByEstimate && node.estimateMinutes) {
        const qint64 minutes = *node.estimateMinutes;
        if (minutes <= 30)
            return {180, 90};
        if (minutes <= 120)
            return {210, 120};
        if (minutes <= 480)
            return {270, 150};
        return {330, 180};
    }
    return defaultSize;
}

NodeSize NodeSizeResolver::resolveFile(const FlowFile &file)
{
    if (file.manualWidth && file.manualHeight)
        return clampManual(*file.manualWidth, *file.manualHeight);
    return file.thumbnail.isPresent() ? pictureFileSize : defaultSize;
}

} // namespace fenrow
