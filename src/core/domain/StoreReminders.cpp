// Which tasks are reminded of on their due day, and when.
#include "FenrowStore.h"

#include <algorithm>

namespace fenrow {

QList<DueReminder> FenrowStore::dueReminders(const QDateTime &now, int hour) const
{
    struct Candidate {
        qint64 fireMSecs;
        qsizetype flowIndex;
        qint64 order;
        qsizetype walkIndex;
        const FlowNode *node;
        QDateTime fireDate;
    };
    std::vector<Candidate> candidates;
    const qint64 nowMSecs = now.toMSecsSinceEpoch();
    // Due dates are the starts of their days, so many tasks share one: a
    // time-zone conversion per distinct due date, not per task.
    QHash<qint64, QDateTime> fireDates;
    for (qsizetype flowIndex = 0; flowIndex < m_flows.size(); ++flowIndex) {
        // In the stored sequence: only the reminders kept are put in order.
        for (const FlowNode *node : m_flows[flowIndex]->items()) {
            if (node->isDone || !node->dueDate)
                continue;
            const qint64 due = node->dueDate->toMSecsSinceEpoch();
            auto fire = fireDates.constFind(due);
            if (fire == fireDates.constEnd())
                fire = fireDates.insert(due, m_calendar.atHour(m_calendar.dayOf(*node->dueDate), hour));
            const qint64 fireMSecs = fire->toMSecsSinceEpoch();
            if (fireMSecs <= nowMSecs)
                continue;
            candidates.push_back({fireMSecs, flowIndex, node->order, qsizetype(candidates.size()), node, *fire});
        }
    }
    // Earliest first; tasks of one moment in flow and task order.
    const auto earlier = [](const Candidate &a, const Candidate &b) {
        return std::tie(a.fireMSecs, a.flowIndex, a.order, a.walkIndex) <
               std::tie(b.fireMSecs, b.flowIndex, b.order, b.walkIndex);
    };
    const auto kept = std::min<qsizetype>(qsizetype(candidates.size()), DueReminder::limit);
    std::partial_sort(candidates.begin(), candidates.begin() + kept, candidates.end(), earlier);

    QList<DueReminder> reminders;
    reminders.reserve(kept);
    for (qsizetype index = 0; index < kept; ++index) {
        const Candidate &candidate = candidates[size_t(index)];
        reminders.append({candidate.node->id, candidate.node->title, candidate.node->flow()->displayName(),
                          candidate.fireDate});
    }
    return reminders;
}

} // namespace fenrow
