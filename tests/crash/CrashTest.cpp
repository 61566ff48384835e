// Kills the crash test's writer with SIGKILL at moments drawn from a seed,
// and after each kill checks the store file: SQLite finds it whole, Fenrow
// opens it, and it holds every change the writer reported done, and at most
// the one change it was making, whole (a restore all or not at all).
//
//   fenrow-crash-test [--kills N] [--seed S] [--writer PATH]
//
// Ends with "kills K, changes checked C, losses L" and fails on any loss.
#include "CrashScript.h"

#include "domain/FenrowStore.h"
#include "domain/FixedClock.h"
#include "persistence/StoreDatabase.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <cstdio>
#include <random>
#include <thread>

using namespace fenrow;

namespace {

struct Options {
    int kills = 30;
    quint64 seed = 1;
    QString writer = QStringLiteral(FENROW_CRASH_WRITER);
};

// What the writer printed so far in this life.
struct Life {
    qint64 lastDone = -1;
    int doneCount = 0;
    bool ready = false;
};

void readLines(QProcess &writer, Life &life)
{
    while (writer.canReadLine()) {
        const QByteArray line = writer.readLine().trimmed();
        if (line.startsWith("ready "))
            life.ready = true;
        else if (line.startsWith("done ")) {
            life.lastDone = line.mid(5).toLongLong();
            ++life.doneCount;
        }
    }
}

// Polls the writer's output until `until` holds or the deadline passes.
template <typename Condition>
bool waitFor(QProcess &writer, Life &life, Condition until, int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    readLines(writer, life);
    while (!until() && !deadline.hasExpired() && writer.state() == QProcess::Running) {
        writer.waitForReadyRead(int(std::max<qint64>(deadline.remainingTime(), 1)));
        readLines(writer, life);
    }
    return until();
}

// SQLite's own verdict on the file, and its foreign keys.
QString sqliteProblems(const QString &path)
{
    sqlite3 *db = nullptr;
    QString problems;
    if (sqlite3_open(qPrintable(path), &db) != SQLITE_OK) {
        problems = QStringLiteral("cannot open: %1").arg(QString::fromUtf8(sqlite3_errmsg(db)));
        sqlite3_close(db);
        return problems;
    }
    for (const char *check : {"PRAGMA integrity_check", "PRAGMA foreign_key_check"}) {
        sqlite3_stmt *statement = nullptr;
        sqlite3_prepare_v2(db, check, -1, &statement, nullptr);
        while (sqlite3_step(statement) == SQLITE_ROW) {
            const QString row = QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(statement, 0)));
            if (row != QLatin1String("ok"))
                problems += QStringLiteral("%1: %2; ").arg(QLatin1String(check), row);
        }
        sqlite3_finalize(statement);
    }
    sqlite3_close(db);
    return problems;
}

// The content each step leaves, from the same script played on a store in
// memory: states[n + 1] after step n, states[0] empty.
class Replay {
public:
    explicit Replay(quint64 seed) : m_script(seed), m_clock(QDateTime::currentDateTimeUtc())
    {
        QString error;
        m_store = FenrowStore::open(StoreDatabase::open(QString::fromLatin1(StoreDatabase::inMemoryPath), &error),
                                    m_clock, LocalCalendar(), &error);
        m_states.push_back(CrashScript::digest(*m_store));
    }

    // After step `step`; -1 is before the first.
    const QByteArray &after(qint64 step)
    {
        while (qint64(m_states.size()) <= step + 1) {
            m_script.perform(*m_store, qint64(m_states.size()) - 1);
            m_states.push_back(CrashScript::digest(*m_store));
        }
        return m_states[std::size_t(step + 1)];
    }

private:
    CrashScript m_script;
    FixedClock m_clock;
    std::unique_ptr<FenrowStore> m_store;
    std::vector<QByteArray> m_states;
};

Options parse(const QStringList &arguments)
{
    Options options;
    for (qsizetype i = 1; i + 1 < arguments.size(); i += 2) {
        if (arguments[i] == QLatin1String("--kills"))
            options.kills = arguments[i + 1].toInt();
        else if (arguments[i] == QLatin1String("--seed"))
            options.seed = arguments[i + 1].toULongLong();
        else if (arguments[i] == QLatin1String("--writer"))
            options.writer = arguments[i + 1];
    }
    return options;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const Options options = parse(application.arguments());
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("default.store"));
    // The moments: how many changes to let through, then how long into the
    // next one (up to 6 ms, about a large restore's length).
    std::mt19937_64 moments(options.seed);
    Replay replay(options.seed);
    QElapsedTimer elapsed;
    elapsed.start();

    qint64 next = 0;
    int kills = 0;
    qint64 checked = 0;
    int losses = 0;
    int inRestores = 0;
    while (kills < options.kills && losses == 0) {
        QProcess writer;
        writer.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        writer.start(options.writer, {folder.path(), QString::number(options.seed), QString::number(next)});
        Life life;
        if (!writer.waitForStarted() || !waitFor(writer, life, [&] { return life.ready; }, 30000)) {
            std::fprintf(stderr, "the writer did not start (%s)\n", qPrintable(writer.errorString()));
            return 2;
        }
        const int letThrough = int(moments() % 12);
        const auto into = std::chrono::microseconds(moments() % 6000);
        waitFor(writer, life, [&] { return life.doneCount >= letThrough; }, 30000);
        if (writer.state() != QProcess::Running) {
            std::fprintf(stderr, "the writer stopped by itself (status %d)\n", writer.exitCode());
            return 2;
        }
        // A moment, not a wait for anything: where the kill lands.
        std::this_thread::sleep_for(into);
        writer.kill();
        writer.waitForFinished();
        readLines(writer, life);
        ++kills;

        const qint64 reported = life.doneCount > 0 ? life.lastDone : next - 1;
        const CrashScript script(options.seed);
        if (script.isRestore(reported + 1))
            ++inRestores;
        QString problem = sqliteProblems(path);
        if (problem.isEmpty()) {
            QString error;
            const FixedClock clock(QDateTime::currentDateTimeUtc());
            const std::unique_ptr<FenrowStore> store =
                FenrowStore::open(StoreDatabase::open(path, &error), clock, LocalCalendar(), &error);
            if (!store) {
                problem = QStringLiteral("Fenrow cannot open it: %1").arg(error);
            } else {
                const QByteArray found = CrashScript::digest(*store);
                // The change being made when the kill came may be in, whole.
                if (found == replay.after(reported + 1))
                    next = reported + 2;
                else if (found == replay.after(reported))
                    next = reported + 1;
                else
                    problem = QStringLiteral("it holds neither the state after change %1 nor after %2")
                                  .arg(reported)
                                  .arg(reported + 1);
            }
        }
        checked += life.doneCount;
        if (!problem.isEmpty()) {
            ++losses;
            std::fprintf(stderr, "after kill %d (seed %llu, changes %lld done): %s\n", kills,
                         static_cast<unsigned long long>(options.seed), static_cast<long long>(reported),
                         qPrintable(problem));
        }
    }
    std::printf("kills %d, changes checked %lld, losses %d (%d kills while a restore was under way; seed %llu, "
                "%.1f s)\n",
                kills, static_cast<long long>(checked), losses, inRestores, static_cast<unsigned long long>(options.seed),
                double(elapsed.elapsed()) / 1000);
    return losses == 0 ? 0 : 1;
}
