#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>
#include <variant>

namespace fenrow {

class LocalCalendar;

// Why a backup document cannot be restored. The document is checked whole
// before anything is restored, so either answer leaves the store untouched.
enum class BackupError { unreadable, newerVersion };

// The refusal with what is wrong and where, for the user to act on:
// "flows[2].items[15].dueDate: not a date in the form 2026-11-15T19:24:05Z",
// or the line and column of broken JSON. In English, like the format's keys.
struct BackupProblem {
    BackupError kind = BackupError::unreadable;
    QString detail;
};

// Replace empties the store first; merge adds only flows it does not have.
enum class RestoreMode { replace, merge };

// Everything the user owns in one JSON document: all flows with their
// tasks, edges, attached files and links, all templates, and the archive.
// Written compactly with every object's keys sorted, so equal documents
// give equal bytes. Dates are whole-second UTC ("2026-11-15T19:24:05Z"),
// ids upper-case, bytes base64. Optional fields are left out when absent;
// unknown keys are ignored when reading. Members default-initialise, so a
// value can name only the fields it sets.
struct FenrowBackup {
    static inline const QString formatName = QStringLiteral("studio.tarnwick.fenrow.backup");
    static constexpr qint64 currentVersion = 1;
    static inline const QString fileExtension = QStringLiteral("fenrowbackup");
    static inline const QString manualPrefix = QStringLiteral("Fenrow Backup ");
    static inline const QString automaticPrefix = QStringLiteral("Fenrow Auto Backup ");
    // Written beside the store before a replacing restore.
    static inline const QString safetyPrefix = QStringLiteral("Fenrow Safety Backup ");

    struct Item {
        QUuid id{};
        QString title{};
        bool isDone = false;
        QString statusRaw{};
        QString notes{};
        QString priorityRaw{};
        QString colorRaw{};
        std::optional<QDateTime> startDate{};
        std::optional<QDateTime> dueDate{};
        std::optional<qint64> estimateMinutes{};
        std::optional<qint64> dayPlanRank{};
        std::optional<double> manualWidth{};
        std::optional<double> manualHeight{};
        bool isCollapsed = false;
        QString checklistData{};
        std::optional<QString> recurrenceRaw{};
        qint64 repeatCount = 0;
        std::optional<QDateTime> completedAt{};
        double posX = 0;
        double posY = 0;
        qint64 order = 0;
        QDateTime createdAt{};
        friend bool operator==(const Item &, const Item &) = default;
    };
    struct Edge {
        QUuid id{};
        QUuid fromID{};
        QUuid toID{};
        QString sourceRaw{};
        // Absent in documents from before subtasks existed: a dependency.
        std::optional<QString> kindRaw{};
        QDateTime createdAt{};
        friend bool operator==(const Edge &, const Edge &) = default;
    };
    struct File {
        QUuid id{};
        QString filename{};
        QString contentTypeRaw{};
        qint64 byteCount = 0;
        std::optional<QByteArray> data{};
        std::optional<QByteArray> thumbnail{};
        double posX = 0;
        double posY = 0;
        std::optional<double> manualWidth{};
        std::optional<double> manualHeight{};
        qint64 order = 0;
        QDateTime createdAt{};
        friend bool operator==(const File &, const File &) = default;
    };
    struct Link {
        QUuid id{};
        QUuid fileID{};
        QUuid nodeID{};
        QDateTime createdAt{};
        friend bool operator==(const Link &, const Link &) = default;
    };
    struct Flow {
        QUuid id{};
        QString name{};
        qint64 order = 0;
        QDateTime createdAt{};
        double viewportOffsetX = 0;
        double viewportOffsetY = 0;
        double viewportScale = 1;
        bool hasBeenFramed = false;
        QList<Item> items{};
        QList<Edge> edges{};
        // Only files that are not trashed, and links between kept files and
        // nodes.
        QList<File> files{};
        QList<Link> links{};
        friend bool operator==(const Flow &, const Flow &) = default;
    };
    struct Template {
        QUuid id{};
        QString name{};
        QDateTime createdAt{};
        // The template's shape, carried through unread.
        std::optional<QByteArray> payload{};
        friend bool operator==(const Template &, const Template &) = default;
    };
    struct Record {
        QUuid id{};
        QUuid nodeID{};
        QUuid flowID{};
        QString flowName{};
        QString title{};
        QString kindRaw{};
        QDateTime completedAt{};
        qint64 cycle = 0;
        // The archived task's copy, carried through unread.
        std::optional<QByteArray> payload{};
        friend bool operator==(const Record &, const Record &) = default;
    };

    QString format = formatName;
    qint64 version = currentVersion;
    QDateTime createdAt;
    QList<Flow> flows;
    QList<Template> templates;
    QList<Record> records;

    // The document's bytes; none when a value cannot be written (a number
    // that is not finite, a date that is not valid or outside the years 1
    // to 9999), and then `problem` names the first such value by its place.
    std::optional<QByteArray> encoded(QString *problem = nullptr) const;
    // Reads and checks the whole document: any missing or mistyped required
    // field, a date not in the whole-second form, broken JSON or another
    // format name is `unreadable`; a version of 2 or more is
    // `newerVersion`. A leading UTF-8 byte-order mark is skipped.
    static std::variant<FenrowBackup, BackupProblem> decoded(const QByteArray &bytes);
    // "Fenrow Backup 2026-11-15.fenrowbackup": the prefix, then the day of
    // `date` in `calendar`. Two backups on one day share a name.
    static QString fileName(const QString &prefix, const QDateTime &date, const LocalCalendar &calendar);
    // "Fenrow Safety Backup 2026-11-15 20-24-05.fenrowbackup": to the second
    // in `calendar`, since a day may see more than one replace.
    static QString safetyFileName(const QDateTime &date, const LocalCalendar &calendar);

    friend bool operator==(const FenrowBackup &, const FenrowBackup &) = default;
};

} // namespace fenrow
