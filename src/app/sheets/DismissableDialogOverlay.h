#pragma once

#include <QImage>
#include <QPointer>
#include <QWidget>

#include <memory>

namespace fenrow {

namespace DialogPresence {
class Scope;
}

// An in-window dialog: the whole window dims under a black scrim and the
// content sits centred on a rounded panel. A click on the scrim, or Escape,
// dismisses it. While presented it counts as one open dialog in
// `DialogPresence`, so the canvas keeps its key commands to itself; an
// overlay presented over another counts a second one.
//
// Use it as a child of the window, hand it the content, and present it:
//
//     auto *overlay = new DismissableDialogOverlay(window);
//     overlay->setContent(new MySheet(...)); // the overlay owns it
//     connect(overlay, &DismissableDialogOverlay::dismissed, overlay, &QObject::deleteLater);
//     overlay->present();
//
// The content closes itself by calling `dismiss()` (its Cancel button, or
// after its work is done). Dismissing hides the overlay, gives the focus
// back to where it was, and emits `dismissed`; the overlay itself stays
// until its owner deletes it, so it can be presented again.
class DismissableDialogOverlay : public QWidget {
    Q_OBJECT

public:
    static constexpr double scrimOpacity = 0.32;
    static constexpr int cornerRadius = 16;
    static constexpr int shadowRadius = 12;
    static constexpr int shadowOffsetY = 4;
    // The least room kept between the panel and the window's edges.
    static constexpr int windowMargin = 24;

    explicit DismissableDialogOverlay(QWidget *window);
    ~DismissableDialogOverlay() override;

    // Replaces the content; the overlay takes ownership and deletes the old one.
    void setContent(QWidget *content);
    QWidget *content() const { return m_content; }

    bool isPresented() const { return m_presence != nullptr; }
    void setPresented(bool presented);
    void present() { setPresented(true); }
    void dismiss() { setPresented(false); }

    // Where the panel stands, in the overlay's coordinates.
    QRect panelRect() const;

    // Whether `widget` is on a presented overlay: for the keys, such a
    // widget is in a window of its own, not in the one under the scrim.
    static bool holds(const QWidget *widget);

signals:
    void presentedChanged(bool presented);
    // The overlay went away: by the scrim, Escape or `dismiss()`.
    void dismissed();

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void placePanel();
    void focusContent();
    const QImage &shadowFor(QSize panel);

    QWidget *m_panel = nullptr;
    QPointer<QWidget> m_content;
    QPointer<QWidget> m_previousFocus;
    std::unique_ptr<DialogPresence::Scope> m_presence;
    bool m_pressedOnScrim = false;
    QImage m_shadow;
    QSize m_shadowSize;
};

} // namespace fenrow
