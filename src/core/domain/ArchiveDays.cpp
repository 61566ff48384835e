#include "ArchiveDays.h"

#include "CompletionRecord.h"
#include "LocalCalendar.h"
#include "TextFolding.h"
#include "shell/InterfaceLanguage.h"

#include <QCoreApplication>
#include <QLocale>
#include <QRegularExpression>

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

namespace {

// The locale's long date without the weekday: "2. Juni 2026", "June 2, 2026".
QString mediumDateFormat(const QLocale &locale)
{
    QString format = locale.dateFormat(QLocale::LongFormat);
    static const QRegularExpression weekday(QStringLiteral("\\s*,?\\s*dddd\\s*,?\\s*"));
    format.replace(weekday, QStringLiteral(" "));
    return format.trimmed();
}

} // namespace

QList<ArchiveDay> group(const QList<const CompletionRecord *> &records, const QDateTime &now,
                        const LocalCalendar &calendar)
{
    const QDate today = calendar.dayOf(now);
    const QLocale locale(InterfaceLanguage::current());
    const QString dateFormat = mediumDateFormat(locale);
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
                title = locale.toString(day, dateFormat);
            days.append({id, title, {}});
        }
        days.last().records.append(record);
    }
    return days;
}

} // namespace fenrow::ArchiveDays
