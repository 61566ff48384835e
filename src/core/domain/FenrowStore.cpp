#include "FenrowStore.h"

#include "Clock.h"
#include "StoreLog.h"
#include "ValueLimits.h"
#include "persistence/StoreDatabase.h"

#include <algorithm>

// Debug lines (a checkpoint put off to the next commit) only when asked for.
Q_LOGGING_CATEGORY(fenrowStoreLog, "fenrow.store", QtInfoMsg)

namespace fenrow {

std::unique_ptr<FenrowStore> FenrowStore::open(std::unique_ptr<StoreDatabase> database, const Clock &clock,
                                               LocalCalendar calendar, QString *error)
{
    if (!database) {
        *error = QStringLiteral("no database");
        return nullptr;
    }
    std::optional<LoadedRecords> loaded = database->loadAll(error);
    if (!loaded)
        return nullptr;

    std::unique_ptr<FenrowStore> store(new FenrowStore(std::move(database), clock, std::move(calendar)));
    store->adopt({std::move(loaded->flows), std::move(loaded->completionRecords), std::move(loaded->templates)},
                 false);
    store->reloadFlows();
    store->normaliseLoaded();
    store->backfillCompletionTimes();
    return store;
}

FenrowStore::FenrowStore(std::unique_ptr<StoreDatabase> database, const Clock &clock, LocalCalendar calendar)
    : m_database(std::move(database)), m_clock(clock), m_calendar(std::move(calendar))
{
    // Made first, so every other listener already sees the new revision.
    connect(this, &FenrowStore::changed, this, [this] { ++m_revision; });
}

const QList<ReadyTask> &FenrowStore::readyTasks(const QDateTime &now) const
{
    // The list turns only with the day (a start day comes), never within it.
    const QDate day = m_calendar.dayOf(now);
    if (!m_readyCache || m_readyCache->revision != m_revision || m_readyCache->day != day)
        m_readyCache = ReadyCache{m_revision, day, Readiness::readyTasks(m_flows, now, m_calendar)};
    return m_readyCache->tasks;
}

FenrowStore::~FenrowStore()
{
    // Records hold loaders into the database: let them go first.
    m_flows.clear();
    m_allFlows = {};
    m_completionRecords = {};
    m_templates = {};
}

void FenrowStore::closeForExit(std::unique_ptr<FenrowStore> store)
{
    store->m_database.reset();
    // Deliberately not destroyed: the process's exit returns the memory.
    static_cast<void>(store.release());
}

bool FenrowStore::hasChanges() const
{
    return !m_pending.isEmpty();
}

void FenrowStore::save()
{
    if (m_pending.isEmpty())
        return;
    QString error;
    if (!m_database->write(m_pending.changeSet(), &error)) {
        qCCritical(fenrowStoreLog, "Context save failed: %s", qUtf8Printable(error));
        return;
    }
    m_pending.clear();
}

void FenrowStore::reloadFlows()
{
    QList<const TaskFlow *> sorted(m_allFlows.begin(), m_allFlows.end());
    std::stable_sort(sorted.begin(), sorted.end(), [](const TaskFlow *a, const TaskFlow *b) {
        if (a->order != b->order)
            return a->order < b->order;
        return a->createdAt < b->createdAt;
    });
    m_flows = std::move(sorted);
}

void FenrowStore::announceDayChange()
{
    m_lastChange = StoreChange();
    emit changed();
}

void FenrowStore::finishChange()
{
    // Sorting every flow on each edit of a task cost more than the task's
    // own row; a change that writes no flow leaves their list as it was.
    const bool flowsChanged = m_pending.touchesFlows();
    // Taken before the save: a failed save keeps earlier writes pending, so
    // this may name more than this change, never less.
    m_lastChange = m_pending.summary();
    save();
    if (flowsChanged)
        reloadFlows();
    emit changed();
}

void FenrowStore::normaliseLoaded()
{
    // Values from before ValueLimits, or written by a road that skipped
    // it, are held to it here, once, rather than at every reader: the plan
    // would add up an estimate of 2^63 minutes, and a backup could not
    // write a date in the year 20260. Opening is the one place every value
    // passes; a backup meeting such a value anyway names it (makeBackup).
    const QDateTime now = m_clock.now();
    const auto required = [&](const QDateTime &moment) { return ValueLimits::isStorable(moment) ? moment : now; };
    const auto rank = [](std::optional<qint64> value) {
        return value ? std::optional(ValueLimits::count(*value)) : value;
    };
    int adjusted = 0;
    const auto hold = [&](auto *record, auto field, const auto &value) {
        if (update(record, field, value))
            ++adjusted;
    };
    for (TaskFlow *flow : m_allFlows) {
        hold(flow, &TaskFlow::createdAt, required(flow->createdAt));
        hold(flow, &TaskFlow::viewportOffsetX, ValueLimits::viewportOffset(flow->viewportOffsetX));
        hold(flow, &TaskFlow::viewportOffsetY, ValueLimits::viewportOffset(flow->viewportOffsetY));
        hold(flow, &TaskFlow::viewportScale, ValueLimits::viewportScale(flow->viewportScale));
        for (FlowNode *node : flow->items()) {
            hold(node, &FlowNode::startDate, ValueLimits::date(node->startDate));
            hold(node, &FlowNode::dueDate, ValueLimits::date(node->dueDate));
            hold(node, &FlowNode::completedAt, ValueLimits::date(node->completedAt));
            hold(node, &FlowNode::createdAt, required(node->createdAt));
            hold(node, &FlowNode::estimateMinutes, ValueLimits::estimate(node->estimateMinutes));
            hold(node, &FlowNode::dayPlanRank, rank(node->dayPlanRank));
            hold(node, &FlowNode::repeatCount, ValueLimits::count(node->repeatCount));
            hold(node, &FlowNode::posX, ValueLimits::coordinate(node->posX));
            hold(node, &FlowNode::posY, ValueLimits::coordinate(node->posY));
            const ValueLimits::ManualSize size = ValueLimits::manualSize(node->manualWidth, node->manualHeight);
            hold(node, &FlowNode::manualWidth, size.width);
            hold(node, &FlowNode::manualHeight, size.height);
        }
        for (DependencyEdge *edge : flow->edges())
            hold(edge, &DependencyEdge::createdAt, required(edge->createdAt));
        for (FlowFile *file : flow->files()) {
            hold(file, &FlowFile::createdAt, required(file->createdAt));
            hold(file, &FlowFile::byteCount, ValueLimits::count(file->byteCount));
            hold(file, &FlowFile::posX, ValueLimits::coordinate(file->posX));
            hold(file, &FlowFile::posY, ValueLimits::coordinate(file->posY));
            const ValueLimits::ManualSize size = ValueLimits::manualSize(file->manualWidth, file->manualHeight);
            hold(file, &FlowFile::manualWidth, size.width);
            hold(file, &FlowFile::manualHeight, size.height);
        }
        for (FileLink *link : flow->fileLinks())
            hold(link, &FileLink::createdAt, required(link->createdAt));
    }
    for (CompletionRecord *record : m_completionRecords) {
        hold(record, &CompletionRecord::completedAt, required(record->completedAt));
        hold(record, &CompletionRecord::cycle, ValueLimits::count(record->cycle));
    }
    for (FlowTemplate *flowTemplate : m_templates)
        hold(flowTemplate, &FlowTemplate::createdAt, required(flowTemplate->createdAt));
    if (adjusted > 0) {
        qCWarning(fenrowStoreLog, "Held %d stored values to their limits", adjusted);
        save();
    }
}

void FenrowStore::backfillCompletionTimes()
{
    // Data from before completion times were kept: stamp them once, now.
    const QDateTime now = m_clock.now();
    bool changedAny = false;
    for (TaskFlow *flow : m_allFlows) {
        for (FlowNode *node : flow->items()) {
            if (node->isDone && !node->completedAt) {
                node->completedAt = now;
                m_pending.write(node);
                changedAny = true;
            }
        }
    }
    if (changedAny)
        save();
}

} // namespace fenrow
