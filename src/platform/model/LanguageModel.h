#pragma once

#include "ModelHelper.h"
#include "capture/EngineAvailability.h"
#include "shell/AppEnvironment.h"

#include <QObject>
#include <QString>

#include <memory>
#include <optional>

namespace fenrow {

// The language model the user chose ("languageModelPath"), as the rest of
// the program sees it: one warm helper per chosen file, the availability it
// gives the engine, and the on-device engine over it. The helper of a
// file no longer chosen lives on only as long as a running operation holds
// it. UI thread only, except what the engine does with the helper.
class LanguageModel : public QObject {
    Q_OBJECT

public:
    explicit LanguageModel(ModelHelperSettings defaults = {}, QObject *parent = nullptr);
    ~LanguageModel() override;

    // The first one made in this process and still alive: the program's,
    // or a command's run alone. What says which model answered asks it.
    static LanguageModel *current();

    // Another file drops the old helper; the new one starts loading when
    // `loadNow` is set, else on first use. None: no model.
    void choose(const std::optional<QString> &path, bool loadNow = true);
    const std::optional<QString> &path() const { return m_path; }
    // Loads the chosen model if it is not loading or loaded yet.
    void load();
    // Forgets a failure and loads the file again.
    void reload();

    // Idle with no model chosen.
    ModelStatus status() const;
    std::shared_ptr<ModelHelper> helper() const { return m_helper; }

    // No model or no Node.js: frameworkUnavailable; loading: modelNotReady;
    // a file that is no usable model: modelUnusable; loaded: available.
    EngineAvailability availability() const;
    static EngineAvailability availabilityOf(const std::optional<QString> &path, const ModelStatus &status);
    // The program's engines, the on-device one over this model's helper.
    EngineFactories factories() const;

signals:
    // The helper's state moved (loading progress, ready, failed); on the
    // UI thread.
    void statusChanged();

private:
    ModelHelperSettings m_defaults;
    std::optional<QString> m_path;
    std::shared_ptr<ModelHelper> m_helper;
};

} // namespace fenrow
