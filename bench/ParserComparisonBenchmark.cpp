// The backup and outline readers beside general parsers from the system's
// libraries, on the same documents the exchange benchmark reads: each
// variant builds the result the program uses (a FenrowBackup, an OPML
// Document through the outline builder), so what is compared is the whole
// decode, not the tokenising alone. Every variant must give the same result
// as the program's reader; the run fails otherwise.
#include "BenchmarkMain.h"
#include "GeneratedStores.h"
#include "LargeStoreGenerator.h"
#include "LiveStore.h"

#include "TaskFlow.h"
#include "formats/FenrowBackup.h"
#include "formats/OPMLCodec.h"
#include "formats/OPMLOutlineBuilder.h"
#include "shell/InterfaceLanguage.h"

#include <benchmark/benchmark.h>
#include <expat.h>
#include <pugixml.hpp>
#include <simdjson.h>

#include <cmath>
#include <string>
#include <string_view>
#include <type_traits>

using namespace fenrow;
using namespace fenrow::bench;

#define FENROW_STRING(x) #x
#define FENROW_NAME_OF(x) FENROW_STRING(x)
#define FENROW_SIMDJSON_NAME FENROW_NAME_OF(SIMDJSON_BUILTIN_IMPLEMENTATION)

namespace {

// ---------------------------------------------------------------- backup

namespace sj = simdjson::ondemand;
namespace dom = simdjson::dom;

// What differs between simdjson's two interfaces.
struct OnDemand {
    using Value = sj::value;
    using Object = sj::object;
    using Array = sj::array;
    template <typename Field>
    static bool key(Field &field, std::string_view &key)
    {
        return !field.unescaped_key().get(key);
    }
    template <typename Field>
    static sj::value value(Field &field)
    {
        return field.value();
    }
};
struct Dom {
    using Value = dom::element;
    using Object = dom::object;
    using Array = dom::array;
    static bool key(dom::key_value_pair &field, std::string_view &key)
    {
        key = field.key;
        return true;
    }
    static dom::element value(dom::key_value_pair &field) { return field.value; }
};

// The backup read with simdjson's on-demand parser into the same records,
// every field parsed as the program's reader parses it. Errors only stop
// the reading: the comparison is of documents that read.
template <typename Api>
class SimdBackupReader {
    using Value = typename Api::Value;
    using Object = typename Api::Object;

public:
    std::optional<FenrowBackup> read(const QByteArray &bytes)
    {
        const simdjson::padded_string padded(bytes.constData(), std::size_t(bytes.size()));
        Object root;
        if constexpr (std::is_same_v<Api, OnDemand>) {
            if (m_parser.iterate(padded).get(m_document) || m_document.get_object().get(root))
                return std::nullopt;
        } else {
            if (m_parser.parse(padded).get_object().get(root))
                return std::nullopt;
        }
        FenrowBackup backup;
        const bool read = fields(root, [&](std::string_view key, Value value) {
            if (key == "format")
                return text(value, backup.format);
            if (key == "version")
                return integer(value, backup.version);
            if (key == "createdAt")
                return date(value, backup.createdAt);
            if (key == "flows")
                return list(value, backup.flows, &SimdBackupReader::flow);
            if (key == "templates")
                return list(value, backup.templates, &SimdBackupReader::flowTemplate);
            if (key == "records")
                return list(value, backup.records, &SimdBackupReader::record);
            return true;
        });
        if (!read)
            return std::nullopt;
        return backup;
    }

private:
    static std::optional<QDateTime> parseDate(std::string_view text)
    {
        if (text.size() != 20 || text[4] != '-' || text[7] != '-' || text[10] != 'T' || text[13] != ':'
            || text[16] != ':' || text[19] != 'Z')
            return std::nullopt;
        const auto number = [&](std::size_t from, std::size_t length) {
            int value = 0;
            for (std::size_t i = from; i < from + length; ++i) {
                if (text[i] < '0' || text[i] > '9')
                    return -1;
                value = value * 10 + (text[i] - '0');
            }
            return value;
        };
        const QDate day(number(0, 4), number(5, 2), number(8, 2));
        if (!day.isValid() || !QTime::isValid(number(11, 2), number(14, 2), number(17, 2)))
            return std::nullopt;
        return QDateTime(day, QTime(number(11, 2), number(14, 2), number(17, 2)), Qt::UTC);
    }

    bool text(Value value, QString &into)
    {
        std::string_view text;
        if (value.get_string().get(text))
            return false;
        into = QString::fromUtf8(text.data(), qsizetype(text.size()));
        return true;
    }
    bool integer(Value value, qint64 &into)
    {
        int64_t number = 0;
        if (value.get_int64().get(number))
            return false;
        into = number;
        return true;
    }
    bool number(Value value, double &into) { return !value.get_double().get(into); }
    bool boolean(Value value, bool &into) { return !value.get_bool().get(into); }
    bool date(Value value, QDateTime &into)
    {
        std::string_view text;
        if (value.get_string().get(text))
            return false;
        const std::optional<QDateTime> parsed = parseDate(text);
        if (parsed)
            into = *parsed;
        return parsed.has_value();
    }
    bool id(Value value, QUuid &into)
    {
        std::string_view text;
        if (value.get_string().get(text) || text.size() != 36)
            return false;
        into = QUuid::fromString(QLatin1StringView(text.data(), qsizetype(text.size())));
        return true;
    }
    bool bytes(Value value, QByteArray &into)
    {
        std::string_view text;
        if (value.get_string().get(text))
            return false;
        QByteArray::FromBase64Result decoded = QByteArray::fromBase64Encoding(
            QByteArray(text.data(), qsizetype(text.size())), QByteArray::AbortOnBase64DecodingErrors);
        into = std::move(decoded.decoded);
        return bool(decoded);
    }
    template <typename T, typename Read>
    bool optional(Value value, std::optional<T> &into, Read read)
    {
        if (value.is_null()) {
            into.reset();
            return true;
        }
        T read_{};
        if (!(this->*read)(value, read_))
            return false;
        into = std::move(read_);
        return true;
    }
    template <typename T>
    bool list(Value value, QList<T> &into, bool (SimdBackupReader::*read)(Object, T &))
    {
        typename Api::Array array;
        if (value.get_array().get(array))
            return false;
        for (auto element : array) {
            Object object;
            if (element.get_object().get(object))
                return false;
            T read_;
            if (!(this->*read)(object, read_))
                return false;
            into.append(std::move(read_));
        }
        return true;
    }

    // Each record's keys, with what to do for each; unknown keys skipped.
    template <typename Each>
    static bool fields(Object object, Each each)
    {
        for (auto field : object) {
            std::string_view key;
            if (!Api::key(field, key) || !each(key, Api::value(field)))
                return false;
        }
        return true;
    }

    bool item(Object object, FenrowBackup::Item &item)
    {
        return fields(object, [&](std::string_view key, Value value) {
            if (key == "id")
                return id(value, item.id);
            if (key == "title")
                return text(value, item.title);
            if (key == "isDone")
                return boolean(value, item.isDone);
            if (key == "statusRaw")
                return text(value, item.statusRaw);
            if (key == "notes")
                return text(value, item.notes);
            if (key == "priorityRaw")
                return text(value, item.priorityRaw);
            if (key == "colorRaw")
                return text(value, item.colorRaw);
            if (key == "startDate")
                return optional(value, item.startDate, &SimdBackupReader::date);
            if (key == "dueDate")
                return optional(value, item.dueDate, &SimdBackupReader::date);
            if (key == "estimateMinutes")
                return optional(value, item.estimateMinutes, &SimdBackupReader::integer);
            if (key == "dayPlanRank")
                return optional(value, item.dayPlanRank, &SimdBackupReader::integer);
            if (key == "manualWidth")
                return optional(value, item.manualWidth, &SimdBackupReader::number);
            if (key == "manualHeight")
                return optional(value, item.manualHeight, &SimdBackupReader::number);
            if (key == "isCollapsed")
                return boolean(value, item.isCollapsed);
            if (key == "checklistData")
                return text(value, item.checklistData);
            if (key == "recurrenceRaw")
                return optional(value, item.recurrenceRaw, &SimdBackupReader::text);
            if (key == "repeatCount")
                return integer(value, item.repeatCount);
            if (key == "completedAt")
                return optional(value, item.completedAt, &SimdBackupReader::date);
            if (key == "posX")
                return number(value, item.posX);
            if (key == "posY")
                return number(value, item.posY);
            if (key == "order")
                return integer(value, item.order);
            if (key == "createdAt")
                return date(value, item.createdAt);
            return true;
        });
    }
    bool edge(Object object, FenrowBackup::Edge &edge)
    {
        return fields(object, [&](std::string_view key, Value value) {
            if (key == "id")
                return id(value, edge.id);
            if (key == "fromID")
                return id(value, edge.fromID);
            if (key == "toID")
                return id(value, edge.toID);
            if (key == "sourceRaw")
                return text(value, edge.sourceRaw);
            if (key == "kindRaw")
                return optional(value, edge.kindRaw, &SimdBackupReader::text);
            if (key == "createdAt")
                return date(value, edge.createdAt);
            return true;
        });
    }
    bool file(Object object, FenrowBackup::File &file)
    {
        return fields(object, [&](std::string_view key, Value value) {
            if (key == "id")
                return id(value, file.id);
            if (key == "filename")
                return text(value, file.filename);
            if (key == "contentTypeRaw")
                return text(value, file.contentTypeRaw);
            if (key == "byteCount")
                return integer(value, file.byteCount);
            if (key == "data")
                return optional(value, file.data, &SimdBackupReader::bytes);
            if (key == "thumbnail")
                return optional(value, file.thumbnail, &SimdBackupReader::bytes);
            if (key == "posX")
                return number(value, file.posX);
            if (key == "posY")
                return number(value, file.posY);
            if (key == "manualWidth")
                return optional(value, file.manualWidth, &SimdBackupReader::number);
            if (key == "manualHeight")
                return optional(value, file.manualHeight, &SimdBackupReader::number);
            if (key == "order")
                return integer(value, file.order);
            if (key == "createdAt")
                return date(value, file.createdAt);
            return true;
        });
    }
    bool link(Object object, FenrowBackup::Link &link)
    {
        return fields(object, [&](std::string_view key, Value value) {
            if (key == "id")
                return id(value, link.id);
            if (key == "fileID")
                return id(value, link.fileID);
            if (key == "nodeID")
                return id(value, link.nodeID);
            if (key == "createdAt")
                return date(value, link.createdAt);
            return true;
        });
    }
    bool flow(Object object, FenrowBackup::Flow &flow)
    {
        return fields(object, [&](std::string_view key, Value value) {
            if (key == "id")
                return id(value, flow.id);
            if (key == "name")
                return text(value, flow.name);
            if (key == "order")
                return integer(value, flow.order);
            if (key == "createdAt")
                return date(value, flow.createdAt);
            if (key == "viewportOffsetX")
                return number(value, flow.viewportOffsetX);
            if (key == "viewportOffsetY")
                return number(value, flow.viewportOffsetY);
            if (key == "viewportScale")
                return number(value, flow.viewportScale);
            if (key == "hasBeenFramed")
                return boolean(value, flow.hasBeenFramed);
            if (key == "items")
                return list(value, flow.items, &SimdBackupReader::item);
            if (key == "edges")
                return list(value, flow.edges, &SimdBackupReader::edge);
            if (key == "files")
                return list(value, flow.files, &SimdBackupReader::file);
            if (key == "links")
                return list(value, flow.links, &SimdBackupReader::link);
            return true;
        });
    }
    bool flowTemplate(Object object, FenrowBackup::Template &flowTemplate)
    {
        return fields(object, [&](std::string_view key, Value value) {
            if (key == "id")
                return id(value, flowTemplate.id);
            if (key == "name")
                return text(value, flowTemplate.name);
            if (key == "createdAt")
                return date(value, flowTemplate.createdAt);
            if (key == "payload")
                return optional(value, flowTemplate.payload, &SimdBackupReader::bytes);
            return true;
        });
    }
    bool record(Object object, FenrowBackup::Record &record)
    {
        return fields(object, [&](std::string_view key, Value value) {
            if (key == "id")
                return id(value, record.id);
            if (key == "nodeID")
                return id(value, record.nodeID);
            if (key == "flowID")
                return id(value, record.flowID);
            if (key == "flowName")
                return text(value, record.flowName);
            if (key == "title")
                return text(value, record.title);
            if (key == "kindRaw")
                return text(value, record.kindRaw);
            if (key == "completedAt")
                return date(value, record.completedAt);
            if (key == "cycle")
                return integer(value, record.cycle);
            if (key == "payload")
                return optional(value, record.payload, &SimdBackupReader::bytes);
            return true;
        });
    }

    std::conditional_t<std::is_same_v<Api, OnDemand>, sj::parser, dom::parser> m_parser;
    sj::document m_document;
};

QByteArray backupDocument(benchmark::State &state)
{
    QString error;
    LiveStore *live = LiveStore::of(GeneratedStores::scaledShape(), &error);
    if (!live) {
        fail(state, error);
        return {};
    }
    return *live->store->makeBackup(LargeStoreGenerator::clock().now()).encoded();
}

// The program's own reader, `FenrowBackup::decoded`.
void backupDecodeProgram(benchmark::State &state)
{
    const QByteArray bytes = backupDocument(state);
    for (auto _ : state) {
        auto decoded = FenrowBackup::decoded(bytes);
        if (!std::holds_alternative<FenrowBackup>(decoded)) {
            fail(state, QStringLiteral("the document does not read"));
            return;
        }
        benchmark::DoNotOptimize(decoded);
    }
    state.counters["MiB"] = double(bytes.size()) / (1 << 20);
}

template <typename Api>
void backupDecodeSimdjson(benchmark::State &state)
{
    const QByteArray bytes = backupDocument(state);
    const FenrowBackup expected = std::get<FenrowBackup>(FenrowBackup::decoded(bytes));
    std::optional<FenrowBackup> read;
    for (auto _ : state) {
        SimdBackupReader<Api> reader;
        read = reader.read(bytes);
        benchmark::DoNotOptimize(read);
    }
    if (!read || read->flows != expected.flows || read->records != expected.records
        || read->templates != expected.templates || read->createdAt != expected.createdAt)
        fail(state, QStringLiteral("simdjson read the document otherwise"));
    state.counters["MiB"] = double(bytes.size()) / (1 << 20);
}

// ---------------------------------------------------------------- OPML

QByteArray outlineDocument(benchmark::State &state, const LocalCalendar **calendar)
{
    InterfaceLanguage::apply(QStringLiteral("en"));
    const int nodes = std::max(8, int(std::lround(10000 * GeneratedStores::scale())));
    QString error;
    LiveStore *live = LiveStore::of(LargeStoreShape::oneFlow(nodes, int(std::lround(nodes * 1.5))), &error);
    if (!live || live->store->flows().isEmpty()) {
        fail(state, error);
        return {};
    }
    *calendar = &live->store->calendar();
    return live->store->exportOPML(*live->store->flows().first()).toUtf8();
}

// Expat: no external entities (no handler for them, parameter entities
// never parsed), and its own limit on how far internal entities may
// amplify the text.
std::optional<OPMLCodec::Document> readWithExpat(const QByteArray &bytes, const LocalCalendar &calendar)
{
    struct Context {
        OPMLCodec::OutlineBuilder builder;
        OPMLCodec::ElementAttributes attributes;
        std::vector<QString> texts;
        bool ok = true;
    } context{OPMLCodec::OutlineBuilder(calendar), {}, {}, true};
    XML_Parser parser = XML_ParserCreate("UTF-8");
    XML_SetParamEntityParsing(parser, XML_PARAM_ENTITY_PARSING_NEVER);
    XML_SetUserData(parser, &context);
    XML_SetElementHandler(
        parser,
        [](void *data, const XML_Char *name, const XML_Char **attributes) {
            auto &c = *static_cast<Context *>(data);
            c.texts.clear();
            c.attributes.clear();
            for (const XML_Char **a = attributes; *a; a += 2) {
                c.texts.push_back(QString::fromUtf8(a[0]));
                c.texts.push_back(QString::fromUtf8(a[1]));
            }
            for (std::size_t i = 0; i < c.texts.size(); i += 2)
                c.attributes.emplace_back(c.texts[i], c.texts[i + 1]);
            if (!c.builder.startElement(QString::fromUtf8(name), c.attributes))
                c.ok = false;
        },
        [](void *data, const XML_Char *name) {
            auto &c = *static_cast<Context *>(data);
            if (!c.builder.endElement(QString::fromUtf8(name)))
                c.ok = false;
        });
    XML_SetCharacterDataHandler(parser, [](void *data, const XML_Char *text, int length) {
        auto &c = *static_cast<Context *>(data);
        if (c.builder.wantsCharacters())
            c.builder.characters(QString::fromUtf8(text, length));
    });
    const bool parsed = XML_Parse(parser, bytes.constData(), int(bytes.size()), 1) == XML_STATUS_OK;
    XML_ParserFree(parser);
    if (!parsed || !context.ok)
        return std::nullopt;
    return context.builder.finish();
}

// pugixml reads the whole document into a tree in place; the tree is then
// walked into the builder. It expands only the five predefined entities.
std::optional<OPMLCodec::Document> readWithPugixml(const QByteArray &bytes, const LocalCalendar &calendar)
{
    pugi::xml_document document;
    const pugi::xml_parse_result parsed =
        document.load_buffer(bytes.constData(), std::size_t(bytes.size()), pugi::parse_default, pugi::encoding_utf8);
    if (!parsed)
        return std::nullopt;
    OPMLCodec::OutlineBuilder builder(calendar);
    OPMLCodec::ElementAttributes attributes;
    std::vector<QString> texts;
    std::vector<std::pair<pugi::xml_node, bool>> pending{{document.document_element(), false}};
    while (!pending.empty()) {
        auto [node, leaving] = pending.back();
        pending.pop_back();
        const QString name = QString::fromUtf8(node.name());
        if (leaving) {
            if (!builder.endElement(name))
                return std::nullopt;
            continue;
        }
        if (node.type() == pugi::node_pcdata) {
            if (builder.wantsCharacters())
                builder.characters(QString::fromUtf8(node.value()));
            continue;
        }
        if (node.type() != pugi::node_element)
            continue;
        texts.clear();
        attributes.clear();
        for (const pugi::xml_attribute attribute : node.attributes()) {
            texts.push_back(QString::fromUtf8(attribute.name()));
            texts.push_back(QString::fromUtf8(attribute.value()));
        }
        for (std::size_t i = 0; i < texts.size(); i += 2)
            attributes.emplace_back(texts[i], texts[i + 1]);
        if (!builder.startElement(name, attributes))
            return std::nullopt;
        pending.push_back({node, true});
        std::vector<pugi::xml_node> children(node.begin(), node.end());
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            pending.push_back({*child, false});
    }
    return builder.finish();
}

enum class OutlineReader { handWritten, qtXmlReader, expat, pugixml };

void outlineDecode(benchmark::State &state, OutlineReader which)
{
    const LocalCalendar *calendar = nullptr;
    const QByteArray bytes = outlineDocument(state, &calendar);
    if (!calendar)
        return;
    const std::optional<OPMLCodec::Document> expected = OPMLCodec::decode(bytes, *calendar);
    std::optional<OPMLCodec::Document> read;
    for (auto _ : state) {
        switch (which) {
        case OutlineReader::handWritten:
            read = OPMLCodec::decode(bytes, *calendar);
            break;
        case OutlineReader::qtXmlReader:
            read = OPMLCodec::decodeWithXmlReader(bytes, *calendar);
            break;
        case OutlineReader::expat:
            read = readWithExpat(bytes, *calendar);
            break;
        case OutlineReader::pugixml:
            read = readWithPugixml(bytes, *calendar);
            break;
        }
        benchmark::DoNotOptimize(read);
    }
    if (!expected || read != expected)
        fail(state, QStringLiteral("the outline read otherwise"));
    state.counters["KiB"] = double(bytes.size()) / 1024;
}

} // namespace

int main(int argc, char **argv)
{
    benchmark::RegisterBenchmark("BackupDecode/decoded", backupDecodeProgram)->Unit(benchmark::kMillisecond);
    // The on-demand parser is the one chosen when compiling: the portable
    // one unless the build targets a newer processor (FENROW_SIMDJSON_NAME).
    benchmark::RegisterBenchmark((std::string("BackupDecode/simdjson-") + FENROW_SIMDJSON_NAME).c_str(),
                                 backupDecodeSimdjson<OnDemand>)
        ->Unit(benchmark::kMillisecond);
    // The tree interface picks the best parser for the processor at run time.
    benchmark::RegisterBenchmark("BackupDecode/simdjsonDom", backupDecodeSimdjson<Dom>)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("OPMLDecode/handWritten", outlineDecode, OutlineReader::handWritten)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("OPMLDecode/qtXmlReader", outlineDecode, OutlineReader::qtXmlReader)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("OPMLDecode/expat", outlineDecode, OutlineReader::expat)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("OPMLDecode/pugixml", outlineDecode, OutlineReader::pugixml)
        ->Unit(benchmark::kMillisecond);
    return runBenchmarks(argc, argv);
}
