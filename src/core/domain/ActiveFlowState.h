#pragma once

#include <QObject>
#include <QUuid>

#include <optional>

namespace fenrow {

// Which flow the main window shows, and a flow just created empty whose
// canvas should add its first node when it first appears.
class ActiveFlowState : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    std::optional<QUuid> activeFlowID() const { return m_activeFlowID; }
    void setActiveFlowID(std::optional<QUuid> id);

    std::optional<QUuid> pendingSeedFlowID() const { return m_pendingSeedFlowID; }
    void setPendingSeedFlowID(std::optional<QUuid> id);

signals:
    void activeFlowIDChanged();
    void pendingSeedFlowIDChanged();

private:
    std::optional<QUuid> m_activeFlowID;
    std::optional<QUuid> m_pendingSeedFlowID;
};

} // namespace fenrow
