#pragma once

#include "KeyCombo.h"
#include "ShortcutAction.h"

#include <QString>
#include <Qt>

#include <optional>

namespace fenrow {

// How a stored combination is shown and how it becomes a Qt key. One table
// of key codes serves both; forward delete (117) is in it only for Qt, so a
// recorded forward delete works but is shown as an unknown key.
//
// Modifiers follow Qt's own convention for this key layout: command is
// Ctrl, control is Meta, option is Alt, shift is Shift. The default undo
// (command Z) is thus Ctrl+Z.
namespace ShortcutKeys {

// "⌃⌥⇧⌘" as far as set, in that order, then the key's name ("Z", "Space",
// "↩"), or the translated "shortcut.key.unknown" for a code without one.
QString displayString(const KeyCombo &combo);

// The key's name, or none for a code the table does not name.
std::optional<QString> keyName(quint16 keyCode);

std::optional<Qt::Key> qtKey(quint16 keyCode);
Qt::KeyboardModifiers qtModifiers(quint64 modifierFlags);

// The Qt shortcut for `combo`. A code Qt has no key for gives the default
// of `fallback` instead, and failing that Ctrl+Space.
QKeyCombination keyboardShortcut(const KeyCombo &combo, ShortcutAction fallback);

// The keys of the quick-capture combination, inside the program and on the
// desktop alike: the stored combination, or the default one (Ctrl+Shift+
// Space) when Qt has no key for its code.
QKeyCombination captureShortcut(const KeyCombo &combo);

// The other way, for recording: a key press as a combination, or none for a
// key that has no code here (a bare modifier, a function key). Only the
// four recorded modifiers are kept.
std::optional<KeyCombo> keyCombo(QKeyCombination keys);

// The modifiers in the numbering of the original global hot-key service
// (shift 512, control 4096, option 2048, command 256), which a hot-key
// backend receives.
quint32 carbonModifiers(quint64 modifierFlags);

} // namespace ShortcutKeys

} // namespace fenrow
