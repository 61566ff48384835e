#include "ArchiveDays.h"

#include "CompletionRecord.h"
#include "LocalCalendar.h"
#include "TextFolding.h"
#include "shell/InterfaceLanguage.h"

#include <QCoreApplication>
#include <QLocale>

namespace fenrow::ArchiveDays {

QList<const CompletionRecord *> filter(const QList<const CompletionRecord *> &records, const QString &query)
{
    const QString trimmed = query.trimmed();
    if (trimmed.isEmpty())
        return records;
    const QString folded = TextFolding::fold(trimmed);
    QList<const CompletionRecord *> kept;
    for (const CompletionRecord *record : records) {
        if (TextFolding::contains(record->title, folded) || TextFolding::contains(record->flowName, folded))
            kept.append(record);
    }
    return kept;
}

QList<ArchiveDay> group(const QList<const CompletionRecord *> &records, const QDateTime &now,
                        const LocalCalendar &calendar)
{
    const QDate today = calendar.dayOf(now);
    const QLocale locale(InterfaceLanguage::current());
    QList<ArchiveDay> days;
    for (const CompletionRecord *record : records) {
        const QDate day = calendar.dayOf(record->completedAt);
        const QString id = day.toString(Qt::ISODate);
        if (days.isEmpty() || days.last().id != id) {
            QString title;
            if (day == today)
                title = qtTrId("archive.day.today");
            else if (day == today.addDays(-1))
                title = qtTrId("archive.day.yesterday");
            else
                title = locale.toString(day, QStringLiteral("d MMM yyyy"));
            days.append({id, title, {}});
        }
        days.last().records.append(record);
    }
    return days;
}

} // namespace fenrow::ArchiveDays
