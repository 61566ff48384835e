#include "BenchmarkMain.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <optional>

namespace fenrow::bench {

namespace {

bool failed = false;

} // namespace

void fail(benchmark::State &state, const QString &reason)
{
    failed = true;
    state.SkipWithError(qPrintable(reason));
}

int runBenchmarks(int argc, char **argv)
{
    // A program that needs widgets makes its QApplication first.
    std::optional<QCoreApplication> application;
    if (!QCoreApplication::instance())
        application.emplace(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return failed ? 1 : 0;
}

} // namespace fenrow::bench
