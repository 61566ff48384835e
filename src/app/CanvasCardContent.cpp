#include "CanvasCardContent.h"

#include "ReadyListModel.h"
#include "domain/Clock.h"
#include "domain/FenrowStore.h"
#include "domain/FlowGraph.h"
#include "domain/NodeRecurrence.h"
#include "domain/TaskFlow.h"
#include "shell/InterfaceLanguage.h"

#include <QLocale>

namespace fenrow {

using Glyph = CanvasGlyphs::Glyph;

QString CanvasCardContents::shortDate(const QDateTime &day, const QDateTime &now, const FenrowStore &store)
{
    const LocalCalendar &calendar = store.calendar();
    const QDate today = calendar.dayOf(now);
    const QDate date = calendar.dayOf(day);
    if (date == today)
        return qtTrId("ready.row.due.today");
    if (date == today.addDays(1))
        return qtTrId("ready.row.due.tomorrow");
    const QLocale locale(InterfaceLanguage::current());
    return locale.toString(date, date.year() == today.year() ? qtTrId("ready.row.dateFormat")
                                                             : qtTrId("ready.row.dateFormat.withYear"));
}

QString CanvasCardContents::statusText(const NodeCardState &state, const QDateTime &now, const FenrowStore &store)
{
    switch (state.kind) {
    case NodeCardState::Kind::status:
        switch (state.status) {
        case NodeStatus::pending:
            return qtTrId("canvas.node.status.pending");
        case NodeStatus::inProgress:
            return qtTrId("canvas.node.status.inProgress");
        case NodeStatus::done:
            return qtTrId("canvas.node.status.done");
        case NodeStatus::paused:
            return qtTrId("canvas.node.status.paused");
        }
        break;
    case NodeCardState::Kind::deferred:
        return qtTrId("canvas.node.starts ").arg(shortDate(state.until, now, store));
    case NodeCardState::Kind::waiting:
        return qtTrId("canvas.node.waiting ").arg(state.blockers);
    case NodeCardState::Kind::ready:
        return qtTrId("canvas.node.ready");
    }
    return {};
}

namespace {

MetaPill statusPill(const NodeCardState &state, const QString &text)
{
    MetaPill pill;
    pill.text = text;
    pill.part = QStringLiteral("status");
    pill.help = qtTrId("canvas.node.status.label");
    switch (state.kind) {
    case NodeCardState::Kind::status:
        switch (state.status) {
        case NodeStatus::pending:
            pill.glyph = Glyph::statusPending;
            break;
        case NodeStatus::inProgress:
            pill.glyph = Glyph::statusInProgress;
            pill.tint = MetaPill::Tint::brand;
            break;
        case NodeStatus::done:
            pill.glyph = Glyph::statusDone;
            pill.tint = MetaPill::Tint::done;
            break;
        case NodeStatus::paused:
            pill.glyph = Glyph::statusPaused;
            break;
        }
        break;
    case NodeCardState::Kind::deferred:
        pill.glyph = Glyph::deferred;
        pill.part = QStringLiteral("deferred");
        pill.help = qtTrId("canvas.node.deferred.help");
        break;
    case NodeCardState::Kind::waiting:
        pill.glyph = Glyph::waiting;
        break;
    case NodeCardState::Kind::ready:
        pill.glyph = Glyph::ready;
        pill.tint = MetaPill::Tint::brand;
        break;
    }
    return pill;
}

QString repeatText(const NodeRecurrence &recurrence)
{
    switch (recurrence.rule) {
    case RecurrenceRule::never:
        break;
    case RecurrenceRule::daily:
        return qtTrId("inspector.recurrence.daily");
    case RecurrenceRule::weekdays:
        return qtTrId("inspector.recurrence.weekdays");
    case RecurrenceRule::weekly:
        return qtTrId("inspector.recurrence.weekly");
    case RecurrenceRule::monthly:
        return qtTrId("inspector.recurrence.monthly");
    case RecurrenceRule::afterDone:
        return qtTrId("inspector.recurrence.afterDone");
    }
    return {};
}

QString priorityText(NodePriority priority)
{
    switch (priority) {
    case NodePriority::high:
        return qtTrId("ready.row.priority.high");
    case NodePriority::medium:
        return qtTrId("ready.row.priority.medium");
    case NodePriority::low:
        return qtTrId("ready.row.priority.low");
    case NodePriority::none:
        break;
    }
    return {};
}

} // namespace

const CardContent &CanvasCardContents::of(const TaskFlow &flow, const FlowNode &node)
{
    if (!m_valid || m_flowID != flow.id)
        rebuild(flow);
    const auto found = m_contents.constFind(node.id);
    return found == m_contents.cend() ? m_empty : *found;
}

int CanvasCardContents::readyCount(const TaskFlow &flow)
{
    if (!m_valid || m_flowID != flow.id)
        rebuild(flow);
    return m_readyCount;
}

void CanvasCardContents::rebuild(const TaskFlow &flow)
{
    m_contents.clear();
    m_readyCount = 0;
    m_flowID = flow.id;
    m_valid = true;
    const QDateTime now = m_store.clock().now();
    const LocalCalendar &calendar = m_store.calendar();
    const BlockerMaps maps = FlowGraph::blockerMaps(flow);
    QSet<QUuid> hidden;
    bool anyFolded = false;
    for (const FlowNode *node : flow.items())
        anyFolded = anyFolded || node->isCollapsed;
    if (anyFolded)
        hidden = FlowGraph::hiddenNodeIDs(flow);
    m_contents.reserve(flow.items().size());

    for (const FlowNode *node : flow.items()) {
        CardContent content;
        const qsizetype blockers = Readiness::openBlockers(*node, maps).size();
        const bool deferred = node->isDeferred(now, calendar);
        content.state = Readiness::cardState(*node, blockers, now, calendar);
        content.actionable = !node->isDone && blockers == 0 && !deferred;
        m_readyCount += content.actionable ? 1 : 0;
        content.dashed = deferred && !node->isDone;
        content.hasNotes = node->hasNotes();
        const auto subtasks = maps.subtasks.constFind(node->id);
        content.canCollapse = subtasks != maps.subtasks.cend() && !subtasks->isEmpty();
        content.folded = content.canCollapse && node->isCollapsed;
        if (content.folded) {
            for (const FlowNode *below : FlowGraph::descendants(*node, flow))
                content.foldedCount += below != node && hidden.contains(below->id) ? 1 : 0;
        }

        content.pills.append(statusPill(content.state, statusText(content.state, now, m_store)));
        if (node->dueDate) {
            MetaPill due;
            due.glyph = Glyph::due;
            due.text = shortDate(*node->dueDate, now, m_store);
            due.help = qtTrId("canvas.node.due.label");
            due.part = QStringLiteral("due");
            due.tint = node->isOverdue(now, calendar) && !node->isDone ? MetaPill::Tint::warning
                                                                       : MetaPill::Tint::neutral;
            content.pills.append(due);
        }
        // A deferred card says its start in the status chip already.
        if (deferred && content.state.kind != NodeCardState::Kind::deferred) {
            MetaPill start;
            start.glyph = Glyph::deferred;
            start.text = qtTrId("canvas.node.starts ").arg(shortDate(*node->startDate, now, m_store));
            start.help = qtTrId("canvas.node.deferred.help");
            start.part = QStringLiteral("deferred");
            content.pills.append(start);
        }
        if (const auto recurrence = NodeRecurrence::decode(node->recurrenceRaw)) {
            MetaPill repeat;
            repeat.glyph = Glyph::repeat;
            repeat.text = repeatText(*recurrence);
            repeat.help = qtTrId("canvas.node.repeat.label");
            repeat.part = QStringLiteral("repeat");
            content.pills.append(repeat);
        }
        if (!node->checklistData.isEmpty()) {
            const Checklist steps = node->checklist();
            if (!steps.isEmpty()) {
                qsizetype done = 0;
                for (const ChecklistEntry &step : steps)
                    done += step.isDone ? 1 : 0;
                MetaPill checklist;
                checklist.glyph = Glyph::checklist;
                checklist.text = QStringLiteral("%1/%2").arg(done).arg(steps.size());
                checklist.help = qtTrId("canvas.node.checklist.help");
                checklist.part = QStringLiteral("checklist");
                checklist.tint = done == steps.size() ? MetaPill::Tint::done : MetaPill::Tint::neutral;
                content.pills.append(checklist);
            }
        }
        if (node->priority() != NodePriority::none) {
            MetaPill priority;
            priority.glyph = Glyph::priority;
            priority.text = priorityText(node->priority());
            priority.help = qtTrId("canvas.node.priority.label");
            priority.part = QStringLiteral("priority");
            priority.tint = node->priority() == NodePriority::high ? MetaPill::Tint::warning : MetaPill::Tint::neutral;
            content.pills.append(priority);
        }
        if (node->estimateMinutes && *node->estimateMinutes > 0) {
            MetaPill estimate;
            estimate.glyph = Glyph::estimate;
            estimate.text = ReadyListModel::estimateText(*node->estimateMinutes);
            estimate.help = qtTrId("inspector.estimate.label");
            estimate.part = QStringLiteral("estimate");
            content.pills.append(estimate);
        }
        m_contents.insert(node->id, std::move(content));
    }
}

} // namespace fenrow
