#include "MainWindow.h"

#include "lists/ArchiveListView.h"
#include "program/DayChangeTimer.h"
#include "look/EmptyStateView.h"
#include "FlowDetailView.h"
#include "program/FlowExportCommands.h"
#include "look/InterfaceLook.h"
#include "PanelResizeDivider.h"
#include "lists/ReadyListView.h"
#include "settings/SettingsWindow.h"
#include "sheets/SheetParts.h"
#include "sidebar/Sidebar.h"
#include "sheets/WindowSheets.h"
#include "sidebar/SidebarRail.h"
#include "canvas/NodeSizeResolver.h"
#include "domain/ActiveFlowState.h"
#include "domain/FenrowHistory.h"
#include "domain/FenrowStore.h"
#include "shell/AppPreferences.h"
#include "shell/SampleFlow.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QScreen>
#include <QStackedWidget>
#include <QTextEdit>
#include <QVBoxLayout>

#include <algorithm>

namespace fenrow {

MainWindow::MainWindow(FenrowStore &store, FenrowHistory &history, ActiveFlowState &activeFlow,
                       AppPreferences &preferences, AppEnvironment &environment, QWidget *parent)
    : QMainWindow(parent), m_store(store), m_history(history), m_activeFlow(activeFlow), m_preferences(preferences),
      m_environment(environment)
{
    setMinimumSize(minimumWindowWidth, minimumWindowHeight);
    resize(1040, 680);

    // First, so that everything below is built in the user's colours.
    m_look = new InterfaceLook(preferences, this);
    // What is ready and what is overdue depend on the day, not only on the
    // records; so does which archive day is "Today".
    m_dayChange = new DayChangeTimer(store.clock(), store.calendar(), this);

    makeMenus();
    makeNavigationMenus();
    buildContent();
    setSidebarWidth(qRound(preferences.sidebarWidth()));
    connect(&m_history, &FenrowHistory::stacksChanged, this, &MainWindow::updateEditActions);
    // A text field takes Undo for itself while it has the focus.
    connect(qApp, &QApplication::focusChanged, this, &MainWindow::updateEditActions);
    m_history.setActiveFlowID(std::nullopt);
    updateEditActions();

    connect(this, &MainWindow::sidebarWidthCommitted, this,
            [this](int width) { m_preferences.setSidebarWidth(width); });
    connect(&m_store, &FenrowStore::changed, this, &MainWindow::followStore);
    connect(m_look, &InterfaceLook::changed, this, &MainWindow::rebuild);
    connect(&m_preferences, &AppPreferences::changed, this, [this](const QString &key) {
        if (key == QLatin1StringView(PreferenceKey::hasCompletedOnboarding)) {
            followOnboarding();
            showRoute();
        }
    });

    // Where the user left off; a flow deleted since opens nothing.
    setRoute(DetailRoute::fromRaw(preferences.lastRouteRaw()));
}

// The sidebar and the detail views, with their wiring. Built again when
// the language or the colours change: texts and colours are read while
// building, so a fresh tree shows them all.
MainWindow::~MainWindow()
{
    // Closing takes the focus from a field being typed in, which writes
    // it: it is written now, before the window's parts begin to go.
    m_flowDetail->stopCanvas();
    // Children go after the menus: a child window that closes then moves
    // the focus, and the edit actions must not hear of it any more.
    disconnect(qApp, nullptr, this, nullptr);
}

void MainWindow::buildContent()
{
    auto *root = new QWidget(this);
    root->setObjectName(QStringLiteral("main.window.root"));

    m_sidebar = new Sidebar(m_store, root);
    m_rail = new SidebarRail(m_store, root);
    auto *divider = new PanelResizeDivider(m_sidebar, PanelResizeDivider::Side::leading, Sidebar::minimumWidth,
                                           Sidebar::maximumWidth, root);
    divider->setObjectName(QStringLiteral("sidebar.resize"));

    m_detail = new QStackedWidget(root);
    m_detail->setObjectName(QStringLiteral("detail"));
    m_emptyDetail = new EmptyStateView(QStringLiteral("detail.empty"), m_detail);
    m_emptyDetail->setContent(Glyphs::Symbol::emptySelection, qtTrId("detail.empty.title"),
                              qtTrId("detail.empty.message"));
    m_flowDetail = new FlowDetailView(m_store, m_history, m_activeFlow, m_preferences, m_detail);
    m_readyList = new ReadyListView(m_store, m_history, m_preferences, m_detail);
    m_archiveList = new ArchiveListView(m_store, m_detail);
    m_detail->addWidget(m_emptyDetail);
    m_detail->addWidget(m_flowDetail);
    m_detail->addWidget(m_readyList);
    m_detail->addWidget(m_archiveList);

    auto *row = new QHBoxLayout(root);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(m_sidebar);
    row->addWidget(m_rail);
    row->addWidget(divider);
    // The word that the language model is off stands above the detail
    // until dismissed, for as long as the window lives.
    auto *engineBanner = new ManualOnlyBannerBar(m_environment, root);
    if (m_engineBannerDismissed)
        engineBanner->dismiss();
    connect(engineBanner, &ManualOnlyBannerBar::dismissed, this, [this] { m_engineBannerDismissed = true; });
    engineBanner->offerModelChoice();
    connect(engineBanner, &ManualOnlyBannerBar::modelChoiceRequested, this,
            [this] { openSettings(SettingsPage::languageModel); });
    auto *detailColumn = new QVBoxLayout;
    detailColumn->setContentsMargins(0, 0, 0, 0);
    detailColumn->setSpacing(0);
    detailColumn->addWidget(engineBanner);
    detailColumn->addWidget(m_detail, 1);
    row->addLayout(detailColumn, 1);
    setCentralWidget(withOnboarding(root));

    connect(m_dayChange, &DayChangeTimer::dayChanged, m_sidebar, &Sidebar::refreshReadyCount);
    connect(m_dayChange, &DayChangeTimer::dayChanged, m_readyList, &ReadyListView::reload);
    connect(m_dayChange, &DayChangeTimer::dayChanged, m_archiveList, &ArchiveListView::reload);

    connect(m_sidebar, &Sidebar::exportMarkdownRequested, m_exports, &FlowExportCommands::exportMarkdown);
    connect(m_sidebar, &Sidebar::copyMarkdownRequested, m_exports, &FlowExportCommands::copyMarkdown);
    connect(m_sidebar, &Sidebar::exportOPMLRequested, m_exports, &FlowExportCommands::exportOPML);
    connect(divider, &PanelResizeDivider::widthChanged, this, &MainWindow::setSidebarWidth);
    connect(divider, &PanelResizeDivider::resizeFinished, this, &MainWindow::sidebarWidthCommitted);
    connect(m_sidebar, &Sidebar::routeSelected, this, &MainWindow::setRoute);
    connect(m_readyList, &ReadyListView::flowRequested, this, &MainWindow::selectFlow);
    connect(m_flowDetail, &FlowDetailView::archiveDoneRequested, m_sidebar, &Sidebar::confirmArchiveDone);
    m_sheets->setFlowDetail(m_flowDetail);
    connect(m_readyList, &ReadyListView::planDayRequested, m_sheets, [this] { m_sheets->planDay()->setPresented(true); });
    connect(m_flowDetail, &FlowDetailView::generateSubtasksRequested, m_sheets->generateSubtasks(),
            &GenerateSubtasksPresentation::present);
    connect(m_sidebar, &Sidebar::quitRequested, this, &MainWindow::quitRequested);
    connect(m_sidebar, &Sidebar::settingsRequested, this, [this] { openSettings(); });
    wireNavigation(root);
}

void MainWindow::rebuild()
{
    const int width = sidebarWidth();
    const QUuid shownFlow = m_flowDetail->flowId();
    const CanvasSelection selection = m_flowDetail->selection();
    // The old tree goes first: a canvas leaving hands its flow's selection
    // back to the history, which must not undo the new canvas's claim.
    delete takeCentralWidget();
    buildContent();
    setSidebarWidth(width);
    m_flowDetail->restoreSelection(shownFlow, selection);
    // The new tree takes its real size before it shows: a canvas that
    // started at a made-up size would clamp the flow's viewport to it.
    layout()->activate();
    retranslateMenus(menuBar());
    m_sidebar->setRoute(m_route);
    m_rail->setRoute(m_route);
    showRoute();
    fitSidebar();
}

void MainWindow::retranslateMenus(QWidget *menuOwner)
{
    // Menu entries are named after their message ids.
    for (QAction *action : menuOwner->actions()) {
        const QByteArray id = action->objectName().toLatin1();
        if (QMenu *menu = action->menu()) {
            const QByteArray menuId = menu->objectName().toLatin1();
            if (!menuId.isEmpty() && qtTrId(menuId.constData()) != QLatin1StringView(menuId))
                menu->setTitle(qtTrId(menuId.constData()));
            retranslateMenus(menu);
        } else if (!id.isEmpty() && qtTrId(id.constData()) != QLatin1StringView(id)) {
            action->setText(qtTrId(id.constData()));
        }
    }
}

void MainWindow::makeMenus()
{
    QMenu *file = menuBar()->addMenu(qtTrId("menu.file"));
    file->setObjectName(QStringLiteral("menu.file"));
    m_exports = new FlowExportCommands(m_store, m_preferences, this);
    m_exports->setEnvironment(&m_environment);
    m_exports->addTo(file, [this] { return selectedFlow(); });
    connect(m_exports, &FlowExportCommands::flowImported, this, &MainWindow::selectFlow);
    m_sheets = new WindowSheets(m_store, m_history, m_activeFlow, m_preferences, m_environment, this);
    m_sheets->addTo(file);
    connect(m_sheets, &WindowSheets::flowCreated, this, &MainWindow::selectFlow);
    file->addSeparator();
    QAction *settings = file->addAction(qtTrId("menu.settings"), this, [this] { openSettings(); });
    settings->setObjectName(QStringLiteral("menu.settings"));
    settings->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Comma));
    settings->setMenuRole(QAction::PreferencesRole);
    QAction *quit = file->addAction(qtTrId("menu.quit"), this, &MainWindow::quitRequested);
    quit->setObjectName(QStringLiteral("menu.quit"));
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    quit->setMenuRole(QAction::QuitRole);

    QMenu *edit = menuBar()->addMenu(qtTrId("menu.edit"));
    edit->setObjectName(QStringLiteral("menu.edit"));
    m_undo = edit->addAction(qtTrId("menu.undo"), this, &MainWindow::undo);
    m_undo->setObjectName(QStringLiteral("menu.undo"));
    m_undo->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z));
    m_redo = edit->addAction(qtTrId("menu.redo"), this, &MainWindow::redo);
    m_redo->setObjectName(QStringLiteral("menu.redo"));
    m_redo->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z));
}

namespace {

// Runs a text field's own undo or redo when one has the focus.
bool editFocusedText(bool undoing)
{
    QWidget *focus = QApplication::focusWidget();
    if (auto *line = qobject_cast<QLineEdit *>(focus)) {
        undoing ? line->undo() : line->redo();
        return true;
    }
    if (auto *text = qobject_cast<QTextEdit *>(focus)) {
        undoing ? text->undo() : text->redo();
        return true;
    }
    if (auto *plain = qobject_cast<QPlainTextEdit *>(focus)) {
        undoing ? plain->undo() : plain->redo();
        return true;
    }
    return false;
}

bool isTextField(const QWidget *widget)
{
    return qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QTextEdit *>(widget) ||
           qobject_cast<const QPlainTextEdit *>(widget);
}

} // namespace

void MainWindow::undo()
{
    if (!editFocusedText(true))
        m_history.undo();
}

void MainWindow::redo()
{
    if (!editFocusedText(false))
        m_history.redo();
}

void MainWindow::updateEditActions()
{
    // A field knows its own steps; the menu just hands the command over.
    if (isTextField(QApplication::focusWidget())) {
        m_undo->setEnabled(true);
        m_redo->setEnabled(true);
        return;
    }
    if (const std::optional<QUuid> flow = m_history.activeFlowID()) {
        m_undo->setEnabled(m_history.canUndo(*flow));
        m_redo->setEnabled(m_history.canRedo(*flow));
    } else {
        m_undo->setEnabled(!m_history.borrowedUndo().isEmpty());
        m_redo->setEnabled(!m_history.borrowedRedo().isEmpty());
    }
}

int MainWindow::sidebarWidth() const
{
    return m_sidebar->width();
}

void MainWindow::setSidebarWidth(int width)
{
    m_sidebar->setFixedWidth(Sidebar::clampedWidth(width));
}

SettingsWindow *MainWindow::settingsWindow() const
{
    return m_settings;
}

void MainWindow::openSettings(SettingsPage page)
{
    if (!m_settings) {
        m_settings = new SettingsWindow(m_store, m_preferences, m_environment, *m_look, this);
        // Over the window it belongs to and whole on its screen: left to the
        // window manager, it was once placed half off the screen.
        QRect place(QPoint(), m_settings->size());
        place.moveCenter(frameGeometry().center());
        if (const QScreen *screen = this->screen()) {
            const QRect room = screen->availableGeometry();
            place.moveLeft(
                std::clamp(place.left(), room.left(), std::max(room.left(), room.right() + 1 - place.width())));
            place.moveTop(
                std::clamp(place.top(), room.top(), std::max(room.top(), room.bottom() + 1 - place.height())));
        }
        m_settings->move(place.topLeft());
    }
    m_settings->showPage(page);
    m_settings->show();
    m_settings->raise();
    m_settings->activateWindow();
}

void MainWindow::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
    fitSidebar();
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
    if (const TaskFlow *sample = SampleFlow::seedIfNeeded(m_store, m_preferences, NodeSizeResolver()))
        selectFlow(sample->id);
}

void MainWindow::setRoute(const DetailRoute &requested)
{
    const DetailRoute route =
        requested.kind() == DetailRoute::Kind::flow && !m_store.flow(requested.flowId()) ? DetailRoute() : requested;
    if (route != m_route) {
        m_route = route;
        m_preferences.setLastRouteRaw(route.raw());
        const QUuid flow = route.flowId();
        const std::optional<QUuid> active = flow.isNull() ? std::nullopt : std::optional<QUuid>(flow);
        m_activeFlow.setActiveFlowID(active);
        m_history.setActiveFlowID(active);
        updateEditActions();
    }
    m_sidebar->setRoute(m_route);
    m_rail->setRoute(m_route);
    showRoute();
    fitSidebar();
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
    // The welcome covers the flows: the title names none of them.
    const bool welcoming = !m_preferences.hasCompletedOnboarding();
    switch (m_route.kind()) {
    case DetailRoute::Kind::flow:
        if (const TaskFlow *flow = m_store.flow(m_route.flowId())) {
            // "[*]" in a title is Qt's modified marker; doubled, it shows as typed.
            setWindowTitle(welcoming ? qtTrId("mainWindow.title")
                                     : QString(flow->name).replace(QStringLiteral("[*]"), QStringLiteral("[*][*]")));
            m_flowDetail->showFlow(flow->id);
            m_detail->setCurrentWidget(m_flowDetail);
            return;
        }
        break;
    case DetailRoute::Kind::ready:
        setWindowTitle(qtTrId(welcoming ? "mainWindow.title" : "ready.title"));
        m_detail->setCurrentWidget(m_readyList);
        return;
    case DetailRoute::Kind::archive:
        setWindowTitle(qtTrId(welcoming ? "mainWindow.title" : "archive.title"));
        m_detail->setCurrentWidget(m_archiveList);
        return;
    case DetailRoute::Kind::none:
        break;
    }
    setWindowTitle(qtTrId("mainWindow.title"));
    m_detail->setCurrentWidget(m_emptyDetail);
}

} // namespace fenrow
