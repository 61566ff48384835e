#pragma once

#include "CompletionRecord.h"
#include "DueReminder.h"
#include "EdgeProposal.h"
#include "FlowBlueprint.h"
#include "FlowFileImport.h"
#include "FlowSnapshot.h"
#include "FlowTemplate.h"
#include "GraphMutationError.h"
#include "LocalCalendar.h"
#include "NodeRecurrence.h"
#include "OwnedList.h"
#include "PendingWrites.h"
#include "Readiness.h"
#include "TaskFlow.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QPointF>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace fenrow {

class Clock;
class NodeSizeResolver;
class StoreDatabase;
struct FenrowBackup;
enum class RestoreMode;
namespace OPMLCodec {
struct Outline;
}

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

    // For a process that ends right after: closes the database and leaves
    // the records to the exit. Freeing a large store record by record costs
    // a short command more than anything but opening it.
    static void closeForExit(std::unique_ptr<FenrowStore> store);

    const Clock &clock() const { return m_clock; }
    const LocalCalendar &calendar() const { return m_calendar; }

    // --- lifecycle (FenrowStore.cpp)
    // Writes the changed rows. A failure is logged and swallowed, and the
    // changes stay pending for the next save.
    void save();
    bool hasChanges() const;
    // Re-sorts the published list: by `order`, then by `createdAt`.
    void reloadFlows();
    // The local day turned over: no record changed, but what is read from
    // "now" (ready, overdue, today) did, so observers hear `changed` and
    // read again. Nothing is saved.
    void announceDayChange();
    // What the latest `changed` touched; read it from a slot of `changed`.
    const StoreChange &lastChange() const { return m_lastChange; }

    // --- reading
    const QList<const TaskFlow *> &flows() const { return m_flows; }
    const TaskFlow *flow(const QUuid &id) const { return m_flowsByID.value(id); }
    const FlowNode *node(const QUuid &id) const { return m_nodesByID.value(id); }
    const OwnedList<CompletionRecord> &completionRecords() const { return m_completionRecords; }
    const OwnedList<FlowTemplate> &templates() const { return m_templates; }
    // Readiness::readyTasks over every flow at `now`, kept until the store
    // changes or the day turns: after a change the window's count, its list
    // and a command handed over would each work it out whole again. Its
    // pointers, like the flows', last until the next `changed`.
    const QList<ReadyTask> &readyTasks(const QDateTime &now) const;

    // --- reminders (StoreReminders.cpp)
    // The open tasks with a due date whose reminder is still to come: each
    // on its local due day at `hour`:00 (LocalCalendar::atHour), earliest
    // first, at most DueReminder::limit of them.
    QList<DueReminder> dueReminders(const QDateTime &now, int hour) const;

    // --- flows (StoreFlows.cpp)
    const TaskFlow *addFlow(const QString &name);
    void renameFlow(const TaskFlow &flow, const QString &name);
    // Removes the flow with everything in it, and its completion records.
    void deleteFlow(const TaskFlow &flow);
    // Gives each listed flow its position as `order`; others keep theirs.
    void reorderFlows(const QList<const TaskFlow *> &ordered);

    // --- bulk insert (StoreRecords.cpp): one save, one signal.
    void insertRecords(RecordBundle bundle);

    // --- graph (StoreGraph.cpp). addEdge and reconnectEdge throw
    // GraphMutationError and then change nothing.
    // Returns the existing edge of the ordered pair unchanged if there is one.
    const DependencyEdge &addEdge(const FlowNode &from, const FlowNode &to, EdgeSource source, EdgeKind kind);
    // Moving an edge onto a pair that already has one deletes the moved edge.
    void reconnectEdge(const DependencyEdge &edge, const FlowNode &from, const FlowNode &to);
    void removeEdge(const DependencyEdge &edge);
    void setCollapsed(const FlowNode &node, bool collapsed);
    // Opens every fold above the given nodes so that they can be shown.
    void unfoldAncestors(const QSet<QUuid> &ids, const TaskFlow &flow);

    // --- engine proposals (StoreProposals.cpp)
    // Adds each proposal as a machine-made dependency, in order, skipping
    // those whose ends are gone, that exist already or that would close a
    // cycle (so of a cycle, the earlier proposals stand). With
    // `replaceExisting` the flow's machine-made edges go first; manual edges
    // are never touched.
    void applyProposals(const QList<EdgeProposal> &proposals, const TaskFlow &flow, bool replaceExisting);

    // --- nodes (StoreNodes.cpp)
    const FlowNode *addNode(const QString &title, const TaskFlow &flow);
    void moveNode(const FlowNode &node, double x, double y);
    // Deletes the node and every descendant all of whose parents go too.
    void deleteNode(const FlowNode &node);
    void setTitle(const FlowNode &node, const QString &title);
    void setNotes(const FlowNode &node, const QString &notes);
    void setPriority(NodePriority priority, const FlowNode &node);
    void setColor(NodeColor color, const FlowNode &node);
    void setEstimate(std::optional<qint64> minutes, const FlowNode &node);
    void setManualSize(const FlowNode &node, std::optional<double> width, std::optional<double> height);
    void setStartDate(std::optional<QDateTime> date, const FlowNode &node);
    void setDueDate(std::optional<QDateTime> date, const FlowNode &node);
    void setDayPlanRank(std::optional<qint64> rank, const FlowNode &node);
    void addChecklistEntry(const QString &title, const FlowNode &node);
    void toggleChecklistEntry(const QUuid &entryID, const FlowNode &node);
    void renameChecklistEntry(const QUuid &entryID, const QString &title, const FlowNode &node);
    void removeChecklistEntry(const QUuid &entryID, const FlowNode &node);
    void setChecklist(const Checklist &entries, const FlowNode &node);

    // --- node commands of the canvas (StoreNodeCommands.cpp)
    // A new node at the free spot nearest to `center`, searching sideways.
    const FlowNode *addNodeAt(const TaskFlow &flow, const QString &title, QPointF center,
                              const NodeSizeResolver &sizes);
    // A new node right of (next) or left of (before) `anchor`, joined to it.
    const FlowNode *addNextNode(const FlowNode &anchor, const QString &title, const NodeSizeResolver &sizes);
    const FlowNode *addNodeBefore(const FlowNode &anchor, const QString &title, const NodeSizeResolver &sizes);
    // A new subtask of `parent`; all its subtasks are laid out again.
    const FlowNode *addChildNode(const FlowNode &parent, const QString &title, const NodeSizeResolver &sizes);
    // Moves every node of the flow to the tree arrangement.
    void arrangeAsTree(const TaskFlow &flow, const NodeSizeResolver &sizes);
    // Moves a node that stands alone (no connection, no file link) to the
    // end of `flow`, at the free spot nearest the centre. A connected node
    // throws GraphMutationError (invalidItems): an edge or a link cannot
    // join two flows. Both flows' undo histories are dropped, as their
    // snapshots no longer describe them.
    void moveNodeToFlow(const FlowNode &node, const TaskFlow &flow, const NodeSizeResolver &sizes);

    // --- canvas writes (StoreCanvas.cpp)
    // Moves the listed nodes of the flow, each coordinate clamped to the
    // canvas; one save for all of them, none when nothing moved.
    void moveNodes(const TaskFlow &flow, const QHash<QUuid, QPointF> &positions);
    // Keeps the canvas's offset and scale in the flow and marks it framed.
    // Not an undoable change.
    void setViewport(const TaskFlow &flow, double offsetX, double offsetY, double scale);

    // --- completion (StoreCompletion.cpp)
    // Returns the nodes the change released. Completing a recurring node
    // rolls it to its next round instead.
    QList<const FlowNode *> setStatus(NodeStatus status, const FlowNode &node);
    QList<const FlowNode *> completeRecurring(const FlowNode &node, const QDateTime &now);
    void setRecurrence(std::optional<NodeRecurrence> recurrence, const FlowNode &node);
    void deleteStaleRepeats(const FlowNode &node);

    // --- undo snapshots (StoreSnapshots.cpp)
    // Rows equal to those of `sharingWith` (an earlier snapshot of the
    // flow) are shared with it rather than copied. `tasksReadAt` is the
    // flow's `nodesVersion` when `sharingWith`'s task rows were read from
    // it, where the caller knows it: the rows of tasks not written since
    // are taken without reading the tasks again, and all of them when the
    // version is still the flow's.
    FlowSnapshot captureSnapshot(const TaskFlow &flow, const FlowSnapshot *sharingWith = nullptr,
                                 std::optional<quint64> tasksReadAt = std::nullopt) const;
    // Writes the snapshot back over the flow's rows, keeping every row that
    // exists on both sides as the same object.
    void applySnapshot(const FlowSnapshot &snapshot, const TaskFlow &flow);

    // --- archive (StoreArchive.cpp)
    // Newest first, without records of rounds that undo took back.
    QList<const CompletionRecord *> archiveRecords() const;
    bool canRestore(const CompletionRecord &record) const;
    const FlowNode *restoreRecord(const CompletionRecord &record);
    void deleteRecord(const CompletionRecord &record);
    void archiveNodes(const QList<const FlowNode *> &nodes, const TaskFlow &flow);
    void archiveDone(const TaskFlow &flow);
    // Archives nodes done more than `days` days ago; returns how many.
    int autoArchive(int days, const QDateTime &now);

    // --- file attachments (StoreFiles.cpp)
    const FlowFile *attachFile(const FlowFileImport::Payload &payload, double x, double y, const TaskFlow &flow);
    void moveFile(const FlowFile &file, double x, double y);
    void setFileManualSize(const FlowFile &file, double width, double height);
    void resetFileSize(const FlowFile &file);
    void setFileTrashed(const FlowFile &file, bool trashed);
    void purgeTrashedFiles(const TaskFlow &flow);
    // The same for several flows at once, in one save: all of them or none.
    void purgeTrashedFiles(const QList<const TaskFlow *> &flows);
    void linkFile(const FlowFile &file, const FlowNode &node);
    void unlinkFile(const FlowFile &file, const FlowNode &node);
    void unlinkAll(const FlowFile &file);
    static QList<const FlowFile *> liveFiles(const TaskFlow &flow);
    static QList<const FlowFile *> linkedFiles(const FlowNode &node);
    // Makes thumbnails for attached files; without one, files have none.
    void setThumbnailMaker(std::function<std::optional<QByteArray>(const FlowFileImport::Payload &)> maker);

    // --- templates (StoreTemplates.cpp)
    const FlowTemplate *saveAsTemplate(const TaskFlow &flow);
    // Ascending by creation.
    QList<const FlowTemplate *> templateList() const;
    const TaskFlow *instantiate(const FlowBlueprint &blueprint, const std::optional<QString> &name);
    const TaskFlow *createFlow(const FlowTemplate &flowTemplate);
    const TaskFlow *duplicateFlow(const TaskFlow &flow);
    void deleteTemplate(const FlowTemplate &flowTemplate);

    // --- backup (StoreBackup.cpp)
    // Everything the user owns as one document: flows in sidebar order,
    // without trashed files, with all templates and completion records.
    // Every value passes ValueLimits on its way out, so that the document
    // can always be written; a value that had to change is named in
    // `adjusted` ("task "Pay" in flow "Home": due date left out, ...").
    FenrowBackup makeBackup(const QDateTime &createdAt, QStringList *adjusted = nullptr) const;

    struct RestoreOutcome {
        // False: nothing changed, in memory or in the file; `problem` says why.
        bool restored = false;
        QString problem;
        int flowsAdded = 0;
        // Edges that broke the rules of addEdge (a task leading to itself,
        // a second edge of a pair, a cycle) and were left out.
        int edgesLeftOut = 0;
        // Replace: the store as it was, written beside it first; empty for
        // a store in memory.
        QString safetyBackup;
    };
    // Brings in a document that has been read whole, in one transaction:
    // afterwards the store holds all of it, or, on any failure, exactly
    // what it held before, in the file and in memory. Replace empties the
    // store; before that it writes the store as it is to a safety backup
    // beside the store file (no safety backup, no replace) and, once the
    // replace is saved, removes the safety backups of earlier replaces but
    // `documentPath`, the file being restored. Merge adds only flows,
    // templates and records whose ids are new, after the existing flows,
    // and no records of flows it skipped. Values are held to ValueLimits,
    // edges to the rules of addEdge. No flow keeps its undo history.
    RestoreOutcome restore(const FenrowBackup &backup, RestoreMode mode, const QString &documentPath = {});
    // restore's count of flows added, or -1 when nothing changed.
    int restoreBackup(const FenrowBackup &backup, RestoreMode mode);

    // --- outlines and lists (StoreExchange.cpp)
    // The flow as a Markdown task list, in the interface language.
    QString markdown(const TaskFlow &flow) const;
    // The flow as an OPML outline: tasks nested by their subtask edges,
    // the rest of the graph in private attributes.
    QString exportOPML(const TaskFlow &flow) const;
    struct ImportedFlow {
        const TaskFlow *flow = nullptr;
        // The file brought dependency edges of its own.
        bool hasDependencies = false;
    };
    // A new flow from outlines, every task with a new identity, tasks
    // nested as subtasks; the edges pass the rules of addEdge, and those
    // that fail them are left out. Named after the document's title, or
    // `fallbackName` when it has none. One save.
    ImportedFlow importOPML(const QString &title, const QList<OPMLCodec::Outline> &roots,
                            const QString &fallbackName);

signals:
    void changed();
    // The rows of a flow changed outside any undoable action (archive,
    // restore, deletion, replacement): its undo history no longer fits.
    void flowHistoryInvalidated(const QUuid &flowID);

private:
    FenrowStore(std::unique_ptr<StoreDatabase> database, const Clock &clock, LocalCalendar calendar);
    // Takes the records in; `isNew` marks them for the next save (records
    // loaded from the file are already there).
    void adopt(RecordBundle bundle, bool isNew);
    template <typename Record>
    static Record *mut(const Record &record) { return const_cast<Record *>(&record); }
    // Writes `value` into `field` when it differs; reports whether it did.
    template <typename Record, typename Value>
    bool update(Record *record, Value Record::*field, const Value &value)
    {
        if (record->*field == value)
            return false;
        record->*field = value;
        m_pending.write(record);
        return true;
    }
    DependencyEdge *insertEdge(TaskFlow *flow, FlowNode *from, FlowNode *to, EdgeSource source, EdgeKind kind);
    void eraseEdge(DependencyEdge *edge);
    // Deletes the nodes with these ids, the edges touching them and their
    // file links, in one pass each.
    void eraseNodes(TaskFlow *flow, const QSet<QUuid> &ids);
    // Upserts the "repeat" record of one round; the caller saves.
    void recordRepeat(FlowNode *node, qint64 cycle, const QDateTime &time);
    bool eraseStaleRepeats(const FlowNode &node);
    void writeChecklist(FlowNode *node, const Checklist &entries);
    void placeChildren(const FlowNode &parent, const NodeSizeResolver &sizes);
    void writeArchivedRecord(const FlowNode &node, const TaskFlow &flow, const QDateTime &now);
    void eraseFiles(TaskFlow *flow, const QSet<QUuid> &ids);
    void backfillCompletionTimes();
    // One more than the highest `order` of all flows; 0 with none.
    qint64 nextFlowOrder() const;
    // Drops every flow, template and completion record from memory once a
    // replacing restore has emptied the file.
    void eraseEverything();
    // The store as it is, into a new file beside the store file; the path,
    // or empty with `problem` set (or for a store in memory).
    QString writeSafetyBackup(QString *problem) const;
    // Holds what was loaded to ValueLimits, writing back what changed.
    void normaliseLoaded();
    // Saves, re-publishes the list and signals: the tail of every mutation.
    void finishChange();

    TaskFlow *mutableFlow(const TaskFlow &flow) { return mut(flow); }

    // Marks a flow and everything it owns, for records new to the file.
    void markDirtyDeep(TaskFlow *flow) { markDirtyDeep(m_pending, flow); }
    static void markDirtyDeep(PendingWrites &writes, TaskFlow *flow);
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
    StoreChange m_lastChange;
    // Counts `changed`: what was worked out from the records before it may
    // point at records gone since.
    quint64 m_revision = 0;
    struct ReadyCache {
        quint64 revision = 0;
        QDate day;
        QList<ReadyTask> tasks;
    };
    mutable std::optional<ReadyCache> m_readyCache;
    std::function<std::optional<QByteArray>(const FlowFileImport::Payload &)> m_thumbnailMaker;
};

} // namespace fenrow
