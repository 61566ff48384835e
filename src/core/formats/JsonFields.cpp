#include "JsonFields.h"

#include <cmath>

namespace fenrow {

QString JsonFields::text(QLatin1StringView key)
{
    const QJsonValue found = m_object.value(key);
    if (!found.isString())
        m_ok = false;
    return found.toString();
}

double JsonFields::number(QLatin1StringView key)
{
    const QJsonValue found = m_object.value(key);
    if (!found.isDouble())
        m_ok = false;
    return found.toDouble();
}

qint64 JsonFields::integer(QLatin1StringView key)
{
    const std::optional<qint64> found = wholeNumber(m_object.value(key));
    if (!found)
        m_ok = false;
    return found.value_or(0);
}

bool JsonFields::boolean(QLatin1StringView key)
{
    const QJsonValue found = m_object.value(key);
    if (!found.isBool())
        m_ok = false;
    return found.toBool();
}

std::optional<qint64> JsonFields::wholeNumber(const QJsonValue &value)
{
    if (!value.isDouble())
        return std::nullopt;
    const double number = value.toDouble();
    // 2^63 itself is out of range; every double below it converts exactly.
    if (std::trunc(number) != number || number < -9223372036854775808.0 || number >= 9223372036854775808.0)
        return std::nullopt;
    return value.toInteger();
}

} // namespace fenrow
