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

// Declared in the order of making: the clock before the store, which keeps
// a reference to it; undo after the store it replays into; the window
// before the shell that fits and watches it.
struct Session::Parts {
    SystemClock clock;
    std::unique_ptr<FenrowStore> store;
    std::unique_ptr<FenrowHistory> history;
    std::unique_ptr<AppPreferences> preferences;
    ActiveFlowState activeFlow;
    std::unique_ptr<AppEnvironment> environment;
    std::unique_ptr<MainWindow> window;
    std::unique_ptr<AppShell> shell;
};

Session::Session(std::unique_ptr<Parts> parts) : m_parts(std::move(parts)) {}

// Parts go in the reverse order of their making.
Session::~Session() = default;

MainWindow &Session::window() const
{
    return *m_parts->window;
}

FenrowStore &Session::store() const
{
    return *m_parts->store;
}

std::unique_ptr<Session> Session::start(QApplication &application, QString *fatal)
{
    ProcessEntry::prepare(application);
    Theme::apply(application);
    QApplication::setWindowIcon(QIcon(Glyphs::brandMark(64)));

    auto parts = std::make_unique<Parts>();
    parts->store = FenrowModelContainer::openStore(application.arguments(), parts->clock, LocalCalendar(), fatal);
    if (!parts->store)
        return nullptr;
    FenrowStore &store = *parts->store;
    store.setThumbnailMaker(&ThumbnailMaker::make);
    parts->history = std::make_unique<FenrowHistory>(store);
    parts->preferences = std::make_unique<AppPreferences>(SettingsFile::open());
    // Which engine answers is settled once at start from the arguments and
    // looked at again whenever the program comes to the front.
    parts->environment = std::make_unique<AppEnvironment>(application.arguments());
    AppEnvironment &environment = *parts->environment;
    QObject::connect(&application, &QGuiApplication::applicationStateChanged, &environment,
                     [&environment](Qt::ApplicationState state) {
                         if (state == Qt::ApplicationActive)
                             environment.refreshAvailability();
                     });
    parts->window = std::make_unique<MainWindow>(store, *parts->history, parts->activeFlow, *parts->preferences,
                                                 environment);
    // Onboarding, the capture panel, the window's size and place, and the
    // one way out for Quit and SIGTERM.
    parts->shell = std::make_unique<AppShell>(store, *parts->history, parts->activeFlow, *parts->preferences,
                                              environment);
    parts->shell->registerMainWindow(parts->window.get());
    parts->shell->launch();
    return std::unique_ptr<Session>(new Session(std::move(parts)));
}

int run(QApplication &application)
{
    QString fatal;
    const std::unique_ptr<Session> session = Session::start(application, &fatal);
    if (!session) {
        reportFatalStop(fatal);
        return 1;
    }
    return application.exec();
}

} // namespace fenrow::DesktopProgram
