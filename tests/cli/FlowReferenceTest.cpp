#include "cli/NamedReference.h"

#include "domain/TaskFlow.h"

#include "QtPrinters.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace fenrow {
namespace {

class FlowReferenceTest : public ::testing::Test {
protected:
    const TaskFlow *add(const QString &name)
    {
        auto flow = std::make_unique<TaskFlow>();
        flow->id = QUuid::createUuid();
        flow->name = name;
        flows.append(flow.get());
        owned.push_back(std::move(flow));
        return flows.last();
    }

    const TaskFlow *resolved(const QString &text) const { return FlowReference::resolve(flows, text).found(); }

    std::vector<std::unique_ptr<TaskFlow>> owned;
    QList<const TaskFlow *> flows;
};

TEST_F(FlowReferenceTest, FindsByIdOrByExactNameBeforeAUniquePrefix)
{
    const TaskFlow *inbox = add("Inbox");
    const TaskFlow *archive = add("Inbox archive");
    const TaskFlow *launch = add("Launch site");
    add("Laundry");

    const QString id = launch->id.toString(QUuid::WithoutBraces);
    for (const QString &spelling : {id.toLower(), id.toUpper(), launch->id.toString().toUpper(), " " + id + " "})
        EXPECT_EQ(resolved(spelling), launch) << spelling.toStdString();
    EXPECT_EQ(resolved(QUuid::createUuid().toString()), nullptr);

    EXPECT_EQ(resolved("inBOX"), inbox);
    EXPECT_EQ(resolved("inbox a"), archive);
    EXPECT_EQ(resolved("LAUNC"), launch);
    EXPECT_EQ(resolved("la"), nullptr);
    EXPECT_EQ(resolved("site"), nullptr);
    EXPECT_EQ(resolved("  "), nullptr);
}

TEST_F(FlowReferenceTest, ProblemsListTheCandidates)
{
    const TaskFlow *first = add("Tax");
    const TaskFlow *second = add("tax");
    add("Garden");

    // Two flows with the same name: only the id tells them apart.
    const FlowReference twins = FlowReference::resolve(flows, "TAX");
    EXPECT_EQ(twins.found(), nullptr);
    EXPECT_EQ(twins.candidates(), (QList<const TaskFlow *>{first, second}));
    const QString problem = twins.problem();
    EXPECT_TRUE(problem.contains(first->id.toString(QUuid::WithoutBraces).toUpper())) << problem.toStdString();
    EXPECT_TRUE(problem.contains(second->id.toString(QUuid::WithoutBraces).toUpper()));
    EXPECT_FALSE(problem.contains("Garden"));

    const FlowReference unknown = FlowReference::resolve(flows, "Holiday");
    EXPECT_EQ(unknown.candidates().size(), 3);
    EXPECT_TRUE(unknown.problem().contains("Garden"));

    EXPECT_EQ(FlowReference::resolve({}, "x").problem(), "no flow matches \"x\"; there are no flows yet");
}

} // namespace
} // namespace fenrow
