#include "OperationSamples.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>

namespace fenrow::bench {

void OperationSamples::report(benchmark::State &state, const char *prefix)
{
    if (m_ms.empty())
        return;
    std::sort(m_ms.begin(), m_ms.end());
    auto at = [this](double quantile) { return m_ms[std::size_t(quantile * double(m_ms.size() - 1))]; };
    const std::string name(prefix);
    state.counters[name + "median_ms"] = at(0.5);
    state.counters[name + "p90_ms"] = at(0.9);
    state.counters[name + "max_ms"] = m_ms.back();
}

} // namespace fenrow::bench
