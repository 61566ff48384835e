#include "StoreOwnership.h"

#include <QDeadlineTimer>
#include <QThread>

namespace fenrow::StoreOwnership {

namespace {

// Between tries: short against the patience, long against a bus round trip.
constexpr std::chrono::milliseconds retryInterval{25};

} // namespace

QString busyMessage(const std::optional<StoreLockHolder> &holder)
{
    const QString who = holder ? holder->text() : QStringLiteral("another program");
    if (holder && holder->role == StoreLockHolder::Role::desktop)
        return QStringLiteral("the store is in use by %1, which cannot be reached from here (no session bus, or "
                              "another one); nothing was changed. Quit that Fenrow, or run this where it runs.")
            .arg(who);
    return QStringLiteral("the store is in use by %1; nothing was changed. Try again when it has finished.").arg(who);
}

Claim claim(const QString &storePath, const StoreLockHolder &self, const std::function<bool()> &ownerReachable,
            std::chrono::milliseconds patience)
{
    Claim claim;
    const QDeadlineTimer deadline(patience);
    for (;;) {
        QString error;
        claim.lock = StoreLock::tryAcquire(storePath, self, &error);
        if (claim.lock)
            return claim;
        if (!error.isEmpty()) {
            claim.problem = error;
            return claim;
        }
        const std::optional<StoreLockHolder> holder = StoreLock::holder(storePath);
        // A desktop owner answers on the bus; anything else will not, but
        // may let go soon.
        if (ownerReachable && (!holder || holder->role == StoreLockHolder::Role::desktop) && ownerReachable()) {
            claim.ownerReachable = true;
            return claim;
        }
        if (deadline.hasExpired()) {
            claim.problem = busyMessage(holder);
            return claim;
        }
        QThread::msleep(static_cast<unsigned long>(retryInterval.count()));
    }
}

} // namespace fenrow::StoreOwnership
