#include "TestEngines.h"

#include "capture/UnavailableEngine.h"
#include "shell/AppEnvironment.h"

#include <QSignalSpy>

namespace fenrow::testing {
namespace {

using Reason = EngineAvailability::Reason;

// Factories that count what they made, and an availability the test moves.
struct Platform {
    EngineAvailability live = EngineAvailability::unavailable(Reason::modelNotReady);
    QList<EngineSelection> made;

    EngineFactories factories()
    {
        auto record = [this](EngineSelection selection, auto make) {
            return [this, selection, make]() -> std::shared_ptr<const GraphInferenceEngine> {
                made.append(selection);
                return make();
            };
        };
        auto scripted = [] { return std::make_shared<ScriptedInferenceEngine>(); };
        auto unavailable = [] { return std::make_shared<UnavailableEngine>(); };
        return {record(EngineSelection::scripted, scripted), record(EngineSelection::foundationModels, scripted),
                record(EngineSelection::unavailable, unavailable)};
    }
    AppEnvironment environment(const QStringList &arguments)
    {
        return AppEnvironment(arguments, factories(), [this] { return live; });
    }
};

TEST(AppEnvironment, ChoosesTheEngineFromArgumentsAndAvailability)
{
    struct Case {
        QStringList arguments;
        bool modelAvailable;
        EngineSelection expected;
    };
    const QList<Case> cases{
        {{"fenrow", "--ui-test"}, false, EngineSelection::scripted},
        {{"fenrow", "--ui-test"}, true, EngineSelection::scripted},
        {{"fenrow", "--ui-test", "--ui-test-engine-unavailable"}, true, EngineSelection::unavailable},
        {{"fenrow"}, true, EngineSelection::foundationModels},
        {{"fenrow"}, false, EngineSelection::unavailable},
        // Without "--ui-test" the second switch does nothing.
        {{"fenrow", "--ui-test-engine-unavailable"}, true, EngineSelection::foundationModels},
    };
    for (const Case &test : cases) {
        SCOPED_TRACE(test.arguments.join(' ').toStdString() + (test.modelAvailable ? " available" : ""));
        Platform platform;
        if (test.modelAvailable)
            platform.live = EngineAvailability::available();
        const AppEnvironment environment = platform.environment(test.arguments);
        EXPECT_EQ(environment.engineSelection(), test.expected);
        EXPECT_EQ(platform.made, QList<EngineSelection>{test.expected});
        // Scripted runs keep the availability as read, too.
        EXPECT_EQ(environment.availability(), platform.live);
        EXPECT_EQ(environment.hasEngine(), test.expected != EngineSelection::unavailable);
    }
}

TEST(AppEnvironment, RefreshSwitchesEngineOnlyWhenTheModelComesOrGoes)
{
    Platform platform;
    AppEnvironment environment = platform.environment({"fenrow"});
    QSignalSpy engineChanges(&environment, &AppEnvironment::engineChanged);
    QSignalSpy availabilityChanges(&environment, &AppEnvironment::availabilityChanged);
    const auto first = environment.engine();

    // Still not ready: nothing at all.
    environment.refreshAvailability();
    EXPECT_EQ(availabilityChanges.size(), 0);

    // Another reason: the readout changes, the engine stays.
    platform.live = EngineAvailability::unavailable(Reason::deviceNotEligible);
    environment.refreshAvailability();
    EXPECT_EQ(availabilityChanges.size(), 1);
    EXPECT_EQ(engineChanges.size(), 0);
    EXPECT_EQ(environment.engine(), first);

    platform.live = EngineAvailability::available();
    environment.refreshAvailability();
    EXPECT_EQ(environment.engineSelection(), EngineSelection::foundationModels);
    EXPECT_EQ(engineChanges.size(), 1);
    EXPECT_NE(environment.engine(), first);

    platform.live = EngineAvailability::unavailable(Reason::modelNotReady);
    environment.refreshAvailability();
    EXPECT_EQ(environment.engineSelection(), EngineSelection::unavailable);
    EXPECT_EQ(platform.made, QList<EngineSelection>({EngineSelection::unavailable, EngineSelection::foundationModels,
                                                     EngineSelection::unavailable}));
}

TEST(AppEnvironment, ScriptedRunsNeverChange)
{
    Platform platform;
    AppEnvironment environment = platform.environment({"fenrow", "--ui-test"});
    platform.live = EngineAvailability::available();
    environment.refreshAvailability();
    EXPECT_EQ(environment.engineSelection(), EngineSelection::scripted);
    EXPECT_EQ(environment.availability(), EngineAvailability::unavailable(Reason::modelNotReady));
    EXPECT_EQ(platform.made.size(), 1);
}

TEST(AppEnvironment, WithoutAModelBuiltInTheProgramRunsByHand)
{
    const AppEnvironment environment({"fenrow"});
    EXPECT_EQ(environment.availability(), EngineAvailability::unavailable(Reason::frameworkUnavailable));
    EXPECT_EQ(environment.engineSelection(), EngineSelection::unavailable);
    EXPECT_EQ(awaitAnswer(environment.engine()->relink({{QUuid::createUuid(), "a"}, {QUuid::createUuid(), "b"}}, "en"))
                  .error(),
              EngineError::modelUnavailable);
}

} // namespace
} // namespace fenrow::testing
