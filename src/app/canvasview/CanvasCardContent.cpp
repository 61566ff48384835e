#include "CanvasCardContent.h"

#include "domain/Clock.h"
#include "domain/DependencyEdge.h"
#include "domain/FenrowStore.h"
#include "domain/FileLink.h"
#include "domain/FlowFile.h"
#include "domain/FlowGraph.h"
#include "domain/NodeRecurrence.h"
#include "domain/TaskFlow.h"
#include "shell/DurationText.h"
#include "shell/InterfaceLanguage.h"

#include <QLocale>

#include <algorithm>

namespace fenrow {

using Glyph = CanvasGlyphs::Glyph;

namespace {

// Texts looked up once per language: every card of a large flow asks for
// the same few.
const QString &translated(const char *id)
{
    static QString language;
    static QHash<const char *, QString> texts;
    if (language != InterfaceLanguage::current()) {
        language = InterfaceLanguage::current();
        texts.clear();
    }
    auto found = texts.find(id);
    if (found == texts.end())
        found = texts.insert(id, qtTrId(id));
    return *found;
}

} // namespace

QString CanvasCardContents::shortDate(const QDateTime &day, const QDateTime &now, const FenrowStore &store)
{
    const LocalCalendar &calendar = store.calendar();
    const QDate today = calendar.dayOf(now);
    const QDate date = calendar.dayOf(day);
    if (date == today)
        return translated(QT_TRID_NOOP("ready.row.due.today"));
    if (date == today.addDays(1))
        return translated(QT_TRID_NOOP("ready.row.due.tomorrow"));
    // Made once per language: building a locale from its name is not cheap,
    // and every dated card asks.
    static QString language;
    static QLocale locale;
    if (language != InterfaceLanguage::current()) {
        language = InterfaceLanguage::current();
        locale = QLocale(language);
    }
    return locale.toString(date, date.year() == today.year() ? translated(QT_TRID_NOOP("ready.row.dateFormat"))
                                                             : translated(QT_TRID_NOOP("ready.row.dateFormat.withYear")));
}

QString CanvasCardContents::statusText(const NodeCardState &state, const QDateTime &now, const FenrowStore &store)
{
    switch (state.kind) {
    case NodeCardState::Kind::status:
        switch (state.status) {
        case NodeStatus::pending:
            return translated(QT_TRID_NOOP("canvas.node.status.pending"));
        case NodeStatus::inProgress:
            return translated(QT_TRID_NOOP("canvas.node.status.inProgress"));
        case NodeStatus::done:
            return translated(QT_TRID_NOOP("canvas.node.status.done"));
        case NodeStatus::paused:
            return translated(QT_TRID_NOOP("canvas.node.status.paused"));
        }
        break;
    case NodeCardState::Kind::deferred:
        return translated(QT_TRID_NOOP("canvas.node.starts ")).arg(shortDate(state.until, now, store));
    case NodeCardState::Kind::waiting:
        return translated(QT_TRID_NOOP("canvas.node.waiting ")).arg(state.blockers);
    case NodeCardState::Kind::ready:
        return translated(QT_TRID_NOOP("canvas.node.ready"));
    }
    return {};
}

namespace {

MetaPill statusPill(const NodeCardState &state, const QString &text)
{
    MetaPill pill;
    pill.text = text;
    pill.part = QStringLiteral("status");
    pill.help = translated(QT_TRID_NOOP("canvas.node.status.label"));
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
        pill.help = translated(QT_TRID_NOOP("canvas.node.deferred.help"));
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
        return translated(QT_TRID_NOOP("inspector.recurrence.daily"));
    case RecurrenceRule::weekdays:
        return translated(QT_TRID_NOOP("inspector.recurrence.weekdays"));
    case RecurrenceRule::weekly:
        return translated(QT_TRID_NOOP("inspector.recurrence.weekly"));
    case RecurrenceRule::monthly:
        return translated(QT_TRID_NOOP("inspector.recurrence.monthly"));
    case RecurrenceRule::afterDone:
        return translated(QT_TRID_NOOP("inspector.recurrence.afterDone"));
    }
    return {};
}

QString priorityText(NodePriority priority)
{
    switch (priority) {
    case NodePriority::high:
        return translated(QT_TRID_NOOP("ready.row.priority.high"));
    case NodePriority::medium:
        return translated(QT_TRID_NOOP("ready.row.priority.medium"));
    case NodePriority::low:
        return translated(QT_TRID_NOOP("ready.row.priority.low"));
    case NodePriority::none:
        break;
    }
    return {};
}

} // namespace

bool CardContent::sameAs(const CardContent &other) const
{
    return state == other.state && actionable == other.actionable && canCollapse == other.canCollapse
        && folded == other.folded && hasNotes == other.hasNotes && dashed == other.dashed && pills == other.pills
        && title == other.title && color == other.color && done == other.done;
}

const CardContent &CanvasCardContents::of(const TaskFlow &flow, const FlowNode &node)
{
    ensure(flow);
    Entry *const found = entryOf(node);
    if (!found)
        return m_empty;
    if (found->generation != m_generation) {
        CardContent content = make(node, *found);
        // A picture of the card drawn earlier stays good while it shows the same.
        content.serial =
            found->content.serial != 0 && found->content.sameAs(content) ? found->content.serial : ++m_lastSerial;
        found->content = std::move(content);
        found->generation = m_generation;
    }
    return found->content;
}

void CanvasCardContents::ensure(const TaskFlow &flow)
{
    if (!m_valid || m_flowID != flow.id)
        prepare(flow);
}

CanvasCardContents::Entry *CanvasCardContents::entryOf(const FlowNode &node)
{
    const qsizetype at = m_index.value(&node, -1);
    // The id too: a task made where one gone since stood would share its address.
    if (at < 0 || m_entries[std::size_t(at)].id != node.id)
        return nullptr;
    return &m_entries[std::size_t(at)];
}

int CanvasCardContents::readyCount(const TaskFlow &flow)
{
    ensure(flow);
    return m_readyCount;
}

quint64 CanvasCardContents::geometrySerial(const TaskFlow &flow)
{
    ensure(flow);
    return m_geometrySerial;
}

void CanvasCardContents::setNow()
{
    m_now = m_store.clock().now();
    const LocalCalendar &calendar = m_store.calendar();
    m_tomorrow = calendar.startOfDay(calendar.dayOf(m_now).addDays(1));
}

// One instant compared instead of two days worked out in the calendar's zone.
bool CanvasCardContents::isDeferred(const FlowNode &node) const
{
    return !node.isDone && node.startDate && *node.startDate >= m_tomorrow;
}

size_t CanvasCardContents::geometryOf(const FlowNode &node)
{
    return qHashMulti(0, node.id, node.posX, node.posY, node.manualWidth.value_or(-1), node.manualHeight.value_or(-1),
                      node.estimateMinutes.value_or(-1), node.isCollapsed, node.colorRaw);
}

void CanvasCardContents::setGeometry(size_t hash)
{
    if (hash != m_geometryHash || m_geometrySerial == 0) {
        m_geometryHash = hash;
        ++m_geometrySerial;
    }
}

void CanvasCardContents::prepare(const TaskFlow &flow)
{
    const bool sameFlow = m_flowID == flow.id;
    if (!sameFlow)
        m_checklists.clear();
    m_flowID = flow.id;
    m_valid = true;
    // Every card is worked out again when next asked for; those that show
    // the same keep their serials.
    ++m_generation;
    setNow();
    const auto &items = flow.items();

    // Entries are made for every task now, so that later answers never
    // move them and a reference handed out stays good until the next change.
    // The same flow's contents are kept: those that show the same keep
    // their serials, and so their pictures.
    std::vector<Entry> earlier;
    QHash<const FlowNode *, qsizetype> earlierIndex;
    if (sameFlow) {
        earlier = std::exchange(m_entries, {});
        earlierIndex = std::exchange(m_index, {});
    }
    m_entries.clear();
    m_entries.resize(std::size_t(items.size()));
    m_index.clear();
    m_index.reserve(qsizetype(items.size()));
    m_readyCount = 0;
    size_t geometry = 0;
    qsizetype at = 0;
    for (const FlowNode *node : items) {
        Entry &entry = m_entries[std::size_t(at)];
        m_index.insert(node, at++);
        entry.id = node->id;
        if (const qsizetype was = earlierIndex.value(node, -1); was >= 0 && earlier[std::size_t(was)].id == node->id)
            entry.content = std::move(earlier[std::size_t(was)].content);
        entry.countedDone = node->isDone;
        entry.collapsed = node->isCollapsed;
        entry.geometry = geometryOf(*node);
        geometry ^= entry.geometry;
    }
    // Counted straight from the edges: a table of each task's blockers
    // cost a list per task, made and thrown away with every new flow.
    FlowGraph::forEachHold(flow, [&](const FlowNode &held, const FlowNode &blocker, bool bySubtask) {
        Entry *const entry = entryOf(held);
        if (!entry)
            return;
        entry->hasSubtasks = entry->hasSubtasks || bySubtask;
        entry->openBlockers += blocker.isDone ? 0 : 1;
    });
    at = 0;
    for (const FlowNode *node : items) {
        Entry &entry = m_entries[std::size_t(at++)];
        entry.actionable = !node->isDone && entry.openBlockers == 0 && !isDeferred(*node);
        m_readyCount += entry.actionable ? 1 : 0;
    }
    // Places, sizes, folds and lines: what the drawing of lines depends on.
    size_t lines = qHashMulti(0, flow.edges().size(), flow.fileLinks().size());
    for (const DependencyEdge *edge : flow.edges())
        lines = qHashMulti(lines, edge->id, edge->fromItem(), edge->toItem(), edge->isSubtask());
    for (const FileLink *link : flow.fileLinks())
        lines = qHashMulti(lines, link->id, link->file(), link->node());
    for (const FlowFile *file : flow.files())
        lines = qHashMulti(lines, file->id, file->posX, file->posY, file->manualWidth.value_or(-1),
                           file->manualHeight.value_or(-1), file->isTrashed);
    m_linesGeometry = lines;
    setGeometry(lines ^ geometry);
}

CanvasCardContents::Touched CanvasCardContents::invalidate(const StoreChange &change)
{
    if (!m_valid || change.everything) {
        m_valid = false;
        return {};
    }
    Touched touched{false, {}};
    if (change.nodes.isEmpty())
        return touched;
    const FlowNode *changedNodes[64];
    int count = 0;
    for (const QUuid &id : change.nodes) {
        const FlowNode *node = m_store.node(id);
        const bool here = node && node->flow() && node->flow()->id == m_flowID;
        const Entry *const entry = node ? entryOf(*node) : nullptr;
        // A task of another flow is skipped; one gone, whose flow is not
        // known any more, has the flow read again.
        if (!here && !entry && node)
            continue;
        // A task new here or gone elsewhere, a fold opened or closed, or
        // many tasks at once: the flow is read again as a whole.
        if (!here || !entry || count == 64 || node->isCollapsed != entry->collapsed) {
            m_valid = false;
            return {};
        }
        changedNodes[count++] = node;
    }
    setNow();
    if (count == 0)
        return touched;
    size_t geometry = m_geometryHash;
    const quint64 geometryBefore = m_geometrySerial;
    const auto redo = [&](const FlowNode &node, Entry &entry) {
        touched.nodes.append(&node);
        entry.generation = 0;
        m_readyCount -= entry.actionable ? 1 : 0;
        entry.actionable = !node.isDone && entry.openBlockers == 0 && !isDeferred(node);
        m_readyCount += entry.actionable ? 1 : 0;
    };
    for (int i = 0; i < count; ++i) {
        const FlowNode &node = *changedNodes[i];
        Entry &own = *entryOf(node);
        // A task done or open again is one blocker fewer or more for each
        // task it holds up; the edges themselves have not changed.
        const int opened = node.isDone == own.countedDone ? 0 : node.isDone ? -1 : 1;
        own.countedDone = node.isDone;
        redo(node, own);
        // The cards it holds up show only how many hold them: a title or
        // a date leaves them as they are.
        if (opened != 0) {
            for (const FlowNode *dependent : FlowGraph::dependentsOf(node)) {
                Entry *const entry = entryOf(*dependent);
                if (!entry)
                    continue;
                entry->openBlockers += opened;
                redo(*dependent, *entry);
            }
        }
        geometry ^= own.geometry;
        own.geometry = geometryOf(node);
        geometry ^= own.geometry;
    }
    setGeometry(geometry);
    if (m_geometrySerial != geometryBefore)
        return {};
    return touched;
}

CardContent CanvasCardContents::make(const FlowNode &node, const Entry &entry) const
{
    CardContent content;
    const LocalCalendar &calendar = m_store.calendar();
    const qsizetype blockers = entry.openBlockers;
    const bool deferred = isDeferred(node);
    content.state = Readiness::cardState(node, blockers, m_now, calendar);
    content.actionable = !node.isDone && blockers == 0 && !deferred;
    content.dashed = deferred && !node.isDone;
    content.hasNotes = node.hasNotes();
    content.canCollapse = entry.hasSubtasks;
    // What a fold hides is the editor's to count, which knows the folds.
    content.folded = content.canCollapse && node.isCollapsed;
    content.title = node.title;
    content.color = node.color();
    content.done = node.isDone;

    content.pills.append(statusPill(content.state, statusText(content.state, m_now, m_store)));
    if (node.dueDate) {
        MetaPill due;
        due.glyph = Glyph::due;
        due.text = shortDate(*node.dueDate, m_now, m_store);
        due.help = translated(QT_TRID_NOOP("canvas.node.due.label"));
        due.part = QStringLiteral("due");
        due.tint = node.isOverdue(m_now, calendar) && !node.isDone ? MetaPill::Tint::warning : MetaPill::Tint::neutral;
        content.pills.append(due);
    }
    // A deferred card says its start in the status chip already.
    if (deferred && content.state.kind != NodeCardState::Kind::deferred) {
        MetaPill start;
        start.glyph = Glyph::deferred;
        start.text = translated(QT_TRID_NOOP("canvas.node.starts ")).arg(shortDate(*node.startDate, m_now, m_store));
        start.help = translated(QT_TRID_NOOP("canvas.node.deferred.help"));
        start.part = QStringLiteral("deferred");
        content.pills.append(start);
    }
    if (const auto recurrence = NodeRecurrence::decode(node.recurrenceRaw)) {
        MetaPill repeat;
        repeat.glyph = Glyph::repeat;
        repeat.text = repeatText(*recurrence);
        repeat.help = translated(QT_TRID_NOOP("canvas.node.repeat.label"));
        repeat.part = QStringLiteral("repeat");
        content.pills.append(repeat);
    }
    if (!node.checklistData.isEmpty()) {
        // The steps are kept as JSON; they are read again only when changed.
        auto counted = m_checklists.find(node.id);
        if (counted == m_checklists.end() || counted->data != node.checklistData) {
            const ChecklistCodec::Progress steps = ChecklistCodec::progress(node.checklistData);
            counted = m_checklists.insert(node.id, {node.checklistData, steps.done, steps.total});
        }
        if (counted->total > 0) {
            MetaPill checklist;
            checklist.glyph = Glyph::checklist;
            checklist.text = QStringLiteral("%1/%2").arg(counted->done).arg(counted->total);
            checklist.help = translated(QT_TRID_NOOP("canvas.node.checklist.help"));
            checklist.part = QStringLiteral("checklist");
            checklist.tint = counted->done == counted->total ? MetaPill::Tint::done : MetaPill::Tint::neutral;
            content.pills.append(checklist);
        }
    }
    if (node.priority() != NodePriority::none) {
        MetaPill priority;
        priority.glyph = Glyph::priority;
        priority.text = priorityText(node.priority());
        priority.help = translated(QT_TRID_NOOP("canvas.node.priority.label"));
        priority.part = QStringLiteral("priority");
        priority.tint = node.priority() == NodePriority::high ? MetaPill::Tint::warning : MetaPill::Tint::neutral;
        content.pills.append(priority);
    }
    if (node.estimateMinutes && *node.estimateMinutes > 0) {
        MetaPill estimate;
        estimate.glyph = Glyph::estimate;
        estimate.text = DurationText::compact(*node.estimateMinutes);
        estimate.help = translated(QT_TRID_NOOP("inspector.estimate.label"));
        estimate.part = QStringLiteral("estimate");
        content.pills.append(estimate);
    }
    return content;
}

} // namespace fenrow
