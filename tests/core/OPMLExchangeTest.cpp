#include "TestStore.h"
#include "../cli/QtPrinters.h"

#include "formats/OPMLCodec.h"
#include "shell/InterfaceLanguage.h"

#include <QSignalSpy>

namespace fenrow::testing {
namespace {

using OPMLCodec::Outline;

// "Parent > child" for every subtask edge and "a -> b" for every
// dependency, sorted: the graph of a flow by titles.
QStringList graphOf(const TaskFlow &flow)
{
    QStringList edges;
    for (const DependencyEdge *edge : flow.edges()) {
        edges << edge->fromItem()->title + (edge->isSubtask() ? " > " : " -> ") + edge->toItem()->title;
    }
    edges.sort();
    return edges;
}

QStringList titlesInOrder(const TaskFlow &flow)
{
    QStringList titles;
    for (const FlowNode *node : flow.orderedItems())
        titles << node->title;
    return titles;
}

const FlowNode *named(const TaskFlow &flow, const QString &title)
{
    for (const FlowNode *node : flow.items()) {
        if (node->title == title)
            return node;
    }
    ADD_FAILURE() << "no task " << title.toStdString();
    return nullptr;
}

// A flow of named tasks in a store file, which tests reopen to see what an
// import really saved.
class OPMLExchange : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(InterfaceLanguage::apply(QStringLiteral("en")));
        flow = store->addFlow(QStringLiteral("Test"));
    }

    void addAll(const QString &titles)
    {
        for (QChar letter : titles)
            nodes.insert(QString(letter), store->addNode(QString(letter), *flow));
    }
    const FlowNode &operator[](const QString &title) const { return *nodes.value(title); }
    void link(const QString &from, const QString &to, EdgeKind kind = EdgeKind::dependency)
    {
        store->addEdge((*this)[from], (*this)[to], EdgeSource::manual, kind);
    }

    FenrowStore::ImportedFlow roundTrip(const TaskFlow &source)
    {
        const std::optional<OPMLCodec::Document> read =
            OPMLCodec::decode(store->exportOPML(source).toUtf8(), store->calendar());
        EXPECT_TRUE(read);
        if (!read)
            return {};
        return store->importOPML(read->title, read->roots, QStringLiteral("fallback"));
    }

    TestStore store;
    const TaskFlow *flow = nullptr;
    QMap<QString, const FlowNode *> nodes;
};

TEST_F(OPMLExchange, AFlowSurvivesExportAndImport)
{
    store->renameFlow(*flow, QStringLiteral("  Launch <v2>  "));
    addAll("ABCDE");
    store->setNotes((*this)["A"], QStringLiteral("First line\n\nThird line"));
    store->addChecklistEntry(QStringLiteral("Draft"), (*this)["A"]);
    store->addChecklistEntry(QStringLiteral("Proof"), (*this)["A"]);
    store->toggleChecklistEntry((*this)["A"].checklist()[0].id, (*this)["A"]);
    store->setStartDate(berlinTime(2026, 3, 2, 17), (*this)["B"]);
    store->setDueDate(berlinTime(2026, 3, 9, 8), (*this)["B"]);
    store->setStatus(NodeStatus::done, (*this)["C"]);
    store->setStatus(NodeStatus::inProgress, (*this)["D"]);
    link("A", "B", EdgeKind::subtask);
    link("A", "C", EdgeKind::subtask);
    link("C", "D", EdgeKind::subtask);
    link("B", "D");
    link("D", "E");
    link("B", "E");

    QSignalSpy changes(&*store, &FenrowStore::changed);
    const FenrowStore::ImportedFlow imported = roundTrip(*flow);
    ASSERT_NE(imported.flow, nullptr);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_TRUE(imported.hasDependencies);
    const QUuid sourceID = flow->id;
    const QUuid copyID = imported.flow->id;
    store.reopen();
    flow = store->flow(sourceID);
    ASSERT_NE(store->flow(copyID), nullptr);
    const TaskFlow &copy = *store->flow(copyID);

    EXPECT_EQ(copy.name, "Launch <v2>");
    EXPECT_EQ(titlesInOrder(copy), (QStringList{"A", "B", "C", "D", "E"})) << "document order";
    EXPECT_EQ(graphOf(copy), graphOf(*flow));
    const FlowNode &a = *named(copy, "A");
    EXPECT_EQ(a.notes, "First line\n\nThird line");
    EXPECT_EQ(a.checklistData, flow->orderedItems()[0]->checklistData) << "ids and ticks kept";
    const FlowNode &b = *named(copy, "B");
    EXPECT_EQ(b.startDate, berlinTime(2026, 3, 2));
    EXPECT_EQ(b.dueDate, berlinTime(2026, 3, 9));
    const FlowNode &c = *named(copy, "C");
    EXPECT_TRUE(c.isDone);
    EXPECT_EQ(c.completedAt, store.clock.now());
    EXPECT_EQ(named(copy, "D")->status(), NodeStatus::pending) << "a status short of done is not carried";
    EXPECT_EQ(named(copy, "E")->notes, "") << "the note composed for other outliners is not taken as notes";
    for (const FlowNode *node : copy.items()) {
        EXPECT_NE(flow->items()[0]->id, node->id) << "new identities";
        EXPECT_EQ(node->posX, 0);
        EXPECT_EQ(node->posY, 0);
        EXPECT_EQ(node->priorityRaw, "none");
        EXPECT_FALSE(node->estimateMinutes);
    }
    for (const DependencyEdge *edge : copy.edges())
        EXPECT_EQ(edge->source, EdgeSource::manual);
    EXPECT_EQ(store->flows().last()->id, copy.id) << "after the existing flows";
}

TEST_F(OPMLExchange, TheOutlineIsATreeOfTheFlow)
{
    // B is a subtask of both A and C: it hangs under A, the earlier, and the
    // edge from C does not come back.
    addAll("ABC");
    link("A", "B", EdgeKind::subtask);
    link("C", "B", EdgeKind::subtask);
    const FenrowStore::ImportedFlow imported = roundTrip(*flow);
    EXPECT_EQ(graphOf(*imported.flow), QStringList{"A > B"});
    EXPECT_FALSE(imported.hasDependencies);
    EXPECT_EQ(titlesInOrder(*imported.flow), (QStringList{"A", "B", "C"}));
    EXPECT_EQ(store->exportOPML(*flow).count(QStringLiteral("<outline text=\"B\"")), 1);

    // An empty flow writes an empty body, which reads as nothing to import.
    const TaskFlow *empty = store->addFlow(QStringLiteral("   "));
    const QString text = store->exportOPML(*empty);
    EXPECT_TRUE(text.contains("<title>Untitled flow</title>")) << text.toStdString();
    EXPECT_FALSE(OPMLCodec::decode(text.toUtf8(), store->calendar()));
}

TEST_F(OPMLExchange, EdgesFromTheFileObeyTheGraphRules)
{
    const auto outline = [](const QString &text, const QString &id, QStringList after = {},
                            QList<Outline> children = {}) {
        return Outline{.text = text, .fenrowID = id, .after = after, .children = children};
    };
    // a before b, b before a (a cycle), c after an unknown id and after its
    // own parent, d after itself; and an untitled outline with a child.
    const QList<Outline> roots{
        outline("a", "1", {"2"}),
        outline("b", "2", {"1"}),
        outline("c", "3", {"404"}, {outline("c1", "4", {"3"}), outline("d", "5", {"5"})}),
        Outline{.children = {Outline{.text = "orphan"}}},
    };
    const FenrowStore::ImportedFlow imported = store->importOPML({}, roots, QStringLiteral("Plan from file"));
    EXPECT_EQ(imported.flow->name, "Plan from file");
    EXPECT_TRUE(imported.hasDependencies) << "b -> a made it";
    EXPECT_EQ(titlesInOrder(*imported.flow), (QStringList{"a", "b", "c", "c1", "d", "New task", "orphan"}));
    EXPECT_EQ(graphOf(*imported.flow), (QStringList{"New task > orphan", "b -> a", "c > c1", "c > d"}));

    // The same file twice: two independent flows.
    const FenrowStore::ImportedFlow again = store->importOPML(QStringLiteral("Again"), roots, {});
    EXPECT_NE(again.flow->items()[0]->id, imported.flow->items()[0]->id);
    EXPECT_EQ(again.flow->name, "Again");
    EXPECT_EQ(store->importOPML({}, roots, QStringLiteral(" ")).flow->name, "Untitled flow");

    // A parent named as a prerequisite adds nothing beside the subtask edge.
    const FenrowStore::ImportedFlow nested =
        store->importOPML({}, {outline("p", "1", {}, {outline("k", "2", {"1"})})}, QStringLiteral("N"));
    EXPECT_FALSE(nested.hasDependencies);
    EXPECT_EQ(graphOf(*nested.flow), QStringList{"p > k"});

    // Ids in this program's own form are matched as numbers: every digit
    // counts, and only upper case is that form.
    const QString x = QStringLiteral("0A1B2C3D-4E5F-6A7B-8C9D-0E1F2A3B4C5D");
    const QString y = QStringLiteral("0A1B2C3D-4E5F-6A7B-8C9D-0E1F2A3B4C5E");
    const QString z = QStringLiteral("1A1B2C3D-4E5F-6A7B-8C9D-0E1F2A3B4C5D");
    const FenrowStore::ImportedFlow uuids = store->importOPML(
        {},
        {outline("x", x), outline("y", y), outline("z", z), outline("after x", "", {x}), outline("after y", "", {y}),
         outline("after z", "", {z}), outline("after x, lower case", "", {x.toLower()})},
        QStringLiteral("U"));
    EXPECT_EQ(graphOf(*uuids.flow), (QStringList{"x -> after x", "y -> after y", "z -> after z"}));
}

// A chain of subtasks far deeper than any outline may be, as edits or a
// script can make it: every export, the duplicate and the template walk it
// in time and space proportional to the flow.
TEST(DeepFlow, AChainOfFiftyThousandSubtasksExportsDuplicatesAndTemplates)
{
    ASSERT_TRUE(InterfaceLanguage::apply(QStringLiteral("en")));
    constexpr int depth = 50000;
    FlowBlueprint chain;
    chain.name = QStringLiteral("Chain");
    for (int i = 0; i < depth; ++i) {
        FlowBlueprint::Item &item = chain.items.emplace_back();
        item.key = item.order = i;
        item.title = QStringLiteral("T%1").arg(i);
        if (i > 0)
            chain.edges.append({i - 1, i, QStringLiteral("subtask"), QStringLiteral("manual")});
    }
    TestStore store(TestStore::Backing::memory);
    const TaskFlow &flow = *store->instantiate(chain, std::nullopt);
    ASSERT_EQ(flow.edges().size(), std::size_t(depth - 1));

    const QString markdown = store->markdown(flow);
    EXPECT_LT(markdown.size(), 50 * depth);
    EXPECT_TRUE(markdown.endsWith("\n" + QString(32, QLatin1Char(' ')) + "- [ ] T49999\n")) << "at the deepest indent";
    const QString outline = store->exportOPML(flow);
    EXPECT_LT(outline.size(), 250 * depth);
    EXPECT_EQ(OPMLCodec::read(outline.toUtf8(), store->calendar()),
              OPMLCodec::Reading(OPMLCodec::Refusal{OPMLCodec::Refusal::Reason::tooDeep, 1007, 1001}))
        << "too deep for an outline to bring back";

    EXPECT_EQ(store->duplicateFlow(flow)->edges().size(), std::size_t(depth - 1));
    const FlowTemplate *saved = store->saveAsTemplate(flow);
    ASSERT_NE(saved, nullptr);
    EXPECT_EQ(store->createFlow(*saved)->edges().size(), std::size_t(depth - 1));
}

} // namespace
} // namespace fenrow::testing
