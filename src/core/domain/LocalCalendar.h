#pragma once

#include <QDate>
#include <QDateTime>
#include <QTimeZone>

#include <optional>

namespace fenrow {

// Day arithmetic in one time zone: the system's own unless a test or a
// command fixes another. Start and due dates are kept as the first instant
// of their local day, so every comparison goes through startOfDay.
class LocalCalendar {
public:
    LocalCalendar();
    explicit LocalCalendar(QTimeZone zone);

    const QTimeZone &zone() const { return m_zone; }

    QDate dayOf(const QDateTime &moment) const;
    QDateTime startOfDay(QDate day) const;
    QDateTime startOfDay(const QDateTime &moment) const;
    // When the local day after the one of `moment` begins: where timers
    // that wait for the day to turn over aim.
    QDateTime startOfNextDay(const QDateTime &moment) const;
    // `day` at `hour`:00 here, as a UTC instant. Where the clock skips that
    // time (the spring change) the first instant after the gap; where it
    // shows it twice (the autumn change) the first of the two.
    QDateTime atHour(QDate day, int hour) const;

    // A date as typed by a user or a script: YYYY-MM-DD (the start of that
    // day here), or an ISO 8601 time, taken in this zone unless it names an
    // offset. None when the text is neither.
    std::optional<QDateTime> readDate(const QString &text) const;

private:
    QTimeZone m_zone;
};

} // namespace fenrow
