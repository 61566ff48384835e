#include "TaskReference.h"

#include "PlainText.h"
#include "TextTable.h"

#include "domain/TaskFlow.h"

#include <QUuid>

namespace fenrow {

namespace {

// Long lists help nobody pick; the rest are counted.
constexpr qsizetype listedCandidates = 10;

} // namespace

TaskReference TaskReference::resolve(const QList<const TaskFlow *> &flows, const QString &text)
{
    TaskReference reference;
    reference.m_text = text;
    const QString wanted = text.trimmed();

    QList<const FlowNode *> all;
    for (const TaskFlow *flow : flows)
        all += flow->orderedItems();

    const QUuid id = QUuid::fromString(wanted);
    if (!id.isNull()) {
        for (const FlowNode *node : std::as_const(all)) {
            if (node->id == id) {
                reference.m_node = node;
                return reference;
            }
        }
    }

    QList<const FlowNode *> exact;
    QList<const FlowNode *> prefixed;
    QList<const FlowNode *> containing;
    if (!wanted.isEmpty()) {
        for (const FlowNode *node : std::as_const(all)) {
            if (node->title.compare(wanted, Qt::CaseInsensitive) == 0)
                exact.append(node);
            else if (node->title.startsWith(wanted, Qt::CaseInsensitive))
                prefixed.append(node);
            else if (node->title.contains(wanted, Qt::CaseInsensitive))
                containing.append(node);
        }
    }
    const QList<const FlowNode *> &matches = exact.isEmpty() ? prefixed : exact;
    if (matches.size() == 1) {
        reference.m_node = matches.first();
    } else if (matches.size() > 1) {
        reference.m_ambiguous = true;
        reference.m_candidates = matches;
    } else {
        // A word from the middle of a title is a better hint than everything.
        reference.m_containing = !containing.isEmpty();
        reference.m_candidates = reference.m_containing ? containing : all;
    }
    return reference;
}

QString TaskReference::problem() const
{
    if (m_node)
        return {};

    QString message;
    if (m_ambiguous)
        message = QStringLiteral("%1 matches more than one task:\n").arg(PlainText::quoted(m_text));
    else if (m_candidates.isEmpty())
        return QStringLiteral("no task matches %1; there are no tasks yet").arg(PlainText::quoted(m_text));
    else if (m_containing)
        message = QStringLiteral("no task is called %1 or begins with it; these contain it:\n")
                      .arg(PlainText::quoted(m_text));
    else
        message = QStringLiteral("no task matches %1; the tasks are:\n").arg(PlainText::quoted(m_text));

    TextTable table({}, QStringLiteral("  "));
    for (const FlowNode *node : m_candidates.first(std::min(m_candidates.size(), listedCandidates)))
        table.addRow({QStringLiteral("%1 (%2)").arg(node->title, node->flow()->name), PlainText::id(node->id)});
    QString listing;
    QTextStream stream(&listing);
    table.print(stream);
    stream.flush();
    message += listing;
    if (m_candidates.size() > listedCandidates)
        message += QStringLiteral("  … and %1 more\n").arg(m_candidates.size() - listedCandidates);
    message += m_ambiguous ? QStringLiteral("Name it by more of its title, by its id, or narrow the search with --flow.")
                           : QStringLiteral("Name a task by its id, its title, or the start of its title.");
    return message;
}

} // namespace fenrow
