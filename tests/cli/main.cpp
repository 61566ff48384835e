#include "shell/InterfaceLanguage.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <ctime>

int main(int argc, char *argv[])
{
    // A zone with an offset, so times in the output must carry it.
    qputenv("TZ", "Europe/Berlin");
    tzset();
    // Settings and data of each run in a folder of its own: CTest runs
    // cases side by side, and a shared settings file let one case's last
    // capture flow leak into another's.
    QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toUtf8());
    qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toUtf8());
    QCoreApplication application(argc, argv);
    application.setApplicationName(QStringLiteral("fenrow"));
    application.setApplicationVersion(QStringLiteral("9.8.7"));
    fenrow::InterfaceLanguage::apply(QStringLiteral("en"));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
