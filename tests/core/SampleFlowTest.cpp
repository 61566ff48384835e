#include "TestStore.h"

#include "canvas/NodeSizeResolver.h"
#include "domain/FlowGraph.h"
#include "shell/AppPreferences.h"
#include "shell/InterfaceLanguage.h"
#include "shell/SampleFlow.h"

#include <QSettings>

namespace fenrow {
namespace {

using testing::TestStore;

class SampleFlowSeeding : public ::testing::Test {
protected:
    QTemporaryDir folder;
    AppPreferences preferences{std::make_unique<QSettings>(folder.filePath("fenrow.conf"), QSettings::IniFormat)};
    TestStore store{TestStore::Backing::memory};
    NodeSizeResolver sizes;
};

TEST_F(SampleFlowSeeding, SeedsTheDiamondOnceIntoAnEmptyStore)
{
    InterfaceLanguage::apply(QStringLiteral("de"));
    const TaskFlow *flow = SampleFlow::seedIfNeeded(*store, preferences, sizes);
    InterfaceLanguage::apply(QStringLiteral("en"));
    ASSERT_NE(flow, nullptr);
    EXPECT_TRUE(preferences.hasSeededSampleFlow());
    EXPECT_TRUE(preferences.defaults().value(PreferenceKey::hasSeededSampleFlow).toBool());
    EXPECT_EQ(flow->name, QStringLiteral("Beispiel: Eine Landingpage starten"))
        << "the texts follow the interface language in force";

    const QList<const FlowNode *> nodes = flow->orderedItems();
    ASSERT_EQ(nodes.size(), 5);
    ASSERT_EQ(flow->edges().size(), 5u);
    EXPECT_EQ(nodes[0]->title, QStringLiteral("Angebot festlegen"));
    auto joined = [&](int a, int b) { return FlowGraph::findEdge(*nodes[a], *nodes[b], *flow) != nullptr; };
    EXPECT_TRUE(joined(0, 1) && joined(0, 2) && joined(1, 3) && joined(2, 3) && joined(3, 4));
    // Laid out left to right: the offer, the two parallel tasks in one
    // column, the build, then publishing.
    EXPECT_LT(nodes[0]->posX, nodes[1]->posX);
    EXPECT_EQ(nodes[1]->posX, nodes[2]->posX);
    EXPECT_NE(nodes[1]->posY, nodes[2]->posY);
    EXPECT_LT(nodes[2]->posX, nodes[3]->posX);
    EXPECT_LT(nodes[3]->posX, nodes[4]->posX);

    store->deleteFlow(*flow);
    EXPECT_EQ(SampleFlow::seedIfNeeded(*store, preferences, sizes), nullptr) << "seeded once per user";
}

TEST_F(SampleFlowSeeding, AUserWithDataIsAskedAgainLater)
{
    const TaskFlow *own = store->addFlow(QStringLiteral("Mine"));
    EXPECT_EQ(SampleFlow::seedIfNeeded(*store, preferences, sizes), nullptr);
    EXPECT_FALSE(preferences.defaults().contains(PreferenceKey::hasSeededSampleFlow));

    store->deleteFlow(*own);
    EXPECT_NE(SampleFlow::seedIfNeeded(*store, preferences, sizes), nullptr);
}

} // namespace
} // namespace fenrow
