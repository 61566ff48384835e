#pragma once

#include <QObject>
#include <QUuid>

#include <optional>

namespace fenrow {

// The mailbox between code outside the window (the find palette, links
// from outside, notifications) and the main window, which alone changes
// what is on screen. Each request carries a fresh token, so that asking for
// the same place twice wakes the window twice. UI thread only.
class RouteRequest : public QObject {
    Q_OBJECT

public:
    struct FlowRequest {
        QUuid flowID;
        QUuid token;
        // A task of the flow to select and bring into view once it shows.
        std::optional<QUuid> nodeID;
        friend bool operator==(const FlowRequest &, const FlowRequest &) = default;
    };

    using QObject::QObject;

    const std::optional<QUuid> &readyToken() const { return m_readyToken; }
    const std::optional<FlowRequest> &flowRequest() const { return m_flowRequest; }

    // Stores the token; the same token again is no new request.
    void requestReady(const QUuid &token);
    void requestReady() { requestReady(QUuid::createUuid()); }
    void requestFlow(const QUuid &flowID, std::optional<QUuid> nodeID = std::nullopt);

signals:
    void readyRequested();
    void flowRequested();

private:
    std::optional<QUuid> m_readyToken;
    std::optional<FlowRequest> m_flowRequest;
};

} // namespace fenrow
