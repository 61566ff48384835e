#include "CommandLineTest.h"

#include "cli/ExitStatus.h"

#include "formats/FenrowBackup.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScopeGuard>

namespace fenrow::testing {
namespace {

class BackupCommandsTest : public CommandLineTest {
protected:
    BackupCommandsTest()
    {
        addFlows({"Home", "Work"});
        addTasks("Home", {NodeStatus::done, NodeStatus::pending});
    }

    QString backupIn(const QString &folderPath)
    {
        return QDir(folderPath).filePath("Fenrow Backup 2026-05-04.fenrowbackup");
    }

    QString writeFile(const QString &name, const QByteArray &bytes)
    {
        const QString path = folder.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return path;
    }

    QByteArray readFile(const QString &path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return file.readAll();
    }

    // Today's backup, written into the test's folder.
    QString backUp()
    {
        const CommandResult result = run({"backup", folder.path(), "--now", "2026-05-04T22:30:00"});
        EXPECT_EQ(result.status, exitSuccess) << result.err.toStdString();
        return backupIn(folder.path());
    }
};

TEST_F(BackupCommandsTest, BacksUpUnderTheNameOfTheDay)
{
    const CommandResult done = run({"backup", folder.path(), "--now", "2026-05-04T22:30:00"});
    EXPECT_EQ(done.status, exitSuccess) << done.err.toStdString();
    EXPECT_EQ(done.out, QStringLiteral("Backed up 2 flows, 0 templates and 0 archive records to \"%1\".\n")
                            .arg(backupIn(folder.path())));
    EXPECT_TRUE(std::holds_alternative<FenrowBackup>(FenrowBackup::decoded(readFile(backupIn(folder.path())))));

    // A second one on the same day takes the same name.
    const QJsonObject again =
        QJsonDocument::fromJson(run({"backup", folder.path(), "--now", "2026-05-04T08:00:00", "--json"}).out.toUtf8())
            .object();
    EXPECT_EQ(again["path"].toString(), backupIn(folder.path()));
    EXPECT_EQ(again["flows"].toInt(), 2);

    // Into the current folder when none is given, or to the file named.
    QTemporaryDir elsewhere;
    const QString previous = QDir::currentPath();
    const auto back = qScopeGuard([&] { QDir::setCurrent(previous); });
    ASSERT_TRUE(QDir::setCurrent(elsewhere.path()));
    EXPECT_EQ(run({"backup", "--now", "2026-05-04T10:00:00"}).status, exitSuccess);
    EXPECT_TRUE(QFile::exists(backupIn(elsewhere.path())));
    EXPECT_EQ(run({"backup", "mine.fenrowbackup"}).status, exitSuccess);
    EXPECT_TRUE(QFile::exists(elsewhere.filePath("mine.fenrowbackup")));

    const CommandResult failed = run({"backup", folder.filePath("missing/b.fenrowbackup")});
    EXPECT_EQ(failed.status, exitFailure);
    EXPECT_TRUE(failed.err.startsWith("fenrow: Backup failed: ")) << failed.err.toStdString();
    EXPECT_TRUE(failed.err.contains("check that the folder exists"));
}

TEST_F(BackupCommandsTest, MergeAddsOnlyWhatIsMissing)
{
    const QString path = backUp();
    const CommandResult nothing = run({"restore", path, "--merge"});
    EXPECT_EQ(nothing.status, exitSuccess) << nothing.err.toStdString();
    EXPECT_EQ(nothing.out, "Every flow in the backup is already here; nothing was added.\n");

    ASSERT_EQ(run({"flow", "delete", "home", "--yes"}).status, exitSuccess);
    addFlows({"Garden"});
    const CommandResult merged = run({"restore", path, "--merge"});
    EXPECT_EQ(merged.out, QStringLiteral("Merged 1 flow from \"%1\"; the store now has 3 flows.\n").arg(path));
    EXPECT_EQ(flowNames(), (QStringList{"Work", "Garden", "Home"}));
}

TEST_F(BackupCommandsTest, ReplaceAsksFirst)
{
    const QString path = backUp();
    addFlows({"Garden"});

    const CommandResult declined = run({"restore", path, "--replace"}, "n\n", true);
    EXPECT_EQ(declined.status, exitFailure);
    EXPECT_TRUE(declined.err.contains("Replace all flows, templates and archive records with the backup's 2 flows, "
                                      "0 templates and 0 archive records? [y/N]"))
        << declined.err.toStdString();
    EXPECT_EQ(flowNames().size(), 3);

    const CommandResult replaced = run({"restore", path, "--replace"}, "y\n", true);
    EXPECT_EQ(replaced.status, exitSuccess) << replaced.err.toStdString();
    const QStringList kept = QDir(folder.path()).entryList({"Fenrow Safety Backup *"});
    ASSERT_EQ(kept.size(), 1);
    EXPECT_EQ(replaced.out, QStringLiteral("Restored 2 flows from \"%1\"; the store now has 2 flows.\n"
                                           "What the store held before is in \"%2\"; restore it with --replace "
                                           "to undo this.\n")
                                .arg(path, folder.filePath(kept[0])));
    EXPECT_EQ(flowNames(), (QStringList{"Home", "Work"}));

    // Which undoes the replace.
    const QJsonObject json = QJsonDocument::fromJson(run({"restore", folder.filePath(kept[0]), "--replace", "--yes",
                                                          "--json"})
                                                         .out.toUtf8())
                                 .object();
    EXPECT_EQ(json["flowsAdded"].toInt(), 3);
    EXPECT_EQ(json["mode"].toString(), "replace");
    EXPECT_NE(json["safetyBackup"].toString(), folder.filePath(kept[0]));
    EXPECT_EQ(flowNames(), (QStringList{"Home", "Work", "Garden"}));
}

// The store's own rules hold the restored records (proven in full by the
// store's tests); here, that the command tells what it left out.
TEST_F(BackupCommandsTest, ARestoreSaysWhichConnectionsItLeftOut)
{
    QJsonObject root = QJsonDocument::fromJson(readFile(backUp())).object();
    QJsonArray flows = root["flows"].toArray();
    QJsonObject home = flows[0].toObject();
    ASSERT_EQ(home["name"], "Home");
    const QJsonValue task = home["items"].toArray()[1].toObject()["id"];
    home["edges"] = QJsonArray{QJsonObject{{"id", "0C000000-0000-4000-8000-000000000001"},
                                           {"fromID", task},
                                           {"toID", task},
                                           {"sourceRaw", "manual"},
                                           {"createdAt", "2026-05-04T10:00:00Z"}}};
    flows[0] = home;
    root["flows"] = flows;
    const QString edited = writeFile("edited.fenrowbackup", QJsonDocument(root).toJson());
    const CommandResult restored = run({"restore", edited, "--replace", "--yes"});
    EXPECT_TRUE(restored.out.contains("Left out 1 connection that would have led a task back to itself or repeated "
                                      "another.\n"))
        << restored.out.toStdString();
    EXPECT_TRUE(openStore()->flows()[0]->edges().empty());
}

TEST_F(BackupCommandsTest, RefusesDocumentsItCannotRestoreAndChangesNothing)
{
    const QString path = backUp();
    struct Case {
        QString file;
        QString reason;
    };
    // What each refusal says is the backup reader's; the command adds that nothing changed.
    const QList<Case> cases{
        {writeFile("cut.fenrowbackup", readFile(path).left(30)),
         "it is damaged: line 1, column 31: the document ends inside a string; nothing was changed"},
        {folder.filePath("gone.fenrowbackup"), "there is no file"},
    };
    addFlows({"Garden"});
    for (const Case &c : cases) {
        SCOPED_TRACE(c.file.toStdString());
        const CommandResult result = run({"restore", c.file, "--replace", "--yes"});
        EXPECT_EQ(result.status, exitFailure);
        EXPECT_TRUE(result.err.contains(c.reason)) << result.err.toStdString();
    }
    EXPECT_EQ(flowNames(), (QStringList{"Home", "Work", "Garden"}));

    EXPECT_EQ(run({"restore", path}).status, exitUsage);
    const CommandResult both = run({"restore", path, "--merge", "--replace"});
    EXPECT_EQ(both.status, exitUsage);
    EXPECT_TRUE(both.err.contains("say how to restore: --merge or --replace")) << both.err.toStdString();
}

} // namespace
} // namespace fenrow::testing
