#include "FenrowBackup.h"

#include "JsonFields.h"
#include "domain/LocalCalendar.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>

namespace fenrow {

namespace {

QLatin1StringView key(const char *name)
{
    return QLatin1StringView(name);
}

// ---------------------------------------------------------------- writing

// Collects the values of the document and notes whether any of them cannot
// be written faithfully; such a document is not written at all.
class Writer {
public:
    bool ok() const { return m_ok; }

    QJsonValue date(const QDateTime &moment)
    {
        if (!moment.isValid()) {
            m_ok = false;
            return {};
        }
        const QDateTime utc = moment.toUTC();
        const QDate day = utc.date();
        const QTime time = utc.time();
        if (day.year() < 1 || day.year() > 9999) {
            m_ok = false;
            return {};
        }
        // Whole seconds: the fraction is dropped, never rounded up into the
        // next second.
        return QString::asprintf("%04d-%02d-%02dT%02d:%02d:%02dZ", day.year(), day.month(), day.day(), time.hour(),
                                 time.minute(), time.second());
    }

    QJsonValue number(double value)
    {
        m_ok = m_ok && std::isfinite(value);
        return value;
    }

    static QJsonValue id(const QUuid &id) { return id.toString(QUuid::WithoutBraces).toUpper(); }
    static QJsonValue bytes(const QByteArray &bytes) { return QString::fromLatin1(bytes.toBase64()); }

    template <typename Value, typename Write>
    void optional(QJsonObject &object, const char *name, const std::optional<Value> &value, Write write)
    {
        if (value)
            object.insert(key(name), write(*value));
    }

    QJsonObject item(const FenrowBackup::Item &item)
    {
        QJsonObject object{
            {key("id"), id(item.id)},
            {key("title"), item.title},
            {key("isDone"), item.isDone},
            {key("statusRaw"), item.statusRaw},
            {key("notes"), item.notes},
            {key("priorityRaw"), item.priorityRaw},
            {key("colorRaw"), item.colorRaw},
            {key("isCollapsed"), item.isCollapsed},
            {key("checklistData"), item.checklistData},
            {key("repeatCount"), item.repeatCount},
            {key("posX"), number(item.posX)},
            {key("posY"), number(item.posY)},
            {key("order"), item.order},
            {key("createdAt"), date(item.createdAt)},
        };
        const auto asDate = [this](const QDateTime &value) { return date(value); };
        const auto asNumber = [this](double value) { return number(value); };
        const auto asInteger = [](qint64 value) { return QJsonValue(value); };
        optional(object, "startDate", item.startDate, asDate);
        optional(object, "dueDate", item.dueDate, asDate);
        optional(object, "estimateMinutes", item.estimateMinutes, asInteger);
        optional(object, "dayPlanRank", item.dayPlanRank, asInteger);
        optional(object, "manualWidth", item.manualWidth, asNumber);
        optional(object, "manualHeight", item.manualHeight, asNumber);
        optional(object, "recurrenceRaw", item.recurrenceRaw, [](const QString &value) { return QJsonValue(value); });
        optional(object, "completedAt", item.completedAt, asDate);
        return object;
    }

    QJsonObject edge(const FenrowBackup::Edge &edge)
    {
        QJsonObject object{
            {key("id"), id(edge.id)},
            {key("fromID"), id(edge.fromID)},
            {key("toID"), id(edge.toID)},
            {key("sourceRaw"), edge.sourceRaw},
            {key("createdAt"), date(edge.createdAt)},
        };
        optional(object, "kindRaw", edge.kindRaw, [](const QString &value) { return QJsonValue(value); });
        return object;
    }

    QJsonObject file(const FenrowBackup::File &file)
    {
        QJsonObject object{
            {key("id"), id(file.id)},
            {key("filename"), file.filename},
            {key("contentTypeRaw"), file.contentTypeRaw},
            {key("byteCount"), file.byteCount},
            {key("posX"), number(file.posX)},
            {key("posY"), number(file.posY)},
            {key("order"), file.order},
            {key("createdAt"), date(file.createdAt)},
        };
        const auto asNumber = [this](double value) { return number(value); };
        optional(object, "data", file.data, &Writer::bytes);
        optional(object, "thumbnail", file.thumbnail, &Writer::bytes);
        optional(object, "manualWidth", file.manualWidth, asNumber);
        optional(object, "manualHeight", file.manualHeight, asNumber);
        return object;
    }

    QJsonObject link(const FenrowBackup::Link &link)
    {
        return {
            {key("id"), id(link.id)},
            {key("fileID"), id(link.fileID)},
            {key("nodeID"), id(link.nodeID)},
            {key("createdAt"), date(link.createdAt)},
        };
    }

    QJsonObject flow(const FenrowBackup::Flow &flow)
    {
        return {
            {key("id"), id(flow.id)},
            {key("name"), flow.name},
            {key("order"), flow.order},
            {key("createdAt"), date(flow.createdAt)},
            {key("viewportOffsetX"), number(flow.viewportOffsetX)},
            {key("viewportOffsetY"), number(flow.viewportOffsetY)},
            {key("viewportScale"), number(flow.viewportScale)},
            {key("hasBeenFramed"), flow.hasBeenFramed},
            {key("items"), array(flow.items, &Writer::item)},
            {key("edges"), array(flow.edges, &Writer::edge)},
            {key("files"), array(flow.files, &Writer::file)},
            {key("links"), array(flow.links, &Writer::link)},
        };
    }

    QJsonObject flowTemplate(const FenrowBackup::Template &flowTemplate)
    {
        QJsonObject object{
            {key("id"), id(flowTemplate.id)},
            {key("name"), flowTemplate.name},
            {key("createdAt"), date(flowTemplate.createdAt)},
        };
        optional(object, "payload", flowTemplate.payload, &Writer::bytes);
        return object;
    }

    QJsonObject record(const FenrowBackup::Record &record)
    {
        QJsonObject object{
            {key("id"), id(record.id)},
            {key("nodeID"), id(record.nodeID)},
            {key("flowID"), id(record.flowID)},
            {key("flowName"), record.flowName},
            {key("title"), record.title},
            {key("kindRaw"), record.kindRaw},
            {key("completedAt"), date(record.completedAt)},
            {key("cycle"), record.cycle},
        };
        optional(object, "payload", record.payload, &Writer::bytes);
        return object;
    }

    template <typename Value>
    QJsonArray array(const QList<Value> &values, QJsonObject (Writer::*write)(const Value &))
    {
        QJsonArray result;
        for (const Value &value : values)
            result.append((this->*write)(value));
        return result;
    }

private:
    bool m_ok = true;
};

// ---------------------------------------------------------------- reading

bool isDigits(QStringView text)
{
    for (QChar c : text) {
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return false;
    }
    return true;
}

// Exactly "yyyy-MM-ddTHH:mm:ssZ": no fraction, no other offset.
std::optional<QDateTime> parseDate(QStringView text)
{
    if (text.size() != 20 || text[4] != QLatin1Char('-') || text[7] != QLatin1Char('-') || text[10] != QLatin1Char('T')
        || text[13] != QLatin1Char(':') || text[16] != QLatin1Char(':') || text[19] != QLatin1Char('Z'))
        return std::nullopt;
    const auto number = [&](qsizetype from, qsizetype length) -> int {
        const QStringView digits = text.mid(from, length);
        return isDigits(digits) ? digits.toInt() : -1;
    };
    const QDate day(number(0, 4), number(5, 2), number(8, 2));
    const int hour = number(11, 2);
    const int minute = number(14, 2);
    const int second = number(17, 2);
    if (!day.isValid() || day.year() < 1 || !QTime::isValid(hour, minute, second))
        return std::nullopt;
    return QDateTime(day, QTime(hour, minute, second), Qt::UTC);
}

// The canonical hyphenated form, either case.
std::optional<QUuid> parseID(const QString &text)
{
    if (text.size() != 36)
        return std::nullopt;
    const QUuid id = QUuid::fromString(text);
    if (id.isNull() && text != QLatin1StringView("00000000-0000-0000-0000-000000000000"))
        return std::nullopt;
    return id;
}

// Reads one object of the document; typed helpers on top of JsonFields.
class Reader : public JsonFields {
public:
    using JsonFields::JsonFields;

    QDateTime date(QLatin1StringView name)
    {
        std::optional<QDateTime> parsed = parseDate(text(name));
        if (!parsed)
            fail();
        return parsed.value_or(QDateTime());
    }

    QUuid id(QLatin1StringView name)
    {
        std::optional<QUuid> parsed = parseID(text(name));
        if (!parsed)
            fail();
        return parsed.value_or(QUuid());
    }

    QByteArray bytes(QLatin1StringView name)
    {
        const QString encoded = text(name);
        QByteArray::FromBase64Result decoded =
            QByteArray::fromBase64Encoding(encoded.toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
        // Latin-1 conversion turns anything beyond it into '?', which base64
        // refuses as well.
        if (!decoded)
            fail();
        return std::move(decoded.decoded);
    }

    template <typename Value>
    QList<Value> array(QLatin1StringView name, Value (*read)(Reader &))
    {
        const QJsonValue found = value(name);
        if (!found.isArray()) {
            fail();
            return {};
        }
        const QJsonArray elements = found.toArray();
        QList<Value> values;
        values.reserve(elements.size());
        for (const QJsonValue &element : elements) {
            if (!element.isObject()) {
                fail();
                return {};
            }
            const QJsonObject object = element.toObject();
            Reader reader(object);
            values.append(read(reader));
            if (!reader.ok()) {
                fail();
                return {};
            }
        }
        return values;
    }
};

FenrowBackup::Item readItem(Reader &r)
{
    return {
        .id = r.id(key("id")),
        .title = r.text(key("title")),
        .isDone = r.boolean(key("isDone")),
        .statusRaw = r.text(key("statusRaw")),
        .notes = r.text(key("notes")),
        .priorityRaw = r.text(key("priorityRaw")),
        .colorRaw = r.text(key("colorRaw")),
        .startDate = r.optional(key("startDate"), &Reader::date),
        .dueDate = r.optional(key("dueDate"), &Reader::date),
        .estimateMinutes = r.optionalInteger(key("estimateMinutes")),
        .dayPlanRank = r.optionalInteger(key("dayPlanRank")),
        .manualWidth = r.optionalNumber(key("manualWidth")),
        .manualHeight = r.optionalNumber(key("manualHeight")),
        .isCollapsed = r.boolean(key("isCollapsed")),
        .checklistData = r.text(key("checklistData")),
        .recurrenceRaw = r.optionalText(key("recurrenceRaw")),
        .repeatCount = r.integer(key("repeatCount")),
        .completedAt = r.optional(key("completedAt"), &Reader::date),
        .posX = r.number(key("posX")),
        .posY = r.number(key("posY")),
        .order = r.integer(key("order")),
        .createdAt = r.date(key("createdAt")),
    };
}

FenrowBackup::Edge readEdge(Reader &r)
{
    return {
        .id = r.id(key("id")),
        .fromID = r.id(key("fromID")),
        .toID = r.id(key("toID")),
        .sourceRaw = r.text(key("sourceRaw")),
        .kindRaw = r.optionalText(key("kindRaw")),
        .createdAt = r.date(key("createdAt")),
    };
}

FenrowBackup::File readFile(Reader &r)
{
    return {
        .id = r.id(key("id")),
        .filename = r.text(key("filename")),
        .contentTypeRaw = r.text(key("contentTypeRaw")),
        .byteCount = r.integer(key("byteCount")),
        .data = r.optional(key("data"), &Reader::bytes),
        .thumbnail = r.optional(key("thumbnail"), &Reader::bytes),
        .posX = r.number(key("posX")),
        .posY = r.number(key("posY")),
        .manualWidth = r.optionalNumber(key("manualWidth")),
        .manualHeight = r.optionalNumber(key("manualHeight")),
        .order = r.integer(key("order")),
        .createdAt = r.date(key("createdAt")),
    };
}

FenrowBackup::Link readLink(Reader &r)
{
    return {
        .id = r.id(key("id")),
        .fileID = r.id(key("fileID")),
        .nodeID = r.id(key("nodeID")),
        .createdAt = r.date(key("createdAt")),
    };
}

FenrowBackup::Flow readFlow(Reader &r)
{
    return {
        .id = r.id(key("id")),
        .name = r.text(key("name")),
        .order = r.integer(key("order")),
        .createdAt = r.date(key("createdAt")),
        .viewportOffsetX = r.number(key("viewportOffsetX")),
        .viewportOffsetY = r.number(key("viewportOffsetY")),
        .viewportScale = r.number(key("viewportScale")),
        .hasBeenFramed = r.boolean(key("hasBeenFramed")),
        .items = r.array(key("items"), &readItem),
        .edges = r.array(key("edges"), &readEdge),
        .files = r.array(key("files"), &readFile),
        .links = r.array(key("links"), &readLink),
    };
}

FenrowBackup::Template readTemplate(Reader &r)
{
    return {
        .id = r.id(key("id")),
        .name = r.text(key("name")),
        .createdAt = r.date(key("createdAt")),
        .payload = r.optional(key("payload"), &Reader::bytes),
    };
}

FenrowBackup::Record readRecord(Reader &r)
{
    return {
        .id = r.id(key("id")),
        .nodeID = r.id(key("nodeID")),
        .flowID = r.id(key("flowID")),
        .flowName = r.text(key("flowName")),
        .title = r.text(key("title")),
        .kindRaw = r.text(key("kindRaw")),
        .completedAt = r.date(key("completedAt")),
        .cycle = r.integer(key("cycle")),
        .payload = r.optional(key("payload"), &Reader::bytes),
    };
}

} // namespace

std::optional<QByteArray> FenrowBackup::encoded() const
{
    Writer writer;
    const QJsonObject document{
        {key("format"), format},
        {key("version"), version},
        {key("createdAt"), writer.date(createdAt)},
        {key("flows"), writer.array(flows, &Writer::flow)},
        {key("templates"), writer.array(templates, &Writer::flowTemplate)},
        {key("records"), writer.array(records, &Writer::record)},
    };
    if (!writer.ok())
        return std::nullopt;
    return QJsonDocument(document).toJson(QJsonDocument::Compact);
}

std::variant<FenrowBackup, BackupError> FenrowBackup::decoded(const QByteArray &bytes)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return BackupError::unreadable;
    const QJsonObject root = document.object();

    Reader reader(root);
    FenrowBackup backup;
    backup.format = reader.text(key("format"));
    backup.version = reader.integer(key("version"));
    backup.createdAt = reader.date(key("createdAt"));
    backup.flows = reader.array(key("flows"), &readFlow);
    backup.templates = reader.array(key("templates"), &readTemplate);
    backup.records = reader.array(key("records"), &readRecord);
    if (!reader.ok() || backup.format != formatName)
        return BackupError::unreadable;
    if (backup.version >= 2)
        return BackupError::newerVersion;
    return backup;
}

QString FenrowBackup::fileName(const QString &prefix, const QDateTime &date, const LocalCalendar &calendar)
{
    const QDate day = calendar.dayOf(date);
    return prefix + QString::asprintf("%04d-%02d-%02d.", day.year(), day.month(), day.day()) + fileExtension;
}

} // namespace fenrow
