#include "Sidebar.h"

#include "FlowListModel.h"
#include "FlowListView.h"
#include "FlowRowDelegate.h"
#include "look/Glyphs.h"
#include "SidebarRouteRow.h"
#include "TemplateMenuButton.h"
#include "look/Theme.h"
#include "domain/Clock.h"
#include "domain/FenrowStore.h"
#include "domain/Readiness.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace fenrow {

using namespace Theme;

int Sidebar::clampedWidth(int width)
{
    return std::clamp(width, minimumWidth, maximumWidth);
}

Sidebar::Sidebar(FenrowStore &store, QWidget *parent) : QWidget(parent), m_store(store)
{
    setObjectName(QStringLiteral("sidebar.root"));
    setAutoFillBackground(true);
    QPalette colours = palette();
    colours.setColor(QPalette::Window, Color::sidebar);
    colours.setColor(QPalette::Base, Color::sidebar);
    setPalette(colours);

    m_model = new FlowListModel(store, this);
    m_list = new FlowListView(this);
    m_list->setObjectName(QStringLiteral("sidebar.flows"));
    m_list->setAccessibleName(qtTrId("sidebar.section.flows"));
    m_list->setModel(m_model);
    m_list->setItemDelegate(new FlowRowDelegate(m_list));
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    m_list->verticalScrollBar()->setStyleSheet(thinScrollBarStyle());
    connect(m_list, &QWidget::customContextMenuRequested, this, &Sidebar::showRowMenu);
    // Selection, not the current index: focusing the list makes a row
    // current without the user choosing it.
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &Sidebar::userChangedSelection);
    connect(m_model, &QAbstractItemModel::modelReset, this, &Sidebar::restoreSelection);
    connect(&m_store, &FenrowStore::changed, this, &Sidebar::refreshReadyCount);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(Metric::sidebarPadding, 16, Metric::sidebarPadding, 12);
    column->setSpacing(0);
    column->addWidget(makeBrandHeader());
    column->addSpacing(16);
    // Not a place of its own: it opens the find palette over what is shown.
    m_search = new SidebarRouteRow(Glyphs::magnifier(Color::secondaryText), qtTrId("sidebar.route.search"), this);
    m_search->setObjectName(QStringLiteral("sidebar.route.search"));
    m_search->setCheckable(false);
    connect(m_search, &QAbstractButton::clicked, this, &Sidebar::searchRequested);
    column->addWidget(m_search);
    m_ready = makeRouteRow(Glyphs::readyList(Color::accent), "sidebar.route.ready", DetailRoute::ready());
    m_archive = makeRouteRow(Glyphs::archiveBox(Color::accent), "sidebar.route.archive", DetailRoute::archive());
    column->addWidget(m_ready);
    column->addWidget(m_archive);
    refreshReadyCount();
    column->addSpacing(18);
    column->addWidget(makeSectionHeader());
    column->addSpacing(4);
    column->addWidget(m_list, 1);
    column->addSpacing(8);
    column->addWidget(makeFooter());

    // Tab walks the sidebar as it reads, top to bottom, whatever order its
    // parts were made in.
    QWidget *previous = nullptr;
    for (QWidget *stop :
         {findChild<QWidget *>(QStringLiteral("sidebar.action.collapse")), static_cast<QWidget *>(m_search),
          static_cast<QWidget *>(m_ready), static_cast<QWidget *>(m_archive), static_cast<QWidget *>(m_templates),
          findChild<QWidget *>(QStringLiteral("sidebar.action.newFlow")), static_cast<QWidget *>(m_list),
          findChild<QWidget *>(QStringLiteral("sidebar.action.settings")),
          findChild<QWidget *>(QStringLiteral("sidebar.action.quit"))}) {
        if (previous && stop)
            setTabOrder(previous, stop);
        previous = stop ? stop : previous;
    }
}

QWidget *Sidebar::makeBrandHeader()
{
    auto *header = new QWidget(this);
    header->setObjectName(QStringLiteral("sidebar.brandHeader"));
    auto *row = new QHBoxLayout(header);
    row->setContentsMargins(Metric::rowPaddingX - 2, 0, 0, 0);
    row->setSpacing(9);
    auto *mark = new QLabel(header);
    mark->setPixmap(Glyphs::brandMark(22));
    auto *name = new QLabel(qtTrId("sidebar.brandHeader"), header);
    name->setFont(brandFont());
    row->addWidget(mark);
    row->addWidget(name, 1);

    auto *leading = new QWidget(header);
    leading->setObjectName(QStringLiteral("sidebar.leading"));
    auto *tools = new QHBoxLayout(leading);
    tools->setContentsMargins(0, 0, 0, 0);
    auto *collapse = new QToolButton(leading);
    collapse->setObjectName(QStringLiteral("sidebar.action.collapse"));
    collapse->setIcon(Glyphs::sidebarToggle(Color::secondaryText));
    collapse->setToolTip(qtTrId("sidebar.action.collapse"));
    collapse->setAccessibleName(qtTrId("sidebar.action.collapse"));
    collapse->setAutoRaise(true);
    collapse->setFixedSize(26, 26);
    collapse->setCursor(Qt::PointingHandCursor);
    collapse->setStyleSheet(QStringLiteral("QToolButton { border: none; border-radius: 6px; }"
                                           " QToolButton:hover { background: %1; }")
                                .arg(Color::hover.name()));
    connect(collapse, &QToolButton::clicked, this, &Sidebar::collapseRequested);
    tools->addWidget(collapse);
    row->addWidget(leading);
    return header;
}

SidebarRouteRow *Sidebar::makeRouteRow(const QIcon &icon, const char *name, const DetailRoute &route)
{
    auto *row = new SidebarRouteRow(icon, qtTrId(name), this);
    row->setObjectName(QString::fromLatin1(name));
    connect(row, &QAbstractButton::clicked, this, [this, row, route] {
        // A click on the chosen row would uncheck it; the route stays.
        row->setChecked(true);
        if (m_route == route)
            return;
        setRoute(route);
        emit routeSelected(m_route);
    });
    return row;
}

void Sidebar::refreshReadyCount()
{
    // A flow's own row (its name, its viewport, saved after every scroll)
    // holds up no task: the count stands, and a large store is not walked.
    const StoreChange &change = m_store.lastChange();
    if (m_readyCounted && !change.everything && change.nodes.isEmpty())
        return;
    m_readyCounted = true;
    m_ready->setBadge(m_store.readyTasks(m_store.clock().now()).size());
}

QWidget *Sidebar::makeSectionHeader()
{
    auto *header = new QWidget(this);
    header->setObjectName(QStringLiteral("sidebar.section.flows"));
    auto *row = new QHBoxLayout(header);
    row->setContentsMargins(Metric::rowPaddingX, 0, 2, 0);
    row->setSpacing(6);
    auto *title = new QLabel(qtTrId("sidebar.section.flows"), header);
    title->setFont(sectionFont());
    QPalette muted = title->palette();
    muted.setColor(QPalette::WindowText, Color::secondaryText);
    title->setPalette(muted);

    auto *add = new QToolButton(header);
    add->setObjectName(QStringLiteral("sidebar.action.newFlow"));
    add->setIcon(Glyphs::plus(Color::secondaryText));
    add->setToolTip(qtTrId("sidebar.action.newFlow"));
    add->setAccessibleName(qtTrId("sidebar.action.newFlow"));
    add->setAutoRaise(true);
    add->setFixedSize(26, 26);
    add->setCursor(Qt::PointingHandCursor);
    add->setStyleSheet(QStringLiteral("QToolButton { border: none; border-radius: 6px; }"
                                      " QToolButton:hover { background: %1; }"
                                      " QToolButton:pressed { background: %2; }")
                           .arg(Color::hover.name(), Color::track.name()));
    connect(add, &QToolButton::clicked, this, &Sidebar::createFlow);

    m_templates = new TemplateMenuButton(m_store, header);
    connect(m_templates, &TemplateMenuButton::flowCreated, this, [this](const QUuid &id) {
        setRoute(DetailRoute::flow(id));
        emit routeSelected(m_route);
    });

    row->addWidget(title, 1);
    row->addWidget(m_templates);
    row->addWidget(add);
    return header;
}

QWidget *Sidebar::makeFooter()
{
    auto *quit = new QPushButton(Glyphs::quit(Color::secondaryText), qtTrId("sidebar.action.quit"), this);
    quit->setObjectName(QStringLiteral("sidebar.action.quit"));
    quit->setFlat(true);
    quit->setCursor(Qt::PointingHandCursor);
    quit->setStyleSheet(QStringLiteral("QPushButton { text-align: left; color: %1; border: none;"
                                       " border-radius: 6px; padding: 6px %2px; }"
                                       " QPushButton:hover { background: %3; color: %4; }")
                            .arg(Color::secondaryText.name())
                            .arg(Metric::rowPaddingX)
                            .arg(Color::hover.name(), Color::text.name()));
    connect(quit, &QPushButton::clicked, this, &Sidebar::quitRequested);

    auto *settings = new QPushButton(Glyphs::gear(Color::secondaryText), qtTrId("sidebar.action.settings"), this);
    settings->setObjectName(QStringLiteral("sidebar.action.settings"));
    settings->setFlat(true);
    settings->setCursor(Qt::PointingHandCursor);
    settings->setStyleSheet(quit->styleSheet());
    connect(settings, &QPushButton::clicked, this, &Sidebar::settingsRequested);

    auto *footer = new QWidget(this);
    auto *column = new QVBoxLayout(footer);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(settings);
    column->addWidget(quit);
    return footer;
}

void Sidebar::setRoute(const DetailRoute &route)
{
    m_route = route;
    m_ready->setChecked(route.isReady());
    m_archive->setChecked(route.isArchive());
    restoreSelection();
}

void Sidebar::restoreSelection()
{
    const QModelIndex index = m_model->indexOf(m_route.flowId());
    QItemSelectionModel *selection = m_list->selectionModel();
    if (selection->currentIndex() == index && (!index.isValid() || selection->isSelected(index)))
        return;
    const QScopedValueRollback applying(m_applyingSelection, true);
    if (index.isValid()) {
        selection->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
        m_list->scrollTo(index);
    } else {
        selection->clear();
    }
}

void Sidebar::userChangedSelection()
{
    const QModelIndexList selected = m_list->selectionModel()->selectedIndexes();
    const QUuid id = selected.isEmpty() ? QUuid() : m_model->flowIdAt(selected.first());
    if (m_applyingSelection || id.isNull() || id == m_route.flowId())
        return;
    setRoute(DetailRoute::flow(id));
    emit routeSelected(m_route);
}

void Sidebar::createFlow()
{
    // A rename still open elsewhere would be dropped when the new row
    // arrives; taking the focus from it commits it first.
    if (QWidget *focus = QApplication::focusWidget(); focus && m_list->viewport()->isAncestorOf(focus))
        m_list->setFocus();
    const QUuid id = m_store.addFlow(qtTrId("sidebar.flow.untitled"))->id;
    setRoute(DetailRoute::flow(id));
    emit routeSelected(m_route);
    beginRename(id);
}

void Sidebar::beginRename(const QUuid &id)
{
    const QModelIndex index = m_model->indexOf(id);
    if (!index.isValid())
        return;
    m_list->scrollTo(index);
    m_list->setFocus();
    m_list->edit(index);
}

QMessageBox *Sidebar::askAboutFlow(const QString &name, const QString &title, const QString &message,
                                   const QString &actionText, const QColor &color, QPushButton *&action)
{
    auto *box = new QMessageBox(window());
    box->setObjectName(name);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    box->setWindowTitle(title);
    // The title holds the flow's name, the user's text: never read it as markup.
    box->setTextFormat(Qt::PlainText);
    box->setText(title);
    box->setInformativeText(message);
    box->setStyleSheet(messageBoxStyle());

    action = box->addButton(actionText, QMessageBox::AcceptRole);
    action->setStyleSheet(filledButtonStyle(color));
    return box;
}

QMessageBox *Sidebar::confirmDelete(const QUuid &id)
{
    const TaskFlow *flow = m_store.flow(id);
    if (!flow)
        return nullptr;
    QPushButton *remove = nullptr;
    QMessageBox *box = askAboutFlow(QStringLiteral("sidebar.row.deleteConfirmation"),
                                    qtTrId("sidebar.row.delete.confirm.title %@").arg(flow->name),
                                    qtTrId("sidebar.row.delete.confirm.message"), qtTrId("sidebar.row.delete"),
                                    Color::destructive, remove);
    remove->setObjectName(QStringLiteral("sidebar.row.confirmDelete"));
    QPushButton *cancel = box->addButton(qtTrId("sidebar.row.delete.confirm.cancel"), QMessageBox::RejectRole);
    cancel->setObjectName(QStringLiteral("sidebar.row.confirmCancel"));
    // Return must not destroy work: the safe answer is the default.
    box->setDefaultButton(cancel);
    box->setEscapeButton(cancel);

    connect(box, &QMessageBox::buttonClicked, this, [this, id, remove](QAbstractButton *button) {
        // Looked up again: the flow may have gone while the dialog was open.
        const TaskFlow *target = m_store.flow(id);
        if (button == remove && target)
            m_store.deleteFlow(*target);
    });
    box->open();
    return box;
}

QMessageBox *Sidebar::confirmArchiveDone(const QUuid &id)
{
    const TaskFlow *flow = m_store.flow(id);
    if (!flow)
        return nullptr;
    QPushButton *archive = nullptr;
    QMessageBox *box = askAboutFlow(QStringLiteral("sidebar.row.archiveConfirmation"),
                                    qtTrId("archive.confirm.title ").arg(flow->name),
                                    qtTrId("archive.confirm.message"), qtTrId("archive.confirm.action"),
                                    Color::accent, archive);
    archive->setObjectName(QStringLiteral("sidebar.row.confirmArchive"));
    QPushButton *cancel = box->addButton(qtTrId("archive.confirm.cancel"), QMessageBox::RejectRole);
    cancel->setObjectName(QStringLiteral("sidebar.row.confirmCancel"));
    // Taking many tasks off the canvas is undone one record at a time.
    box->setDefaultButton(cancel);
    box->setEscapeButton(cancel);

    connect(box, &QMessageBox::buttonClicked, this, [this, id, archive](QAbstractButton *button) {
        const TaskFlow *target = m_store.flow(id);
        if (button == archive && target)
            m_store.archiveDone(*target);
    });
    box->open();
    return box;
}

void Sidebar::duplicateFlow(const QUuid &id)
{
    const TaskFlow *flow = m_store.flow(id);
    if (!flow)
        return;
    const QUuid copy = m_store.duplicateFlow(*flow)->id;
    setRoute(DetailRoute::flow(copy));
    emit routeSelected(m_route);
}

QMenu *Sidebar::rowMenu(const QUuid &id)
{
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("sidebar.row.menu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [&](const char *name, auto &&run) {
        QAction *action = menu->addAction(qtTrId(name));
        action->setObjectName(QString::fromLatin1(name));
        connect(action, &QAction::triggered, this, std::forward<decltype(run)>(run));
        return action;
    };
    add("sidebar.row.action.rename", [this, id] { beginRename(id); });
    menu->addSeparator();
    add("sidebar.row.action.exportMarkdown", [this, id] { emit exportMarkdownRequested(id); });
    add("sidebar.row.action.copyMarkdown", [this, id] { emit copyMarkdownRequested(id); });
    add("sidebar.context.exportOPML", [this, id] { emit exportOPMLRequested(id); });
    menu->addSeparator();
    add("sidebar.context.duplicate", [this, id] { duplicateFlow(id); });
    add("sidebar.context.saveTemplate", [this, id] {
        if (const TaskFlow *flow = m_store.flow(id))
            m_store.saveAsTemplate(*flow);
    });
    QAction *archive = add("sidebar.row.archiveDone", [this, id] { confirmArchiveDone(id); });
    // Offered only when there is done work to take away.
    bool hasDone = false;
    if (const TaskFlow *flow = m_store.flow(id))
        for (const FlowNode *node : flow->items())
            hasDone = hasDone || node->isDone;
    archive->setEnabled(hasDone);
    menu->addSeparator();
    add("sidebar.row.action.delete", [this, id] { confirmDelete(id); });
    return menu;
}

void Sidebar::showRowMenu(const QPoint &position)
{
    const QUuid id = m_model->flowIdAt(m_list->indexAt(position));
    if (id.isNull())
        return;
    rowMenu(id)->popup(m_list->viewport()->mapToGlobal(position));
}

} // namespace fenrow
