#pragma once

#include "RawEnum.h"

namespace fenrow {

// The closed sets of the raw-string preferences. The file keeps the raw
// text; an unknown text reads as the first case and stays in the file.

enum class AppTheme { automatic, light, dark };

template <>
struct RawNames<AppTheme> {
    static constexpr std::array<const char *, 3> names{"auto", "light", "dark"};
};

enum class AccentPalette { violet, blue, green, orange, pink, graphite };

template <>
struct RawNames<AccentPalette> {
    static constexpr std::array<const char *, 6> names{"violet", "blue", "green", "orange", "pink", "graphite"};
};

enum class FilterMode { dim, hide };

template <>
struct RawNames<FilterMode> {
    static constexpr std::array<const char *, 2> names{"dim", "hide"};
};

// "auto" lets the system's languages decide.
enum class UiLanguage { automatic, en, tr, de, es, fr };

template <>
struct RawNames<UiLanguage> {
    static constexpr std::array<const char *, 6> names{"auto", "en", "tr", "de", "es", "fr"};
};

enum class DayPlanBudgetUnit { minutes, hours };

template <>
struct RawNames<DayPlanBudgetUnit> {
    static constexpr std::array<const char *, 2> names{"minutes", "hours"};
};

} // namespace fenrow
