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

// The strict reader over the bytes, without a QJsonObject in between; it
// reads a large template several times faster. It answers only where it is
// certain to agree with the reading through QJsonDocument: on anything
// else (a key twice over, text QJsonDocument reads more leniently, a
// mistake) it gives nothing and that reading decides.
class StrictReader {
public:
    explicit StrictReader(const QByteArray &json) : m_reader(json) {}

    std::optional<FlowBlueprint> blueprint()
    {
        FlowBlueprint read;
        static constexpr std::array<std::string_view, 4> names{"edges", "items", "name", "version"};
        const bool whole = object(names, 0, [&](std::size_t field) {
            switch (field) {
            case 0:
                return list([&] { return edge(read.edges.emplace_back()); });
            case 1:
                return list([&] { return item(read.items.emplace_back()); });
            case 2:
                return text(read.name);
            default: {
                qint64 version = 0;
                if (!integer(version) || version < std::numeric_limits<int>::min()
                    || version > std::numeric_limits<int>::max())
                    return false;
                read.version = int(version);
                return true;
            }
            }
        });
        if (!whole || !m_reader.atEnd())
            return std::nullopt;
        return read;
    }

private:
    // Every field of `names` once, those outside `optional` (a mask of
    // their indexes) all there; other keys skipped. Null is an absent
    // optional. The writer puts the keys in this order, so the next
    // name is tried first.
    template <std::size_t count, typename Read>
    bool object(const std::array<std::string_view, count> &names, quint32 optional, Read read)
    {
        if (!m_reader.beginObject())
            return false;
        quint32 seen = 0;
        std::size_t expected = 0;
        QByteArrayView name;
        while (m_reader.nextKey(name)) {
            std::size_t field = count;
            for (std::size_t tried = 0; tried < count; ++tried) {
                const std::size_t candidate = (expected + tried) % count;
                if (name == QByteArrayView(names[candidate].data(), qsizetype(names[candidate].size()))) {
                    field = candidate;
                    break;
                }
            }
            if (field == count) {
                if (!m_reader.skipValue())
                    return false;
                continue;
            }
            const quint32 bit = quint32(1) << field;
            if (seen & bit)
                return false;
            seen |= bit;
            expected = field + 1;
            if ((optional & bit) && m_reader.takeNull())
                continue;
            if (!read(field))
                return false;
        }
        const quint32 required = ((quint32(1) << count) - 1) & ~optional;
        return m_reader.ok() && (seen & required) == required;
    }

    template <typename Element>
    bool list(Element element)
    {
        if (!m_reader.beginArray())
            return false;
        while (m_reader.nextElement()) {
            if (!element())
                return false;
        }
        return m_reader.ok();
    }

    bool text(QString &out)
    {
        std::optional<QString> read = m_reader.string();
        if (read)
            out = std::move(*read);
        return read.has_value();
    }
    bool number(double &out)
    {
        const std::optional<double> read = m_reader.number();
        if (read)
            out = *read;
        return read.has_value();
    }
    bool integer(qint64 &out)
    {
        const std::optional<qint64> read = m_reader.integer();
        if (read)
            out = *read;
        return read.has_value();
    }
    template <typename Value>
    bool present(std::optional<Value> &out, bool (StrictReader::*read)(Value &))
    {
        return (this->*read)(out.emplace());
    }

    bool item(FlowBlueprint::Item &item)
    {
        static constexpr std::array<std::string_view, 13> names{
            "checklistData", "colorRaw", "estimateMinutes", "key", "manualHeight", "manualWidth", "notes",
            "order",         "posX",     "posY",            "priorityRaw", "recurrenceRaw", "title"};
        constexpr quint32 optional = 1 << 2 | 1 << 4 | 1 << 5 | 1 << 11;
        return object(names, optional, [&](std::size_t field) {
            switch (field) {
            case 0:
                return text(item.checklistData);
            case 1:
                return text(item.colorRaw);
            case 2:
                return present(item.estimateMinutes, &StrictReader::integer);
            case 3:
                return integer(item.key);
            case 4:
                return present(item.manualHeight, &StrictReader::number);
            case 5:
                return present(item.manualWidth, &StrictReader::number);
            case 6:
                return text(item.notes);
            case 7:
                return integer(item.order);
            case 8:
                return number(item.posX);
            case 9:
                return number(item.posY);
            case 10:
                return text(item.priorityRaw);
            case 11:
                return present(item.recurrenceRaw, &StrictReader::text);
            default:
                return text(item.title);
            }
        });
    }

    bool edge(FlowBlueprint::Edge &edge)
    {
        static constexpr std::array<std::string_view, 4> names{"from", "kindRaw", "sourceRaw", "to"};
        return object(names, 0, [&](std::size_t field) {
            switch (field) {
            case 0:
                return integer(edge.from);
            case 1:
                return text(edge.kindRaw);
            case 2:
                return text(edge.sourceRaw);
            default:
                return integer(edge.to);
            }
        });
    }

    JsonReader m_reader;
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
    if (std::optional<FlowBlueprint> read = StrictReader(json).blueprint())
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
