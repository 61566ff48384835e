#include "FlowMarkdown.h"

#include "SubtaskTree.h"
#include "domain/DependencyEdge.h"
#include "domain/FlowNode.h"
#include "domain/FlowProgress.h"

#include <QHash>

#include <algorithm>
#include <vector>

namespace fenrow::FlowMarkdown {

QString escape(const QString &text)
{
    QString line = text.simplified();
    line.replace(QLatin1Char('\\'), QLatin1StringView("\\\\"));
    for (const char *special : {"`", "*", "_", "[", "]"})
        line.replace(QLatin1StringView(special), QLatin1StringView("\\") + QLatin1StringView(special));
    return line;
}

QString render(const QString &title, const QList<const FlowNode *> &nodes, const QList<const DependencyEdge *> &edges,
               const FlowMarkdownStrings &strings)
{
    QStringList lines{QStringLiteral("# ") + escape(title)};
    if (nodes.isEmpty())
        return lines.first() + QLatin1Char('\n');
    const FlowProgress progress = FlowProgress::of(nodes);
    lines << QString() << strings.doneCountFormat.arg(progress.doneCount).arg(progress.totalCount) << QString();

    QHash<const FlowNode *, qsizetype> ranks;
    ranks.reserve(nodes.size());
    for (qsizetype rank = 0; rank < nodes.size(); ++rank)
        ranks.insert(nodes[rank], rank);
    QList<std::pair<qsizetype, qsizetype>> treePairs;
    std::vector<std::vector<qsizetype>> prerequisites(std::size_t(nodes.size()));
    for (const DependencyEdge *edge : edges) {
        const auto from = ranks.constFind(edge->fromItem());
        const auto to = ranks.constFind(edge->toItem());
        if (from == ranks.cend() || to == ranks.cend())
            continue;
        if (edge->isSubtask())
            treePairs.append({*from, *to});
        else if (*from != *to)
            prerequisites[std::size_t(*to)].push_back(*from);
    }
    for (std::vector<qsizetype> &list : prerequisites)
        std::stable_sort(list.begin(), list.end());
    const SubtaskTree tree(nodes.size(), treePairs);

    // Markdown nests by indentation alone, which for a long chain of
    // subtasks would grow with the square of its length. Deeper than 16
    // levels, tasks are listed at the sixteenth in the order of the walk,
    // so a long chain ends as a plain list.
    constexpr qsizetype deepestIndent = 16;
    const auto enter = [&](qsizetype rank, qsizetype depth) {
        const FlowNode &node = *nodes[rank];
        const QString indent(std::min(depth, deepestIndent) * 2, QLatin1Char(' '));
        const QString continuation = indent + QStringLiteral("  ");

        QString task = indent + (node.isDone ? QStringLiteral("- [x] ") : QStringLiteral("- [ ] "));
        task += escape(node.title);
        if (node.status() == NodeStatus::inProgress)
            task += QStringLiteral("  _(") + strings.inProgress + QStringLiteral(")_");
        else if (node.status() == NodeStatus::paused)
            task += QStringLiteral("  _(") + strings.paused + QStringLiteral(")_");
        lines << task;

        if (const std::vector<qsizetype> &before = prerequisites[std::size_t(rank)]; !before.empty()) {
            QStringList titles;
            for (qsizetype source : before)
                titles << escape(nodes[source]->title);
            lines << continuation + QStringLiteral("_(") + strings.afterFormat.arg(titles.join(QStringLiteral(", ")))
                    + QStringLiteral(")_");
        }

        QString notes = node.notes;
        notes.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
        notes = notes.trimmed();
        if (!notes.isEmpty()) {
            // Inside a quote only backslashes could change the text; lines
            // stay as they are, empty ones as a bare quote mark.
            for (QString &line : notes.split(QLatin1Char('\n'))) {
                line.replace(QLatin1Char('\\'), QLatin1StringView("\\\\"));
                lines << continuation + QStringLiteral("> ") + line;
            }
        }

        for (const ChecklistEntry &entry : node.checklist()) {
            lines << continuation + (entry.isDone ? QStringLiteral("- [x] ") : QStringLiteral("- [ ] "))
                    + escape(entry.title);
        }
    };
    tree.walk(enter, [](qsizetype, qsizetype) {});
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

} // namespace fenrow::FlowMarkdown
