#include "shell/InterfaceLanguage.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

// On a private session bus (FENROW_XVFB_COMMAND), where the tests start the
// notification server themselves: dunst, which needs the private X server.
int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    application.setApplicationName(QStringLiteral("fenrow"));
    fenrow::InterfaceLanguage::apply(QStringLiteral("en"));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
