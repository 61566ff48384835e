#pragma once

#include "window/DetailRoute.h"
#include "shell/AppPreferences.h"

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
class TemplateMenuButton;

// The left column of the main window: brand, the Ready and Archive rows,
// the flows with their progress, and quit. It shows which route is chosen but does not own
// the choice: a click asks for a route through `routeSelected`, and the
// window answers with `setRoute`. Row actions call the store directly.
class Sidebar : public QWidget {
    Q_OBJECT

public:
    // The same limits the saved width is held to when it is read.
    static constexpr int minimumWidth = int(AppPreferences::minimumSidebarWidth);
    static constexpr int maximumWidth = int(AppPreferences::maximumSidebarWidth);
    static constexpr int defaultWidth = int(AppPreferences::defaultSidebarWidth);
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
    // Asks before moving the flow's done tasks into the archive.
    QMessageBox *confirmArchiveDone(const QUuid &id);
    // Makes a fresh copy of the flow and selects it.
    void duplicateFlow(const QUuid &id);

    FlowListView *flowList() const { return m_list; }
    FlowListModel *flowModel() const { return m_model; }
    SidebarRouteRow *readyRow() const { return m_ready; }
    SidebarRouteRow *archiveRow() const { return m_archive; }
    SidebarRouteRow *searchRow() const { return m_search; }
    TemplateMenuButton *templateMenu() const { return m_templates; }

signals:
    void routeSelected(const DetailRoute &route);
    void quitRequested();
    // The search row raises the find palette; the toggle folds the sidebar.
    void searchRequested();
    void collapseRequested();
    void settingsRequested();
    // A flow's row menu asks for it as a document; the window's export
    // commands answer.
    void exportMarkdownRequested(const QUuid &flowID);
    void copyMarkdownRequested(const QUuid &flowID);
    void exportOPMLRequested(const QUuid &flowID);

private:
    QWidget *makeBrandHeader();
    SidebarRouteRow *makeRouteRow(const QIcon &icon, const char *name, const DetailRoute &route);
    QWidget *makeSectionHeader();
    QWidget *makeFooter();
    // A question about a flow in a sheet of the window, with the button that
    // goes ahead in `color` and Cancel as the safe default.
    QMessageBox *askAboutFlow(const QString &name, const QString &title, const QString &message,
                              const QString &actionText, const QColor &color, QPushButton *&action);
    QMenu *rowMenu(const QUuid &id);
    void showRowMenu(const QPoint &position);
    void restoreSelection();
    void userChangedSelection();

    FenrowStore &m_store;
    FlowListModel *m_model = nullptr;
    FlowListView *m_list = nullptr;
    SidebarRouteRow *m_ready = nullptr;
    bool m_readyCounted = false;
    SidebarRouteRow *m_archive = nullptr;
    SidebarRouteRow *m_search = nullptr;
    TemplateMenuButton *m_templates = nullptr;
    DetailRoute m_route;
    bool m_applyingSelection = false;
};

} // namespace fenrow
