#include "FlowBlueprint.h"

#include "ChecklistEntry.h"
#include "RecordID.h"
#include "TaskFlow.h"
#include "formats/JsonFields.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <limits>

namespace fenrow {

namespace {

// Reading is all or nothing: one field of the wrong type fails the whole
// payload, so a damaged template makes no flow rather than half of one.
using Reader = JsonFields;

QLatin1StringView key(const char *name)
{
    return QLatin1StringView(name);
}

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
    // JSON has no infinity or NaN; a shape holding one is not written at all.
    bool finite = true;
    auto number = [&finite](double value) {
        finite = finite && std::isfinite(value);
        return value;
    };

    QJsonArray itemArray;
    for (const Item &item : items) {
        QJsonObject object{
            {key("key"), item.key},
            {key("title"), item.title},
            {key("notes"), item.notes},
            {key("priorityRaw"), item.priorityRaw},
            {key("colorRaw"), item.colorRaw},
            {key("checklistData"), item.checklistData},
            {key("posX"), number(item.posX)},
            {key("posY"), number(item.posY)},
            {key("order"), item.order},
        };
        if (item.estimateMinutes)
            object.insert(key("estimateMinutes"), *item.estimateMinutes);
        if (item.recurrenceRaw)
            object.insert(key("recurrenceRaw"), *item.recurrenceRaw);
        if (item.manualWidth)
            object.insert(key("manualWidth"), number(*item.manualWidth));
        if (item.manualHeight)
            object.insert(key("manualHeight"), number(*item.manualHeight));
        itemArray.append(object);
    }

    QJsonArray edgeArray;
    for (const Edge &edge : edges) {
        edgeArray.append(QJsonObject{
            {key("from"), edge.from},
            {key("to"), edge.to},
            {key("kindRaw"), edge.kindRaw},
            {key("sourceRaw"), edge.sourceRaw},
        });
    }

    if (!finite)
        return {};
    const QJsonObject document{
        {key("version"), version},
        {key("name"), name},
        {key("items"), itemArray},
        {key("edges"), edgeArray},
    };
    return QJsonDocument(document).toJson(QJsonDocument::Compact);
}

std::optional<FlowBlueprint> FlowBlueprint::decode(const QByteArray &json)
{
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
