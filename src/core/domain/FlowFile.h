#pragma once

#include "ExternalBytes.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace fenrow {

class FileLink;
class TaskFlow;

// A file attached to a flow, shown as a card on its canvas. Its contents and
// thumbnail live outside the row and are read only when asked for.
class FlowFile {
public:
    QUuid id;
    QString filename;
    QString contentTypeRaw;
    qint64 byteCount = 0;
    ExternalBytes data;
    ExternalBytes thumbnail;
    bool isTrashed = false;
    double posX = 0;
    double posY = 0;
    std::optional<double> manualWidth;
    std::optional<double> manualHeight;
    qint64 order = 0;
    QDateTime createdAt;

    const TaskFlow *flow() const { return m_flow; }
    TaskFlow *flow() { return m_flow; }
    void setFlow(TaskFlow *flow) { m_flow = flow; }

    const QList<FileLink *> &links() const { return m_links; }
    QList<FileLink *> &links() { return m_links; }

private:
    TaskFlow *m_flow = nullptr;
    QList<FileLink *> m_links;
};

} // namespace fenrow
