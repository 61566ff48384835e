#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>

namespace fenrow {

class FlowNode;

// A full copy of an archived node, kept as the JSON payload of its record so
// that the node can come back. Keys are written in a fixed order; dates are
// seconds since 2001-01-01 UTC.
struct ArchivedTask {
    QString title;
    QString notes;
    QString statusRaw;
    QString priorityRaw;
    QString colorRaw;
    std::optional<QDateTime> startDate;
    std::optional<QDateTime> dueDate;
    std::optional<qint64> estimateMinutes;
    std::optional<double> manualWidth;
    std::optional<double> manualHeight;
    double posX = 0;
    double posY = 0;
    QString checklistData;
    std::optional<QString> recurrenceRaw;
    std::optional<qint64> repeatCount;
    QDateTime createdAt;

    static ArchivedTask of(const FlowNode &node);
    QByteArray encode() const;
    static std::optional<ArchivedTask> decode(const QByteArray &json);

    friend bool operator==(const ArchivedTask &, const ArchivedTask &) = default;
};

} // namespace fenrow
