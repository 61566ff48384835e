#include "ChecklistEntry.h"

#include "formats/JsonStream.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <optional>

namespace fenrow::ChecklistCodec {

namespace {

// True or false where the strict reader is certain; it accepts nothing
// QJsonDocument refuses, and a key twice over is left to `decode`.
std::optional<bool> strictHasEntries(const QByteArray &utf8)
{
    JsonReader reader(utf8);
    if (!reader.beginArray())
        return std::nullopt;
    bool any = false;
    QByteArray scratch;
    while (reader.nextElement()) {
        if (!reader.beginObject())
            return std::nullopt;
        bool id = false;
        bool title = false;
        bool isDone = false;
        QByteArrayView key;
        while (reader.nextKey(key)) {
            bool *seen = key == QByteArrayView("id") ? &id
                : key == QByteArrayView("title")     ? &title
                : key == QByteArrayView("isDone")    ? &isDone
                                                     : nullptr;
            if (!seen) {
                if (!reader.skipValue())
                    return std::nullopt;
                continue;
            }
            if (*seen)
                return std::nullopt;
            *seen = true;
            if (seen == &isDone) {
                if (!reader.boolean())
                    return std::nullopt;
                continue;
            }
            const std::optional<QByteArrayView> text = reader.utf8(scratch);
            if (!text || (seen == &id && QUuid::fromString(QLatin1StringView(*text)).isNull()))
                return std::nullopt;
        }
        if (!reader.ok() || !id || !title || !isDone)
            return std::nullopt;
        any = true;
    }
    if (!reader.ok() || !reader.atEnd())
        return std::nullopt;
    return any;
}

} // namespace

bool hasEntries(const QString &data)
{
    if (data.isEmpty())
        return false;
    if (const std::optional<bool> certain = strictHasEntries(data.toUtf8()))
        return *certain;
    return !decode(data).isEmpty();
}

QString encode(const Checklist &entries)
{
    if (entries.isEmpty())
        return {};
    QJsonArray array;
    for (const ChecklistEntry &entry : entries) {
        array.append(QJsonObject{
            {QStringLiteral("id"), entry.id.toString(QUuid::WithoutBraces).toUpper()},
            {QStringLiteral("title"), entry.title},
            {QStringLiteral("isDone"), entry.isDone},
        });
    }
    return QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Compact));
}

Checklist decode(const QString &data)
{
    if (data.isEmpty())
        return {};
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(data.toUtf8(), &error);
    if (error.error != QJsonParseError::NoError || !document.isArray())
        return {};

    Checklist entries;
    const QJsonArray array = document.array();
    entries.reserve(array.size());
    for (const QJsonValue &value : array) {
        // One malformed entry makes the whole text undecodable, as a strict
        // decoder of the array would: better empty than half a list.
        if (!value.isObject())
            return {};
        const QJsonObject object = value.toObject();
        const QJsonValue id = object.value(QStringLiteral("id"));
        const QJsonValue title = object.value(QStringLiteral("title"));
        const QJsonValue isDone = object.value(QStringLiteral("isDone"));
        if (!id.isString() || !title.isString() || !isDone.isBool())
            return {};
        const QUuid uuid = QUuid::fromString(id.toString());
        if (uuid.isNull())
            return {};
        entries.append({uuid, title.toString(), isDone.toBool()});
    }
    return entries;
}

} // namespace fenrow::ChecklistCodec
