#include "shell/InterfaceLanguage.h"

#include <QGuiApplication>

#include <gtest/gtest.h>

// Under a private X server and session bus (FENROW_XVFB_COMMAND): the X11
// backend grabs keys on that display, the portal backend talks to a portal
// the tests start on that bus.
int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    application.setApplicationName(QStringLiteral("fenrow"));
    fenrow::InterfaceLanguage::apply(QStringLiteral("en"));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
