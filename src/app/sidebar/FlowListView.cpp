#include "FlowListView.h"

#include <QDrag>
#include <QDragMoveEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>

namespace fenrow {

FlowListView::FlowListView(QWidget *parent) : QListView(parent)
{
    setFrameShape(QFrame::NoFrame);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setUniformItemSizes(false);
    setResizeMode(QListView::Adjust);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDropIndicatorShown(false);
    setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_Hover);
    viewport()->setAutoFillBackground(false);
}

bool FlowListView::isEditing(const QModelIndex &index) const
{
    return m_editing.isValid() && m_editing == index;
}

bool FlowListView::edit(const QModelIndex &index, EditTrigger trigger, QEvent *event)
{
    const bool opened = QListView::edit(index, trigger, event);
    if (opened && state() == EditingState)
        m_editing = index;
    return opened;
}

void FlowListView::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    const QModelIndex edited = m_editing;
    m_editing = QPersistentModelIndex();
    QListView::closeEditor(editor, hint);
    if (edited.isValid())
        update(edited);
}

void FlowListView::resizeEvent(QResizeEvent *event)
{
    QListView::resizeEvent(event);
    // Row heights depend on the width (the progress text wraps): measure
    // again now rather than after the list's own delayed relayout.
    doItemsLayout();
}

void FlowListView::mousePressEvent(QMouseEvent *event)
{
    // A right click opens the row's menu without switching the shown flow.
    if (event->button() == Qt::RightButton) {
        event->accept();
        return;
    }
    QListView::mousePressEvent(event);
}

void FlowListView::startDrag(Qt::DropActions)
{
    const QModelIndex index = currentIndex();
    QMimeData *data = index.isValid() ? model()->mimeData({index}) : nullptr;
    if (!data)
        return;
    auto *drag = new QDrag(this);
    drag->setMimeData(data);
    const QRect rect = visualRect(index);
    drag->setPixmap(viewport()->grab(rect));
    drag->setHotSpot(viewport()->mapFromGlobal(QCursor::pos()) - rect.topLeft());
    drag->exec(Qt::MoveAction, Qt::MoveAction);
    setDropTarget({});
}

QModelIndex FlowListView::acceptingRow(const QDropEvent *event) const
{
    const QModelIndex row = indexAt(event->position().toPoint());
    if (!row.isValid() || !model()->canDropMimeData(event->mimeData(), Qt::MoveAction, -1, -1, row))
        return {};
    return row;
}

void FlowListView::setDropTarget(const QModelIndex &index)
{
    if (m_dropTarget == index)
        return;
    const QModelIndex previous = m_dropTarget;
    m_dropTarget = index;
    if (previous.isValid())
        update(previous);
    if (index.isValid())
        update(index);
}

void FlowListView::scrollNearEdge(const QPoint &position)
{
    const int margin = autoScrollMargin();
    QScrollBar *bar = verticalScrollBar();
    if (position.y() < margin)
        bar->setValue(bar->value() - bar->singleStep());
    else if (position.y() > viewport()->height() - margin)
        bar->setValue(bar->value() + bar->singleStep());
}

void FlowListView::dragEnterEvent(QDragEnterEvent *event)
{
    // Enter on any text: whether a row takes it is decided row by row.
    if (event->mimeData()->hasText())
        event->acceptProposedAction();
    else
        event->ignore();
}

void FlowListView::dragMoveEvent(QDragMoveEvent *event)
{
    scrollNearEdge(event->position().toPoint());
    const QModelIndex row = acceptingRow(event);
    setDropTarget(row);
    if (!row.isValid()) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::MoveAction);
    event->accept(visualRect(row));
}

void FlowListView::dragLeaveEvent(QDragLeaveEvent *event)
{
    setDropTarget({});
    event->accept();
}

void FlowListView::dropEvent(QDropEvent *event)
{
    setDropTarget({});
    const QModelIndex row = acceptingRow(event);
    if (!row.isValid() || !model()->dropMimeData(event->mimeData(), Qt::MoveAction, -1, -1, row)) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::MoveAction);
    event->accept();
}

} // namespace fenrow
