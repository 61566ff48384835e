#include "DocumentFile.h"

#include "PlainText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace fenrow::DocumentFile {

std::optional<QByteArray> read(const UserPath &path, QString *problem)
{
    const QFileInfo info(path.absolute);
    const QString quoted = PlainText::quoted(path.typed);
    if (!info.exists()) {
        *problem = QStringLiteral("there is no file %1").arg(quoted);
        return std::nullopt;
    }
    if (info.isDir()) {
        *problem = QStringLiteral("%1 is a folder, not a file").arg(quoted);
        return std::nullopt;
    }
    QFile file(path.absolute);
    if (!file.open(QIODevice::ReadOnly)) {
        *problem = QStringLiteral("%1 cannot be read: %2").arg(quoted, file.errorString());
        return std::nullopt;
    }
    return file.readAll();
}

bool write(const QString &path, const QByteArray &bytes, QString *problem)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        *problem = QStringLiteral("%1 could not be written (%2)").arg(PlainText::quoted(shown(path)), file.errorString());
        return false;
    }
    return true;
}

QString shown(const QString &path)
{
    return QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
}

} // namespace fenrow::DocumentFile
