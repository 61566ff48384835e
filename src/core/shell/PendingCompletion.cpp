#include "PendingCompletion.h"

#include "WidgetFiles.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace fenrow {

namespace {

// Far above a tick's size; a larger file in the folder is not one.
constexpr qint64 largestTick = 4096;

QString idText(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

} // namespace

QString PendingCompletion::fileName() const
{
    return idText(id) + QStringLiteral(".json");
}

QByteArray PendingCompletion::encoded() const
{
    return QJsonDocument(QJsonObject{
                             {QStringLiteral("id"), idText(id)},
                             {QStringLiteral("taskID"), idText(taskID)},
                             {QStringLiteral("requestedAt"), WidgetFiles::dateText(requestedAt)},
                         })
        .toJson(QJsonDocument::Compact);
}

std::optional<PendingCompletion> PendingCompletion::decode(const QByteArray &bytes)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return std::nullopt;
    const QJsonObject object = document.object();
    const QUuid id = QUuid::fromString(object.value(QLatin1StringView("id")).toString());
    const QUuid taskID = QUuid::fromString(object.value(QLatin1StringView("taskID")).toString());
    const std::optional<QDateTime> requestedAt = WidgetFiles::readDate(object.value(QLatin1StringView("requestedAt")));
    if (id.isNull() || taskID.isNull() || !requestedAt)
        return std::nullopt;
    return PendingCompletion{id, taskID, *requestedAt, {}};
}

bool PendingCompletion::park(const QString &sharedFolder, QString *error) const
{
    return WidgetFiles::writeAtomically(QDir(WidgetFiles::pendingFolder(sharedFolder)).filePath(fileName()),
                                        encoded(), error);
}

QList<PendingCompletion> PendingCompletion::readAll(const QString &sharedFolder)
{
    const QDir folder(WidgetFiles::pendingFolder(sharedFolder));
    QList<PendingCompletion> entries;
    for (const QFileInfo &info : folder.entryInfoList({QStringLiteral("*.json")}, QDir::Files, QDir::Name)) {
        QFile file(info.filePath());
        // A file that went between the listing and here is simply not read.
        if (info.size() > largestTick || !file.open(QIODevice::ReadOnly))
            continue;
        if (std::optional<PendingCompletion> entry = decode(file.read(largestTick + 1))) {
            entry->path = info.filePath();
            entries.append(*entry);
        }
    }
    std::stable_sort(entries.begin(), entries.end(), [](const PendingCompletion &a, const PendingCompletion &b) {
        return a.requestedAt < b.requestedAt;
    });
    return entries;
}

bool PendingCompletion::remove(const QString &sharedFolder, const PendingCompletion &entry)
{
    return QFile::remove(entry.path.isEmpty() ? QDir(WidgetFiles::pendingFolder(sharedFolder)).filePath(entry.fileName())
                                              : entry.path);
}

} // namespace fenrow
