#include "CanvasInputMonitor.h"

#include <algorithm>
#include <cmath>

namespace fenrow {

bool CanvasInputMonitor::space(const KeyPress &press, const Context &context, bool down) const
{
    if (context.focus == Responder::text || editing())
        return false;
    // A held space bar repeats; the hand tool needs only the first press.
    if (press.isAutoRepeat)
        return true;
    if (onSpaceHeldChange)
        onSpaceHeldChange(down);
    return true;
}

bool CanvasInputMonitor::keyDown(const KeyPress &press, const Context &context) const
{
    if (!context.inCanvasWindow)
        return false;
    if (CanvasKeyMap::isSpace(press.key))
        return space(press, context, true);
    if (CanvasKeyMap::isDelete(press.key)) {
        if (context.focus == Responder::text || editing())
            return false;
        return onDeleteSelection && onDeleteSelection();
    }
    if (context.hasSheet || context.dialogDepth > 0 || context.focus != Responder::canvas || editing())
        return false;
    const std::optional<CanvasKeyCommand> command = CanvasKeyMap::command(press.key, press.modifiers);
    return command && onKeyCommand && onKeyCommand(*command);
}

bool CanvasInputMonitor::keyUp(const KeyPress &press, const Context &context) const
{
    if (!context.inCanvasWindow || !CanvasKeyMap::isSpace(press.key))
        return false;
    return space(press, context, false);
}

bool CanvasInputMonitor::scroll(const Scroll &scroll, const Context &context) const
{
    if (!context.inCanvasWindow || !context.pointerInside)
        return false;
    const double dx = scroll.delta.x();
    const double dy = scroll.delta.y();
    if (dx == 0 && dy == 0)
        return false;
    if (scroll.modifiers & Qt::ControlModifier) {
        if (dy == 0)
            return false;
        const double distance = scroll.precise ? preciseZoomDistance : notchedZoomDistance;
        const double factor = std::clamp(std::pow(2.0, dy / distance), minimumZoomStep, maximumZoomStep);
        if (onZoom)
            onZoom(factor, scroll.position);
        return true;
    }
    const double step = scroll.precise ? 1 : notchedPanStep;
    if (onPan)
        onPan(dx * step, dy * step);
    return true;
}

bool CanvasInputMonitor::magnify(double magnification, QPointF position, const Context &context) const
{
    if (!context.inCanvasWindow || !context.pointerInside || magnification == 0)
        return false;
    if (onZoom)
        onZoom(std::clamp(1 + magnification, minimumZoomStep, maximumZoomStep), position);
    return true;
}

} // namespace fenrow
