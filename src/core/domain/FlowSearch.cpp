#include "FlowSearch.h"

#include "TaskFlow.h"
#include "TextFolding.h"
#include "TextRules.h"

#include <QHash>
#include <QLocale>
#include <QSet>

#include <algorithm>
#include <bit>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace fenrow::FlowSearch {

namespace {

// The query folded once, with the locale it was folded in, so that the
// per-node work is folding the node's text only.
struct FoldedQuery {
    QLocale locale;
    QString text;

    FoldedQuery(const QString &query, QLocale foldingLocale)
        : locale(std::move(foldingLocale)), text(TextFolding::fold(query, locale))
    {
    }

    bool isIn(const QString &haystack) const { return TextFolding::contains(haystack, text, locale); }

    // Where the folded query first occurs in folded text at or after
    // `from`, or -1. Boyer-Moore skips at most the query's length, so for
    // the first letters typed it crawls, and it stops at every repeated
    // letter: instead, eight positions at a time are tested for the
    // query's first and last character together, which a common word
    // like "the" passes rarely, and only those are compared whole.
    qsizetype indexIn(QStringView haystack, qsizetype from) const
    {
        const qsizetype n = text.size();
        if (n == 1)
            return haystack.indexOf(text.front(), from);
        const qsizetype size = haystack.size();
        qsizetype at = from;
#ifdef __SSE2__
        const char16_t *chars = haystack.utf16();
        const __m128i first = _mm_set1_epi16(short(text.front().unicode()));
        const __m128i last = _mm_set1_epi16(short(text.back().unicode()));
        const QStringView middle = QStringView(text).sliced(1, n - 2);
        for (; at + n - 1 + 8 <= size; at += 8) {
            const __m128i starts = _mm_loadu_si128(reinterpret_cast<const __m128i *>(chars + at));
            const __m128i ends = _mm_loadu_si128(reinterpret_cast<const __m128i *>(chars + at + n - 1));
            // Two bits per position.
            unsigned mask =
                unsigned(_mm_movemask_epi8(_mm_and_si128(_mm_cmpeq_epi16(starts, first), _mm_cmpeq_epi16(ends, last))));
            while (mask) {
                const qsizetype candidate = at + std::countr_zero(mask) / 2;
                if (QStringView(chars + candidate + 1, n - 2) == middle)
                    return candidate;
                mask &= mask - 1; // both bits of the position
                mask &= mask - 1;
            }
        }
#endif
        // The rest, or all of it without SSE2.
        for (; at + n <= size; ++at) {
            if (haystack.sliced(at, n) == QStringView(text))
                return at;
        }
        return -1;
    }
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

// Folding is nearly all of a search's cost, and the palette searches on
// every keystroke: each flow's titles and notes are kept folded between
// searches, joined into one text each in `order` order, so that a query
// is one scan per flow. A flow's texts are rebuilt when its nodes, their
// order or their text changed, which the flow's nodes version tells
// without touching a node: a search then reads only the joined texts and
// the rows of its hits. UI thread only.
class FlowTexts {
public:
    // Between two nodes' texts; a query holding it is searched node by node.
    static constexpr QChar separator = QChar(u'\0');

    // What a row needs lies here, in `order` order, so that the rows of a
    // common query are built from neighbouring memory.
    struct Node {
        QUuid id;
        QString title;
        NodeStatus status = NodeStatus::pending;
        // ASCII folds character for character, so a position in the
        // folded notes is the same position in the notes.
        bool notesAreAscii = false;
        QString notes;
        const FlowNode *node = nullptr;
    };

    bool isCurrent(const TaskFlow &flow) const { return flow.nodesVersion() == m_version; }

    // Texts that did not change are taken from `previous` rather than
    // folded again, so an edit costs one node's folding.
    void rebuild(const TaskFlow &flow, const QLocale &locale, const FlowTexts *previous)
    {
        QHash<const FlowNode *, qsizetype> previousAt;
        if (previous) {
            previousAt.reserve(previous->size());
            for (qsizetype k = 0; k < previous->size(); ++k)
                previousAt.insert(previous->m_nodes.at(k).node, k);
        }
        std::vector<const FlowNode *> sorted(flow.items().begin(), flow.items().end());
        std::stable_sort(sorted.begin(), sorted.end(),
                         [](const FlowNode *a, const FlowNode *b) { return a->order < b->order; });
        m_version = flow.nodesVersion();

        QString titles;
        QString notes;
        QList<qsizetype> titleEnds;
        QList<qsizetype> noteEnds;
        titleEnds.reserve(qsizetype(sorted.size()));
        noteEnds.reserve(qsizetype(sorted.size()));
        for (const FlowNode *node : sorted) {
            const auto before = previous ? previousAt.constFind(node) : previousAt.constEnd();
            const Node *old = before != previousAt.constEnd() ? &previous->m_nodes.at(*before) : nullptr;
            if (old && sameString(old->title, node->title))
                titles += previous->foldedTitle(*before);
            else
                titles += TextFolding::fold(node->title, locale);
            titleEnds.append(titles.size());
            titles += separator;
            if (node->notes.isEmpty()) {
                // Nothing to fold.
            } else if (old && sameString(old->notes, node->notes)) {
                notes += previous->foldedNotes(*before);
            } else {
                notes += TextFolding::fold(node->notes, locale);
            }
            noteEnds.append(notes.size());
            notes += separator;
        }
        m_titles = std::move(titles);
        m_notes = std::move(notes);
        m_titleEnds = std::move(titleEnds);
        m_noteEnds = std::move(noteEnds);

        m_nodes.clear();
        m_nodes.reserve(qsizetype(sorted.size()));
        for (const FlowNode *node : sorted)
            m_nodes.append({node->id, node->title, node->status(), QtPrivate::isAscii(QStringView(node->notes)),
                            node->notes, node});
    }

    qsizetype size() const { return m_nodes.size(); }
    // The node at position `k` of `order` order, as it was when the texts
    // were built, which is as it is while they are current.
    const Node &node(qsizetype k) const { return m_nodes.at(k); }
    QStringView foldedTitle(qsizetype k) const { return slice(m_titles, m_titleEnds, k); }
    QStringView foldedNotes(qsizetype k) const { return slice(m_notes, m_noteEnds, k); }

    // Calls `onTitle(k)` for each node, in `order`, whose folded title
    // holds the query, and `onNotes(k, at)` for each other node whose
    // folded notes hold it first at `at`. The notes of a node whose title
    // matched are never scanned.
    template <typename OnTitle, typename OnNotes>
    void forEachHit(const FoldedQuery &query, OnTitle &&onTitle, OnNotes &&onNotes) const
    {
        qsizetype next = 0; // the first node whose notes are still to scan
        qsizetype from = 0;
        qsizetype k = 0;
        for (;;) {
            const qsizetype at = query.indexIn(m_titles, from);
            if (at < 0)
                break;
            // The query holds no separator, so a hit lies within one node.
            while (m_titleEnds.at(k) < at)
                ++k;
            notesHits(query, next, k, onNotes);
            onTitle(k);
            next = k + 1;
            from = m_titleEnds.at(k) + 1;
            ++k;
        }
        notesHits(query, next, size(), onNotes);
    }

private:
    static bool sameString(const QString &kept, const QString &current)
    {
        return kept.constData() == current.constData() && kept.size() == current.size();
    }

    static QStringView slice(const QString &joined, const QList<qsizetype> &ends, qsizetype k)
    {
        const qsizetype start = k == 0 ? 0 : ends.at(k - 1) + 1;
        return QStringView(joined).mid(start, ends.at(k) - start);
    }

    qsizetype notesStart(qsizetype k) const { return k == 0 ? 0 : m_noteEnds.at(k - 1) + 1; }

    // The notes of the nodes from `first` up to `last`, in one scan.
    template <typename OnNotes>
    void notesHits(const FoldedQuery &query, qsizetype first, qsizetype last, OnNotes &onNotes) const
    {
        if (first >= last)
            return;
        const QStringView notes = QStringView(m_notes).first(m_noteEnds.at(last - 1));
        qsizetype from = notesStart(first);
        qsizetype k = first;
        for (;;) {
            const qsizetype at = query.indexIn(notes, from);
            if (at < 0)
                return;
            while (m_noteEnds.at(k) < at)
                ++k;
            onNotes(k, at - notesStart(k));
            from = m_noteEnds.at(k) + 1;
            ++k;
        }
    }

    quint64 m_version = 0;
    QList<Node> m_nodes; // in `order` order
    QString m_titles;
    QString m_notes;
    QList<qsizetype> m_titleEnds;
    QList<qsizetype> m_noteEnds;
};

class FoldedFlows {
public:
    static FoldedFlows &shared()
    {
        static FoldedFlows flows;
        return flows;
    }

    void prepare(const QLocale &locale, const QList<const TaskFlow *> &flows)
    {
        // A new language folds differently.
        if (locale != m_locale) {
            m_texts.clear();
            m_locale = locale;
        }
        // Texts of deleted flows go once they outnumber the live ones.
        if (m_texts.size() > 2 * flows.size() + 16) {
            const QSet<const TaskFlow *> live(flows.begin(), flows.end());
            m_texts.removeIf([&](const auto &entry) { return !live.contains(entry.key()); });
        }
    }

    const FlowTexts &of(const TaskFlow &flow)
    {
        const auto kept = m_texts.find(&flow);
        if (kept != m_texts.end()) {
            if (!kept->isCurrent(flow)) {
                FlowTexts rebuilt;
                rebuilt.rebuild(flow, m_locale, &*kept);
                *kept = std::move(rebuilt);
            }
            return *kept;
        }
        FlowTexts &texts = m_texts[&flow];
        texts.rebuild(flow, m_locale, nullptr);
        return texts;
    }

private:
    QLocale m_locale;
    // By address: a new flow at a reused address has nodes of its own,
    // which the check of each node tells apart.
    QHash<const TaskFlow *, FlowTexts> m_texts;
};

// The line of `notes` from `from` to `to`, trimmed: one new string, or
// the notes themselves when the line is all of them.
QString lineOf(const QString &notes, qsizetype from, qsizetype to)
{
    const QStringView line = QStringView(notes).sliced(from, to - from).trimmed();
    return line.size() == notes.size() ? notes : line.toString();
}

// The first line break in `text` at or after `from`, or its size. Notes
// are mostly long lines, so eight characters are tested at a time for
// anything that may be one (a control character up to CR, NEL, the
// Unicode separators), and only those are looked at closely.
qsizetype nextLineBreak(QStringView text, qsizetype from)
{
    const char16_t *chars = text.utf16();
    const qsizetype size = text.size();
#ifdef __SSE2__
    const __m128i cr = _mm_set1_epi16(0x0d);
    const __m128i nel = _mm_set1_epi16(short(0x0085));
    const __m128i lineSeparator = _mm_set1_epi16(short(0x2028));
    const __m128i paragraphSeparator = _mm_set1_epi16(short(0x2029));
    for (; from + 8 <= size; from += 8) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i *>(chars + from));
        const __m128i maybe = _mm_or_si128(
            _mm_or_si128(_mm_cmpeq_epi16(_mm_subs_epu16(block, cr), _mm_setzero_si128()), _mm_cmpeq_epi16(block, nel)),
            _mm_or_si128(_mm_cmpeq_epi16(block, lineSeparator), _mm_cmpeq_epi16(block, paragraphSeparator)));
        if (_mm_movemask_epi8(maybe) != 0)
            break;
    }
#endif
    for (; from < size; ++from) {
        if (isLineBreak(chars[from]))
            return from;
    }
    return size;
}

// The line of a node's notes that holds a hit, found in the folded notes
// when the hit is, while they are at hand: folding keeps line breaks where
// they were, so the line has the same number in both.
struct NotesLine {
    qsizetype number = 0;
    // Where it lies in the folded notes, trimmed; for ASCII notes, which
    // fold character for character, where it lies in the notes too.
    qsizetype from = 0;
    qsizetype to = 0;
    // The query holds a line break, and never matches within one line.
    bool acrossLines = false;
};

NotesLine lineAt(QStringView foldedNotes, qsizetype at, const FoldedQuery &query)
{
    NotesLine line;
    const qsizetype end = nextLineBreak(foldedNotes, at);
    line.acrossLines = end < at + query.text.size();
    qsizetype from = 0;
    for (qsizetype next = nextLineBreak(foldedNotes, 0); next < at; next = nextLineBreak(foldedNotes, from)) {
        from = next + 1;
        ++line.number;
    }
    const QStringView trimmed = foldedNotes.sliced(from, end - from).trimmed();
    line.from = trimmed.data() - foldedNotes.data();
    line.to = line.from + trimmed.size();
    return line;
}

std::optional<QString> snippetOf(const QString &notes, bool ascii, const NotesLine &line, const FoldedQuery &query)
{
    if (line.acrossLines)
        return snippet(notes, query);
    if (ascii) {
        if (line.to - line.from == notes.size())
            return notes;
        return QString(notes.constData() + line.from, line.to - line.from);
    }
    qsizetype from = 0;
    for (qsizetype number = 0; number < line.number; ++number)
        from = std::min(nextLineBreak(notes, from) + 1, notes.size());
    return lineOf(notes, from, nextLineBreak(notes, from));
}

// The node-by-node search, for a list of nodes of no one flow.
QList<FlowSearchMatch> searchEach(const FoldedQuery &query, const QList<const FlowNode *> &nodes)
{
    QList<FlowSearchMatch> matches;
    for (const FlowNode *node : nodes) {
        // The title first: it is short, and a hit there spares the notes.
        if (query.isIn(node->title)) {
            matches.append({node->id, node->title, node->status(), std::nullopt, std::nullopt});
            continue;
        }
        if (TextRules::trimmed(node->notes).isEmpty())
            continue;
        if (std::optional<QString> line = snippet(node->notes, query))
            matches.append({node->id, node->title, node->status(), std::move(line), std::nullopt});
    }
    return matches;
}

// The strings a row will touch: the title, whose count of owners (just
// before its text) the row's copy raises, so for writing, and for a
// snippet the notes where the hit is.
void prefetchTexts(const FlowTexts::Node &node, qsizetype notesAt)
{
    __builtin_prefetch(node.title.constData(), 1);
    if (notesAt >= 0)
        __builtin_prefetch(node.notes.constData() + (node.notesAreAscii ? notesAt : 0));
}

// A flow's matches in `order`: titles first, then the notes of the nodes
// whose title did not match, merged by position.
QList<FlowSearchMatch> searchFlow(const FoldedQuery &query, const TaskFlow &flow, const std::optional<QUuid> &flowID)
{
    // A query of marks alone folds to nothing, and nothing matches it.
    if (query.text.isEmpty())
        return {};
    if (query.text.contains(FlowTexts::separator)) {
        QList<FlowSearchMatch> matches = searchEach(query, flow.orderedItems());
        for (FlowSearchMatch &match : matches)
            match.flowID = flowID;
        return matches;
    }
    const FlowTexts &texts = FoldedFlows::shared().of(flow);
    // Hits first, rows after: the list of rows is then allocated once.
    struct Hit {
        qsizetype k;
        qsizetype notesAt; // -1 for a title hit
        NotesLine line;
    };
    static thread_local std::vector<Hit> hits;
    hits.clear();
    texts.forEachHit(
        query,
        [&](qsizetype k) {
            hits.push_back({k, -1, {}});
        },
        [&](qsizetype k, qsizetype at) {
            hits.push_back({k, at, lineAt(texts.foldedNotes(k), at, query)});
        });
    QList<FlowSearchMatch> matches;
    matches.reserve(qsizetype(hits.size()));
    // Ask for the next rows' strings before they are needed, so that a
    // common query does not wait on memory once per row.
    constexpr std::size_t ahead = 16;
    for (std::size_t i = 0; i < std::min(ahead, hits.size()); ++i)
        prefetchTexts(texts.node(hits[i].k), hits[i].notesAt);
    for (std::size_t i = 0; i < hits.size(); ++i) {
        if (i + ahead < hits.size())
            prefetchTexts(texts.node(hits[i + ahead].k), hits[i + ahead].notesAt);
        const Hit &hit = hits[i];
        const FlowTexts::Node &node = texts.node(hit.k);
        if (hit.notesAt < 0) {
            matches.append({node.id, node.title, node.status, std::nullopt, flowID});
            continue;
        }
        std::optional<QString> line = snippetOf(node.notes, node.notesAreAscii, hit.line, query);
        if (line)
            matches.append({node.id, node.title, node.status, std::move(line), flowID});
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
    return searchEach(FoldedQuery(trimmed, TextFolding::interfaceLocale()), nodes);
}

QList<FlowSearchGroup> searchGroups(const QString &query, const TaskFlow *currentFlow,
                                    const QList<const TaskFlow *> &flows)
{
    const QString trimmed = TextRules::trimmed(query);
    if (trimmed.isEmpty())
        return {};
    const FoldedQuery folded(trimmed, TextFolding::interfaceLocale());
    FoldedFlows::shared().prepare(folded.locale, flows);

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
