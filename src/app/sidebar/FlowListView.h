#pragma once

#include <QListView>
#include <QPersistentModelIndex>

namespace fenrow {

// The list of flow rows. It runs drag and drop itself so that the only drop
// there is one onto a row, which the model accepts or refuses; the stock
// handling would also insert between rows and clear the source row after a
// move, neither of which a sidebar of store records wants.
class FlowListView : public QListView {
    Q_OBJECT

public:
    explicit FlowListView(QWidget *parent = nullptr);

    // The row a drag hovers and could drop onto, for the delegate to mark.
    QModelIndex dropTarget() const { return m_dropTarget; }
    bool isEditing(const QModelIndex &index) const;

    using QListView::edit;

protected:
    bool edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) override;
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;
    void startDrag(Qt::DropActions supportedActions) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QModelIndex acceptingRow(const QDropEvent *event) const;
    void setDropTarget(const QModelIndex &index);
    void scrollNearEdge(const QPoint &position);

    QPersistentModelIndex m_dropTarget;
    QPersistentModelIndex m_editing;
};

} // namespace fenrow
