#include "CommandLineTest.h"

#include "cli/ExitStatus.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace fenrow::testing {
namespace {

class TemplateCommandsTest : public CommandLineTest {
protected:
    // "Launch": "Plan" (done) then "Build", joined.
    TemplateCommandsTest()
    {
        auto store = openStore();
        const TaskFlow *launch = store->addFlow("Launch");
        const FlowNode *plan = store->addNode("Plan", *launch);
        const FlowNode *build = store->addNode("Build", *launch);
        store->addEdge(*plan, *build, EdgeSource::manual, EdgeKind::dependency);
        store->setStatus(NodeStatus::done, *plan);
    }
};

TEST_F(TemplateCommandsTest, SaveMakeAndDeleteTemplates)
{
    EXPECT_TRUE(run({"templates"}).out.startsWith("No templates yet."));
    const CommandResult saved = run({"template", "save", "launch", "--now", "2026-05-04T10:00:00"});
    EXPECT_EQ(saved.status, exitSuccess) << saved.err.toStdString();
    EXPECT_TRUE(saved.out.startsWith("Saved flow \"Launch\" as template \"Launch\" (")) << saved.out.toStdString();
    EXPECT_TRUE(run({"templates"}).out.startsWith("Launch  2026-05-04 10:00  "));

    const CommandResult made = run({"template", "new", "LAUN"});
    EXPECT_EQ(made.status, exitSuccess) << made.err.toStdString();
    EXPECT_TRUE(made.out.contains("from template \"Launch\" at position 2, with 2 tasks, all pending."))
        << made.out.toStdString();
    EXPECT_EQ(flowNames(), (QStringList{"Launch", "Launch"}));

    // No terminal to confirm on: the template stays.
    EXPECT_EQ(run({"template", "delete", "Launch"}).status, exitFailure);
    const CommandResult deleted = run({"template", "delete", "Launch", "--yes"});
    EXPECT_EQ(deleted.out, "Deleted template \"Launch\".\n");
    EXPECT_EQ(QJsonDocument::fromJson(run({"templates", "--json"}).out.toUtf8()).array().size(), 0);
    EXPECT_EQ(flowNames().size(), 2);
    EXPECT_TRUE(run({"template", "new", "Launch"}).err.contains("there are no templates yet"));
}

TEST_F(TemplateCommandsTest, ABrokenTemplateMakesNothing)
{
    {
        auto store = openStore();
        RecordBundle bundle;
        auto broken = std::make_unique<FlowTemplate>();
        broken->id = QUuid::createUuid();
        broken->name = "Broken";
        broken->createdAt = setupClock.now();
        broken->payload = QByteArray("{\"items\": 7}");
        bundle.templates.push_back(std::move(broken));
        store->insertRecords(std::move(bundle));
    }
    const CommandResult result = run({"template", "new", "broken"});
    EXPECT_EQ(result.status, exitFailure);
    EXPECT_TRUE(result.err.contains("template \"Broken\" is damaged")) << result.err.toStdString();
    EXPECT_EQ(flowNames(), QStringList{"Launch"});
}

TEST_F(TemplateCommandsTest, DuplicateAddsTheCopyAfterTheSource)
{
    const QJsonObject copy = QJsonDocument::fromJson(run({"duplicate", "Launch", "--json"}).out.toUtf8()).object();
    EXPECT_EQ(copy["name"].toString(), "Launch copy");
    EXPECT_EQ(copy["position"].toInt(), 2);
    EXPECT_EQ(flowNames(), (QStringList{"Launch", "Launch copy"}));
}

} // namespace
} // namespace fenrow::testing
