#include "EngineSupport.h"

#include "CommandContext.h"
#include "CommandRegistry.h"

#include "LanguageModel.h"
#include "shell/AppEnvironment.h"
#include "shell/AppPreferences.h"

#include <QEventLoop>
#include <QFileInfo>

namespace fenrow::EngineSupport {

namespace {

// How long a command run alone waits for the user's model to load.
constexpr std::chrono::minutes loadLimit{5};

} // namespace

std::unique_ptr<AppEnvironment> environment(CommandContext &context)
{
    QStringList arguments{QStringLiteral("fenrow")};
    if (context.hasOption(GlobalOption::uiTest))
        arguments.append(AppEnvironment::uiTestArgument);
    if (context.hasOption(GlobalOption::uiTestEngineUnavailable))
        arguments.append(AppEnvironment::engineUnavailableArgument);
    if (context.hasOption(GlobalOption::uiTest))
        return std::make_unique<AppEnvironment>(arguments);

    // The environment holds the model: a command run alone loads it once,
    // however many engine calls it makes, and lets it go when done.
    auto *owned = new LanguageModel;
    LanguageModel &model = *owned;
    model.choose(context.preferences().languageModelPath(), false);
    QTextStream *err = &context.console().err();
    auto environment = std::make_unique<AppEnvironment>(arguments, model.factories(), [&model, err] {
        if (std::shared_ptr<ModelHelper> helper = model.helper()) {
            if (helper->status().state != ModelStatus::State::Ready) {
                *err << "Loading the language model " << QFileInfo(*model.path()).fileName() << "..." << Qt::endl;
                helper->waitUntilLoaded(loadLimit);
            }
        }
        return model.availability();
    });
    owned->setParent(environment.get());
    return environment;
}

QString engineLine(const AppEnvironment &environment)
{
    switch (environment.engineSelection()) {
    case EngineSelection::scripted:
        return QStringLiteral("Engine: the scripted stand-in of this scripted run.");
    case EngineSelection::foundationModels: {
        const LanguageModel *model = LanguageModel::current();
        const ModelStatus status = model ? model->status() : ModelStatus{};
        const QString name = status.model.name.isEmpty() ? QFileInfo(status.model.path).fileName() : status.model.name;
        return QStringLiteral("Engine: the language model %1.").arg(name);
    }
    case EngineSelection::unavailable:
        break;
    }
    return QStringLiteral("Engine: none. ") + whyNoEngine(environment);
}

bool waitUntil(CommandContext &context, const std::function<bool()> &done)
{
    QEventLoop loop;
    while (!done()) {
        if (context.console().isAbandoned())
            return false;
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

QString whyNoEngine(const AppEnvironment &environment)
{
    const LanguageModel *model = LanguageModel::current();
    const ModelStatus status = model ? model->status() : ModelStatus{};
    if (!environment.launchArguments().contains(AppEnvironment::uiTestArgument) &&
        (status.state == ModelStatus::State::Failed || status.state == ModelStatus::State::Unavailable) &&
        !status.message.isEmpty())
        return status.message;
    // A scripted run told to go without an engine may still read a model
    // as available.
    if (environment.availability().isAvailable())
        return QStringLiteral("This run uses no inference engine.");
    return environment.availability().readout();
}

} // namespace fenrow::EngineSupport
