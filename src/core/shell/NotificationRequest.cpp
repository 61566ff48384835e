#include "NotificationRequest.h"

#include "domain/LocalCalendar.h"

namespace fenrow {

QDateTime NotificationTrigger::nextFireDate(const QDateTime &after, const LocalCalendar &calendar) const
{
    if (kind == Kind::once)
        return fireDate.isValid() && fireDate > after ? fireDate.toUTC() : QDateTime();
    if (!timeOfDay.isValid())
        return {};
    // The hour by the calendar's rules for clock changes, then the minutes.
    const qint64 pastTheHour = timeOfDay.minute() * 60 + timeOfDay.second();
    QDate day = calendar.dayOf(after);
    for (int step = 0; step < 3; ++step, day = day.addDays(1)) {
        const QDateTime moment = calendar.atHour(day, timeOfDay.hour()).addSecs(pastTheHour);
        if (moment > after)
            return moment;
    }
    return {};
}

} // namespace fenrow
