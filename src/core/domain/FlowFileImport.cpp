#include "FlowFileImport.h"

#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>

namespace fenrow::FlowFileImport {

namespace {

// The MIME database always answers; these two answers mean it learned
// nothing (unrecognised bytes, or no bytes at all). Storing "" for them lets
// the card show the generic icon and the inspector say the type is unknown.
// Text recognised by content alone (a README without extension) is a real
// answer and is kept.
QString contentTypeOf(const QString &filename, const QByteArray &data)
{
    const QMimeType type = QMimeDatabase().mimeTypeForFileNameAndData(filename, data);
    if (!type.isValid() || type.isDefault() || type.name() == QLatin1String("application/x-zerosize"))
        return {};
    return type.name();
}

} // namespace

std::variant<Payload, Failure> read(const QString &path)
{
    const QFileInfo info(path);
    // Only regular files: a device or a pipe has no size to check first and
    // might never end.
    if (!info.isFile())
        return Unreadable{};
    if (info.size() > maxBytes)
        return TooLarge{info.size()};

    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Unreadable{};
    QByteArray data = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return Unreadable{};
    // The file may have grown since its size was checked.
    if (data.size() > maxBytes)
        return TooLarge{data.size()};

    Payload payload;
    payload.filename = info.fileName();
    payload.contentTypeRaw = contentTypeOf(payload.filename, data);
    payload.byteCount = data.size();
    payload.data = std::move(data);
    return payload;
}

} // namespace fenrow::FlowFileImport
