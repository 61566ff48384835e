#include "look/Theme.h"
#include "shell/InterfaceLanguage.h"
#include "shell/ProcessEntry.h"

#include <QApplication>
#include <QDir>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char *argv[])
{
    // Settings, data and the folders file dialogs open in live in a home
    // of the run's own, never in the user's.
    QTemporaryDir home;
    qputenv("HOME", home.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toUtf8());
    qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toUtf8());
    QDir(home.path()).mkpath(QStringLiteral("Documents"));
    // Qt's own settings (the file dialogs' last folders) take their folder
    // once, at first use: fixed here, they never land in a test's folder
    // that is gone by the time a dialog is saved.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, home.filePath(QStringLiteral("config")));

    QApplication application(argc, argv);
    // Named and versioned as the program is.
    fenrow::ProcessEntry::prepare(application);
    fenrow::Theme::apply(application);
    fenrow::InterfaceLanguage::apply(QStringLiteral("en"));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
