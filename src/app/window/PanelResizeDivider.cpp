#include "PanelResizeDivider.h"

#include "look/Theme.h"

#include <QMouseEvent>
#include <QPainter>

namespace fenrow {

PanelResizeDivider::PanelResizeDivider(QWidget *panel, Side side, int minimumWidth, int maximumWidth,
                                       QWidget *parent)
    : QWidget(parent), m_panel(panel), m_side(side), m_minimum(minimumWidth), m_maximum(maximumWidth)
{
    setFixedWidth(Theme::Metric::dividerGrab);
    setCursor(Qt::SplitHCursor);
}

void PanelResizeDivider::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), Theme::Color::window);
    // The visible line hugs the panel; the rest is grab area over the detail.
    const int lineX = m_side == Side::leading ? 0 : width() - 1;
    painter.fillRect(QRect(lineX, 0, 1, height()), Theme::Color::divider);
}

int PanelResizeDivider::widthFor(const QPointF &globalPosition) const
{
    const qreal delta = globalPosition.x() - m_pressX;
    const int proposed = m_pressWidth + int(m_side == Side::leading ? delta : -delta);
    return std::clamp(proposed, m_minimum, m_maximum);
}

void PanelResizeDivider::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    m_dragging = true;
    m_pressX = event->globalPosition().x();
    m_pressWidth = m_panel->width();
}

void PanelResizeDivider::mouseMoveEvent(QMouseEvent *event)
{
    if (m_dragging)
        emit widthChanged(widthFor(event->globalPosition()));
}

void PanelResizeDivider::mouseReleaseEvent(QMouseEvent *event)
{
    if (!m_dragging || event->button() != Qt::LeftButton)
        return;
    m_dragging = false;
    const int width = widthFor(event->globalPosition());
    emit widthChanged(width);
    emit resizeFinished(width);
}

} // namespace fenrow
