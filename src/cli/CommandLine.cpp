#include "CommandLine.h"

#include "CommandCatalog.h"
#include "CommandDispatcher.h"
#include "CommandRegistry.h"
#include "Console.h"

#include "domain/FenrowModelContainer.h"
#include "domain/FenrowStore.h"
#include "shell/ProcessEntry.h"

#include <QByteArray>
#include <QCoreApplication>
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

} // namespace

bool hasSubcommand(int argc, char *argv[])
{
    for (int i = 1; i < argc; ++i) {
        const QByteArray argument(argv[i]);
        if (argument == "--help" || argument == "-h" || argument == "--version")
            return true;
        if (argument == "--")
            return i + 1 < argc;
        if (isToolkitOptionWithValue(argument)) {
            ++i;
            continue;
        }
        if (argument.startsWith('-'))
            continue;
        // Open-URL events reach the desktop program as an argument.
        if (argument.toLower().startsWith("fenrow:"))
            continue;
        return true;
    }
    return false;
}

int run(QCoreApplication &application)
{
    ProcessEntry::prepare(application);

    CommandRegistry registry;
    CommandCatalog::registerAll(registry);
    const QStringList arguments = application.arguments();
    CommandDispatcher dispatcher(registry, [&arguments](const Clock &clock, QString *fatalMessage) {
        return FenrowModelContainer::openStore(arguments, clock, LocalCalendar(), fatalMessage);
    });
    dispatcher.setProcessEndsAfterCommand(true);

    QTextStream out(stdout);
    QTextStream err(stderr);
    QTextStream input(stdin);
    Console console(out, err, &input, isatty(STDIN_FILENO) == 1);
    return dispatcher.run(arguments.mid(1), console);
}

} // namespace fenrow::CommandLine
