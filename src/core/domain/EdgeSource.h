#pragma once

#include "RawEnum.h"

namespace fenrow {

enum class EdgeSource { ai, manual };

template <>
struct RawNames<EdgeSource> {
    static constexpr std::array<const char *, 2> names{"ai", "manual"};
};

} // namespace fenrow
