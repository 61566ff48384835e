#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QLatin1StringView>
#include <QString>

#include <optional>

namespace fenrow {

// Strict reading of one JSON object's fields for all-or-nothing formats:
// a field that is missing or of the wrong type clears `ok`, and the caller
// drops the whole document rather than keep half of it. Optional fields
// read absent and null alike as absent.
class JsonFields {
public:
    explicit JsonFields(const QJsonObject &object) : m_object(object) {}

    bool ok() const { return m_ok; }
    void fail() { m_ok = false; }

    QJsonValue value(QLatin1StringView key) const { return m_object.value(key); }
    bool isAbsent(QLatin1StringView key) const
    {
        const QJsonValue found = m_object.value(key);
        return found.isUndefined() || found.isNull();
    }

    QString text(QLatin1StringView key);
    double number(QLatin1StringView key);
    // A JSON number with no fraction that fits in 64 bits.
    qint64 integer(QLatin1StringView key);
    bool boolean(QLatin1StringView key);

    std::optional<QString> optionalText(QLatin1StringView key) { return optional(key, &JsonFields::text); }
    std::optional<double> optionalNumber(QLatin1StringView key) { return optional(key, &JsonFields::number); }
    std::optional<qint64> optionalInteger(QLatin1StringView key) { return optional(key, &JsonFields::integer); }

    // Reads `key` with `read`, a reader of this class or of one built on
    // it, unless the field is absent or null.
    template <typename Self, typename Value>
    std::optional<Value> optional(QLatin1StringView key, Value (Self::*read)(QLatin1StringView))
    {
        if (isAbsent(key))
            return std::nullopt;
        return (static_cast<Self *>(this)->*read)(key);
    }

    static std::optional<qint64> wholeNumber(const QJsonValue &value);

private:
    const QJsonObject &m_object;
    bool m_ok = true;
};

} // namespace fenrow
