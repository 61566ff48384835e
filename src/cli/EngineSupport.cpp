#include "EngineSupport.h"

#include "CommandContext.h"
#include "CommandRegistry.h"

#include "shell/AppEnvironment.h"

#include <QEventLoop>

namespace fenrow::EngineSupport {

std::unique_ptr<AppEnvironment> environment(const CommandContext &context)
{
    QStringList arguments{QStringLiteral("fenrow")};
    if (context.hasOption(GlobalOption::uiTest))
        arguments.append(AppEnvironment::uiTestArgument);
    if (context.hasOption(GlobalOption::uiTestEngineUnavailable))
        arguments.append(AppEnvironment::engineUnavailableArgument);
    return std::make_unique<AppEnvironment>(arguments);
}

void waitUntil(const std::function<bool()> &done)
{
    QEventLoop loop;
    while (!done())
        loop.processEvents(QEventLoop::WaitForMoreEvents);
}

QString whyNoEngine(const AppEnvironment &environment)
{
    // A scripted run told to go without an engine may still read a model
    // as available.
    if (environment.availability().isAvailable())
        return QStringLiteral("This run uses no inference engine.");
    return environment.availability().readout();
}

} // namespace fenrow::EngineSupport
