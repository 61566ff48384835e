#pragma once

#include "KeyCombo.h"
#include "RawEnum.h"

namespace fenrow {

// The commands whose keys the user may change. The raw string is the key of
// the action's entry in "preferences.commandShortcuts".
enum class ShortcutAction { undo, redo, newFlowFromText, findInFlow, exportMarkdown, copyMarkdown, zoomIn, zoomOut, zoomToFit };

template <>
struct RawNames<ShortcutAction> {
    static constexpr std::array<const char *, 9> names{"undo",         "redo",         "newFlowFromText",
                                                       "findInFlow",   "exportMarkdown", "copyMarkdown",
                                                       "zoomIn",       "zoomOut",      "zoomToFit"};
};

// The combination an action has until the user records another.
constexpr KeyCombo defaultShortcut(ShortcutAction action)
{
    using namespace KeyModifier;
    switch (action) {
    case ShortcutAction::undo:
        return {6, command};
    case ShortcutAction::redo:
        return {6, shift | command};
    case ShortcutAction::newFlowFromText:
        return {45, shift | command};
    case ShortcutAction::findInFlow:
        return {3, command};
    case ShortcutAction::exportMarkdown:
        return {14, shift | command};
    case ShortcutAction::copyMarkdown:
        return {8, shift | command};
    case ShortcutAction::zoomIn:
        return {24, command};
    case ShortcutAction::zoomOut:
        return {27, command};
    case ShortcutAction::zoomToFit:
        return {29, command};
    }
    return {};
}

} // namespace fenrow
