#pragma once

#include <QMainWindow>
#include <QUuid>

class QSettings;
class QStackedWidget;

namespace fenrow {

class ActiveFlowState;
class EmptyStateView;
class FenrowStore;
class FlowDetailView;
class Sidebar;

// The one main window: the sidebar of flows on the left, the detail of the
// chosen flow (or the empty state) on the right. The window owns which flow
// is shown; it follows the store, so a deleted flow hands the place to the
// first remaining one, or to nothing.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    static constexpr int minimumWindowWidth = 720;
    static constexpr int minimumWindowHeight = 480;

    MainWindow(FenrowStore &store, ActiveFlowState &activeFlow, QSettings &settings, QWidget *parent = nullptr);

    // A null id shows the empty state; an id the store doesn't know too.
    void selectFlow(const QUuid &id);
    QUuid selectedFlow() const { return m_selected; }

    int sidebarWidth() const;
    // Clamped into the sidebar's limits.
    void setSidebarWidth(int width);

    Sidebar *sidebar() const { return m_sidebar; }

signals:
    void quitRequested();
    // The width the user settled on by dragging the divider.
    void sidebarWidthCommitted(int width);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void followStore();
    void showSelection();
    void seedSampleFlow();

    FenrowStore &m_store;
    ActiveFlowState &m_activeFlow;
    QSettings &m_settings;
    Sidebar *m_sidebar = nullptr;
    QStackedWidget *m_detail = nullptr;
    EmptyStateView *m_emptyDetail = nullptr;
    FlowDetailView *m_flowDetail = nullptr;
    QUuid m_selected;
    bool m_hasAppeared = false;
};

} // namespace fenrow
