#include "shell/TerminationSignal.h"
#include "shell/WindowFitting.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <csignal>

namespace fenrow {
namespace {

using WindowFitting::Fit;
using WindowFitting::Situation;

// Two screens side by side, each with a top panel of 32 pixels; a window
// manager that draws a title bar of 30 and borders of 1.
const QRect leftScreen(0, 32, 1920, 1048);
const QRect rightScreen(1920, 32, 1280, 688);

QRect frameAround(const QPoint &origin, const QSize &content)
{
    return QRect(origin, content + QSize(2, 31));
}

TEST(WindowFitting, SizesTheWindowForTheOnboardingStateWithinTheScreenUnderThePointer)
{
    struct Case {
        const char *name;
        Situation situation;
        Fit expected;
    };
    const QSize small(400, 300);
    const QRect frame = frameAround(QPoint(100, 100), small);
    const QList<Case> cases = {
        {"welcome: small and centred, borders included",
         {false, leftScreen, leftScreen, leftScreen, frame, small},
         {Fit::Kind::resize, QSize(560, 396), QPoint((1920 - 562) / 2, 32 + (1048 - 427) / 2)}},
        {"onboarded on a large screen",
         {true, leftScreen, leftScreen, leftScreen, frame, small},
         {Fit::Kind::resize, QSize(1320, 840), QPoint((1920 - 1322) / 2, 32 + (1048 - 871) / 2)}},
        {"a laptop screen: the whole visible width, the height less the title bar",
         {true, rightScreen, leftScreen, rightScreen, frame, small},
         {Fit::Kind::resize, QSize(1280, 688 - 31), QPoint(1920 - 1, 32)}},
        {"no screen under the pointer: the window's own",
         {true, std::nullopt, rightScreen, std::nullopt, frame, small},
         {Fit::Kind::resize, QSize(1280, 657), QPoint(1919, 32)}},
        {"no screen at all: the window's frame bounds it",
         {false, std::nullopt, std::nullopt, std::nullopt, QRect(0, 0, 500, 431), QSize(498, 400)},
         {Fit::Kind::resize, QSize(500, 396), QPoint(-1, 2)}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const Fit fit = WindowFitting::fit(c.situation);
        EXPECT_EQ(fit.kind, c.expected.kind);
        EXPECT_EQ(fit.contentSize, c.expected.contentSize);
        EXPECT_EQ(fit.origin, c.expected.origin);
    }
}

TEST(WindowFitting, AWindowOfTheRightSizeMovesOnlyToAnotherScreen)
{
    const QSize done(1320, 840);
    const QRect onLeft = frameAround(QPoint(50, 60), done);

    const Fit stay = WindowFitting::fit({true, leftScreen, leftScreen, leftScreen, onLeft, done});
    EXPECT_EQ(stay.kind, Fit::Kind::keep);
    EXPECT_EQ(stay.origin, onLeft.topLeft()) << "the user's own placement is kept";

    const QSize welcome(560, 396);
    const QRect small = frameAround(QPoint(50, 60), welcome);
    const Fit move = WindowFitting::fit({false, leftScreen, leftScreen, rightScreen, small, welcome});
    EXPECT_EQ(move.kind, Fit::Kind::move);
    EXPECT_EQ(move.contentSize, welcome);
    EXPECT_EQ(move.origin, QPoint(1920 + (1280 - 562) / 2, 32 + (688 - 427) / 2));
}

// The signal is taken over for the whole test process, so one test covers
// both the first and the later installations.
TEST(TerminationSignal, SigtermBecomesOneEventOnTheLoopAndIsTakenOverOnce)
{
    ASSERT_TRUE(TerminationSignal::install());
    ASSERT_NE(TerminationSignal::instance(), nullptr);
    EXPECT_FALSE(TerminationSignal::install()) << "a second installation does nothing";

    QSignalSpy received(TerminationSignal::instance(), &TerminationSignal::received);
    ASSERT_EQ(::raise(SIGTERM), 0);
    EXPECT_TRUE(received.isEmpty()) << "nothing runs inside the signal handler";
    EXPECT_TRUE(QTest::qWaitFor([&] { return !received.isEmpty(); }));
    ASSERT_EQ(::raise(SIGTERM), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return received.size() == 2; }));
}

} // namespace
} // namespace fenrow
