#include "shell/InterfaceLanguage.h"

#include <QCoreApplication>
#include <QStandardPaths>

#include <gtest/gtest.h>

#include <ctime>

int main(int argc, char *argv[])
{
    // A zone with an offset, so times in the output must carry it.
    qputenv("TZ", "Europe/Berlin");
    tzset();
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication application(argc, argv);
    application.setApplicationName(QStringLiteral("fenrow"));
    application.setApplicationVersion(QStringLiteral("9.8.7"));
    fenrow::InterfaceLanguage::apply(QStringLiteral("en"));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
