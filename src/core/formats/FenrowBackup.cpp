#include "FenrowBackup.h"

#include "JsonStream.h"
#include "domain/LocalCalendar.h"

#include <QUtf8StringView>

#include <simdjson.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string_view>

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

namespace sj = simdjson::ondemand;

bool isDigits(std::string_view text)
{
    for (char c : text) {
        if (c < '0' || c > '9')
            return false;
    }
    return true;
}

// Exactly "yyyy-MM-ddTHH:mm:ssZ": no fraction, no other offset.
std::optional<QDateTime> parseDate(std::string_view text)
{
    if (text.size() != 20 || text[4] != '-' || text[7] != '-' || text[10] != 'T' || text[13] != ':'
        || text[16] != ':' || text[19] != 'Z')
        return std::nullopt;
    const auto number = [&](std::size_t from, std::size_t length) -> int {
        const std::string_view digits = text.substr(from, length);
        if (!isDigits(digits))
            return -1;
        int value = 0;
        for (char c : digits)
            value = value * 10 + (c - '0');
        return value;
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
std::optional<QUuid> parseID(std::string_view text)
{
    if (text.size() != 36)
        return std::nullopt;
    const QLatin1StringView latin(text.data(), qsizetype(text.size()));
    const QUuid id = QUuid::fromString(latin);
    if (id.isNull() && latin != QLatin1StringView("00000000-0000-0000-0000-000000000000"))
        return std::nullopt;
    return id;
}

// What a mistake in the JSON itself is, in the words the refusal uses.
const char *reasonOf(simdjson::error_code error)
{
    switch (error) {
    case simdjson::UNCLOSED_STRING:
        return "the document ends inside a string";
    case simdjson::INCOMPLETE_ARRAY_OR_OBJECT:
        return "the document ends inside an object or a list";
    case simdjson::UNESCAPED_CHARS:
        return "a control character inside a string";
    case simdjson::UTF8_ERROR:
        return "a string that is not UTF-8";
    case simdjson::STRING_ERROR:
        return "a string with a broken escape";
    case simdjson::NUMBER_ERROR:
        return "not a valid number";
    case simdjson::NUMBER_OUT_OF_RANGE:
        return "a number beyond the range of a double";
    case simdjson::DEPTH_ERROR:
        return "nested deeper than 1024 levels";
    case simdjson::T_ATOM_ERROR:
    case simdjson::F_ATOM_ERROR:
    case simdjson::N_ATOM_ERROR:
    case simdjson::INCORRECT_TYPE:
        return "expected a value";
    default:
        return "not valid JSON";
    }
}

// Where the parser's first pass found a mistake it does not place itself:
// the end for a string left open, else the first byte of the offending
// kind inside a string (a control character, or bytes that are not UTF-8).
qsizetype placeOf(QByteArrayView text, simdjson::error_code error)
{
    if (error != simdjson::UNESCAPED_CHARS && error != simdjson::UTF8_ERROR)
        return text.size();
    bool inString = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (error == simdjson::UTF8_ERROR && byte >= 0x80) {
            int length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : 2;
            if (byte < 0xC2 || byte > 0xF4 || i + length > text.size()
                || !QUtf8StringView(text.data() + i, length).isValidUtf8())
                return i;
            i += length - 1;
            continue;
        }
        if (!inString) {
            inString = byte == '"';
        } else if (byte == '\\') {
            ++i;
        } else if (byte == '"') {
            inString = false;
        } else if (byte < 0x20 && error == simdjson::UNESCAPED_CHARS) {
            return i;
        }
    }
    return text.size();
}

// The parser, and the first thing wrong with the document. Its place
// ("flows[2].items[15].dueDate") is gathered as the readers return from
// it, each naming its step, so that reading what is right costs nothing.
class Decoder {
public:
    explicit Decoder(QByteArrayView text) : m_text(text) {}

    bool read(FenrowBackup &backup);

    // A reader returning from a refusal or mistake below it names its step.
    void unwind(const char *key) { m_path.push_back({key, -1}); }
    void unwind(qsizetype index) { m_path.push_back({nullptr, index}); }

    // Says what is wrong with the value here; false, as every reader
    // returns on a refusal. The first refusal stands.
    bool refuse(const QString &what)
    {
        if (!m_what.isEmpty())
            return false;
        m_what = what;
        m_place.clear();
        return false;
    }
    bool refuse(const char *what) { return refuse(QString::fromLatin1(what)); }

    // A mistake in the JSON itself, placed by line and column, and by the
    // place it was reading when that is known.
    bool mistake(const char *reason, qsizetype offset)
    {
        if (!m_what.isEmpty())
            return false;
        qsizetype line = 1;
        qsizetype lineStart = 0;
        for (qsizetype i = 0; i < offset && i < m_text.size(); ++i) {
            if (m_text[i] == '\n') {
                ++line;
                lineStart = i + 1;
            }
        }
        m_place = QStringLiteral("line %1, column %2").arg(line).arg(offset - lineStart + 1);
        m_what = QString::fromLatin1(reason);
        return false;
    }
    bool mistake(simdjson::error_code error, const char *reason = nullptr)
    {
        return mistake(reason ? reason : reasonOf(error), here());
    }
    bool mistake(simdjson::error_code error, const char *at, const char *reason)
    {
        return mistake(reason ? reason : reasonOf(error), offsetOf(at));
    }

    // Where the parser stands; the end when it has gone past the last token.
    qsizetype here()
    {
        const char *at = nullptr;
        return m_document.current_location().get(at) ? m_text.size() : offsetOf(at);
    }
    qsizetype offsetOf(const char *at) const { return at ? at - m_padded.data() : m_text.size(); }

    QString problem() const
    {
        const QString path = this->path();
        if (path.isEmpty())
            return m_place.isEmpty() ? m_what : m_place + QStringLiteral(": ") + m_what;
        return m_place.isEmpty() ? path + QStringLiteral(": ") + m_what
                                 : path + QStringLiteral(" (") + m_place + QStringLiteral("): ") + m_what;
    }

private:
    // The steps were named from the inside out.
    QString path() const
    {
        QString text;
        for (auto step = m_path.rbegin(); step != m_path.rend(); ++step) {
            if (step->key)
                text += (text.isEmpty() ? QString() : QStringLiteral(".")) + QLatin1StringView(step->key);
            else
                text += QStringLiteral("[%1]").arg(step->index);
        }
        return text;
    }

    struct Step {
        const char *key;
        qsizetype index;
    };
    QByteArrayView m_text;
    simdjson::padded_string m_padded;
    sj::parser m_parser;
    sj::document m_document;
    std::vector<Step> m_path;
    QString m_what;
    // "line 3, column 12" for a mistake in the JSON itself.
    QString m_place;
};

// What a value of each type must look like, for refusals.
constexpr const char *notText = "not a string";
constexpr const char *notNumber = "not a number";
constexpr const char *notInteger = "not a whole number";
constexpr const char *notBoolean = "not true or false";
constexpr const char *notDate = "not a date in the form 2026-11-15T19:24:05Z";
constexpr const char *notID = "not an id in the form 0A1B2C3D-0000-4000-8000-00000000000F";
constexpr const char *notBase64 = "not base64";

// Where a value begins, for a mistake found while reading it.
const char *startOf(sj::value &value)
{
    const char *at = nullptr;
    return value.current_location().get(at) ? nullptr : at;
}

// The kind of a value, or a mistake when it is none.
std::optional<sj::json_type> kindOf(Decoder &decoder, sj::value &value)
{
    sj::json_type kind;
    if (const simdjson::error_code error = value.type().get(kind)) {
        decoder.mistake(error);
        return std::nullopt;
    }
    return kind;
}

// A getter's failure: a value of another kind is refused as not being
// `what` (the getter reads nothing then), anything else is a mistake in
// the JSON. Always false.
bool failed(Decoder &decoder, sj::value &value, simdjson::error_code error, const char *what)
{
    if (error == simdjson::INCORRECT_TYPE)
        return decoder.refuse(what);
    return decoder.mistake(error, startOf(value), nullptr);
}

std::optional<std::string_view> stringOf(Decoder &decoder, sj::value &value, const char *what)
{
    std::string_view text;
    if (const simdjson::error_code error = value.get_string().get(text)) {
        failed(decoder, value, error, what);
        return std::nullopt;
    }
    return text;
}

std::optional<QString> readText(Decoder &decoder, sj::value &value)
{
    const std::optional<std::string_view> text = stringOf(decoder, value, notText);
    if (!text)
        return std::nullopt;
    return QString::fromUtf8(text->data(), qsizetype(text->size()));
}

std::optional<double> readNumber(Decoder &decoder, sj::value &value)
{
    double number = 0;
    if (const simdjson::error_code error = value.get_double().get(number)) {
        failed(decoder, value, error, notNumber);
        return std::nullopt;
    }
    return number;
}

// A number with no fraction that fits in 64 bits ("3", "3.0", "3e0").
std::optional<qint64> readInteger(Decoder &decoder, sj::value &value)
{
    int64_t whole = 0;
    if (!value.get_int64().get(whole))
        return whole;
    // Not a plain integer: a fraction, an exponent, or more than 64 bits.
    const char *at = startOf(value);
    double number = 0;
    if (const simdjson::error_code error = value.get_double().get(number)) {
        failed(decoder, value, error, notInteger);
        return std::nullopt;
    }
    if (number != std::trunc(number)) {
        decoder.refuse(notInteger);
        return std::nullopt;
    }
    // 2^63 itself is one past the largest.
    if (number < -9223372036854775808.0 || number >= 9223372036854775808.0) {
        decoder.mistake(simdjson::NUMBER_OUT_OF_RANGE, at, "a whole number beyond 64 bits");
        return std::nullopt;
    }
    return qint64(number);
}

std::optional<bool> readBoolean(Decoder &decoder, sj::value &value)
{
    bool truth = false;
    if (const simdjson::error_code error = value.get_bool().get(truth)) {
        failed(decoder, value, error, notBoolean);
        return std::nullopt;
    }
    return truth;
}

// A string, parsed; refused as `what` when it is no string or does not
// parse.
template <typename Value, typename Parse>
std::optional<Value> parsedText(Decoder &decoder, sj::value &value, const char *what, Parse parse)
{
    const std::optional<std::string_view> text = stringOf(decoder, value, what);
    if (!text)
        return std::nullopt;
    std::optional<Value> parsed = parse(*text);
    if (!parsed)
        decoder.refuse(what);
    return parsed;
}

std::optional<QDateTime> readDate(Decoder &decoder, sj::value &value)
{
    return parsedText<QDateTime>(decoder, value, notDate, parseDate);
}

std::optional<QUuid> readID(Decoder &decoder, sj::value &value)
{
    return parsedText<QUuid>(decoder, value, notID, parseID);
}

std::optional<QByteArray> readBytes(Decoder &decoder, sj::value &value)
{
    return parsedText<QByteArray>(decoder, value, notBase64, [](std::string_view text) -> std::optional<QByteArray> {
        QByteArray::FromBase64Result decoded = QByteArray::fromBase64Encoding(
            QByteArray(text.data(), qsizetype(text.size())), QByteArray::AbortOnBase64DecodingErrors);
        if (!decoded)
            return std::nullopt;
        return std::move(decoded.decoded);
    });
}


// A value no field takes, read through all the same: the parser only
// checks a value it is asked for, and a document with a broken number
// under a key of a later version is still broken.
bool readAny(Decoder &decoder, sj::value &value, int depth = 1)
{
    const std::optional<sj::json_type> kind = kindOf(decoder, value);
    if (!kind)
        return false;
    const char *at = startOf(value);
    if ((*kind == sj::json_type::object || *kind == sj::json_type::array) && depth >= JsonNesting::limit)
        return decoder.mistake("nested deeper than 1024 levels", decoder.offsetOf(at));
    simdjson::error_code error = simdjson::SUCCESS;
    switch (*kind) {
    case sj::json_type::object: {
        sj::object object;
        if ((error = value.get_object().get(object)))
            break;
        for (auto field : object) {
            sj::value member;
            std::string_view key;
            if ((error = field.unescaped_key().get(key)) || (error = field.value().get(member)))
                return decoder.mistake(error, "expected a key and its value");
            if (!readAny(decoder, member, depth + 1))
                return false;
        }
        break;
    }
    case sj::json_type::array: {
        sj::array array;
        if ((error = value.get_array().get(array)))
            break;
        for (auto element : array) {
            sj::value member;
            if ((error = element.get(member)))
                return decoder.mistake(error, "expected \",\" or \"]\"");
            if (!readAny(decoder, member, depth + 1))
                return false;
        }
        break;
    }
    case sj::json_type::number: {
        double number = 0;
        error = value.get_double().get(number);
        break;
    }
    case sj::json_type::string: {
        std::string_view text;
        error = value.get_string().get(text);
        break;
    }
    case sj::json_type::boolean: {
        bool truth = false;
        error = value.get_bool().get(truth);
        break;
    }
    case sj::json_type::null: {
        bool null = false;
        error = value.is_null().get(null);
        if (!error && !null)
            error = simdjson::N_ATOM_ERROR;
        break;
    }
    }
    return !error || decoder.mistake(error, at, nullptr);
}

// Reads one value of a field into a record; false when it is not of the
// field's type. Optional fields take null as absent.
template <typename Record>
struct Field {
    // A view of a literal, so also a C string.
    std::string_view name;
    bool required;
    bool (*read)(Decoder &decoder, sj::value &value, Record &record);
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
bool assignOptional(Decoder &decoder, sj::value &value, std::optional<Value> &into, Read read)
{
    bool null = false;
    if (const simdjson::error_code error = value.is_null().get(null))
        return decoder.mistake(error, startOf(value), nullptr);
    if (null) {
        into.reset();
        return true;
    }
    std::optional<Value> read_ = read(decoder, value);
    into = read_;
    return read_.has_value();
}

// One object into `record`: every required field present and of its type,
// unknown keys read and set aside.
template <typename Record, std::size_t count>
bool readObject(Decoder &decoder, sj::value &value, Record &record, const std::array<Field<Record>, count> &fields)
{
    static_assert(count <= 32);
    std::uint32_t seen = 0;
    sj::object object;
    if (const simdjson::error_code error = value.get_object().get(object))
        return failed(decoder, value, error, "not a JSON object");
    for (auto field : object) {
        std::string_view name;
        sj::value member;
        if (simdjson::error_code error = field.unescaped_key().get(name)) {
            return decoder.mistake(error, error == simdjson::TAPE_ERROR ? "expected \",\" or \"}\"" : nullptr);
        }
        if (const simdjson::error_code error = field.value().get(member))
            return decoder.mistake(error, "expected \":\" and a value");
        std::size_t index = 0;
        while (index < count && name != fields[index].name)
            ++index;
        if (index == count) {
            if (!readAny(decoder, member))
                return false;
            continue;
        }
        if (!fields[index].read(decoder, member, record)) {
            decoder.unwind(fields[index].name.data());
            return false;
        }
        seen |= std::uint32_t(1) << index;
    }
    for (std::size_t index = 0; index < count; ++index) {
        if (fields[index].required && !(seen & (std::uint32_t(1) << index)))
            return decoder.refuse(
                QStringLiteral("\"%1\" is missing").arg(QLatin1StringView(fields[index].name.data())));
    }
    return true;
}

template <typename Value>
bool readArray(Decoder &decoder, sj::value &value, QList<Value> &values, bool (*read)(Decoder &, sj::value &, Value &))
{
    sj::array array;
    if (const simdjson::error_code error = value.get_array().get(array))
        return failed(decoder, value, error, "not a list");
    values.clear();
    for (auto element : array) {
        sj::value member;
        if (const simdjson::error_code error = element.get(member))
            return decoder.mistake(error, error == simdjson::TAPE_ERROR ? "expected \",\" or \"]\"" : nullptr);
        Value read_;
        if (!read(decoder, member, read_)) {
            decoder.unwind(values.size());
            return false;
        }
        values.append(std::move(read_));
    }
    return true;
}

// The field lists below name each key once, with how to read it; the
// captureless lambdas become the plain functions the tables hold.
#define FENROW_REQUIRED(Record, key, member, reader)                                                                   \
    Field<Record>                                                                                                      \
    {                                                                                                                  \
        #key, true, [](Decoder &decoder, sj::value &value, Record &record) {                                          \
            return assign(record.member, reader(decoder, value));                                                      \
        }                                                                                                              \
    }
#define FENROW_OPTIONAL(Record, key, member, reader)                                                                   \
    Field<Record>                                                                                                      \
    {                                                                                                                  \
        #key, false, [](Decoder &decoder, sj::value &value, Record &record) {                                         \
            return assignOptional(decoder, value, record.member, reader);                                              \
        }                                                                                                              \
    }
#define FENROW_LIST(Record, key, member, reader)                                                                       \
    Field<Record>                                                                                                      \
    {                                                                                                                  \
        #key, true, [](Decoder &decoder, sj::value &value, Record &record) {                                          \
            return readArray(decoder, value, record.member, reader);                                                   \
        }                                                                                                              \
    }

bool readItem(Decoder &decoder, sj::value &value, FenrowBackup::Item &item)
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
    return readObject(decoder, value, item, fields);
}

bool readEdge(Decoder &decoder, sj::value &value, FenrowBackup::Edge &edge)
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
    return readObject(decoder, value, edge, fields);
}

bool readFile(Decoder &decoder, sj::value &value, FenrowBackup::File &file)
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
    return readObject(decoder, value, file, fields);
}

bool readLink(Decoder &decoder, sj::value &value, FenrowBackup::Link &link)
{
    using Link = FenrowBackup::Link;
    static const std::array fields{
        FENROW_REQUIRED(Link, id, id, readID),
        FENROW_REQUIRED(Link, fileID, fileID, readID),
        FENROW_REQUIRED(Link, nodeID, nodeID, readID),
        FENROW_REQUIRED(Link, createdAt, createdAt, readDate),
    };
    return readObject(decoder, value, link, fields);
}

bool readFlow(Decoder &decoder, sj::value &value, FenrowBackup::Flow &flow)
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
    return readObject(decoder, value, flow, fields);
}

bool readTemplate(Decoder &decoder, sj::value &value, FenrowBackup::Template &flowTemplate)
{
    using Template = FenrowBackup::Template;
    static const std::array fields{
        FENROW_REQUIRED(Template, id, id, readID),
        FENROW_REQUIRED(Template, name, name, readText),
        FENROW_REQUIRED(Template, createdAt, createdAt, readDate),
        FENROW_OPTIONAL(Template, payload, payload, readBytes),
    };
    return readObject(decoder, value, flowTemplate, fields);
}

bool readRecord(Decoder &decoder, sj::value &value, FenrowBackup::Record &record)
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
    return readObject(decoder, value, record, fields);
}

bool Decoder::read(FenrowBackup &backup)
{
    static const std::array fields{
        FENROW_REQUIRED(FenrowBackup, format, format, readText),
        FENROW_REQUIRED(FenrowBackup, version, version, readInteger),
        FENROW_REQUIRED(FenrowBackup, createdAt, createdAt, readDate),
        FENROW_LIST(FenrowBackup, flows, flows, readFlow),
        FENROW_LIST(FenrowBackup, templates, templates, readTemplate),
        FENROW_LIST(FenrowBackup, records, records, readRecord),
    };
    m_padded = simdjson::padded_string(m_text.data(), std::size_t(m_text.size()));
    if (m_parser.max_depth() < JsonNesting::parserDepth) {
        if (const simdjson::error_code error = m_parser.allocate(m_padded.size(), JsonNesting::parserDepth))
            return mistake(reasonOf(error), 0);
    }
    if (const simdjson::error_code error = m_parser.iterate(m_padded).get(m_document))
        return mistake(reasonOf(error), placeOf(m_text, error));
    sj::json_type kind;
    if (m_document.type().get(kind) || kind != sj::json_type::object)
        return refuse("not a JSON object");
    sj::value root;
    if (const simdjson::error_code error = m_document.get_value().get(root))
        return mistake(error);
    if (!readObject(*this, root, backup, fields))
        return false;
    // Past the last token the parser has nowhere left to stand.
    const char *after = nullptr;
    if (!m_document.current_location().get(after))
        return mistake("something follows the document", offsetOf(after));
    return true;
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
    if (!decoder.read(backup))
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
