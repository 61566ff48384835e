#pragma once

#include <QAbstractListModel>
#include <QList>

#include <algorithm>

namespace fenrow {

// A list of header and item rows that is rebuilt from the store on every
// change. Rows are value records with `sameSlot`, telling whether two rows
// are the same thing in the same place.
class SectionedRowsModel : public QAbstractListModel {
protected:
    using QAbstractListModel::QAbstractListModel;

    // Puts `fresh` in place of `rows`. When every row keeps its slot, only
    // texts changed: a repaint keeps the current row and the scrolling.
    // Otherwise the view starts over with a reset.
    template <typename Row>
    void replaceRows(QList<Row> &rows, QList<Row> fresh)
    {
        const bool sameShape = std::equal(fresh.begin(), fresh.end(), rows.begin(), rows.end(),
                                          [](const Row &a, const Row &b) { return a.sameSlot(b); });
        if (sameShape) {
            rows = std::move(fresh);
            if (!rows.isEmpty())
                emit dataChanged(index(0), index(int(rows.size()) - 1));
            return;
        }
        beginResetModel();
        rows = std::move(fresh);
        endResetModel();
    }
};

} // namespace fenrow
