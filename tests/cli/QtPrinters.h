#pragma once

#include <QString>
#include <QStringList>

#include <ostream>

// Readable failure messages for Qt text in GoogleTest assertions.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList &list, std::ostream *out)
{
    *out << '[' << list.join(QStringLiteral(", ")).toStdString() << ']';
}
