#include "LocalCalendar.h"

#include <algorithm>

namespace fenrow {

LocalCalendar::LocalCalendar() : m_zone(QTimeZone::systemTimeZone()) {}

LocalCalendar::LocalCalendar(QTimeZone zone) : m_zone(std::move(zone)) {}

QDate LocalCalendar::dayOf(const QDateTime &moment) const
{
    return moment.toTimeZone(m_zone).date();
}

QDateTime LocalCalendar::startOfDay(QDate day) const
{
    // QDate::startOfDay handles zones where midnight is skipped by a
    // daylight-saving change and picks the first valid instant.
    // Kept in UTC: comparisons of instants then need no zone lookup.
    return day.startOfDay(m_zone).toUTC();
}

QDateTime LocalCalendar::startOfDay(const QDateTime &moment) const
{
    return startOfDay(dayOf(moment));
}

QDateTime LocalCalendar::startOfNextDay(const QDateTime &moment) const
{
    return startOfDay(dayOf(moment).addDays(1));
}

QDateTime LocalCalendar::atHour(QDate day, int hour) const
{
    // Qt 6.4 makes an invalid time in a gap and takes the later instant of a
    // repeated hour, so the instants are found from the zone's offsets: the
    // wall time read as UTC, less each offset in force within a day of it,
    // is a candidate when that offset is the one in force at the result.
    const qint64 wall = QDateTime(day, QTime(hour, 0), Qt::UTC).toSecsSinceEpoch();
    static constexpr qint64 secondsPerDay = 86400;
    std::optional<qint64> first;
    std::optional<qint64> earliestGuess;
    for (const qint64 probe : {wall - secondsPerDay, wall, wall + secondsPerDay}) {
        const qint64 offset = m_zone.offsetFromUtc(QDateTime::fromSecsSinceEpoch(probe, Qt::UTC));
        const qint64 candidate = wall - offset;
        earliestGuess = earliestGuess ? std::min(*earliestGuess, candidate) : candidate;
        if (m_zone.offsetFromUtc(QDateTime::fromSecsSinceEpoch(candidate, Qt::UTC)) == offset)
            first = first ? std::min(*first, candidate) : candidate;
    }
    if (first)
        return QDateTime::fromSecsSinceEpoch(*first, Qt::UTC);
    // In a gap: the clock jumps at the transition after the earliest guess,
    // and the first valid time is that instant.
    const QTimeZone::OffsetData transition =
        m_zone.nextTransition(QDateTime::fromSecsSinceEpoch(*earliestGuess, Qt::UTC));
    if (transition.atUtc.isValid())
        return transition.atUtc.toUTC();
    return QDateTime::fromSecsSinceEpoch(wall, Qt::UTC);
}

std::optional<QDateTime> LocalCalendar::readDate(const QString &text) const
{
    const QString trimmed = text.trimmed();
    // A bare day is that day wherever it falls; only a moment has a zone.
    static constexpr qsizetype dayLength = 10;
    if (trimmed.size() == dayLength) {
        const QDate day = QDate::fromString(trimmed, Qt::ISODate);
        if (!day.isValid())
            return std::nullopt;
        return startOfDay(day);
    }
    QDateTime moment = QDateTime::fromString(trimmed, Qt::ISODate);
    if (!moment.isValid())
        return std::nullopt;
    if (moment.timeSpec() == Qt::LocalTime)
        moment = QDateTime(moment.date(), moment.time(), m_zone);
    return moment;
}

} // namespace fenrow
