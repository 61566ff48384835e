#pragma once

#include "shell/KeyCombo.h"

#include <QPointer>
#include <QWidget>

namespace fenrow {

class ActiveFlowState;
class AppEnvironment;
class AppPreferences;
class CanvasAppearance;
class FenrowHistory;
class FenrowStore;
class QuickCaptureContent;

// The small floating window in which a task is typed from anywhere: no
// frame, above other windows, centred on the screen under the pointer. It
// closes on Escape, on a click elsewhere (it never lingers behind the
// user's work) and after a save; its content is dropped at every close.
class QuickCapturePanel : public QWidget {
    Q_OBJECT

public:
    QuickCapturePanel(FenrowStore &store, FenrowHistory *history, const ActiveFlowState *activeFlow,
                      AppPreferences &preferences, AppEnvironment &environment, QWidget *parent = nullptr);
    ~QuickCapturePanel() override;

    // The keys that open the panel from inside the program: the quick-capture
    // combination (Ctrl for command), or its default when Qt has no key for
    // the stored one. The global hot key follows the same rule
    // (ShortcutKeys::captureShortcut).
    static QKeyCombination shortcut(const KeyCombo &combo);

    // Opens on a fresh content, or closes when open.
    void toggle();
    void open();
    // Hides the panel and drops what was typed.
    void dismiss();
    bool isOpen() const { return isVisible(); }
    // The content while open; null while closed.
    QuickCaptureContent *content() const;

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    FenrowStore &m_store;
    FenrowHistory *m_history;
    const ActiveFlowState *m_activeFlow;
    AppPreferences &m_preferences;
    AppEnvironment &m_environment;
    CanvasAppearance *m_appearance = nullptr;
    QPointer<QuickCaptureContent> m_content;
};

} // namespace fenrow
