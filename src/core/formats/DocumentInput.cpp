#include "DocumentInput.h"

#include <QFile>
#include <QFileInfo>
#include <QLocale>

namespace fenrow::DocumentInput {

namespace {

QString quoted(const QString &name)
{
    return QLatin1Char('"') + name + QLatin1Char('"');
}

QString rounded(qint64 bytes, const QLocale &locale = QLocale::c())
{
    return locale.formattedDataSize(bytes, 1, QLocale::DataSizeIecFormat);
}

} // namespace

std::variant<QByteArray, Refusal> read(const QString &path, qint64 limit)
{
    const QFileInfo info(path);
    if (!info.exists())
        return Missing{};
    if (info.isDir())
        return Folder{};
    if (!info.isFile())
        return NotRegular{};
    if (info.size() > limit)
        return TooLarge{info.size(), limit};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Unreadable{file.errorString()};
    // One byte past the limit tells a file that grew since its size was read.
    QByteArray bytes = file.read(limit + 1);
    if (file.error() != QFileDevice::NoError)
        return Unreadable{file.errorString()};
    if (bytes.size() > limit)
        return TooLarge{bytes.size(), limit};
    return bytes;
}

QString sizeText(qint64 bytes, qint64 limit, const QLocale &locale)
{
    const QString text = rounded(bytes, locale);
    if (bytes == limit || text != rounded(limit, locale))
        return text;
    // The C locale writes no thousands separators; a long number needs them.
    const QLocale digits = locale.language() == QLocale::C ? QLocale(QLocale::English) : locale;
    const bool english = digits.language() == QLocale::English;
    return digits.toString(bytes) + (english ? QStringLiteral(" bytes") : QStringLiteral(" B"));
}

QString describe(const Refusal &refusal, const QString &shownName)
{
    const QString name = quoted(shownName);
    if (std::holds_alternative<Missing>(refusal))
        return QStringLiteral("there is no file %1").arg(name);
    if (std::holds_alternative<Folder>(refusal))
        return QStringLiteral("%1 is a folder, not a file").arg(name);
    if (std::holds_alternative<NotRegular>(refusal))
        return QStringLiteral("%1 is not a regular file (a device or a pipe cannot be read as a document)").arg(name);
    if (const auto *large = std::get_if<TooLarge>(&refusal))
        return QStringLiteral("%1 is larger than %2 (it has %3)")
            .arg(name, rounded(large->limit), sizeText(large->size, large->limit));
    return QStringLiteral("%1 cannot be read: %2").arg(name, std::get<Unreadable>(refusal).reason);
}

} // namespace fenrow::DocumentInput
