// Creating, placing, editing and deleting single nodes.
#include "FenrowStore.h"

#include "Clock.h"
#include "FlowGraph.h"
#include "RecordID.h"
#include "TextRules.h"
#include "ValueLimits.h"

namespace fenrow {

const FlowNode *FenrowStore::addNode(const QString &title, const TaskFlow &flow)
{
    TaskFlow *target = mutableFlow(flow);
    qint64 order = 0;
    if (!target->items().empty()) {
        order = target->items()[0]->order;
        for (const FlowNode *node : std::as_const(*target).items())
            order = std::max(order, node->order);
        ++order;
    }
    auto node = std::make_unique<FlowNode>();
    node->id = RecordID::make();
    node->title = TextRules::nameOr(title, TextRules::newTaskTitle);
    node->order = order;
    node->createdAt = m_clock.now();
    node->setFlow(target);
    FlowNode *added = target->items().add(std::move(node));
    m_nodesByID.insert(added->id, added);
    m_pending.write(added);
    finishChange();
    return added;
}

void FenrowStore::moveNode(const FlowNode &node, double x, double y)
{
    // Deliberately no test for an unchanged position: a drag that ends
    // where it began still saves.
    FlowNode *target = mut(node);
    target->posX = ValueLimits::coordinate(x);
    target->posY = ValueLimits::coordinate(y);
    m_pending.write(target);
    finishChange();
}

void FenrowStore::eraseNodes(TaskFlow *flow, const QSet<QUuid> &ids)
{
    auto doomed = [&](const FlowNode *node) { return node && ids.contains(node->id); };
    flow->edges().removeIf([&](const DependencyEdge &edge) { return doomed(edge.fromItem()) || doomed(edge.toItem()); },
                           [&](DependencyEdge *edge) { m_pending.remove(edge); });
    // The link rows go with the node rows by cascade.
    flow->fileLinks().removeIf([&](const FileLink &link) { return doomed(link.node()); },
                               [&](FileLink *link) {
                                   if (FlowFile *file = link->file())
                                       file->links().removeOne(link);
                                   m_pending.remove(link, false);
                               });
    flow->items().removeIf([&](const FlowNode &node) { return ids.contains(node.id); },
                           [&](FlowNode *node) {
                               m_pending.remove(node);
                               m_nodesByID.remove(node->id);
                           });
}

void FenrowStore::deleteNode(const FlowNode &node)
{
    TaskFlow *flow = mut(node)->flow();
    const QSet<QUuid> doomed = FlowGraph::deletionClosure(node, *flow);
    // Never a splice: a dependent with another parent just loses this one.
    for (const FlowNode *item : std::as_const(*flow).items()) {
        if (doomed.contains(item->id))
            eraseStaleRepeats(*item);
    }
    eraseNodes(flow, doomed);
    finishChange();
}

void FenrowStore::setTitle(const FlowNode &node, const QString &title)
{
    const QString trimmed = TextRules::trimmed(title);
    if (!trimmed.isEmpty() && update(mut(node), &FlowNode::title, trimmed))
        finishChange();
}

void FenrowStore::setNotes(const FlowNode &node, const QString &notes)
{
    if (update(mut(node), &FlowNode::notes, TextRules::trimmed(notes)))
        finishChange();
}

void FenrowStore::setPriority(NodePriority priority, const FlowNode &node)
{
    if (node.priority() != priority && update(mut(node), &FlowNode::priorityRaw, rawString(priority)))
        finishChange();
}

void FenrowStore::setColor(NodeColor color, const FlowNode &node)
{
    if (node.color() != color && update(mut(node), &FlowNode::colorRaw, rawString(color)))
        finishChange();
}

void FenrowStore::setEstimate(std::optional<qint64> minutes, const FlowNode &node)
{
    if (update(mut(node), &FlowNode::estimateMinutes, ValueLimits::estimate(minutes)))
        finishChange();
}

void FenrowStore::setManualSize(const FlowNode &node, std::optional<double> width, std::optional<double> height)
{
    const ValueLimits::ManualSize size = ValueLimits::manualSize(width, height);
    FlowNode *target = mut(node);
    const bool changedWidth = update(target, &FlowNode::manualWidth, size.width);
    const bool changedHeight = update(target, &FlowNode::manualHeight, size.height);
    if (changedWidth || changedHeight)
        finishChange();
}

void FenrowStore::setStartDate(std::optional<QDateTime> date, const FlowNode &node)
{
    date = ValueLimits::date(date);
    if (date)
        date = m_calendar.startOfDay(*date);
    FlowNode *target = mut(node);
    if (!update(target, &FlowNode::startDate, date))
        return;
    // A planned task leaves today's plan whenever its start day moves.
    target->dayPlanRank.reset();
    finishChange();
}

void FenrowStore::setDueDate(std::optional<QDateTime> date, const FlowNode &node)
{
    date = ValueLimits::date(date);
    if (date)
        date = m_calendar.startOfDay(*date);
    if (update(mut(node), &FlowNode::dueDate, date))
        finishChange();
}

void FenrowStore::setDayPlanRank(std::optional<qint64> rank, const FlowNode &node)
{
    if (rank)
        rank = ValueLimits::count(*rank);
    if (update(mut(node), &FlowNode::dayPlanRank, rank))
        finishChange();
}

void FenrowStore::addChecklistEntry(const QString &title, const FlowNode &node)
{
    const QString trimmed = TextRules::trimmed(title);
    if (trimmed.isEmpty())
        return;
    Checklist entries = node.checklist();
    entries.append({RecordID::make(), trimmed, false});
    setChecklist(entries, node);
}

void FenrowStore::toggleChecklistEntry(const QUuid &entryID, const FlowNode &node)
{
    Checklist entries = node.checklist();
    for (ChecklistEntry &entry : entries) {
        if (entry.id == entryID)
            entry.isDone = !entry.isDone;
    }
    setChecklist(entries, node);
}

void FenrowStore::renameChecklistEntry(const QUuid &entryID, const QString &title, const FlowNode &node)
{
    Checklist entries = node.checklist();
    for (ChecklistEntry &entry : entries) {
        if (entry.id == entryID)
            entry.title = title;
    }
    setChecklist(entries, node);
}

void FenrowStore::removeChecklistEntry(const QUuid &entryID, const FlowNode &node)
{
    Checklist entries = node.checklist();
    entries.removeIf([&](const ChecklistEntry &entry) { return entry.id == entryID; });
    setChecklist(entries, node);
}

void FenrowStore::writeChecklist(FlowNode *node, const Checklist &entries)
{
    update(node, &FlowNode::checklistData, ChecklistCodec::encode(entries));
}

void FenrowStore::setChecklist(const Checklist &entries, const FlowNode &node)
{
    // Renaming an entry to blank removes it.
    Checklist cleaned;
    for (ChecklistEntry entry : entries) {
        entry.title = TextRules::trimmed(entry.title);
        if (!entry.title.isEmpty())
            cleaned.append(entry);
    }
    FlowNode *target = mut(node);
    const QString before = target->checklistData;
    writeChecklist(target, cleaned);
    if (target->checklistData != before)
        finishChange();
}

} // namespace fenrow
