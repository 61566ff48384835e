// Loading every row of the store into linked records, once, at start-up.
#include "StoreDatabase.h"

#include "SqliteStatement.h"
#include "domain/CompletionRecord.h"
#include "domain/FlowTemplate.h"
#include "domain/TaskFlow.h"

#include <QHash>

#include <utility>
#include <vector>

namespace fenrow {

namespace {

template <typename Record>
ExternalBytes::Loader bytesLoader(StoreDatabase *database, StoreDatabase::BytesTable table, const Record *record)
{
    return [database, table, id = record->id] { return database->loadBytes(table, id); };
}

} // namespace

std::optional<LoadedRecords> StoreDatabase::loadAll(QString *error)
{
    LoadedRecords loaded;
    QHash<QUuid, TaskFlow *> flowsByID;
    QHash<QUuid, FlowNode *> nodesByID;
    QHash<QUuid, FlowFile *> filesByID;

    auto fail = [&](SqliteStatement *query) -> std::optional<LoadedRecords> {
        *error = query ? m_connection.lastError() : QStringLiteral("cannot prepare a query");
        return std::nullopt;
    };

    auto flows = m_connection.prepare(
        "SELECT id, name, sort_order, created_at, viewport_offset_x, viewport_offset_y, viewport_scale, "
        "has_been_framed FROM task_flow",
        error);
    if (!flows)
        return std::nullopt;
    while (flows->step()) {
        auto flow = std::make_unique<TaskFlow>();
        flow->id = flows->uuid(0);
        flow->name = flows->text(1);
        flow->order = flows->integer(2);
        flow->createdAt = flows->dateTime(3);
        flow->viewportOffsetX = flows->real(4);
        flow->viewportOffsetY = flows->real(5);
        flow->viewportScale = flows->real(6);
        flow->hasBeenFramed = flows->boolean(7);
        flowsByID.insert(flow->id, flow.get());
        loaded.flows.push_back(std::move(flow));
    }
    if (flows->failed())
        return fail(flows.get());

    auto nodes = m_connection.prepare(
        "SELECT id, flow_id, title, is_done, status_raw, notes, priority_raw, color_raw, start_date, due_date, "
        "estimate_minutes, day_plan_rank, manual_width, manual_height, checklist_data, recurrence_raw, "
        "repeat_count, completed_at, is_collapsed, pos_x, pos_y, sort_order, created_at FROM flow_node",
        error);
    if (!nodes)
        return std::nullopt;
    // Raw enumeration texts repeat across thousands of nodes: share one
    // string per distinct value instead of one per node. There are a handful
    // of values, so comparing the stored bytes beats hashing a new string.
    std::vector<std::pair<QByteArray, QString>> rawTexts;
    auto shared = [&rawTexts, &nodes](int column) {
        const QByteArrayView bytes = nodes->utf8(column);
        for (const auto &[stored, text] : rawTexts) {
            if (stored == bytes)
                return text;
        }
        // A damaged file could hold any number of values: stop sharing
        // rather than scan a long list for each node.
        if (rawTexts.size() >= 32)
            return QString::fromUtf8(bytes);
        rawTexts.emplace_back(bytes.toByteArray(), QString::fromUtf8(bytes));
        return rawTexts.back().second;
    };
    while (nodes->step()) {
        // A node whose flow is gone has nothing to show it; the cascade keeps
        // the file free of those, so this only guards against damage.
        TaskFlow *flow = flowsByID.value(nodes->uuid(1));
        if (!flow)
            continue;
        auto node = std::make_unique<FlowNode>();
        node->id = nodes->uuid(0);
        node->title = nodes->text(2);
        node->isDone = nodes->boolean(3);
        node->statusRaw = shared(4);
        node->notes = nodes->text(5);
        node->priorityRaw = shared(6);
        node->colorRaw = shared(7);
        node->startDate = nodes->optionalDateTime(8);
        node->dueDate = nodes->optionalDateTime(9);
        node->estimateMinutes = nodes->optionalInteger(10);
        node->dayPlanRank = nodes->optionalInteger(11);
        node->manualWidth = nodes->optionalReal(12);
        node->manualHeight = nodes->optionalReal(13);
        node->checklistData = nodes->text(14);
        node->recurrenceRaw = nodes->optionalText(15);
        node->repeatCount = nodes->integer(16);
        node->completedAt = nodes->optionalDateTime(17);
        node->isCollapsed = nodes->boolean(18);
        node->posX = nodes->real(19);
        node->posY = nodes->real(20);
        node->order = nodes->integer(21);
        node->createdAt = nodes->dateTime(22);
        node->setFlow(flow);
        nodesByID.insert(node->id, node.get());
        flow->items().add(std::move(node));
    }
    if (nodes->failed())
        return fail(nodes.get());

    auto edges = m_connection.prepare(
        "SELECT id, flow_id, from_id, to_id, source, kind, created_at FROM dependency_edge", error);
    if (!edges)
        return std::nullopt;
    while (edges->step()) {
        TaskFlow *flow = flowsByID.value(edges->uuid(1));
        if (!flow)
            continue;
        auto edge = std::make_unique<DependencyEdge>();
        edge->id = edges->uuid(0);
        edge->setFromItem(nodesByID.value(edges->uuid(2)));
        edge->setToItem(nodesByID.value(edges->uuid(3)));
        edge->source = readRaw<EdgeSource>(edges->text(4));
        if (!edges->isNull(5))
            edge->kind = parseRaw<EdgeKind>(edges->text(5));
        edge->createdAt = edges->dateTime(6);
        edge->setFlow(flow);
        flow->edges().add(std::move(edge));
    }
    if (edges->failed())
        return fail(edges.get());

    auto files = m_connection.prepare(
        "SELECT id, flow_id, filename, content_type_raw, byte_count, has_data, has_thumbnail, is_trashed, pos_x, "
        "pos_y, manual_width, manual_height, sort_order, created_at FROM flow_file",
        error);
    if (!files)
        return std::nullopt;
    while (files->step()) {
        TaskFlow *flow = flowsByID.value(files->uuid(1));
        if (!flow)
            continue;
        auto file = std::make_unique<FlowFile>();
        file->id = files->uuid(0);
        file->filename = files->text(2);
        file->contentTypeRaw = files->text(3);
        file->byteCount = files->integer(4);
        file->data.attachStored(files->boolean(5), bytesLoader(this, BytesTable::fileData, file.get()));
        file->thumbnail.attachStored(files->boolean(6), bytesLoader(this, BytesTable::fileThumbnail, file.get()));
        file->isTrashed = files->boolean(7);
        file->posX = files->real(8);
        file->posY = files->real(9);
        file->manualWidth = files->optionalReal(10);
        file->manualHeight = files->optionalReal(11);
        file->order = files->integer(12);
        file->createdAt = files->dateTime(13);
        file->setFlow(flow);
        filesByID.insert(file->id, file.get());
        flow->files().add(std::move(file));
    }
    if (files->failed())
        return fail(files.get());

    auto links = m_connection.prepare("SELECT id, flow_id, file_id, node_id, created_at FROM file_link", error);
    if (!links)
        return std::nullopt;
    while (links->step()) {
        TaskFlow *flow = flowsByID.value(links->uuid(1));
        if (!flow)
            continue;
        auto link = std::make_unique<FileLink>();
        link->id = links->uuid(0);
        link->createdAt = links->dateTime(4);
        link->setFlow(flow);
        if (FlowFile *file = filesByID.value(links->uuid(2))) {
            link->setFile(file);
            file->links().append(link.get());
        }
        if (FlowNode *node = nodesByID.value(links->uuid(3))) {
            link->setNode(node);
            node->fileLinks().append(link.get());
        }
        flow->fileLinks().add(std::move(link));
    }
    if (links->failed())
        return fail(links.get());

    auto records = m_connection.prepare(
        "SELECT id, node_id, flow_id, flow_name, title, kind_raw, completed_at, cycle, has_payload "
        "FROM completion_record",
        error);
    if (!records)
        return std::nullopt;
    while (records->step()) {
        auto record = std::make_unique<CompletionRecord>();
        record->id = records->uuid(0);
        record->nodeID = records->uuid(1);
        record->flowID = records->uuid(2);
        record->flowName = records->text(3);
        record->title = records->text(4);
        record->kindRaw = records->text(5);
        record->completedAt = records->dateTime(6);
        record->cycle = records->integer(7);
        record->payload.attachStored(records->boolean(8), bytesLoader(this, BytesTable::recordPayload, record.get()));
        loaded.completionRecords.push_back(std::move(record));
    }
    if (records->failed())
        return fail(records.get());

    auto templates = m_connection.prepare("SELECT id, name, created_at, payload FROM flow_template", error);
    if (!templates)
        return std::nullopt;
    while (templates->step()) {
        auto flowTemplate = std::make_unique<FlowTemplate>();
        flowTemplate->id = templates->uuid(0);
        flowTemplate->name = templates->text(1);
        flowTemplate->createdAt = templates->dateTime(2);
        if (!templates->isNull(3))
            flowTemplate->payload = templates->bytes(3);
        loaded.templates.push_back(std::move(flowTemplate));
    }
    if (templates->failed())
        return fail(templates.get());

    return loaded;
}

} // namespace fenrow
