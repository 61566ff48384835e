#pragma once

#include <QString>
#include <QUuid>

namespace fenrow {

// The textual form of an id wherever the program shows or passes one
// (accessibility identifiers, drag payloads): upper case, no braces.
inline QString uuidText(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

} // namespace fenrow
