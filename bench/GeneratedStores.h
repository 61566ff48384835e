#pragma once

#include "LargeStoreShape.h"

#include <QString>

namespace fenrow::bench {

// Store files for the benchmarks. Each shape is generated once per process
// into a temporary folder, or once for several processes when the
// environment variable FENROW_BENCH_CACHE names a folder to keep them in.
// Benchmarks work on copies, so the generated file itself stays pristine.
class GeneratedStores {
public:
    // FENROW_BENCH_SCALE, 1 when unset: smoke runs shrink every store.
    static double scale();
    // The full shape at the current scale.
    static LargeStoreShape scaledShape();

    // The generated store of `shape`; empty, with a reason, on failure.
    static QString pristine(const LargeStoreShape &shape, QString *error);
    // A private copy of the store of `shape` inside `folder`.
    static QString workingCopy(const LargeStoreShape &shape, const QString &folder, QString *error);
};

} // namespace fenrow::bench
