#pragma once

#include "DetailRoute.h"
#include "settings/SettingsPage.h"

#include <QMainWindow>
#include <QPointer>
#include <QUuid>

class QAction;
class QVariantAnimation;
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
class FlowSearchPaletteView;
class FlowSearchPresentation;
class PanelResizeDivider;
class InterfaceLook;
class ReadyListView;
class SettingsWindow;
class RouteRequest;
class Sidebar;
class WindowSheets;
class SidebarRail;

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
    ~MainWindow() override;

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
    // The sheets and the objects that raise them.
    WindowSheets *sheets() const { return m_sheets; }
    InterfaceLook *look() const { return m_look; }

    // Shows the settings window on `page`, making it the first time.
    void openSettings(SettingsPage page = SettingsPage::general);
    // Null until the settings were first opened.
    SettingsWindow *settingsWindow() const;

    // Where code outside the window asks for a flow (and a task in it) or
    // the Ready list; the window follows.
    RouteRequest *routeRequests() const { return m_routeRequests; }
    FlowSearchPresentation *searchPresentation() const { return m_searchPresentation; }
    // Raises the find palette over the window, searching the shown flow first.
    void presentSearch();
    // The palette while it is up, else null.
    FlowSearchPaletteView *searchPalette() const;

    // Folded, the sidebar gives its place to a rail of tiles; the choice
    // is kept in the preferences.
    static constexpr int sidebarAnimationMs = 200;
    SidebarRail *rail() const { return m_rail; }
    // A window too narrow for the sidebar, the inspector and a canvas of
    // this width shows the rail instead, without changing the preference.
    static constexpr int minimumCanvasWidth = 360;
    bool isSidebarCollapsed() const;
    void setSidebarCollapsed(bool collapsed, bool animated = true);

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
    void resizeEvent(QResizeEvent *event) override;

private:
    void makeMenus();
    void buildContent();
    // Everything built again in the language and colours now in force.
    void rebuild();
    static void retranslateMenus(QWidget *menuOwner);
    void updateEditActions();
    // The View and Flow menus, the route mailbox and the find palette's
    // presentation; made once, like the other menus.
    void makeNavigationMenus();
    void applyCommandShortcuts();
    bool canvasCommandsAllowed(bool textMatters) const;
    void updateCanvasCommands();
    void connectSelectedTasks();
    void followRouteRequest();
    // Connects the rail and the sidebar's search and fold; after each build.
    void wireNavigation(QWidget *root);
    void showSidebarState();
    // Whether the sidebar makes way for the canvas, from the room there is.
    void fitSidebar();
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
    WindowSheets *m_sheets = nullptr;
    bool m_engineBannerDismissed = false;
    DayChangeTimer *m_dayChange = nullptr;
    InterfaceLook *m_look = nullptr;
    QPointer<SettingsWindow> m_settings;
    SidebarRail *m_rail = nullptr;
    PanelResizeDivider *m_sidebarDivider = nullptr;
    QVariantAnimation *m_sidebarAnimation = nullptr;
    // The window is too narrow for the full sidebar; unless the user
    // widened it anyway, the rail stands in.
    bool m_sidebarYields = false;
    bool m_expandedAnyway = false;
    RouteRequest *m_routeRequests = nullptr;
    FlowSearchPresentation *m_searchPresentation = nullptr;
    QPointer<FlowSearchPaletteView> m_searchPalette;
    QAction *m_zoomIn = nullptr;
    QAction *m_zoomOut = nullptr;
    QAction *m_zoomToFit = nullptr;
    QAction *m_find = nullptr;
    // The commands that act on the canvas, and whether a focused text
    // field keeps their keys.
    QList<std::pair<QAction *, bool>> m_canvasCommands;
    DetailRoute m_route;
    bool m_hasAppeared = false;
    QStackedWidget *m_stage = nullptr;
    OnboardingView *m_onboarding = nullptr;
};

} // namespace fenrow
