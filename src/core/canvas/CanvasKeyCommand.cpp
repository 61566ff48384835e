#include "CanvasKeyCommand.h"

namespace fenrow::CanvasKeyMap {

std::optional<CanvasKeyCommand> command(int key, Qt::KeyboardModifiers modifiers)
{
    using Kind = CanvasKeyCommand::Kind;
    using Direction = CanvasKeyCommand::Direction;
    Qt::KeyboardModifiers held = modifiers & relevantModifiers;
    // Shift-Tab arrives as Backtab, which implies Shift.
    if (key == Qt::Key_Backtab) {
        key = Qt::Key_Tab;
        held |= Qt::ShiftModifier;
    }
    const bool none = held == Qt::NoModifier;
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (none)
            return CanvasKeyCommand::of(Kind::rename);
        if (held == Qt::ControlModifier)
            return CanvasKeyCommand::of(Kind::toggleDone);
        return std::nullopt;
    case Qt::Key_Tab:
        if (none)
            return CanvasKeyCommand::of(Kind::addAfter);
        if (held == Qt::ShiftModifier)
            return CanvasKeyCommand::of(Kind::addBefore);
        return std::nullopt;
    case Qt::Key_Escape:
        return none ? std::optional(CanvasKeyCommand::of(Kind::deselect)) : std::nullopt;
    case Qt::Key_Left:
    case Qt::Key_Right: {
        const Direction direction = key == Qt::Key_Left ? Direction::left : Direction::right;
        if (none)
            return CanvasKeyCommand::move(direction);
        if (held == Qt::AltModifier)
            return CanvasKeyCommand::follow(direction);
        return std::nullopt;
    }
    case Qt::Key_Up:
    case Qt::Key_Down:
        // Alt with up or down has no meaning: edges have no vertical order.
        if (none)
            return CanvasKeyCommand::move(key == Qt::Key_Up ? Direction::up : Direction::down);
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

bool isDelete(int key)
{
    return key == Qt::Key_Backspace || key == Qt::Key_Delete;
}

bool isSpace(int key)
{
    return key == Qt::Key_Space;
}

} // namespace fenrow::CanvasKeyMap
