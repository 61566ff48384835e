// `fenrow ready` and `fenrow add` as a user types them, on a store of
// 10,000 tasks, in the two ways a command can run: alone, where the process
// takes the store's lock and opens the store itself, and handed over, where
// the desktop program owns the store and the command runs there on the
// store it has loaded, sent over the session bus (RunCommand).
//
// The handed-over runs use a bus and a desktop program of their own,
// started by this process: a private dbus-daemon, and `fenrow` with no
// subcommand on the offscreen platform. The runs alone live in another home
// and have no bus in their environment, so nothing can answer them.
//
// Besides the whole processes, the same RunCommand is called straight from
// this process (no process started, one bus round trip), and a bare bus
// round trip (StorePath) is timed: with `fenrow --version`, the floor of
// starting a process at all, these show where a handed-over command spends
// its time.
#include "BenchmarkMain.h"
#include "GeneratedStores.h"
#include "LargeStoreGenerator.h"

#include "FenrowBusClient.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QSet>
#include <QTemporaryDir>
#include <QUuid>

#include <benchmark/benchmark.h>

#include <sys/prctl.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <map>
#include <memory>
#include <optional>
#include <vector>

using namespace fenrow;
using namespace fenrow::bench;

namespace {

using Clock = std::chrono::steady_clock;

const QString busService = QStringLiteral("studio.tarnwick.Fenrow");
const QString busPath = QStringLiteral("/studio/tarnwick/Fenrow");
const QString busInterface = QStringLiteral("studio.tarnwick.Fenrow");
const QString busConnectionName = QStringLiteral("fenrow-bench-forwarded");

// Adds, one task per iteration. Fixed, so that the adds alone and the adds
// handed over grow their stores by the same count; at 20 per repetition a
// full run adds 200 tasks to a store of 10,000, which leaves it in the same
// size class for every add measured.
constexpr int addsPerRepetition = 20;
const QString addedTitle = QStringLiteral("Call the printer about the toner");

// Loading 10,000 tasks, the window and the bus takes well under a second;
// this only bounds a program that never comes up.
constexpr std::chrono::seconds programPatience{120};

// The store of 10,000 tasks: a fifth of the large one, shrunk again by
// FENROW_BENCH_SCALE for the smoke runs.
LargeStoreShape measuredShape()
{
    return LargeStoreShape::scaled(0.2 * GeneratedStores::scale());
}

QString sameFile(const QString &path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return canonical.isEmpty() ? QDir::cleanPath(QFileInfo(path).absoluteFilePath()) : canonical;
}

// A home for the program: a copy of the generated store as
// fenrow/default.store under its data folder, and settings with the welcome
// done, which the desktop program needs to be fully up (both homes get the
// same settings, so both see the same Ready order). Days are cut in UTC.
struct Home {
    QTemporaryDir folder;
    QString storePath;
    QProcessEnvironment environment;

    static std::unique_ptr<Home> make(const LargeStoreShape &shape, QString *error)
    {
        auto home = std::make_unique<Home>();
        const QDir root(home->folder.path());
        const QString data = root.filePath(QStringLiteral("data"));
        const QString config = root.filePath(QStringLiteral("config"));
        const QString storeFolder = QDir(data).filePath(QStringLiteral("fenrow"));
        const QString configFolder = QDir(config).filePath(QStringLiteral("fenrow"));
        if (!home->folder.isValid() || !QDir().mkpath(storeFolder) || !QDir().mkpath(configFolder)) {
            *error = QStringLiteral("cannot create folders in %1").arg(root.path());
            return nullptr;
        }
        QFile settings(QDir(configFolder).filePath(QStringLiteral("fenrow.conf")));
        if (!settings.open(QIODevice::WriteOnly)
            || settings.write("[General]\npreferences.hasCompletedOnboarding=true\n") < 0) {
            *error = QStringLiteral("cannot write %1").arg(settings.fileName());
            return nullptr;
        }
        settings.close();
        const QString copy = GeneratedStores::workingCopy(shape, storeFolder, error);
        if (copy.isEmpty())
            return nullptr;
        home->storePath = QDir(storeFolder).filePath(QStringLiteral("default.store"));
        if (!QFile::rename(copy, home->storePath)) {
            *error = QStringLiteral("cannot name %1 default.store").arg(copy);
            return nullptr;
        }
        // No session bus and no display: a run alone must not find a Fenrow
        // to hand its command to, nor a way to start a bus.
        home->environment = QProcessEnvironment::systemEnvironment();
        for (const QString &name : {QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("DISPLAY"),
                                    QStringLiteral("WAYLAND_DISPLAY")})
            home->environment.remove(name);
        home->environment.insert(QStringLiteral("XDG_DATA_HOME"), data);
        home->environment.insert(QStringLiteral("XDG_CONFIG_HOME"), config);
        home->environment.insert(QStringLiteral("TZ"), QStringLiteral("UTC"));
        return home;
    }
};

// Children that must not outlive this process, even when it is killed
// (a smoke run past its time limit).
void endWithParent(QProcess &process)
{
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
}

// Asks a child to end as a user's session would (SIGTERM) and waits for it;
// a child that does not end is killed. The exit status, or why there is
// none.
QString stop(QProcess &process)
{
    if (process.state() == QProcess::NotRunning)
        return {};
    process.terminate();
    if (!process.waitForFinished(30000)) {
        process.kill();
        process.waitForFinished(-1);
        return QStringLiteral("did not end within 30 s of SIGTERM and was killed");
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return QStringLiteral("ended with status %1").arg(process.exitCode());
    return {};
}

// The last lines of a log, for a failure message.
QString tail(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.readAll();
    return QString::fromUtf8(bytes.right(2000));
}

// The private session bus and the desktop program on it, owning the store
// of `home`.
class RunningProgram {
public:
    ~RunningProgram() { shutDown(); }

    static std::unique_ptr<RunningProgram> start(Home &home, QString *error)
    {
        auto running = std::unique_ptr<RunningProgram>(new RunningProgram);
        if (!running->startBus(error) || !running->startDesktop(home, error))
            return nullptr;
        return running;
    }

    const QString &address() const { return m_address; }
    QDBusConnection connection() const { return QDBusConnection(busConnectionName); }

    // Stops the program, then the bus; what went wrong, if anything.
    QString shutDown()
    {
        QStringList problems;
        if (const QString problem = stop(m_desktop); !problem.isEmpty())
            problems << QStringLiteral("the desktop program %1 (log: %2)").arg(problem, tail(m_logPath));
        if (m_connected) {
            QDBusConnection::disconnectFromBus(busConnectionName);
            m_connected = false;
        }
        if (const QString problem = stop(m_bus); !problem.isEmpty())
            problems << QStringLiteral("dbus-daemon %1").arg(problem);
        return problems.join(QStringLiteral("; "));
    }

private:
    RunningProgram() = default;

    bool startBus(QString *error)
    {
        // The daemon prints its address on the descriptor given, then serves.
        endWithParent(m_bus);
        m_bus.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_bus.start(QStringLiteral("dbus-daemon"),
                    {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address=1")});
        const QDeadlineTimer deadline(std::chrono::seconds(10));
        while (!m_bus.canReadLine()) {
            if (!m_bus.waitForReadyRead(int(std::max<qint64>(1, deadline.remainingTime()))) || deadline.hasExpired()) {
                *error = QStringLiteral("dbus-daemon gave no address: %1").arg(m_bus.errorString());
                return false;
            }
        }
        m_address = QString::fromUtf8(m_bus.readLine()).trimmed();
        QDBusConnection connection = QDBusConnection::connectToBus(m_address, busConnectionName);
        m_connected = true;
        if (!connection.isConnected()) {
            *error = QStringLiteral("cannot connect to the private bus %1: %2")
                         .arg(m_address, connection.lastError().message());
            return false;
        }
        return true;
    }

    bool startDesktop(Home &home, QString *error)
    {
        QProcessEnvironment environment = home.environment;
        environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_address);
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        // Its talk goes to a file: a pipe nobody reads would fill and stop it.
        m_logPath = QDir(home.folder.path()).filePath(QStringLiteral("desktop.log"));
        endWithParent(m_desktop);
        m_desktop.setProcessEnvironment(environment);
        m_desktop.setProcessChannelMode(QProcess::MergedChannels);
        m_desktop.setStandardOutputFile(m_logPath);
        m_desktop.setStandardInputFile(QProcess::nullDevice());

        const Clock::time_point started = Clock::now();
        m_desktop.start(QStringLiteral(FENROW_BENCH_FENROW_PROGRAM), {});
        if (!m_desktop.waitForStarted()) {
            *error = QStringLiteral("cannot start the desktop program: %1").arg(m_desktop.errorString());
            return false;
        }
        // Ready for commands once it owns its name on the bus; the wait
        // between looks is the wait for the program to end, so a program
        // that stops early is noticed at once.
        const QDBusConnection bus = connection();
        const QDeadlineTimer deadline(programPatience);
        while (!bus.interface()->isServiceRegistered(busService).value()) {
            if (m_desktop.waitForFinished(10)) {
                *error = QStringLiteral("the desktop program ended (status %1) before it served the bus: %2")
                             .arg(m_desktop.exitCode())
                             .arg(tail(m_logPath));
                return false;
            }
            if (deadline.hasExpired()) {
                *error = QStringLiteral("the desktop program did not come on the bus within %1 s: %2")
                             .arg(programPatience.count())
                             .arg(tail(m_logPath));
                return false;
            }
        }
        std::fprintf(stderr, "The desktop program served the bus %.0f ms after it was started\n",
                     secondsSince(started) * 1e3);

        QDBusMessage call = QDBusMessage::createMethodCall(busService, busPath, busInterface,
                                                           QStringLiteral("StorePath"));
        call.setAutoStartService(false);
        const QDBusMessage reply = bus.call(call, QDBus::Block, 10000);
        const QString served = reply.arguments().value(0).toString();
        if (reply.type() != QDBusMessage::ReplyMessage || sameFile(served) != sameFile(home.storePath)) {
            *error = QStringLiteral("the desktop program serves the store \"%1\", not %2 (%3)")
                         .arg(served, home.storePath, reply.errorMessage());
            return false;
        }
        return true;
    }

    QProcess m_bus;
    QProcess m_desktop;
    QString m_address;
    QString m_logPath;
    bool m_connected = false;
};

// How a command line reaches the store.
enum class Route {
    // A `fenrow` process in a home whose store nobody holds.
    alone,
    // A `fenrow` process in the home of the running desktop program, on its
    // bus: it finds the store locked and hands the command over.
    forwarded,
    // RunCommand called from this process: no process is started.
    busCall,
};

struct Outcome {
    double seconds = 0;
    QString output;
    QString failure;
};

QString argumentsText(const QStringList &arguments)
{
    return arguments.join(QLatin1Char(' '));
}

// Everything the benchmarks share: the two homes, and the bus with the
// desktop program, started when a benchmark first needs them.
class Setting {
public:
    static Setting *of(const LargeStoreShape &shape, QString *error)
    {
        static std::map<LargeStoreShape, std::unique_ptr<Setting>> settings;
        std::unique_ptr<Setting> &setting = settings[shape];
        if (!setting) {
            auto made = std::unique_ptr<Setting>(new Setting);
            made->m_alone = Home::make(shape, error);
            if (!made->m_alone)
                return nullptr;
            made->m_owned = Home::make(shape, error);
            if (!made->m_owned)
                return nullptr;
            // Taken before anything is added: the list the program must give.
            const std::optional<QList<QUuid>> ready = made->readyIDs(Route::alone, error);
            if (!ready)
                return nullptr;
            if (ready->isEmpty()) {
                *error = QStringLiteral("fenrow ready lists no task at all; nothing to compare");
                return nullptr;
            }
            made->m_readyAtStart = *ready;
            setting = std::move(made);
            all().push_back(setting.get());
        }
        return setting.get();
    }

    // Stops every program started; what went wrong, if anything.
    static QString shutDownAll()
    {
        QStringList problems;
        for (Setting *setting : all()) {
            if (setting->m_program)
                if (const QString problem = setting->m_program->shutDown(); !problem.isEmpty())
                    problems << problem;
        }
        return problems.join(QStringLiteral("; "));
    }

    // The desktop program is up, on the bus, and its Ready list is the one
    // the store gave alone.
    // A program that failed once is not started again: its benchmarks all
    // fail with the first reason.
    bool programReady(QString *error)
    {
        if (!m_programProblem) {
            m_programProblem = startProgram();
            if (!m_programProblem->isEmpty())
                m_program.reset();
        }
        *error = *m_programProblem;
        return m_programProblem->isEmpty();
    }

    Outcome run(Route route, const QStringList &arguments)
    {
        if (route == Route::busCall)
            return call(arguments);
        return runProcess(route == Route::alone ? m_alone->environment : m_forwardedEnvironment, arguments);
    }

    // The ids of `fenrow ready --json` in order; none, with the reason, on
    // failure.
    std::optional<QList<QUuid>> readyIDs(Route route, QString *error)
    {
        const std::optional<QJsonArray> tasks = readyJson(route, error);
        if (!tasks)
            return std::nullopt;
        QList<QUuid> ids;
        for (const QJsonValue &task : *tasks)
            ids.append(QUuid::fromString(task.toObject().value(QStringLiteral("id")).toString()));
        return ids;
    }

    // The generator's moment, so that the store looks as it was generated.
    static QStringList withMoment(QStringList arguments)
    {
        return arguments << QStringLiteral("--now") << LargeStoreGenerator::now().toString(Qt::ISODate);
    }

private:
    Setting() = default;

    QString startProgram()
    {
        QString error;
        m_program = RunningProgram::start(*m_owned, &error);
        if (!m_program)
            return error;
        m_forwardedEnvironment = m_owned->environment;
        m_forwardedEnvironment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_program->address());
        const std::optional<QList<QUuid>> handedOver = readyIDs(Route::forwarded, &error);
        if (!handedOver)
            return error;
        if (*handedOver != m_readyAtStart)
            return QStringLiteral("fenrow ready handed over lists %1 tasks, alone %2, or in another order")
                .arg(handedOver->size())
                .arg(m_readyAtStart.size());
        return {};
    }

    static std::vector<Setting *> &all()
    {
        static std::vector<Setting *> settings;
        return settings;
    }

    std::optional<QJsonArray> readyJson(Route route, QString *error)
    {
        const Outcome outcome = run(route, withMoment({QStringLiteral("ready"), QStringLiteral("--json")}));
        if (!outcome.failure.isEmpty()) {
            *error = outcome.failure;
            return std::nullopt;
        }
        QJsonParseError parse;
        const QJsonDocument document = QJsonDocument::fromJson(outcome.output.toUtf8(), &parse);
        if (!document.isArray()) {
            *error = QStringLiteral("fenrow ready --json gave no list: %1").arg(parse.errorString());
            return std::nullopt;
        }
        return document.array();
    }

    // The whole process from start to exit, its output read through a pipe.
    static Outcome runProcess(const QProcessEnvironment &environment, const QStringList &arguments)
    {
        QProcess child;
        child.setProcessEnvironment(environment);
        child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        Outcome outcome;
        const Clock::time_point start = Clock::now();
        child.start(QStringLiteral(FENROW_BENCH_FENROW_PROGRAM), arguments);
        const bool finished = child.waitForFinished(-1);
        outcome.seconds = secondsSince(start);
        outcome.output = QString::fromUtf8(child.readAllStandardOutput());
        if (!finished || child.exitStatus() != QProcess::NormalExit || child.exitCode() != 0)
            outcome.failure = QStringLiteral("fenrow %1 failed (exit %2): %3")
                                  .arg(argumentsText(arguments))
                                  .arg(child.exitCode())
                                  .arg(child.errorString());
        return outcome;
    }

    // The command sent as the command line sends it, through its bus
    // client, from this process: its output comes back as it does there.
    Outcome call(const QStringList &arguments)
    {
        ForwardedCommand::Request request;
        request.arguments = arguments;
        request.workingDirectory = QDir::currentPath();
        request.storePath = m_owned->storePath;
        FenrowBusClient client(m_program->connection());
        Outcome outcome;
        QString problem;
        const Clock::time_point start = Clock::now();
        const std::optional<ForwardedCommand::Reply> reply = client.runCommand(request, &problem);
        outcome.seconds = secondsSince(start);
        if (!reply) {
            outcome.failure = QStringLiteral("%1 failed: %2").arg(argumentsText(arguments), problem);
            return outcome;
        }
        QByteArray output;
        for (const ForwardedCommand::Output &part : reply->output) {
            if (part.stream == ForwardedCommand::Stream::out)
                output += part.utf8;
        }
        outcome.output = QString::fromUtf8(output);
        if (reply->status != 0 || reply->need != ForwardedCommand::Reply::Need::nothing)
            outcome.failure = QStringLiteral("%1 gave status %2, asked for \"%3\"")
                                  .arg(argumentsText(arguments))
                                  .arg(reply->status)
                                  .arg(ForwardedCommand::needName(reply->need));
        return outcome;
    }

    std::unique_ptr<Home> m_alone;
    std::unique_ptr<Home> m_owned;
    QList<QUuid> m_readyAtStart;
    std::unique_ptr<RunningProgram> m_program;
    std::optional<QString> m_programProblem;
    QProcessEnvironment m_forwardedEnvironment;
};

Setting *settingFor(benchmark::State &state, Route route)
{
    QString error;
    Setting *setting = Setting::of(measuredShape(), &error);
    if (setting && route != Route::alone && !setting->programReady(&error))
        setting = nullptr;
    if (!setting)
        fail(state, error);
    return setting;
}

// `fenrow --version`: started and ended without a store or a bus, the floor
// under every whole-process figure.
void startOnly(benchmark::State &state)
{
    Setting *setting = settingFor(state, Route::alone);
    if (!setting)
        return;
    for (auto _ : state) {
        const Outcome outcome = setting->run(Route::alone, {QStringLiteral("--version")});
        state.SetIterationTime(outcome.seconds);
        if (!outcome.failure.isEmpty() || !outcome.output.startsWith(QLatin1String("fenrow "))) {
            fail(state, outcome.failure.isEmpty() ? QStringLiteral("fenrow --version printed %1").arg(outcome.output)
                                                  : outcome.failure);
            return;
        }
    }
}

// The plain table, as a user reads it.
void readyCommand(benchmark::State &state, Route route)
{
    Setting *setting = settingFor(state, route);
    if (!setting)
        return;
    const QStringList arguments = Setting::withMoment({QStringLiteral("ready")});
    qsizetype lines = 0;
    for (auto _ : state) {
        const Outcome outcome = setting->run(route, arguments);
        state.SetIterationTime(outcome.seconds);
        if (!outcome.failure.isEmpty()) {
            fail(state, outcome.failure);
            return;
        }
        lines = outcome.output.count(QLatin1Char('\n'));
    }
    state.counters["lines"] = double(lines);
}

// The id of the task `fenrow add` printed ("Added a task to flow …", the
// title, then a table whose first row is the id); null when it printed
// anything else.
QUuid printedTask(const QString &output)
{
    const QStringList lines = output.split(QLatin1Char('\n'));
    const qsizetype title = lines.indexOf(addedTitle);
    if (title < 0)
        return {};
    const QStringList idRow = lines.value(title + 1).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (idRow.size() != 2 || idRow[0] != QLatin1String("id"))
        return {};
    return QUuid::fromString(idRow[1]);
}

// Each add must print a new task, and every task printed must be on the
// Ready list afterwards (a plain task in an existing flow is ready at once).
// The store grows by one task per iteration; that is what a user's adds do,
// and at 20 per repetition it stays in the size class measured.
void addCommand(benchmark::State &state, Route route)
{
    Setting *setting = settingFor(state, route);
    if (!setting)
        return;
    const QStringList arguments = Setting::withMoment({QStringLiteral("add"), addedTitle});
    QSet<QUuid> added;
    for (auto _ : state) {
        const Outcome outcome = setting->run(route, arguments);
        state.SetIterationTime(outcome.seconds);
        if (!outcome.failure.isEmpty()) {
            fail(state, outcome.failure);
            return;
        }
        const QUuid task = printedTask(outcome.output);
        if (task.isNull() || added.contains(task)) {
            fail(state, QStringLiteral("fenrow add printed %1").arg(outcome.output.left(300)));
            return;
        }
        added.insert(task);
    }
    QString error;
    const std::optional<QList<QUuid>> ready = setting->readyIDs(route, &error);
    if (!ready) {
        fail(state, error);
        return;
    }
    const qsizetype missing = added.size() - (added & QSet<QUuid>(ready->cbegin(), ready->cend())).size();
    if (missing > 0)
        fail(state, QStringLiteral("%1 of the %2 tasks added are not on the Ready list").arg(missing).arg(added.size()));
}

// StorePath from this process: a bus round trip with next to no work.
void busRoundTrip(benchmark::State &state)
{
    Setting *setting = settingFor(state, Route::busCall);
    if (!setting)
        return;
    QDBusMessage message = QDBusMessage::createMethodCall(busService, busPath, busInterface,
                                                          QStringLiteral("StorePath"));
    message.setAutoStartService(false);
    const QDBusConnection bus(busConnectionName);
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        const QDBusMessage reply = bus.call(message, QDBus::Block, 10000);
        state.SetIterationTime(secondsSince(start));
        if (reply.type() != QDBusMessage::ReplyMessage) {
            fail(state, QStringLiteral("StorePath failed: %1").arg(reply.errorMessage()));
            return;
        }
    }
}

} // namespace

int main(int argc, char **argv)
{
    // Made here rather than by the runner, so that the children can still be
    // stopped after the benchmarks have run.
    QCoreApplication application(argc, argv);
    const std::string size = "/nodes:" + std::to_string(measuredShape().nodes);
    const auto timed = [](benchmark::internal::Benchmark *benchmark) {
        return benchmark->UseManualTime()->Unit(benchmark::kMillisecond);
    };
    timed(benchmark::RegisterBenchmark(("StartOnly" + size).c_str(), startOnly));
    timed(benchmark::RegisterBenchmark(("Ready/alone" + size).c_str(), readyCommand, Route::alone));
    timed(benchmark::RegisterBenchmark(("Ready/forwarded" + size).c_str(), readyCommand, Route::forwarded));
    timed(benchmark::RegisterBenchmark(("Ready/busCall" + size).c_str(), readyCommand, Route::busCall));
    // The adds alone and handed over come before the bus calls add, so the
    // two whole-process figures are taken on stores of the same size.
    timed(benchmark::RegisterBenchmark(("Add/alone" + size).c_str(), addCommand, Route::alone))
        ->Iterations(addsPerRepetition);
    timed(benchmark::RegisterBenchmark(("Add/forwarded" + size).c_str(), addCommand, Route::forwarded))
        ->Iterations(addsPerRepetition);
    timed(benchmark::RegisterBenchmark(("Add/busCall" + size).c_str(), addCommand, Route::busCall))
        ->Iterations(addsPerRepetition);
    timed(benchmark::RegisterBenchmark(("BusRoundTrip" + size).c_str(), busRoundTrip));
    const int status = runBenchmarks(argc, argv);
    if (const QString problem = Setting::shutDownAll(); !problem.isEmpty()) {
        std::fprintf(stderr, "Stopping the children: %s\n", qUtf8Printable(problem));
        return status == 0 ? 1 : status;
    }
    return status;
}
