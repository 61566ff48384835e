#pragma once

#include "CanvasInteraction.h"

#include <QObject>
#include <QUuid>

#include <optional>

namespace fenrow {

// Mailboxes through which menus, search, the Ready list and routes address
// the canvas of a flow without holding it. Each request carries a fresh
// token, so that two equal requests in a row both wake the canvas. The
// program makes one of each and hands them to every canvas.
class CanvasZoomRequest : public QObject {
    Q_OBJECT

public:
    struct Request {
        CanvasZoom::Kind kind = CanvasZoom::Kind::zoomToFit;
        QUuid flowID;
        QUuid token;
        friend bool operator==(const Request &, const Request &) = default;
    };

    using QObject::QObject;

    const std::optional<Request> &pending() const { return m_pending; }
    void post(CanvasZoom::Kind kind, const QUuid &flowID);
    // Taken by the canvas of the request's flow.
    void clear();

signals:
    void pendingChanged();

private:
    std::optional<Request> m_pending;
};

class CanvasRevealRequest : public QObject {
    Q_OBJECT

public:
    struct Request {
        QUuid nodeID;
        QUuid flowID;
        QUuid token;
        friend bool operator==(const Request &, const Request &) = default;
    };

    using QObject::QObject;

    const std::optional<Request> &pending() const { return m_pending; }
    void post(const QUuid &nodeID, const QUuid &flowID);
    void clear();

signals:
    void pendingChanged();

private:
    std::optional<Request> m_pending;
};

} // namespace fenrow
