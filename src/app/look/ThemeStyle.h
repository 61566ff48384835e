#pragma once

#include <QProxyStyle>

namespace fenrow
{

// Fusion with edges a user can see: Fusion draws the edge of a check box,
// radio button, field or button a shade darker than the window, which on
// a dark window is next to invisible. Here check boxes and radio buttons
// are drawn in `Theme::Color::controlBorder` and `accent`, and the other
// controls get Fusion's drawing with that edge.
class ThemeStyle : public QProxyStyle
{
public:
    explicit ThemeStyle(QStyle *base);

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget = nullptr) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget = nullptr) const override;
};

} // namespace fenrow
