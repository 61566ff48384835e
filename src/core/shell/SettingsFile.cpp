#include "SettingsFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace fenrow {

namespace {

// Scripted runs ("--ui-test") keep their settings in a folder of their own
// that goes with the process, so they never change the user's.
QString scriptedRunFolder()
{
    static QTemporaryDir folder;
    return folder.path();
}

bool isScriptedRun()
{
    return QCoreApplication::instance() && QCoreApplication::arguments().contains(QStringLiteral("--ui-test"));
}

} // namespace

QString SettingsFile::configHome()
{
    return isScriptedRun() ? scriptedRunFolder()
                           : QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
}

QString SettingsFile::path()
{
    return QDir(configHome()).filePath(QStringLiteral("fenrow/fenrow.conf"));
}

std::unique_ptr<QSettings> SettingsFile::open()
{
    return std::make_unique<QSettings>(path(), QSettings::IniFormat);
}

} // namespace fenrow
