#include "GenerateSubtasksSheet.h"

#include "capture/GeneratedFlows.h"
#include "domain/FenrowStore.h"
#include "domain/FlowNode.h"
#include "shell/AppEnvironment.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace fenrow {

namespace {
constexpr int sheetWidth = 480;
}

GenerateSubtasksSheet::GenerateSubtasksSheet(FenrowStore &store, FenrowHistory &history,
                                             AppEnvironment &environment, const QUuid &itemID,
                                             NodeSizeResolver sizes, QWidget *parent)
    : SheetFrame(QStringLiteral("generateSubtasks.sheet"), sheetWidth, parent), m_environment(environment)
{
    m_model = new GenerateSubtasksModel(store, environment, &history, itemID, sizes, this);
    title()->setText(qtTrId("generateSubtasks.title"));
    const FlowNode *node = store.node(itemID);
    const QString name = node ? node->title.trimmed() : QString();
    subtitle()->setText(name.isEmpty() ? qtTrId("generateSubtasks.subtitle")
                                       : qtTrId("generateSubtasks.subtitle.named %@").arg(name));
    subtitle()->setTextFormat(Qt::PlainText);
    cancelButton()->setText(qtTrId("generateSubtasks.cancel"));
    cancelButton()->setObjectName(QStringLiteral("generateSubtasks.cancel"));
    primaryButton()->setText(qtTrId("generateSubtasks.generate"));
    primaryButton()->setObjectName(QStringLiteral("generateSubtasks.generate"));

    m_details = new QLineEdit(this);
    m_details->setObjectName(QStringLiteral("generateSubtasks.details"));
    m_details->setPlaceholderText(qtTrId("generateSubtasks.details.placeholder"));
    QLabel *label = fieldLabel(qtTrId("generateSubtasks.details.label"), this);
    label->setBuddy(m_details);
    m_details->setAccessibleName(label->text());
    m_progress = new ProgressRow("generateSubtasks.processing", this);

    body()->addWidget(new ManualOnlyBannerBar(environment, this));
    auto *group = new QVBoxLayout;
    group->setSpacing(5);
    group->addWidget(label);
    group->addWidget(m_details);
    body()->addLayout(group);
    body()->addWidget(m_progress);

    m_model->onFinished = [this, itemID](const QList<QUuid> &added) {
        emit finished(itemID, added);
        emit closeRequested();
    };
    m_model->onFailed = [this, itemID] {
        emit failed(itemID);
        emit closeRequested();
    };
    connect(m_details, &QLineEdit::textChanged, this, [this](const QString &text) { m_model->details = text; });
    connect(m_details, &QLineEdit::returnPressed, primaryButton(), &QPushButton::click);
    connect(primaryButton(), &QPushButton::clicked, m_model, &GenerateSubtasksModel::generate);
    // Closing the sheet lets the work land; Stop gives it up.
    connect(m_progress->addStopButton(), &QPushButton::clicked, m_model, &GenerateSubtasksModel::stop);
    connect(m_model, &GenerateSubtasksModel::processingChanged, this, &GenerateSubtasksSheet::refresh);
    connect(&environment, &AppEnvironment::engineChanged, this, &GenerateSubtasksSheet::refresh);
    refresh();
}

void GenerateSubtasksSheet::refresh()
{
    const bool busy = m_model->isProcessing();
    // Without a model there is nobody to ask; the banner says so.
    primaryButton()->setEnabled(!busy && m_environment.hasEngine());
    m_details->setEnabled(!busy);
    m_progress->setVisible(busy);
}

} // namespace fenrow
