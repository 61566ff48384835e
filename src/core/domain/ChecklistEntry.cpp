#include "ChecklistEntry.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace fenrow::ChecklistCodec {

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
