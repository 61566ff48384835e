#pragma once

#include <QByteArray>

#include <optional>

namespace fenrow::bench {

// The resident memory of this process as the kernel counts it
// (/proc/self/status): now (VmRSS) and the most it has been (VmHWM).
struct ProcessMemory {
    qint64 residentKiB = 0;
    qint64 peakResidentKiB = 0;

    static std::optional<ProcessMemory> read();
    static std::optional<ProcessMemory> parse(const QByteArray &status);
};

} // namespace fenrow::bench
