#pragma once

#include "LanguageModel.h"

#include <QList>
#include <QPointer>
#include <QWidget>

class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;

namespace fenrow {

class AppPreferences;
struct FoundModel;

// The user's language model: which GGUF file is chosen and how far it
// got (loading, loaded, or why it cannot be used), a file picked by hand
// or one of the models already on this computer, and a short trial run
// that says how fast the model answers.
//
// The page only writes `languageModelPath`; whoever owns the model (the
// program) follows the preference and loads it, and the page follows the
// model's state. Without a model (`model` null) it still shows and writes
// the choice. The disk is searched and the trial run off the UI thread.
class SettingsModelPage : public QWidget {
    Q_OBJECT

public:
    explicit SettingsModelPage(AppPreferences &preferences, LanguageModel *model = LanguageModel::current(),
                               QWidget *parent = nullptr);

    // What picking a file in the dialog does: a usable GGUF file becomes
    // the chosen model; any other leaves the choice as it was and says why.
    void chooseFile(const QString &path);

private:
    void showChoice();
    void showFound(const QList<FoundModel> &found);
    void findModels();
    void tryModel();
    void updateTryButton();

    AppPreferences &m_preferences;
    // Gone with the program, or with a test's model.
    QPointer<LanguageModel> m_model;
    QLabel *m_file = nullptr;
    QLabel *m_details = nullptr;
    QLabel *m_state = nullptr;
    QProgressBar *m_progress = nullptr;
    QPushButton *m_remove = nullptr;
    QLabel *m_refused = nullptr;
    QPushButton *m_try = nullptr;
    QLabel *m_trial = nullptr;
    QLabel *m_foundState = nullptr;
    QListWidget *m_found = nullptr;
    QPushButton *m_use = nullptr;
    bool m_trying = false;
};

} // namespace fenrow
