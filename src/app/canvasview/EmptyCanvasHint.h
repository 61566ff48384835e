#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

namespace fenrow {

class CanvasAppearance;

// What an empty flow shows in the middle of its canvas: a picture, a line
// on what a flow is, and a button for the first task.
class EmptyCanvasHint : public QWidget {
    Q_OBJECT

public:
    explicit EmptyCanvasHint(CanvasAppearance &appearance, QWidget *parent = nullptr);

    QPushButton *addButton() const { return m_add; }

signals:
    void addRequested();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void restyle();

    CanvasAppearance &m_appearance;
    QLabel *m_title = nullptr;
    QLabel *m_message = nullptr;
    QPushButton *m_add = nullptr;
};

} // namespace fenrow
