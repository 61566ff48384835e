#include "CommandLineTest.h"

#include "cli/ExitStatus.h"

#include "domain/NodeRecurrence.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace fenrow::testing {
namespace {

using ArchiveCommandsTest = CommandLineTest;

const QString now = QStringLiteral("2026-05-03T12:00:00");

// Titles of a flow's tasks, in order.
QStringList titles(const TaskFlow &flow)
{
    QStringList list;
    for (const FlowNode *node : flow.orderedItems())
        list.append(node->title);
    return list;
}

TEST_F(ArchiveCommandsTest, ArchiveAsksFirstThenTakesTheDoneTasks)
{
    addFlows({"Tax"});
    addTasks("Tax", {NodeStatus::done, NodeStatus::pending, NodeStatus::done});
    const QStringList archiveTax{"archive", "tax"};

    CommandResult result = run(archiveTax, "n\n", true);
    EXPECT_EQ(result.status, exitFailure);
    EXPECT_TRUE(result.err.startsWith("Archive 2 done tasks of \"Tax\"? [y/N] ")) << result.err.toStdString();
    EXPECT_EQ(openStore()->completionRecords().size(), 0u);

    result = run(archiveTax, "y\n", true);
    EXPECT_EQ(result.status, exitSuccess) << result.err.toStdString();
    EXPECT_EQ(result.out, "Archived 2 done tasks of \"Tax\".\n");
    {
        auto store = openStore();
        EXPECT_EQ(store->flows().first()->items().size(), 1u);
        EXPECT_EQ(store->completionRecords().size(), 2u);
    }

    // Nothing left to archive: no question, and no failure.
    result = run(archiveTax);
    EXPECT_EQ(result.status, exitSuccess);
    EXPECT_EQ(result.out, "Flow \"Tax\" has no done tasks to archive.\n");
}

// Adds a record as a restored backup may hold it.
void insertRecord(FenrowStore &store, const QUuid &flowID, const QString &flowName, const QString &title,
                  const QDateTime &completedAt, const QByteArray &payload)
{
    auto record = std::make_unique<CompletionRecord>();
    record->id = QUuid::createUuid();
    record->nodeID = QUuid::createUuid();
    record->flowID = flowID;
    record->flowName = flowName;
    record->title = title;
    record->kindRaw = CompletionRecord::archivedKind;
    record->completedAt = completedAt;
    record->payload.set(payload);
    RecordBundle bundle;
    bundle.completionRecords.push_back(std::move(record));
    store.insertRecords(std::move(bundle));
}

class ArchivedRecordsTest : public CommandLineTest {
protected:
    // "Résumé draft" archived the day before `now`, with "Old note" of a
    // flow deleted since; two rounds of a daily "Water plants" today.
    ArchivedRecordsTest()
    {
        setupClock.set(QDateTime(QDate(2026, 5, 2), QTime(18, 30)));
        auto store = openStore();
        const TaskFlow *jobs = store->addFlow("Jobs");
        const TaskFlow *home = store->addFlow("Home");
        store->setStatus(NodeStatus::done, *store->addNode("Résumé draft", *jobs));
        store->addNode("Cover letter", *jobs);
        store->archiveDone(*jobs);
        const QByteArray payload = *store->completionRecords()[0]->payload.value();
        insertRecord(*store, QUuid::createUuid(), "Gone", "Old note", setupClock.now(), payload);

        const FlowNode *plants = store->addNode("Water plants", *home);
        store->setRecurrence(NodeRecurrence{.rule = RecurrenceRule::daily, .interval = 1, .monthDay = {}}, *plants);
        setupClock.set(QDateTime(QDate(2026, 5, 3), QTime(9, 15)));
        store->setStatus(NodeStatus::done, *plants);
        setupClock.advanceSeconds(60);
        store->setStatus(NodeStatus::done, *plants);
    }

    QJsonArray listed(const QStringList &arguments)
    {
        const CommandResult result = run(arguments + QStringList{"--json", "--now", now});
        EXPECT_EQ(result.status, exitSuccess) << result.err.toStdString();
        return QJsonDocument::fromJson(result.out.toUtf8()).array();
    }

    QString idOf(const QString &title)
    {
        for (const QJsonValue &record : listed({"archived"})) {
            if (record["title"].toString() == title)
                return record["id"].toString();
        }
        ADD_FAILURE() << "no record of " << title.toStdString();
        return {};
    }
};

TEST_F(ArchivedRecordsTest, ListsByDayNewestFirstAndFilters)
{
    const CommandResult plain = run({"archived", "--now", now});
    EXPECT_EQ(plain.status, exitSuccess);
    const QStringList lines = plain.out.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 6) << plain.out.toStdString();
    EXPECT_EQ(lines[0], "Today");
    const QStringList round = lines[1].trimmed().split(QRegularExpression("\\s{2,}"));
    EXPECT_EQ(round.size(), 5) << lines[1].toStdString();
    EXPECT_EQ(round.first(3), (QStringList{"09:16", "Water plants", "Home"}));
    EXPECT_EQ(round.last(), "repeated (round 2)");
    EXPECT_TRUE(lines[2].startsWith("  09:15  Water plants  Home  ") && lines[2].endsWith("(round 1)"));
    EXPECT_EQ(lines[3], "Yesterday");
    EXPECT_TRUE(lines[4].contains("Résumé draft") || lines[5].contains("Résumé draft"));
    EXPECT_TRUE((lines[4] + lines[5]).contains("flow deleted"));
    // The id column holds the start of exactly one record's full id.
    const QString shortId = round[3];
    EXPECT_TRUE(shortId.size() >= 8 && shortId.size() < 36) << shortId.toStdString();
    qsizetype starts = 0;
    for (const QJsonValue &record : listed({"archived"}))
        starts += record["id"].toString().startsWith(shortId) ? 1 : 0;
    EXPECT_EQ(starts, 1);

    const QJsonArray resume = listed({"archived", " resume "});
    ASSERT_EQ(resume.size(), 1);
    const QJsonObject record = resume[0].toObject();
    EXPECT_EQ(record["title"].toString(), "Résumé draft");
    EXPECT_EQ(record["kind"].toString(), "archived");
    EXPECT_EQ(record["flowName"].toString(), "Jobs");
    EXPECT_EQ(record["completedAt"].toString(), "2026-05-02T18:30:00+02:00");
    EXPECT_TRUE(record["canRestore"].toBool());

    EXPECT_EQ(run({"archived", "tax"}).out, "Nothing in the archive matches \"tax\".\n");
}

TEST_F(ArchivedRecordsTest, RestoreTaskBringsTheTaskBackOnce)
{
    const QString id = idOf("Résumé draft");
    const CommandResult restored = run({"restore-task", id.left(8).toLower()});
    ASSERT_EQ(restored.status, exitSuccess) << restored.err.toStdString();
    EXPECT_TRUE(restored.out.startsWith("Restored to flow \"Jobs\":\nRésumé draft\n")) << restored.out.toStdString();
    EXPECT_TRUE(restored.out.contains("  state  done\n"));
    {
        auto store = openStore();
        EXPECT_EQ(titles(*store->flows().first()), (QStringList{"Cover letter", "Résumé draft"}));
    }
    const CommandResult again = run({"restore-task", id});
    EXPECT_EQ(again.status, exitFailure);
    EXPECT_TRUE(again.err.contains("no record in the archive")) << again.err.toStdString();
}

TEST_F(ArchivedRecordsTest, RestoreTaskRefusesWhatCannotComeBack)
{
    {
        auto store = openStore();
        insertRecord(*store, store->flows().first()->id, "Jobs", "Torn", setupClock.now(), "{\"title\": 3");
    }
    const struct {
        QString title;
        QString problem;
    } refusals[] = {
        {"Water plants", "is a finished round of the repeating task \"Water plants\""},
        {"Old note", "\"Old note\" cannot be restored: its flow \"Gone\" no longer exists"},
        {"Torn", "\"Torn\" cannot be restored: its archived copy is damaged"},
    };
    for (const auto &refusal : refusals) {
        const CommandResult result = run({"restore-task", idOf(refusal.title)});
        EXPECT_EQ(result.status, exitFailure) << refusal.title.toStdString();
        EXPECT_TRUE(result.err.contains(refusal.problem)) << result.err.toStdString();
    }
    EXPECT_EQ(listed({"archived"}).size(), 5);
    EXPECT_EQ(titles(*openStore()->flows().first()), QStringList{"Cover letter"});

    // Too short to tell records apart safely.
    EXPECT_EQ(run({"restore-task", idOf("Torn").left(7)}).status, exitUsage);
}

TEST_F(ArchivedRecordsTest, ArchivedDeleteAsksThenTakesOneRecord)
{
    const QString id = idOf("Résumé draft");
    CommandResult result = run({"archived", "delete", id.left(8)}, "n\n", true);
    EXPECT_EQ(result.status, exitFailure);
    EXPECT_TRUE(result.err.startsWith("Delete the archive record of \"Résumé draft\" (flow \"Jobs\", 2026-05-02)? "
                                      "The task can then no longer be restored. [y/N] "))
        << result.err.toStdString();
    EXPECT_EQ(run({"archived", "delete", id}).status, exitFailure);
    EXPECT_EQ(listed({"archived"}).size(), 4);

    result = run({"archived", "delete", id, "--yes", "--json"});
    ASSERT_EQ(result.status, exitSuccess) << result.err.toStdString();
    EXPECT_EQ(QJsonDocument::fromJson(result.out.toUtf8()).object()["id"].toString(), id);
    result = run({"archived", "delete", idOf("Water plants")}, "y\n", true);
    EXPECT_EQ(result.out, "Deleted the archive record of round 2 of \"Water plants\".\n");
    QStringList left;
    for (const QJsonValue &record : listed({"archived"}))
        left.append(record["title"].toString());
    EXPECT_EQ(left, (QStringList{"Water plants", "Old note"}));
    EXPECT_EQ(run({"archived", "delete", id}).status, exitFailure);
}

} // namespace
} // namespace fenrow::testing
