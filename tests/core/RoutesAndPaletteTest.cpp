#include "TestStore.h"

#include "domain/FenrowHistory.h"
#include "shell/AppURLRouter.h"
#include "shell/FlowSearchPalette.h"
#include "shell/InterfaceLanguage.h"
#include "shell/RouteRequest.h"
#include "shell/TodayOrder.h"

#include <QSignalSpy>

namespace fenrow {
namespace {

using testing::TestStore;

TEST(RouteRequestTest, EachRequestWakesTheWindowWithAFreshToken)
{
    RouteRequest routes;
    QSignalSpy flows(&routes, &RouteRequest::flowRequested);
    QSignalSpy ready(&routes, &RouteRequest::readyRequested);
    const QUuid flow = QUuid::createUuid();
    const QUuid node = QUuid::createUuid();

    routes.requestFlow(flow);
    const RouteRequest::FlowRequest first = *routes.flowRequest();
    routes.requestFlow(flow, node);
    EXPECT_EQ(flows.size(), 2) << "the same flow asked for twice is two requests";
    EXPECT_NE(routes.flowRequest()->token, first.token);
    EXPECT_EQ(first.nodeID, std::nullopt);
    EXPECT_EQ(routes.flowRequest()->nodeID, node);

    routes.requestFlow(QUuid());
    EXPECT_EQ(flows.size(), 2) << "no flow, no request";
    EXPECT_EQ(routes.flowRequest()->flowID, flow);

    const QUuid token = QUuid::createUuid();
    routes.requestReady(token);
    routes.requestReady(token);
    EXPECT_EQ(ready.size(), 1) << "a token already stored is no new request";
    routes.requestReady();
    EXPECT_EQ(ready.size(), 2);
    EXPECT_NE(routes.readyToken(), token);
}

class FlowSearchPaletteTest : public ::testing::Test {
protected:
    FlowSearchPaletteTest() : store(TestStore::Backing::memory), palette(*store)
    {
        InterfaceLanguage::apply(QStringLiteral("en"));
        current = store->addFlow(QStringLiteral("Current"));
        other = store->addFlow(QStringLiteral("Other"));
    }

    const FlowNode &add(const QString &title, const TaskFlow &flow) { return *store->addNode(title, flow); }

    TestStore store;
    FlowSearchPalette palette;
    const TaskFlow *current = nullptr;
    const TaskFlow *other = nullptr;
};

TEST_F(FlowSearchPaletteTest, HighlightWalksAllGroupsAndStopsAtTheEnds)
{
    const FlowNode &here = add(QStringLiteral("Draft report"), *current);
    const FlowNode &there1 = add(QStringLiteral("Report figures"), *other);
    const FlowNode &there2 = add(QStringLiteral("Send report"), *other);
    add(QStringLiteral("Unrelated"), *other);
    palette.setCurrentFlow(current->id);
    palette.setQuery(QStringLiteral("report"));

    ASSERT_EQ(palette.groups().size(), 2);
    EXPECT_EQ(palette.matchCount(), 3);
    EXPECT_EQ(palette.highlighted(), 0);
    EXPECT_EQ(palette.matchAt(0)->id, here.id);
    EXPECT_EQ(palette.flowOf(*palette.matchAt(0)), current->id) << "the current group's matches name no flow";
    EXPECT_FALSE(palette.moveHighlight(-1)) << "no wrap at the top";
    EXPECT_TRUE(palette.moveHighlight(1));
    EXPECT_TRUE(palette.moveHighlight(1));
    EXPECT_EQ(palette.matchAt(palette.highlighted())->id, there2.id) << "numbered across the groups";
    EXPECT_FALSE(palette.moveHighlight(1)) << "no wrap at the bottom";
    EXPECT_EQ(palette.flowOf(*palette.matchAt(1)), other->id);

    // Records change under an open palette: the highlight stays on its task.
    store->addNode(QStringLiteral("Report cover"), *current);
    palette.refresh();
    EXPECT_EQ(palette.matchCount(), 4);
    EXPECT_EQ(palette.matchAt(palette.highlighted())->id, there2.id);

    palette.setQuery(QStringLiteral("figures"));
    EXPECT_EQ(palette.highlighted(), 0) << "a new query starts at the top";
    EXPECT_EQ(palette.matchAt(0)->id, there1.id);
    EXPECT_EQ(palette.groups().first().flowID, other->id) << "with no match here, the other flow comes first";
}

TEST(AppURLRouterTest, ReadyOpensTheListOtherURLsOnlyRaiseTheWindowAndEarlyOnesWait)
{
    bool usable = true;
    int shown = 0;
    AppURLRouter router([&] { return usable; }, [&] { ++shown; });
    RouteRequest routes;
    QSignalSpy ready(&routes, &RouteRequest::readyRequested);
    QSignalSpy flows(&routes, &RouteRequest::flowRequested);

    router.route(QUrl(QStringLiteral("fenrow://ready")));
    router.route(QUrl(QStringLiteral("https://ready")));
    router.route(QUrl(QStringLiteral("FENROW://somewhere")));
    EXPECT_EQ(shown, 0) << "no window yet";
    router.setRouteRequest(&routes);
    EXPECT_EQ(shown, 2);
    EXPECT_EQ(ready.size(), 1);

    // Each link is a request of its own, the same one twice included.
    const std::optional<QUuid> first = routes.readyToken();
    router.route(QUrl(QStringLiteral("fenrow://ready")));
    const std::optional<QUuid> second = routes.readyToken();
    router.route(QUrl(QStringLiteral("FENROW://READY/ignored?x=1")));
    EXPECT_EQ(ready.size(), 3);
    EXPECT_EQ(shown, 4);
    EXPECT_NE(first, second);
    EXPECT_NE(second, routes.readyToken());

    // Scheme and host must be exactly theirs; anything else of ours only
    // raises the window.
    const struct {
        const char *url;
        bool raises;
    } cases[] = {
        {"fenrow://flows", true},   {"fenrow:ready", true},        {"fenrow://", true},
        {"fenrowx://ready", false}, {"http://fenrow/ready", false}, {"ready", false},
    };
    for (const auto &testCase : cases) {
        SCOPED_TRACE(testCase.url);
        const int before = shown;
        router.route(QUrl(QString::fromLatin1(testCase.url)));
        EXPECT_EQ(shown, before + (testCase.raises ? 1 : 0));
    }
    EXPECT_EQ(ready.size(), 3);
    EXPECT_EQ(flows.size(), 0);

    usable = false;
    router.route(QUrl(QStringLiteral("fenrow://ready")));
    router.route(QUrl(QStringLiteral("fenrow://flows")));
    EXPECT_EQ(shown, 7) << "nothing until onboarding is done";
    EXPECT_EQ(ready.size(), 3);

    EXPECT_TRUE(AppURLRouter::isURLArgument(QStringLiteral("Fenrow://ready")));
    EXPECT_TRUE(AppURLRouter::isURLArgument(QStringLiteral("fenrow:ready")));
    EXPECT_FALSE(AppURLRouter::isURLArgument(QStringLiteral("fenrowx://ready")));
    EXPECT_FALSE(AppURLRouter::isURLArgument(QStringLiteral("ready")));
}

TEST(TodayOrderTest, MovingATaskPlacesItBeforeTheTarget)
{
    const QUuid a = QUuid::createUuid(), b = QUuid::createUuid(), c = QUuid::createUuid();
    using L = QList<QUuid>;
    EXPECT_EQ(TodayOrder::moved({a, b, c}, c, 0), (L{c, a, b}));
    EXPECT_EQ(TodayOrder::moved({a, b, c}, a, 2), (L{b, a, c}));
    EXPECT_EQ(TodayOrder::moved({a, b, c}, a, 3), (L{b, c, a}));
    EXPECT_EQ(TodayOrder::moved({a, b, c}, a, 99), (L{b, c, a}));
    EXPECT_EQ(TodayOrder::moved({a, b, c}, b, 1), (L{a, b, c}));
    EXPECT_EQ(TodayOrder::moved({a, b}, c, 0), (L{a, b}));
}

TEST(TodayOrderTest, RanksAreWrittenOnceAndEachFlowUndoesItsOwnStep)
{
    TestStore store(TestStore::Backing::memory);
    FenrowHistory history(*store);
    const TaskFlow &one = *store->addFlow(QStringLiteral("One"));
    const TaskFlow &two = *store->addFlow(QStringLiteral("Two"));
    const FlowNode &a = *store->addNode(QStringLiteral("A"), one);
    const FlowNode &b = *store->addNode(QStringLiteral("B"), two);
    const FlowNode &c = *store->addNode(QStringLiteral("C"), one);
    store->setDayPlanRank(2, b);

    TodayOrder::apply(*store, history, {c.id, b.id, a.id});
    EXPECT_EQ(c.dayPlanRank, 1);
    EXPECT_EQ(b.dayPlanRank, 2);
    EXPECT_EQ(a.dayPlanRank, 3);
    EXPECT_EQ(history.borrowedUndo().size(), 1) << "flow Two held its number already: no step there";
    EXPECT_EQ(history.borrowedUndo().first(), one.id);

    TodayOrder::apply(*store, history, {a.id, b.id, c.id});
    EXPECT_EQ(history.borrowedUndo().size(), 2) << "only flow One changed again";
    TodayOrder::apply(*store, history, {a.id, c.id, b.id});
    EXPECT_EQ(history.borrowedUndo().size(), 4) << "both flows changed: one step each";

    history.undo();
    history.undo();
    EXPECT_EQ(a.dayPlanRank, 1);
    EXPECT_EQ(b.dayPlanRank, 2);
    EXPECT_EQ(c.dayPlanRank, 3);
}

} // namespace
} // namespace fenrow
