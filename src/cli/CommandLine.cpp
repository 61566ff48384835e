#include "CommandLine.h"

#include "CommandCatalog.h"
#include "CommandDispatcher.h"
#include "CommandForwarding.h"
#include "CommandRegistry.h"
#include "Console.h"
#include "ShellCompletion.h"

#include "FenrowBusClient.h"
#include "domain/FenrowModelContainer.h"
#include "domain/FenrowStore.h"
#include "shell/AppURLRouter.h"
#include "shell/ProcessEntry.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QTextStream>

#include <unistd.h>

namespace fenrow::CommandLine {

namespace {

// Options of the desktop program's toolkit that take a value: their value
// is not a subcommand ("fenrow -platform offscreen").
bool isToolkitOptionWithValue(QByteArray argument)
{
    if (argument.startsWith("--"))
        argument.remove(0, 1);
    static const QList<QByteArray> options{"-platform", "-platformpluginpath", "-platformtheme", "-plugin",
                                           "-qmljsdebugger", "-style", "-stylesheet", "-session", "-display",
                                           "-geometry", "-title", "-name", "-qwindowgeometry", "-qwindowtitle",
                                           "-qwindowicon"};
    return options.contains(argument);
}

// How this run reaches the store: it takes it (the lock is kept in `lock`
// for the rest of the run), or hands the command to the Fenrow that owns it,
// or says who keeps it out.
CommandDispatcher::StoreAccess reachStore(const QStringList &arguments, const Clock &clock, Console &console,
                                          std::unique_ptr<StoreLock> &lock, const PreviewMaker &previews)
{
    CommandDispatcher::StoreAccess access;
    if (FenrowModelContainer::usesMemory(arguments)) {
        access.store = FenrowModelContainer::openStore(arguments, clock, LocalCalendar(), &access.fatalMessage);
        if (access.store && previews)
            access.store->setThumbnailMaker(previews);
        return access;
    }

    const QStringList commandLine = arguments.mid(1);
    StoreLockHolder self;
    self.role = StoreLockHolder::Role::command;
    self.description = (QStringList{QStringLiteral("fenrow")} + commandLine).join(QLatin1Char(' ')).left(120);
    const QString storePath = FenrowModelContainer::storePath();
    FenrowBusClient bus;
    StoreOwnership::Claim claim =
        FenrowModelContainer::claim(self, [&bus, &storePath] { return bus.servesStore(storePath); });

    if (claim.lock) {
        lock = std::move(claim.lock);
        access.store = FenrowModelContainer::openStore(arguments, clock, LocalCalendar(), &access.fatalMessage);
        if (access.store && previews)
            access.store->setThumbnailMaker(previews);
        return access;
    }
    if (claim.ownerReachable) {
        ForwardedCommand::Request request;
        request.arguments = commandLine;
        request.workingDirectory = QDir::currentPath();
        request.storePath = storePath;
        request.interactive = console.isInteractive();
        access.handedOverStatus =
            CommandForwarding::forward(request, console, [&bus](const ForwardedCommand::Request &sent, QString *why) {
                return bus.runCommand(sent, why);
            });
        return access;
    }
    access.fatalMessage = QStringLiteral("fenrow: ") + claim.problem;
    return access;
}

} // namespace

QByteArray subcommand(int argc, char *argv[])
{
    for (int i = 1; i < argc; ++i) {
        const QByteArray argument(argv[i]);
        if (argument == "--help" || argument == "-h" || argument == "--version")
            return argument;
        if (argument == "--")
            return i + 1 < argc ? QByteArray(argv[i + 1]) : QByteArray();
        if (isToolkitOptionWithValue(argument)) {
            ++i;
            continue;
        }
        if (argument.startsWith('-'))
            continue;
        // Open-URL events reach the desktop program as an argument.
        if (AppURLRouter::isURLArgument(QString::fromLocal8Bit(argument)))
            continue;
        return argument;
    }
    return {};
}

bool hasSubcommand(int argc, char *argv[])
{
    return !subcommand(argc, argv).isEmpty();
}

bool drawsPreviews(const QByteArray &subcommand)
{
    return subcommand == "attach";
}

int run(QCoreApplication &application, const PreviewMaker &previews)
{
    ProcessEntry::prepare(application);

    CommandRegistry registry;
    CommandCatalog::registerAll(registry);
    const QStringList arguments = application.arguments();

    QTextStream out(stdout);
    // Before anything that could wait for the store or reach the window:
    // the shell asks on every Tab.
    if (arguments.size() > 1 && arguments[1] == ShellCompletion::commandName)
        return ShellCompletion::run(registry, arguments.mid(2),
                                    ShellCompletion::readStore(FenrowModelContainer::storePath()), out);
    QTextStream err(stderr);
    QTextStream input(stdin);
    Console console(out, err, &input, isatty(STDIN_FILENO) == 1);

    // Outlives the dispatcher's store: the store is this process's to write
    // only while the lock is held.
    std::unique_ptr<StoreLock> lock;
    CommandDispatcher dispatcher(
        registry, [&](const Clock &clock) { return reachStore(arguments, clock, console, lock, previews); });
    dispatcher.setProcessEndsAfterCommand(true);
    return dispatcher.run(arguments.mid(1), console);
}

} // namespace fenrow::CommandLine
