#pragma once

#include "look/BrandPalette.h"

#include <QWidget>

class QFrame;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QToolButton;

namespace fenrow {

class ActiveFlowState;
class AppEnvironment;
class AppPreferences;
class FenrowHistory;
class FenrowStore;
class QuickCaptureModel;

// What the capture panel shows while it is open: one line to type the task
// into, the flow it goes to, the date read from the text as a chip that can
// be refused, and the save and cancel buttons. A new one is made for every
// opening, so nothing typed survives a close.
class QuickCaptureContent : public QWidget {
    Q_OBJECT

public:
    QuickCaptureContent(FenrowStore &store, AppEnvironment &environment, AppPreferences &preferences,
                        FenrowHistory *history, const ActiveFlowState *activeFlow, const CanvasColors &colors,
                        QWidget *parent = nullptr);

    QuickCaptureModel &model() const { return *m_model; }
    QLineEdit *field() const { return m_field; }
    // Saves as Return does.
    void save();

signals:
    // After a save, or on Cancel.
    void closeRequested();

private:
    void refresh();
    void fillFlowMenu();

    FenrowStore &m_store;
    QuickCaptureModel *m_model = nullptr;
    QLineEdit *m_field = nullptr;
    QToolButton *m_flowPicker = nullptr;
    QMenu *m_flowMenu = nullptr;
    QFrame *m_dateChip = nullptr;
    QLabel *m_dateText = nullptr;
    QPushButton *m_save = nullptr;
};

} // namespace fenrow
