#pragma once

#include "ExternalBytes.h"

#include <QDateTime>
#include <QString>
#include <QUuid>

namespace fenrow {

// One line of history that outlives its node and flow: a finished round of
// a recurring task ("repeat") or a task moved into the archive ("archived").
// It holds identifiers and copies of names, never references.
class CompletionRecord {
public:
    static inline const QString repeatKind = QStringLiteral("repeat");
    static inline const QString archivedKind = QStringLiteral("archived");

    QUuid id;
    QUuid nodeID;
    QUuid flowID;
    QString flowName;
    QString title;
    QString kindRaw;
    QDateTime completedAt;
    qint64 cycle = 0;
    ExternalBytes payload;
};

} // namespace fenrow
