#include "KeyCombo.h"

#include <QJsonValue>

#include <cmath>

namespace fenrow {

namespace {

// JSON numbers are doubles: a whole number up to 2^53 is exact.
std::optional<quint64> wholeNumber(const QJsonValue &value, double maximum)
{
    if (!value.isDouble())
        return std::nullopt;
    const double number = value.toDouble();
    if (!(number >= 0 && number <= maximum) || std::trunc(number) != number)
        return std::nullopt;
    return quint64(number);
}

} // namespace

QJsonObject KeyCombo::toJson() const
{
    return {{QStringLiteral("keyCode"), int(keyCode)}, {QStringLiteral("modifierFlags"), double(modifierFlags)}};
}

std::optional<KeyCombo> KeyCombo::fromJson(const QJsonValue &value)
{
    if (!value.isObject())
        return std::nullopt;
    const QJsonObject object = value.toObject();
    const auto code = wholeNumber(object.value(QLatin1StringView("keyCode")), 0xFFFF);
    const auto flags = wholeNumber(object.value(QLatin1StringView("modifierFlags")), 9007199254740992.0);
    if (!code || !flags)
        return std::nullopt;
    return KeyCombo{quint16(*code), *flags};
}

} // namespace fenrow
