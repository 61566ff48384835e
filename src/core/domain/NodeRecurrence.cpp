#include "NodeRecurrence.h"

#include "LocalCalendar.h"

namespace fenrow {

namespace {

constexpr int stepCap = 20000;

std::optional<qint64> parseNumber(QStringView text)
{
    bool ok = false;
    const qint64 value = text.toLongLong(&ok);
    return ok ? std::optional(value) : std::nullopt;
}

bool isWeekend(QDate day)
{
    return day.dayOfWeek() >= Qt::Saturday;
}

} // namespace

std::optional<NodeRecurrence> NodeRecurrence::decode(const std::optional<QString> &raw)
{
    if (!raw)
        return std::nullopt;
    const QString name = raw->section(QLatin1Char('@'), 0, 0);
    const bool hasArgument = raw->contains(QLatin1Char('@'));
    const QStringView argument = QStringView(*raw).mid(name.size() + 1);

    if (!hasArgument) {
        if (name == QLatin1StringView("daily"))
            return NodeRecurrence{RecurrenceRule::daily, 1, std::nullopt};
        if (name == QLatin1StringView("weekdays"))
            return NodeRecurrence{RecurrenceRule::weekdays, 1, std::nullopt};
        if (name == QLatin1StringView("weekly"))
            return NodeRecurrence{RecurrenceRule::weekly, 1, std::nullopt};
        if (name == QLatin1StringView("monthly"))
            return NodeRecurrence{RecurrenceRule::monthly, 1, std::nullopt};
        return std::nullopt;
    }
    const std::optional<qint64> number = parseNumber(argument);
    if (!number)
        return std::nullopt;
    if (name == QLatin1StringView("monthly") && *number >= INT_MIN && *number <= INT_MAX)
        return NodeRecurrence{RecurrenceRule::monthly, 1, int(*number)};
    if (name == QLatin1StringView("after"))
        return NodeRecurrence{RecurrenceRule::afterDone, *number, std::nullopt};
    return std::nullopt;
}

std::optional<QString> NodeRecurrence::encode() const
{
    switch (rule) {
    case RecurrenceRule::never:
        return std::nullopt;
    case RecurrenceRule::daily:
        return QStringLiteral("daily");
    case RecurrenceRule::weekdays:
        return QStringLiteral("weekdays");
    case RecurrenceRule::weekly:
        return QStringLiteral("weekly");
    case RecurrenceRule::monthly:
        return monthDay ? QStringLiteral("monthly@%1").arg(*monthDay) : QStringLiteral("monthly");
    case RecurrenceRule::afterDone:
        return QStringLiteral("after@%1").arg(interval);
    }
    return std::nullopt;
}

std::optional<QDateTime> nextOccurrence(const QDateTime &anchor, const QDateTime &today, const LocalCalendar &calendar,
                                        const NodeRecurrence &recurrence)
{
    // Work on calendar days, then take each day's first instant: stepping
    // by days rather than by 24 hours keeps daylight-saving days whole.
    const QDate anchorDay = calendar.dayOf(anchor);
    const QDate todayDay = calendar.dayOf(today);
    auto stepDays = [&](int days, bool skipWeekends) -> std::optional<QDateTime> {
        QDate day = anchorDay;
        for (int step = 0; step < stepCap; ++step) {
            day = day.addDays(days);
            if (day > todayDay && !(skipWeekends && isWeekend(day)))
                return calendar.startOfDay(day);
        }
        return std::nullopt;
    };

    switch (recurrence.rule) {
    case RecurrenceRule::never:
        return std::nullopt;
    case RecurrenceRule::daily:
        return stepDays(1, false);
    case RecurrenceRule::weekdays:
        return stepDays(1, true);
    case RecurrenceRule::weekly:
        return stepDays(7, false);
    case RecurrenceRule::monthly:
        for (int step = 1; step <= stepCap; ++step) {
            // Always from the anchor, so a short month does not pull later
            // months to an earlier day.
            QDate day = anchorDay.addMonths(step);
            if (recurrence.monthDay) {
                const int wanted = std::clamp(*recurrence.monthDay, 1, day.daysInMonth());
                day = QDate(day.year(), day.month(), wanted);
            }
            if (day > todayDay)
                return calendar.startOfDay(day);
        }
        return std::nullopt;
    case RecurrenceRule::afterDone:
        return calendar.startOfDay(todayDay.addDays(recurrence.interval));
    }
    return std::nullopt;
}

} // namespace fenrow
