#pragma once

#include <QList>
#include <QUuid>

namespace fenrow {

class FenrowHistory;
class FenrowStore;

// The order of the Ready list's Today group, which the user sets by
// dragging: it lives in the tasks' day-plan ranks, 1, 2, 3 and so on.
namespace TodayOrder {

// `today` with `nodeID` taken out and put back before the task that stood
// at `position` (the end for a position past it). Unknown ids change nothing.
QList<QUuid> moved(QList<QUuid> today, const QUuid &nodeID, qsizetype position);

// Writes the ranks of `order`: each task gets its place, counted from 1;
// a task that holds its number already is not written. Tasks of several
// flows make one "Reorder today" step in each flow's history, taken from
// the list and so undone from there too. Ids of tasks that went are skipped.
void apply(FenrowStore &store, FenrowHistory &history, const QList<QUuid> &order);

} // namespace TodayOrder

} // namespace fenrow
