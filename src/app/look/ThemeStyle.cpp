#include "ThemeStyle.h"

#include "Theme.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>

namespace fenrow
{

namespace
{

// Fusion takes the edge of a control from the window colour made darker
// by 140 %; a window colour that darkens to the control border gives the
// edge the program wants and leaves the rest of Fusion's drawing alone.
// The option is borrowed for the one call, whatever its type, and given
// back as it came.
class ControlEdge
{
public:
    explicit ControlEdge(const QStyleOption &option)
        : m_option(const_cast<QStyleOption &>(option)), m_saved(option.palette)
    {
        m_option.palette.setColor(QPalette::Window, Theme::Color::controlBorder.lighter(140));
    }
    ~ControlEdge() { m_option.palette = m_saved; }
    ControlEdge(const ControlEdge &) = delete;
    ControlEdge &operator=(const ControlEdge &) = delete;

private:
    QStyleOption &m_option;
    QPalette m_saved;
};

void drawIndicator(bool round, const QStyleOption &option, QPainter &painter)
{
    const bool enabled = option.state & QStyle::State_Enabled;
    const bool on = option.state & (QStyle::State_On | QStyle::State_NoChange);
    const QRectF box = QRectF(option.rect).adjusted(1.5, 1.5, -1.5, -1.5);
    const double side = std::min(box.width(), box.height());
    const QRectF square(box.center().x() - side / 2, box.center().y() - side / 2, side, side);
    QColor edge = on ? Theme::Color::accent : Theme::Color::controlBorder;
    QColor fill = on ? Theme::Color::accent : Theme::Color::field;
    if (!enabled) {
        edge = option.palette.color(QPalette::Disabled, QPalette::Text);
        fill = on ? edge : Theme::Color::field;
    } else if (option.state & QStyle::State_Sunken) {
        fill = on ? fill.darker(115) : Theme::Color::hover;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(edge, 1.5));
    painter.setBrush(fill);
    if (round)
        painter.drawEllipse(square);
    else
        painter.drawRoundedRect(square, 3, 3);
    if (on) {
        const QColor mark = enabled ? Theme::Color::onAccent : Theme::Color::field;
        if (round) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(mark);
            painter.drawEllipse(square.center(), side * 0.2, side * 0.2);
        } else if (option.state & QStyle::State_NoChange) {
            painter.setPen(QPen(mark, 2, Qt::SolidLine, Qt::RoundCap));
            painter.drawLine(QPointF(square.left() + side * 0.28, square.center().y()),
                             QPointF(square.right() - side * 0.28, square.center().y()));
        } else {
            QPainterPath tick;
            tick.moveTo(square.left() + side * 0.25, square.top() + side * 0.52);
            tick.lineTo(square.left() + side * 0.43, square.top() + side * 0.70);
            tick.lineTo(square.left() + side * 0.76, square.top() + side * 0.32);
            painter.setPen(QPen(mark, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            painter.setBrush(Qt::NoBrush);
            painter.drawPath(tick);
        }
    }
    painter.restore();
}

} // namespace

ThemeStyle::ThemeStyle(QStyle *base) : QProxyStyle(base) {}

void ThemeStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                               const QWidget *widget) const
{
    switch (element) {
    case PE_IndicatorCheckBox:
        // Item views' check marks come here too, through the proxy.
        drawIndicator(false, *option, *painter);
        return;
    case PE_IndicatorRadioButton:
        drawIndicator(true, *option, *painter);
        return;
    case PE_FrameLineEdit:
    case PE_PanelButtonCommand: {
        const ControlEdge edge(*option);
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void ThemeStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                                    const QWidget *widget) const
{
    if (control == CC_ComboBox || control == CC_SpinBox) {
        const ControlEdge edge(*option);
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

} // namespace fenrow
