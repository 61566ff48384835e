#pragma once

#include <QString>

#include <chrono>

namespace benchmark {
class State;
}

namespace fenrow::bench {

// Marks the running benchmark as failed with `reason`. The program then
// exits non-zero, so a smoke run under CTest fails on a wrong result and
// not only on a crash.
void fail(benchmark::State &state, const QString &reason);

// Wall time since `start`, for benchmarks that time single operations.
inline double secondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// The main of every benchmark program, after it registered its benchmarks.
int runBenchmarks(int argc, char **argv);

} // namespace fenrow::bench
