// The window's ways of getting around: the View and Flow menus with their
// keys, the find palette, the folded sidebar and the route mailbox.
#include "MainWindow.h"

#include "canvasview/CanvasToolbar.h"
#include "canvasview/CanvasView.h"
#include "sheets/DismissableDialogOverlay.h"
#include "FlowDetailView.h"
#include "sheets/FlowSearchPaletteView.h"
#include "PanelResizeDivider.h"
#include "sidebar/Sidebar.h"
#include "sidebar/SidebarRail.h"
#include "canvas/CanvasEditor.h"
#include "canvas/CanvasKeyCommand.h"
#include "canvas/CanvasRequests.h"
#include "canvas/DialogPresence.h"
#include "domain/FenrowHistory.h"
#include "domain/FenrowStore.h"
#include "domain/GraphMutationError.h"
#include "shell/AppPreferences.h"
#include "shell/FlowSearchPalette.h"
#include "shell/RouteRequest.h"
#include "shell/ShortcutKeys.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QStackedWidget>
#include <QTextEdit>
#include <QVariantAnimation>

namespace fenrow {

namespace {

bool isTextFocus()
{
    const QWidget *focus = QApplication::focusWidget();
    return qobject_cast<const QLineEdit *>(focus) || qobject_cast<const QTextEdit *>(focus)
        || qobject_cast<const QPlainTextEdit *>(focus) || qobject_cast<const QAbstractSpinBox *>(focus);
}

QKeySequence shortcutOf(const AppPreferences &preferences, ShortcutAction action)
{
    return QKeySequence(ShortcutKeys::keyboardShortcut(preferences.shortcut(action), action));
}

} // namespace

void MainWindow::makeNavigationMenus()
{
    m_routeRequests = new RouteRequest(this);
    m_searchPresentation = new FlowSearchPresentation(this);
    connect(m_routeRequests, &RouteRequest::flowRequested, this, &MainWindow::followRouteRequest);
    connect(m_routeRequests, &RouteRequest::readyRequested, this, [this] { setRoute(DetailRoute::ready()); });
    // Anyone may raise or lower the palette through its presentation.
    connect(m_searchPresentation, &FlowSearchPresentation::presentedChanged, this, [this](bool presented) {
        if (presented && !m_searchPalette)
            presentSearch();
        else if (!presented && m_searchPalette)
            emit m_searchPalette->closeRequested();
    });

    m_sidebarAnimation = new QVariantAnimation(this);
    m_sidebarAnimation->setDuration(sidebarAnimationMs);
    m_sidebarAnimation->setEasingCurve(QEasingCurve::InOutQuad);
    connect(m_sidebarAnimation, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        m_sidebar->setFixedWidth(value.toInt());
    });
    connect(m_sidebarAnimation, &QVariantAnimation::finished, this, &MainWindow::showSidebarState);

    // Each command names the keys it answers to. Those the canvas reads
    // itself (Tab, Return, Delete) are only shown: bound here, they would
    // take Tab from every text field.
    const auto add = [this](QMenu *menu, const char *name, auto &&run, bool textMatters) {
        QAction *action = menu->addAction(qtTrId(name));
        action->setObjectName(QString::fromLatin1(name));
        connect(action, &QAction::triggered, this, [this, run = std::forward<decltype(run)>(run), textMatters] {
            if (canvasCommandsAllowed(textMatters))
                run();
        });
        m_canvasCommands.append({action, textMatters});
        return action;
    };
    const auto shownOnly = [](QAction *action, const QKeySequence &keys) {
        action->setShortcut(keys);
        action->setShortcutContext(Qt::WidgetShortcut);
    };
    const auto keyCommand = [this](CanvasKeyCommand::Kind kind) {
        return [this, kind] {
            if (CanvasEditor *editor = m_flowDetail->editor())
                editor->handleKeyCommand(CanvasKeyCommand::of(kind));
        };
    };

    QMenu *view = menuBar()->addMenu(qtTrId("menu.view"));
    view->setObjectName(QStringLiteral("menu.view"));
    const auto zoom = [this](CanvasZoom::Kind kind) {
        return [this, kind] {
            if (m_flowDetail->editor())
                m_flowDetail->zoomRequests()->post(kind, m_flowDetail->flowId());
        };
    };
    m_zoomIn = add(view, "menu.zoomIn", zoom(CanvasZoom::Kind::zoomIn), false);
    m_zoomOut = add(view, "menu.zoomOut", zoom(CanvasZoom::Kind::zoomOut), false);
    add(view, "menu.actualSize", [this] {
        if (CanvasEditor *editor = m_flowDetail->editor()) {
            const QSizeF size = editor->interaction().viewportSize();
            editor->zoom(1.0 / editor->interaction().scale(), QPointF(size.width() / 2, size.height() / 2));
        }
    }, false)->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_0));
    m_zoomToFit = add(view, "menu.zoomToFit", zoom(CanvasZoom::Kind::zoomToFit), false);
    view->addSeparator();
    QAction *sidebar = view->addAction(qtTrId("menu.toggleSidebar"), this,
                                       [this] { setSidebarCollapsed(!isSidebarCollapsed()); });
    sidebar->setObjectName(QStringLiteral("menu.toggleSidebar"));
    sidebar->setShortcut(QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_S));

    QMenu *flow = menuBar()->addMenu(qtTrId("menu.flow"));
    flow->setObjectName(QStringLiteral("menu.flow"));
    add(flow, "menu.addTask", [this] { m_flowDetail->canvas()->addTask(); }, true);
    shownOnly(add(flow, "menu.addNextTask", keyCommand(CanvasKeyCommand::Kind::addAfter), true), Qt::Key_Tab);
    shownOnly(add(flow, "menu.addTaskBefore", keyCommand(CanvasKeyCommand::Kind::addBefore), true),
              QKeySequence(Qt::SHIFT | Qt::Key_Tab));
    add(flow, "menu.addSubtask", [this] {
        CanvasEditor *editor = m_flowDetail->editor();
        const QSet<QUuid> selected = editor ? editor->interaction().selectedItemIDs() : QSet<QUuid>();
        if (selected.size() == 1)
            editor->addSubtask(*selected.begin());
    }, true);
    add(flow, "menu.connect", [this] { connectSelectedTasks(); }, true);
    flow->addSeparator();
    shownOnly(add(flow, "menu.rename", keyCommand(CanvasKeyCommand::Kind::rename), true), Qt::Key_Return);
    shownOnly(add(flow, "menu.toggleDone", keyCommand(CanvasKeyCommand::Kind::toggleDone), true),
              QKeySequence(Qt::CTRL | Qt::Key_Return));
    shownOnly(add(flow, "menu.delete", [this] {
        if (CanvasEditor *editor = m_flowDetail->editor())
            editor->deleteSelection();
    }, true), Qt::Key_Delete);
    flow->addSeparator();
    add(flow, "menu.arrange", [this] { m_flowDetail->toolbar()->arrange(); }, true);
    add(flow, "menu.archiveDone", [this] { m_sidebar->confirmArchiveDone(m_flowDetail->flowId()); }, true);
    flow->addSeparator();
    m_find = flow->addAction(qtTrId("menu.find"), this, [this] {
        if (DialogPresence::depth() == 0 && !QApplication::activeModalWidget())
            presentSearch();
    });
    m_find->setObjectName(QStringLiteral("menu.find"));

    for (QMenu *menu : {view, flow}) {
        connect(menu, &QMenu::aboutToShow, this, &MainWindow::updateCanvasCommands);
        // Shortcuts work from the keyboard with the menu closed; the command
        // itself checks again when it runs.
        connect(menu, &QMenu::aboutToHide, this, [this] {
            for (const auto &[action, textMatters] : std::as_const(m_canvasCommands))
                action->setEnabled(true);
            m_find->setEnabled(true);
        });
    }
    applyCommandShortcuts();
    connect(&m_preferences, &AppPreferences::changed, this, [this](const QString &key) {
        if (key == QLatin1StringView(PreferenceKey::commandShortcuts))
            applyCommandShortcuts();
    });
}

void MainWindow::applyCommandShortcuts()
{
    m_zoomIn->setShortcut(shortcutOf(m_preferences, ShortcutAction::zoomIn));
    m_zoomOut->setShortcut(shortcutOf(m_preferences, ShortcutAction::zoomOut));
    m_zoomToFit->setShortcut(shortcutOf(m_preferences, ShortcutAction::zoomToFit));
    m_find->setShortcut(shortcutOf(m_preferences, ShortcutAction::findInFlow));
    m_undo->setShortcut(shortcutOf(m_preferences, ShortcutAction::undo));
    m_redo->setShortcut(shortcutOf(m_preferences, ShortcutAction::redo));
}

bool MainWindow::canvasCommandsAllowed(bool textMatters) const
{
    // The same guards as the canvas's own keys: no dialog up, and keys that
    // edit tasks stay with a text field that has the focus.
    if (DialogPresence::depth() > 0 || QApplication::activeModalWidget())
        return false;
    const CanvasEditor *editor = m_flowDetail->editor();
    if (!editor || !m_flowDetail->isVisible())
        return false;
    return !textMatters || (!isTextFocus() && !editor->isEditing());
}

void MainWindow::updateCanvasCommands()
{
    for (const auto &[action, textMatters] : std::as_const(m_canvasCommands))
        action->setEnabled(canvasCommandsAllowed(textMatters));
    m_find->setEnabled(DialogPresence::depth() == 0 && !QApplication::activeModalWidget());
}

void MainWindow::connectSelectedTasks()
{
    CanvasEditor *editor = m_flowDetail->editor();
    const TaskFlow *flow = editor ? editor->flow() : nullptr;
    if (!flow || editor->interaction().selectedItemIDs().size() != 2)
        return;
    QList<const FlowNode *> ends;
    for (const QUuid &id : editor->interaction().selectedItemIDs())
        if (const FlowNode *node = m_store.node(id))
            ends.append(node);
    if (ends.size() != 2)
        return;
    // A selection has no order: the work reads left to right, so the card
    // on the left comes first (the upper one when they stand level).
    std::ranges::sort(ends, [](const FlowNode *a, const FlowNode *b) {
        return std::pair(a->posX, a->posY) < std::pair(b->posX, b->posY);
    });
    try {
        m_history.recordAction(QStringLiteral("Connect"), *flow, [&] {
            m_store.addEdge(*ends[0], *ends[1], EdgeSource::manual, EdgeKind::dependency);
        });
    } catch (const GraphMutationError &error) {
        if (error.kind() == GraphMutationError::Kind::cycleRejected)
            editor->interaction().setRejection(CycleRejection{
                QUuid::createUuid(), QPointF((ends[0]->posX + ends[1]->posX) / 2, (ends[0]->posY + ends[1]->posY) / 2)});
    }
}

// --- find palette

FlowSearchPaletteView *MainWindow::searchPalette() const
{
    return m_searchPalette;
}

void MainWindow::presentSearch()
{
    if (!m_searchPalette) {
        // Made afresh each time, in the language now in force.
        auto *overlay = new DismissableDialogOverlay(this);
        overlay->setObjectName(QStringLiteral("flowSearch.overlay"));
        m_searchPalette = new FlowSearchPaletteView(m_store, *m_routeRequests);
        overlay->setContent(m_searchPalette);
        connect(m_searchPalette, &FlowSearchPaletteView::closeRequested, overlay, &DismissableDialogOverlay::dismiss);
        connect(overlay, &DismissableDialogOverlay::dismissed, this, [this, overlay] {
            // Let go at once: raised again before the deletion, it starts anew.
            m_searchPalette = nullptr;
            overlay->deleteLater();
            m_searchPresentation->setPresented(false);
        });
        overlay->present();
    }
    m_searchPalette->start(selectedFlow());
    m_searchPresentation->setPresented(true);
}

// --- routes from elsewhere

void MainWindow::followRouteRequest()
{
    const std::optional<RouteRequest::FlowRequest> &request = m_routeRequests->flowRequest();
    if (!request || !m_store.flow(request->flowID))
        return;
    setRoute(DetailRoute::flow(request->flowID));
    // The canvas serves the request when it has framed the flow, so it may
    // arrive before the canvas exists.
    if (request->nodeID)
        m_flowDetail->revealRequests()->post(*request->nodeID, request->flowID);
}

// --- the folded sidebar

void MainWindow::wireNavigation(QWidget *root)
{
    connect(m_sidebar, &Sidebar::searchRequested, this, &MainWindow::presentSearch);
    connect(m_sidebar, &Sidebar::collapseRequested, this, [this] { setSidebarCollapsed(true); });
    connect(m_rail, &SidebarRail::routeSelected, this, &MainWindow::setRoute);
    connect(m_rail, &SidebarRail::searchRequested, this, &MainWindow::presentSearch);
    connect(m_rail, &SidebarRail::expandRequested, this, [this] {
        // The rail stood in for a narrow window: the user wants the sidebar
        // all the same.
        if (!m_preferences.sidebarCollapsed()) {
            m_expandedAnyway = true;
            showSidebarState();
            return;
        }
        setSidebarCollapsed(false);
    });
    connect(m_flowDetail, &FlowDetailView::inspectorShownChanged, this, &MainWindow::fitSidebar);
    connect(m_rail, &SidebarRail::settingsRequested, this, [this] { openSettings(); });
    connect(m_rail, &SidebarRail::quitRequested, this, &MainWindow::quitRequested);
    m_sidebarDivider = root->findChild<PanelResizeDivider *>(QStringLiteral("sidebar.resize"));
    m_rail->setRoute(m_route);
    showSidebarState();
}

bool MainWindow::isSidebarCollapsed() const
{
    return m_preferences.sidebarCollapsed();
}

void MainWindow::setSidebarCollapsed(bool collapsed, bool animated)
{
    if (collapsed != m_preferences.sidebarCollapsed())
        m_preferences.setSidebarCollapsed(collapsed);
    m_sidebarAnimation->stop();
    const int full = Sidebar::clampedWidth(qRound(m_preferences.sidebarWidth()));
    if (!animated) {
        showSidebarState();
        return;
    }
    // The column narrows to the rail's width, or widens from it, and the
    // rail and the full sidebar change places at the end.
    const int from = m_rail->isVisible() ? SidebarRail::railWidth : m_sidebar->width();
    m_rail->hide();
    m_sidebar->show();
    if (m_sidebarDivider)
        m_sidebarDivider->hide();
    m_sidebarAnimation->setStartValue(from);
    m_sidebarAnimation->setEndValue(collapsed ? SidebarRail::railWidth : full);
    m_sidebarAnimation->start();
}

void MainWindow::fitSidebar()
{
    const int full = Sidebar::clampedWidth(qRound(m_preferences.sidebarWidth()));
    const bool flowShown = m_detail && m_detail->currentWidget() == m_flowDetail;
    const int inspector = flowShown ? m_flowDetail->inspectorRoom() : 0;
    const bool yields = width() - full - inspector < minimumCanvasWidth;
    if (yields == m_sidebarYields)
        return;
    m_sidebarYields = yields;
    m_expandedAnyway = false;
    if (!m_sidebarAnimation->state())
        showSidebarState();
}

void MainWindow::showSidebarState()
{
    const bool collapsed = m_preferences.sidebarCollapsed() || (m_sidebarYields && !m_expandedAnyway);
    m_sidebar->setVisible(!collapsed);
    if (m_sidebarDivider)
        m_sidebarDivider->setVisible(!collapsed);
    m_rail->setVisible(collapsed);
    if (!collapsed)
        m_sidebar->setFixedWidth(Sidebar::clampedWidth(qRound(m_preferences.sidebarWidth())));
}

} // namespace fenrow
