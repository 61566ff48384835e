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
};

TEST_F(ExchangeCommandsTest, ExportsMarkdownToTheTerminalOrAFile)
{
    const CommandResult printed = run({"export", "markdown", "launch"});
    EXPECT_EQ(printed.status, exitSuccess) << printed.err.toStdString();
    {
        auto store = openStore();
        EXPECT_EQ(printed.out, store->markdown(*store->flows().first()));
    }

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

TEST_F(ExchangeCommandsTest, AnExportedOutlineImportsAsANewFlow)
{
    const QString path = folder.filePath("launch.opml");
    ASSERT_EQ(run({"export", "opml", "launch", "-o", path}).status, exitSuccess);
    {
        auto store = openStore();
        EXPECT_EQ(QString::fromUtf8(readFile(path)), store->exportOPML(*store->flows().first()));
    }
    EXPECT_EQ(QString::fromUtf8(readFile(path)), run({"export", "opml", "launch"}).out);

    const CommandResult imported = run({"import", path});
    EXPECT_EQ(imported.status, exitSuccess) << imported.err.toStdString();
    EXPECT_TRUE(imported.out.startsWith("Imported flow \"Launch\" (")) << imported.out.toStdString();
    EXPECT_TRUE(imported.out.contains(") at position 2, with 3 tasks.\n"
                                      "The file brought its own dependencies between tasks; they are in place.\n"));
    EXPECT_EQ(flowNames(), (QStringList{"Launch", "Launch"}));

    const QJsonObject json = QJsonDocument::fromJson(run({"import", path, "--json"}).out.toUtf8()).object();
    EXPECT_TRUE(json["hasDependencies"].toBool());
    EXPECT_EQ(json["name"].toString(), "Launch");
}

TEST_F(ExchangeCommandsTest, ImportsForeignOutlinesAndRefusesBrokenOnes)
{
    // Without a title the flow is named after the file.
    const QString feeds = folder.filePath("My feeds.opml");
    ASSERT_TRUE(QFile::copy(fixture("empty-head.opml"), feeds));
    const CommandResult imported = run({"import", feeds});
    EXPECT_EQ(imported.status, exitSuccess) << imported.err.toStdString();
    EXPECT_TRUE(imported.out.endsWith("with 4 tasks.\n")) << "no dependencies of its own";
    EXPECT_EQ(flowNames(), (QStringList{"Launch", "My feeds"}));

    const CommandResult refused = run({"import", fixture("malformed.opml")});
    EXPECT_EQ(refused.status, exitFailure);
    EXPECT_TRUE(refused.err.contains("it is not an OPML outline with at least one entry, or it is damaged; "
                                     "nothing was added"))
        << refused.err.toStdString();
    const CommandResult missing = run({"import", folder.filePath("gone.opml")});
    EXPECT_EQ(missing.status, exitFailure);
    EXPECT_TRUE(missing.err.contains("there is no file")) << missing.err.toStdString();
    EXPECT_EQ(flowNames().size(), 2);
}


TEST_F(ExchangeCommandsTest, SaysWhatAnImportLeftOutOrWhyItRefusedTheFile)
{
    const auto write = [this](const char *name, const QByteArray &body) {
        const QString path = folder.filePath(QLatin1StringView(name));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<opml version=\"2.0\"><body>\n" + body
                   + "</body></opml>\n");
        return path;
    };
    const QString dates = write("dates.opml", "<outline text=\"Far\" fenrowDue=\"20260-6-1\" fenrowStart=\"2026-6-1\"/>\n"
                                              "<outline text=\" \"/><outline/>\n");
    const CommandResult imported = run({"import", dates});
    EXPECT_EQ(imported.status, exitSuccess) << imported.err.toStdString();
    EXPECT_TRUE(imported.out.endsWith("with 1 task.\n2 entries without text were left out.\n"
                                      "1 date was left out: it is no day in the years 1 to 9999.\n"))
        << imported.out.toStdString();
    EXPECT_EQ(run({"backup", folder.path()}).status, exitSuccess) << "every date in the store can be written";

    QByteArray deep;
    for (int level = 0; level <= 1000; ++level)
        deep += "<outline text=\"x\">\n";
    const CommandResult refused = run({"import", write("deep.opml", deep)});
    EXPECT_EQ(refused.status, exitFailure);
    EXPECT_TRUE(refused.err.contains("cannot import \"" + folder.filePath("deep.opml")
                                     + "\": line 1003: entries nested deeper than 1,000; nothing was added"))
        << refused.err.toStdString();
    EXPECT_EQ(flowNames(), (QStringList{"Launch", "dates"}));
}

} // namespace
} // namespace fenrow::testing
