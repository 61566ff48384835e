#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>

class QPainter;
class QRectF;

namespace fenrow {

// The few pictures the window draws itself, so they are crisp at any scale
// and need no icon theme on the desktop.
namespace Glyphs {
QIcon plus(const QColor &color);
QIcon quit(const QColor &color);
// The brand's mark: three linked nodes on an accent tile.
QPixmap brandMark(int size);
// Two overlapping dashed squares: "nothing chosen yet".
void paintEmptySelection(QPainter &painter, const QRectF &rect, const QColor &color);
} // namespace Glyphs

} // namespace fenrow
