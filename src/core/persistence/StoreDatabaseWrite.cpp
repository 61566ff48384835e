// Writing one change set: deletes first, children before parents, then
// inserts and updates, parents before children, all in one transaction.
#include "StoreDatabase.h"

#include "SqliteStatement.h"
#include "domain/CompletionRecord.h"
#include "domain/FlowTemplate.h"
#include "domain/TaskFlow.h"

#include <sqlite3.h>

#include <algorithm>
#include <string_view>

namespace fenrow {

// A table's columns, the id first, in the order a row binds them, and the
// columns of its secondary indexes.
struct TableColumns {
    const char *table;
    std::vector<const char *> columns;
    std::vector<const char *> indexed = {};
};

namespace {

template <typename Record>
std::optional<QUuid> idOf(const Record *record)
{
    return record ? std::optional(record->id) : std::nullopt;
}

// Raw names are bound as they are declared (`rawName`): a QString made for
// each of them was two allocations per edge of a large import.
std::optional<QLatin1StringView> kindText(const DependencyEdge &edge)
{
    return edge.kind ? std::optional(rawName(*edge.kind)) : std::nullopt;
}

const TableColumns flowColumns{"task_flow",
                                   {"id", "name", "sort_order", "created_at", "viewport_offset_x",
                                    "viewport_offset_y", "viewport_scale", "has_been_framed"}};
const TableColumns nodeColumns{
    "flow_node",
    {"id",           "flow_id",       "title",          "is_done",        "status_raw",       "notes",
     "priority_raw", "color_raw",     "start_date",     "due_date",       "estimate_minutes", "day_plan_rank",
     "manual_width", "manual_height", "checklist_data", "recurrence_raw", "repeat_count",     "completed_at",
     "is_collapsed", "pos_x",         "pos_y",          "sort_order",     "created_at"},
    {"flow_id"}};
const TableColumns fileColumns{"flow_file",
                               {"id", "flow_id", "filename", "content_type_raw", "byte_count", "has_data",
                                "has_thumbnail", "is_trashed", "pos_x", "pos_y", "manual_width", "manual_height",
                                "sort_order", "created_at"},
                               {"flow_id"}};
const TableColumns edgeColumns{
    "dependency_edge", {"id", "flow_id", "from_id", "to_id", "source", "kind", "created_at"}, {"flow_id"}};
const TableColumns linkColumns{
    "file_link", {"id", "flow_id", "file_id", "node_id", "created_at"}, {"flow_id", "file_id", "node_id"}};
const TableColumns completionColumns{
    "completion_record",
    {"id", "node_id", "flow_id", "flow_name", "title", "kind_raw", "completed_at", "cycle", "has_payload"},
    {"flow_id"}};
const TableColumns templateColumns{"flow_template", {"id", "name", "created_at", "payload"}};

// Rows per statement in a long run of rows: one statement per row spends
// about as much in SQLite's per-statement work as in the rows themselves.
constexpr std::size_t rowsPerBatch = 32;

// "INSERT ... VALUES (?, ...), (?, ...) ON CONFLICT(id) DO UPDATE SET ..."
// for `rows` rows: a row that exists has every column but its id replaced.
std::string upsertSQL(const TableColumns &table, std::size_t rows)
{
    std::string names;
    std::string placeholders = "(";
    std::string updates;
    for (const char *column : table.columns) {
        const bool first = names.empty();
        names += first ? "" : ", ";
        names += column;
        placeholders += first ? "?" : ", ?";
        if (!first) {
            updates += updates.empty() ? "" : ", ";
            updates += std::string(column) + " = excluded." + column;
        }
    }
    placeholders += ")";
    std::string sql = std::string("INSERT INTO ") + table.table + " (" + names + ") VALUES ";
    for (std::size_t row = 0; row < rows; ++row)
        sql += (row == 0 ? "" : ", ") + placeholders;
    return sql + " ON CONFLICT(id) DO UPDATE SET " + updates;
}

// "UPDATE ... SET ... WHERE id = ?1 AND <indexed> IS ?n": a row that exists
// with the same indexed values has every other column replaced, with the
// parameters numbered as the upsert's. Leaving the indexed columns out of
// the SET list spares SQLite rewriting their index entries, a page more per
// commit; a row whose indexed values changed matches nothing.
std::string updateSQL(const TableColumns &table)
{
    const auto isIndexed = [&](const char *column) {
        return std::any_of(table.indexed.begin(), table.indexed.end(),
                           [&](const char *indexed) { return std::string_view(indexed) == column; });
    };
    std::string updates;
    std::string conditions = std::string(table.columns[0]) + " = ?1";
    for (std::size_t i = 1; i < table.columns.size(); ++i) {
        const std::string assignment =
            std::string(table.columns[i]) + (isIndexed(table.columns[i]) ? " IS ?" : " = ?") + std::to_string(i + 1);
        if (isIndexed(table.columns[i])) {
            conditions += " AND " + assignment;
        } else {
            updates += updates.empty() ? "" : ", ";
            updates += assignment;
        }
    }
    return std::string("UPDATE ") + table.table + " SET " + updates + " WHERE " + conditions;
}

// Binds one row's values in column order from a starting parameter.
class RowBinder {
public:
    RowBinder(SqliteStatement &statement, int first) : m_statement(statement), m_next(first) {}

    template <typename T>
    RowBinder &operator<<(const T &value)
    {
        m_statement.bind(m_next++, value);
        return *this;
    }

private:
    SqliteStatement &m_statement;
    int m_next;
};

void bindRow(RowBinder &row, const TaskFlow *record)
{
    row << record->id << record->name << record->order << record->createdAt << record->viewportOffsetX
        << record->viewportOffsetY << record->viewportScale << record->hasBeenFramed;
}

void bindRow(RowBinder &row, const FlowNode *record)
{
    row << record->id << idOf(record->flow()) << record->title << record->isDone << record->statusRaw
        << record->notes << record->priorityRaw << record->colorRaw << record->startDate << record->dueDate
        << record->estimateMinutes << record->dayPlanRank << record->manualWidth << record->manualHeight
        << record->checklistData << record->recurrenceRaw << record->repeatCount << record->completedAt
        << record->isCollapsed << record->posX << record->posY << record->order << record->createdAt;
}

void bindRow(RowBinder &row, const FlowFile *record)
{
    row << record->id << idOf(record->flow()) << record->filename << record->contentTypeRaw << record->byteCount
        << record->data.isPresent() << record->thumbnail.isPresent() << record->isTrashed << record->posX
        << record->posY << record->manualWidth << record->manualHeight << record->order << record->createdAt;
}

void bindRow(RowBinder &row, const DependencyEdge *record)
{
    row << record->id << idOf(record->flow()) << idOf(record->fromItem()) << idOf(record->toItem())
        << rawName(record->source) << kindText(*record) << record->createdAt;
}

void bindRow(RowBinder &row, const FileLink *record)
{
    row << record->id << idOf(record->flow()) << idOf(record->file()) << idOf(record->node()) << record->createdAt;
}

void bindRow(RowBinder &row, const CompletionRecord *record)
{
    row << record->id << record->nodeID << record->flowID << record->flowName << record->title << record->kindRaw
        << record->completedAt << record->cycle << record->payload.isPresent();
}

void bindRow(RowBinder &row, const FlowTemplate *record)
{
    row << record->id << record->name << record->createdAt << record->payload;
}

// The records of a large save lie all over the heap and are bound in id
// order: asking for the rows ahead keeps the binding from waiting on memory
// at every row, which was a quarter of the binding of a large import.
constexpr std::size_t recordsAhead = 16;
constexpr std::size_t valuesAhead = 8;

template <typename Record>
void prefetchRecord(const Record *record)
{
    const char *bytes = reinterpret_cast<const char *>(record);
    for (std::size_t offset = 0; offset < sizeof(Record); offset += 64)
        __builtin_prefetch(bytes + offset);
}

// What a row's values point to, once its record has come in.
template <typename Record>
void prefetchValues(const Record *)
{
}

void prefetchValues(const FlowNode *record)
{
    __builtin_prefetch(record->title.constData());
    __builtin_prefetch(record->notes.constData());
    __builtin_prefetch(record->checklistData.constData());
}

void prefetchValues(const DependencyEdge *record)
{
    __builtin_prefetch(record->fromItem());
    __builtin_prefetch(record->toItem());
}

} // namespace

bool StoreDatabase::deleteRows(const char *table, const std::vector<QUuid> &ids)
{
    if (ids.empty())
        return true;
    SqliteStatement &remove = statement(std::string("DELETE FROM ") + table + " WHERE id = ?");
    for (const QUuid &id : ids) {
        remove.bind(1, id);
        if (!remove.run())
            return false;
    }
    return true;
}

bool StoreDatabase::writeBytes(BytesTable table, const QUuid &owner, const std::optional<QByteArray> &bytes)
{
    const char *upsert = nullptr;
    const char *remove = nullptr;
    switch (table) {
    case BytesTable::fileData:
        upsert = "INSERT INTO flow_file_data (file_id, bytes) VALUES (?, ?) "
                 "ON CONFLICT(file_id) DO UPDATE SET bytes = excluded.bytes";
        remove = "DELETE FROM flow_file_data WHERE file_id = ?";
        break;
    case BytesTable::fileThumbnail:
        upsert = "INSERT INTO flow_file_thumbnail (file_id, bytes) VALUES (?, ?) "
                 "ON CONFLICT(file_id) DO UPDATE SET bytes = excluded.bytes";
        remove = "DELETE FROM flow_file_thumbnail WHERE file_id = ?";
        break;
    case BytesTable::recordPayload:
        upsert = "INSERT INTO completion_record_payload (record_id, bytes) VALUES (?, ?) "
                 "ON CONFLICT(record_id) DO UPDATE SET bytes = excluded.bytes";
        remove = "DELETE FROM completion_record_payload WHERE record_id = ?";
        break;
    }
    SqliteStatement &query = statement(bytes ? upsert : remove);
    query.bind(1, owner);
    if (bytes)
        query.bind(2, *bytes);
    return query.run();
}

SqliteStatement &StoreDatabase::rowStatement(const TableColumns &table, RowStatement kind)
{
    SqliteStatement *&cached = m_rowStatements[{&table, kind}];
    if (!cached) {
        switch (kind) {
        case RowStatement::update:
            cached = &statement(updateSQL(table));
            break;
        case RowStatement::upsertOne:
            cached = &statement(upsertSQL(table, 1));
            break;
        case RowStatement::upsertBatch:
            cached = &statement(upsertSQL(table, rowsPerBatch));
            break;
        }
    }
    return *cached;
}

template <typename Record>
bool StoreDatabase::upsertRows(const TableColumns &table, const std::vector<Record *> &records)
{
    const int columns = int(table.columns.size());
    std::size_t next = 0;
    if (records.size() >= rowsPerBatch) {
        SqliteStatement &batch = rowStatement(table, RowStatement::upsertBatch);
        for (; next + rowsPerBatch <= records.size(); next += rowsPerBatch) {
            for (std::size_t row = 0; row < rowsPerBatch; ++row) {
                const std::size_t index = next + row;
                if (index + recordsAhead < records.size())
                    prefetchRecord(records[index + recordsAhead]);
                if (index + valuesAhead < records.size())
                    prefetchValues(records[index + valuesAhead]);
                RowBinder binder(batch, int(row) * columns + 1);
                bindRow(binder, records[next + row]);
            }
            if (!batch.run())
                return false;
        }
    }
    if (next == records.size())
        return true;
    // A few rows are mostly edits of rows already there: an update first,
    // the upsert only for a new row or one that changed its indexed values.
    SqliteStatement &update = rowStatement(table, RowStatement::update);
    for (; next < records.size(); ++next) {
        RowBinder binder(update, 1);
        bindRow(binder, records[next]);
        if (!update.run())
            return false;
        if (sqlite3_changes(m_connection.handle()) == 1)
            continue;
        SqliteStatement &single = rowStatement(table, RowStatement::upsertOne);
        RowBinder upsertBinder(single, 1);
        bindRow(upsertBinder, records[next]);
        if (!single.run())
            return false;
    }
    return true;
}

bool StoreDatabase::writeRows(const StoreChangeSet &changes)
{
    // Children before parents, table by table: nothing is left for a
    // cascade to find, so a bulk insert after it may skip the key checks.
    if (changes.eraseEverything
        && !m_connection.exec("DELETE FROM file_link; DELETE FROM dependency_edge; DELETE FROM flow_file_data; "
                              "DELETE FROM flow_file_thumbnail; DELETE FROM flow_file; DELETE FROM flow_node; "
                              "DELETE FROM task_flow; DELETE FROM completion_record_payload; "
                              "DELETE FROM completion_record; DELETE FROM flow_template"))
        return false;
    if (!deleteRows("file_link", changes.deletedFileLinks) || !deleteRows("dependency_edge", changes.deletedEdges)
        || !deleteRows("flow_file", changes.deletedFiles) || !deleteRows("flow_node", changes.deletedNodes)
        || !deleteRows("task_flow", changes.deletedFlows)
        || !deleteRows("completion_record", changes.deletedCompletionRecords)
        || !deleteRows("flow_template", changes.deletedTemplates))
        return false;

    // Parents before children; the bytes after the rows they belong to.
    if (!upsertRows(flowColumns, changes.flows) || !upsertRows(nodeColumns, changes.nodes)
        || !upsertRows(fileColumns, changes.files))
        return false;
    for (const FlowFile *record : changes.files) {
        // Bytes that were never touched are never rewritten.
        if (record->data.isModified() && !writeBytes(BytesTable::fileData, record->id, record->data.value()))
            return false;
        if (record->thumbnail.isModified()
            && !writeBytes(BytesTable::fileThumbnail, record->id, record->thumbnail.value()))
            return false;
    }
    if (!upsertRows(edgeColumns, changes.edges) || !upsertRows(linkColumns, changes.fileLinks)
        || !upsertRows(completionColumns, changes.completionRecords))
        return false;
    for (const CompletionRecord *record : changes.completionRecords) {
        if (record->payload.isModified()
            && !writeBytes(BytesTable::recordPayload, record->id, record->payload.value()))
            return false;
    }
    return upsertRows(templateColumns, changes.templates);
}

} // namespace fenrow
