#include "JsonOutput.h"

#include "PlainText.h"

#include "domain/FlowNode.h"
#include "domain/FlowProgress.h"
#include "domain/LocalCalendar.h"
#include "domain/Readiness.h"
#include "domain/TaskFlow.h"

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>

namespace fenrow::JsonOutput {

namespace {

QJsonValue number(const std::optional<qint64> &value)
{
    return value ? QJsonValue(*value) : QJsonValue(QJsonValue::Null);
}

QJsonValue text(const std::optional<QString> &value)
{
    return value ? QJsonValue(*value) : QJsonValue(QJsonValue::Null);
}

void appendUtf8(std::string &out, char32_t code)
{
    if (code < 0x800) {
        out += char(0xc0 | (code >> 6));
    } else {
        if (code < 0x10000) {
            out += char(0xe0 | (code >> 12));
        } else {
            out += char(0xf0 | (code >> 18));
            out += char(0x80 | ((code >> 12) & 0x3f));
        }
        out += char(0x80 | ((code >> 6) & 0x3f));
    }
    out += char(0x80 | (code & 0x3f));
}

// Text as a JSON string, escaped as QJsonDocument escapes it: the quote,
// the backslash and control characters (by their short names where JSON
// has them), lone surrogates as \u escapes, the rest as UTF-8.
void appendJsonString(std::string &out, QStringView text)
{
    static constexpr char hex[] = "0123456789abcdef";
    out += '"';
    // Most text needs no escape at all and goes through Qt's converter.
    if (std::all_of(text.begin(), text.end(), [](QChar c) {
            return c.unicode() >= 0x20 && c != u'"' && c != u'\\' && !c.isSurrogate();
        })) {
        const QByteArray utf8 = text.toUtf8();
        out.append(utf8.constData(), std::size_t(utf8.size()));
        out += '"';
        return;
    }
    const qsizetype size = text.size();
    for (qsizetype i = 0; i < size; ++i) {
        const char16_t unit = text[i].unicode();
        if (unit >= 0x20 && unit < 0x80 && unit != u'"' && unit != u'\\') {
            out += char(unit);
            continue;
        }
        switch (unit) {
        case u'"':
            out += "\\\"";
            continue;
        case u'\\':
            out += "\\\\";
            continue;
        case u'\b':
            out += "\\b";
            continue;
        case u'\f':
            out += "\\f";
            continue;
        case u'\n':
            out += "\\n";
            continue;
        case u'\r':
            out += "\\r";
            continue;
        case u'\t':
            out += "\\t";
            continue;
        default:
            break;
        }
        if (QChar::isHighSurrogate(unit) && i + 1 < size && text[i + 1].isLowSurrogate()) {
            appendUtf8(out, QChar::surrogateToUcs4(unit, text[++i].unicode()));
        } else if (unit < 0x20 || QChar::isSurrogate(unit)) {
            const char escape[] = {'\\', 'u', hex[unit >> 12], hex[(unit >> 8) & 0xf], hex[(unit >> 4) & 0xf],
                                   hex[unit & 0xf]};
            out.append(escape, sizeof escape);
        } else {
            appendUtf8(out, unit);
        }
    }
    out += '"';
}

// An id as PlainText::id writes it, straight into the bytes.
void appendId(std::string &out, const QUuid &id)
{
    static constexpr char hex[] = "0123456789ABCDEF";
    const uchar bytes[16] = {uchar(id.data1 >> 24), uchar(id.data1 >> 16), uchar(id.data1 >> 8), uchar(id.data1),
                             uchar(id.data2 >> 8),  uchar(id.data2),       uchar(id.data3 >> 8), uchar(id.data3),
                             id.data4[0],           id.data4[1],           id.data4[2],          id.data4[3],
                             id.data4[4],           id.data4[5],           id.data4[6],          id.data4[7]};
    char text[38];
    char *at = text;
    *at++ = '"';
    for (int i = 0; i < 16; ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10)
            *at++ = '-';
        *at++ = hex[bytes[i] >> 4];
        *at++ = hex[bytes[i] & 0xf];
    }
    *at++ = '"';
    out.append(text, sizeof text);
}

} // namespace

QJsonValue dateTime(const std::optional<QDateTime> &moment, const LocalCalendar &calendar)
{
    if (!moment || !moment->isValid())
        return QJsonValue::Null;
    return moment->toTimeZone(calendar.zone()).toString(Qt::ISODate);
}

QJsonObject flow(const TaskFlow &flow, qsizetype position, const LocalCalendar &calendar)
{
    const FlowProgress progress = FlowProgress::of(flow.items());
    return {
        {QStringLiteral("id"), PlainText::id(flow.id)},
        {QStringLiteral("name"), flow.name},
        {QStringLiteral("position"), qint64(position)},
        {QStringLiteral("order"), flow.order},
        {QStringLiteral("createdAt"), dateTime(flow.createdAt, calendar)},
        {QStringLiteral("progress"),
         QJsonObject{
             {QStringLiteral("doneCount"), progress.doneCount},
             {QStringLiteral("inProgressCount"), progress.inProgressCount},
             {QStringLiteral("totalCount"), progress.totalCount},
         }},
    };
}

QJsonObject readyTask(const FlowNode &node, const QDateTime &now, const LocalCalendar &calendar)
{
    const TaskFlow *flow = node.flow();
    return {
        {QStringLiteral("id"), PlainText::id(node.id)},
        {QStringLiteral("title"), node.title},
        {QStringLiteral("flowID"), flow ? QJsonValue(PlainText::id(flow->id)) : QJsonValue()},
        {QStringLiteral("flowName"), flow ? QJsonValue(flow->name) : QJsonValue()},
        {QStringLiteral("dueDate"), dateTime(node.dueDate, calendar)},
        {QStringLiteral("isOverdue"), node.isOverdue(now, calendar)},
        {QStringLiteral("priorityRaw"), node.priorityRaw},
        {QStringLiteral("estimateMinutes"), number(node.estimateMinutes)},
        {QStringLiteral("dayPlanRank"), number(node.dayPlanRank)},
    };
}

void writeReadyList(const QList<ReadyTask> &tasks, qsizetype todayCount, const QDateTime &now,
                    const LocalCalendar &calendar, const std::function<void(std::string_view)> &write)
{
    // Written straight as QJsonDocument would indent it (keys sorted, four
    // spaces a level): building a QJsonObject per row first took three
    // quarters of a large list's time and a gigabyte for 300,000 rows. It
    // goes out in pieces, so that the whole text never sits in memory.
    constexpr std::size_t piece = 64 * 1024;
    std::string out;
    out.reserve(piece + 1024);
    out += "[\n";
    const auto key = [&out](std::string_view name) {
        out += "        \"";
        out += name;
        out += "\": ";
    };
    const auto next = [&out] { out += ",\n"; };
    const auto number = [&out](const std::optional<qint64> &value) {
        out += value ? std::to_string(*value) : std::string("null");
    };
    for (qsizetype i = 0; i < tasks.size(); ++i) {
        const FlowNode &node = *tasks[i].node;
        const TaskFlow *flow = node.flow();
        out += "    {\n";
        key("dayPlanRank");
        number(node.dayPlanRank);
        next();
        key("dueDate");
        if (node.dueDate && node.dueDate->isValid())
            appendJsonString(out, node.dueDate->toTimeZone(calendar.zone()).toString(Qt::ISODate));
        else
            out += "null";
        next();
        key("estimateMinutes");
        number(node.estimateMinutes);
        next();
        key("flowID");
        if (flow)
            appendId(out, flow->id);
        else
            out += "null";
        next();
        key("flowName");
        if (flow)
            appendJsonString(out, flow->name);
        else
            out += "null";
        next();
        key("id");
        appendId(out, node.id);
        next();
        key("inToday");
        out += i < todayCount ? "true" : "false";
        next();
        key("isOverdue");
        out += node.isOverdue(now, calendar) ? "true" : "false";
        next();
        key("priorityRaw");
        appendJsonString(out, node.priorityRaw);
        next();
        key("title");
        appendJsonString(out, node.title);
        out += i + 1 < tasks.size() ? "\n    },\n" : "\n    }\n";
        if (out.size() >= piece) {
            write(out);
            out.clear();
        }
    }
    out += "]\n";
    write(out);
}

QByteArray readyList(const QList<ReadyTask> &tasks, qsizetype todayCount, const QDateTime &now,
                     const LocalCalendar &calendar)
{
    QByteArray all;
    writeReadyList(tasks, todayCount, now, calendar,
                   [&all](std::string_view piece) { all.append(piece.data(), qsizetype(piece.size())); });
    return all;
}

QJsonObject task(const FlowNode &node, const QDateTime &now, const LocalCalendar &calendar)
{
    QJsonObject object = readyTask(node, now, calendar);
    object.insert(QStringLiteral("notes"), node.notes);
    object.insert(QStringLiteral("status"), rawString(node.status()));
    object.insert(QStringLiteral("isDone"), node.isDone);
    object.insert(QStringLiteral("colorRaw"), node.colorRaw);
    object.insert(QStringLiteral("startDate"), dateTime(node.startDate, calendar));
    object.insert(QStringLiteral("isDeferred"), node.isDeferred(now, calendar));
    object.insert(QStringLiteral("recurrenceRaw"), text(node.recurrenceRaw));
    object.insert(QStringLiteral("repeatCount"), node.repeatCount);
    object.insert(QStringLiteral("completedAt"), dateTime(node.completedAt, calendar));
    object.insert(QStringLiteral("createdAt"), dateTime(node.createdAt, calendar));
    return object;
}

} // namespace fenrow::JsonOutput
