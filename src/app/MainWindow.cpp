#include "MainWindow.h"

#include "DayChangeTimer.h"
#include "EmptyStateView.h"
#include "FlowDetailView.h"
#include "PanelResizeDivider.h"
#include "ReadyListView.h"
#include "Sidebar.h"
#include "canvas/NodeSizeResolver.h"
#include "domain/ActiveFlowState.h"
#include "domain/FenrowStore.h"
#include "shell/SampleFlow.h"

#include <QHBoxLayout>
#include <QStackedWidget>

namespace fenrow {

MainWindow::MainWindow(FenrowStore &store, ActiveFlowState &activeFlow, QSettings &settings, QWidget *parent)
    : QMainWindow(parent), m_store(store), m_activeFlow(activeFlow), m_settings(settings)
{
    setMinimumSize(minimumWindowWidth, minimumWindowHeight);
    resize(1040, 680);

    auto *root = new QWidget(this);
    root->setObjectName(QStringLiteral("main.window.root"));

    m_sidebar = new Sidebar(store, root);
    auto *divider = new PanelResizeDivider(m_sidebar, PanelResizeDivider::Side::leading, Sidebar::minimumWidth,
                                           Sidebar::maximumWidth, root);
    divider->setObjectName(QStringLiteral("sidebar.resize"));

    m_detail = new QStackedWidget(root);
    m_detail->setObjectName(QStringLiteral("detail"));
    m_emptyDetail = new EmptyStateView(QStringLiteral("detail.empty"), m_detail);
    m_emptyDetail->setContent(Glyphs::Symbol::emptySelection, qtTrId("detail.empty.title"),
                              qtTrId("detail.empty.message"));
    m_flowDetail = new FlowDetailView(store, m_detail);
    m_readyList = new ReadyListView(store, settings, m_detail);
    m_detail->addWidget(m_emptyDetail);
    m_detail->addWidget(m_flowDetail);
    m_detail->addWidget(m_readyList);

    auto *row = new QHBoxLayout(root);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_sidebar);
    row->addWidget(divider);
    row->addWidget(m_detail, 1);
    setCentralWidget(root);
    setSidebarWidth(Sidebar::defaultWidth);

    // What is ready and what is overdue depend on the day, not only on the
    // records.
    m_dayChange = new DayChangeTimer(store.clock(), store.calendar(), this);
    connect(m_dayChange, &DayChangeTimer::dayChanged, m_sidebar, &Sidebar::refreshReadyCount);
    connect(m_dayChange, &DayChangeTimer::dayChanged, m_readyList, &ReadyListView::reload);

    connect(divider, &PanelResizeDivider::widthChanged, this, &MainWindow::setSidebarWidth);
    connect(divider, &PanelResizeDivider::resizeFinished, this, &MainWindow::sidebarWidthCommitted);
    connect(m_sidebar, &Sidebar::routeSelected, this, &MainWindow::setRoute);
    connect(m_readyList, &ReadyListView::flowRequested, this, &MainWindow::selectFlow);
    connect(m_sidebar, &Sidebar::quitRequested, this, &MainWindow::quitRequested);
    connect(&m_store, &FenrowStore::changed, this, &MainWindow::followStore);

    showRoute();
}

int MainWindow::sidebarWidth() const
{
    return m_sidebar->width();
}

void MainWindow::setSidebarWidth(int width)
{
    m_sidebar->setFixedWidth(Sidebar::clampedWidth(width));
}

void MainWindow::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    // Only the first appearance: hiding and showing the window again is no
    // new start.
    if (!m_hasAppeared) {
        m_hasAppeared = true;
        seedSampleFlow();
    }
}

void MainWindow::seedSampleFlow()
{
    if (const TaskFlow *sample = SampleFlow::seedIfNeeded(m_store, m_settings, NodeSizeResolver()))
        selectFlow(sample->id);
}

void MainWindow::setRoute(const DetailRoute &requested)
{
    const DetailRoute route =
        requested.kind() == DetailRoute::Kind::flow && !m_store.flow(requested.flowId()) ? DetailRoute() : requested;
    if (route != m_route) {
        m_route = route;
        const QUuid flow = route.flowId();
        m_activeFlow.setActiveFlowID(flow.isNull() ? std::nullopt : std::optional<QUuid>(flow));
    }
    m_sidebar->setRoute(m_route);
    showRoute();
}

void MainWindow::followStore()
{
    if (m_route.kind() == DetailRoute::Kind::flow && !m_store.flow(m_route.flowId())) {
        const QList<const TaskFlow *> &flows = m_store.flows();
        selectFlow(flows.isEmpty() ? QUuid() : flows.first()->id);
        return;
    }
    // A rename shows in the title.
    showRoute();
}

void MainWindow::showRoute()
{
    switch (m_route.kind()) {
    case DetailRoute::Kind::flow:
        if (const TaskFlow *flow = m_store.flow(m_route.flowId())) {
            // "[*]" in a title is Qt's modified marker; doubled, it shows as typed.
            setWindowTitle(QString(flow->name).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]")));
            m_flowDetail->showFlow(flow->id);
            m_detail->setCurrentWidget(m_flowDetail);
            return;
        }
        break;
    case DetailRoute::Kind::ready:
        setWindowTitle(qtTrId("ready.title"));
        m_detail->setCurrentWidget(m_readyList);
        return;
    case DetailRoute::Kind::none:
        break;
    }
    setWindowTitle(qtTrId("mainWindow.title"));
    m_detail->setCurrentWidget(m_emptyDetail);
}

} // namespace fenrow
