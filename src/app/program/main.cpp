#include "DesktopProgram.h"
#include "PortalFileDialogs.h"
#include "cli/CommandLine.h"

#include <QApplication>
#include <QCoreApplication>

// With a subcommand the program runs headless and needs no display;
// without one it is the desktop program.
int main(int argc, char *argv[])
{
    if (fenrow::CommandLine::hasSubcommand(argc, argv)) {
        QCoreApplication application(argc, argv);
        return fenrow::CommandLine::run(application);
    }
    // The desktop's file dialogs, where its portal offers them, are chosen
    // before the application exists.
    fenrow::PortalFileDialogs::ApplicationArguments arguments(argc, argv);
    QApplication application(arguments.argc(), arguments.argv());
    return fenrow::DesktopProgram::run(application);
}
