#include "OPMLCodec.h"

#include "OPMLDirectReader.h"
#include "OPMLOutlineBuilder.h"
#include "SubtaskTree.h"
#include "domain/ChecklistEntry.h"
#include "domain/LocalCalendar.h"

#include <QHash>
#include <QLocale>
#include <QStringDecoder>
#include <QXmlStreamReader>

#include <algorithm>
#include <cstring>
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
        case u'\t':
            // A reader turns a bare tab in a value into a space.
            out += QLatin1StringView("&#9;");
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


// The general XML reader over the whole document. The builder's refusal
// names the line the reader stands on, after the tag that crossed a limit.
Reading readXml(const QByteArray &bytes, const LocalCalendar &calendar)
{
    OutlineBuilder builder(calendar);
    QXmlStreamReader xml(bytes);
    ElementAttributes attributes;
    const auto refused = [&] {
        builder.refusedOnLine(xml.lineNumber());
        return builder.result();
    };
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::DTD:
            if (dependsOnOutside(xml))
                return Refusal{};
            break;
        case QXmlStreamReader::EntityReference:
            // Left unexpanded: it names something outside the document.
            return Refusal{};
        case QXmlStreamReader::StartElement: {
            const QXmlStreamAttributes read = xml.attributes();
            attributes.clear();
            for (const QXmlStreamAttribute &attribute : read)
                attributes.emplace_back(attribute.qualifiedName(), attribute.value());
            if (!builder.startElement(xml.name(), attributes))
                return refused();
            break;
        }
        case QXmlStreamReader::EndElement:
            if (!builder.endElement(xml.name()))
                return refused();
            break;
        case QXmlStreamReader::Characters:
            builder.characters(xml.text());
            break;
        default:
            break;
        }
    }
    if (xml.hasError())
        return Refusal{};
    return builder.result();
}

// The first start tag with more attributes than a document may give an
// element, found without reading the document as XML: QXmlStreamReader
// compares every attribute of an element with every other before it hands
// the element over, which for a million of them takes hours. Markup is
// ASCII in every encoding a reader can meet here, so the scan looks at
// code units: comments, CDATA, processing instructions and quoted values
// are passed over, and each "=" left in a start tag is an attribute.
// Wherever the scan could lose its way, the reader stops at the same place
// as badly formed.
template <typename Char>
const Char *findUnit(const Char *from, const Char *end, Char wanted)
{
    if constexpr (sizeof(Char) == 1) {
        const void *found = std::memchr(from, wanted, std::size_t(end - from));
        return found ? static_cast<const Char *>(found) : end;
    } else {
        return std::find(from, end, wanted);
    }
}

template <typename Char>
std::optional<Refusal> crowdedElement(const Char *text, qsizetype size)
{
    const Char *const end = text + size;
    const auto at = [&](const Char *p, const char *literal) {
        const std::size_t length = std::strlen(literal);
        if (std::size_t(end - p) < length)
            return false;
        for (std::size_t i = 0; i < length; ++i) {
            if (p[i] != Char(literal[i]))
                return false;
        }
        return true;
    };
    const auto after = [&](const Char *from, const char *closing) -> const Char * {
        for (const Char *p = from; p < end; ++p) {
            if (at(p, closing))
                return p + std::strlen(closing);
        }
        return end;
    };
    const auto isNameStart = [](Char c) {
        return (c >= Char('a') && c <= Char('z')) || (c >= Char('A') && c <= Char('Z')) || c == Char('_')
            || c == Char(':') || c > Char(0x7F);
    };
    const auto isBlank = [](Char c) {
        return c == Char(' ') || c == Char('\t') || c == Char('\n') || c == Char('\r');
    };

    qsizetype entries = 0;
    const Char *p = text;
    while (p < end) {
        p = findUnit(p, end, Char('<'));
        if (p == end)
            break;
        const Char next = p + 1 < end ? p[1] : Char(0);
        if (next == Char('!') && at(p, "<!--")) {
            p = after(p + 4, "-->");
        } else if (next == Char('!') && at(p, "<![CDATA[")) {
            p = after(p + 9, "]]>");
        } else if (next == Char('?')) {
            p = after(p + 2, "?>");
        } else if (!isNameStart(next)) {
            // A declaration or an end tag: over quoted literals to its end,
            // stopping at a "<", where a declaration inside it begins.
            ++p;
            while (p < end && *p != Char('>') && *p != Char('<')) {
                if (*p == Char('"') || *p == Char('\'')) {
                    const Char quote = *p;
                    p = findUnit(p + 1, end, quote);
                }
                if (p < end)
                    ++p;
            }
        } else {
            ++p;
            const Char *nameEnd = p;
            while (nameEnd < end && !isBlank(*nameEnd) && *nameEnd != Char('>') && *nameEnd != Char('/'))
                ++nameEnd;
            const bool isOutline = nameEnd - p == 7 && [&] {
                for (qsizetype i = 0; i < 7; ++i) {
                    const Char c = p[i] | Char(0x20);
                    if (c != Char("outline"[i]))
                        return false;
                }
                return true;
            }();
            entries += isOutline;
            qsizetype attributes = 0;
            p = nameEnd;
            while (p < end && *p != Char('>') && *p != Char('<')) {
                if (*p == Char('"') || *p == Char('\'')) {
                    const Char quote = *p;
                    p = findUnit(p + 1, end, quote);
                } else if (*p == Char('=') && ++attributes > maxAttributes) {
                    return Refusal{Refusal::Reason::tooManyAttributes, lineAt(text, p - text),
                                   isOutline ? entries : 0};
                }
                if (p < end)
                    ++p;
            }
        }
    }
    return std::nullopt;
}

// The encoding an XML declaration at the start of `head` names, if any.
QString declaredEncoding(QStringView head)
{
    if (head.startsWith(u'\uFEFF'))
        head = head.sliced(1);
    if (!head.startsWith(u"<?xml"))
        return {};
    head = head.first(std::max<qsizetype>(head.indexOf(u"?>"), 0));
    const qsizetype name = head.indexOf(u"encoding");
    if (name < 0)
        return {};
    qsizetype quote = name + 8;
    while (quote < head.size() && head[quote] != u'"' && head[quote] != u'\'')
        ++quote;
    const qsizetype closing = quote < head.size() ? head.indexOf(head[quote], quote + 1) : -1;
    return closing > quote ? head.sliced(quote + 1, closing - quote - 1).trimmed().toString() : QString();
}

std::optional<Refusal> crowdedElement(const QString &text)
{
    return crowdedElement(reinterpret_cast<const char16_t *>(text.utf16()), text.size());
}

// The scan over the document as the XML reader decodes it: in the encoding
// its byte order mark or its zeros show (UTF-8 when nothing does, scanned
// as bytes), and again in the one its declaration names when that is
// another: the reader switches to it, and in a stateful encoding such as
// UTF-7 even "<" can hide from a scan of the bytes.
std::optional<Refusal> crowdedElement(const QByteArray &bytes)
{
    const QStringConverter::Encoding detected =
        QStringConverter::encodingForData(bytes, u'<').value_or(QStringConverter::Utf8);
    std::optional<Refusal> found;
    if (detected == QStringConverter::Utf8)
        found = crowdedElement(reinterpret_cast<const unsigned char *>(bytes.constData()), bytes.size());
    else
        found = crowdedElement(QString(QStringDecoder(detected).decode(bytes)));
    if (found)
        return found;
    const QString head = QStringDecoder(detected).decode(bytes.first(std::min<qsizetype>(bytes.size(), 512)));
    const QString declared = declaredEncoding(head);
    if (declared.isEmpty() || QStringConverter::encodingForName(declared.toLatin1().constData()) == detected)
        return std::nullopt;
    QStringDecoder decoder(declared.toLatin1().constData());
    // An encoding the reader does not know, it refuses before any element.
    if (!decoder.isValid())
        return std::nullopt;
    return crowdedElement(QString(decoder.decode(bytes)));
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

    // The nesting is in the elements; indentation only guides the eye, and
    // past some depth it would only push the text off the screen and make
    // a long chain of subtasks take space with the square of its length.
    constexpr qsizetype deepestIndent = 32;
    const QString spaces((deepestIndent + 2) * 2, QLatin1Char(' '));
    const auto indent = [&](qsizetype depth) {
        out.append(QStringView(spaces).first((std::min(depth, deepestIndent) + 2) * 2));
    };
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

QString Refusal::text() const
{
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    const QString entryText = entry > 0 ? QStringLiteral("entry %1").arg(entry) : QString();
    QString what;
    switch (reason) {
    case Reason::notAnOutline:
        return QStringLiteral("it is not an OPML outline with at least one entry, or it is damaged");
    case Reason::tooDeep:
        what = QStringLiteral("entries nested deeper than %1").arg(english.toString(maxDepth));
        break;
    case Reason::tooManyEntries:
        what = QStringLiteral("more than %1 entries").arg(english.toString(maxEntries));
        break;
    case Reason::tooManyAttributes:
        what = QStringLiteral("%1 more than %2 attributes")
                   .arg(entry > 0 ? entryText + QStringLiteral(" has") : QStringLiteral("an element has"))
                   .arg(english.toString(maxAttributes));
        break;
    case Reason::valueTooLong:
        what = QStringLiteral("%1 longer than %2 characters")
                   .arg(entry > 0 ? entryText + QStringLiteral(" has a value") : QStringLiteral("a value"))
                   .arg(english.toString(maxValueLength));
        break;
    }
    return QStringLiteral("line %1: %2").arg(line).arg(what);
}

Reading read(const QByteArray &bytes, const LocalCalendar &calendar)
{
    // The direct reader gives up at an element's attribute past the limit,
    // so a file it reads whole holds no crowded element; any other is
    // scanned for one before its verdict or the full reader's.
    OutlineBuilder builder(calendar);
    const OPMLDirectReader::Result direct = OPMLDirectReader::read(bytes, builder);
    if (direct == OPMLDirectReader::Result::read)
        return builder.result();
    if (std::optional<Refusal> crowded = crowdedElement(bytes))
        return *crowded;
    if (direct == OPMLDirectReader::Result::refused)
        return builder.result();
    // The full reader has the last word on everything the direct one was
    // not sure of: other encodings, declarations, CDATA, broken markup.
    return readXml(bytes, calendar);
}

std::optional<Document> decode(const QByteArray &bytes, const LocalCalendar &calendar)
{
    Reading reading = read(bytes, calendar);
    if (Document *document = std::get_if<Document>(&reading))
        return std::move(*document);
    return std::nullopt;
}

Reading readWithXmlReader(const QByteArray &bytes, const LocalCalendar &calendar)
{
    if (std::optional<Refusal> crowded = crowdedElement(bytes))
        return *crowded;
    return readXml(bytes, calendar);
}

std::optional<Document> decodeWithXmlReader(const QByteArray &bytes, const LocalCalendar &calendar)
{
    Reading reading = readWithXmlReader(bytes, calendar);
    if (Document *document = std::get_if<Document>(&reading))
        return std::move(*document);
    return std::nullopt;
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
