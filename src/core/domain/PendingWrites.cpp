#include "PendingWrites.h"

#include "CompletionRecord.h"
#include "FlowTemplate.h"
#include "TaskFlow.h"

#include <algorithm>
#include <limits>

namespace fenrow {

namespace {

// An id as two numbers that order as its stored bytes (big-endian fields)
// do, so that rows sort in the order of the file's id index.
struct StoredKey {
    quint64 high;
    quint64 low;

    explicit StoredKey(const QUuid &id) : high(quint64(id.data1) << 32 | quint64(id.data2) << 16 | id.data3), low(0)
    {
        for (uchar byte : id.data4)
            low = low << 8 | byte;
    }

    bool operator<(const StoredKey &other) const { return high != other.high ? high < other.high : low < other.low; }
};

// Sorts on keys laid out side by side: comparing through the records'
// pointers, with QUuid's comparison out of line, was about a tenth of a
// large import.
template <typename Record>
void sortByStoredID(std::vector<const Record *> &rows)
{
    if (rows.size() < 2)
        return;
    std::vector<std::pair<StoredKey, const Record *>> keyed;
    keyed.reserve(rows.size());
    for (const Record *row : rows)
        keyed.emplace_back(StoredKey(row->id), row);
    std::sort(keyed.begin(), keyed.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i] = keyed[i].second;
}

} // namespace

template <typename Record>
void PendingWrites::drop(QSet<Record *> &set, std::vector<QUuid> &deleted, Record *record, bool rowExists)
{
    set.remove(record);
    if (rowExists)
        deleted.push_back(record->id);
}

void PendingWrites::remove(TaskFlow *flow)
{
    drop(m_flows, m_deleted.deletedFlows, flow, true);
}

void PendingWrites::write(FlowNode *node)
{
    m_nodes.insert(node);
    if (TaskFlow *flow = node->flow()) {
        flow->nodesChanged();
        node->m_writtenVersion = flow->nodesVersion();
    } else {
        node->m_writtenVersion = std::numeric_limits<quint64>::max();
    }
}

void PendingWrites::remove(FlowNode *node, bool rowExists)
{
    if (TaskFlow *flow = node->flow())
        flow->nodesChanged();
    drop(m_nodes, m_deleted.deletedNodes, node, rowExists);
}

void PendingWrites::remove(DependencyEdge *edge, bool rowExists)
{
    drop(m_edges, m_deleted.deletedEdges, edge, rowExists);
}

void PendingWrites::remove(FlowFile *file, bool rowExists)
{
    drop(m_files, m_deleted.deletedFiles, file, rowExists);
}

void PendingWrites::remove(FileLink *link, bool rowExists)
{
    drop(m_fileLinks, m_deleted.deletedFileLinks, link, rowExists);
}

void PendingWrites::remove(CompletionRecord *record)
{
    drop(m_completionRecords, m_deleted.deletedCompletionRecords, record, true);
}

void PendingWrites::remove(FlowTemplate *flowTemplate)
{
    drop(m_templates, m_deleted.deletedTemplates, flowTemplate, true);
}

bool PendingWrites::isEmpty() const
{
    return m_flows.isEmpty() && m_nodes.isEmpty() && m_edges.isEmpty() && m_files.isEmpty()
        && m_fileLinks.isEmpty() && m_completionRecords.isEmpty() && m_templates.isEmpty() && m_deleted.isEmpty();
}

StoreChange PendingWrites::summary() const
{
    StoreChange change;
    change.everything = m_deleted.eraseEverything || !m_edges.isEmpty() || !m_files.isEmpty() ||
                        !m_fileLinks.isEmpty() || !m_deleted.deletedFlows.empty() || !m_deleted.deletedNodes.empty() ||
                        !m_deleted.deletedEdges.empty() || !m_deleted.deletedFiles.empty() ||
                        !m_deleted.deletedFileLinks.empty();
    if (!change.everything) {
        change.nodes.reserve(m_nodes.size());
        for (const FlowNode *node : m_nodes)
            change.nodes.insert(node->id);
    }
    return change;
}

StoreChangeSet PendingWrites::changeSet() const
{
    StoreChangeSet changes = m_deleted;
    changes.flows.assign(m_flows.begin(), m_flows.end());
    changes.nodes.assign(m_nodes.begin(), m_nodes.end());
    changes.edges.assign(m_edges.begin(), m_edges.end());
    changes.files.assign(m_files.begin(), m_files.end());
    changes.fileLinks.assign(m_fileLinks.begin(), m_fileLinks.end());
    changes.completionRecords.assign(m_completionRecords.begin(), m_completionRecords.end());
    changes.templates.assign(m_templates.begin(), m_templates.end());
    // In key order, a large write fills SQLite's B-trees front to back
    // instead of splitting pages all over them.
    const auto byID = [](auto &rows) { sortByStoredID(rows); };
    byID(changes.flows);
    byID(changes.nodes);
    byID(changes.edges);
    byID(changes.files);
    byID(changes.fileLinks);
    byID(changes.completionRecords);
    byID(changes.templates);
    return changes;
}

void PendingWrites::clear()
{
    // Bytes written by this save are now on disk; later saves skip them.
    for (FlowFile *file : std::as_const(m_files)) {
        file->data.markSaved();
        file->thumbnail.markSaved();
    }
    for (CompletionRecord *record : std::as_const(m_completionRecords))
        record->payload.markSaved();
    *this = PendingWrites();
}

} // namespace fenrow
