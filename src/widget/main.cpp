#include "ReadyTray.h"
#include "domain/Scheduler.h"
#include "domain/SystemClock.h"
#include "shell/ProcessEntry.h"
#include "shell/WidgetFiles.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QStandardPaths>
#include <QSystemTrayIcon>
#include <QTextStream>
#include <QTimer>

#include <cstring>

namespace {

constexpr const char *usage =
    "Usage: fenrow-widget\n"
    "Shows Fenrow's Ready list in the system tray: the count on the icon, the\n"
    "tasks in a popup to tick off, and the ways into Fenrow.\n"
    "\n"
    "  --help     show this text\n"
    "  --version  show the version\n";

// The `fenrow` beside this program (installed or in the build tree), else
// the one on the PATH.
QString fenrowProgram()
{
    const QString beside = QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("fenrow"));
    if (QFileInfo(beside).isExecutable())
        return beside;
    const QString onPath = QStandardPaths::findExecutable(QStringLiteral("fenrow"));
    return onPath.isEmpty() ? QStringLiteral("fenrow") : onPath;
}

// A tray host may start after the widget at login: give it a moment.
bool waitForTray()
{
    QElapsedTimer waited;
    waited.start();
    while (!QSystemTrayIcon::isSystemTrayAvailable()) {
        if (waited.elapsed() >= 2000)
            return false;
        QEventLoop pause;
        QTimer::singleShot(100, &pause, &QEventLoop::quit);
        pause.exec();
    }
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    // Answered before the display is opened, so they work anywhere.
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--help") || !std::strcmp(argv[i], "-h")) {
            QTextStream(stdout) << usage;
            return 0;
        }
        if (!std::strcmp(argv[i], "--version")) {
            QTextStream(stdout) << "fenrow-widget " << FENROW_VERSION << Qt::endl;
            return 0;
        }
    }

    QApplication application(argc, argv);
    // Fenrow's name, so that the settings (the interface language) and the
    // shared folder are Fenrow's own.
    fenrow::ProcessEntry::prepare(application);
    QGuiApplication::setDesktopFileName(QStringLiteral("studio.tarnwick.Fenrow.Widget"));
    QApplication::setQuitOnLastWindowClosed(false);

    if (!waitForTray()) {
        QTextStream(stderr) << "fenrow-widget: no system tray is available on this desktop; "
                               "start a tray (on GNOME, the AppIndicator extension) and run fenrow-widget again"
                            << Qt::endl;
        return 1;
    }

    fenrow::SystemClock clock;
    fenrow::TimerScheduler scheduler;
    fenrow::ReadyTray tray(fenrow::WidgetFiles::sharedFolder(), fenrowProgram(), clock, scheduler);
    return application.exec();
}
