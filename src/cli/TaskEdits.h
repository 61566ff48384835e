#pragma once

#include "domain/NodeColor.h"
#include "domain/NodePriority.h"
#include "domain/NodeRecurrence.h"
#include "domain/NodeStatus.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>

namespace fenrow {

class CommandContext;
class FenrowStore;
class FlowNode;
class LocalCalendar;

// The changes "edit" was asked for, one per option given. All of them are
// read and checked before the first is applied, so a mistake in any option
// leaves the task as it was.
struct TaskEdits {
    // Options for fields that can be cleared hold an inner value that is
    // absent for "none".
    std::optional<QString> title;
    std::optional<QString> notes;
    std::optional<NodeStatus> status;
    std::optional<NodePriority> priority;
    std::optional<NodeColor> color;
    std::optional<std::optional<qint64>> estimate;
    std::optional<std::optional<QDateTime>> startDate;
    std::optional<std::optional<QDateTime>> dueDate;
    std::optional<std::optional<NodeRecurrence>> recurrence;

    // The option names, in the order help shows them.
    static const QStringList &optionNames();

    // Reads the options of `context`; on a mistake returns nothing and sets
    // `problem`. Dates are read in `calendar`.
    static std::optional<TaskEdits> read(const CommandContext &context, const LocalCalendar &calendar,
                                         QString *problem);

    bool isEmpty() const;
    // The name of the undo step: that of the first change, in the order of
    // the fields above ("Rename", "Set date", "Change status", …).
    QString actionName() const;
    // One store operation per change; completion comes last, so a recurring
    // task rolls on from its new dates.
    void applyTo(FenrowStore &store, const FlowNode &node) const;
};

// Reads a repeat rule: daily, weekdays, weekly, monthly, monthly:DAY or
// after:DAYS. "never" and "none" read as no repeat (an absent inner value).
std::optional<std::optional<NodeRecurrence>> parseRepeat(const QString &text);

} // namespace fenrow
