#pragma once

#include "EdgeKind.h"
#include "EdgeSource.h"
#include "SharedRows.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace fenrow {

// A whole flow's undoable state, taken before and after each user action.
// Left out on purpose: folding, the flow's own fields (name, order,
// viewport), file bytes and names, completion records, link times.
// Task rows are shared with the snapshot a capture was given to share
// with, so consecutive snapshots of a flow hold one copy of what stayed.
struct FlowSnapshot {
    struct Item {
        QUuid id;
        QString title;
        bool isDone = false;
        QString statusRaw;
        QString notes;
        QString priorityRaw;
        QString colorRaw;
        std::optional<QDateTime> startDate;
        std::optional<QDateTime> dueDate;
        std::optional<qint64> estimateMinutes;
        std::optional<qint64> dayPlanRank;
        std::optional<double> manualWidth;
        std::optional<double> manualHeight;
        QString checklistData;
        std::optional<QString> recurrenceRaw;
        qint64 repeatCount = 0;
        std::optional<QDateTime> completedAt;
        double posX = 0;
        double posY = 0;
        qint64 order = 0;
        QDateTime createdAt;
        friend bool operator==(const Item &, const Item &) = default;
    };
    struct Edge {
        QUuid id;
        QUuid fromItemID;
        QUuid toItemID;
        EdgeSource source = EdgeSource::manual;
        std::optional<EdgeKind> kind;
        QDateTime createdAt;
        friend bool operator==(const Edge &, const Edge &) = default;
    };
    struct File {
        QUuid id;
        bool isTrashed = false;
        double posX = 0;
        double posY = 0;
        std::optional<double> manualWidth;
        std::optional<double> manualHeight;
        qint64 order = 0;
        friend bool operator==(const File &, const File &) = default;
    };
    struct Link {
        QUuid id;
        QUuid fileID;
        QUuid nodeID;
        friend bool operator==(const Link &, const Link &) = default;
    };

    QUuid flowID;
    SharedRows<Item> items;
    QList<Edge> edges;
    QList<File> files;
    QList<Link> links;

    friend bool operator==(const FlowSnapshot &, const FlowSnapshot &) = default;
};

} // namespace fenrow
