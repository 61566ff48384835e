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

QString escaped(const QString &text)
{
    QString out;
    out.reserve(text.size() + text.size() / 8);
    const qsizetype size = text.size();
    for (qsizetype i = 0; i < size; ++i) {
        const char16_t c = text[i].unicode();
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
                ++i;
            out += QLatin1StringView("&#10;");
            break;
        case u'\n':
            out += QLatin1StringView("&#10;");
            break;
        default:
            if (QChar::isHighSurrogate(c)) {
                if (i + 1 < size && text[i + 1].isLowSurrogate()) {
                    out += text[i];
                    out += text[++i];
                }
            } else if (!QChar::isLowSurrogate(c) && !isForbiddenInXml(c)) {
                out += text[i];
            }
        }
    }
    return out;
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
    const auto has = [&](const char *name) { return attributes.hasAttribute(QLatin1StringView(name)); };
    const auto value = [&](const char *name) { return attributes.value(QLatin1StringView(name)); };

    Outline outline;
    if (has("text"))
        outline.text = value("text").trimmed().toString();
    else if (has("title"))
        outline.text = value("title").trimmed().toString();
    // This program's own notes win even when empty, so that its files do not
    // get the composed note back as notes. It writes them whenever a task
    // has notes, so an outline of its own (one with "fenrowId") without them
    // had none, whatever "_note" says about checklists or prerequisites.
    if (has("fenrowNotes"))
        outline.note = value("fenrowNotes").trimmed().toString();
    else if (has("_note") && !has("fenrowId"))
        outline.note = value("_note").trimmed().toString();
    outline.isDone = value("_status").toString().toLower() == QLatin1StringView("checked");
    if (has("fenrowId"))
        outline.fenrowID = value("fenrowId").toString();
    for (QStringView piece : value("fenrowAfter").split(QLatin1Char(','))) {
        const QString id = trimmedBlanks(piece);
        if (!id.isEmpty())
            outline.after.append(id);
    }
    outline.startDate = parseDay(value("fenrowStart"), calendar);
    outline.dueDate = parseDay(value("fenrowDue"), calendar);
    const QString checklist = value("fenrowChecklist").toString();
    if (!ChecklistCodec::decode(checklist).isEmpty())
        outline.checklistData = checklist;
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

    QStringList lines;
    lines.reserve(tasks.size() + 8);
    lines << QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>") << QStringLiteral("<opml version=\"2.0\">")
          << QStringLiteral("  <head>") << QStringLiteral("    <title>") + escaped(title) + QStringLiteral("</title>")
          << QStringLiteral("  </head>") << QStringLiteral("  <body>");

    const auto indent = [](qsizetype depth) { return QString((depth + 2) * 2, QLatin1Char(' ')); };
    const auto attribute = [](QString &into, const char *name, const QString &value) {
        into += QLatin1Char(' ');
        into += QLatin1StringView(name);
        into += QLatin1StringView("=\"");
        into += escaped(value);
        into += QLatin1Char('"');
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
            afterIDs.append(idText(tasks[source].id));
            afterTitles.append(tasks[source].title);
        }

        QString line = indent(depth) + QStringLiteral("<outline");
        attribute(line, "text", task.title);
        if (const QString note = noteForReaders(task, afterTitles, afterFormat); !note.isEmpty())
            attribute(line, "_note", note);
        if (task.isDone)
            attribute(line, "_status", QStringLiteral("checked"));
        attribute(line, "fenrowId", idText(task.id));
        if (!task.notes.isEmpty())
            attribute(line, "fenrowNotes", task.notes);
        if (!afterIDs.isEmpty())
            attribute(line, "fenrowAfter", afterIDs.join(QLatin1Char(',')));
        if (task.startDate)
            attribute(line, "fenrowStart", dayText(*task.startDate, calendar));
        if (task.dueDate)
            attribute(line, "fenrowDue", dayText(*task.dueDate, calendar));
        if (!task.checklistData.isEmpty())
            attribute(line, "fenrowChecklist", task.checklistData);
        line += tree.childrenOf(rank).empty() ? QStringLiteral("/>") : QStringLiteral(">");
        lines.append(line);
    };
    const auto leave = [&](qsizetype rank, qsizetype depth) {
        if (!tree.childrenOf(rank).empty())
            lines.append(indent(depth) + QStringLiteral("</outline>"));
    };
    tree.walk(enter, leave);

    lines << QStringLiteral("  </body>") << QStringLiteral("</opml>");
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
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
