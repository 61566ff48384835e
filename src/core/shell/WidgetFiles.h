#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QJsonValue>
#include <QLoggingCategory>
#include <QString>

#include <optional>

// "fenrow.widget": both sides of the widget files.
Q_DECLARE_LOGGING_CATEGORY(fenrowWidgetLog)

namespace fenrow::WidgetFiles {

// The names both processes share: the program writes the Ready list for
// the tray widget, the widget drops one file per tick for the program.
inline constexpr const char *appGroup = "QT4LW8ZD2N.studio.tarnwick.Fenrow";
inline constexpr const char *widgetKind = "FenrowReadyWidget";
inline constexpr const char *snapshotFileName = "ready-snapshot.json";
inline constexpr const char *pendingFolderName = "pending-completions";

// "fenrow/shared" in the user's data folder ($XDG_DATA_HOME), the folder
// beside the store; a scripted run ("--ui-test") has a private one that
// goes with the process.
QString sharedFolder();
QString snapshotPath(const QString &sharedFolder);
QString pendingFolder(const QString &sharedFolder);

// Dates in both files: ISO 8601, whole seconds, UTC ("2026-11-26T00:00:00Z").
QString dateText(const QDateTime &moment);
std::optional<QDateTime> readDate(const QJsonValue &value);

// `bytes` to a new file beside `path`, renamed over it when complete, the
// folder made first; false with the reason in `error` otherwise, and any
// earlier file stays as it was.
bool writeAtomically(const QString &path, const QByteArray &bytes, QString *error);

} // namespace fenrow::WidgetFiles
