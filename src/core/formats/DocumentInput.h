#pragma once

#include <QByteArray>
#include <QLocale>
#include <QString>

#include <variant>

namespace fenrow {

// Reading a document the user points at (an outline to import, a backup to
// restore, prose to draft from): regular files only, up to a size fixed
// per kind, read whole, so that a device, a pipe or a runaway file is
// refused before it is read rather than read until memory runs out.
namespace DocumentInput {

// Far above any real document of the kind, far below what memory holds.
inline constexpr qint64 outlineLimit = qint64(64) << 20;
inline constexpr qint64 proseLimit = qint64(16) << 20;
// A backup carries every attachment (20 MiB each at most) in base64.
inline constexpr qint64 backupLimit = qint64(1) << 30;

struct Missing {};
struct Folder {};
// A device, a pipe, a socket: nothing with a size to check first.
struct NotRegular {};
struct TooLarge {
    qint64 size = 0;
    qint64 limit = 0;
};
struct Unreadable {
    QString reason;
};
using Refusal = std::variant<Missing, Folder, NotRegular, TooLarge, Unreadable>;

std::variant<QByteArray, Refusal> read(const QString &path, qint64 limit);

// The refusal as the end of an English sentence about `shownName`: "there
// is no file "x"", ""x" is larger than 64 MiB (it has 70,123,456 bytes)".
QString describe(const Refusal &refusal, const QString &shownName);

// A size for a message, exact in bytes where a rounded figure would hide
// the difference from a limit ("it has 20.0 MiB" of a file over 20 MiB).
// In the C locale the unit is spelled out, in others it is "B".
QString sizeText(qint64 bytes, qint64 limit, const QLocale &locale = QLocale::c());

} // namespace DocumentInput

} // namespace fenrow
