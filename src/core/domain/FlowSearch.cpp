#include "FlowSearch.h"

#include "TaskFlow.h"
#include "TextFolding.h"
#include "TextRules.h"

#include <QLocale>

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

QList<FlowSearchMatch> search(const FoldedQuery &query, const QList<const FlowNode *> &nodes,
                              const std::optional<QUuid> &flowID)
{
    QList<FlowSearchMatch> matches;
    for (const FlowNode *node : nodes) {
        // The title first: it is short, and a hit there spares the notes.
        if (query.isIn(node->title)) {
            matches.append({node->id, node->title, node->status(), std::nullopt, flowID});
            continue;
        }
        if (!node->hasNotes())
            continue;
        if (std::optional<QString> line = snippet(node->notes, query))
            matches.append({node->id, node->title, node->status(), std::move(line), flowID});
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
    return search(FoldedQuery(trimmed, TextFolding::interfaceLocale()), nodes, std::nullopt);
}

QList<FlowSearchGroup> searchGroups(const QString &query, const TaskFlow *currentFlow,
                                    const QList<const TaskFlow *> &flows)
{
    const QString trimmed = TextRules::trimmed(query);
    if (trimmed.isEmpty())
        return {};
    const FoldedQuery folded(trimmed, TextFolding::interfaceLocale());

    QList<FlowSearchGroup> groups;
    if (currentFlow) {
        QList<FlowSearchMatch> matches = search(folded, currentFlow->orderedItems(), std::nullopt);
        if (!matches.isEmpty())
            groups.append({currentFlow->id, currentFlow->name, std::move(matches)});
    }
    for (const TaskFlow *flow : flows) {
        if (currentFlow && flow->id == currentFlow->id)
            continue;
        QList<FlowSearchMatch> matches = search(folded, flow->orderedItems(), flow->id);
        if (!matches.isEmpty())
            groups.append({flow->id, flow->name, std::move(matches)});
    }
    return groups;
}

} // namespace fenrow::FlowSearch
