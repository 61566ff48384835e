#include "FreedesktopNotifications.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QLoggingCategory>
#include <QVariantMap>

Q_LOGGING_CATEGORY(fenrowNotificationsLog, "fenrow.notifications")

namespace fenrow {

namespace {

const QString interfaceName = QStringLiteral("org.freedesktop.Notifications");
// The icon and the launcher entry of the installed program (packaging/).
const QString programName = QStringLiteral("studio.tarnwick.Fenrow");
// Each server decides how long a notification stays.
constexpr qint32 serverDefaultTimeout = -1;

QDBusMessage methodCall(const QString &method)
{
    return QDBusMessage::createMethodCall(FreedesktopNotifications::service, FreedesktopNotifications::path,
                                          interfaceName, method);
}

} // namespace

FreedesktopNotifications::FreedesktopNotifications(QDBusConnection bus, QObject *parent)
    : QObject(parent), m_bus(std::move(bus))
{
    if (!m_bus.isConnected()) {
        m_capabilitiesKnown = true;
        reportFailure(QStringLiteral("no session bus (%1)").arg(m_bus.lastError().message()));
        return;
    }
    // From whichever connection serves the name: a server started on demand
    // or restarted has a new one, and the numbers it answers are its own.
    m_bus.connect(QString(), path, interfaceName, QStringLiteral("ActionInvoked"), this,
                  SLOT(actionInvoked(uint, QString)));
    m_bus.connect(QString(), path, interfaceName, QStringLiteral("NotificationClosed"), this,
                  SLOT(notificationClosed(uint, uint)));
}

FreedesktopNotifications::~FreedesktopNotifications()
{
    m_bus.disconnect(QString(), path, interfaceName, QStringLiteral("ActionInvoked"), this,
                     SLOT(actionInvoked(uint, QString)));
    m_bus.disconnect(QString(), path, interfaceName, QStringLiteral("NotificationClosed"), this,
                     SLOT(notificationClosed(uint, uint)));
}

void FreedesktopNotifications::show(const NotificationRequest &request)
{
    if (!m_bus.isConnected())
        return;
    if (!m_capabilitiesKnown) {
        m_waiting.append(request);
        askCapabilities();
        return;
    }
    sendNotify(request);
}

void FreedesktopNotifications::askCapabilities()
{
    // Asked at the first notification, not before: a program that shows
    // none does not wake a server that is started on demand.
    if (m_capabilitiesAsked)
        return;
    m_capabilitiesAsked = true;
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(methodCall(QStringLiteral("GetCapabilities"))), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *answer) {
        answer->deleteLater();
        const QDBusPendingReply<QStringList> reply = *answer;
        if (reply.isError())
            reportFailure(reply.error().message());
        else
            m_bodyMarkup = reply.value().contains(QStringLiteral("body-markup"));
        m_capabilitiesKnown = true;
        const QList<NotificationRequest> waiting = std::exchange(m_waiting, {});
        for (const NotificationRequest &request : waiting)
            sendNotify(request);
        finishClosingIfDone();
    });
}

void FreedesktopNotifications::sendNotify(const NotificationRequest &request)
{
    const uint replaces = m_shown.value(request.identifier, 0);
    QDBusMessage call = methodCall(QStringLiteral("Notify"));
    const QVariantMap hints{{QStringLiteral("desktop-entry"), programName}};
    call << appName << replaces << programName << request.title << bodyText(request)
         << QStringList{defaultAction, qtTrId("notification.open")} << hints << serverDefaultTimeout;
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    m_showing.insert(watcher, {request.identifier});
    connect(watcher, &QDBusPendingCallWatcher::finished, this, &FreedesktopNotifications::notifyAnswered);
}

void FreedesktopNotifications::notifyAnswered(QDBusPendingCallWatcher *watcher)
{
    watcher->deleteLater();
    const Showing showing = m_showing.take(watcher);
    const QDBusPendingReply<uint> reply = *watcher;
    if (reply.isError()) {
        reportFailure(reply.error().message());
    } else if (showing.withdrawn) {
        sendClose(reply.value());
    } else if (!m_early.closed.remove(reply.value())) {
        const uint id = reply.value();
        const uint previous = m_shown.value(showing.identifier, 0);
        if (previous != 0 && previous != id)
            m_identifiers.remove(previous);
        m_shown.insert(showing.identifier, id);
        m_identifiers.insert(id, showing.identifier);
        if (m_early.opened.remove(id) && m_opened)
            m_opened(showing.identifier);
    }
    // What came early for a number that no call in flight can claim was
    // about another program's notification.
    if (m_showing.isEmpty())
        m_early = {};
    finishClosingIfDone();
}

void FreedesktopNotifications::close(const QString &identifier)
{
    m_waiting.removeIf([&](const NotificationRequest &request) { return request.identifier == identifier; });
    for (Showing &showing : m_showing)
        if (showing.identifier == identifier)
            showing.withdrawn = true;
    if (const uint id = m_shown.value(identifier, 0)) {
        forget(id);
        sendClose(id);
    }
}

void FreedesktopNotifications::closeAll(std::function<void()> done)
{
    m_waiting.clear();
    for (Showing &showing : m_showing)
        showing.withdrawn = true;
    const QList<uint> ids = m_identifiers.keys();
    for (const uint id : ids) {
        forget(id);
        sendClose(id);
    }
    if (done)
        m_closedCallbacks.append(std::move(done));
    finishClosingIfDone();
}

void FreedesktopNotifications::sendClose(uint id)
{
    QDBusMessage call = methodCall(QStringLiteral("CloseNotification"));
    call << id;
    ++m_closesInFlight;
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *answer) {
        answer->deleteLater();
        // An error (the user closed it first) is an answer too.
        --m_closesInFlight;
        finishClosingIfDone();
    });
}

void FreedesktopNotifications::forget(uint id)
{
    const QString identifier = m_identifiers.take(id);
    if (m_shown.value(identifier, 0) == id)
        m_shown.remove(identifier);
}

void FreedesktopNotifications::finishClosingIfDone()
{
    if (m_closedCallbacks.isEmpty() || m_closesInFlight > 0 || !m_waiting.isEmpty())
        return;
    for (const Showing &showing : std::as_const(m_showing))
        if (showing.withdrawn)
            return;
    const QList<std::function<void()>> callbacks = std::exchange(m_closedCallbacks, {});
    for (const std::function<void()> &callback : callbacks)
        callback();
}

void FreedesktopNotifications::setOpenedHandler(Opened handler)
{
    m_opened = std::move(handler);
}

std::optional<uint> FreedesktopNotifications::serverID(const QString &identifier) const
{
    const auto id = m_shown.constFind(identifier);
    return id == m_shown.constEnd() ? std::nullopt : std::optional<uint>(*id);
}

void FreedesktopNotifications::actionInvoked(uint id, const QString &actionKey)
{
    if (actionKey != defaultAction)
        return;
    const auto identifier = m_identifiers.constFind(id);
    if (identifier == m_identifiers.constEnd()) {
        // The signal may overtake the answer to Notify.
        if (!m_showing.isEmpty())
            m_early.opened.insert(id);
        return;
    }
    if (!m_opened)
        return;
    // The handler may close notifications; it gets its own copy.
    const QString opened = *identifier;
    m_opened(opened);
}

void FreedesktopNotifications::notificationClosed(uint id, uint reason)
{
    Q_UNUSED(reason)
    if (!m_identifiers.contains(id) && !m_showing.isEmpty())
        m_early.closed.insert(id);
    forget(id);
}

QString FreedesktopNotifications::bodyText(const NotificationRequest &request) const
{
    QStringList lines;
    for (const QString &line : {request.subtitle, request.body})
        if (!line.isEmpty())
            lines << (m_bodyMarkup ? line.toHtmlEscaped() : line);
    return lines.join(QLatin1Char('\n'));
}

void FreedesktopNotifications::reportFailure(const QString &message)
{
    // A desktop without a server says so once, not at every reminder.
    if (m_failureReported)
        return;
    m_failureReported = true;
    qCWarning(fenrowNotificationsLog, "Notifications cannot be shown, no notification server answers: %s",
              qUtf8Printable(message));
}

} // namespace fenrow
