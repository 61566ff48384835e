#pragma once

#include "KeyCombo.h"

#include <QObject>
#include <Qt>

#include <functional>

namespace fenrow {

// The rules of recording a shortcut, apart from any widget. A recorder
// button calls `press`; while `isRecording`, its view sends every key press
// here and lets none through to anything else (it watches
// `recordingChanged` to start and stop listening).
//
// Escape stops and changes nothing. A combination without shift, control,
// option or command is refused and recording goes on. Anything else is
// handed to the capture callback, with only those four modifiers kept, and
// recording stops. No other check is made: a combination may repeat
// another action's.
class ShortcutRecorderModel : public QObject {
    Q_OBJECT

public:
    using Capture = std::function<void(const KeyCombo &)>;

    using QObject::QObject;

    bool isRecording() const { return m_recording; }

    // Starts recording into `onCapture`; a press while recording stops it.
    void press(Capture onCapture);
    void stop();

    // One key-down in the stored numbering. Returns whether the event was
    // taken, which it always is while recording.
    bool keyDown(quint16 keyCode, quint64 modifierFlags);
    // The same for a Qt key press. A key that has no code here (a bare
    // modifier, a function key) is refused like a combination without a
    // modifier.
    bool keyDown(QKeyCombination keys);

signals:
    void recordingChanged(bool recording);

private:
    Capture m_onCapture;
    bool m_recording = false;
};

} // namespace fenrow
