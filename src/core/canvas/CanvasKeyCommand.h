#pragma once

#include <Qt>

#include <optional>

namespace fenrow {

// The closed vocabulary of the canvas's keyboard commands.
struct CanvasKeyCommand {
    enum class Kind { move, follow, addAfter, addBefore, rename, toggleDone, deselect };
    enum class Direction { left, right, up, down };

    Kind kind = Kind::deselect;
    // Only for move and follow.
    Direction direction = Direction::left;

    static CanvasKeyCommand move(Direction direction) { return {Kind::move, direction}; }
    static CanvasKeyCommand follow(Direction direction) { return {Kind::follow, direction}; }
    static CanvasKeyCommand of(Kind kind) { return {kind, Direction::left}; }

    friend bool operator==(const CanvasKeyCommand &, const CanvasKeyCommand &) = default;
};

// Which key press means which command. Only Shift, Ctrl, Alt and Meta are
// looked at, and each command wants exactly its own combination of them;
// the keypad flag is ignored, so keypad Enter and the arrows of any
// keyboard count. Ctrl stands where other desktops have Command and Alt
// where they have Option.
namespace CanvasKeyMap {

inline constexpr Qt::KeyboardModifiers relevantModifiers =
    Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

std::optional<CanvasKeyCommand> command(int key, Qt::KeyboardModifiers modifiers);
// Backspace and Delete, whatever the modifiers.
bool isDelete(int key);
bool isSpace(int key);

} // namespace CanvasKeyMap

} // namespace fenrow
