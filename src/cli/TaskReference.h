#pragma once

#include <QList>
#include <QString>

namespace fenrow {

class FlowNode;
class TaskFlow;

// What a TASK argument names, searched across the given flows. By id first
// (any case, braces or not), then by title: an exact match ignoring case,
// else the one task whose title begins with the text, ignoring case.
// Anything else names no task, and the problem lists the tasks it could
// have meant as "title (flow)".
class TaskReference {
public:
    static TaskReference resolve(const QList<const TaskFlow *> &flows, const QString &text);

    const FlowNode *node() const { return m_node; }
    // The tasks the text matched (several) or, when it matched none, those
    // whose title contains it (else every task); empty once one is found.
    const QList<const FlowNode *> &candidates() const { return m_candidates; }
    // Why no task was found, with the candidates; empty when one was.
    QString problem() const;

private:
    QString m_text;
    const FlowNode *m_node = nullptr;
    bool m_ambiguous = false;
    bool m_containing = false;
    QList<const FlowNode *> m_candidates;
};

} // namespace fenrow
