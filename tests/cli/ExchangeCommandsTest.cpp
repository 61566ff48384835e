#include "CommandLineTest.h"

#include "cli/ExitStatus.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace fenrow::testing {
namespace {

// "Launch": Plan (done) with the subtask Draft, then Build after Plan.
class ExchangeCommandsTest : public CommandLineTest {
protected:
    ExchangeCommandsTest()
    {
        auto store = openStore();
        const TaskFlow *launch = store->addFlow("Launch");
        const FlowNode *plan = store->addNode("Plan", *launch);
        const FlowNode *draft = store->addNode("Draft", *launch);
        const FlowNode *build = store->addNode("Build", *launch);
        store->addEdge(*plan, *draft, EdgeSource::manual, EdgeKind::subtask);
        store->addEdge(*plan, *build, EdgeSource::manual, EdgeKind::dependency);
        store->setStatus(NodeStatus::done, *plan);
        store->setNotes(*build, "Use the *good* screws");
    }

    QByteArray readFile(const QString &path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return file.readAll();
    }

    QString fixture(const char *name) const
    {
        return QStringLiteral(FENROW_SOURCE_DIR "/tests/core/fixtures/opml/") + QLatin1StringView(name);
    }

    // "Title: Plan, Draft; Plan > Draft, Plan -> Build" for the flow at a
    // 1-based position in the sidebar.
    QString describeFlow(int position)
    {
        auto store = openStore();
        const TaskFlow &flow = *store->flows().at(position - 1);
        QStringList titles;
        for (const FlowNode *node : flow.orderedItems())
            titles << node->title;
        QStringList edges;
        for (const DependencyEdge *edge : flow.edges())
            edges << edge->fromItem()->title + (edge->isSubtask() ? " > " : " -> ") + edge->toItem()->title;
        edges.sort();
        return flow.name + ": " + titles.join(", ") + "; " + edges.join(", ");
    }
};

TEST_F(ExchangeCommandsTest, ExportsMarkdownToTheTerminalOrAFile)
{
    const CommandResult printed = run({"export", "markdown", "launch"});
    EXPECT_EQ(printed.status, exitSuccess) << printed.err.toStdString();
    EXPECT_EQ(printed.out, "# Launch\n\n1 of 3 done\n\n"
                           "- [x] Plan\n  - [ ] Draft\n- [ ] Build\n  _(after Plan)_\n  > Use the *good* screws\n")
        << printed.out.toStdString();

    const QString path = folder.filePath("launch.md");
    const CommandResult written = run({"export", "markdown", "Launch", "-o", path});
    EXPECT_EQ(written.status, exitSuccess);
    EXPECT_EQ(written.out, QStringLiteral("Wrote flow \"Launch\" as Markdown to \"%1\".\n").arg(path));
    EXPECT_EQ(QString::fromUtf8(readFile(path)), printed.out);

    const CommandResult json = run({"export", "markdown", "Launch", "--output=" + path, "--json"});
    EXPECT_EQ(QJsonDocument::fromJson(json.out.toUtf8()).object()["path"].toString(), path);

    // Nothing is written where the folder is missing.
    const QString nowhere = folder.filePath("missing/launch.md");
    const CommandResult failed = run({"export", "markdown", "Launch", "-o", nowhere});
    EXPECT_EQ(failed.status, exitFailure);
    EXPECT_TRUE(failed.err.startsWith("fenrow: Markdown export failed: ")) << failed.err.toStdString();
    EXPECT_TRUE(failed.err.contains("check that the folder exists"));
    EXPECT_FALSE(QFile::exists(nowhere));
    EXPECT_EQ(run({"export", "markdown", "Nope"}).status, exitFailure);
}

TEST_F(ExchangeCommandsTest, AnExportedOutlineImportsAsTheSameFlow)
{
    const QString path = folder.filePath("launch.opml");
    ASSERT_EQ(run({"export", "opml", "launch", "-o", path}).status, exitSuccess);
    EXPECT_TRUE(readFile(path).startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<opml version=\"2.0\">\n"));
    EXPECT_EQ(QString::fromUtf8(readFile(path)), run({"export", "opml", "launch"}).out);

    const CommandResult imported = run({"import", path});
    EXPECT_EQ(imported.status, exitSuccess) << imported.err.toStdString();
    EXPECT_TRUE(imported.out.startsWith("Imported flow \"Launch\" (")) << imported.out.toStdString();
    EXPECT_TRUE(imported.out.contains(") at position 2, with 3 tasks.\n"
                                      "The file brought its own dependencies between tasks; they are in place.\n"));
    EXPECT_EQ(describeFlow(2), describeFlow(1));

    const QJsonObject json = QJsonDocument::fromJson(run({"import", path, "--json"}).out.toUtf8()).object();
    EXPECT_TRUE(json["hasDependencies"].toBool());
    EXPECT_EQ(json["name"].toString(), "Launch");
}

TEST_F(ExchangeCommandsTest, ImportsForeignOutlinesAndRefusesBrokenOnes)
{
    const CommandResult states = run({"import", fixture("states.opml")});
    EXPECT_EQ(states.status, exitSuccess) << states.err.toStdString();
    EXPECT_TRUE(states.out.contains("Imported flow \"States\""));
    EXPECT_TRUE(states.out.endsWith("with 59 tasks.\n")) << "no dependencies of its own";

    // Without a title the flow is named after the file.
    const QString feeds = folder.filePath("My feeds.opml");
    ASSERT_TRUE(QFile::copy(fixture("empty-head.opml"), feeds));
    run({"import", feeds});
    EXPECT_EQ(flowNames(), (QStringList{"Launch", "States", "My feeds"}));

    for (const char *broken : {"malformed.opml", "no-outlines.opml"}) {
        const CommandResult refused = run({"import", fixture(broken)});
        EXPECT_EQ(refused.status, exitFailure) << broken;
        EXPECT_TRUE(refused.err.contains("it is not an OPML outline with at least one entry, or it is damaged; "
                                         "nothing was added"))
            << refused.err.toStdString();
    }
    const CommandResult missing = run({"import", folder.filePath("gone.opml")});
    EXPECT_EQ(missing.status, exitFailure);
    EXPECT_TRUE(missing.err.contains("there is no file")) << missing.err.toStdString();
    EXPECT_EQ(flowNames().size(), 3);
}

} // namespace
} // namespace fenrow::testing
