#include "SettingsFile.h"

#include <QDir>
#include <QStandardPaths>

namespace fenrow {

QString SettingsFile::path()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return QDir(folder).filePath(QStringLiteral("fenrow/fenrow.conf"));
}

std::unique_ptr<QSettings> SettingsFile::open()
{
    return std::make_unique<QSettings>(path(), QSettings::IniFormat);
}

} // namespace fenrow
