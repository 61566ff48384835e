#include "ShortcutRecorderButton.h"

#include "shell/ShortcutKeys.h"

#include <QKeyEvent>
#include <QKeySequence>

namespace fenrow {

ShortcutRecorderButton::ShortcutRecorderButton(const QString &identifier, QWidget *parent) : QPushButton(parent)
{
    setObjectName(identifier);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumWidth(120);
    connect(this, &QPushButton::clicked, this, [this] {
        m_model.press([this](const KeyCombo &combo) {
            m_combo = combo;
            showCombo();
            emit recorded(combo);
        });
    });
    connect(&m_model, &ShortcutRecorderModel::recordingChanged, this, [this](bool recording) {
        if (recording)
            grabKeyboard();
        else
            releaseKeyboard();
        setDown(recording);
        showCombo();
    });
    showCombo();
}

void ShortcutRecorderButton::setCombo(const KeyCombo &combo)
{
    m_combo = combo;
    showCombo();
}

QString ShortcutRecorderButton::label(const KeyCombo &combo)
{
    const std::optional<Qt::Key> key = ShortcutKeys::qtKey(combo.keyCode);
    if (!key || !ShortcutKeys::keyName(combo.keyCode))
        return ShortcutKeys::displayString(combo);
    return QKeySequence(QKeyCombination(ShortcutKeys::qtModifiers(combo.modifierFlags), *key))
        .toString(QKeySequence::NativeText);
}

void ShortcutRecorderButton::showCombo()
{
    setText(m_model.isRecording() ? qtTrId("shortcut.recorder.recording") : label(m_combo));
}

bool ShortcutRecorderButton::event(QEvent *event)
{
    // Claiming the override keeps Escape and menu shortcuts from acting
    // on a key meant for the recording.
    if (event->type() == QEvent::ShortcutOverride && m_model.isRecording()) {
        event->accept();
        return true;
    }
    return QPushButton::event(event);
}

void ShortcutRecorderButton::keyPressEvent(QKeyEvent *event)
{
    if (!m_model.isRecording()) {
        QPushButton::keyPressEvent(event);
        return;
    }
    event->accept();
    switch (event->key()) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Meta:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
        // Still holding modifiers on the way to the key.
        return;
    default:
        break;
    }
    const QKeyCombination keys = event->keyCombination();
    const std::optional<KeyCombo> combo = ShortcutKeys::keyCombo(keys);
    m_model.keyDown(keys);
    if (!m_model.isRecording() || (combo && combo->keyCode == KeyCode::escape))
        return;
    emit refused(combo ? qtTrId("settings.shortcuts.needsModifier") : qtTrId("settings.shortcuts.unsupportedKey"));
}

void ShortcutRecorderButton::focusOutEvent(QFocusEvent *event)
{
    m_model.stop();
    QPushButton::focusOutEvent(event);
}

} // namespace fenrow
