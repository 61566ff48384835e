#include "ModelHelper.h"
#include "capture/OnDeviceEngine.h"
#include "TinyModel.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include <cmath>
#include <csignal>
#include <functional>
#include <thread>

using namespace fenrow;
using namespace std::chrono_literals;

namespace {

const QString helperDir = QStringLiteral(FENROW_MODEL_HELPER_DIR);

QString tinyModel()
{
    QString problem;
    const QString path = fenrow::testing::tinyModel(&problem);
    EXPECT_FALSE(path.isEmpty()) << problem.toStdString();
    return path;
}

ModelHelperSettings tinySettings()
{
    ModelHelperSettings settings;
    settings.modelPath = tinyModel();
    // One thread: on a busy machine llama.cpp's threads spend their time
    // waiting for each other.
    settings.threads = 1;
    settings.contextSize = 512;
    settings.callTimeLimit = 60s;
    settings.loadTimeLimit = 60s;
    return settings;
}

QJsonObject schema(const char *json)
{
    return QJsonDocument::fromJson(json).object();
}

// Whether `value` is an instance of `schema` (objects, arrays, strings and
// integers, which is all the engine's records use).
bool conforms(const QJsonValue &value, const QJsonObject &schema)
{
    const QString type = schema.value(QStringLiteral("type")).toString();
    if (type == QStringLiteral("object")) {
        if (!value.isObject())
            return false;
        const QJsonObject object = value.toObject();
        const QJsonObject properties = schema.value(QStringLiteral("properties")).toObject();
        for (const QJsonValue required : schema.value(QStringLiteral("required")).toArray()) {
            if (!object.contains(required.toString()))
                return false;
        }
        for (auto it = object.begin(); it != object.end(); ++it) {
            if (!properties.contains(it.key()) || !conforms(it.value(), properties.value(it.key()).toObject()))
                return false;
        }
        return true;
    }
    if (type == QStringLiteral("array")) {
        if (!value.isArray())
            return false;
        for (const QJsonValue item : value.toArray()) {
            if (!conforms(item, schema.value(QStringLiteral("items")).toObject()))
                return false;
        }
        return true;
    }
    if (type == QStringLiteral("string"))
        return value.isString();
    if (type == QStringLiteral("integer"))
        return value.isDouble() && value.toDouble() == std::floor(value.toDouble());
    return false;
}

// The engine's five record shapes, with guides as descriptions.
const QList<QJsonObject> &recordShapes()
{
    static const QList<QJsonObject> shapes{
        schema(R"({"type":"object","properties":{"edges":{"type":"array","description":"Every dependency edge.",
            "items":{"type":"object","properties":{"before":{"type":"integer","description":"The prerequisite."},
            "after":{"type":"integer","description":"The dependent item."}},"required":["before","after"]}}},"required":["edges"]})"),
        schema(R"({"type":"object","properties":{"name":{"type":"string","description":"A short name."},
            "items":{"type":"array","items":{"type":"string"}}},"required":["name","items"]})"),
        schema(R"({"type":"object","properties":{"items":{"type":"array","items":{"type":"string"}}},"required":["items"]})"),
        schema(R"({"type":"object","properties":{"minutes":{"type":"array","items":{"type":"integer"}}},"required":["minutes"]})"),
        schema(R"({"type":"object","properties":{"order":{"type":"array","items":{"type":"integer"}}},"required":["order"]})"),
    };
    return shapes;
}

// Forces an answer longer than the context, so that the call runs for
// seconds: 1,000 booleans.
GuidedRequest longRequest()
{
    return {QStringLiteral("Answer."), QStringLiteral("Go."),
            schema(R"({"type":"object","properties":{"flags":{"type":"array","items":{"type":"boolean"},"minItems":1000}},"required":["flags"]})"),
            0.1};
}

bool waitFor(const std::function<bool()> &condition, std::chrono::milliseconds limit)
{
    QDeadlineTimer deadline(limit);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QThread::msleep(5);
    }
    return true;
}

} // namespace

TEST(ModelHelper, LoadsWithProgressAndAnswersEveryEngineOperationAtOnce)
{
    ModelHelper helper(tinySettings());
    QList<ModelStatus> seen;
    QObject receiver;
    QObject::connect(&helper, &ModelHelper::statusChanged, &receiver, [&](const ModelStatus &status) { seen << status; });

    const ModelStatus loaded = helper.waitUntilLoaded(60s);
    ASSERT_EQ(loaded.state, ModelStatus::State::Ready) << loaded.message.toStdString();
    EXPECT_EQ(loaded.model.name, QStringLiteral("Fenrow tiny test model"));
    EXPECT_EQ(loaded.model.size, QFile(tinyModel()).size());
    EXPECT_EQ(loaded.model.contextSize, 512);
    EXPECT_EQ(loaded.model.architecture, QStringLiteral("llama"));
    QCoreApplication::processEvents();
    const bool sawProgress = std::any_of(seen.begin(), seen.end(), [](const ModelStatus &s) {
        return s.state == ModelStatus::State::Loading && s.progress > 0 && s.progress < 1;
    });
    EXPECT_TRUE(sawProgress);

    // The engine's six operations at once, from its worker threads: each
    // reaches the model with its own record and passes the engine's check
    // of the answer against that record.
    const auto engine =
        std::make_shared<OnDeviceEngine>(std::shared_ptr<const GuidedGenerator>(&helper, [](const GuidedGenerator *) {}));
    const ItemRef pack{QUuid::createUuid(), QStringLiteral("Pack")};
    const ItemRef travel{QUuid::createUuid(), QStringLiteral("Travel")};
    const ExpansionContext trip{QStringLiteral("Trip"), {}};
    const QString en = QStringLiteral("en");
    auto link = engine->link(travel, {pack}, en);
    auto relink = engine->relink({pack, travel}, en);
    auto flow = engine->extractFlow(QStringLiteral("Pack the bags, then travel."), en);
    auto expand = engine->expand(pack, QString(), trip, en);
    auto estimate = engine->estimate({pack.title, travel.title}, trip, en);
    auto plan = engine->planDay({{pack.id, pack.title, trip.topic, 30}, {travel.id, travel.title, trip.topic, {}}}, 120, en);
    const auto failure = [](const auto &future) {
        return future.result().ok() ? std::string() : engineErrorDescription(future.result().error()).toStdString();
    };
    for (QFuture<void> future : {QFuture<void>(link), QFuture<void>(relink), QFuture<void>(flow), QFuture<void>(expand),
                                 QFuture<void>(estimate), QFuture<void>(plan)})
        future.waitForFinished();
    EXPECT_TRUE(link.result().ok()) << failure(link);
    EXPECT_TRUE(relink.result().ok()) << failure(relink);
    EXPECT_TRUE(flow.result().ok()) << failure(flow);
    EXPECT_TRUE(expand.result().ok()) << failure(expand);
    ASSERT_TRUE(estimate.result().ok()) << failure(estimate);
    EXPECT_EQ(estimate.result().value().size(), 2);
    ASSERT_TRUE(plan.result().ok()) << failure(plan);
    EXPECT_EQ(QSet<QUuid>(plan.result().value().begin(), plan.result().value().end()), (QSet<QUuid>{pack.id, travel.id}));
    EXPECT_EQ(plan.result().value().size(), 2);

    const ModelTrial trial = helper.tryModel();
    ASSERT_TRUE(trial.ok) << trial.failure.toStdString();
    EXPECT_GT(trial.tokens, 1);
    EXPECT_GT(trial.tokensPerSecond, 0);
}

TEST(ModelHelperEcho, InstructionPromptAndSchemaReachTheModelByteForByte)
{
    ModelHelperSettings settings = tinySettings();
    settings.echo = true;
    ModelHelper helper(settings);
    const GuidedRequest request{
        QStringLiteral("Sprache \u201Ede\u201C \u2014 \"quoted\"\\ and\ttabs.\nSecond line: \u00FC\u00DF\u00E7 \u65E5\u672C \u2713"),
        QStringLiteral("Tasks (numbered):\n1. B\u00FCcher zur\u00FCckgeben\n2. \u041F\u043E\u0437\u0432\u043E\u043D\u0438\u0442\u044C\n\nItem 2 is new."),
        schema(R"({"type":"object","properties":{"items":{"type":"array","description":"K\u00fcrze \u201Etitles\u201C","items":{"type":"string"}}},"required":["items"]})"),
        0.1};

    const GuidedAnswer answer = helper.generate(request);
    ASSERT_TRUE(answer.ok()) << answer.failure().toStdString();
    const QJsonObject echoed = answer.record();
    EXPECT_EQ(echoed.value(QStringLiteral("instruction")).toString(), request.instruction);
    EXPECT_EQ(echoed.value(QStringLiteral("prompt")).toString(), request.prompt);
    EXPECT_EQ(echoed.value(QStringLiteral("schema")).toObject(), request.schema);
    EXPECT_EQ(echoed.value(QStringLiteral("temperature")).toDouble(), 0.1);
    // What the model was fed, read back from its tokens: the instruction,
    // then the prompt with the schema after it.
    const QString fed = echoed.value(QStringLiteral("modelText")).toString();
    const QString schemaText = QString::fromUtf8(QJsonDocument(request.schema).toJson(QJsonDocument::Compact));
    const qsizetype instructionAt = fed.indexOf(request.instruction);
    const qsizetype promptAt = fed.indexOf(request.prompt);
    ASSERT_GE(instructionAt, 0) << fed.toStdString();
    ASSERT_GT(promptAt, instructionAt) << fed.toStdString();
    EXPECT_GT(fed.indexOf(schemaText, promptAt + request.prompt.size()), 0) << fed.toStdString();

    // A second call is a fresh session: nothing of the first is fed again.
    const GuidedAnswer second = helper.generate({QStringLiteral("Other."), QStringLiteral("Only this."), request.schema, 0.1});
    ASSERT_TRUE(second.ok()) << second.failure().toStdString();
    const QString fedAgain = second.record().value(QStringLiteral("modelText")).toString();
    EXPECT_TRUE(fedAgain.contains(QStringLiteral("Only this.")));
    EXPECT_FALSE(fedAgain.contains(request.instruction)) << fedAgain.toStdString();
    EXPECT_FALSE(fedAgain.contains(request.prompt)) << fedAgain.toStdString();
}

TEST(ModelHelperFailures, KilledHelperFailsItsCallAndTheNextCallStartsAFreshOne)
{
    ModelHelper helper(tinySettings());
    const ModelStatus first = helper.waitUntilLoaded(60s);
    ASSERT_EQ(first.state, ModelStatus::State::Ready) << first.message.toStdString();

    GuidedAnswer killed = GuidedAnswer::failed(QString());
    std::thread caller([&] { killed = helper.generate(longRequest()); });
    ASSERT_TRUE(waitFor([&] { return helper.status().answering; }, 10s));
    ::kill(static_cast<pid_t>(first.model.processID), SIGKILL);
    caller.join();
    ASSERT_FALSE(killed.ok());
    EXPECT_TRUE(killed.failure().contains(QStringLiteral("crashed or was killed"))) << killed.failure().toStdString();

    const GuidedAnswer next = helper.generate({QStringLiteral("Plan."), QStringLiteral("1. A"), recordShapes().at(4), 0.1});
    ASSERT_TRUE(next.ok()) << next.failure().toStdString();
    EXPECT_TRUE(conforms(next.record(), recordShapes().at(4)));
    EXPECT_NE(helper.status().model.processID, first.model.processID);
}

TEST(ModelHelperFailures, CallPastTheTimeLimitFailsAndCancelledCallEndsAtOnce)
{
    ModelHelperSettings settings = tinySettings();
    settings.contextSize = 2048;
    settings.callTimeLimit = 1s;
    ModelHelper helper(settings);
    ASSERT_EQ(helper.waitUntilLoaded(60s).state, ModelStatus::State::Ready);
    const qint64 firstProcess = helper.status().model.processID;

    const GuidedAnswer late = helper.generate(longRequest());
    ASSERT_FALSE(late.ok());
    EXPECT_TRUE(late.failure().contains(QStringLiteral("no answer within 1 s"))) << late.failure().toStdString();

    // The next call gets a fresh helper; cancelled, it ends without waiting
    // for the model and leaves that helper running.
    GuidedRequest request = longRequest();
    GuidedAnswer cancelled = GuidedAnswer::failed(QString());
    std::thread caller([&] { cancelled = helper.generate(request); });
    // The stopped helper's state may still be the last one published, so
    // wait for the new process to be the one answering.
    ASSERT_TRUE(waitFor(
        [&] {
            const ModelStatus status = helper.status();
            return status.answering && status.model.processID != firstProcess;
        },
        30s));
    const qint64 secondProcess = helper.status().model.processID;
    request.cancel.cancel();
    caller.join();
    EXPECT_EQ(cancelled.failure(), QStringLiteral("cancelled"));
    EXPECT_EQ(helper.status().state, ModelStatus::State::Ready);
    EXPECT_EQ(helper.status().model.processID, secondProcess);
}

TEST(ModelHelperFailures, FileThatIsNotAModelFailsWithAClearMessage)
{
    QTemporaryDir dir;
    const QString text = dir.filePath(QStringLiteral("notes.gguf"));
    QFile file(text);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("These are my notes, not a model.\n");
    file.close();
    // Right magic, then nothing usable: llama.cpp itself refuses it.
    QFile model(tinyModel());
    ASSERT_TRUE(model.open(QIODevice::ReadOnly));
    const QString truncated = dir.filePath(QStringLiteral("cut.gguf"));
    QFile cut(truncated);
    ASSERT_TRUE(cut.open(QIODevice::WriteOnly));
    cut.write(model.read(4096));
    cut.close();

    const struct {
        QString path;
        QString message;
    } cases[] = {
        {text, QStringLiteral("notes.gguf is not a GGUF model file.")},
        {truncated, QStringLiteral("cut.gguf is not a usable model: ")},
        {dir.filePath(QStringLiteral("gone.gguf")), QStringLiteral("does not exist")},
    };
    for (const auto &c : cases) {
        ModelHelperSettings settings = tinySettings();
        settings.modelPath = c.path;
        ModelHelper helper(settings);
        const ModelStatus status = helper.waitUntilLoaded(60s);
        EXPECT_EQ(status.state, ModelStatus::State::Failed) << c.path.toStdString();
        EXPECT_TRUE(status.message.contains(c.message)) << status.message.toStdString();
        // Calls fail with the same words, without another try.
        const GuidedAnswer answer = helper.generate({QStringLiteral("I"), QStringLiteral("P"), recordShapes().at(2), 0.1});
        EXPECT_EQ(answer.failure(), status.message);
    }
}

TEST(ModelHelperFailures, NoNodeOrAnOldOneMakesTheEngineUnavailableWithTheReason)
{
    QTemporaryDir dir;
    const QString oldNode = dir.filePath(QStringLiteral("node"));
    QFile script(oldNode);
    ASSERT_TRUE(script.open(QIODevice::WriteOnly));
    script.write("#!/bin/sh\necho v18.19.0\n");
    script.close();
    script.setPermissions(script.permissions() | QFileDevice::ExeOwner);

    const struct {
        QString node;
        QString reason;
    } cases[] = {
        {dir.filePath(QStringLiteral("missing/node")), QStringLiteral("Node.js 20 or newer is needed for the language model; it is not installed.")},
        {oldNode, QStringLiteral("Node.js 20 or newer is needed for the language model; this computer has v18.19.0.")},
    };
    for (const auto &c : cases) {
        ModelHelperSettings settings = tinySettings();
        settings.nodeProgram = c.node;
        ModelHelper helper(settings);
        const GuidedAnswer answer = helper.generate({QStringLiteral("I"), QStringLiteral("P"), recordShapes().at(2), 0.1});
        EXPECT_EQ(answer.failure(), c.reason);
        EXPECT_EQ(helper.status().state, ModelStatus::State::Unavailable);
        EXPECT_EQ(helper.status().message, c.reason);
    }
}

TEST(ModelHelperFailures, HelperWritingGarbageFailsTheCall)
{
    // A stand-in for node that speaks the protocol until a request comes.
    QTemporaryDir dir;
    const QString fake = dir.filePath(QStringLiteral("node"));
    QFile script(fake);
    ASSERT_TRUE(script.open(QIODevice::WriteOnly));
    script.write("#!/bin/sh\n"
                 "[ \"$1\" = --version ] && { echo v20.0.0; exit 0; }\n"
                 "echo '{\"event\":\"ready\",\"model\":{\"name\":\"fake\"}}'\n"
                 "read request\n"
                 "echo 'Segmentation fault (core dumped) {'\n"
                 "read never\n");
    script.close();
    script.setPermissions(script.permissions() | QFileDevice::ExeOwner);

    ModelHelperSettings settings = tinySettings();
    settings.nodeProgram = fake;
    ModelHelper helper(settings);
    const GuidedAnswer answer = helper.generate({QStringLiteral("I"), QStringLiteral("P"), recordShapes().at(2), 0.1});
    ASSERT_FALSE(answer.ok());
    EXPECT_TRUE(answer.failure().startsWith(QStringLiteral("the model helper wrote something that is not its protocol: Segmentation fault")))
        << answer.failure().toStdString();
}
