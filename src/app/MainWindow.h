#pragma once

#include "DetailRoute.h"
#include "SettingsPage.h"

#include <QMainWindow>
#include <QPointer>
#include <QUuid>

class QAction;
class QStackedWidget;

namespace fenrow {

class ActiveFlowState;
class AppEnvironment;
class AppPreferences;
class ArchiveListView;
class DayChangeTimer;
class EmptyStateView;
class FenrowHistory;
class FenrowStore;
class FlowDetailView;
class FlowExportCommands;
class OnboardingView;
class InterfaceLook;
class ReadyListView;
class SettingsWindow;
class Sidebar;

// The one main window: the sidebar on the left, the detail of the current
// route on the right (a flow, the Ready list, the archive, or the empty
// state). The window owns the route; it follows the store, so a deleted
// flow hands the place to the first remaining one, or to nothing. The
// history learns from the route which flow Undo and Redo act on.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    static constexpr int minimumWindowWidth = 720;
    static constexpr int minimumWindowHeight = 480;

    // The sidebar starts at the user's width, and a width settled on by
    // dragging is kept there.
    MainWindow(FenrowStore &store, FenrowHistory &history, ActiveFlowState &activeFlow, AppPreferences &preferences,
               AppEnvironment &environment, QWidget *parent = nullptr);

    // A flow route to a flow the store doesn't know shows the empty state.
    void setRoute(const DetailRoute &route);
    DetailRoute route() const { return m_route; }
    void selectFlow(const QUuid &id) { setRoute(DetailRoute::flow(id)); }
    // The flow on screen; null while another route is shown.
    QUuid selectedFlow() const { return m_route.flowId(); }

    int sidebarWidth() const;
    // Clamped into the sidebar's limits.
    void setSidebarWidth(int width);

    Sidebar *sidebar() const { return m_sidebar; }
    ReadyListView *readyList() const { return m_readyList; }
    ArchiveListView *archiveList() const { return m_archiveList; }
    FlowDetailView *flowDetail() const { return m_flowDetail; }
    QAction *undoAction() const { return m_undo; }
    QAction *redoAction() const { return m_redo; }
    FlowExportCommands *exportCommands() const { return m_exports; }
    InterfaceLook *look() const { return m_look; }

    // Shows the settings window on `page`, making it the first time.
    void openSettings(SettingsPage page = SettingsPage::general);
    // Null until the settings were first opened.
    SettingsWindow *settingsWindow() const;

    // The Edit menu's commands: a focused text field's own, or else the
    // history's for the shown flow (or the latest step taken elsewhere).
    void undo();
    void redo();

    // The welcome shown in place of the flows until onboarding is done;
    // null once done.
    OnboardingView *onboarding() const;

signals:
    void quitRequested();
    // The user finished onboarding; the flag is already set.
    void onboardingCompleted();
    // The width the user settled on by dragging the divider.
    void sidebarWidthCommitted(int width);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void makeMenus();
    void buildContent();
    // Everything built again in the language and colours now in force.
    void rebuild();
    static void retranslateMenus(QWidget *menuOwner);
    void updateEditActions();
    void followStore();
    void showRoute();
    void seedSampleFlow();
    // The flows, or the welcome in their place while onboarding is not done.
    QWidget *withOnboarding(QWidget *root);
    void followOnboarding();

    FenrowStore &m_store;
    FenrowHistory &m_history;
    ActiveFlowState &m_activeFlow;
    AppPreferences &m_preferences;
    AppEnvironment &m_environment;
    Sidebar *m_sidebar = nullptr;
    QStackedWidget *m_detail = nullptr;
    EmptyStateView *m_emptyDetail = nullptr;
    FlowDetailView *m_flowDetail = nullptr;
    ReadyListView *m_readyList = nullptr;
    ArchiveListView *m_archiveList = nullptr;
    QAction *m_undo = nullptr;
    QAction *m_redo = nullptr;
    FlowExportCommands *m_exports = nullptr;
    DayChangeTimer *m_dayChange = nullptr;
    InterfaceLook *m_look = nullptr;
    QPointer<SettingsWindow> m_settings;
    DetailRoute m_route;
    bool m_hasAppeared = false;
    QStackedWidget *m_stage = nullptr;
    OnboardingView *m_onboarding = nullptr;
};

} // namespace fenrow
