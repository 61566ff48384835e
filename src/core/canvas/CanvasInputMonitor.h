#pragma once

#include "CanvasKeyCommand.h"

#include <QPointF>

#include <functional>

namespace fenrow {

// Gives keys, the wheel and pinches a meaning on the canvas before any
// control sees them, and decides which events the canvas may take at all.
// The view hands it each event with the state around it (`Context`) and
// swallows the event when a method returns true; anything else goes on
// unchanged, so an unused key can still reach a menu.
class CanvasInputMonitor {
public:
    // Where the keyboard focus is, as far as the guards care.
    enum class Responder { canvas, text, control, table };

    struct Context {
        // The event belongs to the window that shows this canvas.
        bool inCanvasWindow = true;
        // The pointer is over the canvas itself, not a panel beside it.
        bool pointerInside = true;
        bool hasSheet = false;
        int dialogDepth = 0;
        Responder focus = Responder::canvas;
    };

    struct KeyPress {
        int key = 0;
        Qt::KeyboardModifiers modifiers;
        bool isAutoRepeat = false;
    };

    struct Scroll {
        QPointF delta;
        // Pixel deltas of a touchpad; otherwise notches of a wheel.
        bool precise = false;
        Qt::KeyboardModifiers modifiers;
        QPointF position;
    };

    // A notched wheel moves this far per notch.
    static constexpr double notchedPanStep = 24;
    // Wheel distance that doubles the zoom, precise and notched.
    static constexpr double preciseZoomDistance = 420;
    static constexpr double notchedZoomDistance = 22;
    static constexpr double minimumZoomStep = 0.6;
    static constexpr double maximumZoomStep = 1.8;

    std::function<void(double dx, double dy)> onPan;
    std::function<void(double factor, QPointF point)> onZoom;
    std::function<void(bool held)> onSpaceHeldChange;
    std::function<bool()> onDeleteSelection;
    std::function<bool(CanvasKeyCommand)> onKeyCommand;
    std::function<bool()> isEditing;

    bool keyDown(const KeyPress &press, const Context &context) const;
    // Only the space bar is followed on its way up.
    bool keyUp(const KeyPress &press, const Context &context) const;
    bool scroll(const Scroll &scroll, const Context &context) const;
    bool magnify(double magnification, QPointF position, const Context &context) const;

private:
    bool editing() const { return isEditing && isEditing(); }
    bool space(const KeyPress &press, const Context &context, bool down) const;
};

} // namespace fenrow
