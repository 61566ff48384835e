#pragma once

#include <QWidget>

class QTimer;

namespace fenrow {

class CanvasInteraction;

// The canvas's word that breaking a task into subtasks failed: a card at
// the top of the canvas while the interaction holds the failure. It clears
// the failure itself after a while, or when the user closes it.
class ExpandFailureBanner : public QWidget {
    Q_OBJECT

public:
    static constexpr int showMilliseconds = 8000;

    explicit ExpandFailureBanner(QWidget *canvas);

    // The canvas state to follow; none while no flow is shown.
    void setInteraction(CanvasInteraction *interaction);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void follow();
    void clear();

    CanvasInteraction *m_interaction = nullptr;
    QMetaObject::Connection m_connection;
    QTimer *m_timer = nullptr;
};

} // namespace fenrow
