#include "DesktopProgram.h"

#include "LanguageModel.h"

#include "AppShell.h"
#include "DesktopBusHandler.h"
#include "FenrowBusClient.h"
#include "FenrowBusService.h"
#include "look/Glyphs.h"
#include "LanguageModel.h"
#include "window/MainWindow.h"
#include "look/Theme.h"
#include "ThumbnailMaker.h"
#include "domain/ActiveFlowState.h"
#include "domain/FenrowHistory.h"
#include "domain/FenrowModelContainer.h"
#include "domain/FenrowStore.h"
#include "domain/OverridableClock.h"
#include "persistence/StoreLock.h"
#include "shell/AppEnvironment.h"
#include "shell/AppPreferences.h"
#include "shell/AppURLRouter.h"
#include "shell/ProcessEntry.h"
#include "shell/SettingsFile.h"

#include <QApplication>
#include <QDBusConnection>
#include <QLoggingCategory>
#include <QMessageBox>
#include <QTextStream>
#include <QTimer>
#include <QUrl>

Q_LOGGING_CATEGORY(fenrowProgramLog, "fenrow.program")

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

// The URL the program was started with, if any.
std::optional<QString> urlArgument(const QStringList &arguments)
{
    for (const QString &argument : arguments.mid(1)) {
        if (AppURLRouter::isURLArgument(argument))
            return argument;
    }
    return std::nullopt;
}

// A second start: the Fenrow that runs does what this one was started for,
// and this one ends.
int handOver(FenrowBusClient &bus, const QStringList &arguments)
{
    QString problem;
    bool done;
    if (const std::optional<QString> url = urlArgument(arguments))
        done = bus.openURL(*url, &problem);
    else if (arguments.contains(AppShell::captureArgument))
        done = bus.toggleCapture(&problem);
    else
        done = bus.activate(&problem);
    if (done)
        return 0;
    QTextStream(stderr) << "Fenrow is already running, but did not answer: " << problem << Qt::endl;
    return 1;
}

} // namespace

// Declared in the order of making: the lock before the store it guards;
// the clock before the store, which keeps a reference to it; undo after the
// store it replays into; the window before the shell that fits and watches
// it; the bus service last, so that it goes first.
struct Session::Parts {
    std::unique_ptr<StoreLock> lock;
    OverridableClock clock;
    std::unique_ptr<FenrowStore> store;
    std::unique_ptr<FenrowHistory> history;
    std::unique_ptr<AppPreferences> preferences;
    ActiveFlowState activeFlow;
    std::unique_ptr<LanguageModel> model;
    std::unique_ptr<AppEnvironment> environment;
    std::unique_ptr<MainWindow> window;
    std::unique_ptr<AppShell> shell;
    std::unique_ptr<AppURLRouter> router;
    std::unique_ptr<DesktopBusHandler> busHandler;
    std::unique_ptr<FenrowBusService> bus;
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

AppPreferences &Session::preferences() const
{
    return *m_parts->preferences;
}

AppEnvironment &Session::environment() const
{
    return *m_parts->environment;
}

std::unique_ptr<Session> Session::start(QApplication &application, QString *fatal, std::unique_ptr<StoreLock> lock)
{
    ProcessEntry::prepare(application);
    Theme::apply(application);
    QApplication::setWindowIcon(QIcon(Glyphs::brandMark(64)));
    // The installed launcher entry's name: a dock matches the window to it
    // (Wayland's app id), and so to its icon and actions.
    QGuiApplication::setDesktopFileName(QStringLiteral("studio.tarnwick.Fenrow"));

    auto parts = std::make_unique<Parts>();
    const QStringList arguments = application.arguments();
    const bool onDisk = !FenrowModelContainer::usesMemory(arguments);
    if (onDisk && !lock) {
        StoreOwnership::Claim claim = FenrowModelContainer::claim({0, StoreLockHolder::Role::desktop, {}}, {});
        if (!claim.lock) {
            *fatal = QString::fromLatin1(FenrowModelContainer::failurePrefix) + claim.problem;
            return nullptr;
        }
        lock = std::move(claim.lock);
    }
    parts->lock = std::move(lock);
    parts->store = FenrowModelContainer::openStore(arguments, parts->clock, LocalCalendar(), fatal);
    if (!parts->store)
        return nullptr;
    FenrowStore &store = *parts->store;
    store.setThumbnailMaker(&ThumbnailMaker::make);
    parts->history = std::make_unique<FenrowHistory>(store);
    parts->preferences = std::make_unique<AppPreferences>(SettingsFile::open());
    // The user's model starts loading now, so that it is warm by the time
    // a feature asks for it.
    parts->model = std::make_unique<LanguageModel>();
    LanguageModel &model = *parts->model;
    const bool scripted = FenrowModelContainer::usesMemory(arguments);
    model.choose(scripted ? std::nullopt : parts->preferences->languageModelPath());
    // Which engine answers is settled at start from the arguments and the
    // model, and looked at again whenever the program comes to the front
    // and whenever the model's state moves.
    parts->environment = std::make_unique<AppEnvironment>(application.arguments(), model.factories(),
                                                          [&model] { return model.availability(); });
    AppEnvironment &environment = *parts->environment;
    QObject::connect(&application, &QGuiApplication::applicationStateChanged, &environment,
                     [&environment](Qt::ApplicationState state) {
                         if (state == Qt::ApplicationActive)
                             environment.refreshAvailability();
                     });
    QObject::connect(&model, &LanguageModel::statusChanged, &environment, &AppEnvironment::refreshAvailability);
    AppPreferences &preferences = *parts->preferences;
    QObject::connect(&preferences, &AppPreferences::changed, &model, [&model, &preferences, scripted](const QString &key) {
        if (!scripted && key == QLatin1StringView(PreferenceKey::languageModelPath))
            model.choose(preferences.languageModelPath());
    });
    parts->window = std::make_unique<MainWindow>(store, *parts->history, parts->activeFlow, *parts->preferences,
                                                 environment);
    // Onboarding, the capture panel, the window's size and place, and the
    // one way out for Quit and SIGTERM.
    parts->shell = std::make_unique<AppShell>(store, *parts->history, parts->activeFlow, *parts->preferences,
                                              environment);
    parts->shell->registerMainWindow(parts->window.get());
    parts->shell->launch();

    AppShell &shell = *parts->shell;
    parts->router = std::make_unique<AppURLRouter>([&shell] { return shell.canUseApplication(); },
                                                   [&shell] { shell.showMainWindow(); });
    AppURLRouter &router = *parts->router;
    if (const std::optional<QString> url = urlArgument(arguments))
        router.route(QUrl(*url));
    // After the launch's first pass, so that onboarding's gate is settled.
    QPointer<MainWindow> window = parts->window.get();
    QTimer::singleShot(0, parts->window.get(), [&router, window] { router.setRouteRequest(window->routeRequests()); });

    if (onDisk) {
        CommandWorkspace workspace{parts->store.get(), parts->history.get(), parts->preferences.get(),
                                   parts->environment.get(), &parts->clock};
        parts->busHandler = std::make_unique<DesktopBusHandler>(workspace, shell, router,
                                                                parts->window->routeRequests(),
                                                                FenrowModelContainer::storePath());
        parts->bus = std::make_unique<FenrowBusService>(*parts->busHandler);
        QString problem;
        if (!parts->bus->start(QDBusConnection::sessionBus(), &problem))
            qCWarning(fenrowProgramLog, "Fenrow is not on the session bus, so commands cannot reach this window: %s",
                      qUtf8Printable(problem));
    }
    return std::unique_ptr<Session>(new Session(std::move(parts)));
}

int run(QApplication &application)
{
    ProcessEntry::prepare(application);
    const QStringList arguments = application.arguments();
    std::unique_ptr<StoreLock> lock;
    if (!FenrowModelContainer::usesMemory(arguments)) {
        StoreLockHolder self;
        self.role = StoreLockHolder::Role::desktop;
        FenrowBusClient bus;
        const QString storePath = FenrowModelContainer::storePath();
        StoreOwnership::Claim claim =
            FenrowModelContainer::claim(self, [&bus, &storePath] { return bus.servesStore(storePath); });
        if (claim.ownerReachable)
            return handOver(bus, arguments);
        if (!claim.lock) {
            reportFatalStop(QString::fromLatin1(FenrowModelContainer::failurePrefix) + claim.problem);
            return 1;
        }
        lock = std::move(claim.lock);
    }

    QString fatal;
    const std::unique_ptr<Session> session = Session::start(application, &fatal, std::move(lock));
    if (!session) {
        reportFatalStop(fatal);
        return 1;
    }
    return application.exec();
}

} // namespace fenrow::DesktopProgram
