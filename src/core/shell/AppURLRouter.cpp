#include "AppURLRouter.h"

#include "RouteRequest.h"

#include <QUuid>

namespace fenrow {

AppURLRouter::AppURLRouter(std::function<bool()> canUseApplication, std::function<void()> showMainWindow)
    : m_canUseApplication(std::move(canUseApplication)), m_showMainWindow(std::move(showMainWindow))
{
}

bool AppURLRouter::isURLArgument(const QString &argument)
{
    return argument.startsWith(scheme + QLatin1Char(':'), Qt::CaseInsensitive);
}

void AppURLRouter::route(const QUrl &url)
{
    if (!m_windowKnown) {
        m_waiting.append(url);
        return;
    }
    routeNow(url);
}

void AppURLRouter::setRouteRequest(RouteRequest *routes)
{
    m_routes = routes;
    m_windowKnown = true;
    const QList<QUrl> waiting = std::exchange(m_waiting, {});
    for (const QUrl &url : waiting)
        routeNow(url);
}

void AppURLRouter::routeNow(const QUrl &url)
{
    // QUrl gives scheme and host in lower case, as both are case-blind.
    if (!url.isValid() || url.scheme() != scheme)
        return;
    if (!m_canUseApplication())
        return;
    m_showMainWindow();
    if (url.host() == readyHost && m_routes)
        m_routes->requestReady(QUuid::createUuid());
}

} // namespace fenrow
