#include "PortalHotkeyBackend.h"

#include "KeySymbols.h"
#include "shell/GlobalHotkeyController.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace fenrow::portal {

// One element of the portal's a(sa{sv}) shortcut lists.
struct Shortcut {
    QString id;
    QVariantMap properties;
};

QDBusArgument &operator<<(QDBusArgument &argument, const Shortcut &shortcut)
{
    argument.beginStructure();
    argument << shortcut.id << shortcut.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, Shortcut &shortcut)
{
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.properties;
    argument.endStructure();
    return argument;
}

} // namespace fenrow::portal

Q_DECLARE_METATYPE(fenrow::portal::Shortcut)

namespace fenrow {

namespace {

const QString requestInterface = QStringLiteral("org.freedesktop.portal.Request");
const QString sessionInterface = QStringLiteral("org.freedesktop.portal.Session");

// A session handle: an object path in signals, a string in CreateSession's
// results (so it was first sent, and so it stays).
QString pathText(const QVariant &value)
{
    return value.metaType() == QMetaType::fromType<QDBusObjectPath>() ? value.value<QDBusObjectPath>().path()
                                                                       : value.toString();
}

QList<portal::Shortcut> shortcuts(const QVariant &value)
{
    if (value.metaType() != QMetaType::fromType<QDBusArgument>())
        return {};
    return qdbus_cast<QList<portal::Shortcut>>(value.value<QDBusArgument>());
}

} // namespace

PortalHotkeyBackend::PortalHotkeyBackend(const QDBusConnection &bus) : m_bus(bus)
{
    qDBusRegisterMetaType<portal::Shortcut>();
    qDBusRegisterMetaType<QList<portal::Shortcut>>();
    // The whole message, read by hand: Qt 6.4 refuses a slot with a
    // QDBusObjectPath parameter in the first connections of a process.
    if (!m_bus.connect(service, path, interface, QStringLiteral("Activated"), this, SLOT(onActivated(QDBusMessage))))
        qCWarning(fenrowHotkeyLog, "Cannot follow the portal's Activated signal: %s",
                  qUtf8Printable(m_bus.lastError().message()));
}

PortalHotkeyBackend::~PortalHotkeyBackend()
{
    if (m_current)
        unregisterHotKey(m_current->handle);
    m_bus.disconnect(service, path, interface, QStringLiteral("Activated"), this, SLOT(onActivated(QDBusMessage)));
}

std::optional<uint> PortalHotkeyBackend::offeredVersion(const QDBusConnection &bus, int timeoutMs)
{
    if (!bus.isConnected())
        return std::nullopt;
    QDBusMessage get = QDBusMessage::createMethodCall(service, path, QStringLiteral("org.freedesktop.DBus.Properties"),
                                                      QStringLiteral("Get"));
    get << interface << QStringLiteral("version");
    const QDBusMessage reply = bus.call(get, QDBus::Block, timeoutMs);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return std::nullopt;
    bool ok = false;
    const uint version = reply.arguments().first().value<QDBusVariant>().variant().toUInt(&ok);
    return ok && version > 0 ? std::optional(version) : std::nullopt;
}

void PortalHotkeyBackend::installHandler(Handlers handlers)
{
    m_handlers = std::move(handlers);
}

void PortalHotkeyBackend::removeHandler()
{
    m_handlers = {};
}

int PortalHotkeyBackend::registerHotKey(const Request &request, quintptr &handle)
{
    if (m_current)
        unregisterHotKey(m_current->handle);
    const std::optional<QString> trigger = KeySymbols::trigger(request.keys);
    if (!trigger)
        return invalidStatus;
    if (!m_bus.isConnected())
        return unsupportedStatus;
    const QString sessionToken = token();
    // Where the portal puts the session; known before it answers, so that a
    // key let go at once can still close it.
    m_current = Registration{m_nextHandle++, *trigger, Step::creatingSession, {},
                             handlePath(QStringLiteral("session"), sessionToken)};
    handle = m_current->handle;
    const QString requestToken = token();
    ask(QStringLiteral("CreateSession"),
        {QVariantMap{{QStringLiteral("handle_token"), requestToken},
                     {QStringLiteral("session_handle_token"), sessionToken}}},
        requestToken);
    return 0;
}

void PortalHotkeyBackend::unregisterHotKey(quintptr handle)
{
    if (!m_current || m_current->handle != handle)
        return;
    const Registration gone = *m_current;
    m_current.reset();
    if (!gone.sessionPath.isEmpty())
        closeSession(gone.sessionPath);
    if (gone.requestPath.isEmpty())
        return;
    if (gone.step == Step::creatingSession)
        // A portal that names the session otherwise: that one is closed
        // once named.
        m_abandoned.insert(gone.requestPath, gone.sessionPath);
    else
        unfollowRequest(gone.requestPath);
}

QString PortalHotkeyBackend::token()
{
    return QStringLiteral("fenrow%1_%2").arg(QCoreApplication::applicationPid()).arg(++m_tokens);
}

QString PortalHotkeyBackend::handlePath(const QString &kind, const QString &token) const
{
    QString sender = m_bus.baseService();
    sender.remove(0, sender.startsWith(QLatin1Char(':')) ? 1 : 0).replace(QLatin1Char('.'), QLatin1Char('_'));
    return QStringLiteral("/org/freedesktop/portal/desktop/%1/%2/%3").arg(kind, sender, token);
}

void PortalHotkeyBackend::ask(const QString &method, const QVariantList &arguments, const QString &handleToken)
{
    const QString expected = handlePath(QStringLiteral("request"), handleToken);
    followRequest(expected);
    m_current->requestPath = expected;
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, method);
    call.setArguments(arguments);
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    const quintptr handle = m_current->handle;
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, handle, expected] {
        watcher->deleteLater();
        const QDBusPendingReply<QDBusObjectPath> reply = *watcher;
        if (reply.isError()) {
            unfollowRequest(expected);
            m_abandoned.remove(expected);
            qCWarning(fenrowHotkeyLog, "The desktop portal did not answer: %s", qUtf8Printable(reply.error().message()));
            if (m_current && m_current->handle == handle) {
                if (m_current->requestPath == expected)
                    m_current->requestPath.clear();
                fail(unsupportedStatus);
            }
            return;
        }
        // An older portal may put the Request elsewhere than asked.
        const QString actual = reply.value().path();
        if (actual != expected && !actual.isEmpty()) {
            unfollowRequest(expected);
            followRequest(actual);
            if (m_abandoned.contains(expected))
                m_abandoned.insert(actual, m_abandoned.take(expected));
            if (m_current && m_current->handle == handle && m_current->requestPath == expected)
                m_current->requestPath = actual;
        }
    });
}

void PortalHotkeyBackend::followRequest(const QString &requestPath)
{
    if (!m_bus.connect(service, requestPath, requestInterface, QStringLiteral("Response"), this,
                       SLOT(onResponse(uint, QVariantMap, QDBusMessage))))
        qCWarning(fenrowHotkeyLog, "Cannot follow the portal's answer at %s.", qUtf8Printable(requestPath));
}

void PortalHotkeyBackend::unfollowRequest(const QString &requestPath)
{
    if (!requestPath.isEmpty())
        m_bus.disconnect(service, requestPath, requestInterface, QStringLiteral("Response"), this,
                         SLOT(onResponse(uint, QVariantMap, QDBusMessage)));
}

void PortalHotkeyBackend::onResponse(uint response, const QVariantMap &results, const QDBusMessage &message)
{
    const QString answered = message.path();
    unfollowRequest(answered);
    if (m_abandoned.contains(answered)) {
        const QString closed = m_abandoned.take(answered);
        const QString session = pathText(results.value(QStringLiteral("session_handle")));
        if (response == 0 && !session.isEmpty() && session != closed)
            closeSession(session);
        return;
    }
    if (!m_current || m_current->requestPath != answered)
        return;
    m_current->requestPath.clear();
    if (response != 0) {
        fail(response == 1 ? cancelledStatus : invalidStatus);
        return;
    }
    switch (m_current->step) {
    case Step::creatingSession: {
        const QString named = pathText(results.value(QStringLiteral("session_handle")));
        if (named.isEmpty()) {
            fail(invalidStatus);
            return;
        }
        m_current->sessionPath = named;
        m_bus.connect(service, m_current->sessionPath, sessionInterface, QStringLiteral("Closed"), this,
                      SLOT(onSessionClosed(QDBusMessage)));
        bind();
        return;
    }
    case Step::binding:
        for (const portal::Shortcut &shortcut : shortcuts(results.value(QStringLiteral("shortcuts")))) {
            if (shortcut.id != shortcutId)
                continue;
            m_current->step = Step::bound;
            qCDebug(fenrowHotkeyLog, "The desktop bound quick capture to %s.",
                    qUtf8Printable(shortcut.properties.value(QStringLiteral("trigger_description")).toString()));
            return;
        }
        // The user left it without a key.
        fail(invalidStatus);
        return;
    case Step::bound:
        return;
    }
}

void PortalHotkeyBackend::bind()
{
    m_current->step = Step::binding;
    const QString requestToken = token();
    const QList<portal::Shortcut> wanted{
        {shortcutId,
         {{QStringLiteral("description"), qtTrId("settings.general.quickCapture.title")},
          {QStringLiteral("preferred_trigger"), m_current->trigger}}}};
    ask(QStringLiteral("BindShortcuts"),
            {QVariant::fromValue(QDBusObjectPath(m_current->sessionPath)), QVariant::fromValue(wanted), QString(),
             QVariantMap{{QStringLiteral("handle_token"), requestToken}}},
            requestToken);
}

void PortalHotkeyBackend::onActivated(const QDBusMessage &message)
{
    // (session_handle o, shortcut_id s, timestamp t, options a{sv})
    const QVariantList arguments = message.arguments();
    if (arguments.size() < 2)
        return;
    const QString session = pathText(arguments.at(0));
    const QString shortcut = arguments.at(1).toString();
    if (m_current && m_current->step == Step::bound && session == m_current->sessionPath && shortcut == shortcutId &&
        m_handlers.pressed)
        m_handlers.pressed();
}

void PortalHotkeyBackend::onSessionClosed(const QDBusMessage &message)
{
    m_bus.disconnect(service, message.path(), sessionInterface, QStringLiteral("Closed"), this,
                     SLOT(onSessionClosed(QDBusMessage)));
    if (m_current && m_current->sessionPath == message.path()) {
        // Closed by the desktop: nothing left to close.
        m_current->sessionPath.clear();
        fail(unsupportedStatus);
    }
}

void PortalHotkeyBackend::fail(int status)
{
    const quintptr handle = m_current->handle;
    if (m_handlers.lost)
        m_handlers.lost(handle, status);
    unregisterHotKey(handle);
}

void PortalHotkeyBackend::closeSession(const QString &sessionPath)
{
    m_bus.disconnect(service, sessionPath, sessionInterface, QStringLiteral("Closed"), this,
                     SLOT(onSessionClosed(QDBusMessage)));
    m_bus.asyncCall(QDBusMessage::createMethodCall(service, sessionPath, sessionInterface, QStringLiteral("Close")));
}

} // namespace fenrow
