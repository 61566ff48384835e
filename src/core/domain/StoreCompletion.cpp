// Status changes, completion, and the rounds of recurring tasks.
#include "FenrowStore.h"

#include "Clock.h"
#include "Readiness.h"
#include "RecordID.h"

namespace fenrow {

QList<const FlowNode *> FenrowStore::setStatus(NodeStatus status, const FlowNode &node)
{
    if (node.status() == status)
        return {};
    if (status == NodeStatus::done && NodeRecurrence::decode(node.recurrenceRaw))
        return completeRecurring(node, m_clock.now());

    FlowNode *target = mut(node);
    const bool wasDone = target->isDone;
    target->setStatus(status);
    if (target->isDone != wasDone) {
        if (target->isDone)
            target->completedAt = m_clock.now();
        else
            target->completedAt.reset();
    }
    m_pending.write(target);
    finishChange();
    if (target->isDone && !wasDone)
        return Readiness::unlockedBy(node);
    return {};
}

QList<const FlowNode *> FenrowStore::completeRecurring(const FlowNode &node, const QDateTime &now)
{
    const std::optional<NodeRecurrence> recurrence = NodeRecurrence::decode(node.recurrenceRaw);
    if (!recurrence)
        return {};
    FlowNode *target = mut(node);
    ++target->repeatCount;
    recordRepeat(target, target->repeatCount, now);

    const QDateTime today = m_calendar.startOfDay(now);
    const QDateTime anchor = m_calendar.startOfDay(target->startDate.value_or(target->dueDate.value_or(today)));
    if (const std::optional<QDateTime> next = nextOccurrence(anchor, today, m_calendar, *recurrence)) {
        if (!target->startDate && !target->dueDate) {
            // A dateless series waits for its next day.
            target->startDate = *next;
        } else {
            // Both dates move by whole calendar days, keeping their span.
            const qint64 delta = m_calendar.dayOf(anchor).daysTo(m_calendar.dayOf(*next));
            auto shifted = [&](const QDateTime &date) {
                return date.toTimeZone(m_calendar.zone()).addDays(delta).toUTC();
            };
            if (target->startDate)
                target->startDate = shifted(*target->startDate);
            if (target->dueDate)
                target->dueDate = shifted(*target->dueDate);
        }
    }
    target->dayPlanRank.reset();
    target->isDone = false;
    target->statusRaw = rawString(NodeStatus::pending);
    target->completedAt.reset();

    Checklist entries = target->checklist();
    if (std::any_of(entries.begin(), entries.end(), [](const ChecklistEntry &entry) { return entry.isDone; })) {
        for (ChecklistEntry &entry : entries)
            entry.isDone = false;
        writeChecklist(target, entries);
    }
    m_pending.write(target);
    finishChange();
    // The node is open again, so its dependents as a rule stay held.
    return Readiness::unlockedBy(node);
}

void FenrowStore::setRecurrence(std::optional<NodeRecurrence> recurrence, const FlowNode &node)
{
    if (recurrence && recurrence->rule == RecurrenceRule::monthly && !recurrence->monthDay) {
        if (const std::optional<QDateTime> &date = node.startDate ? node.startDate : node.dueDate)
            recurrence->monthDay = std::clamp(m_calendar.dayOf(*date).day(), 1, 31);
    }
    const std::optional<QString> encoded = recurrence ? recurrence->encode() : std::nullopt;
    if (NodeRecurrence::decode(encoded) == NodeRecurrence::decode(node.recurrenceRaw))
        return;
    FlowNode *target = mut(node);
    target->recurrenceRaw = encoded;
    m_pending.write(target);
    finishChange();
}

void FenrowStore::recordRepeat(FlowNode *node, qint64 cycle, const QDateTime &time)
{
    // A completion taken back by undo leaves its record; completing the same
    // round again overwrites it instead of adding a second one.
    for (CompletionRecord *record : m_completionRecords) {
        if (record->nodeID == node->id && record->kindRaw == CompletionRecord::repeatKind && record->cycle == cycle) {
            record->completedAt = time;
            if (record->title != node->title)
                record->title = node->title;
            m_pending.write(record);
            return;
        }
    }
    auto record = std::make_unique<CompletionRecord>();
    record->id = RecordID::make();
    record->nodeID = node->id;
    if (const TaskFlow *flow = node->flow()) {
        record->flowID = flow->id;
        record->flowName = flow->name;
    }
    record->title = node->title;
    record->kindRaw = CompletionRecord::repeatKind;
    record->completedAt = time;
    record->cycle = cycle;
    m_pending.write(m_completionRecords.add(std::move(record)));
}

void FenrowStore::deleteStaleRepeats(const FlowNode &node)
{
    if (eraseStaleRepeats(node))
        finishChange();
}

bool FenrowStore::eraseStaleRepeats(const FlowNode &node)
{
    // Records of rounds taken back by undo; the others outlive the node.
    return 0 < m_completionRecords.removeIf(
        [&](const CompletionRecord &record) {
            return record.nodeID == node.id && record.kindRaw == CompletionRecord::repeatKind
                && record.cycle > node.repeatCount;
        },
        [&](CompletionRecord *record) { m_pending.remove(record); });
}

} // namespace fenrow
