#include "FenrowBackup.h"

#include "JsonStream.h"
#include "domain/LocalCalendar.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace fenrow {

namespace {

QLatin1StringView key(const char *name)
{
    return QLatin1StringView(name);
}

// ---------------------------------------------------------------- writing

// Writes the document with every object's keys in sorted order (each
// function below lists them so), as QJsonDocument would write it: equal
// documents give equal bytes. A value the format cannot hold (a number
// that is not finite, a date that is not valid) fails the whole writing,
// and the first one is named by its place: "flows[0].items[3].dueDate".
class Writer {
public:
    explicit Writer(qsizetype reserve) : m_json(reserve) {}

    bool ok() const { return m_json.ok(); }
    QByteArray take() { return m_json.take(); }
    const QString &problem() const { return m_problem; }

    void document(const FenrowBackup &backup)
    {
        m_json.beginObject();
        date("createdAt", backup.createdAt);
        array("flows", backup.flows, &Writer::flow);
        m_json.key(key("format"));
        m_json.string(backup.format);
        array("records", backup.records, &Writer::record);
        array("templates", backup.templates, &Writer::flowTemplate);
        integer("version", backup.version);
        m_json.endObject();
    }

private:
    void refuse(const char *name, const QString &what)
    {
        if (m_problem.isEmpty()) {
            for (const auto &[list, index] : m_path) {
                if (!m_problem.isEmpty())
                    m_problem += QLatin1Char('.');
                m_problem += list + QStringLiteral("[%1]").arg(index);
            }
            if (!m_problem.isEmpty())
                m_problem += QLatin1Char('.');
            m_problem += QLatin1StringView(name) + QStringLiteral(": ") + what;
        }
        m_json.fail();
    }

    void date(const char *name, const QDateTime &moment)
    {
        m_json.key(key(name));
        if (!moment.isValid()) {
            refuse(name, QStringLiteral("not a valid date"));
            return;
        }
        const QDateTime utc = moment.toUTC();
        const QDate day = utc.date();
        const QTime time = utc.time();
        if (day.year() < 1 || day.year() > 9999)
            refuse(name, QStringLiteral("the year %1 cannot be written (only 1 to 9999)").arg(day.year()));
        // Whole seconds: the fraction is dropped, never rounded up into the
        // next second.
        char text[21];
        std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02dZ", day.year(), day.month(), day.day(),
                      time.hour(), time.minute(), time.second());
        m_json.ascii(QByteArrayView(text, 20));
    }
    void date(const char *name, const std::optional<QDateTime> &moment)
    {
        if (moment)
            date(name, *moment);
    }
    void id(const char *name, const QUuid &id)
    {
        m_json.key(key(name));
        m_json.ascii(id.toByteArray(QUuid::WithoutBraces).toUpper());
    }
    void text(const char *name, const QString &value)
    {
        m_json.key(key(name));
        m_json.string(value);
    }
    void text(const char *name, const std::optional<QString> &value)
    {
        if (value)
            text(name, *value);
    }
    void number(const char *name, double value)
    {
        m_json.key(key(name));
        if (!std::isfinite(value))
            refuse(name, QStringLiteral("%1 is not a number JSON can hold").arg(value));
        m_json.number(value);
    }
    void number(const char *name, const std::optional<double> &value)
    {
        if (value)
            number(name, *value);
    }
    void integer(const char *name, qint64 value)
    {
        m_json.key(key(name));
        m_json.integer(value);
    }
    void integer(const char *name, const std::optional<qint64> &value)
    {
        if (value)
            integer(name, *value);
    }
    void boolean(const char *name, bool value)
    {
        m_json.key(key(name));
        m_json.boolean(value);
    }
    void bytes(const char *name, const std::optional<QByteArray> &value)
    {
        if (!value)
            return;
        m_json.key(key(name));
        m_json.ascii(value->toBase64());
    }

    template <typename Value>
    void array(const char *name, const QList<Value> &values, void (Writer::*write)(const Value &))
    {
        m_json.key(key(name));
        m_json.beginArray();
        m_path.push_back({QLatin1StringView(name), 0});
        for (const Value &value : values) {
            (this->*write)(value);
            ++m_path.back().second;
        }
        m_path.pop_back();
        m_json.endArray();
    }

    void flow(const FenrowBackup::Flow &flow)
    {
        m_json.beginObject();
        date("createdAt", flow.createdAt);
        array("edges", flow.edges, &Writer::edge);
        array("files", flow.files, &Writer::file);
        boolean("hasBeenFramed", flow.hasBeenFramed);
        id("id", flow.id);
        array("items", flow.items, &Writer::item);
        array("links", flow.links, &Writer::link);
        text("name", flow.name);
        integer("order", flow.order);
        number("viewportOffsetX", flow.viewportOffsetX);
        number("viewportOffsetY", flow.viewportOffsetY);
        number("viewportScale", flow.viewportScale);
        m_json.endObject();
    }

    void item(const FenrowBackup::Item &item)
    {
        m_json.beginObject();
        text("checklistData", item.checklistData);
        text("colorRaw", item.colorRaw);
        date("completedAt", item.completedAt);
        date("createdAt", item.createdAt);
        integer("dayPlanRank", item.dayPlanRank);
        date("dueDate", item.dueDate);
        integer("estimateMinutes", item.estimateMinutes);
        id("id", item.id);
        boolean("isCollapsed", item.isCollapsed);
        boolean("isDone", item.isDone);
        number("manualHeight", item.manualHeight);
        number("manualWidth", item.manualWidth);
        text("notes", item.notes);
        integer("order", item.order);
        number("posX", item.posX);
        number("posY", item.posY);
        text("priorityRaw", item.priorityRaw);
        text("recurrenceRaw", item.recurrenceRaw);
        integer("repeatCount", item.repeatCount);
        date("startDate", item.startDate);
        text("statusRaw", item.statusRaw);
        text("title", item.title);
        m_json.endObject();
    }

    void edge(const FenrowBackup::Edge &edge)
    {
        m_json.beginObject();
        date("createdAt", edge.createdAt);
        id("fromID", edge.fromID);
        id("id", edge.id);
        text("kindRaw", edge.kindRaw);
        text("sourceRaw", edge.sourceRaw);
        id("toID", edge.toID);
        m_json.endObject();
    }

    void file(const FenrowBackup::File &file)
    {
        m_json.beginObject();
        integer("byteCount", file.byteCount);
        text("contentTypeRaw", file.contentTypeRaw);
        date("createdAt", file.createdAt);
        bytes("data", file.data);
        text("filename", file.filename);
        id("id", file.id);
        number("manualHeight", file.manualHeight);
        number("manualWidth", file.manualWidth);
        integer("order", file.order);
        number("posX", file.posX);
        number("posY", file.posY);
        bytes("thumbnail", file.thumbnail);
        m_json.endObject();
    }

    void link(const FenrowBackup::Link &link)
    {
        m_json.beginObject();
        date("createdAt", link.createdAt);
        id("fileID", link.fileID);
        id("id", link.id);
        id("nodeID", link.nodeID);
        m_json.endObject();
    }

    void flowTemplate(const FenrowBackup::Template &flowTemplate)
    {
        m_json.beginObject();
        date("createdAt", flowTemplate.createdAt);
        id("id", flowTemplate.id);
        text("name", flowTemplate.name);
        bytes("payload", flowTemplate.payload);
        m_json.endObject();
    }

    void record(const FenrowBackup::Record &record)
    {
        m_json.beginObject();
        date("completedAt", record.completedAt);
        integer("cycle", record.cycle);
        id("flowID", record.flowID);
        text("flowName", record.flowName);
        id("id", record.id);
        text("kindRaw", record.kindRaw);
        id("nodeID", record.nodeID);
        bytes("payload", record.payload);
        text("title", record.title);
        m_json.endObject();
    }

    JsonWriter m_json;
    // The lists being written, each with the index of its element.
    std::vector<std::pair<QLatin1StringView, qsizetype>> m_path;
    QString m_problem;
};

// ---------------------------------------------------------------- reading

bool isDigits(QByteArrayView text)
{
    for (char c : text) {
        if (c < '0' || c > '9')
            return false;
    }
    return true;
}

// Exactly "yyyy-MM-ddTHH:mm:ssZ": no fraction, no other offset.
std::optional<QDateTime> parseDate(QByteArrayView text)
{
    if (text.size() != 20 || text[4] != '-' || text[7] != '-' || text[10] != 'T' || text[13] != ':'
        || text[16] != ':' || text[19] != 'Z')
        return std::nullopt;
    const auto number = [&](qsizetype from, qsizetype length) -> int {
        const QByteArrayView digits = text.sliced(from, length);
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
std::optional<QUuid> parseID(QByteArrayView text)
{
    if (text.size() != 36)
        return std::nullopt;
    const QUuid id = QUuid::fromString(QLatin1StringView(text));
    if (id.isNull() && text != QByteArrayView("00000000-0000-0000-0000-000000000000"))
        return std::nullopt;
    return id;
}

// The reader and where in the document it is, so that the first thing
// wrong can be told with its place: "flows[2].items[15].dueDate".
class Decoder {
public:
    explicit Decoder(QByteArrayView bytes) : json(bytes) {}

    JsonReader json;

    // Entering and leaving a member or an element. The reader's own
    // mistake is placed where it was found: at the first step left after it.
    void enter(const char *key) { m_path.push_back({key, -1}); }
    void enter(qsizetype index) { m_path.push_back({nullptr, index}); }
    void leave()
    {
        if (!json.ok() && !m_mistakePlaced) {
            m_mistakePath = path();
            m_mistakePlaced = true;
        }
        m_path.pop_back();
    }

    // Says what is wrong with the value here; false, as every reader
    // returns on a refusal. The first refusal stands.
    bool refuse(const QString &what)
    {
        if (m_problem.isEmpty())
            m_problem = m_path.empty() ? what : path() + QStringLiteral(": ") + what;
        return json.fail();
    }
    bool refuse(const char *what) { return refuse(QString::fromLatin1(what)); }

    // The first refusal, or the reader's own mistake with its line and
    // column and the place it was reading.
    QString problem() const
    {
        if (!m_problem.isEmpty())
            return m_problem;
        const JsonReader::Mistake mistake = json.mistake();
        const QString place = QStringLiteral("line %1, column %2").arg(mistake.line).arg(mistake.column);
        const QString what = QString::fromLatin1(mistake.reason ? mistake.reason : "not valid JSON");
        return m_mistakePath.isEmpty() ? place + QStringLiteral(": ") + what
                                       : m_mistakePath + QStringLiteral(" (") + place + QStringLiteral("): ") + what;
    }

private:
    QString path() const
    {
        QString text;
        for (const Step &step : m_path) {
            if (step.key)
                text += (text.isEmpty() ? QString() : QStringLiteral(".")) + QLatin1StringView(step.key);
            else
                text += QStringLiteral("[%1]").arg(step.index);
        }
        return text;
    }

    struct Step {
        const char *key;
        qsizetype index;
    };
    std::vector<Step> m_path;
    QString m_problem;
    QString m_mistakePath;
    bool m_mistakePlaced = false;
};

// What a value of each type must look like, for refusals.
constexpr const char *notText = "not a string";
constexpr const char *notNumber = "not a number";
constexpr const char *notInteger = "not a whole number";
constexpr const char *notBoolean = "not true or false";
constexpr const char *notDate = "not a date in the form 2026-11-15T19:24:05Z";
constexpr const char *notID = "not an id in the form 0A1B2C3D-0000-4000-8000-00000000000F";
constexpr const char *notBase64 = "not base64";

// Reads one value of a field into a record; false when it is not of the
// field's type. Optional fields take null as absent.
template <typename Record>
struct Field {
    const char *name;
    bool required;
    bool (*read)(Decoder &decoder, Record &record);
};

template <typename Value>
bool assign(Value &into, std::optional<Value> value)
{
    if (!value)
        return false;
    into = std::move(*value);
    return true;
}

template <typename Value, typename Read>
bool assignOptional(Decoder &decoder, std::optional<Value> &into, Read read)
{
    if (decoder.json.takeNull()) {
        into.reset();
        return true;
    }
    std::optional<Value> value = read(decoder);
    into = value;
    return value.has_value();
}

// The reader's own mistake (a broken string, a number beyond 64 bits)
// stands; a value of another kind is refused as not being `what`.
template <typename Value>
std::optional<Value> valueOf(Decoder &decoder, JsonReader::Kind kind, const char *what,
                             std::optional<Value> (*read)(JsonReader &))
{
    if (decoder.json.peek() != kind) {
        decoder.refuse(what);
        return std::nullopt;
    }
    return read(decoder.json);
}

std::optional<QString> readText(Decoder &decoder)
{
    return valueOf<QString>(decoder, JsonReader::Kind::string, notText,
                            [](JsonReader &json) { return json.string(); });
}

std::optional<double> readNumber(Decoder &decoder)
{
    return valueOf<double>(decoder, JsonReader::Kind::number, notNumber,
                           [](JsonReader &json) { return json.number(); });
}

std::optional<qint64> readInteger(Decoder &decoder)
{
    return valueOf<qint64>(decoder, JsonReader::Kind::number, notInteger,
                           [](JsonReader &json) { return json.integer(); });
}

std::optional<bool> readBoolean(Decoder &decoder)
{
    return valueOf<bool>(decoder, JsonReader::Kind::boolean, notBoolean,
                         [](JsonReader &json) { return json.boolean(); });
}

// A string's bytes, parsed; refused as `what` when it is no string or
// does not parse.
template <typename Value, typename Parse>
std::optional<Value> parsedText(Decoder &decoder, const char *what, Parse parse)
{
    if (decoder.json.peek() != JsonReader::Kind::string) {
        decoder.refuse(what);
        return std::nullopt;
    }
    QByteArray scratch;
    const std::optional<QByteArrayView> text = decoder.json.utf8(scratch);
    if (!text)
        return std::nullopt;
    std::optional<Value> value = parse(*text);
    if (!value)
        decoder.refuse(what);
    return value;
}

std::optional<QDateTime> readDate(Decoder &decoder)
{
    return parsedText<QDateTime>(decoder, notDate, parseDate);
}

std::optional<QUuid> readID(Decoder &decoder)
{
    return parsedText<QUuid>(decoder, notID, parseID);
}

std::optional<QByteArray> readBytes(Decoder &decoder)
{
    return parsedText<QByteArray>(decoder, notBase64, [](QByteArrayView text) -> std::optional<QByteArray> {
        QByteArray::FromBase64Result decoded =
            QByteArray::fromBase64Encoding(text.toByteArray(), QByteArray::AbortOnBase64DecodingErrors);
        if (!decoded)
            return std::nullopt;
        return std::move(decoded.decoded);
    });
}

// One object into `record`: every required field present and of its type,
// unknown keys skipped whatever they hold.
template <typename Record, std::size_t count>
bool readObject(Decoder &decoder, Record &record, const std::array<Field<Record>, count> &fields)
{
    static_assert(count <= 32);
    JsonReader &json = decoder.json;
    std::uint32_t seen = 0;
    if (json.peek() != JsonReader::Kind::object)
        return decoder.refuse("not a JSON object");
    if (!json.beginObject())
        return false;
    QByteArrayView name;
    while (json.nextKey(name)) {
        std::size_t index = 0;
        while (index < count && name != QByteArrayView(fields[index].name))
            ++index;
        if (index == count) {
            json.skipValue();
            continue;
        }
        decoder.enter(fields[index].name);
        const bool read = fields[index].read(decoder, record);
        decoder.leave();
        if (!read)
            return json.fail();
        seen |= std::uint32_t(1) << index;
    }
    if (!json.ok())
        return false;
    for (std::size_t index = 0; index < count; ++index) {
        if (fields[index].required && !(seen & (std::uint32_t(1) << index)))
            return decoder.refuse(QStringLiteral("\"%1\" is missing").arg(QLatin1StringView(fields[index].name)));
    }
    return true;
}

template <typename Value>
bool readArray(Decoder &decoder, QList<Value> &values, bool (*read)(Decoder &, Value &))
{
    JsonReader &json = decoder.json;
    if (json.peek() != JsonReader::Kind::array)
        return decoder.refuse("not a list");
    if (!json.beginArray())
        return false;
    values.clear();
    while (json.nextElement()) {
        Value value;
        decoder.enter(values.size());
        const bool ok = read(decoder, value);
        decoder.leave();
        if (!ok)
            return json.fail();
        values.append(std::move(value));
    }
    return json.ok();
}

// The field lists below name each key once, with how to read it; the
// captureless lambdas become the plain functions the tables hold.
#define FENROW_REQUIRED(Record, key, member, reader)                                                                   \
    Field<Record> { #key, true, [](Decoder &decoder, Record &record) { return assign(record.member, reader(decoder)); } }
#define FENROW_OPTIONAL(Record, key, member, reader)                                                                   \
    Field<Record>                                                                                                      \
    {                                                                                                                  \
        #key, false, [](Decoder &decoder, Record &record) { return assignOptional(decoder, record.member, reader); }  \
    }
#define FENROW_LIST(Record, key, member, reader)                                                                       \
    Field<Record> { #key, true, [](Decoder &decoder, Record &record) { return readArray(decoder, record.member, reader); } }

bool readItem(Decoder &decoder, FenrowBackup::Item &item)
{
    using Item = FenrowBackup::Item;
    static const std::array fields{
        FENROW_REQUIRED(Item, id, id, readID),
        FENROW_REQUIRED(Item, title, title, readText),
        FENROW_REQUIRED(Item, isDone, isDone, readBoolean),
        FENROW_REQUIRED(Item, statusRaw, statusRaw, readText),
        FENROW_REQUIRED(Item, notes, notes, readText),
        FENROW_REQUIRED(Item, priorityRaw, priorityRaw, readText),
        FENROW_REQUIRED(Item, colorRaw, colorRaw, readText),
        FENROW_OPTIONAL(Item, startDate, startDate, readDate),
        FENROW_OPTIONAL(Item, dueDate, dueDate, readDate),
        FENROW_OPTIONAL(Item, estimateMinutes, estimateMinutes, readInteger),
        FENROW_OPTIONAL(Item, dayPlanRank, dayPlanRank, readInteger),
        FENROW_OPTIONAL(Item, manualWidth, manualWidth, readNumber),
        FENROW_OPTIONAL(Item, manualHeight, manualHeight, readNumber),
        FENROW_REQUIRED(Item, isCollapsed, isCollapsed, readBoolean),
        FENROW_REQUIRED(Item, checklistData, checklistData, readText),
        FENROW_OPTIONAL(Item, recurrenceRaw, recurrenceRaw, readText),
        FENROW_REQUIRED(Item, repeatCount, repeatCount, readInteger),
        FENROW_OPTIONAL(Item, completedAt, completedAt, readDate),
        FENROW_REQUIRED(Item, posX, posX, readNumber),
        FENROW_REQUIRED(Item, posY, posY, readNumber),
        FENROW_REQUIRED(Item, order, order, readInteger),
        FENROW_REQUIRED(Item, createdAt, createdAt, readDate),
    };
    return readObject(decoder, item, fields);
}

bool readEdge(Decoder &decoder, FenrowBackup::Edge &edge)
{
    using Edge = FenrowBackup::Edge;
    static const std::array fields{
        FENROW_REQUIRED(Edge, id, id, readID),
        FENROW_REQUIRED(Edge, fromID, fromID, readID),
        FENROW_REQUIRED(Edge, toID, toID, readID),
        FENROW_REQUIRED(Edge, sourceRaw, sourceRaw, readText),
        FENROW_OPTIONAL(Edge, kindRaw, kindRaw, readText),
        FENROW_REQUIRED(Edge, createdAt, createdAt, readDate),
    };
    return readObject(decoder, edge, fields);
}

bool readFile(Decoder &decoder, FenrowBackup::File &file)
{
    using File = FenrowBackup::File;
    static const std::array fields{
        FENROW_REQUIRED(File, id, id, readID),
        FENROW_REQUIRED(File, filename, filename, readText),
        FENROW_REQUIRED(File, contentTypeRaw, contentTypeRaw, readText),
        FENROW_REQUIRED(File, byteCount, byteCount, readInteger),
        FENROW_OPTIONAL(File, data, data, readBytes),
        FENROW_OPTIONAL(File, thumbnail, thumbnail, readBytes),
        FENROW_REQUIRED(File, posX, posX, readNumber),
        FENROW_REQUIRED(File, posY, posY, readNumber),
        FENROW_OPTIONAL(File, manualWidth, manualWidth, readNumber),
        FENROW_OPTIONAL(File, manualHeight, manualHeight, readNumber),
        FENROW_REQUIRED(File, order, order, readInteger),
        FENROW_REQUIRED(File, createdAt, createdAt, readDate),
    };
    return readObject(decoder, file, fields);
}

bool readLink(Decoder &decoder, FenrowBackup::Link &link)
{
    using Link = FenrowBackup::Link;
    static const std::array fields{
        FENROW_REQUIRED(Link, id, id, readID),
        FENROW_REQUIRED(Link, fileID, fileID, readID),
        FENROW_REQUIRED(Link, nodeID, nodeID, readID),
        FENROW_REQUIRED(Link, createdAt, createdAt, readDate),
    };
    return readObject(decoder, link, fields);
}

bool readFlow(Decoder &decoder, FenrowBackup::Flow &flow)
{
    using Flow = FenrowBackup::Flow;
    static const std::array fields{
        FENROW_REQUIRED(Flow, id, id, readID),
        FENROW_REQUIRED(Flow, name, name, readText),
        FENROW_REQUIRED(Flow, order, order, readInteger),
        FENROW_REQUIRED(Flow, createdAt, createdAt, readDate),
        FENROW_REQUIRED(Flow, viewportOffsetX, viewportOffsetX, readNumber),
        FENROW_REQUIRED(Flow, viewportOffsetY, viewportOffsetY, readNumber),
        FENROW_REQUIRED(Flow, viewportScale, viewportScale, readNumber),
        FENROW_REQUIRED(Flow, hasBeenFramed, hasBeenFramed, readBoolean),
        FENROW_LIST(Flow, items, items, readItem),
        FENROW_LIST(Flow, edges, edges, readEdge),
        FENROW_LIST(Flow, files, files, readFile),
        FENROW_LIST(Flow, links, links, readLink),
    };
    return readObject(decoder, flow, fields);
}

bool readTemplate(Decoder &decoder, FenrowBackup::Template &flowTemplate)
{
    using Template = FenrowBackup::Template;
    static const std::array fields{
        FENROW_REQUIRED(Template, id, id, readID),
        FENROW_REQUIRED(Template, name, name, readText),
        FENROW_REQUIRED(Template, createdAt, createdAt, readDate),
        FENROW_OPTIONAL(Template, payload, payload, readBytes),
    };
    return readObject(decoder, flowTemplate, fields);
}

bool readRecord(Decoder &decoder, FenrowBackup::Record &record)
{
    using Record = FenrowBackup::Record;
    static const std::array fields{
        FENROW_REQUIRED(Record, id, id, readID),
        FENROW_REQUIRED(Record, nodeID, nodeID, readID),
        FENROW_REQUIRED(Record, flowID, flowID, readID),
        FENROW_REQUIRED(Record, flowName, flowName, readText),
        FENROW_REQUIRED(Record, title, title, readText),
        FENROW_REQUIRED(Record, kindRaw, kindRaw, readText),
        FENROW_REQUIRED(Record, completedAt, completedAt, readDate),
        FENROW_REQUIRED(Record, cycle, cycle, readInteger),
        FENROW_OPTIONAL(Record, payload, payload, readBytes),
    };
    return readObject(decoder, record, fields);
}

bool readDocument(Decoder &decoder, FenrowBackup &backup)
{
    static const std::array fields{
        FENROW_REQUIRED(FenrowBackup, format, format, readText),
        FENROW_REQUIRED(FenrowBackup, version, version, readInteger),
        FENROW_REQUIRED(FenrowBackup, createdAt, createdAt, readDate),
        FENROW_LIST(FenrowBackup, flows, flows, readFlow),
        FENROW_LIST(FenrowBackup, templates, templates, readTemplate),
        FENROW_LIST(FenrowBackup, records, records, readRecord),
    };
    if (!readObject(decoder, backup, fields))
        return false;
    return decoder.json.atEnd() || decoder.json.fail("something follows the document");
}

#undef FENROW_REQUIRED
#undef FENROW_OPTIONAL
#undef FENROW_LIST

} // namespace

std::optional<QByteArray> FenrowBackup::encoded(QString *problem) const
{
    // A document is mostly its tasks: about 400 bytes each, plus the files.
    qsizetype estimate = 4096;
    for (const Flow &flow : flows) {
        estimate += 512 + flow.items.size() * 420 + flow.edges.size() * 200 + flow.links.size() * 160;
        for (const File &file : flow.files)
            estimate += 400 + (file.data ? file.data->size() * 4 / 3 : 0)
                + (file.thumbnail ? file.thumbnail->size() * 4 / 3 : 0);
    }
    estimate += records.size() * 400 + templates.size() * 400;
    Writer writer(estimate);
    writer.document(*this);
    if (!writer.ok()) {
        if (problem)
            *problem = writer.problem();
        return std::nullopt;
    }
    return writer.take();
}

std::variant<FenrowBackup, BackupProblem> FenrowBackup::decoded(const QByteArray &bytes)
{
    // Editors on some systems begin UTF-8 text with a byte-order mark.
    QByteArrayView text(bytes);
    if (text.startsWith("\xEF\xBB\xBF"))
        text = text.sliced(3);
    if (text.trimmed().isEmpty())
        return BackupProblem{BackupError::unreadable, QStringLiteral("the file is empty")};
    Decoder decoder(text);
    FenrowBackup backup;
    if (!readDocument(decoder, backup))
        return BackupProblem{BackupError::unreadable, decoder.problem()};
    if (backup.format != formatName) {
        return BackupProblem{BackupError::unreadable,
                             QStringLiteral("format: \"%1\" is not %2").arg(backup.format.left(80), formatName)};
    }
    if (backup.version >= 2) {
        return BackupProblem{BackupError::newerVersion,
                             QStringLiteral("version %1; this Fenrow reads version %2 and older")
                                 .arg(backup.version)
                                 .arg(currentVersion)};
    }
    return backup;
}

QString FenrowBackup::fileName(const QString &prefix, const QDateTime &date, const LocalCalendar &calendar)
{
    const QDate day = calendar.dayOf(date);
    return prefix + QString::asprintf("%04d-%02d-%02d.", day.year(), day.month(), day.day()) + fileExtension;
}

QString FenrowBackup::safetyFileName(const QDateTime &date, const LocalCalendar &calendar)
{
    const QDateTime local = date.toTimeZone(calendar.zone());
    return safetyPrefix + local.toString(QStringLiteral("yyyy-MM-dd HH-mm-ss.")) + fileExtension;
}

} // namespace fenrow
