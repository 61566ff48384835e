#include "FlowSearch.h"

#include "TaskFlow.h"
#include "TextFolding.h"
#include "TextRules.h"

#include <QHash>
#include <QLocale>
#include <QStringMatcher>

namespace fenrow::FlowSearch {

namespace {

// The query folded once, with the locale it was folded in, so that the
// per-node work is folding the node's text only.
struct FoldedQuery {
    QLocale locale;
    QString text;

    FoldedQuery(const QString &query, QLocale foldingLocale)
        : locale(std::move(foldingLocale)), text(TextFolding::fold(query, locale)), matcher(text)
    {
    }

    bool isIn(const QString &haystack) const { return TextFolding::contains(haystack, text, locale); }
    // For text that is folded already; the matcher's tables are built once.
    bool isInFolded(const QString &folded) const { return !text.isEmpty() && matcher.indexIn(folded) >= 0; }

    QStringMatcher matcher;
};

bool isLineBreak(QChar c)
{
    switch (c.unicode()) {
    case u'\n': case u'\v': case u'\f': case u'\r': case 0x0085: case 0x2028: case 0x2029:
        return true;
    default:
        return false;
    }
}

std::optional<QString> snippet(const QString &notes, const FoldedQuery &query)
{
    qsizetype start = 0;
    while (start <= notes.size()) {
        qsizetype end = start;
        while (end < notes.size() && !isLineBreak(notes.at(end)))
            ++end;
        const QString line = notes.mid(start, end - start);
        if (query.isIn(line))
            return TextRules::trimmed(line);
        start = end + 1;
    }
    return std::nullopt;
}

// Folded titles and whole notes, kept between searches: folding is nearly
// all of a search's cost, and the palette searches on every keystroke.
// An entry is used only while the node's text is the very string it was
// folded from. The entry holds a reference to that string, so its buffer
// cannot be freed and reused: a node whose text changed has a different
// buffer, and a pointer comparison is a sound test. UI thread only.
class FoldedTexts {
public:
    struct Entry {
        QString title;
        QString foldedTitle;
        QString notes;
        QString foldedNotes;
        bool hasTitle = false;
        bool hasNotes = false;
    };

    static FoldedTexts &shared()
    {
        static FoldedTexts texts;
        return texts;
    }

    void prepare(const QLocale &locale, qsizetype nodeCount)
    {
        // A new language folds differently; entries of deleted nodes are
        // dropped when they outnumber the live ones.
        if (locale != m_locale || m_entries.size() > 2 * nodeCount + 1024) {
            m_entries.clear();
            m_locale = locale;
        }
    }

    const Entry &of(const FlowNode &node)
    {
        Entry &entry = m_entries[&node];
        if (!entry.hasTitle || !sameString(entry.title, node.title)) {
            entry.title = node.title;
            entry.foldedTitle = TextFolding::fold(node.title, m_locale);
            entry.hasTitle = true;
        }
        if (!entry.hasNotes || !sameString(entry.notes, node.notes)) {
            entry.notes = node.notes;
            entry.foldedNotes = TextFolding::fold(node.notes, m_locale);
            entry.hasNotes = true;
        }
        return entry;
    }

private:
    static bool sameString(const QString &kept, const QString &current)
    {
        return kept.constData() == current.constData() && kept.size() == current.size();
    }

    QLocale m_locale;
    // By address: a new node at a reused address has strings of its own.
    QHash<const FlowNode *, Entry> m_entries;
};

// Folding keeps line breaks where they were, so the first folded line that
// holds the query has the same number as the line to show.
std::optional<QString> snippetFromFolded(const QString &notes, const QString &foldedNotes, const FoldedQuery &query)
{
    qsizetype lineNumber = 0;
    qsizetype start = 0;
    for (;;) {
        qsizetype end = start;
        while (end < foldedNotes.size() && !isLineBreak(foldedNotes.at(end)))
            ++end;
        if (query.matcher.indexIn(QStringView(foldedNotes).mid(start, end - start)) >= 0)
            break;
        if (end >= foldedNotes.size())
            return snippet(notes, query);
        start = end + 1;
        ++lineNumber;
    }
    qsizetype from = 0;
    for (qsizetype line = 0; line < lineNumber; ++line) {
        while (from < notes.size() && !isLineBreak(notes.at(from)))
            ++from;
        ++from;
    }
    qsizetype to = from;
    while (to < notes.size() && !isLineBreak(notes.at(to)))
        ++to;
    return TextRules::trimmed(notes.mid(from, to - from));
}

template <typename Nodes>
QList<FlowSearchMatch> search(const FoldedQuery &query, const Nodes &nodes, const std::optional<QUuid> &flowID)
{
    QList<FlowSearchMatch> matches;
    if (query.text.isEmpty())
        return matches;
    FoldedTexts &texts = FoldedTexts::shared();
    for (const FlowNode *node : nodes) {
        const FoldedTexts::Entry &folded = texts.of(*node);
        // The title first: it is short, and a hit there spares the notes.
        if (query.isInFolded(folded.foldedTitle)) {
            matches.append({node->id, node->title, node->status(), std::nullopt, flowID});
            continue;
        }
        // Only notes that contain the query somewhere are split into lines.
        if (!query.isInFolded(folded.foldedNotes))
            continue;
        if (std::optional<QString> line = snippetFromFolded(node->notes, folded.foldedNotes, query))
            matches.append({node->id, node->title, node->status(), std::move(line), flowID});
    }
    return matches;
}

// A flow's matches in `order`: the few matches are sorted, rather than all
// of the flow's nodes before searching.
QList<FlowSearchMatch> searchFlow(const FoldedQuery &query, const TaskFlow &flow, const std::optional<QUuid> &flowID)
{
    QList<FlowSearchMatch> matches = search(query, flow.items(), flowID);
    if (matches.size() > 1) {
        QHash<QUuid, qint64> order;
        for (const FlowSearchMatch &match : std::as_const(matches))
            order.insert(match.id, 0);
        for (const FlowNode *node : flow.items()) {
            if (const auto found = order.find(node->id); found != order.end())
                *found = node->order;
        }
        std::stable_sort(matches.begin(), matches.end(), [&](const FlowSearchMatch &a, const FlowSearchMatch &b) {
            return order.value(a.id) < order.value(b.id);
        });
    }
    return matches;
}

} // namespace

bool foldedContains(const QString &text, const QString &query)
{
    return FoldedQuery(query, TextFolding::interfaceLocale()).isIn(text);
}

std::optional<QString> notesSnippet(const QString &notes, const QString &query)
{
    return snippet(notes, FoldedQuery(query, TextFolding::interfaceLocale()));
}

QList<FlowSearchMatch> searchNodes(const QString &query, const QList<const FlowNode *> &nodes)
{
    const QString trimmed = TextRules::trimmed(query);
    if (trimmed.isEmpty())
        return {};
    const FoldedQuery folded(trimmed, TextFolding::interfaceLocale());
    FoldedTexts::shared().prepare(folded.locale, nodes.size());
    return search(folded, nodes, std::nullopt);
}

QList<FlowSearchGroup> searchGroups(const QString &query, const TaskFlow *currentFlow,
                                    const QList<const TaskFlow *> &flows)
{
    const QString trimmed = TextRules::trimmed(query);
    if (trimmed.isEmpty())
        return {};
    const FoldedQuery folded(trimmed, TextFolding::interfaceLocale());
    qsizetype nodeCount = 0;
    for (const TaskFlow *flow : flows)
        nodeCount += qsizetype(flow->items().size());
    FoldedTexts::shared().prepare(folded.locale, nodeCount);

    QList<FlowSearchGroup> groups;
    if (currentFlow) {
        QList<FlowSearchMatch> matches = searchFlow(folded, *currentFlow, std::nullopt);
        if (!matches.isEmpty())
            groups.append({currentFlow->id, currentFlow->name, std::move(matches)});
    }
    for (const TaskFlow *flow : flows) {
        if (currentFlow && flow->id == currentFlow->id)
            continue;
        QList<FlowSearchMatch> matches = searchFlow(folded, *flow, flow->id);
        if (!matches.isEmpty())
            groups.append({flow->id, flow->name, std::move(matches)});
    }
    return groups;
}

} // namespace fenrow::FlowSearch
