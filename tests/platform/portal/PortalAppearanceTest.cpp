#include "PortalAppearance.h"
#include "DesktopPortal.h"
#include "DesktopPortalProcesses.h"

#include <QElapsedTimer>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace fenrow::testing
{
namespace
{

using Scheme = PortalAppearance::Scheme;

// The desktop's choice read from the real portal at once, then followed as
// the desktop changes it.
TEST(PortalAppearance, ReadsAndFollowsTheRealPortal)
{
    DesktopPortalProcesses desktop(QStringLiteral("prefer-dark"));
    ASSERT_TRUE(desktop.started());
    PortalAppearance appearance(QDBusConnection::sessionBus(), 5000);
    EXPECT_EQ(appearance.scheme(), Scheme::preferDark);
    EXPECT_EQ(appearance.prefersDark(), true);

    QSignalSpy changed(&appearance, &PortalAppearance::changed);
    ASSERT_TRUE(desktop.set(QStringLiteral("prefer-light")));
    EXPECT_TRUE(QTest::qWaitFor([&] { return appearance.scheme() == Scheme::preferLight; }, 15000));
    EXPECT_EQ(appearance.prefersDark(), false);
    EXPECT_GE(changed.count(), 1);

    ASSERT_TRUE(desktop.set(QStringLiteral("default")));
    EXPECT_TRUE(QTest::qWaitFor([&] { return appearance.scheme() == Scheme::noPreference; }, 15000));
    EXPECT_EQ(appearance.prefersDark(), std::nullopt) << "no preference leaves it to the other hints";

    // Read afresh, as at the next start.
    EXPECT_EQ(PortalAppearance(QDBusConnection::sessionBus(), 5000).scheme(), Scheme::noPreference);
}

// The portal is installed here and could be started by bus activation,
// which takes seconds; a start-up without a running portal neither starts
// it nor waits for it.
TEST(PortalAppearance, WithoutARunningPortalNothingIsAskedOrAwaited)
{
    ASSERT_FALSE(DesktopPortalProcesses::owned(DesktopPortal::service));
    QElapsedTimer clock;
    clock.start();
    const PortalAppearance appearance(QDBusConnection::sessionBus(), DesktopPortal::startupTimeoutMs);
    EXPECT_LT(clock.elapsed(), DesktopPortal::startupTimeoutMs);
    EXPECT_EQ(appearance.scheme(), std::nullopt);
    EXPECT_FALSE(DesktopPortalProcesses::owned(DesktopPortal::service)) << "the portal was not activated";
}

} // namespace
} // namespace fenrow::testing
