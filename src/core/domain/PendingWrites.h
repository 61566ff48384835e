#pragma once

#include "persistence/StoreChangeSet.h"

#include <QSet>
#include <QUuid>

#include <vector>

namespace fenrow {

class CompletionRecord;
class DependencyEdge;
class FileLink;
class FlowFile;
class FlowNode;
class FlowTemplate;
class TaskFlow;

// What one change of the store touched, for observers that keep work per
// task and would rather redo only the tasks that changed.
struct StoreChange {
    // Anything may differ: records came or went, lines or files changed,
    // or the day turned over.
    bool everything = true;
    // Otherwise: the tasks whose own fields were written. Flow rows alone
    // (a name, a viewport) leave it empty.
    QSet<QUuid> nodes;
};

// The unit of work between two saves: records written since the last
// successful save and ids of rows to delete. A failed save leaves it as it
// is, so the next save carries the same changes again.
class PendingWrites {
public:
    void write(TaskFlow *flow) { m_flows.insert(flow); }
    // Every write of a node passes here, which is where its flow learns
    // that its nodes changed.
    void write(FlowNode *node);
    void write(DependencyEdge *edge) { m_edges.insert(edge); }
    void write(FlowFile *file) { m_files.insert(file); }
    void write(FileLink *link) { m_fileLinks.insert(link); }
    void write(CompletionRecord *record) { m_completionRecords.insert(record); }
    void write(FlowTemplate *flowTemplate) { m_templates.insert(flowTemplate); }

    // Call before the record is destroyed. `rowExists` is false for a child
    // whose row goes with its parent's delete.
    void remove(TaskFlow *flow);
    void remove(FlowNode *node, bool rowExists = true);
    void remove(DependencyEdge *edge, bool rowExists = true);
    void remove(FlowFile *file, bool rowExists = true);
    void remove(FileLink *link, bool rowExists = true);
    void remove(CompletionRecord *record);
    void remove(FlowTemplate *flowTemplate);

    // Every row of the file goes before this set's own writes (a replacing
    // restore).
    void eraseEverything() { m_deleted.eraseEverything = true; }

    bool isEmpty() const;
    // Whether a flow row is among the writes: only then can the flow list's
    // members or order have changed.
    bool touchesFlows() const
    {
        return !m_flows.isEmpty() || !m_deleted.deletedFlows.empty() || m_deleted.eraseEverything;
    }
    StoreChangeSet changeSet() const;
    // What observers of this set of writes need to read again.
    StoreChange summary() const;
    void clear();

private:
    template <typename Record>
    static void drop(QSet<Record *> &set, std::vector<QUuid> &deleted, Record *record, bool rowExists);

    QSet<TaskFlow *> m_flows;
    QSet<FlowNode *> m_nodes;
    QSet<DependencyEdge *> m_edges;
    QSet<FlowFile *> m_files;
    QSet<FileLink *> m_fileLinks;
    QSet<CompletionRecord *> m_completionRecords;
    QSet<FlowTemplate *> m_templates;
    StoreChangeSet m_deleted;
};

} // namespace fenrow
