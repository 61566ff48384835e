#include "TerminationSignal.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QSocketNotifier>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace fenrow {

namespace {

Q_LOGGING_CATEGORY(fenrowShellLog, "fenrow.shell")

// [0] is written by the handler, [1] read by the event loop.
int signalSockets[2] = {-1, -1};
TerminationSignal *theInstance = nullptr;

extern "C" void onTerminationSignal(int)
{
    const char byte = 1;
    // Only async-signal-safe calls here; a full pipe already has a wake-up
    // waiting, so a failed write loses nothing.
    [[maybe_unused]] const ssize_t written = ::write(signalSockets[0], &byte, 1);
}

} // namespace

TerminationSignal::TerminationSignal(QObject *parent) : QObject(parent)
{
    auto *notifier = new QSocketNotifier(signalSockets[1], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        char buffer[16];
        // Several signals before the loop came round make one quit.
        [[maybe_unused]] const ssize_t read = ::read(signalSockets[1], buffer, sizeof buffer);
        emit received();
    });
}

bool TerminationSignal::install()
{
    if (theInstance)
        return false;
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, signalSockets) != 0) {
        qCCritical(fenrowShellLog, "Could not take over SIGTERM: no socket pair");
        return false;
    }
    // Lives as long as the application object; the handler stays for the
    // rest of the process, so the sockets do too.
    theInstance = new TerminationSignal(QCoreApplication::instance());

    struct sigaction action = {};
    action.sa_handler = onTerminationSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    ::sigaction(SIGTERM, &action, nullptr);
    return true;
}

TerminationSignal *TerminationSignal::instance()
{
    return theInstance;
}

} // namespace fenrow
