#pragma once

#include <QStyledItemDelegate>

namespace fenrow {

// Paints the archive: day headers with their count, and record rows with a
// mark of their kind, the title, a line of details (flow, time, round) and
// the row's actions at the trailing end: restore, where the record allows
// it, and delete. The view handles clicks on the actions.
class ArchiveRowDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

    // Where the actions of a record row at `rowRect` sit. Restore is drawn
    // only for rows that can be restored, but keeps its place either way so
    // the delete buttons of all rows line up.
    static QRect restoreRect(const QRect &rowRect);
    static QRect deleteRect(const QRect &rowRect);
};

} // namespace fenrow
