#pragma once

#include "SheetParts.h"

#include <QUuid>

class QLineEdit;
class QPlainTextEdit;

namespace fenrow {

class ActiveFlowState;
class AppEnvironment;
class FenrowStore;
class NewFlowFromTextModel;
class ProgressRow;

// The sheet that makes a new flow: a name and, with a language model, a
// text it turns into tasks. Without a model, or with no text, it makes an
// empty flow. The work goes on while the sheet is closed: a result still
// lands in the store.
class NewFlowFromTextSheet : public SheetFrame {
    Q_OBJECT

public:
    NewFlowFromTextSheet(FenrowStore &store, AppEnvironment &environment, ActiveFlowState *activeFlow,
                         QWidget *parent = nullptr);

    NewFlowFromTextModel &model() const { return *m_model; }
    QLineEdit *nameField() const { return m_name; }
    QPlainTextEdit *textField() const { return m_text; }

signals:
    void flowCreated(const QUuid &flowID);

private:
    void refresh();

    AppEnvironment &m_environment;
    NewFlowFromTextModel *m_model = nullptr;
    ManualOnlyBannerBar *m_banner = nullptr;
    QLineEdit *m_name = nullptr;
    QWidget *m_textLabel = nullptr;
    QPlainTextEdit *m_text = nullptr;
    NoticeRow *m_overBudget = nullptr;
    NoticeRow *m_notice = nullptr;
    ProgressRow *m_progress = nullptr;
};

} // namespace fenrow
