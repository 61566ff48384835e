#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

namespace fenrow {

class CompletionRecord;
class LocalCalendar;

// One day of the archive list: its records keep the order they came in.
struct ArchiveDay {
    QString id;    // the day as YYYY-MM-DD
    QString title; // today, yesterday, or the date in the interface language
    QList<const CompletionRecord *> records;
};

namespace ArchiveDays {

// Keeps the records whose title or flow name contains the query, ignoring
// case and diacritics; a blank query keeps all.
QList<const CompletionRecord *> filter(const QList<const CompletionRecord *> &records, const QString &query);
QList<ArchiveDay> group(const QList<const CompletionRecord *> &records, const QDateTime &now,
                        const LocalCalendar &calendar);

} // namespace ArchiveDays

} // namespace fenrow
