#include "TestEngines.h"

#include "capture/OnDeviceEngine.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>

namespace fenrow::testing {
namespace {

// Stands in for the model: records what it is asked and gives the scripted
// answers in turn; past the last one, a call fails.
class StandInGenerator : public GuidedGenerator {
public:
    void script(QList<GuidedAnswer> answers)
    {
        QMutexLocker lock(&m_mutex);
        m_answers = std::move(answers);
        m_requests.clear();
    }
    QList<GuidedRequest> requests() const
    {
        QMutexLocker lock(&m_mutex);
        return m_requests;
    }
    // Runs on the worker as each request arrives, as a user might meanwhile.
    std::function<void(const GuidedRequest &)> onRequest;

    GuidedAnswer generate(const GuidedRequest &request) const override
    {
        if (onRequest)
            onRequest(request);
        QMutexLocker lock(&m_mutex);
        m_requests.append(request);
        if (m_requests.size() > m_answers.size())
            return GuidedAnswer::failed(QStringLiteral("nothing scripted"));
        return m_answers[m_requests.size() - 1];
    }

private:
    mutable QMutex m_mutex;
    QList<GuidedAnswer> m_answers;
    mutable QList<GuidedRequest> m_requests;
};

QJsonObject json(const char *text)
{
    QJsonParseError error;
    const QJsonObject object = QJsonDocument::fromJson(QByteArray(text), &error).object();
    EXPECT_EQ(error.error, QJsonParseError::NoError) << text;
    return object;
}

GuidedAnswer filled(const char *text)
{
    return GuidedAnswer::filled(json(text));
}

QList<ItemRef> items(int count)
{
    QList<ItemRef> list;
    for (int i = 0; i < count; ++i)
        list.append({QUuid::createUuid(), QStringLiteral("Item %1").arg(i)});
    return list;
}

QString repeated(const char *text, qsizetype times)
{
    return QString::fromLatin1(text).repeated(times);
}

class OnDeviceEngineTest : public ::testing::Test {
protected:
    QList<GuidedRequest> requests() const { return generator->requests(); }
    bool logged(const char *line) const { return LogCapture::lines().contains(QString::fromUtf8(line)); }

    std::shared_ptr<StandInGenerator> generator = std::make_shared<StandInGenerator>();
    std::shared_ptr<OnDeviceEngine> engine = std::make_shared<OnDeviceEngine>(generator);
    LogCapture log;
};

TEST_F(OnDeviceEngineTest, LinkShowsTheNewestItemsAndKeepsOnlyEdgesOfTheNewOne)
{
    const ItemRef added{QUuid::createUuid(), QStringLiteral("Send the invoice")};
    EXPECT_TRUE(awaitAnswer(engine->link(added, {}, "en")).value().isEmpty());
    EXPECT_TRUE(requests().isEmpty());

    const QList<ItemRef> two{{QUuid::createUuid(), "Write the report"}, {QUuid::createUuid(), "Print it"}};
    generator->script({filled(R"({"edges": [{"before": 1, "after": 3}, {"before": 3, "after": 2},
                                            {"before": 1, "after": 2}, {"before": 3, "after": 3},
                                            {"before": 0, "after": 3}, {"before": 3, "after": 4}]})")});
    EXPECT_EQ(awaitAnswer(engine->link(added, two, "de")).value(),
              QList<EdgeProposal>({{two[0].id, added.id}, {added.id, two[1].id}}));
    ASSERT_EQ(requests().size(), 1);
    const GuidedRequest request = requests()[0];
    EXPECT_TRUE(request.instruction.endsWith(
        "The user's content language is \"de\". Connect only the new "
        "task to the existing tasks; do not invent dependencies among the existing tasks."));
    EXPECT_EQ(request.prompt, "Tasks (numbered):\n1. Write the report\n2. Print it\n3. Send the invoice\n\nItem 3 is "
                              "the newly added task. Return only the dependency edges that connect item 3 to the "
                              "other tasks, using their numbers.");
    EXPECT_EQ(request.temperature, 0.1);
    EXPECT_EQ(request.schema.value("required"), QJsonArray({"edges"}));

    const QList<ItemRef> existing = items(100);
    generator->script({filled(R"({"edges": []})")});
    EXPECT_TRUE(awaitAnswer(engine->link(added, existing.first(39), "en")).ok());
    EXPECT_TRUE(requests()[0].prompt.startsWith("Tasks (numbered):\n1. Item 0\n"));
    EXPECT_TRUE(requests()[0].prompt.contains("\n39. Item 38\n40. Send the invoice\n\nItem 40 is"));
    EXPECT_FALSE(log.contains("link: capped"));

    // Only the last 39 fit, numbered 1 to 39; the new item is 40.
    generator->script({filled(R"({"edges": [{"before": 0, "after": 40}, {"before": 41, "after": 40},
                                            {"before": 40, "after": 40}, {"before": 1, "after": 2},
                                            {"before": 39, "after": 40}, {"before": 40, "after": 1}]})")});
    EXPECT_EQ(awaitAnswer(engine->link(added, existing, "en")).value(),
              QList<EdgeProposal>({{existing[99].id, added.id}, {added.id, existing[61].id}}));
    EXPECT_TRUE(requests()[0].prompt.startsWith("Tasks (numbered):\n1. Item 61\n2. Item 62\n"));
    EXPECT_TRUE(requests()[0].prompt.contains("\n39. Item 99\n40. Send the invoice\n\nItem 40 is"));
    EXPECT_TRUE(logged("link: capped existing items 100 -> 39 to fit context budget"));
}

TEST_F(OnDeviceEngineTest, RelinkAsksInBatchesOfFortyAndMergesRepeatedEdges)
{
    EXPECT_TRUE(awaitAnswer(engine->relink(items(1), "en")).value().isEmpty());
    EXPECT_TRUE(requests().isEmpty());

    const QList<ItemRef> pair{{QUuid::createUuid(), "Buy paint"}, {QUuid::createUuid(), "Paint the fence"}};
    generator->script({filled(R"({"edges": [{"before": 1, "after": 2}]})")});
    EXPECT_EQ(awaitAnswer(engine->relink(pair, "fr")).value(), QList<EdgeProposal>({{pair[0].id, pair[1].id}}));
    EXPECT_TRUE(requests()[0].instruction.endsWith("The user's content language is \"fr\"."));
    EXPECT_EQ(requests()[0].prompt, "Tasks (numbered):\n1. Buy paint\n2. Paint the fence\n\nReturn every "
                                    "prerequisite dependency between these tasks, using their numbers.");
    EXPECT_EQ(requests()[0].schema.value("required"), QJsonArray({"edges"}));

    generator->script({filled(R"({"edges": []})")});
    EXPECT_TRUE(awaitAnswer(engine->relink(items(40), "en")).ok());
    EXPECT_EQ(requests().size(), 1);
    EXPECT_FALSE(log.contains("relink: split"));

    generator->script({filled(R"({"edges": []})"), filled(R"({"edges": []})")});
    EXPECT_TRUE(awaitAnswer(engine->relink(items(41), "en")).ok());
    ASSERT_EQ(requests().size(), 2);
    EXPECT_EQ(requests()[1].prompt, "Tasks (numbered):\n1. Item 40\n\nReturn every prerequisite dependency between "
                                    "these tasks, using their numbers.");
    EXPECT_TRUE(logged("relink: split 41 items into 2 batches"));

    // An import that lists two tasks again after the first forty: the second
    // batch repeats one edge of the first, and adds one of its own.
    QList<ItemRef> repeating = items(40);
    const ItemRef extra{QUuid::createUuid(), "Item 42"};
    repeating << repeating[0] << repeating[1] << extra;
    generator->script({filled(R"({"edges": [{"before": 1, "after": 2}, {"before": 1, "after": 2},
                                            {"before": 2, "after": 3}, {"before": 2, "after": 1}]})"),
                       filled(R"({"edges": [{"before": 1, "after": 2}, {"before": 2, "after": 3}]})")});
    EXPECT_EQ(awaitAnswer(engine->relink(repeating, "en")).value(),
              QList<EdgeProposal>({{repeating[0].id, repeating[1].id},
                                   {repeating[1].id, repeating[2].id},
                                   {repeating[1].id, repeating[0].id},
                                   {repeating[1].id, extra.id}}));
}

TEST_F(OnDeviceEngineTest, RelinkReportsItsBatchesAndStopsAtTheFirstOnceCancelled)
{
    const auto empty = [] { return filled(R"({"edges": []})"); };
    generator->script({empty(), empty(), empty()});
    QObject receiver;
    QList<std::pair<int, int>> reports;
    const auto relinked = engine->relink(items(81), "en");
    EngineCall::whenProgress(relinked, &receiver, [&](int done, int total) { reports.append({done, total}); });
    EXPECT_TRUE(awaitAnswer(relinked).ok());
    ASSERT_TRUE(waitUntil([&] { return !reports.isEmpty() && reports.last() == std::pair(3, 3); }));

    // The user gives up while the first batch is with the model: the model
    // call is told, no second batch is asked for, and nothing is logged as
    // a failure of the model.
    generator->script({empty(), empty(), empty()});
    generator->onRequest = [](const GuidedRequest &request) { request.cancel.cancel(); };
    const EngineCancel cancel;
    EXPECT_FALSE(awaitAnswer(engine->relink(items(81), "en", cancel)).ok());
    EXPECT_TRUE(cancel.isCancelled());
    EXPECT_EQ(requests().size(), 1);
    EXPECT_FALSE(log.contains("guided generation failed"));
}

TEST_F(OnDeviceEngineTest, ExtractFlowSendsAtMostTwelveThousandCharactersCutBetweenWords)
{
    EXPECT_EQ(awaitAnswer(engine->extractFlow(" \n\t ", "en")).value(), ExtractedFlow{});
    EXPECT_TRUE(requests().isEmpty());

    // The draft comes back as the model wrote it: cleaning is the caller's.
    generator->script({filled(R"({"name": " Trip ", "items": ["Book flights", ""]})")});
    EXPECT_EQ(awaitAnswer(engine->extractFlow("\n  Plan the trip to Izmir \n", "tr")).value(),
              (ExtractedFlow{" Trip ", {"Book flights", ""}}));
    EXPECT_TRUE(requests()[0].instruction.endsWith("The user's content language is \"tr\"."));
    EXPECT_EQ(requests()[0].prompt, "Prose to structure into a task flow:\nPlan the trip to Izmir");
    EXPECT_EQ(requests()[0].schema.value("required"), QJsonArray({"name", "items"}));

    const QString header = QStringLiteral("Prose to structure into a task flow:\n");
    const QString whole = repeated("abcd ", 2399) + "abcde"; // 12000, the last space at 11994
    const QString cut = whole.first(11994);
    struct Case {
        QString text;
        QString sent;
    };
    const QList<Case> cases{
        {whole, whole},
        {whole + "f", cut},
        // A space just past the limit is not looked at.
        {whole + " more words", cut},
        {QString(12001, u'x'), QString()},
    };
    for (const Case &c : cases) {
        LogCapture::lines().clear();
        generator->script({filled(R"({"name": "", "items": []})")});
        EXPECT_TRUE(awaitAnswer(engine->extractFlow(c.text, "en")).ok());
        EXPECT_EQ(requests()[0].prompt, header + c.sent) << c.text.size();
        EXPECT_EQ(logged("extractFlow: input exceeded context budget; structuring first chunk only"),
                  c.text.size() > 12000);
    }
}

TEST_F(OnDeviceEngineTest, ExpandPromptHasOnlyTheSectionsThereAreWordsFor)
{
    EXPECT_TRUE(awaitAnswer(engine->expand({QUuid::createUuid(), " \n"}, "detail", {}, "en")).value().isEmpty());
    EXPECT_TRUE(requests().isEmpty());

    const ItemRef task{QUuid::createUuid(), " Book the hall "};
    generator->script({filled(R"({"items": ["Call the hall", "Pay the deposit"]})"), filled(R"({"items": []})")});
    EXPECT_EQ(awaitAnswer(engine->expand(task, " For 50 guests ",
                                         {" Launch party ", {" Plan the venue ", "  ", "Find a date"}}, "es"))
                  .value(),
              QStringList({"Call the hall", "Pay the deposit"}));
    EXPECT_TRUE(awaitAnswer(engine->expand(task, "  ", {" ", {" "}}, "es")).value().isEmpty());

    ASSERT_EQ(requests().size(), 2);
    EXPECT_TRUE(requests()[0].instruction.endsWith("The user's content language is \"es\"."));
    EXPECT_EQ(requests()[0].prompt,
              "Overall project:\nLaunch party\n\nParent tasks (outermost first):\n1. Plan the venue\n2. Find a "
              "date\n\nTask to break into subtasks:\nBook the hall\n\nAdditional detail about the task:\nFor 50 "
              "guests");
    EXPECT_EQ(requests()[1].prompt, "Task to break into subtasks:\nBook the hall");
    EXPECT_EQ(requests()[0].schema.value("required"), QJsonArray({"items"}));
}

TEST_F(OnDeviceEngineTest, EstimateGivesOneBoundedFigurePerTitle)
{
    EXPECT_TRUE(awaitAnswer(engine->estimate({}, {}, "en")).value().isEmpty());
    EXPECT_TRUE(requests().isEmpty());

    const QStringList five{"Pack books", "Hire a van", "Move", "Unpack", "Rest"};
    generator->script({filled(R"({"minutes": [-5, 100000, 30]})"), filled(R"({"minutes": [10, 20, 30]})")});
    EXPECT_EQ(awaitAnswer(engine->estimate(five, {"Move house", {"Weekend"}}, "en")).value(),
              QList<qint64>({0, 9600, 30, 0, 0}));
    EXPECT_EQ(awaitAnswer(engine->estimate(five.first(2), {}, "en")).value(), QList<qint64>({10, 20}));
    EXPECT_EQ(requests()[0].prompt, "Overall project:\nMove house\n\nParent tasks (outermost first):\n1. "
                                    "Weekend\n\nTasks to estimate (numbered):\n1. Pack books\n2. Hire a van\n3. "
                                    "Move\n4. Unpack\n5. Rest");
    EXPECT_EQ(requests()[1].prompt, "Tasks to estimate (numbered):\n1. Pack books\n2. Hire a van");
    EXPECT_EQ(requests()[0].schema.value("required"), QJsonArray({"minutes"}));

    QStringList many;
    for (int i = 1; i <= 45; ++i)
        many.append(QStringLiteral("Task %1").arg(i));
    generator->script({GuidedAnswer::filled({{"minutes", QJsonArray::fromVariantList(QVariantList(45, 15))}})});
    QList<qint64> expected(40, 15);
    expected << 0 << 0 << 0 << 0 << 0;
    EXPECT_EQ(awaitAnswer(engine->estimate(many, {}, "en")).value(), expected);
    EXPECT_TRUE(requests()[0].prompt.endsWith("\n40. Task 40"));
}

TEST_F(OnDeviceEngineTest, PlanDayPlacesEveryTaskOnce)
{
    EXPECT_TRUE(awaitAnswer(engine->planDay({}, 60, "en")).value().isEmpty());
    EXPECT_TRUE(requests().isEmpty());

    const QList<PlannableTask> three{{QUuid::createUuid(), "Water plants", "Home", 30},
                                     {QUuid::createUuid(), "Write report", "Work", {}},
                                     {QUuid::createUuid(), "Call Ann", "Work", 5}};
    // A repeat, a number past the end, 0 and a negative are passed over; the
    // tasks the model left out follow in their given order.
    generator->script({filled(R"({"order": [2, 2, 9, 0, -1]})")});
    EXPECT_EQ(awaitAnswer(engine->planDay(three, 90, "en")).value(),
              QList<QUuid>({three[1].id, three[0].id, three[2].id}));
    EXPECT_EQ(requests()[0].prompt, "Time available today: 90 minutes.\n\nReady tasks (numbered):\n1. Water plants - "
                                    "Home - 30 min\n2. Write report - Work\n3. Call Ann - Work - 5 min");
    EXPECT_EQ(requests()[0].schema.value("required"), QJsonArray({"order"}));

    QList<PlannableTask> many;
    QJsonArray backwards;
    for (int i = 0; i < 45; ++i)
        many.append({QUuid::createUuid(), QStringLiteral("Task %1").arg(i + 1), "Flow", {}});
    for (int number = 40; number >= 1; --number)
        backwards.append(number);
    generator->script({GuidedAnswer::filled({{"order", backwards}})});
    QList<QUuid> expected;
    for (int i = 39; i >= 0; --i)
        expected.append(many[i].id);
    for (int i = 40; i < 45; ++i)
        expected.append(many[i].id);
    EXPECT_EQ(awaitAnswer(engine->planDay(many, 480, "en")).value(), expected);
    EXPECT_TRUE(requests()[0].prompt.endsWith("\n40. Task 40 - Flow"));
}

TEST_F(OnDeviceEngineTest, AFailedCallOrARecordOfTheWrongShapeIsGenerationFailed)
{
    const QList<ItemRef> two = items(2);
    const ExpansionContext none;
    const auto failure = [&](const GuidedAnswer &answer, auto call) {
        generator->script({answer});
        const EngineError error = awaitAnswer(call()).error();
        EXPECT_EQ(requests().size(), 1) << "no retry";
        return error;
    };
    const auto link = [&] { return engine->link(two[1], two.first(1), "en"); };
    const auto relink = [&] { return engine->relink(two, "en"); };
    const auto extract = [&] { return engine->extractFlow("Plan a trip", "en"); };
    const auto expand = [&] { return engine->expand(two[0], {}, none, "en"); };
    const auto estimate = [&] { return engine->estimate({"a", "b"}, none, "en"); };
    const auto plan = [&] { return engine->planDay({{two[0].id, "a", "F", {}}}, 60, "en"); };

    const GuidedAnswer crashed = GuidedAnswer::failed("the helper exited");
    const QList<EngineError> failed{failure(crashed, link),   failure(crashed, relink),
                                    failure(crashed, extract), failure(crashed, expand),
                                    failure(crashed, estimate), failure(crashed, plan)};
    EXPECT_EQ(failed, QList<EngineError>(6, EngineError::generationFailed));
    EXPECT_EQ(LogCapture::lines().count("guided generation failed: the helper exited"), 6);

    // Whatever a model writes, only what the record allows is read.
    LogCapture::lines().clear();
    const QList<EngineError> malformed{
        failure(filled(R"({})"), link),
        failure(filled(R"({"edges": {}})"), link),
        failure(filled(R"({"edges": [{"before": "1", "after": 2}]})"), link),
        failure(filled(R"({"edges": [{"before": 1.5, "after": 2}]})"), relink),
        failure(filled(R"({"edges": [{"before": 1}]})"), relink),
        failure(filled(R"({"edges": [{"before": 1, "after": 2, "why": "order"}]})"), relink),
        failure(filled(R"({"edges": [], "note": "none"})"), relink),
        failure(filled(R"({"name": 5, "items": []})"), extract),
        failure(filled(R"({"name": "Trip", "items": [["Book"]]})"), extract),
        failure(filled(R"({"items": "Book the hall"})"), expand),
        failure(filled(R"({"minutes": [10, "20"]})"), estimate),
        failure(filled(R"({"order": [1, null]})"), plan),
    };
    EXPECT_EQ(malformed, QList<EngineError>(12, EngineError::generationFailed));
    EXPECT_EQ(LogCapture::lines().filter(QRegularExpression("^guided generation failed: .+")).size(), 12);

    // A later batch that fails loses what the earlier ones found.
    generator->script({filled(R"({"edges": [{"before": 1, "after": 2}]})"), GuidedAnswer::failed("timed out")});
    EXPECT_EQ(awaitAnswer(engine->relink(items(41), "en")).error(), EngineError::generationFailed);
    EXPECT_EQ(requests().size(), 2);
}

} // namespace
} // namespace fenrow::testing
