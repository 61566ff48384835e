#include "DocumentFile.h"

#include "PlainText.h"

#include "formats/DocumentInput.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace fenrow::DocumentFile {

std::optional<QByteArray> read(const UserPath &path, qint64 limit, QString *problem)
{
    auto read = DocumentInput::read(path.absolute, limit);
    if (const auto *refusal = std::get_if<DocumentInput::Refusal>(&read)) {
        *problem = DocumentInput::describe(*refusal, path.typed);
        return std::nullopt;
    }
    return std::get<QByteArray>(std::move(read));
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
