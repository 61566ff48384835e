#pragma once

#include <QList>
#include <QPointer>
#include <QUrl>

#include <functional>

namespace fenrow {

class RouteRequest;

// Turns a URL handed to the program ("fenrow fenrow://ready", a link in
// another program, a second start) into a request the main window acts on.
// Scheme "fenrow", host "ready" opens the Ready list, with a fresh token
// each time; another host, or none, only brings the window forward; another
// scheme, or any URL while onboarding is not done, does nothing. Paths and
// queries are not read. A URL that comes before the window exists waits
// for it.
class AppURLRouter {
public:
    static inline const QString scheme = QStringLiteral("fenrow");
    static inline const QString readyHost = QStringLiteral("ready");

    AppURLRouter(std::function<bool()> canUseApplication, std::function<void()> showMainWindow);

    void route(const QUrl &url);
    // The window's mailbox; URLs that waited for it are routed now.
    void setRouteRequest(RouteRequest *routes);

    // Whether `argument` of the command line is a URL for the router.
    static bool isURLArgument(const QString &argument);

private:
    void routeNow(const QUrl &url);

    std::function<bool()> m_canUseApplication;
    std::function<void()> m_showMainWindow;
    QPointer<RouteRequest> m_routes;
    bool m_windowKnown = false;
    QList<QUrl> m_waiting;
};

} // namespace fenrow
