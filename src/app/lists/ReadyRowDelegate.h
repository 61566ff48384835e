#pragma once

#include <QStyledItemDelegate>

namespace fenrow {

// Paints the Ready list: group headers, and task rows with a complete
// circle, the title, and a line of details (flow, due day, priority,
// estimate, notes) that wraps rather than clips in a narrow window. The
// view handles clicks on the circle.
class ReadyRowDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

    // Where the complete circle of a task row at `rowRect` sits, and the
    // area that takes its clicks: a little larger, as it is a small target.
    static QRect completeRect(const QRect &rowRect);
    static QRect completeHitRect(const QRect &rowRect);
};

} // namespace fenrow
