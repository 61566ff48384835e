#pragma once

#include <QString>

namespace benchmark {
class State;
}

namespace fenrow::bench {

// Marks the running benchmark as failed with `reason`. The program then
// exits non-zero, so a smoke run under CTest fails on a wrong result and
// not only on a crash.
void fail(benchmark::State &state, const QString &reason);

// The main of every benchmark program, after it registered its benchmarks.
int runBenchmarks(int argc, char **argv);

} // namespace fenrow::bench
