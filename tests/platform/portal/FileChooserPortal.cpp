// A desktop portal with only the FileChooser interface, for the private
// session bus of a test: the real portal's backends show their dialogs to
// a person. It is a process of its own on that bus, answering as the real
// portal does: a Request object per call, its Response signal carrying the
// chosen file.
//
// Each call goes to its standard output as one line of fields joined by
// " | ":
//   OpenFile | <title> | <accept label> | <filters>
//   SaveFile | <title> | <accept label> | <filters> | <proposed name>
// where <filters> reads "Name:pattern pattern;Name:pattern".
//
// A client subscribes to the Response signal only once the method has
// answered, so the portal answers when it has seen that subscription go to
// the bus (through dbus-monitor), as a person at a real dialog always gives
// it time to.
//
// Options: --choose URI  the file every call answers with; without it
//                        every call is cancelled, as by the user
#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QSocketNotifier>

#include <unistd.h>

#include <cstdio>

// The portal's filter lists, a(sa(us)): a name and its (kind, pattern)s.
struct FilterPattern {
    uint kind = 0;
    QString pattern;
};
struct Filter {
    QString name;
    QList<FilterPattern> patterns;
};

QDBusArgument &operator<<(QDBusArgument &argument, const FilterPattern &pattern)
{
    argument.beginStructure();
    argument << pattern.kind << pattern.pattern;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, FilterPattern &pattern)
{
    argument.beginStructure();
    argument >> pattern.kind >> pattern.pattern;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const Filter &filter)
{
    argument.beginStructure();
    argument << filter.name << filter.patterns;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, Filter &filter)
{
    argument.beginStructure();
    argument >> filter.name >> filter.patterns;
    argument.endStructure();
    return argument;
}

Q_DECLARE_METATYPE(FilterPattern)
Q_DECLARE_METATYPE(Filter)

namespace
{

const QString desktopPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString chooserInterface = QStringLiteral("org.freedesktop.portal.FileChooser");

void say(const QString &line)
{
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

QString filterText(const QVariant &value)
{
    if (value.metaType() != QMetaType::fromType<QDBusArgument>())
        return {};
    QStringList names;
    for (const Filter &filter : qdbus_cast<QList<Filter>>(value.value<QDBusArgument>())) {
        QStringList patterns;
        for (const FilterPattern &pattern : filter.patterns)
            patterns << pattern.pattern;
        names << filter.name + ':' + patterns.join(' ');
    }
    return names.join(';');
}

class Portal : public QDBusVirtualObject
{
public:
    QString chosen;
    int requests = 0;

    // Watches the subscriptions clients make on the bus; true once it does.
    bool watchSubscriptions()
    {
        m_monitor.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        QObject::connect(&m_monitor, &QProcess::readyReadStandardOutput, [this] {
            m_subscriptions += QString::fromUtf8(m_monitor.readAllStandardOutput());
            answerSubscribed();
        });
        m_monitor.start("dbus-monitor", {"--session", "type='method_call',member='AddMatch'"});
        // Its own name lost is the monitor's first word, once it watches.
        return m_monitor.waitForStarted() && [this] {
            while (!m_subscriptions.contains(QLatin1StringView("NameLost")))
                if (!m_monitor.waitForReadyRead(30000))
                    return false;
            return true;
        }();
    }

    ~Portal() override
    {
        m_monitor.kill();
        m_monitor.waitForFinished();
    }

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        const QString member = message.member();
        if (message.interface() == QLatin1StringView("org.freedesktop.DBus.Properties") &&
            member == QLatin1StringView("Get") && message.path() == desktopPath) {
            if (message.arguments().value(0).toString() != chooserInterface) {
                connection.send(message.createErrorReply(QDBusError::UnknownInterface, "no such interface"));
                return true;
            }
            connection.send(message.createReply(QVariant::fromValue(QDBusVariant(uint(3)))));
            return true;
        }
        if (message.interface() == chooserInterface &&
            (member == QLatin1StringView("OpenFile") || member == QLatin1StringView("SaveFile")))
            return choose(message, connection);
        connection.send(message.createErrorReply(QDBusError::UnknownMethod, member));
        return true;
    }

private:
    struct Answer {
        QString request;
        uint response = 0;
        QVariantMap results;
    };

    void answerSubscribed()
    {
        for (qsizetype i = 0; i < m_waiting.size();) {
            const Answer answer = m_waiting.at(i);
            if (!m_subscriptions.contains(answer.request + QLatin1Char('\''))) {
                ++i;
                continue;
            }
            m_waiting.removeAt(i);
            QDBusMessage signal = QDBusMessage::createSignal(
                answer.request, QStringLiteral("org.freedesktop.portal.Request"), "Response");
            signal << answer.response << answer.results;
            QDBusConnection::sessionBus().send(signal);
        }
    }

    bool choose(const QDBusMessage &message, const QDBusConnection &connection)
    {
        const QList<QVariant> arguments = message.arguments();
        const QVariantMap options = qdbus_cast<QVariantMap>(arguments.value(2));
        QStringList fields{message.member(), arguments.value(1).toString(),
                           options.value(QStringLiteral("accept_label")).toString(),
                           filterText(options.value(QStringLiteral("filters")))};
        if (message.member() == QLatin1StringView("SaveFile"))
            fields << options.value(QStringLiteral("current_name")).toString();
        say(fields.join(QStringLiteral(" | ")));
        // The path a client can know before calling, from its token, as the
        // real portal makes it.
        const QString token = options.value(QStringLiteral("handle_token"), QString::number(++requests)).toString();
        const QString request = desktopPath + "/request/" + message.service().mid(1).replace('.', '_') + '/' + token;
        connection.send(message.createReply(QVariant::fromValue(QDBusObjectPath(request))));
        const uint response = chosen.isEmpty() ? 1 : 0;
        const QVariantMap results =
            chosen.isEmpty() ? QVariantMap() : QVariantMap{{QStringLiteral("uris"), QStringList{chosen}}};
        m_waiting << Answer{request, response, results};
        answerSubscribed();
        return true;
    }

    QProcess m_monitor;
    QString m_subscriptions;
    QList<Answer> m_waiting;
};

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    qDBusRegisterMetaType<FilterPattern>();
    qDBusRegisterMetaType<QList<FilterPattern>>();
    qDBusRegisterMetaType<Filter>();
    qDBusRegisterMetaType<QList<Filter>>();
    Portal portal;
    const QStringList arguments = application.arguments();
    if (const qsizetype at = arguments.indexOf("--choose"); at >= 0)
        portal.chosen = arguments.value(at + 1);

    if (!portal.watchSubscriptions()) {
        std::fprintf(stderr, "cannot watch the bus with dbus-monitor\n");
        return 1;
    }
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.registerVirtualObject(desktopPath, &portal, QDBusConnection::SubPath)) {
        std::fprintf(stderr, "cannot register the portal object\n");
        return 1;
    }
    if (!bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"))) {
        std::fprintf(stderr, "cannot own org.freedesktop.portal.Desktop\n");
        return 1;
    }
    // Closing its input ends it.
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, [] {
        char buffer[256];
        if (read(STDIN_FILENO, buffer, sizeof buffer) <= 0)
            QCoreApplication::quit();
    });
    say(QStringLiteral("ready"));
    return application.exec();
}
