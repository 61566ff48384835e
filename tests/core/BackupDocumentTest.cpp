#include "formats/FenrowBackup.h"

#include "domain/LocalCalendar.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimeZone>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace fenrow::testing {
namespace {

QDateTime utc(int year, int month, int day, int hour = 0, int minute = 0, int second = 0)
{
    return QDateTime(QDate(year, month, day), QTime(hour, minute, second), Qt::UTC);
}

QUuid id(const char *prefix, int number)
{
    return QUuid(QLatin1StringView(prefix) + QStringLiteral("000000-0000-4000-8000-")
                 + QStringLiteral("%1").arg(number, 12, 10, QLatin1Char('0')));
}

QByteArray expectedFile(const char *name)
{
    QFile file(QStringLiteral(FENROW_SOURCE_DIR "/tests/core/expected/") + QLatin1StringView(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll();
}

// The document of expected/backup-document.json: one flow with a task that
// has every optional field and one that has none, both edge forms, a file
// with its bytes and a link, two templates and a record.
FenrowBackup sampleDocument()
{
    FenrowBackup backup;
    backup.createdAt = utc(2026, 11, 15, 19, 24, 5);

    FenrowBackup::Flow flow;
    flow.id = id("0A", 1);
    flow.name = QStringLiteral("Launch \"plan\" / é");
    flow.order = 3;
    flow.createdAt = utc(2026, 1, 2, 3, 4, 5);
    flow.viewportOffsetX = 12.5;
    flow.viewportOffsetY = -4;
    flow.viewportScale = 1.25;
    flow.hasBeenFramed = true;
    flow.items.append({
        .id = id("0B", 1),
        .title = QStringLiteral("Écrire ✓"),
        .isDone = true,
        .statusRaw = QStringLiteral("paused"),
        .notes = QStringLiteral("Tab\there"),
        .priorityRaw = QStringLiteral("high"),
        .colorRaw = QStringLiteral("red"),
        .startDate = utc(2026, 2, 1, 23),
        .dueDate = utc(2026, 2, 4, 23),
        .estimateMinutes = 90,
        .dayPlanRank = 2,
        .manualWidth = 210.5,
        .manualHeight = 120,
        .isCollapsed = true,
        .checklistData = QStringLiteral("a\nb"),
        .recurrenceRaw = QStringLiteral("daily"),
        .repeatCount = 4,
        .completedAt = utc(2026, 2, 3, 10),
        .posX = -100.25,
        .posY = 40,
        .order = 0,
        .createdAt = utc(2026, 1, 2, 3, 4, 6),
    });
    flow.items.append({
        .id = id("0B", 2),
        .title = QStringLiteral("Second"),
        .statusRaw = QStringLiteral("pending"),
        .priorityRaw = QStringLiteral("none"),
        .colorRaw = QStringLiteral("none"),
        .order = 1,
        .createdAt = utc(2026, 1, 2, 3, 4, 7),
    });
    flow.edges.append({id("0C", 1), id("0B", 1), id("0B", 2), QStringLiteral("manual"), QStringLiteral("subtask"),
                       utc(2026, 1, 2, 3, 5, 0)});
    flow.edges.append({id("0C", 2), id("0B", 2), id("0B", 1), QStringLiteral("ai"), std::nullopt,
                       utc(2026, 1, 2, 3, 5, 1)});
    flow.files.append({
        .id = id("0D", 1),
        .filename = QStringLiteral("notes.txt"),
        .contentTypeRaw = QStringLiteral("text/plain"),
        .byteCount = 3,
        .data = QByteArray("\x00\x01\xff", 3),
        .thumbnail = QByteArray("\x89PN"),
        .posX = 300,
        .posY = -20,
        .manualWidth = 200.5,
        .manualHeight = 100,
        .order = 0,
        .createdAt = utc(2026, 1, 2, 3, 6, 0),
    });
    flow.links.append({id("0E", 1), id("0D", 1), id("0B", 2), utc(2026, 1, 2, 3, 7, 0)});
    backup.flows.append(flow);

    backup.templates.append({id("0F", 1), QStringLiteral("Weekly"), utc(2026, 3, 1, 8), QByteArray("{\"version\":1}")});
    backup.templates.append({id("0F", 2), QStringLiteral("Empty"), utc(2026, 3, 2, 8), std::nullopt});
    backup.records.append({id("10", 1), id("0B", 1), id("0A", 1), QStringLiteral("Launch"), QStringLiteral("Écrire"),
                           QStringLiteral("repeat"), utc(2026, 4, 5, 6, 7, 8), 2, QByteArray("{}")});
    return backup;
}

QJsonObject parsed(const QByteArray &bytes)
{
    return QJsonDocument::fromJson(bytes).object();
}

QByteArray serialised(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<BackupError> errorOf(const QByteArray &bytes)
{
    const auto result = FenrowBackup::decoded(bytes);
    if (const BackupProblem *problem = std::get_if<BackupProblem>(&result))
        return problem->kind;
    return std::nullopt;
}

QString detailOf(const QByteArray &bytes)
{
    const auto result = FenrowBackup::decoded(bytes);
    const BackupProblem *problem = std::get_if<BackupProblem>(&result);
    return problem ? problem->detail : QStringLiteral("(read)");
}

// The sample document with one change made through its JSON tree.
QByteArray edited(const std::function<void(QJsonObject &)> &edit)
{
    QJsonObject root = parsed(*sampleDocument().encoded());
    edit(root);
    return serialised(root);
}

// Applies `edit` to the first element of `array` inside `object`.
void editFirst(QJsonObject &object, const char *array, const std::function<void(QJsonObject &)> &edit)
{
    QJsonArray elements = object.value(QLatin1StringView(array)).toArray();
    QJsonObject first = elements.first().toObject();
    edit(first);
    elements.replace(0, first);
    object.insert(QLatin1StringView(array), elements);
}

void editFlow(QJsonObject &root, const std::function<void(QJsonObject &)> &edit)
{
    editFirst(root, "flows", edit);
}

TEST(BackupDocument, WritesTheStoredDocumentByteForByte)
{
    const std::optional<QByteArray> bytes = sampleDocument().encoded();
    ASSERT_TRUE(bytes);
    EXPECT_EQ(QString::fromUtf8(*bytes), QString::fromUtf8(expectedFile("backup-document.json").trimmed()));
}

TEST(BackupDocument, ReadsBackWhatItWrote)
{
    const FenrowBackup original = sampleDocument();
    const auto decoded = FenrowBackup::decoded(*original.encoded());
    ASSERT_TRUE(std::holds_alternative<FenrowBackup>(decoded));
    EXPECT_EQ(std::get<FenrowBackup>(decoded), original);

    // An empty store makes a document with empty lists, and back.
    FenrowBackup empty;
    empty.createdAt = utc(2026, 1, 1);
    EXPECT_EQ(*empty.encoded(), QByteArray(R"({"createdAt":"2026-01-01T00:00:00Z","flows":[],)"
                                           R"("format":"studio.tarnwick.fenrow.backup","records":[],"templates":[],)"
                                           R"("version":1})"));
    EXPECT_EQ(std::get<FenrowBackup>(FenrowBackup::decoded(*empty.encoded())), empty);
}

TEST(BackupDocument, DatesAreWholeSecondsInUtc)
{
    FenrowBackup backup;
    // 20:24:05.987 in Berlin: written in UTC, the fraction dropped and not
    // rounded into the next second.
    backup.createdAt = QDateTime(QDate(2026, 11, 15), QTime(20, 24, 5, 987), QTimeZone("Europe/Berlin"));
    const QByteArray bytes = *backup.encoded();
    EXPECT_TRUE(bytes.startsWith(R"({"createdAt":"2026-11-15T19:24:05Z")")) << bytes.toStdString();
    EXPECT_EQ(std::get<FenrowBackup>(FenrowBackup::decoded(bytes)).createdAt, utc(2026, 11, 15, 19, 24, 5));

    // Only that one form reads back.
    for (const char *date : {"2026-11-15T19:24:05.000Z", "2026-11-15T20:24:05+01:00", "2026-11-15T19:24:05",
                             "2026-11-15 19:24:05Z", "2026-02-30T10:00:00Z", "2026-11-15T24:00:00Z",
                             "+026-11-15T19:24:05Z", "1763234645"}) {
        SCOPED_TRACE(date);
        const QByteArray changed =
            edited([&](QJsonObject &root) { root.insert(QStringLiteral("createdAt"), QLatin1StringView(date)); });
        EXPECT_EQ(errorOf(changed), BackupError::unreadable);
    }

    // A date the format cannot hold is not written at all.
    backup.createdAt = QDateTime();
    EXPECT_FALSE(backup.encoded());
}

TEST(BackupDocument, NumbersThatJsonCannotHoldStopTheWritingAndAreNamed)
{
    FenrowBackup backup = sampleDocument();
    backup.flows[0].items[1].manualWidth = std::nan("");
    QString problem;
    EXPECT_FALSE(backup.encoded(&problem));
    EXPECT_EQ(problem, "flows[0].items[1].manualWidth: nan is not a number JSON can hold");
    backup = sampleDocument();
    backup.flows[0].viewportScale = INFINITY;
    EXPECT_FALSE(backup.encoded());
    backup = sampleDocument();
    backup.records[0].completedAt = utc(2026, 1, 1).addYears(18234);
    EXPECT_FALSE(backup.encoded(&problem));
    EXPECT_EQ(problem, "records[0].completedAt: the year 20260 cannot be written (only 1 to 9999)");
}

TEST(BackupDocument, ARefusalSaysWhereAndWhy)
{
    const auto inItem = [](int index, const std::function<void(QJsonObject &)> &edit) {
        return edited([&](QJsonObject &root) {
            editFlow(root, [&](QJsonObject &flow) {
                QJsonArray items = flow.value("items").toArray();
                QJsonObject item = items[index].toObject();
                edit(item);
                items.replace(index, item);
                flow.insert("items", items);
            });
        });
    };
    EXPECT_EQ(detailOf(inItem(1, [](QJsonObject &item) { item.insert("dueDate", "2026-11-15"); })),
              "flows[0].items[1].dueDate: not a date in the form 2026-11-15T19:24:05Z");
    EXPECT_EQ(detailOf(inItem(0, [](QJsonObject &item) { item.remove("title"); })),
              "flows[0].items[0]: \"title\" is missing");
    const QByteArray huge = inItem(0, [](QJsonObject &item) { item.insert("order", 1e19); });
    EXPECT_EQ(detailOf(huge), QStringLiteral("flows[0].items[0].order (line 1, column %1): a whole number beyond 64 bits")
                                  .arg(huge.indexOf("\"order\":1e+19") + 9));
    EXPECT_EQ(detailOf(edited([](QJsonObject &root) { root.insert("flows", QJsonObject()); })), "flows: not a list");
    EXPECT_EQ(detailOf(edited([](QJsonObject &root) { root.insert("format", "other"); })),
              "format: \"other\" is not studio.tarnwick.fenrow.backup");
    EXPECT_EQ(detailOf(edited([](QJsonObject &root) { root.insert("version", 2); })),
              "version 2; this Fenrow reads version 1 and older");
    EXPECT_EQ(detailOf("<opml version=\"2.0\"/>"), "not a JSON object");
    EXPECT_EQ(detailOf("  \n"), "the file is empty");

    // Broken JSON is placed by line and column, with what was being read.
    const QByteArray indented = QJsonDocument(parsed(*sampleDocument().encoded())).toJson(QJsonDocument::Indented);
    QByteArray broken = indented;
    broken.replace("\"hasBeenFramed\": true,", "\"hasBeenFramed\": true");
    const qsizetype line = indented.left(indented.indexOf("\"hasBeenFramed\"")).count('\n') + 2;
    EXPECT_EQ(detailOf(broken), QStringLiteral("flows[0] (line %1, column 13): expected \",\" or \"}\"").arg(line));
    const QByteArray compact = *sampleDocument().encoded();
    EXPECT_EQ(detailOf(compact.left(30)), "line 1, column 31: the document ends inside a string");
    // A key of a later version is skipped, but its value must be JSON too.
    const auto withLater = [&](const QByteArray &value) { return "{\"later\":" + value + "," + compact.mid(1); };
    EXPECT_EQ(detailOf(withLater("[1.]")), "line 1, column 11: not a valid number");
    EXPECT_EQ(detailOf(withLater("{\"a\":nul}")), "line 1, column 15: expected a value");
    EXPECT_EQ(detailOf(withLater("\"a\x01b\"")), "line 1, column 12: a control character inside a string");
    EXPECT_EQ(detailOf(withLater("\"caf\xE9\"")), "line 1, column 14: a string that is not UTF-8");
    // However deep it goes: the reading stops with a refusal, not a crash.
    const QByteArray deep = withLater(QByteArray(100000, '[') + QByteArray(100000, ']'));
    EXPECT_TRUE(detailOf(deep).endsWith("nested deeper than 1024 levels")) << detailOf(deep).toStdString();
    EXPECT_EQ(detailOf(compact + "{}"),
              QStringLiteral("line 1, column %1: something follows the document").arg(compact.size() + 1));

    // A byte-order mark before the document is no damage.
    const auto marked = FenrowBackup::decoded("\xEF\xBB\xBF" + compact);
    ASSERT_TRUE(std::holds_alternative<FenrowBackup>(marked)) << detailOf("\xEF\xBB\xBF" + compact).toStdString();
    EXPECT_EQ(std::get<FenrowBackup>(marked), sampleDocument());
}

TEST(BackupDocument, AnyMissingOrMistypedRequiredFieldMakesTheWholeDocumentUnreadable)
{
    using Edit = std::function<void(QJsonObject &)>;
    const auto remove = [](const char *name) { return [name](QJsonObject &o) { o.remove(QLatin1StringView(name)); }; };
    const auto set = [](const char *name, QJsonValue value) {
        return [name, value](QJsonObject &o) { o.insert(QLatin1StringView(name), value); };
    };
    const auto inFlow = [](Edit edit) { return [edit](QJsonObject &root) { editFlow(root, edit); }; };
    const auto inFlowList = [](const char *list, Edit edit) {
        return [list, edit](QJsonObject &root) {
            editFlow(root, [&](QJsonObject &flow) { editFirst(flow, list, edit); });
        };
    };
    const auto inList = [](const char *list, Edit edit) {
        return [list, edit](QJsonObject &root) { editFirst(root, list, edit); };
    };

    const std::vector<std::pair<const char *, Edit>> cases{
        {"no format", remove("format")},
        {"no version", remove("version")},
        {"no records", remove("records")},
        {"templates not a list", set("templates", QJsonObject())},
        {"a flow that is not an object", set("flows", QJsonArray{7})},
        {"flow without viewportScale", inFlow(remove("viewportScale"))},
        {"flow without links", inFlow(remove("links"))},
        {"flow order with a fraction", inFlow(set("order", 1.5))},
        {"flow id in braces", inFlow(set("id", "{0A000000-0000-4000-8000-000000000001}"))},
        {"flow id that is no uuid", inFlow(set("id", "launch"))},
        {"item without isCollapsed", inFlowList("items", remove("isCollapsed"))},
        {"item isDone as text", inFlowList("items", set("isDone", "true"))},
        {"item isDone as a number", inFlowList("items", set("isDone", 1))},
        {"item title as a number", inFlowList("items", set("title", 7))},
        {"item estimate as text", inFlowList("items", set("estimateMinutes", "90"))},
        {"item with null title", inFlowList("items", set("title", QJsonValue::Null))},
        {"item posX as text", inFlowList("items", set("posX", "1"))},
        {"edge without sourceRaw", inFlowList("edges", remove("sourceRaw"))},
        {"edge kindRaw as a number", inFlowList("edges", set("kindRaw", 1))},
        {"file without byteCount", inFlowList("files", remove("byteCount"))},
        {"file data not base64", inFlowList("files", set("data", "not base64!"))},
        {"file data base64 with a line break", inFlowList("files", set("data", "AAH/\nAAH/"))},
        {"link without nodeID", inFlowList("links", remove("nodeID"))},
        {"template without name", inList("templates", remove("name"))},
        {"template payload as a list", inList("templates", set("payload", QJsonArray()))},
        {"record without cycle", inList("records", remove("cycle"))},
        {"record completedAt with a fraction", inList("records", set("completedAt", "2026-04-05T06:07:08.5Z"))},
        {"another format", set("format", "studio.tarnwick.fenrow.template")},
    };
    for (const auto &[name, edit] : cases) {
        SCOPED_TRACE(name);
        EXPECT_EQ(errorOf(edited(edit)), BackupError::unreadable);
    }
    for (const char *bytes : {"", "[]", "{", "null", "\"studio.tarnwick.fenrow.backup\""}) {
        SCOPED_TRACE(bytes);
        EXPECT_EQ(errorOf(bytes), BackupError::unreadable);
    }
}

TEST(BackupDocument, OptionalFieldsAndUnknownKeysAreTolerated)
{
    const QByteArray changed = edited([](QJsonObject &root) {
        root.insert(QStringLiteral("comment"), QStringLiteral("from a later release"));
        editFlow(root, [](QJsonObject &flow) {
            editFirst(flow, "items", [](QJsonObject &item) {
                item.insert(QStringLiteral("dueDate"), QJsonValue::Null);
                item.insert(QStringLiteral("id"), QStringLiteral("0b000000-0000-4000-8000-000000000001"));
                item.insert(QStringLiteral("mood"), 3);
            });
            editFirst(flow, "edges", [](QJsonObject &edge) { edge.remove(QStringLiteral("kindRaw")); });
        });
    });
    const auto decoded = FenrowBackup::decoded(changed);
    ASSERT_TRUE(std::holds_alternative<FenrowBackup>(decoded));
    const FenrowBackup &backup = std::get<FenrowBackup>(decoded);
    const FenrowBackup::Item &item = backup.flows[0].items[0];
    EXPECT_EQ(item.id, id("0B", 1)) << "ids read in either case";
    EXPECT_FALSE(item.dueDate) << "null reads as absent";
    EXPECT_EQ(item.startDate, utc(2026, 2, 1, 23));
    EXPECT_FALSE(backup.flows[0].edges[0].kindRaw);
}

TEST(BackupDocument, OnlyALaterVersionIsRefusedAsNewer)
{
    for (int version : {1, 0, -3}) {
        SCOPED_TRACE(version);
        const auto decoded = FenrowBackup::decoded(edited([&](QJsonObject &root) {
            root.insert(QStringLiteral("version"), version);
        }));
        ASSERT_TRUE(std::holds_alternative<FenrowBackup>(decoded));
        EXPECT_EQ(std::get<FenrowBackup>(decoded).version, version);
    }
    for (int version : {2, 17}) {
        SCOPED_TRACE(version);
        EXPECT_EQ(errorOf(edited([&](QJsonObject &root) { root.insert(QStringLiteral("version"), version); })),
                  BackupError::newerVersion);
    }
    // The whole document is read first: a later version that is also broken
    // is simply unreadable, and so is a later version of another format.
    EXPECT_EQ(errorOf(edited([](QJsonObject &root) {
                  root.insert(QStringLiteral("version"), 2);
                  root.remove(QStringLiteral("flows"));
              })),
              BackupError::unreadable);
    EXPECT_EQ(errorOf(edited([](QJsonObject &root) {
                  root.insert(QStringLiteral("version"), 2);
                  root.insert(QStringLiteral("format"), QStringLiteral("other"));
              })),
              BackupError::unreadable);
}

TEST(BackupDocument, FileNameCarriesTheLocalDay)
{
    const LocalCalendar berlin(QTimeZone("Europe/Berlin"));
    EXPECT_EQ(FenrowBackup::fileName(FenrowBackup::manualPrefix, utc(2026, 11, 15, 19, 24, 5), berlin),
              "Fenrow Backup 2026-11-15.fenrowbackup");
    // Half past midnight in Berlin is still the day before in UTC.
    EXPECT_EQ(FenrowBackup::fileName(FenrowBackup::automaticPrefix, utc(2026, 11, 15, 23, 30), berlin),
              "Fenrow Auto Backup 2026-11-16.fenrowbackup");
    EXPECT_EQ(FenrowBackup::fileName(FenrowBackup::manualPrefix, utc(2026, 11, 15, 8), berlin),
              FenrowBackup::fileName(FenrowBackup::manualPrefix, utc(2026, 11, 15, 21), berlin));
}

} // namespace
} // namespace fenrow::testing
