#pragma once

#include "SheetPresentations.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QUuid>

#include <functional>

class QAction;
class QMenu;
class QWidget;

namespace fenrow {

class ActiveFlowState;
class AppEnvironment;
class AppPreferences;
class DismissableDialogOverlay;
class FenrowHistory;
class FenrowStore;
class FlowDetailView;

// The window's sheets: the new flow from text, Plan Day and generated
// subtasks. It holds one presentation object for each and shows the sheet,
// on a `DismissableDialogOverlay` over the window, while the object says
// so; closing the sheet clears the object again. The File menu's commands
// for the first two live here too.
class WindowSheets : public QObject {
    Q_OBJECT

public:
    WindowSheets(FenrowStore &store, FenrowHistory &history, ActiveFlowState &activeFlow,
                 AppPreferences &preferences, AppEnvironment &environment, QWidget *window);

    NewFlowFromTextPresentation *newFlowFromText() const { return m_newFlowFromText; }
    PlanDayPresentation *planDay() const { return m_planDay; }
    GenerateSubtasksPresentation *generateSubtasks() const { return m_generateSubtasks; }

    // The canvas that shows generated subtasks and their failure; the
    // window hands over its current one each time it builds it.
    void setFlowDetail(FlowDetailView *detail) { m_flowDetail = detail; }

    // "menu.newFlowFromText" and "menu.planDay", placed after the menu's
    // new-flow command when it has one, else at its top.
    void addTo(QMenu *file);
    QAction *newFlowFromTextAction() const { return m_newFlowFromTextAction; }
    QAction *planDayAction() const { return m_planDayAction; }

    // The overlay of the sheet that is up, the latest if several are.
    DismissableDialogOverlay *currentOverlay() const;

signals:
    // A sheet made a flow; the window shows it.
    void flowCreated(const QUuid &flowID);

private:
    void follow(SheetPresentation *presentation, std::function<QWidget *()> makeSheet);
    QWidget *makeNewFlowFromText();
    QWidget *makePlanDay();
    QWidget *makeGenerateSubtasks();
    void showGenerated(const QUuid &parentID, const QList<QUuid> &added);
    void showGenerationFailure(const QUuid &parentID);
    void applyShortcuts();
    void followOnboarding();

    FenrowStore &m_store;
    FenrowHistory &m_history;
    ActiveFlowState &m_activeFlow;
    AppPreferences &m_preferences;
    AppEnvironment &m_environment;
    QWidget *m_window;
    QPointer<FlowDetailView> m_flowDetail;
    NewFlowFromTextPresentation *m_newFlowFromText = nullptr;
    PlanDayPresentation *m_planDay = nullptr;
    GenerateSubtasksPresentation *m_generateSubtasks = nullptr;
    QList<QPointer<DismissableDialogOverlay>> m_overlays;
    QHash<SheetPresentation *, QPointer<DismissableDialogOverlay>> m_shown;
    QAction *m_newFlowFromTextAction = nullptr;
    QAction *m_planDayAction = nullptr;
};

} // namespace fenrow
