#pragma once

#include <QList>
#include <QString>

namespace fenrow {

class TaskFlow;

// What a FLOW argument names. By id first (any case, braces or not), then by
// name: an exact match ignoring case, else the one flow whose name begins
// with the text, ignoring case. Anything else names no flow, and the
// problem lists the flows it could have meant.
class FlowReference {
public:
    static FlowReference resolve(const QList<const TaskFlow *> &flows, const QString &text);

    const TaskFlow *flow() const { return m_flow; }
    // Several flows matched; false when one or none did.
    bool isAmbiguous() const { return m_ambiguous; }
    // The flows the text matched (several) or, when it matched none, all of
    // them; empty once a flow is found.
    const QList<const TaskFlow *> &candidates() const { return m_candidates; }
    // Why no flow was found, with the candidates; empty when one was.
    QString problem() const;

private:
    QString m_text;
    const TaskFlow *m_flow = nullptr;
    bool m_ambiguous = false;
    QList<const TaskFlow *> m_candidates;
};

} // namespace fenrow
