#include "PortalFileDialogs.h"
#include "DesktopPortal.h"
#include "LineProcess.h"

#include <gtest/gtest.h>

namespace fenrow::testing
{
namespace
{

// The portal's file dialogs are chosen only where a running portal offers
// them and the user named no platform theme of their own.
TEST(PortalFileDialogs, ChosenWhereARunningPortalOffersThem)
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    const QStringList plain{QStringLiteral("fenrow")};
    EXPECT_FALSE(PortalFileDialogs::wanted(plain, {}, bus)) << "no portal";

    LineProcess portal{QStringLiteral(FENROW_TEST_FILE_CHOOSER_PORTAL)};
    ASSERT_TRUE(portal.ready());
    EXPECT_TRUE(PortalFileDialogs::wanted(plain, {}, bus));
    EXPECT_FALSE(PortalFileDialogs::wanted(plain, "gtk3", bus)) << "the user's theme stays";
    EXPECT_FALSE(PortalFileDialogs::wanted(plain + QStringList{"-platformtheme", "gtk3"}, {}, bus));
}

} // namespace
} // namespace fenrow::testing
