#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace fenrow {

class LocalCalendar;

enum class RecurrenceRule { never, daily, weekdays, weekly, monthly, afterDone };

// How a task comes back after it is completed. Stored in `recurrenceRaw` as
// "daily", "weekdays", "weekly", "monthly", "monthly@<day>" or
// "after@<days>".
struct NodeRecurrence {
    RecurrenceRule rule = RecurrenceRule::never;
    // Days, for afterDone.
    qint64 interval = 1;
    // Day of the month, for monthly.
    std::optional<int> monthDay;

    // Text that fits no form, and "never", read as no recurrence.
    static std::optional<NodeRecurrence> decode(const std::optional<QString> &raw);
    // "never" encodes as absent.
    std::optional<QString> encode() const;

    friend bool operator==(const NodeRecurrence &, const NodeRecurrence &) = default;
};

// The next date of a series after `today`, from an anchor day (the start of
// a day). Stepping gives up after 20,000 steps and yields nothing.
std::optional<QDateTime> nextOccurrence(const QDateTime &anchor, const QDateTime &today, const LocalCalendar &calendar,
                                        const NodeRecurrence &recurrence);

} // namespace fenrow
