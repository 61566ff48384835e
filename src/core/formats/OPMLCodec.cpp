#include "OPMLCodec.h"

#include "OPMLDirectReader.h"
#include "OPMLOutlineBuilder.h"
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
    OutlineBuilder builder(calendar);
    if (OPMLDirectReader::read(bytes, builder) == OPMLDirectReader::Result::read)
        return builder.finish();
    // The full reader has the last word on everything the direct one was
    // not sure of: other encodings, declarations, CDATA, broken markup.
    return decodeWithXmlReader(bytes, calendar);
}

std::optional<Document> decodeWithXmlReader(const QByteArray &bytes, const LocalCalendar &calendar)
{
    OutlineBuilder builder(calendar);
    QXmlStreamReader xml(bytes);
    ElementAttributes attributes;
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::DTD:
            if (dependsOnOutside(xml))
                return std::nullopt;
            break;
        case QXmlStreamReader::EntityReference:
            // Left unexpanded: it names something outside the document.
            return std::nullopt;
        case QXmlStreamReader::StartElement: {
            const QXmlStreamAttributes read = xml.attributes();
            attributes.clear();
            for (const QXmlStreamAttribute &attribute : read)
                attributes.emplace_back(attribute.qualifiedName(), attribute.value());
            builder.startElement(xml.name(), attributes);
            break;
        }
        case QXmlStreamReader::EndElement:
            builder.endElement(xml.name());
            break;
        case QXmlStreamReader::Characters:
            builder.characters(xml.text());
            break;
        default:
            break;
        }
    }
    if (xml.hasError())
        return std::nullopt;
    return builder.finish();
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
