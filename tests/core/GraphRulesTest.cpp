#include "TestStore.h"

#include "domain/FlowGraph.h"

#include <QSignalSpy>

namespace fenrow {
namespace {

using testing::FlowFixture;
using Kind = GraphMutationError::Kind;

Kind refusal(const std::function<void()> &operation)
{
    try {
        operation();
    } catch (const GraphMutationError &error) {
        return error.kind();
    }
    ADD_FAILURE() << "expected a GraphMutationError";
    return Kind::invalidItems;
}

class GraphRules : public FlowFixture {};

TEST_F(GraphRules, AddEdgeChecksInOrder)
{
    addAll("abc");
    // Self-loop is tested before anything else, even without a flow.
    FlowNode loose;
    loose.id = QUuid::createUuid();
    EXPECT_EQ(refusal([&] { store->addEdge(loose, loose, EdgeSource::manual, EdgeKind::dependency); }), Kind::selfLoop);
    EXPECT_EQ(refusal([&] { store->addEdge(loose, (*this)["a"], EdgeSource::manual, EdgeKind::dependency); }),
              Kind::invalidItems);
    const TaskFlow *other = store->addFlow(QStringLiteral("Other"));
    const FlowNode *stranger = store->addNode(QStringLiteral("x"), *other);
    EXPECT_EQ(refusal([&] { link("a", "a"); }), Kind::selfLoop);
    EXPECT_EQ(refusal([&] { store->addEdge((*this)["a"], *stranger, EdgeSource::manual, EdgeKind::dependency); }),
              Kind::invalidItems);

    const DependencyEdge &ab = link("a", "b");
    QSignalSpy changed(store.store.get(), &FenrowStore::changed);
    // An existing pair is returned unchanged, whatever kind was asked for.
    EXPECT_EQ(&store->addEdge((*this)["a"], (*this)["b"], EdgeSource::ai, EdgeKind::subtask), &ab);
    EXPECT_FALSE(ab.isSubtask());
    EXPECT_EQ(ab.source, EdgeSource::manual);
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(flow->edges().size(), 1u);

    EXPECT_EQ(refusal([&] { link("b", "a"); }), Kind::cycleRejected);
    link("b", "c", EdgeKind::subtask);
    // Kinds mix in the cycle test: a -> b (dependency) -> c (subtask).
    EXPECT_EQ(refusal([&] { link("c", "a"); }), Kind::cycleRejected);
    EXPECT_EQ(flow->edges().size(), 2u) << "a refused edge changes nothing";
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(GraphRules, ReconnectMovesRefusesOrDisappears)
{
    addAll("abcd");
    const DependencyEdge &ab = link("a", "b");
    const DependencyEdge &cd = link("c", "d");
    const QUuid abID = ab.id;

    QSignalSpy changed(store.store.get(), &FenrowStore::changed);
    store->reconnectEdge(ab, (*this)["a"], (*this)["b"]);
    EXPECT_EQ(changed.count(), 0) << "reconnecting to its own ends does nothing";
    EXPECT_FALSE(store->hasChanges());

    // Swapping both ends is searched with the edge still in place: refused.
    EXPECT_EQ(refusal([&] { store->reconnectEdge(ab, (*this)["b"], (*this)["a"]); }), Kind::cycleRejected);
    EXPECT_EQ(refusal([&] { store->reconnectEdge(ab, (*this)["c"], (*this)["c"]); }), Kind::selfLoop);

    store->reconnectEdge(ab, (*this)["a"], (*this)["c"]);
    EXPECT_EQ(ab.toItem(), &(*this)["c"]);
    EXPECT_EQ(ab.id, abID);

    // Onto the pair c -> d, which already has an edge: the moved one goes.
    store->reconnectEdge(ab, (*this)["c"], (*this)["d"]);
    ASSERT_EQ(flow->edges().size(), 1u);
    EXPECT_EQ(flow->edges()[0], &cd);
}

TEST_F(GraphRules, ProposalsKeepTheGraphValid)
{
    addAll("abcd");
    link("a", "b");
    const auto proposal = [&](const char *from, const char *to) {
        return EdgeProposal{(*this)[from].id, (*this)[to].id};
    };
    // "ab" for a manual edge a -> b, "ab*" for a machine-made one.
    const auto edges = [&] {
        QStringList shown;
        for (const DependencyEdge *edge : flow->edges())
            shown << edge->fromItem()->title + edge->toItem()->title + (edge->source == EdgeSource::ai ? "*" : "");
        return shown;
    };
    store->applyProposals({proposal("c", "d")}, *flow, false);
    ASSERT_EQ(flow->edges().size(), 2u);

    // Replacing drops the machine-made edges, keeps the manual ones, and a
    // later proposal that closes a loop with an earlier one, or with a
    // manual edge, loses.
    store->applyProposals({proposal("b", "c"), proposal("c", "b"), proposal("b", "a"), proposal("d", "d"),
                           {QUuid::createUuid(), (*this)["a"].id}, proposal("a", "b")},
                          *flow, true);
    EXPECT_EQ(edges(), (QStringList{"ab", "bc*"}));

    // Adding without replacing keeps what is there and skips doubles; each
    // run saves.
    store->applyProposals({proposal("b", "c"), proposal("c", "d"), proposal("d", "a")}, *flow, false);
    EXPECT_EQ(edges(), (QStringList{"ab", "bc*", "cd*"}));
    EXPECT_FALSE(store->hasChanges());

    store->applyProposals({proposal("b", "a")}, *flow, true);
    EXPECT_EQ(edges(), QStringList{"ab"}) << "all ai edges went, the cyclic proposal was dropped";
}

TEST_F(GraphRules, DeletionClosureStopsAtASecondParent)
{
    addAll("abcdxy");
    link("a", "b");
    link("a", "c");
    link("b", "d");
    link("c", "d", EdgeKind::subtask);
    link("x", "y");
    EXPECT_EQ(titles(FlowGraph::deletionClosure((*this)["b"], *flow)), QStringList{"b"});
    EXPECT_EQ(titles(FlowGraph::deletionClosure((*this)["a"], *flow)), (QStringList{"a", "b", "c", "d"}));

    // y depends on x and on b: deleting the a-branch keeps y and what hangs on it.
    link("b", "y");
    add("z");
    link("y", "z");
    EXPECT_EQ(titles(FlowGraph::deletionClosure((*this)["a"], *flow)), (QStringList{"a", "b", "c", "d"}));

    QStringList reached;
    for (const FlowNode *node : FlowGraph::descendants((*this)["a"], *flow))
        reached << node->title;
    EXPECT_EQ(reached.first(), "a");
    EXPECT_EQ(QSet<QString>(reached.begin(), reached.end()), (QSet<QString>{"a", "b", "c", "d", "y", "z"}));
}

TEST_F(GraphRules, FoldingHidesOnlyWhatEveryPathReachesThroughAFold)
{
    // r -> a -> b -> c, and s -> b: b has a second, unfolded parent.
    addAll("rabcsd");
    link("r", "a");
    link("a", "b");
    link("b", "c");
    link("s", "b");
    link("a", "d", EdgeKind::subtask);
    EXPECT_TRUE(FlowGraph::hiddenNodeIDs(*flow).isEmpty());

    store->setCollapsed((*this)["r"], true);
    // b stays visible through s, and c below it with it.
    EXPECT_EQ(titles(FlowGraph::hiddenNodeIDs(*flow)), (QStringList{"a", "d"}));
    EXPECT_EQ(titles(FlowGraph::visibleItems(*flow)), (QStringList{"r", "b", "c", "s"}));

    store->setCollapsed((*this)["s"], true);
    EXPECT_EQ(titles(FlowGraph::hiddenNodeIDs(*flow)), (QStringList{"a", "b", "c", "d"}));

    // Unfolding above c opens both folds, but not folds below it.
    store->setCollapsed((*this)["c"], true);
    store->unfoldAncestors({(*this)["c"].id}, *flow);
    EXPECT_FALSE((*this)["r"].isCollapsed);
    EXPECT_FALSE((*this)["s"].isCollapsed);
    EXPECT_TRUE((*this)["c"].isCollapsed);
    EXPECT_TRUE(FlowGraph::hiddenNodeIDs(*flow).isEmpty());
}

TEST_F(GraphRules, WithoutRootsEverythingBelowAFoldIsHidden)
{
    // Damaged data: a loop a -> b -> a, no root at all.
    addAll("ab");
    link("a", "b");
    auto *edge = const_cast<DependencyEdge *>(flow->edges()[0]);
    auto reverse = std::make_unique<DependencyEdge>();
    reverse->id = QUuid::createUuid();
    reverse->setFlow(edge->flow());
    reverse->setFromItem(edge->toItem());
    reverse->setToItem(edge->fromItem());
    const_cast<TaskFlow *>(flow)->edges().add(std::move(reverse));
    store->setCollapsed((*this)["a"], true);
    EXPECT_EQ(titles(FlowGraph::hiddenNodeIDs(*flow)), (QStringList{"a", "b"}));
}

TEST_F(GraphRules, DependentsAndSubtasks)
{
    addAll("pcdq");
    link("p", "c", EdgeKind::subtask);
    link("c", "d");
    link("q", "c");
    EXPECT_EQ(titles(FlowGraph::dependentsOf((*this)["c"])), (QStringList{"d", "p"}));
    EXPECT_TRUE(FlowGraph::hasSubtasks((*this)["p"]));
    EXPECT_FALSE(FlowGraph::hasSubtasks((*this)["c"]));
    const BlockerMaps maps = FlowGraph::blockerMaps(*flow);
    EXPECT_EQ(titles(maps.prerequisites.value((*this)["c"].id)), QStringList{"q"});
    EXPECT_EQ(titles(maps.subtasks.value((*this)["p"].id)), QStringList{"c"});
}

} // namespace
} // namespace fenrow
