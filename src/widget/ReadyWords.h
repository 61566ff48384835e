#pragma once

#include "shell/ReadySnapshot.h"

#include <QDate>
#include <QString>

namespace fenrow {

// Where the tray's list stands: Fenrow has not written one yet, the one
// written holds no longer (its day is over, or it cannot be read), or it
// is the list of today.
enum class ReadyListState { notWritten, outOfDate, current };

// The widget's words, in the interface language in force.
namespace ReadyWords {

// "1 task ready", "3 tasks ready".
QString count(qsizetype ready);
// Why nothing is ready, from the snapshot's empty reason.
QString emptyReason(const std::optional<QString> &reason);
// One line for the tool tip and the popup's head: the count, the empty
// reason, or why there is no list to show.
QString summary(ReadyListState state, const ReadySnapshot *snapshot, qsizetype ticked = 0);
// The due line of a task, as the window's Ready list says it; empty
// without a due date.
QString due(const ReadySnapshot::Item &item, const QDate &today);

} // namespace ReadyWords
} // namespace fenrow
