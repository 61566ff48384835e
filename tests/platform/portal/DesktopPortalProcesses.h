#pragma once

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace fenrow::testing
{

// The real desktop portal on the test's private session bus:
// xdg-desktop-portal with its GTK backend, which reads the desktop's
// settings through GSettings, kept in a key file of the test's own. A test
// changes a setting with `gsettings`, as the desktop's own settings do.
class DesktopPortalProcesses
{
public:
    // Starts the backend, then the portal, and waits until both own their
    // names; `colorScheme` is GNOME's "default", "prefer-dark" or
    // "prefer-light".
    explicit DesktopPortalProcesses(const QString &colorScheme)
    {
        m_environment = QProcessEnvironment::systemEnvironment();
        // The portal takes the GTK backend for a GNOME desktop.
        m_environment.insert("XDG_CURRENT_DESKTOP", "GNOME");
        m_environment.insert("GSETTINGS_BACKEND", "keyfile");
        m_environment.insert("XDG_CONFIG_HOME", m_config.path());
        m_environment.insert("NO_AT_BRIDGE", "1");
        m_started =
            set(colorScheme) &&
            start(m_backend, "/usr/libexec/xdg-desktop-portal-gtk", "org.freedesktop.impl.portal.desktop.gtk") &&
            start(m_portal, "/usr/libexec/xdg-desktop-portal", "org.freedesktop.portal.Desktop");
    }

    ~DesktopPortalProcesses()
    {
        for (QProcess *process : {&m_portal, &m_backend}) {
            process->terminate();
            if (!process->waitForFinished(10000)) {
                process->kill();
                process->waitForFinished();
            }
        }
    }

    DesktopPortalProcesses(const DesktopPortalProcesses &) = delete;
    DesktopPortalProcesses &operator=(const DesktopPortalProcesses &) = delete;

    bool started() const { return m_started; }

    // The desktop's colour scheme, set as its settings panel sets it.
    bool set(const QString &colorScheme)
    {
        QProcess gsettings;
        gsettings.setProcessEnvironment(m_environment);
        gsettings.start("gsettings", {"set", "org.gnome.desktop.interface", "color-scheme", colorScheme});
        return gsettings.waitForFinished(30000) && gsettings.exitStatus() == QProcess::NormalExit &&
               gsettings.exitCode() == 0;
    }

    static bool owned(const QString &name)
    {
        return QDBusConnection::sessionBus().interface()->isServiceRegistered(name).value();
    }

private:
    bool start(QProcess &process, const QString &program, const QString &name)
    {
        process.setProcessEnvironment(m_environment);
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.setStandardOutputFile(QProcess::nullDevice());
        // "-r": take the name over from any that bus activation started.
        process.start(program, {"-r"});
        return process.waitForStarted() &&
               QTest::qWaitFor([&] { return owned(name) || process.state() == QProcess::NotRunning; }, 30000) &&
               owned(name);
    }

    QTemporaryDir m_config;
    QProcessEnvironment m_environment;
    QProcess m_backend;
    QProcess m_portal;
    bool m_started = false;
};

} // namespace fenrow::testing
