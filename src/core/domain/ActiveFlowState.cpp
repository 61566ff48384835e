#include "ActiveFlowState.h"

namespace fenrow {

void ActiveFlowState::setActiveFlowID(std::optional<QUuid> id)
{
    if (m_activeFlowID == id)
        return;
    m_activeFlowID = id;
    emit activeFlowIDChanged();
}

void ActiveFlowState::setPendingSeedFlowID(std::optional<QUuid> id)
{
    if (m_pendingSeedFlowID == id)
        return;
    m_pendingSeedFlowID = id;
    emit pendingSeedFlowIDChanged();
}

} // namespace fenrow
