#pragma once

#include "RawEnum.h"

namespace fenrow {

// A stored kind may be absent; absent means dependency everywhere.
enum class EdgeKind { dependency, subtask };

template <>
struct RawNames<EdgeKind> {
    static constexpr std::array<const char *, 2> names{"dependency", "subtask"};
};

} // namespace fenrow
