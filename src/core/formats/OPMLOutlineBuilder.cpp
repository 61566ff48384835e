#include "OPMLOutlineBuilder.h"

#include "domain/ChecklistEntry.h"
#include "domain/LocalCalendar.h"
#include "domain/ValueLimits.h"

#include <algorithm>

namespace fenrow::OPMLCodec {

namespace {

// "2026-3-9" or "2026-03-09": year, month and day joined by "-", a day in
// the years the store can hold.
std::optional<QDateTime> parseDay(QStringView text, const LocalCalendar &calendar)
{
    const QList<QStringView> parts = text.split(QLatin1Char('-'));
    if (parts.size() != 3)
        return std::nullopt;
    int numbers[3];
    for (qsizetype i = 0; i < 3; ++i) {
        const QStringView part = parts[i];
        if (part.isEmpty() || part.size() > 9
            || !std::all_of(part.begin(), part.end(), [](QChar c) { return c.isDigit() && c.unicode() < 128; }))
            return std::nullopt;
        numbers[i] = part.toInt();
    }
    // Checked before the calendar is asked: a zone has nothing to say
    // about the year 20260.
    if (numbers[0] < ValueLimits::firstYear || numbers[0] > ValueLimits::lastYear)
        return std::nullopt;
    const QDate day(numbers[0], numbers[1], numbers[2]);
    if (!day.isValid())
        return std::nullopt;
    return ValueLimits::date(calendar.startOfDay(day));
}

QString trimmedBlanks(QStringView text)
{
    qsizetype start = 0;
    qsizetype end = text.size();
    while (start < end && (text[start] == QLatin1Char(' ') || text[start] == QLatin1Char('\t')))
        ++start;
    while (end > start && (text[end - 1] == QLatin1Char(' ') || text[end - 1] == QLatin1Char('\t')))
        --end;
    return text.mid(start, end - start).toString();
}

// The attributes an outline is read from, as this program writes them.
enum Field { text, title, fenrowNotes, note, status, fenrowID, after, start, due, checklist, fieldCount };
constexpr QStringView fieldNames[fieldCount]{u"text",     u"title",       u"fenrowNotes", u"_note",     u"_status",
                                             u"fenrowId", u"fenrowAfter", u"fenrowStart", u"fenrowDue", u"fenrowChecklist"};

// One pass over the attributes. Names are matched exactly first; other
// programs write "TEXT" or "_NOTE", which count where the exact spelling
// is missing.
std::array<std::optional<QStringView>, fieldCount> fieldsOf(const ElementAttributes &attributes)
{
    std::array<std::optional<QStringView>, fieldCount> exact;
    std::array<std::optional<QStringView>, fieldCount> otherCase;
    for (const auto &[name, value] : attributes) {
        const auto *found = std::find(std::begin(fieldNames), std::end(fieldNames), name);
        if (found != std::end(fieldNames)) {
            exact[std::size_t(found - fieldNames)] = value;
            continue;
        }
        for (std::size_t field = 0; field < fieldCount; ++field) {
            if (name.size() == fieldNames[field].size()
                && name.compare(fieldNames[field], Qt::CaseInsensitive) == 0) {
                if (!otherCase[field])
                    otherCase[field] = value;
                break;
            }
        }
    }
    for (std::size_t field = 0; field < fieldCount; ++field) {
        if (!exact[field])
            exact[field] = otherCase[field];
    }
    return exact;
}

Outline outlineFrom(const ElementAttributes &attributes, const LocalCalendar &calendar, qsizetype &datesLeftOut)
{
    const std::array<std::optional<QStringView>, fieldCount> fields = fieldsOf(attributes);
    const auto field = [&fields](Field which) { return fields[which]; };

    Outline outline;
    if (const std::optional<QStringView> shown = field(text) ? field(text) : field(title))
        outline.text = shown->trimmed().toString();
    // This program's own notes win even when empty, so that its files do not
    // get the composed note back as notes. It writes them whenever a task
    // has notes, so an outline of its own (one with "fenrowId") without them
    // had none, whatever "_note" says about checklists or prerequisites.
    if (field(fenrowNotes))
        outline.note = field(fenrowNotes)->trimmed().toString();
    else if (field(note) && !field(fenrowID))
        outline.note = field(note)->trimmed().toString();
    outline.isDone = field(status) && field(status)->compare(u"checked", Qt::CaseInsensitive) == 0;
    if (field(fenrowID))
        outline.fenrowID = field(fenrowID)->toString();
    if (field(after)) {
        for (QStringView piece : field(after)->split(QLatin1Char(','))) {
            const QString id = trimmedBlanks(piece);
            if (!id.isEmpty())
                outline.after.append(id);
        }
    }
    // A date that is there but no day the store can hold is left out, and
    // counted, so the import can say so.
    const auto day = [&](Field which) -> std::optional<QDateTime> {
        const std::optional<QStringView> value = field(which);
        if (!value || value->trimmed().isEmpty())
            return std::nullopt;
        std::optional<QDateTime> parsed = parseDay(*value, calendar);
        if (!parsed)
            ++datesLeftOut;
        return parsed;
    };
    outline.startDate = day(start);
    outline.dueDate = day(due);
    if (field(checklist)) {
        QString data = field(checklist)->toString();
        if (ChecklistCodec::hasEntries(data))
            outline.checklistData = std::move(data);
    }
    return outline;
}

bool isElement(QStringView name, const char *wanted)
{
    return name.compare(QLatin1StringView(wanted), Qt::CaseInsensitive) == 0;
}

} // namespace

bool OutlineBuilder::refuse(Refusal::Reason reason, qsizetype entry)
{
    m_refusal = Refusal{reason, 0, entry};
    return false;
}

void OutlineBuilder::refusedOnLine(qsizetype line)
{
    if (m_refusal && m_refusal->line == 0)
        m_refusal->line = line;
}

bool OutlineBuilder::startElement(QStringView name, const ElementAttributes &attributes)
{
    if (m_refusal)
        return false;
    const bool isOutline = isElement(name, "outline");
    const qsizetype entry = isOutline ? ++m_entries : 0;
    if (qsizetype(attributes.size()) > maxAttributes)
        return refuse(Refusal::Reason::tooManyAttributes, entry);
    for (const auto &[attribute, value] : attributes) {
        if (value.size() > maxValueLength)
            return refuse(Refusal::Reason::valueTooLong, entry);
    }
    if (isOutline) {
        if (m_entries > maxEntries)
            return refuse(Refusal::Reason::tooManyEntries, entry);
        if (qsizetype(m_stack.size()) >= maxDepth)
            return refuse(Refusal::Reason::tooDeep, entry);
        m_stack.push_back(outlineFrom(attributes, m_calendar, m_document.datesLeftOut));
    } else if (isElement(name, "opml")) {
        m_sawRoot = true;
    } else if (isElement(name, "title")) {
        m_inTitle = true;
    }
    return true;
}

bool OutlineBuilder::endElement(QStringView name)
{
    if (m_refusal)
        return false;
    if (isElement(name, "title")) {
        m_inTitle = false;
        // Checked once it is whole: readers may hand a text over in pieces.
        if (m_document.title.size() > maxValueLength)
            return refuse(Refusal::Reason::valueTooLong, 0);
    } else if (isElement(name, "outline") && !m_stack.empty()) {
        Outline ended = std::move(m_stack.back());
        m_stack.pop_back();
        // An outline with nothing to say, and nothing under it, is left out.
        if (ended.text.isEmpty() && ended.children.isEmpty()) {
            ++m_document.entriesLeftOut;
            return true;
        }
        if (m_stack.empty())
            m_document.roots.append(std::move(ended));
        else
            m_stack.back().children.append(std::move(ended));
    }
    return true;
}

void OutlineBuilder::characters(QStringView text)
{
    if (m_inTitle && !m_refusal)
        m_document.title += text;
}

Reading OutlineBuilder::result()
{
    if (m_refusal)
        return *m_refusal;
    if (!m_sawRoot || m_document.roots.isEmpty())
        return Refusal{};
    m_document.title = m_document.title.trimmed();
    return std::move(m_document);
}

std::optional<Document> OutlineBuilder::finish()
{
    Reading read = result();
    if (Document *document = std::get_if<Document>(&read))
        return std::move(*document);
    return std::nullopt;
}

} // namespace fenrow::OPMLCodec
