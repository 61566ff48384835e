#include "CommandLineTest.h"

#include "cli/ExitStatus.h"

#include "domain/FlowFileImport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <sqlite3.h>

namespace fenrow::testing {
namespace {

// Launch: Design and Build, with "brief.pdf" linked to Design and
// "budget.ods"; Home: Water, with "photo.png".
class FileCommandsTest : public CommandLineTest {
protected:
    void SetUp() override
    {
        addFlows({"Launch", "Home"});
        auto store = openStore();
        const TaskFlow &launch = *store->flows()[0];
        const TaskFlow &home = *store->flows()[1];
        const FlowNode *design = store->addNode("Design", launch);
        store->addNode("Build", launch);
        store->addNode("Water", home);
        const FlowFile *brief = attach(*store, "brief.pdf", launch);
        attach(*store, "budget.ods", launch);
        attach(*store, "photo.png", home);
        store->linkFile(*brief, *design);
    }

    static const FlowFile *attach(FenrowStore &store, const QString &name, const TaskFlow &flow)
    {
        const QByteArray bytes = name.toUtf8();
        return store.attachFile({name, {}, bytes.size(), bytes}, 0, 0, flow);
    }

    // Every file as the store keeps it: flow, name, trashed or not, and the
    // tasks it is linked to.
    QString files()
    {
        QString all;
        auto store = openStore();
        for (const TaskFlow *flow : store->flows()) {
            for (const FlowFile *file : flow->files()) {
                QStringList tasks;
                for (const FileLink *link : file->links())
                    tasks.append(link->node()->title);
                all += QStringLiteral("%1/%2%3 -> %4\n")
                           .arg(flow->name, file->filename, file->isTrashed ? " (trashed)" : "", tasks.join(','));
            }
        }
        return all;
    }

    // Each refusal: the exit status, a message naming why, nothing changed.
    void expectRefused(const QStringList &arguments, int status, const QString &why)
    {
        SCOPED_TRACE(arguments.join(' ').toStdString());
        const QString before = files();
        const CommandResult result = run(arguments);
        EXPECT_EQ(result.status, status);
        EXPECT_TRUE(result.err.contains(why)) << result.err.toStdString();
        EXPECT_TRUE(result.out.isEmpty()) << result.out.toStdString();
        EXPECT_EQ(files(), before);
    }

    // Rows of the table that keeps the files' contents.
    int storedContents()
    {
        sqlite3 *db = nullptr;
        EXPECT_EQ(sqlite3_open(qPrintable(folder.filePath("default.store")), &db), SQLITE_OK);
        sqlite3_stmt *statement = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(db, "SELECT COUNT(*) FROM flow_file_data", -1, &statement, nullptr), SQLITE_OK);
        const int count = sqlite3_step(statement) == SQLITE_ROW ? sqlite3_column_int(statement, 0) : -1;
        sqlite3_finalize(statement);
        sqlite3_close(db);
        return count;
    }
};

TEST_F(FileCommandsTest, LinkAndUnlinkWithTheirRefusals)
{
    CommandResult result = run({"link", "bud", "build"});
    ASSERT_EQ(result.status, exitSuccess) << result.err.toStdString();
    EXPECT_EQ(result.out, "Linked \"budget.ods\" to \"Build\" in flow \"Launch\".\n");
    const QJsonObject linked =
        QJsonDocument::fromJson(run({"link", "BRIEF.PDF", "Build", "--json"}).out.toUtf8()).object();
    EXPECT_EQ(linked["file"]["filename"].toString(), "brief.pdf");
    EXPECT_EQ(linked["task"]["title"].toString(), "Build");
    EXPECT_EQ(files(), "Launch/brief.pdf -> Design,Build\nLaunch/budget.ods -> Build\nHome/photo.png -> \n");

    expectRefused({"link", "brief", "Design"}, exitUsage, "\"brief.pdf\" is linked to \"Design\" (Launch) already");
    expectRefused({"link", "photo", "Design"}, exitUsage, "a file links only to tasks of its own flow");
    expectRefused({"unlink", "photo", "Water"}, exitUsage, "\"photo.png\" is not linked to \"Water\" (Home)");
    expectRefused({"unlink", "brief", "Water"}, exitUsage, "a file links only to tasks of its own flow");
    expectRefused({"link", "b", "Water"}, exitFailure, "\"b\" matches more than one file");
    expectRefused({"link", "brief", "Water", "--flow", "Home"}, exitFailure, "no file matches \"brief\"");

    result = run({"unlink", linked["file"]["id"].toString(), "design"});
    ASSERT_EQ(result.status, exitSuccess) << result.err.toStdString();
    EXPECT_EQ(result.out, "Unlinked \"brief.pdf\" from \"Design\" in flow \"Launch\".\n");
    EXPECT_EQ(files(), "Launch/brief.pdf -> Build\nLaunch/budget.ods -> Build\nHome/photo.png -> \n");
}

TEST_F(FileCommandsTest, TrashKeepsTheFileUntilThePurgeTakesTheTrashWhole)
{
    CommandResult result = run({"file", "trash", "brief"});
    ASSERT_EQ(result.status, exitSuccess) << result.err.toStdString();
    EXPECT_TRUE(result.out.startsWith("Put \"brief.pdf\" of flow \"Launch\" in the trash.\nNo Fenrow window is "
                                      "running to undo this"))
        << result.out.toStdString();
    EXPECT_EQ(run({"file", "trash", "photo", "--json"}).status, exitSuccess);
    EXPECT_EQ(files(),
              "Launch/brief.pdf (trashed) -> Design\nLaunch/budget.ods -> \nHome/photo.png (trashed) -> \n");
    // Off the canvas, so no longer named.
    expectRefused({"file", "trash", "brief"}, exitFailure, "no file matches \"brief\"");
    expectRefused({"link", "brief", "Build"}, exitFailure, "no file matches \"brief\"");

    expectRefused({"file", "purge"}, exitFailure, "the 2 trashed files were not purged: nobody confirmed it");
    const QString before = files();
    result = run({"file", "purge"}, "n\n", true);
    EXPECT_EQ(result.status, exitFailure);
    EXPECT_TRUE(result.err.contains("\"brief.pdf\" (Launch)  1 link\n")) << result.err.toStdString();
    EXPECT_EQ(files(), before);
    EXPECT_EQ(storedContents(), 3);

    result = run({"file", "purge", "--yes", "--json"});
    ASSERT_EQ(result.status, exitSuccess) << result.err.toStdString();
    const QJsonArray purged = QJsonDocument::fromJson(result.out.toUtf8()).array();
    ASSERT_EQ(purged.size(), 2);
    EXPECT_EQ(purged[0]["filename"].toString(), "brief.pdf");
    EXPECT_EQ(purged[1]["flowName"].toString(), "Home");
    EXPECT_EQ(files(), "Launch/budget.ods -> \n");
    EXPECT_EQ(storedContents(), 1) << "the contents go with the files";

    EXPECT_EQ(run({"file", "purge"}).out, "The trash holds no files.\n");
}

} // namespace
} // namespace fenrow::testing
