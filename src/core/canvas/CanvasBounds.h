#pragma once

#include <algorithm>

namespace fenrow::CanvasBounds {

// Positions stay within this square so that the canvas remains reachable.
constexpr double limit = 20000;

inline double clampCoordinate(double value)
{
    return std::clamp(value, -limit, limit);
}

} // namespace fenrow::CanvasBounds
