#pragma once

#include <QString>

#include <optional>

namespace fenrow::EstimateDraft {

// The estimate as the field shows it: whole minutes, or nothing.
QString text(std::optional<qint64> minutes);

// What committing `draft` over the stored estimate asks for: absent when
// there is nothing to record (the same value, or text that is no number),
// otherwise the new estimate, which is absent when the draft was blank.
// The field shows `text(stored)` again afterwards either way, so that text
// that is no number simply goes back to the old value.
std::optional<std::optional<qint64>> committed(const QString &draft, std::optional<qint64> stored);

} // namespace fenrow::EstimateDraft
