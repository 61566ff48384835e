#pragma once

#include "SheetParts.h"
#include "canvas/NodeSizeResolver.h"

#include <QList>
#include <QUuid>

class QLineEdit;

namespace fenrow {

class AppEnvironment;
class FenrowHistory;
class FenrowStore;
class GenerateSubtasksModel;
class ProgressRow;

// The sheet that asks the language model to break one task into subtasks,
// with an optional word on what the task involves. The subtasks are added
// under the task as one undoable step; the sheet then closes.
class GenerateSubtasksSheet : public SheetFrame {
    Q_OBJECT

public:
    GenerateSubtasksSheet(FenrowStore &store, FenrowHistory &history, AppEnvironment &environment,
                          const QUuid &itemID, NodeSizeResolver sizes, QWidget *parent = nullptr);

    GenerateSubtasksModel &model() const { return *m_model; }
    QLineEdit *detailsField() const { return m_details; }

signals:
    // The task's new subtasks, in order; empty when none came.
    void finished(const QUuid &itemID, const QList<QUuid> &added);
    void failed(const QUuid &itemID);

private:
    void refresh();

    AppEnvironment &m_environment;
    GenerateSubtasksModel *m_model = nullptr;
    QLineEdit *m_details = nullptr;
    ProgressRow *m_progress = nullptr;
};

} // namespace fenrow
