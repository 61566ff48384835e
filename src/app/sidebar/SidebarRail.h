#pragma once

#include "window/DetailRoute.h"

#include <QUuid>
#include <QWidget>

class QAbstractButton;
class QToolButton;
class QVBoxLayout;

namespace fenrow {

class FenrowStore;

// The sidebar folded to a narrow column: the same routes as square tiles,
// one tile per flow (its initial, its name as the tooltip), and at the
// ends the tiles that expand the sidebar again, open the settings and quit.
// Like the sidebar it only asks for a route; the window decides.
class SidebarRail : public QWidget {
    Q_OBJECT

public:
    static constexpr int railWidth = 52;
    static constexpr int tileSize = 34;

    explicit SidebarRail(FenrowStore &store, QWidget *parent = nullptr);

    void setRoute(const DetailRoute &route);
    // The tile of a flow, named "sidebar.row." + its id; null for none.
    QAbstractButton *flowTile(const QUuid &id) const;

signals:
    void routeSelected(const DetailRoute &route);
    void searchRequested();
    void expandRequested();
    void settingsRequested();
    void quitRequested();

protected:
    void showEvent(QShowEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QToolButton *makeTile(const QIcon &icon, const QString &name, const QString &tip);
    QToolButton *makeRouteTile(const QIcon &icon, const QString &name, const QString &tip, const DetailRoute &route);
    void rebuildFlowTiles();
    void markRoute();

    FenrowStore &m_store;
    DetailRoute m_route;
    QToolButton *m_ready = nullptr;
    QToolButton *m_archive = nullptr;
    QWidget *m_flowTiles = nullptr;
    QVBoxLayout *m_flowColumn = nullptr;
    // The flows the tiles were made for, by id and name, to skip a rebuild
    // when a change touched only tasks.
    QList<std::pair<QUuid, QString>> m_shownFlows;
    bool m_stale = true;
};

} // namespace fenrow
