#include "TodayOrder.h"

#include "domain/FenrowHistory.h"
#include "domain/FenrowStore.h"

namespace fenrow::TodayOrder {

QList<QUuid> moved(QList<QUuid> today, const QUuid &nodeID, qsizetype position)
{
    const qsizetype from = today.indexOf(nodeID);
    if (from < 0)
        return today;
    position = std::clamp<qsizetype>(position, 0, today.size());
    today.removeAt(from);
    // Taking the task out moved everything after it up by one.
    today.insert(position > from ? position - 1 : position, nodeID);
    return today;
}

void apply(FenrowStore &store, FenrowHistory &history, const QList<QUuid> &order)
{
    QList<const TaskFlow *> flows;
    for (const QUuid &id : order) {
        const FlowNode *node = store.node(id);
        if (node && node->flow() && !flows.contains(node->flow()))
            flows.append(node->flow());
    }
    for (const TaskFlow *flow : std::as_const(flows)) {
        history.recordBorrowedAction(QStringLiteral("Reorder today"), *flow, [&] {
            for (qsizetype i = 0; i < order.size(); ++i) {
                const FlowNode *node = store.node(order[i]);
                if (node && node->flow() == flow && node->dayPlanRank != i + 1)
                    store.setDayPlanRank(i + 1, *node);
            }
        });
    }
}

} // namespace fenrow::TodayOrder
