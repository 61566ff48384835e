#include "ShortcutRecorderModel.h"

#include "ShortcutKeys.h"

namespace fenrow {

void ShortcutRecorderModel::press(Capture onCapture)
{
    if (m_recording) {
        stop();
        return;
    }
    m_onCapture = std::move(onCapture);
    m_recording = true;
    emit recordingChanged(true);
}

void ShortcutRecorderModel::stop()
{
    if (!m_recording)
        return;
    m_onCapture = nullptr;
    m_recording = false;
    emit recordingChanged(false);
}

bool ShortcutRecorderModel::keyDown(quint16 keyCode, quint64 modifierFlags)
{
    if (!m_recording)
        return false;
    if (keyCode == KeyCode::escape) {
        stop();
        return true;
    }
    const quint64 flags = modifierFlags & KeyModifier::recordingMask;
    if (flags == 0)
        return true;
    // Stop first: the callback may start another recording.
    const Capture capture = std::move(m_onCapture);
    stop();
    if (capture)
        capture(KeyCombo{keyCode, flags});
    return true;
}

bool ShortcutRecorderModel::keyDown(QKeyCombination keys)
{
    if (!m_recording)
        return false;
    const std::optional<KeyCombo> combo = ShortcutKeys::keyCombo(keys);
    return combo ? keyDown(combo->keyCode, combo->modifierFlags) : true;
}

} // namespace fenrow
