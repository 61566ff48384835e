#include "ProcessMemory.h"

#include <QFile>
#include <QList>

namespace fenrow::bench {

namespace {

std::optional<qint64> kibibytes(const QByteArray &status, QByteArrayView field)
{
    for (const QByteArray &line : status.split('\n')) {
        if (!line.startsWith(field))
            continue;
        // "VmRSS:	   51234 kB"
        bool ok = false;
        const qint64 value = line.mid(field.size()).trimmed().chopped(2).trimmed().toLongLong(&ok);
        return ok ? std::optional(value) : std::nullopt;
    }
    return std::nullopt;
}

} // namespace

std::optional<ProcessMemory> ProcessMemory::parse(const QByteArray &status)
{
    const std::optional<qint64> resident = kibibytes(status, "VmRSS:");
    const std::optional<qint64> peak = kibibytes(status, "VmHWM:");
    if (!resident || !peak)
        return std::nullopt;
    return ProcessMemory{*resident, *peak};
}

std::optional<ProcessMemory> ProcessMemory::read()
{
    QFile status(QStringLiteral("/proc/self/status"));
    // A proc file reports size 0: read it whole with readAll, not by size.
    if (!status.open(QIODevice::ReadOnly))
        return std::nullopt;
    return parse(status.readAll());
}

} // namespace fenrow::bench
