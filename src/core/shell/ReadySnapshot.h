#pragma once

#include "domain/Readiness.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace fenrow {

class FenrowStore;

// The Ready list as the tray widget draws it: the first tasks, how many
// there are, the day it holds for and the accent. The program writes it to
// "ready-snapshot.json" in the shared folder; the widget only reads it.
struct ReadySnapshot {
    static constexpr qsizetype taskLimit = 8;

    struct Item {
        QUuid id;
        QString title;
        QString flowName;
        std::optional<QDateTime> dueDate;
        bool isOverdue = false;
        bool isToday = false;
        QString priorityRaw;

        friend bool operator==(const Item &, const Item &) = default;
    };

    // The start of the next local day: past it the list is not current.
    QDateTime validUntil;
    // Ready tasks before the limit.
    qsizetype total = 0;
    QList<Item> tasks;
    QString paletteRaw;
    // "noTasks", "allDone", "allBlocked" or "allDeferred" when `total` is 0.
    std::optional<QString> emptyReason;

    friend bool operator==(const ReadySnapshot &, const ReadySnapshot &) = default;

    // The store's Ready list in the window's order for `sort`, at `now`.
    static ReadySnapshot build(const FenrowStore &store, ReadySort sort, const QString &paletteRaw,
                               const QDateTime &now);

    // Indented JSON with sorted keys and whole-second UTC dates; absent
    // optionals are left out.
    QByteArray encoded() const;
    // Nothing when the bytes are not a snapshot.
    static std::optional<ReadySnapshot> decode(const QByteArray &bytes);

    // Replaces the file in `sharedFolder` whole; false with the reason in
    // `error` when it cannot.
    bool write(const QString &sharedFolder, QString *error = nullptr) const;
    // Nothing when the file is missing or not a snapshot.
    static std::optional<ReadySnapshot> read(const QString &sharedFolder);
};

} // namespace fenrow
