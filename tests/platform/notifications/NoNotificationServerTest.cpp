// A desktop without a notification server: Fenrow says so once in its log
// and goes on. The bus here is one the test starts with no service
// directories, so that no server can be started on demand.
#include "FreedesktopNotifications.h"

#include <QDBusConnection>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace fenrow {
namespace {

QStringList notificationMessages;

void keepNotificationMessage(QtMsgType, const QMessageLogContext &context, const QString &message)
{
    if (QByteArrayView(context.category) == "fenrow.notifications")
        notificationMessages << message;
}

// A session bus that knows no services to start.
class BareBus {
public:
    bool start()
    {
        const QString config = m_folder.filePath(QStringLiteral("bus.conf"));
        QFile file(config);
        if (!file.open(QIODevice::WriteOnly))
            return false;
        file.write(QStringLiteral(R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)")
                       .arg(m_folder.path())
                       .toUtf8());
        file.close();
        m_daemon.start(QStringLiteral("dbus-daemon"),
                       {QStringLiteral("--config-file=") + config, QStringLiteral("--nofork"),
                        QStringLiteral("--print-address")});
        if (!m_daemon.waitForStarted() ||
            !QTest::qWaitFor([this] { return m_daemon.canReadLine(); }, 15000))
            return false;
        address = QString::fromUtf8(m_daemon.readLine()).trimmed();
        return !address.isEmpty();
    }

    ~BareBus()
    {
        m_daemon.terminate();
        m_daemon.waitForFinished();
    }

    QString address;

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
};

TEST(NoNotificationServer, IsLoggedOnceAndNothingElseHappens)
{
    notificationMessages.clear();
    const QtMessageHandler previous = qInstallMessageHandler(keepNotificationMessage);

    BareBus bus;
    ASSERT_TRUE(bus.start());
    QDBusConnection connection = QDBusConnection::connectToBus(bus.address, QStringLiteral("bare"));
    ASSERT_TRUE(connection.isConnected());
    {
        FreedesktopNotifications presenter(connection);
        presenter.show({QStringLiteral("due.A"), QStringLiteral("Pay rent"), {}, {}, {}});
        ASSERT_TRUE(QTest::qWaitFor([] { return !notificationMessages.isEmpty(); }, 15000));
        presenter.show({QStringLiteral("digest.daily"), QStringLiteral("Ready"), {}, {}, {}});
        presenter.show({QStringLiteral("due.B"), QStringLiteral("Call"), {}, {}, {}});
        // Done once the calls in flight have been answered, with an error each.
        bool answered = false;
        presenter.closeAll([&answered] { answered = true; });
        ASSERT_TRUE(QTest::qWaitFor([&answered] { return answered; }, 15000));
        EXPECT_FALSE(presenter.serverID(QStringLiteral("due.A")));

        ASSERT_EQ(notificationMessages.size(), 1) << "once, however many notifications come";
        EXPECT_TRUE(notificationMessages.first().contains(QStringLiteral("no notification server")))
            << notificationMessages.first().toStdString();

        // Nor is a process without a session bus any trouble.
        FreedesktopNotifications nowhere(QDBusConnection(QStringLiteral("no such connection")));
        nowhere.show({QStringLiteral("due.A"), QStringLiteral("Pay rent"), {}, {}, {}});
        bool closed = false;
        nowhere.closeAll([&closed] { closed = true; });
        EXPECT_TRUE(closed);
        EXPECT_EQ(notificationMessages.size(), 2);
    }
    QDBusConnection::disconnectFromBus(QStringLiteral("bare"));
    qInstallMessageHandler(previous);
}

} // namespace
} // namespace fenrow
