#pragma once

#include <QObject>
#include <QPointer>

class QWidget;

namespace fenrow
{

class FocusRingOverlay;

// A ring in the accent colour around whichever widget has the keyboard
// focus, drawn on top of the window, so that every control shows where
// Tab went, whatever draws it: Fusion, a style sheet or its own paint
// event. It shows when focus moves by the keyboard and hides when a click
// or the program moves it, so a click on a button leaves no ring behind.
class ThemeFocusRing : public QObject
{
    Q_OBJECT

public:
    explicit ThemeFocusRing(QObject *parent = nullptr);
    ~ThemeFocusRing() override;

    // The widget the ring is around, or null while it is hidden.
    QWidget *ringedWidget() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void follow(QWidget *widget);
    void place();

    QPointer<QWidget> m_target;
    QPointer<FocusRingOverlay> m_overlay;
    bool m_byKeyboard = false;
};

} // namespace fenrow
