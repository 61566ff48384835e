#pragma once

#include <QList>
#include <QString>

namespace fenrow {

class FlowFile;
class FlowTemplate;
class TaskFlow;

// What a FLOW, TEMPLATE or FILE argument names. By id first (any case, braces or
// not), then by name: an exact match ignoring case, else the one record
// whose name begins with the text, ignoring case. Anything else names no
// record, and the problem lists the records it could have meant.
template <typename Record>
class NamedReference {
public:
    static NamedReference resolve(const QList<const Record *> &records, const QString &text);

    const Record *found() const { return m_found; }
    // Several records matched; false when one or none did.
    bool isAmbiguous() const { return m_ambiguous; }
    // The records the text matched (several) or, when it matched none, all
    // of them; empty once one is found.
    const QList<const Record *> &candidates() const { return m_candidates; }
    // Why nothing was found, with the candidates; empty when one was.
    QString problem() const;

private:
    QString m_text;
    const Record *m_found = nullptr;
    bool m_ambiguous = false;
    QList<const Record *> m_candidates;
};

using FlowReference = NamedReference<TaskFlow>;
using TemplateReference = NamedReference<FlowTemplate>;
using FileReference = NamedReference<FlowFile>;

extern template class NamedReference<TaskFlow>;
extern template class NamedReference<FlowTemplate>;
extern template class NamedReference<FlowFile>;

} // namespace fenrow
