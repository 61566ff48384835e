// `fenrow ready` as a user runs it: a fresh process that starts, opens the
// large store, gathers the Ready list and prints it. The program finds the
// store through XDG_DATA_HOME, like any other; the settings folder is
// empty, so the list comes in its default order, by flow.
#include "BenchmarkMain.h"
#include "GeneratedStores.h"
#include "LargeStoreGenerator.h"
#include "LiveStore.h"

#include "Readiness.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <chrono>
#include <map>

using namespace fenrow;
using namespace fenrow::bench;

namespace {

using Clock = std::chrono::steady_clock;

// A home for the program: the store as fenrow/default.store under its data
// folder, and an empty settings folder. Days are cut in UTC, and the clock
// is the generator's, so the program sees the store as it was generated.
struct Home {
    QTemporaryDir folder;
    QProcessEnvironment environment;

    static Home *of(const LargeStoreShape &shape, QString *error)
    {
        static std::map<LargeStoreShape, std::unique_ptr<Home>> homes;
        std::unique_ptr<Home> &home = homes[shape];
        if (home)
            return home.get();
        auto made = std::make_unique<Home>();
        const QDir root(made->folder.path());
        const QString data = root.filePath(QStringLiteral("data"));
        const QString config = root.filePath(QStringLiteral("config"));
        const QString storeFolder = QDir(data).filePath(QStringLiteral("fenrow"));
        if (!QDir().mkpath(storeFolder) || !QDir().mkpath(config)) {
            *error = QStringLiteral("cannot create folders in %1").arg(root.path());
            return nullptr;
        }
        const QString copy = GeneratedStores::workingCopy(shape, storeFolder, error);
        if (copy.isEmpty())
            return nullptr;
        if (!QFile::rename(copy, QDir(storeFolder).filePath(QStringLiteral("default.store")))) {
            *error = QStringLiteral("cannot name %1 default.store").arg(copy);
            return nullptr;
        }
        made->environment = QProcessEnvironment::systemEnvironment();
        made->environment.insert(QStringLiteral("XDG_DATA_HOME"), data);
        made->environment.insert(QStringLiteral("XDG_CONFIG_HOME"), config);
        made->environment.insert(QStringLiteral("TZ"), QStringLiteral("UTC"));
        home = std::move(made);
        return home.get();
    }
};

struct Run {
    double seconds = 0;
    QByteArray output;
    QString failure;
};

Run runProgram(const Home &home, QStringList arguments)
{
    arguments << QStringLiteral("--now") << LargeStoreGenerator::now().toString(Qt::ISODate);
    QProcess child;
    child.setProcessEnvironment(home.environment);
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    Run run;
    const Clock::time_point start = Clock::now();
    child.start(QStringLiteral(FENROW_BENCH_FENROW_PROGRAM), arguments);
    const bool finished = child.waitForFinished(-1);
    run.seconds = std::chrono::duration<double>(Clock::now() - start).count();
    run.output = child.readAllStandardOutput();
    if (!finished || child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0)
        run.failure = QStringLiteral("fenrow %1 failed (exit %2): %3")
                          .arg(arguments.join(QLatin1Char(' ')))
                          .arg(child.exitCode())
                          .arg(child.errorString());
    return run;
}

// The program's list, read from its JSON, must be the one the library
// gathers from the same store: the same tasks in the same order.
QString listMismatch(const Home &home, const LargeStoreShape &shape)
{
    const Run run = runProgram(home, {QStringLiteral("ready"), QStringLiteral("--json")});
    if (!run.failure.isEmpty())
        return run.failure;
    const QJsonArray printed = QJsonDocument::fromJson(run.output).array();
    QString error;
    LiveStore *live = LiveStore::of(shape, &error);
    if (!live)
        return error;
    // In the list's default order, by flow with today's tasks first.
    const QList<ReadyTask> expected = Readiness::inListOrder(live->store->flows(), LargeStoreGenerator::now(),
                                                             LargeStoreGenerator::calendar(), ReadySort::flow);
    if (printed.size() != expected.size())
        return QStringLiteral("fenrow ready listed %1 tasks, %2 are ready").arg(printed.size()).arg(expected.size());
    for (qsizetype i = 0; i < expected.size(); ++i) {
        if (QUuid::fromString(printed[i].toObject().value(QStringLiteral("id")).toString()) != expected[i].node->id)
            return QStringLiteral("task %1 of fenrow ready is not %2").arg(i).arg(expected[i].node->title);
    }
    return {};
}

void readyCommand(benchmark::State &state, LargeStoreShape shape, QStringList arguments)
{
    QString error;
    Home *home = Home::of(shape, &error);
    if (!home) {
        fail(state, error);
        return;
    }
    static bool checked = false;
    if (!checked) {
        if (const QString wrong = listMismatch(*home, shape); !wrong.isEmpty()) {
            fail(state, wrong);
            return;
        }
        checked = true;
    }
    qsizetype lines = 0;
    for (auto _ : state) {
        const Run run = runProgram(*home, arguments);
        state.SetIterationTime(run.seconds);
        if (!run.failure.isEmpty()) {
            fail(state, run.failure);
            return;
        }
        lines = run.output.count('\n');
    }
    state.counters["lines"] = double(lines);
}

} // namespace

int main(int argc, char **argv)
{
    const LargeStoreShape shape = GeneratedStores::scaledShape();
    const std::string size = "/nodes:" + std::to_string(shape.nodes);
    const QString ready = QStringLiteral("ready");
    // The same program started and stopped without opening the store: what
    // the process costs before any work.
    benchmark::RegisterBenchmark(("StartOnly" + size).c_str(), readyCommand, shape, QStringList{ready, QStringLiteral("--help")})
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("ReadyCommand" + size).c_str(), readyCommand, shape, QStringList{ready})
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(("ReadyCommand/json" + size).c_str(), readyCommand, shape,
                                 QStringList{ready, QStringLiteral("--json")})
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    return runBenchmarks(argc, argv);
}
