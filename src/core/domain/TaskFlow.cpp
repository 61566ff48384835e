#include "TaskFlow.h"

#include "TextRules.h"

#include <algorithm>
#include <atomic>

namespace fenrow {

QString TaskFlow::displayName() const
{
    return TextRules::nameOr(name, qtTrId("sidebar.flow.untitled"));
}

quint64 TaskFlow::nextVersion()
{
    static std::atomic<quint64> last{0};
    return ++last;
}

QList<const FlowNode *> TaskFlow::orderedItems() const
{
    QList<const FlowNode *> ordered(m_items.begin(), m_items.end());
    std::sort(ordered.begin(), ordered.end(),
              [](const FlowNode *a, const FlowNode *b) { return a->order < b->order; });
    return ordered;
}

} // namespace fenrow
