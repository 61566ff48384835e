#pragma once

#include "RawEnum.h"

namespace fenrow {

enum class NodeStatus { pending, inProgress, done, paused };

template <>
struct RawNames<NodeStatus> {
    static constexpr std::array<const char *, 4> names{"pending", "inProgress", "done", "paused"};
};

} // namespace fenrow
