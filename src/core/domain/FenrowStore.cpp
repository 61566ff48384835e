#include "FenrowStore.h"

#include "Clock.h"
#include "StoreLog.h"
#include "persistence/StoreDatabase.h"

#include <algorithm>

Q_LOGGING_CATEGORY(fenrowStoreLog, "fenrow.store")

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
    store->backfillCompletionTimes();
    return store;
}

FenrowStore::FenrowStore(std::unique_ptr<StoreDatabase> database, const Clock &clock, LocalCalendar calendar)
    : m_database(std::move(database)), m_clock(clock), m_calendar(std::move(calendar))
{
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

void FenrowStore::finishChange()
{
    save();
    reloadFlows();
    emit changed();
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
