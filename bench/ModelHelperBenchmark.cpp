// The language model's helper on the tiny test model: how long the helper
// takes to start and load, how soon the first token comes and how fast the
// rest follow, and what one request costs on top of its generation (JSON
// both ways, the pipe, the helper's thread). The model is random: these
// figures are the path's, not a real model's.
//
// FENROW_BENCH_MODEL_THREADS sets llama.cpp's threads (default 1: on a busy
// machine more threads wait for each other more than they work).
#include "BenchmarkMain.h"

#include "ModelHelper.h"
#include "TinyModel.h"

#include <QJsonDocument>

#include <benchmark/benchmark.h>

#include <chrono>

using namespace fenrow;
using namespace fenrow::bench;
using fenrow::testing::tinyModel;
using namespace std::chrono_literals;

namespace {

using Clock = std::chrono::steady_clock;


ModelHelperSettings settings()
{
    ModelHelperSettings settings;
    settings.modelPath = tinyModel();
    settings.threads = qEnvironmentVariableIntValue("FENROW_BENCH_MODEL_THREADS");
    if (settings.threads <= 0)
        settings.threads = 1;
    settings.contextSize = 1024;
    return settings;
}

// Start to ready: node, llama.cpp's binary, the model file and a context.
void BM_StartAndLoadTinyModel(benchmark::State &state)
{
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        ModelHelper helper(settings());
        const ModelStatus status = helper.waitUntilLoaded(60s);
        state.SetIterationTime(secondsSince(start));
        if (status.state != ModelStatus::State::Ready)
            return fail(state, status.message);
    }
}
BENCHMARK(BM_StartAndLoadTinyModel)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

// The settings' "Try it": a short answer without a grammar.
void BM_FirstTokenAndTokensPerSecond(benchmark::State &state)
{
    ModelHelper helper(settings());
    if (helper.waitUntilLoaded(60s).state != ModelStatus::State::Ready)
        return fail(state, helper.status().message);
    double firstToken = 0;
    double speed = 0;
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        const ModelTrial trial = helper.tryModel();
        state.SetIterationTime(secondsSince(start));
        if (!trial.ok || trial.tokens < 2)
            return fail(state, trial.failure);
        firstToken += trial.firstTokenSeconds;
        speed += trial.tokensPerSecond;
    }
    state.counters["first_token_ms"] = benchmark::Counter(firstToken * 1000 / state.iterations());
    state.counters["tokens_per_s"] = benchmark::Counter(speed / state.iterations());
}
BENCHMARK(BM_FirstTokenAndTokensPerSecond)->UseManualTime()->Unit(benchmark::kMillisecond);

// One day-plan request under its grammar, through ModelHelper::request; the
// helper reports its own time from prompt to parsed record.
void BM_RequestOverhead(benchmark::State &state)
{
    ModelHelper helper(settings());
    if (helper.waitUntilLoaded(60s).state != ModelStatus::State::Ready)
        return fail(state, helper.status().message);
    const QJsonObject request{
        {QStringLiteral("instruction"), QStringLiteral("You order a day's tasks.")},
        {QStringLiteral("prompt"), QStringLiteral("Tasks (numbered):\n1. Pack\n2. Book the train\n3. Water the plants")},
        {QStringLiteral("schema"),
         QJsonDocument::fromJson(R"({"type":"object","properties":{"order":{"type":"array","items":{"type":"integer"}}},"required":["order"]})")
             .object()},
        {QStringLiteral("temperature"), 0.1},
    };
    double generation = 0;
    double total = 0;
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        const HelperReply reply = helper.request(request);
        const double seconds = secondsSince(start);
        state.SetIterationTime(seconds);
        if (!reply.ok)
            return fail(state, reply.failure);
        total += seconds;
        generation += reply.answer.value(QStringLiteral("seconds")).toDouble();
    }
    state.counters["generation_ms"] = benchmark::Counter(generation * 1000 / state.iterations());
    state.counters["overhead_ms"] = benchmark::Counter((total - generation) * 1000 / state.iterations());
}
BENCHMARK(BM_RequestOverhead)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return runBenchmarks(argc, argv);
}
