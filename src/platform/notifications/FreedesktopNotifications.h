#pragma once

#include "shell/NotificationPresenter.h"

#include <QDBusConnection>
#include <QHash>
#include <QList>
#include <QObject>
#include <QSet>
#include <QString>

#include <functional>
#include <optional>

class QDBusPendingCallWatcher;

namespace fenrow {

// Shows notifications through the desktop's notification server
// (org.freedesktop.Notifications on the session bus): Notify with the
// application name "Fenrow" and the action "default", so that clicking a
// notification opens it; CloseNotification to take one away; the signals
// ActionInvoked and NotificationClosed to learn what the user did.
//
// Every call is asynchronous, so a server that hangs never holds up the
// window. Without a server (or a session bus) the first failure is logged
// under "fenrow.notifications", once for the presenter's life, and nothing
// else happens. The title is the
// summary; the subtitle and the body are the body's lines, escaped when the
// server reads markup. UI thread only.
class FreedesktopNotifications : public QObject, public NotificationPresenter {
    Q_OBJECT

public:
    static inline const QString service = QStringLiteral("org.freedesktop.Notifications");
    static inline const QString path = QStringLiteral("/org/freedesktop/Notifications");
    static inline const QString appName = QStringLiteral("Fenrow");
    static inline const QString defaultAction = QStringLiteral("default");

    explicit FreedesktopNotifications(QDBusConnection bus = QDBusConnection::sessionBus(), QObject *parent = nullptr);
    ~FreedesktopNotifications() override;

    void show(const NotificationRequest &request) override;
    void close(const QString &identifier) override;
    void closeAll(std::function<void()> done) override;
    void setOpenedHandler(Opened handler) override;

    // The server's number of what is on screen under `identifier`.
    std::optional<uint> serverID(const QString &identifier) const;

private slots:
    void actionInvoked(uint id, const QString &actionKey);
    void notificationClosed(uint id, uint reason);

private:
    struct Showing {
        QString identifier;
        // Taken away before the server said which number it gave.
        bool withdrawn = false;
    };

    void askCapabilities();
    void sendNotify(const NotificationRequest &request);
    void notifyAnswered(QDBusPendingCallWatcher *watcher);
    void sendClose(uint id);
    void forget(uint id);
    void finishClosingIfDone();
    QString bodyText(const NotificationRequest &request) const;
    void reportFailure(const QString &message);

    QDBusConnection m_bus;
    Opened m_opened;
    // Until the server's capabilities are known, requests wait here.
    bool m_capabilitiesAsked = false;
    bool m_capabilitiesKnown = false;
    bool m_bodyMarkup = false;
    QList<NotificationRequest> m_waiting;
    QHash<QString, uint> m_shown;
    QHash<uint, QString> m_identifiers;
    QHash<QDBusPendingCallWatcher *, Showing> m_showing;
    // Signals about numbers not known yet: QtDBus may deliver the server's
    // signal before the answer to the Notify call that made the number.
    struct EarlySignals {
        QSet<uint> opened;
        QSet<uint> closed;
    };
    EarlySignals m_early;
    int m_closesInFlight = 0;
    bool m_failureReported = false;
    QList<std::function<void()>> m_closedCallbacks;
};

} // namespace fenrow
