#pragma once

#include "CanvasHitTest.h"

#include <QPointF>

#include <optional>

namespace fenrow {

class CanvasEditor;

// Turns the pointer's press, moves and release into the editor's gestures:
// the press decides by hit test what the gesture is about, and each kind
// waits for its own minimum distance before it counts as a drag (none for
// cards, ports and grips, 4 for the background, 10 for edge handles). A
// release that never became a drag is a tap. Points are in the canvas
// view's own coordinates.
class CanvasPointer {
public:
    static constexpr double handleDragMinimum = 10;

    explicit CanvasPointer(CanvasEditor &editor) : m_editor(editor) {}

    // `clickCount` 2 is the second press of a double click.
    void press(QPointF point, Qt::KeyboardModifiers modifiers, int clickCount = 1);
    void move(QPointF point, Qt::KeyboardModifiers modifiers);
    void release(QPointF point, Qt::KeyboardModifiers modifiers);

    bool isPressed() const { return m_gesture.has_value(); }
    // What the current press is about.
    std::optional<CanvasHit> target() const;

private:
    struct Gesture {
        CanvasHit hit;
        QPointF start;
        // Where the grabbed port or handle stood at the press, in canvas units.
        QPointF grabbedPoint;
        bool started = false;
        // The second press of a double click has done its work at once.
        bool consumed = false;
    };

    double minimumDistance() const;
    void changed(QPointF point, Qt::KeyboardModifiers modifiers);
    QPointF draggedPoint(QPointF point) const;

    CanvasEditor &m_editor;
    std::optional<Gesture> m_gesture;
};

} // namespace fenrow
