#include "ValueLimits.h"

#include "canvas/CanvasBounds.h"
#include "canvas/CanvasInteraction.h"
#include "canvas/NodeSizeResolver.h"

#include <cmath>

namespace fenrow::ValueLimits {

namespace {

// Far beyond any pan the canvas makes, short of numbers that lose their
// meaning when written and read back.
constexpr double offsetLimit = 1e9;

} // namespace

std::optional<qint64> estimate(std::optional<qint64> minutes)
{
    if (!minutes || *minutes < 1)
        return std::nullopt;
    return std::min(*minutes, maxEstimateMinutes);
}

double coordinate(double value)
{
    return std::isfinite(value) ? CanvasBounds::clampCoordinate(value) : 0.0;
}

ManualSize manualSize(std::optional<double> width, std::optional<double> height)
{
    if (!width || !height || !std::isfinite(*width) || !std::isfinite(*height))
        return {};
    const NodeSize size = NodeSizeResolver::clampManual(*width, *height);
    return {size.width, size.height};
}

double viewportScale(double scale)
{
    if (!std::isfinite(scale))
        return 1.0;
    return std::clamp(scale, CanvasZoom::minimumScale, CanvasZoom::maximumScale);
}

double viewportOffset(double offset)
{
    return std::isfinite(offset) ? std::clamp(offset, -offsetLimit, offsetLimit) : 0.0;
}

bool isStorable(const QDateTime &moment)
{
    // As milliseconds, the years of UTC without a calendar: opening a
    // store passes every date it holds through here.
    static const qint64 first = QDateTime(QDate(firstYear, 1, 1), QTime(0, 0), Qt::UTC).toMSecsSinceEpoch();
    static const qint64 after = QDateTime(QDate(lastYear + 1, 1, 1), QTime(0, 0), Qt::UTC).toMSecsSinceEpoch();
    if (!moment.isValid())
        return false;
    const qint64 milliseconds = moment.toMSecsSinceEpoch();
    return milliseconds >= first && milliseconds < after;
}

std::optional<QDateTime> date(const std::optional<QDateTime> &moment)
{
    return moment && isStorable(*moment) ? moment : std::nullopt;
}

qint64 count(qint64 value)
{
    return std::max<qint64>(value, 0);
}

} // namespace fenrow::ValueLimits
