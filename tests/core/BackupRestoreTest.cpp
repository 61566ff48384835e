#include "TestStore.h"
#include "../cli/QtPrinters.h"

#include "canvas/CanvasBounds.h"
#include "canvas/CanvasInteraction.h"
#include "canvas/NodeSizeResolver.h"
#include "domain/FenrowHistory.h"
#include "domain/ValueLimits.h"
#include "formats/FenrowBackup.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>

#include <sqlite3.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>

namespace fenrow::testing {
namespace {

QDateTime utc(int year, int month, int day, int hour = 0, int minute = 0, int second = 0)
{
    return QDateTime(QDate(year, month, day), QTime(hour, minute, second), Qt::UTC);
}

QStringList flowSummary(const FenrowStore &store)
{
    QStringList names;
    for (const TaskFlow *flow : store.flows())
        names << QStringLiteral("%1@%2").arg(flow->name).arg(flow->order);
    return names;
}

FenrowBackup roundTrip(const FenrowBackup &backup)
{
    return std::get<FenrowBackup>(FenrowBackup::decoded(*backup.encoded()));
}

FenrowBackup readBackup(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return std::get<FenrowBackup>(FenrowBackup::decoded(file.readAll()));
}

QStringList safetyBackups(const QTemporaryDir &folder)
{
    return QDir(folder.path()).entryList({FenrowBackup::safetyPrefix + "*"}, QDir::Files, QDir::Name);
}

// Lowers a limit of this process for the scope's length: a real fault the
// kernel gives SQLite and the file system calls, lifted afterwards.
class ProcessLimit {
public:
    ProcessLimit(int resource, rlim_t soft) : m_resource(resource)
    {
        getrlimit(resource, &m_saved);
        // Past the file size limit a write fails instead of ending us.
        m_savedSignal = std::signal(SIGXFSZ, SIG_IGN);
        rlimit lowered = m_saved;
        lowered.rlim_cur = soft;
        EXPECT_EQ(setrlimit(resource, &lowered), 0);
    }
    ~ProcessLimit()
    {
        setrlimit(m_resource, &m_saved);
        std::signal(SIGXFSZ, m_savedSignal);
    }

private:
    int m_resource;
    rlimit m_saved{};
    void (*m_savedSignal)(int) = nullptr;
};

qint64 fileSize(const QString &path)
{
    return QFileInfo(path).size();
}

// A document of one flow with `tasks` tasks, each with notes of `noteBytes`.
FenrowBackup largeDocument(int tasks, int noteBytes)
{
    FenrowBackup backup;
    backup.createdAt = utc(2026, 6, 10);
    FenrowBackup::Flow flow;
    flow.id = QUuid::createUuid();
    flow.name = QStringLiteral("Large");
    flow.createdAt = utc(2026, 6, 1);
    for (int i = 0; i < tasks; ++i) {
        flow.items.append({.id = QUuid::createUuid(), .title = QStringLiteral("Task %1").arg(i), .statusRaw = "pending",
                           .notes = QString(noteBytes, QLatin1Char('n')), .priorityRaw = "none", .colorRaw = "none",
                           .order = i, .createdAt = utc(2026, 6, 1)});
    }
    backup.flows.append(flow);
    return backup;
}

class BackupRestore : public ::testing::Test {
protected:
    static void fillRich(FenrowStore &store) { store.insertRecords(richBundle()); }

    // The description of a store as its backup brings it back: without the
    // trashed file and its link, and with an edge of no stored kind read as
    // the dependency it always meant.
    static QStringList describeKept(const FenrowStore &store)
    {
        QStringList lines = describe(store);
        for (QString &line : lines) {
            QStringList fields = line.split('|');
            if (fields[0] == "edge" && fields[5] == "-") {
                fields[5] = "dependency";
                line = fields.join('|');
            }
        }
        for (const TaskFlow *flow : store.flows()) {
            for (const FlowFile *file : flow->files()) {
                if (file->isTrashed) {
                    const QString id = file->id.toString(QUuid::WithoutBraces);
                    lines.removeIf([&](const QString &line) { return line.contains(id); });
                }
            }
        }
        return lines;
    }

    static void addFlowWithOrder(FenrowStore &store, const QString &name, qint64 order)
    {
        RecordBundle bundle;
        auto flow = std::make_unique<TaskFlow>();
        flow->id = QUuid::createUuid();
        flow->name = name;
        flow->order = order;
        flow->createdAt = utc(2026, 1, 1);
        bundle.flows.push_back(std::move(flow));
        store.insertRecords(std::move(bundle));
    }

    TestStore source;
    TestStore target;
};

TEST_F(BackupRestore, ReplaceBringsBackEveryFieldExceptTrashedFiles)
{
    fillRich(*source);
    const QStringList expected = describeKept(*source);
    ASSERT_EQ(expected.size(), describe(*source).size() - 2);
    const FenrowBackup backup = roundTrip(source->makeBackup(utc(2026, 6, 10, 7)));
    EXPECT_EQ(backup.createdAt, utc(2026, 6, 10, 7));
    ASSERT_EQ(backup.flows.size(), 2);
    EXPECT_EQ(backup.flows[0].name, "Empty") << "flows go in sidebar order";

    // Something to be replaced: it must be gone afterwards.
    target->addNode(QStringLiteral("Old"), *target->addFlow(QStringLiteral("Old flow")));
    QSignalSpy changes(&*target, &FenrowStore::changed);
    EXPECT_EQ(target->restoreBackup(backup, RestoreMode::replace), 2);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(describe(*target), expected);

    // What reached the file, not only what is in memory.
    target.reopen();
    EXPECT_EQ(describe(*target), expected);
}

TEST_F(BackupRestore, ReplaceWithAnEmptyDocumentEmptiesTheStore)
{
    fillRich(*target);
    FenrowBackup empty;
    empty.createdAt = utc(2026, 6, 10);
    QSignalSpy changes(&*target, &FenrowStore::changed);
    EXPECT_EQ(target->restoreBackup(roundTrip(empty), RestoreMode::replace), 0);
    EXPECT_EQ(changes.count(), 1);
    target.reopen();
    EXPECT_TRUE(target->flows().isEmpty());
    EXPECT_TRUE(target->templates().empty());
    EXPECT_TRUE(target->completionRecords().empty());

    // A store replaced by its own backup is the same store, ids and all.
    fillRich(*source);
    const QStringList kept = describeKept(*source);
    source->restoreBackup(roundTrip(source->makeBackup(utc(2026, 6, 10))), RestoreMode::replace);
    source.reopen();
    EXPECT_EQ(describe(*source), kept);
}

TEST_F(BackupRestore, MergeAddsOnlyWhatIsNewAfterTheExistingFlows)
{
    fillRich(*source);
    FenrowBackup backup = roundTrip(source->makeBackup(utc(2026, 6, 10)));

    // Into the store it came from: nothing new, but undo is gone all the same.
    FenrowHistory history(*source);
    const TaskFlow &garden = *source->flows()[1];
    history.recordAction(QStringLiteral("Rename"), garden,
                         [&] { source->setTitle(*garden.orderedItems()[1], QStringLiteral("Sow seeds")); });
    ASSERT_TRUE(history.canUndo(garden.id));
    QSignalSpy changes(&*source, &FenrowStore::changed);
    EXPECT_EQ(source->restoreBackup(backup, RestoreMode::merge), 0);
    EXPECT_EQ(changes.count(), 0);
    EXPECT_FALSE(history.canUndo(garden.id));
    EXPECT_EQ(garden.orderedItems()[1]->title, "Sow seeds") << "merge never updates an existing flow";

    // Into another store whose highest order is 4: flows of order 7 and 3
    // follow it, in the document's order.
    addFlowWithOrder(*target, QStringLiteral("A"), 1);
    addFlowWithOrder(*target, QStringLiteral("B"), 4);
    backup.flows[0].order = 7;
    backup.flows[1].order = 3;
    EXPECT_EQ(target->restoreBackup(backup, RestoreMode::merge), 2);
    target.reopen();
    EXPECT_EQ(flowSummary(*target), (QStringList{"A@1", "B@4", "Garden \"east\"@5", "Empty@6"}));
    EXPECT_EQ(target->completionRecords().size(), 2) << "records of a flow that came in come along";
    EXPECT_EQ(target->templates().size(), 2);
}

TEST_F(BackupRestore, MergeLeavesOutTheArchiveOfSkippedFlowsAndDuplicates)
{
    fillRich(*target);
    FenrowBackup backup = roundTrip(target->makeBackup(utc(2026, 6, 10)));
    const QUuid garden = backup.flows[1].id;
    const QUuid takenNode = backup.flows[1].items[0].id;

    // A new flow with a task whose id the store already uses, beside a
    // task of its own, and an edge between the two.
    FenrowBackup::Flow fresh;
    fresh.id = QUuid::createUuid();
    fresh.name = QStringLiteral("Fresh");
    fresh.createdAt = utc(2026, 6, 1);
    fresh.items = {backup.flows[1].items[0], backup.flows[1].items[1]};
    fresh.items[1].id = QUuid::createUuid();
    fresh.edges = {{QUuid::createUuid(), takenNode, fresh.items[1].id, "manual", "subtask", utc(2026, 6, 1)}};
    backup.flows.append(fresh);

    FenrowBackup::Record ofFresh = backup.records[0];
    ofFresh.id = QUuid::createUuid();
    ofFresh.flowID = fresh.id;
    ofFresh.kindRaw = QStringLiteral("finished");
    FenrowBackup::Record ofGarden = backup.records[0];
    ofGarden.id = QUuid::createUuid();
    ofGarden.flowID = garden;
    FenrowBackup::Record ofNobody = backup.records[0];
    ofNobody.id = QUuid::createUuid();
    ofNobody.flowID = QUuid::createUuid();
    backup.records << ofFresh << ofGarden << ofNobody;

    EXPECT_EQ(target->restoreBackup(backup, RestoreMode::merge), 1);
    target.reopen();
    const TaskFlow *added = nullptr;
    for (const TaskFlow *flow : target->flows())
        added = flow->id == fresh.id ? flow : added;
    ASSERT_NE(added, nullptr);
    QStringList titles;
    for (const FlowNode *node : added->orderedItems())
        titles << node->title;
    EXPECT_EQ(titles, QStringList{"Sow"}) << "the task with a taken id stays out";
    EXPECT_EQ(target->node(takenNode)->flow()->id, garden) << "and the store's own task is untouched";
    EXPECT_TRUE(added->edges().empty()) << "and so does the edge to it";

    QStringList kinds;
    for (const CompletionRecord *record : target->completionRecords()) {
        if (record->flowID == fresh.id)
            kinds << record->kindRaw;
        EXPECT_NE(record->id, ofGarden.id) << "the skipped flow's archive stays out";
        EXPECT_NE(record->id, ofNobody.id);
    }
    EXPECT_EQ(kinds, QStringList{"archived"}) << "an unknown kind comes in as archived";
}

TEST_F(BackupRestore, ReplaceReadsRawWordsTheWayTheFormatSays)
{
    fillRich(*source);
    FenrowBackup backup = roundTrip(source->makeBackup(utc(2026, 6, 10)));
    FenrowBackup::Flow &garden = backup.flows[1];
    garden.edges[0].sourceRaw = QStringLiteral("robot");
    garden.edges[1].kindRaw = QStringLiteral("parent");
    garden.edges[2].kindRaw.reset();
    garden.edges.append({QUuid::createUuid(), garden.items[0].id, QUuid::createUuid(), QStringLiteral("manual"),
                         std::nullopt, utc(2026, 1, 1)});
    backup.records[0].kindRaw = QStringLiteral("repeat");
    backup.records[1].kindRaw = QStringLiteral("REPEAT");
    // A record whose flow is in no document still comes with a replace.
    backup.records[1].flowID = QUuid::createUuid();
    backup.flows[0].order = 9;

    ASSERT_EQ(target->restoreBackup(backup, RestoreMode::replace), 2);
    target.reopen();
    EXPECT_EQ(flowSummary(*target), (QStringList{"Garden \"east\"@4", "Empty@9"})) << "replace keeps the orders";
    const TaskFlow &restored = *target->flows()[0];
    ASSERT_EQ(restored.edges().size(), 3) << "the edge to an unknown task is skipped";
    QStringList edges;
    for (const DependencyEdge *edge : restored.edges())
        edges << rawString(edge->source) + " " + rawString(*edge->kind);
    edges.sort();
    EXPECT_EQ(edges, (QStringList{"ai dependency", "manual dependency", "manual subtask"}));
    QStringList kinds;
    for (const CompletionRecord *record : target->completionRecords())
        kinds << record->kindRaw;
    kinds.sort();
    EXPECT_EQ(kinds, (QStringList{"archived", "repeat"}));
}

// Rows of a table as the file holds them, whatever the store has in memory.
qint64 rowsInFile(const QString &path, const char *table)
{
    sqlite3 *db = nullptr;
    qint64 rows = -1;
    if (sqlite3_open_v2(qPrintable(path), &db, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK) {
        sqlite3_stmt *count = nullptr;
        const QByteArray sql = QByteArray("SELECT COUNT(*) FROM ") + table;
        if (sqlite3_prepare_v2(db, sql.constData(), -1, &count, nullptr) == SQLITE_OK && sqlite3_step(count) == SQLITE_ROW)
            rows = sqlite3_column_int64(count, 0);
        sqlite3_finalize(count);
    }
    sqlite3_close(db);
    return rows;
}

TEST_F(BackupRestore, ALargeRestoreLeavesDeletionsCascading)
{
    // Large enough to be written as one bulk insert.
    FenrowBackup backup;
    backup.createdAt = utc(2026, 6, 10);
    for (const char *name : {"Big", "Small"}) {
        FenrowBackup::Flow flow;
        flow.id = QUuid::createUuid();
        flow.name = QString::fromLatin1(name);
        flow.createdAt = utc(2026, 6, 1);
        for (int i = 0; i < (flow.name == "Big" ? 2500 : 3); ++i) {
            flow.items.append({.id = QUuid::createUuid(), .title = QStringLiteral("Task %1").arg(i),
                               .statusRaw = "pending", .priorityRaw = "none", .colorRaw = "none", .order = i,
                               .createdAt = utc(2026, 6, 1)});
            if (i > 0)
                flow.edges.append({QUuid::createUuid(), flow.items[i - 1].id, flow.items[i].id, "manual", "subtask",
                                   utc(2026, 6, 1)});
        }
        backup.flows.append(flow);
    }
    ASSERT_EQ(target->restoreBackup(backup, RestoreMode::replace), 2);
    EXPECT_EQ(rowsInFile(target.path(), "flow_node"), 2503);

    // The flow's tasks and edges go with it in the file, too.
    target->deleteFlow(*target->flow(backup.flows[0].id));
    EXPECT_EQ(rowsInFile(target.path(), "flow_node"), 3);
    EXPECT_EQ(rowsInFile(target.path(), "dependency_edge"), 2);
    target.reopen();
    ASSERT_EQ(target->flows().size(), 1);
    EXPECT_EQ(target->flows()[0]->items().size(), 3);
}

TEST_F(BackupRestore, AReplaceThatCannotBeSavedLeavesTheStoreAsItWas)
{
    fillRich(*target);
    FenrowHistory history(*target);
    const TaskFlow &garden = *target->flows()[1];
    history.recordAction(QStringLiteral("Rename"), garden,
                         [&] { target->setTitle(*garden.orderedItems()[1], QStringLiteral("Sow seeds")); });
    const QStringList before = describe(*target);
    const FenrowBackup large = largeDocument(2000, 300);

    // Room in the log for a few pages more, not for 600 kB of tasks: a full
    // disk as SQLite meets it, after the erasing would have fitted.
    {
        const qint64 room = std::max(fileSize(target.path()), fileSize(target.path() + "-wal")) + (128 << 10);
        QSignalSpy changes(&*target, &FenrowStore::changed);
        const ProcessLimit full(RLIMIT_FSIZE, rlim_t(room));
        const FenrowStore::RestoreOutcome outcome = target->restore(large, RestoreMode::replace);
        EXPECT_FALSE(outcome.restored);
        EXPECT_TRUE(outcome.problem.startsWith("the store could not be saved")) << outcome.problem.toStdString();
        EXPECT_EQ(changes.count(), 0);
    }
    EXPECT_EQ(describe(*target), before) << "memory shows no restore that did not happen";
    EXPECT_TRUE(history.canUndo(garden.id));
    EXPECT_EQ(safetyBackups(target.folder), QStringList()) << "the safety backup of a failed replace goes";
    target.reopen();
    EXPECT_EQ(describe(*target), before) << "and neither does the file";

    // With room again, the same document comes in whole.
    EXPECT_TRUE(target->restore(large, RestoreMode::replace).restored);
    target.reopen();
    ASSERT_EQ(target->flows().size(), 1);
    EXPECT_EQ(target->flows()[0]->items().size(), 2000);
}

TEST_F(BackupRestore, AReplaceKeepsTheStoreAsItWasUntilALaterOneSucceeds)
{
    fillRich(*target);
    const QStringList before = describeKept(*target);
    fillRich(*source);
    const FenrowBackup other = roundTrip(source->makeBackup(utc(2026, 6, 10)));

    const FenrowStore::RestoreOutcome replaced = target->restore(other, RestoreMode::replace);
    ASSERT_TRUE(replaced.restored) << replaced.problem.toStdString();
    EXPECT_EQ(safetyBackups(target.folder), QStringList{"Fenrow Safety Backup 2026-06-10 09-00-00.fenrowbackup"});
    EXPECT_EQ(replaced.safetyBackup, target.folder.filePath(safetyBackups(target.folder)[0]));

    // Restoring it undoes the replace; the file restored from stays, beside
    // the safety backup of what it replaced.
    const QString first = replaced.safetyBackup;
    const FenrowStore::RestoreOutcome undone = target->restore(readBackup(first), RestoreMode::replace, first);
    ASSERT_TRUE(undone.restored);
    EXPECT_EQ(describe(*target), before);
    EXPECT_EQ(safetyBackups(target.folder).size(), 2);

    // A later replace that succeeds clears the earlier ones away.
    const FenrowStore::RestoreOutcome again = target->restore(other, RestoreMode::replace);
    ASSERT_TRUE(again.restored);
    EXPECT_EQ(safetyBackups(target.folder), QStringList{QFileInfo(again.safetyBackup).fileName()});

    // No safety backup, no replace: here no file can be opened for it.
    const QStringList now = describe(*target);
    {
        // The next descriptor a file would get is the first one refused.
        const int lowestFree = ::open("/dev/null", O_RDONLY);
        ASSERT_GE(lowestFree, 0);
        ::close(lowestFree);
        const ProcessLimit noFiles(RLIMIT_NOFILE, rlim_t(lowestFree));
        const FenrowStore::RestoreOutcome refused = target->restore(FenrowBackup(), RestoreMode::replace);
        EXPECT_FALSE(refused.restored);
        EXPECT_TRUE(refused.problem.startsWith("the store as it is could not be backed up to"))
            << refused.problem.toStdString();
    }
    target.reopen();
    EXPECT_EQ(describe(*target), now);
}

TEST_F(BackupRestore, RestoredValuesKeepToTheLimitsOfAnEditAndEdgesToTheRulesOfAGraph)
{
    fillRich(*source);
    FenrowBackup backup = roundTrip(source->makeBackup(utc(2026, 6, 10)));
    FenrowBackup::Flow &garden = backup.flows[1];
    garden.viewportScale = 1e6;
    FenrowBackup::Item &dig = garden.items[0];
    dig.estimateMinutes = std::numeric_limits<qint64>::max();
    dig.posX = 1e12;
    dig.manualWidth = 1e9;
    dig.manualHeight = 5;
    dig.dayPlanRank = -3;
    dig.repeatCount = -1;
    garden.items[1].estimateMinutes = 0;
    garden.files[0].posY = -1e12;
    backup.records[0].cycle = -5;

    // Dig → Sow (subtask), Sow → Water, Dig → Water are there; a loop on one
    // task, a second Dig → Sow and two edges that close cycles are not.
    const QUuid dg = garden.items[0].id, sow = garden.items[1].id, water = garden.items[2].id;
    const std::pair<QUuid, QUuid> added[] = {{dg, dg}, {dg, sow}, {water, dg}, {sow, dg}};
    for (const auto &[from, to] : added)
        garden.edges.append({QUuid::createUuid(), from, to, "manual", "dependency", utc(2026, 6, 1)});

    const FenrowStore::RestoreOutcome outcome = target->restore(backup, RestoreMode::merge);
    ASSERT_TRUE(outcome.restored);
    EXPECT_EQ(outcome.edgesLeftOut, 4);
    target.reopen();
    const TaskFlow &restored = *target->flow(garden.id);
    EXPECT_EQ(restored.edges().size(), 3);
    EXPECT_EQ(restored.viewportScale, CanvasZoom::maximumScale);
    const FlowNode &node = *target->node(dg);
    EXPECT_EQ(node.estimateMinutes, ValueLimits::maxEstimateMinutes);
    EXPECT_EQ(node.posX, CanvasBounds::limit);
    EXPECT_EQ(node.manualWidth, NodeSizeResolver::maxWidth);
    EXPECT_EQ(node.manualHeight, NodeSizeResolver::minHeight);
    EXPECT_EQ(node.dayPlanRank, 0);
    EXPECT_EQ(node.repeatCount, 0);
    EXPECT_EQ(target->node(sow)->estimateMinutes, std::nullopt);
    EXPECT_EQ(restored.files()[0]->posY, -CanvasBounds::limit);
    for (const CompletionRecord *record : target->completionRecords())
        EXPECT_GE(record->cycle, 0);
}

TEST_F(BackupRestore, ABackupNeverFailsOnAValueTheStoreHolds)
{
    // Values no edit makes, put straight into the file.
    fillRich(*target);
    const QUuid dig = target->flows()[1]->orderedItems()[0]->id;
    const auto far = [](int year) { return QDateTime(QDate(year, 1, 1), QTime(0, 0), Qt::UTC); };
    RecordBundle bundle;
    auto flow = std::make_unique<TaskFlow>();
    flow->id = QUuid::createUuid();
    flow->name = QStringLiteral("Imported");
    flow->createdAt = utc(2026, 6, 1);
    auto node = std::make_unique<FlowNode>();
    node->id = QUuid::createUuid();
    node->title = QStringLiteral("Far off");
    node->dueDate = far(20260);
    node->startDate = far(-5);
    node->estimateMinutes = std::numeric_limits<qint64>::max();
    node->posY = 1e12;
    node->createdAt = far(10000);
    node->setFlow(flow.get());
    const QUuid farID = node->id;
    flow->items().add(std::move(node));
    bundle.flows.push_back(std::move(flow));
    target->insertRecords(std::move(bundle));

    // In memory this session: the backup is written, and says what it
    // could not keep, by task and field.
    QStringList adjusted;
    const FenrowBackup backup = target->makeBackup(utc(2026, 6, 10), &adjusted);
    QString problem;
    ASSERT_TRUE(backup.encoded(&problem)) << problem.toStdString();
    EXPECT_EQ(adjusted, (QStringList{
                            "task \"Far off\" in flow \"Imported\": start date left out (year -5 cannot be written)",
                            "task \"Far off\" in flow \"Imported\": due date left out (year 20260 cannot be written)",
                            "task \"Far off\" in flow \"Imported\": position written as 20000 (was 1e+12)",
                            "task \"Far off\" in flow \"Imported\": creation date written as the moment of the "
                            "backup (year 10000 cannot be written)",
                        }));

    // Opened again, the store holds them to their limits, for good.
    target.reopen();
    const FlowNode &held = *target->node(farID);
    EXPECT_EQ(held.dueDate, std::nullopt);
    EXPECT_EQ(held.startDate, std::nullopt);
    EXPECT_EQ(held.estimateMinutes, ValueLimits::maxEstimateMinutes);
    EXPECT_EQ(held.posY, CanvasBounds::limit);
    EXPECT_EQ(held.createdAt, target.clock.now());
    EXPECT_EQ(target->node(dig)->estimateMinutes, 150) << "values within the limits are left alone";
    adjusted.clear();
    EXPECT_TRUE(target->makeBackup(utc(2026, 6, 10), &adjusted).encoded());
    EXPECT_EQ(adjusted, QStringList());
    EXPECT_FALSE(target->hasChanges()) << "and wrote them back";
}

} // namespace
} // namespace fenrow::testing
