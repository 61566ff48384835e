#include "FileOpener.h"

#include <QDateTime>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QSaveFile>
#include <QTemporaryDir>
#include <QUrl>

#include <unistd.h>

Q_LOGGING_CATEGORY(fenrowFilesLog, "fenrow.files")

namespace fenrow {

namespace {

// Names come from the data, which may have come from anybody's backup: keep
// them inside the staging folder.
QString safeName(const QString &filename)
{
    QString name = filename;
    name.replace(QLatin1Char('/'), QLatin1Char('_'));
    name.remove(QChar(0));
    if (name.isEmpty() || name == QLatin1String(".") || name == QLatin1String(".."))
        return QStringLiteral("file");
    return name;
}

void clearOldStaging()
{
    const QDateTime cutoff = QDateTime::currentDateTimeUtc().addDays(-1);
    const QFileInfoList folders =
        QDir::temp().entryInfoList({QString::fromLatin1(FileOpener::stagingPrefix) + QLatin1Char('*')},
                                   QDir::Dirs | QDir::NoDotAndDotDot | QDir::NoSymLinks | QDir::Hidden);
    for (const QFileInfo &folder : folders) {
        if (folder.ownerId() == ::getuid() && folder.lastModified() < cutoff)
            QDir(folder.filePath()).removeRecursively();
    }
}

void stagingFailed(const QString &reason)
{
    qCCritical(fenrowFilesLog, "Could not stage a file for opening: %s", qUtf8Printable(reason));
}

} // namespace

std::optional<QString> FileOpener::stage(const FlowFile &file)
{
    const std::optional<QByteArray> bytes = file.data.value();
    if (!bytes) {
        stagingFailed(QStringLiteral("%1 has no contents").arg(file.filename));
        return std::nullopt;
    }
    clearOldStaging();
    // Kept after we return: the other program reads the file later.
    QTemporaryDir folder(QDir::temp().filePath(QString::fromLatin1(stagingPrefix) + QStringLiteral("XXXXXX")));
    if (!folder.isValid()) {
        stagingFailed(folder.errorString());
        return std::nullopt;
    }
    folder.setAutoRemove(false);
    const QString path = folder.filePath(safeName(file.filename));
    QFile staged(path);
    if (!staged.open(QIODevice::WriteOnly | QIODevice::NewOnly) || staged.write(*bytes) != bytes->size()
        || !staged.flush()) {
        stagingFailed(QStringLiteral("%1: %2").arg(path, staged.errorString()));
        staged.close();
        folder.remove();
        return std::nullopt;
    }
    return path;
}

bool FileOpener::open(const FlowFile &file)
{
    const std::optional<QString> path = stage(file);
    if (!path)
        return false;
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(*path))) {
        qCWarning(fenrowFilesLog, "No program opened %s", qUtf8Printable(*path));
        return false;
    }
    return true;
}

bool FileOpener::exportCopy(const FlowFile &file, const QString &path)
{
    const std::optional<QByteArray> bytes = file.data.value();
    if (!bytes) {
        qCCritical(fenrowFilesLog, "Export copy failed: %s has no contents", qUtf8Printable(file.filename));
        return false;
    }
    QSaveFile target(path);
    if (!target.open(QIODevice::WriteOnly) || target.write(*bytes) != bytes->size() || !target.commit()) {
        qCCritical(fenrowFilesLog, "Export copy failed: %s", qUtf8Printable(target.errorString()));
        return false;
    }
    return true;
}

} // namespace fenrow
