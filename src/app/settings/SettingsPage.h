#pragma once

namespace fenrow {

// The pages of the settings window, in the order of its list.
enum class SettingsPage { general, shortcuts, appearance, language, languageModel, data, about };

} // namespace fenrow
