#include "RouteRequest.h"

namespace fenrow {

void RouteRequest::requestReady(const QUuid &token)
{
    if (m_readyToken == token)
        return;
    m_readyToken = token;
    emit readyRequested();
}

void RouteRequest::requestFlow(const QUuid &flowID, std::optional<QUuid> nodeID)
{
    if (flowID.isNull())
        return;
    m_flowRequest = FlowRequest{flowID, QUuid::createUuid(), nodeID};
    emit flowRequested();
}

} // namespace fenrow
