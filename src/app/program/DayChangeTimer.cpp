#include "DayChangeTimer.h"

#include "domain/Clock.h"
#include "domain/LocalCalendar.h"

namespace fenrow {

DayChangeTimer::DayChangeTimer(const Clock &clock, const LocalCalendar &calendar, QObject *parent)
    : QObject(parent), m_clock(clock), m_calendar(calendar)
{
    // A coarse timer may fire up to 5% early, which over hours means long
    // before midnight.
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        // A wall clock set back, or a timer that woke early, only costs one
        // extra refresh: the next arming aims at the right midnight again.
        emit dayChanged();
        arm();
    });
    arm();
}

qint64 DayChangeTimer::remainingToMidnight() const
{
    const QDateTime now = m_clock.now();
    return now.msecsTo(m_calendar.startOfNextDay(now));
}

void DayChangeTimer::arm()
{
    // QTimer takes an int; a day always fits, and a longer wait is cut to
    // a day and simply re-armed.
    constexpr qint64 day = 24 * 60 * 60 * 1000;
    m_timer.start(int(std::clamp<qint64>(remainingToMidnight(), 0, day)));
}

} // namespace fenrow
