#pragma once

#include <QWidget>

namespace fenrow {

// The thin line between a side panel and the detail, wide enough to grab.
// Dragging it proposes a new panel width, clamped into the given limits;
// releasing it reports the final width once, for whoever keeps it.
class PanelResizeDivider : public QWidget {
    Q_OBJECT

public:
    // A leading panel sits left of the divider and grows to the right; a
    // trailing one sits right of it and grows to the left.
    enum class Side { leading, trailing };

    PanelResizeDivider(QWidget *panel, Side side, int minimumWidth, int maximumWidth, QWidget *parent = nullptr);

signals:
    void widthChanged(int width);
    void resizeFinished(int width);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    int widthFor(const QPointF &globalPosition) const;

    QWidget *m_panel;
    Side m_side;
    int m_minimum;
    int m_maximum;
    bool m_dragging = false;
    qreal m_pressX = 0;
    int m_pressWidth = 0;
};

} // namespace fenrow
