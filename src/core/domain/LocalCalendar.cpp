#include "LocalCalendar.h"

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
