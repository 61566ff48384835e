#include "DurationText.h"

#include <QCoreApplication>

namespace fenrow::DurationText {

QString compact(qint64 minutes)
{
    const qint64 hours = minutes / 60;
    const qint64 rest = minutes % 60;
    if (hours == 0)
        return qtTrId("ready.row.estimate.minutes %lld").arg(minutes);
    if (rest == 0)
        return qtTrId("ready.row.estimate.hours %lld").arg(hours);
    return qtTrId("ready.row.estimate.hoursMinutes %lld %lld").arg(hours).arg(rest);
}

} // namespace fenrow::DurationText
