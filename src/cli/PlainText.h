#pragma once

#include <QString>
#include <QUuid>

namespace fenrow::PlainText {

// Columns a text takes on a terminal: wide East Asian characters and emoji
// take two, combining marks none.
qsizetype displayWidth(QStringView text);

// Whether `c` is a control character or a line or paragraph separator,
// which `singleLine` makes a space.
bool breaksLine(QChar c);

// A name on one line: line breaks, tabs and other control characters
// become spaces, so a name can never break a table or fake a line.
QString singleLine(const QString &text);

// A name in quotes inside a message: "Launch site".
QString quoted(const QString &name);

// A record's id as every output shows it: upper case, no braces.
QString id(const QUuid &id);

// "1 task", "3 tasks".
QString counted(qint64 count, const QString &singular, const QString &plural);

} // namespace fenrow::PlainText
