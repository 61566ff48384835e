#include "ShortcutKeys.h"

#include <QCoreApplication>

#include <array>

namespace fenrow::ShortcutKeys {

namespace {

struct KeyRow {
    quint16 code;
    const char16_t *name; // null: not shown by name
    Qt::Key key;
};

constexpr std::array<KeyRow, 57> keyRows{{
    {0, u"A", Qt::Key_A},
    {1, u"S", Qt::Key_S},
    {2, u"D", Qt::Key_D},
    {3, u"F", Qt::Key_F},
    {4, u"H", Qt::Key_H},
    {5, u"G", Qt::Key_G},
    {6, u"Z", Qt::Key_Z},
    {7, u"X", Qt::Key_X},
    {8, u"C", Qt::Key_C},
    {9, u"V", Qt::Key_V},
    {11, u"B", Qt::Key_B},
    {12, u"Q", Qt::Key_Q},
    {13, u"W", Qt::Key_W},
    {14, u"E", Qt::Key_E},
    {15, u"R", Qt::Key_R},
    {16, u"Y", Qt::Key_Y},
    {17, u"T", Qt::Key_T},
    {31, u"O", Qt::Key_O},
    {32, u"U", Qt::Key_U},
    {34, u"I", Qt::Key_I},
    {35, u"P", Qt::Key_P},
    {37, u"L", Qt::Key_L},
    {38, u"J", Qt::Key_J},
    {40, u"K", Qt::Key_K},
    {45, u"N", Qt::Key_N},
    {46, u"M", Qt::Key_M},
    {18, u"1", Qt::Key_1},
    {19, u"2", Qt::Key_2},
    {20, u"3", Qt::Key_3},
    {21, u"4", Qt::Key_4},
    {22, u"6", Qt::Key_6},
    {23, u"5", Qt::Key_5},
    {25, u"9", Qt::Key_9},
    {26, u"7", Qt::Key_7},
    {28, u"8", Qt::Key_8},
    {29, u"0", Qt::Key_0},
    {24, u"=", Qt::Key_Equal},
    {27, u"-", Qt::Key_Minus},
    {30, u"]", Qt::Key_BracketRight},
    {33, u"[", Qt::Key_BracketLeft},
    {39, u"'", Qt::Key_Apostrophe},
    {41, u";", Qt::Key_Semicolon},
    {42, u"\\", Qt::Key_Backslash},
    {43, u",", Qt::Key_Comma},
    {44, u"/", Qt::Key_Slash},
    {47, u".", Qt::Key_Period},
    {50, u"`", Qt::Key_QuoteLeft},
    {36, u"↩", Qt::Key_Return},
    {48, u"⇥", Qt::Key_Tab},
    {49, u"Space", Qt::Key_Space},
    {51, u"⌫", Qt::Key_Backspace},
    {53, u"⎋", Qt::Key_Escape},
    {123, u"←", Qt::Key_Left},
    {124, u"→", Qt::Key_Right},
    {125, u"↓", Qt::Key_Down},
    {126, u"↑", Qt::Key_Up},
    {KeyCode::forwardDelete, nullptr, Qt::Key_Delete},
}};

const KeyRow *rowOf(quint16 code)
{
    for (const KeyRow &row : keyRows)
        if (row.code == code)
            return &row;
    return nullptr;
}

struct ModifierRow {
    quint64 mask;
    char16_t symbol;
    Qt::KeyboardModifier qt;
    quint32 carbon;
};

// In the order they are shown.
constexpr std::array<ModifierRow, 4> modifierRows{{
    {KeyModifier::control, u'⌃', Qt::MetaModifier, 4096},
    {KeyModifier::option, u'⌥', Qt::AltModifier, 2048},
    {KeyModifier::shift, u'⇧', Qt::ShiftModifier, 512},
    {KeyModifier::command, u'⌘', Qt::ControlModifier, 256},
}};

} // namespace

QString displayString(const KeyCombo &combo)
{
    QString text;
    for (const ModifierRow &modifier : modifierRows)
        if (combo.modifierFlags & modifier.mask)
            text += QChar(modifier.symbol);
    return text + keyName(combo.keyCode).value_or(qtTrId("shortcut.key.unknown"));
}

std::optional<QString> keyName(quint16 keyCode)
{
    const KeyRow *row = rowOf(keyCode);
    if (!row || !row->name)
        return std::nullopt;
    return QString::fromUtf16(row->name);
}

std::optional<Qt::Key> qtKey(quint16 keyCode)
{
    const KeyRow *row = rowOf(keyCode);
    return row ? std::optional(row->key) : std::nullopt;
}

Qt::KeyboardModifiers qtModifiers(quint64 modifierFlags)
{
    Qt::KeyboardModifiers modifiers;
    for (const ModifierRow &modifier : modifierRows)
        if (modifierFlags & modifier.mask)
            modifiers |= modifier.qt;
    return modifiers;
}

QKeyCombination keyboardShortcut(const KeyCombo &combo, ShortcutAction fallback)
{
    for (const KeyCombo &candidate : {combo, defaultShortcut(fallback)})
        if (const std::optional<Qt::Key> key = qtKey(candidate.keyCode))
            return QKeyCombination(qtModifiers(candidate.modifierFlags), *key);
    return QKeyCombination(Qt::ControlModifier, Qt::Key_Space);
}

QKeyCombination captureShortcut(const KeyCombo &combo)
{
    const KeyCombo usable = qtKey(combo.keyCode) ? combo : defaultGlobalShortcut;
    return QKeyCombination(qtModifiers(usable.modifierFlags), qtKey(usable.keyCode).value_or(Qt::Key_Space));
}

std::optional<KeyCombo> keyCombo(QKeyCombination keys)
{
    // Shift with Tab arrives as a key of its own.
    const Qt::Key key = keys.key() == Qt::Key_Backtab ? Qt::Key_Tab : keys.key();
    for (const KeyRow &row : keyRows) {
        if (row.key != key)
            continue;
        quint64 flags = 0;
        for (const ModifierRow &modifier : modifierRows)
            if (keys.keyboardModifiers() & modifier.qt)
                flags |= modifier.mask;
        return KeyCombo{row.code, flags};
    }
    return std::nullopt;
}

quint32 carbonModifiers(quint64 modifierFlags)
{
    quint32 carbon = 0;
    for (const ModifierRow &modifier : modifierRows)
        if (modifierFlags & modifier.mask)
            carbon |= modifier.carbon;
    return carbon;
}

} // namespace fenrow::ShortcutKeys
