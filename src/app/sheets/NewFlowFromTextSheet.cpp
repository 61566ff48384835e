#include "NewFlowFromTextSheet.h"

#include "capture/GeneratedFlows.h"
#include "domain/TaskFlow.h"
#include "look/Theme.h"
#include "shell/AppEnvironment.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace fenrow {

namespace {

constexpr int sheetWidth = 540;

// A text field where Tab moves on, as in every other field of a sheet, and
// Ctrl+Return presses the sheet's primary button.
class SheetTextEdit : public QPlainTextEdit {
public:
    SheetTextEdit(QPushButton *primary, QWidget *parent) : QPlainTextEdit(parent), m_primary(primary)
    {
        setTabChangesFocus(true);
    }

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) &&
            (event->modifiers() & Qt::ControlModifier)) {
            if (m_primary->isEnabled())
                m_primary->click();
            return;
        }
        QPlainTextEdit::keyPressEvent(event);
    }

private:
    QPushButton *m_primary;
};

} // namespace

NewFlowFromTextSheet::NewFlowFromTextSheet(FenrowStore &store, AppEnvironment &environment,
                                           ActiveFlowState *activeFlow, QWidget *parent)
    : SheetFrame(QStringLiteral("newFlowFromText.sheet"), sheetWidth, parent), m_environment(environment)
{
    m_model = new NewFlowFromTextModel(store, environment, activeFlow, this);
    title()->setText(qtTrId("newFlowFromText.title"));
    subtitle()->setText(qtTrId("newFlowFromText.subtitle"));
    cancelButton()->setText(qtTrId("newFlowFromText.cancel"));
    cancelButton()->setObjectName(QStringLiteral("newFlowFromText.cancel"));
    primaryButton()->setObjectName(QStringLiteral("newFlowFromText.generate"));

    m_banner = new ManualOnlyBannerBar(environment, this);

    m_name = new QLineEdit(this);
    m_name->setObjectName(QStringLiteral("newFlowFromText.name"));
    m_name->setPlaceholderText(qtTrId("newFlowFromText.name.placeholder"));
    QLabel *nameLabel = fieldLabel(qtTrId("newFlowFromText.name.label"), this);
    nameLabel->setBuddy(m_name);
    m_name->setAccessibleName(nameLabel->text());

    m_text = new SheetTextEdit(primaryButton(), this);
    m_text->setObjectName(QStringLiteral("newFlowFromText.field"));
    m_text->setPlaceholderText(qtTrId("newFlowFromText.editor.placeholder"));
    m_text->setMinimumHeight(180);
    m_text->verticalScrollBar()->setStyleSheet(Theme::thinScrollBarStyle());
    QLabel *textLabel = fieldLabel(qtTrId("newFlowFromText.editor.label"), this);
    textLabel->setBuddy(m_text);
    m_text->setAccessibleName(textLabel->text());
    m_textLabel = textLabel;

    m_overBudget = new NoticeRow(QStringLiteral("newFlowFromText.overBudget"), SheetGlyphs::Glyph::scissors, this);
    m_overBudget->setTexts(qtTrId("newFlowFromText.overBudget.title"), qtTrId("newFlowFromText.overBudget.message"));
    m_notice = new NoticeRow(QStringLiteral("newFlowFromText.notice"), SheetGlyphs::Glyph::warning, this);
    m_progress = new ProgressRow("newFlowFromText.processing", this);

    body()->addWidget(m_banner);
    auto *nameGroup = new QVBoxLayout;
    nameGroup->setSpacing(5);
    nameGroup->addWidget(nameLabel);
    nameGroup->addWidget(m_name);
    body()->addLayout(nameGroup);
    auto *textGroup = new QVBoxLayout;
    textGroup->setSpacing(5);
    textGroup->addWidget(textLabel);
    textGroup->addWidget(m_text, 1);
    body()->addLayout(textGroup, 1);
    body()->addWidget(m_overBudget);
    body()->addWidget(m_notice);
    body()->addWidget(m_progress);

    m_model->onCreated = [this](const TaskFlow &flow) { emit flowCreated(flow.id); };
    m_model->onDismiss = [this] { emit closeRequested(); };
    connect(m_name, &QLineEdit::textChanged, this, [this](const QString &text) { m_model->name = text; });
    connect(m_name, &QLineEdit::returnPressed, primaryButton(), &QPushButton::click);
    connect(m_text, &QPlainTextEdit::textChanged, this, [this] {
        m_model->text = m_text->toPlainText();
        refresh();
    });
    connect(primaryButton(), &QPushButton::clicked, m_model, &NewFlowFromTextModel::generate);
    // Closing the sheet lets the work land; Stop gives it up.
    connect(m_progress->addStopButton(), &QPushButton::clicked, m_model, &NewFlowFromTextModel::stop);
    connect(m_model, &NewFlowFromTextModel::processingChanged, this, &NewFlowFromTextSheet::refresh);
    connect(m_model, &NewFlowFromTextModel::noticeChanged, this, &NewFlowFromTextSheet::refresh);
    connect(&environment, &AppEnvironment::engineChanged, this, &NewFlowFromTextSheet::refresh);
    refresh();
}

void NewFlowFromTextSheet::refresh()
{
    const bool busy = m_model->isProcessing();
    primaryButton()->setText(qtTrId(m_model->generateButtonKey()));
    primaryButton()->setEnabled(!busy);
    m_name->setEnabled(!busy);
    m_text->setReadOnly(busy);
    m_text->setEnabled(!busy);
    // Without a model there is nothing to read a text: only the name stays.
    m_textLabel->setVisible(m_model->showsEditor());
    m_text->setVisible(m_model->showsEditor());
    m_overBudget->setVisible(m_model->showsEditor() && m_model->isOverBudget());
    m_progress->setVisible(busy);
    if (const std::optional<NewFlowFromTextNotice> notice = m_model->notice()) {
        m_notice->setObjectName(*notice == NewFlowFromTextNotice::noTasksFound
                                    ? QStringLiteral("newFlowFromText.noTasksFound")
                                    : QStringLiteral("newFlowFromText.processingFailed"));
        m_notice->setTexts(qtTrId(NewFlowFromTextModel::noticeTitleKey(*notice)),
                           qtTrId(NewFlowFromTextModel::noticeMessageKey(*notice)));
        m_notice->show();
    } else {
        m_notice->hide();
    }
}

} // namespace fenrow
