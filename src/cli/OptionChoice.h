#pragma once

#include "domain/RawEnum.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace fenrow::OptionChoice {

// An option value naming a case of a persisted enumeration by its raw
// text, ignoring case: "--status inprogress".
template <typename E>
std::optional<E> parse(const QString &text)
{
    const QString wanted = text.trimmed();
    const auto &names = RawNames<E>::names;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (wanted.compare(QLatin1StringView(names[i]), Qt::CaseInsensitive) == 0)
            return static_cast<E>(i);
    }
    return std::nullopt;
}

// The raw texts of every case, in order.
template <typename E>
QStringList names()
{
    QStringList names;
    for (const char *name : RawNames<E>::names)
        names.append(QString::fromLatin1(name));
    return names;
}

// The choices for a message: "none, low, medium or high".
template <typename E>
QString list()
{
    QStringList names = OptionChoice::names<E>();
    const QString last = names.takeLast();
    return names.join(QStringLiteral(", ")) + QStringLiteral(" or ") + last;
}

} // namespace fenrow::OptionChoice
