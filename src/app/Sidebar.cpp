#include "Sidebar.h"

#include "FlowListModel.h"
#include "FlowListView.h"
#include "FlowRowDelegate.h"
#include "Glyphs.h"
#include "SidebarRouteRow.h"
#include "Theme.h"
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
    m_list->verticalScrollBar()->setStyleSheet(
        QStringLiteral("QScrollBar:vertical { width: 8px; background: transparent; margin: 0; }"
                       " QScrollBar::handle:vertical { background: %1; border-radius: 4px; min-height: 28px; }"
                       " QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical { height: 0; }"
                       " QScrollBar::add-page:vertical, QScrollBar::sub-page:vertical { background: none; }")
            .arg(Color::ringOutline.name()));
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
    column->addWidget(makeReadyRow());
    column->addSpacing(18);
    column->addWidget(makeSectionHeader());
    column->addSpacing(4);
    column->addWidget(m_list, 1);
    column->addSpacing(8);
    column->addWidget(makeFooter());
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
    return header;
}

SidebarRouteRow *Sidebar::makeReadyRow()
{
    m_ready = new SidebarRouteRow(Glyphs::readyList(Color::accent), qtTrId("sidebar.route.ready"), this);
    m_ready->setObjectName(QStringLiteral("sidebar.route.ready"));
    connect(m_ready, &QAbstractButton::clicked, this, [this] {
        // A click on the chosen row would uncheck it; the route stays.
        m_ready->setChecked(true);
        if (m_route.isReady())
            return;
        setRoute(DetailRoute::ready());
        emit routeSelected(m_route);
    });
    refreshReadyCount();
    return m_ready;
}

void Sidebar::refreshReadyCount()
{
    m_ready->setBadge(Readiness::readyTasks(m_store.flows(), m_store.clock().now(), m_store.calendar()).size());
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

    row->addWidget(title, 1);
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
    return quit;
}

void Sidebar::setRoute(const DetailRoute &route)
{
    m_route = route;
    m_ready->setChecked(route.isReady());
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

QMessageBox *Sidebar::confirmDelete(const QUuid &id)
{
    const TaskFlow *flow = m_store.flow(id);
    if (!flow)
        return nullptr;
    const QString title = qtTrId("sidebar.row.delete.confirm.title %@").arg(flow->name);
    auto *box = new QMessageBox(window());
    box->setObjectName(QStringLiteral("sidebar.row.deleteConfirmation"));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    box->setWindowTitle(title);
    // The name is the user's text: never read it as markup.
    box->setTextFormat(Qt::PlainText);
    box->setText(title);
    box->setInformativeText(qtTrId("sidebar.row.delete.confirm.message"));
    box->setStyleSheet(QStringLiteral("QLabel#qt_msgbox_label { font-weight: 600; font-size: %1pt; }"
                                      " QLabel#qt_msgbox_informativelabel { color: %2; }")
                           .arg(titleFont().pointSizeF() * 0.8)
                           .arg(Color::secondaryText.name()));

    QPushButton *remove = box->addButton(qtTrId("sidebar.row.delete"), QMessageBox::DestructiveRole);
    remove->setObjectName(QStringLiteral("sidebar.row.confirmDelete"));
    remove->setStyleSheet(QStringLiteral("QPushButton { color: white; background: %1; border: none;"
                                         " border-radius: 5px; padding: 5px 14px; }"
                                         " QPushButton:hover { background: %2; }")
                              .arg(Color::destructive.name(), Color::destructive.darker(115).name()));
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

QMenu *Sidebar::rowMenu(const QUuid &id)
{
    auto *menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("sidebar.row.menu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction *rename = menu->addAction(qtTrId("sidebar.row.action.rename"));
    rename->setObjectName(QStringLiteral("sidebar.row.action.rename"));
    connect(rename, &QAction::triggered, this, [this, id] { beginRename(id); });
    menu->addSeparator();
    QAction *remove = menu->addAction(qtTrId("sidebar.row.action.delete"));
    remove->setObjectName(QStringLiteral("sidebar.row.action.delete"));
    connect(remove, &QAction::triggered, this, [this, id] { confirmDelete(id); });
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
