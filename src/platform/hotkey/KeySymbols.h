#pragma once

#include <QKeyCombination>
#include <QString>
#include <QtGlobal>

#include <optional>

namespace fenrow::KeySymbols {

// A key as the desktop names it: the X key symbol (what a key grab looks
// up the key codes of) and its xkbcommon name (what the shortcuts
// format of the desktop portal writes triggers with).
struct Symbol {
    quint32 keysym = 0;
    QString name;
};

// The symbol of every key the stored combinations can hold (the Qt keys of
// ShortcutKeys' table); none for any other key.
std::optional<Symbol> symbol(Qt::Key key);

// The trigger text of the desktop portal's shortcuts ("CTRL+SHIFT+space"):
// modifiers CTRL, ALT, SHIFT, LOGO (Qt's Meta), then the key's name; none
// for a key without a symbol.
std::optional<QString> trigger(QKeyCombination keys);

} // namespace fenrow::KeySymbols
