#include "LanguageModel.h"

#include "capture/OnDeviceEngine.h"
#include "capture/ScriptedInferenceEngine.h"
#include "capture/UnavailableEngine.h"

#include <QThread>

namespace fenrow {

namespace {

// A helper is a QObject: whoever lets go of it last (an engine worker,
// perhaps), it is deleted on the thread it belongs to.
std::shared_ptr<ModelHelper> makeHelper(ModelHelperSettings settings)
{
    return std::shared_ptr<ModelHelper>(new ModelHelper(std::move(settings)), [](ModelHelper *helper) {
        if (QThread::currentThread() == helper->thread())
            delete helper;
        else
            helper->deleteLater();
    });
}

LanguageModel *currentModel = nullptr;

} // namespace

LanguageModel::LanguageModel(ModelHelperSettings defaults, QObject *parent)
    : QObject(parent), m_defaults(std::move(defaults))
{
    if (!currentModel)
        currentModel = this;
}

LanguageModel::~LanguageModel()
{
    if (currentModel == this)
        currentModel = nullptr;
}

LanguageModel *LanguageModel::current()
{
    return currentModel;
}

void LanguageModel::choose(const std::optional<QString> &path, bool loadNow)
{
    if (path == m_path && (m_helper || !path)) {
        if (loadNow)
            load();
        return;
    }
    m_path = path;
    if (m_helper)
        disconnect(m_helper.get(), nullptr, this, nullptr);
    m_helper.reset();
    if (m_path) {
        ModelHelperSettings settings = m_defaults;
        settings.modelPath = *m_path;
        m_helper = makeHelper(std::move(settings));
        connect(m_helper.get(), &ModelHelper::statusChanged, this, &LanguageModel::statusChanged,
                Qt::QueuedConnection);
        if (loadNow)
            m_helper->start();
    }
    emit statusChanged();
}

void LanguageModel::load()
{
    if (m_helper)
        m_helper->start();
}

void LanguageModel::reload()
{
    if (!m_helper)
        return;
    m_helper->restart();
    m_helper->start();
}

ModelStatus LanguageModel::status() const
{
    return m_helper ? m_helper->status() : ModelStatus{};
}

EngineAvailability LanguageModel::availability() const
{
    return availabilityOf(m_path, status());
}

EngineAvailability LanguageModel::availabilityOf(const std::optional<QString> &path, const ModelStatus &status)
{
    using Reason = EngineAvailability::Reason;
    if (!path)
        return EngineAvailability::unavailable(Reason::frameworkUnavailable);
    switch (status.state) {
    case ModelStatus::State::Ready:
        return EngineAvailability::available();
    case ModelStatus::State::Failed:
        return EngineAvailability::unavailable(Reason::modelUnusable);
    case ModelStatus::State::Unavailable:
        return EngineAvailability::unavailable(Reason::frameworkUnavailable);
    case ModelStatus::State::Idle:
    case ModelStatus::State::Loading:
        break;
    }
    return EngineAvailability::unavailable(Reason::modelNotReady);
}

EngineFactories LanguageModel::factories() const
{
    EngineFactories factories = EngineFactories::standard();
    factories.foundationModels = [this]() -> std::shared_ptr<const GraphInferenceEngine> {
        if (!m_helper)
            return std::make_shared<UnavailableEngine>();
        return std::make_shared<OnDeviceEngine>(std::shared_ptr<const GuidedGenerator>(m_helper, m_helper.get()));
    };
    return factories;
}

} // namespace fenrow
