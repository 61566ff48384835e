#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QStringList>

#include <vector>

// The desktop's own file dialogs where a portal offers them. Qt's
// "xdgdesktopportal" platform theme (qt6-xdgdesktopportal-platformtheme)
// shows every QFileDialog through the portal's FileChooser; it has to be
// chosen before the QApplication exists, so the choice is made on the
// program's arguments. Elsewhere, and wherever the user picked a platform
// theme, Qt's own dialogs stay.
namespace fenrow::PortalFileDialogs
{

inline constexpr char themeName[] = "xdgdesktopportal";

// Whether to choose the theme: no platform theme named by the user (the
// variable's value or "-platformtheme"), and a running portal that offers
// FileChooser on `bus`.
bool wanted(const QStringList &arguments, const QByteArray &platformThemeVariable, const QDBusConnection &bus);

// argc and argv for the QApplication: the program's own, with
// "-platformtheme xdgdesktopportal" added where `wanted` says so on the
// session bus (asked on a connection of its own, closed again). Holds the
// text argv points into, so it lives as long as the application.
class ApplicationArguments
{
public:
    ApplicationArguments(int argc, char *argv[]);

    ApplicationArguments(const ApplicationArguments &) = delete;
    ApplicationArguments &operator=(const ApplicationArguments &) = delete;

    int &argc() { return m_argc; }
    char **argv() { return m_pointers.data(); }
    bool choseTheme() const { return m_choseTheme; }

private:
    std::vector<QByteArray> m_texts;
    std::vector<char *> m_pointers;
    int m_argc = 0;
    bool m_choseTheme = false;
};

} // namespace fenrow::PortalFileDialogs
