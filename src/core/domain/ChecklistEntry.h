#pragma once

#include <QList>
#include <QString>
#include <QUuid>

namespace fenrow {

struct ChecklistEntry {
    QUuid id;
    QString title;
    bool isDone = false;

    friend bool operator==(const ChecklistEntry &, const ChecklistEntry &) = default;
};

using Checklist = QList<ChecklistEntry>;

// The checklist is persisted as a JSON array of {"id", "title", "isDone"}
// in display order. The empty list is "" (never "[]"), and text that does
// not decode reads as the empty list.
namespace ChecklistCodec {
QString encode(const Checklist &entries);
Checklist decode(const QString &data);
struct Progress {
    qsizetype done = 0;
    qsizetype total = 0;
    friend bool operator==(const Progress &, const Progress &) = default;
};
// How many entries `data` decodes to and how many of them are done, as
// `decode` would say, without building the entries: a strict reader
// settles the usual text at once, and whatever it is unsure of goes
// through `decode` itself.
Progress progress(const QString &data);
// Whether `data` decodes to at least one entry.
bool hasEntries(const QString &data);
} // namespace ChecklistCodec

} // namespace fenrow
