#pragma once

#include <QSettings>
#include <QString>

#include <memory>

namespace fenrow {

// The user's settings: one INI file, ~/.config/fenrow/fenrow.conf (following
// XDG_CONFIG_HOME), keys as "preferences.<name>". A scripted run
// ("--ui-test") gets a private file that goes with the process.
class SettingsFile {
public:
    // The folder of the user's configuration ($XDG_CONFIG_HOME), or a
    // scripted run's private one: what else Fenrow writes there (the
    // autostart entry) follows the same rule as the settings.
    static QString configHome();
    static QString path();
    static std::unique_ptr<QSettings> open();
};

} // namespace fenrow
