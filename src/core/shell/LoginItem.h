#pragma once

#include <QByteArray>
#include <QString>

namespace fenrow {

class AppPreferences;

// Opening Fenrow at login, as an XDG autostart entry: at login the desktop
// starts each entry in $XDG_CONFIG_HOME/autostart that it is not told to
// skip. The entry is the truth and the "launchAtLogin" preference follows
// it, so a user who removed it in the desktop's own settings finds the
// toggle off.
class LoginItem {
public:
    explicit LoginItem(QString entryPath);
    // "fenrow.desktop" in the autostart folder of SettingsFile::configHome
    // (a scripted run's private folder, never the user's).
    static LoginItem forThisUser();

    const QString &entryPath() const { return m_entryPath; }

    // The entry is there, and the desktop is not told to skip it ("Hidden"
    // or GNOME's "X-GNOME-Autostart-enabled" set to false).
    bool isEnabled() const;
    // Writes the entry for `program` (whole to a new file, then renamed
    // into place) or removes it. A failure is logged under
    // "fenrow.loginItem" and leaves the entry as it was.
    bool setEnabled(bool enabled, const QString &program) const;
    // Writes the entry's presence into the preference when they differ;
    // nothing is written to the autostart folder.
    void alignPreference(AppPreferences &preferences) const;

    // The entry that starts `program` (an absolute path).
    static QByteArray entryText(const QString &program);
    // `path` as the value of an Exec key: quoted and escaped where the
    // freedesktop.org desktop entries ask, "%" doubled.
    static QString execValue(const QString &path);

private:
    QString m_entryPath;
};

} // namespace fenrow
