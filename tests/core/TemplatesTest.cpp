#include "TestStore.h"

#include "canvas/CanvasBounds.h"
#include "canvas/NodeSizeResolver.h"
#include "domain/ValueLimits.h"
#include "shell/InterfaceLanguage.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>

namespace fenrow {
namespace {

using testing::berlinTime;
using testing::FlowFixture;
using testing::TestStore;

const FlowNode *byTitle(const TaskFlow &flow, const QString &title)
{
    for (const FlowNode *node : flow.items())
        if (node->title == title)
            return node;
    return nullptr;
}

// Every id a flow holds: its own, its nodes', edges' and checklist entries'.
QSet<QUuid> idsOf(const TaskFlow &flow)
{
    QSet<QUuid> ids{flow.id};
    for (const FlowNode *node : flow.items()) {
        ids.insert(node->id);
        for (const ChecklistEntry &entry : node->checklist())
            ids.insert(entry.id);
    }
    for (const DependencyEdge *edge : flow.edges())
        ids.insert(edge->id);
    return ids;
}

// Edges as "from>to kind source", sorted.
QStringList edgeShape(const TaskFlow &flow)
{
    QStringList shape;
    for (const DependencyEdge *edge : flow.edges())
        shape << QStringLiteral("%1>%2 %3 %4")
                     .arg(edge->fromItem()->title, edge->toItem()->title,
                          edge->kind ? rawString(*edge->kind) : QStringLiteral("-"), rawString(edge->source));
    shape.sort();
    return shape;
}

// What a template keeps of a node, and what it must not.
QString content(const FlowNode &node)
{
    return QStringLiteral("%1|%2|%3|%4|%5|%6x%7|%8,%9|%10|%11|%12")
        .arg(node.title, node.notes, node.priorityRaw, node.colorRaw)
        .arg(node.estimateMinutes.value_or(-1))
        .arg(node.manualWidth.value_or(-1))
        .arg(node.manualHeight.value_or(-1))
        .arg(node.posX)
        .arg(node.posY)
        .arg(node.order)
        .arg(node.recurrenceRaw.value_or("-"))
        .arg(node.checklist().size());
}
bool hasProgress(const FlowNode &node)
{
    const Checklist entries = node.checklist();
    return node.isDone || node.statusRaw != "pending" || node.startDate || node.dueDate || node.dayPlanRank ||
           node.completedAt || node.repeatCount != 0 || node.isCollapsed ||
           std::any_of(entries.begin(), entries.end(), [](const ChecklistEntry &entry) { return entry.isDone; });
}

class Templates : public FlowFixture {
protected:
    void TearDown() override { InterfaceLanguage::apply(QStringLiteral("en")); }

    // A flow with progress of every kind, so that a copy shows what is left behind.
    void buildWorkedFlow()
    {
        const FlowNode &plan = add(QStringLiteral("Plan"));
        store->setNotes(plan, QStringLiteral("Scope first"));
        store->setPriority(NodePriority::high, plan);
        store->setColor(NodeColor::red, plan);
        store->setEstimate(45, plan);
        store->setManualSize(plan, 300.0, 120.0);
        store->moveNode(plan, 100, -40);
        store->addChecklistEntry(QStringLiteral("Sketch"), plan);
        store->addChecklistEntry(QStringLiteral("Budget"), plan);
        store->toggleChecklistEntry(plan.checklist().first().id, plan);
        store->setStartDate(berlinTime(2026, 6, 1), plan);
        store->setDayPlanRank(2, plan);
        store->setCollapsed(plan, true);
        done(QStringLiteral("Plan"));
        store->setStatus(NodeStatus::inProgress, add(QStringLiteral("Build")));
        const FlowNode &water = add(QStringLiteral("Water"));
        store->setRecurrence(NodeRecurrence{RecurrenceRule::daily, 1, std::nullopt}, water);
        store->setDueDate(berlinTime(2026, 6, 10), water);
        done(QStringLiteral("Water"));
        link(QStringLiteral("Plan"), QStringLiteral("Build"));
        store->addEdge((*this)[QStringLiteral("Plan")], water, EdgeSource::ai, EdgeKind::subtask);
    }
};

TEST_F(Templates, FlowsFromATemplateStartAfreshAndShareNoIds)
{
    buildWorkedFlow();
    ASSERT_EQ((*this)[QStringLiteral("Water")].repeatCount, 1) << "the recurring task has rolled once";

    QSignalSpy changed(store.store.get(), &FenrowStore::changed);
    const FlowTemplate *saved = store->saveAsTemplate(*flow);
    ASSERT_NE(saved, nullptr);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_FALSE(store->hasChanges());
    EXPECT_EQ(saved->name, QStringLiteral("Test"));

    const TaskFlow *first = store->createFlow(*saved);
    const TaskFlow *second = store->createFlow(*saved);
    ASSERT_TRUE(first && second);
    EXPECT_EQ(changed.count(), 3);
    EXPECT_EQ(first->name, QStringLiteral("Test"));
    EXPECT_EQ(first->order, 1);
    EXPECT_EQ(second->order, 2);
    EXPECT_FALSE(first->hasBeenFramed);
    EXPECT_EQ(store->node(first->items()[0]->id), first->items()[0]) << "the new nodes are known to the store";

    ASSERT_EQ(first->items().size(), 3u);
    for (const FlowNode *copy : first->items()) {
        const FlowNode &source = (*this)[copy->title];
        EXPECT_EQ(content(*copy), content(source));
        EXPECT_FALSE(hasProgress(*copy)) << copy->title.toStdString();
        EXPECT_TRUE(hasProgress(source)) << copy->title.toStdString();
    }
    EXPECT_EQ(byTitle(*first, QStringLiteral("Water"))->recurrenceRaw, QStringLiteral("daily"));
    EXPECT_EQ(edgeShape(*first), (QStringList{"Plan>Build dependency manual", "Plan>Water subtask ai"}));

    const QSet<QUuid> firstIDs = idsOf(*first);
    EXPECT_EQ(firstIDs.size(), 1 + 3 + 2 + 2) << "flow, nodes, checklist entries and edges";
    EXPECT_FALSE(firstIDs.intersects(idsOf(*second)));
    EXPECT_FALSE(firstIDs.intersects(idsOf(*flow)));
}

TEST_F(Templates, BlueprintTakesNodesByOrderAndEdgesOldestFirst)
{
    // By hand: an edge without a stored kind, and one that lost an end,
    // cannot come from the store's own operations.
    auto owned = std::make_unique<TaskFlow>();
    TaskFlow *source = owned.get();
    QList<FlowNode *> nodes;
    const std::pair<const char *, int> cases[]{{"Last", 9}, {"First", -3}, {"Middle", 4}};
    for (const auto &[title, order] : cases) {
        auto node = std::make_unique<FlowNode>();
        node->title = QString::fromLatin1(title);
        node->order = order;
        node->setFlow(source);
        nodes << source->items().add(std::move(node));
    }
    auto addEdge = [&](FlowNode *from, FlowNode *to, std::optional<EdgeKind> kind, int day) {
        auto edge = std::make_unique<DependencyEdge>();
        edge->kind = kind;
        edge->createdAt = berlinTime(2026, 1, day);
        edge->setFromItem(from);
        edge->setToItem(to);
        source->edges().add(std::move(edge));
    };
    addEdge(nodes[1], nodes[0], EdgeKind::subtask, 20);
    addEdge(nodes[2], nodes[0], std::nullopt, 5);
    addEdge(nodes[1], nullptr, EdgeKind::dependency, 1);

    const FlowBlueprint blueprint = FlowBlueprint::make(*source, QStringLiteral("Shape"));
    QStringList items;
    for (const FlowBlueprint::Item &item : blueprint.items)
        items << QStringLiteral("%1:%2@%3").arg(item.key).arg(item.title).arg(item.order);
    EXPECT_EQ(items, (QStringList{"0:First@-3", "1:Middle@4", "2:Last@9"}));
    EXPECT_EQ(blueprint.edges, (QList<FlowBlueprint::Edge>{{1, 2, "dependency", "manual"}, {0, 2, "subtask", "manual"}}));

    const TaskFlow *made = store->instantiate(blueprint, std::nullopt);
    EXPECT_EQ(made->name, QStringLiteral("Shape"));
    EXPECT_EQ(edgeShape(*made), (QStringList{"First>Last subtask manual", "Middle>Last dependency manual"}));
}

TEST_F(Templates, InstantiateSkipsMeaninglessEdgesAndKeepsRawText)
{
    FlowBlueprint blueprint;
    blueprint.name = QStringLiteral("  Kitchen \n");
    blueprint.items.resize(2);
    blueprint.items[0].key = 7;  // keys are names, not positions
    blueprint.items[0].title = QStringLiteral("Shop");
    blueprint.items[0].priorityRaw = QStringLiteral("urgent");
    blueprint.items[1].key = 3;
    blueprint.items[1].title = QStringLiteral("Cook");
    blueprint.edges = {{7, 3, "later", "robot"}, {7, 3, "subtask", "manual"}, {3, 3, "dependency", "manual"},
                       {7, 0, "dependency", "manual"}};

    QSignalSpy changed(store.store.get(), &FenrowStore::changed);
    const TaskFlow *made = store->instantiate(blueprint, std::nullopt);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_FALSE(store->hasChanges());
    EXPECT_EQ(made->name, QStringLiteral("Kitchen"));
    const FlowNode *shop = byTitle(*made, QStringLiteral("Shop"));
    EXPECT_EQ(shop->priorityRaw, QStringLiteral("urgent")) << "unknown text is kept, not rewritten";
    EXPECT_EQ(shop->priority(), NodePriority::none);
    // One edge per pair; unknown kind stays absent, unknown source reads as the first case.
    EXPECT_EQ(edgeShape(*made), (QStringList{"Shop>Cook - ai"}));

    EXPECT_EQ(store->instantiate(blueprint, QStringLiteral(" \t"))->name, QStringLiteral("Untitled flow"))
        << "a blank given name does not fall back to the blueprint's";

    // An empty flow gives an empty shape and comes back empty.
    const FlowBlueprint empty = FlowBlueprint::make(*flow, flow->name);
    EXPECT_TRUE(empty.items.isEmpty() && empty.edges.isEmpty());
    const TaskFlow *emptyCopy = store->createFlow(*store->saveAsTemplate(*flow));
    ASSERT_NE(emptyCopy, nullptr);
    EXPECT_TRUE(emptyCopy->items().empty());
}

TEST_F(Templates, NumbersOfAShapeAreHeldToTheStoresRanges)
{
    FlowBlueprint blueprint;
    blueprint.items.resize(2);
    blueprint.items[0] = {0, "Far", "", "none", "none", qint64(1) << 40, "", std::nullopt, 1e9, 1e9, 1e300, -1e300, -7};
    blueprint.items[1] = {1, "Odd", "", "none", "none", -5, "", std::nullopt, 300, std::nullopt, qInf(), 0, 3};
    const TaskFlow *made = store->instantiate(blueprint, std::nullopt);
    const FlowNode &far = *byTitle(*made, QStringLiteral("Far"));
    EXPECT_EQ(far.estimateMinutes, ValueLimits::maxEstimateMinutes);
    EXPECT_EQ(far.posX, CanvasBounds::limit);
    EXPECT_EQ(far.posY, -CanvasBounds::limit);
    EXPECT_EQ(far.manualWidth, NodeSizeResolver::maxWidth);
    EXPECT_EQ(far.manualHeight, NodeSizeResolver::maxHeight);
    EXPECT_EQ(far.order, 0);
    const FlowNode &odd = *byTitle(*made, QStringLiteral("Odd"));
    EXPECT_FALSE(odd.estimateMinutes);
    EXPECT_FALSE(odd.manualWidth) << "a size needs both sides";
    EXPECT_EQ(odd.posX, 0) << "infinity is no place";
}

TEST(TemplatePayload, WritesOnlyPresentOptionalsAndReadsBackEqual)
{
    FlowBlueprint blueprint;
    blueprint.name = QStringLiteral("Trip");
    const QString checklist = ChecklistCodec::encode({{QUuid::createUuid(), QStringLiteral("Passport"), false}});
    blueprint.items = {
        {0, "Book", "Window seat", "high", "blue", 90, checklist, "weekly", 280.5, 140, -12.25, 30, 0},
        {1, "Pack", "", "none", "none", std::nullopt, "", std::nullopt, 200, std::nullopt, 400, 30, 1},
    };
    blueprint.edges = {{0, 1, "dependency", "ai"}};
    // Half a surrogate pair, which only the lenient reading takes back.
    blueprint.items[1].notes = QString(QChar(0xDC00));

    const QByteArray payload = blueprint.encode();
    const QJsonArray items = QJsonDocument::fromJson(payload).object().value("items").toArray();
    ASSERT_EQ(items.size(), 2);
    QStringList present;
    for (const char *key : {"estimateMinutes", "recurrenceRaw", "manualWidth", "manualHeight"})
        for (const QJsonValue &item : items)
            if (item.toObject().contains(QLatin1StringView(key)))
                present << QStringLiteral("%1.%2").arg(item["key"].toInt()).arg(key);
    EXPECT_EQ(present, (QStringList{"0.estimateMinutes", "0.recurrenceRaw", "0.manualWidth", "1.manualWidth",
                                    "0.manualHeight"}));
    EXPECT_EQ(FlowBlueprint::decode(payload), blueprint);
    EXPECT_EQ(payload, QJsonDocument::fromJson(payload).toJson(QJsonDocument::Compact))
        << "the bytes templates have always had";

    blueprint.items[1].posY = qQNaN();
    EXPECT_TRUE(blueprint.encode().isEmpty()) << "JSON cannot hold NaN";
}

TEST(TemplatePayload, BrokenPayloadsDecodeToNothing)
{
    const QByteArray good =
        R"({"version":1,"name":"N","items":[{"key":0,"title":"T","notes":"","priorityRaw":"none",)"
        R"("colorRaw":"none","checklistData":"","posX":0,"posY":0,"order":0}],)"
        R"("edges":[{"from":0,"to":0,"kindRaw":"dependency","sourceRaw":"manual"}]})";
    ASSERT_TRUE(FlowBlueprint::decode(good).has_value());
    auto broken = [&](const char *from, const char *to) { return QByteArray(good).replace(from, to); };
    const QList<QByteArray> payloads{
        "", "not json", "[]", good.chopped(1),
        broken(R"("key":0)", R"("key":"0")"),
        broken(R"("key":0)", R"("key":0.5)"),
        broken(R"("order":0)", R"("order":1e300)"),
        broken(R"("title":"T",)", ""),
        broken(R"("posX":0)", R"("posX":"0")"),
        broken(R"("sourceRaw":"manual")", R"("sourceRaw":null)"),
        broken(R"("version":1)", R"("version":"1")"),
        broken(R"([{"from")", R"(["x",{"from")"),
        broken(R"("order":0)", R"("order":0,"estimateMinutes":"lots")"),
        broken(R"("title":"T")", R"("title":["T"])"),
        broken(R"("name":"N")", R"("name":"N","deep":)" + QByteArray(100000, '[') + QByteArray(100000, ']')),
    };
    for (const QByteArray &payload : payloads)
        EXPECT_EQ(FlowBlueprint::decode(payload), std::nullopt) << payload.toStdString();
    EXPECT_TRUE(FlowBlueprint::decode(broken(R"("order":0)", R"("order":0,"manualWidth":null)")))
        << "null reads as absent";

    // A checklist that is no list of entries is kept as it is, not read.
    for (const QString &checklist : {QString(50000, QLatin1Char('[')) + QString(50000, QLatin1Char(']')),
                                     QStringLiteral("[{\"id\":\"%1\",\"title\":7,\"isDone\":false}]")
                                         .arg(QUuid::createUuid().toString(QUuid::WithoutBraces))}) {
        EXPECT_EQ(FlowBlueprint::resetChecklist(checklist), checklist);
        EXPECT_FALSE(ChecklistCodec::hasEntries(checklist));
    }
}

TEST_F(Templates, UnreadableTemplateMakesNothingAndStaysListed)
{
    RecordBundle bundle;
    for (const std::optional<QByteArray> &payload : {std::optional<QByteArray>("{\"version\":"),
                                                     std::optional<QByteArray>()}) {
        auto flowTemplate = std::make_unique<FlowTemplate>();
        flowTemplate->id = QUuid::createUuid();
        flowTemplate->payload = payload;
        bundle.templates.push_back(std::move(flowTemplate));
    }
    store->insertRecords(std::move(bundle));

    QSignalSpy changed(store.store.get(), &FenrowStore::changed);
    for (const FlowTemplate *flowTemplate : store->templateList())
        EXPECT_EQ(store->createFlow(*flowTemplate), nullptr);
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(store->flows().size(), 1);
    EXPECT_EQ(store->templateList().size(), 2);
}

TEST_F(Templates, DuplicateLeavesFilesAndProgressBehindAndTheSourceAlone)
{
    ASSERT_TRUE(InterfaceLanguage::apply(QStringLiteral("en")));
    buildWorkedFlow();
    // A flow with a file card, given straight to the store.
    RecordBundle bundle;
    auto garden = std::make_unique<TaskFlow>();
    auto file = std::make_unique<FlowFile>();
    file->id = QUuid::createUuid();
    file->setFlow(garden.get());
    garden->files().add(std::move(file));
    garden->id = QUuid::createUuid();
    garden->name = QStringLiteral("Garden");
    const TaskFlow *withFile = garden.get();
    bundle.flows.push_back(std::move(garden));
    store->insertRecords(std::move(bundle));
    EXPECT_TRUE(store->duplicateFlow(*withFile)->files().empty());
    EXPECT_EQ(withFile->files().size(), 1u);

    QSignalSpy changed(store.store.get(), &FenrowStore::changed);
    const TaskFlow *copy = store->duplicateFlow(*flow);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(copy->name, QStringLiteral("Test copy"));
    EXPECT_EQ(edgeShape(*copy), edgeShape(*flow));
    for (const FlowNode *node : copy->items())
        EXPECT_FALSE(hasProgress(*node)) << node->title.toStdString();
    EXPECT_TRUE(store->templateList().isEmpty()) << "a duplicate stores no template";
    for (const FlowNode *node : flow->items())
        EXPECT_TRUE(hasProgress(*node)) << node->title.toStdString();

    ASSERT_TRUE(InterfaceLanguage::apply(QStringLiteral("de")));
    EXPECT_EQ(store->duplicateFlow(*flow)->name, QStringLiteral("Test (Kopie)"));
}

TEST(TemplateStore, TemplatesOutliveReopeningAndDeletionLeavesFlowsMadeFromThem)
{
    TestStore store;
    const TaskFlow *source = store->addFlow(QStringLiteral("Weekly review"));
    store->addEdge(*store->addNode(QStringLiteral("Inbox"), *source), *store->addNode(QStringLiteral("Plan"), *source),
                   EdgeSource::manual, EdgeKind::dependency);
    const QByteArray payload = *store->saveAsTemplate(*source)->payload;
    store->renameFlow(*source, QStringLiteral("Month end"));
    store.clock.set(berlinTime(2026, 6, 1));
    ASSERT_NE(store->saveAsTemplate(*source), nullptr) << "made at an earlier time, so listed first";

    store.reopen();
    QList<const FlowTemplate *> listed = store->templateList();
    ASSERT_EQ(listed.size(), 2);
    EXPECT_EQ(listed[0]->name, QStringLiteral("Month end"));
    EXPECT_EQ(listed[1]->payload, payload);
    const QUuid madeID = store->createFlow(*listed[1])->id;

    QSignalSpy changed(store.store.get(), &FenrowStore::changed);
    store->deleteTemplate(*listed[1]);
    EXPECT_EQ(changed.count(), 1);

    store.reopen();
    ASSERT_EQ(store->templateList().size(), 1);
    EXPECT_EQ(store->templateList()[0]->name, QStringLiteral("Month end"));
    const TaskFlow *kept = store->flow(madeID);
    ASSERT_NE(kept, nullptr);
    EXPECT_EQ(kept->name, QStringLiteral("Weekly review"));
    EXPECT_EQ(edgeShape(*kept), (QStringList{"Inbox>Plan dependency manual"}));
}

} // namespace
} // namespace fenrow
