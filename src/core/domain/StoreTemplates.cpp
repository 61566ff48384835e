// Templates and duplicates: a flow's shape taken out as a blueprint and made
// into a new flow, with no progress, dates or identities carried over.
#include "FenrowStore.h"

#include "Clock.h"
#include "RecordID.h"
#include "TextRules.h"
#include "ValueLimits.h"

#include <QPair>

#include <algorithm>

namespace fenrow {

const FlowTemplate *FenrowStore::saveAsTemplate(const TaskFlow &flow)
{
    const QByteArray payload = FlowBlueprint::make(flow, flow.name).encode();
    if (payload.isEmpty())
        return nullptr;
    auto flowTemplate = std::make_unique<FlowTemplate>();
    flowTemplate->id = RecordID::make();
    flowTemplate->name = flow.name;
    flowTemplate->createdAt = m_clock.now();
    flowTemplate->payload = payload;
    FlowTemplate *added = m_templates.add(std::move(flowTemplate));
    m_pending.write(added);
    finishChange();
    return added;
}

QList<const FlowTemplate *> FenrowStore::templateList() const
{
    QList<const FlowTemplate *> sorted(m_templates.begin(), m_templates.end());
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const FlowTemplate *a, const FlowTemplate *b) { return a->createdAt < b->createdAt; });
    return sorted;
}

const TaskFlow *FenrowStore::instantiate(const FlowBlueprint &blueprint, const std::optional<QString> &name)
{
    // In UTC, as the store loads dates: a local time would ask the zone
    // again for every row written.
    const QDateTime now = m_clock.now().toUTC();

    auto flow = std::make_unique<TaskFlow>();
    flow->id = RecordID::make();
    flow->name = TextRules::nameOr(name.value_or(blueprint.name), TextRules::untitledFlowName);
    flow->order = nextFlowOrder();
    flow->createdAt = now;

    QHash<qint64, FlowNode *> nodesByKey;
    nodesByKey.reserve(blueprint.items.size());
    flow->items().reserve(std::size_t(blueprint.items.size()));
    for (const FlowBlueprint::Item &item : blueprint.items) {
        auto node = std::make_unique<FlowNode>();
        node->id = RecordID::make();
        node->createdAt = now;
        node->setFlow(flow.get());
        node->title = item.title;
        node->notes = item.notes;
        node->priorityRaw = item.priorityRaw;
        node->colorRaw = item.colorRaw;
        // A template may come from a backup or an older version: its
        // numbers are held to the store's ranges like an edit's.
        node->estimateMinutes = ValueLimits::estimate(item.estimateMinutes);
        const ValueLimits::ManualSize size = ValueLimits::manualSize(item.manualWidth, item.manualHeight);
        node->manualWidth = size.width;
        node->manualHeight = size.height;
        node->posX = ValueLimits::coordinate(item.posX);
        node->posY = ValueLimits::coordinate(item.posY);
        node->order = ValueLimits::count(item.order);
        // Again here, so that two flows from one template share no entry ids.
        node->checklistData = FlowBlueprint::resetChecklist(item.checklistData);
        node->recurrenceRaw = item.recurrenceRaw;
        nodesByKey.insert(item.key, flow->items().add(std::move(node)));
    }

    // No graph rules: the shape came from a flow, which was acyclic. Only
    // what would make a meaningless edge is left out.
    QSet<QPair<const FlowNode *, const FlowNode *>> pairs;
    for (const FlowBlueprint::Edge &link : blueprint.edges) {
        FlowNode *from = nodesByKey.value(link.from);
        FlowNode *to = nodesByKey.value(link.to);
        if (!from || !to || from == to)
            continue;
        const QPair<const FlowNode *, const FlowNode *> pair(from, to);
        if (pairs.contains(pair))
            continue;
        pairs.insert(pair);
        auto edge = std::make_unique<DependencyEdge>();
        edge->id = RecordID::make();
        edge->createdAt = now;
        edge->setFlow(flow.get());
        edge->setFromItem(from);
        edge->setToItem(to);
        edge->source = readRaw<EdgeSource>(link.sourceRaw);
        // Unknown kind text stays absent, which reads as a dependency.
        edge->kind = parseRaw<EdgeKind>(link.kindRaw);
        flow->edges().add(std::move(edge));
    }

    // The records live on in the store; only ownership moves.
    const TaskFlow *result = flow.get();
    RecordBundle bundle;
    bundle.flows.push_back(std::move(flow));
    insertRecords(std::move(bundle));
    return result;
}

const TaskFlow *FenrowStore::createFlow(const FlowTemplate &flowTemplate)
{
    if (!flowTemplate.payload)
        return nullptr;
    const std::optional<FlowBlueprint> blueprint = FlowBlueprint::decode(*flowTemplate.payload);
    if (!blueprint)
        return nullptr;
    return instantiate(*blueprint, flowTemplate.name);
}

const TaskFlow *FenrowStore::duplicateFlow(const TaskFlow &flow)
{
    //: Name of a duplicated flow; %1 is the original's name.
    const QString name = qtTrId("sidebar.flow.copyName ").arg(flow.name);
    return instantiate(FlowBlueprint::make(flow, name), name);
}

void FenrowStore::deleteTemplate(const FlowTemplate &flowTemplate)
{
    if (!m_templates.contains(&flowTemplate))
        return;
    FlowTemplate *target = mut(flowTemplate);
    m_pending.remove(target);
    m_templates.take(target);
    finishChange();
}

} // namespace fenrow
