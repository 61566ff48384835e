#pragma once

#include <QString>

namespace fenrow::DurationText {

// "45 min", "2 h", "1 h 30 min" in the interface language: how estimates
// and planned time read everywhere.
QString compact(qint64 minutes);

} // namespace fenrow::DurationText
