#include "persistence/StoreLock.h"
#include "persistence/StoreOwnership.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace fenrow {
namespace {

using namespace std::chrono_literals;
using Role = StoreLockHolder::Role;

StoreLockHolder command(const QString &description)
{
    return {0, Role::command, description};
}

qint64 thisProcess()
{
    return QCoreApplication::applicationPid();
}

// util-linux `flock` holding the store's lock in a process of its own; it
// says "locked" once it holds it and lets go when `script` ends.
class ForeignHolder {
public:
    ForeignHolder(const QString &storePath, const QString &script)
    {
        const QString flock = QStandardPaths::findExecutable(QStringLiteral("flock"));
        if (flock.isEmpty()) {
            ADD_FAILURE() << "util-linux flock is not installed";
            return;
        }
        process.start(flock, {QStringLiteral("-x"), StoreLock::lockPathFor(storePath), QStringLiteral("sh"),
                              QStringLiteral("-c"), QStringLiteral("echo locked; ") + script});
        const QDeadlineTimer deadline(5s);
        QByteArray said;
        while (!said.contains("locked") && !deadline.hasExpired() && process.state() != QProcess::NotRunning) {
            process.waitForReadyRead(int(deadline.remainingTime()));
            said += process.readAllStandardOutput();
        }
        m_holding = said.contains("locked");
        EXPECT_TRUE(m_holding) << "flock never took the lock: " << process.readAllStandardError().toStdString();
    }
    ~ForeignHolder()
    {
        process.kill();
        process.waitForFinished();
    }

    bool holding() const { return m_holding; }
    qint64 pid() const { return process.processId(); }

    QProcess process;

private:
    bool m_holding = false;
};

TEST(StoreLock, OneHolderAtATimeEvenWithinOneProcessAndItSaysWhoItIs)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("default.store"));
    // The same store spelled another way is the same lock.
    const QString otherSpelling = folder.path() + QStringLiteral("/./default.store");
    EXPECT_EQ(StoreLock::holder(path), std::nullopt);
    EXPECT_FALSE(StoreLock::isHeldHere(path));

    QString error;
    auto first = StoreLock::tryAcquire(path, command(QStringLiteral("fenrow add \"Milk\nand eggs\"")), &error);
    ASSERT_NE(first, nullptr) << error.toStdString();
    EXPECT_TRUE(StoreLock::isHeldHere(otherSpelling));

    auto describesFirst = [&] {
        const std::optional<StoreLockHolder> holder = StoreLock::holder(path);
        ASSERT_TRUE(holder.has_value());
        EXPECT_EQ(holder->role, Role::command);
        EXPECT_EQ(holder->processID, thisProcess());
        EXPECT_EQ(holder->description, "fenrow add \"Milk and eggs\"") << "one line, so the file stays readable";
    };
    describesFirst();

    for (const QString &spelling : {path, otherSpelling}) {
        EXPECT_EQ(StoreLock::tryAcquire(spelling, {0, Role::desktop, {}}, &error), nullptr);
        EXPECT_TRUE(error.isEmpty()) << "held is no failure: " << error.toStdString();
    }
    // A refused opening neither took over the description nor let go.
    describesFirst();
    EXPECT_TRUE(StoreLock::isHeldHere(path));

    first.reset();
    EXPECT_FALSE(StoreLock::isHeldHere(path));
    EXPECT_EQ(StoreLock::holder(path), std::nullopt);
    auto second = StoreLock::tryAcquire(otherSpelling, {0, Role::desktop, {}}, &error);
    ASSERT_NE(second, nullptr) << error.toStdString();
    EXPECT_EQ(StoreLock::holder(path)->role, Role::desktop);

    // A lock file that cannot be made is a failure with its reason.
    EXPECT_EQ(StoreLock::tryAcquire(folder.filePath(QStringLiteral("missing/default.store")), command({}), &error),
              nullptr);
    EXPECT_TRUE(error.contains(QLatin1String("cannot make the lock file"))) << error.toStdString();
}

TEST(StoreLock, AnotherProcessHoldingTheStoreIsNamedAndWaitedFor)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("default.store"));
    int asked = 0;
    const auto reachable = [&] {
        ++asked;
        return false;
    };
    QString error;
    {
        ForeignHolder other(path, QStringLiteral("exec cat"));
        ASSERT_TRUE(other.holding());
        EXPECT_EQ(StoreLock::tryAcquire(path, command({}), &error), nullptr);
        EXPECT_TRUE(error.isEmpty()) << error.toStdString();
        EXPECT_FALSE(StoreLock::isHeldHere(path));

        const std::optional<StoreLockHolder> holder = StoreLock::holder(path);
        ASSERT_TRUE(holder.has_value()) << "the kernel knows who holds it";
        EXPECT_EQ(holder->processID, other.pid());
        EXPECT_EQ(holder->role, Role::unknown);
        EXPECT_TRUE(holder->description.contains(QLatin1String("flock -x"))) << holder->description.toStdString();

        // Nothing but a desktop Fenrow answers on the bus: it is not asked,
        // and the claim gives up only when its patience is spent.
        QElapsedTimer waited;
        waited.start();
        const StoreOwnership::Claim claim = StoreOwnership::claim(path, command({}), reachable, 100ms);
        EXPECT_GE(waited.elapsed(), 100);
        EXPECT_EQ(claim.lock, nullptr);
        EXPECT_FALSE(claim.ownerReachable);
        EXPECT_EQ(asked, 0);
        EXPECT_TRUE(claim.problem.contains(QStringLiteral("process %1").arg(other.pid())))
            << claim.problem.toStdString();

        other.process.closeWriteChannel();
        ASSERT_TRUE(other.process.waitForFinished(5000));
        EXPECT_EQ(StoreLock::holder(path), std::nullopt);
    }

    // A holder that ends while the claim waits hands the store over.
    ForeignHolder brief(path, QStringLiteral("sleep 0.3"));
    ASSERT_TRUE(brief.holding());
    const StoreOwnership::Claim claim =
        StoreOwnership::claim(path, command(QStringLiteral("fenrow done")), reachable, 10s);
    ASSERT_NE(claim.lock, nullptr) << claim.problem.toStdString();
    EXPECT_TRUE(claim.problem.isEmpty());
    EXPECT_EQ(StoreLock::holder(path)->processID, thisProcess());
}

TEST(StoreLock, OnlyADesktopHolderIsAskedWhetherItCanBeReached)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("default.store"));
    const QString pid = QString::number(thisProcess());
    QString error;

    auto window = StoreLock::tryAcquire(path, {0, Role::desktop, {}}, &error);
    ASSERT_NE(window, nullptr) << error.toStdString();
    int asked = 0;
    StoreOwnership::Claim claim = StoreOwnership::claim(path, command({}), [&] { return ++asked > 2; }, 10s);
    EXPECT_TRUE(claim.ownerReachable) << "asked again until it answers";
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(claim.lock, nullptr);

    claim = StoreOwnership::claim(path, command({}), [] { return false; }, 50ms);
    EXPECT_FALSE(claim.ownerReachable);
    EXPECT_TRUE(claim.problem.contains(QStringLiteral("the Fenrow window (process %1)").arg(pid)))
        << claim.problem.toStdString();
    EXPECT_TRUE(claim.problem.contains(QLatin1String("cannot be reached")));
    claim = StoreOwnership::claim(path, command({}), {}, 50ms);
    EXPECT_FALSE(claim.ownerReachable);
    EXPECT_FALSE(claim.problem.isEmpty());

    window.reset();
    auto run = StoreLock::tryAcquire(path, command(QStringLiteral("fenrow add Milk")), &error);
    ASSERT_NE(run, nullptr) << error.toStdString();
    asked = 0;
    claim = StoreOwnership::claim(path, command({}), [&] { return ++asked > 0; }, 50ms);
    EXPECT_EQ(asked, 0) << "a command does not answer on the bus";
    EXPECT_FALSE(claim.ownerReachable);
    EXPECT_TRUE(claim.problem.contains(QStringLiteral("\"fenrow add Milk\" (process %1)").arg(pid)))
        << claim.problem.toStdString();
}

TEST(StoreLock, AProgramStartedWhileHoldingItDoesNotKeepIt)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("default.store"));
    QString error;
    auto lock = StoreLock::tryAcquire(path, command({}), &error);
    ASSERT_NE(lock, nullptr) << error.toStdString();

    QProcess child;
    child.start(QStringLiteral("sleep"), {QStringLiteral("30")});
    ASSERT_TRUE(child.waitForStarted());
    lock.reset();

    EXPECT_EQ(StoreLock::holder(path), std::nullopt);
    EXPECT_NE(StoreLock::tryAcquire(path, command({}), &error), nullptr) << error.toStdString();
    child.kill();
    child.waitForFinished();
}

} // namespace
} // namespace fenrow
