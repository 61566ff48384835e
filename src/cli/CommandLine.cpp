#include "CommandLine.h"

#include "shell/ProcessEntry.h"

#include <QCoreApplication>
#include <QTextStream>

namespace fenrow::CommandLine {

bool hasSubcommand(int argc, char *argv[])
{
    for (int i = 1; i < argc; ++i) {
        if (argv[i][0] != '-' || QByteArray(argv[i]) == "--help" || QByteArray(argv[i]) == "-h")
            return true;
    }
    return false;
}

int run(QCoreApplication &application)
{
    ProcessEntry::prepare(application);
    QTextStream(stderr) << "fenrow: no commands yet\n";
    return 2;
}

} // namespace fenrow::CommandLine
