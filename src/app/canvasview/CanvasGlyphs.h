#pragma once

#include <QColor>
#include <QIcon>

class QPainter;
class QRectF;

namespace fenrow {

// The small pictures of the canvas, its toolbar and its cards, drawn as
// lines so they stay crisp at every zoom and in every palette.
namespace CanvasGlyphs {

enum class Glyph {
    add,
    attach,
    filter,
    filterActive,
    grid,
    arrange,
    archive,
    zoomOut,
    zoomIn,
    zoomToFit,
    notes,
    due,
    deferred,
    repeat,
    checklist,
    priority,
    estimate,
    warning,
    emptyCanvas,
    trash,
    file,
    statusPending,
    statusInProgress,
    statusPaused,
    statusDone,
    ready,
    waiting,
};

void paint(QPainter &painter, const QRectF &rect, Glyph glyph, const QColor &color);
// A crisp icon of `side` pixels for a button.
QIcon icon(Glyph glyph, const QColor &color, int side = 18);

} // namespace CanvasGlyphs

} // namespace fenrow
