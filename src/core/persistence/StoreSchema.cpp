#include "StoreSchema.h"

#include "SqliteConnection.h"
#include "SqliteStatement.h"

#include <array>

namespace fenrow::StoreSchema {

namespace {

// Version 0 to 1: the seven record tables. Bytes that can be large live in
// tables of their own so that loading the rows never reads them.
constexpr const char *createVersion1 = R"sql(
CREATE TABLE task_flow (
    id BLOB PRIMARY KEY NOT NULL,
    name TEXT NOT NULL,
    sort_order INTEGER NOT NULL,
    created_at INTEGER NOT NULL,
    viewport_offset_x REAL NOT NULL DEFAULT 0,
    viewport_offset_y REAL NOT NULL DEFAULT 0,
    viewport_scale REAL NOT NULL DEFAULT 1,
    has_been_framed INTEGER NOT NULL DEFAULT 0
);
CREATE TABLE flow_node (
    id BLOB PRIMARY KEY NOT NULL,
    flow_id BLOB REFERENCES task_flow(id) ON DELETE CASCADE,
    title TEXT NOT NULL,
    is_done INTEGER NOT NULL,
    status_raw TEXT NOT NULL DEFAULT 'pending',
    notes TEXT NOT NULL DEFAULT '',
    priority_raw TEXT NOT NULL DEFAULT 'none',
    color_raw TEXT NOT NULL DEFAULT 'none',
    start_date INTEGER,
    due_date INTEGER,
    estimate_minutes INTEGER,
    day_plan_rank INTEGER,
    manual_width REAL,
    manual_height REAL,
    checklist_data TEXT NOT NULL DEFAULT '',
    recurrence_raw TEXT,
    repeat_count INTEGER NOT NULL DEFAULT 0,
    completed_at INTEGER,
    is_collapsed INTEGER NOT NULL DEFAULT 0,
    pos_x REAL NOT NULL,
    pos_y REAL NOT NULL,
    sort_order INTEGER NOT NULL,
    created_at INTEGER NOT NULL
);
CREATE INDEX flow_node_by_flow ON flow_node(flow_id);
-- The ends of an edge carry no reference: the store removes a task's edges
-- itself, and a reader takes an end it cannot find as no end. Two indices
-- fewer make a large import or restore a third cheaper.
CREATE TABLE dependency_edge (
    id BLOB PRIMARY KEY NOT NULL,
    flow_id BLOB REFERENCES task_flow(id) ON DELETE CASCADE,
    from_id BLOB,
    to_id BLOB,
    source TEXT NOT NULL,
    kind TEXT,
    created_at INTEGER NOT NULL
);
CREATE INDEX dependency_edge_by_flow ON dependency_edge(flow_id);
CREATE TABLE flow_file (
    id BLOB PRIMARY KEY NOT NULL,
    flow_id BLOB REFERENCES task_flow(id) ON DELETE CASCADE,
    filename TEXT NOT NULL DEFAULT '',
    content_type_raw TEXT NOT NULL DEFAULT '',
    byte_count INTEGER NOT NULL DEFAULT 0,
    has_data INTEGER NOT NULL DEFAULT 0,
    has_thumbnail INTEGER NOT NULL DEFAULT 0,
    is_trashed INTEGER NOT NULL DEFAULT 0,
    pos_x REAL NOT NULL DEFAULT 0,
    pos_y REAL NOT NULL DEFAULT 0,
    manual_width REAL,
    manual_height REAL,
    sort_order INTEGER NOT NULL DEFAULT 0,
    created_at INTEGER NOT NULL
);
CREATE INDEX flow_file_by_flow ON flow_file(flow_id);
CREATE TABLE flow_file_data (
    file_id BLOB PRIMARY KEY NOT NULL REFERENCES flow_file(id) ON DELETE CASCADE,
    bytes BLOB NOT NULL
);
CREATE TABLE flow_file_thumbnail (
    file_id BLOB PRIMARY KEY NOT NULL REFERENCES flow_file(id) ON DELETE CASCADE,
    bytes BLOB NOT NULL
);
CREATE TABLE file_link (
    id BLOB PRIMARY KEY NOT NULL,
    flow_id BLOB REFERENCES task_flow(id) ON DELETE CASCADE,
    file_id BLOB REFERENCES flow_file(id) ON DELETE CASCADE,
    node_id BLOB REFERENCES flow_node(id) ON DELETE CASCADE,
    created_at INTEGER NOT NULL
);
CREATE INDEX file_link_by_flow ON file_link(flow_id);
CREATE INDEX file_link_by_file ON file_link(file_id);
CREATE INDEX file_link_by_node ON file_link(node_id);
CREATE TABLE completion_record (
    id BLOB PRIMARY KEY NOT NULL,
    node_id BLOB NOT NULL,
    flow_id BLOB NOT NULL,
    flow_name TEXT NOT NULL,
    title TEXT NOT NULL,
    kind_raw TEXT NOT NULL,
    completed_at INTEGER NOT NULL,
    cycle INTEGER NOT NULL DEFAULT 0,
    has_payload INTEGER NOT NULL DEFAULT 0
);
CREATE INDEX completion_record_by_flow ON completion_record(flow_id);
CREATE TABLE completion_record_payload (
    record_id BLOB PRIMARY KEY NOT NULL REFERENCES completion_record(id) ON DELETE CASCADE,
    bytes BLOB NOT NULL
);
CREATE TABLE flow_template (
    id BLOB PRIMARY KEY NOT NULL,
    name TEXT NOT NULL,
    created_at INTEGER NOT NULL,
    payload BLOB
);
)sql";

// Step i brings version i to version i + 1.
constexpr std::array<const char *, currentVersion> steps{createVersion1};

int tableCount(SqliteConnection &connection, QString *error)
{
    auto statement = connection.prepare("SELECT count(*) FROM sqlite_master", error);
    if (!statement)
        return -1;
    if (!statement->step()) {
        if (error)
            *error = connection.lastError();
        return -1;
    }
    return int(statement->integer(0));
}

} // namespace

Check inspect(SqliteConnection &connection, int *version, QString *error)
{
    // The first read of the header is where a file that is not a database
    // shows itself; nothing has been written to it up to here.
    const int tables = tableCount(connection, error);
    if (tables < 0)
        return Check::foreign;

    auto statement = connection.prepare("PRAGMA user_version", error);
    if (!statement || !statement->step())
        return Check::foreign;
    *version = int(statement->integer(0));

    if (*version > currentVersion) {
        if (error)
            *error = QStringLiteral("the store was written by a newer version of Fenrow (schema %1, this version reads up to %2)")
                         .arg(*version)
                         .arg(currentVersion);
        return Check::newer;
    }
    if (*version == 0 && tables > 0) {
        if (error)
            *error = QStringLiteral("the file is an SQLite database, but not a Fenrow store");
        return Check::foreign;
    }
    return *version == currentVersion ? Check::ready : Check::needsUpgrade;
}

bool upgrade(SqliteConnection &connection, int fromVersion, QString *error)
{
    if (!connection.exec("BEGIN IMMEDIATE", error))
        return false;
    for (int version = fromVersion; version < currentVersion; ++version) {
        if (!connection.exec(steps[std::size_t(version)], error)) {
            connection.exec("ROLLBACK");
            return false;
        }
    }
    const QByteArray setVersion = QByteArray("PRAGMA user_version = ") + QByteArray::number(currentVersion);
    if (!connection.exec(setVersion.constData(), error) || !connection.exec("COMMIT", error)) {
        connection.exec("ROLLBACK");
        return false;
    }
    return true;
}

} // namespace fenrow::StoreSchema
