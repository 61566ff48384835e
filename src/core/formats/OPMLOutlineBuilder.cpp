#include "OPMLOutlineBuilder.h"

#include "domain/ChecklistEntry.h"
#include "domain/LocalCalendar.h"

#include <algorithm>

namespace fenrow::OPMLCodec {

namespace {

// "2026-3-9" or "2026-03-09": year, month and day joined by "-".
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
    const QDate day(numbers[0], numbers[1], numbers[2]);
    if (!day.isValid())
        return std::nullopt;
    return calendar.startOfDay(day);
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

Outline outlineFrom(const ElementAttributes &attributes, const LocalCalendar &calendar)
{
    // One pass over the attributes; their names compare exactly.
    std::optional<QStringView> text, title, fenrowNotes, note, status, fenrowID, after, start, due, checklist;
    for (const auto &[name, value] : attributes) {
        std::optional<QStringView> *slot = nullptr;
        if (name == u"text")
            slot = &text;
        else if (name == u"title")
            slot = &title;
        else if (name == u"fenrowNotes")
            slot = &fenrowNotes;
        else if (name == u"_note")
            slot = &note;
        else if (name == u"_status")
            slot = &status;
        else if (name == u"fenrowId")
            slot = &fenrowID;
        else if (name == u"fenrowAfter")
            slot = &after;
        else if (name == u"fenrowStart")
            slot = &start;
        else if (name == u"fenrowDue")
            slot = &due;
        else if (name == u"fenrowChecklist")
            slot = &checklist;
        if (slot)
            *slot = value;
    }

    Outline outline;
    if (const std::optional<QStringView> shown = text ? text : title)
        outline.text = shown->trimmed().toString();
    // This program's own notes win even when empty, so that its files do not
    // get the composed note back as notes. It writes them whenever a task
    // has notes, so an outline of its own (one with "fenrowId") without them
    // had none, whatever "_note" says about checklists or prerequisites.
    if (fenrowNotes)
        outline.note = fenrowNotes->trimmed().toString();
    else if (note && !fenrowID)
        outline.note = note->trimmed().toString();
    outline.isDone = status && status->compare(u"checked", Qt::CaseInsensitive) == 0;
    if (fenrowID)
        outline.fenrowID = fenrowID->toString();
    if (after) {
        for (QStringView piece : after->split(QLatin1Char(','))) {
            const QString id = trimmedBlanks(piece);
            if (!id.isEmpty())
                outline.after.append(id);
        }
    }
    if (start)
        outline.startDate = parseDay(*start, calendar);
    if (due)
        outline.dueDate = parseDay(*due, calendar);
    if (checklist) {
        QString data = checklist->toString();
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

void OutlineBuilder::startElement(QStringView name, const ElementAttributes &attributes)
{
    if (isElement(name, "opml"))
        m_sawRoot = true;
    else if (isElement(name, "title"))
        m_inTitle = true;
    else if (isElement(name, "outline"))
        m_stack.push_back(outlineFrom(attributes, m_calendar));
}

void OutlineBuilder::endElement(QStringView name)
{
    if (isElement(name, "title")) {
        m_inTitle = false;
    } else if (isElement(name, "outline") && !m_stack.empty()) {
        Outline ended = std::move(m_stack.back());
        m_stack.pop_back();
        // An outline with nothing to say, and nothing under it, is left out.
        if (ended.text.isEmpty() && ended.children.isEmpty())
            return;
        if (m_stack.empty())
            m_document.roots.append(std::move(ended));
        else
            m_stack.back().children.append(std::move(ended));
    }
}

void OutlineBuilder::characters(QStringView text)
{
    if (m_inTitle)
        m_document.title += text;
}

std::optional<Document> OutlineBuilder::finish()
{
    if (!m_sawRoot || m_document.roots.isEmpty())
        return std::nullopt;
    m_document.title = m_document.title.trimmed();
    return std::move(m_document);
}

} // namespace fenrow::OPMLCodec
