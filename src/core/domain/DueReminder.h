#pragma once

#include <QDateTime>
#include <QString>
#include <QUuid>

namespace fenrow {

// One reminder of a task on its due day: what the notification says and
// when it comes (FenrowStore::dueReminders).
struct DueReminder {
    // 60 reminders and the digest stay under the 64 pending notifications
    // with room to spare.
    static constexpr qsizetype limit = 60;

    QUuid nodeID;
    QString title;
    // The flow's display name.
    QString flowName;
    QDateTime fireDate;

    friend bool operator==(const DueReminder &, const DueReminder &) = default;
};

} // namespace fenrow
