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
    static QString path();
    static std::unique_ptr<QSettings> open();
};

} // namespace fenrow
