#pragma once

namespace fenrow {

struct NodeSize {
    double width = 210;
    double height = 120;

    friend bool operator==(const NodeSize &, const NodeSize &) = default;
};

} // namespace fenrow
