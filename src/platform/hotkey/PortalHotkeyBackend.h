#pragma once

#include "shell/GlobalHotkeyBackend.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QHash>
#include <QString>

#include <optional>

namespace fenrow {

// The global hot key where the desktop offers the portal's GlobalShortcuts
// interface (Wayland, where no client may grab keys): a session of the
// portal, Fenrow's one shortcut bound in it with the combination as the
// preferred trigger, and the portal's Activated signal as the press.
//
// The portal answers later, through Request objects: binding typically
// asks the user in a dialog of the desktop. A registration therefore
// succeeds at once (0) and a refusal arrives through `Handlers::lost`:
// `cancelledStatus` when the user declined, `invalidStatus` when the
// portal bound nothing or failed otherwise, `unsupportedStatus` when the
// portal could not be reached or closed the session. Unregistering closes
// the session.
class PortalHotkeyBackend final : public QObject, public GlobalHotkeyBackend {
    Q_OBJECT

public:
    static inline const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
    static inline const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
    static inline const QString interface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
    // The identifier of Fenrow's one shortcut in its session.
    static inline const QString shortcutId = QStringLiteral("quick-capture");

    explicit PortalHotkeyBackend(const QDBusConnection &bus);
    ~PortalHotkeyBackend() override;

    // The version of the GlobalShortcuts interface where the portal on
    // `bus` offers it; none where there is no portal or it lacks the
    // interface.
    static std::optional<uint> offeredVersion(const QDBusConnection &bus, int timeoutMs = 3000);

    void installHandler(Handlers handlers) override;
    void removeHandler() override;
    int registerHotKey(const Request &request, quintptr &handle) override;
    void unregisterHotKey(quintptr handle) override;

private slots:
    void onResponse(uint response, const QVariantMap &results, const QDBusMessage &message);
    void onActivated(const QDBusMessage &message);
    void onSessionClosed(const QDBusMessage &message);

private:
    enum class Step { creatingSession, binding, bound };
    struct Registration {
        quintptr handle = 0;
        QString trigger;
        Step step = Step::creatingSession;
        // The Request awaiting the portal's answer, if any.
        QString requestPath;
        // Expected from the start, as named by the portal once it answered.
        QString sessionPath;
    };

    QString token();
    // The object path the portal gives a Request or Session ("request",
    // "session") made with `token`.
    QString handlePath(const QString &kind, const QString &token) const;
    // Calls `method` with a Request object at `handleToken`, listening for
    // its Response first as the portal asks.
    void ask(const QString &method, const QVariantList &arguments, const QString &handleToken);
    void followRequest(const QString &path);
    void unfollowRequest(const QString &path);
    void bind();
    void fail(int status);
    void closeSession(const QString &sessionPath);

    QDBusConnection m_bus;
    Handlers m_handlers;
    std::optional<Registration> m_current;
    // Requests for sessions of registrations since let go of, with the
    // session already closed: a session the portal names otherwise is
    // closed as soon as it is named.
    QHash<QString, QString> m_abandoned;
    quintptr m_nextHandle = 1;
    int m_tokens = 0;
};

} // namespace fenrow
