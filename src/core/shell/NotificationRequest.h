#pragma once

#include <QDateTime>
#include <QString>
#include <QTime>

namespace fenrow {

class LocalCalendar;

// When a pending notification comes due: once at an instant, or every day
// at a local time of day.
struct NotificationTrigger {
    enum class Kind { once, daily };

    Kind kind = Kind::once;
    // For `once`.
    QDateTime fireDate;
    // For `daily`, in the calendar of the notification centre.
    QTime timeOfDay;

    static NotificationTrigger once(const QDateTime &fireDate) { return {Kind::once, fireDate, {}}; }
    static NotificationTrigger daily(const QTime &timeOfDay) { return {Kind::daily, {}, timeOfDay}; }

    // The first time after `after` it comes due; invalid when never (a
    // one-shot time already past).
    QDateTime nextFireDate(const QDateTime &after, const LocalCalendar &calendar) const;

    friend bool operator==(const NotificationTrigger &, const NotificationTrigger &) = default;
};

// One local notification to be shown when its trigger comes due. A second
// request of the same identifier takes the place of the first, pending or
// on screen.
struct NotificationRequest {
    QString identifier;
    QString title;
    // A line under the title; may be empty.
    QString subtitle;
    QString body;
    NotificationTrigger trigger;

    friend bool operator==(const NotificationRequest &, const NotificationRequest &) = default;
};

} // namespace fenrow
