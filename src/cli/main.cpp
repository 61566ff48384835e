#include "CommandLine.h"
#include "ExitStatus.h"

#include <QCoreApplication>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <unistd.h>

namespace {

// The desktop program lies beside this one, in the build tree as once
// installed.
std::string desktopProgramPath()
{
    std::string self(4096, '\0');
    const ssize_t length = readlink("/proc/self/exe", self.data(), self.size() - 1);
    if (length <= 0)
        return "fenrow-desktop";
    self.resize(std::size_t(length));
    return self.substr(0, self.rfind('/') + 1) + "fenrow-desktop";
}

// The window, and the few commands that need the image libraries, run in
// the desktop program. It takes over this process, so the desktop, the
// shell and the tests see one program with the same arguments.
int becomeDesktopProgram(char *argv[])
{
    const std::string path = desktopProgramPath();
    execv(path.c_str(), argv);
    std::fprintf(stderr, "fenrow: cannot start the desktop program %s: %s\n", path.c_str(), std::strerror(errno));
    return fenrow::exitFailure;
}

} // namespace

// `fenrow`: commands that show no window run here, with QtCore and the
// session bus only, so a script's many short calls start quickly.
int main(int argc, char *argv[])
{
    const QByteArray subcommand = fenrow::CommandLine::subcommand(argc, argv);
    if (subcommand.isEmpty() || fenrow::CommandLine::drawsPreviews(subcommand))
        return becomeDesktopProgram(argv);
    QCoreApplication application(argc, argv);
    return fenrow::CommandLine::run(application);
}
