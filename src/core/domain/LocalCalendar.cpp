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

} // namespace fenrow
