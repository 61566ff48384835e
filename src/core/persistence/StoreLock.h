#pragma once

#include <QString>

#include <memory>
#include <optional>

namespace fenrow {

// Who holds a store, as the holder wrote it beside the store.
struct StoreLockHolder {
    enum class Role {
        // The desktop program, for as long as it runs; it answers on the
        // session bus.
        desktop,
        // A command-line run, for as long as its command takes.
        command,
        // Something that left no word of itself (another tool's lock).
        unknown,
    };

    qint64 processID = 0;
    Role role = Role::unknown;
    // What the holder is doing, for a message: "fenrow add …".
    QString description;

    // "the Fenrow window (process 4711)", "fenrow add "Milk" (process 4712)".
    QString text() const;
};

// The one-writer rule made physical: an exclusive advisory lock (flock) on
// "default.store.lock" beside the store, held for as long as a process may
// write. The kernel drops it when the holder ends, however it ends, so a
// crash leaves no stale lock. The holder's description is written into the
// file so that a process kept out can say who is in the way.
class StoreLock {
public:
    static QString lockPathFor(const QString &storePath);

    // Takes the lock at once, or returns null: with `error` empty when
    // another process (or another opening in this one) holds it, with the
    // reason when the lock file cannot be made.
    static std::unique_ptr<StoreLock> tryAcquire(const QString &storePath, const StoreLockHolder &self,
                                                 QString *error);

    // The holder of the store's lock now, if anyone holds it.
    static std::optional<StoreLockHolder> holder(const QString &storePath);

    // Whether this process holds the lock of the store at `storePath`.
    static bool isHeldHere(const QString &storePath);

    ~StoreLock();
    StoreLock(const StoreLock &) = delete;
    StoreLock &operator=(const StoreLock &) = delete;

    const QString &storePath() const { return m_storePath; }

private:
    StoreLock(QString storePath, int descriptor);

    QString m_storePath;
    int m_descriptor;
};

} // namespace fenrow
