#pragma once

#include "CompletionRecord.h"
#include "FlowTemplate.h"
#include "LocalCalendar.h"
#include "OwnedList.h"
#include "PendingWrites.h"
#include "TaskFlow.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QSet>
#include <QString>
#include <QUuid>

#include <memory>
#include <vector>

namespace fenrow {

class Clock;
class StoreDatabase;

// Fully built records for a bulk insert (restore, import, generated data):
// flows arrive with their nodes, edges, files and links already linked.
struct RecordBundle {
    std::vector<std::unique_ptr<TaskFlow>> flows;
    std::vector<std::unique_ptr<CompletionRecord>> completionRecords;
    std::vector<std::unique_ptr<FlowTemplate>> templates;
};

// The one writer of user data. It owns every record as a live object, hands
// them out read-only, and changes them only through its operations. Each
// mutating operation writes its fields, saves the changed rows in one
// transaction and then sends `changed` once; an operation that finds nothing
// to change does neither. Behaviour is grouped by subject in Store*.cpp.
class FenrowStore : public QObject {
    Q_OBJECT

public:
    // Loads every record from `database`. Returns null with a reason when
    // the rows cannot be read; the file is not written in that case.
    static std::unique_ptr<FenrowStore> open(std::unique_ptr<StoreDatabase> database, const Clock &clock,
                                             LocalCalendar calendar, QString *error);
    ~FenrowStore() override;

    const Clock &clock() const { return m_clock; }
    const LocalCalendar &calendar() const { return m_calendar; }

    // --- lifecycle (FenrowStore.cpp)
    // Writes the changed rows. A failure is logged and swallowed, and the
    // changes stay pending for the next save.
    void save();
    bool hasChanges() const;
    // Re-sorts the published list: by `order`, then by `createdAt`.
    void reloadFlows();

    // --- reading
    const QList<const TaskFlow *> &flows() const { return m_flows; }
    const TaskFlow *flow(const QUuid &id) const { return m_flowsByID.value(id); }
    const FlowNode *node(const QUuid &id) const { return m_nodesByID.value(id); }
    const OwnedList<CompletionRecord> &completionRecords() const { return m_completionRecords; }
    const OwnedList<FlowTemplate> &templates() const { return m_templates; }

    // --- flows (StoreFlows.cpp)
    const TaskFlow *addFlow(const QString &name);
    void renameFlow(const TaskFlow &flow, const QString &name);
    // Removes the flow with everything in it, and its completion records.
    void deleteFlow(const TaskFlow &flow);
    // Gives each listed flow its position as `order`; others keep theirs.
    void reorderFlows(const QList<const TaskFlow *> &ordered);

    // --- bulk insert (StoreRecords.cpp): one save, one signal.
    void insertRecords(RecordBundle bundle);

signals:
    void changed();

private:
    FenrowStore(std::unique_ptr<StoreDatabase> database, const Clock &clock, LocalCalendar calendar);
    void adopt(RecordBundle bundle);
    void backfillCompletionTimes();
    // Saves, re-publishes the list and signals: the tail of every mutation.
    void finishChange();

    TaskFlow *mutableFlow(const TaskFlow &flow) { return const_cast<TaskFlow *>(&flow); }

    // Marks a flow and everything it owns, for records new to the file.
    void markDirtyDeep(TaskFlow *flow);
    // Forgets pending writes of a flow's children; the row delete cascades.
    void forgetChildren(TaskFlow *flow);


    std::unique_ptr<StoreDatabase> m_database;
    const Clock &m_clock;
    LocalCalendar m_calendar;

    OwnedList<TaskFlow> m_allFlows;
    QList<const TaskFlow *> m_flows;
    QHash<QUuid, TaskFlow *> m_flowsByID;
    QHash<QUuid, FlowNode *> m_nodesByID;
    OwnedList<CompletionRecord> m_completionRecords;
    OwnedList<FlowTemplate> m_templates;

    PendingWrites m_pending;
};

} // namespace fenrow
