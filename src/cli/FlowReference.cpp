#include "FlowReference.h"

#include "PlainText.h"
#include "TextTable.h"

#include "domain/TaskFlow.h"

#include <QUuid>

namespace fenrow {

namespace {

// Long lists help nobody pick; the rest are counted.
constexpr qsizetype listedCandidates = 10;

} // namespace

FlowReference FlowReference::resolve(const QList<const TaskFlow *> &flows, const QString &text)
{
    FlowReference reference;
    reference.m_text = text;
    const QString wanted = text.trimmed();

    const QUuid id = QUuid::fromString(wanted);
    if (!id.isNull()) {
        for (const TaskFlow *flow : flows) {
            if (flow->id == id) {
                reference.m_flow = flow;
                return reference;
            }
        }
    }

    QList<const TaskFlow *> exact;
    QList<const TaskFlow *> prefixed;
    if (!wanted.isEmpty()) {
        for (const TaskFlow *flow : flows) {
            if (flow->name.compare(wanted, Qt::CaseInsensitive) == 0)
                exact.append(flow);
            else if (flow->name.startsWith(wanted, Qt::CaseInsensitive))
                prefixed.append(flow);
        }
    }
    const QList<const TaskFlow *> &matches = exact.isEmpty() ? prefixed : exact;
    if (matches.size() == 1) {
        reference.m_flow = matches.first();
    } else if (matches.size() > 1) {
        reference.m_ambiguous = true;
        reference.m_candidates = matches;
    } else {
        reference.m_candidates = flows;
    }
    return reference;
}

QString FlowReference::problem() const
{
    if (m_flow)
        return {};

    QString message;
    if (m_ambiguous)
        message = QStringLiteral("%1 matches more than one flow:\n").arg(PlainText::quoted(m_text));
    else if (m_candidates.isEmpty())
        return QStringLiteral("no flow matches %1; there are no flows yet").arg(PlainText::quoted(m_text));
    else
        message = QStringLiteral("no flow matches %1; the flows are:\n").arg(PlainText::quoted(m_text));

    TextTable table({}, QStringLiteral("  "));
    for (const TaskFlow *flow : m_candidates.first(std::min(m_candidates.size(), listedCandidates)))
        table.addRow({flow->name, PlainText::id(flow->id)});
    QString listing;
    QTextStream stream(&listing);
    table.print(stream);
    stream.flush();
    message += listing;
    if (m_candidates.size() > listedCandidates)
        message += QStringLiteral("  … and %1 more\n").arg(m_candidates.size() - listedCandidates);
    message += m_ambiguous ? QStringLiteral("Name it by more of its name, or by its id.")
                           : QStringLiteral("Name a flow by its id, its name, or the start of its name.");
    return message;
}

} // namespace fenrow
