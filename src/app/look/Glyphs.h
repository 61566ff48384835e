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
QIcon gear(const QColor &color);
// A short checklist with the first item ticked: the Ready list.
QIcon readyList(const QColor &color);
// A box with its lid on: the archive of finished work.
QIcon archiveBox(const QColor &color);
// Two stacked sheets: flows made from a saved shape.
QIcon templates(const QColor &color);
// An arrow turning back: put a task back where it was.
QIcon restore(const QColor &color);
QIcon trash(const QColor &color);
// A magnifying glass: find.
QIcon magnifier(const QColor &color);
// A window with its side column marked: show or hide the sidebar.
QIcon sidebarToggle(const QColor &color);
// The brand's mark: three linked nodes on an accent tile.
QPixmap brandMark(int size);

// The large pictures of empty states.
enum class Symbol {
    emptySelection, // two overlapping squares, one dashed: nothing here yet
    allDone,        // a ticked circle
    allBlocked,     // an hourglass
    allDeferred,    // a calendar with a clock
    archiveEmpty,   // an open, empty box
    noMatches,      // a magnifying glass
};
void paintSymbol(QPainter &painter, const QRectF &rect, Symbol symbol, const QColor &color);

// The small marks in front of a task's details.
enum class Mark { flow, due, priority, estimate, notes, repeat, files };
void paintMark(QPainter &painter, const QRectF &rect, Mark mark, const QColor &color);
} // namespace Glyphs

} // namespace fenrow
