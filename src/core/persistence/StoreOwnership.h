#pragma once

#include "StoreLock.h"

#include <QString>

#include <chrono>
#include <functional>
#include <memory>

namespace fenrow {

// How a process comes to work on a store: it owns it (holds the lock), or
// it hands its work to the process that does, or it is kept out.
namespace StoreOwnership {

// About two seconds: long enough for a short command of another process to
// end or for a starting program to come on the bus, short enough that a
// script fails quickly when the owner cannot be reached.
inline constexpr std::chrono::milliseconds patience{2000};

struct Claim {
    // This process owns the store while it keeps the lock.
    std::unique_ptr<StoreLock> lock;
    // Another process owns the store and answers: hand the work to it.
    bool ownerReachable = false;
    // Neither: why, in a sentence that names the holder.
    QString problem;
};

// Takes the lock of the store at `storePath`. While another process holds
// it, asks `ownerReachable` (may be empty) whether that owner can be
// reached, and tries again until `patience` runs out.
Claim claim(const QString &storePath, const StoreLockHolder &self, const std::function<bool()> &ownerReachable,
            std::chrono::milliseconds patience = StoreOwnership::patience);

// The message for a store kept by `holder` (unknown when empty).
QString busyMessage(const std::optional<StoreLockHolder> &holder);

} // namespace StoreOwnership

} // namespace fenrow
