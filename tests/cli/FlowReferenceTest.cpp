#include "cli/FlowReference.h"

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

    const TaskFlow *resolved(const QString &text) const { return FlowReference::resolve(flows, text).flow(); }

    std::vector<std::unique_ptr<TaskFlow>> owned;
    QList<const TaskFlow *> flows;
};

TEST_F(FlowReferenceTest, FindsByIdInAnySpelling)
{
    add(QStringLiteral("Other"));
    const TaskFlow *flow = add(QStringLiteral("Launch site"));
    const QString plain = flow->id.toString(QUuid::WithoutBraces);
    for (const QString &spelling : {plain.toLower(), plain.toUpper(), flow->id.toString(QUuid::WithBraces).toUpper(),
                                    QStringLiteral(" ") + plain + QStringLiteral(" ")})
        EXPECT_EQ(resolved(spelling), flow) << spelling.toStdString();
    EXPECT_EQ(resolved(QUuid::createUuid().toString()), nullptr);
}

TEST_F(FlowReferenceTest, ExactNameBeatsPrefixAndPrefixMustBeUnique)
{
    const TaskFlow *inbox = add(QStringLiteral("Inbox"));
    const TaskFlow *archive = add(QStringLiteral("Inbox archive"));
    const TaskFlow *launch = add(QStringLiteral("Launch site"));
    add(QStringLiteral("Laundry"));

    EXPECT_EQ(resolved(QStringLiteral("inBOX")), inbox);
    EXPECT_EQ(resolved(QStringLiteral("inbox a")), archive);
    EXPECT_EQ(resolved(QStringLiteral("LAUNC")), launch);
    EXPECT_EQ(resolved(QStringLiteral("launch site")), launch);
    EXPECT_EQ(resolved(QStringLiteral("la")), nullptr);
    EXPECT_EQ(resolved(QStringLiteral("site")), nullptr);
    EXPECT_EQ(resolved(QString()), nullptr);
    EXPECT_EQ(resolved(QStringLiteral("  ")), nullptr);
}

TEST_F(FlowReferenceTest, ProblemsListTheCandidates)
{
    const TaskFlow *first = add(QStringLiteral("Tax"));
    const TaskFlow *second = add(QStringLiteral("tax"));
    add(QStringLiteral("Garden"));

    // Two flows with the same name: only the id tells them apart.
    const FlowReference twins = FlowReference::resolve(flows, QStringLiteral("TAX"));
    EXPECT_EQ(twins.flow(), nullptr);
    EXPECT_EQ(twins.candidates(), (QList<const TaskFlow *>{first, second}));
    const QString problem = twins.problem();
    EXPECT_TRUE(problem.contains(first->id.toString(QUuid::WithoutBraces).toUpper())) << problem.toStdString();
    EXPECT_TRUE(problem.contains(second->id.toString(QUuid::WithoutBraces).toUpper()));
    EXPECT_FALSE(problem.contains(QStringLiteral("Garden")));

    const FlowReference unknown = FlowReference::resolve(flows, QStringLiteral("Holiday"));
    EXPECT_EQ(unknown.candidates().size(), 3);
    EXPECT_TRUE(unknown.problem().contains(QStringLiteral("Garden")));

    EXPECT_EQ(FlowReference::resolve({}, QStringLiteral("x")).problem(),
              QStringLiteral("no flow matches \"x\"; there are no flows yet"));
    EXPECT_EQ(FlowReference::resolve(flows, QStringLiteral("garden")).problem(), QString());
}

TEST_F(FlowReferenceTest, LongCandidateListsAreCut)
{
    for (int i = 0; i < 14; ++i)
        add(QStringLiteral("Project %1").arg(i));
    const QString problem = FlowReference::resolve(flows, QStringLiteral("project")).problem();
    EXPECT_TRUE(problem.contains(QStringLiteral("Project 9")));
    EXPECT_FALSE(problem.contains(QStringLiteral("Project 10")));
    EXPECT_TRUE(problem.contains(QStringLiteral("4 more"))) << problem.toStdString();
}

} // namespace
} // namespace fenrow
