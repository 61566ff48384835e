#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QtGlobal>

#include <optional>

namespace fenrow {

// A key with its modifiers, as the settings file keeps it. The numbering is
// the one shortcuts were first recorded in: hardware key codes (0 is A, 49
// is Space) and the modifier bits below. ShortcutKeys maps
// them to Qt; keeping the stored numbers unchanged keeps saved shortcuts
// valid everywhere.
struct KeyCombo {
    quint16 keyCode = 0;
    quint64 modifierFlags = 0;

    friend bool operator==(const KeyCombo &, const KeyCombo &) = default;

    // {"keyCode": 49, "modifierFlags": 1179648}
    QJsonObject toJson() const;
    // Both numbers must be present, whole and in range; anything else is
    // not a combination.
    static std::optional<KeyCombo> fromJson(const QJsonValue &value);
};

namespace KeyModifier {
inline constexpr quint64 shift = 0x20000;
inline constexpr quint64 control = 0x40000;
inline constexpr quint64 option = 0x80000;
inline constexpr quint64 command = 0x100000;
// The four a recorded combination needs at least one of.
inline constexpr quint64 recordingMask = shift | control | option | command;
} // namespace KeyModifier

namespace KeyCode {
inline constexpr quint16 space = 49;
inline constexpr quint16 escape = 53;
inline constexpr quint16 forwardDelete = 117;
} // namespace KeyCode

// Shift, command and space: the quick-capture combination out of the box.
inline constexpr KeyCombo defaultGlobalShortcut{KeyCode::space, KeyModifier::shift | KeyModifier::command};

} // namespace fenrow
