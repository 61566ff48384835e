#include "LoginItem.h"

#include "AppPreferences.h"
#include "SettingsFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QSaveFile>
#include <QStandardPaths>

Q_LOGGING_CATEGORY(fenrowLoginItemLog, "fenrow.loginItem")

namespace fenrow {

namespace {

// Characters that make an argument of Exec need quotes (freedesktop.org
// desktop entries, "The Exec key").
bool needsQuotes(const QString &argument)
{
    static const QString reserved = QStringLiteral(" \t\n\"'\\><~|&;$*?#()`");
    for (QChar c : argument) {
        if (reserved.contains(c))
            return true;
    }
    return argument.isEmpty();
}

// The escapes of a value of type string, which the desktop undoes before
// it reads the quoting of Exec.
QString escapedString(const QString &value)
{
    QString escaped;
    escaped.reserve(value.size());
    for (QChar c : value) {
        switch (c.unicode()) {
        case '\\':
            escaped += QLatin1String("\\\\");
            break;
        case '\n':
            escaped += QLatin1String("\\n");
            break;
        case '\t':
            escaped += QLatin1String("\\t");
            break;
        case '\r':
            escaped += QLatin1String("\\r");
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

QString autostartName(LoginProgram program)
{
    return program == LoginProgram::widget ? QStringLiteral("fenrow-widget.desktop")
                                           : QStringLiteral("fenrow.desktop");
}

QString installedName(LoginProgram program)
{
    return program == LoginProgram::widget ? QStringLiteral("studio.tarnwick.Fenrow.Widget.desktop")
                                           : QStringLiteral("studio.tarnwick.Fenrow.desktop");
}

} // namespace

LoginItem::LoginItem(QString entryPath, LoginProgram program, QStringList applicationFolders)
    : m_entryPath(std::move(entryPath)), m_program(program), m_applicationFolders(std::move(applicationFolders))
{
}

LoginItem LoginItem::forThisUser(LoginProgram program)
{
    return LoginItem(QDir(SettingsFile::configHome()).filePath(QStringLiteral("autostart/") + autostartName(program)),
                     program, QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation));
}

QString LoginItem::installedEntry() const
{
    for (const QString &folder : m_applicationFolders) {
        const QString path = QDir(folder).filePath(installedName(m_program));
        if (QFileInfo(path).isFile())
            return path;
    }
    return {};
}

bool LoginItem::isEnabled() const
{
    QFile file(m_entryPath);
    if (!QFileInfo(m_entryPath).isFile() || !file.open(QIODevice::ReadOnly))
        return false;
    // Only the main group counts; an action's group may hold the same keys.
    bool inEntry = false;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine().trimmed();
        if (line.startsWith('[')) {
            inEntry = line == "[Desktop Entry]";
            continue;
        }
        const qsizetype equals = line.indexOf('=');
        if (!inEntry || equals < 0)
            continue;
        const QByteArray key = line.left(equals).trimmed();
        const QByteArray value = line.mid(equals + 1).trimmed();
        if ((key == "Hidden" && value == "true") || (key == "X-GNOME-Autostart-enabled" && value == "false"))
            return false;
    }
    return true;
}

bool LoginItem::setEnabled(bool enabled, const QString &program) const
{
    QString problem;
    if (enabled) {
        const QString folder = QFileInfo(m_entryPath).absolutePath();
        QSaveFile file(m_entryPath);
        QByteArray text;
        if (const QString installed = installedEntry(); !installed.isEmpty()) {
            QFile source(installed);
            if (source.open(QIODevice::ReadOnly))
                text = source.readAll();
        }
        // An installed entry that cannot be read is no reason to fail: the
        // running program starts as well.
        if (text.isEmpty())
            text = entryText(program, m_program);
        if (!QDir().mkpath(folder))
            problem = QStringLiteral("the folder \"%1\" cannot be made").arg(QDir::toNativeSeparators(folder));
        else if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit())
            problem = file.errorString();
    } else {
        QFile file(m_entryPath);
        if (file.exists() && !file.remove())
            problem = file.errorString();
    }
    if (problem.isEmpty())
        return true;
    qCWarning(fenrowLoginItemLog, "The autostart entry \"%s\" could not be %s: %s",
              qUtf8Printable(QDir::toNativeSeparators(m_entryPath)), enabled ? "written" : "removed",
              qUtf8Printable(problem));
    return false;
}

void LoginItem::alignPreference(AppPreferences &preferences) const
{
    const bool enabled = isEnabled();
    if (m_program == LoginProgram::widget) {
        if (preferences.widgetAtLogin() != enabled)
            preferences.setWidgetAtLogin(enabled);
    } else if (preferences.launchAtLogin() != enabled) {
        preferences.setLaunchAtLogin(enabled);
    }
}

QByteArray LoginItem::entryText(const QString &program, LoginProgram which)
{
    const bool widget = which == LoginProgram::widget;
    return QStringLiteral("[Desktop Entry]\n"
                          "Type=Application\n"
                          "Name=%1\n"
                          "Comment=%2\n"
                          "Exec=%3\n"
                          "Icon=studio.tarnwick.Fenrow\n"
                          "Terminal=false\n"
                          "X-GNOME-Autostart-enabled=true\n")
        .arg(widget ? QStringLiteral("Fenrow Ready") : QStringLiteral("Fenrow"),
             widget ? QStringLiteral("What is ready to do, in the system tray")
                    : QStringLiteral("Task flows, and what is ready to do next"),
             execValue(program))
        .toUtf8();
}

QString LoginItem::execValue(const QString &path)
{
    QString argument = path;
    if (needsQuotes(argument)) {
        QString quoted;
        for (QChar c : argument) {
            if (c == u'"' || c == u'`' || c == u'$' || c == u'\\')
                quoted += u'\\';
            quoted += c;
        }
        argument = u'"' + quoted + u'"';
    }
    argument.replace(u'%', QLatin1String("%%"));
    return escapedString(argument);
}

} // namespace fenrow
