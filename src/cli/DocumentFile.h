#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace fenrow {

// A path as the user typed it (for messages), and the file it names from
// the folder the command was given in.
struct UserPath {
    QString typed;
    QString absolute;
};

} // namespace fenrow

namespace fenrow::DocumentFile {

// The whole file, or none with the reason ("there is no file …"); only a
// regular file of at most `limit` bytes (see DocumentInput).
std::optional<QByteArray> read(const UserPath &path, qint64 limit, QString *problem);

// Writes the bytes whole to a new file and renames it into place, so that a
// failure leaves nothing half written. False with the reason on failure.
// `path` is absolute.
bool write(const QString &path, const QByteArray &bytes, QString *problem);

// An absolute path, for telling the user where a file went.
QString shown(const QString &path);

} // namespace fenrow::DocumentFile
