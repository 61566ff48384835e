#include "WidgetFiles.h"

#include "SettingsFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

Q_LOGGING_CATEGORY(fenrowWidgetLog, "fenrow.widget")

namespace fenrow::WidgetFiles {

QString sharedFolder()
{
    // The widget may run without the program's application name set, so
    // the folder is named here rather than taken from AppDataLocation.
    const bool scripted =
        QCoreApplication::instance() && QCoreApplication::arguments().contains(QStringLiteral("--ui-test"));
    const QString home = scripted ? SettingsFile::configHome()
                                  : QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return QDir(home).filePath(QStringLiteral("fenrow/shared"));
}

QString snapshotPath(const QString &sharedFolder)
{
    return QDir(sharedFolder).filePath(QLatin1StringView(snapshotFileName));
}

QString pendingFolder(const QString &sharedFolder)
{
    return QDir(sharedFolder).filePath(QLatin1StringView(pendingFolderName));
}

QString dateText(const QDateTime &moment)
{
    QDateTime whole = moment.toUTC();
    whole.setTime(QTime(whole.time().hour(), whole.time().minute(), whole.time().second()));
    return whole.toString(Qt::ISODate);
}

std::optional<QDateTime> readDate(const QJsonValue &value)
{
    if (!value.isString())
        return std::nullopt;
    const QDateTime moment = QDateTime::fromString(value.toString(), Qt::ISODate);
    if (!moment.isValid())
        return std::nullopt;
    return moment.toUTC();
}

bool writeAtomically(const QString &path, const QByteArray &bytes, QString *error)
{
    const QString folder = QFileInfo(path).absolutePath();
    if (!QDir().mkpath(folder)) {
        if (error)
            *error = QStringLiteral("the folder \"%1\" cannot be made").arg(QDir::toNativeSeparators(folder));
        return false;
    }
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return true;
    if (error)
        *error = QStringLiteral("\"%1\": %2").arg(QDir::toNativeSeparators(path), file.errorString());
    return false;
}

} // namespace fenrow::WidgetFiles
