#include "CaptureFixture.h"

#include "capture/PlanDayModel.h"
#include "domain/Readiness.h"
#include "shell/InterfaceLanguage.h"

#include <QSignalSpy>

namespace fenrow::testing {
namespace {

PlannableTask task(const QString &title, std::optional<qint64> estimate)
{
    return {QUuid::createUuid(), title, QStringLiteral("Flow"), estimate};
}

QStringList titlesOf(const QList<PlannableTask> &tasks, const QList<QUuid> &ids)
{
    QStringList titles;
    for (const QUuid &id : ids)
        for (const PlannableTask &task : tasks)
            if (task.id == id)
                titles.append(task.title);
    return titles;
}

TEST(PlanDayPack, FitsWhatTheBudgetHoldsWithoutStoppingAtTheFirstMiss)
{
    struct Case {
        const char *name;
        qint64 budget;
        QList<std::optional<qint64>> estimates;
        QStringList planned;
        qint64 total;
    };
    const QList<Case> cases{
        {"budget 0: everything overflows", 0, {30, 15}, {}, 0},
        {"a long task is passed over", 60, {30, 45, 15}, {"t0", "t2"}, 45},
        {"no estimate costs 30", 60, {std::nullopt, std::nullopt, std::nullopt}, {"t0", "t1"}, 60},
        {"exactly the rest fits", 75, {30, 45}, {"t0", "t1"}, 75},
        {"a negative budget plans nothing", -5, {1}, {}, 0},
    };
    for (const Case &test : cases) {
        SCOPED_TRACE(test.name);
        QList<PlannableTask> tasks;
        for (qsizetype i = 0; i < test.estimates.size(); ++i)
            tasks.append(task(QStringLiteral("t%1").arg(i), test.estimates[i]));
        const PlannedDay day = PlanDay::pack(tasks, test.budget);
        EXPECT_EQ(titlesOf(tasks, day.taskIDs), test.planned);
        EXPECT_EQ(day.taskIDs.size() + day.overflowIDs.size(), tasks.size());
        EXPECT_EQ(day.totalMinutes, test.total);
    }
}

TEST(PlanDayBudget, ParsesAndShowsInTheLocalesWay)
{
    const QLocale german(QLocale::German, QLocale::Germany);
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    using Unit = DayPlanBudgetUnit;

    EXPECT_EQ(PlanDay::parseBudget("1,5", Unit::hours, german), 90);
    EXPECT_EQ(PlanDay::parseBudget(" 1.5 ", Unit::hours, english), 90);
    EXPECT_EQ(PlanDay::parseBudget("1.5", Unit::hours, german), 90) << "a full stop always reads";
    EXPECT_EQ(PlanDay::parseBudget("1,5", Unit::hours, english), std::nullopt);
    EXPECT_EQ(PlanDay::parseBudget("0.33", Unit::hours, english), 20) << "rounded to whole minutes";
    EXPECT_EQ(PlanDay::parseBudget("45", Unit::minutes, english), 45);
    EXPECT_EQ(PlanDay::parseBudget("   ", Unit::minutes, english), std::nullopt);
    EXPECT_EQ(PlanDay::parseBudget("two", Unit::minutes, english), std::nullopt);
    EXPECT_EQ(PlanDay::parseBudget("inf", Unit::minutes, english), std::nullopt);

    EXPECT_EQ(PlanDay::formatBudget(90, Unit::hours, german), "1,5");
    EXPECT_EQ(PlanDay::formatBudget(100, Unit::hours, english), "1.67");
    EXPECT_EQ(PlanDay::formatBudget(120, Unit::hours, english), "2");
    EXPECT_EQ(PlanDay::formatBudget(90, Unit::minutes, german), "90");
    // What is shown reads back as the same budget.
    for (int preset : PlanDay::budgetPresets)
        EXPECT_EQ(PlanDay::parseBudget(PlanDay::formatBudget(preset, Unit::hours, german), Unit::hours, german),
                  preset);
}

// Ready tasks a (30), b (45), c (15) in one flow, d (no estimate) in another.
class PlanDaySheet : public CaptureFixture {
protected:
    PlanDaySheet()
    {
        addAll("abc");
        store->setEstimate(30, (*this)["a"]);
        store->setEstimate(45, (*this)["b"]);
        store->setEstimate(15, (*this)["c"]);
        other = store->addFlow("Other");
        d = store->addNode("d", *other);
        preferences.setDayPlanBudgetMinutes(60);
    }

    std::unique_ptr<PlanDayModel> sheet(bool withEngine)
    {
        const QList<ReadyTask> ready =
            Readiness::readyTasks(store->flows(), store->clock().now(), store->calendar());
        return std::make_unique<PlanDayModel>(ready, *store, environment(withEngine), preferences, &history);
    }

    static QStringList shown(const PlanDayModel &model)
    {
        QStringList rows;
        for (const PlanDayModel::Row &row : model.rows())
            rows.append(row.placement.kind == PlanDayRowPlacement::Kind::planned
                            ? QStringLiteral("%1.%2").arg(row.placement.position).arg(row.task.title)
                            : QStringLiteral("-%1").arg(row.task.title));
        return rows;
    }

    const TaskFlow *other = nullptr;
    const FlowNode *d = nullptr;
};

TEST_F(PlanDaySheet, WithoutAnEngineTheListOrderIsPackedAtOnce)
{
    auto model = sheet(false);
    EXPECT_STREQ(model->primaryButtonKey(), "planDay.planManual");
    model->plan();
    EXPECT_EQ(model->phase().kind, PlanDayPhase::Kind::result);
    EXPECT_EQ(shown(*model), QStringList({"1.a", "2.c", "-b", "-d"}));
    EXPECT_EQ(model->phase().plan.totalMinutes, 45);
    EXPECT_STREQ(model->orderLabelKey(), "planDay.order.custom");
    EXPECT_EQ(engine->calls().size(), 0);

    // Times read as estimates do, whatever unit the budget was typed in.
    ASSERT_TRUE(InterfaceLanguage::apply(QStringLiteral("en")));
    model->setBudgetUnit(DayPlanBudgetUnit::hours);
    EXPECT_EQ(model->summary(), "45 min of 1 h planned · 2 more do not fit.");
    EXPECT_EQ(model->budgetLabel(90), "1 h 30 min");
}

TEST_F(PlanDaySheet, EngineOrderComesBackOnTheMainThreadThenPacks)
{
    // The engine repeats c, names a stranger and forgets b and d: the order
    // loses and doubles nothing.
    engine->planAnswer = QList<QUuid>{(*this)["c"].id, (*this)["c"].id, QUuid::createUuid(), (*this)["a"].id};
    auto model = sheet(true);
    model->plan();
    EXPECT_EQ(model->phase().kind, PlanDayPhase::Kind::running);
    waitUntil([&] { return model->phase().kind != PlanDayPhase::Kind::running; });
    EXPECT_EQ(shown(*model), QStringList({"1.c", "2.a", "-b", "-d"}));
    EXPECT_STREQ(model->orderLabelKey(), "planDay.order.ai");
    ASSERT_EQ(engine->calls().size(), 1);
    EXPECT_EQ(engine->calls()[0].titles, QStringList({"a", "b", "c", "d"}));
}

TEST_F(PlanDaySheet, AFailingEngineLeavesTheStoreAlone)
{
    engine->failures.insert("planDay", EngineError::generationFailed);
    auto model = sheet(true);
    QSignalSpy changes(store.store.get(), &FenrowStore::changed);
    model->plan();
    waitUntil([&] { return model->phase().kind != PlanDayPhase::Kind::running; });
    EXPECT_EQ(model->phase().kind, PlanDayPhase::Kind::failed);
    model->commit();
    EXPECT_EQ(changes.size(), 0);
    model->backToSetup();
    EXPECT_EQ(model->phase().kind, PlanDayPhase::Kind::setup);
}

TEST_F(PlanDaySheet, ReorderingRepacksAndMovesTheCut)
{
    auto model = sheet(false);
    model->plan();
    // b above the cut, to the top: now b (45) and c (15) fit, a does not.
    model->moveRow(2, 0);
    EXPECT_EQ(shown(*model), QStringList({"1.b", "2.c", "-a", "-d"}));
    EXPECT_TRUE(model->isReordered());
    EXPECT_STREQ(model->orderLabelKey(), "planDay.order.custom");
    model->moveRow(0, 9);
    EXPECT_EQ(shown(*model), QStringList({"1.b", "2.c", "-a", "-d"})) << "a drop outside the list does nothing";
}

TEST_F(PlanDaySheet, CommitRanksThePlanAndClearsTheRest)
{
    // Yesterday b was first and d second; c already holds today's rank 2.
    store->setDayPlanRank(1, (*this)["b"]);
    store->setDayPlanRank(2, *d);
    store->setDayPlanRank(2, (*this)["c"]);
    auto model = sheet(false);
    model->plan();
    QSignalSpy changes(store.store.get(), &FenrowStore::changed);
    QSignalSpy committed(model.get(), &PlanDayModel::committed);
    model->commit();

    EXPECT_EQ((*this)["a"].dayPlanRank, 1);
    EXPECT_EQ((*this)["c"].dayPlanRank, 2);
    EXPECT_EQ((*this)["b"].dayPlanRank, std::nullopt) << "overflow loses its old rank";
    EXPECT_EQ(d->dayPlanRank, std::nullopt);
    EXPECT_EQ(changes.size(), 3) << "c kept its rank and was not written";
    EXPECT_EQ(committed.size(), 1);

    // One step per flow, each undone by itself.
    EXPECT_EQ(undoNames(*flow), QStringList{"Plan today"});
    EXPECT_EQ(undoNames(*other), QStringList{"Plan today"});
    ASSERT_TRUE(history.undoFlow(flow->id));
    EXPECT_EQ((*this)["b"].dayPlanRank, 1);
    EXPECT_EQ((*this)["a"].dayPlanRank, std::nullopt);
}

TEST_F(PlanDaySheet, BudgetTextKeepsThePreviousValueWhenUnreadable)
{
    auto model = sheet(false);
    model->setBudgetUnit(DayPlanBudgetUnit::hours);
    EXPECT_TRUE(model->setBudgetText("1.5"));
    EXPECT_EQ(preferences.dayPlanBudgetMinutes(), 90);
    EXPECT_FALSE(model->setBudgetText("soon"));
    EXPECT_EQ(model->budgetMinutes(), 90);
    EXPECT_EQ(preferences.dayPlanBudgetUnitRaw(), "hours");
}

} // namespace
} // namespace fenrow::testing
