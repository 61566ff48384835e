#include "EstimateDraft.h"

#include "domain/TextRules.h"

namespace fenrow::EstimateDraft {

QString text(std::optional<qint64> minutes)
{
    return minutes ? QString::number(*minutes) : QString();
}

std::optional<std::optional<qint64>> committed(const QString &draft, std::optional<qint64> stored)
{
    const QString trimmed = TextRules::trimmed(draft);
    if (trimmed.isEmpty()) {
        if (!stored)
            return std::nullopt;
        return std::optional<qint64>();
    }
    // An optional sign and decimal digits only: "1e3", "0x10" and "12 min"
    // are no numbers here.
    const qsizetype digitsFrom = trimmed.front() == u'+' || trimmed.front() == u'-' ? 1 : 0;
    if (digitsFrom == trimmed.size())
        return std::nullopt;
    for (qsizetype i = digitsFrom; i < trimmed.size(); ++i) {
        if (trimmed.at(i) < u'0' || trimmed.at(i) > u'9')
            return std::nullopt;
    }
    bool ok = false;
    const qint64 value = trimmed.toLongLong(&ok, 10);
    if (!ok || value == stored)
        return std::nullopt;
    return std::optional<qint64>(value);
}

} // namespace fenrow::EstimateDraft
