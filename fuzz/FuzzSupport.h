#pragma once

#include "domain/LocalCalendar.h"

#include <QByteArray>
#include <QString>
#include <QTimeZone>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

// What every fuzz target shares: the bytes as the program would hold them,
// one fixed calendar, and a way to stop loudly when a promise is broken.
namespace fenrow::fuzz {

// A copy, as QFile::readAll gives it: Qt promises a null after the bytes,
// which a reader may rely on; a read any further is still caught.
inline QByteArray bytesOf(const std::uint8_t *data, std::size_t size)
{
    return QByteArray(reinterpret_cast<const char *>(data), qsizetype(size));
}

// The calendar the core tests use, so a finding reads like a test case.
inline const LocalCalendar &berlin()
{
    static const LocalCalendar calendar(QTimeZone("Europe/Berlin"));
    return calendar;
}

// Prints what was promised and what happened, then aborts: libFuzzer takes
// the abort as a crash and keeps the input that caused it.
[[noreturn]] inline void broken(const char *promise, const QString &detail = {})
{
    std::fprintf(stderr, "\n==fenrow-fuzz== broken: %s\n%s\n", promise, detail.toUtf8().constData());
    std::fflush(stderr);
    std::abort();
}

inline void require(bool holds, const char *promise)
{
    if (!holds)
        broken(promise);
}

// `detail` gives the text to print; it is only called when the promise is
// broken, so describing a large document costs nothing on the way through.
template <typename Detail> void require(bool holds, const char *promise, Detail &&detail)
{
    if (!holds)
        broken(promise, detail());
}

} // namespace fenrow::fuzz
