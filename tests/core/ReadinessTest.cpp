#include "TestStore.h"

#include "domain/FlowGraph.h"
#include "domain/Readiness.h"

namespace fenrow {
namespace {

using testing::berlinTime;
using testing::FlowFixture;

class ReadinessRules : public FlowFixture {
protected:
    LocalCalendar calendar{testing::berlin()};
    QDateTime now = berlinTime(2026, 6, 10, 9, 0);

    // Through the store's kept list, so every rule here also holds it to the records.
    QStringList ready() const { return readyTitles(store->readyTasks(now)); }
    static QStringList readyTitles(const QList<ReadyTask> &tasks)
    {
        QStringList result;
        for (const ReadyTask &task : tasks)
            result << task.node->title;
        return result;
    }
    bool blocked(const QString &title) const
    {
        return Readiness::hasOpenBlocker((*this)[title], FlowGraph::blockerMaps(*flow));
    }
    NodeCardState state(const QString &title) const
    {
        const FlowNode &node = (*this)[title];
        return Readiness::cardState(node, Readiness::openBlockers(node).size(), now, calendar);
    }
};

TEST_F(ReadinessRules, StatusPlaysNoPartButDoneDoes)
{
    addAll("pqd");
    link("p", "q");
    store->setStatus(NodeStatus::paused, (*this)["p"]);
    EXPECT_EQ(ready(), (QStringList{"p", "d"})) << "a paused node is ready and still blocks";
    EXPECT_EQ(state("p").kind, NodeCardState::Kind::status);
    EXPECT_EQ(state("p").status, NodeStatus::paused);
    EXPECT_EQ(state("q"), (NodeCardState{NodeCardState::Kind::waiting, NodeStatus::pending, {}, 1}));

    store->setCollapsed((*this)["p"], true);
    store->setCollapsed((*this)["d"], true);
    EXPECT_EQ(ready(), (QStringList{"p", "d"})) << "folding does not hide from the Ready list";
}

TEST_F(ReadinessRules, SubtasksHoldTheirParentAndCompletionReleasesIt)
{
    addAll("Pabx");
    link("P", "a", EdgeKind::subtask);
    link("P", "b", EdgeKind::subtask);
    link("x", "P");
    done("a");
    EXPECT_EQ(state("P").blockers, 2) << "one open prerequisite and one open subtask";
    done("x");
    EXPECT_EQ(state("P").blockers, 1);
    EXPECT_TRUE(blocked("P")) << "an open subtask alone holds it";
    EXPECT_FALSE(blocked("x"));
    EXPECT_EQ(ready(), QStringList{"b"}) << "a subtask is ready although its parent waits";

    store->setStartDate(berlinTime(2026, 6, 17), (*this)["P"]);
    const QList<const FlowNode *> released = store->setStatus(NodeStatus::done, (*this)["b"]);
    EXPECT_EQ(titles(released), QStringList{"P"}) << "released even though it starts next week";
    EXPECT_FALSE(blocked("P"));
    EXPECT_TRUE(ready().isEmpty());
    EXPECT_EQ(Readiness::readyEmptyReason(store->flows(), now, calendar), ReadyEmptyReason::allDeferred);
}

TEST_F(ReadinessRules, CardStateOrder)
{
    addAll("abc");
    link("a", "b");
    link("a", "c");
    store->setStartDate(berlinTime(2026, 6, 11), (*this)["b"]);
    store->setStartDate(berlinTime(2026, 6, 11), (*this)["c"]);
    store->setStatus(NodeStatus::inProgress, (*this)["c"]);
    // Deferred is told before blocked; a started node shows its status.
    EXPECT_EQ(state("b").kind, NodeCardState::Kind::deferred);
    EXPECT_EQ(state("b").until, berlinTime(2026, 6, 11));
    EXPECT_EQ(state("c").kind, NodeCardState::Kind::status);
    EXPECT_EQ(state("a").kind, NodeCardState::Kind::ready);

    // A start of today is ready all day; tomorrow's from its first instant.
    store->setStartDate(berlinTime(2026, 6, 10, 23, 0), (*this)["a"]);
    now = berlinTime(2026, 6, 10, 23, 59);
    EXPECT_EQ(ready(), QStringList{"a"});
    done("a");
    EXPECT_TRUE(ready().isEmpty()) << "b and c start tomorrow";
    now = berlinTime(2026, 6, 11, 0, 0);
    EXPECT_EQ(ready(), (QStringList{"b", "c"})) << "the day's turn alone releases them";
    EXPECT_EQ(Readiness::readyCount(*flow, berlinTime(2026, 6, 10, 12, 0), calendar), 0);
}

TEST_F(ReadinessRules, EmptyReasonsFollowTheirOrder)
{
    EXPECT_EQ(Readiness::readyEmptyReason(store->flows(), now, calendar), ReadyEmptyReason::noTasks)
        << "only empty flows";
    addAll("ab");
    done("a");
    done("b");
    EXPECT_EQ(Readiness::readyEmptyReason(store->flows(), now, calendar), ReadyEmptyReason::allDone);

    // Subtask edges hold their tail, so three acyclic edges can hold three
    // nodes in a ring: y holds x, x holds z, z holds y. Nothing is ready and
    // nothing is free: all blocked, never all done.
    const TaskFlow *other = store->addFlow(QStringLiteral("Other"));
    const FlowNode *x = store->addNode(QStringLiteral("x"), *other);
    const FlowNode *y = store->addNode(QStringLiteral("y"), *other);
    const FlowNode *z = store->addNode(QStringLiteral("z"), *other);
    store->addEdge(*x, *y, EdgeSource::manual, EdgeKind::subtask);
    store->addEdge(*x, *z, EdgeSource::manual, EdgeKind::dependency);
    store->addEdge(*z, *y, EdgeSource::manual, EdgeKind::dependency);
    EXPECT_TRUE(ready().isEmpty());
    EXPECT_EQ(Readiness::readyEmptyReason(store->flows(), now, calendar), ReadyEmptyReason::allBlocked);

    // A node both blocked and deferred never makes the reason deferred...
    store->setStartDate(berlinTime(2026, 7, 1), *y);
    EXPECT_EQ(Readiness::readyEmptyReason(store->flows(), now, calendar), ReadyEmptyReason::allBlocked);
    // ...a free deferred node does.
    const FlowNode *later = store->addNode(QStringLiteral("later"), *other);
    store->setStartDate(berlinTime(2026, 7, 1), *later);
    EXPECT_TRUE(ready().isEmpty());
    EXPECT_EQ(Readiness::readyEmptyReason(store->flows(), now, calendar), ReadyEmptyReason::allDeferred);
}

TEST_F(ReadinessRules, SortsAreStable)
{
    addAll("abcde");
    store->setEstimate(30, (*this)["a"]);
    store->setEstimate(15, (*this)["c"]);
    store->setPriority(NodePriority::low, (*this)["a"]);
    store->setPriority(NodePriority::high, (*this)["d"]);
    store->setPriority(NodePriority::medium, (*this)["e"]);
    store->setDueDate(berlinTime(2026, 6, 20), (*this)["e"]);
    store->setDueDate(berlinTime(2026, 6, 12), (*this)["b"]);
    const QList<ReadyTask> tasks = Readiness::readyTasks(store->flows(), now, calendar);
    EXPECT_EQ(readyTitles(Readiness::sortedReady(tasks, ReadySort::flow)), (QStringList{"a", "b", "c", "d", "e"}));
    EXPECT_EQ(readyTitles(Readiness::sortedReady(tasks, ReadySort::estimate)), (QStringList{"c", "a", "b", "d", "e"}));
    EXPECT_EQ(readyTitles(Readiness::sortedReady(tasks, ReadySort::priority)), (QStringList{"d", "e", "a", "b", "c"}));
    EXPECT_EQ(readyTitles(Readiness::sortedReady(tasks, ReadySort::dueDate)), (QStringList{"b", "e", "a", "c", "d"}));
}

TEST_F(ReadinessRules, TodayGroupOrdersByPlanRank)
{
    addAll("abcd");
    for (const char *title : {"a", "b", "c"})
        store->setStartDate(now, (*this)[title]);
    store->setStartDate(berlinTime(2026, 6, 1), (*this)["d"]);
    store->setDayPlanRank(2, (*this)["b"]);
    store->setDayPlanRank(1, (*this)["c"]);
    TodayGroups groups = Readiness::todayGroups(Readiness::readyTasks(store->flows(), now, calendar), now, calendar);
    EXPECT_EQ(readyTitles(groups.today), (QStringList{"c", "b", "a", "d"}));
    EXPECT_TRUE(groups.hasRanks);

    addAll("e");
    groups = Readiness::todayGroups(Readiness::readyTasks(store->flows(), now, calendar), now, calendar);
    EXPECT_EQ(readyTitles(groups.rest), QStringList{"e"});
}

} // namespace
} // namespace fenrow
