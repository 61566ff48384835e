#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace fenrow {

class AppPreferences;

// The programs that can start at login: Fenrow itself and its tray widget.
enum class LoginProgram { fenrow, widget };

// Opening a program at login, as an XDG autostart entry: at login the
// desktop starts each entry in $XDG_CONFIG_HOME/autostart that it is not
// told to skip. The entry is the truth and the preference ("launchAtLogin",
// "widgetAtLogin") follows it, so a user who removed it in the desktop's own
// settings finds the toggle off.
class LoginItem {
public:
    // `applicationFolders` are where an installed launcher entry is looked
    // for, nearest first.
    explicit LoginItem(QString entryPath, LoginProgram program = LoginProgram::fenrow,
                       QStringList applicationFolders = {});
    // "fenrow.desktop" (or "fenrow-widget.desktop") in the autostart folder
    // of SettingsFile::configHome (a scripted run's private folder, never
    // the user's), and the desktop's application folders.
    static LoginItem forThisUser(LoginProgram program = LoginProgram::fenrow);

    const QString &entryPath() const { return m_entryPath; }

    // The entry is there, and the desktop is not told to skip it ("Hidden"
    // or GNOME's "X-GNOME-Autostart-enabled" set to false).
    bool isEnabled() const;
    // Writes the entry (whole to a new file, then renamed into place) or
    // removes it. Where the program's launcher entry is installed the entry
    // is a copy of it, so that login starts what the launcher starts;
    // otherwise it starts `program`, an absolute path. A failure is logged
    // under "fenrow.loginItem" and leaves the entry as it was.
    bool setEnabled(bool enabled, const QString &program) const;
    // The installed launcher entry ("studio.tarnwick.Fenrow.desktop" or
    // "studio.tarnwick.Fenrow.Widget.desktop") in the nearest application
    // folder that has one, or empty.
    QString installedEntry() const;
    // Writes the entry's presence into the preference when they differ;
    // nothing is written to the autostart folder.
    void alignPreference(AppPreferences &preferences) const;

    // The entry that starts `program` (an absolute path).
    static QByteArray entryText(const QString &program, LoginProgram which = LoginProgram::fenrow);
    // `path` as the value of an Exec key: quoted and escaped where the
    // freedesktop.org desktop entries ask, "%" doubled.
    static QString execValue(const QString &path);

private:
    QString m_entryPath;
    LoginProgram m_program;
    QStringList m_applicationFolders;
};

} // namespace fenrow
