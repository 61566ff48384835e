#include "DesktopProgram.h"
#include "PortalFileDialogs.h"
#include "ThumbnailMaker.h"
#include "cli/CommandLine.h"

#include <QApplication>
#include <QCoreApplication>

// The desktop program, which the lean `fenrow` starts in its place for the
// window and for commands that draw previews. With a subcommand it runs
// headless and needs no display.
int main(int argc, char *argv[])
{
    if (fenrow::CommandLine::hasSubcommand(argc, argv)) {
        QCoreApplication application(argc, argv);
        return fenrow::CommandLine::run(application, &fenrow::ThumbnailMaker::make);
    }
    // The desktop's file dialogs, where its portal offers them, are chosen
    // before the application exists.
    fenrow::PortalFileDialogs::ApplicationArguments arguments(argc, argv);
    QApplication application(arguments.argc(), arguments.argv());
    return fenrow::DesktopProgram::run(application);
}
