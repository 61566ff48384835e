// Any bytes as a template's stored shape. FlowBlueprint::decode reads with
// simdjson first and through QJsonDocument only where that one is unsure; it must give exactly what the reading through
// QJsonDocument and JsonFields gives, which is made here afresh. A shape
// that reads must write and read back to itself (a template is saved again
// whenever it is used), its checklists must reset to the same entries
// unticked, and JsonFields must take a number as an integer exactly when it
// is a whole one in range.

#include "FuzzSupport.h"

#include "domain/ChecklistEntry.h"
#include "domain/FlowBlueprint.h"
#include "formats/JsonFields.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <limits>

using namespace fenrow;

namespace {

QLatin1StringView key(const char *name)
{
    return QLatin1StringView(name);
}

void checkWholeNumber(const QJsonValue &value)
{
    const std::optional<qint64> whole = JsonFields::wholeNumber(value);
    if (!value.isDouble()) {
        fuzz::require(!whole, "a value that is no number was read as an integer");
        return;
    }
    const double number = value.toDouble();
    const bool inRange = number >= -9223372036854775808.0 && number < 9223372036854775808.0;
    fuzz::require(whole.has_value() == (std::trunc(number) == number && inRange),
                  "an integer field took a number it should refuse, or refused one it should take",
                  [&] { return QString::number(number, 'g', 17); });
    if (whole)
        fuzz::require(double(*whole) == number, "an integer field changed the number it read", [&] {
            return QString::number(number, 'g', 17) + QStringLiteral(" read as ") + QString::number(*whole);
        });
}

// The shape as QJsonDocument and JsonFields read it: every field of its
// type, optional ones absent or null, all or nothing.
std::optional<FlowBlueprint> readThroughQJsonDocument(const QByteArray &bytes)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return std::nullopt;
    const QJsonObject root = document.object();
    for (const QJsonValue &value : root)
        checkWholeNumber(value);
    if (!root.value(key("items")).isArray() || !root.value(key("edges")).isArray())
        return std::nullopt;

    FlowBlueprint blueprint;
    JsonFields top(root);
    const qint64 version = top.integer(key("version"));
    blueprint.name = top.text(key("name"));
    if (!top.ok() || version < std::numeric_limits<int>::min() || version > std::numeric_limits<int>::max())
        return std::nullopt;
    blueprint.version = int(version);

    for (const QJsonValue &value : root.value(key("items")).toArray()) {
        if (!value.isObject())
            return std::nullopt;
        const QJsonObject object = value.toObject();
        for (const QJsonValue &field : object)
            checkWholeNumber(field);
        JsonFields field(object);
        FlowBlueprint::Item item;
        item.key = field.integer(key("key"));
        item.title = field.text(key("title"));
        item.notes = field.text(key("notes"));
        item.priorityRaw = field.text(key("priorityRaw"));
        item.colorRaw = field.text(key("colorRaw"));
        item.estimateMinutes = field.optionalInteger(key("estimateMinutes"));
        item.checklistData = field.text(key("checklistData"));
        item.recurrenceRaw = field.optionalText(key("recurrenceRaw"));
        item.manualWidth = field.optionalNumber(key("manualWidth"));
        item.manualHeight = field.optionalNumber(key("manualHeight"));
        item.posX = field.number(key("posX"));
        item.posY = field.number(key("posY"));
        item.order = field.integer(key("order"));
        if (!field.ok())
            return std::nullopt;
        blueprint.items.append(item);
    }
    for (const QJsonValue &value : root.value(key("edges")).toArray()) {
        if (!value.isObject())
            return std::nullopt;
        const QJsonObject object = value.toObject();
        JsonFields field(object);
        FlowBlueprint::Edge edge;
        edge.from = field.integer(key("from"));
        edge.to = field.integer(key("to"));
        edge.kindRaw = field.text(key("kindRaw"));
        edge.sourceRaw = field.text(key("sourceRaw"));
        if (!field.ok())
            return std::nullopt;
        blueprint.edges.append(edge);
    }
    return blueprint;
}

QString described(const std::optional<FlowBlueprint> &blueprint)
{
    if (!blueprint)
        return QStringLiteral("(refused)");
    const QByteArray written = blueprint->encode();
    return written.isEmpty() ? QStringLiteral("(read, but cannot be written)") : QString::fromUtf8(written);
}

void checkChecklistReset(const QString &checklistData)
{
    const QString reset = FlowBlueprint::resetChecklist(checklistData);
    const Checklist before = ChecklistCodec::decode(checklistData);
    if (before.isEmpty()) {
        fuzz::require(reset == checklistData, "a checklist that does not decode was changed by a reset");
        return;
    }
    const Checklist after = ChecklistCodec::decode(reset);
    fuzz::require(after.size() == before.size(), "a reset changed the number of checklist entries",
                  [&] { return reset; });
    for (qsizetype i = 0; i < after.size(); ++i) {
        fuzz::require(after[i].title == before[i].title, "a reset changed a checklist title", [&] { return reset; });
        fuzz::require(!after[i].isDone && !after[i].id.isNull(), "a reset left an entry ticked or without id",
                      [&] { return reset; });
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = fuzz::bytesOf(data, size);
    const std::optional<FlowBlueprint> blueprint = FlowBlueprint::decode(bytes);
    const std::optional<FlowBlueprint> expected = readThroughQJsonDocument(bytes);
    fuzz::require(blueprint == expected, "the template reader disagrees with QJsonDocument and JsonFields", [&] {
        return QStringLiteral("decode: ") + described(blueprint) + QStringLiteral("\nthrough QJsonDocument: ")
            + described(expected);
    });
    if (!blueprint)
        return 0;

    const QByteArray written = blueprint->encode();
    fuzz::require(!written.isEmpty(), "a template that was read cannot be written");
    const std::optional<FlowBlueprint> again = FlowBlueprint::decode(written);
    fuzz::require(again.has_value(), "a template as written is refused when read back",
                  [&] { return QString::fromUtf8(written); });
    fuzz::require(*again == *blueprint, "a template read back differs from the one written",
                  [&] { return QString::fromUtf8(written); });
    fuzz::require(again->encode() == written, "the same template is written as different bytes",
                  [&] { return QString::fromUtf8(written); });

    for (const FlowBlueprint::Item &item : blueprint->items)
        checkChecklistReset(item.checklistData);
    return 0;
}
