#pragma once

#include <QDateTime>

#include <optional>

namespace fenrow {

// The one range of every date, size, position and estimate the store holds,
// applied wherever a value comes in (an edit, a command, an import, a
// restore, an engine), so that whatever the store holds can be written to a
// backup and read back. Out of range, a value is clamped where a nearest
// value means the same to the user (positions, sizes, estimates, zoom), and
// dropped where it does not (a date in no year a calendar can show).
namespace ValueLimits {

// 260 working days of eight hours: past that a number is a mistake.
inline constexpr qint64 maxEstimateMinutes = 124800;
// The years a backup's dates can be written in.
inline constexpr int firstYear = 1;
inline constexpr int lastYear = 9999;

// Under a minute is no estimate; over the limit, the limit.
std::optional<qint64> estimate(std::optional<qint64> minutes);
// Within the canvas square; a number that is no number is the centre.
double coordinate(double value);
// A card's manual size within the card limits: both sides or neither.
struct ManualSize {
    std::optional<double> width;
    std::optional<double> height;
};
ManualSize manualSize(std::optional<double> width, std::optional<double> height);
// The canvas's zoom limits; a number that is no number is actual size.
double viewportScale(double scale);
double viewportOffset(double offset);
// Whether a moment can be kept and written: valid, in years 1 to 9999.
bool isStorable(const QDateTime &moment);
// The moment when storable, else none.
std::optional<QDateTime> date(const std::optional<QDateTime> &moment);
// Counts and ranks are never negative.
qint64 count(qint64 value);

} // namespace ValueLimits

} // namespace fenrow
