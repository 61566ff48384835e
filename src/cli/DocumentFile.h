#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace fenrow::DocumentFile {

// The whole file, or none with the reason ("there is no file …").
std::optional<QByteArray> read(const QString &path, QString *problem);

// Writes the bytes whole to a new file and renames it into place, so that a
// failure leaves nothing half written. False with the reason on failure.
bool write(const QString &path, const QByteArray &bytes, QString *problem);

// An absolute path, for telling the user where a file went.
QString shown(const QString &path);

} // namespace fenrow::DocumentFile
