#pragma once

#include <compare>

namespace fenrow::bench {

// How many records a generated store holds. The full shape is a heavy user
// after a few years; smaller ones keep the same proportions, so a smoke run
// exercises the same mix in a fraction of the time.
struct LargeStoreShape {
    int flows = 250;
    int nodes = 50000;
    int edges = 75000;
    int completionRecords = 5000;
    int files = 6;

    static LargeStoreShape full() { return {}; }
    // `scale` multiplies every count; each flow keeps at least a few nodes
    // and there are always at least two flows and one attachment.
    static LargeStoreShape scaled(double scale);
    // The shape whose node count is `nodes`, the other counts in proportion.
    static LargeStoreShape withNodes(int nodes);
    // A single flow with no archive and no attachments: a graph to edit or
    // arrange on its own.
    static LargeStoreShape oneFlow(int nodes, int edges);

    friend auto operator<=>(const LargeStoreShape &, const LargeStoreShape &) = default;
};

} // namespace fenrow::bench
