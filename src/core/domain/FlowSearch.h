#pragma once

#include "NodeStatus.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace fenrow {

class FlowNode;
class TaskFlow;

// One node found by the find palette.
struct FlowSearchMatch {
    QUuid id;
    QString title;
    NodeStatus status = NodeStatus::pending;
    // The first matching line of the notes; absent when the title matched.
    std::optional<QString> notesSnippet;
    // Absent for a node of the current flow.
    std::optional<QUuid> flowID;

    friend bool operator==(const FlowSearchMatch &, const FlowSearchMatch &) = default;
};

// The matches of one flow.
struct FlowSearchGroup {
    QUuid flowID;
    QString flowName;
    QList<FlowSearchMatch> matches;

    friend bool operator==(const FlowSearchGroup &, const FlowSearchGroup &) = default;
};

// Searching node titles and notes, ignoring case and diacritics by the rules
// of the interface language. No index: one pass over the nodes per query.
namespace FlowSearch {

bool foldedContains(const QString &text, const QString &query);

// The first line of `notes` that contains `query`, trimmed, whole.
std::optional<QString> notesSnippet(const QString &notes, const QString &query);

// Matches in the given order; the title is tested first, and a title match
// carries no snippet. A blank query finds nothing.
QList<FlowSearchMatch> searchNodes(const QString &query, const QList<const FlowNode *> &nodes);

// The current flow's group first, then the other flows in list order;
// flows without matches are left out.
QList<FlowSearchGroup> searchGroups(const QString &query, const TaskFlow *currentFlow,
                                    const QList<const TaskFlow *> &flows);

} // namespace FlowSearch

} // namespace fenrow
