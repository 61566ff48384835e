// Writing one change set: deletes first, children before parents, then
// inserts and updates, parents before children, all in one transaction.
#include "StoreDatabase.h"

#include "SqliteStatement.h"
#include "domain/CompletionRecord.h"
#include "domain/FlowTemplate.h"
#include "domain/TaskFlow.h"

namespace fenrow {

namespace {

template <typename Record>
std::optional<QUuid> idOf(const Record *record)
{
    return record ? std::optional(record->id) : std::nullopt;
}

std::optional<QString> kindText(const DependencyEdge &edge)
{
    return edge.kind ? std::optional(rawString(*edge.kind)) : std::nullopt;
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

bool StoreDatabase::writeRows(const StoreChangeSet &changes)
{
    if (!deleteRows("file_link", changes.deletedFileLinks) || !deleteRows("dependency_edge", changes.deletedEdges)
        || !deleteRows("flow_file", changes.deletedFiles) || !deleteRows("flow_node", changes.deletedNodes)
        || !deleteRows("task_flow", changes.deletedFlows)
        || !deleteRows("completion_record", changes.deletedCompletionRecords)
        || !deleteRows("flow_template", changes.deletedTemplates))
        return false;

    SqliteStatement &flow = statement(
        "INSERT INTO task_flow (id, name, sort_order, created_at, viewport_offset_x, viewport_offset_y, "
        "viewport_scale, has_been_framed) VALUES (?, ?, ?, ?, ?, ?, ?, ?) ON CONFLICT(id) DO UPDATE SET "
        "name = excluded.name, sort_order = excluded.sort_order, created_at = excluded.created_at, "
        "viewport_offset_x = excluded.viewport_offset_x, viewport_offset_y = excluded.viewport_offset_y, "
        "viewport_scale = excluded.viewport_scale, has_been_framed = excluded.has_been_framed");
    for (const TaskFlow *record : changes.flows) {
        flow.bind(1, record->id);
        flow.bind(2, record->name);
        flow.bind(3, record->order);
        flow.bind(4, record->createdAt);
        flow.bind(5, record->viewportOffsetX);
        flow.bind(6, record->viewportOffsetY);
        flow.bind(7, record->viewportScale);
        flow.bind(8, record->hasBeenFramed);
        if (!flow.run())
            return false;
    }

    SqliteStatement &node = statement(
        "INSERT INTO flow_node (id, flow_id, title, is_done, status_raw, notes, priority_raw, color_raw, "
        "start_date, due_date, estimate_minutes, day_plan_rank, manual_width, manual_height, checklist_data, "
        "recurrence_raw, repeat_count, completed_at, is_collapsed, pos_x, pos_y, sort_order, created_at) "
        "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?) ON CONFLICT(id) DO UPDATE SET "
        "flow_id = excluded.flow_id, title = excluded.title, is_done = excluded.is_done, "
        "status_raw = excluded.status_raw, notes = excluded.notes, priority_raw = excluded.priority_raw, "
        "color_raw = excluded.color_raw, start_date = excluded.start_date, due_date = excluded.due_date, "
        "estimate_minutes = excluded.estimate_minutes, day_plan_rank = excluded.day_plan_rank, "
        "manual_width = excluded.manual_width, manual_height = excluded.manual_height, "
        "checklist_data = excluded.checklist_data, recurrence_raw = excluded.recurrence_raw, "
        "repeat_count = excluded.repeat_count, completed_at = excluded.completed_at, "
        "is_collapsed = excluded.is_collapsed, pos_x = excluded.pos_x, pos_y = excluded.pos_y, "
        "sort_order = excluded.sort_order, created_at = excluded.created_at");
    for (const FlowNode *record : changes.nodes) {
        node.bind(1, record->id);
        node.bind(2, idOf(record->flow()));
        node.bind(3, record->title);
        node.bind(4, record->isDone);
        node.bind(5, record->statusRaw);
        node.bind(6, record->notes);
        node.bind(7, record->priorityRaw);
        node.bind(8, record->colorRaw);
        node.bind(9, record->startDate);
        node.bind(10, record->dueDate);
        node.bind(11, record->estimateMinutes);
        node.bind(12, record->dayPlanRank);
        node.bind(13, record->manualWidth);
        node.bind(14, record->manualHeight);
        node.bind(15, record->checklistData);
        node.bind(16, record->recurrenceRaw);
        node.bind(17, record->repeatCount);
        node.bind(18, record->completedAt);
        node.bind(19, record->isCollapsed);
        node.bind(20, record->posX);
        node.bind(21, record->posY);
        node.bind(22, record->order);
        node.bind(23, record->createdAt);
        if (!node.run())
            return false;
    }

    SqliteStatement &file = statement(
        "INSERT INTO flow_file (id, flow_id, filename, content_type_raw, byte_count, has_data, has_thumbnail, "
        "is_trashed, pos_x, pos_y, manual_width, manual_height, sort_order, created_at) "
        "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?) ON CONFLICT(id) DO UPDATE SET "
        "flow_id = excluded.flow_id, filename = excluded.filename, content_type_raw = excluded.content_type_raw, "
        "byte_count = excluded.byte_count, has_data = excluded.has_data, has_thumbnail = excluded.has_thumbnail, "
        "is_trashed = excluded.is_trashed, pos_x = excluded.pos_x, pos_y = excluded.pos_y, "
        "manual_width = excluded.manual_width, manual_height = excluded.manual_height, "
        "sort_order = excluded.sort_order, created_at = excluded.created_at");
    for (const FlowFile *record : changes.files) {
        file.bind(1, record->id);
        file.bind(2, idOf(record->flow()));
        file.bind(3, record->filename);
        file.bind(4, record->contentTypeRaw);
        file.bind(5, record->byteCount);
        file.bind(6, record->data.isPresent());
        file.bind(7, record->thumbnail.isPresent());
        file.bind(8, record->isTrashed);
        file.bind(9, record->posX);
        file.bind(10, record->posY);
        file.bind(11, record->manualWidth);
        file.bind(12, record->manualHeight);
        file.bind(13, record->order);
        file.bind(14, record->createdAt);
        if (!file.run())
            return false;
        // Bytes that were never touched are never rewritten.
        if (record->data.isModified() && !writeBytes(BytesTable::fileData, record->id, record->data.value()))
            return false;
        if (record->thumbnail.isModified()
            && !writeBytes(BytesTable::fileThumbnail, record->id, record->thumbnail.value()))
            return false;
    }

    SqliteStatement &edge = statement(
        "INSERT INTO dependency_edge (id, flow_id, from_id, to_id, source, kind, created_at) "
        "VALUES (?, ?, ?, ?, ?, ?, ?) ON CONFLICT(id) DO UPDATE SET flow_id = excluded.flow_id, "
        "from_id = excluded.from_id, to_id = excluded.to_id, source = excluded.source, kind = excluded.kind, "
        "created_at = excluded.created_at");
    for (const DependencyEdge *record : changes.edges) {
        edge.bind(1, record->id);
        edge.bind(2, idOf(record->flow()));
        edge.bind(3, idOf(record->fromItem()));
        edge.bind(4, idOf(record->toItem()));
        edge.bind(5, rawString(record->source));
        edge.bind(6, kindText(*record));
        edge.bind(7, record->createdAt);
        if (!edge.run())
            return false;
    }

    SqliteStatement &link = statement(
        "INSERT INTO file_link (id, flow_id, file_id, node_id, created_at) VALUES (?, ?, ?, ?, ?) "
        "ON CONFLICT(id) DO UPDATE SET flow_id = excluded.flow_id, file_id = excluded.file_id, "
        "node_id = excluded.node_id, created_at = excluded.created_at");
    for (const FileLink *record : changes.fileLinks) {
        link.bind(1, record->id);
        link.bind(2, idOf(record->flow()));
        link.bind(3, idOf(record->file()));
        link.bind(4, idOf(record->node()));
        link.bind(5, record->createdAt);
        if (!link.run())
            return false;
    }

    SqliteStatement &completion = statement(
        "INSERT INTO completion_record (id, node_id, flow_id, flow_name, title, kind_raw, completed_at, cycle, "
        "has_payload) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?) ON CONFLICT(id) DO UPDATE SET "
        "node_id = excluded.node_id, flow_id = excluded.flow_id, flow_name = excluded.flow_name, "
        "title = excluded.title, kind_raw = excluded.kind_raw, completed_at = excluded.completed_at, "
        "cycle = excluded.cycle, has_payload = excluded.has_payload");
    for (const CompletionRecord *record : changes.completionRecords) {
        completion.bind(1, record->id);
        completion.bind(2, record->nodeID);
        completion.bind(3, record->flowID);
        completion.bind(4, record->flowName);
        completion.bind(5, record->title);
        completion.bind(6, record->kindRaw);
        completion.bind(7, record->completedAt);
        completion.bind(8, record->cycle);
        completion.bind(9, record->payload.isPresent());
        if (!completion.run())
            return false;
        if (record->payload.isModified()
            && !writeBytes(BytesTable::recordPayload, record->id, record->payload.value()))
            return false;
    }

    SqliteStatement &flowTemplate = statement(
        "INSERT INTO flow_template (id, name, created_at, payload) VALUES (?, ?, ?, ?) ON CONFLICT(id) DO UPDATE "
        "SET name = excluded.name, created_at = excluded.created_at, payload = excluded.payload");
    for (const FlowTemplate *record : changes.templates) {
        flowTemplate.bind(1, record->id);
        flowTemplate.bind(2, record->name);
        flowTemplate.bind(3, record->createdAt);
        flowTemplate.bind(4, record->payload);
        if (!flowTemplate.run())
            return false;
    }
    return true;
}

} // namespace fenrow
