// The desktop program started on the large store, as a user starts it: the
// store opened from its usual place, the history, preferences, engine, main
// window and shell made by the program's own start-up, timed until the
// window has painted. Then the two heavy places a user goes first: the
// Ready list of the whole store, and the largest flow's canvas.
#include "BenchmarkMain.h"
#include "GeneratedStores.h"
#include "OperationSamples.h"

#include "program/DesktopProgram.h"
#include "window/DetailRoute.h"
#include "window/MainWindow.h"
#include "domain/FenrowModelContainer.h"
#include "domain/FenrowStore.h"
#include "domain/TaskFlow.h"
#include "shell/AppPreferences.h"
#include "shell/ProcessEntry.h"
#include "shell/SettingsFile.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <chrono>

using namespace fenrow;
using namespace fenrow::bench;

namespace {

using Clock = std::chrono::steady_clock;

// Notes the first paint of anything in a main window.
class PaintWatch : public QObject {
public:
    bool painted = false;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            if (auto *widget = qobject_cast<QWidget *>(watched); widget && qobject_cast<MainWindow *>(widget->window()))
                painted = true;
        }
        return false;
    }
};

bool waitForPaint(PaintWatch &watch)
{
    const Clock::time_point limit = Clock::now() + std::chrono::seconds(30);
    while (!watch.painted && Clock::now() < limit)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    return watch.painted;
}

// The store where the program looks for it, and preferences of a user who
// has met the program already, both in a folder of their own.
bool prepareHome(const QTemporaryDir &home, const LargeStoreShape &shape, QString *error)
{
    qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toUtf8());
    qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toUtf8());
    const QString source = GeneratedStores::pristine(shape, error);
    if (source.isEmpty())
        return false;
    const QString target = FenrowModelContainer::storePath();
    QDir().mkpath(QFileInfo(target).absolutePath());
    if (!QFile::copy(source, target)) {
        *error = QStringLiteral("cannot copy the store to %1").arg(target);
        return false;
    }
    AppPreferences preferences(SettingsFile::open());
    preferences.setHasCompletedOnboarding(true);
    preferences.setHasSeededSampleFlow(true);
    return true;
}

void openToWindow(benchmark::State &state, LargeStoreShape shape)
{
    QTemporaryDir home;
    QString error;
    if (!prepareHome(home, shape, &error)) {
        fail(state, error);
        return;
    }
    auto &application = *static_cast<QApplication *>(QCoreApplication::instance());
    PaintWatch watch;
    application.installEventFilter(&watch);

    OperationSamples opening;
    OperationSamples ready;
    OperationSamples flow;
    for (auto _ : state) {
        watch.painted = false;
        Clock::time_point start = Clock::now();
        std::unique_ptr<DesktopProgram::Session> session = DesktopProgram::Session::start(application, &error);
        if (!session || !waitForPaint(watch)) {
            fail(state, session ? QStringLiteral("the window never painted") : error);
            break;
        }
        const double openSeconds = secondsSince(start);
        state.SetIterationTime(openSeconds);
        opening.add(openSeconds);

        MainWindow &window = session->window();
        watch.painted = false;
        start = Clock::now();
        window.setRoute(DetailRoute::ready());
        if (!waitForPaint(watch)) {
            fail(state, QStringLiteral("the Ready list never painted"));
            break;
        }
        ready.add(secondsSince(start));

        const TaskFlow *largest = nullptr;
        for (const TaskFlow *candidate : session->store().flows()) {
            if (!largest || candidate->items().size() > largest->items().size())
                largest = candidate;
        }
        if (!largest) {
            fail(state, QStringLiteral("the program opened a store without flows"));
            break;
        }
        watch.painted = false;
        start = Clock::now();
        window.selectFlow(largest->id);
        if (!waitForPaint(watch)) {
            fail(state, QStringLiteral("the flow never painted"));
            break;
        }
        flow.add(secondsSince(start));
        state.counters["largest_flow_tasks"] = double(largest->items().size());
        session.reset();
        QCoreApplication::processEvents();
    }
    application.removeEventFilter(&watch);
    opening.report(state, "open_");
    ready.report(state, "ready_");
    flow.report(state, "flow_");
}

} // namespace

int main(int argc, char **argv)
{
    // Real fonts and widgets, no screen.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    // The program's names, so that the store and settings are looked for
    // where the program looks.
    ProcessEntry::prepare(application);
    const LargeStoreShape large = GeneratedStores::scaledShape();
    benchmark::RegisterBenchmark(("OpenToWindow/nodes:" + std::to_string(large.nodes)).c_str(), openToWindow, large)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(qEnvironmentVariableIntValue("FENROW_BENCH_WINDOW_ROUNDS") > 0 ? qEnvironmentVariableIntValue("FENROW_BENCH_WINDOW_ROUNDS") : 5);
    return runBenchmarks(argc, argv);
}
