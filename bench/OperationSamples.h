#pragma once

#include <vector>

namespace benchmark {
class State;
}

namespace fenrow::bench {

// Times of single operations. The library reports means over iterations;
// for an operation that saves, the spread (a checkpoint now and then)
// matters too.
class OperationSamples {
public:
    void add(double seconds) { m_ms.push_back(seconds * 1000.0); }
    bool empty() const { return m_ms.empty(); }

    // Sets the counters `<prefix>median_ms`, `<prefix>p90_ms` and
    // `<prefix>max_ms` of the running benchmark.
    void report(benchmark::State &state, const char *prefix = "");

private:
    std::vector<double> m_ms;
};

} // namespace fenrow::bench
