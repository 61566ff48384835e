#include "look/Theme.h"
#include "shell/InterfaceLanguage.h"

#include <QApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char *argv[])
{
    // Settings and data of the run live in a folder of their own, never in
    // the user's home.
    QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toUtf8());
    qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toUtf8());

    QApplication application(argc, argv);
    application.setApplicationName(QStringLiteral("fenrow"));
    fenrow::Theme::apply(application);
    fenrow::InterfaceLanguage::apply(QStringLiteral("en"));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
