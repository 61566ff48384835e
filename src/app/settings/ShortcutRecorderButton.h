#pragma once

#include "shell/KeyCombo.h"
#include "shell/ShortcutRecorderModel.h"

#include <QPushButton>

namespace fenrow {

// A button that shows a key combination and records a new one: a click
// starts listening, the next key press with a modifier becomes the
// combination, Escape or a second click gives up. While it listens every
// key goes to it, window shortcuts included. The rules are the model's.
class ShortcutRecorderButton : public QPushButton {
    Q_OBJECT

public:
    explicit ShortcutRecorderButton(const QString &identifier, QWidget *parent = nullptr);

    KeyCombo combo() const { return m_combo; }
    void setCombo(const KeyCombo &combo);
    bool isRecording() const { return m_model.isRecording(); }

    // A combination the way this desktop's menus show keys ("Ctrl+Shift+K");
    // a key without a name gives the unknown-key text after its modifiers.
    static QString label(const KeyCombo &combo);

signals:
    void recorded(const KeyCombo &combo);
    // A key press the rules turned down; `reason` is the text to show.
    void refused(const QString &reason);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void showCombo();

    ShortcutRecorderModel m_model;
    KeyCombo m_combo;
};

} // namespace fenrow
