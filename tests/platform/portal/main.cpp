#include <QCoreApplication>

#include <gtest/gtest.h>

// Under a private session bus (FENROW_XVFB_COMMAND), where the tests start
// the portals they talk to.
int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
