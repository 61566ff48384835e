#pragma once

#include "DetailRoute.h"

#include <QUuid>
#include <QWidget>

class QLabel;
class QMenu;
class QMessageBox;
class QPushButton;
class QToolButton;

namespace fenrow {

class FenrowStore;
class FlowListModel;
class FlowListView;
class SidebarRouteRow;

// The left column of the main window: brand, the Ready row, the flows with
// their progress, and quit. It shows which route is chosen but does not own
// the choice: a click asks for a route through `routeSelected`, and the
// window answers with `setRoute`. Row actions call the store directly.
class Sidebar : public QWidget {
    Q_OBJECT

public:
    static constexpr int minimumWidth = 216;
    static constexpr int maximumWidth = 420;
    static constexpr int defaultWidth = 260;
    static int clampedWidth(int width);

    explicit Sidebar(FenrowStore &store, QWidget *parent = nullptr);

    void setRoute(const DetailRoute &route);
    DetailRoute route() const { return m_route; }

    // Counts the ready tasks of all flows again; the store's changes do this
    // by themselves, the turn of the day needs a call.
    void refreshReadyCount();

    // Creates an untitled flow, selects it and opens its name for editing.
    void createFlow();
    void beginRename(const QUuid &id);
    // Asks before deleting; the answer arrives after the dialog closes.
    QMessageBox *confirmDelete(const QUuid &id);

    FlowListView *flowList() const { return m_list; }
    FlowListModel *flowModel() const { return m_model; }
    SidebarRouteRow *readyRow() const { return m_ready; }

signals:
    void routeSelected(const DetailRoute &route);
    void quitRequested();

private:
    QWidget *makeBrandHeader();
    SidebarRouteRow *makeReadyRow();
    QWidget *makeSectionHeader();
    QWidget *makeFooter();
    QMenu *rowMenu(const QUuid &id);
    void showRowMenu(const QPoint &position);
    void restoreSelection();
    void userChangedSelection();

    FenrowStore &m_store;
    FlowListModel *m_model = nullptr;
    FlowListView *m_list = nullptr;
    SidebarRouteRow *m_ready = nullptr;
    DetailRoute m_route;
    bool m_applyingSelection = false;
};

} // namespace fenrow
