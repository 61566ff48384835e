#include "OPMLCodec.h"

#include "SubtaskTree.h"
#include "domain/ChecklistEntry.h"
#include "domain/LocalCalendar.h"

#include <QHash>
#include <QXmlStreamReader>

#include <algorithm>
#include <vector>

namespace fenrow::OPMLCodec {

namespace {

// Characters XML 1.0 cannot carry at all, even as references: a file with
// one of them could not be read back, by this program or any other.
bool isForbiddenInXml(char16_t c)
{
    return (c < 0x20 && c != u'\t' && c != u'\n' && c != u'\r') || c == 0xFFFE || c == 0xFFFF;
}

bool needsEscape(char16_t c)
{
    return c == u'&' || c == u'<' || c == u'>' || c == u'"' || c < 0x20 || QChar::isSurrogate(c) || c >= 0xFFFE;
}

// Appends `text` with markup characters and line breaks as references;
// runs that need nothing are copied whole.
void appendEscaped(QString &out, QStringView text)
{
    const qsizetype size = text.size();
    qsizetype clean = 0;
    for (qsizetype i = 0; i < size; ++i) {
        const char16_t c = text[i].unicode();
        if (!needsEscape(c))
            continue;
        out.append(text.sliced(clean, i - clean));
        clean = i + 1;
        switch (c) {
        case u'&':
            out += QLatin1StringView("&amp;");
            break;
        case u'<':
            out += QLatin1StringView("&lt;");
            break;
        case u'>':
            out += QLatin1StringView("&gt;");
            break;
        case u'"':
            out += QLatin1StringView("&quot;");
            break;
        case u'\r':
            // A carriage return, a line feed and the pair are all one break.
            if (i + 1 < size && text[i + 1] == QLatin1Char('\n'))
                clean = ++i + 1;
            out += QLatin1StringView("&#10;");
            break;
        case u'\n':
            out += QLatin1StringView("&#10;");
            break;
        default:
            if (QChar::isHighSurrogate(c) && i + 1 < size && text[i + 1].isLowSurrogate()) {
                out += text[i];
                out += text[++i];
                clean = i + 1;
            } else if (!QChar::isSurrogate(c) && !isForbiddenInXml(c)) {
                out += text[i];
            }
        }
    }
    out.append(text.sliced(clean));
}

QString idText(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

QString dayText(const QDateTime &date, const LocalCalendar &calendar)
{
    const QDate day = calendar.dayOf(date);
    return QString::asprintf("%04d-%02d-%02d", day.year(), day.month(), day.day());
}

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

// The note that other outliners show: the notes, the checklist as ticked
// lines and the prerequisites, as paragraphs.
QString noteForReaders(const Task &task, const QStringList &afterTitles, const QString &afterFormat)
{
    QStringList paragraphs;
    if (!task.notes.isEmpty())
        paragraphs.append(task.notes);
    const Checklist checklist = ChecklistCodec::decode(task.checklistData);
    if (!checklist.isEmpty()) {
        QStringList lines;
        for (const ChecklistEntry &entry : checklist)
            lines.append((entry.isDone ? QStringLiteral("[x] ") : QStringLiteral("[ ] ")) + entry.title);
        paragraphs.append(lines.join(QLatin1Char('\n')));
    }
    if (!afterTitles.isEmpty())
        paragraphs.append(afterFormat.arg(afterTitles.join(QStringLiteral(", "))));
    return paragraphs.join(QStringLiteral("\n\n"));
}

Outline outlineFrom(const QXmlStreamAttributes &attributes, const LocalCalendar &calendar)
{
    // One pass over the attributes; their names compare exactly.
    std::optional<QStringView> text, title, fenrowNotes, note, status, fenrowID, after, start, due, checklist;
    for (const QXmlStreamAttribute &attribute : attributes) {
        const QStringView name = attribute.qualifiedName();
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
            *slot = attribute.value();
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
    if (checklist && !ChecklistCodec::decode(checklist->toString()).isEmpty())
        outline.checklistData = checklist->toString();
    return outline;
}

// A document that leans on anything outside itself (an external DTD, an
// external entity) is refused whole: its text would depend on something the
// reader never reads.
bool dependsOnOutside(const QXmlStreamReader &xml)
{
    if (!xml.dtdSystemId().isEmpty() || !xml.dtdPublicId().isEmpty())
        return true;
    const QXmlStreamEntityDeclarations entities = xml.entityDeclarations();
    return std::any_of(entities.begin(), entities.end(), [](const QXmlStreamEntityDeclaration &entity) {
        return !entity.systemId().isEmpty() || !entity.publicId().isEmpty() || !entity.notationName().isEmpty();
    });
}

bool isElement(QStringView name, const char *wanted)
{
    return name.compare(QLatin1StringView(wanted), Qt::CaseInsensitive) == 0;
}

} // namespace

QString encode(const QString &title, const QList<Task> &tasks, const QList<IdPair> &subtaskPairs,
               const QList<IdPair> &dependencyPairs, const QString &afterFormat, const LocalCalendar &calendar)
{
    QHash<QUuid, qsizetype> ranks;
    ranks.reserve(tasks.size());
    for (qsizetype rank = 0; rank < tasks.size(); ++rank)
        ranks.insert(tasks[rank].id, rank);

    QList<std::pair<qsizetype, qsizetype>> treePairs;
    treePairs.reserve(subtaskPairs.size());
    for (const auto &[parent, child] : subtaskPairs) {
        const auto from = ranks.constFind(parent);
        const auto to = ranks.constFind(child);
        if (from != ranks.cend() && to != ranks.cend())
            treePairs.append({*from, *to});
    }
    const SubtaskTree tree(tasks.size(), treePairs);

    std::vector<std::vector<qsizetype>> prerequisites(std::size_t(tasks.size()));
    for (const auto &[from, to] : dependencyPairs) {
        const auto source = ranks.constFind(from);
        const auto target = ranks.constFind(to);
        if (source != ranks.cend() && target != ranks.cend() && *source != *target)
            prerequisites[std::size_t(*target)].push_back(*source);
    }
    for (std::vector<qsizetype> &list : prerequisites)
        std::stable_sort(list.begin(), list.end());

    // Every task's id once, as "fenrowId" and "fenrowAfter" write it.
    QList<QString> ids;
    ids.reserve(tasks.size());
    qsizetype estimate = 512;
    for (const Task &task : tasks) {
        ids.append(idText(task.id));
        estimate += 120 + 2 * task.title.size() + 2 * task.notes.size() + task.checklistData.size() * 3 / 2;
    }

    QString out;
    out.reserve(estimate);
    out += QLatin1StringView("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<opml version=\"2.0\">\n  <head>\n"
                             "    <title>");
    appendEscaped(out, title);
    out += QLatin1StringView("</title>\n  </head>\n  <body>\n");

    const auto indent = [&out](qsizetype depth) { out.append(QString((depth + 2) * 2, QLatin1Char(' '))); };
    const auto attribute = [&out](const char *name, QStringView value) {
        out += QLatin1Char(' ');
        out += QLatin1StringView(name);
        out += QLatin1StringView("=\"");
        appendEscaped(out, value);
        out += QLatin1Char('"');
    };
    const auto enter = [&](qsizetype rank, qsizetype depth) {
        const Task &task = tasks[rank];
        // The tree parent is told by the nesting already.
        const qsizetype parent = tree.parentOf(rank);
        QStringList afterIDs;
        QStringList afterTitles;
        for (qsizetype source : prerequisites[std::size_t(rank)]) {
            if (source == parent)
                continue;
            afterIDs.append(ids[source]);
            afterTitles.append(tasks[source].title);
        }

        indent(depth);
        out += QLatin1StringView("<outline");
        attribute("text", task.title);
        if (const QString note = noteForReaders(task, afterTitles, afterFormat); !note.isEmpty())
            attribute("_note", note);
        if (task.isDone)
            attribute("_status", u"checked");
        attribute("fenrowId", ids[rank]);
        if (!task.notes.isEmpty())
            attribute("fenrowNotes", task.notes);
        if (!afterIDs.isEmpty())
            attribute("fenrowAfter", afterIDs.join(QLatin1Char(',')));
        if (task.startDate)
            attribute("fenrowStart", dayText(*task.startDate, calendar));
        if (task.dueDate)
            attribute("fenrowDue", dayText(*task.dueDate, calendar));
        if (!task.checklistData.isEmpty())
            attribute("fenrowChecklist", task.checklistData);
        out += tree.childrenOf(rank).empty() ? QLatin1StringView("/>\n") : QLatin1StringView(">\n");
    };
    const auto leave = [&](qsizetype rank, qsizetype depth) {
        if (tree.childrenOf(rank).empty())
            return;
        indent(depth);
        out += QLatin1StringView("</outline>\n");
    };
    tree.walk(enter, leave);

    out += QLatin1StringView("  </body>\n</opml>\n");
    return out;
}

std::optional<Document> decode(const QByteArray &bytes, const LocalCalendar &calendar)
{
    QXmlStreamReader xml(bytes);
    bool sawRoot = false;
    bool inTitle = false;
    Document document;
    std::vector<Outline> stack;

    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::DTD:
            if (dependsOnOutside(xml))
                return std::nullopt;
            break;
        case QXmlStreamReader::EntityReference:
            // Left unexpanded: it names something outside the document.
            return std::nullopt;
        case QXmlStreamReader::StartElement:
            if (isElement(xml.name(), "opml"))
                sawRoot = true;
            else if (isElement(xml.name(), "title"))
                inTitle = true;
            else if (isElement(xml.name(), "outline"))
                stack.push_back(outlineFrom(xml.attributes(), calendar));
            break;
        case QXmlStreamReader::EndElement:
            if (isElement(xml.name(), "title")) {
                inTitle = false;
            } else if (isElement(xml.name(), "outline") && !stack.empty()) {
                Outline ended = std::move(stack.back());
                stack.pop_back();
                // An outline with nothing to say, and nothing under it, is
                // left out.
                if (ended.text.isEmpty() && ended.children.isEmpty())
                    break;
                if (stack.empty())
                    document.roots.append(std::move(ended));
                else
                    stack.back().children.append(std::move(ended));
            }
            break;
        case QXmlStreamReader::Characters:
            if (inTitle)
                document.title += xml.text();
            break;
        default:
            break;
        }
    }
    if (xml.hasError() || !sawRoot || document.roots.isEmpty())
        return std::nullopt;
    document.title = document.title.trimmed();
    return document;
}

qsizetype outlineCount(const QList<Outline> &roots)
{
    qsizetype count = 0;
    std::vector<const QList<Outline> *> pending{&roots};
    while (!pending.empty()) {
        const QList<Outline> *level = pending.back();
        pending.pop_back();
        count += level->size();
        for (const Outline &outline : *level)
            pending.push_back(&outline.children);
    }
    return count;
}

} // namespace fenrow::OPMLCodec
