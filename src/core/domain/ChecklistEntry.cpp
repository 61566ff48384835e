#include "ChecklistEntry.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <simdjson.h>

#include <optional>
#include <string_view>

namespace fenrow::ChecklistCodec {

namespace {

// The entries and those done, where the strict parser is certain; it
// accepts nothing QJsonDocument refuses, and a key twice over is left to
// `decode`.
std::optional<Progress> strictProgress(const QString &data)
{
    QByteArray utf8 = data.toUtf8();
    const std::size_t size = std::size_t(utf8.size());
    // The parser reads a little past the end; zeroed bytes there spare it a
    // padded copy of its own.
    utf8.append(qsizetype(simdjson::SIMDJSON_PADDING), '\0');
    // Checklists are small and read one after another: one parser per
    // thread keeps its buffers from one to the next.
    thread_local simdjson::dom::parser parser;
    simdjson::dom::array entries;
    if (parser.parse(utf8.constData(), size, false).get_array().get(entries))
        return std::nullopt;
    Progress counted;
    for (const simdjson::dom::element entry : entries) {
        simdjson::dom::object fields;
        if (entry.get_object().get(fields))
            return std::nullopt;
        bool id = false;
        bool title = false;
        bool isDone = false;
        for (const simdjson::dom::key_value_pair field : fields) {
            bool *seen = field.key == "id" ? &id
                : field.key == "title"     ? &title
                : field.key == "isDone"    ? &isDone
                                           : nullptr;
            if (!seen)
                continue;
            if (*seen)
                return std::nullopt;
            *seen = true;
            if (seen == &isDone) {
                bool done = false;
                if (field.value.get_bool().get(done))
                    return std::nullopt;
                counted.done += done ? 1 : 0;
                continue;
            }
            std::string_view text;
            if (field.value.get_string().get(text)
                || (seen == &id && QUuid::fromString(QLatin1StringView(text.data(), qsizetype(text.size()))).isNull()))
                return std::nullopt;
        }
        if (!id || !title || !isDone)
            return std::nullopt;
        ++counted.total;
    }
    return counted;
}

} // namespace

Progress progress(const QString &data)
{
    if (data.isEmpty())
        return {};
    if (const std::optional<Progress> certain = strictProgress(data))
        return *certain;
    Progress counted;
    for (const ChecklistEntry &entry : decode(data)) {
        counted.done += entry.isDone ? 1 : 0;
        ++counted.total;
    }
    return counted;
}

bool hasEntries(const QString &data)
{
    return progress(data).total > 0;
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
