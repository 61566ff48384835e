#pragma once

#include "RawEnum.h"

namespace fenrow {

// Declared order is rank order: high outranks medium outranks low outranks none.
enum class NodePriority { none, low, medium, high };

template <>
struct RawNames<NodePriority> {
    static constexpr std::array<const char *, 4> names{"none", "low", "medium", "high"};
};

} // namespace fenrow
