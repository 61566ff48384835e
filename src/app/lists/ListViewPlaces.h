#pragma once

#include <QBoxLayout>
#include <QListView>
#include <QScrollBar>
#include <QUuid>

namespace fenrow::ListViewPlaces {

// A list header with a title and one trailing control (sort, search): side
// by side when they fit, the control under the title when they do not.
inline void arrangeHeader(QBoxLayout &header, QWidget &trailing, bool stacked)
{
    const auto direction = stacked ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight;
    if (header.direction() == direction)
        return;
    header.setDirection(direction);
    header.setSpacing(stacked ? 10 : 16);
    header.setAlignment(&trailing, stacked ? Qt::AlignLeft : Qt::AlignVCenter);
}

// Rebuilds a list's rows while keeping the current row (by its id) and the
// scrolling, so that a row leaving the list does not make the rest jump.
template <typename Model, typename IdAt>
void reloadKeepingPlace(QListView &list, Model &model, IdAt idAt)
{
    const QUuid current = (model.*idAt)(list.currentIndex());
    const int scrolled = list.verticalScrollBar()->value();
    model.reload();
    if (const QModelIndex index = model.indexOf(current); index.isValid())
        list.setCurrentIndex(index);
    list.verticalScrollBar()->setValue(scrolled);
}

} // namespace fenrow::ListViewPlaces
