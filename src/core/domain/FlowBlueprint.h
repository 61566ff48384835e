#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace fenrow {

class TaskFlow;

// The shape of a flow without its progress, dates or identities: what a
// template stores and what a duplicate is made from. Stored as JSON with
// the keys "version", "name", "items" and "edges".
struct FlowBlueprint {
    static constexpr int currentVersion = 1;

    struct Item {
        qint64 key = 0;
        QString title;
        QString notes;
        QString priorityRaw;
        QString colorRaw;
        std::optional<qint64> estimateMinutes;
        QString checklistData;
        std::optional<QString> recurrenceRaw;
        std::optional<double> manualWidth;
        std::optional<double> manualHeight;
        double posX = 0;
        double posY = 0;
        qint64 order = 0;
        friend bool operator==(const Item &, const Item &) = default;
    };
    struct Edge {
        qint64 from = 0;
        qint64 to = 0;
        QString kindRaw;
        QString sourceRaw;
        friend bool operator==(const Edge &, const Edge &) = default;
    };

    int version = currentVersion;
    QString name;
    QList<Item> items;
    QList<Edge> edges;

    // Nodes in `order`, edges oldest first; checklists reset.
    static FlowBlueprint make(const TaskFlow &flow, const QString &name);
    // Gives every checklist entry a new id and unticks it; text that is
    // empty or does not decode is returned as it is.
    static QString resetChecklist(const QString &checklistData);

    // Compact JSON; absent optionals are left out. Empty when a number is
    // infinite or NaN, which JSON cannot hold.
    QByteArray encode() const;
    // None when the text is not such a document or a field has the wrong
    // type. Raw strings are taken as they are and read tolerantly later.
    static std::optional<FlowBlueprint> decode(const QByteArray &json);

    friend bool operator==(const FlowBlueprint &, const FlowBlueprint &) = default;
};

} // namespace fenrow
