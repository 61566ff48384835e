#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace fenrow {

// One tick made in the tray widget: a file of its own in the shared
// folder's "pending-completions", named after `id` in upper case, which
// the program applies and removes. Parked while the program is not
// running, it waits there for its next start.
struct PendingCompletion {
    QUuid id;
    QUuid taskID;
    QDateTime requestedAt;
    // The file it was read from (empty for a tick not parked yet): the
    // one that goes, whatever its name.
    QString path;

    friend bool operator==(const PendingCompletion &, const PendingCompletion &) = default;

    QString fileName() const;
    QByteArray encoded() const;
    static std::optional<PendingCompletion> decode(const QByteArray &bytes);

    // Writes the file whole, the folder made if missing; false with the
    // reason in `error` when it cannot.
    bool park(const QString &sharedFolder, QString *error = nullptr) const;
    // The parked ticks, oldest first. A file that is not a tick is skipped
    // and stays where it is; a missing folder gives none.
    static QList<PendingCompletion> readAll(const QString &sharedFolder);
    // Removes the tick's file; false when it could not be removed.
    static bool remove(const QString &sharedFolder, const PendingCompletion &entry);
};

} // namespace fenrow
