// The crash test's writer: opens the store in FOLDER and makes the changes
// of the script from STEP on, one after another, writing "done N" once
// change N is saved, until it is killed.
#include "CrashScript.h"

#include "domain/FenrowStore.h"
#include "domain/SystemClock.h"
#include "persistence/StoreDatabase.h"

#include <QCoreApplication>
#include <QDir>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 4) {
        std::fprintf(stderr, "usage: fenrow-crash-writer FOLDER SEED STEP\n");
        return 2;
    }
    const QString path = QDir(QString::fromLocal8Bit(argv[1])).filePath(QStringLiteral("default.store"));
    const quint64 seed = QByteArray(argv[2]).toULongLong();
    const qint64 first = QByteArray(argv[3]).toLongLong();

    fenrow::SystemClock clock;
    QString error;
    std::unique_ptr<fenrow::FenrowStore> store =
        fenrow::FenrowStore::open(fenrow::StoreDatabase::open(path, &error), clock, fenrow::LocalCalendar(), &error);
    if (!store) {
        std::fprintf(stderr, "cannot open %s: %s\n", qPrintable(path), qPrintable(error));
        return 2;
    }
    std::printf("ready %lld\n", static_cast<long long>(first));
    std::fflush(stdout);

    const fenrow::CrashScript script(seed);
    // Far more than a life between two kills ever reaches.
    for (qint64 step = first; step < first + 100000; ++step) {
        if (!script.perform(*store, step)) {
            std::fprintf(stderr, "change %lld was not saved\n", static_cast<long long>(step));
            return 3;
        }
        std::printf("done %lld\n", static_cast<long long>(step));
        std::fflush(stdout);
    }
    return 0;
}
