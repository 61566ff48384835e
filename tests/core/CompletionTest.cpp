#include "TestStore.h"

#include "domain/Readiness.h"

#include <QSignalSpy>

namespace fenrow {
namespace {

using testing::berlinTime;
using testing::FlowFixture;

class Completion : public FlowFixture {
protected:
    const FlowNode &recurring(const QString &title, const NodeRecurrence &rule)
    {
        const FlowNode &node = add(title);
        store->setRecurrence(rule, node);
        return node;
    }
    QList<const CompletionRecord *> repeats(const FlowNode &node) const
    {
        QList<const CompletionRecord *> found;
        for (const CompletionRecord *record : store->completionRecords())
            if (record->nodeID == node.id && record->kindRaw == CompletionRecord::repeatKind)
                found.append(record);
        return found;
    }
    static NodeRecurrence rule(RecurrenceRule kind, qint64 interval = 1, std::optional<int> day = std::nullopt)
    {
        return {kind, interval, day};
    }
};

TEST(RecurrenceText, EncodesAndDecodesEveryForm)
{
    const std::vector<std::pair<NodeRecurrence, QString>> forms{
        {{RecurrenceRule::daily, 1, std::nullopt}, "daily"},
        {{RecurrenceRule::weekdays, 1, std::nullopt}, "weekdays"},
        {{RecurrenceRule::weekly, 1, std::nullopt}, "weekly"},
        {{RecurrenceRule::monthly, 1, std::nullopt}, "monthly"},
        {{RecurrenceRule::monthly, 1, 31}, "monthly@31"},
        {{RecurrenceRule::afterDone, 3, std::nullopt}, "after@3"},
    };
    for (const auto &[recurrence, text] : forms) {
        EXPECT_EQ(recurrence.encode(), text);
        EXPECT_EQ(NodeRecurrence::decode(text), recurrence) << text.toStdString();
    }
    EXPECT_EQ(NodeRecurrence{}.encode(), std::nullopt);
    for (const char *bad : {"", "yearly", "after@", "after@x", "monthly@1.5", "daily@2", "Daily"})
        EXPECT_EQ(NodeRecurrence::decode(QString::fromLatin1(bad)), std::nullopt) << bad;
}

TEST(RecurrenceText, NextOccurrenceByRule)
{
    const LocalCalendar calendar(testing::berlin());
    auto next = [&](QDate anchor, QDate today, NodeRecurrence rule) {
        const auto result = nextOccurrence(calendar.startOfDay(anchor), calendar.startOfDay(today), calendar, rule);
        return result ? calendar.dayOf(*result) : QDate();
    };
    const QDate friday(2026, 6, 12);
    EXPECT_EQ(next({2026, 6, 3}, friday, {RecurrenceRule::daily, 1, {}}), QDate(2026, 6, 13));
    EXPECT_EQ(next(friday, friday, {RecurrenceRule::weekdays, 1, {}}), QDate(2026, 6, 15));
    EXPECT_EQ(next({2026, 5, 20}, friday, {RecurrenceRule::weekly, 1, {}}), QDate(2026, 6, 17))
        << "keeps the anchor's weekday";
    EXPECT_EQ(next({2026, 1, 31}, {2026, 1, 31}, {RecurrenceRule::monthly, 1, 31}), QDate(2026, 2, 28));
    EXPECT_EQ(next({2026, 1, 31}, {2026, 2, 28}, {RecurrenceRule::monthly, 1, 31}), QDate(2026, 3, 31));
    EXPECT_EQ(next({2028, 1, 30}, {2028, 2, 1}, {RecurrenceRule::monthly, 1, 30}), QDate(2028, 2, 29)) << "leap year";
    EXPECT_EQ(next({2026, 1, 10}, {2026, 1, 10}, {RecurrenceRule::afterDone, 3, {}}), QDate(2026, 1, 13));
    EXPECT_EQ(next({2020, 1, 1}, {2026, 1, 10}, {RecurrenceRule::afterDone, 3, {}}), QDate(2026, 1, 13))
        << "counted from the completion, not the anchor";

    // More than 20,000 steps away: no date at all.
    EXPECT_FALSE(nextOccurrence(calendar.startOfDay(QDate(1900, 1, 1)), calendar.startOfDay(QDate(2026, 1, 1)),
                                calendar, {RecurrenceRule::daily, 1, {}}));
    EXPECT_TRUE(nextOccurrence(calendar.startOfDay(QDate(1990, 1, 1)), calendar.startOfDay(QDate(2026, 1, 1)),
                               calendar, {RecurrenceRule::daily, 1, {}}));
}

TEST_F(Completion, PlainCompletionStampsAndReleases)
{
    addAll("ab");
    link("a", "b");
    QSignalSpy changed(store.store.get(), &FenrowStore::changed);
    EXPECT_EQ(titles(store->setStatus(NodeStatus::done, (*this)["a"])), QStringList{"b"});
    EXPECT_EQ((*this)["a"].completedAt, store.clock.now());
    EXPECT_TRUE(store->setStatus(NodeStatus::done, (*this)["a"]).isEmpty());
    EXPECT_EQ(changed.count(), 1) << "done on a done node does nothing";

    store->setStatus(NodeStatus::paused, (*this)["a"]);
    EXPECT_FALSE((*this)["a"].isDone);
    EXPECT_FALSE((*this)["a"].completedAt);

    // Unknown recurrence text completes as an ordinary node.
    const FlowNode &odd = add(QStringLiteral("odd"));
    const_cast<FlowNode &>(odd).recurrenceRaw = QStringLiteral("fortnightly");
    store->setStatus(NodeStatus::done, odd);
    EXPECT_TRUE(odd.isDone);
    EXPECT_TRUE(odd.completedAt);
}

TEST_F(Completion, DailyRoundMovesBothDatesAndOpensTheChecklist)
{
    // Completed on 2026-06-10; due last week, started two days before that.
    const FlowNode &node = recurring(QStringLiteral("Water plants"), rule(RecurrenceRule::daily));
    store->setStartDate(berlinTime(2026, 6, 1), node);
    store->setDueDate(berlinTime(2026, 6, 3), node);
    store->setDayPlanRank(1, node);
    store->addChecklistEntry(QStringLiteral("Balcony"), node);
    store->toggleChecklistEntry(node.checklist()[0].id, node);
    store->setStatus(NodeStatus::inProgress, node);

    store->setStatus(NodeStatus::done, node);
    EXPECT_FALSE(node.isDone);
    EXPECT_EQ(node.statusRaw, QStringLiteral("pending"));
    EXPECT_EQ(node.startDate, berlinTime(2026, 6, 11)) << "tomorrow, not the day after the old date";
    EXPECT_EQ(node.dueDate, berlinTime(2026, 6, 13)) << "the span stays";
    EXPECT_FALSE(node.dayPlanRank);
    EXPECT_FALSE(node.completedAt);
    EXPECT_FALSE(node.checklist()[0].isDone);
    EXPECT_EQ(node.repeatCount, 1);
    ASSERT_EQ(repeats(node).size(), 1);
    EXPECT_EQ(repeats(node)[0]->cycle, 1);
    EXPECT_EQ(repeats(node)[0]->flowName, QStringLiteral("Test"));
}

TEST_F(Completion, SeriesAcrossWeekendsMonthEndsAndEmptyDates)
{
    // Friday 2026-06-12.
    store.clock.set(berlinTime(2026, 6, 12, 18, 0));
    const FlowNode &weekday = recurring(QStringLiteral("Standup"), rule(RecurrenceRule::weekdays));
    store->setDueDate(berlinTime(2026, 6, 12), weekday);
    store->setStatus(NodeStatus::done, weekday);
    EXPECT_EQ(weekday.dueDate, berlinTime(2026, 6, 15));

    // A dateless series is deferred until its next day.
    const FlowNode &dateless = recurring(QStringLiteral("Stretch"), rule(RecurrenceRule::afterDone, 3));
    store->setStatus(NodeStatus::done, dateless);
    EXPECT_EQ(dateless.startDate, berlinTime(2026, 6, 15));
    EXPECT_FALSE(dateless.dueDate);

    // Monthly takes its day from the node's date when none is given.
    store.clock.set(berlinTime(2026, 1, 31, 10, 0));
    const FlowNode &rent = add(QStringLiteral("Rent"));
    store->setDueDate(berlinTime(2026, 1, 31), rent);
    store->setRecurrence(rule(RecurrenceRule::monthly), rent);
    EXPECT_EQ(rent.recurrenceRaw, QStringLiteral("monthly@31"));
    store->setStatus(NodeStatus::done, rent);
    EXPECT_EQ(rent.dueDate, berlinTime(2026, 2, 28));
    store.clock.set(berlinTime(2026, 2, 28, 10, 0));
    store->setStatus(NodeStatus::done, rent);
    EXPECT_EQ(rent.dueDate, berlinTime(2026, 3, 31)) << "the short month does not pull March back";
    EXPECT_EQ(rent.repeatCount, 2);
}

TEST_F(Completion, RoundsStayOnMidnightAcrossDaylightSaving)
{
    // Spring forward in Berlin on 2026-03-29, fall back on 2026-10-25.
    store.clock.set(berlinTime(2026, 3, 28, 20, 0));
    const FlowNode &spring = recurring(QStringLiteral("Spring"), rule(RecurrenceRule::daily));
    store->setDueDate(berlinTime(2026, 3, 28), spring);
    store->setStatus(NodeStatus::done, spring);
    EXPECT_EQ(spring.dueDate->toTimeZone(testing::berlin()), berlinTime(2026, 3, 29));

    store.clock.set(berlinTime(2026, 10, 24, 20, 0));
    const FlowNode &autumn = recurring(QStringLiteral("Autumn"), rule(RecurrenceRule::weekly));
    store->setStartDate(berlinTime(2026, 10, 20), autumn);
    store->setDueDate(berlinTime(2026, 10, 22), autumn);
    store->setStatus(NodeStatus::done, autumn);
    EXPECT_EQ(autumn.startDate->toTimeZone(testing::berlin()), berlinTime(2026, 10, 27));
    EXPECT_EQ(autumn.dueDate->toTimeZone(testing::berlin()), berlinTime(2026, 10, 29));
}

TEST_F(Completion, RecurrenceSetterAndStaleRounds)
{
    const FlowNode &node = add(QStringLiteral("Review"));
    QSignalSpy changed(store.store.get(), &FenrowStore::changed);
    store->setRecurrence(NodeRecurrence{}, node);
    store->setRecurrence(std::nullopt, node);
    EXPECT_EQ(changed.count(), 0);
    EXPECT_FALSE(node.recurrenceRaw);

    store->setRecurrence(rule(RecurrenceRule::weekly), node);
    store->setStatus(NodeStatus::done, node);
    store->setStatus(NodeStatus::done, node);
    EXPECT_EQ(repeats(node).size(), 2);

    // A round taken back (as undo does) leaves a stale record behind; it
    // goes when the node goes, the others stay.
    const_cast<FlowNode &>(node).repeatCount = 1;
    const QUuid id = node.id;
    store->deleteNode(node);
    QList<qint64> cycles;
    for (const CompletionRecord *record : store->completionRecords())
        if (record->nodeID == id)
            cycles << record->cycle;
    EXPECT_EQ(cycles, QList<qint64>{1});
}

} // namespace
} // namespace fenrow
