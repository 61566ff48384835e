#include "SettingsModelPage.h"

#include "SettingsForm.h"
#include "look/Theme.h"
#include "capture/ModelCatalog.h"
#include "shell/AppPreferences.h"
#include "shell/InterfaceLanguage.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QPointer>
#include <QProcessEnvironment>
#include <QProgressBar>
#include <QPushButton>
#include <QThread>
#include <QVBoxLayout>

#include <memory>

namespace fenrow {

namespace {

QLocale interfaceLocale()
{
    return QLocale(InterfaceLanguage::current());
}

QString sizeText(qint64 bytes)
{
    return interfaceLocale().formattedDataSize(bytes);
}

void setWarning(QLabel *label, bool warning)
{
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, warning ? Theme::Color::warning : Theme::Color::text);
    label->setPalette(palette);
}

QString refusalText(ModelCatalog::FileProblem problem, const QString &fileName)
{
    switch (problem) {
    case ModelCatalog::FileProblem::notFound:
        return qtTrId("settings.model.refused.notFound").arg(fileName);
    case ModelCatalog::FileProblem::unreadable:
        return qtTrId("settings.model.refused.unreadable").arg(fileName);
    case ModelCatalog::FileProblem::notModel:
        break;
    }
    return qtTrId("settings.model.refused.notModel").arg(fileName);
}

// Runs `work` on a thread of its own and `done` with its result on the UI
// thread, unless `receiver` is gone by then.
template <typename Result, typename Work, typename Done>
void runOffThread(QObject *receiver, Work work, Done done)
{
    auto result = std::make_shared<Result>();
    QThread *thread = QThread::create([result, work] { *result = work(); });
    QObject::connect(thread, &QThread::finished, receiver, [result, done] { done(*result); });
    QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start();
}

} // namespace

SettingsModelPage::SettingsModelPage(AppPreferences &preferences, LanguageModel *model, QWidget *parent)
    : QWidget(parent), m_preferences(preferences), m_model(model)
{
    QVBoxLayout *column = SettingsForm::makePage(this, qtTrId("settings.page.model"));
    QLabel *privacy = SettingsForm::caption(qtTrId("settings.model.privacy"), this);
    privacy->setObjectName(QStringLiteral("settings.model.privacy"));
    column->addWidget(privacy);

    column->addWidget(SettingsForm::sectionTitle(qtTrId("settings.model.chosen.title"), this));
    m_file = new QLabel(this);
    m_file->setObjectName(QStringLiteral("settings.model.file"));
    m_file->setFont(Theme::sectionFont());
    m_file->setTextInteractionFlags(Qt::TextSelectableByMouse);
    column->addWidget(m_file);
    m_details = SettingsForm::caption(QString(), this);
    m_details->setObjectName(QStringLiteral("settings.model.details"));
    m_details->setTextInteractionFlags(Qt::TextSelectableByMouse);
    column->addWidget(m_details);
    m_state = new QLabel(this);
    m_state->setObjectName(QStringLiteral("settings.model.state"));
    m_state->setWordWrap(true);
    column->addWidget(m_state);
    m_progress = new QProgressBar(this);
    m_progress->setObjectName(QStringLiteral("settings.model.progress"));
    m_progress->setRange(0, 100);
    m_progress->setTextVisible(false);
    m_progress->setMaximumHeight(8);
    column->addWidget(m_progress);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    auto *choose = new QPushButton(qtTrId("settings.model.choose"), this);
    choose->setObjectName(QStringLiteral("settings.model.choose"));
    m_remove = new QPushButton(qtTrId("settings.model.remove"), this);
    m_remove->setObjectName(QStringLiteral("settings.model.remove"));
    buttons->addWidget(choose);
    buttons->addWidget(m_remove);
    buttons->addStretch(1);
    column->addLayout(buttons);
    m_refused = SettingsForm::warning(QString(), QStringLiteral("settings.model.refused"), this);
    column->addWidget(m_refused);
    connect(choose, &QPushButton::clicked, this, [this] {
        const std::optional<QString> chosen = m_preferences.languageModelPath();
        const QString start = chosen ? QFileInfo(*chosen).absolutePath() : QDir::homePath();
        const QString path = QFileDialog::getOpenFileName(this, qtTrId("settings.model.choose.dialog"), start,
                                                          qtTrId("settings.model.choose.filter"));
        if (!path.isEmpty())
            chooseFile(path);
    });
    connect(m_remove, &QPushButton::clicked, this, [this] {
        m_refused->hide();
        m_preferences.setLanguageModelPath(std::nullopt);
    });

    column->addWidget(SettingsForm::sectionTitle(qtTrId("settings.model.try.title"), this));
    column->addWidget(SettingsForm::caption(qtTrId("settings.model.try.caption"), this));
    m_try = new QPushButton(qtTrId("settings.model.try"), this);
    m_try->setObjectName(QStringLiteral("settings.model.try"));
    column->addWidget(m_try, 0, Qt::AlignLeft);
    m_trial = new QLabel(this);
    m_trial->setObjectName(QStringLiteral("settings.model.trial"));
    m_trial->setWordWrap(true);
    m_trial->hide();
    column->addWidget(m_trial);
    connect(m_try, &QPushButton::clicked, this, &SettingsModelPage::tryModel);

    column->addWidget(SettingsForm::sectionTitle(qtTrId("settings.model.found.title"), this));
    column->addWidget(SettingsForm::caption(qtTrId("settings.model.found.caption"), this));
    m_foundState = SettingsForm::caption(QString(), this);
    m_foundState->setObjectName(QStringLiteral("settings.model.found.state"));
    column->addWidget(m_foundState);
    m_found = new QListWidget(this);
    m_found->setObjectName(QStringLiteral("settings.model.found"));
    m_found->setMinimumHeight(110);
    m_found->hide();
    column->addWidget(m_found);
    m_use = new QPushButton(qtTrId("settings.model.use"), this);
    m_use->setObjectName(QStringLiteral("settings.model.use"));
    m_use->setEnabled(false);
    m_use->hide();
    column->addWidget(m_use, 0, Qt::AlignLeft);
    connect(m_found, &QListWidget::currentItemChanged, this,
            [this](QListWidgetItem *item) { m_use->setEnabled(item != nullptr); });
    connect(m_use, &QPushButton::clicked, this, [this] {
        if (const QListWidgetItem *item = m_found->currentItem())
            chooseFile(item->data(Qt::UserRole).toString());
    });
    column->addStretch(1);

    connect(&m_preferences, &AppPreferences::changed, this, [this](const QString &key) {
        if (key == QLatin1StringView(PreferenceKey::languageModelPath)) {
            m_trial->hide();
            showChoice();
        }
    });
    if (m_model)
        connect(m_model, &LanguageModel::statusChanged, this, &SettingsModelPage::showChoice);
    showChoice();
    findModels();
}

void SettingsModelPage::chooseFile(const QString &path)
{
    if (path.isEmpty())
        return;
    if (const std::optional<ModelCatalog::FileProblem> reason = ModelCatalog::checkFile(path)) {
        m_refused->setText(refusalText(*reason, QFileInfo(path).fileName()) + QLatin1Char(' ') +
                           qtTrId("settings.model.refused.kept"));
        m_refused->show();
        return;
    }
    m_refused->hide();
    // Choosing the file already chosen gives a model that failed another
    // chance, say after a partial download finished.
    if (m_model && m_preferences.languageModelPath() == path && m_model->path() == path &&
        m_model->status().state == ModelStatus::State::Failed) {
        m_model->reload();
        return;
    }
    m_preferences.setLanguageModelPath(path);
}

void SettingsModelPage::showChoice()
{
    const std::optional<QString> path = m_preferences.languageModelPath();
    m_remove->setEnabled(path.has_value());
    // Removing the model is also how its loading is given up.
    m_remove->setText(qtTrId("settings.model.remove"));
    m_file->setVisible(path.has_value());
    m_details->setVisible(path.has_value());
    m_progress->hide();
    setWarning(m_state, false);
    if (!path) {
        m_state->setText(qtTrId("settings.model.state.none"));
        updateTryButton();
        return;
    }
    const QFileInfo file(*path);
    m_file->setText(file.fileName());
    m_details->setText(file.exists() ? qtTrId("settings.model.details")
                                           .arg(QDir::toNativeSeparators(file.absolutePath()), sizeText(file.size()))
                                     : QDir::toNativeSeparators(file.absolutePath()));
    // Until the owner of the model has followed the preference, its state
    // is that of another file.
    const ModelStatus status = m_model && m_model->path() == path ? m_model->status() : ModelStatus{};
    switch (status.state) {
    case ModelStatus::State::Idle:
        m_state->setText(qtTrId("settings.model.state.idle"));
        break;
    case ModelStatus::State::Loading:
        m_state->setText(qtTrId("settings.model.state.loading"));
        m_progress->setValue(int(status.progress * 100));
        m_progress->show();
        m_remove->setText(qtTrId("settings.model.stopLoading"));
        break;
    case ModelStatus::State::Ready:
        m_state->setText(qtTrId("settings.model.state.ready")
                             .arg(status.model.name.isEmpty() ? file.fileName() : status.model.name,
                                  interfaceLocale().toString(status.model.contextSize)));
        break;
    case ModelStatus::State::Failed:
        m_state->setText(qtTrId("settings.model.state.failed").arg(status.message));
        setWarning(m_state, true);
        break;
    case ModelStatus::State::Unavailable:
        m_state->setText(qtTrId("settings.model.state.unavailable").arg(status.message));
        setWarning(m_state, true);
        break;
    }
    updateTryButton();
}

void SettingsModelPage::updateTryButton()
{
    const bool loaded = m_model && m_model->path() == m_preferences.languageModelPath() &&
                        m_model->status().state == ModelStatus::State::Ready;
    m_try->setEnabled(loaded && !m_trying);
}

void SettingsModelPage::tryModel()
{
    const std::shared_ptr<ModelHelper> helper = m_model ? m_model->helper() : nullptr;
    if (!helper || m_trying)
        return;
    m_trying = true;
    updateTryButton();
    setWarning(m_trial, false);
    m_trial->setText(qtTrId("settings.model.trial.running"));
    m_trial->show();
    runOffThread<ModelTrial>(
        this, [helper] { return helper->tryModel(); },
        [this](const ModelTrial &trial) {
            m_trying = false;
            const QLocale locale = interfaceLocale();
            if (trial.ok)
                m_trial->setText(qtTrId("settings.model.trial.result")
                                     .arg(locale.toString(trial.tokens), locale.toString(trial.seconds, 'f', 1),
                                          locale.toString(trial.tokensPerSecond, 'f', 1)));
            else
                m_trial->setText(qtTrId("settings.model.trial.failed").arg(trial.failure));
            setWarning(m_trial, !trial.ok);
            updateTryButton();
        });
}

void SettingsModelPage::findModels()
{
    m_foundState->setText(qtTrId("settings.model.found.looking"));
    m_foundState->show();
    runOffThread<QList<FoundModel>>(
        this, [] { return ModelCatalog::find(QDir::homePath(), QProcessEnvironment::systemEnvironment()); },
        [this](const QList<FoundModel> &found) { showFound(found); });
}

void SettingsModelPage::showFound(const QList<FoundModel> &found)
{
    m_found->clear();
    for (const FoundModel &model : found) {
        auto *item = new QListWidgetItem(
            qtTrId("settings.model.found.item").arg(model.name, model.source, sizeText(model.size)), m_found);
        item->setData(Qt::UserRole, model.path);
        item->setToolTip(QDir::toNativeSeparators(model.path));
    }
    m_foundState->setText(qtTrId("settings.model.found.none"));
    m_foundState->setVisible(found.isEmpty());
    m_found->setVisible(!found.isEmpty());
    m_use->setVisible(!found.isEmpty());
    m_use->setEnabled(m_found->currentItem() != nullptr);
}

} // namespace fenrow
