// A small desktop portal with only the GlobalShortcuts interface, for the
// private session bus of a test: no desktop under test offers the real one
// (xdg-desktop-portal needs a compositor's backend). It is a process of its
// own on that bus, talked to by the program exactly as the real portal is:
// Request objects answered by their Response signal, sessions closed
// through org.freedesktop.portal.Session.
//
// What it was asked goes to its standard output, a line each:
//   CreateSession <session>
//   BindShortcuts <session> <id> <description> <preferred trigger>
//   Close <session>
// Commands on its standard input: "activate <id>" emits Activated for the
// last bound session ("activated"), "close" closes that session from the
// portal's side ("closed").
//
// Options: --answer N  the response code of BindShortcuts (0 by default;
//                      1 is "the user cancelled")
//          --bind-nothing  answer BindShortcuts with no shortcut bound
#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QDateTime>
#include <QSocketNotifier>
#include <QTextStream>
#include <QTimer>

#include <unistd.h>

#include <cstdio>

struct PortalShortcut {
    QString id;
    QVariantMap properties;
};

QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument << shortcut.id << shortcut.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcut &shortcut)
{
    argument.beginStructure();
    argument >> shortcut.id >> shortcut.properties;
    argument.endStructure();
    return argument;
}

Q_DECLARE_METATYPE(PortalShortcut)

namespace {

const QString desktopPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString shortcutsInterface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");

void say(const QString &line)
{
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

class Portal : public QDBusVirtualObject {
public:
    uint bindAnswer = 0;
    bool bindNothing = false;
    QString lastSession;
    QList<PortalShortcut> lastBound;
    QStringList openSessions;

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        const QString member = message.member();
        const QString interface = message.interface();
        if (interface == QLatin1StringView("org.freedesktop.DBus.Properties") && member == QLatin1StringView("Get") &&
            message.path() == desktopPath) {
            if (message.arguments().value(0).toString() != shortcutsInterface)
                return reply(connection, message.createErrorReply(QDBusError::UnknownInterface, "no such interface"));
            return reply(connection, message.createReply(QVariant::fromValue(QDBusVariant(uint(1)))));
        }
        if (interface == shortcutsInterface && member == QLatin1StringView("CreateSession"))
            return createSession(message, connection);
        if (interface == shortcutsInterface && member == QLatin1StringView("BindShortcuts"))
            return bindShortcuts(message, connection);
        if (interface == QLatin1StringView("org.freedesktop.portal.Session") && member == QLatin1StringView("Close")) {
            say(QStringLiteral("Close %1").arg(message.path()));
            openSessions.removeAll(message.path());
            return reply(connection, message.createReply());
        }
        return reply(connection, message.createErrorReply(QDBusError::UnknownMethod, member));
    }

    void activate(const QString &id)
    {
        QDBusMessage signal = QDBusMessage::createSignal(desktopPath, shortcutsInterface, QStringLiteral("Activated"));
        signal << QVariant::fromValue(QDBusObjectPath(lastSession)) << id
               << qulonglong(QDateTime::currentMSecsSinceEpoch()) << QVariantMap();
        QDBusConnection::sessionBus().send(signal);
        say(QStringLiteral("activated"));
    }

    void closeFromPortal()
    {
        QDBusMessage signal =
            QDBusMessage::createSignal(lastSession, QStringLiteral("org.freedesktop.portal.Session"), "Closed");
        signal << QVariantMap();
        openSessions.removeAll(lastSession);
        QDBusConnection::sessionBus().send(signal);
        say(QStringLiteral("closed"));
    }

private:
    static bool reply(const QDBusConnection &connection, const QDBusMessage &answer)
    {
        connection.send(answer);
        return true;
    }

    static QString senderPart(const QDBusMessage &message)
    {
        return message.service().mid(1).replace(QLatin1Char('.'), QLatin1Char('_'));
    }

    // The Response comes after the method's reply, as the real portal
    // sends it.
    static void respond(const QString &requestPath, uint response, const QVariantMap &results)
    {
        QTimer::singleShot(0, [requestPath, response, results] {
            QDBusMessage signal =
                QDBusMessage::createSignal(requestPath, QStringLiteral("org.freedesktop.portal.Request"), "Response");
            signal << response << results;
            QDBusConnection::sessionBus().send(signal);
        });
    }

    bool createSession(const QDBusMessage &message, const QDBusConnection &connection)
    {
        const QVariantMap options = qdbus_cast<QVariantMap>(message.arguments().value(0));
        const QString sender = senderPart(message);
        const QString request =
            desktopPath + "/request/" + sender + "/" + options.value(QStringLiteral("handle_token")).toString();
        const QString session =
            desktopPath + "/session/" + sender + "/" + options.value(QStringLiteral("session_handle_token")).toString();
        openSessions << session;
        say(QStringLiteral("CreateSession %1").arg(session));
        reply(connection, message.createReply(QVariant::fromValue(QDBusObjectPath(request))));
        // The handle is a string, as the portal has always sent it.
        respond(request, 0, {{QStringLiteral("session_handle"), session}});
        return true;
    }

    bool bindShortcuts(const QDBusMessage &message, const QDBusConnection &connection)
    {
        const QList<QVariant> arguments = message.arguments();
        const QString session = arguments.value(0).value<QDBusObjectPath>().path();
        const auto shortcuts = qdbus_cast<QList<PortalShortcut>>(arguments.value(1).value<QDBusArgument>());
        const QVariantMap options = qdbus_cast<QVariantMap>(arguments.value(3));
        const QString request = desktopPath + "/request/" + senderPart(message) + "/" +
                                options.value(QStringLiteral("handle_token")).toString();
        QList<PortalShortcut> bound;
        for (const PortalShortcut &shortcut : shortcuts) {
            say(QStringLiteral("BindShortcuts %1 %2 %3 %4")
                    .arg(session, shortcut.id, shortcut.properties.value("description").toString(),
                         shortcut.properties.value("preferred_trigger").toString()));
            bound << PortalShortcut{shortcut.id,
                                    {{"description", shortcut.properties.value("description")},
                                     {"trigger_description", shortcut.properties.value("preferred_trigger")}}};
        }
        if (!openSessions.contains(session))
            return reply(connection, message.createErrorReply(QDBusError::InvalidArgs, "no such session"));
        lastSession = session;
        lastBound = bindNothing ? QList<PortalShortcut>() : bound;
        reply(connection, message.createReply(QVariant::fromValue(QDBusObjectPath(request))));
        respond(request, bindAnswer,
                bindAnswer == 0 ? QVariantMap{{QStringLiteral("shortcuts"), QVariant::fromValue(lastBound)}}
                                : QVariantMap());
        return true;
    }
};

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
    Portal portal;
    const QStringList arguments = application.arguments();
    if (const qsizetype at = arguments.indexOf("--answer"); at >= 0)
        portal.bindAnswer = arguments.value(at + 1).toUInt();
    portal.bindNothing = arguments.contains("--bind-nothing");

    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.registerVirtualObject(desktopPath, &portal, QDBusConnection::SubPath)) {
        std::fprintf(stderr, "cannot register the portal object\n");
        return 1;
    }
    if (!bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"))) {
        std::fprintf(stderr, "cannot own org.freedesktop.portal.Desktop\n");
        return 1;
    }

    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QByteArray pending;
    QObject::connect(&input, &QSocketNotifier::activated, [&] {
        char buffer[256];
        const ssize_t count = read(STDIN_FILENO, buffer, sizeof buffer);
        if (count <= 0) {
            QCoreApplication::quit();
            return;
        }
        pending.append(buffer, count);
        for (qsizetype end; (end = pending.indexOf('\n')) >= 0;) {
            const QStringList words = QString::fromUtf8(pending.left(end)).split(' ', Qt::SkipEmptyParts);
            pending.remove(0, end + 1);
            if (words.value(0) == "activate")
                portal.activate(words.value(1));
            else if (words.value(0) == "close")
                portal.closeFromPortal();
        }
    });
    say(QStringLiteral("ready"));
    return application.exec();
}
