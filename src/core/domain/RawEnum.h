#pragma once

#include <QLatin1StringView>
#include <QString>
#include <QStringView>

#include <array>
#include <optional>

namespace fenrow {

// Persisted enumerations are stored by their raw strings, which never change.
// Each enumeration declares its raw strings in declared order by
// specialising RawNames; these helpers convert both ways.
template <typename E>
struct RawNames;

template <typename E>
QLatin1StringView rawName(E value)
{
    return QLatin1StringView(RawNames<E>::names[static_cast<std::size_t>(value)]);
}

template <typename E>
QString rawString(E value)
{
    return rawName(value).toString();
}

template <typename E>
std::optional<E> parseRaw(QStringView raw)
{
    const auto &names = RawNames<E>::names;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (raw == QLatin1StringView(names[i]))
            return static_cast<E>(i);
    }
    return std::nullopt;
}

// Tolerant reading: unknown or empty text reads as the first case. Reading
// never writes the text back, so a value from a newer version survives.
template <typename E>
E readRaw(QStringView raw)
{
    return parseRaw<E>(raw).value_or(static_cast<E>(0));
}

template <typename E>
constexpr std::size_t rawCaseCount()
{
    return RawNames<E>::names.size();
}

} // namespace fenrow
