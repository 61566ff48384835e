#include "StoreLock.h"

#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <QSet>
#include <QStringList>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace fenrow {

namespace {

const QString roleKey = QStringLiteral("role");
const QString processKey = QStringLiteral("pid");
const QString descriptionKey = QStringLiteral("description");

QString roleName(StoreLockHolder::Role role)
{
    switch (role) {
    case StoreLockHolder::Role::desktop:
        return QStringLiteral("desktop");
    case StoreLockHolder::Role::command:
        return QStringLiteral("command");
    case StoreLockHolder::Role::unknown:
        break;
    }
    return QStringLiteral("unknown");
}

StoreLockHolder::Role roleNamed(const QString &name)
{
    if (name == QLatin1String("desktop"))
        return StoreLockHolder::Role::desktop;
    if (name == QLatin1String("command"))
        return StoreLockHolder::Role::command;
    return StoreLockHolder::Role::unknown;
}

// Lock files held by this process, by canonical path: two openings of one
// store in one process would be two writers as surely as two processes.
QMutex heldMutex;
QSet<QString> &heldHere()
{
    static QSet<QString> paths;
    return paths;
}

QString canonicalLockPath(const QString &storePath)
{
    return QFileInfo(StoreLock::lockPathFor(storePath)).canonicalFilePath();
}

bool isRunning(qint64 processID)
{
    return processID > 0 && (::kill(pid_t(processID), 0) == 0 || errno == EPERM);
}

QString commandLineOf(qint64 processID)
{
    QFile file(QStringLiteral("/proc/%1/cmdline").arg(processID));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QByteArray bytes = file.read(400);
    bytes.replace('\0', ' ');
    return QString::fromLocal8Bit(bytes).trimmed();
}

// The kernel's own word on who holds a flock on the file: /proc/locks
// lists each lock with its process and the file's device and inode.
// `known` is false when there is no such list to read.
std::optional<qint64> flockHolderFromKernel(const QString &lockPath, bool *known)
{
    *known = false;
    struct stat status {};
    if (::stat(QFile::encodeName(lockPath).constData(), &status) != 0)
        return std::nullopt;
    QFile locks(QStringLiteral("/proc/locks"));
    if (!locks.open(QIODevice::ReadOnly | QIODevice::Text))
        return std::nullopt;
    *known = true;
    const QString file = QStringLiteral("%1:%2:%3")
                             .arg(major(status.st_dev), 2, 16, QLatin1Char('0'))
                             .arg(minor(status.st_dev), 2, 16, QLatin1Char('0'))
                             .arg(quint64(status.st_ino));
    // Read whole: a /proc file has size 0, so QFile::atEnd() holds from the
    // start and a line-by-line loop would read nothing.
    const QList<QByteArray> lines = locks.readAll().split('\n');
    for (const QByteArray &line : lines) {
        const QStringList fields = QString::fromLatin1(line).split(QLatin1Char(' '), Qt::SkipEmptyParts);
        // "1: FLOCK  ADVISORY  WRITE 4711 00:2f:1234 0 EOF"; waiters carry "->".
        if (fields.size() < 6 || fields.value(1) != QLatin1String("FLOCK"))
            continue;
        if (fields[3] == QLatin1String("WRITE") && fields[5].compare(file, Qt::CaseInsensitive) == 0)
            return fields[4].toLongLong();
    }
    return std::nullopt;
}

StoreLockHolder readDescription(const QString &lockPath)
{
    StoreLockHolder holder;
    QFile file(lockPath);
    if (!file.open(QIODevice::ReadOnly))
        return holder;
    for (const QByteArray &line : file.read(4096).split('\n')) {
        const qsizetype equals = line.indexOf('=');
        if (equals < 0)
            continue;
        const QString key = QString::fromUtf8(line.left(equals));
        const QString value = QString::fromUtf8(line.mid(equals + 1));
        if (key == processKey)
            holder.processID = value.toLongLong();
        else if (key == roleKey)
            holder.role = roleNamed(value);
        else if (key == descriptionKey)
            holder.description = value;
    }
    return holder;
}

} // namespace

QString StoreLockHolder::text() const
{
    switch (role) {
    case Role::desktop:
        return QStringLiteral("the Fenrow window (process %1)").arg(processID);
    case Role::command:
        return QStringLiteral("\"%1\" (process %2)").arg(description).arg(processID);
    case Role::unknown:
        break;
    }
    if (processID <= 0)
        return QStringLiteral("another program");
    if (description.isEmpty())
        return QStringLiteral("process %1").arg(processID);
    return QStringLiteral("process %1 (%2)").arg(processID).arg(description);
}

QString StoreLock::lockPathFor(const QString &storePath)
{
    return storePath + QStringLiteral(".lock");
}

StoreLock::StoreLock(QString storePath, int descriptor) : m_storePath(std::move(storePath)), m_descriptor(descriptor)
{
}

std::unique_ptr<StoreLock> StoreLock::tryAcquire(const QString &storePath, const StoreLockHolder &self,
                                                 QString *error)
{
    error->clear();
    const QString lockPath = lockPathFor(storePath);
    // Close-on-exec: a program started from here (a file opener, the
    // engine's helper) must not carry the lock past this process's end.
    const int descriptor =
        ::open(QFile::encodeName(lockPath).constData(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor < 0) {
        *error = QStringLiteral("cannot make the lock file %1: %2").arg(lockPath, QString::fromLocal8Bit(strerror(errno)));
        return nullptr;
    }
    int result;
    do
        result = ::flock(descriptor, LOCK_EX | LOCK_NB);
    while (result != 0 && errno == EINTR);
    if (result != 0) {
        const int cause = errno;
        ::close(descriptor);
        if (cause != EWOULDBLOCK)
            *error = QStringLiteral("cannot lock %1: %2").arg(lockPath, QString::fromLocal8Bit(strerror(cause)));
        return nullptr;
    }

    const QString canonical = canonicalLockPath(storePath);
    {
        const QMutexLocker locker(&heldMutex);
        heldHere().insert(canonical);
    }
    QString description = self.description;
    description.replace(QLatin1Char('\n'), QLatin1Char(' '));
    const QByteArray text = QStringLiteral("%1=%2\n%3=%4\n%5=%6\n")
                                .arg(processKey)
                                .arg(qint64(::getpid()))
                                .arg(roleKey, roleName(self.role), descriptionKey, description)
                                .toUtf8();
    // Only for messages: a failure here leaves the lock as good as ever.
    if (::ftruncate(descriptor, 0) == 0 && ::pwrite(descriptor, text.constData(), size_t(text.size()), 0) < 0)
        (void)::ftruncate(descriptor, 0);
    return std::unique_ptr<StoreLock>(new StoreLock(storePath, descriptor));
}

StoreLock::~StoreLock()
{
    {
        const QMutexLocker locker(&heldMutex);
        heldHere().remove(canonicalLockPath(m_storePath));
    }
    // The file stays: removing it could let two processes lock two
    // different files of the same name.
    (void)::ftruncate(m_descriptor, 0);
    ::close(m_descriptor);
}

std::optional<StoreLockHolder> StoreLock::holder(const QString &storePath)
{
    const QString lockPath = lockPathFor(storePath);
    if (!QFileInfo::exists(lockPath))
        return std::nullopt;
    StoreLockHolder written = readDescription(lockPath);
    // A holder's word is wiped when it lets go, so a word left by a live
    // process is its own. Asking the kernel instead costs several
    // milliseconds on a busy machine, on the path of every handed-over
    // command.
    if (written.role != StoreLockHolder::Role::unknown && isRunning(written.processID))
        return written;
    bool kernelKnows = false;
    const std::optional<qint64> kernel = flockHolderFromKernel(lockPath, &kernelKnows);
    if (kernelKnows && !kernel)
        return std::nullopt;
    if (kernel && *kernel != written.processID) {
        // Held by something that did not write the file (or wrote it and
        // then handed the lock on): name the process itself.
        StoreLockHolder other;
        other.processID = *kernel;
        other.description = commandLineOf(*kernel);
        return other;
    }
    if (!kernelKnows && !isRunning(written.processID))
        return std::nullopt;
    return written;
}

bool StoreLock::isHeldHere(const QString &storePath)
{
    const QString canonical = canonicalLockPath(storePath);
    if (canonical.isEmpty())
        return false;
    const QMutexLocker locker(&heldMutex);
    return heldHere().contains(canonical);
}

} // namespace fenrow
