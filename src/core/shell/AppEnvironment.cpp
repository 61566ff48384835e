#include "AppEnvironment.h"

#include "capture/ScriptedInferenceEngine.h"
#include "capture/UnavailableEngine.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace fenrow {

EngineFactories::Factory EngineFactories::forSelection(EngineSelection selection) const
{
    switch (selection) {
    case EngineSelection::scripted:
        return scripted;
    case EngineSelection::foundationModels:
        return foundationModels;
    case EngineSelection::unavailable:
        return unavailable;
    }
    return unavailable;
}

EngineFactories EngineFactories::standard()
{
    const auto unavailable = [] { return std::make_shared<UnavailableEngine>(); };
    return {
        .scripted = [] { return std::make_shared<ScriptedInferenceEngine>(); },
        .foundationModels = unavailable,
        .unavailable = unavailable,
    };
}

EngineAvailability AppEnvironment::platformAvailability()
{
    return EngineAvailability::unavailable(EngineAvailability::Reason::frameworkUnavailable);
}

AppEnvironment::AppEnvironment(const QStringList &launchArguments, EngineFactories factories,
                               AvailabilityReader liveAvailability, QObject *parent)
    : QObject(parent), m_launchArguments(launchArguments), m_factories(std::move(factories)),
      m_liveAvailability(std::move(liveAvailability))
{
    m_availability = m_liveAvailability();
    const bool scriptedRun = m_launchArguments.contains(uiTestArgument);
    if (scriptedRun)
        m_engineSelection = m_launchArguments.contains(engineUnavailableArgument) ? EngineSelection::unavailable
                                                                                  : EngineSelection::scripted;
    else
        m_engineSelection = m_availability.isAvailable() ? EngineSelection::foundationModels
                                                         : EngineSelection::unavailable;
    m_engine = m_factories.forSelection(m_engineSelection)();

    const QString widget = QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("fenrow-widget"));
    if (const QFileInfo file(widget); file.isFile() && file.isExecutable())
        m_widgetProgram = widget;
}

void AppEnvironment::refreshAvailability()
{
    if (m_launchArguments.contains(uiTestArgument))
        return;
    const EngineAvailability fresh = m_liveAvailability();
    if (fresh == m_availability)
        return;
    m_availability = fresh;
    emit availabilityChanged();

    const EngineSelection selection =
        fresh.isAvailable() ? EngineSelection::foundationModels : EngineSelection::unavailable;
    if (selection == m_engineSelection)
        return;
    m_engineSelection = selection;
    m_engine = m_factories.forSelection(selection)();
    emit engineChanged();
}

void AppEnvironment::setGlobalHotkeyState(GlobalHotkeyState state)
{
    if (state == m_globalHotkeyState)
        return;
    m_globalHotkeyState = state;
    emit globalHotkeyStateChanged();
}

} // namespace fenrow
