#pragma once

#include <QObject>
#include <QTimer>

namespace fenrow {

class Clock;
class LocalCalendar;

// Tells when the local day turns over, so that views computed from "now"
// (what is ready, what is overdue) are computed again at midnight even when
// nothing else changes. It reads the time from the given clock and re-arms
// itself after each turn.
class DayChangeTimer : public QObject {
    Q_OBJECT

public:
    DayChangeTimer(const Clock &clock, const LocalCalendar &calendar, QObject *parent = nullptr);

    // Milliseconds from the clock's now to the start of the next local day.
    qint64 remainingToMidnight() const;

signals:
    void dayChanged();

private:
    void arm();

    const Clock &m_clock;
    const LocalCalendar &m_calendar;
    QTimer m_timer;
};

} // namespace fenrow
