#include "KeySymbols.h"

#include <QStringList>

#include <array>

namespace fenrow::KeySymbols {

namespace {

struct Row {
    Qt::Key key;
    quint32 keysym;
    const char *name;
};

// Letters and digits are worked out below; these are the rest. Latin-1
// punctuation has the same number as a key symbol as in Qt.
constexpr std::array<Row, 21> rows{{
    {Qt::Key_Space, 0x0020, "space"},
    {Qt::Key_Apostrophe, 0x0027, "apostrophe"},
    {Qt::Key_Comma, 0x002c, "comma"},
    {Qt::Key_Minus, 0x002d, "minus"},
    {Qt::Key_Period, 0x002e, "period"},
    {Qt::Key_Slash, 0x002f, "slash"},
    {Qt::Key_Semicolon, 0x003b, "semicolon"},
    {Qt::Key_Equal, 0x003d, "equal"},
    {Qt::Key_BracketLeft, 0x005b, "bracketleft"},
    {Qt::Key_Backslash, 0x005c, "backslash"},
    {Qt::Key_BracketRight, 0x005d, "bracketright"},
    {Qt::Key_QuoteLeft, 0x0060, "grave"},
    {Qt::Key_Backspace, 0xff08, "BackSpace"},
    {Qt::Key_Tab, 0xff09, "Tab"},
    {Qt::Key_Return, 0xff0d, "Return"},
    {Qt::Key_Escape, 0xff1b, "Escape"},
    {Qt::Key_Left, 0xff51, "Left"},
    {Qt::Key_Up, 0xff52, "Up"},
    {Qt::Key_Right, 0xff53, "Right"},
    {Qt::Key_Down, 0xff54, "Down"},
    {Qt::Key_Delete, 0xffff, "Delete"},
}};

} // namespace

std::optional<Symbol> symbol(Qt::Key key)
{
    // The lower-case letter is the key's own symbol; shift is a modifier.
    if (key >= Qt::Key_A && key <= Qt::Key_Z) {
        const char letter = char('a' + (key - Qt::Key_A));
        return Symbol{quint32(letter), QString(QLatin1Char(letter))};
    }
    if (key >= Qt::Key_0 && key <= Qt::Key_9)
        return Symbol{quint32(key), QString(QLatin1Char(char(key)))};
    for (const Row &row : rows)
        if (row.key == key)
            return Symbol{row.keysym, QString::fromLatin1(row.name)};
    return std::nullopt;
}

std::optional<QString> trigger(QKeyCombination keys)
{
    const std::optional<Symbol> key = symbol(keys.key());
    if (!key)
        return std::nullopt;
    QStringList parts;
    const Qt::KeyboardModifiers modifiers = keys.keyboardModifiers();
    if (modifiers & Qt::ControlModifier)
        parts << QStringLiteral("CTRL");
    if (modifiers & Qt::AltModifier)
        parts << QStringLiteral("ALT");
    if (modifiers & Qt::ShiftModifier)
        parts << QStringLiteral("SHIFT");
    if (modifiers & Qt::MetaModifier)
        parts << QStringLiteral("LOGO");
    parts << key->name;
    return parts.join(QLatin1Char('+'));
}

} // namespace fenrow::KeySymbols
