#include "CanvasRequests.h"

namespace fenrow {

void CanvasZoomRequest::post(CanvasZoom::Kind kind, const QUuid &flowID)
{
    m_pending = Request{kind, flowID, QUuid::createUuid()};
    emit pendingChanged();
}

void CanvasZoomRequest::clear()
{
    if (!m_pending)
        return;
    m_pending.reset();
    emit pendingChanged();
}

void CanvasRevealRequest::post(const QUuid &nodeID, const QUuid &flowID)
{
    m_pending = Request{nodeID, flowID, QUuid::createUuid()};
    emit pendingChanged();
}

void CanvasRevealRequest::clear()
{
    if (!m_pending)
        return;
    m_pending.reset();
    emit pendingChanged();
}

} // namespace fenrow
