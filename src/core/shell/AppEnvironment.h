#pragma once

#include "capture/EngineAvailability.h"
#include "capture/GraphInferenceEngine.h"

#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>

namespace fenrow {

enum class EngineSelection { scripted, foundationModels, unavailable };

// Whether the quick-capture combination works while another program is in
// front: `none` while no hot key is installed (before onboarding is done),
// `registered` while the desktop holds it for Fenrow, `failed` when the
// desktop refused it.
enum class GlobalHotkeyState { none, registered, failed };

// Makers of the engines the environment can switch to; each call gives a
// new engine. Safe to call from any thread.
struct EngineFactories {
    using Factory = std::function<std::shared_ptr<const GraphInferenceEngine>()>;

    Factory scripted;
    Factory foundationModels;
    Factory unavailable;

    Factory forSelection(EngineSelection selection) const;

    // The engines core can make by itself: its on-device maker gives the
    // unavailable engine. The program and the command line take theirs
    // from `LanguageModel` (fenrow-model), whose maker runs the user's model.
    static EngineFactories standard();
};

// Which inference engine the program uses, and whether a model could answer.
// One per process, on the UI thread. Chosen at start from the launch
// arguments ("--ui-test" takes the scripted engine, with
// "--ui-test-engine-unavailable" the unavailable one) and the live
// availability; afterwards only `refreshAvailability` changes it.
//
// Beside it, what this desktop granted the global hot key, which the views
// read from here as they read the engine's availability.
class AppEnvironment : public QObject {
    Q_OBJECT

public:
    using AvailabilityReader = std::function<EngineAvailability()>;

    static inline const QString uiTestArgument = QStringLiteral("--ui-test");
    static inline const QString engineUnavailableArgument = QStringLiteral("--ui-test-engine-unavailable");

    AppEnvironment(const QStringList &launchArguments, EngineFactories factories = EngineFactories::standard(),
                   AvailabilityReader liveAvailability = platformAvailability, QObject *parent = nullptr);

    EngineSelection engineSelection() const { return m_engineSelection; }
    // Read it when an operation starts; a running operation keeps its engine.
    std::shared_ptr<const GraphInferenceEngine> engine() const { return m_engine; }
    EngineAvailability availability() const { return m_availability; }
    bool hasEngine() const { return m_engineSelection != EngineSelection::unavailable; }
    const QStringList &launchArguments() const { return m_launchArguments; }
    const EngineFactories &factories() const { return m_factories; }
    const AvailabilityReader &liveAvailability() const { return m_liveAvailability; }

    // Reads the live availability again (the program calls it each time it
    // becomes active) and switches engine when a model came or went.
    // Scripted runs never switch.
    void refreshAvailability();

    // The availability where nobody supplies a model (tests, and core
    // alone): unavailable with `frameworkUnavailable`.
    static EngineAvailability platformAvailability();

    GlobalHotkeyState globalHotkeyState() const { return m_globalHotkeyState; }
    // Written by whoever registers the hot key (the shell).
    void setGlobalHotkeyState(GlobalHotkeyState state);

    // The tray widget program beside this one ("fenrow-widget" in the same
    // folder, installed or built with it), or empty where there is none.
    const QString &widgetProgram() const { return m_widgetProgram; }
    void setWidgetProgram(const QString &path) { m_widgetProgram = path; }

signals:
    void availabilityChanged();
    void engineChanged();
    void globalHotkeyStateChanged();

private:
    QStringList m_launchArguments;
    EngineFactories m_factories;
    AvailabilityReader m_liveAvailability;
    EngineSelection m_engineSelection = EngineSelection::unavailable;
    std::shared_ptr<const GraphInferenceEngine> m_engine;
    EngineAvailability m_availability;
    GlobalHotkeyState m_globalHotkeyState = GlobalHotkeyState::none;
    QString m_widgetProgram;
};

} // namespace fenrow
