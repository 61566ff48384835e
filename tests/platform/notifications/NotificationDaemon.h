#pragma once

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QProcess>
#include <QRegularExpression>
#include <QStringList>
#include <QTest>

#include <optional>

#include <signal.h>

namespace fenrow::testing {

inline const QString notificationService = QStringLiteral("org.freedesktop.Notifications");

inline bool serviceRegistered(const QString &name)
{
    QDBusConnectionInterface *bus = QDBusConnection::sessionBus().interface();
    return bus && bus->isServiceRegistered(name).value();
}

// A command line tool run to its end; what it wrote.
inline QString runTool(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(15000))
        process.kill();
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

// Debian's dunst as the notification server of the private session bus,
// with the tests' configuration, driven with dunstctl as a user would.
class Dunst {
public:
    Dunst() = default;
    Dunst(const Dunst &) = delete;
    Dunst &operator=(const Dunst &) = delete;

    ~Dunst() { stop(); }

    // Started and answering on the bus.
    bool start()
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QStringLiteral("dunst"),
                        {QStringLiteral("-config"), QStringLiteral(FENROW_TEST_DUNSTRC)});
        return m_process.waitForStarted() &&
               QTest::qWaitFor([] { return serviceRegistered(notificationService); }, 15000);
    }

    // Gone, and its name free again for the next one.
    void stop()
    {
        if (m_process.state() == QProcess::NotRunning)
            return;
        resume();
        m_process.terminate();
        if (!m_process.waitForFinished(5000)) {
            m_process.kill();
            m_process.waitForFinished();
        }
        [[maybe_unused]] const bool released =
            QTest::qWaitFor([] { return !serviceRegistered(notificationService); }, 5000);
    }

    // The notifications on screen.
    int displayed() const
    {
        return runTool(QStringLiteral("dunstctl"), {QStringLiteral("count"), QStringLiteral("displayed")}).toInt();
    }
    // Clicks the notification at `position` from the top.
    void openNotification(int position = 0) const
    {
        runTool(QStringLiteral("dunstctl"), {QStringLiteral("action"), QString::number(position)});
    }
    // The closed notifications dunst remembers, as JSON.
    QString history() const { return runTool(QStringLiteral("dunstctl"), {QStringLiteral("history")}); }

    // Holds dunst still: it keeps its name but answers nothing.
    void pause() { signal(SIGSTOP); }
    void resume() { signal(SIGCONT); }

private:
    void signal(int number)
    {
        if (m_process.state() == QProcess::Running)
            ::kill(pid_t(m_process.processId()), number);
    }

    QProcess m_process;
};

// dbus-monitor on the private session bus, watching the calls to the
// notification server, their answers and its signals.
class BusMonitor {
public:
    struct Message {
        // "method call", "method return", "error" or "signal".
        QString kind;
        QString member;
        QString sender;
        QString destination;
        qint64 serial = 0;
        qint64 replySerial = 0;
        // The arguments as dbus-monitor prints them.
        QString arguments;
    };

    BusMonitor() = default;
    BusMonitor(const BusMonitor &) = delete;
    BusMonitor &operator=(const BusMonitor &) = delete;

    ~BusMonitor()
    {
        m_process.terminate();
        if (!m_process.waitForFinished(5000)) {
            m_process.kill();
            m_process.waitForFinished();
        }
    }

    // Watching: it prints the name the bus gave it once it is a monitor.
    bool start()
    {
        m_process.start(QStringLiteral("dbus-monitor"),
                        {QStringLiteral("--session"),
                         QStringLiteral("type='method_call',interface='org.freedesktop.Notifications'"),
                         QStringLiteral("type='signal',interface='org.freedesktop.Notifications'"),
                         QStringLiteral("type='method_return'"), QStringLiteral("type='error'")});
        return m_process.waitForStarted() &&
               QTest::qWaitFor([this] { return read().contains(QStringLiteral("NameAcquired")); }, 15000);
    }

    QList<Message> messages()
    {
        static const QRegularExpression header(
            QStringLiteral("^(method call|method return|error|signal) time=\\S+ (.*)$"));
        static const QRegularExpression serial(QStringLiteral("\\bserial=(\\d+)"));
        static const QRegularExpression replySerial(QStringLiteral("\\breply_serial=(\\d+)"));
        static const QRegularExpression member(QStringLiteral("\\bmember=(\\w+)"));
        static const QRegularExpression ends(QStringLiteral("\\bsender=(\\S+) -> destination=(\\S+)"));
        QList<Message> result;
        for (const QString &line : read().split(QLatin1Char('\n'))) {
            const QRegularExpressionMatch match = header.match(line);
            if (match.hasMatch()) {
                Message message;
                message.kind = match.captured(1);
                const QString fields = match.captured(2);
                message.serial = serial.match(fields).captured(1).toLongLong();
                message.replySerial = replySerial.match(fields).captured(1).toLongLong();
                message.member = member.match(fields).captured(1);
                const QRegularExpressionMatch endsMatch = ends.match(fields);
                message.sender = endsMatch.captured(1);
                message.destination = endsMatch.captured(2);
                result.append(message);
            } else if (!result.isEmpty()) {
                result.last().arguments += line + QLatin1Char('\n');
            }
        }
        return result;
    }

    // The Notify calls of the application `appName`, each with the number
    // the server answered it with, if it answered.
    QList<std::pair<Message, std::optional<uint>>> notifyCalls(const QString &appName)
    {
        const QList<Message> all = messages();
        QList<std::pair<Message, std::optional<uint>>> calls;
        static const QRegularExpression number(QStringLiteral("uint32 (\\d+)"));
        for (const Message &call : all) {
            if (call.kind != QLatin1String("method call") || call.member != QLatin1String("Notify") ||
                !call.arguments.startsWith(QStringLiteral("   string \"%1\"").arg(appName)))
                continue;
            std::optional<uint> answer;
            for (const Message &reply : all)
                if (reply.kind == QLatin1String("method return") && reply.replySerial == call.serial &&
                    reply.destination == call.sender)
                    answer = number.match(reply.arguments).captured(1).toUInt();
            calls.append({call, answer});
        }
        return calls;
    }

    // The messages of one member so far.
    QList<Message> of(const QString &kind, const QString &memberName)
    {
        QList<Message> found;
        for (const Message &message : messages())
            if (message.kind == kind && message.member == memberName)
                found.append(message);
        return found;
    }

private:
    const QString &read()
    {
        m_output += QString::fromUtf8(m_process.readAllStandardOutput());
        return m_output;
    }

    QProcess m_process;
    QString m_output;
};

} // namespace fenrow::testing
