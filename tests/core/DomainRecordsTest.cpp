#include "TestStore.h"

#include "domain/DependencyEdge.h"
#include "domain/EdgeKind.h"
#include "domain/FlowProgress.h"
#include "domain/RecordID.h"
#include "domain/TaskFlow.h"

#include <QSet>

#include <algorithm>
#include <thread>

namespace fenrow {
namespace {

using testing::berlinTime;

TEST(DomainRecords, RawStringsReadTolerantlyRoundTripAndAreNeverRewritten)
{
    EXPECT_EQ(readRaw<NodeStatus>(u"inProgress"), NodeStatus::inProgress);
    EXPECT_EQ(readRaw<NodeStatus>(u"someday"), NodeStatus::pending);
    EXPECT_EQ(readRaw<NodeStatus>(u""), NodeStatus::pending);
    // Raw strings are case-sensitive persisted text, not user input.
    EXPECT_EQ(readRaw<NodeStatus>(u"Paused"), NodeStatus::pending);
    EXPECT_EQ(readRaw<NodePriority>(u"urgent"), NodePriority::none);
    EXPECT_EQ(readRaw<NodeColor>(u"teal"), NodeColor::none);
    EXPECT_EQ(readRaw<NodeColor>(u"grey"), NodeColor::grey);
    EXPECT_EQ(parseRaw<EdgeKind>(u"parent"), std::nullopt);

    for (std::size_t i = 0; i < rawCaseCount<NodeColor>(); ++i) {
        const auto color = static_cast<NodeColor>(i);
        EXPECT_EQ(readRaw<NodeColor>(rawString(color)), color);
    }

    // A record reads unknown text so, and never writes it back.
    FlowNode node;
    node.statusRaw = QStringLiteral("blocked-by-vendor");
    node.priorityRaw = QStringLiteral("critical");
    EXPECT_EQ(node.status(), NodeStatus::pending);
    EXPECT_EQ(node.priority(), NodePriority::none);
    EXPECT_EQ(node.statusRaw, QStringLiteral("blocked-by-vendor"));
    EXPECT_EQ(node.priorityRaw, QStringLiteral("critical"));
}

TEST(DomainRecords, IsDoneGovernsStatusAndStatusRawSurvivesCompletion)
{
    FlowNode node;
    EXPECT_EQ(node.statusRaw, QStringLiteral("pending"));

    node.setStatus(NodeStatus::paused);
    node.setStatus(NodeStatus::done);
    EXPECT_TRUE(node.isDone);
    EXPECT_EQ(node.status(), NodeStatus::done);
    EXPECT_EQ(node.statusRaw, QStringLiteral("paused")) << "done is never written to statusRaw";

    // Clearing completion alone brings the earlier state back.
    node.isDone = false;
    EXPECT_EQ(node.status(), NodeStatus::paused);

    // The earlier state lasts only until the next not-done assignment.
    node.setStatus(NodeStatus::done);
    node.setStatus(NodeStatus::pending);
    EXPECT_FALSE(node.isDone);
    EXPECT_EQ(node.statusRaw, QStringLiteral("pending"));

    // A stored "done" from imported data reads as done although not finished.
    node.statusRaw = QStringLiteral("done");
    EXPECT_EQ(node.status(), NodeStatus::done);
    EXPECT_FALSE(node.isDone);
}

TEST(DomainRecords, ChecklistEncodingKeepsOrderAndEmptyIsBlank)
{
    const Checklist entries{
        {QUuid::createUuid(), QStringLiteral("Call \"Ana\""), false},
        {QUuid::createUuid(), QStringLiteral("Ünïcødé ✓"), true},
    };
    const QString encoded = ChecklistCodec::encode(entries);
    EXPECT_TRUE(encoded.startsWith(QLatin1Char('[')));
    EXPECT_EQ(ChecklistCodec::decode(encoded), entries);

    EXPECT_EQ(ChecklistCodec::encode({}), QString());
    EXPECT_TRUE(ChecklistCodec::decode(QString()).isEmpty());
    EXPECT_TRUE(ChecklistCodec::decode(QStringLiteral("[]")).isEmpty());

    // Damaged text reads as an empty checklist rather than a partial one.
    for (const char *broken : {"not json", "{\"id\":1}", "[{\"title\":\"x\",\"isDone\":false}]",
                               "[{\"id\":\"nope\",\"title\":\"x\",\"isDone\":false}]", "[1,2]"}) {
        EXPECT_TRUE(ChecklistCodec::decode(QString::fromUtf8(broken)).isEmpty()) << broken;
    }

    FlowNode node;
    node.checklistData = QStringLiteral("{broken");
    EXPECT_TRUE(node.checklist().isEmpty());
}

// The quick answers must be decode's answers, text by text, whichever way
// they get there.
TEST(DomainRecords, ChecklistProgressAgreesWithDecoding)
{
    const QString id = QStringLiteral("C41621DA-61B2-4614-82E0-D3B5FFB4634A");
    const QStringList texts{
        ChecklistCodec::encode({{QUuid::createUuid(), QStringLiteral("Book \"room\" ✓"), true}}),
        ChecklistCodec::encode({{QUuid::createUuid(), QStringLiteral("a"), false},
                                {QUuid::createUuid(), QStringLiteral("b"), true},
                                {QUuid::createUuid(), QStringLiteral("c"), true}}),
        QStringLiteral("[{\"id\":\"%1\",\"title\":\"x\",\"isDone\":false,\"isDone\":true}]").arg(id),
        QString(),
        QStringLiteral("[]"),
        QStringLiteral(" [ {\"isDone\":false, \"title\":\"x\", \"id\":\"%1\", \"extra\":{\"a\":[1,null]}} ] ").arg(id),
        QStringLiteral("[{\"id\":\"{%1}\",\"title\":\"braced\",\"isDone\":true}]").arg(id.toLower()),
        QStringLiteral("[{\"id\":\"%1\",\"title\":\"x\",\"isDone\":false,\"title\":\"twice\"}]").arg(id),
        QStringLiteral("[{\"id\":\"%1\",\"title\":\"lone \\ud800\",\"isDone\":false}]").arg(id),
        QStringLiteral("[{\"id\":\"%1\",\"title\":\"x\",\"isDone\":\"no\"}]").arg(id),
        QStringLiteral("[{\"id\":\"%1\",\"title\":7,\"isDone\":false}]").arg(id),
        QStringLiteral("[{\"id\":\"nope\",\"title\":\"x\",\"isDone\":false}]"),
        QStringLiteral("[{\"id\":\"%1\",\"isDone\":false}]").arg(id),
        QStringLiteral("[{\"id\":\"%1\",\"title\":\"x\",\"isDone\":false}] trailing").arg(id),
        QStringLiteral("[{\"id\":\"%1\",\"title\":\"x\",\"isDone\":false},]").arg(id),
        QStringLiteral("[1,2]"),
        QStringLiteral("{\"id\":1}"),
    };
    for (const QString &text : texts) {
        const Checklist entries = ChecklistCodec::decode(text);
        const ChecklistCodec::Progress expected{
            std::count_if(entries.cbegin(), entries.cend(), [](const ChecklistEntry &entry) { return entry.isDone; }),
            entries.size()};
        EXPECT_EQ(ChecklistCodec::progress(text), expected) << text.toStdString();
        EXPECT_EQ(ChecklistCodec::hasEntries(text), !entries.isEmpty()) << text.toStdString();
    }
}

TEST(DomainRecords, DeferredAndOverdueFollowTheLocalDay)
{
    const LocalCalendar calendar(testing::berlin());
    const QDateTime now = berlinTime(2026, 6, 10, 15, 30);
    FlowNode node;

    node.dueDate = berlinTime(2026, 6, 10, 0, 5);
    EXPECT_FALSE(node.isOverdue(now, calendar)) << "due earlier today is not overdue";
    node.dueDate = berlinTime(2026, 6, 9, 23, 59);
    EXPECT_TRUE(node.isOverdue(now, calendar));
    node.isDone = true;
    EXPECT_FALSE(node.isOverdue(now, calendar));
    node.isDone = false;

    node.startDate = berlinTime(2026, 6, 10, 23, 0);
    EXPECT_FALSE(node.isDeferred(now, calendar)) << "later today is not deferred";
    node.startDate = berlinTime(2026, 6, 10, 1, 0);
    EXPECT_FALSE(node.isDeferred(now, calendar));
    node.startDate = berlinTime(2026, 6, 11, 0, 0);
    EXPECT_TRUE(node.isDeferred(now, calendar)) << "tomorrow's first instant is deferred";
    EXPECT_FALSE(node.isDeferred(berlinTime(2026, 6, 11, 0, 0), calendar));

    // The same instant is another day in another zone: 23:30 UTC on the 10th
    // is already the 11th in Berlin.
    const QDateTime lateUtc(QDate(2026, 6, 10), QTime(23, 30), QTimeZone::utc());
    node.startDate = berlinTime(2026, 6, 11, 8, 0);
    EXPECT_FALSE(node.isDeferred(lateUtc, calendar));
    EXPECT_TRUE(node.isDeferred(lateUtc, LocalCalendar(QTimeZone::utc())));
}

TEST(DomainRecords, StartOfDayOnDaylightSavingDays)
{
    const LocalCalendar calendar(testing::berlin());
    // Spring forward: 02:00 does not exist, the day still starts at 00:00 and
    // lasts 23 hours.
    const QDateTime spring = calendar.startOfDay(QDate(2026, 3, 29));
    EXPECT_EQ(spring.secsTo(calendar.startOfDay(QDate(2026, 3, 30))), 23 * 3600);
    EXPECT_EQ(calendar.startOfDay(berlinTime(2026, 3, 29, 12, 0)), spring);
    // Fall back: 25 hours.
    const QDateTime autumn = calendar.startOfDay(QDate(2026, 10, 25));
    EXPECT_EQ(autumn.secsTo(calendar.startOfDay(QDate(2026, 10, 26))), 25 * 3600);
}

TEST(DomainRecords, OrderedItemsAndProgress)
{
    TaskFlow flow;
    auto addNode = [&](qint64 order, bool done, const char *status) {
        auto node = std::make_unique<FlowNode>();
        node->order = order;
        node->isDone = done;
        node->statusRaw = QString::fromLatin1(status);
        node->title = QString::number(order);
        return flow.items().add(std::move(node));
    };
    addNode(5, false, "inProgress");
    addNode(-1, true, "inProgress");
    addNode(2, false, "paused");
    addNode(9, false, "inprogress");

    QStringList titles;
    for (const FlowNode *node : flow.orderedItems())
        titles << node->title;
    EXPECT_EQ(titles, (QStringList{"-1", "2", "5", "9"}));

    // Done wins over an in-progress raw state; only the exact raw text counts.
    EXPECT_EQ(FlowProgress::of(flow.items()), (FlowProgress{1, 1, 4}));
    EXPECT_EQ(FlowProgress::of(QList<const FlowNode *>{}), (FlowProgress{0, 0, 0}));
}

TEST(DomainRecords, NewRecordIDsAreDistinctVersionFourOnEveryThread)
{
    QSet<QUuid> seen;
    for (int i = 0; i < 20000; ++i) {
        const QUuid id = RecordID::make();
        ASSERT_EQ(id.version(), QUuid::Random);
        ASSERT_EQ(id.variant(), QUuid::DCE);
        seen.insert(id);
    }
    // Another thread has a generator of its own, seeded apart.
    QList<QUuid> elsewhere;
    std::thread worker([&elsewhere] {
        for (int i = 0; i < 1000; ++i)
            elsewhere.append(RecordID::make());
    });
    worker.join();
    for (const QUuid &id : elsewhere)
        seen.insert(id);
    EXPECT_EQ(seen.size(), 21000);
}

} // namespace
} // namespace fenrow
