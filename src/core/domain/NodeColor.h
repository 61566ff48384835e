#pragma once

#include "RawEnum.h"

namespace fenrow {

enum class NodeColor { none, red, orange, yellow, green, blue, purple, pink, grey };

template <>
struct RawNames<NodeColor> {
    static constexpr std::array<const char *, 9> names{"none", "red", "orange", "yellow", "green", "blue", "purple", "pink", "grey"};
};

} // namespace fenrow
