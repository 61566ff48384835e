#include "FlowBlueprint.h"

#include "ChecklistEntry.h"
#include "RecordID.h"
#include "TaskFlow.h"
#include "formats/JsonFields.h"
#include "formats/JsonStream.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <simdjson.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string_view>

namespace fenrow {

namespace {

// Reading is all or nothing: one field of the wrong type fails the whole
// payload, so a damaged template makes no flow rather than half of one.
using Reader = JsonFields;

QLatin1StringView key(const char *name)
{
    return QLatin1StringView(name);
}

namespace sj = simdjson::ondemand;

// simdjson over the bytes, without a QJsonObject in between; it reads a
// large template several times faster. It answers only where it is
// certain to agree with the reading through QJsonDocument: on anything
// else (a key twice over, text QJsonDocument reads more leniently, a
// mistake) it gives nothing and that reading decides.
class StrictReader {
public:
    std::optional<FlowBlueprint> blueprint(const QByteArray &json)
    {
        const simdjson::padded_string padded(json.constData(), std::size_t(json.size()));
        if (m_parser.max_depth() < JsonNesting::parserDepth
            && m_parser.allocate(padded.size(), JsonNesting::parserDepth))
            return std::nullopt;
        sj::document document;
        sj::value root;
        if (m_parser.iterate(padded).get(document) || document.get_value().get(root))
            return std::nullopt;
        FlowBlueprint read;
        static constexpr std::array<std::string_view, 4> names{"edges", "items", "name", "version"};
        const bool whole = object(root, names, 0, [&](std::size_t field, sj::value &value) {
            switch (field) {
            case 0:
                return list(value, read.edges, &StrictReader::edge);
            case 1:
                return list(value, read.items, &StrictReader::item);
            case 2:
                return text(value, read.name);
            default: {
                qint64 version = 0;
                if (!integer(value, version) || version < std::numeric_limits<int>::min()
                    || version > std::numeric_limits<int>::max())
                    return false;
                read.version = int(version);
                return true;
            }
            }
        });
        // Past the last token the parser has nowhere left to stand.
        const char *after = nullptr;
        if (!whole || !document.current_location().get(after))
            return std::nullopt;
        return read;
    }

private:
    // Every field of `names` once, those outside `optional` (a mask of
    // their indexes) all there; other keys read through all the same, as
    // the parser checks only what it is asked for. Null is an absent
    // optional. The writer puts the keys in this order, so the next name
    // is tried first.
    template <std::size_t count, typename Read>
    static bool object(sj::value &value, const std::array<std::string_view, count> &names, quint32 optional,
                       Read read)
    {
        sj::object fields;
        if (value.get_object().get(fields))
            return false;
        quint32 seen = 0;
        std::size_t expected = 0;
        for (auto member : fields) {
            std::string_view name;
            sj::value content;
            if (member.unescaped_key().get(name) || member.value().get(content))
                return false;
            std::size_t field = count;
            for (std::size_t tried = 0; tried < count; ++tried) {
                const std::size_t candidate = (expected + tried) % count;
                if (name == names[candidate]) {
                    field = candidate;
                    break;
                }
            }
            if (field == count) {
                // No field lies deeper than in an item or an edge; counting
                // every one as deep as those errs towards leaving it to
                // QJsonDocument.
                if (!any(content, 4))
                    return false;
                continue;
            }
            const quint32 bit = quint32(1) << field;
            if (seen & bit)
                return false;
            seen |= bit;
            expected = field + 1;
            if (optional & bit) {
                bool null = false;
                if (content.is_null().get(null))
                    return false;
                if (null)
                    continue;
            }
            if (!read(field, content))
                return false;
        }
        const quint32 required = ((quint32(1) << count) - 1) & ~optional;
        return (seen & required) == required;
    }

    // Counted first: a list of a large template grown step by step spent
    // more on moving its elements than the count costs.
    template <typename Element>
    static bool list(sj::value &value, QList<Element> &into, bool (*read)(sj::value &, Element &))
    {
        sj::array elements;
        std::size_t count = 0;
        if (value.get_array().get(elements) || elements.count_elements().get(count))
            return false;
        into.reserve(qsizetype(count));
        for (auto each : elements) {
            sj::value content;
            if (each.get(content) || !read(content, into.emplace_back()))
                return false;
        }
        return true;
    }

    // A value no field takes, checked through and through. `level` is how
    // deep it would be as a list or object; the parser does not watch
    // that here, and QJsonDocument refuses more than 1024 levels.
    static bool any(sj::value &value, int level)
    {
        sj::json_type kind;
        if (value.type().get(kind))
            return false;
        if (level > JsonNesting::limit && (kind == sj::json_type::object || kind == sj::json_type::array))
            return false;
        switch (kind) {
        case sj::json_type::object: {
            sj::object fields;
            if (value.get_object().get(fields))
                return false;
            for (auto member : fields) {
                std::string_view name;
                sj::value content;
                if (member.unescaped_key().get(name) || member.value().get(content) || !any(content, level + 1))
                    return false;
            }
            return true;
        }
        case sj::json_type::array: {
            sj::array elements;
            if (value.get_array().get(elements))
                return false;
            for (auto each : elements) {
                sj::value content;
                if (each.get(content) || !any(content, level + 1))
                    return false;
            }
            return true;
        }
        case sj::json_type::number: {
            double read = 0;
            return number(value, read);
        }
        case sj::json_type::string: {
            std::string_view read;
            return !value.get_string().get(read);
        }
        case sj::json_type::boolean: {
            bool read = false;
            return !value.get_bool().get(read);
        }
        case sj::json_type::null: {
            bool null = false;
            return !value.is_null().get(null) && null;
        }
        }
        return false;
    }

    static bool text(sj::value &value, QString &out)
    {
        // Most text holds no escape: it is read where it lies, as the
        // parser's first pass has already checked its bytes (UTF-8, no
        // control characters), rather than copied out first.
        std::string_view token = value.raw_json_token();
        while (!token.empty() && (token.back() == ' ' || token.back() == '\n' || token.back() == '\r'
                                  || token.back() == '\t'))
            token.remove_suffix(1);
        if (token.size() >= 2 && token.front() == '"' && token.back() == '"'
            && token.find('\\') == std::string_view::npos) {
            out = QString::fromUtf8(token.data() + 1, qsizetype(token.size() - 2));
            return true;
        }
        std::string_view read;
        if (value.get_string().get(read))
            return false;
        out = QString::fromUtf8(read.data(), qsizetype(read.size()));
        return true;
    }
    static bool number(sj::value &value, double &out)
    {
        if (value.get_double().get(out))
            return false;
        // QJsonDocument reads "-0" as the integer 0; "-0.0" stays negative.
        if (out == 0 && std::signbit(out)) {
            const std::string_view token = value.raw_json_token();
            if (token.find_first_of(".eE") == std::string_view::npos)
                out = 0;
        }
        return true;
    }
    // A number with no fraction that fits in 64 bits ("3", "3.0", "3e0").
    static bool integer(sj::value &value, qint64 &out)
    {
        int64_t exact = 0;
        if (!value.get_int64().get(exact)) {
            out = exact;
            return true;
        }
        // A fraction, an exponent, or more than 64 bits.
        double read = 0;
        if (value.get_double().get(read))
            return false;
        // 2^63 itself is out of range; every double below it converts exactly.
        if (std::trunc(read) != read || read < -9223372036854775808.0 || read >= 9223372036854775808.0)
            return false;
        out = qint64(read);
        return true;
    }
    template <typename Value>
    static bool present(sj::value &value, std::optional<Value> &out, bool (*read)(sj::value &, Value &))
    {
        return read(value, out.emplace());
    }

    static bool item(sj::value &value, FlowBlueprint::Item &item)
    {
        static constexpr std::array<std::string_view, 13> names{
            "checklistData", "colorRaw", "estimateMinutes", "key", "manualHeight", "manualWidth", "notes",
            "order",         "posX",     "posY",            "priorityRaw", "recurrenceRaw", "title"};
        constexpr quint32 optional = 1 << 2 | 1 << 4 | 1 << 5 | 1 << 11;
        return object(value, names, optional, [&](std::size_t field, sj::value &member) {
            switch (field) {
            case 0:
                return text(member, item.checklistData);
            case 1:
                return text(member, item.colorRaw);
            case 2:
                return present(member, item.estimateMinutes, &StrictReader::integer);
            case 3:
                return integer(member, item.key);
            case 4:
                return present(member, item.manualHeight, &StrictReader::number);
            case 5:
                return present(member, item.manualWidth, &StrictReader::number);
            case 6:
                return text(member, item.notes);
            case 7:
                return integer(member, item.order);
            case 8:
                return number(member, item.posX);
            case 9:
                return number(member, item.posY);
            case 10:
                return text(member, item.priorityRaw);
            case 11:
                return present(member, item.recurrenceRaw, &StrictReader::text);
            default:
                return text(member, item.title);
            }
        });
    }

    static bool edge(sj::value &value, FlowBlueprint::Edge &edge)
    {
        static constexpr std::array<std::string_view, 4> names{"from", "kindRaw", "sourceRaw", "to"};
        return object(value, names, 0, [&](std::size_t field, sj::value &member) {
            switch (field) {
            case 0:
                return integer(member, edge.from);
            case 1:
                return text(member, edge.kindRaw);
            case 2:
                return text(member, edge.sourceRaw);
            default:
                return integer(member, edge.to);
            }
        });
    }

    sj::parser m_parser;
};

} // namespace

FlowBlueprint FlowBlueprint::make(const TaskFlow &flow, const QString &name)
{
    FlowBlueprint blueprint;
    blueprint.name = name;

    const QList<const FlowNode *> nodes = flow.orderedItems();
    QHash<const FlowNode *, qint64> keys;
    keys.reserve(nodes.size());
    blueprint.items.reserve(nodes.size());
    for (const FlowNode *node : nodes) {
        const qint64 itemKey = blueprint.items.size();
        keys.insert(node, itemKey);
        blueprint.items.append({
            .key = itemKey,
            .title = node->title,
            .notes = node->notes,
            .priorityRaw = node->priorityRaw,
            .colorRaw = node->colorRaw,
            .estimateMinutes = node->estimateMinutes,
            .checklistData = resetChecklist(node->checklistData),
            .recurrenceRaw = node->recurrenceRaw,
            .manualWidth = node->manualWidth,
            .manualHeight = node->manualHeight,
            .posX = node->posX,
            .posY = node->posY,
            .order = node->order,
        });
    }

    QList<const DependencyEdge *> edges(flow.edges().begin(), flow.edges().end());
    std::stable_sort(edges.begin(), edges.end(),
                     [](const DependencyEdge *a, const DependencyEdge *b) { return a->createdAt < b->createdAt; });
    for (const DependencyEdge *edge : std::as_const(edges)) {
        const auto from = keys.constFind(edge->fromItem());
        const auto to = keys.constFind(edge->toItem());
        // An edge that lost an end has nothing to point at.
        if (from == keys.cend() || to == keys.cend())
            continue;
        blueprint.edges.append({
            .from = *from,
            .to = *to,
            .kindRaw = rawString(edge->effectiveKind()),
            .sourceRaw = rawString(edge->source),
        });
    }
    return blueprint;
}

QString FlowBlueprint::resetChecklist(const QString &checklistData)
{
    Checklist entries = ChecklistCodec::decode(checklistData);
    if (entries.isEmpty())
        return checklistData;
    for (ChecklistEntry &entry : entries) {
        entry.id = RecordID::make();
        entry.isDone = false;
    }
    return ChecklistCodec::encode(entries);
}

QByteArray FlowBlueprint::encode() const
{
    // The bytes QJsonDocument's compact form gives (keys sorted, absent
    // optionals left out), written straight: building the objects first
    // took four fifths of saving a large template.
    qsizetype estimate = 64;
    for (const Item &item : items)
        estimate += 220 + 2 * (item.title.size() + item.notes.size() + item.checklistData.size());
    JsonWriter out(estimate + edges.size() * 64);
    out.beginObject();
    out.key(key("edges"));
    out.beginArray();
    for (const Edge &edge : edges) {
        out.beginObject();
        out.key(key("from"));
        out.integer(edge.from);
        out.key(key("kindRaw"));
        out.string(edge.kindRaw);
        out.key(key("sourceRaw"));
        out.string(edge.sourceRaw);
        out.key(key("to"));
        out.integer(edge.to);
        out.endObject();
    }
    out.endArray();
    out.key(key("items"));
    out.beginArray();
    for (const Item &item : items) {
        out.beginObject();
        out.key(key("checklistData"));
        out.string(item.checklistData);
        out.key(key("colorRaw"));
        out.string(item.colorRaw);
        if (item.estimateMinutes) {
            out.key(key("estimateMinutes"));
            out.integer(*item.estimateMinutes);
        }
        out.key(key("key"));
        out.integer(item.key);
        if (item.manualHeight) {
            out.key(key("manualHeight"));
            out.number(*item.manualHeight);
        }
        if (item.manualWidth) {
            out.key(key("manualWidth"));
            out.number(*item.manualWidth);
        }
        out.key(key("notes"));
        out.string(item.notes);
        out.key(key("order"));
        out.integer(item.order);
        out.key(key("posX"));
        out.number(item.posX);
        out.key(key("posY"));
        out.number(item.posY);
        out.key(key("priorityRaw"));
        out.string(item.priorityRaw);
        if (item.recurrenceRaw) {
            out.key(key("recurrenceRaw"));
            out.string(*item.recurrenceRaw);
        }
        out.key(key("title"));
        out.string(item.title);
        out.endObject();
    }
    out.endArray();
    out.key(key("name"));
    out.string(name);
    out.key(key("version"));
    out.integer(version);
    out.endObject();
    // JSON has no infinity or NaN: a shape holding one is not written.
    return out.ok() ? out.take() : QByteArray();
}

std::optional<FlowBlueprint> FlowBlueprint::decode(const QByteArray &json)
{
    if (std::optional<FlowBlueprint> read = StrictReader().blueprint(json))
        return read;
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return std::nullopt;
    const QJsonObject root = document.object();
    const QJsonValue itemValues = root.value(key("items"));
    const QJsonValue edgeValues = root.value(key("edges"));
    if (!itemValues.isArray() || !edgeValues.isArray())
        return std::nullopt;

    FlowBlueprint blueprint;
    Reader top(root);
    const qint64 version = top.integer(key("version"));
    blueprint.name = top.text(key("name"));
    if (!top.ok() || version < std::numeric_limits<int>::min() || version > std::numeric_limits<int>::max())
        return std::nullopt;
    blueprint.version = int(version);

    const QJsonArray itemArray = itemValues.toArray();
    blueprint.items.reserve(itemArray.size());
    for (const QJsonValue &value : itemArray) {
        if (!value.isObject())
            return std::nullopt;
        const QJsonObject object = value.toObject();
        Reader field(object);
        Item item{
            .key = field.integer(key("key")),
            .title = field.text(key("title")),
            .notes = field.text(key("notes")),
            .priorityRaw = field.text(key("priorityRaw")),
            .colorRaw = field.text(key("colorRaw")),
            .estimateMinutes = field.optionalInteger(key("estimateMinutes")),
            .checklistData = field.text(key("checklistData")),
            .recurrenceRaw = field.optionalText(key("recurrenceRaw")),
            .manualWidth = field.optionalNumber(key("manualWidth")),
            .manualHeight = field.optionalNumber(key("manualHeight")),
            .posX = field.number(key("posX")),
            .posY = field.number(key("posY")),
            .order = field.integer(key("order")),
        };
        if (!field.ok())
            return std::nullopt;
        blueprint.items.append(std::move(item));
    }

    const QJsonArray edgeArray = edgeValues.toArray();
    blueprint.edges.reserve(edgeArray.size());
    for (const QJsonValue &value : edgeArray) {
        if (!value.isObject())
            return std::nullopt;
        const QJsonObject object = value.toObject();
        Reader field(object);
        Edge edge{
            .from = field.integer(key("from")),
            .to = field.integer(key("to")),
            .kindRaw = field.text(key("kindRaw")),
            .sourceRaw = field.text(key("sourceRaw")),
        };
        if (!field.ok())
            return std::nullopt;
        blueprint.edges.append(std::move(edge));
    }
    return blueprint;
}

} // namespace fenrow
