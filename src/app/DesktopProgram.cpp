#include "DesktopProgram.h"

#include "AppShell.h"
#include "Glyphs.h"
#include "MainWindow.h"
#include "Theme.h"
#include "ThumbnailMaker.h"
#include "domain/ActiveFlowState.h"
#include "domain/FenrowHistory.h"
#include "domain/FenrowModelContainer.h"
#include "domain/FenrowStore.h"
#include "domain/SystemClock.h"
#include "shell/AppEnvironment.h"
#include "shell/AppPreferences.h"
#include "shell/ProcessEntry.h"
#include "shell/SettingsFile.h"

#include <QApplication>
#include <QMessageBox>
#include <QTextStream>

namespace fenrow::DesktopProgram {

namespace {

// The program's one fatal stop: say why, on the terminal and on screen.
void reportFatalStop(const QString &message)
{
    QTextStream(stderr) << message << Qt::endl;
    QMessageBox alert(QMessageBox::Critical, qtTrId("store.failed.title"), message, QMessageBox::Ok);
    alert.setObjectName(QStringLiteral("store.failed"));
    alert.setTextFormat(Qt::PlainText);
    alert.exec();
}

} // namespace

int run(QApplication &application)
{
    ProcessEntry::prepare(application);
    Theme::apply(application);
    QApplication::setWindowIcon(QIcon(Glyphs::brandMark(64)));

    // Declared before the store, which keeps a reference to it.
    SystemClock clock;
    QString fatal;
    const auto store = FenrowModelContainer::openStore(application.arguments(), clock, LocalCalendar(), &fatal);
    if (!store) {
        reportFatalStop(fatal);
        return 1;
    }
    store->setThumbnailMaker(&ThumbnailMaker::make);
    // Undo lives as long as the store it replays into, and no longer.
    FenrowHistory history(*store);

    AppPreferences preferences(SettingsFile::open());
    ActiveFlowState activeFlow;
    // Which engine answers is settled once at start from the arguments and
    // looked at again whenever the program comes to the front.
    AppEnvironment environment(application.arguments());
    QObject::connect(&application, &QGuiApplication::applicationStateChanged, &environment,
                     [&environment](Qt::ApplicationState state) {
                         if (state == Qt::ApplicationActive)
                             environment.refreshAvailability();
                     });
    MainWindow window(*store, history, activeFlow, preferences, environment);
    // Onboarding, the capture panel, the window's size and place, and the
    // one way out for Quit and SIGTERM.
    AppShell shell(*store, history, activeFlow, preferences, environment);
    shell.registerMainWindow(&window);
    shell.launch();
    return application.exec();
}

} // namespace fenrow::DesktopProgram
